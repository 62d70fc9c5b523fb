// The plug-in instance, IUnknown and the dialog's interface object.
#include "host/pde_plugin.h"

#include <map>
#include <memory>
#include <mutex>
#include <new>

namespace zorva {
namespace {

PDEInterfaceTable gHostOperations{};

// The platform kept a registry of live instances per factory so the dialog
// could tell when the module might be unloaded; a count per factory does.
std::mutex gRegistryMutex;
std::map<std::array<std::uint8_t, 16>, int>& Registry() {
  static std::map<std::array<std::uint8_t, 16>, int> registry;
  return registry;
}

void AddInstanceForFactory(const UuidBytes& factoryID) {
  std::lock_guard lock(gRegistryMutex);
  ++Registry()[factoryID.bytes];
}

void RemoveInstanceForFactory(const UuidBytes& factoryID) {
  std::lock_guard lock(gRegistryMutex);
  auto it = Registry().find(factoryID.bytes);
  if (it != Registry().end() && --it->second <= 0) Registry().erase(it);
}

PlugInInstance* AllocPlugInInstance(const UuidBytes& factoryID) {
  auto instance = std::make_unique<PlugInInstance>();
  instance->factoryID = new UuidBytes(factoryID);
  instance->table = IUnknownVTbl{nullptr, QueryInterface, IUnknownAddRef, IUnknownRelease};
  instance->vtbl = &instance->table;
  instance->refCount = 1;
  AddInstanceForFactory(factoryID);
  return instance.release();
}

}  // namespace

void FreePanelInterface(PanelInterface* interface) {
  if (!interface) return;
  delete interface->vtbl;
  delete interface;
}

void SetHostOperations(const PDEInterfaceTable& operations) {
  gHostOperations = operations;
}

PlugInInstance* PDEPluginFactory(void* /*allocator*/, const UuidBytes* typeID) {
  if (!typeID || *typeID != kPDETypeID) return nullptr;
  try {
    return AllocPlugInInstance(kZorvaFactoryID);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

std::int32_t QueryInterface(void* instance, UuidBytes interfaceID, void** out) {
  if (!out) return kNoInterface;
  if (interfaceID == kIUnknownID) {
    IUnknownAddRef(instance);
    *out = instance;
    return kNoErr;
  }
  if (interfaceID == kPDEInterfaceID) {
    PlugInIntf* object = nullptr;
    const Status status = CreatePlugInInterface(&object);
    *out = object;
    return status;
  }
  *out = nullptr;
  return kNoInterface;
}

std::uint32_t IUnknownAddRef(void* instance) {
  if (!instance) return 0;
  return ++static_cast<PlugInInstance*>(instance)->refCount;
}

std::uint32_t IUnknownRelease(void* instance) {
  auto* plugin = static_cast<PlugInInstance*>(instance);
  if (!plugin || plugin->refCount == 0) return 0;
  const std::uint32_t count = --plugin->refCount;
  if (count == 0) {
    RemoveInstanceForFactory(*plugin->factoryID);
    delete plugin->factoryID;
    delete plugin;
  }
  return count;
}

Status CreatePlugInInterface(PlugInIntf** out) {
  *out = nullptr;
  PlugInIntf* object = nullptr;
  try {
    object = new PlugInIntf{nullptr, 1};
    object->vtbl = new PDEInterfaceTable(gHostOperations);
    object->vtbl->Retain = Retain;
    object->vtbl->Release = Release;
    object->vtbl->GetAPIVersion = GetAPIVersion;
  } catch (const std::bad_alloc&) {
    // An object without a table is still handed out, as the platform did.
  }
  *out = object;
  return kNoErr;
}

Status Retain(PlugInIntf* object) {
  if (object) ++object->refCount;
  return kNoErr;
}

Status Release(PlugInIntf** object) {
  if (!object || !*object) return kNoErr;
  PlugInIntf* intf = *object;
  // The caller's pointer is cleared before the object can go away.
  *object = nullptr;
  if (intf->refCount > 0 && --intf->refCount == 0) {
    delete intf->vtbl;
    delete intf;
  }
  return kNoErr;
}

Status GetAPIVersion(PlugInIntf* /*object*/, PDEAPIVersion* version) {
  if (version) *version = PDEAPIVersion{1, 0, 1, 0};
  return kNoErr;
}

int LiveInstancesForFactory(const UuidBytes& factoryID) {
  std::lock_guard lock(gRegistryMutex);
  auto it = Registry().find(factoryID.bytes);
  return it == Registry().end() ? 0 : it->second;
}

}  // namespace zorva

// The plug-in's way in: the factory's instance with its reference count and
// interface query, and the interface object that carries the host's ten
// operations to the dialog. Which operations go in the table is set once by
// the module that ships them (the host panel), so this part stays free of
// any window code.
#pragma once

#include <cstdint>

#include "host/pde_interface.h"

namespace zorva {

// The operations CreatePlugInInterface copies into every new interface
// object (slots 4 to 10; the first three are always this file's own).
void SetHostOperations(const PDEInterfaceTable& operations);

// The factory: an instance for the dialog-extension type, nullptr for any
// other type. The allocator is the platform's and is not used.
PlugInInstance* PDEPluginFactory(void* allocator, const UuidBytes* typeID);

std::int32_t QueryInterface(void* instance, UuidBytes interfaceID, void** out);
std::uint32_t IUnknownAddRef(void* instance);
std::uint32_t IUnknownRelease(void* instance);

// A new interface object with count 1 and a table of its own; always 0 (a
// table that cannot be made leaves the object without one).
Status CreatePlugInInterface(PlugInIntf** out);

Status Retain(PlugInIntf* object);
Status Release(PlugInIntf** object);
Status GetAPIVersion(PlugInIntf* object, PDEAPIVersion* version);

// Instances alive for a factory (what the platform's instance registry
// counted), for the dialog's unloading rules and for tests.
int LiveInstancesForFactory(const UuidBytes& factoryID);

}  // namespace zorva

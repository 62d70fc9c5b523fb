// The factory's instance and the dialog's interface object: which types and
// interfaces are answered, reference counts, and the ten slots' order.
#include "host/pde_plugin.h"

#include <gtest/gtest.h>

namespace zorva {
namespace {

Status FakePrologue(PDEContext*, std::uint32_t*, const char**, const char**, float*, float*) {
  return 7;
}
Status FakeTerminate(PDEContext, Status) {
  return 8;
}

TEST(PDEPlugin, IdentifiersReadAsTheirSixteenBytes) {
  EXPECT_EQ(kPDETypeID.bytes[0], 0xBD);
  EXPECT_EQ(kPDETypeID.bytes[15], 0x77);
  EXPECT_EQ(kIUnknownID.bytes[8], 0xC0);
  EXPECT_EQ(kIUnknownID.bytes[15], 0x46);
  EXPECT_NE(kPDETypeID, kPDEInterfaceID);
}

TEST(PDEPlugin, FactoryAnswersOnlyTheDialogExtensionType) {
  EXPECT_EQ(PDEPluginFactory(nullptr, &kPDEInterfaceID), nullptr);
  EXPECT_EQ(PDEPluginFactory(nullptr, nullptr), nullptr);
  const int before = LiveInstancesForFactory(kZorvaFactoryID);
  PlugInInstance* instance = PDEPluginFactory(nullptr, &kPDETypeID);
  ASSERT_NE(instance, nullptr);
  EXPECT_EQ(instance->vtbl, &instance->table);
  EXPECT_EQ(instance->table.reserved, nullptr);
  EXPECT_EQ(*instance->factoryID, kZorvaFactoryID);
  EXPECT_EQ(instance->refCount, 1u);
  EXPECT_EQ(LiveInstancesForFactory(kZorvaFactoryID), before + 1);
  EXPECT_EQ(IUnknownAddRef(instance), 2u);
  EXPECT_EQ(IUnknownRelease(instance), 1u);
  EXPECT_EQ(IUnknownRelease(instance), 0u);
  EXPECT_EQ(LiveInstancesForFactory(kZorvaFactoryID), before);
  EXPECT_EQ(IUnknownAddRef(nullptr), 0u);
  EXPECT_EQ(IUnknownRelease(nullptr), 0u);
}

TEST(PDEPlugin, QueryInterfaceAnswersIUnknownTheExtensionAndNothingElse) {
  PDEInterfaceTable host{};
  host.Prologue = FakePrologue;
  host.Terminate = FakeTerminate;
  SetHostOperations(host);
  PlugInInstance* instance = PDEPluginFactory(nullptr, &kPDETypeID);
  void* out = nullptr;
  EXPECT_EQ(instance->vtbl->QueryInterface(instance, kIUnknownID, &out), 0);
  EXPECT_EQ(out, instance);
  EXPECT_EQ(instance->refCount, 2u);

  EXPECT_EQ(QueryInterface(instance, kPDEInterfaceID, &out), 0);
  auto* intf = static_cast<PlugInIntf*>(out);
  ASSERT_NE(intf, nullptr);
  EXPECT_EQ(intf->refCount, 1u);
  EXPECT_EQ(intf->vtbl->Retain, &Retain);
  EXPECT_EQ(intf->vtbl->Release, &Release);
  EXPECT_EQ(intf->vtbl->GetAPIVersion, &GetAPIVersion);
  EXPECT_EQ(intf->vtbl->Prologue(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 7);
  EXPECT_EQ(intf->vtbl->Terminate(nullptr, 0), 8);

  out = &out;
  EXPECT_EQ(QueryInterface(instance, kPDETypeID, &out), kNoInterface);
  EXPECT_EQ(kNoInterface, static_cast<std::int32_t>(0x80000004u));
  EXPECT_EQ(out, nullptr);

  EXPECT_EQ(Retain(intf), kNoErr);
  PlugInIntf* held = intf;
  EXPECT_EQ(Release(&held), kNoErr);
  EXPECT_EQ(held, nullptr);  // cleared even though the object lives on
  EXPECT_EQ(intf->refCount, 1u);
  EXPECT_EQ(Release(&intf), kNoErr);
  IUnknownRelease(instance);
  IUnknownRelease(instance);
  SetHostOperations(PDEInterfaceTable{});
}

TEST(PDEPlugin, VersionIsOneZeroBothWays) {
  PDEAPIVersion version{9, 9, 9, 9};
  EXPECT_EQ(GetAPIVersion(nullptr, &version), kNoErr);
  EXPECT_EQ(version.buildVersionMajor, 1u);
  EXPECT_EQ(version.buildVersionMinor, 0u);
  EXPECT_EQ(version.baseVersionMajor, 1u);
  EXPECT_EQ(version.baseVersionMinor, 0u);
}

}  // namespace
}  // namespace zorva

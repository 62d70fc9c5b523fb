// The module in a process that links nothing of ours but libdl and Qt: it
// brings its own copy of the library, so any print dialog can load it.
// Only header-inline parts of the session are used here.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QWidget>
#include <cstdlib>

#include "core/print_session.h"
#include "host/pde_interface.h"

namespace zorva {
namespace {

TEST(ModuleAlone, LoadsThroughTheFactoryShowsItsPanelsAndWritesTheTicket) {
  void* module = dlopen(ZORVA_MODULE, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(module, nullptr) << dlerror();
  using Factory = void* (*)(void*, const UuidBytes*);
  auto factory = reinterpret_cast<Factory>(dlsym(module, "ZorvaPDEPluginFactory"));
  ASSERT_NE(factory, nullptr);
  void* instance = factory(nullptr, &kPDETypeID);
  ASSERT_NE(instance, nullptr);
  IUnknownVTbl* unknown = *static_cast<IUnknownVTbl**>(instance);
  void* out = nullptr;
  ASSERT_EQ(unknown->QueryInterface(instance, kPDEInterfaceID, &out), 0);
  auto* intf = static_cast<PlugInIntf*>(out);
  PDEInterfaceTable& ops = *intf->vtbl;

  PrintSession session("Q", "pap://nowhere/queue", {});
  auto pane = std::make_unique<QWidget>();
  PDEContext context = nullptr;
  std::uint32_t creator = 0;
  std::uint32_t flags = 0;
  const char* kind = nullptr;
  const char* title = nullptr;
  float h = 0;
  float v = 0;
  ASSERT_EQ(ops.Prologue(&context, &creator, &kind, &title, &h, &v), 0);
  ASSERT_EQ(ops.Initialize(context, &flags, nullptr, pane.get(), &session), 0);
  ASSERT_EQ(ops.Open(context), 0);
  auto* tabs = pane->findChild<QComboBox*>("Zshl_16");
  ASSERT_NE(tabs, nullptr);
  EXPECT_EQ(tabs->count(), 6);
  ASSERT_EQ(ops.Sync(context, &session, false), 0);
  EXPECT_TRUE(session.printSettings().contains("com.zorva.print.JOTFOptions"));
  EXPECT_TRUE(session.printSettings().contains("com.zorva.print.EmitJOTF"));
  EXPECT_EQ(ops.Close(context), 0);
  EXPECT_EQ(ops.Terminate(context, 0), 0);
  pane.reset();
  intf->vtbl->Release(&intf);
  EXPECT_EQ(unknown->Release(instance), 0u);
}

}  // namespace
}  // namespace zorva

int main(int argc, char** argv) {
  if (!std::getenv("QT_QPA_PLATFORM")) setenv("QT_QPA_PLATFORM", "offscreen", 1);
  ::testing::InitGoogleTest(&argc, argv);
  QApplication app(argc, argv);
  return RUN_ALL_TESTS();
}

// The dialog's speed on Qt's offscreen platform: opening it (the factory to
// the first panel shown: Prologue, Initialize, Open) and a tab switch (the
// panel left writes the ticket, every other panel reads it again).
#include <benchmark/benchmark.h>
#include <dlfcn.h>

#include <QApplication>
#include <QComboBox>
#include <QWidget>
#include <cstdlib>
#include <memory>

#include "core/print_session.h"
#include "host/pde_interface.h"

namespace {

using namespace zorva;

void* Module() {
  static void* handle = dlopen(ZORVA_MODULE, RTLD_NOW | RTLD_LOCAL);
  return handle;
}

struct OpenDialog {
  void* instance = nullptr;
  PlugInIntf* intf = nullptr;
  PDEContext context = nullptr;
  std::unique_ptr<QWidget> pane = std::make_unique<QWidget>();
  PrintSession session{"Q", "pap://nowhere/queue", std::string(ZORVA_EXAMPLE_PPD)};

  bool open() {
    using Factory = void* (*)(void*, const UuidBytes*);
    auto factory = reinterpret_cast<Factory>(dlsym(Module(), "ZorvaPDEPluginFactory"));
    instance = factory(nullptr, &kPDETypeID);
    void* out = nullptr;
    (*static_cast<IUnknownVTbl**>(instance))->QueryInterface(instance, kPDEInterfaceID, &out);
    intf = static_cast<PlugInIntf*>(out);
    std::uint32_t creator = 0;
    const char* kind = nullptr;
    const char* title = nullptr;
    float h = 0;
    float v = 0;
    std::uint32_t flags = 0;
    return intf->vtbl->Prologue(&context, &creator, &kind, &title, &h, &v) == kNoErr &&
           intf->vtbl->Initialize(context, &flags, nullptr, pane.get(), &session) == kNoErr &&
           intf->vtbl->Open(context) == kNoErr;
  }
  ~OpenDialog() {
    if (intf) {
      intf->vtbl->Close(context);
      intf->vtbl->Terminate(context, kNoErr);
      pane.reset();
      intf->vtbl->Release(&intf);
    }
    if (instance) (*static_cast<IUnknownVTbl**>(instance))->Release(instance);
  }
};

void BM_OpenDialog(benchmark::State& state) {
  for (auto _ : state) {
    auto dialog = std::make_unique<OpenDialog>();
    if (!dialog->open()) state.SkipWithError("the dialog did not open");
    state.PauseTiming();
    dialog.reset();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_OpenDialog)->Unit(benchmark::kMillisecond);

void BM_TabSwitch(benchmark::State& state) {
  OpenDialog dialog;
  if (!dialog.open()) state.SkipWithError("the dialog did not open");
  auto* tabs = dialog.pane->findChild<QComboBox*>("Zshl_16");
  int index = 0;
  for (auto _ : state) {
    index = (index + 1) % tabs->count();
    tabs->setCurrentIndex(index);
    emit tabs->activated(index);
  }
}
BENCHMARK(BM_TabSwitch)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
  if (!std::getenv("QT_QPA_PLATFORM")) setenv("QT_QPA_PLATFORM", "offscreen", 1);
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}

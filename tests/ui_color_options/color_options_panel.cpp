// A colour-options panel shipped in a bundle of its own: the host finds its
// entry point in this module, outside the plug-in. It draws nothing and
// counts the calls it gets, which the tests read through dlsym.
#include <new>

#include "host/pde_interface.h"

namespace {

int gCalls[4] = {};  // Prologue, Initialize, Open, Terminate

zorva::Status Prologue(zorva::PDEContext* context, std::uint32_t*, const char**, const char** title,
                       float*, float*) {
  ++gCalls[0];
  *context = new (std::nothrow) int(0);
  *title = "Colour Options";
  return *context ? 0 : -108;
}
zorva::Status Initialize(zorva::PDEContext, std::uint32_t*, void*, zorva::PDEPaneRef,
                         zorva::PrintSession*) {
  ++gCalls[1];
  return 0;
}
zorva::Status Sync(zorva::PDEContext, zorva::PrintSession*, bool) {
  return 0;
}
zorva::Status Summary(zorva::PDEContext, zorva::Array** titles, zorva::Array** values) {
  *titles = nullptr;
  *values = nullptr;
  return 0;
}
zorva::Status Open(zorva::PDEContext) {
  ++gCalls[2];
  return 0;
}
zorva::Status Close(zorva::PDEContext) {
  return 0;
}
zorva::Status Terminate(zorva::PDEContext context, zorva::Status) {
  ++gCalls[3];
  delete static_cast<int*>(context);
  return 0;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) int* ColorOptionsCalls() {
  return gCalls;
}

extern "C" __attribute__((visibility("default"))) zorva::Status GetColorOptionPanelInterface(
    zorva::PanelInterface** out) {
  *out = new zorva::PanelInterface{new zorva::PDEInterfaceTable{
      nullptr, nullptr, nullptr, Prologue, Initialize, Sync, Summary, Open, Close, Terminate}};
  return 0;
}

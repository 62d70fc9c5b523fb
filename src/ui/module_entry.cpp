// The module's exported entry points: the factory the print dialog calls and
// the six panels' interface getters the host finds by name.
#include "host/pde_plugin.h"
#include "ui/panel_view.h"
#include "ui/tabrix_host.h"

#define ZORVA_EXPORT extern "C" __attribute__((visibility("default")))

using zorva::PanelInterface;
using zorva::Status;

namespace {

Status HandOut(Status (*create)(PanelInterface**), PanelInterface** out) {
  if (!out) return zorva::kParamErr;
  try {
    PanelInterface* interface = nullptr;
    const Status status = create(&interface);
    if (status == zorva::kNoErr) *out = interface;
    return status;
  } catch (...) {
    return zorva::kMemFullErr;
  }
}

}  // namespace

ZORVA_EXPORT void* ZorvaPDEPluginFactory(void* allocator, const zorva::UuidBytes* typeID) {
  zorva::SetHostOperations(zorva::TabrixOperations());
  try {
    return zorva::PDEPluginFactory(allocator, typeID);
  } catch (...) {
    return nullptr;
  }
}

ZORVA_EXPORT Status GetPaperOutputPanelInterface(PanelInterface** out) {
  return HandOut(zorva::CreatePaperOutputPanelInterface, out);
}
ZORVA_EXPORT Status GetSpecialPagesPanelInterface(PanelInterface** out) {
  return HandOut(zorva::CreateSpecialPagesPanelInterface, out);
}
ZORVA_EXPORT Status GetImageOptionsPanelInterface(PanelInterface** out) {
  return HandOut(zorva::CreateImageOptionsPanelInterface, out);
}
ZORVA_EXPORT Status GetJobNotesPanelInterface(PanelInterface** out) {
  return HandOut(zorva::CreateJobNotesPanelInterface, out);
}
ZORVA_EXPORT Status GetBookletWatermarkPanelInterface(PanelInterface** out) {
  return HandOut(zorva::CreateBookletWatermarkPanelInterface, out);
}
ZORVA_EXPORT Status GetAdvancedPanelInterface(PanelInterface** out) {
  return HandOut(zorva::CreateAdvancedPanelInterface, out);
}

// For hosts that bring panels of their own (and tests): the entry-point
// names to load and where to find them; null for either restores the
// built-in list or this module's own symbols.
ZORVA_EXPORT void ZorvaPDESetPanelSource(const char* const* names,
                                         zorva::PanelInterfaceEntry (*lookup)(const char* name)) {
  zorva::SetPanelSource(names, lookup);
}

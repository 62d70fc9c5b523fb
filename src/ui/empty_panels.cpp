// The panels whose settings come later: each loads with its title and its
// page, and keeps the whole contract, so the host sees all six. The special
// pages panel exists once at a time and refuses a second Open.
#include <QWidget>
#include <new>

#include "ui/panel_view.h"

namespace zorva {
namespace {

struct EmptyPanelContext {
  PanelContextHead head;
};

// The one special pages panel of the process (nullptr when none).
EmptyPanelContext* gSpecialPagesContext = nullptr;

template <PanelKind K>
Status PanelPrologue(PDEContext* context, std::uint32_t* creator, const char** userOptionKind,
                     const char** title, float* maxH, float* maxV) {
  if (!context) return kInvalidPDEContext;
  auto* panel = new (std::nothrow) EmptyPanelContext{};
  if (!panel) return kInvalidPDEContext;
  if constexpr (K == PanelKind::SpecialPages) {
    // Only the context and the title: creator, kind and size stay as the
    // caller had them.
    FillPanelPrologue(panel->head, DescribePanel(K), nullptr, nullptr, title);
    gSpecialPagesContext = panel;
  } else {
    FillPanelPrologue(panel->head, DescribePanel(K), creator, userOptionKind, title);
    if (maxH) *maxH = 0;
    if (maxV) *maxV = 0;
  }
  *context = panel;
  return kNoErr;
}

Status PanelInitialize(PDEContext context, std::uint32_t* /*flags*/, void* /*ref*/,
                       PDEPaneRef userPane, PrintSession* /*session*/) {
  if (!context) return kInvalidPDEContext;
  static_cast<EmptyPanelContext*>(context)->head.userPane = static_cast<QWidget*>(userPane);
  return kNoErr;
}

Status PanelSync(PDEContext context, PrintSession* /*session*/, bool /*reinitializePlugIn*/) {
  return context ? kNoErr : kInvalidPDEContext;
}

Status PanelGetSummaryText(PDEContext context, Array** titles, Array** values) {
  if (!context) return kInvalidPDEContext;
  if (titles) *titles = nullptr;
  if (values) *values = nullptr;
  return kNoErr;
}

template <PanelKind K>
Status PanelOpen(PDEContext context) {
  if (!context) return kInvalidPDEContext;
  auto* panel = static_cast<EmptyPanelContext*>(context);
  if (panel->head.controlsBuilt) {
    return K == PanelKind::SpecialPages ? kInvalidPDEContext : kNoErr;
  }
  if (K == PanelKind::SpecialPages && !panel->head.userPane) {
    std::fputs("!! Failed to get user pane control reference.\n", stdout);
    return kInvalidPDEContext;
  }
  const PanelDescription& row = DescribePanel(K);
  Status status = kNoErr;
  QWidget* view = LoadView(panel->head.bundle, row.uiFile, row.window, &status);
  if (!view) return status;
  EmbedView(panel->head.userPane, view);
  panel->head.controlsBuilt = true;
  return kNoErr;
}

Status PanelClose(PDEContext context) {
  return context ? kNoErr : kInvalidPDEContext;
}

template <PanelKind K>
Status PanelTerminate(PDEContext context, Status /*status*/) {
  if (!context) return kInvalidPDEContext;
  auto* panel = static_cast<EmptyPanelContext*>(context);
  if (K == PanelKind::SpecialPages && gSpecialPagesContext == panel) gSpecialPagesContext = nullptr;
  delete panel;
  return kNoErr;
}

template <PanelKind K>
Status CreateEmptyPanelInterface(PanelInterface** out) {
  const PDEInterfaceTable table{nullptr,
                                nullptr,
                                nullptr,
                                PanelPrologue<K>,
                                PanelInitialize,
                                PanelSync,
                                PanelGetSummaryText,
                                PanelOpen<K>,
                                PanelClose,
                                PanelTerminate<K>};
  return NewPanelInterface(table, out);
}

}  // namespace

Status CreateSpecialPagesPanelInterface(PanelInterface** out) {
  return CreateEmptyPanelInterface<PanelKind::SpecialPages>(out);
}

}  // namespace zorva

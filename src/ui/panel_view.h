// What every panel shares: the head of its context, loading its view (a .ui
// file of the bundle) into the pane the host gave it, and the interface
// object its entry point hands out.
#pragma once

#include <QDialog>
#include <QString>
#include <QWidget>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

#include "core/status.h"
#include "host/pde_interface.h"
#include "panels/panel_table.h"

namespace zorva {

class Bundle;

struct PanelContextHead {
  const Bundle* bundle = nullptr;
  std::string title;
  QWidget* userPane = nullptr;
  bool controlsBuilt = false;
};

// Loads "<uiFile>.ui" from the bundle and returns its top-level widget if it
// is named `window` (the caller owns it), localised. Failures print the
// panel's "!! ..." line to standard output and give nullptr with *status set.
QWidget* LoadView(const Bundle* bundle, std::string_view uiFile, std::string_view window,
                  Status* status);

// A dialog's view ("<uiFile>.ui", top-level QDialog named `window`) over
// parent, titled by titleKey, its "<prefix>_ok" and "<prefix>_cancel"
// buttons accepting and rejecting; nullptr (with LoadView's message) on
// failure.
std::unique_ptr<QDialog> LoadDialog(const Bundle* bundle, const char* uiFile, const char* window,
                                    const char* titleKey, const char* prefix, QWidget* parent);

// A view's control by its number: the child named "<prefix>_<number>" (the
// .ui files name controls so), or nullptr.
template <typename T>
T* NumberedControl(QWidget* view, const char* prefix, int number) {
  return view->findChild<T*>(QStringLiteral("%1_%2").arg(QLatin1String(prefix)).arg(number));
}

// Moves the view into the pane, filling it.
void EmbedView(QWidget* pane, QWidget* view);

// The head's common Prologue answers: bundle, title (only when found) and
// the constants of the panel's row.
void FillPanelPrologue(PanelContextHead& head, const PanelDescription& panel,
                       std::uint32_t* creator, const char** userOptionKind, const char** title);

// A new interface object with a copy of `table` (as entry points hand out).
Status NewPanelInterface(const PDEInterfaceTable& table, PanelInterface** out);

// The operations a panel with a view of its own does like every other: no
// summary, Open (the view loaded once, its controls built, the settings
// shown), Close and Terminate. C is the panel's context, with a
// PanelContextHead `head`; the panel's file gives BuildControls(C&, QWidget*)
// (void, or false when the view lacks a control) and ShowSettings(C&), and
// may give AfterOpen(C&) for what needs the controls shown.
template <typename C, PanelKind K>
struct StandardPanel {
  static Status GetSummaryText(PDEContext context, Array** titles, Array** values) {
    if (!context) return kInvalidPDEContext;
    if (titles) *titles = nullptr;
    if (values) *values = nullptr;
    return kNoErr;
  }

  static Status Open(PDEContext context) {
    if (!context) return kInvalidPDEContext;
    auto* panel = static_cast<C*>(context);
    if (panel->head.controlsBuilt) return kNoErr;
    const PanelDescription& row = DescribePanel(K);
    Status status = kNoErr;
    QWidget* view = LoadView(panel->head.bundle, row.uiFile, row.window, &status);
    if (!view) return status;
    if constexpr (std::is_same_v<decltype(BuildControls(*panel, view)), bool>) {
      if (!BuildControls(*panel, view)) {
        delete view;
        return kInvalidPDEContext;
      }
    } else {
      BuildControls(*panel, view);
    }
    EmbedView(panel->head.userPane, view);
    panel->head.controlsBuilt = true;
    ShowSettings(*panel);
    if constexpr (requires { AfterOpen(*panel); }) AfterOpen(*panel);
    return kNoErr;
  }

  static Status Close(PDEContext context) { return context ? kNoErr : kInvalidPDEContext; }

  static Status Terminate(PDEContext context, Status /*status*/) {
    if (!context) return kInvalidPDEContext;
    delete static_cast<C*>(context);
    return kNoErr;
  }

  // The interface object with the panel's own Prologue, Initialize and Sync.
  static Status CreateInterface(decltype(PDEInterfaceTable::Prologue) prologue,
                                decltype(PDEInterfaceTable::Initialize) initialize,
                                decltype(PDEInterfaceTable::Sync) sync, PanelInterface** out) {
    const PDEInterfaceTable table{nullptr, nullptr,        nullptr, prologue, initialize,
                                  sync,    GetSummaryText, Open,    Close,    Terminate};
    return NewPanelInterface(table, out);
  }
};

// Each panel's own CreatePanelInterface.
Status CreatePaperOutputPanelInterface(PanelInterface** out);
Status CreateSpecialPagesPanelInterface(PanelInterface** out);
Status CreateImageOptionsPanelInterface(PanelInterface** out);
Status CreateJobNotesPanelInterface(PanelInterface** out);
Status CreateBookletWatermarkPanelInterface(PanelInterface** out);
Status CreateAdvancedPanelInterface(PanelInterface** out);

}  // namespace zorva

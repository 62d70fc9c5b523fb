// What every panel shares: the head of its context, loading its view (a .ui
// file of the bundle) into the pane the host gave it, and the interface
// object its entry point hands out.
#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "core/status.h"
#include "host/pde_interface.h"
#include "panels/panel_table.h"

class QWidget;

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

// Moves the view into the pane, filling it.
void EmbedView(QWidget* pane, QWidget* view);

// The head's common Prologue answers: bundle, title (only when found) and
// the constants of the panel's row.
void FillPanelPrologue(PanelContextHead& head, const PanelDescription& panel,
                       std::uint32_t* creator, const char** userOptionKind, const char** title);

// A new interface object with a copy of `table` (as entry points hand out).
Status NewPanelInterface(const PDEInterfaceTable& table, PanelInterface** out);

// Each panel's own CreatePanelInterface.
Status CreatePaperOutputPanelInterface(PanelInterface** out);
Status CreateSpecialPagesPanelInterface(PanelInterface** out);
Status CreateImageOptionsPanelInterface(PanelInterface** out);
Status CreateJobNotesPanelInterface(PanelInterface** out);
Status CreateBookletWatermarkPanelInterface(PanelInterface** out);
Status CreateAdvancedPanelInterface(PanelInterface** out);

}  // namespace zorva

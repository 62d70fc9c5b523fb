// The host panel's operations as the dialog calls them, and the entry
// points' look-up of the panels.
#pragma once

#include <cstdint>

#include "host/pde_interface.h"
#include "host/tabrix.h"

class QWidget;

namespace zorva {

// The host's ten-slot table (the first three are the interface object's).
const PDEInterfaceTable& TabrixOperations();

// The host's handling of the dialog's events. Control IDs are the widgets'
// object names' numbers, commands four-character codes.
enum class TabrixEventKind { ControlHit, Command, MenuEnable, PaperListArrived };
struct TabrixEvent {
  TabrixEventKind kind;
  int control = 0;            // Zshl number of the control hit
  std::uint32_t command = 0;  // the command sent
  int item = 0;               // the tab pop-up's chosen item
};
// True when handled; false passes the event on to the dialog.
bool tabrixEventHandler(TabrixContext& context, const TabrixEvent& event);

void selectPanel(std::int32_t tabIndex, TabrixContext& context);

// The host's Sync on the live host context, for any part of the plug-in
// (the job ticket's export and import); -9530 when there is none.
Status PDESync(PrintSession* session, bool reinitializePlugIn);

// Where panels come from: a list of entry-point names and a look-up. The
// defaults are PanelInterfaces and this module's own symbols.
void SetPanelSource(const char* const* names, PanelInterfaceEntry (*lookup)(const char* name));

}  // namespace zorva

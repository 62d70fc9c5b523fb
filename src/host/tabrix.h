// The host panel's own bookkeeping, apart from its windows: the panel
// records, loading the built-in panels through their entry points, the order
// in which every life-cycle call is passed on (the panel on screen last), the
// tab arrows' stepping and the host's items in the ticket. The dialog's view
// (src/ui) draws the tab pop-up and the panes and calls in here.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/print_session.h"
#include "core/status.h"
#include "host/pde_interface.h"

namespace zorva {

class Bundle;

inline constexpr std::uint32_t kHostCreator = 0x70646520;  // "pde "
inline constexpr std::string_view kUserOptionKind = "com.zorva.print.pde.zorvafeatureskind";
inline constexpr float kHostMaxH = 540;
inline constexpr float kHostMaxV = 491;
inline constexpr std::string_view kHostTitleKey = "Tabrix";
// A panel record that is not shown and is left out of every forwarding loop.
inline constexpr std::int32_t kHiddenPanel = -1;

// The panels' entry points in display order, ending with nullptr.
extern const char* const PanelInterfaces[];
// The one entry point looked for outside the plug-in's own module.
inline constexpr std::string_view kColorOptionPanelEntry = "GetColorOptionPanelInterface";

struct PanelRecord {
  PDEInterfaceTable interface {};  // the host's own copy
  PDEContext context = nullptr;
  std::string title;
  std::string kind;
  PDEPaneRef pane = nullptr;
  std::int32_t tabIndex = kHiddenPanel;  // 1-based position in the tab pop-up
};

struct TabrixContext {
  const Bundle* bundle = nullptr;
  std::string title;
  PrintSession* session = nullptr;
  std::vector<PanelRecord> panels;
  std::uint16_t panelCount = 0;
  PDEPaneRef userPane = nullptr;
  bool controlsBuilt = false;      // the first Open has built the host's controls
  std::filesystem::path helpBook;  // the registered help book's start page
  void* view = nullptr;            // the window side's state, owned by it
};

// The live host context, the panel shown last (also synchronised last) and
// the panel remembered across openings (0 = none yet). They outlive a
// context, so a dialog opened again shows the panel seen last.
extern TabrixContext* gContext;
extern std::int32_t lastTabIndex;
extern std::int32_t gCurrentPanel;

// Finds a panel's entry point by name (nullptr when there is none).
using PanelEntryLookup = std::function<PanelInterfaceEntry(std::string_view name)>;

// Loads every named panel, indexed by panelCount: a name that fails (no
// entry point, no table, or a Prologue that is not 0) is tried again until it
// loads, so no listed panel is ever skipped. Stops at the nullptr name.
void LoadBuiltInPanels(TabrixContext& context, const char* const* names,
                       const PanelEntryLookup& lookup);

// The bundle's help book is its page "Help.html"; registering it makes it
// the page the dialog's Help command shows. 0 when the context has no bundle
// (nothing registered), -43 (file not found) when the bundle's folder or its
// page cannot be found, else 0 with context.helpBook set.
Status RegisterMyHelpBook(TabrixContext& context);

// The folder of the optional external colour-options panel
// (ZORVA_COLOR_OPTIONS_BUNDLE, else `installed`).
std::filesystem::path ColorOptionsBundlePath(const std::filesystem::path& installed);

// Every shown panel's Sync, the one whose tab index is lastTabIndex last.
// The status of the last call (0 with no panels).
Status SyncPanels(TabrixContext& context, PrintSession* session, bool reinitializePlugIn);

// Calls op for every shown panel in table order.
void ForEachShownPanel(TabrixContext& context, const std::function<void(PanelRecord&)>& op);

// How many panels are shown.
int ShownPanelCount(const TabrixContext& context);

// The arrows: one step forward or back from `current`, wrapping at both ends.
std::int32_t NextTabIndex(std::int32_t current, int count);
std::int32_t PreviousTabIndex(std::int32_t current, int count);

// The data-side half of a tab switch: the panel being left writes its
// controls into the ticket, then every other shown panel (the new one
// included) reads the ticket again.
void SyncForTabSwitch(TabrixContext& context);

// GetSummaryText over the panels: both arrays start null; the last panel to
// answer with arrays wins.
Status PanelsSummaryText(TabrixContext& context, Array** titles, Array** values);

// Every shown panel's Terminate, then the panel records go.
void TerminatePanels(TabrixContext& context, Status status);

}  // namespace zorva

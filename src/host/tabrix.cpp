// The host panel's records and the order of its calls into the panels.
#include "host/tabrix.h"

#include <cstdlib>

#include "core/bundle.h"

namespace zorva {

const char* const PanelInterfaces[] = {
    "GetPaperOutputPanelInterface",
    "GetSpecialPagesPanelInterface",
    "GetImageOptionsPanelInterface",
    "GetJobNotesPanelInterface",
    "GetBookletWatermarkPanelInterface",
    "GetAdvancedPanelInterface",
    nullptr,
};

TabrixContext* gContext = nullptr;
std::int32_t lastTabIndex = 0;
std::int32_t gCurrentPanel = 0;

namespace {

// One attempt at the name at panelCount; true when the panel was taken in.
bool LoadPanel(TabrixContext& context, std::string_view name, const PanelEntryLookup& lookup) {
  const PanelInterfaceEntry entry = lookup(name);
  if (!entry) return false;
  PanelInterface* interface = nullptr;
  if (entry(&interface) != kNoErr || !interface) return false;
  PanelRecord record;
  if (interface->vtbl) record.interface = *interface->vtbl;
  FreePanelInterface(interface);
  if (!record.interface.Prologue) return false;
  std::uint32_t creator = 0;
  const char* kind = nullptr;
  const char* title = nullptr;
  float maxH = 0;
  float maxV = 0;
  if (record.interface.Prologue(&record.context, &creator, &kind, &title, &maxH, &maxV) != kNoErr) {
    return false;
  }
  // The first allocation holds ten records, later ones grow by one.
  if (context.panels.capacity() == 0) context.panels.reserve(10);
  record.title = title ? title : "";
  record.kind = kind ? kind : "";
  record.tabIndex = context.panelCount + 1;
  context.panels.push_back(std::move(record));
  ++context.panelCount;
  return true;
}

}  // namespace

Status RegisterMyHelpBook(TabrixContext& context) {
  if (!context.bundle || context.bundle->path().empty()) return kNoErr;
  std::error_code ec;
  if (!std::filesystem::is_directory(context.bundle->path(), ec)) return kFnfErr;
  const std::optional<std::filesystem::path> page = context.bundle->resourcePath("Help", "html");
  if (!page) return kFnfErr;
  context.helpBook = *page;
  return kNoErr;
}

std::filesystem::path ColorOptionsBundlePath(const std::filesystem::path& installed) {
  const char* chosen = std::getenv("ZORVA_COLOR_OPTIONS_BUNDLE");
  return chosen && *chosen ? std::filesystem::path(chosen) : installed;
}

void LoadBuiltInPanels(TabrixContext& context, const char* const* names,
                       const PanelEntryLookup& lookup) {
  // Every listed panel must load: a failing name leaves panelCount where it
  // was and is taken again.
  while (names[context.panelCount] != nullptr) {
    LoadPanel(context, names[context.panelCount], lookup);
  }
}

void ForEachShownPanel(TabrixContext& context, const std::function<void(PanelRecord&)>& op) {
  for (PanelRecord& panel : context.panels) {
    if (panel.tabIndex != kHiddenPanel) op(panel);
  }
}

int ShownPanelCount(const TabrixContext& context) {
  int count = 0;
  for (const PanelRecord& panel : context.panels) count += panel.tabIndex != kHiddenPanel;
  return count;
}

Status SyncPanels(TabrixContext& context, PrintSession* session, bool reinitializePlugIn) {
  Status status = kNoErr;
  PanelRecord* onScreen = nullptr;
  ForEachShownPanel(context, [&](PanelRecord& panel) {
    if (panel.tabIndex == lastTabIndex) {
      onScreen = &panel;
    } else if (panel.interface.Sync) {
      status = panel.interface.Sync(panel.context, session, reinitializePlugIn);
    }
  });
  // The panel on screen goes last, so its values win over any other's.
  if (onScreen && onScreen->interface.Sync) {
    status = onScreen->interface.Sync(onScreen->context, session, reinitializePlugIn);
  }
  return status;
}

std::int32_t NextTabIndex(std::int32_t current, int count) {
  if (count <= 0) return current;
  return current + 1 > count ? 1 : current + 1;
}

std::int32_t PreviousTabIndex(std::int32_t current, int count) {
  if (count <= 0) return current;
  return current - 1 < 1 ? count : current - 1;
}

void SyncForTabSwitch(TabrixContext& context) {
  ForEachShownPanel(context, [&](PanelRecord& panel) {
    if (panel.tabIndex == lastTabIndex && panel.interface.Sync) {
      panel.interface.Sync(panel.context, context.session, false);
    }
  });
  ForEachShownPanel(context, [&](PanelRecord& panel) {
    if (panel.tabIndex != lastTabIndex && panel.interface.Sync) {
      panel.interface.Sync(panel.context, context.session, true);
    }
  });
}

Status PanelsSummaryText(TabrixContext& context, Array** titles, Array** values) {
  if (titles) *titles = nullptr;
  if (values) *values = nullptr;
  Status status = kNoErr;
  ForEachShownPanel(context, [&](PanelRecord& panel) {
    if (!panel.interface.GetSummaryText) return;
    Array* panelTitles = nullptr;
    Array* panelValues = nullptr;
    status = panel.interface.GetSummaryText(panel.context, &panelTitles, &panelValues);
    // A panel that answers nothing leaves an earlier answer standing.
    if (panelTitles && titles) *titles = panelTitles;
    if (panelValues && values) *values = panelValues;
  });
  return status;
}

void TerminatePanels(TabrixContext& context, Status status) {
  ForEachShownPanel(context, [&](PanelRecord& panel) {
    if (panel.interface.Terminate) panel.interface.Terminate(panel.context, status);
    panel.context = nullptr;
  });
  context.panels.clear();
  context.panels.shrink_to_fit();
  context.panelCount = 0;
}

}  // namespace zorva

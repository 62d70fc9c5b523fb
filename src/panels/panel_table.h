// The six panels' constants: entry point, title key, creator, and the view
// (.ui file and its top-level widget) each loads into its pane.
#pragma once

#include <cstdint>
#include <string_view>

namespace zorva {

inline constexpr std::uint32_t kCreatorZshl = 0x5A73686C;  // "Zshl"
inline constexpr std::uint32_t kCreatorZPDE = 0x5A504445;  // "ZPDE"
// The special pages panel leaves the caller's creator as it was.
inline constexpr std::uint32_t kCreatorNotSet = 0;

enum class PanelKind {
  PaperOutput,
  SpecialPages,
  ImageOptions,
  JobNotes,
  BookletWatermark,
  Advanced
};

struct PanelDescription {
  std::string_view entryPoint;
  std::string_view titleKey;
  std::string_view uiFile;  // resource "<uiFile>.ui"
  std::string_view window;  // its top-level widget
  std::uint32_t creator;
  PanelKind kind;
};

inline constexpr PanelDescription kPanelTable[] = {
    {"GetPaperOutputPanelInterface", "PaperOutput", "Paper_Output", "Panel", kCreatorZshl,
     PanelKind::PaperOutput},
    {"GetSpecialPagesPanelInterface", "SpecialPagesTitle", "SpecialPages", "SpecialPages",
     kCreatorNotSet, PanelKind::SpecialPages},
    {"GetImageOptionsPanelInterface", "ImageOptions", "ImageOptionsPanel", "ImageOptionsPanel",
     kCreatorZshl, PanelKind::ImageOptions},
    {"GetJobNotesPanelInterface", "JobNotes", "JobNotes", "JobNotesEnhanced", kCreatorZshl,
     PanelKind::JobNotes},
    {"GetBookletWatermarkPanelInterface", "BookletWatermarkPanelTitle", "BookletWatermarkPanel",
     "Panel", kCreatorZshl, PanelKind::BookletWatermark},
    {"GetAdvancedPanelInterface", "Advanced", "AdvancedPanel", "Advanced", kCreatorZPDE,
     PanelKind::Advanced},
};

// Rows sit at their kind's position, so a kind finds its row directly.
static_assert([] {
  int i = 0;
  for (const PanelDescription& row : kPanelTable) {
    if (static_cast<int>(row.kind) != i++) return false;
  }
  return true;
}());

constexpr const PanelDescription& DescribePanel(PanelKind kind) {
  return kPanelTable[static_cast<int>(kind)];
}

}  // namespace zorva

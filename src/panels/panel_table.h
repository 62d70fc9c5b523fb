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
  PanelKind kind;
  std::string_view entryPoint;
  std::string_view titleKey;
  std::uint32_t creator;
  std::string_view uiFile;  // resource "<uiFile>.ui"
  std::string_view window;  // its top-level widget
};

inline constexpr PanelDescription kPanelTable[] = {
    {PanelKind::PaperOutput, "GetPaperOutputPanelInterface", "PaperOutput", kCreatorZshl,
     "Paper_Output", "Panel"},
    {PanelKind::SpecialPages, "GetSpecialPagesPanelInterface", "SpecialPagesTitle", kCreatorNotSet,
     "SpecialPages", "SpecialPages"},
    {PanelKind::ImageOptions, "GetImageOptionsPanelInterface", "ImageOptions", kCreatorZshl,
     "ImageOptionsPanel", "ImageOptionsPanel"},
    {PanelKind::JobNotes, "GetJobNotesPanelInterface", "JobNotes", kCreatorZshl, "JobNotes",
     "JobNotesEnhanced"},
    {PanelKind::BookletWatermark, "GetBookletWatermarkPanelInterface", "BookletWatermarkPanelTitle",
     kCreatorZshl, "BookletWatermarkPanel", "Panel"},
    {PanelKind::Advanced, "GetAdvancedPanelInterface", "Advanced", kCreatorZPDE, "AdvancedPanel",
     "Advanced"},
};

constexpr const PanelDescription& DescribePanel(PanelKind kind) {
  return kPanelTable[static_cast<int>(kind)];
}

}  // namespace zorva

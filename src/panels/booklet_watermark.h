// The Booklet/Watermark panel's settings and how they travel between the
// print settings and the panel: booklet layout, gutter, creep, page borders,
// fold and staple, turning the booklet's pages, and the chosen watermark;
// the watermark menu's items (the keyword table's setting and commands with
// the stored watermarks between them); and the watermark editor's rules for
// a record's name and its values' ranges.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/ticket.h"
#include "core/ticket_keys.h"
#include "host/setting_map.h"
#include "watermarks/watermark_choice.h"

namespace zorva {

// Fold codes of "com.zorva.print.BookletFoldStaple" (the job ticket's booklet
// fold codes); 0 is no fold.
extern const SettingMap BookletFoldStapleMap[];

inline constexpr std::int32_t kDefaultGutter = 24;  // points
inline constexpr std::int32_t kMaxGutter = 144;
inline constexpr std::int32_t kMaxCreep = 72;

struct BookletSettings {
  bool layout = false;
  std::int32_t drawOutlines = 0;  // 1: page borders
  std::int32_t gutter = kDefaultGutter;
  std::int32_t creep = 0;
  std::int32_t foldStaple = 0;
  bool rotate180 = false;
  std::string watermark;  // empty: none
  // The watermark's options: on the first page only, over the page's marks.
  bool watermarkFirstPageOnly = false;
  bool watermarkInFront = false;
  friend bool operator==(const BookletSettings&, const BookletSettings&) = default;
};

BookletSettings ReadBookletSettings(const Ticket& ticket);
// Layout, borders, fold and staple, turning and the watermark with
// "com.zorva.printingmanager"; gutter and creep with the host's one-letter
// client. The watermark's keys go when there is none; its two options are
// stored only when on, as the print path reads them.
void WriteBookletSettings(Ticket& ticket, const BookletSettings& settings);

// ---- Watermark menu ----------------------------------------------------------------
// Command of the items naming a stored watermark.
inline constexpr std::uint32_t kWatermarkItemCommand = FourCC("ZWmW");
struct WatermarkMenuItem {
  std::string key;  // localisation key, or the watermark's name (isName)
  std::int32_t value;
  std::uint32_t command;
  bool isName;
};
// WatermarkMap's first row ("no watermark"), the stored names, then the
// separator and the commands.
std::vector<WatermarkMenuItem> WatermarkMenuItems(const std::vector<std::string>& names);

// ---- Watermark editor ---------------------------------------------------------------
inline constexpr int kMinFontSize = 6;
inline constexpr int kMaxFontSize = 400;
inline constexpr int kMaxDensity = 100;  // per cent of the colour laid down
inline constexpr int kMinScale = 10;     // per cent
inline constexpr int kMaxScale = 400;
// A letter-size page, in points, for the position fields and the preview.
inline constexpr double kPreviewPageWidth = 612;
inline constexpr double kPreviewPageHeight = 792;

// The list after saving a record named `name` that was `previous` (empty for
// a new one): renamed in place, or appended when new; never twice.
std::vector<std::string> ListAfterSave(std::vector<std::string> names, std::string_view previous,
                                       std::string_view name);
// The list without name.
std::vector<std::string> ListAfterDelete(std::vector<std::string> names, std::string_view name);

}  // namespace zorva

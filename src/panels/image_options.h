// The Image Options panel's settings and how they travel between the print
// settings and the panel: resolution, lighten/darken, toner saver,
// anti-aliasing, halftone, output order, emulation (each a menu of a keyword
// table), the job's image shift, its full colour options and its highlight
// colour. Also the unit conversions of the image shift dialog and the
// spin-box encoding of the colour dialog's optional numbers.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/ticket.h"
#include "core/value.h"
#include "host/setting_map.h"
#include "model/full_color_options.h"
#include "model/image_shift_options.h"

namespace zorva {

// The panel's menu settings; kUnset means the printer decides and leaves
// the key out of the ticket.
struct ImageMenuSettings {
  std::int32_t resolution = kUnset;
  std::int32_t lightenDarken = kUnset;
  std::int32_t tonerSaver = kUnset;  // 0 off, 1 on (a boolean in the ticket)
  std::int32_t antialiasing = kUnset;
  std::int32_t halftone = kUnset;
  std::int32_t outputOrder = kUnset;
  std::int32_t emulation = kUnset;
  friend bool operator==(const ImageMenuSettings&, const ImageMenuSettings&) = default;
};

// One menu of the panel: its ticket key, its keyword table and its field.
struct ImageMenuRow {
  std::string_view key;
  const SettingMap* map;
  std::int32_t ImageMenuSettings::*field;
  bool boolean;  // stored as a boolean (toner saver)
};
std::span<const ImageMenuRow> ImageMenuRows();

// The highlight colour: a colorant (1-6), or 7 with a custom colour number
// and colour. Entries the panel does not edit (an imported HSV colour, say)
// are kept as they came.
inline constexpr std::int32_t kHighlightCustomColor = 7;
struct HighlightSettings {
  std::int32_t printingColor = kUnset;
  std::int32_t customIndex = 1;
  // The custom colour as 0-255 RGB, when the ticket holds one in RGB.
  std::optional<std::array<std::int32_t, 3>> rgb;
  Dictionary original;  // the dictionary as read (empty when absent)
  friend bool operator==(const HighlightSettings&, const HighlightSettings&) = default;
};

struct ImageOptionsSettings {
  ImageMenuSettings menus;
  ImageShiftOptions imageShift;
  // The ticket held an image shift, or the user set one: written back.
  bool hasImageShift = false;
  FullColorOptions fullColor;
  HighlightSettings highlight;
  friend bool operator==(const ImageOptionsSettings&, const ImageOptionsSettings&) = default;
};

// Reads the panel's keys; absent ones leave the printer's defaults.
ImageOptionsSettings ReadImageOptionsSettings(const Ticket& ticket);

// Writes the settings with the host's one-letter client: each menu value
// (removed when printer default), the image shift (when there is one), the
// full colour options (removed when nothing is set) and the highlight colour.
void WriteImageOptionsSettings(Ticket& ticket, const ImageOptionsSettings& settings);

// ---- Image shift dialog --------------------------------------------------------------

// The four shifts as the dialog shows them, in inches or millimetres.
struct ShiftDisplay {
  bool inches = true;
  double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
};
// Largest shift the dialog offers, either way, in millimetres.
inline constexpr double kMaxShiftMillimetres = 50.8;

// The stored shifts in the units the options name.
ShiftDisplay ShiftForDisplay(const ImageShiftOptions& options);
// The same shifts in the other units (for the units switch).
ShiftDisplay ConvertShiftDisplay(const ShiftDisplay& display, bool inches);
// Stores the shown shifts: inches as hundredths of an inch, millimetres as
// hundredths of a millimetre (full precision). A side whose mode is "none"
// gets no shift, so the printer moves nothing there.
void ApplyShiftDisplay(ImageShiftOptions& options, const ShiftDisplay& display);

// ---- Full colour dialog ------------------------------------------------------------------

// Optional numbers sit in spin boxes whose minimum (one below the range)
// means "not set".
inline constexpr int kAdjustmentMinimum = -100;
inline constexpr int kAdjustmentMaximum = 100;
inline constexpr int kTrapWidthMaximum = 20;
int SpinValueFor(std::int32_t value, int rangeMinimum);
std::int32_t ValueForSpin(int spin, int rangeMinimum);

}  // namespace zorva

// The Image Options panel's ticket reading and writing, and the unit and
// spin-box conversions its dialogs use.
#include "panels/image_options.h"

#include <cmath>

#include "core/ticket_keys.h"
#include "host/keyword_tables.h"
#include "host/ticket_helpers.h"

namespace zorva {

namespace key = tkey;

namespace {

constexpr ImageMenuRow kMenuRows[] = {
    {key::kResolution, ResolutionMap, &ImageMenuSettings::resolution, false},
    {key::kLightenDarken, LightenDarkenMenuMap, &ImageMenuSettings::lightenDarken, false},
    {key::kTonerSaver, TonerSaverMap, &ImageMenuSettings::tonerSaver, true},
    {key::kAntialiasing, AntialiasingMap, &ImageMenuSettings::antialiasing, false},
    {key::kHalftoneScreen, HalftoneScreenMap, &ImageMenuSettings::halftone, false},
    {key::kOutputOrder, OutputOrderMap, &ImageMenuSettings::outputOrder, false},
    {key::kPrinterEmulation, PrinterEmulationMap, &ImageMenuSettings::emulation, false},
};

constexpr std::string_view kClient = kTicketClientSystem;
constexpr double kMillimetresPerInch = 25.4;

void ReadMenus(const Ticket& ticket, ImageMenuSettings& menus) {
  for (const ImageMenuRow& row : kMenuRows) {
    if (row.boolean) {
      if (const std::optional<bool> b = ticket.getBoolean(row.key)) menus.*row.field = *b ? 1 : 0;
    } else {
      ticket.getNumber(row.key, menus.*row.field);
    }
  }
}

void WriteMenus(Ticket& ticket, const ImageMenuSettings& menus) {
  for (const ImageMenuRow& row : kMenuRows) {
    const std::int32_t value = menus.*row.field;
    if (value == kUnset) {
      ticket.remove(row.key);
    } else if (row.boolean) {
      ticket.setBoolean(kClient, row.key, value != 0);
    } else {
      ticket.setNumber(kClient, row.key, value);
    }
  }
}

HighlightSettings ReadHighlight(const Dictionary* d) {
  HighlightSettings h;
  if (!d) return h;
  h.original = *d;
  DictionaryGetInt32(d, key::kHighlightPrintingColor, h.printingColor);
  DictionaryGetInt32(d, key::kHighlightCustomColorIndex, h.customIndex);
  const Dictionary* color = d->getDictionary(key::kHighlightCustomColor);
  std::array<std::int32_t, 3> rgb{};
  if (DictionaryGetInt32(color, key::kColorRed, rgb[0]) &&
      DictionaryGetInt32(color, key::kColorGreen, rgb[1]) &&
      DictionaryGetInt32(color, key::kColorBlue, rgb[2])) {
    h.rgb = rgb;
  }
  return h;
}

// The read dictionary with the panel's entries over it; colour entries of
// another colorant stay, so choosing the custom colour again finds them.
Dictionary HighlightDictionary(const HighlightSettings& h) {
  Dictionary d = h.original;
  if (h.printingColor == kUnset) {
    d.erase(key::kHighlightPrintingColor);
  } else {
    d.set(key::kHighlightPrintingColor, Value(h.printingColor));
  }
  if (h.printingColor == kHighlightCustomColor) {
    d.set(key::kHighlightCustomColorIndex, Value(h.customIndex));
    if (h.rgb) {
      Dictionary color;
      color.set(key::kColorRed, Value((*h.rgb)[0]));
      color.set(key::kColorGreen, Value((*h.rgb)[1]));
      color.set(key::kColorBlue, Value((*h.rgb)[2]));
      d.set(key::kHighlightCustomColor, Value(std::move(color)));
    }
  }
  return d;
}

// Hundredths of a millimetre for one stored shift.
double HundredthsOfMillimetre(const ImageShiftOptions& o, std::int32_t v) {
  if (o.fullPrecision()) return v;
  return o.inches() != 0 ? v * kMillimetresPerInch : v * 10.0;
}

double Shown(const ImageShiftOptions& o, std::int32_t v) {
  // Whole hundredths of an inch show exactly.
  if (o.inches() != 0 && !o.fullPrecision()) return v / 100.0;
  const double hmm = HundredthsOfMillimetre(o, v);
  return o.inches() != 0 ? hmm / (kMillimetresPerInch * 100.0) : hmm / 100.0;
}

std::int32_t Hundredths(double shown) {
  return static_cast<std::int32_t>(std::lround(shown * 100.0));
}

}  // namespace

std::span<const ImageMenuRow> ImageMenuRows() {
  return kMenuRows;
}

ImageOptionsSettings ReadImageOptionsSettings(const Ticket& ticket) {
  ImageOptionsSettings s;
  ReadMenus(ticket, s.menus);
  if (const Dictionary* shift = ticket.getDictionary(key::kImageShiftJob)) {
    s.imageShift.fromTicket(shift);
    s.hasImageShift = true;
  }
  s.fullColor.fromTicket(ticket.getDictionary(key::kFullColorOptions));
  s.highlight = ReadHighlight(ticket.getDictionary(key::kHighlightColorOptionsJob));
  return s;
}

void WriteImageOptionsSettings(Ticket& ticket, const ImageOptionsSettings& s) {
  WriteMenus(ticket, s.menus);
  if (s.hasImageShift) {
    if (std::optional<Dictionary> d = s.imageShift.asTicket(ImageShiftForm::Job)) {
      ticket.setDictionary(kClient, key::kImageShiftJob, std::move(*d));
    }
  }
  Dictionary color = s.fullColor.asTicket();
  if (color.empty()) {
    ticket.remove(key::kFullColorOptions);
  } else {
    ticket.setDictionary(kClient, key::kFullColorOptions, std::move(color));
  }
  Dictionary highlight = HighlightDictionary(s.highlight);
  if (highlight.empty()) {
    ticket.remove(key::kHighlightColorOptionsJob);
  } else {
    ticket.setDictionary(kClient, key::kHighlightColorOptionsJob, std::move(highlight));
  }
}

ShiftDisplay ShiftForDisplay(const ImageShiftOptions& o) {
  return {o.inches() != 0, Shown(o, o.x1()), Shown(o, o.y1()), Shown(o, o.x2()), Shown(o, o.y2())};
}

ShiftDisplay ConvertShiftDisplay(const ShiftDisplay& d, bool inches) {
  if (d.inches == inches) return d;
  const double f = inches ? 1.0 / kMillimetresPerInch : kMillimetresPerInch;
  // Shown to two decimals in either unit.
  const auto c = [f](double v) { return std::round(v * f * 100.0) / 100.0; };
  return {inches, c(d.x1), c(d.y1), c(d.x2), c(d.y2)};
}

void ApplyShiftDisplay(ImageShiftOptions& o, const ShiftDisplay& d) {
  o.setInches(d.inches ? 1 : 0);
  o.setFullPrecision(!d.inches);
  const bool front = o.oneSidedMode() == kImageShiftCustom || o.twoSidedMode() == kImageShiftCustom;
  const bool back = o.twoSidedMode() == kImageShiftCustom;
  o.setX1(front ? Hundredths(d.x1) : 0);
  o.setY1(front ? Hundredths(d.y1) : 0);
  o.setX2(back ? Hundredths(d.x2) : 0);
  o.setY2(back ? Hundredths(d.y2) : 0);
}

int SpinValueFor(std::int32_t value, int rangeMinimum) {
  return value == kUnset ? rangeMinimum - 1 : value;
}

std::int32_t ValueForSpin(int spin, int rangeMinimum) {
  return spin < rangeMinimum ? kUnset : spin;
}

}  // namespace zorva

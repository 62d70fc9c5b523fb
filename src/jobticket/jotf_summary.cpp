// Building the summary lines. Labels and value texts are localised strings
// of the bundle; values without a text of their own (weights, names, sizes
// in millimetres) are shown as they stand.
#include "jobticket/jotf_summary.h"

#include <cstdio>
#include <string_view>

#include "core/bundle.h"
#include "core/ticket_keys.h"
#include "host/keyword_tables.h"
#include "jobticket/jotf_maps.h"
#include "jobticket/jotf_read.h"
#include "jobticket/jotf_special_pages.h"
#include "model/stock.h"

namespace zorva {

namespace {

namespace key = tkey;

std::string L(std::string_view k) {
  return std::string(LocalizedString(k));
}

void Heading(SummaryLines& lines, std::string_view heading) {
  lines.push_back("\t" + L(heading));
}

void Separator(SummaryLines& lines) {
  lines.emplace_back(" ");
}

// "\t\t%@%@%@": label, separator, value.
void Setting(SummaryLines& lines, std::string_view label, const std::string& value) {
  lines.push_back("\t\t" + L(label) + L(":") + value);
}

// "\t\t\t%@ = %@": a line of a nested value.
void Nested(SummaryLines& lines, std::string_view label, const std::string& value) {
  lines.push_back("\t\t\t" + L(label) + " = " + value);
}

std::string MapText(const SettingMap* map, std::int32_t value) {
  const char* k = LocalizedKeyForTicketValue(map, value);
  return k ? L(k) : std::to_string(value);
}

// ---- Job notes ---------------------------------------------------------------------

struct NoteRow {
  std::string_view key;
  std::string_view label;
};
constexpr NoteRow kNotes[] = {
    {key::kJobNotesJobName, "Job Name"},
    {key::kJobNotesSenderName, "Sender Name"},
    {key::kJobNotesRecipient, "Recipient Name"},
    {key::kJobNotesMessage, "SpecialInstructions"},
    {key::kJobNotesAdditionalInfo, "AdditionalInfo"},
};

// ---- Stock ---------------------------------------------------------------------------

std::string SizeText(const Dictionary& stock) {
  const std::int32_t size = jotf::ReadInt32Or(&stock, key::kSize, kUnset);
  const auto w = jotf::ReadInt32(&stock, key::kWidth), h = jotf::ReadInt32(&stock, key::kLength);
  if (size != kStockSizeCustom || !w || !h) {
    const char* k = LocalizedKeyForPaperSizeTicketValue(CompleteStockSizeMap, size);
    return k ? L(k) : std::to_string(size);
  }
  char text[64];
  std::snprintf(text, sizeof text, "%.1f x %.1f mm", *w / 100.0, *h / 100.0);
  return text;
}

// A stock field: its label, the ticket value's text from a menu table, or
// the name stored beside it when the value is the table's "custom" one.
struct StockField {
  std::string_view key;
  std::string_view label;
  const SettingMap* map;
  std::int32_t customValue = kUnset;
  std::string_view customKey = {};
};

const StockField kStockFields[] = {
    {key::kColor, "StockColor", CompleteStockColorMap, 10, key::kCustomColor},
    {key::kType, "StockType", CompleteStockTypeMap, 6, key::kCustomType},
    {key::kWeight, "StockWeight", nullptr},
    {key::kPunched, "StockPunched", StockPunchedMap},
    {key::kDescription, "StockDescription", nullptr},
    {key::kFinish, "StockFinish", FinishMap},
    {key::kGrain, "StockGrain", GrainMap},
    {key::kSidesCoated, "StockSidesCoated", SidesCoatedMap},
    {key::kCoatingType, "StockCoatingType", CoatingTypeMap},
};

void AddStockField(const Dictionary& stock, const StockField& f, SummaryLines& lines) {
  if (const std::string* text = stock.getString(f.key)) {
    Nested(lines, f.label, *text);
    return;
  }
  const auto v = jotf::ReadInt32(&stock, f.key);
  if (!v) return;
  if (*v == f.customValue) {
    if (const std::string* name = stock.getString(f.customKey)) {
      Nested(lines, f.label, *name);
      return;
    }
  }
  if (!f.map) {
    Nested(lines, f.label,
           f.key == key::kWeight ? std::to_string(*v) + " g/m\xC2\xB2" : std::to_string(*v));
    return;
  }
  Nested(lines, f.label, MapText(f.map, *v));
}

// ---- Output ----------------------------------------------------------------------------

// Staple positions: on the portrait page, and where that lands on the
// landscape page (the page turned a quarter to the left).
struct StaplePosition {
  std::int32_t value;
  std::string_view choice;
  std::string_view portrait;
  std::string_view landscape;
};
constexpr StaplePosition kStaples[] = {
    {5, "1 Staple", "Portrait - Top Left", "Landscape - Top Right"},
    {6, "1 Staple", "Portrait - Bottom Left", "Landscape - Top Left"},
    {7, "1 Staple", "Portrait - Top Right", "Landscape - Bottom Right"},
    {8, "1 Staple", "Portrait - Bottom Right", "Landscape - Bottom Left"},
    {10, "2 Staples", "Portrait - Left", "Landscape - Top"},
    {11, "2 Staples", "Portrait - Top", "Landscape - Right"},
    {12, "2 Staples", "Portrait - Bottom", "Landscape - Left"},
    {13, "2 Staples", "Portrait - Right", "Landscape - Bottom"},
    {26, "3 Staples", "Portrait - Left", "Landscape - Top"},
    {27, "3 Staples", "Portrait - Top", "Landscape - Right"},
    {28, "3 Staples", "Portrait - Bottom", "Landscape - Left"},
    {29, "3 Staples", "Portrait - Right", "Landscape - Bottom"},
    // Hole punch edges (the hole-punch dialog's values).
    {32, "HolePunch", "Portrait - Left", "Landscape - Top"},
    {33, "HolePunch", "Portrait - Top", "Landscape - Right"},
    {34, "HolePunch", "Portrait - Right", "Landscape - Bottom"},
    {35, "HolePunch", "Portrait - Bottom", "Landscape - Left"},
};

const StaplePosition* PositionOf(std::int32_t value) {
  for (const StaplePosition& p : kStaples) {
    if (p.value == value) return &p;
  }
  return nullptr;
}

std::string Positions(const StaplePosition& p) {
  return L(p.portrait) + "," + L(p.landscape);
}

// Finishing choices that are one text.
struct FinishingText {
  std::int32_t option;
  std::string_view text;
};
constexpr FinishingText kFinishingTexts[] = {
    {1, "No Finishing"}, {5, "Bind"}, {9, "Fold"}, {10, "Z-Fold"}, {12, "SignatureBookletMaker"},
};

constexpr std::int32_t kBookletFoldOnly = 13;

struct DestinationText {
  std::int32_t value;
  std::string_view text;
};
constexpr DestinationText kDestinations[] = {
    {1, "Automatic Output"}, {2, "Top Tray"},   {3, "Top Tray"}, {16, "Top Tray"}, {18, "Top Tray"},
    {4, "Stacker"},          {12, "Stacker"},   {17, "Stacker"}, {5, "Stacker 1"}, {6, "Stacker 2"},
    {8, "Top Tray 1"},       {9, "Top Tray 2"}, {20, "Tray 1"},
};

void AddFinishingChoice(const Dictionary& s, std::int32_t option, SummaryLines& lines) {
  for (const FinishingText& t : kFinishingTexts) {
    if (t.option == option) Setting(lines, "Stapling/Finishing", L(t.text));
  }
  if (option == 14) {
    const bool foldOnly = jotf::ReadInt32Or(&s, key::kBookletFoldStaple, 0) == kBookletFoldOnly;
    Setting(lines, "Stapling/Finishing", L(foldOnly ? "BookletFold" : "BookletFoldStaple"));
  }
  if (option == 13) {
    const std::string* name = s.getString(key::kFinishingCustom);
    Setting(lines, "Stapling/Finishing", L("Custom Finishing") + (name ? " " + *name : ""));
  }
}

}  // namespace

void addStaple(std::int32_t value, SummaryLines& lines) {
  const StaplePosition* p = PositionOf(value);
  if (!p || p->choice == "HolePunch") return;
  Setting(lines, "Stapling/Finishing", L(p->choice) + " (" + Positions(*p) + ")");
}

void addHolePunch(std::int32_t value, std::int32_t holes, SummaryLines& lines) {
  const StaplePosition* p = PositionOf(value);
  if (!p || p->choice != "HolePunch") return;
  // "\t\t\t%@%@%@%@%@": label, separator, number of holes, blank, positions.
  lines.push_back("\t\t\t" + L("HolePunch") + L(":") +
                  FormatString(L("%d Holes"), {std::int64_t{holes}}) + " " + Positions(*p));
}

void addJobNotes(const Dictionary& settings, SummaryLines& lines) {
  Heading(lines, "JobNotes");
  for (const NoteRow& row : kNotes) {
    if (const std::string* text = settings.getString(row.key)) Setting(lines, row.label, *text);
  }
  Separator(lines);
}

void addJobSetup(const Dictionary& settings, SummaryLines& lines) {
  Heading(lines, "Job Setup");
  if (const auto duplex = jotf::ReadInt32(&settings, key::kFinishingDuplex)) {
    Setting(lines, "Duplex Label", MapText(PlexMap, *duplex));
  }
  if (const Dictionary* stock = settings.getDictionary(key::kJobLevelStock)) {
    lines.push_back("\t\t" + L("PaperStock") + L(":"));
    if (stock->contains(key::kSize)) Nested(lines, "StockSize", SizeText(*stock));
    for (const StockField& f : kStockFields) AddStockField(*stock, f, lines);
  }
  Separator(lines);
}

void addOutputLocation(const Dictionary& settings, SummaryLines& lines) {
  const auto v = jotf::ReadInt32(&settings, key::kOutputDestination);
  if (!v) return;
  for (const DestinationText& d : kDestinations) {
    if (d.value == *v) {
      Setting(lines, "Output Location", L(d.text));
      return;
    }
  }
}

void addOutput(const Dictionary& settings, SummaryLines& lines) {
  Heading(lines, "Output");
  const std::int32_t option = jotf::ReadInt32Or(&settings, key::kFinishingOptions, 0);
  auto value = [&](std::string_view k) { return jotf::ReadInt32Or(&settings, k, 0); };
  if (option == 2) addStaple(value(key::kFinishingStaple1), lines);
  if (option == 3) addStaple(value(key::kFinishingStaple2), lines);
  if (option == 4) addStaple(value(key::kFinishingStapleCenter), lines);
  if (option >= 6 && option <= 8) {
    addHolePunch(value(key::kFinishingHolePunch), option - 4, lines);
  }
  if (option == 11) {
    Setting(lines, "Stapling/Finishing", L("Multiple Finishing"));
    for (std::string_view k :
         {key::kFinishingStaple1, key::kFinishingStaple2, key::kFinishingStapleCenter}) {
      if (value(k) > 0) {
        addStaple(value(k), lines);
        break;
      }
    }
    const std::int32_t holes = value(key::kFinishingHolePunchOptions);
    addHolePunch(value(key::kFinishingHolePunch), holes > 0 ? holes : 3, lines);
    if (value(key::kFinishingZFold) > 0) Setting(lines, "Stapling/Finishing", L("Z-Fold"));
  }
  AddFinishingChoice(settings, option, lines);
  addOutputLocation(settings, lines);
  Separator(lines);
}

void addImageAdjustment(const Dictionary& settings, SummaryLines& lines) {
  Heading(lines, "Image Adjustment");
  if (const Dictionary* shift = settings.getDictionary(key::kImageShiftJob)) {
    ImageShiftSelections s;
    FillImageShift(shift, &s);
    char text[160];
    std::snprintf(text, sizeof text, "%.2f, %.2f / %.2f, %.2f mm", s.x1 / 100.0, s.y1 / 100.0,
                  s.x2 / 100.0, s.y2 / 100.0);
    Setting(lines, "ImageShift", text);
  }
  if (const auto prescan = jotf::ReadInt32(&settings, key::kOPIPrescan)) {
    const char* k = JotfKeywordFor(JotfOPIPrescanMap, *prescan);
    if (k) Setting(lines, "OPI Prescan", L(std::string("OPI ") + k));
  }
  Separator(lines);
}

// The summary does not describe these.
void addImageQuality(const Dictionary&, SummaryLines&) {}
void addColor(const Dictionary&, SummaryLines&) {}
void addHLColor(const Dictionary&, SummaryLines&) {}
void addSpecialPages(const Dictionary&, SummaryLines&) {}

void buildSummaryText(const Dictionary& settings, SummaryLines& lines) {
  addJobNotes(settings, lines);
  addJobSetup(settings, lines);
  addOutput(settings, lines);
  addImageAdjustment(settings, lines);
  addImageQuality(settings, lines);
  addColor(settings, lines);
  addHLColor(settings, lines);
  addSpecialPages(settings, lines);
}

std::string JoinSummaryLines(const SummaryLines& lines) {
  std::string text;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i) text += '\n';
    text += lines[i];
  }
  return text;
}

}  // namespace zorva

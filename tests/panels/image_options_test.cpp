// The Image Options panel's ticket rules: printer defaults leave keys out,
// every menu value round-trips under its key and is one the job ticket
// writer has a keyword for, the image shift's units, the highlight colour's
// kept entries and the colour dialog's spin encoding.
#include "panels/image_options.h"

#include <gtest/gtest.h>

#include "core/ticket_keys.h"
#include "host/keyword_tables.h"
#include "host/ticket_helpers.h"
#include "jobticket/jotf_maps.h"

namespace zorva {
namespace {

namespace key = tkey;

TEST(ImageOptions, AnEmptyTicketReadsAsPrinterDefaultsAndWritesNothing) {
  Ticket ticket;
  const ImageOptionsSettings s = ReadImageOptionsSettings(ticket);
  EXPECT_EQ(s.menus, ImageMenuSettings{});
  EXPECT_FALSE(s.hasImageShift);
  EXPECT_EQ(s.highlight.printingColor, kUnset);
  WriteImageOptionsSettings(ticket, s);
  EXPECT_TRUE(ticket.empty());
}

TEST(ImageOptions, EveryMenuValueRoundTripsUnderItsKeyWithTheHostsClient) {
  for (const ImageMenuRow& row : ImageMenuRows()) {
    for (const SettingMap* item = row.map; item->key; ++item) {
      if (item->value == kUnset) continue;
      Ticket ticket;
      ImageOptionsSettings s;
      s.menus.*row.field = item->value;
      WriteImageOptionsSettings(ticket, s);
      ASSERT_EQ(ticket.size(), 1u) << row.key;
      const TicketItem* stored = ticket.item(row.key);
      ASSERT_NE(stored, nullptr) << row.key;
      EXPECT_EQ(stored->client, "Z");
      EXPECT_FALSE(stored->locked);
      if (row.boolean) {
        EXPECT_EQ(ticket.getBoolean(row.key), item->value != 0);
      }
      EXPECT_EQ(ReadImageOptionsSettings(ticket).menus.*row.field, item->value) << row.key;
    }
  }
}

TEST(ImageOptions, PrinterDefaultRemovesWhatTheTicketHeld) {
  Ticket ticket;
  ticket.setNumber("ZORVA", key::kResolution, 2);
  ticket.setBoolean("ZORVA", key::kTonerSaver, true);
  ImageOptionsSettings s = ReadImageOptionsSettings(ticket);
  EXPECT_EQ(s.menus.resolution, 2);
  EXPECT_EQ(s.menus.tonerSaver, 1);
  s.menus.resolution = kUnset;
  s.menus.tonerSaver = 0;
  WriteImageOptionsSettings(ticket, s);
  EXPECT_FALSE(ticket.contains(key::kResolution));
  EXPECT_EQ(ticket.getBoolean(key::kTonerSaver), false);
}

bool Lists(std::span<const JotfKeywordRow> map, std::int32_t value) {
  for (const JotfKeywordRow& row : map) {
    if (row.value == value) return true;
  }
  return false;
}

// A menu item the writer has no keyword for would vanish from the job ticket.
TEST(ImageOptions, EveryMenuValueIsOneTheJobTicketWriterKnows) {
  const struct {
    const SettingMap* menu;
    std::span<const JotfKeywordRow> writer;
  } pairs[] = {
      {ResolutionMap, JotfResolutionMap},
      {AntialiasingMap, JotfAntialiasingMap},
      {HalftoneScreenMap, JotfHalftoneMap},
      {OutputOrderMap, JotfOutputOrderMap},
      {PrinterEmulationMap, JotfPrinterEmulationMap},
      {TrappingMap, JotfTrappingMap},
      {BlackOverprintMap, JotfBlackOverprintMap},
      {RenderingIntentMap, JotfRenderingMap},
      {TonerSaverMap, JotfTonerSaverMap},
  };
  for (const auto& pair : pairs) {
    for (const SettingMap* item = pair.menu; item->key; ++item) {
      if (item->value != kUnset) {
        EXPECT_TRUE(Lists(pair.writer, item->value)) << item->key;
      }
    }
  }
  for (const SettingMap* item = HighlightColorMap; item->key; ++item) {
    if (item->value == kUnset || item->value == kHighlightCustomColor) continue;
    EXPECT_TRUE(Lists(JotfHighlightColorantMap, item->value)) << item->key;
  }
}

TEST(ImageOptions, AnImageShiftIsWrittenBackOnlyWhenThereIsOne) {
  Ticket ticket;
  const Dictionary imported{
      {"X1", Value(150)}, {"Y1", Value(-20)}, {"FullPrecision", Value(true)}, {"Option", Value(2)}};
  ticket.setDictionary("ZORVA", key::kImageShiftJob, imported);
  ImageOptionsSettings s = ReadImageOptionsSettings(ticket);
  ASSERT_TRUE(s.hasImageShift);
  WriteImageOptionsSettings(ticket, s);
  const Dictionary* written = ticket.getDictionary(key::kImageShiftJob);
  ASSERT_NE(written, nullptr);
  EXPECT_EQ(ImageShiftOptions(written), ImageShiftOptions(&imported));
}

TEST(ImageOptions, ShiftsShowInTheUnitsTheyWereStoredIn) {
  const struct {
    Dictionary stored;
    ShiftDisplay shown;
  } cases[] = {
      {{{"Inches", Value(1)}, {"X1", Value(25)}, {"Y2", Value(-100)}}, {true, 0.25, 0, 0, -1}},
      {{{"Inches", Value(0)}, {"X1", Value(127)}}, {false, 12.7, 0, 0, 0}},
      {{{"Inches", Value(0)}, {"X1", Value(1270)}, {"FullPrecision", Value(true)}},
       {false, 12.7, 0, 0, 0}},
      {{{"Inches", Value(1)}, {"Y1", Value(2540)}, {"FullPrecision", Value(true)}},
       {true, 0, 1, 0, 0}},
  };
  for (const auto& c : cases) {
    const ShiftDisplay d = ShiftForDisplay(ImageShiftOptions(&c.stored));
    EXPECT_EQ(d.inches, c.shown.inches);
    EXPECT_DOUBLE_EQ(d.x1, c.shown.x1);
    EXPECT_DOUBLE_EQ(d.y1, c.shown.y1);
    EXPECT_DOUBLE_EQ(d.x2, c.shown.x2);
    EXPECT_DOUBLE_EQ(d.y2, c.shown.y2);
  }
}

TEST(ImageOptions, ShownShiftsAreStoredWithoutLosingHundredths) {
  ImageShiftOptions o;
  o.setOneSidedMode(kImageShiftCustom);
  o.setTwoSidedMode(kImageShiftCustom);
  ApplyShiftDisplay(o, {false, 12.34, -0.05, 1, 2});
  EXPECT_TRUE(o.fullPrecision());
  EXPECT_EQ(o.inches(), 0);
  EXPECT_EQ(o.x1(), 1234);
  EXPECT_EQ(o.y1(), -5);
  EXPECT_EQ(o.y2(), 200);
  ApplyShiftDisplay(o, {true, 0.5, 0, 0, 0.01});
  EXPECT_FALSE(o.fullPrecision());
  EXPECT_EQ(o.inches(), 1);
  EXPECT_EQ(o.x1(), 50);
  EXPECT_EQ(o.y2(), 1);
  // Shown again, the stored values give back what was typed.
  EXPECT_DOUBLE_EQ(ShiftForDisplay(o).x1, 0.5);
}

TEST(ImageOptions, ASideWithoutItsOwnShiftIsNotMoved) {
  ImageShiftOptions o;
  o.setOneSidedMode(kImageShiftCustom);
  o.setTwoSidedMode(kImageShiftOff);
  ApplyShiftDisplay(o, {true, 0.5, 0.5, 0.5, 0.5});
  EXPECT_EQ(o.x1(), 50);
  EXPECT_EQ(o.x2(), 0);
  EXPECT_EQ(o.y2(), 0);
  o.setOneSidedMode(kImageShiftOff);
  ApplyShiftDisplay(o, {true, 0.5, 0.5, 0.5, 0.5});
  EXPECT_EQ(o.x1(), 0);
  // The two-sided shift moves the front too.
  o.setTwoSidedMode(kImageShiftCustom);
  ApplyShiftDisplay(o, {true, 0.5, 0.5, 0.5, 0.5});
  EXPECT_EQ(o.x1(), 50);
  EXPECT_EQ(o.x2(), 50);
}

TEST(ImageOptions, SwitchingUnitsConvertsTheShownShifts) {
  const ShiftDisplay mm = ConvertShiftDisplay({true, 1, -0.5, 0, 0.01}, false);
  EXPECT_FALSE(mm.inches);
  EXPECT_DOUBLE_EQ(mm.x1, 25.4);
  EXPECT_DOUBLE_EQ(mm.y1, -12.7);
  EXPECT_DOUBLE_EQ(mm.y2, 0.25);
  const ShiftDisplay back = ConvertShiftDisplay(mm, true);
  EXPECT_DOUBLE_EQ(back.x1, 1);
  EXPECT_DOUBLE_EQ(back.y1, -0.5);
}

TEST(ImageOptions, FullColourOptionsAreWrittenOnlyWhenSomethingIsSet) {
  Ticket ticket;
  ticket.setDictionary("ZORVA", key::kFullColorOptions, Dictionary{{"FCLightness", Value(5)}});
  ImageOptionsSettings s = ReadImageOptionsSettings(ticket);
  std::int32_t lightness = 0;
  s.fullColor.lightness(&lightness);
  EXPECT_EQ(lightness, 5);
  s.fullColor.setContrast(-30);
  WriteImageOptionsSettings(ticket, s);
  EXPECT_EQ(*ticket.getDictionary(key::kFullColorOptions),
            (Dictionary{{"FCLightness", Value(5)}, {"FCContrast", Value(-30)}}));
  s.fullColor = FullColorOptions{};
  WriteImageOptionsSettings(ticket, s);
  EXPECT_FALSE(ticket.contains(key::kFullColorOptions));
}

TEST(ImageOptions, TheHighlightColourKeepsWhatThePanelDoesNotEdit) {
  Ticket ticket;
  const Dictionary hsv{{"Hue", Value(120)}, {"Saturation", Value(50)}, {"Value", Value(80)}};
  ticket.setDictionary("ZORVA", key::kHighlightColorOptionsJob,
                       Dictionary{{"HiglightPrintingColor", Value(7)},
                                  {"HighlightCustomColorIndex", Value(3)},
                                  {"HighlightCustomColor", Value(hsv)}});
  ImageOptionsSettings s = ReadImageOptionsSettings(ticket);
  EXPECT_EQ(s.highlight.printingColor, 7);
  EXPECT_EQ(s.highlight.customIndex, 3);
  EXPECT_FALSE(s.highlight.rgb);
  WriteImageOptionsSettings(ticket, s);
  EXPECT_EQ(
      *ticket.getDictionary(key::kHighlightColorOptionsJob)->getDictionary("HighlightCustomColor"),
      hsv);
  // A colour picked in the panel replaces it with RGB.
  s.highlight.rgb = std::array<std::int32_t, 3>{255, 0, 10};
  WriteImageOptionsSettings(ticket, s);
  EXPECT_EQ(
      *ticket.getDictionary(key::kHighlightColorOptionsJob)->getDictionary("HighlightCustomColor"),
      (Dictionary{{"Red", Value(255)}, {"Green", Value(0)}, {"Blue", Value(10)}}));
  // A colorant: the custom colour stays for a later return to it.
  s.highlight.printingColor = 2;
  WriteImageOptionsSettings(ticket, s);
  const Dictionary* h = ticket.getDictionary(key::kHighlightColorOptionsJob);
  std::int32_t colorant = 0;
  EXPECT_TRUE(DictionaryGetInt32(h, "HiglightPrintingColor", colorant));
  EXPECT_EQ(colorant, 2);
  EXPECT_TRUE(h->contains("HighlightCustomColor"));
}

TEST(ImageOptions, SpinBoxesShowUnsetOneBelowTheirRange) {
  EXPECT_EQ(SpinValueFor(kUnset, kAdjustmentMinimum), -101);
  EXPECT_EQ(SpinValueFor(-100, kAdjustmentMinimum), -100);
  EXPECT_EQ(ValueForSpin(-101, kAdjustmentMinimum), kUnset);
  EXPECT_EQ(ValueForSpin(0, 0), 0);
  EXPECT_EQ(ValueForSpin(-1, 0), kUnset);
}

}  // namespace
}  // namespace zorva

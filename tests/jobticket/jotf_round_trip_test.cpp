// Export then import gives back the ticket: random tickets (seeded, so a
// failure names its seed) drawn from what the writer expresses and import
// reads. The values that cannot come back are left out of the draw, each for
// the reason given where it is left out.
#include <gtest/gtest.h>

#include <random>

#include "host/keyword_tables.h"
#include "jobticket/device_profile.h"
#include "jobticket/jotf_export.h"
#include "jobticket/jotf_import.h"
#include "support/test_support.h"

namespace zorva {
namespace {

class Draw {
 public:
  explicit Draw(std::uint32_t seed) : rng_(seed) {}
  int range(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng_); }
  bool coin() { return range(0, 1) == 1; }
  template <class T>
  T pick(std::initializer_list<T> list) {
    return *(list.begin() + range(0, static_cast<int>(list.size()) - 1));
  }
  // Free text: markup characters, accents, symbols and white space.
  std::string text() {
    static const char* pieces[] = {
        "a",  "Z",  "7", " ",     "&", "<", ">", "'", "\"", "\xC3\xA9", "\xE2\x82\xAC",
        "\t", "\n", "x", "report"};
    std::string s;
    for (int i = range(1, 12); i > 0; --i) s += pieces[range(0, 14)];
    return s;
  }
  // Characters of the controller's set (job and sender names).
  std::string latinText() {
    static const char* pieces[] = {"a", "Z", " ", "&", "<", "'", "\xC3\xBC", "9"};
    std::string s = "n";
    for (int i = range(0, 10); i > 0; --i) s += pieces[range(0, 7)];
    return s;
  }
  // Custom paper names are cut at 30 bytes after escaping, so plain ones.
  std::string plainName() { return "Stock" + std::to_string(range(100, 99999)); }

 private:
  std::mt19937 rng_;
};

// Sizes that come back as themselves: the first table row with their
// dimensions (several sizes share dimensions, the first is taken).
std::vector<std::int32_t> RoundTripSizes() {
  std::vector<std::int32_t> sizes;
  for (const PaperSizeSettingMap* row = CompleteStockSizeMap; row->key; ++row) {
    if (row->value == kUnset || row->width <= 0) continue;
    const PaperSizeSettingMap* first = CompleteStockSizeMap;
    while (first->width != row->width || first->height != row->height) ++first;
    if (first == row) sizes.push_back(row->value);
  }
  return sizes;
}

Dictionary DrawStock(Draw& d) {
  Dictionary s;
  static const std::vector<std::int32_t> sizes = RoundTripSizes();
  if (d.coin()) {
    s.set("Size", Value(sizes[static_cast<std::size_t>(d.range(0, int(sizes.size()) - 1))]));
  } else if (d.coin()) {
    s.set("Size", Value(75));  // custom: dimensions no table row has
    s.set("Width", Value(d.range(10001, 10099)));
    s.set("Length", Value(d.range(20001, 20099)));
  }
  if (d.coin()) {
    // Types whose code is theirs alone (7 shares 6's, the printers' types
    // from 23 on imply other fields).
    const std::int32_t type = d.pick({1, 2, 3, 4, 5, 6, 8, 9, 10, 13, 14, 15, 19, 21, 22});
    s.set("Type", Value(type));
    if (type == 6) s.set("CustomType", Value(d.plainName()));
    const bool tabs = type == 4 || type == 6 || (type >= 15 && type <= 21);
    if (tabs && d.coin()) s.set("Modulus", Value(d.range(1, 20)));
  }
  if (d.coin()) {
    const std::int32_t color = d.range(1, 21);
    s.set("Color", Value(color));
    if (color == 10) s.set("CustomColor", Value(d.plainName()));
  }
  if (d.coin()) s.set("Weight", Value(d.range(60, 300)));
  if (d.coin()) s.set("Punched", Value(d.range(1, 2)));
  if (d.coin()) s.set("Description", Value(d.text()));
  if (d.coin()) s.set("Finish", Value(d.range(1, 4)));
  if (d.coin()) s.set("kGrain", Value(d.range(1, 2)));
  if (d.coin()) {
    // Uncoated sides keep no coating type in the document.
    const std::int32_t sides = d.range(1, 4);
    s.set("SidesCoated", Value(sides));
    if (sides > 1) s.set("kCoatingType", Value(d.range(1, 5)));
  }
  return s;
}

void DrawFinishing(Draw& d, Dictionary& t) {
  const int option = d.pick({0, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14});
  auto set = [&](const char* k, int v) { t.set(std::string("com.zorva.print.") + k, Value(v)); };
  const int holes[] = {0, 0, 0, 0, 0, 0, 2, 3, 4};
  switch (option) {
    case 0:
      return;  // no finishing: nothing is written, nothing comes back
    case 2:
      set("FinishingStaple1Value", d.pick({5, 6, 7, 8}));
      break;
    case 3:
      set("FinishingStaple2Value", d.pick({10, 11, 12, 13}));
      break;
    case 4:
      set("FinishingStapleCenterValue", d.pick({26, 27, 28, 29}));
      break;
    case 5:
      set("FinishingBindValue", d.pick({25, 26, 28, 30}));
      break;
    case 6:
    case 7:
    case 8:
      set("FinishingHolePunchValue", d.range(32, 35));
      set("FinishingHolePunchOptions", holes[option]);
      break;
    case 9:
      set("FinishingFoldValue", d.pick({9, 10, 11, 12}));
      break;
    case 10:
      set("FinishingZFoldValue", d.pick({21, 22}));
      break;
    case 11:
      set("FinishingStaple1Value", d.pick({5, 6, 7, 8}));
      set("FinishingHolePunchValue", d.range(32, 35));
      set("FinishingHolePunchOptions", d.range(2, 4));
      if (d.coin()) set("FinishingZFoldValue", d.pick({21, 22}));
      break;
    case 12:
      set("BookletFoldStaple", 15);
      break;
    case 13:
      t.set("com.zorva.print.FinishingCustom", Value(d.text()));
      break;
    case 14:
      set("BookletFoldStaple", d.pick({13, 14}));
      break;
  }
  set("FinishingOptions", option);
}

Dictionary DrawColor(Draw& d) {
  Dictionary c;
  for (const char* k : {"FCLightness", "FCContrast", "FCSaturation"}) {
    if (d.coin()) c.set(k, Value(d.range(-100, 100)));
  }
  if (d.coin()) {
    Dictionary cast;
    for (const char* k : {"FCCyanRed", "FCMagentaGreen", "FCYellowBlue"}) {
      if (d.coin()) cast.set(k, Value(d.range(-100, 100)));
    }
    if (!cast.empty()) c.set("FCColorCast", Value(cast));
  }
  if (d.coin()) c.set("FCTrapping", Value(d.range(1, 2)));
  if (d.coin()) c.set("FCTrappingFastDirection", Value(d.range(0, 1000)));
  if (d.coin()) c.set("FCTrappingSlowDirection", Value(d.range(0, 1000)));
  if (d.coin()) c.set("FCBlackOverprint", Value(d.range(1, 2)));
  for (const char* k : {"FCTRC", "RGBImagesProfile", "RGBTextAndGraphicsProfile",
                        "CMYKImagesProfile", "CMYKTextAndGraphicsProfile", "GrayImagesProfile",
                        "GrayTextAndGraphicsProfile", "DestinationProfile"}) {
    if (d.coin()) c.set(k, Value(d.text()));
  }
  for (const char* k : {"ImageRendering", "TextRendering", "GraphicRendering"}) {
    if (d.coin()) c.set(k, Value(d.range(1, 6)));
  }
  return c;
}

Dictionary DrawTicket(Draw& d) {
  Dictionary t;
  auto maybe = [&](const char* k, Value v) {
    if (d.coin()) t.set(std::string("com.zorva.print.") + k, std::move(v));
  };
  // "one-sided" is always written, so an absent duplex would come back as 1.
  t.set("com.zorva.print.FinishingDuplex", Value(d.range(1, 3)));
  // Of the destinations written "top" (2, 3, 16, 18) and "stacker" (4, 12,
  // 17) only the first comes back.
  maybe("FinishingOutputDestination", Value(d.pick({1, 2, 4, 5, 6, 8, 9, 20})));
  maybe("FinishingOutputColor", Value(d.range(1, 2)));
  maybe("HalftoneScreen", Value(d.range(1, 3)));
  maybe("LightenDarken", Value(d.range(-5, 5)));
  maybe("TonerSaver", Value(d.coin()));
  maybe("Antialiasing", Value(d.range(1, 2)));
  maybe("AdvancedRotateImage180", Value(d.range(1, 2)));
  maybe("TaltekEmulation", Value(d.range(2, 3)));
  maybe("OutputOrder", Value(d.range(2, 5)));
  maybe("OPISubsitution", Value(d.range(0, 1)));
  maybe("OPIPrescan", Value(d.range(0, 2)));
  maybe("Resolution", Value(d.range(1, 4)));
  maybe("FinishingSlipSheet", Value(2));
  for (const char* k :
       {"JobNotesMessage", "JobNotesRecipient", "JobNotesSheetMessage", "JobNotesAdditionalInfo"}) {
    maybe(k, Value(d.text()));
  }
  // The operation group is written only with both names.
  if (d.coin()) {
    t.set("com.zorva.print.JobNotesJobName", Value(d.latinText()));
    t.set("com.zorva.print.JobNotesSenderName", Value(d.latinText()));
  }
  // An empty stock writes what no stock writes, so it comes back as none.
  if (Dictionary stock = DrawStock(d); !stock.empty() && d.coin()) {
    t.set("com.zorva.print.JobLevelStock", Value(stock));
  }
  DrawFinishing(d, t);
  if (d.coin()) {
    t.set("com.zorva.print.FinishingOffset", Value(d.range(2, 5)));
    if (d.coin()) {
      t.set("com.zorva.print.FinishingOffsetEnableSubset", Value(1));
      t.set("com.zorva.print.FinishingOffsetPagesPerSubset", Value(d.range(1, 9999)));
    }
  }
  if (d.coin()) {
    // Save-only and print-and-save always carry a location and a name: the
    // writer fills in its own otherwise.
    const int type = d.pick({1, 2, 3, 4});
    Dictionary job{{"JobType", Value(type)}};
    if (type >= 3) {
      job.set("MediaType", Value(d.range(1, 5)));
      job.set("SavedJobName", Value(d.text()));
      job.set("SavedJobLocation", Value("file:///jobs/" + d.plainName()));
    }
    t.set("com.zorva.print.JobType", Value(job));
  }
  if (d.coin()) {
    t.set("com.zorva.print.ImageShiftOptionsJob",
          Value(Dictionary{{"X1", Value(d.range(-5000, 5000))},
                           {"Y1", Value(d.range(-5000, 5000))},
                           {"X2", Value(d.range(-5000, 5000))},
                           {"Y2", Value(d.range(-5000, 5000))},
                           {"FullPrecision", Value(true)},
                           {"Option", Value(2)}}));
  }
  maybe("HighlightColorOptionsJob",
        Value(Dictionary{{"HiglightPrintingColor", Value(d.range(1, 6))}}));
  if (Dictionary c = DrawColor(d); !c.empty() && d.coin()) {
    t.set("com.zorva.print.FullColorOptions", Value(c));
  }
  if (d.coin()) {
    Dictionary forms;
    if (d.coin()) {
      forms = {{"UseExistingForm", Value(2)},         {"MergeWithString", Value(d.text())},
               {"CyclePages", Value(d.range(1, 99))}, {"X1", Value(d.range(-500, 500))},
               {"Y1", Value(d.range(-500, 500))},     {"FullPrecision", Value(true)}};
    } else {
      forms = {{"UseExistingForm", Value(3)}, {"NewFormString", Value(d.text())}};
    }
    t.set("com.zorva.print.BackgroundFormsOptions", Value(forms));
  }
  for (const char* cover : {"SpecialPages.FrontCover", "SpecialPages.BackCover"}) {
    if (!d.coin()) continue;
    Dictionary entry{{"SidesImaged", Value(d.range(0, 4))}};
    if (Dictionary stock = DrawStock(d); !stock.empty()) entry.set("Stock", Value(stock));
    t.set(std::string("com.zorva.print.") + cover, Value(entry));
  }
  if (d.coin()) {
    Array inserts;
    for (int i = d.range(1, 3); i > 0; --i) {
      Dictionary entry{{"StartPage", Value(d.range(1, 500))}, {"Quantity", Value(d.range(1, 9))}};
      if (Dictionary stock = DrawStock(d); !stock.empty()) entry.set("Stock", Value(stock));
      inserts.push_back(Value(entry));
    }
    t.set("com.zorva.print.SpecialPages.InsertList", Value(inserts));
  }
  if (d.coin()) {
    // Import reads an exception's pages; its paper, sides and colour stay
    // with the printer, so only the pages are drawn.
    Array exceptions;
    for (int i = d.range(1, 3); i > 0; --i) {
      const int start = d.range(1, 500);
      exceptions.push_back(Value(
          Dictionary{{"StartPage", Value(start)}, {"EndPage", Value(start + d.range(0, 20))}}));
    }
    t.set("com.zorva.print.SpecialPages.ExceptionList", Value(exceptions));
  }
  return t;
}

class JotfRoundTripTest : public ::testing::Test {
 protected:
  void SetUp() override { ZDPInitialize(); }
  void TearDown() override { ZDPFinalize(); }
};

TEST_F(JotfRoundTripTest, ExportThenImportGivesBackTheTicket) {
  for (std::uint32_t seed = 1; seed <= 300; ++seed) {
    Draw draw(seed);
    const Dictionary ticket = DrawTicket(draw);
    Dictionary settings = ticket;
    settings.set("com.zorva.print.JOTFOptions", Value(Dictionary{{"JOTFOptionAll", Value(true)}}));
    const std::string document = JOTFDocumentText(settings);
    Dictionary imported;
    ASSERT_EQ(JOTFImportDocumentText(document, &imported), kNoErr) << "seed " << seed;
    ASSERT_EQ(imported, ticket) << "seed " << seed << "\n" << document;
  }
}

// Accounting on writes an end tag that does not match its start tag (the
// accounting server expects it so): such a ticket does not parse, and only
// recovery reads the rest of it back.
TEST_F(JotfRoundTripTest, AccountingTicketsComeBackOnlyThroughRecovery) {
  const Dictionary ticket{{"com.zorva.print.FinishingDuplex", Value(2)},
                          {"com.zorva.print.OutputOrder", Value(4)}};
  Dictionary settings = ticket;
  settings.set("com.zorva.print.JOTFOptions", Value(Dictionary{{"JOTFOptionAll", Value(true)}}));
  settings.set("com.zorva.Act.jotf.On", Value(3));
  settings.set("com.zorva.Act.jotf.UID", Value("u1"));
  const std::string document = JOTFDocumentText(settings);
  Dictionary imported;
  EXPECT_EQ(JOTFImportDocumentText(document, &imported), kPrintSessionErr);
  EXPECT_TRUE(imported.empty());
  EXPECT_EQ(JOTFImportDocumentText(document, &imported, {.recover = true}), kNoErr);
  EXPECT_EQ(imported, ticket);
}

}  // namespace
}  // namespace zorva

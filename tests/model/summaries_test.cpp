// Summary texts with the real bundle's English strings: empty pages, the
// inserter source hiding the stock, weights in and out of the table, coating,
// the type rules, exception items, and the dialogs' descriptions.
#include <gtest/gtest.h>

#include "core/bundle.h"
#include "model/summaries.h"
#include "support/test_support.h"

namespace zorva {
namespace {

using test::ScopedEnv;

class Summaries : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_NE(b_, nullptr); }
  ScopedEnv bundleEnv_{"ZORVA_BUNDLE_PATH", ZORVA_BUILD_BUNDLES};
  const Bundle* b_ = GetPDEBundle();
};

TEST_F(Summaries, PageWithNothingSetIsEmpty) {
  // An exception page holds no class item until its plex is set.
  ExceptionPage exception;
  EXPECT_EQ(CopySpecialPageSummary(&exception, b_), "");
  EXPECT_EQ(CopySpecialPageSummary(nullptr, b_), "");
  EXPECT_EQ(CreateImageShiftAttributesDescription(b_, &exception.imageShift()), "");
  EXPECT_EQ(CreateStockSummary(Stock(), b_, ", "), "");
  // Covers and inserts always say their sides and quantity, even without a bundle.
  const Cover cover;
  const Insert insert;
  EXPECT_EQ(CopySpecialPageSummary(&cover, b_), "Blank (Print on Neither Side)");
  EXPECT_EQ(CopySpecialPageSummary(&insert, nullptr), "STRING NOT FOUND [1]");
}

TEST_F(Summaries, StockAttributesInOrder) {
  Insert insert;
  insert.setQuantity(2);
  Stock& s = *insert.stock();
  s.setCustomName("Brochure");
  s.setSize(1);
  s.setColor(2);
  s.setType(1);
  s.setPunched(2);
  s.setWeight(90);
  s.setGrain(1);
  s.setFinish(3);
  s.setDescription("glossy card");
  EXPECT_EQ(CopySpecialPageSummary(&insert, b_),
            "Paper Name: Brochure; Quantity: [2]; " +
                std::string(b_->localizedString("LetterStockSize")) +
                "; Blue; Plain; Hole Punched: Punched; " +
                std::string(b_->localizedString("Weight90")) + "; Grain Along Feed (Y); " +
                std::string(b_->localizedString("FinishCoarse")) + "; Description: glossy card");
}

TEST_F(Summaries, SourceTenShowsOnlyNameClassAndInserter) {
  Cover cover;
  cover.setSidesImaged(2);
  Stock& s = *cover.stock();
  s.setCustomName("Tab");
  s.setSize(4);
  s.setColor(3);
  s.setWeight(113);
  s.setSource(10);
  EXPECT_EQ(CopySpecialPageSummary(&cover, b_),
            "Paper Name: Tab; Print on Front; Post-Process Inserter");
  s.setSource(3);  // another tray: the stock is the tray's, nothing more is said
  EXPECT_EQ(CopySpecialPageSummary(&cover, b_), "Paper Name: Tab; Print on Front");
}

// Weight from the table or in grams, coating, and codes without a row left out.
TEST_F(Summaries, StockItems) {
  Stock s;
  s.setWeight(60);
  EXPECT_EQ(CreateStockSummary(s, b_, ", "), "60 gsm (16 lb Bond)");
  s.setWeight(113);
  EXPECT_EQ(CreateStockSummary(s, b_, ", "), "Weight: 113 gsm");
  s = Stock();
  s.setSidesCoated(1);
  EXPECT_EQ(CreateStockSummary(s, b_, ", "), "Uncoated");
  s.setSidesCoated(2);
  s.setCoatingType(5);
  EXPECT_EQ(CreateStockSummary(s, b_, ", "), "Coating: Matte - Front Side");
  s.setCoatingType(99);
  s.setColor(77);
  s.setGrain(9);
  s.setFinish(0);
  s.setPunched(5);
  s.setSize(9999);
  EXPECT_EQ(CreateStockSummary(s, b_, ", "), "");
}

TEST_F(Summaries, TypeRules) {
  Stock s;
  s.setType(6);
  s.setCustomType("Ordered");
  s.setModulus(5);
  EXPECT_EQ(CreateStockSummary(s, b_, ","), "Ordered (5)");
  s.setType(4);
  EXPECT_EQ(CreateStockSummary(s, b_, ","),
            std::string(b_->localizedString("StockTypePrecutTab")) + " (5)");
  s.setType(24);  // the printer's name for the type (its PPD choice for now)
  EXPECT_EQ(CreateStockSummary(s, b_, ","), "TabStock (5)");
  s.setModulus(0);  // no modulus: the type table, which has no row for 24
  EXPECT_EQ(CreateStockSummary(s, b_, ","), "");
  s.setType(7);
  s.setCustomType("Linen");
  EXPECT_EQ(CreateStockSummary(s, b_, ","), "Linen");
  s.setColor(10);
  s.setCustomColor("Sand");
  EXPECT_EQ(CreateStockSummary(s, b_, ","), "Sand,Linen");
}

TEST_F(Summaries, ExceptionItems) {
  ExceptionPage page;
  page.setStartPage(3);
  page.setEndPage(5);
  page.setPlex(2);
  page.stock()->setSidesCoated(1);
  page.imageShift().setTwoSidedMode(2);
  page.setOutputColor(1);
  page.setHalftoneScreen(3);
  page.setAntialiasing(1);
  ASSERT_EQ(page.colorOptions().setTRC("Punchy"), kNoErr);
  ASSERT_EQ(page.colorOptions().setLightness(-10), kNoErr);
  ASSERT_EQ(page.colorOptions().setColorCast(1, 2, 3), kNoErr);
  ASSERT_EQ(page.colorOptions().setRGBImagesProfile(5, "Mine"), kNoErr);
  const std::string summary = CopySpecialPageSummary(&page, b_);
  EXPECT_EQ(summary, std::string(b_->localizedString("Duplex")) +
                         "; Uncoated; Image Shift: Custom Shift; Grayscale; Halftone Screen: "
                         "Smooth; Anti-aliasing: Off; TRC: Punchy; Lightness: -10, Color Cast "
                         "(C/R, M/G, Y/B): 1/2/3, RGB Images Profile: Mine");
  EXPECT_EQ(CreateExceptionAttributesDescription(b_, &page), "Pages: 3-5;  " + summary);
  page.setEndPage(3);
  EXPECT_TRUE(CreateExceptionAttributesDescription(b_, &page).starts_with("Pages: 3;  "));
}

TEST_F(Summaries, DescriptionsOfTheDialogs) {
  ImageShiftOptions o;
  o.setTwoSidedMode(1);
  EXPECT_EQ(CreateImageShiftAttributesDescription(b_, &o), "Image Shift: No Shift");
  o.setTwoSidedMode(7);  // no row: left out
  EXPECT_EQ(CreateImageShiftAttributesDescription(b_, &o), "");
  // Inserts: commas between stock items, two blanks after the semicolon.
  Insert insert;
  insert.setQuantity(4);
  EXPECT_EQ(CreateInsertAttributesDescription(b_, &insert), "Quantity: 4");
  insert.stock()->setColor(2);
  insert.stock()->setWeight(113);
  EXPECT_EQ(CreateInsertAttributesDescription(b_, &insert), "Quantity: 4;  Blue, Weight: 113 gsm");
}

TEST_F(Summaries, PanelRowsInOrder) {
  Cover front;
  InsertList inserts;
  Insert before;
  inserts.add(before);
  ExceptionPageList exceptions;
  ExceptionPage range;
  range.setStartPage(2);
  range.setEndPage(6);
  exceptions.add(range);
  const auto rows = UpdateSpecialPagesSummary(b_, &front, inserts, exceptions, nullptr);
  ASSERT_EQ(rows.size(), 3u);
  EXPECT_EQ(rows[0].kind, "Front Cover");
  EXPECT_EQ(rows[1].pages, "Before Page 1");
  EXPECT_EQ(rows[1].summary, "Quantity: [1]");
  EXPECT_EQ(rows[2].pages, "2-6");
}

}  // namespace
}  // namespace zorva

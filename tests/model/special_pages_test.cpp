// Special pages and the image-shift record: dictionary forms with missing and
// mistyped keys, clones that keep class and settings, cover equality.
#include "model/special_pages.h"

#include <gtest/gtest.h>

#include "support/test_support.h"

namespace zorva {
namespace {

TEST(SpecialPagesTest, ExceptionDefaultForm) {
  // The colour options are always written, the page's image shift only
  // when the page has a shift mode of its own.
  EXPECT_EQ(ExceptionPage().asTicket(), (Dictionary{{"StartPage", 0},
                                                    {"Stock", Dictionary{}},
                                                    {"EndPage", 0},
                                                    {"FullColorOptionsPage", Dictionary{}}}));
}

TEST(SpecialPagesTest, ReadingTakesDefaultsForMissingOrMistypedKeys) {
  Dictionary cover{{"StartPage", "3"}, {"Stock", 5}};
  Cover c(&cover);
  EXPECT_EQ(c.startPage(), 0);
  EXPECT_EQ(c.sidesImaged(), 1);
  EXPECT_TRUE(c.stock()->asTicket().empty());
  Dictionary insert{{"StartPage", 4.9}, {"Stock", Dictionary{{"Size", 4}}}};
  Insert i(&insert);
  EXPECT_EQ(i.startPage(), 4);
  EXPECT_EQ(i.quantity(), 1);
  EXPECT_EQ(i.stock()->size(), 4);
}

TEST(SpecialPagesTest, ExceptionPageRoundTripsEverySetting) {
  ExceptionPage p;
  p.setStartPage(3);
  p.setEndPage(5);
  p.setPlex(2);
  p.setHalftoneScreen(3);
  p.stock()->setWeight(120);
  p.imageShift().setTwoSidedMode(kImageShiftCustom);
  p.imageShift().setX2(-40);
  p.imageShift().setFullPrecision(true);
  p.colorOptions().setLightness(-30);

  Dictionary d = p.asTicket();
  EXPECT_EQ(*d.find("SidesImaged"), Value(2)) << "plex shares the cover's key";

  ExceptionPage back(&d);
  EXPECT_EQ(back.asTicket(), d);
  EXPECT_EQ(back.imageShift(), p.imageShift());
}

TEST(SpecialPagesTest, ClonesKeepClassAndCopyTheStockMemberWise) {
  // Only a member-wise copy keeps a stored transparency's own colour.
  Dictionary d{{"StartPage", 7}, {"Stock", Dictionary{{"Type", 2}, {"Color", 1}}}, {"Quantity", 2}};
  Insert original(&d);
  std::unique_ptr<SpecialPage> copy = original.clone();
  ASSERT_NE(dynamic_cast<Insert*>(copy.get()), nullptr);
  EXPECT_EQ(copy->asTicket(), d);
  EXPECT_EQ(copy->stock()->color(), 1);
}

TEST(SpecialPagesTest, CoversCompareSidesAndStockButNotStartPage) {
  Cover a, b;
  a.setStartPage(1);
  b.setStartPage(9);
  a.stock()->setDescription(std::string("Linen"));
  b.stock()->setDescription(std::string("LINEN"));
  EXPECT_TRUE(a == b);
  b.setSidesImaged(4);
  EXPECT_FALSE(a == b);
}

TEST(ImageShiftOptionsTest, PageFormOnlyWithAModeAndReadingResetsWhatIsMissing) {
  ImageShiftOptions o;
  EXPECT_FALSE(o.asTicket(ImageShiftForm::Page).has_value());
  EXPECT_EQ(o.asTicket(ImageShiftForm::Job),
            (Dictionary{{"Inches", 1}, {"X1", 0}, {"Y1", 0}, {"X2", 0}, {"Y2", 0}}));
  o.setOneSidedMode(kImageShiftOff);
  o.setY1(25);
  auto page = o.asTicket(ImageShiftForm::Page);
  ASSERT_TRUE(page.has_value());
  EXPECT_EQ(ImageShiftOptions(&*page), o);

  o.setTwoSidedMode(kImageShiftCustom);
  o.setFullPrecision(true);
  Dictionary d{{"Inches", 0}, {"Y2", 1.5}, {"FullPrecision", 1}};
  o.fromTicket(&d);
  EXPECT_EQ(o.y2(), 1);
  EXPECT_EQ(o.y1(), 0);
  EXPECT_EQ(o.twoSidedMode(), kUnset);
  EXPECT_FALSE(o.fullPrecision()) << "only a boolean sets full precision";
}

}  // namespace
}  // namespace zorva

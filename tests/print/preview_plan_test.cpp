// The preview's plan: covers take the document's first and last pages as
// their types say, inserted sheets land after the right printed page (also
// with a page range and with pages the covers took), exception ranges give
// their pages their own stock and sides, the booklet's imposition, where the
// watermark prints, and the labels the preview shows.
#include "print/preview_plan.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "core/bundle.h"
#include "core/ticket_keys.h"
#include "model/special_page_lists.h"
#include "support/test_support.h"

// Jobs below name only the settings they make; the rest keep their defaults.
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"

namespace zorva {
namespace {

constexpr std::int32_t kBlue = 2;
constexpr std::int32_t kYellow = 3;
constexpr std::int32_t kLetter = 1;

struct InsertSpec {
  std::int32_t after;
  std::int32_t quantity;
};
struct RangeSpec {
  std::int32_t first;
  std::int32_t last;
  std::int32_t plex = kUnset;
};

// The settings a user makes in the Special Pages panel, written through the
// model's own writers.
struct Job {
  std::int32_t frontCover = 0;  // SidesImaged; 0: no cover
  std::int32_t backCover = 0;
  std::vector<InsertSpec> inserts;
  std::vector<RangeSpec> exceptions;
  bool booklet = false;

  Ticket ticket() const {
    Ticket t;
    if (booklet) t.setBoolean(kTicketClientPrint, tkey::kBookletLayout, true);
    std::unique_ptr<Cover> front;
    std::unique_ptr<Cover> back;
    if (frontCover != 0) {
      front = std::make_unique<Cover>();
      front->setSidesImaged(frontCover);
      front->stock()->setColor(kBlue);
    }
    if (backCover != 0) {
      back = std::make_unique<Cover>();
      back->setSidesImaged(backCover);
      back->stock()->setColor(kYellow);
    }
    SyncCovers(t, SyncDirection::ToTicket, front, back);
    InsertList insertList;
    for (const InsertSpec& s : inserts) {
      Insert insert;
      insert.setStartPage(s.after);
      insert.setQuantity(s.quantity);
      insertList.add(insert);
    }
    SyncSpecialPageList(t, SyncDirection::ToTicket, tkey::kInsertList, insertList);
    ExceptionPageList exceptionList;
    for (const RangeSpec& s : exceptions) {
      ExceptionPage page;
      page.setStartPage(s.first);
      page.setEndPage(s.last);
      page.setPlex(s.plex);
      page.stock()->setSize(kLetter);
      exceptionList.add(page);
    }
    SyncSpecialPageList(t, SyncDirection::ToTicket, tkey::kExceptionList, exceptionList);
    return t;
  }
};

// One token per item: F(front,back) and B(front,back) covers with the pages
// on their faces, I<after>.<sheet> inserted sheets, P<n> pages, X<n> pages of
// an exception range.
std::string Signature(const PreviewPlan& plan) {
  std::string out;
  for (const PreviewItem& item : plan.items) {
    if (!out.empty()) out += ' ';
    switch (item.kind) {
      case PreviewItemKind::FrontCover:
      case PreviewItemKind::BackCover:
        out += item.kind == PreviewItemKind::FrontCover ? "F(" : "B(";
        out += std::to_string(item.frontPage) + "," + std::to_string(item.backPage) + ")";
        break;
      case PreviewItemKind::Insert:
        out += "I" + std::to_string(item.afterPage) + "." + std::to_string(item.sheet);
        break;
      case PreviewItemKind::DocumentPage:
        out += "P" + std::to_string(item.frontPage);
        break;
      case PreviewItemKind::ExceptionPage:
        out += "X" + std::to_string(item.frontPage);
        break;
    }
  }
  return out;
}

TEST(PreviewPlan, OrderOfCoversInsertsAndPages) {
  struct Case {
    const char* name;
    Job job;
    PreviewInput input;
    const char* expected;
  };
  const Case cases[] = {
      {"plain document", {}, {3}, "P1 P2 P3"},
      {"empty document", {}, {0}, ""},
      {"covers printed on the outside take the first and last page",
       {.frontCover = 2, .backCover = 3},
       {5},
       "F(1,0) P2 P3 P4 B(0,5)"},
      {"blank covers take no page", {.frontCover = 1, .backCover = 1}, {2}, "F(0,0) P1 P2 B(0,0)"},
      {"covers printed on both sides take two pages each",
       {.frontCover = 4, .backCover = 4},
       {6},
       "F(1,2) P3 P4 B(5,6)"},
      {"a cover printed on its back only", {.frontCover = 3}, {2}, "F(0,1) P2"},
      {"covers on a document too short for them",
       {.frontCover = 4, .backCover = 4},
       {3},
       "F(1,2) B(0,3)"},
      {"a cover type outside the list is no cover", {.frontCover = 9}, {2}, "P1 P2"},
      {"inserts before the first page, after a page and past the end",
       {.inserts = {{0, 1}, {2, 2}, {40, 1}}},
       {3},
       "I0.1 P1 P2 I2.1 I2.2 P3 I40.1"},
      {"an insert of no sheets adds nothing", {.inserts = {{1, 0}}}, {2}, "P1 P2"},
      {"an insert after the page the front cover took follows the cover",
       {.frontCover = 2, .inserts = {{1, 1}}},
       {3},
       "F(1,0) I1.1 P2 P3"},
      {"an insert after the last page goes before the back cover",
       {.backCover = 2, .inserts = {{3, 1}}},
       {3},
       "P1 P2 I3.1 B(3,0)"},
      {"exception ranges mark their pages",
       {.exceptions = {{2, 3}, {5, 9}}},
       {6},
       "P1 X2 X3 P4 X5 X6"},
      {"page range: only the chosen pages, inserts after the last printed page before them",
       {.inserts = {{1, 1}, {4, 1}}, .exceptions = {{3, 3}}},
       {6, 3, 5},
       "I1.1 X3 P4 I4.1 P5"},
      {"a page range past the document's end prints nothing",
       {.frontCover = 2},
       {3, 5, 9},
       "F(0,0)"},
      {"cover, insert and exception range together",
       {.frontCover = 2, .backCover = 1, .inserts = {{2, 1}}, .exceptions = {{3, 4}}},
       {5},
       "F(1,0) P2 I2.1 X3 X4 P5 B(0,0)"},
  };
  for (const Case& c : cases) {
    const PreviewPlan plan = BuildPreviewPlan(c.job.ticket(), c.input);
    EXPECT_EQ(Signature(plan), c.expected) << c.name;
    EXPECT_FALSE(plan.booklet) << c.name;
  }
}

TEST(PreviewPlan, InsertsKeepTheUsersOrderAtOnePlace) {
  // Moved by hand, the later insert comes first where both go.
  InsertList list;
  Insert a;
  a.setStartPage(2);
  a.stock()->setColor(kBlue);
  Insert b;
  b.setStartPage(2);
  b.stock()->setColor(kYellow);
  list.add({&a, &b});
  ASSERT_TRUE(list.promote(list.pageAtIndex(1)));
  Ticket t;
  SyncSpecialPageList(t, SyncDirection::ToTicket, tkey::kInsertList, list);
  const PreviewPlan plan = BuildPreviewPlan(t, {3});
  ASSERT_EQ(Signature(plan), "P1 P2 I2.1 I2.1 P3");
  EXPECT_EQ(plan.items[2].stock.color(), kYellow);
  EXPECT_EQ(plan.items[3].stock.color(), kBlue);
}

TEST(PreviewPlan, PaperAndSidesOfEachItem) {
  Ticket t = Job{.frontCover = 2, .inserts = {{1, 1}}, .exceptions = {{2, 2, 1}, {3, 3}}}.ticket();
  Stock jobStock;
  jobStock.setColor(kYellow);
  t.setDictionary(kTicketClientPrint, tkey::kJobLevelStock, jobStock.asTicket());
  t.setNumber(kTicketClientPrint, tkey::kFinishingDuplex, 2);
  const PreviewPlan plan = BuildPreviewPlan(t, {4});
  ASSERT_EQ(Signature(plan), "F(1,0) I1.1 X2 X3 P4");
  const auto& items = plan.items;
  EXPECT_EQ(items[0].stock.color(), kBlue);
  EXPECT_EQ(items[0].sides, 2);  // the cover's own printed sides
  EXPECT_EQ(items[1].sides, kUnset);
  EXPECT_EQ(items[2].sides, 1);  // the range's own sides
  EXPECT_EQ(items[2].stock.size(), kLetter);
  EXPECT_EQ(items[2].rangeFirst, 2);
  EXPECT_EQ(items[2].rangeLast, 2);
  EXPECT_EQ(items[3].sides, 2);  // a range without sides keeps the job's
  EXPECT_EQ(items[4].sides, 2);
  EXPECT_EQ(items[4].stock.color(), kYellow);
}

TEST(PreviewPlan, OverlappingRangesAreMergedAsTheTicketDoes) {
  // The later range wins over the one it falls inside, exactly as the list
  // re-merges what it reads.
  Ticket t;
  ExceptionPage wide;
  wide.setStartPage(1);
  wide.setEndPage(6);
  wide.setPlex(1);
  ExceptionPage inner;
  inner.setStartPage(3);
  inner.setEndPage(4);
  inner.setPlex(2);
  Array stored{Value(wide.asTicket()), Value(inner.asTicket())};
  t.setArray(kTicketClientPrint, tkey::kExceptionList, stored);
  const PreviewPlan plan = BuildPreviewPlan(t, {6});
  std::vector<std::pair<std::int32_t, std::int32_t>> ranges;
  for (const PreviewItem& item : plan.items) ranges.emplace_back(item.rangeFirst, item.sides);
  const std::vector<std::pair<std::int32_t, std::int32_t>> expected = {{1, 1}, {1, 1}, {3, 2},
                                                                       {3, 2}, {5, 1}, {5, 1}};
  EXPECT_EQ(ranges, expected);
}

TEST(PreviewPlan, HugeInsertQuantityIsBounded) {
  const PreviewPlan plan = BuildPreviewPlan(Job{.inserts = {{1, 2000000000}}}.ticket(), {1});
  EXPECT_LE(plan.items.size(), 101u);
}

TEST(BookletImposition, SheetsCarryTheOutermostFreePairs) {
  struct Case {
    std::int32_t pages;
    std::vector<BookletSide> expected;
  };
  const Case cases[] = {
      {0, {}},
      {1, {{1, true, 4, 1}, {1, false, 2, 3}}},
      {4, {{1, true, 4, 1}, {1, false, 2, 3}}},
      {5, {{1, true, 8, 1}, {1, false, 2, 7}, {2, true, 6, 3}, {2, false, 4, 5}}},
      {8, {{1, true, 8, 1}, {1, false, 2, 7}, {2, true, 6, 3}, {2, false, 4, 5}}},
  };
  for (const Case& c : cases) EXPECT_EQ(BookletImposition(c.pages), c.expected) << c.pages;
  // Every page of a 12-page booklet appears once.
  std::vector<int> seen(13, 0);
  for (const BookletSide& s : BookletImposition(12)) {
    ++seen[static_cast<std::size_t>(s.left)];
    ++seen[static_cast<std::size_t>(s.right)];
  }
  for (int p = 1; p <= 12; ++p) EXPECT_EQ(seen[static_cast<std::size_t>(p)], 1) << p;
}

TEST(PreviewPlan, BookletPadsThePrintedPagesAndDropsTheSeparateBackCover) {
  // Under booklet layout the ticket's back cover is the front one's copy:
  // one wrap, which takes the first page; six pages remain, padded to eight.
  const PreviewPlan plan =
      BuildPreviewPlan(Job{.frontCover = 2, .backCover = 2, .booklet = true}.ticket(), {7});
  EXPECT_TRUE(plan.booklet);
  EXPECT_EQ(Signature(plan), "F(1,0) P2 P3 P4 P5 P6 P7");
  const std::vector<std::int32_t> pages = {2, 3, 4, 5, 6, 7, 0, 0};
  EXPECT_EQ(plan.bookletPages, pages);
  const std::vector<BookletSide> sides = {
      {1, true, 0, 2}, {1, false, 3, 0}, {2, true, 7, 4}, {2, false, 5, 6}};
  EXPECT_EQ(plan.bookletSides, sides);
  EXPECT_TRUE(BuildPreviewPlan(Job{.booklet = true}.ticket(), {0}).bookletSides.empty());
}

TEST(PreviewPlan, WatermarkOnEveryPageOrTheFirstPrintedOne) {
  Ticket t;
  EXPECT_FALSE(WatermarkPrintsOn(BuildPreviewPlan(t, {3}), 1));
  t.setString(kTicketClientPrint, tkey::kWatermarkName, "Draft");
  PreviewPlan plan = BuildPreviewPlan(t, {3, 2, 3});
  EXPECT_TRUE(WatermarkPrintsOn(plan, 2));
  EXPECT_TRUE(WatermarkPrintsOn(plan, 3));
  EXPECT_FALSE(WatermarkPrintsOn(plan, 0));  // a blank face
  t.setBoolean(kTicketClientPrint, tkey::kWatermarkFirstPageOnly, true);
  plan = BuildPreviewPlan(t, {3, 2, 3});
  ASSERT_TRUE(plan.watermark);
  EXPECT_TRUE(plan.watermark->firstPageOnly);
  EXPECT_EQ(plan.firstPrintedPage, 2);
  EXPECT_TRUE(WatermarkPrintsOn(plan, 2));
  EXPECT_FALSE(WatermarkPrintsOn(plan, 3));
}

TEST(PreviewPlan, LabelsFromTheBundlesStrings) {
  test::ScopedEnv bundleEnv{"ZORVA_BUNDLE_PATH", ZORVA_BUILD_BUNDLES};
  const Bundle* bundle = GetPDEBundle();
  ASSERT_NE(bundle, nullptr);
  Ticket t = Job{.frontCover = 2, .inserts = {{0, 1}, {2, 2}}, .exceptions = {{3, 4, 2}}}.ticket();
  t.setNumber(kTicketClientPrint, tkey::kFinishingDuplex, 1);
  const PreviewPlan plan = BuildPreviewPlan(t, {4});
  ASSERT_EQ(Signature(plan), "F(1,0) I0.1 P2 I2.1 I2.2 X3 X4");
  struct Row {
    const char* kind;
    const char* paper;
    const char* sides;
  };
  const Row expected[] = {
      {"Front Cover", "Blue", "Print on Front"},
      {"Insert sheet 1 of 1 before page 1", "Printer Default", "Blank (Print on Neither Side)"},
      {"Page 2", "Printer Default", "1-Sided"},
      {"Insert sheet 1 of 2 after page 2", "Printer Default", "Blank (Print on Neither Side)"},
      {"Insert sheet 2 of 2 after page 2", "Printer Default", "Blank (Print on Neither Side)"},
      {"Page 3 (exception pages 3-4)", "Letter (8.5 x 11\")", "2-Sided"},
      {"Page 4 (exception pages 3-4)", "Letter (8.5 x 11\")", "2-Sided"},
  };
  for (std::size_t i = 0; i < plan.items.size(); ++i) {
    const PreviewItemText text = DescribePreviewItem(plan.items[i], bundle);
    EXPECT_EQ(text.kind, expected[i].kind) << i;
    EXPECT_EQ(text.paper, expected[i].paper) << i;
    EXPECT_EQ(text.sides, expected[i].sides) << i;
  }
  Stock named;
  named.setCustomName("Letterhead");
  named.setColor(kBlue);
  PreviewItem item;
  item.stock = named;
  EXPECT_EQ(DescribePreviewItem(item, bundle).paper, "Letterhead");
}

TEST(StockTint, ListedAndNamedColoursOnly) {
  Stock s;
  EXPECT_FALSE(StockTint(s));
  s.setColor(kBlue);
  ASSERT_TRUE(StockTint(s));
  EXPECT_GT((*StockTint(s))[2], (*StockTint(s))[0]);
  s.setColor(kStockColorCustom);
  s.setCustomColor("YELLOW");
  ASSERT_TRUE(StockTint(s));
  s.setColor(kYellow);
  EXPECT_EQ(StockTint(s), [] {
    Stock y;
    y.setColor(kStockColorCustom);
    y.setCustomColor("yellow");
    return StockTint(y);
  }());
  s.setColor(kStockColorCustom);
  s.setCustomColor("Mauve");
  EXPECT_FALSE(StockTint(s));
}

}  // namespace
}  // namespace zorva

// Special-page lists: the exception merge (the four overlap cases and a
// randomised comparison with a page-by-page model), the
// insert order with promote and demote, identity, update, and covers and
// lists in the ticket.
#include "model/special_page_lists.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <tuple>
#include <vector>

#include "support/test_support.h"

namespace zorva {
namespace {

// start, end, tag (the halftone screen marks which page a range came from)
using Range = std::tuple<std::int32_t, std::int32_t, std::int32_t>;

ExceptionPage Exception(std::int32_t start, std::int32_t end, std::int32_t tag = kUnset) {
  ExceptionPage p;
  p.setStartPage(start);
  p.setEndPage(end);
  p.setHalftoneScreen(tag);
  return p;
}

std::vector<Range> Ranges(const ExceptionPageList& list) {
  std::vector<Range> out;
  for (SpecialPageList::Index i = 0; i < list.count(); ++i) {
    const ExceptionPage* p = list.pageAtIndex(i);
    out.emplace_back(p->startPage(), p->endPage(), p->halftoneScreen());
  }
  return out;
}

ExceptionPageList ListOf(std::initializer_list<Range> ranges) {
  ExceptionPageList list;
  for (auto [s, e, t] : ranges) list.add(Exception(s, e, t));
  return list;
}

TEST(ExceptionPageListTest, NewRangeWinsInEveryOverlapCase) {
  auto inside = ListOf({{1, 10, 1}});
  inside.add(Exception(3, 5, 2));
  EXPECT_EQ(Ranges(inside), (std::vector<Range>{{1, 2, 1}, {3, 5, 2}, {6, 10, 1}}));

  auto covering = ListOf({{3, 5, 1}, {8, 12, 2}});
  covering.add(Exception(1, 10, 3));
  EXPECT_EQ(Ranges(covering), (std::vector<Range>{{1, 10, 3}, {11, 12, 2}}));

  auto sameStart = ListOf({{5, 8, 1}});
  sameStart.add(Exception(5, 5, 2));
  EXPECT_EQ(Ranges(sameStart), (std::vector<Range>{{5, 5, 2}, {6, 8, 1}}));
  sameStart.add(Exception(5, 9, 3));
  EXPECT_EQ(Ranges(sameStart), (std::vector<Range>{{5, 9, 3}}));

  auto between = ListOf({{1, 3, 1}, {7, 9, 2}});
  between.add(Exception(4, 6, 3));
  EXPECT_EQ(Ranges(between), (std::vector<Range>{{1, 3, 1}, {4, 6, 3}, {7, 9, 2}}));

  between.add(Exception(5, 3, 4));  // names no page
  EXPECT_EQ(between.count(), 3);
}

TEST(ExceptionPageListTest, SplitTailKeepsAllSettings) {
  ExceptionPage wide = Exception(1, 10);
  wide.colorOptions().setSaturation(20);
  wide.stock()->setCustomName(std::string("Blue"));
  ExceptionPageList list;
  list.add(wide);
  list.add(Exception(3, 5));
  ASSERT_EQ(list.count(), 3);
  Dictionary tail = list.pageAtIndex(2)->asTicket();
  Dictionary expected = wide.asTicket();
  expected.set("StartPage", 6);
  EXPECT_EQ(tail, expected);
}

// Against a page-by-page model: each page shows the last range added over it,
// so the list must be the runs of equal tags in page order.
TEST(ExceptionPageListTest, MatchesAPageByPageModel) {
  std::mt19937 rng(7);
  for (int round = 0; round < 200; ++round) {
    ExceptionPageList list;
    std::vector<std::int32_t> tags(48, kUnset);
    for (int step = 0; step < 30; ++step) {
      const auto s = static_cast<std::int32_t>(rng() % 40);
      const std::int32_t e = rng() % 10 == 0 ? s - 1 : s + static_cast<std::int32_t>(rng() % 8);
      list.add(Exception(s, e, step));
      for (std::int32_t p = s; p <= e; ++p) tags[static_cast<std::size_t>(p)] = step;
      std::vector<Range> model;
      for (std::int32_t p = 0; p < 48; ++p) {
        const std::int32_t t = tags[static_cast<std::size_t>(p)];
        if (t == kUnset) continue;
        if (!model.empty() && std::get<2>(model.back()) == t && std::get<1>(model.back()) == p - 1)
          std::get<1>(model.back()) = p;
        else
          model.emplace_back(p, p, t);
      }
      ASSERT_EQ(Ranges(list), model) << "round " << round << " step " << step;
    }
  }
}

TEST(ExceptionPageListTest, ExtremePageNumbersDoNotOverflow) {
  constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
  auto list = ListOf({{kUnset, kMax, 1}});
  list.add(Exception(kMax, kMax, 2));
  list.add(Exception(kUnset, kUnset, 3));
  EXPECT_EQ(Ranges(list),
            (std::vector<Range>{{kUnset, kUnset, 3}, {kUnset + 1, kMax - 1, 1}, {kMax, kMax, 2}}));
}

std::vector<std::pair<std::int32_t, std::int32_t>> Starts(const InsertList& list) {
  std::vector<std::pair<std::int32_t, std::int32_t>> out;
  for (SpecialPageList::Index i = 0; i < list.count(); ++i)
    out.emplace_back(list.pageAtIndex(i)->startPage(), list.pageAtIndex(i)->quantity());
  return out;
}

Insert InsertAt(std::int32_t start, std::int32_t tag) {
  Insert i;
  i.setStartPage(start);
  i.setQuantity(tag);
  return i;
}

TEST(InsertListTest, AddsByStartPageKeepingEqualOnesInOrder) {
  InsertList list;
  Insert a = InsertAt(5, 1), b = InsertAt(2, 2), c = InsertAt(5, 3);
  list.add({&a, &b, &c});
  EXPECT_EQ(Starts(list), (std::vector<std::pair<int, int>>{{2, 2}, {5, 1}, {5, 3}}));
  Cover notAnInsert;
  list.add(notAnInsert);
  EXPECT_EQ(list.count(), 3);
}

TEST(InsertListTest, MatchesTheWalkAfterRandomMoves) {
  std::mt19937 rng(11);
  InsertList list;
  std::vector<std::pair<std::int32_t, std::int32_t>> model;
  for (int step = 0; step < 2000; ++step) {
    if (rng() % 4 == 0 && list.count() > 1) {
      auto i = static_cast<SpecialPageList::Index>(rng() % list.count());
      bool up = rng() % 2;
      const Insert* page = list.pageAtIndex(i);
      const auto at = static_cast<std::size_t>(i);
      // A page may not move past one that starts at page 0.
      bool allowed = up ? (at > 0 && model[at - 1].first != 0)
                        : (at + 1 < model.size() && model[at + 1].first != 0);
      EXPECT_EQ(up ? list.promote(page) : list.demote(page), allowed);
      if (allowed) std::swap(model[up ? at - 1 : at], model[up ? at : at + 1]);
    } else {
      Insert n = InsertAt(static_cast<std::int32_t>(rng() % 12), step);
      auto it = std::find_if(model.begin(), model.end(),
                             [&](const auto& m) { return m.first > n.startPage(); });
      model.insert(it, {n.startPage(), step});
      list.add(n);
    }
    ASSERT_EQ(Starts(list), model) << "step " << step;
    if (list.count() > 40) {
      list.remove(list.pageAtIndex(0));
      model.erase(model.begin());
    }
  }
}

TEST(SpecialPageListTest, PagesAreKnownByIdentity) {
  InsertList list;
  Insert a = InsertAt(1, 1);
  list.add(a);
  EXPECT_EQ(list.pageAtIndex(list.count()), nullptr);
  EXPECT_EQ(list.indexOfPage(&a), -1) << "the list holds a clone, not the caller's page";
  EXPECT_EQ(list.indexOfPage(list.pageAtIndex(0)), 0);
  EXPECT_FALSE(list.remove(&a));

  std::unique_ptr<SpecialPageList> copy = list.clone();
  EXPECT_NE(copy->pageAtIndex(0), list.pageAtIndex(0));
  EXPECT_EQ(copy->pageAtIndex(0)->asTicket(), list.pageAtIndex(0)->asTicket());
  EXPECT_TRUE(list.remove(list.pageAtIndex(0)));
  EXPECT_EQ(copy->count(), 1);
}

TEST(SpecialPageListTest, UpdateReplacesThePageByTheNewOnes) {
  auto list = ListOf({{1, 4, 1}, {8, 9, 2}});
  const ExceptionPage* first = list.pageAtIndex(0);
  ExceptionPage a = Exception(2, 3, 3), b = Exception(7, 8, 4);
  EXPECT_FALSE(list.update(first, {&a, &b}));
  EXPECT_EQ(Ranges(list), (std::vector<Range>{{2, 3, 3}, {7, 8, 4}, {9, 9, 2}}));

  ExceptionPage stranger = Exception(1, 1);
  list.update(&stranger, {&a});
  EXPECT_EQ(list.count(), 3);

  // A page may be updated with itself.
  const ExceptionPage* last = list.pageAtIndex(2);
  list.update(last, {last});
  EXPECT_EQ(Ranges(list), (std::vector<Range>{{2, 3, 3}, {7, 8, 4}, {9, 9, 2}}));
}

// A caller may hand a list its own pages: each is taken as it stood when the
// call was made, even when an earlier page of the same call cuts or deletes
// it (under the sanitizer build a read of a deleted page fails the test).
TEST(SpecialPageListTest, AddAndUpdateTakeTheListsOwnPagesSafely) {
  auto list = ListOf({{1, 10, 1}, {20, 30, 2}, {40, 50, 3}});
  const ExceptionPage wide = Exception(1, 45, 9);
  list.add({&wide, list.pageAtIndex(1), list.pageAtIndex(0)});
  EXPECT_EQ(Ranges(list),
            (std::vector<Range>{{1, 10, 1}, {11, 19, 9}, {20, 30, 2}, {31, 45, 9}, {46, 50, 3}}));

  auto updated = ListOf({{1, 10, 1}, {20, 30, 2}, {40, 50, 3}});
  const ExceptionPage* first = updated.pageAtIndex(0);
  updated.update(first, {&wide, updated.pageAtIndex(2), first});
  EXPECT_EQ(Ranges(updated), (std::vector<Range>{{1, 10, 1}, {11, 39, 9}, {40, 50, 3}}));

  InsertList inserts;
  const Insert a = InsertAt(5, 1), b = InsertAt(2, 2);
  inserts.add({&a, &b});
  inserts.add({inserts.pageAtIndex(1), inserts.pageAtIndex(0)});
  EXPECT_EQ(Starts(inserts), (std::vector<std::pair<int, int>>{{2, 2}, {2, 2}, {5, 1}, {5, 1}}));
}

TEST(SpecialPageListTest, ListsInTheTicket) {
  Ticket ticket;
  InsertList inserts;
  ticket.setArray("x", tkey::kInsertList, Array{});
  EXPECT_EQ(SyncSpecialPageList(ticket, SyncDirection::ToTicket, tkey::kInsertList, inserts),
            kNoErr);
  EXPECT_FALSE(ticket.contains(tkey::kInsertList)) << "an empty list removes the key";

  // A stored list is re-merged (and re-sorted) on reading.
  Array stored{Value(Exception(1, 10, 1).asTicket()), Value(Exception(3, 5, 2).asTicket()),
               Value("not a page")};
  ticket.setArray("x", tkey::kExceptionList, stored);
  ExceptionPageList exceptions = ListOf({{50, 60, 9}});
  SyncSpecialPageList(ticket, SyncDirection::FromTicket, tkey::kExceptionList, exceptions);
  EXPECT_EQ(Ranges(exceptions), (std::vector<Range>{{1, 2, 1}, {3, 5, 2}, {6, 10, 1}}));

  SyncSpecialPageList(ticket, SyncDirection::ToTicket, tkey::kExceptionList, exceptions);
  EXPECT_EQ(ticket.item(tkey::kExceptionList)->client, kTicketClientPrint);
  EXPECT_EQ(ticket.getArray(tkey::kExceptionList)->size(), 3u);
}

TEST(SpecialPageListTest, CoversUnderBookletLayout) {
  Ticket ticket;
  auto front = std::make_unique<Cover>();
  front->stock()->setColor(3);
  auto back = std::make_unique<Cover>(*front);
  back->setStartPage(99);  // not compared

  SyncCovers(ticket, SyncDirection::ToTicket, front, back);
  EXPECT_TRUE(ticket.contains(tkey::kBackCover)) << "without booklet layout both are stored";

  ticket.setBoolean("x", tkey::kBookletLayout, true);
  SyncCovers(ticket, SyncDirection::ToTicket, front, back);
  EXPECT_TRUE(ticket.contains(tkey::kFrontCover));
  EXPECT_FALSE(ticket.contains(tkey::kBackCover)) << "one sheet wraps the booklet";

  back->setSidesImaged(3);
  SyncCovers(ticket, SyncDirection::ToTicket, front, back);
  EXPECT_TRUE(ticket.contains(tkey::kBackCover));

  // Reading under booklet layout ignores the stored back cover.
  std::unique_ptr<Cover> readFront, readBack;
  SyncCovers(ticket, SyncDirection::FromTicket, readFront, readBack);
  ASSERT_NE(readBack, nullptr);
  EXPECT_NE(readBack, readFront);
  EXPECT_TRUE(*readBack == *front);

  ticket.setBoolean("x", tkey::kBookletLayout, false);
  SyncCovers(ticket, SyncDirection::FromTicket, readFront, readBack);
  EXPECT_EQ(readBack->sidesImaged(), 3);

  std::unique_ptr<Cover> none;
  SyncCovers(ticket, SyncDirection::ToTicket, none, none);
  SyncCovers(ticket, SyncDirection::FromTicket, readFront, readBack);
  EXPECT_EQ(readFront, nullptr);
  EXPECT_EQ(readBack, nullptr);
}

}  // namespace
}  // namespace zorva

// The Special Pages editing model: one-level undo, deleting selected and all
// rows (and the snapshot taken even on "No"), moving inserts, the rule that
// enables the commands, and the dialogs' entry rules with their codes.
#include <gtest/gtest.h>

#include <vector>

#include "core/bundle.h"
#include "model/page_ranges.h"
#include "model/special_pages_editing.h"
#include "support/test_support.h"

namespace zorva {
namespace {

using test::ScopedEnv;

std::vector<std::int32_t> InsertStarts(const SpecialPagesContext& c) {
  std::vector<std::int32_t> starts;
  for (SpecialPageList::Index i = 0; i < c.inserts->count(); ++i) {
    starts.push_back(c.inserts->pageAtIndex(i)->startPage());
  }
  return starts;
}

using RangePairs = std::vector<std::pair<std::int32_t, std::int32_t>>;

RangePairs Ranges(const SpecialPagesContext& c) {
  RangePairs ranges;
  for (SpecialPageList::Index i = 0; i < c.exceptionPages->count(); ++i) {
    const ExceptionPage* p = c.exceptionPages->pageAtIndex(i);
    ranges.emplace_back(p->startPage(), p->endPage());
  }
  return ranges;
}

ConfirmDelete Answer(bool yes, int* asked = nullptr) {
  return [yes, asked](const DeleteConfirmation&) {
    if (asked) ++*asked;
    return yes;
  };
}

class SpecialPagesEditing : public ::testing::Test {
 protected:
  void SetUp() override {
    c_.frontCover = std::make_unique<Cover>();
    c_.backCover = std::make_unique<Cover>();
    ASSERT_EQ(ApplyInsertEntry(c_, "2, 5", false, Insert()), kNoErr);
    ASSERT_EQ(ApplyExceptionEntry(c_, "3-4, 8", ExceptionPage()), kNoErr);
  }
  SpecialPageItem Row(std::size_t i) const { return SpecialPagesItems(c_).at(i); }

  ScopedEnv bundleEnv_{"ZORVA_BUNDLE_PATH", ZORVA_BUILD_BUNDLES};
  SpecialPagesContext c_;
};

TEST_F(SpecialPagesEditing, RowsListCoversInsertsExceptionsInPanelOrder) {
  const auto items = SpecialPagesItems(c_);
  ASSERT_EQ(items.size(), 6u);
  EXPECT_EQ(items[0].kind, SpecialPageKind::FrontCover);
  EXPECT_EQ(items[1].page, c_.inserts->pageAtIndex(0));
  EXPECT_EQ(items[3].page, c_.exceptionPages->pageAtIndex(0));
  EXPECT_EQ(items[5].kind, SpecialPageKind::BackCover);
}

TEST_F(SpecialPagesEditing, UndoHasOneLevel) {
  ASSERT_EQ(ApplyInsertEntry(c_, "9", false, Insert()), kNoErr);
  EXPECT_EQ(InsertStarts(c_), (std::vector<std::int32_t>{2, 5, 9}));
  EXPECT_EQ(PerformUndo(c_), kNoErr);
  EXPECT_EQ(InsertStarts(c_), (std::vector<std::int32_t>{2, 5}));
  EXPECT_FALSE(CanUndo(c_));
  EXPECT_FALSE(UpdateSpecialPagesCommandButtons(c_, {}).undo);
  // A second undo has nothing to restore and keeps what is there.
  EXPECT_EQ(PerformUndo(c_), kNoErr);
  EXPECT_EQ(InsertStarts(c_), (std::vector<std::int32_t>{2, 5}));
  ASSERT_TRUE(c_.exceptionPages);
}

TEST_F(SpecialPagesEditing, SnapshotIsACopyNotAnAlias) {
  SaveUndoState(c_);
  const SpecialPage* live = c_.inserts->pageAtIndex(0);
  c_.frontCover->setSidesImaged(4);
  c_.inserts->remove(live);
  PerformUndo(c_);
  EXPECT_EQ(c_.frontCover->sidesImaged(), 1);
  EXPECT_EQ(InsertStarts(c_), (std::vector<std::int32_t>{2, 5}));
  EXPECT_EQ(c_.inserts->indexOfPage(live), -1);  // a clone came back
}

TEST_F(SpecialPagesEditing, UndoRestoresMissingCoversAsMissing) {
  c_.backCover.reset();
  SaveUndoState(c_);
  c_.backCover = std::make_unique<Cover>();
  PerformUndo(c_);
  EXPECT_TRUE(c_.frontCover);
  EXPECT_FALSE(c_.backCover);
}

TEST_F(SpecialPagesEditing, DeleteSelectedRemovesEachKindOnYes) {
  const SpecialPageItem picked[] = {Row(0), Row(2), Row(3)};  // front, insert 5, exception 3-4
  int asked = 0;
  EXPECT_TRUE(DeleteSelectedSpecialPages(c_, picked, Answer(true, &asked), GetPDEBundle()));
  EXPECT_EQ(asked, 1);
  EXPECT_FALSE(c_.frontCover);
  EXPECT_TRUE(c_.backCover);
  EXPECT_EQ(InsertStarts(c_), (std::vector<std::int32_t>{2}));
  EXPECT_EQ(Ranges(c_), (RangePairs{{8, 8}}));
  PerformUndo(c_);
  EXPECT_EQ(SpecialPagesItems(c_).size(), 6u);
}

TEST_F(SpecialPagesEditing, AnsweringNoStillReplacesTheSnapshot) {
  ASSERT_EQ(ApplyInsertEntry(c_, "9", false, Insert()), kNoErr);  // snapshot: without 9
  const SpecialPageItem picked[] = {Row(1)};
  EXPECT_FALSE(DeleteSelectedSpecialPages(c_, picked, Answer(false), GetPDEBundle()));
  EXPECT_EQ(SpecialPagesItems(c_).size(), 7u);
  PerformUndo(c_);  // back to the state at the question: 9 is still there
  EXPECT_EQ(InsertStarts(c_), (std::vector<std::int32_t>{2, 5, 9}));
}

TEST_F(SpecialPagesEditing, DeleteAllEmptiesEverythingOnYesOnly) {
  EXPECT_FALSE(DeleteAllSpecialPages(c_, Answer(false), GetPDEBundle()));
  EXPECT_EQ(SpecialPagesItems(c_).size(), 6u);
  EXPECT_TRUE(DeleteAllSpecialPages(c_, Answer(true), GetPDEBundle()));
  EXPECT_TRUE(SpecialPagesItems(c_).empty());
  const SpecialPagesCommandState state = UpdateSpecialPagesCommandButtons(c_, {});
  EXPECT_FALSE(state.removeAll);
  EXPECT_TRUE(state.undo);
}

TEST_F(SpecialPagesEditing, ConfirmationTextsComeFromTheBundle) {
  const DeleteConfirmation one = DeleteConfirmationFor(false, GetPDEBundle());
  EXPECT_EQ(one.defaultButton, "No");
  EXPECT_EQ(one.alternateButton, "Yes");
  EXPECT_NE(one.message, DeleteConfirmationFor(true, GetPDEBundle()).message);
  EXPECT_EQ(DeleteConfirmationFor(true, nullptr).title, "STRING NOT FOUND");
}

TEST_F(SpecialPagesEditing, CommandButtonRule) {
  SpecialPagesContext empty;
  EXPECT_EQ(UpdateSpecialPagesCommandButtons(empty, {}), SpecialPagesCommandState{});

  const SpecialPageItem one[] = {Row(1)};  // insert at 2, first of its list
  SpecialPagesCommandState s = UpdateSpecialPagesCommandButtons(c_, one);
  EXPECT_TRUE(s.edit && s.remove && s.removeAll && s.undo);
  EXPECT_FALSE(s.moveUp);
  EXPECT_TRUE(s.moveDown);

  // The last selected row decides the moves; a cover cannot move.
  const SpecialPageItem two[] = {Row(1), Row(0)};
  s = UpdateSpecialPagesCommandButtons(c_, two);
  EXPECT_FALSE(s.edit);
  EXPECT_TRUE(s.remove);
  EXPECT_FALSE(s.moveUp || s.moveDown);
  const SpecialPageItem last[] = {Row(0), Row(2)};
  s = UpdateSpecialPagesCommandButtons(c_, last);
  EXPECT_TRUE(s.moveUp);
  EXPECT_FALSE(s.moveDown);
}

TEST_F(SpecialPagesEditing, NeighbourAtPageZeroBlocksMoves) {
  ASSERT_EQ(ApplyInsertEntry(c_, "", true, Insert()), kNoErr);  // before page 1
  EXPECT_EQ(InsertStarts(c_), (std::vector<std::int32_t>{0, 2, 5}));
  const SpecialPageItem second[] = {Row(2)};
  EXPECT_FALSE(UpdateSpecialPagesCommandButtons(c_, second).moveUp);
}

TEST_F(SpecialPagesEditing, MoveSelectedInsertsInSelectionOrder) {
  ASSERT_EQ(ApplyInsertEntry(c_, "7", false, Insert()), kNoErr);
  const SpecialPageItem picked[] = {Row(2), Row(3), Row(0)};  // inserts 5 and 7, a cover
  EXPECT_EQ(MoveSelectedInserts(c_, picked, true), 2);
  EXPECT_EQ(InsertStarts(c_), (std::vector<std::int32_t>{5, 7, 2}));
  PerformUndo(c_);
  EXPECT_EQ(InsertStarts(c_), (std::vector<std::int32_t>{2, 5, 7}));
}

TEST(SpecialPagesEntry, InsertMakesOneInsertPerPageWithTheDialogSettings) {
  Insert settings;
  settings.setQuantity(3);
  settings.stock()->setWeight(120);
  std::vector<std::unique_ptr<Insert>> made;
  ASSERT_EQ(MakeInsertsFromEntry("1-3, 7", false, settings, &made), kNoErr);
  ASSERT_EQ(made.size(), 4u);
  EXPECT_EQ(made[2]->startPage(), 3);
  EXPECT_EQ(made[3]->startPage(), 7);
  EXPECT_EQ(made[3]->quantity(), 3);
  EXPECT_EQ(made[3]->stock()->weight(), 120);

  ASSERT_EQ(MakeInsertsFromEntry("garbage", true, settings, &made), kNoErr);
  ASSERT_EQ(made.size(), 1u);
  EXPECT_EQ(made[0]->startPage(), 0);
}

TEST(SpecialPagesEntry, InsertCodes) {
  std::vector<std::unique_ptr<Insert>> made;
  EXPECT_EQ(MakeInsertsFromEntry("5-2", false, Insert(), &made), kInvalidRangeOrder);
  EXPECT_EQ(MakeInsertsFromEntry("", false, Insert(), &made), kInvalidPageRanges);
  EXPECT_EQ(MakeInsertsFromEntry("10000000", false, Insert(), &made), kPageNumberTooLarge);
  // An open end would mean millions of inserts.
  EXPECT_EQ(MakeInsertsFromEntry("1-", false, Insert(), &made), kInvalidPageRanges);
  EXPECT_TRUE(made.empty());
  EXPECT_EQ(MakeInsertsFromEntry("1-9999", false, Insert(), &made), kNoErr);
  EXPECT_EQ(made.size(), 9999u);
  // The parser lets page 0 through for inserts.
  EXPECT_EQ(MakeInsertsFromEntry("0", false, Insert(), &made), kNoErr);
}

TEST(SpecialPagesEntry, ExceptionMakesOneExceptionPerRange) {
  ExceptionPage settings;
  settings.setPlex(2);
  std::vector<std::unique_ptr<ExceptionPage>> made;
  ASSERT_EQ(MakeExceptionPagesFromEntry("3-5, 9, 12-", settings, &made), kNoErr);
  ASSERT_EQ(made.size(), 3u);
  EXPECT_EQ(made[0]->startPage(), 3);
  EXPECT_EQ(made[0]->endPage(), 5);
  EXPECT_EQ(made[1]->endPage(), 9);
  EXPECT_EQ(made[2]->endPage(), kLargestPageNumber);
  EXPECT_EQ(made[2]->plex(), 2);
}

TEST(SpecialPagesEntry, ExceptionRefusesPageZeroWholly) {
  std::vector<std::unique_ptr<ExceptionPage>> made;
  EXPECT_EQ(MakeExceptionPagesFromEntry("2-4, 0", ExceptionPage(), &made), kInvalidPageNumbers);
  EXPECT_EQ(MakeExceptionPagesFromEntry("0-3", ExceptionPage(), &made), kInvalidPageNumbers);
  EXPECT_TRUE(made.empty());
  // Parser errors come first.
  EXPECT_EQ(MakeExceptionPagesFromEntry("0, 5-2", ExceptionPage(), &made), kInvalidRangeOrder);

  SpecialPagesContext c;
  EXPECT_EQ(ApplyExceptionEntry(c, "0", ExceptionPage()), kInvalidPageNumbers);
  EXPECT_TRUE(c.exceptionPages->empty());
  EXPECT_FALSE(CanUndo(c));  // no snapshot for a refused entry
}

TEST(SpecialPagesEntry, EditingReplacesThePageByTheListRules) {
  SpecialPagesContext c;
  ASSERT_EQ(ApplyExceptionEntry(c, "1-10", ExceptionPage()), kNoErr);
  ASSERT_EQ(ApplyExceptionEntry(c, "20-30", ExceptionPage()), kNoErr);
  const ExceptionPage* first = c.exceptionPages->pageAtIndex(0);
  ExceptionPage edited(*first);
  edited.setPlex(1);
  ASSERT_EQ(ApplyExceptionEntry(c, "25-40", edited, first), kNoErr);
  EXPECT_EQ(Ranges(c), (RangePairs{{20, 24}, {25, 40}}));
  EXPECT_EQ(c.exceptionPages->pageAtIndex(1)->plex(), 1);
  PerformUndo(c);
  EXPECT_EQ(Ranges(c), (RangePairs{{1, 10}, {20, 30}}));
}

TEST(SpecialPagesEntry, SyncRoundTripsThroughATicket) {
  SpecialPagesContext c;
  c.frontCover = std::make_unique<Cover>();
  ASSERT_EQ(ApplyInsertEntry(c, "4", false, Insert()), kNoErr);
  ASSERT_EQ(ApplyExceptionEntry(c, "2-3", ExceptionPage()), kNoErr);
  Ticket ticket;
  ASSERT_EQ(SyncSpecialPages(ticket, SyncDirection::ToTicket, c), kNoErr);
  SpecialPagesContext back;
  ASSERT_EQ(SyncSpecialPages(ticket, SyncDirection::FromTicket, back), kNoErr);
  EXPECT_TRUE(back.frontCover);
  EXPECT_FALSE(back.backCover);
  EXPECT_EQ(InsertStarts(back), (std::vector<std::int32_t>{4}));
  EXPECT_EQ(Ranges(back), (RangePairs{{2, 3}}));
}

}  // namespace
}  // namespace zorva

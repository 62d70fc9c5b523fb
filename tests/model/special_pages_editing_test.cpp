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
using Starts = std::vector<std::int32_t>;
using RangePairs = std::vector<std::pair<std::int32_t, std::int32_t>>;

Starts InsertStarts(const SpecialPagesContext& c) {
  Starts starts;
  for (SpecialPageList::Index i = 0; i < c.inserts->count(); ++i) {
    starts.push_back(c.inserts->pageAtIndex(i)->startPage());
  }
  return starts;
}

RangePairs Ranges(const SpecialPagesContext& c) {
  RangePairs ranges;
  for (SpecialPageList::Index i = 0; i < c.exceptionPages->count(); ++i) {
    const ExceptionPage* p = c.exceptionPages->pageAtIndex(i);
    ranges.emplace_back(p->startPage(), p->endPage());
  }
  return ranges;
}

// Answers the question and counts it; the bundle's texts must reach it.
ConfirmDelete Answer(bool yes, int* asked) {
  return [yes, asked](const DeleteConfirmation& question) {
    ++*asked;
    EXPECT_EQ(question.defaultButton, "No");
    EXPECT_EQ(question.alternateButton, "Yes");
    return yes;
  };
}

// Rows: front cover, inserts at 2 and 5, exceptions 3-4 and 8, back cover.
class SpecialPagesEditing : public ::testing::Test {
 protected:
  void SetUp() override {
    c_.frontCover = std::make_unique<Cover>();
    c_.backCover = std::make_unique<Cover>();
    ASSERT_EQ(ApplyInsertEntry(c_, "2, 5", false, Insert()), kNoErr);
    ASSERT_EQ(ApplyExceptionEntry(c_, "3-4, 8", ExceptionPage()), kNoErr);
  }
  SpecialPageItem Row(std::size_t i) const { return SpecialPagesItems(c_).at(i); }
  SpecialPagesCommandState Buttons(std::vector<std::size_t> rows) const {
    std::vector<SpecialPageItem> picked;
    for (std::size_t i : rows) picked.push_back(Row(i));
    return UpdateSpecialPagesCommandButtons(c_, picked);
  }

  ScopedEnv bundleEnv_{"ZORVA_BUNDLE_PATH", ZORVA_BUILD_BUNDLES};
  SpecialPagesContext c_;
  int asked_ = 0;
};

TEST_F(SpecialPagesEditing, UndoHasOneLevelOfCopies) {
  ASSERT_EQ(ApplyInsertEntry(c_, "9", false, Insert()), kNoErr);
  EXPECT_EQ(InsertStarts(c_), (Starts{2, 5, 9}));
  EXPECT_EQ(PerformUndo(c_), kNoErr);
  EXPECT_EQ(InsertStarts(c_), (Starts{2, 5}));
  EXPECT_FALSE(CanUndo(c_));
  EXPECT_FALSE(UpdateSpecialPagesCommandButtons(c_, {}).undo);
  // A second undo has nothing to restore and keeps what is there.
  EXPECT_EQ(PerformUndo(c_), kNoErr);
  EXPECT_EQ(InsertStarts(c_), (Starts{2, 5}));

  // The snapshot is a copy, not an alias; a missing cover comes back missing.
  c_.backCover.reset();
  SaveUndoState(c_);
  const SpecialPage* live = c_.inserts->pageAtIndex(0);
  c_.frontCover->setSidesImaged(4);
  c_.inserts->remove(live);
  c_.backCover = std::make_unique<Cover>();
  PerformUndo(c_);
  EXPECT_EQ(c_.frontCover->sidesImaged(), 1);
  EXPECT_FALSE(c_.backCover);
  EXPECT_EQ(InsertStarts(c_), (Starts{2, 5}));
  EXPECT_EQ(c_.inserts->indexOfPage(live), -1);  // a clone came back
}

// "Yes" deletes the selected pages of each kind, or all of them.
TEST_F(SpecialPagesEditing, DeleteOnYes) {
  const SpecialPageItem picked[] = {Row(0), Row(2), Row(3)};  // front, insert 5, exception 3-4
  EXPECT_TRUE(DeleteSelectedSpecialPages(c_, picked, Answer(true, &asked_), GetPDEBundle()));
  EXPECT_FALSE(c_.frontCover);
  EXPECT_TRUE(c_.backCover);
  EXPECT_EQ(InsertStarts(c_), (Starts{2}));
  EXPECT_EQ(Ranges(c_), (RangePairs{{8, 8}}));
  PerformUndo(c_);
  EXPECT_EQ(SpecialPagesItems(c_).size(), 6u);
  EXPECT_TRUE(DeleteAllSpecialPages(c_, Answer(true, &asked_), GetPDEBundle()));
  EXPECT_EQ(asked_, 2);
  EXPECT_TRUE(SpecialPagesItems(c_).empty());
  const SpecialPagesCommandState state = UpdateSpecialPagesCommandButtons(c_, {});
  EXPECT_FALSE(state.removeAll);
  EXPECT_TRUE(state.undo);
  EXPECT_EQ(DeleteConfirmationFor(true, nullptr).title, "STRING NOT FOUND");
}

TEST_F(SpecialPagesEditing, AnsweringNoKeepsThePagesButReplacesTheSnapshot) {
  ASSERT_EQ(ApplyInsertEntry(c_, "9", false, Insert()), kNoErr);  // snapshot: without 9
  const SpecialPageItem picked[] = {Row(1)};
  EXPECT_FALSE(DeleteSelectedSpecialPages(c_, picked, Answer(false, &asked_), GetPDEBundle()));
  EXPECT_FALSE(DeleteAllSpecialPages(c_, Answer(false, &asked_), GetPDEBundle()));
  EXPECT_EQ(asked_, 2);
  EXPECT_EQ(SpecialPagesItems(c_).size(), 7u);
  PerformUndo(c_);  // back to the state at the question: 9 is still there
  EXPECT_EQ(InsertStarts(c_), (Starts{2, 5, 9}));
}

TEST_F(SpecialPagesEditing, CommandButtonRule) {
  EXPECT_EQ(UpdateSpecialPagesCommandButtons(SpecialPagesContext{}, {}),
            SpecialPagesCommandState{});
  SpecialPagesCommandState s = Buttons({1});  // insert at 2, first of its list
  EXPECT_TRUE(s.edit && s.remove && s.removeAll && s.undo && s.moveDown);
  EXPECT_FALSE(s.moveUp);
  // The last selected row decides the moves; a cover cannot move.
  s = Buttons({1, 0});
  EXPECT_TRUE(s.remove);
  EXPECT_FALSE(s.edit || s.moveUp || s.moveDown);
  s = Buttons({0, 2});
  EXPECT_TRUE(s.moveUp);
  EXPECT_FALSE(s.moveDown);
  // A neighbour before page 1 blocks the move.
  ASSERT_EQ(ApplyInsertEntry(c_, "", true, Insert()), kNoErr);
  EXPECT_EQ(InsertStarts(c_), (Starts{0, 2, 5}));
  EXPECT_FALSE(Buttons({2}).moveUp);
}

TEST_F(SpecialPagesEditing, MoveSelectedInsertsInSelectionOrder) {
  ASSERT_EQ(ApplyInsertEntry(c_, "7", false, Insert()), kNoErr);
  const SpecialPageItem picked[] = {Row(2), Row(3), Row(0)};  // inserts 5 and 7, a cover
  EXPECT_EQ(MoveSelectedInserts(c_, picked, true), 2);
  EXPECT_EQ(InsertStarts(c_), (Starts{5, 7, 2}));
  PerformUndo(c_);
  EXPECT_EQ(InsertStarts(c_), (Starts{2, 5, 7}));
}

// One insert per page with the dialog's settings; "before page 1" ignores
// the text; codes for bad text, and no open end (millions of inserts).
TEST(SpecialPagesEntry, InsertsOnePerPage) {
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

  const std::pair<const char*, Status> codes[] = {{"5-2", kInvalidRangeOrder},
                                                  {"", kInvalidPageRanges},
                                                  {"10000000", kPageNumberTooLarge},
                                                  {"1-", kInvalidPageRanges}};
  for (auto [text, code] : codes) {
    std::vector<std::unique_ptr<Insert>> none;
    EXPECT_EQ(MakeInsertsFromEntry(text, false, Insert(), &none), code) << text;
    EXPECT_TRUE(none.empty()) << text;
  }
  EXPECT_EQ(MakeInsertsFromEntry("1-9999", false, Insert(), &made), kNoErr);
  EXPECT_EQ(made.size(), 9999u);
  EXPECT_EQ(MakeInsertsFromEntry("0", false, Insert(), &made), kNoErr);  // the parser lets 0 by
}

// One exception per range; page 0 refuses the whole entry (after the
// parser's own errors) and takes no snapshot.
TEST(SpecialPagesEntry, ExceptionsOnePerRange) {
  ExceptionPage settings;
  settings.setPlex(2);
  std::vector<std::unique_ptr<ExceptionPage>> made;
  ASSERT_EQ(MakeExceptionPagesFromEntry("3-5, 9, 12-", settings, &made), kNoErr);
  ASSERT_EQ(made.size(), 3u);
  EXPECT_EQ(std::pair(made[0]->startPage(), made[0]->endPage()), std::pair(3, 5));
  EXPECT_EQ(made[1]->endPage(), 9);
  EXPECT_EQ(made[2]->endPage(), kLargestPageNumber);
  EXPECT_EQ(made[2]->plex(), 2);

  std::vector<std::unique_ptr<ExceptionPage>> none;
  EXPECT_EQ(MakeExceptionPagesFromEntry("2-4, 0", settings, &none), kInvalidPageNumbers);
  EXPECT_EQ(MakeExceptionPagesFromEntry("0-3", settings, &none), kInvalidPageNumbers);
  EXPECT_TRUE(none.empty());
  EXPECT_EQ(MakeExceptionPagesFromEntry("0, 5-2", settings, &none), kInvalidRangeOrder);
  SpecialPagesContext c;
  EXPECT_EQ(ApplyExceptionEntry(c, "0", settings), kInvalidPageNumbers);
  EXPECT_TRUE(c.exceptionPages->empty());
  EXPECT_FALSE(CanUndo(c));
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

}  // namespace
}  // namespace zorva

// The Special Pages panel's rules: where the cover dialog's choice puts the
// cover (with booklet layout forcing both) and the page field's first text.
// Selections kept on their pages and the booklet's covers deleted together
// are tested through the panel (tests/ui).
#include "panels/special_pages.h"

#include <gtest/gtest.h>

namespace zorva {
namespace {

Cover MakeCover(std::int32_t sides, std::int32_t weight) {
  Cover cover;
  cover.setSidesImaged(sides);
  cover.stock()->setWeight(weight);
  return cover;
}

bool Same(const std::unique_ptr<Cover>& held, const Cover& expected) {
  return held && *held == expected;
}

// Which covers the dialog's OK leaves, from the covers held and the choice.
struct CoverCase {
  const char* name;
  bool heldFront, heldBack;            // covers (different ones) before
  std::optional<CoverChoice> editing;  // the choice the dialog started with
  CoverChoice choice;                  // the choice on OK
  bool booklet;
  bool newFront, newBack;  // which slots hold the new cover
  bool oldFront, oldBack;  // which keep the cover they had
};

TEST(SpecialPagesPanel, TheCoverDialogPutsItsCoverWhereTheChoiceSays) {
  const CoverCase cases[] = {
      {"new front", false, false, std::nullopt, CoverChoice::Front, false, true, false, false,
       false},
      {"new back keeps front", true, false, std::nullopt, CoverChoice::Back, false, false, true,
       true, false},
      {"new both", false, true, std::nullopt, CoverChoice::Both, false, true, true, false, false},
      {"front moved to back", true, true, CoverChoice::Front, CoverChoice::Back, false, false, true,
       false, false},
      {"both narrowed to front", true, true, CoverChoice::Both, CoverChoice::Front, false, true,
       false, false, false},
      {"booklet forces both", false, false, std::nullopt, CoverChoice::Front, true, true, true,
       false, false},
  };
  const Cover oldFront = MakeCover(2, 90), oldBack = MakeCover(3, 120);
  const Cover edited = MakeCover(4, 200);
  for (const CoverCase& c : cases) {
    SpecialPagesContext context;
    if (c.heldFront) context.frontCover = std::make_unique<Cover>(oldFront);
    if (c.heldBack) context.backCover = std::make_unique<Cover>(oldBack);
    ApplyCoverEntry(context, {c.choice, edited}, c.editing, c.booklet);
    EXPECT_EQ(Same(context.frontCover, edited), c.newFront) << c.name;
    EXPECT_EQ(Same(context.backCover, edited), c.newBack) << c.name;
    EXPECT_EQ(Same(context.frontCover, oldFront), c.oldFront) << c.name;
    EXPECT_EQ(Same(context.backCover, oldBack), c.oldBack) << c.name;
    EXPECT_EQ(context.frontCover != nullptr, c.newFront || c.oldFront) << c.name;
    EXPECT_EQ(context.backCover != nullptr, c.newBack || c.oldBack) << c.name;
    // The change can be undone.
    ASSERT_TRUE(CanUndo(context)) << c.name;
    PerformUndo(context);
    EXPECT_EQ(context.frontCover != nullptr, c.heldFront) << c.name;
    EXPECT_EQ(context.backCover != nullptr, c.heldBack) << c.name;
  }
}

TEST(SpecialPagesPanel, TheCoverDialogStartsFromTheRowItEdits) {
  SpecialPagesContext context;
  const CoverEntry fresh = CoverEntryFor(context, nullptr, false);
  EXPECT_EQ(fresh.choice, CoverChoice::Front);
  EXPECT_EQ(fresh.cover.sidesImaged(), 1);
  EXPECT_EQ(CoverEntryFor(context, nullptr, true).choice, CoverChoice::Both);

  context.frontCover = std::make_unique<Cover>(MakeCover(2, 90));
  context.backCover = std::make_unique<Cover>(MakeCover(3, 120));
  const SpecialPageItem back{SpecialPageKind::BackCover, context.backCover.get()};
  const CoverEntry b = CoverEntryFor(context, &back, false);
  EXPECT_EQ(b.choice, CoverChoice::Back);
  EXPECT_TRUE(b.cover == *context.backCover);
  EXPECT_EQ(CoverEntryFor(context, &back, true).choice, CoverChoice::Both);
  // Equal covers are one cover on both sides.
  context.backCover = std::make_unique<Cover>(*context.frontCover);
  const SpecialPageItem front{SpecialPageKind::FrontCover, context.frontCover.get()};
  EXPECT_EQ(CoverEntryFor(context, &front, false).choice, CoverChoice::Both);
}

TEST(SpecialPagesPanel, APageFieldStartsWithThePagesOfTheRow) {
  ExceptionPage range;
  range.setStartPage(3);
  range.setEndPage(5);
  ExceptionPage single;
  single.setStartPage(7);
  single.setEndPage(7);
  Insert after;
  after.setStartPage(4);
  const Insert before;
  const Cover cover;
  const struct {
    const SpecialPage* page;
    const char* text;
  } cases[] = {{&range, "3-5"}, {&single, "7"}, {&after, "4"},
               {&before, ""},   {&cover, ""},   {nullptr, ""}};
  for (const auto& c : cases) EXPECT_EQ(PageEntryText(c.page), c.text) << c.text;
}

}  // namespace
}  // namespace zorva

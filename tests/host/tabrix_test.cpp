// The host's bookkeeping without windows: loading panels by panelCount, the
// order of Sync with the shown panel last, the arrows' wrap and the summary.
#include "host/tabrix.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/bundle.h"
#include "support/test_support.h"

namespace zorva {
namespace {

std::vector<std::string> gLog;
int gFailuresLeft = 0;

struct FakeContext {
  int id;
};

template <int N>
Status Prologue(PDEContext* c, std::uint32_t*, const char**, const char** title, float*, float*) {
  if (N == 2 && gFailuresLeft > 0) {
    --gFailuresLeft;
    gLog.push_back("2:Prologue failed");
    return -1;
  }
  *c = new FakeContext{N};
  static const std::string name = "Panel " + std::to_string(N);
  *title = name.c_str();
  return kNoErr;
}
Status Sync(PDEContext c, PrintSession*, bool re) {
  gLog.push_back(std::to_string(static_cast<FakeContext*>(c)->id) + (re ? ":read" : ":write"));
  return static_cast<FakeContext*>(c)->id;
}
Array gAnswer;
Status Summary(PDEContext c, Array** titles, Array** values) {
  if (static_cast<FakeContext*>(c)->id == 2) {
    *titles = &gAnswer;
    *values = &gAnswer;
  } else {
    *titles = nullptr;
    *values = nullptr;
  }
  return kNoErr;
}
Status Terminate(PDEContext c, Status) {
  gLog.push_back(std::to_string(static_cast<FakeContext*>(c)->id) + ":terminate");
  delete static_cast<FakeContext*>(c);
  return kNoErr;
}

template <int N>
Status Entry(PanelInterface** out) {
  *out = new PanelInterface{new PDEInterfaceTable{nullptr, nullptr, nullptr, Prologue<N>, nullptr,
                                                  Sync, Summary, nullptr, nullptr, Terminate}};
  return kNoErr;
}

const char* const kNames[] = {"one", "two", "three", nullptr};

PanelInterfaceEntry Lookup(std::string_view name) {
  if (name == "one") return Entry<1>;
  if (name == "two") return Entry<2>;
  if (name == "three") return Entry<3>;
  return nullptr;
}

class TabrixTest : public ::testing::Test {
 protected:
  void SetUp() override {
    gLog.clear();
    gFailuresLeft = 0;
    lastTabIndex = 0;
  }
  void TearDown() override { TerminatePanels(context, kNoErr); }
  TabrixContext context;
};

TEST_F(TabrixTest, PanelsLoadInListOrderAndAFailingOneIsTakenAgain) {
  gFailuresLeft = 3;
  int lookups = 0;
  LoadBuiltInPanels(context, kNames, [&](std::string_view name) {
    ++lookups;
    return Lookup(name);
  });
  ASSERT_EQ(context.panelCount, 3);
  EXPECT_EQ(lookups, 6);  // three names, the second tried four times
  EXPECT_EQ(context.panels[1].title, "Panel 2");
  EXPECT_EQ(context.panels[0].tabIndex, 1);
  EXPECT_EQ(context.panels[2].tabIndex, 3);
  EXPECT_GE(context.panels.capacity(), 10u);
  EXPECT_EQ(std::count(gLog.begin(), gLog.end(), "2:Prologue failed"), 3);
}

TEST_F(TabrixTest, SyncGoesThroughEveryShownPanelWithTheOneOnScreenLast) {
  LoadBuiltInPanels(context, kNames, Lookup);
  lastTabIndex = 2;
  EXPECT_EQ(SyncPanels(context, nullptr, false), 2);  // the last call's status
  EXPECT_EQ(gLog, (std::vector<std::string>{"1:write", "3:write", "2:write"}));
  gLog.clear();
  context.panels[0].tabIndex = kHiddenPanel;
  SyncPanels(context, nullptr, true);
  EXPECT_EQ(gLog, (std::vector<std::string>{"3:read", "2:read"}));
  EXPECT_EQ(ShownPanelCount(context), 2);
  context.panels[0].tabIndex = 1;  // so Terminate reaches it again
}

TEST_F(TabrixTest, ATabSwitchSavesThePanelLeftThenReloadsAllOthers) {
  LoadBuiltInPanels(context, kNames, Lookup);
  lastTabIndex = 3;
  SyncForTabSwitch(context);
  EXPECT_EQ(gLog, (std::vector<std::string>{"3:write", "1:read", "2:read"}));
}

TEST_F(TabrixTest, ArrowsWrapAtBothEnds) {
  EXPECT_EQ(NextTabIndex(6, 6), 1);
  EXPECT_EQ(NextTabIndex(2, 6), 3);
  EXPECT_EQ(PreviousTabIndex(1, 6), 6);
  EXPECT_EQ(PreviousTabIndex(4, 6), 3);
  EXPECT_EQ(NextTabIndex(1, 0), 1);  // no panels: no step
}

TEST_F(TabrixTest, SummaryStartsEmptyAndAnEarlierAnswerSurvivesLaterSilence) {
  TabrixContext none;
  Array* titles = &gAnswer;
  Array* values = &gAnswer;
  EXPECT_EQ(PanelsSummaryText(none, &titles, &values), kNoErr);
  EXPECT_EQ(titles, nullptr);
  EXPECT_EQ(values, nullptr);
  LoadBuiltInPanels(context, kNames, Lookup);
  PanelsSummaryText(context, &titles, &values);
  EXPECT_EQ(titles, &gAnswer);  // panel 2 answered, panel 3 did not
  EXPECT_EQ(values, &gAnswer);
}

TEST_F(TabrixTest, TerminateReachesEveryShownPanelAndEmptiesTheRecords) {
  LoadBuiltInPanels(context, kNames, Lookup);
  TerminatePanels(context, kNoErr);
  EXPECT_EQ(gLog, (std::vector<std::string>{"1:terminate", "2:terminate", "3:terminate"}));
  EXPECT_EQ(context.panelCount, 0);
  EXPECT_TRUE(context.panels.empty());
}

TEST(TabrixHelpBook, TheBundlesHelpPageIsRegisteredAndAMissingOneIsFileNotFound) {
  TabrixContext none;
  EXPECT_EQ(RegisterMyHelpBook(none), kNoErr);
  EXPECT_TRUE(none.helpBook.empty());

  test::TempDir dir;
  const auto folder = dir / "Help.bundle";
  std::filesystem::create_directory(folder);
  test::WriteText(folder / "Info.plist", test::ReadText(std::filesystem::path(ZORVA_BUILD_BUNDLES) /
                                                        "ZorvaFeatures.bundle" / "Info.plist"));
  const auto bundle = Bundle::Open(folder);
  ASSERT_NE(bundle, nullptr);
  TabrixContext context;
  context.bundle = bundle.get();
  EXPECT_EQ(RegisterMyHelpBook(context), kFnfErr);
  EXPECT_TRUE(context.helpBook.empty());
  test::WriteText(folder / "Help.html", "<html></html>");
  EXPECT_EQ(RegisterMyHelpBook(context), kNoErr);
  EXPECT_EQ(context.helpBook, folder / "Help.html");
  std::filesystem::remove_all(folder);
  EXPECT_EQ(RegisterMyHelpBook(context), kFnfErr);
}

}  // namespace
}  // namespace zorva

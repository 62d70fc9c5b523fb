// Background-form options: defaults, the cycle-pages range and its force
// flag, the ticket dictionary (the merge-name condition, missing and
// wrong-typed keys, the reset on reading) and the name histories in a real
// preference folder with the shipped bundle resource as fallback.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "core/bundle.h"
#include "core/plist_io.h"
#include "host/preferences.h"
#include "model/background_forms.h"
#include "support/test_support.h"

namespace zorva {

static void PrintTo(const BackgroundFormsOptions& o, std::ostream* os) {
  PrintTo(o.asTicket(), os);
  *os << " histories " << o.existingFormsArray().size() << "/" << o.newFormsArray().size();
}

namespace {

using test::ScopedEnv;
using test::TempDir;

class BackgroundForms : public ::testing::Test {
 protected:
  std::filesystem::path PrefsFile() const {
    return prefs_ / std::string(kBackgroundFormsPreferences);
  }
  void WritePrefs(const Value& v) const {
    ASSERT_TRUE(WriteUserPreferences(kBackgroundFormsPreferences, v));
  }

  TempDir prefs_;
  ScopedEnv prefsEnv_{"ZORVA_PREFERENCES_DIR", prefs_.path().string()};
  ScopedEnv bundleEnv_{"ZORVA_BUNDLE_PATH", ZORVA_BUILD_BUNDLES};
};

Dictionary History(FormNames existing, FormNames created) {
  Array e, n;
  for (auto& s : existing) e.push_back(Value(s));
  for (auto& s : created) n.push_back(Value(s));
  return Dictionary{{"ExistingFormsArray", Value(e)}, {"NewFormsArray", Value(n)}};
}

TEST_F(BackgroundForms, DefaultsAndTheCyclePagesRangeUnlessForced) {
  BackgroundFormsOptions o;
  EXPECT_FALSE(o.mergeWithString());
  EXPECT_FALSE(o.newFormString());
  EXPECT_TRUE(o.existingFormsArray().empty());
  const Dictionary expected{
      {"UseExistingForm", 1}, {"CyclePages", 2},    {"Inches", 1}, {"X1", 0}, {"Y1", 0},
      {"UseDocumentName", 1}, {"ApplyPagesFrom", 1}};
  EXPECT_EQ(o.asTicket(), expected);
  EXPECT_EQ(o.cyclePages(nullptr), kParamErr);

  ASSERT_EQ(o.setCyclePages(7), kNoErr);
  for (std::int32_t bad : {1, 1000000, kUnset}) {
    EXPECT_EQ(o.setCyclePages(bad, false), kParamErr) << bad;
    EXPECT_EQ(o.cyclePages(), 7);
  }
  EXPECT_EQ(o.setCyclePages(999999, false), kNoErr);
  EXPECT_EQ(o.cyclePages(), 999999);
  EXPECT_EQ(o.setCyclePages(2, false), kNoErr);
  for (std::int32_t forced : {0, 1000000}) {
    EXPECT_EQ(o.setCyclePages(forced, true), kNoErr);
    EXPECT_EQ(o.cyclePages(), forced);
  }
}

TEST_F(BackgroundForms, DictionaryRoundTripLeavesHistoriesOut) {
  BackgroundFormsOptions o;
  o.setMergeWithString("Invoice");
  EXPECT_FALSE(o.asTicket().contains("MergeWithString"));  // only when merging
  o.setUseExistingForm(2);
  o.setCyclePages(12);
  o.setInches(0);
  o.setXOffset(-150);
  o.setYOffset(300);
  o.setUseDocumentName(0);
  o.setApplyPagesFrom(3);
  o.setNewFormString("");  // an empty name is still a name
  o.setExistingFormsArray({"A", "B"});
  const Dictionary d = o.asTicket();
  EXPECT_EQ(d.size(), 9u);
  EXPECT_FALSE(d.contains("ExistingFormsArray"));

  BackgroundFormsOptions back(&d);
  back.setExistingFormsArray({"A", "B"});  // histories come from preferences, not tickets
  EXPECT_EQ(back, o);
  EXPECT_EQ(back.asTicket(), d);
}

TEST_F(BackgroundForms, ReadingResetsToWhatTheDictionaryHoldsAndNullChangesNothing) {
  BackgroundFormsOptions o;
  o.setUseExistingForm(2);
  o.setCyclePages(50);
  o.setXOffset(9);
  o.setMergeWithString("M");
  o.setNewFormString("N");
  const BackgroundFormsOptions before = o;
  o.fromTicket(nullptr);
  EXPECT_EQ(o, before);

  const Dictionary onlyInches{{"Inches", 0}};
  o.fromTicket(&onlyInches);
  BackgroundFormsOptions expected;
  expected.setInches(0);
  EXPECT_EQ(o, expected);
}

TEST_F(BackgroundForms, WrongTypesCountAsMissingAndNoRangeIsChecked) {
  const Dictionary d{{"UseExistingForm", true},
                     {"CyclePages", 0},  // refused by the setter, taken from a ticket
                     {"Inches", "1"},
                     {"X1", 2.9},
                     {"Y1", -2.9},
                     {"UseDocumentName", 1e12},
                     {"ApplyPagesFrom", Dictionary{}},
                     {"MergeWithString", "Merge"},  // read even when not merging
                     {"NewFormString", 42}};
  BackgroundFormsOptions expected;
  expected.setCyclePages(0, true);
  expected.setXOffset(2);
  expected.setYOffset(-2);
  expected.setMergeWithString("Merge");
  EXPECT_EQ(BackgroundFormsOptions(&d), expected);
}

TEST_F(BackgroundForms, HistoriesComeFromPreferencesOrTheShippedResource) {
  Dictionary saved = History({"Invoice", "Letterhead"}, {"Draft"});
  saved.getArray("NewFormsArray")->push_back(Value(7));  // not a name: skipped
  WritePrefs(Value(saved));
  BackgroundFormsOptions o;
  EXPECT_EQ(o.existingFormsArray(), (FormNames{"Invoice", "Letterhead"}));
  EXPECT_EQ(o.newFormsArray(), FormNames{"Draft"});
  // Reading a ticket loads them afresh.
  WritePrefs(Value(History({"Other"}, {})));
  const Dictionary d;
  o.fromTicket(&d);
  EXPECT_EQ(o.existingFormsArray(), FormNames{"Other"});

  // Empty and damaged preference files fall back to the shipped resource
  // (whose lists are empty).
  auto path = GetPDEBundle()->resourcePath(kFeaturesResource, "");
  ASSERT_TRUE(path);
  auto resource = ReadPropertyListFile(*path);
  ASSERT_TRUE(resource && resource->dictionary());
  EXPECT_TRUE(resource->dictionary()->getArray("ExistingFormsArray"));
  WritePrefs(Value(Dictionary{}));
  EXPECT_TRUE(BackgroundFormsOptions().existingFormsArray().empty());
  test::WriteText(PrefsFile(), "<plist><dict><key>");
  EXPECT_TRUE(BackgroundFormsOptions().newFormsArray().empty());
}

TEST(BackgroundFormsHistory, SavedPreferencesWinOverTheFallback) {
  const Value fallback(History({"Shipped"}, {"ShippedNew"}));
  const Value saved(History({"Mine"}, {}));
  const Value unrelated(Dictionary{{"SomethingElse", 1}});
  const Value notADictionary(Array{Value("Mine")});

  auto fromSaved = ReadBackgroundFormsHistory(&saved, &fallback);
  EXPECT_EQ(fromSaved.existingForms, FormNames{"Mine"});
  EXPECT_TRUE(fromSaved.newForms.empty());  // not topped up from the fallback
  EXPECT_TRUE(ReadBackgroundFormsHistory(&unrelated, &fallback).existingForms.empty());
  for (const Value* none : {&notADictionary, static_cast<const Value*>(nullptr)}) {
    auto h = ReadBackgroundFormsHistory(none, &fallback);
    EXPECT_EQ(h.existingForms, FormNames{"Shipped"});
    EXPECT_EQ(h.newForms, FormNames{"ShippedNew"});
  }
  EXPECT_TRUE(ReadBackgroundFormsHistory(nullptr, nullptr).existingForms.empty());
}

TEST_F(BackgroundForms, SavingKeepsOtherEntriesAndReplacesADamagedFile) {
  WritePrefs(Value(Dictionary{{"WindowFrame", "10 10 300 200"}}));
  BackgroundFormsOptions o;
  o.setExistingFormsArray({"A"});
  o.setNewFormsArray({"B", "C"});
  EXPECT_EQ(o.saveHistory(), kNoErr);
  auto file = ReadPropertyListFile(PrefsFile());
  ASSERT_TRUE(file && file->dictionary());
  Dictionary expected = History({"A"}, {"B", "C"});
  expected.set("WindowFrame", "10 10 300 200");
  EXPECT_EQ(*file->dictionary(), expected);

  test::WriteText(PrefsFile(), "not a property list");
  EXPECT_EQ(o.saveHistory(), kNoErr);
  EXPECT_EQ(BackgroundFormsOptions().newFormsArray(), (FormNames{"B", "C"}));

  ScopedEnv unwritable("ZORVA_PREFERENCES_DIR", (PrefsFile() / "sub").string());
  testing::internal::CaptureStderr();
  EXPECT_EQ(o.saveHistory(), kNoErr);
  EXPECT_NE(testing::internal::GetCapturedStderr().find("WriteUserPreferences() failed"),
            std::string::npos);
}

}  // namespace
}  // namespace zorva

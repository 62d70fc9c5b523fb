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

TEST_F(BackgroundForms, DefaultsAndTheirDictionary) {
  BackgroundFormsOptions o;
  EXPECT_EQ(o.useExistingForm(), 1);
  EXPECT_EQ(o.cyclePages(), 2);
  EXPECT_EQ(o.inches(), 1);
  EXPECT_EQ(o.xOffset(), 0);
  EXPECT_EQ(o.yOffset(), 0);
  EXPECT_EQ(o.useDocumentName(), 1);
  EXPECT_EQ(o.applyPagesFrom(), 1);
  EXPECT_FALSE(o.mergeWithString());
  EXPECT_FALSE(o.newFormString());
  EXPECT_TRUE(o.existingFormsArray().empty());
  EXPECT_TRUE(o.newFormsArray().empty());
  const Dictionary expected{
      {"UseExistingForm", 1}, {"CyclePages", 2},    {"Inches", 1}, {"X1", 0}, {"Y1", 0},
      {"UseDocumentName", 1}, {"ApplyPagesFrom", 1}};
  EXPECT_EQ(o.asTicket(), expected);
}

TEST_F(BackgroundForms, PointerGettersRefuseNull) {
  BackgroundFormsOptions o;
  o.setYOffset(-7);
  o.setNewFormString("Letterhead");
  std::int32_t n = 0;
  EXPECT_EQ(o.yOffset(&n), kNoErr);
  EXPECT_EQ(n, -7);
  EXPECT_EQ(o.cyclePages(nullptr), kParamErr);
  std::optional<std::string> s;
  EXPECT_EQ(o.newFormString(&s), kNoErr);
  EXPECT_EQ(s, "Letterhead");
  EXPECT_EQ(o.mergeWithString(nullptr), kParamErr);
  EXPECT_EQ(o.newFormsArray(nullptr), kParamErr);
}

TEST_F(BackgroundForms, CyclePagesRangeUnlessForced) {
  BackgroundFormsOptions o;
  ASSERT_EQ(o.setCyclePages(7), kNoErr);
  for (std::int32_t bad : {1, 0, -1, 1000000, kUnset}) {
    EXPECT_EQ(o.setCyclePages(bad, false), kParamErr) << bad;
    EXPECT_EQ(o.cyclePages(), 7);
  }
  EXPECT_EQ(o.setCyclePages(2, false), kNoErr);
  EXPECT_EQ(o.setCyclePages(999999, false), kNoErr);
  EXPECT_EQ(o.cyclePages(), 999999);
  for (std::int32_t forced : {1, 0, -3, 1000000}) {
    EXPECT_EQ(o.setCyclePages(forced, true), kNoErr);
    EXPECT_EQ(o.cyclePages(), forced);
  }
}

TEST_F(BackgroundForms, MergeNameWrittenOnlyWhenMergingWithANamedForm) {
  BackgroundFormsOptions o;
  o.setMergeWithString("Invoice");
  EXPECT_FALSE(o.asTicket().contains("MergeWithString"));  // useExistingForm is 1
  o.setUseExistingForm(2);
  EXPECT_EQ(*o.asTicket().getString("MergeWithString"), "Invoice");
  o.setMergeWithString(std::nullopt);
  EXPECT_FALSE(o.asTicket().contains("MergeWithString"));
  o.setNewFormString("");  // an empty name is still a name
  EXPECT_EQ(*o.asTicket().getString("NewFormString"), "");
}

TEST_F(BackgroundForms, DictionaryRoundTripLeavesHistoriesOut) {
  BackgroundFormsOptions o;
  o.setUseExistingForm(2);
  o.setCyclePages(12);
  o.setInches(0);
  o.setXOffset(-150);
  o.setYOffset(300);
  o.setUseDocumentName(0);
  o.setApplyPagesFrom(3);
  o.setMergeWithString("Old Form");
  o.setNewFormString("New Form");
  o.setExistingFormsArray({"A", "B"});
  const Dictionary d = o.asTicket();
  EXPECT_EQ(d.size(), 9u);
  EXPECT_FALSE(d.contains("ExistingFormsArray"));
  EXPECT_EQ(*d.find("X1"), Value(-150));

  BackgroundFormsOptions back(&d);
  back.setExistingFormsArray({"A", "B"});  // histories come from preferences, not tickets
  EXPECT_EQ(back, o);
  EXPECT_EQ(back.asTicket(), d);
}

TEST_F(BackgroundForms, ReadingResetsNumbersAndNamesToWhatTheDictionaryHolds) {
  BackgroundFormsOptions o;
  o.setUseExistingForm(2);
  o.setCyclePages(50);
  o.setXOffset(9);
  o.setApplyPagesFrom(4);
  o.setMergeWithString("M");
  o.setNewFormString("N");
  const Dictionary onlyInches{{"Inches", 0}};
  o.fromTicket(&onlyInches);
  EXPECT_EQ(o.inches(), 0);
  EXPECT_EQ(o.useExistingForm(), 1);
  EXPECT_EQ(o.cyclePages(), 2);
  EXPECT_EQ(o.xOffset(), 0);
  EXPECT_EQ(o.applyPagesFrom(), 1);
  EXPECT_FALSE(o.mergeWithString());
  EXPECT_FALSE(o.newFormString());
}

TEST_F(BackgroundForms, NullDictionaryChangesNothing) {
  BackgroundFormsOptions o;
  o.setXOffset(5);
  o.setExistingFormsArray({"kept"});
  const BackgroundFormsOptions before = o;
  WritePrefs(Value(History({"saved"}, {})));
  o.fromTicket(nullptr);
  EXPECT_EQ(o, before);
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
  BackgroundFormsOptions o(&d);
  EXPECT_EQ(o.useExistingForm(), 1);
  EXPECT_EQ(o.cyclePages(), 0);
  EXPECT_EQ(o.inches(), 1);
  EXPECT_EQ(o.xOffset(), 2);
  EXPECT_EQ(o.yOffset(), -2);
  EXPECT_EQ(o.useDocumentName(), 1);
  EXPECT_EQ(o.applyPagesFrom(), 1);
  EXPECT_EQ(o.mergeWithString(), "Merge");
  EXPECT_FALSE(o.newFormString());
  EXPECT_FALSE(o.asTicket().contains("MergeWithString"));
}

TEST_F(BackgroundForms, HistoriesComeFromThePreferenceFile) {
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
  EXPECT_TRUE(o.newFormsArray().empty());
}

TEST_F(BackgroundForms, NoSavedHistoryUsesTheShippedResource) {
  const Bundle* bundle = GetPDEBundle();
  ASSERT_NE(bundle, nullptr);
  auto path = bundle->resourcePath(kFeaturesResource, "");
  ASSERT_TRUE(path);
  auto resource = ReadPropertyListFile(*path);
  ASSERT_TRUE(resource && resource->dictionary());
  EXPECT_TRUE(resource->dictionary()->getArray("NewFormsArray"));
  EXPECT_TRUE(resource->dictionary()->getArray("ExistingFormsArray"));

  // Missing, empty and damaged preference files all fall back.
  BackgroundFormsOptions missing;
  EXPECT_TRUE(missing.existingFormsArray().empty());
  WritePrefs(Value(Dictionary{}));
  EXPECT_TRUE(BackgroundFormsOptions().newFormsArray().empty());
  test::WriteText(PrefsFile(), "<plist><dict><key>");
  EXPECT_TRUE(BackgroundFormsOptions().newFormsArray().empty());
}

TEST(BackgroundFormsHistory, SavedPreferencesWinOverTheFallback) {
  const Value fallback(History({"Shipped"}, {"ShippedNew"}));
  const Value saved(History({"Mine"}, {}));
  const Value unrelated(Dictionary{{"SomethingElse", 1}});
  const Value empty(Dictionary{});
  const Value notADictionary(Array{Value("Mine")});

  auto fromSaved = ReadBackgroundFormsHistory(&saved, &fallback);
  EXPECT_EQ(fromSaved.existingForms, FormNames{"Mine"});
  EXPECT_TRUE(fromSaved.newForms.empty());  // not topped up from the fallback

  EXPECT_TRUE(ReadBackgroundFormsHistory(&unrelated, &fallback).existingForms.empty());
  for (const Value* none : {&empty, &notADictionary, static_cast<const Value*>(nullptr)}) {
    auto h = ReadBackgroundFormsHistory(none, &fallback);
    EXPECT_EQ(h.existingForms, FormNames{"Shipped"});
    EXPECT_EQ(h.newForms, FormNames{"ShippedNew"});
  }
  EXPECT_TRUE(ReadBackgroundFormsHistory(nullptr, nullptr).existingForms.empty());
  const Value wrongType(Dictionary{{"ExistingFormsArray", "Shipped"}});
  EXPECT_TRUE(ReadBackgroundFormsHistory(&empty, &wrongType).existingForms.empty());
}

TEST_F(BackgroundForms, SavingKeepsTheFileOtherEntries) {
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

  BackgroundFormsOptions reloaded;
  EXPECT_EQ(reloaded.newFormsArray(), (FormNames{"B", "C"}));
}

TEST_F(BackgroundForms, SavingReplacesADamagedFileAndReportsNothing) {
  test::WriteText(PrefsFile(), "not a property list");
  BackgroundFormsOptions o;
  o.setNewFormsArray({"Z"});
  EXPECT_EQ(o.saveHistory(), kNoErr);
  EXPECT_EQ(BackgroundFormsOptions().newFormsArray(), FormNames{"Z"});

  ScopedEnv unwritable("ZORVA_PREFERENCES_DIR", (PrefsFile() / "sub").string());
  testing::internal::CaptureStderr();
  EXPECT_EQ(o.saveHistory(), kNoErr);
  EXPECT_NE(testing::internal::GetCapturedStderr().find("WriteUserPreferences() failed"),
            std::string::npos);
}

}  // namespace
}  // namespace zorva

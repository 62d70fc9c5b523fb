// The keyword tables' data (routing, shipped oddities, scan-safe validation
// tables), the registry of table names, the installed-feature table, and that
// every key a menu shows has an English text in the built bundle.
#include "host/keyword_tables.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/bundle.h"
#include "host/installable_options.h"

namespace zorva {
namespace {

using namespace std::string_view_literals;

TEST(KeywordTables, KeywordsRouteToSharedTablesAndRegistryFindsNames) {
  // Cover sheets and slip sheets share the tray and media-type tables.
  for (const char* k : {"InputSlot", "ZRFrontCoverSheet", "ZRBackCoverSheet", "ZRSlipSheetSource"})
    EXPECT_EQ(ChoiceTableForKeyword(k), InputSlotMap) << k;
  EXPECT_EQ(ChoiceTableForKeyword("ZRSlipSheetType"), MediaTypeMap);
  EXPECT_EQ(ChoiceTableForKeyword("inputslot"), nullptr);  // keywords are case-sensitive

  std::set<std::string_view> names;
  for (const KeywordTableEntry& entry : AllKeywordTables())
    EXPECT_TRUE(names.insert(entry.name).second) << entry.name;
  const KeywordTableEntry* media = FindKeywordTable("mediatypemap");
  ASSERT_NE(media, nullptr);
  EXPECT_EQ(std::get<const KeywordPair*>(media->table), MediaTypeMap);
  EXPECT_EQ(FindKeywordTable("PlexMa"), nullptr);
  EXPECT_EQ(FindKeywordTable(""), nullptr);
}

TEST(KeywordTables, ShippedOdditiesAreKept) {
  // The menu and the size table spell code 7 differently.
  EXPECT_EQ(LocalizedKeyForTicketValue(StockSizeMap, 7), "223x297StockSize"sv);
  EXPECT_EQ(TicketToUI(CompleteStockTypeMap, 10), 4);  // "Recycled" before "Labels"
  const PaperSizeSettingMap& end = CompleteStockSizeMap[CountMaps(CompleteStockSizeMap)];
  EXPECT_EQ(end.key, nullptr);
}

// Named-paper validation looks every stored code up in these tables. A keyed
// row of value 0 would end the scan early and hide the rows after it, and a
// missing default row would reject an unset attribute.
TEST(KeywordTables, ValidationTablesFindEveryCodeTheyHold) {
  for (const SettingMap* map : {WeightMap, SidesCoatedMap, FinishMap, FinishMap1, GrainMap}) {
    EXPECT_EQ(TicketToUI(map, kUnset), 1);
    for (int pos = 1; pos <= CountMaps(map); ++pos) {
      const std::int32_t v = UIToTicket(map, pos);
      EXPECT_NE(v, 0) << map[pos - 1].key;
      if (v > 0) {
        EXPECT_EQ(TicketToUI(map, v), pos) << map[pos - 1].key;
      }
    }
  }
  EXPECT_EQ(TicketToUI(WeightMap, 113), -1);  // a free weight is not a table row
}

class InstalledFeaturesTest : public ::testing::Test {
 protected:
  void SetUp() override { UnloadInstallableOptions(); }
  void TearDown() override { UnloadInstallableOptions(); }
};

TEST_F(InstalledFeaturesTest, BigFinisherBringsStackerSmallOneDoesNot) {
  ASSERT_TRUE(SetInstallableOptions(Dictionary{{"Option1", "HCSS80"}}, InstalledFeatures));
  std::int32_t value = 0;
  EXPECT_TRUE(getInstallableOptionTicketValue("StackerTray1Key", value));
  EXPECT_EQ(value, 4);
  EXPECT_EQ(InstalledFeatureLabelKey("StackerTray1Key"), "Main Tray"sv);
  EXPECT_TRUE(getInstalledFeature("2StaplesB"));
  EXPECT_EQ(InstalledFeatureLabelKey("2StaplesB"), nullptr);  // no label

  UnloadInstallableOptions();
  ASSERT_TRUE(SetInstallableOptions(Dictionary{{"Option1", "StdFinisher"}}, InstalledFeatures));
  value = -1;
  EXPECT_FALSE(getInstallableOptionTicketValue("StackerTray1Key", value));
  EXPECT_EQ(value, -1);
  EXPECT_FALSE(getInstalledFeature("1StapleTL"));
  EXPECT_TRUE(getInstallableOptionTicketValue("SimpleCatchTrayKey", value));
  EXPECT_EQ(value, 3);

  // Choices match exactly; a number where a keyword belongs is no choice.
  for (const Value& choice : {Value("hcss80"), Value(80)}) {
    UnloadInstallableOptions();
    ASSERT_TRUE(SetInstallableOptions(Dictionary{{"Option1", choice}}, InstalledFeatures));
    EXPECT_FALSE(getInstalledFeature("Offset"));
  }
}

TEST_F(InstalledFeaturesTest, LoadsOnceUntilUnloaded) {
  EXPECT_FALSE(getInstalledFeature("Offset"));
  ASSERT_TRUE(SetInstallableOptions(Dictionary{{"Option1", "DFA"}}, InstalledFeatures));
  EXPECT_FALSE(SetInstallableOptions(Dictionary{{"Option1", "HCSS80"}}, InstalledFeatures));
  EXPECT_TRUE(getInstalledFeature("Custom"));
  EXPECT_FALSE(getInstalledFeature("StackerTray1Key"));
  std::string_view choice;
  ASSERT_TRUE(getInstallableOptionValue("Option1", choice));
  EXPECT_EQ(choice, "DFA");

  UnloadInstallableOptions();
  EXPECT_EQ(GetInstallableOptions(), nullptr);
  EXPECT_TRUE(SetInstallableOptions(Dictionary{{"Option1", "HCSS80"}}, InstalledFeatures));
  EXPECT_TRUE(getInstalledFeature("StackerTray1Key"));
}

// Every key a menu can show, and every finisher label, must have an English
// text; a missing one would show "STRING NOT FOUND" in the dialog.
TEST(KeywordTables, EveryMenuKeyHasEnglishText) {
  auto bundle = Bundle::Open(ZORVA_BUILD_BUNDLES "/ZorvaFeatures.bundle");
  ASSERT_NE(bundle, nullptr);
  std::vector<std::string> missing;
  auto check = [&](const char* key) {
    if (key == nullptr || key == "-"sv) return;
    if (bundle->localizedString(key) == kStringNotFound) missing.emplace_back(key);
  };
  check("UseJobSetting");
  for (const KeywordTableEntry& entry : AllKeywordTables()) {
    if (const auto* map = std::get_if<const SettingMap*>(&entry.table)) {
      for (const SettingMap* row = *map; row->key; ++row) check(row->key);
    } else if (const auto* sizes = std::get_if<const PaperSizeSettingMap*>(&entry.table)) {
      for (const PaperSizeSettingMap* row = *sizes; row->key; ++row) check(row->key);
    }
  }
  for (const InstalledFeature* row = InstalledFeatures; row->feature; ++row) check(row->labelKey);
  EXPECT_TRUE(missing.empty()) << "first missing: " << (missing.empty() ? "" : missing[0]) << " ("
                               << missing.size() << " in all)";
  EXPECT_EQ(bundle->localizedString("LetterStockSize"), "Letter (8.5 x 11\")");
}

}  // namespace
}  // namespace zorva

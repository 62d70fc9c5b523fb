// The keyword tables' data (order, shipped oddities), the registry of table
// names, the installed-feature table, and that every key a menu shows has an
// English text in the built bundle.
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

const PaperSizeSettingMap* SizeRow(std::int32_t code) {
  for (const PaperSizeSettingMap* row = CompleteStockSizeMap; row->key; ++row) {
    if (row->value == code) return row;
  }
  return nullptr;
}

TEST(KeywordTables, MainKeywordMapRoutesEveryKeywordToItsTable) {
  ASSERT_EQ(CountMaps(MainKeywordMap), 28);
  EXPECT_STREQ(MainKeywordMap[0].keyword, "JCLBanner");
  EXPECT_STREQ(MainKeywordMap[27].keyword, "ZRSlipSheetType");
  // Cover sheets and slip sheets share the tray and media-type tables.
  for (const char* k : {"InputSlot", "ZRFrontCoverSheet", "ZRBackCoverSheet", "ZRSlipSheetSource"})
    EXPECT_EQ(ChoiceTableForKeyword(k), InputSlotMap) << k;
  EXPECT_EQ(ChoiceTableForKeyword("ZRSlipSheetType"), MediaTypeMap);
  EXPECT_EQ(ChoiceTableForKeyword("StapleLocation"), ZRStapleMap);
  EXPECT_EQ(ChoiceTableForKeyword("ZREconomode"), DraftModeMap);
  EXPECT_EQ(ChoiceTableForKeyword("inputslot"), nullptr);  // keywords are case-sensitive
}

TEST(KeywordTables, PaperSizeOdditiesAreKept) {
  // One key for two postcards of different widths.
  ASSERT_NE(SizeRow(59), nullptr);
  ASSERT_NE(SizeRow(43), nullptr);
  EXPECT_STREQ(SizeRow(59)->key, "Postcard (4 x 6\")");
  EXPECT_STREQ(SizeRow(43)->key, "Postcard (4 x 6\")");
  EXPECT_NE(SizeRow(59)->width, SizeRow(43)->width);
  // Code 70 carries A6's name with B3's dimensions.
  EXPECT_STREQ(SizeRow(70)->key, "B3 (105 x 148 mm)");
  EXPECT_EQ(SizeRow(70)->width, 35300);
  EXPECT_EQ(SizeRow(70)->height, 50000);
  EXPECT_EQ(SizeRow(77)->width, 9800);
  EXPECT_EQ(SizeRow(77)->widthPoints, 297);
  EXPECT_EQ(SizeRow(8)->width, SizeRow(82)->width);
  EXPECT_EQ(SizeRow(8)->height, SizeRow(82)->height);
  // The menu and the size table spell codes 7 and 11 differently.
  EXPECT_STREQ(SizeRow(7)->key, "StockSize223x297");
  EXPECT_EQ(LocalizedKeyForTicketValue(StockSizeMap, 7), "223x297StockSize"sv);
  EXPECT_STREQ(SizeRow(11)->key, "12x18StockSize");
  EXPECT_EQ(LocalizedKeyForTicketValue(StockSizeMap, 11), "Oversize Tabloid (12 x 18\")"sv);

  const PaperSizeSettingMap& first = CompleteStockSizeMap[0];
  EXPECT_EQ(first.value, kUnset);
  EXPECT_EQ(first.widthPoints, kUnset);
  const PaperSizeSettingMap& end = CompleteStockSizeMap[CountMaps(CompleteStockSizeMap)];
  EXPECT_EQ(end.key, nullptr);
  EXPECT_EQ(end.value, 0);
}

TEST(KeywordTables, StockMenusInMenuOrder) {
  EXPECT_EQ(TicketToUI(CompleteStockTypeMap, 10), 4);  // "Recycled" before "Labels"
  EXPECT_EQ(TicketToUI(StockTypeMap, 7), CountMaps(StockTypeMap));
  EXPECT_EQ(TicketToUI(StockPunchedMap, kUnset), 3);
  EXPECT_EQ(TicketToUI(StockColorMap, 10), 14);
  for (int i = 1; i <= CountMaps(StockColorMap); ++i) {
    EXPECT_STREQ(StockColorMap[i - 1].key, CompleteStockColorMap[i - 1].key);
    EXPECT_EQ(UIToTicket(StockColorMap, i), UIToTicket(CompleteStockColorMap, i));
  }
}

TEST(KeywordTables, RegistryFindsTablesByName) {
  std::set<std::string_view> names;
  for (const KeywordTableEntry& entry : AllKeywordTables()) {
    EXPECT_TRUE(names.insert(entry.name).second) << entry.name;
  }
  EXPECT_EQ(names.size(), 47u);

  const KeywordTableEntry* plex = FindKeywordTable("PlexMap");
  ASSERT_NE(plex, nullptr);
  EXPECT_EQ(std::get<const SettingMap*>(plex->table), PlexMap);
  const KeywordTableEntry* media = FindKeywordTable("mediatypemap");
  ASSERT_NE(media, nullptr);
  EXPECT_STREQ(media->name, "MediaTypeMap");
  EXPECT_EQ(std::get<const KeywordPair*>(media->table), MediaTypeMap);
  ASSERT_NE(FindKeywordTable("COMPLETESTOCKSIZEMAP"), nullptr);
  EXPECT_EQ(FindKeywordTable("PlexMa"), nullptr);
  EXPECT_EQ(FindKeywordTable(""), nullptr);
}

class InstalledFeaturesTest : public ::testing::Test {
 protected:
  void SetUp() override { UnloadInstallableOptions(); }
  void TearDown() override { UnloadInstallableOptions(); }
};

TEST_F(InstalledFeaturesTest, BigFinisherBringsStacker) {
  ASSERT_TRUE(SetInstallableOptions(Dictionary{{"Option1", "HCSS80"}}, InstalledFeatures));
  std::int32_t value = 0;
  EXPECT_TRUE(getInstalledFeature("StackerTray1Key"));
  EXPECT_TRUE(getInstallableOptionTicketValue("StackerTray1Key", value));
  EXPECT_EQ(value, 4);
  EXPECT_EQ(InstalledFeatureLabelKey("StackerTray1Key"), "Main Tray"sv);
  EXPECT_TRUE(getInstalledFeature("2StaplesB"));
  EXPECT_EQ(InstalledFeatureLabelKey("2StaplesB"), nullptr);  // no label
  std::string_view choice;
  ASSERT_TRUE(getInstallableOptionValue("Option1", choice));
  EXPECT_EQ(choice, "HCSS80");
  EXPECT_FALSE(getInstallableOptionValue("Option2", choice));
}

TEST_F(InstalledFeaturesTest, SmallFinisherHasNoStacker) {
  ASSERT_TRUE(SetInstallableOptions(Dictionary{{"Option1", "StdFinisher"}}, InstalledFeatures));
  std::int32_t value = -1;
  EXPECT_FALSE(getInstalledFeature("StackerTray1Key"));
  EXPECT_FALSE(getInstallableOptionTicketValue("StackerTray1Key", value));
  EXPECT_EQ(value, -1);
  EXPECT_EQ(InstalledFeatureLabelKey("StackerTray1Key"), nullptr);
  EXPECT_FALSE(getInstalledFeature("1StapleTL"));
  EXPECT_TRUE(getInstallableOptionTicketValue("SimpleCatchTrayKey", value));
  EXPECT_EQ(value, 3);
  EXPECT_EQ(InstalledFeatureLabelKey("SimpleCatchTrayKey"), "Top Tray"sv);
}

TEST_F(InstalledFeaturesTest, ChoiceMustMatchExactly) {
  ASSERT_TRUE(SetInstallableOptions(Dictionary{{"Option1", "hcss80"}}, InstalledFeatures));
  EXPECT_FALSE(getInstalledFeature("Offset"));
  UnloadInstallableOptions();
  // A number where a choice keyword belongs counts as no choice at all.
  ASSERT_TRUE(SetInstallableOptions(Dictionary{{"Option1", 80}}, InstalledFeatures));
  EXPECT_FALSE(getInstalledFeature("Offset"));
  std::string_view choice = "untouched";
  EXPECT_FALSE(getInstallableOptionValue("Option1", choice));
  EXPECT_EQ(choice, "untouched");
}

TEST_F(InstalledFeaturesTest, LoadsOnceUntilUnloaded) {
  EXPECT_EQ(GetInstallableOptions(), nullptr);
  EXPECT_FALSE(getInstalledFeature("Offset"));
  ASSERT_TRUE(SetInstallableOptions(Dictionary{{"Option1", "DFA"}}, InstalledFeatures));
  EXPECT_FALSE(SetInstallableOptions(Dictionary{{"Option1", "HCSS80"}}, InstalledFeatures));
  EXPECT_TRUE(getInstalledFeature("Custom"));
  EXPECT_FALSE(getInstalledFeature("StackerTray1Key"));
  ASSERT_NE(GetInstallableOptions(), nullptr);
  EXPECT_EQ(*GetInstallableOptions()->getString("Option1"), "DFA");

  UnloadInstallableOptions();
  EXPECT_EQ(GetInstallableOptions(), nullptr);
  EXPECT_FALSE(getInstalledFeature("Custom"));
  EXPECT_TRUE(SetInstallableOptions(Dictionary{{"Option1", "HCSS80"}}, InstalledFeatures));
  EXPECT_TRUE(getInstalledFeature("StackerTray1Key"));
}

TEST_F(InstalledFeaturesTest, RowWithoutOptionAlwaysMatchesOnceLoaded) {
  constexpr InstalledFeature features[] = {
      {"Always", nullptr, nullptr, "Main Tray", 9},
      {"Always", "Option1", "HCSS80", "Top Tray", 1},
      {nullptr, nullptr, nullptr, nullptr, 0},
  };
  ASSERT_TRUE(SetInstallableOptions(Dictionary{}, features));
  std::int32_t value = 0;
  EXPECT_TRUE(getInstallableOptionTicketValue("Always", value));
  EXPECT_EQ(value, 9);
  EXPECT_FALSE(getInstalledFeature("Never"));
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
  EXPECT_EQ(bundle->localizedString("Oversize Tabloid (12 x 18\")"),
            "Oversize Tabloid (12 x 18\")");
}

}  // namespace
}  // namespace zorva

namespace zorva {
namespace {

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
  EXPECT_EQ(TicketToUI(WeightMap, 113), -1);                  // a free weight is not a table row
  EXPECT_LT(UIToTicket(WeightMap, CountMaps(WeightMap)), 0);  // "Custom..." is a command
}

TEST(KeywordTables, SummaryTablesNameTheJobTicketCodes) {
  EXPECT_STREQ(LocalizedKeyForTicketValue(CoatingTypeMap, 5), "CoatingMatte");
  EXPECT_STREQ(LocalizedKeyForTicketValue(CoverSidesImagedMap, 4), "CoverPrintBoth");
  EXPECT_STREQ(LocalizedKeyForTicketValue(SidesCoatedMap, 4), "SidesCoatedBack");
  EXPECT_STREQ(LocalizedKeyForTicketValue(OutputColorMap, 1), "OutputColorGrayscale");
  EXPECT_EQ(LocalizedKeyForTicketValue(CoverSidesImagedMap, 0), nullptr);
}

}  // namespace
}  // namespace zorva

// Look-ups over keyword tables: the value scan and its stopping rule, the
// installable-option filter on rows, row counts and the PPD conversions.
#include "host/setting_map.h"

#include <gtest/gtest.h>

#include <string_view>

#include "host/installable_options.h"
#include "host/keyword_tables.h"

namespace zorva {
namespace {

using namespace std::string_view_literals;

// Every test starts and ends with no installable options loaded.
class SettingMapTest : public ::testing::Test {
 protected:
  void SetUp() override { UnloadInstallableOptions(); }
  void TearDown() override { UnloadInstallableOptions(); }
};

// A stacker row exists only with the big finisher; the other row of the same
// value stands in when it is absent.
constexpr SettingMap kFilteredMap[] = {
    {"PrinterDefault", kUnset, 0, nullptr, 1},
    {"Stacker", 4, 0, "StackerTray1Key", 1},
    {"NoStacker", 4, 0, "StackerTray1Key", 0},
    {"Top Tray", 3, 0, "SimpleCatchTrayKey", 1},
    {nullptr, 0, 0, nullptr, 0},
};

TEST_F(SettingMapTest, ValueScanFindsFirstRowOrFails) {
  EXPECT_EQ(TicketToUI(PlexMap, kUnset), 1);
  EXPECT_EQ(TicketToUI(PlexMap, 3), 4);
  EXPECT_EQ(TicketToUI(PlexMap, 7), -1);
  EXPECT_EQ(LocalizedKeyForTicketValue(PlexMap, 7), nullptr);
  EXPECT_EQ(LocalizedKeyForTicketValue(PlexMap, 2), "Duplex"sv);
  EXPECT_EQ(UIToTicket(PlexMap, 4), 3);
  EXPECT_EQ(UIToTicket(PlexMap, TicketToUI(PlexMap, 2)), 2);
}

TEST_F(SettingMapTest, KeyedZeroRowEndsTheScan) {
  // Any description the menu does not list lands on "Custom...".
  EXPECT_EQ(TicketToUI(StockDescriptionMap, 5), 2);
  EXPECT_EQ(LocalizedKeyForTicketValue(StockDescriptionMap, 5), "Custom..."sv);
  EXPECT_EQ(TicketToUI(StockDescriptionMap, kUnset), 1);

  // A table that starts with value 0 ends every scan on its first row.
  constexpr SettingMap zeroFirst[] = {
      {"Zero", 0, 0, nullptr, 1}, {"One", 1, 0, nullptr, 1}, {nullptr, 0, 0, nullptr, 0}};
  EXPECT_EQ(TicketToUI(zeroFirst, 1), 1);
}

TEST_F(SettingMapTest, CommandRowsKeepTheirCodes) {
  EXPECT_EQ(WatermarkMap[0].command, 0x5A576D5Au);  // "ZWmZ"
  EXPECT_EQ(WatermarkMap[5].command, FourCC("ZWmD"));
  EXPECT_EQ(TicketToUI(WatermarkMap, kSeparatorValue), 2);
  EXPECT_EQ(TicketToUI(WatermarkMap, -9), 6);
  EXPECT_EQ(CountMaps(WatermarkMap), 6);
}

TEST_F(SettingMapTest, FilteredRowFollowsInstalledFeature) {
  // Nothing loaded: the feature is absent, so the "not installed" row answers.
  EXPECT_EQ(TicketToUI(kFilteredMap, 4), 3);
  EXPECT_EQ(TicketToUI(kFilteredMap, 3), -1);
  EXPECT_FALSE(RowIsAvailable(kFilteredMap[1]));
  EXPECT_TRUE(RowIsAvailable(kFilteredMap[2]));

  ASSERT_TRUE(SetInstallableOptions(Dictionary{{"Option1", "HCSS80"}}, InstalledFeatures));
  EXPECT_EQ(TicketToUI(kFilteredMap, 4), 2);
  EXPECT_EQ(LocalizedKeyForTicketValue(kFilteredMap, 3), "Top Tray"sv);
  // Filtered rows still count as rows.
  EXPECT_EQ(CountMaps(kFilteredMap), 4);

  UnloadInstallableOptions();
  ASSERT_TRUE(SetInstallableOptions(Dictionary{{"Option1", "StdFinisher"}}, InstalledFeatures));
  EXPECT_EQ(TicketToUI(kFilteredMap, 4), 3);
  EXPECT_EQ(TicketToUI(kFilteredMap, 3), 4);
}

TEST_F(SettingMapTest, CountsEveryShape) {
  constexpr SettingMap empty[] = {{nullptr, 0, 0, nullptr, 0}};
  EXPECT_EQ(CountMaps(empty), 0);
  EXPECT_EQ(CountMaps(PlexMap), 4);
  EXPECT_EQ(CountMaps(StockSizeMap), 16);
  EXPECT_EQ(CountMaps(CompleteStockTypeMap), 11);
  EXPECT_EQ(CountMaps(CompleteStockSizeMap), 75);
  EXPECT_EQ(CountMaps(MediaTypeMap), 40);
  EXPECT_EQ(CountMaps(OutputBinMap), 17);
  EXPECT_EQ(CountMaps(MainKeywordMap), 28);
}

TEST_F(SettingMapTest, KeywordPairsTreatZeroAsAValue) {
  EXPECT_EQ(KeywordPairValueForChoice(InputSlotMap, "Auto"), 0);
  EXPECT_EQ(KeywordPairChoiceForValue(InputSlotMap, 0), "Auto"sv);
  EXPECT_EQ(KeywordPairValueForChoice(InputSlotMap, "Bypass"), 100);
  EXPECT_EQ(KeywordPairValueForChoice(InputSlotMap, "tray1"), -1);  // case matters
  EXPECT_EQ(KeywordPairChoiceForValue(InputSlotMap, 7), nullptr);
}

TEST_F(SettingMapTest, PPDConversionsKeepFirstMatch) {
  EXPECT_EQ(PPDTicketValueForChoice("MediaType", "CardStock"), 12);
  EXPECT_EQ(PPDChoiceForTicketValue("MediaType", 43), "CardStock"sv);
  EXPECT_EQ(PPDTicketValueForChoice("ZRSlipSheetType", "CardStockF"), 43);
  EXPECT_EQ(PPDChoiceForTicketValue("OutputBin", 5), "Upper"sv);
  EXPECT_EQ(PPDTicketValueForChoice("OutputBin", "Bottom"), 5);
  EXPECT_EQ(PPDChoiceForTicketValue("OutputBin", kUnset), "PrinterDefault"sv);
  EXPECT_EQ(PPDTicketValueForChoice("InputSlot", "Auto"), 0);
  EXPECT_EQ(PPDChoiceForTicketValue("InputSlot", 0), "Auto"sv);
  EXPECT_EQ(PPDChoiceForTicketValue("ZRBackCoverSheet", 6), "Tray6"sv);
  // Expanded ranges.
  EXPECT_EQ(PPDTicketValueForChoice("MediaColor", "Custom7"), 21);
  EXPECT_EQ(PPDTicketValueForChoice("ZRImageQuality", "Darken4"), 4);
  EXPECT_EQ(PPDTicketValueForChoice("ZRImageQuality", "Lighten5"), -5);
}

TEST_F(SettingMapTest, PPDConversionsRejectUnknowns) {
  EXPECT_EQ(PPDTicketValueForChoice("mediatype", "CardStock"), -1);
  EXPECT_EQ(PPDTicketValueForChoice("NoSuchKeyword", "None"), -1);
  EXPECT_EQ(PPDTicketValueForChoice("Duplex", "Sideways"), -1);
  EXPECT_EQ(PPDTicketValueForChoice(nullptr, "None"), -1);
  EXPECT_EQ(PPDTicketValueForChoice("Duplex", nullptr), -1);
  EXPECT_EQ(PPDChoiceForTicketValue(nullptr, 1), nullptr);
  EXPECT_EQ(PPDChoiceForTicketValue("NoSuchKeyword", 1), nullptr);
  EXPECT_EQ(ChoiceTableForKeyword(""), nullptr);
}

TEST_F(SettingMapTest, PaperSizeKeysStopAtZero) {
  EXPECT_EQ(LocalizedKeyForPaperSizeTicketValue(CompleteStockSizeMap, kUnset), "PrinterDefault"sv);
  EXPECT_EQ(LocalizedKeyForPaperSizeTicketValue(CompleteStockSizeMap, 75), "Custom"sv);
  EXPECT_EQ(LocalizedKeyForPaperSizeTicketValue(CompleteStockSizeMap, 999), nullptr);
  EXPECT_EQ(LocalizedKeyForPaperSizeTicketValue(CompleteStockSizeMap, 0), nullptr);
}

}  // namespace
}  // namespace zorva

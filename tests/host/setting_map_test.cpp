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

TEST_F(SettingMapTest, ValueScanFindsFirstRowAndStopsAtAKeyedZero) {
  EXPECT_EQ(TicketToUI(PlexMap, kUnset), 1);
  EXPECT_EQ(TicketToUI(PlexMap, 7), -1);
  EXPECT_EQ(LocalizedKeyForTicketValue(PlexMap, 7), nullptr);
  EXPECT_EQ(UIToTicket(PlexMap, TicketToUI(PlexMap, 3)), 3);
  // Any description the menu does not list lands on "Custom...".
  EXPECT_EQ(TicketToUI(StockDescriptionMap, 5), 2);
  EXPECT_EQ(LocalizedKeyForTicketValue(StockDescriptionMap, 5), "Custom..."sv);
  EXPECT_EQ(TicketToUI(WatermarkMap, -9), 6);  // command rows are rows too
  EXPECT_EQ(WatermarkMap[0].command, FourCC("ZWmZ"));
  EXPECT_EQ(LocalizedKeyForPaperSizeTicketValue(CompleteStockSizeMap, 75), "Custom"sv);
  EXPECT_EQ(LocalizedKeyForPaperSizeTicketValue(CompleteStockSizeMap, 0), nullptr);
}

TEST_F(SettingMapTest, FilteredRowsAreSkippedByLookUpsButCounted) {
  // A stacker row exists only with the big finisher; the other row of the
  // same value stands in when it is absent.
  constexpr SettingMap filtered[] = {
      {"PrinterDefault", kUnset, 0, nullptr, 1},
      {"Stacker", 4, 0, "StackerTray1Key", 1},
      {"NoStacker", 4, 0, "StackerTray1Key", 0},
      {"Top Tray", 3, 0, "SimpleCatchTrayKey", 1},
      {nullptr, 0, 0, nullptr, 0},
  };
  EXPECT_EQ(TicketToUI(filtered, 4), 3);
  EXPECT_EQ(TicketToUI(filtered, 3), -1);
  EXPECT_EQ(CountMaps(filtered), 4);

  ASSERT_TRUE(SetInstallableOptions(Dictionary{{"Option1", "HCSS80"}}, InstalledFeatures));
  EXPECT_EQ(TicketToUI(filtered, 4), 2);
  EXPECT_EQ(LocalizedKeyForTicketValue(filtered, 3), "Top Tray"sv);
  EXPECT_EQ(CountMaps(filtered), 4);
}

TEST_F(SettingMapTest, PPDConversionsKeepFirstMatchAndTreatZeroAsAValue) {
  EXPECT_EQ(PPDTicketValueForChoice("MediaType", "CardStock"), 12);
  EXPECT_EQ(PPDChoiceForTicketValue("MediaType", 43), "CardStock"sv);
  EXPECT_EQ(PPDTicketValueForChoice("ZRSlipSheetType", "CardStockF"), 43);
  EXPECT_EQ(PPDChoiceForTicketValue("OutputBin", 5), "Upper"sv);
  EXPECT_EQ(PPDTicketValueForChoice("OutputBin", "Bottom"), 5);
  EXPECT_EQ(PPDTicketValueForChoice("InputSlot", "Auto"), 0);
  EXPECT_EQ(PPDChoiceForTicketValue("InputSlot", 0), "Auto"sv);
  EXPECT_EQ(KeywordPairValueForChoice(InputSlotMap, "tray1"), -1);  // case matters
  // Expanded ranges.
  EXPECT_EQ(PPDTicketValueForChoice("MediaColor", "Custom7"), 21);
  EXPECT_EQ(PPDTicketValueForChoice("ZRImageQuality", "Lighten5"), -5);
  // Unknown keywords, choices and null arguments.
  EXPECT_EQ(PPDTicketValueForChoice("mediatype", "CardStock"), -1);
  EXPECT_EQ(PPDTicketValueForChoice("Duplex", "Sideways"), -1);
  EXPECT_EQ(PPDTicketValueForChoice(nullptr, "None"), -1);
  EXPECT_EQ(PPDTicketValueForChoice("Duplex", nullptr), -1);
  EXPECT_EQ(PPDChoiceForTicketValue("NoSuchKeyword", 1), nullptr);
}

}  // namespace
}  // namespace zorva

// The Booklet/Watermark panel's rules: the booklet keys' defaults and round
// trip with their clients, the watermark menu's order, and the watermark
// list after saving, renaming and deleting.
#include "panels/booklet_watermark.h"

#include <gtest/gtest.h>

#include "core/ticket_keys.h"
#include "host/keyword_tables.h"

namespace zorva {
namespace {

namespace key = tkey;

TEST(BookletWatermark, AnEmptyTicketReadsAsTheDefaults) {
  const BookletSettings s = ReadBookletSettings(Ticket{});
  EXPECT_FALSE(s.layout);
  EXPECT_EQ(s.gutter, 24);
  EXPECT_EQ(s.creep, 0);
  EXPECT_EQ(s.drawOutlines, 0);
  EXPECT_EQ(s.foldStaple, 0);
  EXPECT_FALSE(s.rotate180);
  EXPECT_TRUE(s.watermark.empty());
}

TEST(BookletWatermark, SettingsRoundTripWithTheirClients) {
  BookletSettings s;
  s.layout = true;
  s.drawOutlines = 1;
  s.gutter = 36;
  s.creep = 2;
  s.foldStaple = 14;
  s.rotate180 = true;
  s.watermark = "DRAFT";
  s.watermarkFirstPageOnly = true;
  s.watermarkInFront = true;
  Ticket ticket;
  WriteBookletSettings(ticket, s);
  EXPECT_EQ(ReadBookletSettings(ticket), s);
  EXPECT_EQ(WatermarkChoiceFromTicket(ticket), (WatermarkChoice{"DRAFT", true, true}))
      << "the print path reads what the panel wrote";
  EXPECT_EQ(ticket.item(key::kGutter)->client, "Z");
  EXPECT_EQ(ticket.item(key::kCreep)->client, "Z");
  EXPECT_EQ(ticket.item(key::kBookletLayout)->client, "com.zorva.printingmanager");
  EXPECT_EQ(ticket.item(tkey::kBookletFoldStaple)->client, "com.zorva.printingmanager");
  // Options that are off are not stored, and none without a watermark.
  s.watermarkInFront = false;
  WriteBookletSettings(ticket, s);
  EXPECT_FALSE(ticket.contains(key::kWatermarkInFront));
  EXPECT_TRUE(ticket.contains(key::kWatermarkFirstPageOnly));
  s.watermark.clear();
  WriteBookletSettings(ticket, s);
  for (std::string_view k : {key::kWatermarkName, key::kWatermarkFirstPageOnly}) {
    EXPECT_FALSE(ticket.contains(k)) << k;
  }
}

// The job ticket's finishing writer takes these values as booklet fold codes.
TEST(BookletWatermark, FoldChoicesAreTheJobTicketsBookletFoldCodes) {
  for (const SettingMap* row = BookletFoldStapleMap; row->key; ++row) {
    EXPECT_TRUE(row->value == 0 || (row->value >= 13 && row->value <= 15)) << row->key;
  }
}

TEST(BookletWatermark, TheMenuPutsStoredWatermarksAfterNoWatermark) {
  const std::vector<WatermarkMenuItem> items = WatermarkMenuItems({"DRAFT", "COPY"});
  ASSERT_EQ(items.size(), static_cast<std::size_t>(CountMaps(WatermarkMap)) + 2);
  EXPECT_EQ(items[0].key, "NoWatermark");
  EXPECT_EQ(items[0].command, FourCC("ZWmZ"));
  EXPECT_TRUE(items[1].isName);
  EXPECT_EQ(items[1].key, "DRAFT");
  EXPECT_EQ(items[2].key, "COPY");
  EXPECT_EQ(items[2].command, kWatermarkItemCommand);
  EXPECT_EQ(items[3].key, "-");
  EXPECT_EQ(items.back().command, FourCC("ZWmD"));
}

TEST(BookletWatermark, TheListAfterSavingRenamingAndDeleting) {
  using Names = std::vector<std::string>;
  EXPECT_EQ(ListAfterSave({"A", "B"}, "", "C"), (Names{"A", "B", "C"}));
  EXPECT_EQ(ListAfterSave({"A", "B"}, "A", "Z"), (Names{"Z", "B"}));
  EXPECT_EQ(ListAfterSave({"A", "B"}, "B", "B"), (Names{"A", "B"}));
  // Saved under a name another watermark had: that one is replaced.
  EXPECT_EQ(ListAfterSave({"A", "B"}, "A", "B"), (Names{"B"}));
  EXPECT_EQ(ListAfterSave({"A", "B"}, "", "A"), (Names{"A", "B"}));
  EXPECT_EQ(ListAfterDelete({"A", "B"}, "A"), (Names{"B"}));
  EXPECT_EQ(ListAfterDelete({"A"}, "X"), (Names{"A"}));
}

}  // namespace
}  // namespace zorva

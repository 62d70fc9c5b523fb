// The Advanced panel's ticket rules: defaults, the rotate offset, the page
// fields, the custom size's dimensions and the forced booklet size.
#include "panels/advanced_settings.h"

#include <gtest/gtest.h>

#include "core/ticket_keys.h"
#include "host/tabrix.h"
#include "panels/panel_table.h"

namespace zorva {
namespace {

namespace key = tkey;

TEST(AdvancedSettings, AnEmptyTicketReadsAsTheDefaults) {
  const AdvancedSettings s = ReadAdvancedSettings(Ticket{});
  EXPECT_EQ(s.bookletOrder, 2);
  EXPECT_EQ(s.emitJOTF, 1);
  EXPECT_EQ(s.rotateImage, 1);
  EXPECT_EQ(s.opiSubstitution, 1);
  EXPECT_EQ(s.opiPrescan, 1);
  EXPECT_EQ(s.pagesToPrint, 0);
  EXPECT_EQ(PageFieldText(s.pagesFrom), "");
  EXPECT_EQ(PageFieldText(s.pagesTo), "");
  EXPECT_EQ(s.size, kUnset);
  EXPECT_EQ(s.width, kUnset);
  EXPECT_FALSE(s.forceSize);
}

TEST(AdvancedSettings, RotateIsReadAsItStandsAndWrittenLessOne) {
  Ticket ticket;
  WriteAdvancedSettings(ticket, ReadAdvancedSettings(ticket), "", "");
  std::int32_t rotate = -1;
  ASSERT_TRUE(ticket.getNumber(key::kRotateImage180, rotate));
  EXPECT_EQ(rotate, 0);
  // Read back, the stored 0 is taken as it stands.
  EXPECT_EQ(ReadAdvancedSettings(ticket).rotateImage, 0);
  EXPECT_EQ(ticket.item(key::kRotateImage180)->client, "com.zorva.printingmanager");
  EXPECT_FALSE(ticket.item(key::kRotateImage180)->locked);
  // The smallest value has no 32-bit number below it: what is stored then
  // reads back as absent, and so as the default.
  ticket.setNumber("Z", key::kRotateImage180, INT32_MIN);
  WriteAdvancedSettings(ticket, ReadAdvancedSettings(ticket), "", "");
  EXPECT_EQ(ReadAdvancedSettings(ticket).rotateImage, 1);
}

TEST(AdvancedSettings, WritesEveryKeyInItsOrderAndPagesOnlyFromFieldsWithText) {
  Ticket ticket;
  AdvancedSettings s;
  s.bookletOrder = 3;
  s.pagesToPrint = 1;
  WriteAdvancedSettings(ticket, s, " 12abc", "");
  std::int32_t n = 0;
  EXPECT_TRUE(ticket.getNumber(key::kAdvancedBookletLayoutOrder, n) && n == 3);
  EXPECT_TRUE(ticket.getNumber(key::kEmitJOTF, n) && n == 1);
  EXPECT_TRUE(ticket.getNumber(key::kPagesToPrintSelected, n) && n == 1);
  EXPECT_TRUE(ticket.getNumber(key::kPagesToPrintFrom, n) && n == 12);
  EXPECT_FALSE(ticket.contains(key::kPagesToPrintTo));
  EXPECT_FALSE(ticket.contains(key::kJobLevelStock));
}

TEST(AdvancedSettings, PageFieldsShowOnlyPositiveNumbers) {
  EXPECT_EQ(PageFieldText(0), "");
  EXPECT_EQ(PageFieldText(-3), "");
  EXPECT_EQ(PageFieldText(42), "42");
  EXPECT_EQ(FieldIntValue("x1"), 0);
  EXPECT_EQ(FieldIntValue("-7"), -7);
  EXPECT_EQ(FieldIntValue("99999999999"), INT32_MAX);
}

TEST(AdvancedSettings, WidthAndLengthAreReadOnlyForTheCustomSize) {
  Ticket ticket;
  ticket.setDictionary(
      "Z", key::kJobLevelStock,
      Dictionary{{"Size", Value(4)}, {"Width", Value(100)}, {"Length", Value(200)}});
  AdvancedSettings s = ReadAdvancedSettings(ticket);
  EXPECT_EQ(s.size, 4);
  EXPECT_EQ(s.width, kUnset);
  EXPECT_EQ(s.length, kUnset);
  ticket.setDictionary(
      "Z", key::kJobLevelStock,
      Dictionary{{"Size", Value(75)}, {"Width", Value(100)}, {"Length", Value(200)}});
  s = ReadAdvancedSettings(ticket);
  EXPECT_EQ(s.width, 100);
  EXPECT_EQ(s.length, 200);
}

TEST(AdvancedSettings, ForcedSizeIsWrittenOnlyWhileForcedAndUndoneOnlyWhenItWasOurs) {
  Ticket ticket;
  // The Paper/Output panel's paper, with a colour of its own.
  ticket.setDictionary("Z", key::kJobLevelStock,
                       Dictionary{{"Size", Value(1)}, {"Color", Value(3)}});
  AdvancedSettings s = ReadAdvancedSettings(ticket);
  WriteAdvancedSettings(ticket, s, "", "");
  EXPECT_EQ(*ticket.getDictionary(key::kJobLevelStock),
            (Dictionary{{"Size", Value(1)}, {"Color", Value(3)}}));

  s.forceSize = true;
  s.size = 4;
  s.width = 21000;
  s.length = 29700;
  WriteAdvancedSettings(ticket, s, "", "");
  EXPECT_EQ(ticket.getBoolean(key::kBookletForceNewSize), true);
  EXPECT_EQ(*ticket.getDictionary(key::kJobLevelStock), (Dictionary{{"Size", Value(4)},
                                                                    {"Width", Value(21000)},
                                                                    {"Length", Value(29700)},
                                                                    {"Color", Value(3)}}));

  // Read with the forcing on, then the box is turned off: the three go.
  s = ReadAdvancedSettings(ticket);
  EXPECT_TRUE(s.forcedWhenRead);
  s.forceSize = false;
  WriteAdvancedSettings(ticket, s, "", "");
  EXPECT_FALSE(ticket.contains(key::kBookletForceNewSize));
  EXPECT_EQ(*ticket.getDictionary(key::kJobLevelStock), (Dictionary{{"Color", Value(3)}}));

  // The paper written meanwhile by another panel is read fresh and kept.
  ticket.setDictionary("Z", key::kJobLevelStock, Dictionary{{"Size", Value(2)}});
  WriteAdvancedSettings(ticket, ReadAdvancedSettings(ticket), "", "");
  EXPECT_EQ(*ticket.getDictionary(key::kJobLevelStock), (Dictionary{{"Size", Value(2)}}));
}

TEST(PanelTable, RowsFollowTheHostsLoadingOrder) {
  int i = 0;
  for (const PanelDescription& row : kPanelTable) {
    ASSERT_NE(PanelInterfaces[i], nullptr);
    EXPECT_EQ(row.entryPoint, PanelInterfaces[i]);
    ++i;
  }
  EXPECT_EQ(PanelInterfaces[i], nullptr);
  EXPECT_EQ(DescribePanel(PanelKind::Advanced).creator, 0x5A504445u);  // "ZPDE"
  EXPECT_EQ(DescribePanel(PanelKind::SpecialPages).creator, kCreatorNotSet);
}

TEST(AdvancedSettings, MenusAreStoredByPosition) {
  for (const SettingMap* map :
       {BookletLayoutOrderMap, RotateImageMap, OPISubsitutionMap, OPIPrescanMap}) {
    ASSERT_GT(CountMaps(map), 1);
    for (int i = 0; i < CountMaps(map); ++i) EXPECT_EQ(map[i].value, kByPosition);
  }
  EXPECT_EQ(CountMaps(RotateImageMap), 2);
  ASSERT_NE(PaperSizeRow(4), nullptr);
  EXPECT_EQ(PaperSizeRow(4)->width, 21000);
  EXPECT_EQ(PaperSizeRow(12345), nullptr);
}

}  // namespace
}  // namespace zorva

// Tickets: items with client and lock, typed reads, the session, file form.
#include <gtest/gtest.h>

#include "core/print_session.h"
#include "core/ticket.h"
#include "support/test_support.h"

namespace zorva {
namespace {

TEST(Ticket, TypedReadsTreatOtherTypesAsAbsent) {
  Ticket t;
  ASSERT_EQ(t.setNumber("Z", "com.zorva.print.Gutter", 24), kNoErr);
  ASSERT_EQ(t.setString("Z", "com.zorva.print.JobName", "Report"), kNoErr);
  ASSERT_EQ(t.setBoolean("Z", "com.zorva.print.BookletForceNewSize", true), kNoErr);
  ASSERT_EQ(t.setDictionary("Z", "com.zorva.print.JobLevelStock", Dictionary{{"Size", 4}}), kNoErr);
  std::int32_t n = -1;
  EXPECT_TRUE(t.getNumber("com.zorva.print.Gutter", n));
  EXPECT_EQ(n, 24);
  EXPECT_FALSE(t.getNumber("com.zorva.print.JobName", n));
  EXPECT_EQ(n, 24);
  EXPECT_EQ(t.getString("com.zorva.print.Gutter"), nullptr);
  EXPECT_EQ(t.getBoolean("com.zorva.print.Gutter"), std::nullopt);
  EXPECT_EQ(t.getBoolean("com.zorva.print.BookletForceNewSize"), true);
  EXPECT_EQ(t.getArray("com.zorva.print.JobLevelStock"), nullptr);
  ASSERT_NE(t.getDictionary("com.zorva.print.JobLevelStock"), nullptr);
  EXPECT_EQ(t.item("com.zorva.print.JobName")->client, "Z");
  EXPECT_EQ(t.setNumber("Z", "", 1), kParamErr);
}

TEST(Ticket, LockedItemsRefuseChangeAndRemoval) {
  Ticket t;
  ASSERT_EQ(t.setString("com.zorva.printingmanager", "k", "first", /*locked=*/true), kNoErr);
  EXPECT_EQ(t.setString("Z", "k", "second"), kTicketItemLocked);
  EXPECT_EQ(t.remove("k"), kTicketItemLocked);
  EXPECT_EQ(*t.getString("k"), "first");
  EXPECT_EQ(t.remove("absent"), kNoErr);
  ASSERT_EQ(t.setString("Z", "u", "x"), kNoErr);
  EXPECT_EQ(t.setNumber("ZORVA", "u", 3), kNoErr);  // unlocked items take any client
  EXPECT_EQ(t.item("u")->client, "ZORVA");
  EXPECT_EQ(t.remove("u"), kNoErr);
  EXPECT_FALSE(t.contains("u"));
}

TEST(Ticket, FileFormIsAPresetDictionary) {
  test::TempDir dir;
  Ticket t;
  t.setDictionary("Z", "com.zorva.print.JOTFOptions", Dictionary{{"JOTFOptionAll", true}});
  t.setDate("Z", "When", Date{12});  // XML dates carry whole seconds
  t.setData("Z", "Raw", Data{1, 2});
  t.setArray("Z", "List", Array{"a"});
  t.setReal("Z", "Scale", 1.5);
  ASSERT_EQ(t.save(dir / "preset.plist"), 0);
  std::string error;
  auto back = Ticket::Load(dir / "preset.plist", &error);
  ASSERT_TRUE(back) << error;
  EXPECT_EQ(back->toDictionary(), t.toDictionary());

  test::WriteText(dir / "array.plist",
                  "<?xml version=\"1.0\"?><plist version=\"1.0\"><array/></plist>");
  EXPECT_FALSE(Ticket::Load(dir / "array.plist", &error));
  EXPECT_EQ(error, "the property list holds array, not a dictionary of ticket items");
}

TEST(PrintSession, TicketsByPlatformName) {
  PrintSession s("Zorva_Q1", "ipp://printer.local/ipp/print", "/etc/cups/ppd/Zorva_Q1.ppd");
  Ticket* t = nullptr;
  EXPECT_EQ(GetTicketFromSession(&s, "PMPrintSettingsTicket", &t), kNoErr);
  EXPECT_EQ(t, &s.printSettings());
  EXPECT_EQ(GetTicketFromSession(&s, "PMPageFormatTicket", &t), kNoErr);
  EXPECT_EQ(t, &s.pageFormat());
  // An unknown item leaves the output alone and is no error.
  EXPECT_EQ(GetTicketFromSession(&s, "NoSuchTicket", &t), kNoErr);
  EXPECT_EQ(t, &s.pageFormat());
  EXPECT_EQ(GetTicketFromSession(nullptr, "PMPrintSettingsTicket", &t), kParamErr);

  EXPECT_EQ(GetCurrentPrintSession(), nullptr);
  SetCurrentPrintSession(&s);
  EXPECT_EQ(GetCurrentPrintSession()->printerName(), "Zorva_Q1");
  SetCurrentPrintSession(nullptr);
}

}  // namespace
}  // namespace zorva

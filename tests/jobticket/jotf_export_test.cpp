// The export path: the host's own ticket items and the copy of the
// "com.zorva" items that the writer is given.
#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include "core/print_session.h"
#include "jobticket/jotf_export.h"
#include "jotf_test_util.h"

namespace zorva::test {
namespace {

TEST(JotfExport, HostItemsAskForTheWholeDocument) {
  Ticket ticket;
  ticket.setDictionary("x", "com.zorva.print.JOTFOptions",
                       Dictionary{{"JOTFOptionCovers", Value(true)}});
  ticket.setBoolean("x", "com.zorva.print.RotateBooklet180Degrees", true);
  AddJOTFHostTicketItems(ticket);
  EXPECT_EQ(*ticket.getDictionary("com.zorva.print.JOTFOptions"),
            (Dictionary{{"JOTFOptionAll", Value(true)}}));
  EXPECT_EQ(ticket.item("com.zorva.print.JOTFOptions")->client, "Z");
  EXPECT_FALSE(ticket.item("com.zorva.print.JOTFOptions")->locked);
  EXPECT_FALSE(ticket.contains("com.zorva.print.RotateBooklet180Degrees"));
  EXPECT_EQ(*ticket.getString("com.zorva.print.ControllerInformation.ControllerFamily"), "Kestrix");
  EXPECT_EQ(*ticket.getString("com.zorva.print.ControllerInformation.ControllerVersion"), "6.0");
  const passwd* pw = getpwuid(getuid());
  ASSERT_NE(pw, nullptr);
  EXPECT_EQ(*ticket.getString("com.zorva.print.ClientInformation.UserName"), pw->pw_name);
}

TEST(JotfExport, ComputerNamesAreSentOnlyInTheControllersCharacterSet) {
  struct Case {
    std::string_view name;
    bool sent;
  };
  static constexpr Case kCases[] = {
      {"Print Room 2", true},
      {"", true},
      {"del\x7f", true},               // U+007F is inside the range
      {"tab\there", false},            // below U+0020
      {"Caf\xc3\xa9 \xc2\xa0", true},  // two-byte characters up to U+00FE
      {"\xc3\xbe", true},              // U+00FE, the last one
      {"\xc3\xbf", false},             // U+00FF
      {"\xc4\x80", false},             // U+0100
      {"\xe2\x82\xac", false},         // a three-byte character
      {"cut \xc3", false},             // a character cut short
      {"\xc2\x20", false},             // not a continuation byte
  };
  for (const Case& c : kCases) EXPECT_EQ(InControllerCharset(c.name), c.sent) << c.name;
}

TEST(JotfExport, OnlyZorvaItemsAreCopied) {
  Ticket ticket;
  ticket.setNumber("x", "com.zorva.print.FinishingDuplex", 2);
  ticket.setNumber("x", "com.zorva.Act.jotf.On", 3);
  ticket.setNumber("x", "com.apple.print.PrintSettings.PMDuplexing", 3);
  ticket.setString("x", "org.other.Thing", "x");
  ticket.setString("x", "com.zorv", "x");
  EXPECT_EQ(JOTFSettingsFromTicket(ticket),
            (Dictionary{{"com.zorva.print.FinishingDuplex", Value(2)},
                        {"com.zorva.Act.jotf.On", Value(3)}}));
}

TEST(JotfExport, WritesTheSessionsTicketToAFile) {
  TempDir dir;
  SetCurrentPrintSession(nullptr);
  EXPECT_EQ(JOTFExportToFileAtPath(dir / "none.jotf"), kPrintSessionErr);

  PrintSession session;
  session.printSettings() = Ticket::FromDictionary(LoadSettings("covers"));
  session.printSettings().remove("com.zorva.print.JOTFOptions");
  SetCurrentPrintSession(&session);
  EXPECT_EQ(JOTFExportToFileAtPath(dir / "covers.jotf"), kNoErr);
  EXPECT_EQ(ReadText(dir / "covers.jotf"), ReadText(JotfData("covers.jotf")));
  EXPECT_TRUE(session.printSettings().contains("com.zorva.print.JOTFOptions"));
  // A failed write is one of the printing system's codes, not an errno; the
  // system's reason comes back beside it.
  std::string reason;
  EXPECT_EQ(JOTFExportToFileAtPath(dir / "no" / "dir.jotf", &reason), kDirNFErr);
  EXPECT_EQ(reason, "No such file or directory");
  SetCurrentPrintSession(nullptr);
}

}  // namespace
}  // namespace zorva::test

// zorva jotf import, summary and profile: the README's example (export,
// import into a new ticket, summary), files that do not parse, recovery,
// the PPD's manufacturer deciding whether the profile is used, and errors.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "cli/cli_test_util.h"
#include "core/plist_io.h"
#include "core/ticket.h"
#include "support/test_support.h"

namespace zorva::test {
namespace {

const std::string kExample = std::string(ZORVA_TEST_DATA) + "/../../examples/job-settings.plist";

class JotfImportCommand : public ::testing::Test {
 protected:
  std::string File(const std::string& name) const { return (dir_ / name).string(); }

  std::string ExportExample() {
    EXPECT_EQ(RunTool({"jotf", "export", kExample, "-o", File("job.jotf")}).exitCode, 0);
    return File("job.jotf");
  }

  Ticket Load(const std::string& name) const {
    std::optional<Ticket> t = Ticket::Load(File(name));
    EXPECT_TRUE(t.has_value()) << name;
    return t.value_or(Ticket{});
  }

  void WritePpd(const std::string& name, const std::string& manufacturer) {
    WriteText(File(name), "*PPD-Adobe: \"4.3\"\n*Manufacturer: \"" + manufacturer +
                              "\"\n*ModelName: \"Test\"\n");
  }

  TempDir dir_;
};

TEST_F(JotfImportCommand, ExportImportAndSummaryOfTheExample) {
  const std::string jotf = ExportExample();
  ToolResult r = RunTool({"jotf", "import", File("new.plist"), jotf});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out + r.err, "");
  const Ticket ticket = Load("new.plist");
  EXPECT_EQ(*ticket.get("com.zorva.print.JobNotesJobName"), Value("Quarterly report Q1"));
  EXPECT_EQ(*ticket.get("com.zorva.print.FinishingOptions"), Value(11));
  EXPECT_EQ(ticket.item("com.zorva.print.FinishingDuplex")->value, Value(2));

  r = RunTool({"jotf", "summary", File("new.plist")});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_NE(r.out.find("\tJob Notes\n\t\tJob Name: Quarterly report Q1\n"), std::string::npos)
      << r.out;
  EXPECT_NE(r.out.find("\t\tStapling/Finishing: 1 Staple (Portrait - Top Left,Landscape - Top "
                       "Right)\n\t\t\tHole Punch: 3 Holes Portrait - Bottom,Landscape - Left\n"),
            std::string::npos)
      << r.out;
  EXPECT_TRUE(r.out.ends_with("\tImage Adjustment\n \n")) << r.out;
}

TEST_F(JotfImportCommand, ImportKeepsTheTicketsOtherItemsAndReplacesImportedOnes) {
  Ticket before;
  before.setNumber(kTicketClientSystem, "com.zorva.print.FinishingDuplex", 3);
  before.setString(kTicketClientSystem, "com.example.Other", "kept");
  ASSERT_EQ(before.save(File("t.plist")), 0);
  ASSERT_EQ(RunTool({"jotf", "import", File("t.plist"), ExportExample()}).exitCode, 0);
  const Ticket after = Load("t.plist");
  EXPECT_EQ(*after.get("com.example.Other"), Value("kept"));
  EXPECT_EQ(*after.get("com.zorva.print.FinishingDuplex"), Value(2));
}

TEST_F(JotfImportCommand, AFileThatDoesNotParseIsNamedAndTheOthersStillMerge) {
  WriteText(File("bad.jotf"), "<jotf><job-template-attributes>");
  ToolResult r = RunTool(
      {"jotf", "import", File("t.plist"), File("bad.jotf"), ExportExample(), File("missing.jotf")});
  EXPECT_EQ(r.exitCode, 1);
  EXPECT_EQ(r.out, "");
  EXPECT_EQ(r.err, "zorva: " + File("bad.jotf") + ": not a readable job ticket (-208)\nzorva: " +
                       File("missing.jotf") + ": not a readable job ticket (-208)\n");
  EXPECT_TRUE(Load("t.plist").contains("com.zorva.print.JobNotesJobName"));
}

TEST_F(JotfImportCommand, RecoveryReadsAnAccountingTicketAndSaysWhatItSkipped) {
  Ticket t;
  t.setNumber(kTicketClientSystem, "com.zorva.print.OutputOrder", 4);
  t.setNumber(kTicketClientSystem, "com.zorva.Act.jotf.On", 3);
  ASSERT_EQ(t.save(File("acct.plist")), 0);
  ASSERT_EQ(RunTool({"jotf", "export", File("acct.plist"), "-o", File("acct.jotf")}).exitCode, 0);

  ToolResult plain = RunTool({"jotf", "import", File("a.plist"), File("acct.jotf")});
  EXPECT_EQ(plain.exitCode, 1);
  ToolResult r = RunTool({"jotf", "import", File("b.plist"), File("acct.jotf"), "--recover"});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << r.err;
  EXPECT_TRUE(r.err.starts_with("zorva: " + File("acct.jotf") + ": recovered: skipped ")) << r.err;
  EXPECT_EQ(*Load("b.plist").get("com.zorva.print.OutputOrder"), Value(4));
}

TEST_F(JotfImportCommand, OnlyAZorvaPpdUsesTheProfile) {
  WritePpd("other.ppd", "Other Maker");
  WritePpd("zorva.ppd", "Zorva");
  const std::string jotf = ExportExample();
  ASSERT_EQ(RunTool({"jotf", "import", File("o.plist"), jotf, "--ppd", File("other.ppd")}).exitCode,
            0);
  EXPECT_TRUE(Load("o.plist").empty());
  ASSERT_EQ(RunTool({"jotf", "import", File("z.plist"), jotf, "--ppd", File("zorva.ppd")}).exitCode,
            0);
  EXPECT_FALSE(Load("z.plist").empty());
  ExpectOneLineError(RunTool({"jotf", "import", File("n.plist"), jotf, "--ppd", File("no.ppd")}),
                     1);
}

TEST_F(JotfImportCommand, ProfileListsFeaturesAndShowsOne) {
  ToolResult list = RunTool({"jotf", "profile"});
  ASSERT_EQ(list.exitCode, 0) << list.err;
  EXPECT_NE(list.out.find("\nLightenDarken "), std::string::npos);
  ToolResult one = RunTool({"jotf", "profile", "LightenDarken"});
  ASSERT_EQ(one.exitCode, 0) << one.err;
  EXPECT_EQ(one.out,
            "LightenDarken\n  ID = \"LightenDarken\"\n  JOTF = true\nNumber\n  Default = 0\n"
            "  Maximum = 5\n  Minimum = -5\n");
  ExpectOneLineError(RunTool({"jotf", "profile", "NoSuchFeature"}), 1);
  ExpectOneLineError(RunTool({"jotf", "summary", File("missing.plist")}), 1);
  ExpectOneLineError(RunTool({"jotf", "import", File("t.plist")}), 2);
}

}  // namespace
}  // namespace zorva::test

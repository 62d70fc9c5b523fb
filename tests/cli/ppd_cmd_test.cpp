// zorva ppd through the built tool: the full description of our example PPD,
// the script forms (menus with skipped and conflicting choices, installed
// features), a CUPS queue's PPD from a private cupsd, and bad input.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cli/cli_test_util.h"
#include "support/private_cupsd.h"
#include "support/test_support.h"

namespace zorva::test {
namespace {

const std::string kExample = std::string(ZORVA_TEST_DATA) + "/../../examples/zorva-qm4400.ppd";

std::string Data(const std::string& name) {
  return TestData("ppd/" + name).string();
}

TEST(PPDCommand, DescribesEncodingKeywordsOptionsAndFeatures) {
  ToolResult r = RunTool({"ppd", kExample});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  for (const char* line :
       {"Encoding: ISO Latin 1\n", "MediaColor (Paper Colour), default White\n",
        "  White  1   Weiß\n", "  Mailbox     skipped (not in the tables)  Mailbox\n",
        "  Option1  HCSS80  Finisher\n", "  StackerTray1Key     4  Main Tray\n"}) {
    EXPECT_NE(r.out.find(line), std::string::npos) << line << "\n" << r.out;
  }
  EXPECT_TRUE(r.err.empty()) << r.err;

  ToolResult other = RunTool({"ppd", Data("quillon-office.ppd")});
  ASSERT_EQ(other.exitCode, 0) << other.err;
  EXPECT_NE(other.out.find("Encoding: Mac Roman\n"), std::string::npos);
  EXPECT_NE(other.out.find("Installable options:\n  none\n"), std::string::npos);
  EXPECT_NE(other.out.find("Features turned on:\n  none\n"), std::string::npos);
}

TEST(PPDCommand, ScriptFormsOneItemALine) {
  struct Case {
    std::vector<std::string> args;
    std::string out;
    std::string err;
  };
  const std::string production = Data("zorva-production.ppd");
  const std::string conflicts = Data("conflicts.ppd");
  const Case cases[] = {
      {{production, "--choices", "OutputBin"},
       "5\tTop Tray\n4\tMain Tray\n16\tStacker Top Tray\n5\tCentre Tray\n",
       "Skipped unrecognized choice in PPD: Mailbox\n"},
      {{Data("utf8.ppd"), "--choices", "MediaColor"}, "1\tWeiß\n12\tGrau – hell\n8\t金色\n", ""},
      {{conflicts, "--choices", "MediaType"}, "1\tPlain\n2\tTransparency\n12\tCard Stock\n", ""},
      {{conflicts, "--choices", "MediaType", "--check-conflicts"}, "1\tPlain\n", ""},
      {{Data("quillon-office.ppd"), "--installed"}, "", ""},
  };
  for (const Case& c : cases) {
    std::vector<std::string> argv{"ppd"};
    argv.insert(argv.end(), c.args.begin(), c.args.end());
    ToolResult r = RunTool(argv);
    EXPECT_EQ(r.exitCode, 0) << c.args[1];
    EXPECT_EQ(r.out, c.out) << c.args[1];
    EXPECT_EQ(r.err, c.err) << c.args[1];
  }
  ToolResult installed = RunTool({"ppd", production, "--installed"});
  EXPECT_EQ(installed.out.rfind(
                "SlipSheets\t0\nOffset\t0\nSimpleCatchTrayKey\t3\nStackerTray1Key\t4\n", 0),
            0u)
      << installed.out;
  EXPECT_EQ(installed.out.find("Custom"), std::string::npos);
}

TEST(PPDCommand, BadInputIsOneLine) {
  const std::vector<std::pair<std::vector<std::string>, int>> cases = {
      {{"ppd", Data("malformed.ppd")}, 1},
      {{"ppd", Data("missing.ppd")}, 1},
      {{"ppd", Data("zorva-production.ppd"), "--choices", "Nope"}, 1},
      {{"ppd"}, 2},
      {{"ppd", Data("utf8.ppd"), "--queue", "Q"}, 2},
      {{"ppd", Data("utf8.ppd"), "--check-conflicts"}, 2},
      {{"ppd", Data("utf8.ppd"), "--choices", "Duplex", "--installed"}, 2},
  };
  for (const auto& [argv, code] : cases) ExpectOneLineError(RunTool(argv), code);
}

TEST(PPDCommand, QueueFromAPrivateCupsServer) {
  PrivateCupsd cupsd;
  std::string reason;
  if (!cupsd.start(&reason)) GTEST_SKIP() << "cupsd cannot run here: " << reason;
  ASSERT_TRUE(cupsd.addQueue("QM4400", kExample, &reason)) << reason;
  ScopedEnv server("CUPS_SERVER", cupsd.server());
  ToolResult r = RunTool({"ppd", "--queue", "QM4400", "--choices", "StapleLocation"});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out, "1\tOff\n5\tOne Staple\n10\tTwo Staples\n");
  ToolResult full = RunTool({"ppd", "--queue", "QM4400"});
  EXPECT_EQ(full.out.rfind("PPD: queue QM4400\nEncoding: ISO Latin 1\n", 0), 0u) << full.out;
  ExpectOneLineError(RunTool({"ppd", "--queue", "NoSuchQueue"}), 1);
}

}  // namespace
}  // namespace zorva::test

// zorva special-pages on real ticket files: pages added through the list
// rules, removed by index or all at once, stored under the ticket keys that
// another reader (Python's plistlib) sees, and printed with their summaries.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cli/cli_test_util.h"
#include "support/test_support.h"

namespace zorva::test {
namespace {

class SpecialPagesCommand : public ::testing::Test {
 protected:
  ToolResult Run(const std::string& command, std::vector<std::string> args) {
    args.insert(args.begin(), {"special-pages", command, file_.string()});
    return RunTool(args);
  }
  std::string Ok(const std::string& command, std::vector<std::string> args) {
    ToolResult r = Run(command, std::move(args));
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_TRUE(r.err.empty()) << r.err;
    return r.out;
  }

  ScopedEnv bundleEnv_{"ZORVA_BUNDLE_PATH", ZORVA_BUILD_BUNDLES};
  TempDir dir_;
  std::filesystem::path file_ = dir_ / "job.plist";
};

TEST_F(SpecialPagesCommand, ExceptionRangesAreCutByTheNewest) {
  Ok("add-exception", {"--pages", "1-10", "--plex", "2"});
  const std::string out = Ok("add-exception", {"--pages", "3-5", "--weight", "113"});
  EXPECT_EQ(out,
            "0  exception  1-2   2-Sided\n"
            "1  exception  3-5   Weight: 113 gsm\n"
            "2  exception  6-10  2-Sided\n");
  EXPECT_EQ(Ok("list", {}),
            "0  exception  1-2\n"
            "1  exception  3-5\n"
            "2  exception  6-10\n");
}

TEST_F(SpecialPagesCommand, InsertsCoversAndRemoval) {
  Ok("add-insert", {"--pages", "7, 2", "--quantity", "3", "--source", "10", "--paper-name", "Tabs",
                    "--weight", "250"});
  Ok("add-insert", {"--before-first"});
  Ok("add-cover", {"--front", "--sides", "2", "--stock-color", "2"});
  EXPECT_EQ(Ok("summary", {}),
            "0  front-cover  -  Print on Front; Blue\n"
            "1  insert       0  Quantity: [1]\n"
            "2  insert       2  Paper Name: Tabs; Quantity: [3]; Post-Process Inserter\n"
            "3  insert       7  Paper Name: Tabs; Quantity: [3]; Post-Process Inserter\n");
  const std::string view = PythonView(file_);
  EXPECT_NE(view.find("com.zorva.print.SpecialPages.FrontCover dict"), std::string::npos) << view;
  EXPECT_NE(view.find("com.zorva.print.SpecialPages.InsertList list"), std::string::npos) << view;
  EXPECT_EQ(view.find("ExceptionList"), std::string::npos) << view;

  EXPECT_EQ(Ok("remove", {"--index", "2"}),
            "0  front-cover  -  Print on Front; Blue\n"
            "1  insert       0  Quantity: [1]\n"
            "2  insert       7  Paper Name: Tabs; Quantity: [3]; Post-Process Inserter\n");
  EXPECT_EQ(Ok("remove", {"--all"}), "");
  // Empty lists and absent covers leave no keys behind.
  EXPECT_EQ(PythonView(file_), "");
}

TEST_F(SpecialPagesCommand, KeepsTheTicketsOtherSettings) {
  WriteText(file_,
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>"
            "<key>com.zorva.print.BookletLayout</key><true/>"
            "<key>Copies</key><integer>4</integer></dict></plist>\n");
  Ok("add-cover", {"--front", "--sides", "4"});
  // Under booklet layout the back cover is the front one.
  EXPECT_EQ(Ok("list", {}), "0  front-cover  -\n1  back-cover   -\n");
  const std::string view = PythonView(file_);
  EXPECT_NE(view.find("Copies int 4"), std::string::npos) << view;
  EXPECT_EQ(view.find("BackCover"), std::string::npos) << view;
}

// Bad entries are usage errors that change nothing (page 0 says its code);
// a missing or unreadable ticket fails and stays as it was.
TEST_F(SpecialPagesCommand, ErrorsChangeNothing) {
  ExpectOneLineError(Run("list", {}), 1);
  Ok("add-exception", {"--pages", "4"});
  const std::string before = ReadText(file_);
  const std::pair<const char*, std::vector<std::string>> bad[] = {
      {"add-exception", {"--pages", "0-3"}},
      {"add-exception", {"--pages", "5-2"}},
      {"add-exception", {"--pages", "4", "--plex", "9"}},
      {"add-insert", {"--pages", "1-"}},
      {"add-insert", {}},
      {"add-insert", {"--pages", "3", "--quantity", "0"}},
      {"add-cover", {"--front", "--back"}},
      {"remove", {"--index", "1"}},
      {"remove", {}}};
  for (const auto& [command, args] : bad) ExpectOneLineError(Run(command, args), 2);
  EXPECT_EQ(ReadText(file_), before);
  EXPECT_NE(Run("add-exception", {"--pages", "0"}).err.find("1003"), std::string::npos);
  WriteText(file_, "not a property list");
  ExpectOneLineError(Run("add-insert", {"--pages", "2"}), 1);
  EXPECT_EQ(ReadText(file_), "not a property list");
}

}  // namespace
}  // namespace zorva::test

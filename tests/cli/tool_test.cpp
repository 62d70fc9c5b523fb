// The zorva tool as a whole: help on every command, the version, usage errors,
// and the tables command's listings (PlexMap against a golden file).
#include <gtest/gtest.h>

#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "cli/cli_test_util.h"
#include "host/keyword_tables.h"
#include "support/test_support.h"

namespace zorva::test {
namespace {

TEST(Tool, HelpWorksOnEveryCommand) {
  const std::vector<std::vector<std::string>> commands = {{},
                                                          {"ticket"},
                                                          {"ticket", "show"},
                                                          {"ticket", "get"},
                                                          {"ticket", "set"},
                                                          {"ticket", "remove"},
                                                          {"tables"}};
  for (std::vector<std::string> argv : commands) {
    std::string usage = "Usage: zorva";
    for (const std::string& word : argv) usage += " " + word;
    argv.push_back("--help");
    ToolResult r = RunTool(argv);
    EXPECT_EQ(r.exitCode, 0) << usage;
    EXPECT_TRUE(r.err.empty()) << r.err;
    EXPECT_NE(r.out.find(usage), std::string::npos) << r.out;
  }
  EXPECT_NE(RunTool({"--help"}).out.find("Exit status: 0 on success, 1 when"), std::string::npos);
}

TEST(Tool, PrintsItsVersion) {
  ToolResult r = RunTool({"--version"});
  EXPECT_EQ(r.exitCode, 0);
  EXPECT_EQ(r.out.rfind("zorva 0.", 0), 0u) << r.out;
  EXPECT_EQ(std::count(r.out.begin(), r.out.end(), '\n'), 1);
}

TEST(Tool, UsageErrorsAreOneLineAndStatusTwo) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
      {{}, "subcommand is required"},
      {{"print"}, "unknown command \"print\""},
      {{"ticket", "edit", "x"}, "unknown command \"edit\""},
      {{"ticket", "get", "job.plist"}, "KEY is required"},
      {{"ticket", "show", "a", "b"}, "not expected"},
      {{"ticket", "show", "--verbose", "a"}, "--verbose"},
      {{"tables", "NoSuchMap"}, "'zorva tables' lists them"},
  };
  for (const auto& [argv, message] : cases) {
    ToolResult r = RunTool(argv);
    ExpectOneLineError(r, 2);
    EXPECT_NE(r.err.find(message), std::string::npos) << r.err;
  }
}

TEST(TablesCommand, ListsEveryTableWithKindAndRowCount) {
  ToolResult r = RunTool({"tables"});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  std::istringstream lines(r.out);
  std::string header;
  std::getline(lines, header);
  EXPECT_EQ(header.rfind("NAME", 0), 0u);
  std::set<std::string> listed;
  std::string name, kind;
  int rows = 0;
  while (lines >> name >> kind >> rows) {
    listed.insert(name);
    const KeywordTableEntry* entry = FindKeywordTable(name);
    ASSERT_NE(entry, nullptr) << name;
    EXPECT_EQ(rows, std::visit([](auto* map) { return CountMaps(map); }, entry->table)) << name;
  }
  EXPECT_EQ(listed.size(), AllKeywordTables().size());
  EXPECT_NE(r.out.find("PlexMap"), std::string::npos);
  EXPECT_NE(r.out.find("MainKeywordMap"), std::string::npos);
}

TEST(TablesCommand, PlexMapMatchesTheGoldenListing) {
  ToolResult r = RunTool({"tables", "PlexMap"});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out, ReadText(TestData("cli/tables-PlexMap.txt")));
  EXPECT_EQ(RunTool({"tables", "plexmap"}).out, r.out) << "names are case-insensitive";
}

TEST(TablesCommand, ShowsCommandsDimensionsAndTableReferences) {
  ToolResult watermark = RunTool({"tables", "WatermarkMap"});
  EXPECT_NE(watermark.out.find("NoWatermark"), std::string::npos);
  EXPECT_NE(watermark.out.find("ZWmZ"), std::string::npos) << "command codes as characters";
  EXPECT_NE(watermark.out.find("-5"), std::string::npos);

  ToolResult sizes = RunTool({"tables", "CompleteStockSizeMap"});
  ASSERT_EQ(sizes.exitCode, 0) << sizes.err;
  EXPECT_NE(sizes.out.find("WIDTH-MM"), std::string::npos);
  std::istringstream lines(sizes.out);
  std::string line;
  bool sawA4 = false;
  while (std::getline(lines, line)) {
    if (line.find("A4StockSize ") == std::string::npos) continue;
    sawA4 = true;
    std::istringstream words(line);
    std::vector<std::string> cells{std::istream_iterator<std::string>(words), {}};
    ASSERT_GE(cells.size(), 5u);
    EXPECT_EQ(std::vector<std::string>(cells.end() - 5, cells.end()),
              (std::vector<std::string>{"4", "210.00", "297.00", "595", "842"}));
  }
  EXPECT_TRUE(sawA4) << sizes.out;

  ToolResult main = RunTool({"tables", "MainKeywordMap"});
  EXPECT_NE(main.out.find("1    JCLBanner"), std::string::npos) << main.out;
  EXPECT_NE(main.out.find("BannerPageMap"), std::string::npos) << main.out;

  ToolResult bins = RunTool({"tables", "OutputBinMap"});
  EXPECT_NE(bins.out.find("PrinterDefault  unset"), std::string::npos) << bins.out;
}

}  // namespace
}  // namespace zorva::test

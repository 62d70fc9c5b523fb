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

TEST(Tool, HelpOnEveryCommandAndTheVersion) {
  // Every command group and every command of the tool.
  const std::vector<std::vector<std::string>> commands = {{},
                                                          {"ticket", "show"},
                                                          {"ticket", "get"},
                                                          {"ticket", "set"},
                                                          {"ticket", "remove"},
                                                          {"tables"},
                                                          {"pages", "parse"},
                                                          {"special-pages", "list"},
                                                          {"special-pages", "summary"},
                                                          {"special-pages", "add-cover"},
                                                          {"special-pages", "add-insert"},
                                                          {"special-pages", "add-exception"},
                                                          {"special-pages", "remove"},
                                                          {"watermarks", "list"},
                                                          {"watermarks", "show"},
                                                          {"watermarks", "defaults"},
                                                          {"watermarks", "remove"},
                                                          {"watermarks", "render"},
                                                          {"type42"},
                                                          {"jotf", "write"},
                                                          {"jotf", "export"},
                                                          {"jotf", "import"},
                                                          {"jotf", "summary"},
                                                          {"jotf", "profile"},
                                                          {"ppd"},
                                                          {"papers", "list"},
                                                          {"papers", "show"},
                                                          {"papers", "add"},
                                                          {"papers", "remove"},
                                                          {"papers", "use"},
                                                          {"papers", "recent"},
                                                          {"printer-papers"},
                                                          {"print"},
                                                          {"presets", "list"},
                                                          {"presets", "path"},
                                                          {"presets", "save"},
                                                          {"presets", "delete"}};
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
  EXPECT_EQ(RunTool({"--version"}).out.rfind("zorva 0.", 0), 0u);
}

TEST(Tool, UsageErrorsAreOneLineAndStatusTwo) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
      {{}, "subcommand is required"},
      {{"ticket", "edit", "x"}, "unknown command \"edit\""},
      {{"ticket", "get", "job.plist"}, "KEY is required"},
      {{"ticket", "show", "--verbose", "a"}, "--verbose"},
      {{"watermarks", "show"}, ""},
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
  EXPECT_NE(watermark.out.find("ZWmZ"), std::string::npos) << "command codes as characters";
  // The A4 row ends in its code, millimetres and points.
  std::istringstream sizes(RunTool({"tables", "CompleteStockSizeMap"}).out);
  std::string line;
  while (std::getline(sizes, line) && line.find("A4StockSize ") == std::string::npos) {
  }
  std::istringstream words(line);
  std::vector<std::string> cells{std::istream_iterator<std::string>(words), {}};
  ASSERT_GE(cells.size(), 5u) << line;
  EXPECT_EQ(std::vector<std::string>(cells.end() - 5, cells.end()),
            (std::vector<std::string>{"4", "210.00", "297.00", "595", "842"}));
  ToolResult main = RunTool({"tables", "MainKeywordMap"});
  EXPECT_NE(main.out.find("BannerPageMap"), std::string::npos) << main.out;
}

}  // namespace
}  // namespace zorva::test

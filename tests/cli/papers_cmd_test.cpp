// zorva papers through the built tool against a scratch preference folder:
// the factory list, adding by options and from a stock file, sizes by name,
// duplicates under both name policies, use in a ticket (with the repair and
// the recent list), in-use marks, removing, and bad input.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "cli/cli_test_util.h"
#include "core/plist_io.h"
#include "core/ticket.h"
#include "support/test_support.h"

namespace zorva::test {
namespace {

class PapersCommand : public ::testing::Test {
 protected:
  ToolResult Run(std::vector<std::string> args) {
    args.insert(args.begin(), "papers");
    return RunTool(args);
  }
  // Runs and expects success; the UUID add prints, or the output.
  std::string Ok(const std::vector<std::string>& args) {
    ToolResult r = Run(args);
    EXPECT_EQ(r.exitCode, 0) << r.err;
    return r.out;
  }
  std::string Add(std::vector<std::string> args) {
    args.insert(args.begin(), "add");
    std::string out = Ok(args);
    return out.empty() ? out : out.substr(0, out.size() - 1);
  }
  // NAME -> "STATUS" from list.
  std::map<std::string, std::string> Statuses(const std::vector<std::string>& extra = {}) {
    std::vector<std::string> args{"list"};
    args.insert(args.end(), extra.begin(), extra.end());
    std::istringstream lines(Ok(args));
    std::map<std::string, std::string> out;
    for (std::string uuid, status, name; std::getline(lines, uuid, '\t') &&
                                         std::getline(lines, status, '\t') &&
                                         std::getline(lines, name);) {
      out[name] = status;
    }
    return out;
  }
  Dictionary JobStock() {
    auto t = Ticket::Load(ticket_);
    EXPECT_TRUE(t);
    const Dictionary* d = t ? t->getDictionary("com.zorva.print.JobLevelStock") : nullptr;
    return d ? *d : Dictionary{};
  }

  TempDir tmp_;
  ScopedEnv prefs_{"ZORVA_PREFERENCES_DIR", (tmp_.path() / "prefs").string()};
  std::filesystem::path ticket_ = tmp_.path() / "job.plist";
};

TEST_F(PapersCommand, FactoryListUntilTheFirstChange) {
  auto statuses = Statuses();
  EXPECT_GE(statuses.size(), 12u);
  EXPECT_EQ(statuses["Gloss 170"], "0");
  EXPECT_EQ(Ok({"recent"}), "Plain 80 White\nGloss 170\n");
  EXPECT_FALSE(std::filesystem::exists(tmp_.path() / "prefs"));
}

TEST_F(PapersCommand, AddByOptionsAndFromAFile) {
  const std::string uuid =
      Add({"--name", "Weiß 90", "--size", "a4", "--weight", "90", "--type", "Recycled", "--color",
           "blue", "--coating", "matte:front", "--punched", "--comment", "stock room"});
  const std::string show = Ok({"show", "WEIß 90"});
  for (const char* line :
       {"uuid:    ", "status:  0 (ok)", "Color: integer 2", "Size: integer 4",
        "CustomType: string \"Recycled\"", "Type: integer 7", "SidesCoated: integer 2",
        "kCoatingType: integer 5", "Punched: integer 2", "CustomComment: string \"stock room\""}) {
    EXPECT_NE(show.find(line), std::string::npos) << line << "\n" << show;
  }
  EXPECT_NE(show.find(uuid), std::string::npos);

  const std::string banner = Add({"--name", "Banner", "--width", "210", "--length", "450.5"});
  const std::string bannerShow = Ok({"show", banner});
  EXPECT_NE(bannerShow.find("Size: integer 75"), std::string::npos) << bannerShow;
  EXPECT_NE(bannerShow.find("Length: integer 45050"), std::string::npos) << bannerShow;

  for (const auto& [size, code] : std::vector<std::pair<std::string, std::string>>{
           {"Letter", "1"}, {"SRA3", "15"}, {"A3StockSize", "5"}, {"18", "18"}, {"a5", "18"}}) {
    Add({"--name", "S " + size, "--size", size});
    EXPECT_NE(Ok({"show", "S " + size}).find("Size: integer " + code + "\n"), std::string::npos)
        << size;
  }

  WriteText(tmp_.path() / "stock.plist",
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict>"
            "<key>Size</key><integer>5</integer><key>Weight</key><integer>250</integer>"
            "<key>kGrain</key><integer>1</integer><key>CustomName</key><string>From file</string>"
            "</dict></plist>");
  Add({(tmp_.path() / "stock.plist").string(), "--color", "Ivory"});
  EXPECT_EQ(Statuses()["From file"], "3") << "a set grain is an unsupported attribute";
  EXPECT_NE(Ok({"show", "from FILE"}).find("Color: integer 11"), std::string::npos);
}

TEST_F(PapersCommand, DuplicateNamesFollowThePreference) {
  EXPECT_EQ(Add({"--name", "GLOSS 170", "--weight", "210", "--replace"}),
            "5A0F0005-2C1B-4D6E-9A3F-5EED00000005")
      << "the paper of that name keeps its UUID";
  EXPECT_NE(Ok({"show", "gloss 170"}).find("Weight: integer 210"), std::string::npos);
  const std::string second = Add({"--name", "Gloss 170", "--weight", "200"});
  EXPECT_NE(second, "5A0F0005-2C1B-4D6E-9A3F-5EED00000005") << "add always makes a new paper";
  EXPECT_NE(Ok({"show", second}).find("Weight: integer 200"), std::string::npos);

  auto prefs = ParsePropertyList(ReadText(tmp_.path() / "prefs/com.zorva.print.stocklibrary"));
  ASSERT_TRUE(prefs);
  Array flags;
  for (int i = 0; i < 15; ++i) flags.push_back(Value(i == 12));
  prefs->dictionary()->set("com.zorva.print.StockLibrary.Preferences", Value(flags));
  ASSERT_EQ(WritePropertyListFile(tmp_.path() / "prefs/com.zorva.print.stocklibrary", *prefs), 0);
  ToolResult dup = Run({"add", "--name", "gloss 170"});
  ExpectOneLineError(dup, 1);
  EXPECT_NE(dup.err.find("--replace"), std::string::npos);
  Add({"--name", "WEISS 170"});
  ExpectOneLineError(Run({"add", "--name", "Weiss 170"}), 1);
}

TEST_F(PapersCommand, UsePutsTheRepairedPaperIntoTheTicketAndTheRecentList) {
  Add({"--name", "Odd", "--weight", "301", "--grain", "X"});
  WriteText(ticket_,
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict/></plist>");
  ToolResult r = Run({"use", "odd", ticket_.string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_NE(r.out.find("Repaired"), std::string::npos);
  Dictionary stock = JobStock();
  EXPECT_FALSE(stock.contains("Weight"));
  EXPECT_FALSE(stock.contains("CustomName")) << "a repaired paper no longer claims the name";
  EXPECT_EQ(stock.find("kGrain")->integer() ? *stock.find("kGrain")->integer() : 0, 2);

  r = Run({"use", "gloss 170", ticket_.string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out.find("Repaired"), std::string::npos);
  EXPECT_EQ(*JobStock().getString("CustomName"), "Gloss 170");
  EXPECT_EQ(Ok({"recent"}), "Gloss 170\nOdd\nPlain 80 White\n");
  auto marked = Statuses({"--ticket", ticket_.string()});
  EXPECT_EQ(marked["Gloss 170"], "1");
  EXPECT_EQ(marked["Odd"], "2");
  EXPECT_EQ(Statuses()["Gloss 170"], "0") << "marks are not stored";

  Ok({"remove", "Odd"});
  EXPECT_EQ(Ok({"recent"}), "Gloss 170\nPlain 80 White\n");
  EXPECT_EQ(Statuses().count("Odd"), 0u);
}

TEST_F(PapersCommand, BadInputIsOneLine) {
  WriteText(ticket_,
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist version=\"1.0\"><dict/></plist>");
  const std::vector<std::pair<std::vector<std::string>, int>> cases = {
      {{"show", "nope"}, 1},
      {{"remove", "nope"}, 1},
      {{"use", "nope", ticket_.string()}, 1},
      {{"use", "Gloss 170", (tmp_.path() / "missing.plist").string()}, 1},
      {{"add", (tmp_.path() / "missing.plist").string(), "--name", "x"}, 1},
      {{"add", "--size", "A4"}, 2},
      {{"add", "--name", "x", "--size", "Huge"}, 2},
      {{"add", "--name", "x", "--width", "-3"}, 2},
      {{"add", "--name", "x", "--coating", "shiny"}, 2},
      {{"add", "--name", "x", "--grain", "diagonal"}, 2},
      {{"add", "--name", "x", "--weight", "heavy"}, 2},
      {{"use", "Gloss 170"}, 2},
  };
  for (const auto& [argv, code] : cases) ExpectOneLineError(Run(argv), code);
  EXPECT_FALSE(std::filesystem::exists(tmp_.path() / "prefs")) << "nothing was written";
}

}  // namespace
}  // namespace zorva::test

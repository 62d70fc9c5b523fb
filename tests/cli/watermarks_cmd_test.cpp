// zorva watermarks through the built tool: the menu list, every field of a
// watermark, the defaults on an empty and a non-empty store, and removing.
// Help and usage errors are checked with the other commands in tool_test.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "cli/cli_test_util.h"
#include "support/test_support.h"

namespace zorva::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFile = "com.zorva.printing.watermarks.plist";

class WatermarksCommand : public ::testing::Test {
 protected:
  ToolResult Run(std::vector<std::string> args) {
    args.insert(args.begin(), "watermarks");
    return RunTool(args);
  }
  std::string List() {
    ToolResult r = Run({"list"});
    EXPECT_EQ(r.exitCode, 0) << r.err;
    return r.out;
  }
  // "label: value" lines of show, by label.
  std::map<std::string, std::string> Show(const std::string& name) {
    ToolResult r = Run({"show", name});
    EXPECT_EQ(r.exitCode, 0) << r.err;
    std::map<std::string, std::string> fields;
    std::istringstream lines(r.out);
    for (std::string line; std::getline(lines, line);) {
      const std::size_t colon = line.find(": ");
      if (colon == std::string::npos) continue;
      const std::size_t value = line.find_first_not_of(' ', colon + 1);
      fields[line.substr(0, colon)] = value == std::string::npos ? "" : line.substr(value);
    }
    return fields;
  }

  TempDir tmp_;
  fs::path file_ = tmp_.path() / kFile;
  ScopedEnv shared_{"ZORVA_SHARED_DIR", tmp_.path().string()};
};

TEST_F(WatermarksCommand, DefaultsFillAnEmptyStoreOnce) {
  EXPECT_EQ(List(), "");
  ToolResult r = Run({"defaults"});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out, "Created the default watermarks: Draft, Confidential, Copy\n");
  EXPECT_EQ(List(), "Draft\nConfidential\nCopy\n");

  const std::string before = ReadText(file_);
  r = Run({"defaults"});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_NE(r.out.find("already holds 3 watermarks; nothing changed"), std::string::npos) << r.out;
  EXPECT_EQ(ReadText(file_), before);
}

TEST_F(WatermarksCommand, ShowPrintsEveryField) {
  ASSERT_EQ(Run({"defaults"}).exitCode, 0);
  const std::map<std::string, std::string> expected = {
      {"name", "\"Confidential\""},
      {"kind", "text"},
      {"menu position", "2 of 3"},
      {"textString", "\"Confidential\""},
      {"filename", "\"\""},
      {"filePath", "\"\""},
      {"fontName", "\"ArialMT\""},
      {"fontSize", "72"},
      {"angle", "45"},
      {"density", "25"},
      {"scale", "100"},
      {"units", "0"},
      {"xOffset", "0"},
      {"yOffset", "0"},
      {"xPos", "201.350601"},
      {"yPos", "231.773102"},
      {"fontColor", "0.75 0.75 1 1"},
      {"wellColor", "0 0 1 1"},
      {"glyphs", "none"},
  };
  EXPECT_EQ(Show("Confidential"), expected);
}

TEST_F(WatermarksCommand, ShowsAPictureWithGlyphsFromAHandWrittenFile) {
  WriteText(file_,
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>"
            "<key>logo.png</key><dict><key>filename</key><string>logo.png</string>"
            "<key>xOffset</key><real>0.100000001490116119384765625</real>"
            "<key>glyphCount</key><integer>2</integer><key>glyphs</key><data>AEEAQg==</data>"
            "</dict></dict></plist>\n");
  const auto fields = Show("logo.png");
  EXPECT_EQ(fields.at("kind"), "picture");
  EXPECT_EQ(fields.at("menu position"), "not listed");
  EXPECT_EQ(fields.at("xOffset"), "0.1");  // shortest text of the 32-bit float
  EXPECT_EQ(fields.at("glyphs"), "2 0041 0042");
}

TEST_F(WatermarksCommand, RemoveTakesTheEntryAndItsMenuName) {
  ASSERT_EQ(Run({"defaults"}).exitCode, 0);
  ToolResult r = Run({"remove", "Confidential"});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(List(), "Draft\nCopy\n");

  for (const char* command : {"remove", "show"}) {
    r = Run({command, "Confidential"});
    ExpectOneLineError(r, 1);
    EXPECT_NE(r.err.find("no watermark named \"Confidential\""), std::string::npos) << r.err;
  }

  // --force puts the default back at the end, beside what the user kept.
  r = Run({"defaults", "--force"});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out, "Restored the default watermarks: Draft, Confidential, Copy\n");
  EXPECT_EQ(List(), "Draft\nCopy\nConfidential\n");
}

}  // namespace
}  // namespace zorva::test

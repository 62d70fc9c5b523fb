// zorva watermarks through the built tool: the menu list, every field of a
// watermark, the defaults on an empty and a non-empty store, removing, and
// rendering one onto a PostScript file.
// Help and usage errors are checked with the other commands in tool_test.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "cli/cli_test_util.h"
#include "core/file_io.h"
#include "support/test_support.h"
#include "watermarks/watermark_store.h"

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

// What the filter would print: the prolog with the stored font inside the
// document's own prolog, every other byte kept; Ghostscript-level checks
// of the drawing live with the watermark suite.
TEST_F(WatermarksCommand, RenderPutsTheWatermarkIntoTheDocument) {
  const auto font = ReadWholeFile("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");
  if (!font) GTEST_SKIP() << "fonts-dejavu-core is missing";
  ASSERT_EQ(storeFontData(kFile, "DejaVuSans", *font), 0);
  WatermarkData w;
  w.isText = true;
  w.textString = "Secret";
  w.fontName = "DejaVuSans";
  w.fontSize = 72;
  w.density = 100;
  ASSERT_EQ(saveWatermarkData(kFile, w), 0);
  const std::string doc = "%!PS-Adobe-3.0\n%%EndComments\n%%BeginProlog\n%%EndProlog\nshowpage\n";
  WriteText(tmp_ / "in.ps", doc);
  const std::string out = (tmp_ / "out.ps").string();
  ToolResult r = Run({"render", "Secret", (tmp_ / "in.ps").string(), out, "--page-size", "595,842",
                      "--first-page-only"});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.err, "");
  const std::string printed = ReadText(out);
  const std::size_t prolog = printed.find("%%BeginResource: procset ZorvaWatermark");
  ASSERT_NE(prolog, std::string::npos);
  EXPECT_EQ(printed.substr(0, prolog), "%!PS-Adobe-3.0\n%%EndComments\n%%BeginProlog\n");
  EXPECT_NE(printed.find("/FontName /DejaVuSans def"), std::string::npos);
  EXPECT_NE(printed.find("842 sub 2 div exch 595 sub"), std::string::npos);
  EXPECT_NE(printed.find("shown 0 get 0 eq"), std::string::npos);
  EXPECT_TRUE(printed.ends_with("%%EndResource\n%%EndProlog\nshowpage\n"));

  // A font that cannot be had: the standard font and one line, OUT written.
  ASSERT_EQ(storeFontData(kFile, "DejaVuSans", std::vector<std::uint8_t>{1, 2, 3}), 0);
  r = Run({"render", "Secret", (tmp_ / "in.ps").string(), out});
  EXPECT_EQ(r.exitCode, 0);
  EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << r.err;
  EXPECT_TRUE(r.err.starts_with("zorva: font DejaVuSans in the watermark store cannot be "));
  EXPECT_NE(ReadText(out).find("/Helvetica"), std::string::npos);
}

TEST_F(WatermarksCommand, RenderErrors) {
  WatermarkData w;
  w.isText = true;
  w.textString = "Secret";
  ASSERT_EQ(saveWatermarkData(kFile, w), 0);
  WriteText(tmp_ / "in.ps", "%!\nshowpage\n");
  const std::string in = (tmp_ / "in.ps").string();
  const std::string out = (tmp_ / "out.ps").string();
  struct Case {
    std::vector<std::string> args;
    int exitCode;
    std::string err;
  };
  const Case cases[] = {
      {{"render", "Nope", in, out},
       1,
       "zorva: no watermark named \"Nope\"; 'zorva watermarks list' shows them\n"},
      {{"render", "Secret", (tmp_ / "gone.ps").string(), out}, 1, "zorva: cannot read "},
      {{"render", "Secret", in, out, "--page-size", "595x842"},
       2,
       "zorva: --page-size wants the width and height in points, as W,H"},
      {{"render", "Secret", in, out, "--page-size", "0,842"}, 2, "zorva: --page-size wants"},
      {{"render", "Secret", in, (tmp_ / "no/such/out.ps").string()}, 1, "zorva: cannot write "},
  };
  for (const Case& c : cases) {
    ToolResult r = Run(c.args);
    EXPECT_EQ(r.exitCode, c.exitCode) << c.args[2] << r.err;
    EXPECT_TRUE(r.err.starts_with(c.err)) << r.err;
    EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << r.err;
  }
  EXPECT_FALSE(fs::exists(out));
}

}  // namespace
}  // namespace zorva::test

// zorva type42: exit statuses (0 complete, 3 written but incomplete, 1
// malformed or unreadable, 2 usage), standard output against -o, the default
// and given font names, and the large-table split switch.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "cli/cli_test_util.h"
#include "support/test_support.h"
#include "watermarks/tiny_font.h"

namespace zorva::test {
namespace {

constexpr const char* kDejaVuSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
constexpr const char* kLiberationSans =
    "/usr/share/fonts/truetype/liberation2/LiberationSans-Regular.ttf";

#define REQUIRE_FILE(path, package) \
  if (!std::filesystem::exists(path)) GTEST_SKIP() << path << " is missing: install " package

void WriteBytes(const std::filesystem::path& path, const Bytes& bytes) {
  WriteText(path, std::string(bytes.begin(), bytes.end()));
}

TEST(Type42Command, HelpNamesTheExitStatuses) {
  const ToolResult r = RunTool({"type42", "--help"});
  EXPECT_EQ(r.exitCode, 0);
  EXPECT_NE(r.out.find("Usage: zorva type42"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("--split-large-tables"), std::string::npos);
  EXPECT_NE(r.out.find("3 the program was written but stops early"), std::string::npos);
}

TEST(Type42Command, WritesTheProgramToStandardOutputOrAFile) {
  REQUIRE_FILE(kDejaVuSans, "fonts-dejavu-core");
  const ToolResult out = RunTool({"type42", kDejaVuSans});
  EXPECT_EQ(out.exitCode, 0) << out.err;
  EXPECT_EQ(out.err, "");
  EXPECT_EQ(out.out.rfind(
                "%!PS-TrueTypeFont-1.0000-2.3700\n11 dict begin\n/FontName /DejaVuSans def\n", 0),
            0u);
  EXPECT_TRUE(out.out.ends_with("FontName currentdict end definefont pop\n"));

  TempDir dir;
  const ToolResult file = RunTool({"type42", kDejaVuSans, "-o", (dir / "f.t42").string()});
  EXPECT_EQ(file.exitCode, 0) << file.err;
  EXPECT_EQ(file.out, "");
  EXPECT_EQ(ReadText(dir / "f.t42"), out.out);
}

TEST(Type42Command, NameOptionSetsTheFontName) {
  TempDir dir;
  WriteBytes(dir / "tiny.ttf", BuildFont(FontSpec{}).bytes);
  const ToolResult byDefault = RunTool({"type42", (dir / "tiny.ttf").string()});
  EXPECT_EQ(byDefault.exitCode, 0) << byDefault.err;
  EXPECT_NE(byDefault.out.find("/FontName /TinyFont def\n"), std::string::npos);
  const ToolResult named = RunTool({"type42", "--name", "Zorva-Mark", (dir / "tiny.ttf").string()});
  EXPECT_EQ(named.exitCode, 0) << named.err;
  EXPECT_NE(named.out.find("/FontName /Zorva-Mark def\n"), std::string::npos);

  FontSpec unnamed;
  unnamed.postScriptName = "";
  WriteBytes(dir / "Plain Font.ttf", BuildFont(unnamed).bytes);
  const ToolResult fromFile = RunTool({"type42", (dir / "Plain Font.ttf").string()});
  EXPECT_NE(fromFile.out.find("/FontName /PlainFont def\n"), std::string::npos) << fromFile.err;
}

TEST(Type42Command, OversizedTableWritesThePartialProgramAndExitsThree) {
  REQUIRE_FILE(kLiberationSans, "fonts-liberation2");
  TempDir dir;
  const ToolResult r = RunTool({"type42", kLiberationSans});
  EXPECT_EQ(r.exitCode, 3);
  EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << r.err;
  EXPECT_EQ(r.err.rfind("zorva: ", 0), 0u);
  EXPECT_NE(r.err.find("\"GPOS\" (76664 bytes)"), std::string::npos) << r.err;
  EXPECT_EQ(r.out.rfind("%!PS-TrueTypeFont-", 0), 0u);
  EXPECT_TRUE(r.out.ends_with("00>")) << "the program stops after the last whole string";

  const ToolResult file = RunTool({"type42", kLiberationSans, "-o", (dir / "l.t42").string()});
  EXPECT_EQ(file.exitCode, 3);
  EXPECT_EQ(ReadText(dir / "l.t42"), r.out);

  const ToolResult split = RunTool({"type42", "--split-large-tables", kLiberationSans});
  EXPECT_EQ(split.exitCode, 0) << split.err;
  EXPECT_EQ(split.out.rfind(r.out, 0), 0u) << "the same program up to the cut";
  EXPECT_TRUE(split.out.ends_with("definefont pop\n"));
}

TEST(Type42Command, MalformedFontsExitOneWithOneLine) {
  TempDir dir;
  FontSpec noName;
  noName.omit = {"name"};
  FontSpec badMagic;
  badMagic.magic = 0;
  WriteBytes(dir / "noname.ttf", BuildFont(noName).bytes);
  WriteBytes(dir / "magic.ttf", BuildFont(badMagic).bytes);
  WriteText(dir / "text.ttf", "this is not a font");
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"noname.ttf", "missing vital table"},
      {"magic.ttf", "Bad magic number"},
      {"text.ttf", "runs past the end of the font"},
      {"absent.ttf", "cannot read"}};
  for (const auto& [file, message] : cases) {
    const ToolResult r =
        RunTool({"type42", (dir / file).string(), "-o", (dir / "out.t42").string()});
    ExpectOneLineError(r, 1);
    EXPECT_NE(r.err.find(message), std::string::npos) << r.err;
    EXPECT_FALSE(std::filesystem::exists(dir / "out.t42")) << file;
  }
}

TEST(Type42Command, UnwritableOutputExitsOne) {
  TempDir dir;
  WriteBytes(dir / "tiny.ttf", BuildFont(FontSpec{}).bytes);
  const ToolResult r = RunTool(
      {"type42", (dir / "tiny.ttf").string(), "-o", (dir / "no" / "such" / "x.t42").string()});
  ExpectOneLineError(r, 1);
  EXPECT_NE(r.err.find("cannot write"), std::string::npos) << r.err;
}

TEST(Type42Command, UsageErrorsExitTwo) {
  TempDir dir;
  WriteBytes(dir / "tiny.ttf", BuildFont(FontSpec{}).bytes);
  const std::string font = (dir / "tiny.ttf").string();
  for (const std::vector<std::string>& args : {std::vector<std::string>{"type42"},
                                               {"type42", font, "--name", "Two Words"},
                                               {"type42", font, "--name", ""},
                                               {"type42", font, "--name", "a/b"},
                                               {"type42", font, "--bogus"}}) {
    ExpectOneLineError(RunTool(args), 2);
  }
}

}  // namespace
}  // namespace zorva::test

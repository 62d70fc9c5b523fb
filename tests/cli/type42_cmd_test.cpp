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

TEST(Type42Command, WritesTheProgramToStandardOutputOrAFile) {
  TempDir dir;
  const std::string font = WriteFont(dir / "tiny.ttf", FontSpec{});
  const ToolResult out = RunTool({"type42", font});
  EXPECT_EQ(out.exitCode, 0) << out.err;
  EXPECT_EQ(out.err, "");
  EXPECT_EQ(
      out.out.rfind("%!PS-TrueTypeFont-1.0000-1.5000\n11 dict begin\n/FontName /TinyFont def\n", 0),
      0u);
  EXPECT_TRUE(out.out.ends_with("FontName currentdict end definefont pop\n"));

  const ToolResult file = RunTool({"type42", font, "-o", (dir / "f.t42").string()});
  EXPECT_EQ(file.exitCode, 0) << file.err;
  EXPECT_EQ(file.out, "");
  EXPECT_EQ(ReadText(dir / "f.t42"), out.out);

  const ToolResult named = RunTool({"type42", "--name", "Zorva-Mark", font});
  EXPECT_NE(named.out.find("/FontName /Zorva-Mark def\n"), std::string::npos) << named.err;
  FontSpec unnamed;  // no name in the font: the file's, without its space
  unnamed.postScriptName = "";
  const ToolResult fromFile = RunTool({"type42", WriteFont(dir / "Plain Font.ttf", unnamed)});
  EXPECT_NE(fromFile.out.find("/FontName /PlainFont def\n"), std::string::npos) << fromFile.err;
}

TEST(Type42Command, OversizedTableWritesThePartialProgramAndExitsThree) {
  TempDir dir;
  FontSpec big;  // a table past the string limit with nothing to split it at
  big.extraTables = {{"GPOS", Bytes(70000, 0)}};
  const std::string font = WriteFont(dir / "big.ttf", big);
  const ToolResult r = RunTool({"type42", font, "-o", (dir / "l.t42").string()});
  EXPECT_EQ(r.exitCode, 3);
  EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << r.err;
  EXPECT_EQ(r.err.rfind("zorva: ", 0), 0u);
  EXPECT_NE(r.err.find("\"GPOS\" (70000 bytes)"), std::string::npos) << r.err;
  const std::string partial = ReadText(dir / "l.t42");
  EXPECT_TRUE(partial.ends_with("00>")) << "the program stops after the last whole string";
  EXPECT_TRUE(RunTool({"type42", font}).out == partial) << "standard output differs from -o";

  const ToolResult split = RunTool({"type42", "--split-large-tables", font});
  EXPECT_EQ(split.exitCode, 0) << split.err;
  EXPECT_EQ(split.out.rfind(partial, 0), 0u) << "the same program up to the cut";
  EXPECT_TRUE(split.out.ends_with("definefont pop\n"));
}

TEST(Type42Command, BadInputExitsOneAndUsageErrorsTwo) {
  TempDir dir;
  FontSpec noName;
  noName.omit = {"name"};
  FontSpec badMagic;
  badMagic.magic = 0;
  const std::string font = WriteFont(dir / "tiny.ttf", FontSpec{});
  WriteFont(dir / "noname.ttf", noName);
  WriteFont(dir / "magic.ttf", badMagic);
  WriteText(dir / "text.ttf", "this is not a font");
  const std::string out = (dir / "out.t42").string();
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
      {{(dir / "noname.ttf").string(), "-o", out}, "missing vital table"},
      {{(dir / "magic.ttf").string(), "-o", out}, "Bad magic number"},
      {{(dir / "text.ttf").string(), "-o", out}, "runs past the end of the font"},
      {{(dir / "absent.ttf").string(), "-o", out}, "cannot read"},
      {{font, "-o", (dir / "no" / "x.t42").string()}, "cannot write"}};
  for (const auto& [args, message] : cases) {
    std::vector<std::string> command = {"type42"};
    command.insert(command.end(), args.begin(), args.end());
    const ToolResult r = RunTool(command);
    ExpectOneLineError(r, 1);
    EXPECT_NE(r.err.find(message), std::string::npos) << r.err;
    EXPECT_FALSE(std::filesystem::exists(out)) << args[0];
  }
  for (const std::vector<std::string>& args : {std::vector<std::string>{"type42"},
                                               {"type42", font, "--name", "Two Words"},
                                               {"type42", font, "--name", ""},
                                               {"type42", font, "--name", "a/b"},
                                               {"type42", font, "--bogus"}}) {
    ExpectOneLineError(RunTool(args), 2);
  }
  const ToolResult help = RunTool({"type42", "--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_NE(help.out.find("3 the program was written but stops early"), std::string::npos);
}

}  // namespace
}  // namespace zorva::test

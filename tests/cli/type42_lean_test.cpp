// zorva-type42, the stand-alone converter: the same program as `zorva type42`
// byte for byte, and the same exit statuses for incomplete and malformed fonts.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/test_support.h"
#include "watermarks/tiny_font.h"

namespace zorva::test {
namespace {

TEST(Type42Lean, SameProgramAndExitStatusAsTheTool) {
  TempDir dir;
  FontSpec big;  // a table past the string limit with nothing to split it at
  big.extraTables = {{"GPOS", Bytes(70000, 0)}};
  const std::string tiny = WriteFont(dir / "tiny.ttf", FontSpec{});
  const std::string large = WriteFont(dir / "big.ttf", big);
  WriteText(dir / "text.ttf", "this is not a font");
  const std::vector<std::pair<std::vector<std::string>, int>> cases = {
      {{tiny}, 0},
      {{"--split-large-tables", "--name", "Mark", tiny}, 0},
      {{"/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"}, 0},
      {{large}, 3},
      {{"--split-large-tables", large}, 0},
      {{(dir / "text.ttf").string()}, 1},
      {{(dir / "absent.ttf").string()}, 1},
      {{large, "--name", "a b"}, 2},
      {{"--bogus", large}, 2}};
  for (const auto& [args, exitCode] : cases) {
    if (!std::filesystem::exists(args[0]) && args[0].starts_with("/usr")) continue;
    const ToolResult lean = RunProgram(ZORVA_TYPE42_TOOL, args);
    std::vector<std::string> command = {"type42"};
    command.insert(command.end(), args.begin(), args.end());
    const ToolResult tool = RunTool(command);
    EXPECT_EQ(lean.exitCode, exitCode) << args.back() << ": " << lean.err;
    EXPECT_EQ(tool.exitCode, exitCode) << args.back() << ": " << tool.err;
    EXPECT_TRUE(lean.out == tool.out) << args.back() << " differs from zorva type42";
    EXPECT_EQ(lean.out.empty(), exitCode == 1 || exitCode == 2) << args.back();
  }
  const ToolResult incomplete = RunProgram(ZORVA_TYPE42_TOOL, {large});
  EXPECT_EQ(incomplete.err.rfind("zorva-type42: ", 0), 0u) << incomplete.err;
  EXPECT_NE(incomplete.err.find("\"GPOS\" (70000 bytes)"), std::string::npos) << incomplete.err;
  const ToolResult toFile = RunProgram(ZORVA_TYPE42_TOOL, {tiny, "-o", (dir / "out.t42").string()});
  EXPECT_EQ(toFile.exitCode, 0) << toFile.err;
  EXPECT_TRUE(ReadText(dir / "out.t42") == RunTool({"type42", tiny}).out);
}

}  // namespace
}  // namespace zorva::test

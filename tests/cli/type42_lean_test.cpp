// zorva-type42, the stand-alone converter: the same program as `zorva type42`
// byte for byte, and the same exit statuses for incomplete and malformed fonts.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/test_support.h"
#include "watermarks/tiny_font.h"

namespace zorva::test {
namespace {

ToolResult RunLean(const std::vector<std::string>& args) {
  return RunProgram(ZORVA_TYPE42_TOOL, args);
}

void WriteFont(const std::filesystem::path& path, const FontSpec& spec) {
  const Bytes bytes = BuildFont(spec).bytes;
  WriteText(path, std::string(bytes.begin(), bytes.end()));
}

TEST(Type42Lean, WritesTheSameProgramAsTheTool) {
  TempDir dir;
  WriteFont(dir / "tiny.ttf", FontSpec{});
  std::vector<std::string> fonts = {(dir / "tiny.ttf").string()};
  const char* dejaVu = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
  if (std::filesystem::exists(dejaVu)) fonts.push_back(dejaVu);
  for (const std::string& font : fonts) {
    for (const std::vector<std::string>& extra :
         {std::vector<std::string>{}, {"--split-large-tables", "--name", "Mark"}}) {
      std::vector<std::string> args = extra;
      args.push_back(font);
      const ToolResult lean = RunLean(args);
      args.insert(args.begin(), "type42");
      const ToolResult tool = RunTool(args);
      EXPECT_EQ(lean.exitCode, 0) << lean.err;
      EXPECT_EQ(lean.err, "");
      EXPECT_FALSE(lean.out.empty());
      EXPECT_TRUE(lean.out == tool.out) << font << " differs from zorva type42";
    }
  }
  const ToolResult toFile = RunLean({fonts.back(), "-o", (dir / "out.t42").string()});
  EXPECT_EQ(toFile.exitCode, 0) << toFile.err;
  EXPECT_TRUE(ReadText(dir / "out.t42") == RunTool({"type42", fonts.back()}).out);
}

TEST(Type42Lean, ExitStatusesMatchTheTool) {
  TempDir dir;
  FontSpec big;  // a table past the string limit with nothing to split it at
  big.extraTables = {{"GPOS", Bytes(70000, 0)}};
  WriteFont(dir / "big.ttf", big);
  WriteText(dir / "text.ttf", "this is not a font");
  const ToolResult incomplete = RunLean({(dir / "big.ttf").string()});
  EXPECT_EQ(incomplete.exitCode, 3);
  EXPECT_EQ(incomplete.err.rfind("zorva-type42: ", 0), 0u) << incomplete.err;
  EXPECT_NE(incomplete.err.find("\"GPOS\" (70000 bytes)"), std::string::npos) << incomplete.err;
  EXPECT_TRUE(incomplete.out == RunTool({"type42", (dir / "big.ttf").string()}).out);
  EXPECT_EQ(RunLean({(dir / "text.ttf").string()}).exitCode, 1);
  EXPECT_EQ(RunLean({(dir / "absent.ttf").string()}).exitCode, 1);
  EXPECT_EQ(RunLean({(dir / "big.ttf").string(), "--name", "a b"}).exitCode, 2);
  EXPECT_EQ(RunLean({"--bogus", (dir / "big.ttf").string()}).exitCode, 2);
}

}  // namespace
}  // namespace zorva::test

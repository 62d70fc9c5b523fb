// zorva presets: a preset saved from a ticket is a ticket file that the
// ticket and jotf commands read through 'zorva presets path'.
#include <gtest/gtest.h>

#include "cli/cli_test_util.h"

namespace zorva::test {
namespace {

TEST(PresetsCommand, SaveListPathDeleteAndUseWithOtherCommands) {
  TempDir dir;
  ScopedEnv prefs("ZORVA_PREFERENCES_DIR", (dir / "config").string());
  const std::string example = ZORVA_TEST_DATA "/../../examples/job-settings.plist";
  ASSERT_EQ(RunTool({"presets", "save", "Booklet proofs", example}).exitCode, 0);
  ASSERT_EQ(RunTool({"presets", "save", "A4 plain", example}).exitCode, 0);
  EXPECT_EQ(RunTool({"presets", "list"}).out, "A4 plain\nBooklet proofs\n");

  ToolResult path = RunTool({"presets", "path", "Booklet proofs"});
  ASSERT_EQ(path.exitCode, 0) << path.err;
  const std::string file = path.out.substr(0, path.out.size() - 1);
  EXPECT_EQ(file, (dir / "config/presets/Booklet proofs.plist").string());
  ToolResult get = RunTool({"ticket", "get", file, "com.zorva.print.FinishingDuplex"});
  EXPECT_EQ(get.exitCode, 0) << get.err;
  EXPECT_EQ(RunTool({"jotf", "export", file, "-o", (dir / "p.jotf").string()}).exitCode, 0);
  EXPECT_FALSE(ReadText(dir / "p.jotf").empty());

  ASSERT_EQ(RunTool({"presets", "delete", "A4 plain"}).exitCode, 0);
  EXPECT_EQ(RunTool({"presets", "list"}).out, "Booklet proofs\n");
  ExpectOneLineError(RunTool({"presets", "delete", "A4 plain"}), 1);
  ExpectOneLineError(RunTool({"presets", "path", "A4 plain"}), 1);
  ToolResult bad = RunTool({"presets", "save", "a/b", example});
  ExpectOneLineError(bad, 2);
  EXPECT_NE(bad.err.find("cannot contain \"/\""), std::string::npos) << bad.err;
}

}  // namespace
}  // namespace zorva::test

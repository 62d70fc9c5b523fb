// zorva pages parse run as a user would: ranges and pages on standard output,
// text starting with '-' after '--', and bad text as one error line with the
// code and the alert's message.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "cli/cli_test_util.h"
#include "support/test_support.h"

namespace zorva::test {
namespace {

ToolResult Parse(std::vector<std::string> args) {
  args.insert(args.begin(), {"pages", "parse"});
  return RunTool(args);
}

void ExpectOutput(const ToolResult& r, const std::string& out) {
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out, out);
  EXPECT_TRUE(r.err.empty()) << r.err;
}

// Ranges as "start count", or one line per page; text starting with '-'
// after "--"; an open end with --pages runs to the last page. What the text
// means is the page-range parser's test.
TEST(PagesCommand, PrintsRangesOrPages) {
  ExpectOutput(Parse({"1-3, 7"}), "1 3\n7 1\n");
  ExpectOutput(Parse({"--pages", "1-3,7"}), "1 1\n2 1\n3 1\n7 1\n");
  ExpectOutput(Parse({"--pages", "--", "-3, 9"}), "1 1\n2 1\n3 1\n9 1\n");
  // An open end runs to the last page, written out page by page.
  ToolResult r = Parse({"--pages", "9999000-"});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(std::count(r.out.begin(), r.out.end(), '\n'), 1000);
  EXPECT_TRUE(r.out.starts_with("9999000 1\n") && r.out.ends_with("\n9999999 1\n"));
}

// A fixed form for scripts: no "zorva: " prefix, one line with the code and
// the alert's message, exit 1, in both modes.
TEST(PagesCommand, BadTextIsOneErrorLineWithCodeAndMessage) {
  const std::pair<const char*, const char*> cases[] = {
      {"5-2", "error 1002: A range must not end before it starts"},
      {"10000000", "error 1000: Page numbers can have at most 7 digits."},
  };
  for (const auto& [text, start] : cases) {
    for (bool pages : {false, true}) {
      ToolResult r = pages ? Parse({"--pages", "--", text}) : Parse({"--", text});
      EXPECT_EQ(r.exitCode, 1);
      EXPECT_EQ(r.out, "");
      EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << r.err;
      EXPECT_TRUE(r.err.starts_with(start)) << r.err;
    }
  }
}

TEST(PagesCommand, UsageErrors) {
  ExpectOneLineError(Parse({}), 2);
  ExpectOneLineError(RunTool({"pages"}), 2);
  ExpectOneLineError(Parse({"1", "2"}), 2);
}

}  // namespace
}  // namespace zorva::test

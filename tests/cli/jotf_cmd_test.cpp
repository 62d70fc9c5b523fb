// zorva jotf write and export: the settings used as they stand against the
// export path (host items, "com.zorva" keys only, the page-size option), the
// bundled example against its golden job ticket, and the error exits.
#include <gtest/gtest.h>
#include <libxml/parser.h>

#include <cstdlib>
#include <string>

#include "cli/cli_test_util.h"
#include "core/plist_io.h"
#include "support/test_support.h"

namespace zorva::test {
namespace {

const std::string kExample = std::string(ZORVA_TEST_DATA) + "/../../examples/job-settings.plist";

std::string JotfInput(const std::string& name) {
  return TestData("jotf/" + name + ".plist").string();
}

bool WellFormed(const std::string& text) {
  xmlDocPtr doc = xmlReadMemory(text.data(), static_cast<int>(text.size()), "t.xml", nullptr,
                                XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING);
  xmlFreeDoc(doc);
  return doc != nullptr;
}

class JotfCommand : public ::testing::Test {
 protected:
  std::string File(const std::string& name) const { return (dir_ / name).string(); }

  void WriteSettings(const std::string& name, const Dictionary& d) {
    ASSERT_EQ(WritePropertyListFile(dir_ / name, Value(d)), 0);
  }

  std::string Export(const std::string& ticket, std::vector<std::string> extra = {}) {
    std::vector<std::string> args = {"jotf", "export", ticket, "-o", File("out.jotf")};
    args.insert(args.end(), extra.begin(), extra.end());
    ToolResult r = RunTool(args);
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, "");
    return ReadText(File("out.jotf"));
  }

  TempDir dir_;
};

// Write gives the writer's document from XML or binary lists, on standard
// output or to -o.
TEST_F(JotfCommand, WriteGivesTheWritersDocument) {
  ASSERT_EQ(
      RunProgram("plistutil", {"-i", JotfInput("exceptions"), "-o", File("s.bplist"), "-f", "bin"})
          .exitCode,
      0);
  ToolResult r = RunTool({"jotf", "write", File("s.bplist")});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out, ReadText(TestData("jotf/exceptions.jotf")));

  ASSERT_EQ(RunTool({"jotf", "write", JotfInput("job-notes"), "-o", File("notes.jotf")}).exitCode,
            0);
  EXPECT_EQ(ReadText(File("notes.jotf")), ReadText(TestData("jotf/job-notes.jotf")));
}

// The bundled example (covers, inserts, exceptions, finishing, saved job)
// against its golden job ticket.
TEST_F(JotfCommand, ExportOfTheExampleMatchesItsGolden) {
  const std::string text = Export(kExample);
  const std::filesystem::path golden = TestData("jotf/example-export.jotf");
  if (const char* update = std::getenv("ZORVA_UPDATE_GOLDENS"); update && *update == '1') {
    WriteText(golden, text);
  }
  EXPECT_EQ(text, ReadText(golden));
  EXPECT_TRUE(WellFormed(text));
}

// Export asks for the whole document whatever the ticket's options say, and
// the writers see only "com.zorva" items: the platform's duplex and job name
// are not there. Write uses the same settings as they stand, and without
// options writes an empty file.
TEST_F(JotfCommand, ExportSeesOnlyZorvaItems) {
  WriteSettings("ticket.plist",
                {{"com.zorva.print.JOTFOptions", Value(Dictionary{{"JOTFOptionCovers", Value(1)}})},
                 {"com.apple.print.PrintSettings.PMDuplexing", Value(3)},
                 {"com.apple.print.JobInfo.PMJobName", Value("Platform name")},
                 {"com.zorva.print.JobNotesUseJobName", Value(true)},
                 {"com.zorva.print.JobNotesSenderName", Value("Dana")},
                 {"com.zorva.print.RotateBooklet180Degrees", Value(true)},
                 {"com.zorva.Act.jotf.On", Value(2)}});
  const std::string exported = Export(File("ticket.plist"));
  EXPECT_EQ(exported, ReadText(TestData("jotf/frame-all-empty.jotf")));

  ToolResult written = RunTool({"jotf", "write", File("ticket.plist")});
  ASSERT_EQ(written.exitCode, 0) << written.err;
  EXPECT_EQ(written.out, "") << "covers only, and there are none";

  WriteSettings("plain.plist", {{"com.zorva.print.FinishingDuplex", Value(2)}});
  written = RunTool({"jotf", "write", File("plain.plist"), "-o", File("empty.jotf")});
  EXPECT_EQ(written.exitCode, 0) << written.err;
  EXPECT_EQ(ReadText(File("empty.jotf")), "");
}

TEST_F(JotfCommand, ExportTakesThePageSizeForStocksWithoutOne) {
  WriteSettings("ticket.plist", {{"com.zorva.print.JobLevelStock", Value(Dictionary{})}});
  const std::string upright = Export(File("ticket.plist"), {"--page-size", "612,792"});
  EXPECT_NE(upright.find("\t\t\t\t<x-dimension syntax=\"integer\">21600</x-dimension>\n"
                         "\t\t\t\t<y-dimension syntax=\"integer\">27900</y-dimension>\n"),
            std::string::npos)
      << upright;
  const std::string turned =
      Export(File("ticket.plist"), {"--page-size", "842,595", "--orientation", "3"});
  EXPECT_NE(turned.find(">29700</x-dimension>"), std::string::npos) << turned;
  EXPECT_EQ(Export(File("ticket.plist")).find("<media-size"), std::string::npos);
}

TEST_F(JotfCommand, Errors) {
  ExpectOneLineError(RunTool({"jotf", "write", File("missing.plist")}), 1);
  WriteText(File("junk.plist"), "not a property list");
  ExpectOneLineError(RunTool({"jotf", "write", File("junk.plist")}), 1);
  ExpectOneLineError(RunTool({"jotf", "export", kExample}), 2);  // -o is required
  // Bad page sizes and orientations, an orientation without a size.
  for (std::vector<std::string> extra : {std::vector<std::string>{"--page-size", "612"},
                                         {"--page-size", "0,792"},
                                         {"--page-size", "612,792", "--orientation", "4"},
                                         {"--orientation", "1"}}) {
    extra.insert(extra.begin(), {"jotf", "export", kExample, "-o", File("x")});
    ExpectOneLineError(RunTool(extra), 2);
  }
  ExpectOneLineError(RunTool({"jotf", "export", kExample, "-o", File("no/such/dir/x.jotf")}), 1);
  ExpectOneLineError(RunTool({"jotf"}), 2);
}

}  // namespace
}  // namespace zorva::test

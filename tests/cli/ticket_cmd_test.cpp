// The zorva ticket commands run as a user would run them, on real files:
// round trips through set/get/remove, what each --type makes of its text
// (checked against Python's own property-list reader), binary input, and that
// bad input ends in one line on stderr, the documented status and an
// untouched file.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "cli/cli_test_util.h"
#include "support/test_support.h"

namespace zorva::test {
namespace {

namespace fs = std::filesystem;

const std::string kExample = std::string(ZORVA_TEST_DATA) + "/../../examples/job-settings.plist";

class TicketCommand : public ::testing::Test {
 protected:
  std::string File(const std::string& name = "job.plist") const { return (dir_ / name).string(); }

  ToolResult Set(const std::string& key, const std::string& value,
                 const std::string& type = "auto") {
    return RunTool({"ticket", "set", File(), key, value, "--type", type});
  }
  ToolResult Get(const std::string& key) { return RunTool({"ticket", "get", File(), key}); }
  ToolResult Show() { return RunTool({"ticket", "show", File()}); }

  TempDir dir_;
};

TEST_F(TicketCommand, SetCreatesTheFileAndGetReadsItBack) {
  ASSERT_FALSE(fs::exists(File()));
  ToolResult set = Set("com.zorva.print.FinishingDuplex", "2");
  EXPECT_EQ(set.exitCode, 0) << set.err;
  EXPECT_TRUE(set.out.empty() && set.err.empty());
  EXPECT_EQ(Get("com.zorva.print.FinishingDuplex").out, "2\n");
  EXPECT_EQ(ReadText(File()).rfind("<?xml", 0), 0u) << "tickets are written as XML";

  ASSERT_EQ(Set("com.zorva.print.JobNotesMessage", "Deliver to room 4").exitCode, 0);
  ASSERT_EQ(Set("com.zorva.print.FinishingDuplex", "3").exitCode, 0);
  EXPECT_EQ(PythonView(File()),
            "com.zorva.print.FinishingDuplex int 3\n"
            "com.zorva.print.JobNotesMessage str 'Deliver to room 4'\n");
}

struct TypedCase {
  std::string type, text, plainText, python;
};

// Every --type, what auto guesses, and that get prints what set accepts;
// checked by an independent reader.
TEST_F(TicketCommand, EveryTypeStoresItsKindAndGetPrintsItBack) {
  const std::vector<TypedCase> cases = {
      {"auto", "true", "true\n", "bool True"},
      {"auto", "-7", "-7\n", "int -7"},
      {"auto", "1e3", "1000\n", "float 1000.0"},
      {"auto", "+5", "+5\n", "str '+5'"},
      {"auto", "nan", "nan\n", "str 'nan'"},
      {"auto", "", "\n", "str ''"},
      {"integer", "-9000000000", "-9000000000\n", "int -9000000000"},
      {"real", "3", "3\n", "float 3.0"},
      {"number", "7.25", "7.25\n", "float 7.25"},
      {"string", "two\nlines", "two\nlines\n", "str 'two\\nlines'"},
      {"bool", "0", "false\n", "bool False"},
      {"date", "2024-02-29T23:59:59Z", "2024-02-29T23:59:59Z\n",
       "datetime datetime.datetime(2024, 2, 29, 23, 59, 59)"},
      {"data", "aGk", "aGk=\n", "bytes b'hi'"},
      {"dict", "<plist><dict><key>Size</key><integer>4</integer></dict></plist>", "",
       "dict {'Size': 4}"},
      {"array", "<plist><array><string>a</string><real>1.5</real></array></plist>", "",
       "list ['a', 1.5]"},
  };
  std::string expected;
  for (std::size_t i = 0; i < cases.size(); ++i) {
    const TypedCase& c = cases[i];
    const std::string key = "k" + std::to_string(10 + i);
    ToolResult set = Set(key, c.text, c.type);
    ASSERT_EQ(set.exitCode, 0) << c.type << " " << c.text << ": " << set.err;
    if (!c.plainText.empty()) {
      EXPECT_EQ(Get(key).out, c.plainText) << c.type << " " << c.text;
    }
    expected += key + " " + c.python + "\n";
  }
  EXPECT_EQ(PythonView(File()), expected);

  // Values that look like options or commands.
  ASSERT_EQ(RunTool({"ticket", "set", File(), "--", "o", "-x"}).exitCode, 0);
  ASSERT_EQ(RunTool({"ticket", "set", File(), "p", "remove"}).exitCode, 0);
  EXPECT_EQ(Get("o").out + Get("p").out, "-x\nremove\n");
}

TEST_F(TicketCommand, GetOfADictionaryPrintsAPropertyListOthersCanRead) {
  ToolResult r = RunTool({"ticket", "get", kExample, "com.zorva.print.JobLevelStock"});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  WriteText(File("stock.plist"), r.out);
  ToolResult py = RunProgram(
      "python3", {"-c", "import plistlib,sys; print(plistlib.load(open(sys.argv[1],'rb')))",
                  File("stock.plist")});
  EXPECT_EQ(py.out, "{'Color': 1, 'Size': 1, 'Type': 1, 'Weight': 90}\n") << py.err;

  // And the same text goes back in through standard input.
  ToolResult in = RunProgram("sh", {"-c", "\"$0\" ticket set \"$1\" copy - --type dict < \"$2\"",
                                    ZORVA_TOOL, File(), File("stock.plist")});
  ASSERT_EQ(in.exitCode, 0) << in.err;
  EXPECT_EQ(Get("copy").out, r.out);
}

TEST_F(TicketCommand, ReadsBinaryPropertyListsAndWritesXml) {
  const std::string binary = File("binary.plist");
  ToolResult conv = RunProgram("plistutil", {"-i", kExample, "-o", binary, "-f", "bin"});
  ASSERT_EQ(conv.exitCode, 0) << conv.err;
  ASSERT_EQ(ReadText(binary).rfind("bplist00", 0), 0u);

  ToolResult fromBinary = RunTool({"ticket", "show", binary});
  ASSERT_EQ(fromBinary.exitCode, 0) << fromBinary.err;
  EXPECT_EQ(fromBinary.out, RunTool({"ticket", "show", kExample}).out);

  ASSERT_EQ(RunTool({"ticket", "set", binary, "com.zorva.print.Gutter", "30"}).exitCode, 0);
  EXPECT_EQ(ReadText(binary).rfind("<?xml", 0), 0u);
  EXPECT_EQ(RunTool({"ticket", "get", binary, "com.zorva.print.JobNotesSenderName"}).out,
            "Dana Whitfield\n");
}

// The dump of every kind, from a file written by another implementation.
TEST_F(TicketCommand, ShowDumpsEveryKindSortedAndIndented) {
  ToolResult py = RunProgram(
      "python3",
      {"-c",
       "import plistlib, sys, datetime\n"
       "d = {'b.Notes': 'say \"hi\"\\n\\tbye', 'a.Blob': bytes(range(20)), 'c.Empty': b'',\n"
       "     'd.When': datetime.datetime(2024, 3, 5, 14, 30, 0), 'e.Flag': True,\n"
       "     'f.Ratio': 0.1, 'g.Stock': {'Size': 1, 'Pages': [1, 'x', {}]}, 'h.One': [7]}\n"
       "plistlib.dump(d, open(sys.argv[1], 'wb'))\n",
       File()});
  ASSERT_EQ(py.exitCode, 0) << py.err;
  ToolResult r = Show();
  ASSERT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out,
            "a.Blob: data 20 bytes: 00010203 04050607 08090a0b 0c0d0e0f ...\n"
            "b.Notes: string \"say \\\"hi\\\"\\n\\tbye\"\n"
            "c.Empty: data 0 bytes\n"
            "d.When: date 2024-03-05T14:30:00Z\n"
            "e.Flag: bool true\n"
            "f.Ratio: real 0.1\n"
            "g.Stock: dict (2 entries)\n"
            "  Pages: array (3 items)\n"
            "    [0]: integer 1\n"
            "    [1]: string \"x\"\n"
            "    [2]: dict (0 entries)\n"
            "  Size: integer 1\n"
            "h.One: array (1 item)\n"
            "  [0]: integer 7\n");
}

TEST_F(TicketCommand, RemoveDeletesOnlyThatKeyAndMissingKeysFailUnlessForced) {
  ASSERT_EQ(Set("a", "1").exitCode, 0);
  ASSERT_EQ(Set("b", "2").exitCode, 0);
  ToolResult r = RunTool({"ticket", "remove", File(), "a"});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(PythonView(File()), "b int 2\n");

  const std::string before = ReadText(File());
  for (const char* command : {"remove", "get"}) {
    r = RunTool({"ticket", command, File(), "a"});
    ExpectOneLineError(r, 1);
    EXPECT_NE(r.err.find("no key \"a\""), std::string::npos) << r.err;
  }
  EXPECT_EQ(RunTool({"ticket", "remove", "--force", File(), "a"}).exitCode, 0);
  EXPECT_EQ(ReadText(File()), before);
  EXPECT_EQ(RunTool({"ticket", "remove", "-f", File("none.plist"), "a"}).exitCode, 0);
  EXPECT_FALSE(fs::exists(File("none.plist")));
}

// A value that does not parse: status 2, one line, and the file stays as it was.
TEST_F(TicketCommand, BadValuesLeaveTheFileUntouched) {
  ASSERT_EQ(Set("a", "1").exitCode, 0);
  const std::string before = ReadText(File());
  const std::vector<std::vector<std::string>> bad = {
      {"a", "5", "--type", "float"},
      {"a", "99999999999999999999", "--type", "integer"},
      {"a", "2023-02-29T00:00:00Z", "--type", "date"},
      {"a", "abcde", "--type", "data"},
      {"a", "<plist><array/></plist>", "--type", "dict"},
      {"a", "\xFF\xFE", "--type", "string"},
      {"key\x1b", "1"},
  };
  for (const auto& args : bad) {
    std::vector<std::string> argv = {"ticket", "set", File()};
    argv.insert(argv.end(), args.begin(), args.end());
    SCOPED_TRACE(args[1] + " " + (args.size() > 3 ? args[3] : ""));
    ExpectOneLineError(RunTool(argv), 2);
    EXPECT_EQ(ReadText(File()), before);
  }
  // Nor is a missing file created by a rejected value.
  ExpectOneLineError(RunTool({"ticket", "set", File("new.plist"), "a", "x", "-t", "number"}), 2);
  EXPECT_FALSE(fs::exists(File("new.plist")));
}

// Files that are not tickets, or cannot be written: status 1 naming the file.
TEST_F(TicketCommand, UnreadableOrMalformedFilesAreReportedAndKept) {
  fs::create_directory(File("folder.plist"));
  WriteText(File("cut.plist"), "<?xml version=\"1.0\"?><plist><dict><key>a</key>");
  WriteText(File("array.plist"), "<plist><array><integer>1</integer></array></plist>");
  const std::vector<std::pair<std::string, std::string>> files = {
      {"missing.plist", "cannot read"},
      {"folder.plist", "cannot read"},
      {"cut.plist", "not a property list"},
      {"array.plist", "root is an array"}};
  for (const auto& [name, why] : files) {
    SCOPED_TRACE(name);
    const std::string path = File(name);
    const std::string before = fs::is_regular_file(path) ? ReadText(path) : "";
    for (const std::vector<std::string>& argv : {std::vector<std::string>{"ticket", "show", path},
                                                 {"ticket", "remove", path, "a"},
                                                 {"ticket", "set", path, "a", "1"}}) {
      if (name == "missing.plist" && argv[1] == "set") continue;  // set creates it
      ToolResult r = RunTool(argv);
      ExpectOneLineError(r, 1);
      EXPECT_NE(r.err.find(path), std::string::npos) << r.err;
      EXPECT_NE(r.err.find(why), std::string::npos) << r.err;
    }
    if (fs::is_regular_file(path)) {
      EXPECT_EQ(ReadText(path), before);
    }
  }

  // An endless file ends at the read limit, named in the one line.
  ToolResult zero = RunTool({"ticket", "show", "/dev/zero"});
  ExpectOneLineError(zero, 1);
  EXPECT_EQ(zero.err, "zorva: cannot read /dev/zero: larger than 256 MiB\n");

  ToolResult r = RunTool({"ticket", "set", File("no/such/folder/job.plist"), "a", "1"});
  ExpectOneLineError(r, 1);
  EXPECT_NE(r.err.find("cannot write"), std::string::npos) << r.err;
  ToolResult full =
      RunProgram("sh", {"-c", "\"$0\" ticket show \"$1\" > /dev/full", ZORVA_TOOL, kExample});
  EXPECT_EQ(full.exitCode, 1);
  EXPECT_NE(full.err.find("zorva: cannot write output"), std::string::npos) << full.err;
}

}  // namespace
}  // namespace zorva::test

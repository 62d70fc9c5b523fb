// Property-list files: round trips, reading what other tools write, and
// rejecting malformed or hostile input with a reason.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "core/file_io.h"
#include "core/plist_io.h"
#include "support/test_support.h"

namespace zorva {
namespace {

using test::RunProgram;
using test::TempDir;

Dictionary Sample() {
  Dictionary stock{{"Size", 1}, {"Width", kUnset}, {"kGrain", 2}};
  return Dictionary{
      {"com.zorva.print.JobLevelStock", stock},
      {"Name", "Caf\xC3\xA9 <&> \"quoted\" 'x'"},
      {"Empty", ""},
      {"Ratio", 0.1},
      {"Single", 0.75f},
      {"Negative", std::int64_t{-9000000000}},
      {"Flag", true},
      {"Off", false},
      {"Blob", Data{0, 1, 2, 0xFF}},
      {"When", Date{600000000}},
      {"List", Array{1, "two", Array{}, Dictionary{}}},
  };
}

TEST(PlistIo, XmlRoundTripKeepsEveryType) {
  Value v(Sample());
  std::string xml = ToXmlPropertyList(v);
  std::string error;
  auto back = ParsePropertyList(xml, &error);
  ASSERT_TRUE(back) << error;
  EXPECT_EQ(*back, v);
  // Keys come out sorted, so files are stable from one write to the next.
  EXPECT_LT(xml.find("<key>Blob</key>"), xml.find("<key>com.zorva.print.JobLevelStock</key>"));
  EXPECT_EQ(ToXmlPropertyList(*back), xml);
}

TEST(PlistIo, PythonPlistlibReadsOurFiles) {
  TempDir dir;
  ASSERT_EQ(WritePropertyListFile(dir / "t.plist", Value(Sample())), 0);
  const char* script =
      "import plistlib,sys,datetime\n"
      "d=plistlib.load(open(sys.argv[1],'rb'))\n"
      "assert d['Name']=='Caf\\u00e9 <&> \"quoted\" \\'x\\''\n"
      "assert d['com.zorva.print.JobLevelStock']['Width']==-2147483648\n"
      "assert d['Negative']==-9000000000 and d['Ratio']==0.1 and d['Single']==0.75\n"
      "assert d['Blob']==b'\\x00\\x01\\x02\\xff' and d['Flag'] is True and d['Off'] is False\n"
      "assert d['List'][1]=='two' and d['Empty']==''\n"
      "print(d['When'].year)\n";
  auto r = RunProgram("python3", {"-c", script, (dir / "t.plist").string()});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out, "2020\n");
}

TEST(PlistIo, ReadsBinaryListsMadeByOtherTools) {
  TempDir dir;
  ASSERT_EQ(WritePropertyListFile(dir / "x.plist", Value(Sample())), 0);
  auto r = RunProgram("plistutil", {"-f", "bin", "-i", (dir / "x.plist").string(), "-o",
                                    (dir / "b.plist").string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  std::string error;
  auto v = ReadPropertyListFile(dir / "b.plist", &error);
  ASSERT_TRUE(v) << error;
  EXPECT_EQ(*v, Value(Sample()));

  // And a binary list written by Python, with its own choice of int widths.
  auto py = RunProgram("python3", {"-c",
                                   "import plistlib,sys;open(sys.argv[1],'wb').write("
                                   "plistlib.dumps({'a':[1,-2,2**40],'b':'\\u00fc'},"
                                   "fmt=plistlib.FMT_BINARY))",
                                   (dir / "p.plist").string()});
  ASSERT_EQ(py.exitCode, 0) << py.err;
  v = ReadPropertyListFile(dir / "p.plist", &error);
  ASSERT_TRUE(v) << error;
  const Array* a = v->dictionary()->getArray("a");
  ASSERT_TRUE(a);
  EXPECT_EQ(*(*a)[1].integer(), -2);
  EXPECT_EQ(*(*a)[2].integer(), std::int64_t{1} << 40);
  EXPECT_EQ(*v->dictionary()->getString("b"), "\xC3\xBC");
}

TEST(PlistIo, MalformedInputGivesAReason) {
  std::string error;
  EXPECT_FALSE(ParsePropertyList(std::string_view(""), &error));
  EXPECT_EQ(error, "empty file");
  EXPECT_FALSE(ParsePropertyList(std::string_view("<plist><dict><key>a</key>"), &error));
  EXPECT_NE(error.find("line 1"), std::string::npos) << error;
  EXPECT_FALSE(ParsePropertyList(std::string_view("<html><body/></html>"), &error));
  EXPECT_FALSE(error.empty());
  EXPECT_FALSE(ParsePropertyList(std::string_view("bplist00garbage"), &error));
  EXPECT_FALSE(error.empty());
}

// Builds a binary list of `levels` arrays, each holding the next.
std::string NestedBinary(std::uint32_t levels) {
  std::string out = "bplist00";
  std::vector<std::uint32_t> offsets;
  auto be32 = [&out](std::uint32_t v) {
    for (int s = 24; s >= 0; s -= 8) out += static_cast<char>((v >> s) & 0xFF);
  };
  for (std::uint32_t i = 0; i < levels; ++i) {
    offsets.push_back(static_cast<std::uint32_t>(out.size()));
    if (i + 1 == levels) {
      out += '\xA0';
    } else {
      out += '\xA1';
      be32(i + 1);
    }
  }
  const auto table = static_cast<std::uint32_t>(out.size());
  for (std::uint32_t o : offsets) be32(o);
  out += std::string(6, '\0') + "\x04\x04";
  for (std::uint64_t v : {std::uint64_t{levels}, std::uint64_t{0}, std::uint64_t{table}}) {
    for (int s = 56; s >= 0; s -= 8) out += static_cast<char>((v >> s) & 0xFF);
  }
  return out;
}

TEST(PlistIo, HostileNestingIsRejectedNotFollowed) {
  std::string error;
  EXPECT_TRUE(ParsePropertyList(NestedBinary(100), &error)) << error;
  // Deep enough to exhaust the stack of a recursive reader.
  EXPECT_FALSE(ParsePropertyList(NestedBinary(300000), &error));
  EXPECT_NE(error.find("nested deeper"), std::string::npos) << error;

  std::string xml = "<plist>";
  for (int i = 0; i < 5000; ++i) xml += "<array>";
  for (int i = 0; i < 5000; ++i) xml += "</array>";
  xml += "</plist>";
  EXPECT_FALSE(ParsePropertyList(xml, &error));
}

TEST(PlistIo, ControlCharactersAreWrittenAsReplacement) {
  Value v(Dictionary{{"k", "a\x01z"}});
  auto back = ParsePropertyList(ToXmlPropertyList(v));
  ASSERT_TRUE(back);
  EXPECT_EQ(*back->dictionary()->getString("k"), "a\xEF\xBF\xBDz");
}

TEST(PlistIo, UnreadableFileReportsTheSystemError) {
  std::string error;
  EXPECT_FALSE(ReadPropertyListFile("/nonexistent/zorva.plist", &error));
  EXPECT_EQ(error, "No such file or directory");
}

}  // namespace
}  // namespace zorva

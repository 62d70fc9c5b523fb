// Type 42 conversion: small fonts built here against golden files, the
// encoding and glyph-name rules, where the sfnts strings split and break their
// lines, refusals of malformed, lying and cut fonts, real Debian fonts, and
// Ghostscript drawing text with the programs we write.
#include "watermarks/type42.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "core/file_io.h"
#include "support/test_support.h"
#include "watermarks/glyph_lists.h"
#include "watermarks/tiny_font.h"

namespace zorva::test {
namespace {

constexpr const char* kDejaVuSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
constexpr const char* kLiberationSans =
    "/usr/share/fonts/truetype/liberation2/LiberationSans-Regular.ttf";
constexpr const char* kDroidFallback = "/usr/share/fonts/truetype/droid/DroidSansFallbackFull.ttf";

struct Converted {
  Type42Result result;
  std::string program;
  std::string diagnostics;
};

Converted Convert(const Bytes& font, std::string_view name = "TinyFont", bool split = false,
                  std::string program = {}) {
  Converted c;
  c.program = std::move(program);
  std::ostringstream diagnostics;
  Type42Options options;
  options.splitLargeTables = split;
  c.result = convertTTFtoPS42(font, name, c.program, options, &diagnostics);
  c.diagnostics = diagnostics.str();
  return c;
}

// A real font from a Debian package, or nullopt when it is not installed.
std::optional<Bytes> SystemFont(const char* path) {
  auto bytes = ReadWholeFile(path);
  if (!bytes) return std::nullopt;
  return Bytes(bytes->begin(), bytes->end());
}

// The sfnts strings of a program, checked as it is read: every byte two hex
// digits, a line end exactly after the bytes at font offsets p with
// (p + 2k) mod 30 = 29 in string k, and each string closed by "00>".
// Returns the data of each string without its padding byte.
std::vector<Bytes> ReadSfnts(const std::string& program) {
  std::vector<Bytes> strings;
  std::size_t at = program.find("/sfnts [\n");
  if (at == std::string::npos) {
    ADD_FAILURE() << "no sfnts array";
    return strings;
  }
  at += 9;
  std::uint64_t offset = 0;
  while (at < program.size() && program[at] == '<') {
    const std::size_t k = strings.size();
    Bytes data;
    ++at;
    while (program.compare(at, 3, "00>") != 0) {
      if (at + 2 >= program.size()) {
        ADD_FAILURE() << "string " << k << " is not closed";
        return strings;
      }
      const std::string pair = program.substr(at, 2);
      EXPECT_EQ(pair.find_first_not_of("0123456789ABCDEF"), std::string::npos) << pair;
      data.push_back(static_cast<std::uint8_t>(std::stoul(pair, nullptr, 16)));
      at += 2;
      const bool wantBreak = (offset + 2 * k) % 30 == 29;
      EXPECT_EQ(program[at] == '\n', wantBreak) << "after font byte " << offset << ", string " << k;
      if (program[at] == '\n') ++at;
      ++offset;
    }
    at += 3;
    strings.push_back(std::move(data));
  }
  return strings;
}

Bytes Joined(const std::vector<Bytes>& strings) {
  Bytes all;
  for (const Bytes& s : strings) all.insert(all.end(), s.begin(), s.end());
  return all;
}

std::string EncodingLine(const std::string& program, int code) {
  const std::string key = "dup " + std::to_string(code) + " /";
  const std::size_t at = program.find(key);
  if (at == std::string::npos) return "";
  return program.substr(at + key.size(), program.find(" put\n", at) - at - key.size());
}

// Compares with the golden file; ZORVA_UPDATE_GOLDEN=1 rewrites it instead
// (check the new file by hand before committing it).
void ExpectGolden(const std::string& program, const std::string& name) {
  const std::filesystem::path golden = TestData("type42/" + name);
  if (std::getenv("ZORVA_UPDATE_GOLDEN")) WriteText(golden, program);
  EXPECT_EQ(program, ReadText(golden)) << name;
}

// post 2.0: glyph 0 .notdef, 1 A, 2 space, 3 "Euro" and 4 "snowman" from the
// Pascal strings, 5 "Euro" again.
FontSpec NamedGlyphsSpec() {
  FontSpec s;
  s.nameIndices = {0, 36, 3, 258, 259, 258};
  s.extraNames = {"Euro", "snowman"};
  s.glyphSizes = {8, 12, 0, 6, 10, 4};
  s.minMem = 4096;
  s.maxMem = 65536;
  return s;
}

TEST(Type42, Post2NamesAndEncoding) {
  const BuiltFont font = BuildFont(NamedGlyphsSpec());
  const Converted c = Convert(font.bytes);
  EXPECT_TRUE(c.result.complete());
  EXPECT_EQ(c.diagnostics, "");
  ExpectGolden(c.program, "post2-short-loca.t42");
  // Standard codes the font has keep their names; the others take glyph 0's.
  EXPECT_EQ(EncodingLine(c.program, 65), "A");
  EXPECT_EQ(EncodingLine(c.program, 66), ".notdef");
  // Unencoded glyphs fill the first free codes from 32 up, once each.
  EXPECT_EQ(EncodingLine(c.program, 33), "Euro");
  EXPECT_EQ(EncodingLine(c.program, 34), "snowman");
  EXPECT_EQ(EncodingLine(c.program, 35), ".notdef");
  EXPECT_NE(c.program.find("/CharStrings 6 dict dup begin\n/.notdef 0 def\n/A 1 def\n/space 2 def\n"
                           "/Euro 3 def\n/snowman 4 def\n/Euro 5 def\nend readonly def\n"),
            std::string::npos);
  // A font under 65534 bytes is one string, the whole file.
  const std::vector<Bytes> strings = ReadSfnts(c.program);
  ASSERT_EQ(strings.size(), 1u);
  EXPECT_EQ(strings[0], font.bytes);
}

TEST(Type42, Post3KeepsStandardEncodingAndEmptyCharStrings) {
  FontSpec s;
  s.postFormat = 0x00030000;
  s.longLoca = true;
  s.glyphSizes = {7, 13, 0, 5};  // odd lengths need the long form
  s.revision = 0x00020000;
  s.bbox[0] = -1;
  const Converted c = Convert(BuildFont(s).bytes, "Tiny-Three");
  ASSERT_TRUE(c.result.complete());
  ExpectGolden(c.program, "post3-long-loca.t42");
  for (int code = 0; code < 256; ++code) {
    EXPECT_EQ(EncodingLine(c.program, code), StandardEncodings[code]) << code;
  }
  EXPECT_NE(c.program.find("/CharStrings 4 dict dup begin\nend readonly def\n"), std::string::npos);
  EXPECT_EQ(c.program.find("VMUsage"), std::string::npos);
}

// Missing tables, bad magic, and fonts that lie about where their data is:
// refused, nothing appended, nothing read outside the buffer (the sanitizer
// build checks that part). The converter's own stream carries only its two
// messages; every other reason is in the result alone.
TEST(Type42, MalformedFontsAreRefused) {
  const BuiltFont base = BuildFont(NamedGlyphsSpec());
  const std::size_t post = base.offsets.at("post");
  const std::size_t locaRecord = 12 + 16 * 4;  // head maxp post name loca glyf
  const std::string missing = "DEBUG: Malformed TrueType file - missing vital table.\n";
  struct Case {
    std::string what;
    Bytes bytes;
    std::string diagnostic;
  };
  std::vector<Case> cases;
  auto spec = [&](std::string what, std::string diagnostic, auto change) {
    FontSpec s = NamedGlyphsSpec();
    change(s);
    cases.push_back({std::move(what), BuildFont(s).bytes, std::move(diagnostic)});
  };
  auto bytes = [&](std::string what, auto change) {
    Bytes b = base.bytes;
    change(b);
    cases.push_back({std::move(what), std::move(b), ""});
  };
  for (const char* tag : {"maxp", "head", "post", "name"}) {
    spec(tag, missing, [&](FontSpec& s) { s.omit = {tag}; });
  }
  spec("magic", "DEBUG: Malformed TrueType file - Bad magic number\n",
       [](FontSpec& s) { s.magic = 0x5F0F3CF6; });
  spec("glyph counts", "", [](FontSpec& s) { s.glyphSizes.push_back(2); });
  spec("name format", "", [](FontSpec& s) { s.nameFormat = 1; });
  bytes("table count", [](Bytes& b) { Set16(b, 4, 0xFFFF); });
  bytes("head offset", [](Bytes& b) { Set32(b, 12 + 8, 0xFFFFFFF0); });
  bytes("post name index", [&](Bytes& b) { Set16(b, post + 34 + 2 * 4, 0xFFFF); });
  bytes("Pascal string", [&](Bytes& b) { b.resize(post + 34 + 2 * 6 + 5 + 3); });
  bytes("loca offset", [&](Bytes& b) { Set32(b, locaRecord + 8, 0x7FFFFFF0); });
  bytes("units per em", [&](Bytes& b) { Set16(b, base.offsets.at("head") + 18, 0); });
  for (const Case& k : cases) {
    const Converted c = Convert(k.bytes, "TinyFont", false, "kept");
    EXPECT_EQ(c.result.status, Type42Status::kMalformed) << k.what;
    EXPECT_FALSE(c.result.message.empty()) << k.what;
    EXPECT_EQ(c.diagnostics, k.diagnostic) << k.what;
    EXPECT_EQ(c.program, "kept") << k.what;
  }
  EXPECT_EQ(Convert(cases.back().bytes).result.message,
            "Malformed TrueType file - units per em is 0");
}

TEST(Type42, EveryTruncationIsSafe) {
  const BuiltFont base = BuildFont(NamedGlyphsSpec());
  for (std::size_t size = 0; size < base.bytes.size(); ++size) {
    const Bytes cut(base.bytes.begin(), base.bytes.begin() + static_cast<long>(size));
    const Converted c = Convert(cut);
    if (c.result.status == Type42Status::kMalformed) {
      EXPECT_EQ(c.program, "") << size;
    } else {
      // Only glyph data was lost, which is copied, not read.
      EXPECT_TRUE(c.result.complete()) << size;
      EXPECT_EQ(Joined(ReadSfnts(c.program)), cut) << size;
    }
  }
}

TEST(Type42, OneStringHoldsFewerThan65534Bytes) {
  FontSpec s;
  s.postFormat = 0x00030000;
  s.glyphSizes = {60000};
  BuiltFont font = BuildFont(s);
  font.bytes.resize(65533, 0);  // trailing bytes after the last table
  EXPECT_EQ(ReadSfnts(Convert(font.bytes).program).size(), 1u);
  font.bytes.push_back(0);
  const std::vector<Bytes> strings = ReadSfnts(Convert(font.bytes).program);
  ASSERT_EQ(strings.size(), 2u);
  EXPECT_EQ(strings[0].size(), font.offsets.at("glyf"));
}

// Where each string of a large font should end, by the rule: the last split
// point within 65534 bytes, where split points are table starts and glyph
// starts on 4-byte boundaries.
std::vector<std::uint64_t> ExpectedEnds(const BuiltFont& font, const FontSpec& spec) {
  std::vector<std::uint64_t> points;
  for (const auto& [tag, offset] : font.offsets) points.push_back(offset);
  std::uint64_t at = font.offsets.at("glyf");
  for (std::uint32_t size : spec.glyphSizes) {
    if (at % 4 == 0) points.push_back(at);
    at += size;
  }
  std::vector<std::uint64_t> ends;
  for (std::uint64_t pos = 0; pos < font.bytes.size(); pos = ends.back()) {
    std::uint64_t end = font.bytes.size();
    if (end - pos >= 65534) {
      end = 0;
      for (std::uint64_t p : points) {
        if (p > pos && p <= pos + 65534 && p > end) end = p;
      }
      if (end == 0) break;
    }
    ends.push_back(end);
  }
  return ends;
}

TEST(Type42, SplitsAtGlyphStartsForShortAndLongLoca) {
  // Short: every other glyph starts on a 4-byte boundary; long: every fourth.
  for (const bool longLoca : {false, true}) {
    FontSpec s;
    s.postFormat = 0x00030000;
    s.longLoca = longLoca;
    s.glyphSizes.assign(40, longLoca ? 4001 : 4002);
    const BuiltFont font = BuildFont(s);
    const Converted c = Convert(font.bytes);
    ASSERT_TRUE(c.result.complete()) << longLoca;
    const std::vector<Bytes> strings = ReadSfnts(c.program);
    EXPECT_EQ(Joined(strings), font.bytes);
    std::vector<std::uint64_t> ends;
    std::uint64_t end = 0;
    for (const Bytes& str : strings) ends.push_back(end += str.size());
    EXPECT_EQ(ends, ExpectedEnds(font, s)) << longLoca;
    EXPECT_GE(ends.size(), 3u);
  }
}

TEST(Type42, LargeTableStopsTheProgramUnlessSplit) {
  FontSpec s;
  s.postFormat = 0x00030000;
  Bytes gpos(70000);
  for (std::size_t i = 0; i < gpos.size(); ++i) gpos[i] = static_cast<std::uint8_t>(i * 31);
  s.extraTables = {{"GPOS", gpos}};
  s.glyphSizes.assign(20, 5000);
  const BuiltFont font = BuildFont(s);
  const Converted c = Convert(font.bytes);
  EXPECT_EQ(c.result.status, Type42Status::kIncomplete);
  EXPECT_EQ(c.result.table, "GPOS");
  EXPECT_EQ(c.result.tableLength, 70000u);
  EXPECT_EQ(c.result.stopOffset, font.offsets.at("GPOS"));
  EXPECT_EQ(c.diagnostics, "");
  // Everything up to the table is there; nothing after the last string.
  const std::vector<Bytes> strings = ReadSfnts(c.program);
  ASSERT_EQ(strings.size(), 1u);
  EXPECT_EQ(strings[0].size(), font.offsets.at("GPOS"));
  EXPECT_TRUE(c.program.ends_with("00>"));

  const Converted split = Convert(font.bytes, "TinyFont", true);
  EXPECT_TRUE(split.result.complete());
  const std::vector<Bytes> parts = ReadSfnts(split.program);
  EXPECT_EQ(Joined(parts), font.bytes);
  for (std::size_t k = 0; k + 1 < parts.size(); ++k) {
    EXPECT_EQ(parts[k].size() % 4, 0u) << k;
    EXPECT_LE(parts[k].size(), 65534u) << k;
  }
  EXPECT_EQ(split.program.rfind(c.program, 0), 0u) << "the same program up to the cut";
}

// Real fonts: whole in one go, or stopped at a table too long for one string
// unless split, and then only on 4-byte boundaries.
TEST(Type42RealFonts, ConvertWholeOrSplitOnFourByteBoundaries) {
  const std::vector<std::pair<const char*, std::string>> fonts = {
      {kDejaVuSans, ""}, {kLiberationSans, "GPOS"}, {kDroidFallback, "hmtx"}};
  for (const auto& [path, table] : fonts) {
    const std::optional<Bytes> font = SystemFont(path);
    if (!font) continue;  // the Ghostscript tests name the packages
    const Converted c = Convert(*font, "Real");
    EXPECT_EQ(c.result.complete(), table.empty()) << path;
    EXPECT_EQ(c.result.table, table);
    const Converted split = Convert(*font, "Real", true);
    ASSERT_TRUE(split.result.complete()) << path;
    EXPECT_EQ(split.program == c.program, table.empty()) << "splits only what needs it";
    const std::vector<Bytes> strings = ReadSfnts(split.program);
    EXPECT_EQ(Joined(strings), *font);
    for (std::size_t k = 0; k + 1 < strings.size(); ++k) EXPECT_EQ(strings[k].size() % 4, 0u);
  }
}

// ---- Ghostscript ----

bool HaveGhostscript() {
  return RunProgram("gs", {"--version"}).exitCode == 0;
}

struct Page {
  std::string out;     // what the PostScript printed
  std::string pixels;  // 8-bit grey, 0 black
};

// Runs the files through Ghostscript and renders the page as grey pixels.
Page Render(const std::vector<std::string>& files, const std::vector<std::string>& extra = {}) {
  TempDir dir;
  const std::string image = (dir / "page.pgm").string();
  std::vector<std::string> args = {"-q",   "-dNOSAFER", "-dBATCH",         "-dNOPAUSE",
                                   "-r72", "-g400x100", "-sDEVICE=pgmraw", "-sOutputFile=" + image};
  args.insert(args.end(), extra.begin(), extra.end());
  args.insert(args.end(), files.begin(), files.end());
  const ToolResult r = RunProgram("gs", args);
  EXPECT_EQ(r.exitCode, 0) << r.err << r.out;
  Page page{r.out, {}};
  const std::string pgm = ReadText(image);
  std::size_t at = 0;
  for (int line = 0; line < 3 && at != std::string::npos; ++line) at = pgm.find('\n', at) + 1;
  if (at != std::string::npos) page.pixels = pgm.substr(at);
  return page;
}

// Draws text with the font on the stack; glyphs maps names to glyph indices
// when the font's own CharStrings should be replaced.
std::string DrawScript(const std::string& text, const std::string& glyphs = "") {
  std::string ps = "dup /FontType get =\n";
  if (!glyphs.empty()) {
    ps += "dup length 1 add dict copy begin /CharStrings << /.notdef 0 " + glyphs +
          " >> def /Encoding StandardEncoding def currentdict end /Probe exch definefont\n";
  }
  return ps + "40 scalefont setfont 10 30 moveto (" + text + ") show showpage\n";
}

// Our program for the font, loaded and checked to define a Type 42 font that
// draws ink, against Ghostscript reading the TrueType file itself: same pixels.
void ExpectDrawsLikeTheFontFile(const char* file, const std::string& name, bool split,
                                const std::string& text, const std::string& glyphs = "") {
  const std::optional<Bytes> font = SystemFont(file);
  if (!font || !HaveGhostscript()) {
    GTEST_SKIP() << "needs Ghostscript and " << file << ": install the Debian packages "
                 << "ghostscript, fonts-dejavu-core, fonts-droid-fallback (scripts/setup does)";
  }
  TempDir dir;
  std::string program;
  Type42Options options;
  options.splitLargeTables = split;
  ASSERT_TRUE(convertTTFtoPS42(*font, name, program, options).complete());
  WriteText(dir / "font.t42", program);
  const std::string find = "/" + name + " findfont\n";
  WriteText(dir / "ours.ps",
            "FontDirectory /" + name + " known =\n" + find + DrawScript(text, glyphs));
  WriteText(dir / "file.ps", find + DrawScript(text, glyphs));

  const Page ours = Render({(dir / "font.t42").string(), (dir / "ours.ps").string()});
  EXPECT_EQ(ours.out, "true\n42\n");
  EXPECT_GT(std::count_if(ours.pixels.begin(), ours.pixels.end(),
                          [](char c) { return static_cast<unsigned char>(c) < 128; }),
            200);
  const std::string fontPath = "-sFONTPATH=" + std::filesystem::path(file).parent_path().string();
  const Page reference = Render({(dir / "file.ps").string()}, {fontPath});
  EXPECT_EQ(reference.out, "42\n") << "Ghostscript did not load the font file itself";
  EXPECT_TRUE(ours.pixels == reference.pixels) << "the glyphs differ from the font file's";
}

// DroidSansFallbackFull's glyphs start at odd offsets, so glyph boundaries
// make odd-length strings, whose padding byte Ghostscript then takes for font
// data: every glyph after the first such string is read from the wrong place.
// Split mode cuts only on 4-byte boundaries. Its "post" table has no glyph
// names, so the test names some glyphs itself.
TEST(Type42Ghostscript, DejaVuSansAndSplitDroidFallbackDrawText) {
  ExpectDrawsLikeTheFontFile(kDejaVuSans, "DejaVuSans", false, "Hello, World!");
  ExpectDrawsLikeTheFontFile(kDroidFallback, "DroidSansFallback", true, "abcde",
                             "/a 100 /b 1000 /c 5000 /d 20000 /e 40000");
}

TEST(Type42Ghostscript, StandardEncodingMatchesTheInterpreter) {
  if (!HaveGhostscript()) GTEST_SKIP() << "gs not found: install the Debian package ghostscript";
  TempDir dir;
  WriteText(dir / "enc.ps", "StandardEncoding { = } forall\n");
  const ToolResult r =
      RunProgram("gs", {"-q", "-dNOSAFER", "-dBATCH", "-dNODISPLAY", (dir / "enc.ps").string()});
  std::string ours;
  for (std::string_view name : StandardEncodings) (ours += name) += '\n';
  EXPECT_EQ(r.out, ours);
}

}  // namespace
}  // namespace zorva::test

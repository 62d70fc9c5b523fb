// Type 42 conversion: the program text of small fonts built here against
// golden files, the encoding and glyph-name rules, where the sfnts strings
// split and break their lines, refusals of malformed and lying fonts, real
// Debian fonts, and Ghostscript drawing text with the programs we write.
#include "watermarks/type42.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
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

#define REQUIRE_FONT(var, path, package)                                     \
  const std::optional<Bytes> var = SystemFont(path);                         \
  if (!var)                                                                  \
  GTEST_SKIP() << path << " is missing: install the Debian package " package \
               << " (scripts/setup does)"

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  ADD_FAILURE() << "not an upper-case hex digit: " << c;
  return 0;
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
      data.push_back(
          static_cast<std::uint8_t>(HexDigit(program[at]) * 16 + HexDigit(program[at + 1])));
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

std::string GoldenPath(const std::string& name) {
  return TestData("type42/" + name).string();
}

// Compares with the golden file; ZORVA_UPDATE_GOLDEN=1 rewrites it instead
// (check the new file by hand before committing it).
void ExpectGolden(const std::string& program, const std::string& name) {
  if (std::getenv("ZORVA_UPDATE_GOLDEN")) {
    std::filesystem::create_directories(std::filesystem::path(GoldenPath(name)).parent_path());
    WriteText(GoldenPath(name), program);
    return;
  }
  EXPECT_EQ(program, ReadText(GoldenPath(name))) << name;
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

TEST(Type42, Post2FontMatchesGolden) {
  const BuiltFont font = BuildFont(NamedGlyphsSpec());
  const Converted c = Convert(font.bytes);
  EXPECT_TRUE(c.result.complete());
  EXPECT_EQ(c.diagnostics, "");
  ExpectGolden(c.program, "post2-short-loca.t42");
}

TEST(Type42, Post3FontMatchesGolden) {
  FontSpec s;
  s.postFormat = 0x00030000;
  s.longLoca = true;
  s.glyphSizes = {7, 13, 0, 5};  // odd lengths need the long form
  s.revision = 0x00020000;
  s.bbox[0] = -1;
  const Converted c = Convert(BuildFont(s).bytes, "Tiny-Three");
  EXPECT_TRUE(c.result.complete());
  ExpectGolden(c.program, "post3-long-loca.t42");
}

TEST(Type42, Post2NamesAndEncoding) {
  const Converted c = Convert(BuildFont(NamedGlyphsSpec()).bytes);
  // Standard codes the font has keep their names; the others take glyph 0's.
  EXPECT_EQ(EncodingLine(c.program, 65), "A");
  EXPECT_EQ(EncodingLine(c.program, 32), "space");
  EXPECT_EQ(EncodingLine(c.program, 66), ".notdef");
  // Unencoded glyphs fill the first free codes from 32 up, once each.
  EXPECT_EQ(EncodingLine(c.program, 33), "Euro");
  EXPECT_EQ(EncodingLine(c.program, 34), "snowman");
  EXPECT_EQ(EncodingLine(c.program, 35), ".notdef");
  EXPECT_NE(c.program.find("/CharStrings 6 dict dup begin\n/.notdef 0 def\n/A 1 def\n/space 2 def\n"
                           "/Euro 3 def\n/snowman 4 def\n/Euro 5 def\nend readonly def\n"),
            std::string::npos);
  EXPECT_NE(c.program.find("%%VMUsage: 4096 65536\n"), std::string::npos);
}

TEST(Type42, GlyphZeroNameFillsUnknownCodesButCharStringsSayNotdef) {
  FontSpec s = NamedGlyphsSpec();
  s.nameIndices = {260, 36, 3, 258, 259, 258};
  s.extraNames = {"Euro", "snowman", "missing"};
  const Converted c = Convert(BuildFont(s).bytes);
  EXPECT_EQ(EncodingLine(c.program, 0), "missing");
  EXPECT_EQ(EncodingLine(c.program, 66), "missing");
  EXPECT_EQ(EncodingLine(c.program, 65), "A");
  // No ".notdef" code is left, so the extra names find no code.
  EXPECT_EQ(c.program.find("/Euro put"), std::string::npos);
  EXPECT_NE(c.program.find("begin\n/.notdef 0 def\n/A 1 def\n"), std::string::npos);
}

TEST(Type42, Post3KeepsStandardEncodingAndEmptyCharStrings) {
  FontSpec s;
  s.postFormat = 0x00030000;
  const Converted c = Convert(BuildFont(s).bytes);
  ASSERT_TRUE(c.result.complete());
  for (int code = 0; code < 256; ++code) {
    EXPECT_EQ(EncodingLine(c.program, code), StandardEncodings[code]) << code;
  }
  EXPECT_NE(c.program.find("/CharStrings 3 dict dup begin\nend readonly def\n"), std::string::npos);
  EXPECT_EQ(c.program.find("VMUsage"), std::string::npos);
}

TEST(Type42, EncodingCloseSharesItsLineWithPaintType) {
  const Converted c = Convert(BuildFont(FontSpec{}).bytes);
  EXPECT_NE(c.program.find("dup 255 /.notdef put\nreadonly def/PaintType 0 def\n/FontMatrix"),
            std::string::npos);
}

TEST(Type42, BoundingBoxIsFixedPointPerEm) {
  FontSpec s;
  s.unitsPerEm = 1000;
  s.bbox[0] = -333;  // -333 * 65536 / 1000 truncates toward zero: -21823
  s.bbox[1] = 1;     // 65 / 65536
  s.bbox[2] = 32767;
  s.bbox[3] = -32768;
  const Converted c = Convert(BuildFont(s).bytes);
  EXPECT_NE(c.program.find("/FontBBox [-0.332993 0.000992 32.766998 -32.767990] def\n"),
            std::string::npos)
      << c.program.substr(c.program.find("/FontBBox"), 80);
}

TEST(Type42, LongFontNamesAreCutTo511BytesOnACharacterBoundary) {
  const std::string name = std::string(510, 'N') + "\xC3\xA9tail";
  const Converted c = Convert(BuildFont(FontSpec{}).bytes, name);
  EXPECT_NE(c.program.find("/FontName /" + std::string(510, 'N') + " def\n"), std::string::npos);
}

TEST(Type42, OutputIsAppended) {
  const Converted c = Convert(BuildFont(FontSpec{}).bytes, "TinyFont", false, "%prefix\n");
  EXPECT_EQ(c.program.rfind("%prefix\n%!PS-TrueTypeFont-1.0000-1.5000\n", 0), 0u);
}

TEST(Type42, MissingVitalTablesAreReported) {
  for (const char* tag : {"maxp", "head", "post", "name"}) {
    FontSpec s;
    s.omit = {tag};
    const Converted c = Convert(BuildFont(s).bytes, "TinyFont", false, "kept");
    EXPECT_EQ(c.result.status, Type42Status::kMalformed) << tag;
    EXPECT_EQ(c.diagnostics, "DEBUG: Malformed TrueType file - missing vital table.\n") << tag;
    EXPECT_EQ(c.program, "kept") << tag;
  }
  FontSpec s;
  s.omit = {"loca", "glyf"};  // only used for split points
  EXPECT_TRUE(Convert(BuildFont(s).bytes).result.complete());
}

TEST(Type42, BadMagicNumberIsReported) {
  FontSpec s;
  s.magic = 0x5F0F3CF6;
  const Converted c = Convert(BuildFont(s).bytes);
  EXPECT_EQ(c.result.status, Type42Status::kMalformed);
  EXPECT_EQ(c.diagnostics, "DEBUG: Malformed TrueType file - Bad magic number\n");
  EXPECT_EQ(c.program, "");
}

TEST(Type42, QuietRefusals) {
  FontSpec counts = NamedGlyphsSpec();
  counts.glyphSizes.push_back(2);  // maxp now says 7, post names 6
  FontSpec format;
  format.nameFormat = 1;
  for (const FontSpec& s : {counts, format}) {
    const Converted c = Convert(BuildFont(s).bytes);
    EXPECT_EQ(c.result.status, Type42Status::kMalformed);
    EXPECT_FALSE(c.result.message.empty());
    EXPECT_EQ(c.diagnostics, "");
    EXPECT_EQ(c.program, "");
  }
}

// Fonts that lie about where their data is, or are cut short: refused with a
// diagnostic, nothing appended, nothing read outside the buffer (the
// sanitizer build checks the last part).
TEST(Type42, LyingFontsAreRefused) {
  const BuiltFont base = BuildFont(NamedGlyphsSpec());
  const std::size_t post = base.offsets.at("post");
  const std::size_t head = base.offsets.at("head");
  const std::size_t locaRecord = 12 + 16 * 4;  // head maxp post name loca glyf
  std::vector<std::pair<std::string, Bytes>> cases;
  auto add = [&](std::string what, auto change) {
    Bytes b = base.bytes;
    change(b);
    cases.emplace_back(std::move(what), std::move(b));
  };
  add("table count", [](Bytes& b) { Set16(b, 4, 0xFFFF); });
  add("head offset", [](Bytes& b) { Set32(b, 12 + 8, 0xFFFFFFF0); });
  add("post name index", [&](Bytes& b) { Set16(b, post + 34 + 2 * 4, 0xFFFF); });
  add("Pascal string length", [&](Bytes& b) {
    b.resize(post + 34 + 2 * 6 + 5 + 3);  // cut inside "snowman"
  });
  add("loca offset", [&](Bytes& b) { Set32(b, locaRecord + 8, 0x7FFFFFF0); });
  add("units per em", [&](Bytes& b) { Set16(b, head + 18, 0); });
  for (const auto& [what, bytes] : cases) {
    const Converted c = Convert(bytes, "TinyFont", false, "kept");
    EXPECT_EQ(c.result.status, Type42Status::kMalformed) << what;
    EXPECT_EQ(c.diagnostics.rfind("DEBUG: Malformed TrueType file - ", 0), 0u) << what;
    EXPECT_EQ(std::count(c.diagnostics.begin(), c.diagnostics.end(), '\n'), 1) << c.diagnostics;
    EXPECT_EQ(c.program, "kept") << what;
  }
  EXPECT_NE(Convert(cases[5].second).diagnostics.find("units per em is 0"), std::string::npos);
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

TEST(Type42, SmallFontIsOneString) {
  const BuiltFont font = BuildFont(NamedGlyphsSpec());
  const Converted c = Convert(font.bytes);
  const std::vector<Bytes> strings = ReadSfnts(c.program);
  ASSERT_EQ(strings.size(), 1u);
  EXPECT_EQ(strings[0], font.bytes);
  EXPECT_NE(c.program.find("00>] def\n/CharStrings"), std::string::npos);
}

TEST(Type42, OneStringHoldsFewerThan65534Bytes) {
  FontSpec s;
  s.postFormat = 0x00030000;
  s.glyphSizes = {60000};
  BuiltFont font = BuildFont(s);
  ASSERT_LT(font.bytes.size(), 65533u);
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
  std::uint64_t pos = 0;
  while (pos < font.bytes.size()) {
    std::uint64_t end = font.bytes.size();
    if (font.bytes.size() - pos >= 65534) {
      end = 0;
      for (std::uint64_t p : points) {
        if (p > pos && p <= pos + 65534 && p > end) end = p;
      }
      if (end == 0) break;
    }
    ends.push_back(end);
    pos = end;
  }
  return ends;
}

void ExpectSplitsAtGlyphStarts(const FontSpec& spec) {
  const BuiltFont font = BuildFont(spec);
  const Converted c = Convert(font.bytes);
  ASSERT_TRUE(c.result.complete());
  const std::vector<Bytes> strings = ReadSfnts(c.program);
  EXPECT_EQ(Joined(strings), font.bytes);
  std::vector<std::uint64_t> ends;
  std::uint64_t end = 0;
  for (const Bytes& s : strings) ends.push_back(end += s.size());
  EXPECT_EQ(ends, ExpectedEnds(font, spec));
  EXPECT_GE(ends.size(), 3u);
}

TEST(Type42, ShortLocaSplitPoints) {
  FontSpec s;
  s.postFormat = 0x00030000;
  s.glyphSizes.assign(40, 4002);  // every other glyph starts on a 4-byte boundary
  ExpectSplitsAtGlyphStarts(s);
}

TEST(Type42, LongLocaSplitPoints) {
  FontSpec s;
  s.postFormat = 0x00030000;
  s.longLoca = true;
  s.glyphSizes.assign(40, 4001);  // every fourth glyph starts on a 4-byte boundary
  ExpectSplitsAtGlyphStarts(s);
}

FontSpec LargeTableSpec() {
  FontSpec s;
  s.postFormat = 0x00030000;
  Bytes gpos(70000);
  for (std::size_t i = 0; i < gpos.size(); ++i) gpos[i] = static_cast<std::uint8_t>(i * 31);
  s.extraTables = {{"GPOS", gpos}};
  s.glyphSizes.assign(20, 5000);
  return s;
}

TEST(Type42, LargeTableLeavesTheProgramIncomplete) {
  const BuiltFont font = BuildFont(LargeTableSpec());
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
  EXPECT_TRUE(c.program.ends_with("00>")) << c.program.substr(c.program.size() - 10);
}

TEST(Type42, SplittingLargeTablesCompletesTheProgram) {
  const BuiltFont font = BuildFont(LargeTableSpec());
  const Converted c = Convert(font.bytes, "TinyFont", true);
  EXPECT_TRUE(c.result.complete());
  const std::vector<Bytes> strings = ReadSfnts(c.program);
  EXPECT_EQ(Joined(strings), font.bytes);
  for (std::size_t k = 0; k + 1 < strings.size(); ++k) {
    EXPECT_EQ(strings[k].size() % 4, 0u) << k;
    EXPECT_LE(strings[k].size(), 65534u) << k;
  }
  // Up to the cut the program is the default mode's.
  const Converted unsplit = Convert(font.bytes);
  EXPECT_EQ(c.program.rfind(unsplit.program, 0), 0u);
}

TEST(Type42, StreamedProgramIsTheBufferedOne) {
  const BuiltFont font = BuildFont(LargeTableSpec());
  for (const bool split : {false, true}) {
    Type42Options options;
    options.splitLargeTables = split;
    std::string streamed;
    std::size_t pieces = 0;
    const Type42Result result = convertTTFtoPS42(
        font.bytes, "TinyFont",
        [&](std::string_view piece) {
          EXPECT_FALSE(piece.empty());
          EXPECT_LE(piece.size(), 65536u + 2 * 65534u + 4096u);
          streamed += piece;
          ++pieces;
        },
        options, nullptr);
    const Converted buffered = Convert(font.bytes, "TinyFont", split);
    EXPECT_EQ(result.status, buffered.result.status) << split;
    EXPECT_EQ(streamed, buffered.program) << split;
    EXPECT_GE(pieces, split ? 2u : 1u);
  }
}

TEST(Type42, GlyphNameListsHaveTheirFixedEntries) {
  EXPECT_EQ(macGlyphEncoding[2], "CR");
  EXPECT_EQ(macGlyphEncoding[36], "A");
  EXPECT_EQ(macGlyphEncoding[257], "dcroat");
  EXPECT_EQ(StandardEncodings[39], "quoteright");
  EXPECT_EQ(StandardEncodings[251], "germandbls");
}

TEST(Type42, FindTableTakesTheFirstRecord) {
  FontSpec s;
  s.extraTables = {{"head", Bytes(54, 0)}};  // a second "head", all zero
  const BuiltFont font = BuildFont(s);
  const std::vector<TableRecord> directory = ReadTableDirectory(font.bytes);
  const TableRecord* head = find_table("head", directory);
  ASSERT_NE(head, nullptr);
  EXPECT_EQ(head, &directory[0]);
  EXPECT_EQ(find_table("GSUB", directory), nullptr);
  EXPECT_EQ(find_table("hea", directory), nullptr);
  EXPECT_TRUE(Convert(font.bytes).result.complete()) << "the zero magic is never seen";
}

TEST(Type42, PostScriptNameFromTheNameTable) {
  FontSpec s;
  s.postScriptName = "Tiny Font(Bold)";  // delimiters and spaces do not survive
  const BuiltFont font = BuildFont(s);
  EXPECT_EQ(ReadPostScriptName(font.bytes), "TinyFontBold");
  Bytes cut = font.bytes;
  cut.resize(font.offsets.at("name") + 20);
  EXPECT_EQ(ReadPostScriptName(cut), "");
  FontSpec none;
  none.omit = {"name"};
  EXPECT_EQ(ReadPostScriptName(BuildFont(none).bytes), "");
}

TEST(Type42RealFonts, DejaVuSansConvertsWhole) {
  REQUIRE_FONT(font, kDejaVuSans, "fonts-dejavu-core");
  const Converted c = Convert(*font, ReadPostScriptName(*font));
  ASSERT_TRUE(c.result.complete());
  EXPECT_EQ(c.program.rfind("%!PS-TrueTypeFont-1.0000-2.3700\n11 dict begin\n"
                            "/FontName /DejaVuSans def\n",
                            0),
            0u);
  EXPECT_EQ(Joined(ReadSfnts(c.program)), *font);
  // Glyphs 1 and 2 and "eacute" have no standard code: they take free ones.
  EXPECT_EQ(EncodingLine(c.program, 127), ".null");
  EXPECT_EQ(EncodingLine(c.program, 128), "CR");
  EXPECT_EQ(EncodingLine(c.program, 223), "eacute");
  EXPECT_EQ(EncodingLine(c.program, 233), "Oslash");
  EXPECT_NE(c.program.find("\n/A 36 def\n"), std::string::npos);
  EXPECT_TRUE(c.program.ends_with("end readonly def\nFontName currentdict end definefont pop\n"));
  // Splitting changes nothing in a font that needs no cut.
  EXPECT_EQ(Convert(*font, "DejaVuSans", true).program, c.program);
}

TEST(Type42RealFonts, LiberationSansStopsAtItsPositioningTable) {
  REQUIRE_FONT(font, kLiberationSans, "fonts-liberation2");
  const Converted c = Convert(*font, "LiberationSans");
  EXPECT_EQ(c.result.status, Type42Status::kIncomplete);
  EXPECT_EQ(c.result.table, "GPOS");
  EXPECT_EQ(c.result.tableLength, 76664u);
  const Converted split = Convert(*font, "LiberationSans", true);
  EXPECT_TRUE(split.result.complete());
  EXPECT_EQ(Joined(ReadSfnts(split.program)), *font);
}

TEST(Type42RealFonts, DroidFallbackSplitsOnlyOnFourByteBoundaries) {
  REQUIRE_FONT(font, kDroidFallback, "fonts-droid-fallback");
  const Converted c = Convert(*font, "DroidSansFallback");
  EXPECT_EQ(c.result.status, Type42Status::kIncomplete);
  EXPECT_EQ(c.result.table, "hmtx");
  const Converted split = Convert(*font, "DroidSansFallback", true);
  ASSERT_TRUE(split.result.complete());
  const std::vector<Bytes> strings = ReadSfnts(split.program);
  EXPECT_EQ(Joined(strings), *font);
  for (std::size_t k = 0; k + 1 < strings.size(); ++k) {
    EXPECT_EQ(strings[k].size() % 4, 0u) << k;
  }
}

// ---- Ghostscript ----

bool HaveGhostscript() {
  return RunProgram("gs", {"--version"}).exitCode == 0;
}

#define REQUIRE_GHOSTSCRIPT() \
  if (!HaveGhostscript()) GTEST_SKIP() << "gs not found: install the Debian package ghostscript"

struct Page {
  std::string out;  // what the PostScript printed
  std::string err;
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
  Page page{r.out, r.err, {}};
  const std::string pgm = ReadText(image);
  std::size_t at = 0;
  for (int line = 0; line < 3 && at != std::string::npos; ++line) at = pgm.find('\n', at) + 1;
  if (at != std::string::npos) page.pixels = pgm.substr(at);
  return page;
}

std::size_t Ink(const Page& page) {
  return static_cast<std::size_t>(std::count_if(page.pixels.begin(), page.pixels.end(), [](char c) {
    return static_cast<unsigned char>(c) < 128;
  }));
}

// Draws text with the font on the stack; glyphs maps names to glyph indices
// when the font's own CharStrings should be replaced.
std::string DrawScript(const std::string& text, const std::string& glyphs = "") {
  std::string ps = "dup /FontType get =\n";
  if (!glyphs.empty()) {
    ps += "dup length 1 add dict copy begin /CharStrings << /.notdef 0 " + glyphs +
          " >> def /Encoding StandardEncoding def currentdict end /Probe exch definefont\n";
  }
  ps += "40 scalefont setfont 10 30 moveto (" + text + ") show showpage\n";
  return ps;
}

// Our program for the font, loaded and checked to define a Type 42 font,
// against Ghostscript reading the TrueType file itself: same pixels.
void ExpectDrawsLikeTheFontFile(const Bytes& font, const std::string& file, const std::string& name,
                                bool split, const std::string& text,
                                const std::string& glyphs = "") {
  TempDir dir;
  std::string program;
  Type42Options options;
  options.splitLargeTables = split;
  ASSERT_TRUE(convertTTFtoPS42(font, name, program, options).complete());
  WriteText(dir / "font.t42", program);
  WriteText(dir / "ours.ps", "FontDirectory /" + name + " known =\n/" + name + " findfont\n" +
                                 DrawScript(text, glyphs));
  WriteText(dir / "file.ps", "/" + name + " findfont\n" + DrawScript(text, glyphs));
  WriteText(dir / "notdef.ps", "/" + name + " findfont\n" + DrawScript(text, "/x 0"));

  const Page ours = Render({(dir / "font.t42").string(), (dir / "ours.ps").string()});
  EXPECT_EQ(ours.out, "true\n42\n") << ours.err;
  EXPECT_GT(Ink(ours), 200u);
  const std::string fontPath = "-sFONTPATH=" + std::filesystem::path(file).parent_path().string();
  const Page reference = Render({(dir / "file.ps").string()}, {fontPath});
  EXPECT_EQ(reference.out, "42\n") << "Ghostscript did not load the font file itself";
  EXPECT_TRUE(ours.pixels == reference.pixels) << "the glyphs differ from the font file's";
  const Page notdef = Render({(dir / "font.t42").string(), (dir / "notdef.ps").string()});
  EXPECT_FALSE(ours.pixels == notdef.pixels) << "only .notdef boxes were drawn";
}

TEST(Type42Ghostscript, DejaVuSansDrawsText) {
  REQUIRE_GHOSTSCRIPT();
  REQUIRE_FONT(font, kDejaVuSans, "fonts-dejavu-core");
  ExpectDrawsLikeTheFontFile(*font, kDejaVuSans, "DejaVuSans", false, "Hello, World!");
}

TEST(Type42Ghostscript, SplitLiberationSansDrawsText) {
  REQUIRE_GHOSTSCRIPT();
  REQUIRE_FONT(font, kLiberationSans, "fonts-liberation2");
  ExpectDrawsLikeTheFontFile(*font, kLiberationSans, "LiberationSans", true, "Watermark");
}

// Its glyphs start at odd offsets, so glyph boundaries make odd-length
// strings, whose padding byte Ghostscript then takes for font data: every
// glyph after the first such string is read from the wrong place. Split
// mode cuts only on 4-byte boundaries. The font's "post" table has no glyph
// names, so the test names some glyphs itself.
TEST(Type42Ghostscript, SplitDroidFallbackDrawsText) {
  REQUIRE_GHOSTSCRIPT();
  REQUIRE_FONT(font, kDroidFallback, "fonts-droid-fallback");
  ExpectDrawsLikeTheFontFile(*font, kDroidFallback, "DroidSansFallback", true, "abcde",
                             "/a 100 /b 1000 /c 5000 /d 20000 /e 40000");
}

TEST(Type42Ghostscript, StandardEncodingMatchesTheInterpreter) {
  REQUIRE_GHOSTSCRIPT();
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

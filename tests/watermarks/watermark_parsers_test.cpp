// The pieces the watermark filter reads untrusted input with: where the
// prolog goes in a document, JPEG headers, a font's character map, UTF-8
// text, and the watermark choice in tickets and job options.
#include <gtest/gtest.h>

#include <map>

#include "core/file_io.h"
#include "core/ticket.h"
#include "watermarks/font_cmap.h"
#include "watermarks/jpeg_info.h"
#include "watermarks/type42.h"
#include "watermarks/type42_reader.h"
#include "watermarks/watermark_choice.h"
#include "watermarks/watermark_filter.h"

namespace zorva {
namespace {

TEST(PrologInsertion, Places) {
  struct Case {
    const char* what;
    std::string document;
    std::string before;  // what precedes the prolog
    bool structured;
  };
  const Case cases[] = {
      {"after the document's own %%BeginProlog",
       "%!PS-Adobe-3.0\n%%Pages: 1\n%%EndComments\n%%BeginProlog\n/a 1 def\n",
       "%!PS-Adobe-3.0\n%%Pages: 1\n%%EndComments\n%%BeginProlog\n", true},
      {"after %%EndComments without a prolog", "%!PS-Adobe-3.0\n%%EndComments\nshowpage\n",
       "%!PS-Adobe-3.0\n%%EndComments\n", true},
      {"header ended by its first non-comment line", "%!PS-Adobe-3.0\n%%Title: x\n/a 1 def\n",
       "%!PS-Adobe-3.0\n%%Title: x\n", true},
      {"header ended by %%BeginSetup", "%!PS-Adobe-3.0\n%%Title: x\n%%BeginSetup\n",
       "%!PS-Adobe-3.0\n%%Title: x\n", true},
      {"carriage returns", "%!PS-Adobe-3.0\r%%EndComments\r\n%%BeginProlog\r\nx",
       "%!PS-Adobe-3.0\r%%EndComments\r\n%%BeginProlog\r\n", true},
      {"no page structure comments", "%!\n/a 1 def showpage\n", "%!\n", false},
      {"a leading Control-D", "\x04%!PS\nshowpage\n", "\x04%!PS\n", false},
      {"one line without an end", "%!PS-Adobe-3.0", "%!PS-Adobe-3.0", true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const auto at = FindPrologInsertion(c.document);
    ASSERT_TRUE(at.has_value());
    EXPECT_EQ(c.document.substr(0, at->offset), c.before);
    EXPECT_EQ(at->structured, c.structured);
  }
  EXPECT_FALSE(FindPrologInsertion("%PDF-1.4\n").has_value());
  EXPECT_FALSE(FindPrologInsertion("").has_value());
}

TEST(PrologInsertion, HeaderLongerThanTheHeadKeepsItsComments) {
  std::string doc = "%!PS-Adobe-3.0\n";
  while (doc.size() < kDocumentHeadBytes + 100) doc += "%%DocumentNeededResources: font X\n";
  const auto at = FindPrologInsertion(doc);
  ASSERT_TRUE(at.has_value());
  EXPECT_EQ(at->offset, 15u);
}

TEST(PrologInsertion, InsertsWithWarnings) {
  std::vector<std::string> warnings;
  EXPECT_EQ(InsertWatermarkProlog("%!PS-Adobe-3.0", "P\n", warnings), "%!PS-Adobe-3.0\nP\n");
  EXPECT_TRUE(warnings.empty());
  EXPECT_EQ(InsertWatermarkProlog("%!\nshowpage\n", "P\n", warnings), "%!\nP\nshowpage\n");
  ASSERT_EQ(warnings.size(), 1u);
  warnings.clear();
  EXPECT_EQ(InsertWatermarkProlog("%PDF-1.7\n", "P\n", warnings), "%PDF-1.7\n");
  ASSERT_EQ(warnings.size(), 1u);
  EXPECT_NE(warnings[0].find("not PostScript"), std::string::npos);
}

std::vector<std::uint8_t> Jpeg(std::initializer_list<std::uint8_t> bytes) {
  return bytes;
}

TEST(JpegHeader, Reads) {
  // SOI, JFIF at 150 dots per inch, SOF0 of 40 x 30 with 3 components, EOI.
  const auto good =
      Jpeg({0xFF, 0xD8, 0xFF, 0xE0, 0,    16, 'J',  'F',  'I',  'F', 0,    1, 1,    1,
            0,    150,  0,    150,  0,    0,  0xFF, 0xFF, 0xC0, 0,   17,   8, 0,    30,
            0,    40,   3,    1,    0x11, 0,  2,    0x11, 1,    3,   0x11, 1, 0xFF, 0xD9});
  std::string why;
  const auto info = ReadJpegInfo(good, &why);
  ASSERT_TRUE(info.has_value()) << why;
  EXPECT_EQ(info->width, 40u);
  EXPECT_EQ(info->height, 30u);
  EXPECT_EQ(info->components, 3);
  EXPECT_EQ(info->xDensity, 150);

  struct Bad {
    std::vector<std::uint8_t> bytes;
    const char* why;
  };
  const Bad bad[] = {
      {Jpeg({'G', 'I', 'F'}), "not a JPEG file"},
      {Jpeg({0xFF, 0xD8}), "damaged"},
      {Jpeg({0xFF, 0xD8, 0xFF, 0xE0, 0, 200, 1}), "cut short"},
      {Jpeg({0xFF, 0xD8, 0xFF, 0xE0, 0, 1}), "cut short"},
      {Jpeg({0xFF, 0xD8, 0xFF, 0xDA, 0, 2}), "no frame header"},
      {Jpeg({0xFF, 0xD8, 0xFF, 0xC0, 0,    17, 8, 0,    30, 0, 40,   4,
             1,    0x11, 0,    2,    0x11, 1,  3, 0x11, 1,  4, 0x11, 1}),
       "only grey and RGB"},
      {Jpeg({0xFF, 0xD8, 0xFF, 0xC3, 0, 11, 8, 0, 30, 0, 40, 1, 1, 0x11, 0}), "coding"},
      {Jpeg({0xFF, 0xD8, 0xFF, 0xC0, 0, 11, 8, 0, 0, 0, 40, 1, 1, 0x11, 0}), "no size"},
  };
  for (const Bad& b : bad) {
    std::string reason;
    EXPECT_FALSE(ReadJpegInfo(b.bytes, &reason).has_value()) << b.why;
    EXPECT_NE(reason.find(b.why), std::string::npos) << reason;
  }
}

TEST(FontCharacterMapTest, DejaVuSans) {
  const auto font = ReadWholeFile("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");
  if (!font) GTEST_SKIP() << "fonts-dejavu-core is missing";
  const auto cmap = FontCharacterMap::Read(*font);
  ASSERT_TRUE(cmap.has_value());
  EXPECT_GT(cmap->glyphCount(), 3000);
  EXPECT_NE(cmap->Glyph(U'A'), 0);
  EXPECT_NE(cmap->Glyph(U'A'), cmap->Glyph(U'B'));
  EXPECT_NE(cmap->Glyph(U'\u2588'), 0);  // full block
  EXPECT_NE(cmap->Glyph(U'\u00E9'), 0);
  EXPECT_EQ(cmap->Glyph(U'\U0010FFFD'), 0);
  // Cut anywhere, a font never reads outside its bytes (FontCursor) and a
  // map read from it answers within the glyph count.
  for (std::size_t size : {0u, 12u, 100u, 1000u, 20000u}) {
    std::vector<std::uint8_t> cut(font->begin(), font->begin() + static_cast<long>(size));
    if (const auto partial = FontCharacterMap::Read(cut)) {
      EXPECT_LE(partial->Glyph(U'A'), partial->glyphCount());
    }
  }
}

TEST(Type42Reader, ReadsBackTheFontItWasMadeFrom) {
  const auto font = ReadWholeFile("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");
  if (!font) GTEST_SKIP() << "fonts-dejavu-core is missing";
  std::string program;
  Type42Options split;
  split.splitLargeTables = true;
  ASSERT_TRUE(convertTTFtoPS42(*font, "DejaVuSans", program, split).complete());
  ASSERT_TRUE(IsType42Program(program));
  const auto read = ReadType42Program(program);
  ASSERT_TRUE(read.has_value());
  EXPECT_EQ(read->fontName, "DejaVuSans");
  EXPECT_EQ(read->sfnt, *font);

  const std::string head = "%!PS-TrueTypeFont-1.0-1.0\n/FontName /F def\n";
  struct Case {
    std::string program;
    std::vector<std::uint8_t> sfnt;  // empty: refused
  };
  const Case cases[] = {
      {head + "/sfnts [\n<0001 02\n0300>\n<AB>] def", {0, 1, 2, 3}},  // odd: pad dropped
      {head + "/sfnts [<0A0B0C>] def", {0x0A, 0x0B}},
      {head + "/sfnts [<0A0B0>] def", {0x0A, 0x0B}},  // odd digit count
      {head + "/sfnts [<0A0G>] def", {}},
      {head + "/sfnts [<0A0B", {}},
      {head + "/sfnts [<0A0B> (x)] def", {}},
      {head + "/sfnts <0A0B>", {}},
      {"%!PS-TrueTypeFont\n/sfnts [<0A0B>] def", {}},  // no name
  };
  for (const Case& c : cases) {
    const auto r = ReadType42Program(c.program);
    if (c.sfnt.empty()) {
      EXPECT_FALSE(r.has_value()) << c.program;
    } else {
      ASSERT_TRUE(r.has_value()) << c.program;
      EXPECT_EQ(r->sfnt, c.sfnt) << c.program;
    }
  }
  EXPECT_FALSE(IsType42Program("%!PS-Adobe-3.0"));
}

TEST(Utf8, Decodes) {
  const std::string text = "A\xC3\xA9\xE2\x96\x88\xF0\x9F\x98\x80";
  EXPECT_EQ(DecodeUtf8(text), (std::vector<char32_t>{U'A', U'\u00E9', U'\u2588', U'\U0001F600'}));
  const std::string bad =
      "\xC0\xAF"
      "a\xE2\x96"
      "\xED\xA0\x80";  // overlong, cut, surrogate
  const std::vector<char32_t> decoded = DecodeUtf8(bad);
  EXPECT_EQ(decoded.front(), U'\uFFFD');
  EXPECT_NE(std::find(decoded.begin(), decoded.end(), U'a'), decoded.end());
  EXPECT_EQ(std::count(decoded.begin(), decoded.end(), U'\uFFFD'), 7);
}

TEST(WatermarkChoiceTest, TicketAndJobOptionsCarryTheSameChoice) {
  Ticket ticket;
  EXPECT_FALSE(WatermarkChoiceFromTicket(ticket).has_value());
  ticket.setString("z", tkey::kWatermarkName, "");
  EXPECT_FALSE(WatermarkChoiceFromTicket(ticket).has_value());
  ticket.setString("z", tkey::kWatermarkName, "Top Secret");
  ticket.setBoolean("z", tkey::kWatermarkFirstPageOnly, true);
  const auto choice = WatermarkChoiceFromTicket(ticket);
  ASSERT_TRUE(choice.has_value());
  EXPECT_EQ(*choice, (WatermarkChoice{"Top Secret", true, false}));

  std::map<std::string, std::string, std::less<>> options;
  for (const auto& [name, value] : WatermarkJobOptions(*choice)) options[name] = value;
  EXPECT_EQ(options["zorva-watermark-pages"], "first");
  const auto lookup = [&](std::string_view name) -> const char* {
    const auto it = options.find(name);
    return it == options.end() ? nullptr : it->second.c_str();
  };
  EXPECT_EQ(WatermarkChoiceFromOptions(lookup), choice);
  options["zorva-watermark-layer"] = "front";
  options["zorva-watermark-pages"] = "sometimes";
  EXPECT_EQ(WatermarkChoiceFromOptions(lookup), (WatermarkChoice{"Top Secret", false, true}));
  options.erase("zorva-watermark");
  EXPECT_FALSE(WatermarkChoiceFromOptions(lookup).has_value());
}

}  // namespace
}  // namespace zorva

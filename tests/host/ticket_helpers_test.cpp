// Tests for the ticket helpers: integer reads, text decoding from the legacy
// encodings, nested dictionaries and XML entity unescaping.
#include "host/ticket_helpers.h"

#include <gtest/gtest.h>

#include <string>

namespace zorva {
namespace {

TEST(TicketHelpers, IntegerReadsTruncateRealsAndRejectOtherTypesOrRange) {
  Dictionary d{{"int", Value(std::int64_t{1} << 40)},
               {"neg", Value(-7.9)},
               {"huge", Value(1e19)},
               {"text", Value("12")},
               {"flag", Value(true)},
               {"big", Value(std::int64_t{1} << 31)}};
  std::int64_t out = 0;
  ASSERT_TRUE(GetIndexFromDictionary(&d, "int", out));
  EXPECT_EQ(out, std::int64_t{1} << 40);
  ASSERT_TRUE(GetIndexFromDictionary(&d, "neg", out));
  EXPECT_EQ(out, -7);
  for (const char* key : {"huge", "text", "flag", "missing"})
    EXPECT_FALSE(GetIndexFromDictionary(&d, key, out)) << key;
  EXPECT_FALSE(GetIndexFromDictionary(nullptr, "int", out));
  EXPECT_EQ(out, -7);

  std::int32_t out32 = 0;
  ASSERT_TRUE(DictionaryGetInt32(&d, "neg", out32));
  EXPECT_EQ(out32, -7);
  EXPECT_FALSE(DictionaryGetInt32(&d, "big", out32));
  EXPECT_EQ(out32, -7);
  WriteTicketValue(&d, "unset", kUnset);
  ASSERT_TRUE(DictionaryGetInt32(&d, "unset", out32));
  EXPECT_EQ(out32, kUnset);
}

TEST(TicketHelpers, DecodesLegacyEncodingsAndReplacesInvalidBytes) {
  EXPECT_EQ(DecodeText("\x8E\xA5", TextEncoding::MacRoman), "\u00E9\u2022");
  EXPECT_EQ(DecodeText("\xB9", TextEncoding::ISOLatin2), "\u0161");
  EXPECT_EQ(DecodeText("\xFD", TextEncoding::ISOLatin5), "\u0131");
  EXPECT_EQ(DecodeText("\x93\xFA\x96\x7B", TextEncoding::ShiftJIS), "\u65E5\u672C");
  EXPECT_EQ(DecodeText("a\xC3", TextEncoding::UTF8), "a\uFFFD");  // cut off at the end
  // 0xA0 is no Shift_JIS character; 0x81 starts a pair that never finishes.
  EXPECT_EQ(DecodeText("x\xA0y\x81", TextEncoding::ShiftJIS), "x\uFFFDy\uFFFD");
  std::string expected;
  for (int i = 0; i < 10000; ++i) expected += "\u00E9";
  EXPECT_EQ(DecodeText(std::string(10000, '\xE9'), TextEncoding::ISOLatin1), expected);

  Dictionary d;
  DictionarySetCString(&d, "name", nullptr);
  DictionarySetCString(nullptr, "name", "x");
  EXPECT_TRUE(d.empty());
  DictionarySetCString(&d, "name", "Gr\xFC\xDF", TextEncoding::ISOLatin1);
  EXPECT_EQ(*d.getString("name"), "Gr\u00FC\u00DF");
}

TEST(TicketHelpers, GetDictionaryOrCreateReusesOrReplaces) {
  Dictionary d{{"scalar", Value(5)}};
  EXPECT_EQ(DictionaryGetDictionaryOrCreate(nullptr, "x"), nullptr);
  Dictionary* made = DictionaryGetDictionaryOrCreate(&d, "child");
  ASSERT_NE(made, nullptr);
  made->set("k", Value(1));
  EXPECT_EQ(DictionaryGetDictionaryOrCreate(&d, "child"), made);
  Dictionary* replaced = DictionaryGetDictionaryOrCreate(&d, "scalar");
  ASSERT_NE(replaced, nullptr);
  EXPECT_TRUE(replaced->empty());
  EXPECT_EQ(d.getDictionary("scalar"), replaced);
}

std::string Unescape(std::string_view text, const Dictionary* extra = nullptr) {
  return XMLCreateStringByUnescapingEntities(text, extra);
}

TEST(XmlEntities, NamedEntitiesAndTheCallersOwn) {
  EXPECT_EQ(Unescape("&lt;a href=&quot;x&quot;&gt;Tom &amp; Jerry&apos;s&lt;/a&gt;"),
            "<a href=\"x\">Tom & Jerry's</a>");
  EXPECT_EQ(Unescape("&amp;lt;"), "&lt;");  // replacement text is not scanned again
  Dictionary extra{{"amp", Value("and")},
                   {"company", Value("Zorva Inc.")},
                   {"n", Value(3)},
                   {"raw", Value("&lt;")}};
  EXPECT_EQ(Unescape("A &amp; B &company; &lt;&n;", &extra), "A and B Zorva Inc. <&n;");
  EXPECT_EQ(Unescape("&raw;", &extra), "&lt;");
}

TEST(XmlEntities, NumericReferences) {
  EXPECT_EQ(Unescape("&#38;&#x26;&#X26;&#0000065;"), "&&&A");
  EXPECT_EQ(Unescape("&#xE9;&#x20AC;&#x1F600;&#9;"), "\u00E9\u20AC\U0001F600\t");
  // Invalid ones stay as they are: no character, surrogates, non-characters,
  // past Unicode, controls, overflow (including wrap-around to 'A'), malformed.
  for (const char* text :
       {"&#0;", "&#xD800;", "&#xFFFE;", "&#x110000;", "&#8;", "&#99999999999999999999;",
        "&#4294967361;", "&#x100000041;", "&#;", "&#x;", "&#12", "&#1a;", "&#xG;"}) {
    EXPECT_EQ(Unescape(text), text) << text;
  }
}

TEST(XmlEntities, UnknownOrUnfinishedEntitiesStayAsTheyAre) {
  EXPECT_EQ(Unescape("&nbsp; &amp"), "&nbsp; &amp");
  EXPECT_EQ(Unescape("fish & chips &"), "fish & chips &");
  // Scanning goes on right after an ampersand that was not an entity.
  EXPECT_EQ(Unescape("&&amp;&#&#38;"), "&&&#&");
  EXPECT_EQ(Unescape("&am&lt;p;"), "&am<p;");
}

}  // namespace
}  // namespace zorva

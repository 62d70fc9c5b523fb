// Tests for the ticket helpers: integer reads, text decoding from the legacy
// encodings, nested dictionaries and XML entity unescaping.
#include "host/ticket_helpers.h"

#include <gtest/gtest.h>

#include <string>

namespace zorva {
namespace {

TEST(TicketHelpers, GetIndexTruncatesRealsAndRejectsOtherTypes) {
  Dictionary d{{"int", Value(std::int64_t{1} << 40)},
               {"pos", Value(7.9)},
               {"neg", Value(-7.9)},
               {"huge", Value(1e19)},
               {"text", Value("12")},
               {"flag", Value(true)}};
  std::int64_t out = 0;
  ASSERT_TRUE(GetIndexFromDictionary(&d, "int", out));
  EXPECT_EQ(out, std::int64_t{1} << 40);
  ASSERT_TRUE(GetIndexFromDictionary(&d, "pos", out));
  EXPECT_EQ(out, 7);
  ASSERT_TRUE(GetIndexFromDictionary(&d, "neg", out));
  EXPECT_EQ(out, -7);

  out = 99;
  EXPECT_FALSE(GetIndexFromDictionary(&d, "huge", out));
  EXPECT_FALSE(GetIndexFromDictionary(&d, "text", out));
  EXPECT_FALSE(GetIndexFromDictionary(&d, "flag", out));
  EXPECT_FALSE(GetIndexFromDictionary(&d, "missing", out));
  EXPECT_FALSE(GetIndexFromDictionary(nullptr, "int", out));
  EXPECT_EQ(out, 99);
}

TEST(TicketHelpers, Int32ReadTruncatesAndChecksRange) {
  Dictionary d;
  WriteTicketValue(&d, "value", kUnset);
  d.set("real", Value(-2.5));
  d.set("big", Value(std::int64_t{1} << 31));
  std::int32_t out = 0;
  ASSERT_TRUE(DictionaryGetInt32(&d, "value", out));
  EXPECT_EQ(out, kUnset);
  ASSERT_TRUE(DictionaryGetInt32(&d, "real", out));
  EXPECT_EQ(out, -2);
  EXPECT_FALSE(DictionaryGetInt32(&d, "big", out));
  EXPECT_EQ(out, -2);
  WriteTicketValue(nullptr, "value", 1);  // must not crash
}

TEST(TicketHelpers, DecodesLegacyEncodings) {
  EXPECT_EQ(DecodeText("caf\xE9", TextEncoding::ISOLatin1), "caf\u00E9");
  EXPECT_EQ(DecodeText("\x8E\xA5", TextEncoding::MacRoman), "\u00E9\u2022");
  EXPECT_EQ(DecodeText("\xB9", TextEncoding::ISOLatin2), "\u0161");
  EXPECT_EQ(DecodeText("\xFD", TextEncoding::ISOLatin5), "\u0131");
  EXPECT_EQ(DecodeText("\x93\xFA\x96\x7B", TextEncoding::ShiftJIS), "\u65E5\u672C");
  EXPECT_EQ(DecodeText("\u00E9", TextEncoding::UTF8), "\u00E9");
}

TEST(TicketHelpers, InvalidBytesBecomeReplacementCharacters) {
  EXPECT_EQ(DecodeText("a\xFF"
                       "b",
                       TextEncoding::UTF8),
            "a\uFFFD"
            "b");
  EXPECT_EQ(DecodeText("a\xC3", TextEncoding::UTF8), "a\uFFFD");  // cut off at the end
  // 0xA0 is no Shift_JIS character; 0x81 starts a pair that never finishes.
  EXPECT_EQ(DecodeText("x\xA0y\x81", TextEncoding::ShiftJIS), "x\uFFFDy\uFFFD");
}

TEST(TicketHelpers, DecodesLongTextCompletely) {
  std::string latin1(10000, '\xE9');
  std::string expected;
  for (int i = 0; i < 10000; ++i) expected += "\u00E9";
  EXPECT_EQ(DecodeText(latin1, TextEncoding::ISOLatin1), expected);
}

TEST(TicketHelpers, SetCStringIgnoresNullArguments) {
  Dictionary d;
  DictionarySetCString(&d, "name", nullptr);
  DictionarySetCString(nullptr, "name", "x");
  EXPECT_TRUE(d.empty());
  DictionarySetCString(&d, "name", "Gr\xFC\xDF", TextEncoding::ISOLatin1);
  ASSERT_NE(d.getString("name"), nullptr);
  EXPECT_EQ(*d.getString("name"), "Gr\u00FC\u00DF");
}

TEST(TicketHelpers, GetDictionaryOrCreate) {
  Dictionary d{{"scalar", Value(5)}};
  EXPECT_EQ(DictionaryGetDictionaryOrCreate(nullptr, "x"), nullptr);

  Dictionary* made = DictionaryGetDictionaryOrCreate(&d, "child");
  ASSERT_NE(made, nullptr);
  made->set("k", Value(1));
  EXPECT_EQ(DictionaryGetDictionaryOrCreate(&d, "child"), made);
  EXPECT_TRUE(d.getDictionary("child")->contains("k"));

  Dictionary* replaced = DictionaryGetDictionaryOrCreate(&d, "scalar");
  ASSERT_NE(replaced, nullptr);
  EXPECT_TRUE(replaced->empty());
  EXPECT_EQ(d.getDictionary("scalar"), replaced);
}

std::string Unescape(std::string_view text, const Dictionary* extra = nullptr) {
  return XMLCreateStringByUnescapingEntities(text, extra);
}

TEST(XmlEntities, StandardEntities) {
  EXPECT_EQ(Unescape("&lt;a href=&quot;x&quot;&gt;Tom &amp; Jerry&apos;s&lt;/a&gt;"),
            "<a href=\"x\">Tom & Jerry's</a>");
  // Replacement text is not scanned again.
  EXPECT_EQ(Unescape("&amp;lt;"), "&lt;");
  EXPECT_EQ(Unescape(""), "");
}

TEST(XmlEntities, CallersEntitiesWinAndNonStringsAreIgnored) {
  Dictionary extra{{"amp", Value("and")},
                   {"company", Value("Zorva Inc.")},
                   {"n", Value(3)},
                   {"raw", Value("&lt;")}};
  EXPECT_EQ(Unescape("A &amp; B &company; &lt;&n;", &extra), "A and B Zorva Inc. <&n;");
  // The caller's replacement text is taken literally, not unescaped again.
  EXPECT_EQ(Unescape("&raw;", &extra), "&lt;");
}

TEST(XmlEntities, NumericReferences) {
  EXPECT_EQ(Unescape("&#38;&#x26;&#X26;"), "&&&");
  EXPECT_EQ(Unescape("&#0000065;"), "A");
  EXPECT_EQ(Unescape("&#xE9;&#x20AC;&#x1F600;"), "\u00E9\u20AC\U0001F600");
  EXPECT_EQ(Unescape("&#9;&#xA;&#13;"), "\t\n\r");
}

TEST(XmlEntities, InvalidNumericReferencesStayAsTheyAre) {
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

// UTF-16 lengths and simple case folding.
#include <gtest/gtest.h>

#include "core/text.h"

namespace zorva {
namespace {

TEST(Text, Utf16LengthCountsSurrogatePairs) {
  EXPECT_EQ(Utf16Length(""), 0u);
  EXPECT_EQ(Utf16Length("abc"), 3u);
  EXPECT_EQ(Utf16Length("Wei\xC3\x9F"), 4u);       // ß is one unit
  EXPECT_EQ(Utf16Length("\xF0\x9F\x98\x80"), 2u);  // U+1F600 is a pair
  EXPECT_EQ(Utf16Length("\xE2\x82\xAC"), 1u);      // €
  EXPECT_EQ(Utf16Length("a\xFF"
                        "b"),
            3u);  // a stray byte counts once
}

TEST(Text, SimpleCaseFoldingKeepsSharpSDistinct) {
  EXPECT_TRUE(EqualsCaseInsensitive("Letter", "LETTER"));
  EXPECT_TRUE(EqualsCaseInsensitive("\xC3\x89t\xC3\xA9", "\xC3\xA9T\xC3\x89"));  // Été / éTÉ
  EXPECT_TRUE(EqualsCaseInsensitive("\xCE\xA3", "\xCF\x82"));  // Σ and final ς fold alike
  EXPECT_FALSE(EqualsCaseInsensitive("Wei\xC3\x9F", "WEISS"));
  EXPECT_FALSE(EqualsCaseInsensitive("abc", "abcd"));
  EXPECT_LT(CompareCaseInsensitive("abc", "ABD"), 0);
  EXPECT_GT(CompareCaseInsensitive("b", "A"), 0);
}

TEST(Text, TruncateNeverSplitsACharacter) {
  EXPECT_EQ(TruncateUtf16("abc\xF0\x9F\x98\x80", 4), "abc");
  EXPECT_EQ(TruncateUtf16("abc\xF0\x9F\x98\x80", 5), "abc\xF0\x9F\x98\x80");
  EXPECT_EQ(TruncateUtf16("\xC3\xA9\xC3\xA9", 1), "\xC3\xA9");
  EXPECT_TRUE(IsValidUtf8("\xC3\xA9"));
  // One replacement per byte that is not part of a well-formed sequence:
  // a cut-short sequence, a surrogate, an overlong form.
  const std::string r = "\xEF\xBF\xBD";
  EXPECT_EQ(ReplaceIllFormedUtf8("a\xE2\x82"), "a" + r + r);
  EXPECT_EQ(ReplaceIllFormedUtf8("\xED\xA0\x80z"), r + r + r + "z");
  EXPECT_EQ(ReplaceIllFormedUtf8("\xC0\xAF\xF0\x9F\x98\x80"), r + r + "\xF0\x9F\x98\x80");
  EXPECT_EQ(ReplaceIllFormedUtf8(std::string_view("\0\xC3\xA9", 3)), std::string("\0\xC3\xA9", 3));
  EXPECT_TRUE(IsXmlText("tab\tok \xC3\xA9"));
  EXPECT_FALSE(IsXmlText("\xEF\xBF\xBF"));  // U+FFFF
  EXPECT_EQ(ToXmlText("a\x01\xEF\xBF\xBE\xFFz"), "a\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBDz");
  EXPECT_FALSE(IsValidUtf8("\xC3"));
}

}  // namespace
}  // namespace zorva

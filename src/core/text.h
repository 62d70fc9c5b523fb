// Text helpers for user-visible strings: UTF-16 lengths (limits given in
// "characters" count UTF-16 code units) and case-insensitive comparison by
// Unicode simple case folding, so "Weiß" and "WEISS" differ as they always have.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zorva {

// Number of UTF-16 code units the UTF-8 text takes. Ill-formed bytes count as
// one unit each (they would become U+FFFD).
std::size_t Utf16Length(std::string_view utf8);

// Compares by simple case folding: <0, 0 or >0, ordered by folded code point.
int CompareCaseInsensitive(std::string_view a, std::string_view b);
inline bool EqualsCaseInsensitive(std::string_view a, std::string_view b) {
  return CompareCaseInsensitive(a, b) == 0;
}

// The longest prefix of utf8 whose UTF-16 length is at most maxUnits, cut on a
// code-point boundary.
std::string_view TruncateUtf16(std::string_view utf8, std::size_t maxUnits);

// True when the text is well-formed UTF-8.
bool IsValidUtf8(std::string_view text);

// The text with each byte that is not part of a well-formed UTF-8 sequence
// replaced by U+FFFD (one per byte), what converting platform text yields.
std::string ReplaceIllFormedUtf8(std::string_view text);

// True when text is well-formed UTF-8 made only of characters XML 1.0 allows.
bool IsXmlText(std::string_view text);

// The text with every ill-formed byte and every character XML 1.0 does not
// allow replaced by U+FFFD.
std::string ToXmlText(std::string_view text);

}  // namespace zorva

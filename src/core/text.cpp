// UTF-16 lengths and case-insensitive comparison by simple case folding (ICU).
#include "core/text.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <cstdint>

namespace zorva {

namespace {

// Next code point of s at i (advancing i); ill-formed bytes give a negative value.
UChar32 NextCodePoint(std::string_view s, int32_t& i) {
  UChar32 c = 0;
  U8_NEXT(reinterpret_cast<const uint8_t*>(s.data()), i, static_cast<int32_t>(s.size()), c);
  return c;
}

int32_t Length32(std::string_view s) {
  // Text longer than 2 GiB is not something a ticket holds; clamp rather than wrap.
  return s.size() > INT32_MAX ? INT32_MAX : static_cast<int32_t>(s.size());
}

}  // namespace

std::size_t Utf16Length(std::string_view utf8) {
  std::size_t units = 0;
  int32_t i = 0;
  const int32_t n = Length32(utf8);
  while (i < n) {
    UChar32 c = NextCodePoint(utf8.substr(0, static_cast<std::size_t>(n)), i);
    units += (c > 0xFFFF) ? 2 : 1;
  }
  return units;
}

int CompareCaseInsensitive(std::string_view a, std::string_view b) {
  int32_t i = 0;
  int32_t j = 0;
  const int32_t na = Length32(a);
  const int32_t nb = Length32(b);
  while (i < na && j < nb) {
    UChar32 ca = NextCodePoint(a, i);
    UChar32 cb = NextCodePoint(b, j);
    // Ill-formed bytes compare as themselves (never equal to a real character).
    if (ca >= 0) ca = u_foldCase(ca, U_FOLD_CASE_DEFAULT);
    if (cb >= 0) cb = u_foldCase(cb, U_FOLD_CASE_DEFAULT);
    if (ca != cb) return ca < cb ? -1 : 1;
  }
  if (i < na) return 1;
  if (j < nb) return -1;
  return 0;
}

std::string_view TruncateUtf16(std::string_view utf8, std::size_t maxUnits) {
  std::size_t units = 0;
  int32_t i = 0;
  const int32_t n = Length32(utf8);
  while (i < n) {
    int32_t start = i;
    UChar32 c = NextCodePoint(utf8, i);
    units += (c > 0xFFFF) ? 2 : 1;
    if (units > maxUnits) return utf8.substr(0, static_cast<std::size_t>(start));
  }
  return utf8.substr(0, static_cast<std::size_t>(n));
}

bool IsValidUtf8(std::string_view text) {
  int32_t i = 0;
  const int32_t n = Length32(text);
  if (static_cast<std::size_t>(n) != text.size()) return false;
  while (i < n) {
    if (NextCodePoint(text, i) < 0) return false;
  }
  return true;
}

std::string ReplaceIllFormedUtf8(std::string_view text) {
  if (IsValidUtf8(text)) return std::string(text);
  std::string out;
  out.reserve(text.size() + 8);
  int32_t i = 0;
  const int32_t n = Length32(text);
  while (i < n) {
    const int32_t start = i;
    if (NextCodePoint(text, i) < 0) {
      out += "\xEF\xBF\xBD";
      i = start + 1;  // one replacement per byte, then look again
    } else {
      out.append(text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(i - start)));
    }
  }
  return out;
}

namespace {

bool IsXmlChar(UChar32 c) {
  return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) ||
         (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

}  // namespace

bool IsXmlText(std::string_view text) {
  int32_t i = 0;
  const int32_t n = Length32(text);
  if (static_cast<std::size_t>(n) != text.size()) return false;
  while (i < n) {
    if (!IsXmlChar(NextCodePoint(text, i))) return false;
  }
  return true;
}

std::string ToXmlText(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  int32_t i = 0;
  const int32_t n = Length32(text);
  while (i < n) {
    int32_t start = i;
    UChar32 c = NextCodePoint(text, i);
    if (IsXmlChar(c)) {
      out.append(text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(i - start)));
    } else {
      out += "\xEF\xBF\xBD";
    }
  }
  return out;
}

}  // namespace zorva

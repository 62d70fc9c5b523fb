// Undoing libcups' conversion of PPD texts and decoding them by the
// product's encoding table (see ppd_text.h for why).
#include "paper/ppd_text.h"

#include <unicode/ucnv.h>

#include <strings.h>
#include <array>
#include <vector>

namespace zorva {

namespace {

struct EncodingName {
  std::string_view ppdText;
  TextEncoding encoding;
};

constexpr std::array<EncodingName, 6> kEncodings = {{
    {"ISOLatin1", TextEncoding::ISOLatin1},
    {"ISOLatin2", TextEncoding::ISOLatin2},
    {"ISOLatin5", TextEncoding::ISOLatin5},
    {"JIS83-RKSJ", TextEncoding::ShiftJIS},
    {"UTF-8", TextEncoding::UTF8},
    {"UTF8", TextEncoding::UTF8},
}};

struct CupsCharset {
  const char* ppdText;  // compared without regard to case, as libcups does
  const char* icuName;  // nullptr: libcups copied the bytes unchanged
};

// How libcups reads *LanguageEncoding when it converts texts to UTF-8.
constexpr std::array<CupsCharset, 6> kCupsCharsets = {{
    {"ISOLatin1", "ISO-8859-1"},
    {"ISOLatin2", "ISO-8859-2"},
    {"ISOLatin5", "ISO-8859-5"},
    {"JIS83-RKSJ", "windows-31j"},
    {"MacStandard", "macintosh"},
    {"WindowsANSI", "windows-1252"},
}};

const char* CupsCharsetFor(std::optional<std::string_view> languageEncoding) {
  if (!languageEncoding) return "ISO-8859-1";
  const std::string text(*languageEncoding);
  for (const CupsCharset& c : kCupsCharsets) {
    if (strcasecmp(text.c_str(), c.ppdText) == 0) return c.icuName;
  }
  return nullptr;
}

// The bytes libcups converted from; the UTF-8 text itself when they cannot
// be recovered.
std::string ToCharset(std::string_view utf8, const char* charset) {
  if (charset == nullptr || utf8.empty()) return std::string(utf8);
  std::vector<char> out(utf8.size() * 4 + 4);
  UErrorCode err = U_ZERO_ERROR;
  const int32_t n = ucnv_convert(charset, "UTF-8", out.data(), static_cast<int32_t>(out.size()),
                                 utf8.data(), static_cast<int32_t>(utf8.size()), &err);
  if (U_FAILURE(err) || n < 0) return std::string(utf8);
  return std::string(out.data(), static_cast<std::size_t>(n));
}

}  // namespace

TextEncoding EncodingForLanguageEncoding(std::optional<std::string_view> languageEncoding) {
  if (!languageEncoding) return TextEncoding::MacRoman;
  for (const EncodingName& e : kEncodings) {
    if (e.ppdText == *languageEncoding) return e.encoding;
  }
  return TextEncoding::MacRoman;
}

std::string PPDTextToUtf8(std::string_view cupsText,
                          std::optional<std::string_view> languageEncoding) {
  const std::string bytes = ToCharset(cupsText, CupsCharsetFor(languageEncoding));
  return DecodeText(bytes, EncodingForLanguageEncoding(languageEncoding));
}

}  // namespace zorva

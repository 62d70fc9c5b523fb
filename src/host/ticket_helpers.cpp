// Ticket and dictionary helpers: typed reads and writes of ticket entries,
// text decoding from the legacy encodings PPDs and old tickets use, and the
// XML entity unescaper used on imported text.
#include "host/ticket_helpers.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

#include <array>
#include <cmath>
#include <memory>

namespace zorva {

void WriteTicketValue(Dictionary* dictionary, std::string_view key, std::int32_t value) {
  if (dictionary) dictionary->set(key, Value(value));
}

bool GetIndexFromDictionary(const Dictionary* dictionary, std::string_view key, std::int64_t& out) {
  if (!dictionary) return false;
  const Value* v = dictionary->find(key);
  if (!v) return false;
  if (const std::int64_t* i = v->integer()) {
    out = *i;
    return true;
  }
  if (v->type() != ValueType::Real) return false;
  // Every double in [-2^63, 2^63) truncates to an int64; NaN fails both tests.
  constexpr double kTwo63 = 9223372036854775808.0;
  double d = std::trunc(*v->real());
  if (!(d >= -kTwo63 && d < kTwo63)) return false;
  out = static_cast<std::int64_t>(d);
  return true;
}

bool DictionaryGetInt32(const Dictionary* dictionary, std::string_view key, std::int32_t& out) {
  if (!dictionary) return false;
  const Value* v = dictionary->find(key);
  return v && v->toInt32(out);
}

// ---- Text decoding -------------------------------------------------------------

namespace {

// ICU converter names, indexed by TextEncoding.
constexpr std::array<const char*, 6> kConverterNames = {"UTF-8",      "macintosh",  "ISO-8859-1",
                                                        "ISO-8859-2", "ISO-8859-9", "Shift_JIS"};

struct ConverterCloser {
  void operator()(UConverter* c) const { ucnv_close(c); }
};
using ConverterPtr = std::unique_ptr<UConverter, ConverterCloser>;

// ICU's default substitution writes U+001A for a bad single byte in some
// multi-byte converters; we always want U+FFFD so bad bytes look the same
// whatever the encoding.
void SubstituteReplacementChar(const void*, UConverterToUnicodeArgs* args, const char*, int32_t,
                               UConverterCallbackReason reason, UErrorCode* err) {
  if (reason > UCNV_IRREGULAR) return;  // reset, close, clone: nothing to write
  static constexpr UChar kReplacement = 0xFFFD;
  *err = U_ZERO_ERROR;
  ucnv_cbToUWriteUChars(args, &kReplacement, 1, 0, err);
}

ConverterPtr OpenDecoder(TextEncoding encoding) {
  UErrorCode err = U_ZERO_ERROR;
  ConverterPtr cnv(ucnv_open(kConverterNames[static_cast<std::size_t>(encoding)], &err));
  if (U_FAILURE(err)) return nullptr;
  ucnv_setToUCallBack(cnv.get(), SubstituteReplacementChar, nullptr, nullptr, nullptr, &err);
  return U_FAILURE(err) ? nullptr : std::move(cnv);
}

}  // namespace

std::string DecodeText(std::string_view bytes, TextEncoding encoding) {
  ConverterPtr source = OpenDecoder(encoding);
  UErrorCode err = U_ZERO_ERROR;
  ConverterPtr utf8(ucnv_open("UTF-8", &err));
  if (!source || U_FAILURE(err)) return {};

  // Streamed through a fixed buffer so input of any length converts.
  std::string result;
  std::array<char, 4096> chunk{};
  std::array<UChar, 1024> pivot{};
  UChar* pivotSource = pivot.data();
  UChar* pivotTarget = pivot.data();
  const char* in = bytes.data();
  const char* inEnd = bytes.data() + bytes.size();
  bool reset = true;
  do {
    err = U_ZERO_ERROR;
    char* out = chunk.data();
    ucnv_convertEx(utf8.get(), source.get(), &out, chunk.data() + chunk.size(), &in, inEnd,
                   pivot.data(), &pivotSource, &pivotTarget, pivot.data() + pivot.size(), reset,
                   true, &err);
    reset = false;
    result.append(chunk.data(), static_cast<std::size_t>(out - chunk.data()));
  } while (err == U_BUFFER_OVERFLOW_ERROR);
  return U_FAILURE(err) ? std::string() : result;
}

void DictionarySetCString(Dictionary* dictionary, std::string_view key, const char* text,
                          TextEncoding encoding) {
  if (!dictionary || !text) return;
  dictionary->set(key, Value(DecodeText(text, encoding)));
}

Dictionary* DictionaryGetDictionaryOrCreate(Dictionary* dictionary, std::string_view key) {
  if (!dictionary) return nullptr;
  if (Dictionary* existing = dictionary->getDictionary(key)) return existing;
  dictionary->set(key, Value(Dictionary{}));
  return dictionary->getDictionary(key);
}

// ---- XML entities --------------------------------------------------------------

namespace {

struct Entity {
  std::string_view name;
  std::string_view text;
};

constexpr std::array<Entity, 5> kStandardEntities = {{
    {"amp", "&"},
    {"lt", "<"},
    {"gt", ">"},
    {"apos", "'"},
    {"quot", "\""},
}};

constexpr std::size_t kLongestStandardName = 4;

// The caller's entities come first, so they override the standard five.
bool LookUpEntity(const Dictionary* extra, std::string_view name, std::string_view& text) {
  if (extra) {
    if (const std::string* s = extra->getString(name)) {
      text = *s;
      return true;
    }
  }
  for (const Entity& e : kStandardEntities) {
    if (e.name == name) {
      text = e.text;
      return true;
    }
  }
  return false;
}

std::size_t LongestEntityName(const Dictionary* extra) {
  std::size_t longest = kLongestStandardName;
  if (!extra) return longest;
  for (const auto& [name, value] : *extra) {
    if (value.string() && name.size() > longest) longest = name.size();
  }
  return longest;
}

// Code points an XML document may contain.
bool IsXmlChar(std::uint32_t c) {
  return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) ||
         (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

void AppendUtf8(std::string& out, std::uint32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

int DigitValue(char ch, int base) {
  int d = -1;
  if (ch >= '0' && ch <= '9') {
    d = ch - '0';
  } else if (base == 16 && ch >= 'a' && ch <= 'f') {
    d = ch - 'a' + 10;
  } else if (base == 16 && ch >= 'A' && ch <= 'F') {
    d = ch - 'A' + 10;
  }
  return d;
}

// Parses "#38;" or "#x26;" at the start of rest (the text after "&"). On
// success returns the length consumed (including ";") and the code point.
std::size_t ParseCharRef(std::string_view rest, std::uint32_t& codePoint) {
  if (rest.size() < 3 || rest[0] != '#') return 0;
  std::size_t i = 1;
  int base = 10;
  if (rest[i] == 'x' || rest[i] == 'X') {
    base = 16;
    ++i;
  }
  const std::size_t firstDigit = i;
  // Any value past the Unicode range is invalid, so stop growing there; long
  // runs of digits then cannot overflow.
  constexpr std::uint32_t kTooBig = 0x110000;
  std::uint32_t value = 0;
  for (int d; i < rest.size() && (d = DigitValue(rest[i], base)) >= 0; ++i) {
    value = value >= kTooBig
                ? kTooBig
                : value * static_cast<std::uint32_t>(base) + static_cast<std::uint32_t>(d);
  }
  if (i == firstDigit || i >= rest.size() || rest[i] != ';' || !IsXmlChar(value)) return 0;
  codePoint = value;
  return i + 1;
}

}  // namespace

std::string XMLCreateStringByUnescapingEntities(std::string_view text,
                                                const Dictionary* extraEntities) {
  const std::size_t longestName = LongestEntityName(extraEntities);
  std::string out;
  out.reserve(text.size());
  std::size_t i = 0;
  while (i < text.size()) {
    const std::size_t amp = text.find('&', i);
    out.append(text.substr(i, amp == std::string_view::npos ? amp : amp - i));
    if (amp == std::string_view::npos) break;
    std::string_view rest = text.substr(amp + 1);
    // Only look as far as the longest name could reach, so a text full of
    // "&" without ";" stays linear.
    const std::size_t semi = rest.substr(0, longestName + 1).find(';');
    std::string_view replacement;
    std::uint32_t codePoint = 0;
    if (semi != std::string_view::npos &&
        LookUpEntity(extraEntities, rest.substr(0, semi), replacement)) {
      out.append(replacement);
      i = amp + 1 + semi + 1;
    } else if (std::size_t used = ParseCharRef(rest, codePoint)) {
      AppendUtf8(out, codePoint);
      i = amp + 1 + used;
    } else {
      out += '&';
      i = amp + 1;
    }
  }
  return out;
}

}  // namespace zorva

// Text forms of property-list values for the zorva tool (see value_text.h).
#include "cli/value_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <ostream>
#include <string>

#include "cli/cli_support.h"
#include "core/plist_io.h"
#include "core/text.h"

namespace zorva::cli {
namespace {

// Seconds from 1970-01-01 to the property-list epoch 2001-01-01.
constexpr std::int64_t kUnixToPlistEpoch = 978307200;
// 0001-01-01T00:00:00Z and 9999-12-31T23:59:59Z as Unix times.
constexpr std::int64_t kFirstUnixSecond = -62135596800;
constexpr std::int64_t kLastUnixSecond = 253402300799;

struct CivilDate {
  std::int64_t year;
  int month;
  int day;
};

// Proleptic Gregorian calendar conversions, days counted from 1970-01-01.
std::int64_t DaysFromCivil(std::int64_t y, int m, int d) {
  y -= m <= 2;
  const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
  const std::int64_t yoe = y - era * 400;
  const std::int64_t doy = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5 + d - 1;
  const std::int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468;
}

CivilDate CivilFromDays(std::int64_t z) {
  z += 719468;
  const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const std::int64_t doe = z - era * 146097;
  const std::int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const std::int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const std::int64_t mp = (5 * doy + 2) / 153;
  const int d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  const int m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  return {yoe + era * 400 + (m <= 2), m, d};
}

bool IsLeapYear(std::int64_t y) {
  return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
}

int DaysInMonth(std::int64_t y, int m) {
  static constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return m == 2 && IsLeapYear(y) ? 29 : kDays[static_cast<std::size_t>(m - 1)];
}

// The decimal number in text[pos, pos + len), or -1 unless every byte is a digit.
int Digits(std::string_view text, std::size_t pos, std::size_t len) {
  int n = 0;
  for (std::size_t i = pos; i < pos + len; ++i) {
    if (text[i] < '0' || text[i] > '9') return -1;
    n = n * 10 + (text[i] - '0');
  }
  return n;
}

std::optional<std::int64_t> ParseInteger(std::string_view text) {
  std::int64_t n = 0;
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), n);
  if (text.empty() || ec != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return n;
}

std::optional<double> ParseReal(std::string_view text) {
  double d = 0;
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), d);
  if (text.empty() || ec != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  if (!std::isfinite(d)) return std::nullopt;
  return d;
}

std::optional<bool> ParseBool(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
  if (lower == "true" || lower == "yes" || lower == "1") return true;
  if (lower == "false" || lower == "no" || lower == "0") return false;
  return std::nullopt;
}

std::optional<Value> ParseString(std::string_view text, std::string* error) {
  const std::string why = UnstorableTextReason(text);
  if (!why.empty()) {
    *error = "the value " + why;
    return std::nullopt;
  }
  return Value(text);
}

std::optional<Value> ParseAuto(std::string_view text, std::string* error) {
  if (text == "true") return Value(true);
  if (text == "false") return Value(false);
  if (auto n = ParseInteger(text)) return Value(*n);
  if (auto d = ParseReal(text)) return Value(*d);
  return ParseString(text, error);
}

std::optional<Value> ParseNumber(std::string_view text, std::string* error) {
  if (auto n = ParseInteger(text)) return Value(*n);
  if (auto d = ParseReal(text)) return Value(*d);
  *error = Shown(text) + " is not a number";
  return std::nullopt;
}

std::optional<Value> ParseContainer(std::string_view text, ValueType wanted, std::string* error) {
  std::string why;
  std::optional<Value> v = ParsePropertyList(text, &why);
  if (!v) {
    *error = "the value is not a property list: " + why;
    return std::nullopt;
  }
  if (v->type() != wanted) {
    *error = "the property list's root is " + TypeWithArticle(v->type()) + ", not " +
             TypeWithArticle(wanted);
    return std::nullopt;
  }
  return v;
}

template <class T>
std::optional<Value> Wrap(std::optional<T> parsed, std::string* error, std::string message) {
  if (parsed) return Value(std::move(*parsed));
  *error = std::move(message);
  return std::nullopt;
}

int Base64Digit(char c) {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a' + 26;
  if (c >= '0' && c <= '9') return c - '0' + 52;
  if (c == '+') return 62;
  if (c == '/') return 63;
  return -1;
}

bool IsSpace(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

void DumpChildren(std::ostream& out, const Value& value, int depth) {
  if (const Dictionary* d = value.dictionary()) {
    for (const auto& [key, child] : *d) DumpValue(out, ShownKey(key), child, depth + 1);
  } else if (const Array* a = value.array()) {
    for (std::size_t i = 0; i < a->size(); ++i) {
      DumpValue(out, "[" + std::to_string(i) + "]", (*a)[i], depth + 1);
    }
  }
}

std::string Count(std::size_t n, const char* one, const char* many) {
  return "(" + std::to_string(n) + " " + (n == 1 ? one : many) + ")";
}

// What follows the type in the dump.
std::string DumpText(const Value& value) {
  switch (value.type()) {
    case ValueType::String:
      return QuoteString(*value.string());
    case ValueType::Data:
      return DataPreview(*value.data());
    case ValueType::Dictionary:
      return Count(value.dictionary()->size(), "entry", "entries");
    case ValueType::Array:
      return Count(value.array()->size(), "item", "items");
    default: {
      std::string s = PlainText(value);
      s.pop_back();  // the newline
      return s;
    }
  }
}

constexpr std::array<std::string_view, 10> kKindNames = {
    "auto", "number", "integer", "real", "string", "bool", "date", "data", "dict", "array"};

}  // namespace

std::string_view TypeLabel(ValueType type) {
  switch (type) {
    case ValueType::Boolean:
      return "bool";
    case ValueType::Integer:
      return "integer";
    case ValueType::Real:
      return "real";
    case ValueType::String:
      return "string";
    case ValueType::Data:
      return "data";
    case ValueType::Date:
      return "date";
    case ValueType::Array:
      return "array";
    case ValueType::Dictionary:
      return "dict";
  }
  return "unknown";
}

std::string TypeWithArticle(ValueType type) {
  const bool vowel = type == ValueType::Integer || type == ValueType::Array;
  return (vowel ? "an " : "a ") + std::string(TypeLabel(type));
}

std::span<const std::string_view> ValueKindNames() {
  return kKindNames;
}

std::optional<ValueKind> ValueKindFromName(std::string_view name) {
  for (std::size_t i = 0; i < kKindNames.size(); ++i) {
    if (kKindNames[i] == name) return static_cast<ValueKind>(i);
  }
  return std::nullopt;
}

std::optional<Value> ParseValueText(std::string_view text, ValueKind kind, std::string* error) {
  switch (kind) {
    case ValueKind::Auto:
      return ParseAuto(text, error);
    case ValueKind::Number:
      return ParseNumber(text, error);
    case ValueKind::Integer:
      return Wrap(ParseInteger(text), error, Shown(text) + " is not a 64-bit integer");
    case ValueKind::Real:
      return Wrap(ParseReal(text), error, Shown(text) + " is not a finite real number");
    case ValueKind::String:
      return ParseString(text, error);
    case ValueKind::Bool:
      return Wrap(ParseBool(text), error, Shown(text) + " is not true or false");
    case ValueKind::Date:
      return Wrap(ParseDate(text), error,
                  Shown(text) + " is not a date of the form YYYY-MM-DDTHH:MM:SSZ");
    case ValueKind::Data:
      return Wrap(DecodeBase64(text), error, Shown(text) + " is not base64 data");
    case ValueKind::Dict:
      return ParseContainer(text, ValueType::Dictionary, error);
    case ValueKind::Array:
      return ParseContainer(text, ValueType::Array, error);
  }
  *error = "unknown value type";
  return std::nullopt;
}

std::string UnstorableTextReason(std::string_view text) {
  if (!IsValidUtf8(text)) return "is not valid UTF-8 text";
  for (char ch : text) {
    const auto c = static_cast<unsigned char>(ch);
    // XML 1.0 has no way to write the other C0 controls, even escaped.
    if (c < 0x20 && ch != '\t' && ch != '\n' && ch != '\r') {
      return "holds a control character (" + QuoteString(std::string_view(&ch, 1)) +
             ") that a property-list file cannot store";
    }
  }
  return "";
}

std::string FormatReal(double d) {
  std::array<char, 64> buf{};
  auto [end, ec] = std::to_chars(buf.data(), buf.data() + buf.size(), d);
  if (ec != std::errc{}) return "nan";
  return std::string(buf.data(), end);
}

std::string FormatDate(Date date) {
  const double whole = std::floor(date.seconds);
  const double first = static_cast<double>(kFirstUnixSecond - kUnixToPlistEpoch);
  const double last = static_cast<double>(kLastUnixSecond - kUnixToPlistEpoch);
  if (!std::isfinite(whole) || whole < first || whole > last) {
    return FormatReal(date.seconds) + " s from 2001-01-01T00:00:00Z";
  }
  const std::int64_t unix = static_cast<std::int64_t>(whole) + kUnixToPlistEpoch;
  std::int64_t days = unix / 86400;
  std::int64_t secs = unix % 86400;
  if (secs < 0) {
    secs += 86400;
    --days;
  }
  const CivilDate c = CivilFromDays(days);
  std::array<char, 32> buf{};
  std::snprintf(buf.data(), buf.size(), "%04d-%02d-%02dT%02d:%02d:%02dZ", static_cast<int>(c.year),
                c.month, c.day, static_cast<int>(secs / 3600), static_cast<int>(secs / 60 % 60),
                static_cast<int>(secs % 60));
  return buf.data();
}

std::optional<Date> ParseDate(std::string_view text) {
  if (text.size() != 20 || text[4] != '-' || text[7] != '-' || text[10] != 'T' || text[13] != ':' ||
      text[16] != ':' || text[19] != 'Z') {
    return std::nullopt;
  }
  const int year = Digits(text, 0, 4), month = Digits(text, 5, 2), day = Digits(text, 8, 2);
  const int hour = Digits(text, 11, 2), minute = Digits(text, 14, 2), second = Digits(text, 17, 2);
  if (year < 1 || month < 1 || month > 12 || day < 1 || day > DaysInMonth(year, month) ||
      hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59) {
    return std::nullopt;
  }
  const std::int64_t unix =
      DaysFromCivil(year, month, day) * 86400 + hour * 3600 + minute * 60 + second;
  return Date{static_cast<double>(unix - kUnixToPlistEpoch)};
}

std::string EncodeBase64(std::span<const std::uint8_t> bytes) {
  static constexpr char kAlphabet[] =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string out;
  out.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t n = std::min<std::size_t>(3, bytes.size() - i);
    std::uint32_t group = static_cast<std::uint32_t>(bytes[i]) << 16;
    if (n > 1) group |= static_cast<std::uint32_t>(bytes[i + 1]) << 8;
    if (n > 2) group |= bytes[i + 2];
    for (std::size_t k = 0; k < 4; ++k) {
      out += k <= n ? kAlphabet[(group >> (18 - 6 * k)) & 0x3f] : '=';
    }
  }
  return out;
}

std::optional<Data> DecodeBase64(std::string_view text) {
  Data out;
  std::uint32_t bits = 0;
  int nbits = 0, digits = 0, padding = 0;
  for (char c : text) {
    if (IsSpace(c)) continue;
    if (c == '=') {
      ++padding;
      continue;
    }
    const int v = Base64Digit(c);
    if (v < 0 || padding > 0) return std::nullopt;  // foreign byte, or data after padding
    ++digits;
    bits = (bits << 6) | static_cast<std::uint32_t>(v);
    nbits += 6;
    if (nbits >= 8) {
      nbits -= 8;
      out.push_back(static_cast<std::uint8_t>(bits >> nbits));
      bits &= (1u << nbits) - 1;
    }
  }
  if (digits % 4 == 1 || padding > 2 || (padding > 0 && (digits + padding) % 4 != 0)) {
    return std::nullopt;
  }
  return out;
}

std::string QuoteString(std::string_view text) {
  const bool utf8 = IsValidUtf8(text);
  std::string out = "\"";
  for (char ch : text) {
    const auto c = static_cast<unsigned char>(ch);
    if (ch == '"' || ch == '\\') {
      out += '\\';
      out += ch;
    } else if (ch == '\n') {
      out += "\\n";
    } else if (ch == '\t') {
      out += "\\t";
    } else if (ch == '\r') {
      out += "\\r";
    } else if (c < 0x20 || c == 0x7f || (c >= 0x80 && !utf8)) {
      std::array<char, 8> buf{};
      std::snprintf(buf.data(), buf.size(), "\\x%02x", c);
      out += buf.data();
    } else {
      out += ch;
    }
  }
  return out + "\"";
}

std::string DataPreview(const Data& data, std::size_t maxBytes) {
  std::string out = std::to_string(data.size()) + (data.size() == 1 ? " byte" : " bytes");
  if (data.empty()) return out;
  out += ':';
  const std::size_t shown = std::min(data.size(), maxBytes);
  for (std::size_t i = 0; i < shown; ++i) {
    if (i % 4 == 0) out += ' ';
    std::array<char, 4> buf{};
    std::snprintf(buf.data(), buf.size(), "%02x", data[i]);
    out += buf.data();
  }
  if (shown < data.size()) out += " ...";
  return out;
}

std::string PlainText(const Value& value) {
  switch (value.type()) {
    case ValueType::Boolean:
      return *value.boolean() ? "true\n" : "false\n";
    case ValueType::Integer:
      return std::to_string(*value.integer()) + "\n";
    case ValueType::Real:
      return FormatReal(*value.real()) + "\n";
    case ValueType::String:
      return *value.string() + "\n";
    case ValueType::Data:
      return EncodeBase64(*value.data()) + "\n";
    case ValueType::Date:
      return FormatDate(*value.date()) + "\n";
    case ValueType::Array:
    case ValueType::Dictionary: {
      std::string xml = ToXmlPropertyList(value);
      if (xml.empty() || xml.back() != '\n') xml += '\n';
      return xml;
    }
  }
  return "\n";
}

void DumpValue(std::ostream& out, std::string_view label, const Value& value, int depth) {
  out << std::string(static_cast<std::size_t>(depth) * 2, ' ') << label << ": "
      << TypeLabel(value.type()) << ' ' << DumpText(value) << '\n';
  DumpChildren(out, value, depth);
}

std::string ShownKey(std::string_view key) {
  bool plain = !key.empty() && key.front() != ' ' && key.back() != ' ' && key.front() != '[';
  for (char ch : key) {
    const auto c = static_cast<unsigned char>(ch);
    if (c < 0x20 || c == 0x7f || ch == ':' || ch == '"' || ch == '\\') plain = false;
  }
  return plain && IsValidUtf8(key) ? std::string(key) : QuoteString(key);
}

}  // namespace zorva::cli

// Reading a Type 42 program's name and sfnts strings (see type42_reader.h).
#include "watermarks/type42_reader.h"

#include <cctype>

namespace zorva {
namespace {

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

bool IsSpace(char c) {
  return std::isspace(static_cast<unsigned char>(c)) != 0;
}

// One <...> string from `at` (just past its '<') to its '>'; false when a
// character in it is not a hex digit or white space, or the '>' is missing.
bool DecodeHexString(std::string_view text, std::size_t& at, std::vector<std::uint8_t>& out) {
  std::vector<std::uint8_t> bytes;
  int high = -1;
  for (; at < text.size(); ++at) {
    const char c = text[at];
    if (c == '>') {
      ++at;
      if (high >= 0) bytes.push_back(static_cast<std::uint8_t>(high << 4));  // odd digit count
      // A string of odd length ends with the one padding byte the format asks for.
      if (bytes.size() % 2 == 1) bytes.pop_back();
      out.insert(out.end(), bytes.begin(), bytes.end());
      return true;
    }
    if (IsSpace(c)) continue;
    const int v = HexValue(c);
    if (v < 0) return false;
    if (high < 0) {
      high = v;
    } else {
      bytes.push_back(static_cast<std::uint8_t>((high << 4) | v));
      high = -1;
    }
  }
  return false;
}

std::string NameAfter(std::string_view program, std::string_view key) {
  const std::size_t at = program.find(key);
  if (at == std::string_view::npos) return {};
  std::size_t i = at + key.size();
  while (i < program.size() && IsSpace(program[i])) ++i;
  if (i >= program.size() || program[i] != '/') return {};
  const std::size_t start = ++i;
  while (i < program.size() && !IsSpace(program[i]) &&
         std::string_view("()<>[]{}/%").find(program[i]) == std::string_view::npos) {
    ++i;
  }
  return std::string(program.substr(start, i - start));
}

}  // namespace

bool IsType42Program(std::string_view bytes) {
  return bytes.substr(0, 17) == "%!PS-TrueTypeFont";
}

std::optional<Type42Font> ReadType42Program(std::string_view program) {
  Type42Font font;
  font.fontName = NameAfter(program, "/FontName");
  const std::size_t sfnts = program.find("/sfnts");
  if (font.fontName.empty() || sfnts == std::string_view::npos) return std::nullopt;
  std::size_t at = program.find('[', sfnts);
  if (at == std::string_view::npos) return std::nullopt;
  ++at;
  while (at < program.size()) {
    const char c = program[at];
    if (c == ']') break;
    if (IsSpace(c)) {
      ++at;
    } else if (c == '<') {
      ++at;
      if (!DecodeHexString(program, at, font.sfnt)) return std::nullopt;
    } else {
      return std::nullopt;
    }
  }
  if (at >= program.size() || font.sfnt.empty()) return std::nullopt;
  return font;
}

}  // namespace zorva

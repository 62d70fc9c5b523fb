// Builds small TrueType files for the Type 42 tests: just the tables the
// converter reads (head, maxp, post, name, loca, glyf) plus any extra ones,
// laid out in the order given, each on a 4-byte boundary. Glyph data is
// filler: only its offsets matter to the converter.
#pragma once

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "support/test_support.h"

namespace zorva::test {

using Bytes = std::vector<std::uint8_t>;

inline void Put16(Bytes& b, std::uint32_t v) {
  b.push_back(static_cast<std::uint8_t>(v >> 8));
  b.push_back(static_cast<std::uint8_t>(v));
}
inline void Put32(Bytes& b, std::uint32_t v) {
  Put16(b, v >> 16);
  Put16(b, v & 0xFFFF);
}
inline void Set16(Bytes& b, std::size_t at, std::uint32_t v) {
  b.at(at) = static_cast<std::uint8_t>(v >> 8);
  b.at(at + 1) = static_cast<std::uint8_t>(v);
}
inline void Set32(Bytes& b, std::size_t at, std::uint32_t v) {
  Set16(b, at, v >> 16);
  Set16(b, at + 2, v & 0xFFFF);
}

struct FontTable {
  std::string tag;
  Bytes data;
};

struct FontSpec {
  std::uint32_t revision = 0x00018000;  // 1.5
  std::uint32_t magic = 0x5F0F3CF5;
  std::int16_t bbox[4] = {-100, -512, 2100, 1900};
  bool longLoca = false;
  std::uint32_t postFormat = 0x00020000;
  std::uint32_t minMem = 0;
  std::uint32_t maxMem = 0;
  std::vector<std::uint16_t> nameIndices = {0, 36, 3};  // .notdef A space
  std::vector<std::string> extraNames;                  // the Pascal strings
  std::vector<std::uint32_t> glyphSizes = {8, 12, 0};
  std::uint16_t nameFormat = 0;
  std::string postScriptName = "TinyFont";
  std::vector<FontTable> extraTables;  // placed after "name"
  std::vector<std::string> omit;       // tags left out
};

struct BuiltFont {
  Bytes bytes;
  std::map<std::string, std::uint32_t> offsets;
};

inline Bytes HeadTable(const FontSpec& s) {
  Bytes b;
  Put32(b, 0x00010000);
  Put32(b, s.revision);
  Put32(b, 0);  // checksum adjustment
  Put32(b, s.magic);
  Put16(b, 0);                 // flags
  Put16(b, 2048);              // units per em
  b.resize(b.size() + 16, 0);  // created, modified
  for (std::int16_t v : s.bbox) Put16(b, static_cast<std::uint16_t>(v));
  Put16(b, 0);  // mac style
  Put16(b, 8);  // lowest readable size
  Put16(b, 2);  // direction hint
  Put16(b, s.longLoca ? 1 : 0);
  Put16(b, 0);
  return b;
}

inline Bytes PostTable(const FontSpec& s) {
  Bytes b;
  Put32(b, s.postFormat);
  b.resize(b.size() + 12, 0);  // italic angle, underline, fixed pitch
  Put32(b, s.minMem);
  Put32(b, s.maxMem);
  b.resize(b.size() + 8, 0);  // Type 1 memory
  if (s.postFormat != 0x00020000) return b;
  Put16(b, static_cast<std::uint32_t>(s.nameIndices.size()));
  for (std::uint16_t i : s.nameIndices) Put16(b, i);
  for (const std::string& name : s.extraNames) {
    b.push_back(static_cast<std::uint8_t>(name.size()));
    b.insert(b.end(), name.begin(), name.end());
  }
  return b;
}

// One Macintosh record and one Windows record for the PostScript name.
inline Bytes NameTable(const FontSpec& s) {
  Bytes b;
  Put16(b, s.nameFormat);
  Put16(b, 2);
  Put16(b, 6 + 2 * 12);
  const auto length = static_cast<std::uint32_t>(s.postScriptName.size());
  for (std::uint32_t platform : {1u, 3u}) {
    Put16(b, platform);
    Put16(b, platform == 1 ? 0 : 1);
    Put16(b, platform == 1 ? 0 : 0x409);
    Put16(b, 6);
    Put16(b, platform == 1 ? length : 2 * length);
    Put16(b, platform == 1 ? 0 : length);
  }
  b.insert(b.end(), s.postScriptName.begin(), s.postScriptName.end());
  for (char c : s.postScriptName) Put16(b, static_cast<unsigned char>(c));
  return b;
}

inline std::vector<FontTable> StandardTables(const FontSpec& s) {
  Bytes maxp;
  Put32(maxp, 0x00005000);
  Put16(maxp, static_cast<std::uint32_t>(s.glyphSizes.size()));
  Bytes loca, glyf;
  std::uint32_t at = 0;
  for (std::size_t g = 0; g <= s.glyphSizes.size(); ++g) {
    s.longLoca ? Put32(loca, at) : Put16(loca, at / 2);
    if (g == s.glyphSizes.size()) break;
    for (std::uint32_t i = 0; i < s.glyphSizes[g]; ++i) {
      glyf.push_back(static_cast<std::uint8_t>(g * 7 + i));
    }
    at += s.glyphSizes[g];
  }
  std::vector<FontTable> tables = {
      {"head", HeadTable(s)}, {"maxp", maxp}, {"post", PostTable(s)}, {"name", NameTable(s)}};
  tables.insert(tables.end(), s.extraTables.begin(), s.extraTables.end());
  tables.push_back({"loca", loca});
  tables.push_back({"glyf", glyf});
  return tables;
}

inline BuiltFont BuildFont(const FontSpec& s) {
  std::vector<FontTable> tables = StandardTables(s);
  std::erase_if(tables, [&](const FontTable& t) {
    return std::find(s.omit.begin(), s.omit.end(), t.tag) != s.omit.end();
  });
  BuiltFont font;
  Bytes& b = font.bytes;
  Put32(b, 0x00010000);
  Put32(b, static_cast<std::uint32_t>(tables.size()) << 16);  // then the search fields
  Put32(b, 0);
  std::uint32_t offset = static_cast<std::uint32_t>(12 + 16 * tables.size());
  for (const FontTable& t : tables) {
    b.insert(b.end(), t.tag.begin(), t.tag.end());
    Put32(b, 0);
    Put32(b, offset);
    Put32(b, static_cast<std::uint32_t>(t.data.size()));
    font.offsets[t.tag] = offset;
    offset += static_cast<std::uint32_t>((t.data.size() + 3) / 4 * 4);
  }
  for (const FontTable& t : tables) {
    b.insert(b.end(), t.data.begin(), t.data.end());
    b.resize((b.size() + 3) / 4 * 4, 0);
  }
  return font;
}

// Builds the font and writes it to path, for tests that run the tools on it.
inline std::string WriteFont(const std::filesystem::path& path, const FontSpec& spec) {
  const Bytes bytes = BuildFont(spec).bytes;
  WriteText(path, std::string(bytes.begin(), bytes.end()));
  return path.string();
}

}  // namespace zorva::test

// Character to glyph look-up in a TrueType font's "cmap" table, so a
// watermark's text can be drawn with any glyph of its embedded font, not only
// the 256 that fit one encoding vector. Reads the Unicode subtables a font
// carries for that purpose (format 4 for the Basic Multilingual Plane, format
// 12 for all of Unicode); font bytes are untrusted and read through
// FontCursor only.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace zorva {

class FontCharacterMap {
 public:
  // The font's best Unicode subtable (format 12 before format 4, Windows
  // before Unicode platform); nullopt when the font has none it can read.
  static std::optional<FontCharacterMap> Read(std::span<const std::uint8_t> font);

  // The glyph for a code point; 0 (the font's .notdef) when it has none.
  std::uint16_t Glyph(char32_t codePoint) const;

  // Number of glyphs in the font ("maxp"); glyph ids at or above it are
  // not glyphs of this font.
  std::uint16_t glyphCount() const { return glyphCount_; }

 private:
  struct Range {
    char32_t first = 0;
    char32_t last = 0;
    std::uint32_t startGlyph = 0;     // format 12: the glyph of `first`
    std::int32_t delta = 0;           // format 4: idDelta
    std::uint32_t rangeOffsetAt = 0;  // format 4: absolute offset of the idRangeOffset word, or 0
  };
  std::span<const std::uint8_t> font_;  // held for format 4's glyph id array
  std::vector<Range> ranges_;
  bool format12_ = false;
  std::uint16_t glyphCount_ = 0;
};

// The code points of UTF-8 text; a byte that does not start a valid sequence
// reads as U+FFFD, so text from a damaged record still draws something.
std::vector<char32_t> DecodeUtf8(std::span<const char> text);

}  // namespace zorva

// Reading a font's "cmap" table (see font_cmap.h).
#include "watermarks/font_cmap.h"

#include <algorithm>

#include "watermarks/font_cursor.h"
#include "watermarks/type42.h"

namespace zorva {
namespace {

// Subtables are tried best first: full Unicode, then the BMP, Windows
// records before the Unicode platform's.
struct Candidate {
  std::uint16_t platform;
  std::uint16_t encoding;
  std::uint16_t format;
};
constexpr Candidate kPreferred[] = {
    {3, 10, 12}, {0, 4, 12}, {0, 6, 12}, {3, 1, 4}, {0, 3, 4}, {0, 1, 4}, {0, 0, 4},
};

// A font lists each range once; more than this is not a font we draw with.
constexpr std::uint32_t kMaxRanges = 1u << 17;

std::optional<std::uint64_t> FindSubtable(const FontCursor& cmap, std::uint64_t base) {
  FontCursor c = cmap.At(base, "cmap header");
  c.Skip(2);
  const std::uint16_t count = c.U16();
  std::optional<std::uint64_t> best;
  std::size_t bestRank = std::size(kPreferred);
  for (std::uint16_t i = 0; i < count; ++i) {
    const std::uint16_t platform = c.U16();
    const std::uint16_t encoding = c.U16();
    const std::uint64_t at = base + c.U32();
    const std::uint16_t format = cmap.At(at, "cmap subtable").U16();
    for (std::size_t rank = 0; rank < bestRank; ++rank) {
      const Candidate& want = kPreferred[rank];
      if (want.platform == platform && want.encoding == encoding && want.format == format) {
        best = at;
        bestRank = rank;
        break;
      }
    }
  }
  return best;
}

}  // namespace

std::optional<FontCharacterMap> FontCharacterMap::Read(std::span<const std::uint8_t> font) {
  try {
    const std::vector<TableRecord> directory = ReadTableDirectory(font);
    const TableRecord* cmap = find_table("cmap", directory);
    const TableRecord* maxp = find_table("maxp", directory);
    if (!cmap || !maxp) return std::nullopt;
    FontCharacterMap map;
    map.font_ = font;
    const FontCursor root(font);
    map.glyphCount_ = root.At(std::uint64_t{maxp->offset} + 4, "maxp").U16();
    const auto subtable = FindSubtable(root, cmap->offset);
    if (!subtable) return std::nullopt;
    FontCursor c = root.At(*subtable, "cmap subtable");
    const std::uint16_t format = c.U16();
    if (format == 12) {
      c.Skip(10);  // reserved, length, language
      const std::uint32_t groups = c.U32();
      if (groups > kMaxRanges) return std::nullopt;
      map.format12_ = true;
      for (std::uint32_t i = 0; i < groups; ++i) {
        Range r;
        r.first = c.U32();
        r.last = c.U32();
        r.startGlyph = c.U32();
        if (r.last >= r.first) map.ranges_.push_back(r);
      }
    } else {
      c.Skip(4);  // length, language
      const std::uint16_t segments = c.U16() / 2;
      c.Skip(6);
      const std::uint64_t ends = c.position();
      const std::uint64_t starts = ends + 2ull * segments + 2;
      const std::uint64_t deltas = starts + 2ull * segments;
      const std::uint64_t offsets = deltas + 2ull * segments;
      for (std::uint16_t i = 0; i < segments; ++i) {
        Range r;
        r.last = root.At(ends + 2ull * i, "cmap segment end").U16();
        r.first = root.At(starts + 2ull * i, "cmap segment start").U16();
        r.delta = root.At(deltas + 2ull * i, "cmap delta").I16();
        const std::uint64_t offsetAt = offsets + 2ull * i;
        if (root.At(offsetAt, "cmap range offset").U16() != 0) {
          r.rangeOffsetAt = static_cast<std::uint32_t>(offsetAt);
        }
        if (r.last >= r.first) map.ranges_.push_back(r);
      }
    }
    std::sort(map.ranges_.begin(), map.ranges_.end(),
              [](const Range& a, const Range& b) { return a.first < b.first; });
    return map;
  } catch (const FontFormatError&) {
    return std::nullopt;
  }
}

std::uint16_t FontCharacterMap::Glyph(char32_t codePoint) const {
  auto it = std::upper_bound(ranges_.begin(), ranges_.end(), codePoint,
                             [](char32_t cp, const Range& r) { return cp < r.first; });
  if (it == ranges_.begin()) return 0;
  const Range& r = *--it;
  if (codePoint > r.last) return 0;
  std::uint32_t glyph = 0;
  if (format12_) {
    glyph = r.startGlyph + (codePoint - r.first);
  } else if (r.rangeOffsetAt == 0) {
    glyph = static_cast<std::uint16_t>(static_cast<std::int32_t>(codePoint) + r.delta);
  } else {
    try {
      const FontCursor root(font_);
      const std::uint16_t rangeOffset = root.At(r.rangeOffsetAt, "cmap range offset").U16();
      const std::uint64_t at =
          std::uint64_t{r.rangeOffsetAt} + rangeOffset + 2ull * (codePoint - r.first);
      const std::uint16_t raw = root.At(at, "cmap glyph array").U16();
      if (raw != 0) glyph = static_cast<std::uint16_t>(raw + r.delta);
    } catch (const FontFormatError&) {
      return 0;
    }
  }
  return glyph < glyphCount_ ? static_cast<std::uint16_t>(glyph) : 0;
}

std::vector<char32_t> DecodeUtf8(std::span<const char> text) {
  std::vector<char32_t> out;
  std::size_t i = 0;
  while (i < text.size()) {
    const auto lead = static_cast<unsigned char>(text[i]);
    int extra = lead < 0x80                   ? 0
                : lead >= 0xF0 && lead < 0xF5 ? 3
                : lead >= 0xE0                ? 2
                : lead >= 0xC2                ? 1
                                              : -1;
    if (lead >= 0xF5) extra = -1;
    char32_t cp = extra == 0   ? lead
                  : extra == 1 ? lead & 0x1F
                  : extra == 2 ? lead & 0x0F
                               : lead & 0x07;
    bool valid =
        extra >= 0 && i + static_cast<std::size_t>(extra) < text.size() + (extra == 0 ? 1 : 0);
    for (int k = 1; valid && k <= extra; ++k) {
      const auto next = static_cast<unsigned char>(text[i + static_cast<std::size_t>(k)]);
      if ((next & 0xC0) != 0x80) valid = false;
      cp = (cp << 6) | (next & 0x3F);
    }
    // Overlong forms, surrogates and values past U+10FFFF are not characters.
    constexpr char32_t kMin[] = {0, 0x80, 0x800, 0x10000};
    if (valid && (cp < kMin[extra] || (cp >= 0xD800 && cp <= 0xDFFF) || cp > 0x10FFFF))
      valid = false;
    if (!valid) {
      out.push_back(U'\uFFFD');
      ++i;
      continue;
    }
    out.push_back(cp);
    i += static_cast<std::size_t>(extra) + 1;
  }
  return out;
}

}  // namespace zorva

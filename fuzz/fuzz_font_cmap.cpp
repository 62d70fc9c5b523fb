// Feeds arbitrary bytes to the character-map reader the watermark's text is
// drawn through, and looks up characters in whatever it reads: no read may
// leave the font, and every glyph answered is a glyph of the font. Bytes
// that start as a Type 42 program go through the program reader first, as
// the watermark store's fonts do.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "watermarks/font_cmap.h"
#include "watermarks/type42_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::span<const std::uint8_t> font(data, size);
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  std::optional<zorva::Type42Font> program;
  if (zorva::IsType42Program(bytes)) {
    program = zorva::ReadType42Program(bytes);
    if (!program) return 0;
    if (program->fontName.empty() || program->sfnt.size() > size) __builtin_trap();
    font = program->sfnt;
  }
  const auto cmap = zorva::FontCharacterMap::Read(font);
  const std::string_view text(reinterpret_cast<const char*>(data), size < 64 ? size : 64);
  for (char32_t cp : zorva::DecodeUtf8(text)) {
    if (cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) __builtin_trap();
    if (cmap) {
      const std::uint16_t g = cmap->Glyph(cp);
      if (g != 0 && g >= cmap->glyphCount()) __builtin_trap();
    }
  }
  if (cmap) {
    for (char32_t cp : {U'A', U'\u00E9', U'\u2588', U'\U0001F600', U'\uFFFF'}) {
      const std::uint16_t g = cmap->Glyph(cp);
      if (g != 0 && g >= cmap->glyphCount()) __builtin_trap();
    }
  }
  return 0;
}

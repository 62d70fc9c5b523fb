// Reading a Type 42 font program back: the font's name and the TrueType
// bytes its sfnts strings carry. The watermark store may hold a font either
// as its TrueType file or as the program already converted for the printer;
// a stored program is sent as it is, and read back only so the watermark's
// text can be looked up in the font's character map. The program is the
// user's data: anything malformed reads as nothing.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zorva {

struct Type42Font {
  std::string fontName;            // the name after /FontName
  std::vector<std::uint8_t> sfnt;  // the TrueType bytes, padding dropped
};

// True when the bytes start as a Type 42 program does ("%!PS-TrueTypeFont").
bool IsType42Program(std::string_view bytes);

// The name and the font of a Type 42 program; nullopt when either is
// missing or a string is not hexadecimal.
std::optional<Type42Font> ReadType42Program(std::string_view program);

}  // namespace zorva

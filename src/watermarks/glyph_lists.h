// The two fixed glyph-name lists a Type 42 program is built from: the 258
// standard Macintosh glyph names that "post" table name indices below 258
// refer to, and the PostScript standard encoding every program starts from.
#pragma once

#include <array>
#include <string_view>

namespace zorva {

// Standard Macintosh glyph order. Entry 2 is spelled "CR" (not the longer name
// other lists use): programs we send have always named it so.
extern const std::array<std::string_view, 258> macGlyphEncoding;

// The PostScript standard encoding; codes without a character are ".notdef".
extern const std::array<std::string_view, 256> StandardEncodings;

}  // namespace zorva

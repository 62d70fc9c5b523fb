// TrueType to Type 42 conversion: a watermark drawn in a TrueType font the
// printer lacks goes to the printer as a PostScript Type 42 font program that
// carries the whole font file as hexadecimal strings. The program text is
// fixed line by line (printers and our own tests compare it byte for byte);
// the font bytes are untrusted and read through FontCursor only.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <iostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zorva {

// The longest data string an sfnts entry may hold (the PostScript string
// limit less the one padding byte every string ends with).
inline constexpr std::uint32_t kMaxSfntsString = 65534;

// One record of the font's table directory.
struct TableRecord {
  std::array<char, 4> tag{};
  std::uint32_t checksum = 0;
  std::uint32_t offset = 0;
  std::uint32_t length = 0;

  std::string_view tagText() const { return {tag.data(), tag.size()}; }
};

// The table directory: the table count at byte 4, 16-byte records from byte
// 12. Throws FontFormatError when the records do not fit in the font.
std::vector<TableRecord> ReadTableDirectory(std::span<const std::uint8_t> font);

// The first record whose tag is tag (four characters), or null.
const TableRecord* find_table(std::string_view tag, std::span<const TableRecord> directory);

// The font's PostScript name (name ID 6 of the "name" table, from a Windows
// UTF-16BE record, else a Macintosh one), keeping only the characters a
// PostScript name may hold. Empty when the font has none or cannot be read.
std::string ReadPostScriptName(std::span<const std::uint8_t> font);

struct Type42Options {
  // Oversized tables (and glyph data without a usable glyph boundary) are
  // cut at 4-byte boundaries instead of ending the program, and only split
  // points on 4-byte boundaries are used, so every string but the last has
  // data of even length (an interpreter reads a string of even total length
  // as all font data, so the padding byte after odd-length data would shift
  // everything behind it). Off: the program is exactly the standard one,
  // which stops at the first table it cannot split.
  bool splitLargeTables = false;
};

enum class Type42Status {
  kComplete,    // the whole program was appended
  kIncomplete,  // stopped inside sfnts: no split point within kMaxSfntsString bytes
  kMalformed,   // the font cannot be converted; nothing was appended
};

struct Type42Result {
  Type42Status status = Type42Status::kComplete;
  // kMalformed: what is wrong, without the "DEBUG: " prefix of the stream.
  std::string message;
  // kIncomplete: the table the conversion stopped in (empty when the stop
  // falls between tables), its length in bytes, and the font offset at which
  // the next string would have started.
  std::string table;
  std::uint32_t tableLength = 0;
  std::uint64_t stopOffset = 0;

  bool complete() const { return status == Type42Status::kComplete; }
};

// Appends the Type 42 program for font, named fontName (UTF-8, cut to 511
// bytes), to output. Only the missing-table and bad-magic diagnostics go to
// diagnostics (none when null); every other refusal (a "post" glyph count
// that differs from "maxp", a "name" table format other than 0, units per em
// of 0, data that runs past the font's end) is silent there and reported only
// in the result's message, which callers put in their own error text. A
// malformed font appends nothing; an incomplete program keeps what was
// appended.
Type42Result convertTTFtoPS42(std::span<const std::uint8_t> font, std::string_view fontName,
                              std::string& output, const Type42Options& options = {},
                              std::ostream* diagnostics = &std::cerr);

// Receives the program in order, a piece at a time.
using Type42Sink = std::function<void(std::string_view)>;

// The same program handed to sink in pieces of about 64 KB, for callers that
// write it out and need not hold it whole. The sink's exceptions pass through.
Type42Result convertTTFtoPS42(std::span<const std::uint8_t> font, std::string_view fontName,
                              const Type42Sink& sink, const Type42Options& options = {},
                              std::ostream* diagnostics = &std::cerr);

}  // namespace zorva

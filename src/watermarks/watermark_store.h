// The watermark store: the user's watermarks (text or picture, with font,
// colours, angle, density, scale and position), the ordered list of names the
// watermark menu shows, and font data the watermarks need, all kept in one
// XML property-list file in the machine-wide data folder so they survive
// between uses and are shared by every user of the machine.
//
// File layout (root dictionary):
//   <watermark name>          dictionary, one per watermark (keys below);
//                             the name is the text of a text watermark and
//                             the file name of a picture watermark
//   "WatermarkListEntries"    array of names in menu order
//   "com.zorva.printing.font.<PostScript name>"
//                             data, a font stored by storeFontData
//
// Entry keys: "textString", "filename", "filePath", "fontName" (strings);
// "xOffset", "yOffset", the four "fontColor*" and four "wellColor*" channels
// (reals written from 32-bit floats, so they read back as the same floats);
// "xPos", "yPos" (64-bit reals); "angle", "density", "scale", "units",
// "fontSize" (integers); "glyphCount" (integer) and "glyphs" (data, two
// big-endian bytes per glyph code), both only when the record has glyphs.
//
// Fonts share the file with the watermarks, whose names are whatever the user
// typed, so a font's key carries a reverse-DNS prefix that no watermark text
// plausibly starts with; the names of the list and of font keys are refused as
// watermark names, so saving a watermark never overwrites either.
//
// Every write rereads the whole file, changes it and replaces it atomically,
// so a failed write leaves the previous file exactly as it was.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zorva {

class Bundle;

inline constexpr std::string_view kWatermarkFileName = "com.zorva.printing.watermarks.plist";
inline constexpr std::string_view kWatermarkListKey = "WatermarkListEntries";
inline constexpr std::string_view kWatermarkFontKeyPrefix = "com.zorva.printing.font.";

// Sizes of the record's text fields as fixed C buffers, terminating NUL
// included: a field holds at most one byte less. Longer text is cut at a
// UTF-8 character boundary wherever it enters a record (the defaults, a
// loaded entry, a saved record), so every reader of the file, including ones
// with fixed buffers, gets text that fits.
inline constexpr std::size_t kWatermarkTextBytes = 512;       // textString, filename, fontName
inline constexpr std::size_t kWatermarkFilePathBytes = 8192;  // filePath

struct WatermarkData {
  std::string textString;  // the text of a text watermark (UTF-8)
  std::string filename;    // the picture's file name
  std::string filePath;    // the picture's full path
  std::string fontName;    // PostScript name of the font
  float xOffset = 0;
  float yOffset = 0;
  float fontColorRed = 0;  // colour channels run from 0.0 to 1.0
  float fontColorGreen = 0;
  float fontColorBlue = 0;
  float fontColorAlpha = 0;
  float wellColorRed = 0;
  float wellColorGreen = 0;
  float wellColorBlue = 0;
  float wellColorAlpha = 0;
  std::int32_t angle = 0;
  std::int32_t density = 0;
  std::int32_t scale = 0;
  std::int32_t units = 0;
  std::int32_t fontSize = 0;
  // A text watermark (else a picture). The file has no key for it: a loaded
  // record is a text watermark when its entry is stored under its text.
  bool isText = false;
  double xPos = 0;  // position on the page
  double yPos = 0;
  // The glyph codes; nullopt is "no glyphs", which writes no glyph keys
  // (an empty array still writes a count of 0 and empty data).
  std::optional<std::vector<std::uint16_t>> glyphs;

  std::int32_t glyphCount() const;
  // The name the entry is stored under and the menu shows.
  const std::string& name() const { return isText ? textString : filename; }

  friend bool operator==(const WatermarkData&, const WatermarkData&) = default;
};

// text cut to at most maxBytes bytes, never inside a UTF-8 sequence.
std::string_view CutUtf8(std::string_view text, std::size_t maxBytes);

// Adds or replaces the record's entry (under record.name()). Returns 0 or the
// error code; a failure prints "saveWatermarkData: Error %ld writing data to
// file\n" to standard error. A name that is the list key or a font key is
// refused (EINVAL) with a message saying the name is reserved, and nothing is
// written.
int saveWatermarkData(std::string_view fileName, const WatermarkData& record);

// Fills the record from the entry of that name: true when the file has one
// (the record then starts from zero and takes every key present, text cut to
// its field's size); false, with the record untouched, otherwise.
bool loadWatermarkData(std::string_view fileName, std::string_view name, WatermarkData& record);

// Removes the entry and rewrites the file; 0 (also when there was no such
// entry, in which case nothing is written) or the error code, with
// "removeWatermarkData: Error %ld writing data to file\n" on a failed write.
// The name stays in the menu list: that is saveWatermarkList's business.
int removeWatermarkData(std::string_view fileName, std::string_view name);

// Stores the names under "WatermarkListEntries" and rewrites the file. An
// empty file name (no file) does nothing. 0 or the error code, with
// "saveWatermarkList: Error %ld writing data to file\n" on a failed write.
int saveWatermarkList(std::string_view fileName, const std::vector<std::string>& names);

// The names under "WatermarkListEntries" in menu order (elements that are not
// strings are skipped); empty when the file or the key is missing.
std::vector<std::string> loadWatermarkList(std::string_view fileName);

// The key a font's data is stored under.
std::string WatermarkFontKey(std::string_view fontName);

// Stores a font's bytes under WatermarkFontKey(fontName) and rewrites the
// file; 0 or the error code, with "storeFontData: Error %ld writing data to
// file\n" on a failed write. An empty font name is refused (EINVAL) with a
// message saying so.
int storeFontData(std::string_view fileName, std::string_view fontName,
                  std::span<const std::uint8_t> data);

// Appends the stored bytes of the font to buffer; false (buffer untouched)
// when there are none.
bool loadFontData(std::string_view fileName, std::string_view fontName,
                  std::vector<std::uint8_t>& buffer);

// The three default text watermarks, named from the bundle's strings
// "DraftWatermark", "ConfidentialWatermark" and "CopyWatermark" ("STRING NOT
// FOUND" without a bundle or key), in that order, each at its own position.
std::vector<WatermarkData> DefaultWatermarks(const Bundle* bundle);

// Saves the default watermarks into kWatermarkFileName and makes their names
// the menu list. Returns 0 or the first error code.
int CreateDefaultWatermarks(const Bundle* bundle);

}  // namespace zorva

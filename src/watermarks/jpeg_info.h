// What a picture watermark needs to know of a JPEG file before it is sent to
// the printer: its size in pixels, its colour components and its resolution.
// The file itself travels unchanged (PostScript decodes JPEG with its own
// DCTDecode filter), so nothing here decodes pixels. The bytes are the
// user's file: every read is checked.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace zorva {

struct JpegInfo {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  int components = 0;  // 1 grey, 3 colour (the only kinds drawn)
  bool progressive = false;
  // Pixels per inch from the JFIF header; 72 when the file gives none.
  double xDensity = 72;
  double yDensity = 72;
};

// The file's facts, or nullopt with the reason in *why (when given).
std::optional<JpegInfo> ReadJpegInfo(std::span<const std::uint8_t> bytes, std::string* why);

}  // namespace zorva

// Feeds arbitrary bytes to the JPEG header reader that sizes picture
// watermarks: it must not read outside the input, and a picture it accepts
// has a size and one or three components.
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "watermarks/jpeg_info.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string why;
  const auto info = zorva::ReadJpegInfo(std::span<const std::uint8_t>(data, size), &why);
  if (info) {
    if (info->width == 0 || info->height == 0) __builtin_trap();
    if (info->components != 1 && info->components != 3) __builtin_trap();
    if (!(info->xDensity > 0) || !(info->yDensity > 0)) __builtin_trap();
  } else if (why.empty()) {
    __builtin_trap();
  }
  return 0;
}

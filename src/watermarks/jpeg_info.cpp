// Scanning a JPEG file's markers for its frame header (see jpeg_info.h).
#include "watermarks/jpeg_info.h"

namespace zorva {
namespace {

class ByteReader {
 public:
  explicit ByteReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}
  bool has(std::size_t count) const { return count <= bytes_.size() - pos_; }
  std::uint8_t u8() { return bytes_[pos_++]; }
  std::uint16_t u16() {
    const auto v = static_cast<std::uint16_t>((bytes_[pos_] << 8) | bytes_[pos_ + 1]);
    pos_ += 2;
    return v;
  }
  std::size_t position() const { return pos_; }
  void seek(std::size_t at) { pos_ = at; }
  std::span<const std::uint8_t> bytes() const { return bytes_; }

 private:
  std::span<const std::uint8_t> bytes_;
  std::size_t pos_ = 0;
};

bool IsFrameMarker(std::uint8_t m) {
  // SOF0-SOF15 except DHT (C4), JPG (C8) and DAC (CC).
  return m >= 0xC0 && m <= 0xCF && m != 0xC4 && m != 0xC8 && m != 0xCC;
}

std::optional<JpegInfo> Fail(std::string* why, const char* reason) {
  if (why) *why = reason;
  return std::nullopt;
}

// JFIF APP0: "JFIF\0", version, units (1 per inch, 2 per cm), densities.
void ReadJfif(std::span<const std::uint8_t> segment, JpegInfo& info) {
  if (segment.size() < 12 || segment[0] != 'J' || segment[1] != 'F' || segment[2] != 'I' ||
      segment[3] != 'F' || segment[4] != 0) {
    return;
  }
  const int units = segment[7];
  const double x = (segment[8] << 8) | segment[9];
  const double y = (segment[10] << 8) | segment[11];
  if (x <= 0 || y <= 0 || (units != 1 && units != 2)) return;
  const double perInch = units == 1 ? 1.0 : 2.54;
  info.xDensity = x * perInch;
  info.yDensity = y * perInch;
}

}  // namespace

std::optional<JpegInfo> ReadJpegInfo(std::span<const std::uint8_t> bytes, std::string* why) {
  ByteReader r(bytes);
  if (!r.has(2) || r.u8() != 0xFF || r.u8() != 0xD8) return Fail(why, "not a JPEG file");
  JpegInfo info;
  while (true) {
    // Markers may be preceded by any number of 0xFF fill bytes.
    if (!r.has(2) || r.u8() != 0xFF) return Fail(why, "the JPEG file is damaged");
    std::uint8_t marker = r.u8();
    while (marker == 0xFF && r.has(1)) marker = r.u8();
    if (marker == 0xD9 || marker == 0xDA) return Fail(why, "the JPEG file has no frame header");
    if (marker == 0x01 || (marker >= 0xD0 && marker <= 0xD7)) continue;  // no length
    if (!r.has(2)) return Fail(why, "the JPEG file is cut short");
    const std::uint16_t length = r.u16();
    if (length < 2 || !r.has(length - 2u)) return Fail(why, "the JPEG file is cut short");
    const std::size_t start = r.position();
    if (marker == 0xE0) ReadJfif(bytes.subspan(start, length - 2u), info);
    if (IsFrameMarker(marker)) {
      if (length < 8) return Fail(why, "the JPEG frame header is damaged");
      r.u8();  // sample precision
      info.height = r.u16();
      info.width = r.u16();
      info.components = r.u8();
      info.progressive = marker == 0xC2 || marker == 0xC6 || marker == 0xCA || marker == 0xCE;
      if (marker != 0xC0 && marker != 0xC1 && marker != 0xC2) {
        return Fail(why, "the JPEG file uses a coding printers do not read");
      }
      if (info.width == 0 || info.height == 0) return Fail(why, "the JPEG file has no size");
      if (info.components != 1 && info.components != 3) {
        return Fail(why, "only grey and RGB JPEG pictures can be drawn");
      }
      return info;
    }
    r.seek(start + length - 2u);
  }
}

}  // namespace zorva

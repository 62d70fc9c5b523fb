// The one way font bytes are read: a big-endian cursor over the caller's
// buffer that checks every read against the buffer's end. Font files come
// from users and may be cut short or lie about offsets and counts; a read that
// would leave the buffer throws FontFormatError naming what was being read,
// so no code that parses a font ever indexes the raw bytes itself.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>

namespace zorva {

// A font that cannot be read as the TrueType layout it claims to be.
class FontFormatError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class FontCursor {
 public:
  explicit FontCursor(std::span<const std::uint8_t> data, std::uint64_t position = 0)
      : data_(data), pos_(position) {}

  // A cursor at an absolute position in the same buffer. what names the item
  // for the error should anything read through it fall outside the buffer.
  FontCursor At(std::uint64_t position, const char* what) const {
    FontCursor c(data_, position);
    c.what_ = what;
    return c;
  }

  std::uint64_t position() const { return pos_; }
  std::uint64_t size() const { return data_.size(); }
  // Bytes left from the position (0 when the position is past the end).
  std::uint64_t remaining() const { return pos_ < data_.size() ? data_.size() - pos_ : 0; }

  void Skip(std::uint64_t count) {
    Need(count);
    pos_ += count;
  }

  std::uint8_t U8() {
    Need(1);
    return data_[pos_++];
  }
  std::uint16_t U16() {
    Need(2);
    const auto v = static_cast<std::uint16_t>((data_[pos_] << 8) | data_[pos_ + 1]);
    pos_ += 2;
    return v;
  }
  std::int16_t I16() { return static_cast<std::int16_t>(U16()); }
  std::uint32_t U32() {
    Need(4);
    const std::uint32_t v = (std::uint32_t{data_[pos_]} << 24) |
                            (std::uint32_t{data_[pos_ + 1]} << 16) |
                            (std::uint32_t{data_[pos_ + 2]} << 8) | data_[pos_ + 3];
    pos_ += 4;
    return v;
  }
  std::int32_t I32() { return static_cast<std::int32_t>(U32()); }

  // The next count bytes, in place.
  std::span<const std::uint8_t> Bytes(std::uint64_t count) {
    Need(count);
    auto out = data_.subspan(static_cast<std::size_t>(pos_), static_cast<std::size_t>(count));
    pos_ += count;
    return out;
  }

 private:
  void Need(std::uint64_t count) const {
    if (pos_ > data_.size() || count > data_.size() - pos_) {
      throw FontFormatError(std::string(what_) + " runs past the end of the font (byte " +
                            std::to_string(pos_) + ", " + std::to_string(count) +
                            " bytes wanted, font has " + std::to_string(data_.size()) + ")");
    }
  }

  std::span<const std::uint8_t> data_;
  std::uint64_t pos_ = 0;
  const char* what_ = "font data";
};

}  // namespace zorva

// The nesting check: tags and lengths only, never a value's contents.
#include "paper/ipp_guard.h"

#include <cstdint>

namespace zorva {
namespace {

constexpr std::size_t kHeaderSize = 8;  // version, operation or status, request id
constexpr unsigned kEndOfAttributes = 0x03;
constexpr unsigned kFirstValueTag = 0x10;  // below: group delimiters
constexpr unsigned kExtensionTag = 0x7f;   // a four-byte tag follows
constexpr unsigned kBeginCollection = 0x34;
constexpr unsigned kEndCollection = 0x37;

class Cursor {
 public:
  Cursor(const unsigned char* data, std::size_t size) : at_(data), end_(data + size) {}
  bool has(std::size_t n) const { return static_cast<std::size_t>(end_ - at_) >= n; }
  unsigned byte() { return *at_++; }
  unsigned short16() {
    const unsigned v = (unsigned{at_[0]} << 8) | at_[1];
    at_ += 2;
    return v;
  }
  void skip(std::size_t n) { at_ += n; }

 private:
  const unsigned char* at_;
  const unsigned char* end_;
};

// Skips a length-prefixed field; false when the message ends inside it.
bool SkipField(Cursor& c) {
  if (!c.has(2)) return false;
  const unsigned length = c.short16();
  if (!c.has(length)) return false;
  c.skip(length);
  return true;
}

}  // namespace

bool IppNestingWithin(const unsigned char* data, std::size_t size, int maxDepth) {
  if (data == nullptr || size < kHeaderSize) return true;
  Cursor c(data, size);
  c.skip(kHeaderSize);
  int depth = 0;
  while (c.has(1)) {
    unsigned tag = c.byte();
    if (tag == kEndOfAttributes) return true;
    if (tag < kFirstValueTag) continue;  // a new attribute group
    if (tag == kExtensionTag) {
      if (!c.has(4)) return true;
      c.skip(4);
    }
    if (!SkipField(c) || !SkipField(c)) return true;  // name, then value
    if (tag == kBeginCollection && ++depth > maxDepth) return false;
    if (tag == kEndCollection && depth > 0) --depth;
  }
  return true;
}

}  // namespace zorva

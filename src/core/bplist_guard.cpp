// Iterative depth and size check of a binary property list's object graph.
#include "core/bplist_guard.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace zorva {

namespace {

constexpr std::size_t kHeaderSize = 8;
constexpr std::size_t kTrailerSize = 32;

std::uint64_t ReadBigEndian(const std::uint8_t* p, unsigned size) {
  std::uint64_t v = 0;
  for (unsigned i = 0; i < size; ++i) v = (v << 8) | p[i];
  return v;
}

struct Trailer {
  unsigned offsetSize = 0;
  unsigned refSize = 0;
  std::uint64_t objects = 0;
  std::uint64_t top = 0;
  std::uint64_t tableOffset = 0;
};

class Graph {
 public:
  explicit Graph(std::span<const std::uint8_t> b) : b_(b) {}

  std::string check(int maxDepth) {
    if (std::string e = readTrailer(); !e.empty()) return e;
    return walk(maxDepth);
  }

 private:
  enum class State : std::uint8_t { New, Open, Done };

  struct Node {
    std::vector<std::uint64_t> children;
    std::size_t next = 0;
  };

  std::string readTrailer() {
    if (b_.size() < kHeaderSize + kTrailerSize) return "truncated binary property list";
    const std::uint8_t* t = b_.data() + b_.size() - kTrailerSize;
    tr_.offsetSize = t[6];
    tr_.refSize = t[7];
    tr_.objects = ReadBigEndian(t + 8, 8);
    tr_.top = ReadBigEndian(t + 16, 8);
    tr_.tableOffset = ReadBigEndian(t + 24, 8);
    const std::uint64_t end = b_.size() - kTrailerSize;
    if (tr_.offsetSize < 1 || tr_.offsetSize > 8 || tr_.refSize < 1 || tr_.refSize > 8 ||
        tr_.objects == 0 || tr_.top >= tr_.objects || tr_.tableOffset < kHeaderSize ||
        tr_.tableOffset > end || tr_.objects > (end - tr_.tableOffset) / tr_.offsetSize) {
      return "malformed binary property list trailer";
    }
    return {};
  }

  std::optional<std::uint64_t> offsetOf(std::uint64_t object) const {
    std::uint64_t o =
        ReadBigEndian(b_.data() + tr_.tableOffset + object * tr_.offsetSize, tr_.offsetSize);
    if (o < kHeaderSize || o >= tr_.tableOffset) return std::nullopt;
    return o;
  }

  // Reads a container's element count at pos (just past the marker byte).
  std::optional<std::uint64_t> readCount(std::uint8_t marker, std::uint64_t& pos) const {
    std::uint64_t count = marker & 0x0F;
    if (count != 0x0F) return count;
    if (pos >= tr_.tableOffset) return std::nullopt;
    std::uint8_t intMarker = b_[pos++];
    if ((intMarker & 0xF0) != 0x10 || (intMarker & 0x0F) > 3) return std::nullopt;
    unsigned size = 1u << (intMarker & 0x0F);
    if (pos + size > tr_.tableOffset) return std::nullopt;
    count = ReadBigEndian(b_.data() + pos, size);
    pos += size;
    return count;
  }

  // libplist aborts on a string with a NUL inside (keys included), so such
  // strings are refused here. ASCII strings are 0x5N, UTF-16 ones 0x6N.
  bool stringHoldsNul(std::uint8_t marker, std::uint64_t pos) const {
    const unsigned kind = marker >> 4;
    auto count = readCount(marker, pos);
    if (!count) return false;  // libplist reports malformed strings itself
    const std::uint64_t unit = kind == 0x6 ? 2 : 1;
    if (*count > (tr_.tableOffset - pos) / unit) return false;
    for (std::uint64_t i = 0; i < *count; ++i) {
      const std::uint8_t* p = b_.data() + pos + i * unit;
      if (p[0] == 0 && (unit == 1 || p[1] == 0)) return true;
    }
    return false;
  }

  // The objects a container refers to (empty for scalars); nullopt if
  // malformed or unreadable.
  std::optional<std::vector<std::uint64_t>> childrenOf(std::uint64_t object) const {
    auto off = offsetOf(object);
    if (!off) return std::nullopt;
    std::uint64_t pos = *off;
    const std::uint8_t marker = b_[pos++];
    const unsigned kind = marker >> 4;
    if ((kind == 0x5 || kind == 0x6) && stringHoldsNul(marker, pos)) return std::nullopt;
    if (kind != 0xA && kind != 0xC && kind != 0xD) return std::vector<std::uint64_t>{};
    auto count = readCount(marker, pos);
    if (!count) return std::nullopt;
    const std::uint64_t refs = kind == 0xD ? *count * 2 : *count;
    if (*count > tr_.tableOffset || refs > (tr_.tableOffset - pos) / tr_.refSize)
      return std::nullopt;
    std::vector<std::uint64_t> children;
    children.reserve(refs);
    for (std::uint64_t i = 0; i < refs; ++i) {
      std::uint64_t ref = ReadBigEndian(b_.data() + pos + i * tr_.refSize, tr_.refSize);
      if (ref >= tr_.objects) return std::nullopt;
      children.push_back(ref);
    }
    return children;
  }

  // Depth-first over the graph with an explicit stack. An object reached
  // again while open is a cycle; finished objects keep their height and
  // expanded size, so shared objects cost nothing more to revisit.
  std::string walk(int maxDepth) {
    state_.assign(tr_.objects, State::New);
    height_.assign(tr_.objects, 0);
    size_.assign(tr_.objects, 0);
    std::vector<std::pair<std::uint64_t, Node>> stack;
    if (std::string e = open(tr_.top, stack, maxDepth); !e.empty()) return e;
    while (!stack.empty()) {
      auto& [object, node] = stack.back();
      if (node.next < node.children.size()) {
        std::uint64_t child = node.children[node.next++];
        if (state_[child] == State::Open) return "binary property list refers to itself";
        if (state_[child] == State::New) {
          if (std::string e = open(child, stack, maxDepth); !e.empty()) return e;
        } else if (stack.size() + height_[child] > static_cast<std::size_t>(maxDepth) + 1) {
          return tooDeep(maxDepth);
        }
        continue;
      }
      if (std::string e = close(object, node); !e.empty()) return e;
      stack.pop_back();
    }
    return {};
  }

  std::string open(std::uint64_t object, std::vector<std::pair<std::uint64_t, Node>>& stack,
                   int maxDepth) {
    if (stack.size() > static_cast<std::size_t>(maxDepth)) return tooDeep(maxDepth);
    auto children = childrenOf(object);
    if (!children) return "malformed binary property list object (or a string holding NUL)";
    state_[object] = State::Open;
    stack.emplace_back(object, Node{std::move(*children), 0});
    return {};
  }

  static std::string tooDeep(int maxDepth) {
    return "arrays and dictionaries nested deeper than " + std::to_string(maxDepth) + " levels";
  }

  // Height (levels below and including the object) and expanded size.
  std::string close(std::uint64_t object, const Node& node) {
    std::uint64_t total = 1;
    std::uint32_t height = 0;
    for (std::uint64_t c : node.children) {
      height = std::max(height, height_[c]);
      total += size_[c];
      if (total > kMaxPlistExpandedValues) return "binary property list expands too far";
    }
    size_[object] = total;
    height_[object] = height + 1;
    state_[object] = State::Done;
    return {};
  }

  std::span<const std::uint8_t> b_;
  Trailer tr_;
  std::vector<State> state_;
  std::vector<std::uint32_t> height_;
  std::vector<std::uint64_t> size_;
};

}  // namespace

std::string CheckBinaryPlistStructure(std::span<const std::uint8_t> bytes, int maxDepth) {
  return Graph(bytes).check(maxDepth);
}

}  // namespace zorva

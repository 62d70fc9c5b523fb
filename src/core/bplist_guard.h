// A structural check of binary property lists run before they reach libplist,
// whose reader recurses once per nesting level and re-reads shared objects
// once per reference. A small hostile file could otherwise exhaust the stack
// or expand into billions of values. The check walks the object graph without
// recursion and bounds the nesting depth and the expanded number of values.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace zorva {

// The most values a binary property list may expand to when read.
inline constexpr std::uint64_t kMaxPlistExpandedValues = 4'000'000;

// Empty when the file's structure is safe to hand to libplist, else the reason.
std::string CheckBinaryPlistStructure(std::span<const std::uint8_t> bytes, int maxDepth);

}  // namespace zorva

// A structural check of IPP messages run before they reach libcups' decoder,
// which recurses once per collection level with no limit of its own: a small
// answer nesting collections a hundred thousand deep would exhaust the
// stack. The check walks the tags and lengths without recursion and bounds
// the nesting; everything else is left to the decoder.
#pragma once

#include <cstddef>

namespace zorva {

// Deeper than any printer's catalogue (which nests two levels: the database
// and each paper's media-size).
inline constexpr int kMaxIppCollectionDepth = 16;

// False when the message nests collections deeper than maxDepth. A message
// that ends early passes: the decoder rejects it on its own.
bool IppNestingWithin(const unsigned char* data, std::size_t size, int maxDepth);

}  // namespace zorva

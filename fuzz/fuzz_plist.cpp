// Feeds arbitrary bytes to the property-list reader (XML and binary), then
// writes and re-reads whatever it accepted: that must round-trip unchanged.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "core/plist_io.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  auto v = zorva::ParsePropertyList(std::span<const std::uint8_t>(data, size));
  if (!v) return 0;
  auto again = zorva::ParsePropertyList(zorva::ToXmlPropertyList(*v));
  if (!again) std::abort();  // what we write must always read back
  return 0;
}

// Feeds arbitrary text to the string-table parser and uses every entry it
// accepts as a format, with arguments of each kind.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/localization.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view text(reinterpret_cast<const char*>(data), size);
  auto table = zorva::ParsePoStrings(text);
  if (!table) return 0;
  for (const auto& [key, value] : *table) {
    zorva::FormatString(value, {std::int64_t{42}, 2.5, std::string_view(key)});
  }
  zorva::FormatString(text, {std::string_view("x")});
  return 0;
}

// Fuzz target for the XML entity unescaper: arbitrary text, with and without
// a small table of the caller's own entities, must never crash, and text
// without an ampersand must come back unchanged.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "host/ticket_helpers.h"

namespace {

const zorva::Dictionary& ExtraEntities() {
  static const zorva::Dictionary extra{{"amp", zorva::Value("and")},
                                       {"co", zorva::Value("&amp;co")},
                                       {"", zorva::Value("empty")},
                                       {"#38", zorva::Value("hash")},
                                       {"n", zorva::Value(3)}};
  return extra;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view text(reinterpret_cast<const char*>(data), size);
  std::string plain = zorva::XMLCreateStringByUnescapingEntities(text);
  std::string extra = zorva::XMLCreateStringByUnescapingEntities(text, &ExtraEntities());
  if (text.find('&') == std::string_view::npos && (plain != text || extra != text)) std::abort();
  return 0;
}

// Feeds arbitrary tickets and typed page fields to the Advanced panel's
// ticket rules: the input is a property list read as a ticket, then two
// field texts. Reading never fails, writing stores only numbers and the
// job's paper, and a second round trip changes nothing more than the first.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string_view>

#include "core/plist_io.h"
#include "core/ticket.h"
#include "panels/advanced_settings.h"

namespace {

void Check(bool condition) {
  if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // Layout: [from text]\0[to text]\0[property list]
  const std::string_view all(reinterpret_cast<const char*>(data), size);
  const std::size_t first = all.find('\0');
  const std::size_t second = first == std::string_view::npos ? first : all.find('\0', first + 1);
  const std::string_view from = all.substr(0, first);
  const std::string_view to = first == std::string_view::npos
                                  ? std::string_view{}
                                  : all.substr(first + 1, second - first - 1);
  const std::string_view plist =
      second == std::string_view::npos ? std::string_view{} : all.substr(second + 1);

  zorva::Ticket ticket;
  const std::optional<zorva::Value> root = zorva::ParsePropertyList(
      std::span(reinterpret_cast<const std::uint8_t*>(plist.data()), plist.size()));
  if (root && root->dictionary()) ticket = zorva::Ticket::FromDictionary(*root->dictionary());

  const zorva::AdvancedSettings read = zorva::ReadAdvancedSettings(ticket);
  zorva::WriteAdvancedSettings(ticket, read, from, to);
  const zorva::AdvancedSettings again = zorva::ReadAdvancedSettings(ticket);
  // Written as numbers, read back as the same numbers (rotate one less).
  Check(again.bookletOrder == read.bookletOrder);
  if (read.rotateImage > INT32_MIN) Check(again.rotateImage == read.rotateImage - 1);
  Check(again.forceSize == read.forceSize);
  if (!from.empty()) Check(again.pagesFrom == zorva::FieldIntValue(from));
  return 0;
}

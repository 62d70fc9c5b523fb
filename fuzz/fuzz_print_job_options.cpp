// Fuzz target for the job options read from a job ticket: any bytes as the
// document the print path reads its standard attributes from, and any bytes
// as text a user typed into a value that goes inside a collection option.
// Nothing may crash or leak; only standard attribute names come out, and a
// quoted value must read back unchanged through libcups' option parser.
#include <cups/cups.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "print/job_options.h"

namespace {

constexpr std::string_view kAllowed[] = {"media-col",
                                         "media",
                                         "finishings",
                                         "output-bin",
                                         "printer-resolution",
                                         "copies",
                                         "page-ranges",
                                         "job-account-id",
                                         "job-accounting-user-id",
                                         "job-hold-until",
                                         "orientation-requested",
                                         "print-color-mode"};

bool Allowed(std::string_view name) {
  for (std::string_view a : kAllowed) {
    if (a == name) return true;
  }
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  std::string name;
  for (const zorva::JobOption& option : zorva::StandardAttributesFromJobTicket(text, &name)) {
    if (!Allowed(option.name)) std::abort();
  }
  if (text.find('\0') == std::string_view::npos) {
    const std::string line = "name=" + zorva::QuotedOptionValue(text);
    cups_option_t* options = nullptr;
    const int n = cupsParseOptions(line.c_str(), 0, &options);
    if (n != 1 || text != options[0].value) std::abort();
    cupsFreeOptions(n, options);
  }
  return 0;
}

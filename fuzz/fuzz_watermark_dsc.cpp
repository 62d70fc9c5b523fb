// Feeds arbitrary documents to the search for the watermark prolog's place
// and to the insertion itself. The place must lie inside the document's
// head, and inserting must keep every byte of the document, in order.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "watermarks/watermark_filter.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view document(reinterpret_cast<const char*>(data), size);
  const auto at = zorva::FindPrologInsertion(document);
  if (at && at->offset > std::min(document.size(), zorva::kDocumentHeadBytes)) __builtin_trap();
  std::vector<std::string> warnings;
  const std::string out = zorva::InsertWatermarkProlog(document, "\x01PROLOG\x01\n", warnings);
  if (!at) {
    if (out != document || warnings.size() != 1) __builtin_trap();
    return 0;
  }
  // The prolog goes at a line's start (or after the last line, given an end).
  if (at->offset > 0 && document[at->offset - 1] != '\n' && document[at->offset - 1] != '\r' &&
      at->offset != document.size()) {
    __builtin_trap();
  }
  std::string expected(document.substr(0, at->offset));
  if (!expected.empty() && expected.back() != '\n' && expected.back() != '\r') expected += '\n';
  expected += "\x01PROLOG\x01\n";
  expected += document.substr(at->offset);
  if (out != expected || warnings.size() > 1) __builtin_trap();
  return 0;
}

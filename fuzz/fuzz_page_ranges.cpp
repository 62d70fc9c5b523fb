// Feeds arbitrary text to the page-text parser. Whatever it accepts must be
// well formed: pages from 0 to the largest page, at least one page per range,
// the page list equal to the ranges written out, and no ranges on error.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "model/page_ranges.h"

namespace {

// Page lists are only built when small, so "1-" does not cost 80 MB a run.
constexpr std::int64_t kMaxPagesListed = 10000;

void Check(bool condition) {
  if (!condition) std::abort();
}

std::int64_t CheckRanges(const zorva::PageRangeList& list) {
  std::int64_t total = 0;
  for (const zorva::PageRange& r : list.ranges) {
    Check(r.first >= 0 && r.count >= 1);
    Check(std::int64_t{r.first} + r.count - 1 <= zorva::kLargestPageNumber);
    total += r.count;
  }
  return total;
}

void CheckPagesMatch(std::string_view text, const zorva::PageRangeList& ranges) {
  zorva::PageRangeList pages = zorva::CreatePageRangesBySeparatingString(text, false);
  Check(pages.code == ranges.code);
  std::size_t i = 0;
  for (const zorva::PageRange& r : ranges.ranges) {
    for (std::int32_t p = r.first; p < r.first + r.count; ++p, ++i) {
      Check(i < pages.ranges.size() && pages.ranges[i] == zorva::PageRange{p, 1});
    }
  }
  Check(i == pages.ranges.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view text(reinterpret_cast<const char*>(data), size);
  zorva::PageRangeList list = zorva::CreatePageRangesBySeparatingString(text, true);
  if (list.code != zorva::kNoErr) {
    Check(list.code == zorva::kPageNumberTooLarge || list.code == zorva::kInvalidPageRanges ||
          list.code == zorva::kInvalidRangeOrder);
    Check(list.ranges.empty());
  } else {
    Check(!list.ranges.empty());
  }
  if (CheckRanges(list) <= kMaxPagesListed) CheckPagesMatch(text, list);
  return 0;
}

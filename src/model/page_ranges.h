// Page numbers typed by the user in the insert and exception-page dialogs
// ("3", "1-4, 9", "12-") turned into page ranges, the result codes the
// Special Pages panel reports, and the alert texts for those codes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/status.h"

namespace zorva {

class Bundle;

// Seven digits: an open end ("12-") runs to this page.
inline constexpr std::int32_t kLargestPageNumber = 9999999;
inline constexpr int kLargestPageNumberDigits = 7;

// Result codes of the parser and the special-page dialogs; each one but
// kNoErr and kParamErr selects an alert.
inline constexpr Status kPageNumberTooLarge = 1000;  // a number above kLargestPageNumber
inline constexpr Status kInvalidPageRanges = 1001;   // malformed text, or no range at all
inline constexpr Status kInvalidRangeOrder = 1002;   // a range whose first page is after its last
inline constexpr Status kInvalidPageNumbers = 1003;  // page 0 or below in an exception range
inline constexpr Status kPageRangeConflict = 1234;   // special pages that overlap (reserved)

// A first page and a number of pages.
struct PageRange {
  std::int32_t first = 0;
  std::int32_t count = 0;
  friend bool operator==(const PageRange&, const PageRange&) = default;
};

struct PageRangeList {
  Status code = kNoErr;
  std::vector<PageRange> ranges;  // in the order typed; empty unless code is kNoErr
  // Whether a range had been closed before the parse ended, which on an error
  // decides what the platform-shaped form does with its result.
  bool rangeMade = false;
};

// Parses page text (UTF-8). Numbers are separated by commas, blanks or any
// other character; "A-B" is a range, "A-" runs to kLargestPageNumber, "-B"
// starts at page 1. With asRanges each range is one (first, count) pair;
// without it every page of every range is its own (page, 1) pair. Page 0 is
// accepted here: only the exception dialog refuses it.
PageRangeList CreatePageRangesBySeparatingString(std::string_view text, bool asRanges);

// The same with the platform's calling shape: kParamErr for a null text or
// result. On success *result holds the ranges. On an error after the first
// range had been made (where the platform had created its array), *result is
// left as it was; on an error before that, it is reset to none.
Status CreatePageRangesBySeparatingString(const std::string* text, bool asRanges,
                                          std::optional<std::vector<PageRange>>* result);

// The localisation keys of the alert for a code; nullopt for a code without one.
struct SpecialPagesAlertKeys {
  std::string_view titleKey;
  std::string_view messageKey;
};
std::optional<SpecialPagesAlertKeys> SpecialPagesAlertKeysFor(Status code);

// The alert's title and message from the bundle's default table ("STRING NOT
// FOUND" for a missing text or a null bundle); the message of
// kPageNumberTooLarge has the number of digits filled in.
struct SpecialPagesAlertText {
  std::string title;
  std::string message;
};
std::optional<SpecialPagesAlertText> SpecialPagesAlertTextFor(Status code, const Bundle* bundle);

}  // namespace zorva

// The page-text parser: a small state machine over the typed characters, in
// which the end of the text counts as one more comma so the last item closes
// like every other, and the alert texts of the panel's result codes.
#include "model/page_ranges.h"

#include <array>

#include "core/bundle.h"
#include "core/localization.h"

namespace zorva {

namespace {

enum class State { Start, Dash, Number, NumberDash, TooLarge, Syntax, Order };

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// The value of the digit run at text[pos]; pos moves past the run. Once the
// value is past the largest page it stops growing, so no run can overflow.
std::int32_t ReadNumber(std::string_view text, std::size_t& pos) {
  std::int32_t n = 0;
  for (; pos < text.size() && IsDigit(text[pos]); ++pos) {
    if (n <= kLargestPageNumber) n = n * 10 + (text[pos] - '0');
  }
  return n;
}

class RangeParser {
 public:
  explicit RangeParser(std::vector<PageRange>& out) : out_(out) {}

  bool made() const { return made_; }
  bool stopped() const {
    return state_ == State::TooLarge || state_ == State::Syntax || state_ == State::Order;
  }

  void number(std::int32_t n) {
    if (n > kLargestPageNumber) {
      state_ = State::TooLarge;
      return;
    }
    switch (state_) {
      case State::Start:
        first_ = n;
        state_ = State::Number;
        break;
      case State::Dash:
      case State::NumberDash:
        close(first_, n);
        break;
      case State::Number:  // "3 7": the blank ended page 3, the run starts anew
        close(first_, first_);
        first_ = n;
        state_ = State::Number;
        break;
      default:
        break;
    }
  }

  void hyphen() {
    if (state_ == State::Start) {
      state_ = State::Dash;
    } else if (state_ == State::Number) {
      state_ = State::NumberDash;
    } else {
      state_ = State::Syntax;  // a doubled hyphen
    }
  }

  // A comma, or the end of the text.
  void separator() {
    if (state_ == State::Number) {
      close(first_, first_);
    } else if (state_ == State::NumberDash) {
      close(first_, kLargestPageNumber);
    } else if (state_ == State::Dash) {
      state_ = State::Syntax;
    }
  }

  Status result() const {
    switch (state_) {
      case State::TooLarge:
        return kPageNumberTooLarge;
      case State::Order:
        return kInvalidRangeOrder;
      case State::Start:
        return made_ ? kNoErr : kInvalidPageRanges;
      default:
        return kInvalidPageRanges;
    }
  }

 private:
  void close(std::int32_t first, std::int32_t last) {
    if (first > last) {
      state_ = State::Order;
      return;
    }
    out_.push_back({first, last - first + 1});
    first_ = 1;
    state_ = State::Start;
    made_ = true;
  }

  std::vector<PageRange>& out_;
  State state_ = State::Start;
  std::int32_t first_ = 1;
  bool made_ = false;
};

struct AlertRow {
  Status code;
  SpecialPagesAlertKeys keys;
};

constexpr std::array kAlertRows = {
    AlertRow{kPageNumberTooLarge, {"Page Number Limit Title", "Page Number Limit"}},
    AlertRow{kInvalidPageRanges, {"Invalid Pages Title", "Invalid Page Ranges"}},
    AlertRow{kInvalidRangeOrder, {"Invalid Ranges Title", "Invalid Range Order"}},
    AlertRow{kInvalidPageNumbers, {"Invalid Page Numbers Title", "Invalid Page Numbers Message"}},
    AlertRow{kPageRangeConflict, {"PageRangeConflictTitle", "PageRangeConflictMessage"}},
};

// Every page of every range as its own (page, 1) pair, in order.
std::vector<PageRange> SinglePages(const std::vector<PageRange>& ranges) {
  std::vector<PageRange> pages;
  for (const PageRange& range : ranges) {
    const std::int32_t last = range.first + range.count - 1;
    for (std::int32_t page = range.first; page <= last; ++page) pages.push_back({page, 1});
  }
  return pages;
}

}  // namespace

PageRangeList CreatePageRangesBySeparatingString(std::string_view text, bool asRanges) {
  PageRangeList list;
  RangeParser parser(list.ranges);
  std::size_t pos = 0;
  while (!parser.stopped()) {
    if (pos >= text.size()) {
      parser.separator();
      break;
    }
    if (IsDigit(text[pos])) {
      parser.number(ReadNumber(text, pos));
      continue;
    }
    if (text[pos] == '-') {
      parser.hyphen();
    } else if (text[pos] == ',') {
      parser.separator();
    }
    ++pos;  // anything else, blanks included, only separates numbers
  }
  list.code = parser.result();
  list.rangeMade = parser.made();
  if (list.code != kNoErr) {
    list.ranges = {};
  } else if (!asRanges) {
    // Written out only once the whole text is known to be good, so a bad
    // item after "1-" does not first cost ten million pages.
    list.ranges = SinglePages(list.ranges);
  }
  return list;
}

Status CreatePageRangesBySeparatingString(const std::string* text, bool asRanges,
                                          std::optional<std::vector<PageRange>>* result) {
  if (!text || !result) return kParamErr;
  PageRangeList list = CreatePageRangesBySeparatingString(std::string_view(*text), asRanges);
  if (list.code == kNoErr) {
    *result = std::move(list.ranges);
  } else if (!list.rangeMade) {
    result->reset();
  }
  return list.code;
}

std::optional<SpecialPagesAlertKeys> SpecialPagesAlertKeysFor(Status code) {
  for (const AlertRow& row : kAlertRows) {
    if (row.code == code) return row.keys;
  }
  return std::nullopt;
}

std::optional<SpecialPagesAlertText> SpecialPagesAlertTextFor(Status code, const Bundle* bundle) {
  auto keys = SpecialPagesAlertKeysFor(code);
  if (!keys) return std::nullopt;
  auto text = [bundle](std::string_view key) {
    return std::string(bundle ? bundle->localizedString(key) : kStringNotFound);
  };
  SpecialPagesAlertText alert{text(keys->titleKey), text(keys->messageKey)};
  if (code == kPageNumberTooLarge) {
    alert.message = FormatString(alert.message, {std::int64_t{kLargestPageNumberDigits}});
  }
  return alert;
}

}  // namespace zorva

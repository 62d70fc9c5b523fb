// The page-text parser: what each kind of input makes (open starts and ends,
// blanks and stray characters as separators, empty items), every result
// code, digit runs far past any integer type, the cleanup on error, and the
// alert texts of the codes.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/bundle.h"
#include "model/page_ranges.h"

namespace zorva {

static void PrintTo(const PageRange& r, std::ostream* os) {
  *os << "(" << r.first << "," << r.count << ")";
}

namespace {

using Ranges = std::vector<PageRange>;

struct Case {
  std::string text;
  Status code;
  Ranges ranges;  // as ranges; only for code 0
};

const std::vector<Case>& Cases() {
  static const std::vector<Case> cases = {
      {"1-3,7", kNoErr, {{1, 3}, {7, 1}}},
      {"5-", kNoErr, {{5, 9999995}}},
      {"-4", kNoErr, {{1, 4}}},
      {"3 7", kNoErr, {{3, 1}, {7, 1}}},
      {"1,,2", kNoErr, {{1, 1}, {2, 1}}},
      {",1", kNoErr, {{1, 1}}},
      {"1a2", kNoErr, {{1, 1}, {2, 1}}},
      {"0", kNoErr, {{0, 1}}},
      {"0-", kNoErr, {{0, 10000000}}},
      {"9999999-", kNoErr, {{9999999, 1}}},
      {"-", kInvalidPageRanges, {}},
      {"1--3", kInvalidPageRanges, {}},
      {"5-2", kInvalidRangeOrder, {}},
      {"-0", kInvalidRangeOrder, {}},
      {"10000000", kPageNumberTooLarge, {}},
      // Blanks and unknown characters separate numbers but do not end a range.
      {" 1 - 4 ,\t9 , 12 - ", kNoErr, {{1, 4}, {9, 1}, {12, 9999988}}},
      {"1-x", kNoErr, {{1, 9999999}}},
      {"1-3xyz", kNoErr, {{1, 3}}},
      {"1- -3", kInvalidPageRanges, {}},
      // Characters that only look like separators are skipped.
      {"1\xEF\xBC\x8C"
       "2",
       kNoErr,
       {{1, 1}, {2, 1}}},  // fullwidth comma
      {"1\xE2\x80\x90"
       "3",
       kNoErr,
       {{1, 1}, {3, 1}}},  // Unicode hyphen
      {std::string("1\0"
                   "2",
                   3),
       kNoErr,
       {{1, 1}, {2, 1}}},
      // Ranges are kept in the order typed, overlaps and all.
      {"7,1-3,2", kNoErr, {{7, 1}, {1, 3}, {2, 1}}},
      // The walk stops at the first error: later text is never looked at.
      {"5-2,99999999", kInvalidRangeOrder, {}},
      {"99999999,5-2", kPageNumberTooLarge, {}},
  };
  return cases;
}

TEST(PageRanges, EachInputGivesItsCodeAndRanges) {
  for (const Case& c : Cases()) {
    PageRangeList list = CreatePageRangesBySeparatingString(c.text, true);
    EXPECT_EQ(list.code, c.code) << '"' << c.text << '"';
    EXPECT_EQ(list.ranges, c.ranges) << '"' << c.text << '"';
  }
}

// Same codes either way, and pages are the ranges written out.
TEST(PageRanges, PagesModeListsEveryPageOfEveryRange) {
  for (const Case& c : Cases()) {
    std::int64_t total = 0;
    for (const PageRange& r : c.ranges) total += r.count;
    if (total > 1000) continue;  // open ends: checked on their own below
    PageRangeList pages = CreatePageRangesBySeparatingString(c.text, false);
    EXPECT_EQ(pages.code, c.code) << '"' << c.text << '"';
    Ranges expanded;
    for (const PageRange& r : c.ranges) {
      for (std::int32_t p = r.first; p < r.first + r.count; ++p) expanded.push_back({p, 1});
    }
    EXPECT_EQ(pages.ranges, expanded) << '"' << c.text << '"';
  }
  PageRangeList open = CreatePageRangesBySeparatingString("9999990-", false);
  ASSERT_EQ(open.ranges.size(), 10u);
  EXPECT_EQ(open.ranges.back(), (PageRange{9999999, 1}));
  // Text without any range is invalid in both modes.
  for (const char* text : {"", " ", ",,,", "abc"}) {
    for (bool asRanges : {true, false}) {
      PageRangeList list = CreatePageRangesBySeparatingString(text, asRanges);
      EXPECT_EQ(list.code, kInvalidPageRanges) << '"' << text << '"';
      EXPECT_TRUE(list.ranges.empty());
    }
  }
}

TEST(PageRanges, LongDigitRunsAreTooLargeNotWrappedAround) {
  // 2^32 + 5 and 2^64 + 5 would wrap to 5 in a fixed-width accumulator.
  for (const std::string& text :
       std::vector<std::string>{"4294967301", "18446744073709551621", std::string(10000, '9')}) {
    EXPECT_EQ(CreatePageRangesBySeparatingString(text, true).code, kPageNumberTooLarge)
        << text.substr(0, 30);
  }
  // Leading zeros do not make a number large.
  PageRangeList zeros = CreatePageRangesBySeparatingString(std::string(5000, '0') + "42", true);
  EXPECT_EQ(zeros.code, kNoErr);
  EXPECT_EQ(zeros.ranges, (Ranges{{42, 1}}));
}

TEST(PageRanges, PlatformFormKeepsOrResetsTheResultOnError) {
  using Result = std::optional<Ranges>;
  Result result = Ranges{{99, 1}};
  const std::string text = "2-3";
  EXPECT_EQ(CreatePageRangesBySeparatingString(nullptr, true, &result), kParamErr);
  EXPECT_EQ(CreatePageRangesBySeparatingString(&text, true, nullptr), kParamErr);
  EXPECT_EQ(result, Result(Ranges{{99, 1}}));

  EXPECT_EQ(CreatePageRangesBySeparatingString(&text, true, &result), kNoErr);
  EXPECT_EQ(result, Result(Ranges{{2, 2}}));

  // The error comes after ranges had been made: the caller's result stands.
  const std::string lateError = "1,2,3-1";
  EXPECT_EQ(CreatePageRangesBySeparatingString(&lateError, false, &result), kInvalidRangeOrder);
  EXPECT_EQ(result, Result(Ranges{{2, 2}}));

  // No range was made before the error: the result is set to none.
  for (const std::string early : {"5-2,1", "", "--", "10000000"}) {
    result = Ranges{{7, 1}};
    EXPECT_NE(CreatePageRangesBySeparatingString(&early, true, &result), kNoErr) << early;
    EXPECT_EQ(result, std::nullopt) << early;
  }
}

TEST(PageRanges, EveryAlertCodeHasTextAndOthersHaveNone) {
  const Bundle* bundle = GetPDEBundle();
  ASSERT_NE(bundle, nullptr);
  for (Status code : {kPageNumberTooLarge, kInvalidPageRanges, kInvalidRangeOrder,
                      kInvalidPageNumbers, kPageRangeConflict}) {
    auto alert = SpecialPagesAlertTextFor(code, bundle);
    ASSERT_TRUE(alert) << code;
    EXPECT_NE(alert->title, kStringNotFound) << code;
    EXPECT_NE(alert->message, kStringNotFound) << code;
    EXPECT_EQ(alert->message.find('%'), std::string::npos) << alert->message;
  }
  EXPECT_NE(SpecialPagesAlertTextFor(kPageNumberTooLarge, bundle)->message.find("7"),
            std::string::npos);
  EXPECT_FALSE(SpecialPagesAlertTextFor(kParamErr, bundle));
  EXPECT_EQ(SpecialPagesAlertTextFor(kInvalidRangeOrder, nullptr)->title, kStringNotFound);
}

}  // namespace
}  // namespace zorva

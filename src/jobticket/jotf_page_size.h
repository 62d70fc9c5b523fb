// The page size of the current print session, which the media writer falls
// back to when a stock names no size, and the page-format ticket keys it is
// read from.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace zorva {

// Page-format ticket items: the paper's width and length in points (1/72
// inch, numbers) and the orientation (0 to 3; absent means 0).
inline constexpr std::string_view kPageFormatPaperWidthKey =
    "com.apple.print.PageFormat.PMPaperWidth";
inline constexpr std::string_view kPageFormatPaperLengthKey =
    "com.apple.print.PageFormat.PMPaperLength";
inline constexpr std::string_view kPageFormatOrientationKey =
    "com.apple.print.PageFormat.PMOrientation";

struct PageSizePoints {
  double width = 0;
  double length = 0;
  std::int32_t orientation = 0;
};

// The current print session's page size, or nullopt when no session is set
// or its page format lacks the width or the length.
std::optional<PageSizePoints> CurrentPageSize();

// The paper-size table row whose point dimensions equal the page exactly
// (width and length swapped for orientations 1 and 3), as hundredths of a
// millimetre in the same orientation. False when no row matches.
bool MediaSizeForPage(const PageSizePoints& page, std::uint32_t* x, std::uint32_t* y);

}  // namespace zorva

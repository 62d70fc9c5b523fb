// The page size of the current print session, which the media writer falls
// back to when a stock names no size, and the page-format ticket keys it is
// read from.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "core/ticket_keys.h"

namespace zorva {

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

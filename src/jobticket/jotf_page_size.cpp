// The page-size fallback of the media writer.
#include "jobticket/jotf_page_size.h"

#include "core/print_session.h"
#include "host/keyword_tables.h"

namespace zorva {

std::optional<PageSizePoints> CurrentPageSize() {
  const PrintSession* session = GetCurrentPrintSession();
  if (!session) return std::nullopt;
  const Ticket& format = session->pageFormat();
  PageSizePoints page;
  if (!format.getNumber(tkey::kPMPaperWidth, page.width) ||
      !format.getNumber(tkey::kPMPaperLength, page.length)) {
    return std::nullopt;
  }
  format.getNumber(tkey::kPMOrientation, page.orientation);
  return page;
}

bool MediaSizeForPage(const PageSizePoints& page, std::uint32_t* x, std::uint32_t* y) {
  const bool upright = page.orientation == 0 || page.orientation == 2;
  const bool turned = page.orientation == 1 || page.orientation == 3;
  if (!upright && !turned) return false;
  const double across = upright ? page.width : page.length;
  const double along = upright ? page.length : page.width;
  for (const PaperSizeSettingMap* row = CompleteStockSizeMap; row->value != 0; ++row) {
    if (row->widthPoints != across || row->heightPoints != along) continue;
    *x = static_cast<std::uint32_t>(upright ? row->width : row->height);
    *y = static_cast<std::uint32_t>(upright ? row->height : row->width);
    return true;
  }
  return false;
}

}  // namespace zorva

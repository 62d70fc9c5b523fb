// One-line descriptions of special pages, their stocks and colour settings,
// for the Special Pages panel's list and the insert and exception dialogs.
//
// Labels come from the bundle's default strings table ("STRING NOT FOUND"
// when the text or the bundle is missing); a coded value shows the text of
// its keyword-table row, and an item whose code has no row is left out.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/full_color_options.h"
#include "model/image_shift_options.h"
#include "model/special_page_lists.h"
#include "model/special_pages.h"
#include "model/stock.h"

namespace zorva {

class Bundle;

// The stock's set attributes in order: size, colour, type, punched, weight,
// coating, grain, finish, description. The source and the custom name are
// not included.
std::vector<std::string> StockSummaryItems(const Stock& stock, const Bundle* bundle);
std::string CreateStockSummary(const Stock& stock, const Bundle* bundle,
                               std::string_view separator);

// Single attributes of a stock as the summaries and the paper lists show
// them; nullopt when the attribute is unset or its table has no row for it.
std::optional<std::string> StockSizeText(const Stock& stock, const Bundle* bundle);
std::optional<std::string> StockColorText(const Stock& stock, const Bundle* bundle);
std::optional<std::string> StockTypeText(const Stock& stock, const Bundle* bundle);
std::optional<std::string> StockWeightText(const Stock& stock, const Bundle* bundle);
std::optional<std::string> StockCoatingText(const Stock& stock, const Bundle* bundle);

// The colour adjustments that are set (lightness, contrast, saturation,
// colour cast, trapping widths) and the profiles chosen by name. The tone
// curve is left to the page summary, which shows it on its own.
std::vector<std::string> ColorOptionsSummaryItems(const FullColorOptions& options,
                                                  const Bundle* bundle);
std::string CreateColorOptionsSummary(const FullColorOptions& options, const Bundle* bundle,
                                      std::string_view separator);

// The page's description, items joined with "; "; empty for a null page or
// a page with nothing set.
std::string CopySpecialPageSummary(const SpecialPage* page, const Bundle* bundle);

// The insert dialog's description: quantity, then the stock summary.
std::string CreateInsertAttributesDescription(const Bundle* bundle, const Insert* insert);
// The two-sided shift mode when set, else empty.
std::string CreateImageShiftAttributesDescription(const Bundle* bundle,
                                                  const ImageShiftOptions* options);
// The exception dialog's description: the pages, then the page summary.
std::string CreateExceptionAttributesDescription(const Bundle* bundle, const ExceptionPage* page);

// The page numbers a row shows: "3-5" or "3" for exception pages, the page
// after which an insert goes (or the "before page 1" text), empty for covers.
std::string SpecialPagePagesText(const SpecialPage* page, const Bundle* bundle);

// One row of the panel's list.
struct SpecialPageSummaryRow {
  std::string kind;   // "Front Cover", "Insert", ...
  std::string pages;  // SpecialPagePagesText
  std::string summary;
};
std::vector<SpecialPageSummaryRow> UpdateSpecialPagesSummary(const Bundle* bundle,
                                                             const Cover* front,
                                                             const InsertList& inserts,
                                                             const ExceptionPageList& exceptions,
                                                             const Cover* back);

}  // namespace zorva

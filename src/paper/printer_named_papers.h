// The printer's own named papers: the list the named-paper dialog shows
// beside the user's, rebuilt from each finished fetch of the printer's paper
// list. It lives in memory only: the user's list is never written with the
// printer's papers.
#pragma once

#include <cstdint>

#include "paper/ipp_papers.h"
#include "paper/stock_library.h"

namespace zorva {

// The list from the last finished fetch, or nullptr before one.
const StockLibraryList* PrinterNamedPaperList();

// The paper-list event: when the fetch is done (status 3) and a list came,
// the old list goes and a new deferred one holds an entry per fetched stock,
// named by the stock's custom name. True when the list was rebuilt.
bool RebuildPrinterNamedPaperList(std::int32_t fetchStatus, const PrinterStockList* fetched);

// Drops the list (the dialog is going away).
void ClearPrinterNamedPaperList();

}  // namespace zorva

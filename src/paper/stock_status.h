// Which named papers the device can take as they stand, and which the job
// uses: the status rules of a named paper, the repair a paper gets before it
// goes into the job, and the in-use marks of the user's list.
#pragma once

#include "core/ticket.h"
#include "model/stock.h"
#include "paper/stock_library.h"

namespace zorva {

// The status validateStockEntry gives a stock: 2 when an attribute holds a
// value the tables do not know (or the grain is not in the grain table), 3
// when it only sets a finish or grain, nullopt when it leaves the status as
// it was.
std::optional<std::int32_t> StockEntryStatusFor(const Stock& stock);

// Resets every attribute the tables do not know to the unset value (an
// unknown sides-coated value resets the coating type, not itself). When
// anything was reset the stock no longer claims to be the named paper: its
// custom name becomes empty and its custom-name-only flag false. Returns
// whether anything was reset.
bool validateAndFixStockEntry(Stock& stock);

// Recomputes the in-use marks of the list for the job in the ticket: clears
// the marks, then marks the named paper matching the job's paper, each
// insert's and exception page's paper (in list order) and the covers'.
void markStockStatus(StockLibraryList& list, const Ticket& printSettings);

}  // namespace zorva

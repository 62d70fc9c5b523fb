// The printer's media catalogue as paper stocks: the keyword tables that turn
// the printer's media keywords into our stock codes, and the translation of
// a Get-Printer-Attributes answer (every "media-col-database" collection)
// into stocks in the printer's order. No network here: the fetch lives in
// printer_papers.h, so this part can be fed any answer (tests, fuzzers).
#pragma once

#include <cups/ipp.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "model/stock.h"

namespace zorva {

// The printer paper list: owned stocks, in the order the printer sent them.
using PrinterStockList = std::vector<std::unique_ptr<Stock>>;

// Media colour keyword to colour code; anything unknown (or null) is the
// custom colour 10, whose text the caller keeps.
std::int32_t convertJOTFColorToIndex(const char* colour);

// Media type to type code. The type keyword decides first, then the
// pre-printed and recycled members, then whether an order count is set;
// otherwise the custom type 7. Every argument may be null.
std::int32_t convertJOTFTypeToIndex(const char* type, const char* prePrinted, const char* recycled,
                                    std::int32_t orderCount);

// Coating keyword to coating code; unset for anything else.
std::int32_t convertJOTFCoatingTypeToIndex(const char* coating);

// Front and back coating keywords (each may be null) to sides coated and
// coating type. Outputs are only written where a rule sets them.
void convertJOTFSidesCoatedAndCoatingType(const char* front, const char* back,
                                          std::int32_t* sidesCoated, std::int32_t* coatingType);

// One media collection as a stock (members it does not know are ignored).
std::unique_ptr<Stock> StockFromMediaCollection(ipp_t* collection);

// Every collection of every begin-collection attribute of the answer, in
// answer order. A null answer gives an empty list.
PrinterStockList PrinterStocksFromAnswer(ipp_t* answer);

}  // namespace zorva

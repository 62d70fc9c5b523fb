// The printer's named papers, rebuilt from a finished fetch.
#include "paper/printer_named_papers.h"

#include <memory>

#include "paper/worker.h"

namespace zorva {
namespace {

// Dialog thread only, like the fetched list it is made from.
std::unique_ptr<StockLibraryList>& Current() {
  static std::unique_ptr<StockLibraryList> list;
  return list;
}

}  // namespace

const StockLibraryList* PrinterNamedPaperList() {
  return Current().get();
}

bool RebuildPrinterNamedPaperList(std::int32_t fetchStatus, const PrinterStockList* fetched) {
  if (fetchStatus != kPrinterStockDone || !fetched) return false;
  auto list = std::make_unique<StockLibraryList>(true);
  for (const std::unique_ptr<Stock>& stock : *fetched) {
    if (!stock) continue;
    StockLibrary entry;
    entry.setStock(*stock);
    entry.setName(stock->customName().value_or(std::string()));
    list->add(entry);
  }
  Current() = std::move(list);
  return true;
}

void ClearPrinterNamedPaperList() {
  Current().reset();
}

}  // namespace zorva

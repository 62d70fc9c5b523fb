// Named-paper status rules and the repair before a paper goes into the job.
// Every check is a look-up in the same tables the paper menus are filled
// from, so "supported" means exactly "the dialog could have offered it".
#include "paper/stock_status.h"

#include <string_view>

#include "core/ticket_keys.h"
#include "host/keyword_tables.h"
#include "host/setting_map.h"
#include "model/special_page_lists.h"

namespace zorva {

namespace {

// Any weight in this range may be typed in freely; outside it only the
// weights the menu lists are accepted.
constexpr std::int32_t kMinFreeWeight = 60;
constexpr std::int32_t kMaxFreeWeight = 300;

bool InMap(const SettingMap* map, std::int32_t value) {
  return TicketToUI(map, value) != -1;
}

bool WeightKnown(std::int32_t weight) {
  return (weight >= kMinFreeWeight && weight <= kMaxFreeWeight) || InMap(WeightMap, weight);
}

bool FinishKnown(std::int32_t finish) {
  return InMap(FinishMap, finish) && InMap(FinishMap1, finish);
}

bool HasBadValue(const Stock& stock) {
  return !InMap(StockColorMap, stock.color()) || !InMap(StockTypeMap, stock.type()) ||
         !InMap(StockPunchedMap, stock.punched()) || !WeightKnown(stock.weight()) ||
         !InMap(SidesCoatedMap, stock.sidesCoated()) || !FinishKnown(stock.finish());
}

bool SetsAttribute(const Stock& stock) {
  const bool finishSet = FinishKnown(stock.finish()) && stock.finish() != kUnset;
  const bool grainSet = InMap(GrainMap, stock.grain()) && stock.grain() != kUnset;
  return finishSet || grainSet;
}

// Marks the named paper matching the stock stored under "Stock" in a
// special page's dictionary, or in the dictionary itself for the job's paper.
void MarkStock(StockLibraryList& list, const Dictionary* stockDictionary) {
  if (!stockDictionary) return;
  const Stock stock(stockDictionary);
  if (!stock.customName() || stock.customName()->empty()) return;
  if (auto uuid = list.findMatch(stock)) list.setInUse(*uuid);
}

void MarkPageStock(StockLibraryList& list, const Dictionary* page) {
  if (page) MarkStock(list, page->getDictionary(tkey::kStock));
}

void MarkPageList(StockLibraryList& list, const Array* pages) {
  if (!pages) return;
  for (const Value& page : *pages) MarkPageStock(list, page.dictionary());
}

}  // namespace

std::optional<std::int32_t> StockEntryStatusFor(const Stock& stock) {
  if (!InMap(GrainMap, stock.grain())) return kStockStatusUnsupportedValue;
  const bool badValue = HasBadValue(stock);
  if (!badValue && !SetsAttribute(stock)) return std::nullopt;
  return badValue ? kStockStatusUnsupportedValue : kStockStatusUnsupportedAttribute;
}

void StockLibrary::validateStockEntry() {
  if (auto status = StockEntryStatusFor(stock_)) status_ = *status;
}

bool validateAndFixStockEntry(Stock& stock) {
  bool fixed = false;
  auto reset = [&fixed](bool known, auto&& clear) {
    if (known) return;
    clear();
    fixed = true;
  };
  reset(InMap(StockColorMap, stock.color()), [&] { stock.setColor(kUnset); });
  reset(InMap(StockTypeMap, stock.type()), [&] { stock.setType(kUnset); });
  reset(InMap(StockPunchedMap, stock.punched()), [&] { stock.setPunched(kUnset); });
  reset(WeightKnown(stock.weight()), [&] { stock.setWeight(kUnset); });
  // The sides-coated value stays; its coating type cannot stand without it.
  reset(InMap(SidesCoatedMap, stock.sidesCoated()), [&] { stock.setCoatingType(kUnset); });
  reset(FinishKnown(stock.finish()), [&] { stock.setFinish(kUnset); });
  reset(InMap(GrainMap, stock.grain()), [&] { stock.setGrain(kUnset); });
  if (fixed) {
    stock.setCustomName(std::string());
    stock.setCustomNameOnly(false);
  }
  return fixed;
}

void markStockStatus(StockLibraryList& list, const Ticket& printSettings) {
  list.clearStatus();
  MarkStock(list, printSettings.getDictionary(tkey::kJobLevelStock));
  MarkPageList(list, printSettings.getArray(tkey::kInsertList));
  MarkPageList(list, printSettings.getArray(tkey::kExceptionList));
  MarkPageStock(list, printSettings.getDictionary(tkey::kFrontCover));
  MarkPageStock(list, printSettings.getDictionary(tkey::kBackCover));
}

}  // namespace zorva

// The named-paper list view's saved state and its sort keys. Numeric columns
// compare as numbers; a custom size, colour or type compares by what makes it
// custom (dimensions, text) once the codes agree.
#include "paper/stock_library_view.h"

#include <algorithm>
#include <compare>

#include "core/text.h"

namespace zorva {

namespace {

constexpr std::int32_t kCustomTypeCode = 7;

int Sign(auto a, auto b) {
  return a < b ? -1 : (b < a ? 1 : 0);
}

std::string_view Text(const OptionalString& s) {
  return s ? std::string_view(*s) : std::string_view();
}

int CompareSize(const Stock& a, const Stock& b) {
  if (int c = Sign(a.size(), b.size()); c != 0) return c;
  if (a.size() != kStockSizeCustom) return 0;
  if (int c = Sign(a.width(), b.width()); c != 0) return c;
  return Sign(a.length(), b.length());
}

int CompareColor(const Stock& a, const Stock& b) {
  if (int c = Sign(a.color(), b.color()); c != 0) return c;
  return a.color() == kStockColorCustom ? Text(a.customColor()).compare(Text(b.customColor())) : 0;
}

int CompareType(const Stock& a, const Stock& b) {
  if (int c = Sign(a.type(), b.type()); c != 0) return c;
  return a.type() == kCustomTypeCode
             ? CompareCaseInsensitive(Text(a.customType()), Text(b.customType()))
             : 0;
}

int CompareKey(const StockLibrary& x, const StockLibrary& y, std::uint32_t property) {
  const Stock& a = x.stock();
  const Stock& b = y.stock();
  switch (property) {
    case kColumnStatus:
      return Sign(x.status(), y.status());
    case kColumnSize:
      return CompareSize(a, b);
    case kColumnColor:
      return CompareColor(a, b);
    case kColumnType:
      return CompareType(a, b);
    case kColumnPunched:
      return Sign(a.punched(), b.punched());
    case kColumnWeight:
      return Sign(a.weight(), b.weight());
    case kColumnSidesCoated:
      return Sign(a.sidesCoated(), b.sidesCoated());
    case kColumnCoatingType:
      return Sign(a.coatingType(), b.coatingType());
    case kColumnFinish:
      return Sign(a.finish(), b.finish());
    case kColumnGrain:
      return Sign(a.grain(), b.grain());
    case kColumnDescription:
      return Sign(Text(a.description()), Text(b.description()));
    case kColumnComment:
      return Sign(Text(a.comment()), Text(b.comment()));
    default:  // kColumnName and anything unknown: the name decides below
      return 0;
  }
}

}  // namespace

StockLibraryViewPreferences StockLibraryViewPreferences::FromArray(const Array* flags) {
  StockLibraryViewPreferences p;
  if (!flags) return p;
  bool* const fields[kCount] = {
      &p.showColumn[0],    &p.showColumn[1],         &p.showColumn[2],
      &p.showColumn[3],    &p.showColumn[4],         &p.showColumn[5],
      &p.showColumn[6],    &p.showColumn[7],         &p.showColumn[8],
      &p.showColumn[9],    &p.showColumn[10],        &p.printerListByDefault,
      &p.forceUniqueNames, &p.showUnsupportedValues, &p.showUnsupportedAttributes};
  for (std::size_t i = 0; i < kCount; ++i) {
    const Value* v = flags->at(i);  // nullptr past the end: never read beyond it
    if (!v) break;
    if (auto b = v->boolean()) *fields[i] = *b;
  }
  return p;
}

Array StockLibraryViewPreferences::toArray() const {
  Array a;
  for (bool show : showColumn) a.push_back(Value(show));
  for (bool flag :
       {printerListByDefault, forceUniqueNames, showUnsupportedValues, showUnsupportedAttributes}) {
    a.push_back(Value(flag));
  }
  return a;
}

StockLibraryViewPreferences ReadStockLibraryViewPreferences() {
  std::optional<Value> v = ReadStockLibraryValue(kStockLibraryPreferencesKey);
  return StockLibraryViewPreferences::FromArray(v ? v->array() : nullptr);
}

bool WriteStockLibraryViewPreferences(const StockLibraryViewPreferences& preferences) {
  return WriteStockLibraryValue(kStockLibraryPreferencesKey, Value(preferences.toArray()));
}

std::vector<std::int32_t> ReadStockLibraryColumnWidths() {
  std::vector<std::int32_t> widths;
  std::optional<Value> v = ReadStockLibraryValue(kStockLibraryColumnWidthsKey);
  const Array* a = v ? v->array() : nullptr;
  if (!a) return widths;
  for (const Value& item : *a) {
    std::int32_t width = 0;
    if (item.getNumber(width)) widths.push_back(width);
  }
  return widths;
}

bool WriteStockLibraryColumnWidths(const std::vector<std::int32_t>& widths) {
  Array a;
  for (std::int32_t w : widths) a.push_back(Value(w));
  return WriteStockLibraryValue(kStockLibraryColumnWidthsKey, Value(std::move(a)));
}

std::optional<std::string> ReadStockLibrarySelectedRow() {
  std::optional<Value> v = ReadStockLibraryValue(kStockLibrarySelectedRowKey);
  const std::string* s = v ? v->string() : nullptr;
  return s ? std::optional<std::string>(*s) : std::nullopt;
}

bool WriteStockLibrarySelectedRow(std::string_view uuid) {
  return WriteStockLibraryValue(kStockLibrarySelectedRowKey, Value(uuid));
}

int CompareStockLibraryEntries(const StockLibrary& a, const StockLibrary& b,
                               std::uint32_t property) {
  if (int c = CompareKey(a, b, property); c != 0) return c;
  return CompareCaseInsensitive(Text(a.stock().customName()), Text(b.stock().customName()));
}

bool StockLibraryListItemCompareCallback(const StockLibrary& a, const StockLibrary& b,
                                         std::uint32_t property) {
  return CompareStockLibraryEntries(a, b, property) < 0;
}

std::vector<StockLibrary> SortedStockLibraryEntries(const StockLibraryList& list,
                                                    std::uint32_t property, bool ascending) {
  std::vector<StockLibrary> entries;
  entries.reserve(list.count());
  for (const auto& [uuid, value] : list.stockList()) {
    const Dictionary* d = value.dictionary();
    if (!d) continue;
    StockLibrary& entry = entries.emplace_back(*d);
    if (entry.uuid().empty()) entry.setUUID(uuid);  // the key is the identity
  }
  std::stable_sort(entries.begin(), entries.end(),
                   [property, ascending](const StockLibrary& a, const StockLibrary& b) {
                     const int c = CompareStockLibraryEntries(a, b, property);
                     return ascending ? c < 0 : c > 0;
                   });
  return entries;
}

}  // namespace zorva

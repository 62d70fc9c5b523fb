// Look-ups over the keyword tables: positions, ticket values, localisation
// keys and PPD choices turned into one another. Every scan is linear in table
// order and takes the first match; nothing here allocates, so menus can be
// refreshed on every sync without touching the heap.
#include "host/setting_map.h"

#include "host/installable_options.h"
#include "host/keyword_tables.h"

namespace zorva {

namespace {

// Where a value scan over a SettingMap table ends: the first available row
// holding the value, or the first row whose value is 0 (a keyed "custom"
// row, or the terminator). A null key also ends it, so a table can never be
// read past its end.
const SettingMap* ScanForValue(const SettingMap* map, std::int32_t value) {
  if (map->value == 0) return map;
  const SettingMap* row = map;
  for (; row->key != nullptr && row->value != 0; ++row) {
    if (row->value == value && RowIsAvailable(*row)) return row;
  }
  return row;
}

template <class Row, class KeyOf>
int CountRows(const Row* map, KeyOf keyOf) {
  if (map == nullptr) return 0;
  int count = 0;
  while (keyOf(map[count]) != nullptr) ++count;
  return count;
}

}  // namespace

bool RowIsAvailable(const SettingMap& row) {
  if (row.featureKey == nullptr) return true;
  return getInstalledFeature(row.featureKey) == (row.featureValue != 0);
}

int CountMaps(const SettingMap* map) {
  return CountRows(map, [](const SettingMap& r) { return r.key; });
}

int CountMaps(const PaperSizeSettingMap* map) {
  return CountRows(map, [](const PaperSizeSettingMap& r) { return r.key; });
}

int CountMaps(const KeywordPair* map) {
  return CountRows(map, [](const KeywordPair& r) { return r.choice; });
}

int CountMaps(const MainKeyword* map) {
  return CountRows(map, [](const MainKeyword& r) { return r.keyword; });
}

std::int32_t UIToTicket(const SettingMap* map, int position) {
  return map[position - 1].value;
}

int TicketToUI(const SettingMap* map, std::int32_t value) {
  if (map == nullptr) return -1;
  const SettingMap* row = ScanForValue(map, value);
  return row->key != nullptr ? static_cast<int>(row - map) + 1 : -1;
}

const char* LocalizedKeyForTicketValue(const SettingMap* map, std::int32_t value) {
  if (map == nullptr) return nullptr;
  return ScanForValue(map, value)->key;
}

const char* LocalizedKeyForPaperSizeTicketValue(const PaperSizeSettingMap* map,
                                                std::int32_t value) {
  if (map == nullptr) return nullptr;
  const PaperSizeSettingMap* row = map;
  for (; row->key != nullptr && row->value != 0; ++row) {
    if (row->value == value) return row->key;
  }
  return row->key;
}

std::int32_t KeywordPairValueForChoice(const KeywordPair* map, std::string_view choice) {
  if (map == nullptr) return -1;
  for (const KeywordPair* row = map; row->choice != nullptr; ++row) {
    if (choice == row->choice) return row->value;
  }
  return -1;
}

const char* KeywordPairChoiceForValue(const KeywordPair* map, std::int32_t value) {
  if (map == nullptr) return nullptr;
  for (const KeywordPair* row = map; row->choice != nullptr; ++row) {
    if (row->value == value) return row->choice;
  }
  return nullptr;
}

const KeywordPair* ChoiceTableForKeyword(std::string_view keyword) {
  for (const MainKeyword* row = MainKeywordMap; row->keyword != nullptr; ++row) {
    if (keyword == row->keyword) return row->choices;
  }
  return nullptr;
}

std::int32_t PPDTicketValueForChoice(const char* keyword, const char* choice) {
  if (keyword == nullptr || choice == nullptr) return -1;
  return KeywordPairValueForChoice(ChoiceTableForKeyword(keyword), choice);
}

const char* PPDChoiceForTicketValue(const char* keyword, std::int32_t value) {
  if (keyword == nullptr) return nullptr;
  return KeywordPairChoiceForValue(ChoiceTableForKeyword(keyword), value);
}

}  // namespace zorva

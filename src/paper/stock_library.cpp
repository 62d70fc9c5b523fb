// Named papers: the entry's stored form, the UUID-keyed list with its
// write-through rule, the recent-names list, and their preference file with
// the factory defaults behind it.
#include "paper/stock_library.h"

#include <uuid/uuid.h>

#include <algorithm>
#include <utility>

#include "core/bundle.h"
#include "core/text.h"
#include "core/ticket_keys.h"
#include "host/preferences.h"

namespace zorva {

namespace {

// The custom name of a stored entry's stock, or nullptr when it has none.
const std::string* StoredCustomName(const Value& entry) {
  const Dictionary* d = entry.dictionary();
  const Dictionary* stock = d ? d->getDictionary(kEntryStockKey) : nullptr;
  const std::string* name = stock ? stock->getString(tkey::kCustomName) : nullptr;
  return name && !name->empty() ? name : nullptr;
}

// The UUID of the first stored entry whose custom name matches, or nullptr.
const std::string* FindKeyByName(const Dictionary& store, std::string_view name) {
  if (name.empty()) return nullptr;
  for (const auto& [uuid, entry] : store) {
    const std::string* stored = StoredCustomName(entry);
    if (stored && EqualsCaseInsensitive(*stored, name)) return &uuid;
  }
  return nullptr;
}

}  // namespace

const char* StockStatusIconName(std::int32_t status) {
  switch (status) {
    case kStockStatusInUse:
      return "NamedPaper_InUse.icns";
    case kStockStatusUnsupportedValue:
      return "NamedPaper_Unsupported.icns";
    case kStockStatusUnsupportedAttribute:
      return "NamedPaper_Info.icns";
    default:
      return "NamedPaper_Blank.icns";
  }
}

std::string NewUUIDString() {
  uuid_t id;
  uuid_generate_random(id);
  char text[37];
  uuid_unparse_upper(id, text);
  return text;
}

// ---- StockLibrary ------------------------------------------------------------------

StockLibrary::StockLibrary(const Dictionary& entry) : stock_(entry.getDictionary(kEntryStockKey)) {
  if (const Value* status = entry.find(kEntryStatusKey)) {
    std::int32_t value = 0;
    if (status->toInt32(value)) status_ = value;
  }
  if (const std::string* uuid = entry.getString(kEntryUUIDKey)) uuid_ = *uuid;
  if (const std::string* name = entry.getString(kEntryNameKey)) name_ = *name;
  validateStockEntry();
}

StockLibrary::StockLibrary(const StockLibrary& other)
    : status_(other.status_), stock_(other.stock_), uuid_(other.uuid_), name_(other.name_) {}

StockLibrary& StockLibrary::operator=(const StockLibrary& other) {
  if (this == &other) return *this;
  status_ = other.status_;
  stock_ = other.stock_;
  uuid_ = other.uuid_;
  name_ = other.name_;
  referenceCount_ = 0;
  return *this;
}

Dictionary StockLibrary::asTicket() const {
  Dictionary d;
  d.set(kEntryStatusKey, Value(status_));
  d.set(kEntryStockKey, Value(stock_.asTicket()));
  if (!uuid_.empty()) d.set(kEntryUUIDKey, Value(uuid_));
  if (!name_.empty()) d.set(kEntryNameKey, Value(name_));
  return d;
}

// ---- StockLibraryList --------------------------------------------------------------

StockLibraryList::StockLibraryList() {
  read();
}

StockLibraryList::StockLibraryList(bool deferWrite) : deferWrite_(deferWrite) {}

StockLibraryList::~StockLibraryList() {
  if (!deferWrite_ && userChanged_) write();
}

void StockLibraryList::changed() {
  userChanged_ = true;
  if (!deferWrite_) write();
}

std::string StockLibraryList::add(StockLibrary& entry) {
  entry.setUUID(NewUUIDString());
  store_.set(entry.uuid(), Value(entry.asTicket()));
  changed();
  return entry.uuid();
}

bool StockLibraryList::replace(const StockLibrary& entry) {
  const OptionalString& name = entry.stock().customName();
  const std::string* key = name ? FindKeyByName(store_, *name) : nullptr;
  if (!key) return false;
  const std::string uuid = *key;
  StockLibrary stored(*store_.find(uuid)->dictionary());
  stored.setStock(entry.stock());
  update(uuid, stored);
  return true;
}

bool StockLibraryList::isDuplicate(std::string_view name) const {
  return FindKeyByName(store_, name) != nullptr;
}

void StockLibraryList::update(std::string_view uuid, const StockLibrary& entry) {
  store_.set(uuid, Value(entry.asTicket()));
  changed();
}

void StockLibraryList::remove(std::string_view uuid) {
  store_.erase(uuid);
  changed();
}

std::optional<StockLibrary> StockLibraryList::entry(std::string_view uuid) const {
  const Dictionary* d = store_.getDictionary(uuid);
  if (!d) return std::nullopt;
  return StockLibrary(*d);
}

std::optional<std::string> StockLibraryList::findMatch(const Stock& stock) const {
  for (const auto& [uuid, value] : store_) {
    const Dictionary* d = value.dictionary();
    if (d && Stock(d->getDictionary(kEntryStockKey)) == stock) return uuid;
  }
  return std::nullopt;
}

std::optional<std::string> StockLibraryList::findByName(std::string_view name) const {
  const std::string* key = FindKeyByName(store_, name);
  return key ? std::optional<std::string>(*key) : std::nullopt;
}

void StockLibraryList::setStatusMark(std::string_view uuid, std::int32_t status) {
  Value* value = store_.find(uuid);
  const Dictionary* d = value ? value->dictionary() : nullptr;
  if (!d) return;
  StockLibrary entry(*d);
  entry.setStatus(status);
  *value = Value(entry.asTicket());
}

void StockLibraryList::setInUse(std::string_view uuid) {
  setStatusMark(uuid, kStockStatusInUse);
}

void StockLibraryList::setNotInUse(std::string_view uuid) {
  setStatusMark(uuid, kStockStatusNone);
}

void StockLibraryList::clearStatus() {
  for (auto& [uuid, value] : store_) {
    const Dictionary* d = value.dictionary();
    if (!d) continue;
    StockLibrary entry(*d);  // validates
    if (entry.status() == kStockStatusUnsupportedValue) continue;
    entry.setStatus(kStockStatusNone);
    value = Value(entry.asTicket());
  }
}

bool StockLibraryList::write() {
  return WriteStockLibraryValue(kStockListKey, Value(store_));
}

void StockLibraryList::read() {
  store_.clear();
  std::optional<Value> list = ReadStockLibraryValue(kStockListKey);
  if (Dictionary* d = list ? list->dictionary() : nullptr) store_ = std::move(*d);
}

// ---- StockLibraryOrderList ---------------------------------------------------------

StockLibraryOrderList::StockLibraryOrderList() {
  read();
}

StockLibraryOrderList::~StockLibraryOrderList() {
  if (unsaved_) write();
}

void StockLibraryOrderList::clearOrderList() {
  order_.clear();
  unsaved_ = true;
}

namespace {

void EraseAll(Array& array, std::string_view name) {
  for (std::size_t i = array.size(); i-- > 0;) {
    const std::string* s = array[i].string();
    if (s && *s == name) array.erase(i);
  }
}

}  // namespace

void StockLibraryOrderList::updateOrderList(std::string_view name) {
  if (name.empty()) return;  // an unnamed paper has no place in the menus
  EraseAll(order_, name);
  order_.insert(0, Value(name));
  while (order_.size() > kMaxEntries) order_.erase(order_.size() - 1);
  write();
}

void StockLibraryOrderList::remove(std::string_view name) {
  EraseAll(order_, name);
  write();
}

bool StockLibraryOrderList::write() {
  unsaved_ = false;
  return WriteStockLibraryValue(kStockMenuListKey, Value(order_));
}

void StockLibraryOrderList::read() {
  order_.clear();
  std::optional<Value> list = ReadStockLibraryValue(kStockMenuListKey);
  if (Array* a = list ? list->array() : nullptr) order_ = std::move(*a);
}

// ---- The preference file -----------------------------------------------------------

std::optional<Value> ReadStockLibraryValue(std::string_view key) {
  std::optional<Value> prefs = CopyUserPreferences(kStockLibraryFile);
  if (Dictionary* d = prefs ? prefs->dictionary() : nullptr) {
    if (Value* v = d->find(key)) return std::move(*v);
  }
  std::optional<Value> factory = ReadFeaturesResource();
  if (Dictionary* d = factory ? factory->dictionary() : nullptr) {
    if (Value* v = d->find(key)) return std::move(*v);
  }
  return std::nullopt;
}

bool WriteStockLibraryValue(std::string_view key, Value value) {
  std::optional<Value> prefs = CopyUserPreferences(kStockLibraryFile);
  if (!prefs || !prefs->dictionary()) prefs = Value(Dictionary{});
  prefs->dictionary()->set(key, std::move(value));
  return WriteUserPreferences(kStockLibraryFile, *prefs);
}

}  // namespace zorva

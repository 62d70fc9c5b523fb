// Ticket items, their typed access, and the ticket's file form.
#include "core/ticket.h"

#include "core/plist_io.h"

namespace zorva {

Status Ticket::setValue(std::string_view client, std::string_view key, Value value, bool locked) {
  if (key.empty()) return kParamErr;
  auto it = items_.find(key);
  if (it != items_.end()) {
    if (it->second.locked) return kTicketItemLocked;
    it->second = TicketItem{std::move(value), std::string(client), locked};
  } else {
    items_.emplace(std::string(key), TicketItem{std::move(value), std::string(client), locked});
  }
  return kNoErr;
}

Status Ticket::setNumber(std::string_view client, std::string_view key, std::int64_t n,
                         bool locked) {
  return setValue(client, key, Value(n), locked);
}

Status Ticket::setReal(std::string_view client, std::string_view key, double d, bool locked) {
  return setValue(client, key, Value(d), locked);
}

Status Ticket::setString(std::string_view client, std::string_view key, std::string_view s,
                         bool locked) {
  return setValue(client, key, Value(s), locked);
}

Status Ticket::setBoolean(std::string_view client, std::string_view key, bool b, bool locked) {
  return setValue(client, key, Value(b), locked);
}

Status Ticket::setDictionary(std::string_view client, std::string_view key, Dictionary d,
                             bool locked) {
  return setValue(client, key, Value(std::move(d)), locked);
}

Status Ticket::setArray(std::string_view client, std::string_view key, Array a, bool locked) {
  return setValue(client, key, Value(std::move(a)), locked);
}

Status Ticket::setData(std::string_view client, std::string_view key, Data d, bool locked) {
  return setValue(client, key, Value(std::move(d)), locked);
}

Status Ticket::setDate(std::string_view client, std::string_view key, Date d, bool locked) {
  return setValue(client, key, Value(d), locked);
}

const TicketItem* Ticket::item(std::string_view key) const {
  auto it = items_.find(key);
  return it == items_.end() ? nullptr : &it->second;
}

const Value* Ticket::get(std::string_view key) const {
  const TicketItem* i = item(key);
  return i ? &i->value : nullptr;
}

const std::string* Ticket::getString(std::string_view key) const {
  const Value* v = get(key);
  return v ? v->string() : nullptr;
}

std::optional<bool> Ticket::getBoolean(std::string_view key) const {
  const Value* v = get(key);
  return v ? v->boolean() : std::nullopt;
}

const Dictionary* Ticket::getDictionary(std::string_view key) const {
  const Value* v = get(key);
  return v ? v->dictionary() : nullptr;
}

const Array* Ticket::getArray(std::string_view key) const {
  const Value* v = get(key);
  return v ? v->array() : nullptr;
}

const Data* Ticket::getData(std::string_view key) const {
  const Value* v = get(key);
  return v ? v->data() : nullptr;
}

const Date* Ticket::getDate(std::string_view key) const {
  const Value* v = get(key);
  return v ? v->date() : nullptr;
}

Status Ticket::remove(std::string_view key) {
  auto it = items_.find(key);
  if (it == items_.end()) return kNoErr;
  if (it->second.locked) return kTicketItemLocked;
  items_.erase(it);
  return kNoErr;
}

Dictionary Ticket::toDictionary() const {
  Dictionary d;
  for (const auto& [key, item] : items_) d.set(key, item.value);
  return d;
}

Ticket Ticket::FromDictionary(const Dictionary& d, std::string_view client) {
  Ticket t;
  for (const auto& [key, value] : d) {
    if (!key.empty()) t.items_.emplace(key, TicketItem{value, std::string(client), false});
  }
  return t;
}

std::optional<Ticket> Ticket::Load(const std::filesystem::path& path, std::string* error) {
  auto v = ReadPropertyListFile(path, error);
  if (!v) return std::nullopt;
  const Dictionary* d = v->dictionary();
  if (!d) {
    if (error) {
      *error = std::string("the property list holds ") + ValueTypeName(v->type()) +
               ", not a dictionary of ticket items";
    }
    return std::nullopt;
  }
  return FromDictionary(*d);
}

int Ticket::save(const std::filesystem::path& path) const {
  return WritePropertyListFile(path, Value(toDictionary()));
}

}  // namespace zorva

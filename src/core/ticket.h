// Ticket: the print-settings (and page-format, printer-info) ticket. Each item
// is a Value with the identifier of the client that set it and a locked flag.
// On disk a ticket is a property-list dictionary of key to value, the same
// shape as a saved print preset, so presets read as tickets.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "core/status.h"
#include "core/value.h"

namespace zorva {

// Client identifiers the system writes with.
inline constexpr std::string_view kTicketClientSystem = "Z";  // the host's one-letter id
inline constexpr std::string_view kTicketClientPrintingManager = "com.zorva.printingmanager";
inline constexpr std::string_view kTicketClientPrint = "com.zorva.print";
inline constexpr std::string_view kTicketClientImport = "ZORVA";

struct TicketItem {
  Value value;
  std::string client;
  bool locked = false;
};

class Ticket {
 public:
  using Items = std::map<std::string, TicketItem, std::less<>>;

  // Stores value under key. Fails with kTicketItemLocked when the item there
  // is locked, kParamErr for an empty key.
  Status setValue(std::string_view client, std::string_view key, Value value, bool locked = false);
  Status setNumber(std::string_view client, std::string_view key, std::int64_t n,
                   bool locked = false);
  Status setReal(std::string_view client, std::string_view key, double d, bool locked = false);
  Status setString(std::string_view client, std::string_view key, std::string_view s,
                   bool locked = false);
  Status setBoolean(std::string_view client, std::string_view key, bool b, bool locked = false);
  Status setDictionary(std::string_view client, std::string_view key, Dictionary d,
                       bool locked = false);
  Status setArray(std::string_view client, std::string_view key, Array a, bool locked = false);
  Status setData(std::string_view client, std::string_view key, Data d, bool locked = false);
  Status setDate(std::string_view client, std::string_view key, Date d, bool locked = false);

  // Typed reads; an item of another type counts as absent (nullptr / false,
  // out untouched). Numbers follow Value::getNumber's exactness rule.
  const Value* get(std::string_view key) const;
  const TicketItem* item(std::string_view key) const;
  template <NumberTarget T>
  bool getNumber(std::string_view key, T& out) const {
    const Value* v = get(key);
    return v && v->getNumber(out);
  }
  const std::string* getString(std::string_view key) const;
  std::optional<bool> getBoolean(std::string_view key) const;
  const Dictionary* getDictionary(std::string_view key) const;
  const Array* getArray(std::string_view key) const;
  const Data* getData(std::string_view key) const;
  const Date* getDate(std::string_view key) const;

  // Removes the item. kNoErr also when there was none; kTicketItemLocked
  // when it is locked.
  Status remove(std::string_view key);

  bool contains(std::string_view key) const { return items_.find(key) != items_.end(); }
  std::size_t size() const { return items_.size(); }
  bool empty() const { return items_.empty(); }
  const Items& items() const { return items_; }
  void clear() { items_.clear(); }

  // File form: key to value. Items read from a dictionary get `client`.
  Dictionary toDictionary() const;
  static Ticket FromDictionary(const Dictionary& d, std::string_view client = kTicketClientSystem);

  // Reads a ticket file (XML or binary property list whose root is a
  // dictionary). On failure nullopt and a one-line reason in *error.
  static std::optional<Ticket> Load(const std::filesystem::path& path,
                                    std::string* error = nullptr);
  // Writes the file form as an XML property list, atomically. 0 or errno.
  int save(const std::filesystem::path& path) const;

 private:
  Items items_;
};

}  // namespace zorva

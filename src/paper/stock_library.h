// The user's named papers ("My Paper List"): one entry (StockLibrary), the
// list of entries keyed by UUID (StockLibraryList) and the most recently
// chosen names (StockLibraryOrderList), all kept in the preference file
// "com.zorva.print.stocklibrary" with the bundle's ZorvaFeatures.plist as the
// factory default. The printer's own paper list uses the same list class in
// memory only (deferred writing).
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/value.h"
#include "model/stock.h"

namespace zorva {

// ---- Files and keys -------------------------------------------------------------
inline constexpr std::string_view kStockLibraryFile = "com.zorva.print.stocklibrary";
inline constexpr std::string_view kStockListKey = "com.zorva.print.StockLibrary.StockList";
inline constexpr std::string_view kStockMenuListKey = "com.zorva.print.StockLibrary.StockMenuList";
inline constexpr std::string_view kStockLibraryPreferencesKey =
    "com.zorva.print.StockLibrary.Preferences";
inline constexpr std::string_view kStockLibraryColumnWidthsKey =
    "com.zorva.print.StockLibrary.ColumnWidths";
inline constexpr std::string_view kStockLibrarySelectedRowKey =
    "com.zorva.print.StockLibrary.SelectedRow";

// Keys of one serialised entry.
inline constexpr std::string_view kEntryStatusKey = "EntryStatus";
inline constexpr std::string_view kEntryStockKey = "Stock";
inline constexpr std::string_view kEntryUUIDKey = "com.zorva.print.StockLibrary.UUID";
inline constexpr std::string_view kEntryNameKey = "com.zorva.print.StockLibrary.NameKey";

// ---- Entry status ------------------------------------------------------------------
inline constexpr std::int32_t kStockStatusNone = 0;
inline constexpr std::int32_t kStockStatusInUse = 1;
// Some attribute holds a value the device's tables do not know.
inline constexpr std::int32_t kStockStatusUnsupportedValue = 2;
// The entry sets a finish or a grain, which this device does not offer.
inline constexpr std::int32_t kStockStatusUnsupportedAttribute = 3;

// The icon file the list's status column shows for a status.
const char* StockStatusIconName(std::int32_t status);

// One named paper. Its display name is the stock's custom name; `name` is a
// separate stored field. The reference count is a run-time mark only: it is
// never stored and never copied.
class StockLibrary {
 public:
  StockLibrary() = default;
  // Reads "Stock", then the status, uuid and name present, then recomputes
  // the status from the stock, so a loaded entry never trusts a stored 2 or 3.
  explicit StockLibrary(const Dictionary& entry);
  StockLibrary(const StockLibrary& other);
  StockLibrary& operator=(const StockLibrary& other);
  virtual ~StockLibrary() = default;

  std::int32_t status() const { return status_; }
  void setStatus(std::int32_t status) { status_ = status; }
  Stock& stock() { return stock_; }
  const Stock& stock() const { return stock_; }
  void setStock(const Stock& stock) { stock_ = stock; }
  const std::string& uuid() const { return uuid_; }
  void setUUID(std::string uuid) { uuid_ = std::move(uuid); }
  const std::string& name() const { return name_; }
  void setName(std::string name) { name_ = std::move(name); }
  std::int32_t referenceCount() const { return referenceCount_; }
  void setReferenceCount(std::int32_t count) { referenceCount_ = count; }

  // The stored form: "EntryStatus", "Stock", and uuid and name when not empty.
  virtual Dictionary asTicket() const;

  // Sets the status to 2 (unsupported value) or 3 (unsupported attribute)
  // when the stock calls for it; otherwise leaves it as it was.
  void validateStockEntry();

 private:
  std::int32_t status_ = kStockStatusNone;
  Stock stock_;
  std::int32_t referenceCount_ = 0;
  std::string uuid_;
  std::string name_;
};

// The named papers, stored as serialised entries under their UUIDs. No entry
// is held as an object: each operation builds a StockLibrary from the stored
// dictionary and stores its asTicket back.
//
// With deferred writing off, every change the user makes (add, replace,
// update, remove) rewrites the preference file at once. Status marks (in use,
// clearStatus) are recomputed whenever the list is shown, so they stay in
// memory and reach the file with the next change; in particular a damaged
// file that was read as the factory list is left alone until the user
// changes something.
class StockLibraryList {
 public:
  // The user's list, read from the preference file (or the factory list).
  StockLibraryList();
  // An empty list; with deferWrite it lives in memory only and is never written.
  explicit StockLibraryList(bool deferWrite);
  // Writes once more when the user changed anything (unless deferred).
  ~StockLibraryList();
  StockLibraryList(const StockLibraryList&) = delete;
  StockLibraryList& operator=(const StockLibraryList&) = delete;

  // Stores the entry under a fresh UUID (set on the entry too, replacing any
  // it had) and returns that UUID.
  std::string add(StockLibrary& entry);
  // The first stored entry whose stock's custom name equals the entry's,
  // compared by simple case folding (entries without a custom name on either
  // side never match), takes the entry's stock and keeps its own uuid, status
  // and name. False when nothing matched (and nothing changed).
  bool replace(const StockLibrary& entry);
  // True when a stored entry's custom name equals name by simple case folding.
  // An empty name is never a duplicate.
  bool isDuplicate(std::string_view name) const;
  void update(std::string_view uuid, const StockLibrary& entry);
  void remove(std::string_view uuid);

  // The store itself: UUID to serialised entry.
  const Dictionary& stockList() const { return store_; }
  std::size_t count() const { return store_.size(); }
  bool deferWrite() const { return deferWrite_; }

  // The entry stored under uuid, or nullopt.
  std::optional<StockLibrary> entry(std::string_view uuid) const;
  // The UUID of the first entry whose stock equals stock (Stock::operator==).
  std::optional<std::string> findMatch(const Stock& stock) const;
  // The UUID of the first entry whose custom name equals name by simple case
  // folding.
  std::optional<std::string> findByName(std::string_view name) const;

  // Status marks for the entry under uuid (nothing happens for an unknown one).
  void setInUse(std::string_view uuid);
  void setNotInUse(std::string_view uuid);
  // Re-validates every entry; each that is then not status 2 gets status 0.
  void clearStatus();

  // Rewrites the list in the preference file (other keys there are kept).
  // False when the file could not be written (already reported).
  bool write();
  // Replaces the store with the preference file's list, or the factory list
  // when the user has none; an empty store when neither has one.
  void read();

 private:
  // A change the user made: written at once unless deferred.
  void changed();
  void setStatusMark(std::string_view uuid, std::int32_t status);

  Dictionary store_;
  bool deferWrite_ = false;
  bool userChanged_ = false;
};

// The names of the papers chosen last, most recent first, at most 25; the
// paper menus offer them first.
class StockLibraryOrderList {
 public:
  static constexpr std::size_t kMaxEntries = 25;

  StockLibraryOrderList();   // reads
  ~StockLibraryOrderList();  // writes what changed since the last write
  StockLibraryOrderList(const StockLibraryOrderList&) = delete;
  StockLibraryOrderList& operator=(const StockLibraryOrderList&) = delete;

  const Array& stockOrderList() const { return order_; }
  // Empties the list; written by the next write (at the latest the destructor).
  void clearOrderList();
  // Moves name to the front (adding it when new), keeps at most 25, writes.
  void updateOrderList(std::string_view name);
  // Removes every occurrence of name, then writes.
  void remove(std::string_view name);

  bool write();
  void read();

 private:
  Array order_;
  bool unsaved_ = false;
};

// ---- Shared by the list classes and the list view --------------------------------
// The named-paper preference file's value under key, or when the user's file
// lacks it (no file yet, or one that cannot be read) the factory default's
// value from ZorvaFeatures.plist; nullopt when neither has it.
std::optional<Value> ReadStockLibraryValue(std::string_view key);
// Stores value under key in the named-paper preference file, keeping the
// file's other keys. False when the write failed (already reported).
bool WriteStockLibraryValue(std::string_view key, Value value);

// A new random UUID in its standard upper-case string form.
std::string NewUUIDString();

}  // namespace zorva

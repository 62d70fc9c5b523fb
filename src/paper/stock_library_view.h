// What the named-paper list view keeps between sessions (which columns it
// shows and its choices, the column widths, the row last selected) and the
// order its rows sort in. The view itself draws; this is its data.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/value.h"
#include "host/setting_map.h"
#include "paper/stock_library.h"

namespace zorva {

// The list's columns, in the order of the first eleven preference flags.
inline constexpr std::array<const char*, 11> kStockLibraryColumns = {
    "StockSize",   "StockColor",     "StockType", "StockPunched",     "StockWeight", "SidesCoated",
    "CoatingType", "UncoatedFinish", "Grain",     "StockDescription", "Comment"};

// The "Preferences" dialog's record: fifteen flags stored as an array of
// booleans under "com.zorva.print.StockLibrary.Preferences".
struct StockLibraryViewPreferences {
  std::array<bool, kStockLibraryColumns.size()> showColumn{true, true, true, true, true, true,
                                                           true, true, true, true, true};
  bool printerListByDefault = false;  // "Default List:" is "Printer Paper List"
  bool forceUniqueNames = false;      // "Paper Names:" is "Force Unique Names"
  bool showUnsupportedValues = true;
  bool showUnsupportedAttributes = true;

  static constexpr std::size_t kCount = kStockLibraryColumns.size() + 4;

  // Starts from the defaults and takes each flag the array holds (a flag is
  // read only when the array reaches its index); non-booleans are skipped.
  static StockLibraryViewPreferences FromArray(const Array* flags);
  Array toArray() const;

  friend bool operator==(const StockLibraryViewPreferences&,
                         const StockLibraryViewPreferences&) = default;
};

// Read from the named-paper preference file (factory defaults behind it).
StockLibraryViewPreferences ReadStockLibraryViewPreferences();
bool WriteStockLibraryViewPreferences(const StockLibraryViewPreferences& preferences);

// One width per visible column; numbers that do not fit are skipped.
std::vector<std::int32_t> ReadStockLibraryColumnWidths();
bool WriteStockLibraryColumnWidths(const std::vector<std::int32_t>& widths);

// The UUID of the row last selected, when one was saved.
std::optional<std::string> ReadStockLibrarySelectedRow();
bool WriteStockLibrarySelectedRow(std::string_view uuid);

// Column properties of the list view.
inline constexpr std::uint32_t kColumnName = FourCC("NaMe");
inline constexpr std::uint32_t kColumnStatus = FourCC("StAt");
inline constexpr std::uint32_t kColumnSize = FourCC("SiZe");
inline constexpr std::uint32_t kColumnColor = FourCC("CoLr");
inline constexpr std::uint32_t kColumnType = FourCC("TyPe");
inline constexpr std::uint32_t kColumnPunched = FourCC("HoLe");
inline constexpr std::uint32_t kColumnWeight = FourCC("WeIg");
inline constexpr std::uint32_t kColumnSidesCoated = FourCC("SdCt");
inline constexpr std::uint32_t kColumnCoatingType = FourCC("CtTy");
inline constexpr std::uint32_t kColumnFinish = FourCC("UnCt");
inline constexpr std::uint32_t kColumnGrain = FourCC("GrAi");
inline constexpr std::uint32_t kColumnDescription = FourCC("DeSc");
inline constexpr std::uint32_t kColumnComment = FourCC("CoMm");

// Negative, zero or positive as a sorts before, with or after b in the
// column; equal keys fall back to the custom names, case-insensitively. An
// unknown property compares by name alone.
int CompareStockLibraryEntries(const StockLibrary& a, const StockLibrary& b,
                               std::uint32_t property);
// The list view's comparison: true when a sorts before b.
bool StockLibraryListItemCompareCallback(const StockLibrary& a, const StockLibrary& b,
                                         std::uint32_t property);

// The list's entries sorted by a column (stable, so equal rows keep the
// list's own order), each loaded once.
std::vector<StockLibrary> SortedStockLibraryEntries(const StockLibraryList& list,
                                                    std::uint32_t property, bool ascending = true);

}  // namespace zorva

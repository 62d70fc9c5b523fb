// The three shapes of keyword table and the look-ups over them.
//
// SettingMap rows tie a menu item (localisation key) to a ticket value, a
// command code and an optional installable-option filter. Paper-size rows add
// physical dimensions. Keyword pairs tie a PPD choice keyword to a ticket
// value. Every table is constexpr data ending in a terminator row (null key).
// No function here allocates.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/value.h"

namespace zorva {

// A four-character code ("ZWmZ") as the 32-bit number the menus carry.
constexpr std::uint32_t FourCC(const char (&s)[5]) {
  return (static_cast<std::uint32_t>(static_cast<unsigned char>(s[0])) << 24) |
         (static_cast<std::uint32_t>(static_cast<unsigned char>(s[1])) << 16) |
         (static_cast<std::uint32_t>(static_cast<unsigned char>(s[2])) << 8) |
         static_cast<std::uint32_t>(static_cast<unsigned char>(s[3]));
}

// Separator and command rows use negative values other than kUnset.
inline constexpr std::int32_t kSeparatorValue = -5;

struct SettingMap {
  const char* key;            // localisation key; "-" is a separator; nullptr ends the table
  std::int32_t value;         // ticket value; kUnset = printer default / use job setting
  std::uint32_t command;      // four-character command code, 0 for none
  const char* featureKey;     // installable-option filter, or nullptr
  std::uint8_t featureValue;  // the filter's wanted answer (1 = installed)
};

struct PaperSizeSettingMap {
  const char* key;  // nullptr (with value 0) ends the table
  std::int32_t value;
  std::int32_t reserved;
  std::int32_t width;   // hundredths of a millimetre
  std::int32_t height;  // hundredths of a millimetre
  std::int32_t widthPoints;
  std::int32_t heightPoints;
};

struct KeywordPair {
  const char* choice;  // PPD choice keyword; nullptr ends the table
  std::int32_t value;
};

struct MainKeyword {
  const char* keyword;         // PPD main keyword; nullptr ends the table
  const KeywordPair* choices;  // the table converting its choices
};

// Whether a row's installable-option filter lets it exist now.
bool RowIsAvailable(const SettingMap& row);

// Rows before the first row with a null key.
int CountMaps(const SettingMap* map);
int CountMaps(const PaperSizeSettingMap* map);
int CountMaps(const KeywordPair* map);
int CountMaps(const MainKeyword* map);

// The value of the 1-based row `position` (no bounds check).
std::int32_t UIToTicket(const SettingMap* map, int position);

// Position (1-based) of the row holding value, or -1. The scan takes the
// first available row with the value, passes over filtered-out rows, and ends
// at the first row whose value is 0 (which is returned when it has a key).
int TicketToUI(const SettingMap* map, std::int32_t value);

// The key of the row the same scan ends on, or nullptr.
const char* LocalizedKeyForTicketValue(const SettingMap* map, std::int32_t value);

// The key of the paper-size row with that value; the scan stops at a row
// whose value is 0 (nullptr when that row has no key).
const char* LocalizedKeyForPaperSizeTicketValue(const PaperSizeSettingMap* map, std::int32_t value);

// Keyword pairs scan to the terminator; 0 is an ordinary value there.
// The value for a choice (exact, case-sensitive), or -1.
std::int32_t KeywordPairValueForChoice(const KeywordPair* map, std::string_view choice);
// The first choice with that value, or nullptr.
const char* KeywordPairChoiceForValue(const KeywordPair* map, std::int32_t value);

// The choice table for a PPD main keyword in MainKeywordMap, or nullptr.
const KeywordPair* ChoiceTableForKeyword(std::string_view keyword);
// Ticket value of a PPD choice of a main keyword, or -1 when either is unknown.
std::int32_t PPDTicketValueForChoice(const char* keyword, const char* choice);
// First choice keyword of the main keyword's table with that value, or nullptr.
const char* PPDChoiceForTicketValue(const char* keyword, std::int32_t value);

}  // namespace zorva

// The Advanced panel's ticket reading and writing.
#include "panels/advanced_settings.h"

#include <cctype>
#include <cstdio>

#include "core/ticket_keys.h"
#include "host/keyword_tables.h"
#include "host/ticket_helpers.h"
#include "model/stock.h"

namespace zorva {

namespace key = tkey;

constexpr SettingMap BookletLayoutOrderMap[] = {
    {"BookletOrderPrinterDefault", kByPosition, 0, nullptr, 1},
    {"BookletOrderLeftBinding", kByPosition, 0, nullptr, 1},
    {"BookletOrderRightBinding", kByPosition, 0, nullptr, 1},
    {"BookletOrderTopBinding", kByPosition, 0, nullptr, 1},
    {nullptr, 0, 0, nullptr, 0},
};

constexpr SettingMap RotateImageMap[] = {
    {"RotateImageOff", kByPosition, 0, nullptr, 1},
    {"RotateImage180", kByPosition, 0, nullptr, 1},
    {nullptr, 0, 0, nullptr, 0},
};

// Stored by position, and the job ticket reads the position as its value:
// 1 does not insert, 1 and 2 are the two prescans. The positions the job
// ticket has no keyword for leave the choice to the printer.
constexpr SettingMap OPISubsitutionMap[] = {
    {"OPIOff", kByPosition, 0, nullptr, 1},
    {"OPIOn", kByPosition, 0, nullptr, 1},
    {nullptr, 0, 0, nullptr, 0},
};

constexpr SettingMap OPIPrescanMap[] = {
    {"OPI pre-scan", kByPosition, 0, nullptr, 1},
    {"OPI pre-scan-and-gather", kByPosition, 0, nullptr, 1},
    {"OPI no-pre-scan", kByPosition, 0, nullptr, 1},
    {nullptr, 0, 0, nullptr, 0},
};

namespace {

struct NumberKey {
  std::string_view key;
  std::int32_t AdvancedSettings::*field;
};

// Read in this order, with the defaults of a new AdvancedSettings.
constexpr NumberKey kReadKeys[] = {
    {key::kAdvancedBookletLayoutOrder, &AdvancedSettings::bookletOrder},
    {key::kEmitJOTF, &AdvancedSettings::emitJOTF},
    {key::kRotateImage180, &AdvancedSettings::rotateImage},
    {key::kOPISubstitution, &AdvancedSettings::opiSubstitution},
    {key::kOPIPrescan, &AdvancedSettings::opiPrescan},
    {key::kPagesToPrintSelected, &AdvancedSettings::pagesToPrint},
    {key::kPagesToPrintFrom, &AdvancedSettings::pagesFrom},
    {key::kPagesToPrintTo, &AdvancedSettings::pagesTo},
};

// Written in this order; the rotate value is the one written less one.
constexpr NumberKey kWriteKeys[] = {
    {key::kAdvancedBookletLayoutOrder, &AdvancedSettings::bookletOrder},
    {key::kRotateImage180, &AdvancedSettings::rotateImage},
    {key::kEmitJOTF, &AdvancedSettings::emitJOTF},
    {key::kOPISubstitution, &AdvancedSettings::opiSubstitution},
    {key::kOPIPrescan, &AdvancedSettings::opiPrescan},
    {key::kPagesToPrintSelected, &AdvancedSettings::pagesToPrint},
};

constexpr std::string_view kClient = kTicketClientPrintingManager;

void WriteJobPaper(Ticket& ticket, const AdvancedSettings& settings) {
  // Read fresh: the Paper/Output panel may have written the job's paper
  // since this panel last read it.
  const Dictionary* current = ticket.getDictionary(key::kJobLevelStock);
  Dictionary stock = current ? *current : Dictionary{};
  if (settings.forceSize) {
    const auto setOrErase = [&](std::string_view name, std::int32_t value) {
      if (value == kUnset) {
        stock.erase(name);
      } else {
        stock.set(name, Value(value));
      }
    };
    setOrErase(key::kSize, settings.size);
    setOrErase(key::kWidth, settings.width);
    setOrErase(key::kLength, settings.length);
    ticket.setBoolean(kClient, key::kBookletForceNewSize, true);
  } else if (settings.forcedWhenRead) {
    // Undo this panel's own forcing; a size chosen elsewhere stays.
    stock.erase(key::kSize);
    stock.erase(key::kWidth);
    stock.erase(key::kLength);
    ticket.remove(key::kBookletForceNewSize);
  } else {
    return;
  }
  ticket.setDictionary(kClient, key::kJobLevelStock, std::move(stock));
}

}  // namespace

AdvancedSettings ReadAdvancedSettings(const Ticket& ticket) {
  AdvancedSettings settings;
  for (const NumberKey& k : kReadKeys) ticket.getNumber(k.key, settings.*k.field);
  if (const Dictionary* stock = ticket.getDictionary(key::kJobLevelStock)) {
    if (DictionaryGetNumber(stock, key::kSize, settings.size) &&
        settings.size == kStockSizeCustom) {
      DictionaryGetNumber(stock, key::kWidth, settings.width);
      DictionaryGetNumber(stock, key::kLength, settings.length);
    }
  }
  settings.forcedWhenRead = ticket.getBoolean(key::kBookletForceNewSize).value_or(false);
  settings.forceSize = settings.forcedWhenRead;
  return settings;
}

std::string PageFieldText(std::int32_t page) {
  if (page <= 0) return {};
  char text[16];
  std::snprintf(text, sizeof text, "%ld", static_cast<long>(page));
  return text;
}

std::int32_t FieldIntValue(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && std::isspace(static_cast<unsigned char>(text[i]))) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == '-' || text[i] == '+')) negative = text[i++] == '-';
  std::int64_t value = 0;
  for (; i < text.size() && std::isdigit(static_cast<unsigned char>(text[i])); ++i) {
    value = value * 10 + (text[i] - '0');
    if (value > INT32_MAX) return negative ? INT32_MIN : INT32_MAX;
  }
  return static_cast<std::int32_t>(negative ? -value : value);
}

void WriteAdvancedSettings(Ticket& ticket, const AdvancedSettings& settings,
                           std::string_view fromText, std::string_view toText) {
  for (const NumberKey& k : kWriteKeys) {
    // Wide, so the smallest number a ticket may hold has a number below it.
    std::int64_t value = settings.*k.field;
    // Readers of the ticket take 0 for "not rotated": the menu's first item.
    if (k.field == &AdvancedSettings::rotateImage) value -= 1;
    ticket.setNumber(kClient, k.key, value);
  }
  if (!fromText.empty()) ticket.setNumber(kClient, key::kPagesToPrintFrom, FieldIntValue(fromText));
  if (!toText.empty()) ticket.setNumber(kClient, key::kPagesToPrintTo, FieldIntValue(toText));
  WriteJobPaper(ticket, settings);
}

const PaperSizeSettingMap* PaperSizeRow(std::int32_t size) {
  for (const PaperSizeSettingMap* row = CompleteStockSizeMap; row->key; ++row) {
    if (row->value == size) return row;
  }
  return nullptr;
}

}  // namespace zorva

// The Advanced panel's settings and how they travel between the print
// settings and the panel: the keys it reads with their defaults, the order
// it writes them in, the rotate value's offset, the page range fields and
// the booklet's forced paper size.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/ticket.h"
#include "core/value.h"
#include "host/setting_map.h"

namespace zorva {

// The panel's menus. Every row carries 'Zujn': they are stored by position.
extern const SettingMap BookletLayoutOrderMap[];
extern const SettingMap RotateImageMap[];
extern const SettingMap OPISubsitutionMap[];
extern const SettingMap OPIPrescanMap[];
inline constexpr std::int32_t kByPosition = static_cast<std::int32_t>(FourCC("Zujn"));

struct AdvancedSettings {
  std::int32_t bookletOrder = 2;     // item of BookletLayoutOrderMap
  std::int32_t emitJOTF = 1;         // send the job ticket
  std::int32_t rotateImage = 1;      // item of RotateImageMap
  std::int32_t opiSubstitution = 1;  // item of OPISubsitutionMap
  std::int32_t opiPrescan = 1;       // item of OPIPrescanMap
  std::int32_t pagesToPrint = 0;     // 0 all pages, 1 the From-To range
  std::int32_t pagesFrom = 0;
  std::int32_t pagesTo = 0;
  // The job's paper size as the booklet may force it.
  std::int32_t size = kUnset;
  std::int32_t width = kUnset;
  std::int32_t length = kUnset;
  bool forceSize = false;  // the force-size check box
  // "com.zorva.print.BookletForceNewSize" was on when the ticket was read.
  bool forcedWhenRead = false;
};

// Reads the panel's keys, each absent one giving its default.
AdvancedSettings ReadAdvancedSettings(const Ticket& ticket);

// The From/To field text for a page number: "%ld" above 0, else empty.
std::string PageFieldText(std::int32_t page);
// The integer at the start of a field's text (0 when there is none).
std::int32_t FieldIntValue(std::string_view text);

// Writes the settings back (client "com.zorva.printingmanager"): booklet
// order, rotate image less one, send job ticket, OPI substitution, OPI
// prescan, pages to print; From and To only when their field has text; then
// the job's paper as the force-size rules say.
void WriteAdvancedSettings(Ticket& ticket, const AdvancedSettings& settings,
                           std::string_view fromText, std::string_view toText);

// The size row the paper-size pop-up shows for a size code, for its
// dimensions; nullptr for an unknown code.
const PaperSizeSettingMap* PaperSizeRow(std::int32_t size);

}  // namespace zorva

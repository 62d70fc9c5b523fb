// Menus and texts of the dialog's controls: pop-ups filled from keyword
// tables (each item carrying its ticket value and command code), input
// histories, the localised-text setters and the typed-text limiter.
#pragma once

#include <QString>
#include <cstdint>
#include <string_view>
#include <vector>

#include "core/localization.h"
#include "host/setting_map.h"
#include "model/stock.h"

class QComboBox;
class QMenu;
class QLabel;
class QAbstractButton;
class QWidget;
class QLineEdit;

namespace zorva {

class Bundle;

// Item data roles of a pop-up's items.
inline constexpr int kTicketValueRole = 0x0100;  // Qt::UserRole
inline constexpr int kCommandRole = 0x0101;
// A pop-up's maximum (the rows examined, skipped ones included) lives in
// this property.
inline constexpr const char* kMaximumProperty = "maximum";

// A menu serving the job itself labels its kUnset row "PrinterDefault"; one
// serving a special page (JobContext) labels it "UseJobSetting".

// Appends the table's items; returns the number of rows examined.
std::uint16_t PopulateMenuFromMap(const Bundle* bundle, QComboBox* menu, const SettingMap* map,
                                  JobContext jobContext, std::uint32_t command);
// The same for a menu of actions (a button's menu): each action's data is
// its ticket value, its command code sits in kCommandProperty.
inline constexpr const char* kCommandProperty = "command";
std::uint16_t PopulateMenuFromMap(const Bundle* bundle, QMenu* menu, const SettingMap* map,
                                  JobContext jobContext, std::uint32_t command);
// Clears the pop-up, fills it and sets its maximum to the count.
std::uint16_t PopulatePopupButtonFromMap(const Bundle* bundle, QComboBox* popup,
                                         const SettingMap* map, JobContext jobContext,
                                         std::uint32_t command);
// As above, then the strings of the history file's array under historyKey
// go in after item afterItem (1-based), each with historyCommand.
std::uint16_t PopulatePopupButtonFromMapAndHistory(const Bundle* bundle, QComboBox* popup,
                                                   const SettingMap* map, JobContext jobContext,
                                                   std::string_view historyKey, int afterItem,
                                                   std::uint32_t historyCommand,
                                                   std::uint32_t command);
// Fills a pop-up from a paper-size table (items carry the size code).
void PopulatePopupButtonFromPaperSizeMap(const Bundle* bundle, QComboBox* popup,
                                         const PaperSizeSettingMap* map);

// Selects the first item carrying value; 1 when found, else 0 and the
// selection stays.
int SetPopupButtonToTicketValue(QComboBox* popup, std::int32_t value);
// The selected item's value (kUnset with nothing selected).
std::int32_t GetPopupButtonTicketValue(const QComboBox* popup);
// Menus stored by position: 1-based, out-of-range positions change nothing.
void SetPopupButtonPosition(QComboBox* popup, std::int32_t position);
std::int32_t GetPopupButtonPosition(const QComboBox* popup);

// The localised text of key used as a format; nothing for a null bundle,
// key or target.
QString LocalizedText(const Bundle* bundle, std::string_view key,
                      const std::vector<FormatArg>& args = {});
void SetLocalizedStaticText(const Bundle* bundle, const char* key, QLabel* text,
                            const std::vector<FormatArg>& args = {});
void SetLocalizedControlTitle(const Bundle* bundle, const char* key, QAbstractButton* control,
                              const std::vector<FormatArg>& args = {});
void SetLocalizedWindowTitle(const Bundle* bundle, const char* key, QWidget* window,
                             const std::vector<FormatArg>& args = {});
void SetLocalizedMenuTitle(const Bundle* bundle, const char* key, QComboBox* menu, int item,
                           const std::vector<FormatArg>& args = {});

// Gives every widget under root that carries a "textKey" property its
// localised text (labels, buttons, group boxes).
void LocalizeView(const Bundle* bundle, QWidget* root);

// Refuses (with a beep) typed text that would make the field longer than
// maxLength UTF-16 units or that holds a character outside allowed (empty:
// any). Editing keys and shortcuts pass.
void LimitInputLengthAndCharacters(QLineEdit* field, int maxLength, const QString& allowed);

}  // namespace zorva

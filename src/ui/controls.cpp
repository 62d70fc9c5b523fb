// Pop-ups from keyword tables, histories, localised texts and the typed-text
// limiter.
#include "ui/controls.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>

#include "core/bundle.h"
#include "host/installable_options.h"
#include "host/preferences.h"

namespace zorva {

namespace {

QString ToQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

QString LocalizedText(const Bundle* bundle, std::string_view key,
                      const std::vector<FormatArg>& args) {
  if (!bundle || key.empty()) return {};
  const std::string_view format = bundle->localizedString(key);
  return args.empty() ? ToQString(format) : ToQString(FormatString(format, args));
}

namespace {

// Walks the table's rows as a menu shows them: onItem(text, value, command)
// for each item, onSeparator() for "-"; returns the rows examined.
template <typename OnItem, typename OnSeparator>
std::uint16_t ForEachMenuRow(const Bundle* bundle, const SettingMap* map, JobContext jobContext,
                             std::uint32_t command, OnItem onItem, OnSeparator onSeparator) {
  std::uint16_t examined = 0;
  for (const SettingMap* row = map; row->key; ++row) {
    ++examined;
    if (!RowIsAvailable(*row)) continue;
    std::string_view key = row->key;
    if (row->value == kUnset)
      key = jobContext == JobContext::Job ? "PrinterDefault" : "UseJobSetting";
    if (key == "-") {
      onSeparator();
      continue;
    }
    onItem(bundle ? ToQString(bundle->localizedString(key)) : ToQString(kStringNotFound),
           row->value, command != 0 ? command : row->command);
  }
  return examined;
}

// Event handlers find the table from the menu itself.
void RememberMap(QObject* menu, const SettingMap* map) {
  menu->setProperty("settingMap", QVariant::fromValue(reinterpret_cast<quintptr>(map)));
}

}  // namespace

std::uint16_t PopulateMenuFromMap(const Bundle* bundle, QComboBox* menu, const SettingMap* map,
                                  JobContext jobContext, std::uint32_t command) {
  if (!menu || !map) return 0;
  const std::uint16_t examined = ForEachMenuRow(
      bundle, map, jobContext, command,
      [menu](const QString& text, std::int32_t value, std::uint32_t code) {
        menu->addItem(text);
        const int item = menu->count() - 1;
        menu->setItemData(item, value, kTicketValueRole);
        menu->setItemData(item, code, kCommandRole);
      },
      [menu] { menu->insertSeparator(menu->count()); });
  RememberMap(menu, map);
  return examined;
}

std::uint16_t PopulateMenuFromMap(const Bundle* bundle, QMenu* menu, const SettingMap* map,
                                  JobContext jobContext, std::uint32_t command) {
  if (!menu || !map) return 0;
  const std::uint16_t examined = ForEachMenuRow(
      bundle, map, jobContext, command,
      [menu](const QString& text, std::int32_t value, std::uint32_t code) {
        QAction* action = menu->addAction(text);
        action->setData(value);
        action->setProperty(kCommandProperty, code);
      },
      [menu] { menu->addSeparator(); });
  RememberMap(menu, map);
  return examined;
}

std::uint16_t PopulatePopupButtonFromMap(const Bundle* bundle, QComboBox* popup,
                                         const SettingMap* map, JobContext jobContext,
                                         std::uint32_t command) {
  if (!popup) return 0;
  popup->clear();
  const std::uint16_t count = PopulateMenuFromMap(bundle, popup, map, jobContext, command);
  popup->setProperty(kMaximumProperty, count);
  return count;
}

std::uint16_t PopulatePopupButtonFromMapAndHistory(const Bundle* bundle, QComboBox* popup,
                                                   const SettingMap* map, JobContext jobContext,
                                                   std::string_view historyKey, int afterItem,
                                                   std::uint32_t historyCommand,
                                                   std::uint32_t command) {
  std::uint16_t count = PopulatePopupButtonFromMap(bundle, popup, map, jobContext, command);
  if (!popup || historyKey.empty()) return count;
  const std::optional<Value> preferences = CopyUserPreferences(kInputHistoryFile);
  const Dictionary* histories = preferences ? preferences->dictionary() : nullptr;
  const Array* history = histories ? histories->getArray(historyKey) : nullptr;
  if (!history) return count;
  int at = afterItem;  // 1-based: the new item goes in after this one
  for (const Value& entry : *history) {
    if (const std::string* text = entry.string()) {
      const int index = std::clamp(at, 0, popup->count());
      popup->insertItem(index, ToQString(*text));
      popup->setItemData(index, historyCommand, kCommandRole);
      ++count;
    }
    // The insertion point moves on for every element, strings or not.
    ++at;
  }
  popup->setProperty(kMaximumProperty, count);
  return count;
}

void PopulatePopupButtonFromPaperSizeMap(const Bundle* bundle, QComboBox* popup,
                                         const PaperSizeSettingMap* map) {
  if (!popup || !map) return;
  popup->clear();
  int count = 0;
  for (const PaperSizeSettingMap* row = map; row->key; ++row, ++count) {
    popup->addItem(bundle ? ToQString(bundle->localizedString(row->key)) : QString());
    popup->setItemData(popup->count() - 1, row->value, kTicketValueRole);
  }
  popup->setProperty(kMaximumProperty, count);
}

int SetPopupButtonToTicketValue(QComboBox* popup, std::int32_t value) {
  if (!popup) return 0;
  for (int i = 0; i < popup->count(); ++i) {
    const QVariant data = popup->itemData(i, kTicketValueRole);
    if (data.isValid() && data.toInt() == value) {
      popup->setCurrentIndex(i);
      return 1;
    }
  }
  return 0;
}

std::int32_t GetPopupButtonTicketValue(const QComboBox* popup) {
  if (!popup || popup->currentIndex() < 0) return kUnset;
  const QVariant data = popup->currentData(kTicketValueRole);
  return data.isValid() ? data.toInt() : kUnset;
}

void SetPopupButtonPosition(QComboBox* popup, std::int32_t position) {
  if (popup && position >= 1 && position <= popup->count()) popup->setCurrentIndex(position - 1);
}

std::int32_t GetPopupButtonPosition(const QComboBox* popup) {
  return popup ? popup->currentIndex() + 1 : 0;
}

void SetLocalizedStaticText(const Bundle* bundle, const char* key, QLabel* text,
                            const std::vector<FormatArg>& args) {
  if (!bundle || !key || !text) return;
  text->setText(LocalizedText(bundle, key, args));
  text->repaint();
}

void SetLocalizedControlTitle(const Bundle* bundle, const char* key, QAbstractButton* control,
                              const std::vector<FormatArg>& args) {
  if (!bundle || !key || !control) return;
  control->setText(LocalizedText(bundle, key, args));
}

void SetLocalizedWindowTitle(const Bundle* bundle, const char* key, QWidget* window,
                             const std::vector<FormatArg>& args) {
  if (!bundle || !key || !window) return;
  window->setWindowTitle(LocalizedText(bundle, key, args));
}

void SetLocalizedMenuTitle(const Bundle* bundle, const char* key, QComboBox* menu, int item,
                           const std::vector<FormatArg>& args) {
  if (!bundle || !key || !menu || item < 1 || item > menu->count()) return;
  menu->setItemText(item - 1, LocalizedText(bundle, key, args));
}

void LocalizeView(const Bundle* bundle, QWidget* root) {
  if (!bundle || !root) return;
  QList<QWidget*> widgets = root->findChildren<QWidget*>();
  widgets.prepend(root);
  for (QWidget* widget : widgets) {
    const QVariant key = widget->property("textKey");
    if (!key.isValid()) continue;
    const QString text = LocalizedText(bundle, key.toString().toStdString());
    if (auto* label = qobject_cast<QLabel*>(widget)) {
      label->setText(text);
    } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
      button->setText(text);
    } else if (auto* group = qobject_cast<QGroupBox*>(widget)) {
      group->setTitle(text);
    }
  }
}

namespace {

class InputLimiter : public QObject {
 public:
  InputLimiter(QLineEdit* field, int maxLength, QString allowed)
      : QObject(field), maxLength_(maxLength), allowed_(std::move(allowed)) {}

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::KeyPress) return false;
    auto* field = static_cast<QLineEdit*>(watched);
    const auto* key = static_cast<QKeyEvent*>(event);
    const QString typed = key->text();
    // Editing keys, arrows and shortcuts carry no printable text.
    if (typed.isEmpty() || !typed.at(0).isPrint()) return false;
    const qsizetype replaced = field->selectedText().size();
    const bool tooLong = field->text().size() - replaced + typed.size() > maxLength_;
    bool refused = tooLong;
    for (const QChar c : typed) refused = refused || (!allowed_.isEmpty() && !allowed_.contains(c));
    if (refused) QApplication::beep();
    return refused;
  }

 private:
  int maxLength_;
  QString allowed_;
};

}  // namespace

void LimitInputLengthAndCharacters(QLineEdit* field, int maxLength, const QString& allowed) {
  if (!field) return;
  field->installEventFilter(new InputLimiter(field, maxLength, allowed));
}

}  // namespace zorva

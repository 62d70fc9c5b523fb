// The paper dialog ("StockDialog"): every stock field on one window, the
// custom size, weight, type and colour fields enabled by their pop-up's
// "Custom..." item.
#include "ui/paper_dialogs.h"

#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <cmath>
#include <memory>

#include "core/bundle.h"
#include "core/print_session.h"
#include "host/keyword_tables.h"
#include "ui/controls.h"
#include "ui/named_paper_window.h"
#include "ui/panel_view.h"

namespace zorva {
namespace {

constexpr std::int32_t kCustomWeightItem = -10;  // WeightMap's "WeightCustom..."
constexpr std::int32_t kCustomTypeValue = 7;
constexpr std::int32_t kCustomColorValue = 10;
constexpr std::int32_t kSidesUncoated = 1;
constexpr const char* kShownProperty = "shownValue";
// What the custom fields offer before anything was typed: A4 at 80 gsm.
constexpr double kStartWidth = 210.0;
constexpr double kStartLength = 297.0;
constexpr int kStartWeight = 80;

bool IsSetStock(std::int32_t type) {
  return type == kStockTypePrecutTab || type == kStockTypeFullCutTab || type == kStockTypeOrdered;
}

struct StockControls {
  QLineEdit* name = nullptr;
  QComboBox* size = nullptr;
  QDoubleSpinBox* width = nullptr;
  QDoubleSpinBox* length = nullptr;
  QComboBox* weight = nullptr;
  QSpinBox* customWeight = nullptr;
  QComboBox* type = nullptr;
  QLineEdit* customType = nullptr;
  QComboBox* color = nullptr;
  QLineEdit* customColor = nullptr;
  QComboBox* punched = nullptr;
  QComboBox* sidesCoated = nullptr;
  QComboBox* coating = nullptr;
  QComboBox* finish = nullptr;
  QComboBox* grain = nullptr;
  QLineEdit* description = nullptr;
  QLineEdit* comment = nullptr;
};

template <typename T>
T* Control(QWidget* w, int n) {
  return NumberedControl<T>(w, "ZStk", n);
}

bool FindControls(QWidget* w, StockControls& c) {
  c = {Control<QLineEdit>(w, 1),      Control<QComboBox>(w, 2),  Control<QDoubleSpinBox>(w, 3),
       Control<QDoubleSpinBox>(w, 4), Control<QComboBox>(w, 5),  Control<QSpinBox>(w, 6),
       Control<QComboBox>(w, 7),      Control<QLineEdit>(w, 8),  Control<QComboBox>(w, 9),
       Control<QLineEdit>(w, 10),     Control<QComboBox>(w, 11), Control<QComboBox>(w, 12),
       Control<QComboBox>(w, 13),     Control<QComboBox>(w, 14), Control<QComboBox>(w, 15),
       Control<QLineEdit>(w, 16),     Control<QLineEdit>(w, 17)};
  return c.name && c.size && c.width && c.length && c.weight && c.customWeight && c.type &&
         c.customType && c.color && c.customColor && c.punched && c.sidesCoated && c.coating &&
         c.finish && c.grain && c.description && c.comment;
}

QString Text(const OptionalString& s) {
  return QString::fromStdString(s.value_or(std::string()));
}

void Populate(const StockControls& c, JobContext context) {
  const Bundle* b = GetPDEBundle();
  PopulatePopupButtonFromMap(b, c.size, StockSizeMap, context, 0);
  PopulatePopupButtonFromMap(b, c.weight, WeightMap, context, 0);
  PopulatePopupButtonFromMap(b, c.type, StockTypeMap, context, 0);
  PopulatePopupButtonFromMap(b, c.color, StockColorMap, context, 0);
  PopulatePopupButtonFromMap(b, c.punched, StockPunchedMap, context, 0);
  PopulatePopupButtonFromMap(b, c.sidesCoated, SidesCoatedMap, context, 0);
  PopulatePopupButtonFromMap(b, c.coating, CoatingTypeMap, context, 0);
  PopulatePopupButtonFromMap(b, c.finish, FinishMap, context, 0);
  PopulatePopupButtonFromMap(b, c.grain, GrainMap, context, 0);
  c.width->setRange(kMinCustomWidth / 100.0 - 100, kMaxCustomWidth / 100.0 + 100);
  c.length->setRange(kMinCustomLength / 100.0 - 100, kMaxCustomLength / 100.0 + 100);
  c.customWeight->setRange(1, 999);
}

// Enables the custom fields while their pop-up shows "Custom...".
void KeepCustomFieldsInStep(const StockControls& c) {
  const bool customSize = GetPopupButtonTicketValue(c.size) == kStockSizeCustom;
  c.width->setEnabled(customSize);
  c.length->setEnabled(customSize);
  c.customWeight->setEnabled(GetPopupButtonTicketValue(c.weight) == kCustomWeightItem);
  c.customType->setEnabled(GetPopupButtonTicketValue(c.type) == kCustomTypeValue);
  c.customColor->setEnabled(GetPopupButtonTicketValue(c.color) == kCustomColorValue);
  if (auto* setup = c.type->parentWidget()->findChild<QPushButton*>("ZStk_19")) {
    setup->setEnabled(IsSetStock(GetPopupButtonTicketValue(c.type)));
  }
  // The kind of coating means something only for coated sides.
  const std::int32_t sides = GetPopupButtonTicketValue(c.sidesCoated);
  c.coating->setEnabled(sides != kUnset && sides != kSidesUncoated);
}

// Selects value and remembers what the pop-up then shows, so that a value
// its menu does not list (a size or type from a printer's paper, say) is
// kept unless the user chooses another.
void ShowValue(QComboBox* popup, std::int32_t value) {
  SetPopupButtonToTicketValue(popup, value);
  popup->setProperty(kShownProperty, GetPopupButtonTicketValue(popup));
}

// The pop-up's value when the user changed it, else the held one.
std::int32_t Picked(const QComboBox* popup, std::int32_t held) {
  const std::int32_t value = GetPopupButtonTicketValue(popup);
  return value != popup->property(kShownProperty).toInt() ? value : held;
}

void Show(const StockControls& c, const Stock& s) {
  c.name->setText(Text(s.customName()));
  ShowValue(c.size, s.size());
  const bool custom = s.size() == kStockSizeCustom;
  c.width->setValue(custom && s.width() != kUnset ? s.width() / 100.0 : kStartWidth);
  c.length->setValue(custom && s.length() != kUnset ? s.length() / 100.0 : kStartLength);
  c.customWeight->setValue(kStartWeight);
  // A weight the menu does not list is a typed one.
  if (!SetPopupButtonToTicketValue(c.weight, s.weight())) {
    SetPopupButtonToTicketValue(c.weight, kCustomWeightItem);
    c.customWeight->setValue(s.weight());
  }
  ShowValue(c.type, s.type());
  c.customType->setText(Text(s.customType()));
  ShowValue(c.color, s.color());
  c.customColor->setText(Text(s.customColor()));
  ShowValue(c.punched, s.punched());
  ShowValue(c.sidesCoated, s.sidesCoated());
  ShowValue(c.coating, s.coatingType());
  ShowValue(c.finish, s.finish());
  ShowValue(c.grain, s.grain());
  c.description->setText(Text(s.description()));
  c.comment->setText(Text(s.comment()));
  KeepCustomFieldsInStep(c);
}

void Alert(QWidget* parent, const char* key) {
  QMessageBox box(QMessageBox::Warning, LocalizedText(GetPDEBundle(), "PaperStock"),
                  LocalizedText(GetPDEBundle(), key), QMessageBox::Ok, parent);
  box.setObjectName("StockAlert");
  box.exec();
}

std::int32_t Hundredths(double mm) {
  return static_cast<std::int32_t>(std::lround(mm * 100));
}

// The controls into s; false (after an alert) for a value out of range.
bool Take(QWidget* dialog, const StockControls& c, Stock& s, std::int32_t modulus) {
  const std::int32_t size = Picked(c.size, s.size());
  if (size == kStockSizeCustom) {
    const std::int32_t w = Hundredths(c.width->value());
    const std::int32_t l = Hundredths(c.length->value());
    if (w < kMinCustomWidth || w > kMaxCustomWidth || l < kMinCustomLength ||
        l > kMaxCustomLength) {
      Alert(dialog, "Custom Size Out Of Range");
      return false;
    }
    s.setWidth(w);
    s.setLength(l);
  } else {
    s.setSize(size);
  }
  std::int32_t weight = GetPopupButtonTicketValue(c.weight);
  if (weight == kCustomWeightItem) {
    weight = c.customWeight->value();
    if (weight < kMinCustomWeight || weight > kMaxCustomWeight) {
      Alert(dialog, "Weight Out Of Range");
      return false;
    }
  }
  const std::int32_t type = Picked(c.type, s.type());
  const std::int32_t color = Picked(c.color, s.color());
  if ((type == kCustomTypeValue && c.customType->text().trimmed().isEmpty()) ||
      (color == kCustomColorValue && c.customColor->text().trimmed().isEmpty())) {
    Alert(dialog, "Custom Name Empty");
    return false;
  }
  s.setWeight(weight);
  s.setColor(color);
  s.setType(type);  // after the colour: a transparency is clear
  // Only stock that comes in sets has a modulus.
  s.setModulus(IsSetStock(type) ? modulus : kUnset);
  s.setCustomType(type == kCustomTypeValue ? c.customType->text().trimmed().toStdString() : "");
  s.setCustomColor(color == kCustomColorValue ? c.customColor->text().trimmed().toStdString() : "");
  s.setPunched(Picked(c.punched, s.punched()));
  s.setSidesCoated(Picked(c.sidesCoated, s.sidesCoated()));
  const std::int32_t coating = Picked(c.coating, s.coatingType());
  s.setCoatingType(coating == kUnset ? 1 : coating);
  s.setFinish(Picked(c.finish, s.finish()));
  s.setGrain(Picked(c.grain, s.grain()));
  s.setDescription(c.description->text().toStdString());
  s.setComment(c.comment->text().toStdString());
  s.setCustomName(c.name->text().trimmed().toStdString());
  return true;
}

}  // namespace

bool RunModalOrderedStockSetup(QWidget* parent, OrderedStockMode mode, JobContext /*context*/,
                               Stock& stock) {
  const Bundle* bundle = GetPDEBundle();
  Status status = kNoErr;
  std::unique_ptr<QWidget> view(LoadView(bundle, "OrderedStock", "OrderedStock", &status));
  auto* dialog = qobject_cast<QDialog*>(view.get());
  auto* count = dialog ? dialog->findChild<QSpinBox*>("ZOrd_1") : nullptr;
  auto* text = dialog ? dialog->findChild<QLabel*>("ZOrd_2") : nullptr;
  auto* label = dialog ? dialog->findChild<QLabel*>("ZOrd_3") : nullptr;
  auto* ok = dialog ? dialog->findChild<QPushButton*>("ok") : nullptr;
  auto* cancel = dialog ? dialog->findChild<QPushButton*>("cancel") : nullptr;
  if (!count || !text || !label || !ok || !cancel) return false;
  if (parent) dialog->setParent(parent, dialog->windowFlags());
  const bool tabs = mode == OrderedStockMode::Tabs;
  dialog->setWindowTitle(LocalizedText(bundle, tabs ? "Tab Stock Setup" : "Ordered Stock Setup"));
  text->setText(
      LocalizedText(bundle, tabs ? "Tab Stock Explanation" : "Ordered Stock Explanation"));
  label->setText(LocalizedText(bundle, tabs ? "Tabs Per Set Label" : "Sheets In Sequence Label"));
  // Five tabs to a set is what print shops stock most.
  count->setValue(stock.modulus() == kUnset ? 5 : stock.modulus());
  QObject::connect(ok, &QPushButton::clicked, dialog, &QDialog::accept);
  QObject::connect(cancel, &QPushButton::clicked, dialog, &QDialog::reject);
  dialog->adjustSize();
  while (dialog->exec() == QDialog::Accepted) {
    if (count->value() >= kMinModulus && count->value() <= kMaxModulus) {
      stock.setModulus(count->value());
      return true;
    }
    Alert(dialog, "Modulus Out Of Range");
  }
  return false;
}

bool RunModalStockDialog(QWidget* parent, Stock& stock, JobContext context) {
  const Bundle* bundle = GetPDEBundle();
  Status status = kNoErr;
  std::unique_ptr<QWidget> view(LoadView(bundle, "StockDialog", "Stock", &status));
  auto* dialog = qobject_cast<QDialog*>(view.get());
  StockControls c;
  if (!dialog || !FindControls(dialog, c)) return false;
  if (parent) dialog->setParent(parent, dialog->windowFlags());
  dialog->setWindowTitle(LocalizedText(bundle, "PaperStock"));
  Populate(c, context);
  Show(c, stock);
  for (QComboBox* popup : {c.size, c.weight, c.type, c.color, c.sidesCoated}) {
    QObject::connect(popup, &QComboBox::currentIndexChanged, dialog,
                     [c] { KeepCustomFieldsInStep(c); });
  }
  auto* ok = dialog->findChild<QPushButton*>("ok");
  auto* cancel = dialog->findChild<QPushButton*>("cancel");
  if (!ok || !cancel) return false;
  dialog->adjustSize();
  QObject::connect(ok, &QPushButton::clicked, dialog, &QDialog::accept);
  QObject::connect(cancel, &QPushButton::clicked, dialog, &QDialog::reject);
  // The set-up of tab and ordered stock keeps its modulus until OK.
  auto modulus = std::make_shared<std::int32_t>(stock.modulus());
  // The stock the fields started from: values the menus cannot show are
  // taken from it.
  auto base = std::make_shared<Stock>(stock);
  if (auto* setup = dialog->findChild<QPushButton*>("ZStk_19")) {
    QObject::connect(setup, &QPushButton::clicked, dialog, [dialog, c, modulus, context] {
      Stock sets;
      sets.setModulus(*modulus);
      const std::int32_t type = GetPopupButtonTicketValue(c.type);
      const OrderedStockMode mode =
          type == kStockTypeOrdered ? OrderedStockMode::Ordered : OrderedStockMode::Tabs;
      if (RunModalOrderedStockSetup(dialog, mode, context, sets)) *modulus = sets.modulus();
    });
  }
  // A named paper chosen in the library fills every field.
  if (auto* named = dialog->findChild<QPushButton*>("ZStk_18")) {
    QObject::connect(named, &QPushButton::clicked, dialog, [dialog, c, base, modulus] {
      Stock chosen;
      PrintSession* session = GetCurrentPrintSession();
      if (RunModalNamedPaperWindow(dialog, chosen, session ? &session->printSettings() : nullptr)) {
        *base = chosen;
        *modulus = chosen.modulus();
        Show(c, chosen);
      }
    });
  }
  while (dialog->exec() == QDialog::Accepted) {
    Stock edited = *base;
    if (Take(dialog, c, edited, *modulus)) {
      stock = edited;
      return true;
    }
  }
  return false;
}

}  // namespace zorva

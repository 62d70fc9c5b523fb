// The background-forms dialog ("BackgroundForms").
#include "ui/background_forms_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <algorithm>
#include <cmath>
#include <memory>

#include "core/bundle.h"
#include "host/setting_map.h"
#include "ui/controls.h"
#include "ui/panel_view.h"

namespace zorva {
namespace {

constexpr std::int32_t kNoForm = 1;
// "UseDocumentName": 2 names a new form after the document.
constexpr std::int32_t kUseDocumentName = 2;
// Shifts are kept in hundredths of an inch ("Inches" 1).
constexpr double kHundredths = 100.0;

constexpr SettingMap BackgroundFormsMap[] = {
    {"FormNone", kNoForm, 0, nullptr, 1},
    {"FormMerge", BackgroundFormsOptions::kMergeWithExistingForm, 0, nullptr, 1},
    {"FormCreate", kCreateNewForm, 0, nullptr, 1},
    {nullptr, 0, 0, nullptr, 0},
};

struct FormsControls {
  QComboBox* choice = nullptr;
  QComboBox* merge = nullptr;
  QComboBox* newForm = nullptr;
  QCheckBox* useDocumentName = nullptr;
  QSpinBox* cycle = nullptr;
  QDoubleSpinBox* x = nullptr;
  QDoubleSpinBox* y = nullptr;
};

void FillHistory(QComboBox* box, const FormNames& names,
                 const std::optional<std::string>& current) {
  for (const std::string& n : names) box->addItem(QString::fromStdString(n));
  box->setEditText(QString::fromStdString(current.value_or(std::string())));
}

// The name at the front of the history, once, and at most kFormHistoryLength.
FormNames Remembered(FormNames names, const std::string& name) {
  names.erase(std::remove(names.begin(), names.end(), name), names.end());
  names.insert(names.begin(), name);
  if (names.size() > kFormHistoryLength) names.resize(kFormHistoryLength);
  return names;
}

void KeepInStep(const FormsControls& c) {
  const std::int32_t choice = GetPopupButtonTicketValue(c.choice);
  const bool merge = choice == BackgroundFormsOptions::kMergeWithExistingForm;
  const bool create = choice == kCreateNewForm;
  c.merge->setEnabled(merge);
  c.cycle->setEnabled(merge);
  c.x->setEnabled(merge);
  c.y->setEnabled(merge);
  c.useDocumentName->setEnabled(create);
  c.newForm->setEnabled(create && !c.useDocumentName->isChecked());
}

bool Refuse(QWidget* dialog, const char* key) {
  QMessageBox box(QMessageBox::Warning, dialog->windowTitle(), LocalizedText(GetPDEBundle(), key),
                  QMessageBox::Ok, dialog);
  box.setObjectName("FormsAlert");
  box.exec();
  return false;
}

bool Take(QWidget* dialog, const FormsControls& c, BackgroundFormsOptions& o) {
  const std::int32_t choice = GetPopupButtonTicketValue(c.choice);
  const std::string merge = c.merge->currentText().trimmed().toStdString();
  const std::string created = c.newForm->currentText().trimmed().toStdString();
  const bool useDocument = c.useDocumentName->isChecked();
  if (choice == BackgroundFormsOptions::kMergeWithExistingForm) {
    if (merge.empty()) return Refuse(dialog, "Form Name Empty");
    if (o.setCyclePages(c.cycle->value()) != kNoErr) {
      return Refuse(dialog, "Form Cycle Out Of Range");
    }
    o.setMergeWithString(merge);
    o.setExistingFormsArray(Remembered(o.existingFormsArray(), merge));
    o.setInches(1);
    o.setXOffset(static_cast<std::int32_t>(std::lround(c.x->value() * kHundredths)));
    o.setYOffset(static_cast<std::int32_t>(std::lround(c.y->value() * kHundredths)));
  }
  if (choice == kCreateNewForm) {
    if (!useDocument && created.empty()) return Refuse(dialog, "Form Name Empty");
    o.setUseDocumentName(useDocument ? kUseDocumentName : 1);
    if (!created.empty()) {
      o.setNewFormString(created);
      o.setNewFormsArray(Remembered(o.newFormsArray(), created));
    }
  }
  o.setUseExistingForm(choice);
  return true;
}

}  // namespace

bool RunModalBackgroundFormsDialog(QWidget* parent, BackgroundFormsOptions& options) {
  const Bundle* bundle = GetPDEBundle();
  Status status = kNoErr;
  std::unique_ptr<QWidget> view(LoadView(bundle, "BackgroundForms", "BackgroundForms", &status));
  auto* dialog = qobject_cast<QDialog*>(view.get());
  if (!dialog) return false;
  if (parent) dialog->setParent(parent, dialog->windowFlags());
  dialog->setWindowTitle(LocalizedText(bundle, "Background Forms"));
  const FormsControls c{
      dialog->findChild<QComboBox*>("ZBfm_1"),     dialog->findChild<QComboBox*>("ZBfm_2"),
      dialog->findChild<QComboBox*>("ZBfm_3"),     dialog->findChild<QCheckBox*>("ZBfm_4"),
      dialog->findChild<QSpinBox*>("ZBfm_5"),      dialog->findChild<QDoubleSpinBox*>("ZBfm_6"),
      dialog->findChild<QDoubleSpinBox*>("ZBfm_7")};
  auto* ok = dialog->findChild<QPushButton*>("ok");
  auto* cancel = dialog->findChild<QPushButton*>("cancel");
  if (!c.choice || !c.merge || !c.newForm || !c.useDocumentName || !c.cycle || !c.x || !c.y ||
      !ok || !cancel) {
    return false;
  }
  PopulatePopupButtonFromMap(bundle, c.choice, BackgroundFormsMap, JobContext::Job, 0);
  if (!SetPopupButtonToTicketValue(c.choice, options.useExistingForm())) {
    SetPopupButtonToTicketValue(c.choice, kNoForm);
  }
  FillHistory(c.merge, options.existingFormsArray(), options.mergeWithString());
  FillHistory(c.newForm, options.newFormsArray(), options.newFormString());
  c.useDocumentName->setChecked(options.useDocumentName() == kUseDocumentName);
  c.cycle->setValue(options.cyclePages());
  // Without inches the shifts are tenths of a millimetre.
  const double scale = options.inches() != 0 ? kHundredths : 254.0;
  c.x->setValue(options.xOffset() / scale);
  c.y->setValue(options.yOffset() / scale);
  KeepInStep(c);
  QObject::connect(c.choice, &QComboBox::currentIndexChanged, dialog, [c] { KeepInStep(c); });
  QObject::connect(c.useDocumentName, &QCheckBox::toggled, dialog, [c] { KeepInStep(c); });
  QObject::connect(ok, &QPushButton::clicked, dialog, &QDialog::accept);
  QObject::connect(cancel, &QPushButton::clicked, dialog, &QDialog::reject);
  dialog->adjustSize();
  while (dialog->exec() == QDialog::Accepted) {
    BackgroundFormsOptions edited = options;
    if (Take(dialog, c, edited)) {
      options = edited;
      options.saveHistory();
      return true;
    }
  }
  return false;
}

}  // namespace zorva

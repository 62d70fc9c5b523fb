// The finishing and job-type dialogs: one window ("FinishingDialog") whose
// rows each finishing fills with what the installed finisher can do, and the
// job-type set-up ("JobTypeSetup").
#include "ui/finishing_dialogs.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTime>
#include <QTimeEdit>
#include <functional>
#include <memory>
#include <vector>

#include "core/bundle.h"
#include "core/ticket_keys.h"
#include "ui/controls.h"
#include "ui/panel_view.h"

namespace zorva {
namespace {

namespace key = tkey;

// One pop-up row of the finishing window: its label and the entries whose
// installed values it lists.
struct FinishingRow {
  const char* labelKey;
  std::vector<std::string_view> keys;
  std::int32_t holes = 0;  // punch edges for this hole count (0: any)
  bool withNone = false;   // multiple finishing may leave a part out
};

struct FinishingLayout {
  const char* titleKey;
  std::vector<FinishingRow> rows;
  bool customName = false;
};

FinishingLayout LayoutFor(std::int32_t option) {
  using namespace finishing;
  switch (option) {
    case kOneStaple:
      return {"1 Staple", {{"Staple Position", {key::kFinishingStaple1}}}};
    case kTwoStaples:
      return {"2 Staples", {{"Staple Position", {key::kFinishingStaple2}}}};
    case kCenterStaple:
      return {"Center Staple", {{"Staple Position", {key::kFinishingStapleCenter}}}};
    case kBind:
      return {"Bind", {{"Bind Edge", {key::kFinishingBind}}}};
    case kTwoHolePunch:
    case kThreeHolePunch:
    case kFourHolePunch: {
      const std::int32_t holes = option - kTwoHolePunch + 2;
      return {holes == 2   ? "2 Hole Punch"
              : holes == 3 ? "3 Hole Punch"
                           : "4 Hole Punch",
              {{"Punch Edge", {key::kFinishingHolePunch}, holes}}};
    }
    case kFold:
      return {"Fold", {{"Fold Type", {key::kFinishingFold}}}};
    case kZFoldHalfSheet:
      return {"Z Fold Half Sheet", {{"Z-Fold Edge", {key::kFinishingZFold}}}};
    case kBooklet:
      return {"Booklet Creation", {{"Booklet Type", {key::kBookletFoldStaple}}}};
    case kMultiple:
      return {"Multiple Finishing",
              {{"Staple Position",
                {key::kFinishingStaple1, key::kFinishingStaple2, key::kFinishingStapleCenter},
                0,
                true},
               {"Punch Edge", {key::kFinishingHolePunch}, 0, true},
               {"Hole Count", {key::kFinishingHolePunchOptions}},
               {"Z-Fold Edge", {key::kFinishingZFold}, 0, true}}};
    case kCustom:
      return {"Custom", {}, true};
    default:
      return {"Finishing", {}};
  }
}

// The finishing window's controls.
struct FinishingWindow {
  std::unique_ptr<QWidget> view;
  QDialog* dialog = nullptr;
  QComboBox* popups[4] = {};
  QLabel* labels[4] = {};
  QLineEdit* name = nullptr;
  QLabel* nameLabel = nullptr;
  QCheckBox* subsets = nullptr;
  QSpinBox* pages = nullptr;
  QLabel* pagesLabel = nullptr;
};

bool OpenFinishingWindow(QWidget* parent, const char* titleKey, FinishingWindow& w) {
  const Bundle* bundle = GetPDEBundle();
  Status status = kNoErr;
  w.view.reset(LoadView(bundle, "FinishingDialog", "Finishing", &status));
  w.dialog = qobject_cast<QDialog*>(w.view.get());
  if (!w.dialog) return false;
  if (parent) w.dialog->setParent(parent, w.dialog->windowFlags());
  w.dialog->setWindowTitle(LocalizedText(bundle, titleKey));
  constexpr int kPopups[] = {1, 2, 3, 7};
  for (int i = 0; i < 4; ++i) {
    w.popups[i] = w.dialog->findChild<QComboBox*>(QStringLiteral("ZFin_%1").arg(kPopups[i]));
    w.labels[i] = w.dialog->findChild<QLabel*>(QStringLiteral("ZFin_%1").arg(kPopups[i] + 10));
    if (!w.popups[i] || !w.labels[i]) return false;
    w.popups[i]->hide();
    w.labels[i]->hide();
  }
  w.name = w.dialog->findChild<QLineEdit*>("ZFin_4");
  w.nameLabel = w.dialog->findChild<QLabel*>("ZFin_14");
  w.subsets = w.dialog->findChild<QCheckBox*>("ZFin_5");
  w.pages = w.dialog->findChild<QSpinBox*>("ZFin_6");
  w.pagesLabel = w.dialog->findChild<QLabel*>("ZFin_16");
  auto* ok = w.dialog->findChild<QPushButton*>("ok");
  auto* cancel = w.dialog->findChild<QPushButton*>("cancel");
  if (!w.name || !w.nameLabel || !w.subsets || !w.pages || !w.pagesLabel || !ok || !cancel) {
    return false;
  }
  for (QWidget* extra :
       std::initializer_list<QWidget*>{w.name, w.nameLabel, w.subsets, w.pages, w.pagesLabel}) {
    extra->hide();
  }
  QObject::connect(ok, &QPushButton::clicked, w.dialog, &QDialog::accept);
  QObject::connect(cancel, &QPushButton::clicked, w.dialog, &QDialog::reject);
  return true;
}

int IndexOf(const FinishingValue* v) {
  return static_cast<int>(v - kFinishingValues);
}

void FillRow(QComboBox* popup, QLabel* label, const FinishingRow& row, const PaperOutputSettings& s,
             bool booklet) {
  const Bundle* bundle = GetPDEBundle();
  label->setText(LocalizedText(bundle, row.labelKey));
  label->show();
  popup->show();
  if (row.withNone) popup->addItem(LocalizedText(bundle, "None"), -1);
  int current = -1;
  for (std::string_view k : row.keys) {
    for (const FinishingValue* v : AvailableFinishingValues(k, row.holes)) {
      // The signature booklet is a menu choice of its own.
      if (booklet && v->value == 15) continue;
      popup->addItem(LocalizedText(bundle, v->nameKey), IndexOf(v));
      if (current < 0 && FinishingFieldValue(s, k) == v->value) current = popup->count() - 1;
    }
  }
  if (current >= 0) popup->setCurrentIndex(current);
}

void Alert(QWidget* parent, const char* messageKey) {
  const Bundle* bundle = GetPDEBundle();
  QMessageBox box(QMessageBox::Warning, LocalizedText(bundle, "Finishing"),
                  LocalizedText(bundle, messageKey), QMessageBox::Ok, parent);
  box.setObjectName("FinishingAlert");
  box.exec();
}

// Values of the rows into the copy; false (after an alert) when they cannot
// be taken.
bool TakeRows(const FinishingWindow& w, const FinishingLayout& layout, std::int32_t option,
              PaperOutputSettings& copy) {
  int chosen = 0;
  for (std::size_t i = 0; i < layout.rows.size(); ++i) {
    const int index = w.popups[i]->currentData().toInt();
    if (w.popups[i]->count() == 0 || index < 0) continue;
    const FinishingValue& v = kFinishingValues[index];
    *FinishingField(copy, v.key) = v.value;
    if (v.key != key::kFinishingHolePunchOptions) ++chosen;
  }
  if (option >= finishing::kTwoHolePunch && option <= finishing::kFourHolePunch) {
    copy.holePunchOptions = option - finishing::kTwoHolePunch + 2;
  }
  if (option == finishing::kMultiple) {
    if (copy.holePunch == 0) copy.holePunchOptions = 0;
    if (chosen < 2) {
      Alert(w.dialog, "Multiple Finishing Needs Two");
      return false;
    }
  }
  if (layout.customName) {
    const QString name = w.name->text().trimmed();
    if (name.isEmpty()) {
      Alert(w.dialog, "Custom Finishing Name Empty");
      return false;
    }
    copy.custom = name.toStdString();
  }
  return true;
}

bool RunUntilValid(QDialog* dialog, const std::function<bool()>& take) {
  dialog->adjustSize();
  while (dialog->exec() == QDialog::Accepted) {
    if (take()) return true;
  }
  return false;
}

constexpr SettingMap OffsetMap[] = {
    {"PrinterDefault", 1, 0, nullptr, 1},
    {"None", 2, 0, nullptr, 1},
    {"Offset Sets", 3, 0, nullptr, 1},
    {"Offset Subsets", 4, 0, nullptr, 1},
    {"Offset Sets And Subsets", 5, 0, nullptr, 1},
    {nullptr, 0, 0, nullptr, 0},
};

constexpr SettingMap SaveDispositionMap[] = {
    {"Save Only", jobtype::kSaveOnly, 0, nullptr, 1},
    {"Print And Save", jobtype::kPrintAndSave, 0, nullptr, 1},
    {nullptr, 0, 0, nullptr, 0},
};

}  // namespace

bool RunModalFinishingDialog(QWidget* parent, PaperOutputSettings& settings, std::int32_t option) {
  const FinishingLayout layout = LayoutFor(option);
  FinishingWindow w;
  if (!OpenFinishingWindow(parent, layout.titleKey, w)) return false;
  for (std::size_t i = 0; i < layout.rows.size() && i < 4; ++i) {
    FillRow(w.popups[i], w.labels[i], layout.rows[i], settings, option == finishing::kBooklet);
  }
  if (layout.customName) {
    w.nameLabel->setText(LocalizedText(GetPDEBundle(), "Custom Finishing Name"));
    w.nameLabel->show();
    w.name->show();
    w.name->setText(QString::fromStdString(settings.custom.value_or(std::string())));
  }
  PaperOutputSettings copy = settings;
  const bool accepted = RunUntilValid(w.dialog, [&] {
    copy = settings;
    ChooseFinishingOption(copy, option);
    return TakeRows(w, layout, option, copy);
  });
  if (accepted) settings = std::move(copy);
  return accepted;
}

bool RunModalOffsetDialog(QWidget* parent, PaperOutputSettings& settings) {
  FinishingWindow w;
  if (!OpenFinishingWindow(parent, "Offset/Subset", w)) return false;
  const Bundle* bundle = GetPDEBundle();
  w.labels[0]->setText(LocalizedText(bundle, "Offset"));
  w.labels[0]->show();
  w.popups[0]->show();
  PopulatePopupButtonFromMap(bundle, w.popups[0], OffsetMap, JobContext::Job, 0);
  SetPopupButtonToTicketValue(w.popups[0], settings.offset);
  for (QWidget* c : std::initializer_list<QWidget*>{w.subsets, w.pages, w.pagesLabel}) c->show();
  w.subsets->setChecked(settings.offsetEnableSubset != 0);
  w.pages->setValue(settings.pagesPerSubset);
  w.pages->setEnabled(w.subsets->isChecked());
  QObject::connect(w.subsets, &QCheckBox::toggled, w.pages, &QWidget::setEnabled);
  w.dialog->adjustSize();
  if (w.dialog->exec() != QDialog::Accepted) return false;
  settings.offset = GetPopupButtonTicketValue(w.popups[0]);
  settings.offsetEnableSubset = w.subsets->isChecked() ? 1 : 0;
  settings.pagesPerSubset = w.pages->value();
  return true;
}

bool RunModalJobTypeSetup(QWidget* parent, Dictionary& jobType) {
  const Bundle* bundle = GetPDEBundle();
  Status status = kNoErr;
  std::unique_ptr<QWidget> view(LoadView(bundle, "JobTypeSetup", "JobTypeSetup", &status));
  auto* dialog = qobject_cast<QDialog*>(view.get());
  if (!dialog) return false;
  if (parent) dialog->setParent(parent, dialog->windowFlags());
  JobTypeSettings j = JobTypeSettings::FromDictionary(jobType);
  dialog->setWindowTitle(
      LocalizedText(bundle, LocalizedKeyForTicketValue(JobTypeMap, j.jobType)
                                ? LocalizedKeyForTicketValue(JobTypeMap, j.jobType)
                                : "Job Type Label"));
  auto* disposition = dialog->findChild<QComboBox*>("ZJob_1");
  auto* location = dialog->findChild<QLineEdit*>("ZJob_2");
  auto* useJobName = dialog->findChild<QCheckBox*>("ZJob_3");
  auto* name = dialog->findChild<QLineEdit*>("ZJob_4");
  auto* format = dialog->findChild<QComboBox*>("ZJob_5");
  auto* pass = dialog->findChild<QLineEdit*>("ZJob_6");
  auto* time = dialog->findChild<QTimeEdit*>("ZJob_7");
  auto* ok = dialog->findChild<QPushButton*>("ok");
  auto* cancel = dialog->findChild<QPushButton*>("cancel");
  if (!disposition || !location || !useJobName || !name || !format || !pass || !time || !ok ||
      !cancel) {
    return false;
  }
  PopulatePopupButtonFromMap(bundle, disposition, SaveDispositionMap, JobContext::Job, 0);
  PopulatePopupButtonFromMap(bundle, format, JobFormatMap, JobContext::Job, 0);
  SetPopupButtonToTicketValue(disposition, j.saveDisposition);
  SetPopupButtonToTicketValue(format, j.mediaType);
  location->setText(QString::fromStdString(j.savedJobLocation));
  useJobName->setChecked(j.useJobName);
  name->setText(QString::fromStdString(j.savedJobName));
  name->setEnabled(!j.useJobName);
  QObject::connect(useJobName, &QCheckBox::toggled, name,
                   [name](bool on) { name->setEnabled(!on); });
  pass->setText(QString::fromStdString(j.securePrintPassword));
  LimitInputLengthAndCharacters(pass, 10, QStringLiteral("0123456789"));
  const QTime when = QTime::fromString(QString::fromStdString(j.delayedPrintTime), "HH:mm");
  time->setTime(when.isValid() ? when : QTime(0, 0));
  // Only the fields of the job type show.
  const bool save = j.jobType == jobtype::kSave;
  for (QWidget* c :
       std::initializer_list<QWidget*>{disposition, location, useJobName, name, format}) {
    c->setVisible(save);
  }
  for (const char* label : {"dispositionLabel", "locationLabel", "nameLabel", "formatLabel"}) {
    if (auto* l = dialog->findChild<QLabel*>(label)) l->setVisible(save);
  }
  pass->setVisible(j.jobType == jobtype::kSecurePrint);
  if (auto* l = dialog->findChild<QLabel*>("passLabel")) l->setVisible(pass->isVisibleTo(dialog));
  time->setVisible(j.jobType == jobtype::kDelayedPrint);
  if (auto* l = dialog->findChild<QLabel*>("timeLabel")) l->setVisible(time->isVisibleTo(dialog));
  QObject::connect(ok, &QPushButton::clicked, dialog, &QDialog::accept);
  QObject::connect(cancel, &QPushButton::clicked, dialog, &QDialog::reject);
  const auto take = [&] {
    if (save) {
      if (!useJobName->isChecked() && name->text().trimmed().isEmpty()) {
        QMessageBox box(QMessageBox::Warning, dialog->windowTitle(),
                        LocalizedText(bundle, "Saved Job Name Empty"), QMessageBox::Ok, dialog);
        box.setObjectName("JobTypeAlert");
        box.exec();
        return false;
      }
      j.saveDisposition = GetPopupButtonTicketValue(disposition);
      j.savedJobLocation = location->text().trimmed().toStdString();
      j.useJobName = useJobName->isChecked();
      j.savedJobName = name->text().trimmed().toStdString();
      j.mediaType = GetPopupButtonTicketValue(format);
    }
    if (j.jobType == jobtype::kSecurePrint) {
      if (pass->text().isEmpty()) {
        QMessageBox box(QMessageBox::Warning, dialog->windowTitle(),
                        LocalizedText(bundle, "Pass Code Empty"), QMessageBox::Ok, dialog);
        box.setObjectName("JobTypeAlert");
        box.exec();
        return false;
      }
      j.securePrintPassword = pass->text().toStdString();
    }
    if (j.jobType == jobtype::kDelayedPrint) {
      j.delayedPrintTime = time->time().toString("HH:mm").toStdString();
    }
    return true;
  };
  if (!RunUntilValid(dialog, take)) return false;
  jobType = j.asTicket();
  return true;
}

}  // namespace zorva

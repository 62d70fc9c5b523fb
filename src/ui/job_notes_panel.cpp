// The Job Notes panel: job name (or the document's own), sender, recipient,
// special instructions, additional information and banner message, each an
// editable field with its input history; the accounting switch with user
// and account ids limited to what the job ticket carries; and "Save as
// Defaults" for the user's job-notes defaults. The settings logic is in
// panels/; this file keeps the controls in step with it.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>
#include <new>

#include "core/print_session.h"
#include "core/ticket_keys.h"
#include "panels/job_notes.h"
#include "ui/controls.h"
#include "ui/panel_view.h"

namespace zorva {
namespace {

// Control numbers ("ZJn_<n>") of the text fields, in the order of
// JobNotesTextFields(): editable pop-ups with histories, then the two ids.
constexpr int kTextControls[] = {1, 3, 4, 5, 6, 7, 9, 10};
constexpr int kUseJobName = 2;
constexpr int kAccounting = 8;
constexpr int kSaveDefaults = 11;

struct JobNotesControls {
  std::vector<QWidget*> fields;  // QComboBox or QLineEdit, per text field
  QComboBox* jobName = nullptr;
  QCheckBox* useJobName = nullptr;
  QCheckBox* accounting = nullptr;
  QLineEdit* ids[2] = {};
};

struct JobNotesContext {
  PanelContextHead head;
  JobNotesSettings settings;
  std::string documentName;  // the platform's job name, shown when used
  JobNotesControls controls;
};

template <typename T>
T* Control(QWidget* view, int number) {
  return NumberedControl<T>(view, "ZJn", number);
}

QString FieldText(const QWidget* field) {
  if (const auto* combo = qobject_cast<const QComboBox*>(field)) return combo->currentText();
  if (const auto* line = qobject_cast<const QLineEdit*>(field)) return line->text();
  return {};
}

void SetFieldText(QWidget* field, const std::string& text) {
  const QString t = QString::fromStdString(text);
  QLineEdit* line = qobject_cast<QLineEdit*>(field);
  if (auto* combo = qobject_cast<QComboBox*>(field)) {
    combo->setEditText(t);
    line = combo->lineEdit();
  } else if (line) {
    line->setText(t);
  }
  // A long note shows from its beginning.
  if (line) line->setCursorPosition(0);
}

void ShowJobName(JobNotesContext& panel) {
  JobNotesControls& c = panel.controls;
  if (!c.jobName || !c.useJobName) return;
  const bool document = c.useJobName->isChecked();
  c.jobName->setEnabled(!document);
  SetFieldText(c.jobName, document ? panel.documentName : panel.settings.jobName);
}

void ShowAccounting(JobNotesContext& panel) {
  JobNotesControls& c = panel.controls;
  const bool on = c.accounting && c.accounting->isChecked();
  for (QLineEdit* id : c.ids) {
    if (id) id->setEnabled(on);
  }
}

// Held values to controls (only once the controls exist).
void ShowSettings(JobNotesContext& panel) {
  if (!panel.head.controlsBuilt) return;
  const JobNotesSettings& s = panel.settings;
  JobNotesControls& c = panel.controls;
  const auto fields = JobNotesTextFields();
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (c.fields[i]) SetFieldText(c.fields[i], s.*fields[i].field);
  }
  if (c.useJobName) c.useJobName->setChecked(s.useJobName);
  if (c.accounting) c.accounting->setChecked(s.accounting == kAccountingOn);
  ShowJobName(panel);
  ShowAccounting(panel);
}

// Controls to held values.
void TakeSettings(JobNotesContext& panel) {
  if (!panel.head.controlsBuilt) return;
  JobNotesSettings& s = panel.settings;
  const JobNotesControls& c = panel.controls;
  const auto fields = JobNotesTextFields();
  if (c.useJobName) s.useJobName = c.useJobName->isChecked();
  for (std::size_t i = 0; i < fields.size(); ++i) {
    // The field shows the document's name while that is used.
    if (c.fields[i] == c.jobName && s.useJobName) continue;
    if (c.fields[i]) s.*fields[i].field = FieldText(c.fields[i]).trimmed().toStdString();
  }
  if (c.accounting) {
    if (c.accounting->isChecked()) {
      s.accounting = kAccountingOn;
    } else if (s.accounting == kAccountingOn) {
      s.accounting = kAccountingOff;
    }
  }
}

void BuildControls(JobNotesContext& panel, QWidget* view) {
  JobNotesControls& c = panel.controls;
  const auto fields = JobNotesTextFields();
  c.fields.clear();
  for (std::size_t i = 0; i < fields.size(); ++i) {
    QWidget* field = Control<QWidget>(view, kTextControls[i]);
    c.fields.push_back(field);
    if (auto* combo = qobject_cast<QComboBox*>(field)) {
      PopulatePopupButtonFromMapAndHistory(panel.head.bundle, combo, nullptr, JobContext::Job,
                                           fields[i].history, 0, 0, 0);
    }
  }
  c.jobName = Control<QComboBox>(view, kTextControls[0]);
  c.useJobName = Control<QCheckBox>(view, kUseJobName);
  c.accounting = Control<QCheckBox>(view, kAccounting);
  c.ids[0] = Control<QLineEdit>(view, kTextControls[6]);
  c.ids[1] = Control<QLineEdit>(view, kTextControls[7]);
  const QString allowed =
      QString::fromLatin1(kAccountingIdCharacters.data(), kAccountingIdCharacters.size());
  for (QLineEdit* id : c.ids) {
    LimitInputLengthAndCharacters(id, kAccountingIdLength, allowed);
  }
  JobNotesContext* p = &panel;
  if (c.useJobName) {
    QObject::connect(c.useJobName, &QCheckBox::toggled, view, [p](bool document) {
      // Keep what was typed for when the box is cleared again.
      if (document && p->controls.jobName) {
        p->settings.jobName = p->controls.jobName->currentText().trimmed().toStdString();
      }
      ShowJobName(*p);
    });
  }
  if (c.accounting) {
    QObject::connect(c.accounting, &QCheckBox::toggled, view, [p] { ShowAccounting(*p); });
  }
  if (auto* save = Control<QPushButton>(view, kSaveDefaults)) {
    QObject::connect(save, &QPushButton::clicked, view, [p] {
      TakeSettings(*p);
      WriteJobNotesDefaults(p->settings);
    });
  }
}

Status JobNotesPrologue(PDEContext* context, std::uint32_t* creator, const char** userOptionKind,
                        const char** title, float* maxH, float* maxV) {
  if (!context) return kInvalidPDEContext;
  auto* panel = new (std::nothrow) JobNotesContext{};
  if (!panel) return kInvalidPDEContext;
  FillPanelPrologue(panel->head, DescribePanel(PanelKind::JobNotes), creator, userOptionKind,
                    title);
  if (maxH) *maxH = 0;
  if (maxV) *maxV = 0;
  // The user's defaults stand for every key the ticket does not hold.
  panel->settings = ReadJobNotesDefaults();
  *context = panel;
  return kNoErr;
}

Status JobNotesSync(PDEContext context, PrintSession* session, bool reinitializePlugIn) {
  if (!context) return kInvalidPDEContext;
  auto* panel = static_cast<JobNotesContext*>(context);
  Ticket* ticket = nullptr;
  const Status status = GetTicketFromSession(session, kPrintSettingsTicketName, &ticket);
  if (status != kNoErr || !ticket) return status;
  if (reinitializePlugIn) {
    // Absent keys keep what the panel holds: the defaults at first, later
    // what the panel itself wrote (an emptied field has no key).
    panel->settings = ReadJobNotesSettings(*ticket, &panel->settings);
    const std::string* document = ticket->getString(tkey::kPMJobName);
    panel->documentName = document ? *document : std::string();
    ShowSettings(*panel);
  } else {
    TakeSettings(*panel);
    WriteJobNotesSettings(*ticket, panel->settings);
    RememberJobNotes(panel->settings);
  }
  return kNoErr;
}

Status JobNotesInitialize(PDEContext context, std::uint32_t* /*flags*/, void* /*ref*/,
                          PDEPaneRef userPane, PrintSession* session) {
  if (!context) return kInvalidPDEContext;
  static_cast<JobNotesContext*>(context)->head.userPane = static_cast<QWidget*>(userPane);
  return JobNotesSync(context, session, true);
}

}  // namespace

Status CreateJobNotesPanelInterface(PanelInterface** out) {
  return StandardPanel<JobNotesContext, PanelKind::JobNotes>::CreateInterface(
      JobNotesPrologue, JobNotesInitialize, JobNotesSync, out);
}

}  // namespace zorva

// The Paper/Output panel: the job's paper, job type, two-sided printing,
// colour, output destination, finishing (a menu button with its dialogs and
// a line describing the choice), booklet layout and background forms. The
// settings logic is in panels/; this file keeps the controls in step with it.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSpinBox>
#include <QWidget>
#include <new>

#include "core/bundle.h"
#include "core/print_session.h"
#include "host/keyword_tables.h"
#include "panels/paper_output.h"
#include "paper/ppd.h"
#include "ui/background_forms_dialog.h"
#include "ui/controls.h"
#include "ui/finishing_dialogs.h"
#include "ui/panel_view.h"
#include "ui/paper_dialogs.h"

namespace zorva {
namespace {

struct PaperOutputControls {
  QLabel* paper = nullptr;
  QPushButton* paperButton = nullptr;
  QComboBox* jobType = nullptr;
  QPushButton* jobTypeSetup = nullptr;
  QComboBox* duplex = nullptr;
  QComboBox* color = nullptr;
  QComboBox* destination = nullptr;
  QPushButton* finishing = nullptr;
  QLabel* finishingText = nullptr;
  QCheckBox* booklet = nullptr;
  QSpinBox* gutter = nullptr;
  QSpinBox* creep = nullptr;
  QCheckBox* outlines = nullptr;
  QLabel* forms = nullptr;
  QPushButton* formsButton = nullptr;
};

struct PaperOutputContext {
  PanelContextHead head;
  PrintSession* session = nullptr;
  PaperOutputSettings settings;
  PaperOutputControls controls;
  std::vector<FinishingMenuItem> finishingMenu;
  bool showing = false;  // controls being set from the settings
  // What each pop-up showed when the settings were last shown: a value the
  // menu does not list (one imported, say) is kept unless the user chooses.
  std::int32_t shownJobType = kUnset;
  std::int32_t shownDuplex = kUnset;
  std::int32_t shownColor = kUnset;
  std::int32_t shownDestination = kUnset;
};

// The pop-up's value when the user changed it since it was shown, else held.
std::int32_t Chosen(const QComboBox* popup, std::int32_t shown, std::int32_t held) {
  const std::int32_t value = GetPopupButtonTicketValue(popup);
  return value != shown ? value : held;
}

template <typename T>
T* Control(QWidget* view, int number) {
  return NumberedControl<T>(view, "ZPpo", number);
}

std::string Localized(const Bundle* bundle, std::string_view key) {
  return LocalizedText(bundle, key).toStdString();
}

QString PaperText(const Bundle* bundle, const Stock& stock) {
  if (stock.customName() && !stock.customName()->empty()) {
    return QString::fromStdString(*stock.customName());
  }
  if (stock.size() == kStockSizeCustom) {
    return QStringLiteral("%1 x %2 mm")
        .arg(stock.width() / 100.0, 0, 'f', 1)
        .arg(stock.length() / 100.0, 0, 'f', 1);
  }
  const char* k = LocalizedKeyForTicketValue(StockSizeMap, stock.size());
  return LocalizedText(bundle, k ? k : "PrinterDefault");
}

QString FormsText(const Bundle* bundle, const BackgroundFormsOptions& forms) {
  const std::int32_t choice = forms.useExistingForm();
  if (choice == BackgroundFormsOptions::kMergeWithExistingForm) {
    return QString::fromStdString(forms.mergeWithString().value_or(std::string()));
  }
  if (choice == kCreateNewForm) {
    return LocalizedText(bundle, "FormCreate") + ": " +
           QString::fromStdString(forms.newFormString().value_or(std::string()));
  }
  return LocalizedText(bundle, "FormNone");
}

void ApplyEnablingRules(PaperOutputContext& panel) {
  const PaperOutputSettings& s = panel.settings;
  PaperOutputControls& c = panel.controls;
  c.jobTypeSetup->setEnabled(EnableDisableJobTypeSetupButton(s));
  c.destination->setEnabled(PaperOutputControlEnabled(PaperOutputControl::OutputDestination, s));
  const bool booklet = PaperOutputControlEnabled(PaperOutputControl::BookletOptions, s);
  for (QWidget* w : std::initializer_list<QWidget*>{c.gutter, c.creep, c.outlines}) {
    w->setEnabled(booklet);
  }
  c.duplex->setEnabled(PaperOutputControlEnabled(PaperOutputControl::Duplex, s));
  c.finishing->setEnabled(PaperOutputControlEnabled(PaperOutputControl::FinishingButton, s));
}

void ShowFinishing(PaperOutputContext& panel) {
  const Bundle* bundle = panel.head.bundle;
  const std::string text = CreateFinishingString(
      panel.settings, [bundle](std::string_view k) { return Localized(bundle, k); });
  panel.controls.finishingText->setText(QString::fromStdString(text));
  const std::vector<bool> marks = MarkFinishingMenu(panel.finishingMenu, panel.settings);
  const QList<QAction*> actions = panel.controls.finishing->menu()->actions();
  for (qsizetype i = 0; i < actions.size() && i < qsizetype(marks.size()); ++i) {
    actions[i]->setChecked(marks[std::size_t(i)]);
  }
}

// Held values to controls (only once the controls exist).
void ShowSettings(PaperOutputContext& panel) {
  if (!panel.head.controlsBuilt) return;
  panel.showing = true;
  const PaperOutputSettings& s = panel.settings;
  PaperOutputControls& c = panel.controls;
  c.paper->setText(PaperText(panel.head.bundle, s.jobStock));
  SetPopupButtonToTicketValue(c.jobType, JobTypeSettings::FromDictionary(s.jobType).jobType);
  SetPopupButtonToTicketValue(c.duplex, s.duplex);
  SetPopupButtonToTicketValue(c.color, s.outputColor);
  if (!SetPopupButtonToTicketValue(c.destination, s.outputDestination)) {
    c.destination->setCurrentIndex(0);
  }
  panel.shownJobType = GetPopupButtonTicketValue(c.jobType);
  panel.shownDuplex = GetPopupButtonTicketValue(c.duplex);
  panel.shownColor = GetPopupButtonTicketValue(c.color);
  panel.shownDestination = GetPopupButtonTicketValue(c.destination);
  c.booklet->setChecked(s.bookletLayout);
  c.gutter->setValue(s.gutter);
  c.creep->setValue(s.creep);
  c.outlines->setChecked(s.bookletDrawOutlines != 0);
  c.forms->setText(FormsText(panel.head.bundle, s.backgroundForms));
  ShowFinishing(panel);
  ApplyEnablingRules(panel);
  panel.showing = false;
}

// Controls to held values.
void TakeSettings(PaperOutputContext& panel) {
  if (!panel.head.controlsBuilt) return;
  PaperOutputSettings& s = panel.settings;
  PaperOutputControls& c = panel.controls;
  JobTypeSettings j = JobTypeSettings::FromDictionary(s.jobType);
  const std::int32_t type = Chosen(c.jobType, panel.shownJobType, j.jobType);
  if (type != kUnset && type != j.jobType) {
    j.jobType = type;
    s.jobType = j.asTicket();
  }
  s.duplex = Chosen(c.duplex, panel.shownDuplex, s.duplex);
  s.outputColor = Chosen(c.color, panel.shownColor, s.outputColor);
  s.outputDestination = Chosen(c.destination, panel.shownDestination, s.outputDestination);
  s.bookletLayout = c.booklet->isChecked();
  s.gutter = c.gutter->value();
  s.creep = c.creep->value();
  s.bookletDrawOutlines = c.outlines->isChecked() ? 1 : 0;
}

void ChooseFinishing(PaperOutputContext& panel, const FinishingMenuItem& item, QWidget* view) {
  TakeSettings(panel);
  PaperOutputSettings& s = panel.settings;
  switch (item.kind) {
    case FinishingItemKind::SlipSheets:
      s.slipSheet = s.slipSheet == finishing::kSlipSheetsOn ? 0 : finishing::kSlipSheetsOn;
      break;
    case FinishingItemKind::Offset:
      RunModalOffsetDialog(view, s);
      break;
    case FinishingItemKind::Choice:
      if (FinishingOptionHasDialog(item.option)) {
        RunModalFinishingDialog(view, s, item.option);
      } else {
        ChooseFinishingOption(s, item.option);
      }
      break;
    case FinishingItemKind::Separator:
      break;
  }
  ShowSettings(panel);
}

QMenu* BuildFinishingMenu(PaperOutputContext& panel, QWidget* view) {
  auto* menu = new QMenu(view);
  menu->setObjectName("FinishingMenu");
  panel.finishingMenu = PopulateFinishingMenu();
  for (const FinishingMenuItem& item : panel.finishingMenu) {
    if (item.kind == FinishingItemKind::Separator) {
      menu->addSeparator();
      continue;
    }
    QAction* action = menu->addAction(LocalizedText(panel.head.bundle, item.textKey));
    action->setCheckable(true);
    action->setData(static_cast<qulonglong>(item.command));
    QObject::connect(action, &QAction::triggered, view,
                     [&panel, item, view] { ChooseFinishing(panel, item, view); });
  }
  return menu;
}

void PopulateDestinations(const Bundle* bundle, QComboBox* popup) {
  popup->clear();
  for (const OutputDestinationItem& item : PopulateOutputDestination()) {
    popup->addItem(LocalizedText(bundle, item.textKey), item.value);
  }
}

void ConnectControls(PaperOutputContext& panel, QWidget* view) {
  PaperOutputControls& c = panel.controls;
  const auto refresh = [&panel] {
    if (panel.showing) return;
    TakeSettings(panel);
    ApplyEnablingRules(panel);
  };
  QObject::connect(c.jobType, &QComboBox::currentIndexChanged, view, refresh);
  QObject::connect(c.booklet, &QCheckBox::toggled, view, refresh);
  QObject::connect(c.paperButton, &QPushButton::clicked, view, [&panel, view] {
    TakeSettings(panel);
    if (RunModalStockDialog(view, panel.settings.jobStock, JobContext::Job)) ShowSettings(panel);
  });
  QObject::connect(c.formsButton, &QPushButton::clicked, view, [&panel, view] {
    TakeSettings(panel);
    if (RunModalBackgroundFormsDialog(view, panel.settings.backgroundForms)) ShowSettings(panel);
  });
  QObject::connect(c.jobTypeSetup, &QPushButton::clicked, view, [&panel, view] {
    TakeSettings(panel);
    if (RunModalJobTypeSetup(view, panel.settings.jobType)) ShowSettings(panel);
  });
}

bool BuildControls(PaperOutputContext& panel, QWidget* view) {
  PaperOutputControls& c = panel.controls;
  const Bundle* bundle = panel.head.bundle;
  c = {
      Control<QLabel>(view, 1),      Control<QPushButton>(view, 2), Control<QComboBox>(view, 3),
      Control<QPushButton>(view, 4), Control<QComboBox>(view, 5),   Control<QComboBox>(view, 6),
      Control<QComboBox>(view, 7),   Control<QPushButton>(view, 8), Control<QLabel>(view, 9),
      Control<QCheckBox>(view, 10),  Control<QSpinBox>(view, 11),   Control<QSpinBox>(view, 12),
      Control<QCheckBox>(view, 13),  Control<QLabel>(view, 15),     Control<QPushButton>(view, 14)};
  if (!c.paper || !c.paperButton || !c.jobType || !c.jobTypeSetup || !c.duplex || !c.color ||
      !c.destination || !c.finishing || !c.finishingText || !c.booklet || !c.gutter || !c.creep ||
      !c.outlines || !c.forms || !c.formsButton) {
    std::fputs("!! Failed to find the panel's controls.\n", stdout);
    return false;
  }
  PopulatePopupButtonFromMap(bundle, c.jobType, JobTypeMap, JobContext::Job, 0);
  PopulatePopupButtonFromMap(bundle, c.duplex, PlexMap, JobContext::Job, 0);
  PopulatePopupButtonFromMap(bundle, c.color, OutputColorMap, JobContext::Job, 0);
  PopulateDestinations(bundle, c.destination);
  c.finishing->setMenu(BuildFinishingMenu(panel, view));
  ConnectControls(panel, view);
  return true;
}

std::optional<std::string> PPDDuplexDefault() {
  const PPD* ppd = PPDGetCurrent();
  return ppd ? PPDCopyDefaultChoice(ppd, "Duplex") : std::nullopt;
}

Status PaperOutputPrologue(PDEContext* context, std::uint32_t* creator, const char** userOptionKind,
                           const char** title, float* maxH, float* maxV) {
  if (!context) return kInvalidPDEContext;
  auto* panel = new (std::nothrow) PaperOutputContext{};
  if (!panel) return kInvalidPDEContext;
  FillPanelPrologue(panel->head, DescribePanel(PanelKind::PaperOutput), creator, userOptionKind,
                    title);
  if (maxH) *maxH = 0;
  if (maxV) *maxV = 0;
  *context = panel;
  return kNoErr;
}

Status PaperOutputSync(PDEContext context, PrintSession* session, bool reinitializePlugIn) {
  if (!context) return kInvalidPDEContext;
  auto* panel = static_cast<PaperOutputContext*>(context);
  Ticket* ticket = nullptr;
  const Status status = GetTicketFromSession(session, kPrintSettingsTicketName, &ticket);
  if (status != kNoErr || !ticket) return status;
  if (reinitializePlugIn) {
    ReadPaperOutputSettings(*ticket, panel->settings, PPDDuplexDefault());
    ShowSettings(*panel);
  } else {
    TakeSettings(*panel);
    WritePaperOutputSettings(*ticket, panel->settings);
  }
  return kNoErr;
}

Status PaperOutputInitialize(PDEContext context, std::uint32_t* /*flags*/, void* /*ref*/,
                             PDEPaneRef userPane, PrintSession* session) {
  if (!context) return kInvalidPDEContext;
  auto* panel = static_cast<PaperOutputContext*>(context);
  panel->head.userPane = static_cast<QWidget*>(userPane);
  panel->session = session;
  if (session) {
    ReadPaperOutputJobInfo(session->printSettings(), session->ticket(kPageFormatTicketName),
                           panel->settings);
  }
  return PaperOutputSync(context, session, true);
}

}  // namespace

Status CreatePaperOutputPanelInterface(PanelInterface** out) {
  return StandardPanel<PaperOutputContext, PanelKind::PaperOutput>::CreateInterface(
      PaperOutputPrologue, PaperOutputInitialize, PaperOutputSync, out);
}

}  // namespace zorva

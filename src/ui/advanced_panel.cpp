// The Advanced panel: booklet image order, rotation, sending the job ticket,
// OPI, the pages to print, the booklet's forced paper size, and the job
// ticket's import and export. The settings logic is in panels/; this file
// keeps the controls in step with it.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QWidget>
#include <new>

#include "core/print_session.h"
#include "host/keyword_tables.h"
#include "model/stock.h"
#include "panels/advanced_settings.h"
#include "ui/controls.h"
#include "ui/jotf_dialogs.h"
#include "ui/panel_view.h"

namespace zorva {
namespace {

constexpr std::string_view kPageDigits = "0123456789";
constexpr int kPageFieldLength = 6;

struct AdvancedControls {
  QComboBox* bookletOrder = nullptr;
  QComboBox* rotateImage = nullptr;
  QCheckBox* emitJOTF = nullptr;
  QComboBox* opiSubstitution = nullptr;
  QComboBox* opiPrescan = nullptr;
  QRadioButton* allPages = nullptr;
  QRadioButton* pageRange = nullptr;
  QLineEdit* from = nullptr;
  QLineEdit* to = nullptr;
  QCheckBox* forceSize = nullptr;
  QComboBox* paperSize = nullptr;
  QPushButton* importButton = nullptr;
  QPushButton* exportButton = nullptr;
};

struct AdvancedContext {
  PanelContextHead head;
  PrintSession* session = nullptr;
  AdvancedSettings settings;
  AdvancedControls controls;
};

template <typename T>
T* Control(QWidget* view, int number) {
  return NumberedControl<T>(view, "ZAdv", number);
}

// Held values to controls (only once the controls exist).
void ShowSettings(AdvancedContext& panel) {
  if (!panel.head.controlsBuilt) return;
  const AdvancedSettings& s = panel.settings;
  AdvancedControls& c = panel.controls;
  SetPopupButtonPosition(c.bookletOrder, s.bookletOrder);
  SetPopupButtonPosition(c.rotateImage, s.rotateImage);
  SetPopupButtonPosition(c.opiSubstitution, s.opiSubstitution);
  SetPopupButtonPosition(c.opiPrescan, s.opiPrescan);
  if (c.emitJOTF) c.emitJOTF->setChecked(s.emitJOTF != 0);
  if (c.allPages) c.allPages->setChecked(s.pagesToPrint == 0);
  if (c.pageRange) c.pageRange->setChecked(s.pagesToPrint != 0);
  if (c.from) c.from->setText(QString::fromStdString(PageFieldText(s.pagesFrom)));
  if (c.to) c.to->setText(QString::fromStdString(PageFieldText(s.pagesTo)));
  if (c.forceSize) c.forceSize->setChecked(s.forceSize);
  SetPopupButtonToTicketValue(c.paperSize, s.size);
  if (c.paperSize) c.paperSize->setEnabled(s.forceSize);
}

// Controls to held values.
void TakeSettings(AdvancedContext& panel) {
  if (!panel.head.controlsBuilt) return;
  AdvancedSettings& s = panel.settings;
  AdvancedControls& c = panel.controls;
  if (c.bookletOrder) s.bookletOrder = GetPopupButtonPosition(c.bookletOrder);
  if (c.rotateImage) s.rotateImage = GetPopupButtonPosition(c.rotateImage);
  if (c.opiSubstitution) s.opiSubstitution = GetPopupButtonPosition(c.opiSubstitution);
  if (c.opiPrescan) s.opiPrescan = GetPopupButtonPosition(c.opiPrescan);
  if (c.emitJOTF) s.emitJOTF = c.emitJOTF->isChecked() ? 1 : 0;
  if (c.pageRange) s.pagesToPrint = c.pageRange->isChecked() ? 1 : 0;
  if (c.forceSize) s.forceSize = c.forceSize->isChecked();
  if (c.paperSize && s.forceSize) {
    const std::int32_t size = GetPopupButtonTicketValue(c.paperSize);
    // A listed size brings its own dimensions; a custom one keeps the
    // width and length read with it.
    if (size != s.size || size != kStockSizeCustom) {
      const PaperSizeSettingMap* row = PaperSizeRow(size);
      s.size = size;
      s.width = row ? row->width : kUnset;
      s.length = row ? row->height : kUnset;
    }
  }
}

void BuildControls(AdvancedContext& panel, QWidget* view) {
  AdvancedControls& c = panel.controls;
  const Bundle* bundle = panel.head.bundle;
  c.bookletOrder = Control<QComboBox>(view, 1);
  c.rotateImage = Control<QComboBox>(view, 2);
  c.emitJOTF = Control<QCheckBox>(view, 3);
  c.opiSubstitution = Control<QComboBox>(view, 4);
  c.opiPrescan = Control<QComboBox>(view, 5);
  c.allPages = Control<QRadioButton>(view, 6);
  c.pageRange = Control<QRadioButton>(view, 7);
  c.from = Control<QLineEdit>(view, 8);
  c.to = Control<QLineEdit>(view, 9);
  c.forceSize = Control<QCheckBox>(view, 10);
  c.paperSize = Control<QComboBox>(view, 11);
  c.importButton = Control<QPushButton>(view, 12);
  c.exportButton = Control<QPushButton>(view, 13);
  PopulatePopupButtonFromMap(bundle, c.bookletOrder, BookletLayoutOrderMap, JobContext::Job, 0);
  PopulatePopupButtonFromMap(bundle, c.rotateImage, RotateImageMap, JobContext::Job, 0);
  PopulatePopupButtonFromMap(bundle, c.opiSubstitution, OPISubsitutionMap, JobContext::Job, 0);
  PopulatePopupButtonFromMap(bundle, c.opiPrescan, OPIPrescanMap, JobContext::Job, 0);
  PopulatePopupButtonFromPaperSizeMap(bundle, c.paperSize, CompleteStockSizeMap);
  const QString digits = QString::fromUtf8(kPageDigits.data(), kPageDigits.size());
  LimitInputLengthAndCharacters(c.from, kPageFieldLength, digits);
  LimitInputLengthAndCharacters(c.to, kPageFieldLength, digits);
  if (c.forceSize && c.paperSize) {
    QObject::connect(c.forceSize, &QCheckBox::toggled, c.paperSize, &QWidget::setEnabled);
  }
  // Typing a page number chooses the range.
  for (QLineEdit* field : {c.from, c.to}) {
    if (field && c.pageRange) {
      QObject::connect(field, &QLineEdit::textEdited, c.pageRange,
                       [range = c.pageRange] { range->setChecked(true); });
    }
  }
  if (c.exportButton) {
    QObject::connect(c.exportButton, &QPushButton::clicked, view,
                     [view] { RunModalJOTFExportDialog(view); });
  }
  if (c.importButton) {
    QObject::connect(c.importButton, &QPushButton::clicked, view,
                     [view] { RunModalJOTFImportDialog(view); });
  }
}

Status AdvancedPrologue(PDEContext* context, std::uint32_t* creator, const char** userOptionKind,
                        const char** title, float* maxH, float* maxV) {
  if (!context) return kInvalidPDEContext;
  auto* panel = new (std::nothrow) AdvancedContext{};
  if (!panel) return kInvalidPDEContext;
  FillPanelPrologue(panel->head, DescribePanel(PanelKind::Advanced), creator, userOptionKind,
                    title);
  // The host's own maximum governs.
  if (maxH) *maxH = 0;
  if (maxV) *maxV = 0;
  *context = panel;
  return kNoErr;
}

Status AdvancedSync(PDEContext context, PrintSession* session, bool reinitializePlugIn);

Status AdvancedInitialize(PDEContext context, std::uint32_t* /*flags*/, void* /*ref*/,
                          PDEPaneRef userPane, PrintSession* session) {
  if (!context) return kInvalidPDEContext;
  auto* panel = static_cast<AdvancedContext*>(context);
  panel->head.userPane = static_cast<QWidget*>(userPane);
  panel->session = session;
  return AdvancedSync(context, session, true);
}

Status AdvancedSync(PDEContext context, PrintSession* session, bool reinitializePlugIn) {
  if (!context) return kInvalidPDEContext;
  auto* panel = static_cast<AdvancedContext*>(context);
  Ticket* ticket = nullptr;
  const Status status = GetTicketFromSession(session, kPrintSettingsTicketName, &ticket);
  if (status != kNoErr || !ticket) return status;
  if (reinitializePlugIn) {
    panel->settings = ReadAdvancedSettings(*ticket);
    ShowSettings(*panel);
  } else {
    TakeSettings(*panel);
    const AdvancedControls& c = panel->controls;
    const std::string from =
        c.from ? c.from->text().toStdString() : PageFieldText(panel->settings.pagesFrom);
    const std::string to =
        c.to ? c.to->text().toStdString() : PageFieldText(panel->settings.pagesTo);
    WriteAdvancedSettings(*ticket, panel->settings, from, to);
    // What is in the ticket now is what the next writing undoes.
    panel->settings.forcedWhenRead = panel->settings.forceSize;
  }
  return kNoErr;
}

}  // namespace

Status CreateAdvancedPanelInterface(PanelInterface** out) {
  return StandardPanel<AdvancedContext, PanelKind::Advanced>::CreateInterface(
      AdvancedPrologue, AdvancedInitialize, AdvancedSync, out);
}

}  // namespace zorva

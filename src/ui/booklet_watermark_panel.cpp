// The Booklet/Watermark panel: booklet layout, gutter, creep, fold and
// staple, page borders and turning the pages; the watermark menu with the
// stored watermarks and its commands (new, edit, options, delete), which
// open the watermark editor. The settings logic is in panels/; this file
// keeps the controls in step with it.
#include <QCheckBox>
#include <QComboBox>
#include <QMessageBox>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QWidget>
#include <new>

#include "core/print_session.h"
#include "host/keyword_tables.h"
#include "panels/booklet_watermark.h"
#include "ui/controls.h"
#include "ui/panel_view.h"
#include "ui/watermark_editor.h"
#include "watermarks/watermark_store.h"

namespace zorva {
namespace {

constexpr std::uint32_t kNoWatermarkCommand = FourCC("ZWmZ");
constexpr std::uint32_t kOptionsCommand = FourCC("ZWmO");
constexpr std::uint32_t kNewCommand = FourCC("ZWmN");
constexpr std::uint32_t kEditCommand = FourCC("ZWmE");
constexpr std::uint32_t kDeleteCommand = FourCC("ZWmD");
constexpr int kNameRole = 0x0102;  // a stored watermark's name

struct BookletControls {
  QCheckBox* layout = nullptr;
  QSpinBox* gutter = nullptr;
  QSpinBox* creep = nullptr;
  QCheckBox* borders = nullptr;
  QComboBox* foldStaple = nullptr;
  QCheckBox* rotate = nullptr;
  QComboBox* watermark = nullptr;
  QCheckBox* firstPageOnly = nullptr;
  QCheckBox* inFront = nullptr;
  WatermarkPreview* preview = nullptr;  // the chosen watermark on a page
};

struct BookletContext {
  PanelContextHead head;
  BookletSettings settings;
  BookletControls controls;
};

template <typename T>
T* Control(QWidget* view, int number) {
  return NumberedControl<T>(view, "ZBw", number);
}

// The menu afresh from the store: "no watermark", the stored names, the
// commands. A store without a list gets the default watermarks first.
void FillWatermarkMenu(BookletContext& panel) {
  QComboBox* menu = panel.controls.watermark;
  if (!menu) return;
  std::vector<std::string> names = loadWatermarkList(kWatermarkFileName);
  if (names.empty() && CreateDefaultWatermarks(panel.head.bundle) == 0) {
    names = loadWatermarkList(kWatermarkFileName);
  }
  const QSignalBlocker quiet(menu);
  menu->clear();
  for (const WatermarkMenuItem& item : WatermarkMenuItems(names)) {
    if (item.key == "-") {
      menu->insertSeparator(menu->count());
      continue;
    }
    const QString text =
        item.isName ? QString::fromStdString(item.key) : LocalizedText(panel.head.bundle, item.key);
    menu->addItem(text);
    const int at = menu->count() - 1;
    menu->setItemData(at, item.value, kTicketValueRole);
    menu->setItemData(at, item.command, kCommandRole);
    if (item.isName) menu->setItemData(at, QString::fromStdString(item.key), kNameRole);
  }
}

// Selects the held watermark (or "no watermark" when it is not stored) and
// shows it on the small page.
void ShowWatermark(BookletContext& panel) {
  QComboBox* menu = panel.controls.watermark;
  if (!menu) return;
  const QSignalBlocker quiet(menu);
  const int at = menu->findData(QString::fromStdString(panel.settings.watermark), kNameRole);
  menu->setCurrentIndex(at >= 0 ? at : 0);
  if (WatermarkPreview* preview = panel.controls.preview) {
    WatermarkData record;
    const bool shown =
        at >= 0 && loadWatermarkData(kWatermarkFileName, panel.settings.watermark, record);
    preview->setRecord(shown ? record : WatermarkData{});
  }
}

void UpdateCommands(BookletContext& panel);

void ShowSettings(BookletContext& panel) {
  if (!panel.head.controlsBuilt) return;
  const BookletSettings& s = panel.settings;
  BookletControls& c = panel.controls;
  if (c.layout) c.layout->setChecked(s.layout);
  if (c.gutter) c.gutter->setValue(s.gutter);
  if (c.creep) c.creep->setValue(s.creep);
  if (c.borders) c.borders->setChecked(s.drawOutlines != 0);
  if (c.foldStaple && !SetPopupButtonToTicketValue(c.foldStaple, s.foldStaple)) {
    c.foldStaple->setCurrentIndex(-1);
  }
  if (c.rotate) c.rotate->setChecked(s.rotate180);
  if (c.firstPageOnly) c.firstPageOnly->setChecked(s.watermarkFirstPageOnly);
  if (c.inFront) c.inFront->setChecked(s.watermarkInFront);
  ShowWatermark(panel);
  UpdateCommands(panel);
}

void TakeSettings(BookletContext& panel) {
  if (!panel.head.controlsBuilt) return;
  BookletSettings& s = panel.settings;
  const BookletControls& c = panel.controls;
  if (c.layout) s.layout = c.layout->isChecked();
  if (c.gutter) s.gutter = c.gutter->value();
  if (c.creep) s.creep = c.creep->value();
  if (c.borders) s.drawOutlines = c.borders->isChecked() ? 1 : 0;
  if (c.foldStaple && c.foldStaple->currentIndex() >= 0) {
    s.foldStaple = GetPopupButtonTicketValue(c.foldStaple);
  }
  if (c.rotate) s.rotate180 = c.rotate->isChecked();
  if (c.firstPageOnly) s.watermarkFirstPageOnly = c.firstPageOnly->isChecked();
  if (c.inFront) s.watermarkInFront = c.inFront->isChecked();
  // The watermark is taken as it is chosen (see RunWatermarkCommand).
}

WatermarkData NewWatermark(const Bundle* bundle) {
  // A new watermark starts as the defaults do, without a text.
  std::vector<WatermarkData> defaults = DefaultWatermarks(bundle);
  WatermarkData record = defaults.empty() ? WatermarkData{} : defaults.front();
  record.textString.clear();
  record.xPos = kPreviewPageWidth / 4;
  record.yPos = kPreviewPageHeight / 3;
  return record;
}

void EditWatermark(BookletContext& panel, QWidget* view, const WatermarkData& record) {
  if (std::optional<std::string> saved = RunModalWatermarkEditor(panel.head.bundle, view, record)) {
    panel.settings.watermark = *saved;
  }
  FillWatermarkMenu(panel);
}

void DeleteWatermark(BookletContext& panel, QWidget* view) {
  const std::string name = panel.settings.watermark;
  if (name.empty()) return;
  const auto answer = QMessageBox::question(
      view, QString(), LocalizedText(panel.head.bundle, "WatermarkDeleteQuestion", {name}));
  if (answer != QMessageBox::Yes) return;
  removeWatermarkData(kWatermarkFileName, name);
  saveWatermarkList(kWatermarkFileName,
                    ListAfterDelete(loadWatermarkList(kWatermarkFileName), name));
  panel.settings.watermark.clear();
  FillWatermarkMenu(panel);
}

// A chosen item: a watermark or "no watermark" is the new choice; a command
// runs and the menu shows the choice again.
void RunWatermarkCommand(BookletContext& panel, QWidget* view, int index) {
  QComboBox* menu = panel.controls.watermark;
  const std::uint32_t command = menu->itemData(index, kCommandRole).toUInt();
  if (command == kWatermarkItemCommand) {
    panel.settings.watermark = menu->itemData(index, kNameRole).toString().toStdString();
  } else if (command == kNoWatermarkCommand) {
    panel.settings.watermark.clear();
  } else if (command == kNewCommand) {
    EditWatermark(panel, view, NewWatermark(panel.head.bundle));
  } else if (command == kEditCommand || command == kOptionsCommand) {
    WatermarkData record;
    if (loadWatermarkData(kWatermarkFileName, panel.settings.watermark, record)) {
      EditWatermark(panel, view, record);
    }
  } else if (command == kDeleteCommand) {
    DeleteWatermark(panel, view);
  }
  ShowWatermark(panel);
}

void UpdateCommands(BookletContext& panel) {
  // Edit, options and delete need a chosen watermark, and so do its options.
  const bool chosen = !panel.settings.watermark.empty();
  for (QCheckBox* option : {panel.controls.firstPageOnly, panel.controls.inFront}) {
    if (option) option->setEnabled(chosen);
  }
  QComboBox* menu = panel.controls.watermark;
  auto* model = menu ? qobject_cast<QStandardItemModel*>(menu->model()) : nullptr;
  if (!model) return;
  for (int i = 0; i < menu->count(); ++i) {
    const std::uint32_t command = menu->itemData(i, kCommandRole).toUInt();
    if (command == kEditCommand || command == kOptionsCommand || command == kDeleteCommand) {
      model->item(i)->setEnabled(chosen);
    }
  }
}

void BuildControls(BookletContext& panel, QWidget* view) {
  BookletControls& c = panel.controls;
  c.layout = Control<QCheckBox>(view, 1);
  c.gutter = Control<QSpinBox>(view, 2);
  c.creep = Control<QSpinBox>(view, 3);
  c.borders = Control<QCheckBox>(view, 4);
  c.foldStaple = Control<QComboBox>(view, 5);
  c.rotate = Control<QCheckBox>(view, 6);
  c.watermark = Control<QComboBox>(view, 7);
  c.firstPageOnly = Control<QCheckBox>(view, 8);
  c.inFront = Control<QCheckBox>(view, 9);
  if (auto* frame = view->findChild<QWidget*>("ZBw_preview"); frame && frame->layout()) {
    c.preview = new WatermarkPreview(frame);
    c.preview->setMinimumSize(116, 150);
    frame->layout()->addWidget(c.preview);
  }
  if (c.gutter) c.gutter->setRange(0, kMaxGutter);
  if (c.creep) c.creep->setRange(0, kMaxCreep);
  PopulatePopupButtonFromMap(panel.head.bundle, c.foldStaple, BookletFoldStapleMap, JobContext::Job,
                             0);
  FillWatermarkMenu(panel);
  BookletContext* p = &panel;
  if (c.watermark) {
    QObject::connect(c.watermark, &QComboBox::activated, view, [p, view](int index) {
      RunWatermarkCommand(*p, view, index);
      UpdateCommands(*p);
    });
  }
  // The booklet's own settings apply to a booklet.
  if (c.layout) {
    const auto enable = [p](bool on) {
      for (QWidget* w : std::initializer_list<QWidget*>{p->controls.gutter, p->controls.creep,
                                                        p->controls.borders, p->controls.foldStaple,
                                                        p->controls.rotate}) {
        if (w) w->setEnabled(on);
      }
    };
    QObject::connect(c.layout, &QCheckBox::toggled, view, enable);
  }
}

void EnableBooklet(BookletContext& panel) {
  if (panel.controls.layout) emit panel.controls.layout->toggled(panel.settings.layout);
}

// With the controls up, the booklet's dependent controls and the watermark
// commands follow the settings shown.
void AfterOpen(BookletContext& panel) {
  EnableBooklet(panel);
  UpdateCommands(panel);
}

Status BookletPrologue(PDEContext* context, std::uint32_t* creator, const char** userOptionKind,
                       const char** title, float* maxH, float* maxV) {
  if (!context) return kInvalidPDEContext;
  auto* panel = new (std::nothrow) BookletContext{};
  if (!panel) return kInvalidPDEContext;
  FillPanelPrologue(panel->head, DescribePanel(PanelKind::BookletWatermark), creator,
                    userOptionKind, title);
  if (maxH) *maxH = 0;
  if (maxV) *maxV = 0;
  *context = panel;
  return kNoErr;
}

Status BookletSync(PDEContext context, PrintSession* session, bool reinitializePlugIn) {
  if (!context) return kInvalidPDEContext;
  auto* panel = static_cast<BookletContext*>(context);
  Ticket* ticket = nullptr;
  const Status status = GetTicketFromSession(session, kPrintSettingsTicketName, &ticket);
  if (status != kNoErr || !ticket) return status;
  if (reinitializePlugIn) {
    panel->settings = ReadBookletSettings(*ticket);
    ShowSettings(*panel);
    if (panel->head.controlsBuilt) AfterOpen(*panel);
  } else {
    TakeSettings(*panel);
    WriteBookletSettings(*ticket, panel->settings);
  }
  return kNoErr;
}

Status BookletInitialize(PDEContext context, std::uint32_t* /*flags*/, void* /*ref*/,
                         PDEPaneRef userPane, PrintSession* session) {
  if (!context) return kInvalidPDEContext;
  static_cast<BookletContext*>(context)->head.userPane = static_cast<QWidget*>(userPane);
  return BookletSync(context, session, true);
}

}  // namespace

Status CreateBookletWatermarkPanelInterface(PanelInterface** out) {
  return StandardPanel<BookletContext, PanelKind::BookletWatermark>::CreateInterface(
      BookletPrologue, BookletInitialize, BookletSync, out);
}

}  // namespace zorva

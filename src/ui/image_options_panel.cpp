// The Image Options panel: resolution, lighten/darken, toner saver,
// anti-aliasing, halftone, output order and emulation menus, the highlight
// colour, and the buttons that open the image shift and full colour setup
// dialogs with a line saying what each holds. The settings logic is in
// panels/; this file keeps the controls in step with it.
#include <QColorDialog>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QWidget>
#include <new>

#include "core/print_session.h"
#include "host/keyword_tables.h"
#include "panels/image_options.h"
#include "ui/controls.h"
#include "ui/image_options_dialogs.h"
#include "ui/panel_view.h"

namespace zorva {
namespace {

// Control numbers of the view ("ZImg_<n>"): the menus are 1 to 7 in the
// order of ImageMenuRows().
constexpr int kHighlightMenu = 8;
constexpr int kHighlightNumber = 9;
constexpr int kHighlightChoose = 10;
constexpr int kImageShiftButton = 11;
constexpr int kImageShiftSummary = 12;
constexpr int kFullColorButton = 13;
constexpr int kFullColorSummary = 14;

struct ImageOptionsControls {
  std::vector<QComboBox*> menus;  // one per ImageMenuRows() row
  QComboBox* highlight = nullptr;
  QSpinBox* highlightNumber = nullptr;
  QPushButton* highlightChoose = nullptr;
  QLabel* imageShiftSummary = nullptr;
  QLabel* fullColorSummary = nullptr;
};

struct ImageOptionsContext {
  PanelContextHead head;
  ImageOptionsSettings settings;
  ImageOptionsControls controls;
};

template <typename T>
T* Control(QWidget* view, int number) {
  return NumberedControl<T>(view, "ZImg", number);
}

// Shows the value; a value the table does not list shows nothing and is
// kept (see TakeMenu).
void ShowMenu(QComboBox* popup, std::int32_t value) {
  if (popup && !SetPopupButtonToTicketValue(popup, value)) popup->setCurrentIndex(-1);
}

std::int32_t TakeMenu(const QComboBox* popup, std::int32_t held) {
  return popup && popup->currentIndex() >= 0 ? GetPopupButtonTicketValue(popup) : held;
}

void ShowSummaries(ImageOptionsContext& panel) {
  const ImageOptionsSettings& s = panel.settings;
  const ImageOptionsControls& c = panel.controls;
  const Bundle* bundle = panel.head.bundle;
  if (c.imageShiftSummary) {
    c.imageShiftSummary->setText(s.hasImageShift ? ImageShiftSummaryText(bundle, s.imageShift)
                                                 : LocalizedText(bundle, "ImageShiftSummaryNone"));
  }
  if (c.fullColorSummary) {
    const bool set = !s.fullColor.asTicket().empty();
    c.fullColorSummary->setText(
        LocalizedText(bundle, set ? "FullColorSummarySet" : "FullColorSummaryNone"));
  }
}

void ShowHighlightColor(ImageOptionsContext& panel) {
  const HighlightSettings& h = panel.settings.highlight;
  ImageOptionsControls& c = panel.controls;
  const bool custom =
      c.highlight && TakeMenu(c.highlight, h.printingColor) == kHighlightCustomColor;
  if (c.highlightNumber) c.highlightNumber->setEnabled(custom);
  if (c.highlightChoose) {
    c.highlightChoose->setEnabled(custom);
    const QColor color = h.rgb ? QColor((*h.rgb)[0], (*h.rgb)[1], (*h.rgb)[2]) : QColor();
    // The button shows the chosen colour as a swatch.
    QPixmap swatch(14, 14);
    swatch.fill(color.isValid() ? color : Qt::transparent);
    c.highlightChoose->setIcon(color.isValid() && custom ? QIcon(swatch) : QIcon());
  }
}

// Held values to controls (only once the controls exist).
void ShowSettings(ImageOptionsContext& panel) {
  if (!panel.head.controlsBuilt) return;
  const ImageOptionsSettings& s = panel.settings;
  ImageOptionsControls& c = panel.controls;
  const auto rows = ImageMenuRows();
  for (std::size_t i = 0; i < rows.size(); ++i) ShowMenu(c.menus[i], s.menus.*rows[i].field);
  ShowMenu(c.highlight, s.highlight.printingColor);
  if (c.highlightNumber) c.highlightNumber->setValue(s.highlight.customIndex);
  ShowHighlightColor(panel);
  ShowSummaries(panel);
}

// Controls to held values.
void TakeSettings(ImageOptionsContext& panel) {
  if (!panel.head.controlsBuilt) return;
  ImageOptionsSettings& s = panel.settings;
  const ImageOptionsControls& c = panel.controls;
  const auto rows = ImageMenuRows();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    s.menus.*rows[i].field = TakeMenu(c.menus[i], s.menus.*rows[i].field);
  }
  s.highlight.printingColor = TakeMenu(c.highlight, s.highlight.printingColor);
  if (c.highlightNumber && s.highlight.printingColor == kHighlightCustomColor) {
    s.highlight.customIndex = c.highlightNumber->value();
  }
}

void ChooseHighlightColor(ImageOptionsContext& panel, QWidget* view) {
  HighlightSettings& h = panel.settings.highlight;
  const QColor initial = h.rgb ? QColor((*h.rgb)[0], (*h.rgb)[1], (*h.rgb)[2]) : QColor(Qt::red);
  const QColor color = QColorDialog::getColor(initial, view);
  if (!color.isValid()) return;
  h.rgb = std::array<std::int32_t, 3>{color.red(), color.green(), color.blue()};
  ShowHighlightColor(panel);
}

void ConnectButtons(ImageOptionsContext& panel, QWidget* view) {
  const Bundle* bundle = panel.head.bundle;
  ImageOptionsContext* p = &panel;
  if (auto* shift = Control<QPushButton>(view, kImageShiftButton)) {
    QObject::connect(shift, &QPushButton::clicked, view, [p, bundle, view] {
      ImageShiftOptions options = p->settings.imageShift;
      if (!RunModalImageShiftDialog(bundle, view, options)) return;
      p->settings.imageShift = options;
      p->settings.hasImageShift = true;
      ShowSummaries(*p);
    });
  }
  if (auto* color = Control<QPushButton>(view, kFullColorButton)) {
    QObject::connect(color, &QPushButton::clicked, view, [p, bundle, view] {
      FullColorOptions options = p->settings.fullColor;
      if (!RunModalFullColorSetup(bundle, view, options)) return;
      p->settings.fullColor = options;
      ShowSummaries(*p);
    });
  }
  if (panel.controls.highlightChoose) {
    QObject::connect(panel.controls.highlightChoose, &QPushButton::clicked, view,
                     [p, view] { ChooseHighlightColor(*p, view); });
  }
  if (panel.controls.highlight) {
    QObject::connect(panel.controls.highlight, &QComboBox::currentIndexChanged, view,
                     [p] { ShowHighlightColor(*p); });
  }
}

void BuildControls(ImageOptionsContext& panel, QWidget* view) {
  ImageOptionsControls& c = panel.controls;
  const Bundle* bundle = panel.head.bundle;
  const auto rows = ImageMenuRows();
  c.menus.clear();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    QComboBox* menu = Control<QComboBox>(view, static_cast<int>(i) + 1);
    PopulatePopupButtonFromMap(bundle, menu, rows[i].map, JobContext::Job, 0);
    c.menus.push_back(menu);
  }
  c.highlight = Control<QComboBox>(view, kHighlightMenu);
  PopulatePopupButtonFromMap(bundle, c.highlight, HighlightColorMap, JobContext::Job, 0);
  c.highlightNumber = Control<QSpinBox>(view, kHighlightNumber);
  c.highlightChoose = Control<QPushButton>(view, kHighlightChoose);
  c.imageShiftSummary = Control<QLabel>(view, kImageShiftSummary);
  c.fullColorSummary = Control<QLabel>(view, kFullColorSummary);
  ConnectButtons(panel, view);
}

Status ImageOptionsPrologue(PDEContext* context, std::uint32_t* creator,
                            const char** userOptionKind, const char** title, float* maxH,
                            float* maxV) {
  if (!context) return kInvalidPDEContext;
  auto* panel = new (std::nothrow) ImageOptionsContext{};
  if (!panel) return kInvalidPDEContext;
  FillPanelPrologue(panel->head, DescribePanel(PanelKind::ImageOptions), creator, userOptionKind,
                    title);
  if (maxH) *maxH = 0;
  if (maxV) *maxV = 0;
  *context = panel;
  return kNoErr;
}

Status ImageOptionsSync(PDEContext context, PrintSession* session, bool reinitializePlugIn) {
  if (!context) return kInvalidPDEContext;
  auto* panel = static_cast<ImageOptionsContext*>(context);
  Ticket* ticket = nullptr;
  const Status status = GetTicketFromSession(session, kPrintSettingsTicketName, &ticket);
  if (status != kNoErr || !ticket) return status;
  if (reinitializePlugIn) {
    panel->settings = ReadImageOptionsSettings(*ticket);
    ShowSettings(*panel);
  } else {
    TakeSettings(*panel);
    WriteImageOptionsSettings(*ticket, panel->settings);
  }
  return kNoErr;
}

Status ImageOptionsInitialize(PDEContext context, std::uint32_t* /*flags*/, void* /*ref*/,
                              PDEPaneRef userPane, PrintSession* session) {
  if (!context) return kInvalidPDEContext;
  static_cast<ImageOptionsContext*>(context)->head.userPane = static_cast<QWidget*>(userPane);
  return ImageOptionsSync(context, session, true);
}

}  // namespace

Status CreateImageOptionsPanelInterface(PanelInterface** out) {
  return StandardPanel<ImageOptionsContext, PanelKind::ImageOptions>::CreateInterface(
      ImageOptionsPrologue, ImageOptionsInitialize, ImageOptionsSync, out);
}

}  // namespace zorva

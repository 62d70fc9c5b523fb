// The image shift and full colour setup dialogs: views from the bundle,
// controls filled from the options, the options taken back on OK.
#include "ui/image_options_dialogs.h"

#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <memory>

#include "host/keyword_tables.h"
#include "panels/image_options.h"
#include "ui/controls.h"
#include "ui/panel_view.h"

namespace zorva {
namespace {

// A popup's value, the held one when it shows nothing (a value its table
// does not list stays as it was).
std::int32_t PopupValue(const QComboBox* popup, std::int32_t held) {
  return popup && popup->currentIndex() >= 0 ? GetPopupButtonTicketValue(popup) : held;
}

void ShowPopupValue(QComboBox* popup, std::int32_t value) {
  if (popup && !SetPopupButtonToTicketValue(popup, value)) popup->setCurrentIndex(-1);
}

// ---- Image shift ------------------------------------------------------------------

struct ShiftControls {
  QComboBox* oneSided = nullptr;
  QComboBox* twoSided = nullptr;
  QRadioButton* inches = nullptr;
  QRadioButton* millimetres = nullptr;
  QDoubleSpinBox* shifts[4] = {};  // x1, y1, x2, y2
  QGroupBox* front = nullptr;
  QGroupBox* back = nullptr;
};

ShiftDisplay ShownShifts(const ShiftControls& c) {
  ShiftDisplay d;
  d.inches = c.inches->isChecked();
  d.x1 = c.shifts[0]->value();
  d.y1 = c.shifts[1]->value();
  d.x2 = c.shifts[2]->value();
  d.y2 = c.shifts[3]->value();
  return d;
}

void ShowShifts(const ShiftControls& c, const ShiftDisplay& d) {
  const double limit = d.inches ? kMaxShiftMillimetres / 25.4 : kMaxShiftMillimetres;
  const double values[4] = {d.x1, d.y1, d.x2, d.y2};
  for (int i = 0; i < 4; ++i) {
    c.shifts[i]->setRange(-limit, limit);
    c.shifts[i]->setSingleStep(d.inches ? 0.01 : 0.1);
    c.shifts[i]->setValue(values[i]);
  }
  c.inches->setChecked(d.inches);
  c.millimetres->setChecked(!d.inches);
}

// A mode the ticket leaves open shows as "custom" when that side is shifted.
std::int32_t ShownMode(std::int32_t mode, bool shifted) {
  if (mode != kUnset) return mode;
  return shifted ? kImageShiftCustom : kImageShiftOff;
}

void EnableSides(const ShiftControls& c) {
  const bool back = GetPopupButtonTicketValue(c.twoSided) == kImageShiftCustom;
  const bool front = back || GetPopupButtonTicketValue(c.oneSided) == kImageShiftCustom;
  c.front->setEnabled(front);
  c.back->setEnabled(back);
}

bool BuildShiftControls(QWidget* view, ShiftControls& c) {
  c.oneSided = NumberedControl<QComboBox>(view, "ZIsh", 1);
  c.twoSided = NumberedControl<QComboBox>(view, "ZIsh", 2);
  c.inches = NumberedControl<QRadioButton>(view, "ZIsh", 3);
  c.millimetres = NumberedControl<QRadioButton>(view, "ZIsh", 4);
  for (int i = 0; i < 4; ++i) c.shifts[i] = NumberedControl<QDoubleSpinBox>(view, "ZIsh", 5 + i);
  c.front = view->findChild<QGroupBox*>("ZIsh_front");
  c.back = view->findChild<QGroupBox*>("ZIsh_back");
  for (QDoubleSpinBox* s : c.shifts)
    if (!s) return false;
  return c.oneSided && c.twoSided && c.inches && c.millimetres && c.front && c.back;
}

// ---- Full colour -----------------------------------------------------------------------

struct ProfileRow {
  int menu;  // control numbers
  int name;
  const SettingMap* map;
  std::int32_t custom;
  Status (FullColorOptions::*get)(std::int32_t*, FullColorOptions::Name*) const;
  Status (FullColorOptions::*set)(std::int32_t, FullColorOptions::Name);
};

constexpr ProfileRow kProfiles[] = {
    {14, 15, RGBProfileMap, kRGBProfileCustom, &FullColorOptions::rgbImagesProfile,
     &FullColorOptions::setRGBImagesProfile},
    {16, 17, RGBProfileMap, kRGBProfileCustom, &FullColorOptions::rgbTextAndGraphicsProfile,
     &FullColorOptions::setRGBTextAndGraphicsProfile},
    {18, 19, CMYKProfileMap, kCMYKProfileCustom, &FullColorOptions::cmykImagesProfile,
     &FullColorOptions::setCMYKImagesProfile},
    {20, 21, CMYKProfileMap, kCMYKProfileCustom, &FullColorOptions::cmykTextAndGraphicsProfile,
     &FullColorOptions::setCMYKTextAndGraphicsProfile},
    {24, 25, DestinationProfileMap, kDestinationProfileCustom,
     &FullColorOptions::destinationProfile, &FullColorOptions::setDestinationProfile},
};

struct RenderingRow {
  int menu;
  Status (FullColorOptions::*get)(std::int32_t*) const;
  Status (FullColorOptions::*set)(std::int32_t);
};

constexpr RenderingRow kSingleMenus[] = {
    {7, &FullColorOptions::trapping, &FullColorOptions::setTrapping},
    {10, &FullColorOptions::blackOverprint, &FullColorOptions::setBlackOverprint},
    {11, &FullColorOptions::imageObjectRendering, &FullColorOptions::setImageObjectRendering},
    {12, &FullColorOptions::textObjectRendering, &FullColorOptions::setTextObjectRendering},
    {13, &FullColorOptions::graphicObjectRendering, &FullColorOptions::setGraphicObjectRendering},
};

constexpr const SettingMap* SingleMenuMap(int menu) {
  return menu == 7 ? TrappingMap : menu == 10 ? BlackOverprintMap : RenderingIntentMap;
}

QString NameText(const FullColorOptions::Name& name) {
  return name ? QString::fromStdString(*name) : QString();
}

FullColorOptions::Name NameOf(const QLineEdit* field) {
  const QString text = field->text().trimmed();
  if (text.isEmpty()) return std::nullopt;
  return text.toStdString();
}

void SetupSpin(QSpinBox* spin, int minimum, int maximum, const QString& unsetText,
               std::int32_t value) {
  spin->setRange(minimum - 1, maximum);
  spin->setSpecialValueText(unsetText);
  spin->setValue(SpinValueFor(value, minimum));
}

class FullColorView {
 public:
  FullColorView(const Bundle* bundle, QWidget* view, JobContext context)
      : bundle_(bundle), view_(view), context_(context) {}

  bool complete() const {
    for (int n = 1; n <= 13; ++n)
      if (!widget(n)) return false;
    for (const ProfileRow& p : kProfiles)
      if (!widget(p.menu) || !widget(p.name)) return false;
    return widget(22) && widget(23) && widget(26);
  }

  void show(const FullColorOptions& o) {
    const QString unset = LocalizedText(bundle_, "AdjustmentDefault");
    std::int32_t v[3];
    o.lightness(&v[0]);
    o.contrast(&v[1]);
    o.saturation(&v[2]);
    for (int i = 0; i < 3; ++i)
      SetupSpin(spin(1 + i), kAdjustmentMinimum, kAdjustmentMaximum, unset, v[i]);
    o.colorCast(&v[0], &v[1], &v[2]);
    for (int i = 0; i < 3; ++i)
      SetupSpin(spin(4 + i), kAdjustmentMinimum, kAdjustmentMaximum, unset, v[i]);
    o.trappingAdjustment(&v[1], &v[0]);  // slow, fast
    SetupSpin(spin(8), 0, kTrapWidthMaximum, unset, v[0]);
    SetupSpin(spin(9), 0, kTrapWidthMaximum, unset, v[1]);
    for (const RenderingRow& r : kSingleMenus) {
      PopulatePopupButtonFromMap(bundle_, menu(r.menu), SingleMenuMap(r.menu), context_, 0);
      std::int32_t value = kUnset;
      (o.*r.get)(&value);
      ShowPopupValue(menu(r.menu), value);
    }
    for (const ProfileRow& p : kProfiles) {
      PopulatePopupButtonFromMap(bundle_, menu(p.menu), p.map, context_, 0);
      std::int32_t kind = kUnset;
      FullColorOptions::Name name;
      (o.*p.get)(&kind, &name);
      ShowPopupValue(menu(p.menu), kind);
      line(p.name)->setText(NameText(name));
      line(p.name)->setPlaceholderText(LocalizedText(bundle_, "ProfileNamePlaceholder"));
      line(p.name)->setMaxLength(static_cast<int>(kMaxProfileNameLength));
    }
    FullColorOptions::Name name;
    o.grayImagesProfile(&name);
    line(22)->setText(NameText(name));
    o.grayTextAndGraphicsProfile(&name);
    line(23)->setText(NameText(name));
    o.trc(&name);
    line(26)->setText(NameText(name));
    for (int n : {22, 23}) line(n)->setMaxLength(static_cast<int>(kMaxProfileNameLength));
    enable();
  }

  // The shown values over the options (so values no control shows stay).
  void take(FullColorOptions& o) const {
    o.setLightness(ValueForSpin(spin(1)->value(), kAdjustmentMinimum));
    o.setContrast(ValueForSpin(spin(2)->value(), kAdjustmentMinimum));
    o.setSaturation(ValueForSpin(spin(3)->value(), kAdjustmentMinimum));
    o.setColorCast(ValueForSpin(spin(4)->value(), kAdjustmentMinimum),
                   ValueForSpin(spin(5)->value(), kAdjustmentMinimum),
                   ValueForSpin(spin(6)->value(), kAdjustmentMinimum));
    o.setTrappingAdjustment(ValueForSpin(spin(9)->value(), 0), ValueForSpin(spin(8)->value(), 0));
    for (const RenderingRow& r : kSingleMenus) {
      std::int32_t held = kUnset;
      (o.*r.get)(&held);
      (o.*r.set)(PopupValue(menu(r.menu), held));
    }
    for (const ProfileRow& p : kProfiles) {
      std::int32_t held = kUnset;
      FullColorOptions::Name name;
      (o.*p.get)(&held, &name);
      const std::int32_t kind = PopupValue(menu(p.menu), held);
      // A named profile without a name is refused by the options; keep
      // what was there rather than lose the rest of the dialog.
      (o.*p.set)(kind, NameOf(line(p.name)));
    }
    o.setGrayImagesProfile(NameOf(line(22)));
    o.setGrayTextAndGraphicsProfile(NameOf(line(23)));
    o.setTRC(NameOf(line(26)));
  }

  void connect() {
    QObject::connect(menu(7), &QComboBox::currentIndexChanged, view_, [this] { enable(); });
    for (const ProfileRow& p : kProfiles) {
      QObject::connect(menu(p.menu), &QComboBox::currentIndexChanged, view_, [this] { enable(); });
    }
  }

 private:
  // Widths apply to trapping that is on; a name to a named profile.
  void enable() {
    const bool widths = GetPopupButtonTicketValue(menu(7)) == kTrappingAdjustable;
    spin(8)->setEnabled(widths);
    spin(9)->setEnabled(widths);
    for (const ProfileRow& p : kProfiles) {
      line(p.name)->setEnabled(GetPopupButtonTicketValue(menu(p.menu)) == p.custom);
    }
  }
  QWidget* widget(int n) const { return NumberedControl<QWidget>(view_, "ZFc", n); }
  QSpinBox* spin(int n) const { return NumberedControl<QSpinBox>(view_, "ZFc", n); }
  QComboBox* menu(int n) const { return NumberedControl<QComboBox>(view_, "ZFc", n); }
  QLineEdit* line(int n) const { return NumberedControl<QLineEdit>(view_, "ZFc", n); }

  const Bundle* bundle_;
  QWidget* view_;
  JobContext context_;
};

}  // namespace

bool RunModalImageShiftDialog(const Bundle* bundle, QWidget* parent, ImageShiftOptions& options) {
  // The controls' record outlives the dialog whose signals reach it.
  ShiftControls c;
  std::unique_ptr<QDialog> dialog =
      LoadDialog(bundle, "ImageShiftDialog", "ImageShift", "ImageShiftTitle", "ZIsh", parent);
  if (!dialog || !BuildShiftControls(dialog.get(), c)) return false;
  PopulatePopupButtonFromMap(bundle, c.oneSided, ImageShiftOptions1SidedMap, JobContext::Job, 0);
  PopulatePopupButtonFromMap(bundle, c.twoSided, ImageShiftOptions2SidedMap, JobContext::Job, 0);
  SetPopupButtonToTicketValue(c.oneSided,
                              ShownMode(options.oneSidedMode(), options.x1() || options.y1()));
  SetPopupButtonToTicketValue(c.twoSided,
                              ShownMode(options.twoSidedMode(), options.x2() || options.y2()));
  ShowShifts(c, ShiftForDisplay(options));
  EnableSides(c);
  QObject::connect(c.inches, &QRadioButton::toggled, dialog.get(), [&c](bool inches) {
    ShiftDisplay d = ShownShifts(c);
    d.inches = !inches;  // what was shown before the switch
    ShowShifts(c, ConvertShiftDisplay(d, inches));
  });
  for (QComboBox* mode : {c.oneSided, c.twoSided}) {
    QObject::connect(mode, &QComboBox::currentIndexChanged, dialog.get(), [&c] { EnableSides(c); });
  }
  if (dialog->exec() != QDialog::Accepted) return false;
  options.setOneSidedMode(GetPopupButtonTicketValue(c.oneSided));
  options.setTwoSidedMode(GetPopupButtonTicketValue(c.twoSided));
  ApplyShiftDisplay(options, ShownShifts(c));
  return true;
}

bool RunModalFullColorSetup(const Bundle* bundle, QWidget* parent, FullColorOptions& options,
                            JobContext context) {
  std::unique_ptr<QDialog> dialog =
      LoadDialog(bundle, "FullColorSetup", "FullColorSetup", "FullColorSetupTitle", "ZFc", parent);
  if (!dialog) return false;
  FullColorView view(bundle, dialog.get(), context);
  if (!view.complete()) return false;
  view.show(options);
  view.connect();
  const bool accepted = dialog->exec() == QDialog::Accepted;
  if (accepted) view.take(options);
  // Gone before the view its signals reach.
  dialog.reset();
  return accepted;
}

QString ImageShiftSummaryText(const Bundle* bundle, const ImageShiftOptions& options) {
  const ShiftDisplay d = ShiftForDisplay(options);
  const auto number = [](double v) { return QString::number(v, 'f', 2).toStdString(); };
  const std::string x1 = number(d.x1), y1 = number(d.y1), x2 = number(d.x2), y2 = number(d.y2);
  const std::string unit = LocalizedText(bundle, d.inches ? "UnitIn" : "UnitMm").toStdString();
  return LocalizedText(bundle, "ImageShiftSummary", {x1, y1, x2, y2, unit});
}

}  // namespace zorva

// The watermark editor's view, its live preview and its saving.
#include "ui/watermark_editor.h"

#include <QColorDialog>
#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QImageReader>
#include <QLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <memory>

#include "panels/booklet_watermark.h"
#include "ui/controls.h"
#include "ui/panel_view.h"
#include "watermarks/font_catalog.h"

namespace zorva {

namespace {

QColor FontColor(const WatermarkData& r) {
  return QColor::fromRgbF(r.fontColorRed, r.fontColorGreen, r.fontColorBlue, r.fontColorAlpha);
}

QColor WellColor(const WatermarkData& r) {
  return QColor::fromRgbF(r.wellColorRed, r.wellColorGreen, r.wellColorBlue, r.wellColorAlpha);
}

void SetFontColor(WatermarkData& r, const QColor& c) {
  r.fontColorRed = static_cast<float>(c.redF());
  r.fontColorGreen = static_cast<float>(c.greenF());
  r.fontColorBlue = static_cast<float>(c.blueF());
  r.fontColorAlpha = static_cast<float>(c.alphaF());
}

void SetWellColor(WatermarkData& r, const QColor& c) {
  r.wellColorRed = static_cast<float>(c.redF());
  r.wellColorGreen = static_cast<float>(c.greenF());
  r.wellColorBlue = static_cast<float>(c.blueF());
  r.wellColorAlpha = static_cast<float>(c.alphaF());
}

}  // namespace

WatermarkPreview::WatermarkPreview(QWidget* parent) : QWidget(parent) {
  setObjectName("ZWe_previewPage");
  setMinimumSize(200, 260);
}

void WatermarkPreview::setRecord(const WatermarkData& record) {
  // Looking a font up asks fontconfig for the whole list: once per font.
  if (record.fontName != record_.fontName || family_.isEmpty()) {
    const std::optional<InstalledFont> f = FindInstalledFont(record.fontName);
    family_ = f ? QString::fromStdString(f->family) : QString();
    style_ = f ? QString::fromStdString(f->style) : QString();
  }
  record_ = record;
  update();
}

QFont WatermarkPreview::watermarkFont(double pixelSize) const {
  QFont f;
  if (!family_.isEmpty()) {
    f.setFamily(family_);
    f.setStyleName(style_);
  }
  f.setPixelSize(std::max(1, static_cast<int>(pixelSize)));
  return f;
}

void WatermarkPreview::paintEvent(QPaintEvent* /*event*/) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  // The page, as large as the widget allows.
  const double k = std::min((width() - 8) / kPreviewPageWidth, (height() - 8) / kPreviewPageHeight);
  const QRectF page((width() - kPreviewPageWidth * k) / 2, (height() - kPreviewPageHeight * k) / 2,
                    kPreviewPageWidth * k, kPreviewPageHeight * k);
  p.fillRect(page, Qt::white);
  p.setPen(QPen(Qt::gray, 1));
  p.drawRect(page);
  p.setClipRect(page);
  const WatermarkData& r = record_;
  // Positions are from the page's bottom left, in points.
  const QPointF at(page.left() + (r.xPos + r.xOffset) * k,
                   page.bottom() - (r.yPos + r.yOffset) * k);
  p.translate(at);
  p.rotate(-r.angle);
  const double scale = std::max(r.scale, 1) / 100.0;
  p.setOpacity(std::clamp(r.density, 0, kMaxDensity) / 100.0);
  if (r.isText) {
    QPainterPath path;
    path.addText(0, 0, watermarkFont(r.fontSize * scale * k), QString::fromStdString(r.textString));
    p.fillPath(path, FontColor(r));
    p.strokePath(path, QPen(WellColor(r), 0.5));
  } else if (!r.filePath.empty()) {
    const QImage picture(QString::fromStdString(r.filePath));
    if (!picture.isNull()) {
      // Pictures at 72 dots per inch, then scaled.
      const QSizeF size(picture.width() * scale * k, picture.height() * scale * k);
      p.drawImage(QRectF(QPointF(0, -size.height()), size), picture);
    }
  }
}

namespace {

struct EditorControls {
  QRadioButton* text = nullptr;
  QRadioButton* picture = nullptr;
  QLineEdit* textString = nullptr;
  QComboBox* font = nullptr;
  QSpinBox* fontSize = nullptr;
  QLineEdit* picturePath = nullptr;
  QPushButton* choosePicture = nullptr;
  QSpinBox* angle = nullptr;
  QSpinBox* density = nullptr;
  QSpinBox* scale = nullptr;
  QDoubleSpinBox* x = nullptr;
  QDoubleSpinBox* y = nullptr;
  QPushButton* fontColor = nullptr;
  QPushButton* wellColor = nullptr;
  QPushButton* save = nullptr;
  WatermarkPreview* preview = nullptr;
};

template <typename T>
T* Child(QWidget* view, int number) {
  return NumberedControl<T>(view, "ZWe", number);
}

bool FindControls(QWidget* view, EditorControls& c) {
  c.text = Child<QRadioButton>(view, 1);
  c.picture = Child<QRadioButton>(view, 2);
  c.textString = Child<QLineEdit>(view, 3);
  c.font = Child<QComboBox>(view, 4);
  c.fontSize = Child<QSpinBox>(view, 5);
  c.picturePath = Child<QLineEdit>(view, 6);
  c.choosePicture = Child<QPushButton>(view, 7);
  c.angle = Child<QSpinBox>(view, 8);
  c.density = Child<QSpinBox>(view, 9);
  c.scale = Child<QSpinBox>(view, 10);
  c.x = Child<QDoubleSpinBox>(view, 11);
  c.y = Child<QDoubleSpinBox>(view, 12);
  c.fontColor = Child<QPushButton>(view, 13);
  c.wellColor = Child<QPushButton>(view, 14);
  c.save = view->findChild<QPushButton*>("ZWe_ok");
  return c.text && c.picture && c.textString && c.font && c.fontSize && c.picturePath &&
         c.choosePicture && c.angle && c.density && c.scale && c.x && c.y && c.fontColor &&
         c.wellColor && c.save;
}

// The button shows its colour as a small swatch.
void SetSwatch(QPushButton* button, const QColor& color) {
  QPixmap swatch(14, 14);
  swatch.fill(color);
  button->setIcon(QIcon(swatch));
}

class Editor {
 public:
  Editor(const Bundle* bundle, QDialog* dialog, EditorControls c, WatermarkData record)
      : bundle_(bundle), dialog_(dialog), c_(c), record_(std::move(record)) {}

  void show() {
    c_.fontSize->setRange(kMinFontSize, kMaxFontSize);
    c_.angle->setRange(-180, 180);
    c_.angle->setSuffix(QStringLiteral("\u00b0"));
    c_.density->setRange(1, kMaxDensity);
    c_.density->setSuffix(QStringLiteral(" %"));
    c_.scale->setRange(kMinScale, kMaxScale);
    c_.scale->setSuffix(QStringLiteral(" %"));
    c_.x->setRange(-kPreviewPageWidth, 2 * kPreviewPageWidth);
    c_.y->setRange(-kPreviewPageHeight, 2 * kPreviewPageHeight);
    for (QDoubleSpinBox* s : {c_.x, c_.y}) s->setSuffix(QStringLiteral(" pt"));
    c_.textString->setMaxLength(static_cast<int>(kWatermarkTextBytes - 1));
    for (const InstalledFont& f : InstalledTrueTypeFonts()) {
      c_.font->addItem(QString::fromStdString(f.family + " " + f.style),
                       QString::fromStdString(f.postScriptName));
    }
    (record_.isText ? c_.text : c_.picture)->setChecked(true);
    c_.textString->setText(QString::fromStdString(record_.textString));
    int font = c_.font->findData(QString::fromStdString(record_.fontName));
    if (font < 0) {
      // A font this machine lacks stays chosen, by its name.
      c_.font->addItem(QString::fromStdString(record_.fontName),
                       QString::fromStdString(record_.fontName));
      font = c_.font->count() - 1;
    }
    c_.font->setCurrentIndex(font);
    c_.fontSize->setValue(record_.fontSize);
    c_.picturePath->setText(QString::fromStdString(record_.filePath));
    c_.angle->setValue(record_.angle);
    c_.density->setValue(record_.density);
    c_.scale->setValue(record_.scale);
    c_.x->setValue(record_.xPos);
    c_.y->setValue(record_.yPos);
    SetSwatch(c_.fontColor, FontColor(record_));
    SetSwatch(c_.wellColor, WellColor(record_));
    update();
  }

  void connect() {
    const auto changed = [this] { update(); };
    for (QRadioButton* r : {c_.text, c_.picture})
      QObject::connect(r, &QRadioButton::toggled, dialog_, changed);
    QObject::connect(c_.textString, &QLineEdit::textChanged, dialog_, changed);
    QObject::connect(c_.font, &QComboBox::currentIndexChanged, dialog_, changed);
    for (QSpinBox* s : {c_.fontSize, c_.angle, c_.density, c_.scale})
      QObject::connect(s, &QSpinBox::valueChanged, dialog_, changed);
    for (QDoubleSpinBox* s : {c_.x, c_.y})
      QObject::connect(s, &QDoubleSpinBox::valueChanged, dialog_, changed);
    QObject::connect(c_.choosePicture, &QPushButton::clicked, dialog_, [this] { choosePicture(); });
    QObject::connect(c_.fontColor, &QPushButton::clicked, dialog_, [this] {
      const QColor color = QColorDialog::getColor(FontColor(record_), dialog_, QString(),
                                                  QColorDialog::ShowAlphaChannel);
      if (!color.isValid()) return;
      SetFontColor(record_, color);
      SetSwatch(c_.fontColor, color);
      update();
    });
    QObject::connect(c_.wellColor, &QPushButton::clicked, dialog_, [this] {
      const QColor color = QColorDialog::getColor(WellColor(record_), dialog_, QString(),
                                                  QColorDialog::ShowAlphaChannel);
      if (!color.isValid()) return;
      SetWellColor(record_, color);
      SetSwatch(c_.wellColor, color);
      update();
    });
  }

  const WatermarkData& record() const { return record_; }

  // Stores the font (for a text) and the record; false, with an alert, when
  // the font cannot go to the printer.
  bool save() {
    if (record_.isText) {
      const std::optional<InstalledFont> font = FindInstalledFont(record_.fontName);
      std::string reason;
      if (font && StoreWatermarkFont(kWatermarkFileName, *font, &reason) != 0) {
        QMessageBox::warning(dialog_, dialog_->windowTitle(),
                             LocalizedText(bundle_, "WatermarkFontRefused", {reason}));
        return false;
      }
    }
    return saveWatermarkData(kWatermarkFileName, record_) == 0;
  }

 private:
  // Controls to the record, the preview redrawn and Save enabled for a
  // record with a name.
  void update() {
    WatermarkData& r = record_;
    r.isText = c_.text->isChecked();
    r.textString = c_.textString->text().toStdString();
    r.fontName = c_.font->currentData().toString().toStdString();
    r.fontSize = c_.fontSize->value();
    r.filePath = c_.picturePath->text().toStdString();
    r.filename = QFileInfo(c_.picturePath->text()).fileName().toStdString();
    r.angle = c_.angle->value();
    r.density = c_.density->value();
    r.scale = c_.scale->value();
    r.xPos = c_.x->value();
    r.yPos = c_.y->value();
    for (QWidget* w : {static_cast<QWidget*>(c_.textString), static_cast<QWidget*>(c_.font),
                       static_cast<QWidget*>(c_.fontSize), static_cast<QWidget*>(c_.fontColor),
                       static_cast<QWidget*>(c_.wellColor)}) {
      w->setEnabled(r.isText);
    }
    c_.choosePicture->setEnabled(!r.isText);
    c_.picturePath->setEnabled(!r.isText);
    c_.save->setEnabled(!r.name().empty());
    if (c_.preview) c_.preview->setRecord(r);
  }

  void choosePicture() {
    // Qt's own dialog, as the job ticket's import uses: the same on every desktop.
    QFileDialog files(dialog_, QString(), QFileInfo(c_.picturePath->text()).absolutePath(),
                      LocalizedText(bundle_, "WatermarkPictureFiles"));
    files.setOption(QFileDialog::DontUseNativeDialog);
    files.setFileMode(QFileDialog::ExistingFile);
    if (files.exec() != QDialog::Accepted || files.selectedFiles().isEmpty()) return;
    c_.picturePath->setText(files.selectedFiles().front());
    update();
  }

  const Bundle* bundle_;
  QDialog* dialog_;
  EditorControls c_;
  WatermarkData record_;
};

}  // namespace

std::optional<std::string> RunModalWatermarkEditor(const Bundle* bundle, QWidget* parent,
                                                   const WatermarkData& record) {
  Status status = kNoErr;
  std::unique_ptr<QDialog> dialog(
      qobject_cast<QDialog*>(LoadView(bundle, "WatermarkEditor", "WatermarkEditor", &status)));
  EditorControls c;
  if (!dialog || !FindControls(dialog.get(), c)) return std::nullopt;
  dialog->setParent(parent, Qt::Dialog);
  SetLocalizedWindowTitle(bundle, "WatermarkEditorTitle", dialog.get());
  if (QWidget* frame = dialog->findChild<QWidget*>("ZWe_preview"); frame && frame->layout()) {
    c.preview = new WatermarkPreview(frame);
    frame->layout()->addWidget(c.preview);
  }
  const std::string previous = record.name();
  Editor editor(bundle, dialog.get(), c, record);
  editor.show();
  editor.connect();
  QObject::connect(c.save, &QPushButton::clicked, dialog.get(), [&editor, &dialog] {
    if (editor.save()) dialog->accept();
  });
  if (auto* cancel = dialog->findChild<QPushButton*>("ZWe_cancel")) {
    QObject::connect(cancel, &QPushButton::clicked, dialog.get(), &QDialog::reject);
  }
  const bool accepted = dialog->exec() == QDialog::Accepted;
  const std::string name = editor.record().name();
  // Gone before the editor its signals reach.
  dialog.reset();
  if (!accepted) return std::nullopt;
  // A renamed watermark leaves no entry under its old name.
  if (!previous.empty() && previous != name) removeWatermarkData(kWatermarkFileName, previous);
  saveWatermarkList(kWatermarkFileName,
                    ListAfterSave(loadWatermarkList(kWatermarkFileName), previous, name));
  return name;
}

}  // namespace zorva

// The preview pane: the plan of the job drawn as a list of small sheets.
#include "preview_pane.h"

#include <poppler-qt6.h>

#include <QFile>
#include <QFontDatabase>
#include <QListWidget>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <span>

#include "core/bundle.h"
#include "print/job_options.h"
#include "ui_PrintPreview.h"
#include "watermarks/jpeg_info.h"
#include "watermarks/watermark_render.h"

namespace zorva {

namespace {

// Pages are drawn at twice the icon's size, so they stay sharp on screens
// that scale.
constexpr double kDrawScale = 2;
// Rendered pages kept; each costs one, whatever its size.
constexpr int kCachedPages = 64;
constexpr QSizeF kLetterPoints{612, 792};

QString Q(const std::string& s) {
  return QString::fromStdString(s);
}

}  // namespace

PreviewPane::PreviewPane(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::PrintPreview>()), pages_(kCachedPages) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* box = new QGroupBox(this);
  ui_->setupUi(box);
  layout->addWidget(box);
  renderTimer_.setSingleShot(true);
  renderTimer_.setInterval(0);
  connect(&renderTimer_, &QTimer::timeout, this, &PreviewPane::renderNextVisible);
  connect(ui_->refreshPreview, &QPushButton::clicked, this, &PreviewPane::refreshRequested);
  connect(ui_->previewItems->verticalScrollBar(), &QScrollBar::valueChanged, this,
          &PreviewPane::scheduleRendering);
}

PreviewPane::~PreviewPane() = default;

void PreviewPane::showMessage(const QString& text) {
  ui_->previewMessage->setText(text);
  ui_->previewMessage->setVisible(!text.isEmpty());
}

QString PreviewPane::message() const {
  return ui_->previewMessage->text();
}

QString PreviewPane::setDocument(const std::filesystem::path& pdf) {
  pages_.clear();
  // The pane says once what is wrong; the library's own diagnostics of a
  // broken file would only repeat it on the terminal.
  Poppler::setDebugErrorFunction([](const QString&, const QVariant&) {}, QVariant());
  document_ = Poppler::Document::load(Q(pdf.string()));
  QString message;
  if (!document_) {
    message = QStringLiteral("No preview: %1 cannot be read as a PDF document.")
                  .arg(Q(pdf.filename().string()));
  } else if (document_->isLocked()) {
    document_.reset();
    message = QStringLiteral("No preview: %1 is protected by a password.")
                  .arg(Q(pdf.filename().string()));
  } else {
    document_->setRenderHint(Poppler::Document::Antialiasing);
    document_->setRenderHint(Poppler::Document::TextAntialiasing);
    // No paper of Poppler's own: the sheet's colour shows through, and a
    // watermark under the page's marks stays visible.
    document_->setRenderHint(Poppler::Document::IgnorePaperColor);
  }
  showMessage(message);
  return message;
}

void PreviewPane::setSettings(const Ticket& settings, const PPD* ppd) {
  PreviewInput input;
  input.pageCount = document_ ? document_->numPages() : 0;
  settings.getNumber(tkey::kPMFirstPage, input.firstPage);
  settings.getNumber(tkey::kPMLastPage, input.lastPage);
  plan_ = BuildPreviewPlan(settings, input, ppd);

  record_.reset();
  picture_ = QImage();
  pictureInfo_.reset();
  QString watermarkText;
  if (plan_.watermark) {
    WatermarkData record;
    if (loadWatermarkData(kWatermarkFileName, plan_.watermark->name, record)) {
      record_ = record;
      if (!record.isText) {
        QFile file(Q(record.filePath));
        if (file.open(QIODevice::ReadOnly)) {
          const QByteArray bytes = file.readAll();
          pictureInfo_ =
              ReadJpegInfo(std::span(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                                     static_cast<std::size_t>(bytes.size())),
                           nullptr);
          picture_.loadFromData(bytes);
        }
      }
      watermarkText = QStringLiteral("; watermark \u201c%1\u201d%2")
                          .arg(Q(plan_.watermark->name), plan_.watermark->firstPageOnly
                                                             ? QStringLiteral(" on the first page")
                                                             : QString());
    } else {
      watermarkText = QStringLiteral("; watermark \u201c%1\u201d is not in the store")
                          .arg(Q(plan_.watermark->name));
    }
  }
  ui_->previewSummary->setText(
      document_ ? QStringLiteral("%1 sheets and pages%2%3")
                      .arg(plan_.items.size())
                      .arg(plan_.booklet ? QStringLiteral(", booklet") : QString(), watermarkText)
                : QString());
  rebuildRows();
}

void PreviewPane::rebuildRows() {
  QListWidget* list = ui_->previewItems;
  list->clear();
  rows_.clear();
  if (!document_) return;
  const Bundle* bundle = GetPDEBundle();
  const QSize icon = list->iconSize();
  QPixmap empty(icon);
  empty.fill(Qt::transparent);
  const auto add = [&](Row row, const QString& text) {
    rows_.push_back(std::move(row));
    new QListWidgetItem(QIcon(empty), text, list);
  };
  for (const PreviewItem& item : plan_.items) {
    const PreviewItemText text = DescribePreviewItem(item, bundle);
    Row row;
    row.faces = {item.frontPage != 0 ? item.frontPage : item.backPage};
    if (item.kind != PreviewItemKind::DocumentPage) row.tint = StockTint(item.stock);
    add(std::move(row), Q(text.kind + "\n" + text.paper + "\n" + text.sides));
  }
  for (const BookletSide& side : plan_.bookletSides) {
    const auto page = [](std::int32_t p) {
      return p != 0 ? QString::number(p) : QStringLiteral("blank");
    };
    add(Row{{side.left, side.right}, std::nullopt, {}},
        QStringLiteral("Booklet sheet %1, %2\nPages %3 | %4")
            .arg(side.sheet)
            .arg(side.front ? QStringLiteral("front") : QStringLiteral("back"), page(side.left),
                 page(side.right)));
  }
  scheduleRendering();
}

int PreviewPane::rowCount() const {
  return static_cast<int>(rows_.size());
}

QString PreviewPane::rowText(int row) const {
  const QListWidgetItem* item = ui_->previewItems->item(row);
  return item != nullptr ? item->text() : QString();
}

QImage PreviewPane::rowImage(int row) const {
  return row >= 0 && row < rowCount() ? rows_[static_cast<std::size_t>(row)].image : QImage();
}

QSizeF PreviewPane::pageSize(int page) const {
  if (document_ && page >= 1 && page <= document_->numPages()) {
    if (std::unique_ptr<Poppler::Page> p = document_->page(page - 1)) {
      const QSizeF size = p->pageSizeF();
      if (size.width() > 0 && size.height() > 0) return size;
    }
  }
  return kLetterPoints;
}

void PreviewPane::scheduleRendering() {
  if (!rows_.empty()) renderTimer_.start();
}

void PreviewPane::renderNextVisible() {
  QListWidget* list = ui_->previewItems;
  const QRect view = list->viewport()->rect();
  for (int row = 0; row < rowCount(); ++row) {
    if (!rows_[static_cast<std::size_t>(row)].image.isNull()) continue;
    if (!list->visualItemRect(list->item(row)).intersects(view)) continue;
    renderRow(row);
    renderTimer_.start();  // the next one on the next turn
    return;
  }
}

void PreviewPane::renderAll() {
  for (int row = 0; row < rowCount(); ++row) {
    if (rows_[static_cast<std::size_t>(row)].image.isNull()) renderRow(row);
  }
}

const QImage* PreviewPane::pageImage(std::int32_t page) {
  if (QImage* cached = pages_.object(page)) return cached;
  if (!document_ || page < 1 || page > document_->numPages()) return nullptr;
  std::unique_ptr<Poppler::Page> p = document_->page(page - 1);
  if (!p) return nullptr;
  const QSizeF points = p->pageSizeF();
  const QSize icon = ui_->previewItems->iconSize();
  const double scale = std::min(icon.width() / points.width(), icon.height() / points.height());
  const double dpi = 72 * scale * kDrawScale;
  auto* image = new QImage(p->renderToImage(dpi, dpi));
  if (image->isNull()) {
    delete image;
    return nullptr;
  }
  pages_.insert(page, image);
  return pages_.object(page);
}

void PreviewPane::renderRow(int row) {
  Row& r = rows_[static_cast<std::size_t>(row)];
  // Each face is as large as the page it shows (a blank one as the first page).
  std::vector<QSizeF> sizes;
  double width = 0;
  double height = 0;
  for (std::int32_t face : r.faces) {
    sizes.push_back(pageSize(face != 0 ? face : 1));
    width += sizes.back().width();
    height = std::max(height, sizes.back().height());
  }
  const QSize icon = ui_->previewItems->iconSize();
  const double scale = std::min(icon.width() / width, icon.height() / height) * kDrawScale;
  QImage sheet(QSize(static_cast<int>(width * scale), static_cast<int>(height * scale)),
               QImage::Format_ARGB32_Premultiplied);
  sheet.fill(r.tint ? QColor((*r.tint)[0], (*r.tint)[1], (*r.tint)[2]) : QColor(Qt::white));
  QPainter painter(&sheet);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  double x = 0;
  for (std::size_t i = 0; i < r.faces.size(); ++i) {
    const std::int32_t page = r.faces[i];
    const QRectF face(x, 0, sizes[i].width() * scale, sizes[i].height() * scale);
    x += face.width();
    const bool watermark = record_ && WatermarkPrintsOn(plan_, page);
    const bool inFront = plan_.watermark && plan_.watermark->inFront;
    if (watermark && !inFront) drawWatermark(painter, face, sizes[i]);
    if (const QImage* image = page != 0 ? pageImage(page) : nullptr) {
      painter.drawImage(face, *image);
    }
    if (watermark && inFront) drawWatermark(painter, face, sizes[i]);
  }
  painter.setPen(QPen(Qt::darkGray, 1));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(QRectF(0.5, 0.5, sheet.width() - 1, sheet.height() - 1));
  if (r.faces.size() == 2) {
    painter.setPen(QPen(Qt::lightGray, 1, Qt::DashLine));
    painter.drawLine(QPointF(sizes[0].width() * scale, 0),
                     QPointF(sizes[0].width() * scale, sheet.height()));
  }
  painter.end();
  r.image = sheet;
  QPixmap pixmap = QPixmap::fromImage(sheet);
  pixmap.setDevicePixelRatio(kDrawScale);
  ui_->previewItems->item(row)->setIcon(QIcon(pixmap));
}

QString PreviewPane::watermarkFamily() {
  const std::string& font = record_->fontName;
  if (auto it = families_.find(font); it != families_.end()) return it->second;
  QString family = Q(std::string(kWatermarkFallbackFont));
  std::vector<std::uint8_t> data;
  if (!font.empty() && loadFontData(kWatermarkFileName, font, data)) {
    const int id = QFontDatabase::addApplicationFontFromData(QByteArray(
        reinterpret_cast<const char*>(data.data()), static_cast<qsizetype>(data.size())));
    const QStringList names = QFontDatabase::applicationFontFamilies(id);
    if (!names.isEmpty()) family = names.first();
  }
  families_[font] = family;
  return family;
}

void PreviewPane::drawWatermark(QPainter& painter, QRectF face, QSizeF pagePoints) {
  const WatermarkData& record = *record_;
  const WatermarkPlacement place =
      PlaceWatermark(record, {pagePoints.width(), pagePoints.height()}, kWatermarkLayoutPage,
                     pictureInfo_ ? &*pictureInfo_ : nullptr);
  const double scale = face.width() / pagePoints.width();
  painter.save();
  painter.setClipRect(face);
  // Points from the lower-left corner to pixels from the upper-left one.
  painter.translate(face.left() + place.x * scale,
                    face.top() + (pagePoints.height() - place.y) * scale);
  painter.rotate(-place.angle);
  if (record.isText) {
    QFont font(watermarkFamily());
    font.setPixelSize(std::max(1, static_cast<int>(place.fontSize * scale + 0.5)));
    painter.setFont(font);
    painter.setPen(QColor::fromRgbF(static_cast<float>(place.red), static_cast<float>(place.green),
                                    static_cast<float>(place.blue)));
    painter.drawText(QPointF(0, 0), Q(record.textString));
  } else if (!picture_.isNull()) {
    // The picture is lightened as the printer lightens it: that far from white.
    painter.setOpacity(place.strength);
    painter.drawImage(QRectF(0, -place.height * scale, place.width * scale, place.height * scale),
                      picture_);
  }
  painter.restore();
}

}  // namespace zorva

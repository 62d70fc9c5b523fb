// The print dialog's preview: the job as the printer will make it, one row
// per sheet or page in output order (covers, inserted sheets, document and
// exception pages, then the booklet's sheet sides when booklet layout is on),
// each labelled with its kind, paper and sides. Document pages are drawn from
// the user's PDF with Poppler on paper tinted like the stock, covers and
// inserts as sheets of their stock's colour, and the chosen watermark where
// the printer's filter puts it, from the same stored record.
//
// Rendering is bounded so a long PDF never freezes the dialog: only rows in
// view are drawn, one per turn of the event loop, and pages are cached.
#pragma once

#include <QCache>
#include <QImage>
#include <QTimer>
#include <QWidget>
#include <array>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "core/ticket.h"
#include "print/preview_plan.h"
#include "watermarks/jpeg_info.h"
#include "watermarks/watermark_store.h"

namespace Poppler {
class Document;
}
namespace Ui {
class PrintPreview;
}

namespace zorva {

class PPD;

class PreviewPane : public QWidget {
  Q_OBJECT

 public:
  explicit PreviewPane(QWidget* parent = nullptr);
  ~PreviewPane() override;

  // Opens the PDF; an empty string, or the one message the pane shows when
  // it cannot be read.
  QString setDocument(const std::filesystem::path& pdf);
  // Plans the job anew from the settings (ppd: the printer's default sides)
  // and redraws.
  void setSettings(const Ticket& settings, const PPD* ppd);

  // Draws every row now (for pictures of the dialog and for tests).
  void renderAll();

  const PreviewPlan& plan() const { return plan_; }
  int rowCount() const;
  QString rowText(int row) const;
  // The row's drawn sheet; null until the row has been drawn.
  QImage rowImage(int row) const;
  QString message() const;
  // The document page's size in points (Letter when the document has none).
  QSizeF pageSize(int page) const;

 signals:
  // The user asked for the panels' current settings to be shown.
  void refreshRequested();

 private:
  struct Row {
    std::vector<std::int32_t> faces;  // document pages side by side; 0: blank
    std::optional<std::array<std::uint8_t, 3>> tint;
    QImage image;
  };

  void rebuildRows();
  void scheduleRendering();
  void renderNextVisible();
  void renderRow(int row);
  const QImage* pageImage(std::int32_t page);
  void drawWatermark(QPainter& painter, QRectF face, QSizeF pagePoints);
  QString watermarkFamily();
  void showMessage(const QString& text);

  std::unique_ptr<Ui::PrintPreview> ui_;
  std::unique_ptr<Poppler::Document> document_;
  PreviewPlan plan_;
  std::vector<Row> rows_;
  QCache<std::int32_t, QImage> pages_;
  QTimer renderTimer_;
  std::optional<WatermarkData> record_;
  QImage picture_;
  std::optional<JpegInfo> pictureInfo_;      // the picture's facts, for its placement
  std::map<std::string, QString> families_;  // stored fonts added to Qt, by name
};

}  // namespace zorva

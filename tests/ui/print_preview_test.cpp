// zorva-print's preview, in this process on the offscreen platform with the
// real plug-in and a private CUPS server: a PDF made here with Qt's PDF
// writer, a ticket with a front cover, an insert and an exception range, and
// a stored watermark. The rows name each sheet in output order with its
// paper and sides, covers and inserts come out on their stock's colour, and
// the watermark's ink lies where the placement puts it, on the pages it
// prints on. A file Poppler cannot read gives one message.
#include <cups/cups.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFont>
#include <QPainter>
#include <QPdfWriter>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTest>
#include <cstdlib>

#include "model/special_page_lists.h"
#include "plugin_host.h"
#include "preview_pane.h"
#include "print/presets.h"
#include "print/preview_plan.h"
#include "print_window.h"
#include "support/recording_queue.h"
#include "watermarks/jpeg_info.h"
#include "watermarks/watermark_choice.h"
#include "watermarks/watermark_render.h"
#include "watermarks/watermark_store.h"

namespace zorva::test {
namespace {

constexpr int kPages = 5;
constexpr std::int32_t kBlue = 2;
constexpr std::int32_t kYellow = 3;
constexpr std::int32_t kPink = 5;
constexpr const char* kWatermark = "DRAFT";
// A second watermark over the first grey bar of the pages, 12 points tall from
// this distance below the top.
constexpr const char* kOverBars = "OVER";
constexpr double kFirstBarTop = 440;

// A Letter-size document: each page a heading with its number and lines of
// grey text below the watermark's place, all in black and grey.
void WritePdf(const std::filesystem::path& file) {
  QPdfWriter writer(QString::fromStdString(file.string()));
  writer.setPageSize(QPageSize(QPageSize::Letter));
  writer.setPageMargins(QMarginsF());
  writer.setResolution(72);
  QPainter painter(&writer);
  QFont heading("DejaVu Sans");
  heading.setPixelSize(48);
  heading.setBold(true);
  for (int page = 1; page <= kPages; ++page) {
    if (page > 1) writer.newPage();
    painter.setFont(heading);
    painter.setPen(Qt::black);
    painter.drawText(QRectF(0, 330, 612, 80), Qt::AlignCenter, QStringLiteral("Page %1").arg(page));
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::gray);
    for (int line = 0; line < 14; ++line) {
      painter.drawRect(QRectF(72, kFirstBarTop + line * 20, line % 5 == 4 ? 280 : 468, 12));
    }
  }
}

// A red text watermark, upright, in the layout page's upper half.
WatermarkData RedWatermark() {
  WatermarkData w;
  w.isText = true;
  w.textString = kWatermark;
  w.fontSize = 72;
  w.scale = 100;
  w.density = 100;
  w.wellColorRed = 1;
  w.wellColorAlpha = 1;
  w.xPos = 150;
  w.yPos = 600;
  return w;
}

WatermarkData OverBars() {
  WatermarkData w = RedWatermark();
  w.textString = kOverBars;
  w.xPos = 100;
  w.yPos = 792 - kFirstBarTop - 12;  // the baseline at the bar's lower edge
  return w;
}

// Cover (blue, printed on its front), one yellow sheet after page 2, pages
// 3-4 two-sided as an exception, and the watermark.
Ticket PreviewTicket(bool firstPageOnly, bool inFront = false, const char* watermark = kWatermark) {
  Ticket t;
  auto front = std::make_unique<Cover>();
  front->setSidesImaged(2);
  front->stock()->setColor(kBlue);
  std::unique_ptr<Cover> back;
  SyncCovers(t, SyncDirection::ToTicket, front, back);
  InsertList inserts;
  Insert insert;
  insert.setStartPage(2);
  insert.stock()->setColor(kYellow);
  inserts.add(insert);
  SyncSpecialPageList(t, SyncDirection::ToTicket, tkey::kInsertList, inserts);
  ExceptionPageList exceptions;
  ExceptionPage range;
  range.setStartPage(3);
  range.setEndPage(4);
  range.setPlex(2);
  range.stock()->setColor(kPink);
  exceptions.add(range);
  SyncSpecialPageList(t, SyncDirection::ToTicket, tkey::kExceptionList, exceptions);
  t.setString(kTicketClientPrint, tkey::kWatermarkName, watermark);
  if (firstPageOnly) t.setBoolean(kTicketClientPrint, tkey::kWatermarkFirstPageOnly, true);
  if (inFront) t.setBoolean(kTicketClientPrint, tkey::kWatermarkInFront, true);
  return t;
}

bool IsInk(QRgb c) {
  return qRed(c) > 180 && qGreen(c) < 90 && qBlue(c) < 90;
}

// Whether ink lies in the box the watermark's first letters cover: from its
// origin along the baseline, up to half the text size above it.
bool InkWherePlaced(const QImage& image, const WatermarkPlacement& place, double pageWidth) {
  const double scale = image.width() / pageWidth;
  const double pageHeight = image.height() / scale;
  const int x0 = static_cast<int>(place.x * scale);
  const int baseline = static_cast<int>((pageHeight - place.y) * scale);
  const int size = static_cast<int>(place.fontSize * scale);
  for (int y = baseline - size / 2; y <= baseline; ++y) {
    for (int x = x0; x < x0 + size; ++x) {
      if (image.valid(x, y) && IsInk(image.pixel(x, y))) return true;
    }
  }
  return false;
}

bool AnyInk(const QImage& image) {
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (IsInk(image.pixel(x, y))) return true;
    }
  }
  return false;
}

QRgb Corner(const QImage& image) {
  return image.pixel(image.width() / 10, image.height() - image.height() / 10);
}

class PrintPreviewTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string reason;
    if (!queue_.start(&reason)) GTEST_SKIP() << reason;
    cupsSetServer(queue_.server().c_str());
    prefs_.emplace("ZORVA_PREFERENCES_DIR", (dir_ / "config").string());
    shared_.emplace("ZORVA_SHARED_DIR", (dir_ / "shared").string());
    std::filesystem::create_directories(dir_ / "shared");
    ASSERT_EQ(saveWatermarkData(kWatermarkFileName, RedWatermark()), 0);
    ASSERT_EQ(saveWatermarkData(kWatermarkFileName, OverBars()), 0);
    ASSERT_EQ(saveWatermarkList(kWatermarkFileName, {kWatermark, kOverBars}), 0);
    WritePdf(dir_ / "doc.pdf");
  }
  void TearDown() override { cupsSetServer(nullptr); }

  RecordingQueue queue_;
  TempDir dir_;
  std::optional<ScopedEnv> prefs_;
  std::optional<ScopedEnv> shared_;
  Dialog plugin_;
};

TEST_F(PrintPreviewTest, RowsShowCoverInsertAndExceptionPagesWithTheWatermark) {
  PrintWindow window(plugin_.ops(), dir_ / "doc.pdf", PreviewTicket(false));
  ASSERT_EQ(window.start(RecordingQueue::kQueue), "");
  window.show();
  PreviewPane* preview = window.preview();
  ASSERT_NE(preview, nullptr);
  EXPECT_EQ(preview->message(), "");
  const QStringList expected = {
      "Front Cover\nBlue\nPrint on Front",
      "Page 2\nPrinter Default\n1-Sided",  // the printer's default
      "Insert sheet 1 of 1 after page 2\nYellow\nBlank (Print on Neither Side)",
      "Page 3 (exception pages 3-4)\nPink\n2-Sided",
      "Page 4 (exception pages 3-4)\nPink\n2-Sided",
      "Page 5\nPrinter Default\n1-Sided",
  };
  ASSERT_EQ(preview->rowCount(), expected.size());
  for (int row = 0; row < preview->rowCount(); ++row) {
    EXPECT_EQ(preview->rowText(row), expected[row]) << row;
  }

  // Rows in view are drawn by the event loop, without being asked.
  QTRY_VERIFY_WITH_TIMEOUT(!preview->rowImage(0).isNull(), 5000);
  preview->renderAll();
  const QSizeF letter = preview->pageSize(1);
  EXPECT_EQ(letter, QSizeF(612, 792));
  const WatermarkPlacement place =
      PlaceWatermark(RedWatermark(), {letter.width(), letter.height()});
  for (int row : {0, 1, 3, 5}) {  // the cover carries page 1; every page prints it
    EXPECT_TRUE(InkWherePlaced(preview->rowImage(row), place, letter.width())) << row;
  }
  const QImage insert = preview->rowImage(2);
  EXPECT_FALSE(AnyInk(insert)) << "a blank inserted sheet gets no watermark";
  Stock yellow;
  yellow.setColor(kYellow);
  const auto tint = *StockTint(yellow);
  EXPECT_EQ(QColor(Corner(insert)), QColor(tint[0], tint[1], tint[2])) << "yellow paper";
  const QColor cover(Corner(preview->rowImage(0)));
  EXPECT_GT(cover.blue(), cover.red()) << "the cover is on blue paper";
  EXPECT_EQ(QColor(Corner(preview->rowImage(1))), QColor(Qt::white));

  // The picture of the dialog in the README.
  if (const char* shot = std::getenv("ZORVA_PREVIEW_SCREENSHOT")) {
    QApplication::processEvents();
    // Colours as they are, compressed hardest: the README shows it.
    window.grab().toImage().convertToFormat(QImage::Format_RGB888).save(shot, "PNG", 0);
  }

  // Printing pages 2 to 3 only: the cover takes page 2, the insert follows it.
  window.findChild<QRadioButton*>()->setChecked(false);
  for (QRadioButton* b : window.findChildren<QRadioButton*>()) {
    if (b->text() == "From") b->setChecked(true);
  }
  window.findChild<QSpinBox*>("toPage")->setValue(3);
  window.findChild<QSpinBox*>("fromPage")->setValue(2);
  ASSERT_EQ(preview->rowCount(), 3);
  EXPECT_TRUE(preview->rowText(0).startsWith("Front Cover"));
  EXPECT_TRUE(preview->rowText(1).startsWith("Insert sheet 1 of 1 after page 2"));
  EXPECT_TRUE(preview->rowText(2).startsWith("Page 3 (exception"));
}

TEST_F(PrintPreviewTest, FirstPageOnlyMarksOnlyTheFirstPrintedPage) {
  PrintWindow window(plugin_.ops(), dir_ / "doc.pdf", PreviewTicket(true));
  ASSERT_EQ(window.start(RecordingQueue::kQueue), "");
  PreviewPane* preview = window.preview();
  ASSERT_TRUE(preview->plan().watermark);
  ASSERT_TRUE(preview->plan().watermark->firstPageOnly);
  preview->renderAll();
  ASSERT_EQ(preview->rowCount(), 6);
  EXPECT_TRUE(AnyInk(preview->rowImage(0)));
  for (int row = 1; row < preview->rowCount(); ++row) {
    EXPECT_FALSE(AnyInk(preview->rowImage(row))) << row;
  }
}

TEST_F(PrintPreviewTest, InFrontDrawsOverThePagesMarksBehindUnderThem) {
  // The middle of the first grey bar, where the watermark's letters cross it.
  const auto inkOnBar = [](const QImage& image) {
    const double scale = image.width() / 612.0;
    const int y = static_cast<int>((kFirstBarTop + 6) * scale);
    int ink = 0;
    for (int x = static_cast<int>(100 * scale); x < static_cast<int>(200 * scale); ++x) {
      if (IsInk(image.pixel(x, y))) ++ink;
    }
    return ink;
  };
  for (bool inFront : {false, true}) {
    PrintWindow window(plugin_.ops(), dir_ / "doc.pdf", PreviewTicket(false, inFront, kOverBars));
    ASSERT_EQ(window.start(RecordingQueue::kQueue), "");
    PreviewPane* preview = window.preview();
    ASSERT_TRUE(preview->plan().watermark);
    EXPECT_EQ(preview->plan().watermark->inFront, inFront);
    preview->renderAll();
    const QImage page2 = preview->rowImage(1);
    if (inFront) {
      EXPECT_GT(inkOnBar(page2), 0) << "over the bar";
    } else {
      EXPECT_EQ(inkOnBar(page2), 0) << "hidden by the bar";
      EXPECT_TRUE(AnyInk(page2)) << "but drawn";
    }
  }
}

TEST_F(PrintPreviewTest, BookletSheetsFollowTheRowsWithTheirPairsOfPages) {
  Ticket t = PreviewTicket(false);
  t.setBoolean(kTicketClientPrint, tkey::kBookletLayout, true);
  PrintWindow window(plugin_.ops(), dir_ / "doc.pdf", t);
  ASSERT_EQ(window.start(RecordingQueue::kQueue), "");
  PreviewPane* preview = window.preview();
  ASSERT_TRUE(preview->plan().booklet);
  // The cover takes page 1; pages 2-5 make one sheet.
  ASSERT_EQ(preview->rowCount(), 6 + 2);
  EXPECT_EQ(preview->rowText(6), "Booklet sheet 1, front\nPages 5 | 2");
  EXPECT_EQ(preview->rowText(7), "Booklet sheet 1, back\nPages 3 | 4");
  preview->renderAll();
  const QImage sheet = preview->rowImage(6);
  EXPECT_GT(sheet.width(), sheet.height()) << "two pages side by side";
  // Both halves carry the watermark at its place on their own page.
  const WatermarkPlacement place = PlaceWatermark(RedWatermark(), {612, 792});
  const QImage left = sheet.copy(0, 0, sheet.width() / 2, sheet.height());
  const QImage right = sheet.copy(sheet.width() / 2, 0, sheet.width() / 2, sheet.height());
  EXPECT_TRUE(InkWherePlaced(left, place, 612));
  EXPECT_TRUE(InkWherePlaced(right, place, 612));
}

TEST_F(PrintPreviewTest, SwitchingPanelsShowsWhatThePanelLeftBehind) {
  PrintWindow window(plugin_.ops(), dir_ / "doc.pdf", Ticket());
  ASSERT_EQ(window.start(RecordingQueue::kQueue), "");
  PreviewPane* preview = window.preview();
  ASSERT_FALSE(preview->plan().booklet);
  auto* booklet = window.findChild<QCheckBox*>("ZPpo_10");  // Paper/Output: Booklet Layout
  ASSERT_NE(booklet, nullptr);
  booklet->click();
  EXPECT_FALSE(preview->plan().booklet) << "not before the panel is left";
  auto* tabs = window.findChild<QComboBox*>("Zshl_16");
  ASSERT_NE(tabs, nullptr);
  const int other = tabs->currentIndex() == 0 ? 1 : 0;
  tabs->setCurrentIndex(other);
  emit tabs->activated(other);
  QTRY_VERIFY_WITH_TIMEOUT(preview->plan().booklet, 5000);
  EXPECT_EQ(preview->rowCount(), kPages + 4);  // the pages, then two sheets' sides
}

TEST_F(PrintPreviewTest, APictureWatermarkLiesWhereItsPlacementPutsIt) {
  // A red JPEG, 144 by 72 pixels at 72 per inch: two inches by one.
  QImage red(144, 72, QImage::Format_RGB32);
  red.fill(Qt::red);
  red.setDotsPerMeterX(2835);
  red.setDotsPerMeterY(2835);
  const std::filesystem::path jpeg = dir_ / "red.jpg";
  ASSERT_TRUE(red.save(QString::fromStdString(jpeg.string()), "JPEG", 95));
  WatermarkData picture = RedWatermark();
  picture.isText = false;
  picture.textString.clear();
  picture.filename = "red.jpg";
  picture.filePath = jpeg.string();
  picture.xPos = 300;
  picture.yPos = 600;  // above the heading, clear of the page's marks
  ASSERT_EQ(saveWatermarkData(kWatermarkFileName, picture), 0);
  PrintWindow window(plugin_.ops(), dir_ / "doc.pdf", PreviewTicket(false, false, "red.jpg"));
  ASSERT_EQ(window.start(RecordingQueue::kQueue), "");
  PreviewPane* preview = window.preview();
  preview->renderAll();
  const std::string bytes = ReadText(jpeg);
  const std::optional<JpegInfo> info = ReadJpegInfo(
      std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()), nullptr);
  ASSERT_TRUE(info);
  const WatermarkPlacement place =
      PlaceWatermark(picture, {612, 792}, kWatermarkLayoutPage, &*info);
  ASSERT_GT(place.width, 0);
  const QImage page2 = preview->rowImage(1);
  const double scale = page2.width() / 612.0;
  const auto at = [&](double x, double y) {
    return page2.pixel(static_cast<int>(x * scale), static_cast<int>((792 - y) * scale));
  };
  EXPECT_TRUE(IsInk(at(place.x + place.width / 2, place.y + place.height / 2)));
  EXPECT_FALSE(IsInk(at(place.x + place.width * 1.5, place.y + place.height / 2)));
  EXPECT_FALSE(IsInk(at(place.x + place.width / 2, place.y + place.height * 1.5)));
}

TEST_F(PrintPreviewTest, APresetShowsAtOnceAndRefreshKeepsWhatThePanelsHold) {
  ASSERT_TRUE(SavePreset("Special", PreviewTicket(false), nullptr));
  PrintWindow window(plugin_.ops(), dir_ / "doc.pdf", Ticket());
  ASSERT_EQ(window.start(RecordingQueue::kQueue), "");
  PreviewPane* preview = window.preview();
  EXPECT_EQ(preview->rowCount(), kPages);
  EXPECT_FALSE(preview->plan().watermark);
  auto* presets = window.findChild<QComboBox*>("presets");
  const int special = presets->findText("Special");
  ASSERT_GE(special, 0);
  presets->setCurrentIndex(special);
  emit presets->activated(special);
  ASSERT_EQ(preview->rowCount(), 6);
  ASSERT_TRUE(preview->plan().watermark);
  // Refresh saves the panels' settings first: the watermark the Booklet/
  // Watermark panel read from the preset comes back from it.
  auto* refresh = preview->findChild<QPushButton*>("refreshPreview");
  ASSERT_NE(refresh, nullptr);
  QTest::mouseClick(refresh, Qt::LeftButton);
  EXPECT_EQ(preview->rowCount(), 6);
  ASSERT_TRUE(preview->plan().watermark);
  EXPECT_EQ(preview->plan().watermark->name, kWatermark);
}

TEST_F(PrintPreviewTest, ADocumentPopplerCannotReadGivesOneMessage) {
  struct Case {
    const char* name;
    std::string content;
  };
  const Case cases[] = {
      {"notes.txt", "not a PDF\n"},
      {"cut.pdf", "%PDF-1.4\n1 0 obj << /Type /Catalog >> endobj\n%%EOF\n"},
      {"empty.pdf", ""},
  };
  for (const Case& c : cases) {
    WriteText(dir_ / c.name, c.content);
    PrintWindow window(plugin_.ops(), dir_ / c.name, PreviewTicket(false));
    ASSERT_EQ(window.start(RecordingQueue::kQueue), "") << c.name;
    PreviewPane* preview = window.preview();
    EXPECT_EQ(preview->message(),
              QStringLiteral("No preview: %1 cannot be read as a PDF document.").arg(c.name));
    EXPECT_EQ(preview->rowCount(), 0);
    preview->renderAll();
  }
  PrintWindow missing(plugin_.ops(), dir_ / "none.pdf", std::nullopt);
  EXPECT_FALSE(missing.preview()->message().isEmpty());
}

}  // namespace
}  // namespace zorva::test

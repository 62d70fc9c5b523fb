// The Booklet/Watermark panel in the real module: the defaults on an empty
// ticket and an empty watermark store, every booklet control written to its
// key and read back, the watermark menu, and the watermark editor saving a
// text watermark (with its font) and a picture watermark, renaming and
// deleting, all through the watermark store.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QImage>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

#include "core/ticket_keys.h"
#include "modal_driver.h"
#include "panels/booklet_watermark.h"
#include "plugin_host.h"
#include "support/test_support.h"
#include "watermarks/watermark_store.h"

namespace zorva::test {
namespace {

namespace key = tkey;
constexpr int kBookletTab = 5;

class BookletWatermarkPanelTest : public ::testing::Test {
 protected:
  void open() {
    dialog.start();
    dialog.showPanel(kBookletTab);
  }
  template <typename T>
  T* control(int number) {
    T* w = dialog.find<T>(QStringLiteral("ZBw_%1").arg(number));
    EXPECT_NE(w, nullptr) << number;
    return w;
  }
  QComboBox* menu() { return control<QComboBox>(7); }
  // What a click on a menu item does.
  void choose(const QString& text) {
    const int at = menu()->findText(text);
    ASSERT_GE(at, 0) << text.toStdString();
    menu()->setCurrentIndex(at);
    emit menu()->activated(at);
  }
  QStringList items() {
    QStringList texts;
    for (int i = 0; i < menu()->count(); ++i) texts << menu()->itemText(i);
    return texts;
  }
  bool enabled(const QString& text) {
    auto* model = qobject_cast<QStandardItemModel*>(menu()->model());
    return model->item(menu()->findText(text))->isEnabled();
  }
  static std::vector<std::string> list() { return loadWatermarkList(kWatermarkFileName); }

  TempDir shared;
  ScopedEnv env{"ZORVA_SHARED_DIR", shared.path().string()};
  Dialog dialog;
};

TEST_F(BookletWatermarkPanelTest, AnEmptyTicketAndStoreShowTheDefaults) {
  open();
  EXPECT_FALSE(control<QCheckBox>(1)->isChecked());
  EXPECT_EQ(control<QSpinBox>(2)->value(), 24);
  EXPECT_FALSE(control<QSpinBox>(2)->isEnabled()) << "booklet settings apply to a booklet";
  EXPECT_EQ(control<QSpinBox>(3)->value(), 0);
  EXPECT_FALSE(control<QCheckBox>(4)->isChecked());
  EXPECT_EQ(control<QComboBox>(5)->currentData(Qt::UserRole).toInt(), 0);
  EXPECT_FALSE(control<QCheckBox>(6)->isChecked());
  EXPECT_EQ(list(), (std::vector<std::string>{"Draft", "Confidential", "Copy"}));
  EXPECT_EQ(items(), (QStringList{"None", "Draft", "Confidential", "Copy", "", "Options...",
                                  "New...", "Edit...", "Delete"}));
  EXPECT_EQ(menu()->currentIndex(), 0);
  EXPECT_FALSE(enabled("Edit..."));
  ASSERT_EQ(dialog.sync(false), kNoErr);
  std::int32_t gutter = 0;
  EXPECT_TRUE(dialog.ticket().getNumber(key::kGutter, gutter));
  EXPECT_EQ(gutter, 24);
  EXPECT_EQ(dialog.ticket().getBoolean(key::kBookletLayout), false);
  EXPECT_FALSE(dialog.ticket().contains(key::kWatermarkName));
}

TEST_F(BookletWatermarkPanelTest, EveryControlIsWrittenToItsKeyAndReadBack) {
  open();
  control<QCheckBox>(1)->setChecked(true);
  EXPECT_TRUE(control<QSpinBox>(2)->isEnabled());
  control<QSpinBox>(2)->setValue(40);
  control<QSpinBox>(3)->setValue(3);
  control<QCheckBox>(4)->setChecked(true);
  QComboBox* fold = control<QComboBox>(5);
  fold->setCurrentIndex(fold->findData(14, Qt::UserRole));
  control<QCheckBox>(6)->setChecked(true);
  choose("Confidential");
  EXPECT_TRUE(enabled("Edit..."));
  ASSERT_EQ(dialog.sync(false), kNoErr);
  const BookletSettings written = ReadBookletSettings(dialog.ticket());
  EXPECT_EQ(written, (BookletSettings{true, 1, 40, 3, 14, true, "Confidential"}));
  // Read back into a panel showing other values.
  control<QCheckBox>(1)->setChecked(false);
  control<QSpinBox>(2)->setValue(10);
  fold->setCurrentIndex(0);
  choose("None");
  ASSERT_EQ(dialog.sync(true), kNoErr);
  EXPECT_TRUE(control<QCheckBox>(1)->isChecked());
  EXPECT_EQ(control<QSpinBox>(2)->value(), 40);
  EXPECT_EQ(fold->currentData(Qt::UserRole).toInt(), 14);
  EXPECT_EQ(menu()->currentText(), "Confidential");
}

TEST_F(BookletWatermarkPanelTest, ANewTextWatermarkIsSavedWithItsFont) {
  open();
  ModalDriver driver({[&](QWidget* editor) {
    editor->findChild<QLineEdit*>("ZWe_3")->setText("PROOF");
    auto* font = editor->findChild<QComboBox*>("ZWe_4");
    font->setCurrentIndex(font->findData("DejaVuSans-Bold"));
    ASSERT_GE(font->currentIndex(), 0);
    editor->findChild<QSpinBox*>("ZWe_5")->setValue(60);
    editor->findChild<QSpinBox*>("ZWe_8")->setValue(30);
    editor->findChild<QSpinBox*>("ZWe_9")->setValue(40);
    editor->findChild<QSpinBox*>("ZWe_10")->setValue(150);
    editor->findChild<QDoubleSpinBox*>("ZWe_11")->setValue(100);
    editor->findChild<QDoubleSpinBox*>("ZWe_12")->setValue(200);
    SavePicture(editor, "watermark-editor.png");
    Press(editor, "ZWe_ok");
  }});
  choose("New...");
  EXPECT_TRUE(driver.done());
  EXPECT_EQ(list().back(), "PROOF");
  WatermarkData saved;
  ASSERT_TRUE(loadWatermarkData(kWatermarkFileName, "PROOF", saved));
  EXPECT_TRUE(saved.isText);
  EXPECT_EQ(saved.fontName, "DejaVuSans-Bold");
  EXPECT_EQ(saved.fontSize, 60);
  EXPECT_EQ(saved.angle, 30);
  EXPECT_EQ(saved.density, 40);
  EXPECT_EQ(saved.scale, 150);
  EXPECT_DOUBLE_EQ(saved.xPos, 100);
  EXPECT_DOUBLE_EQ(saved.yPos, 200);
  // The defaults' colours came along.
  EXPECT_FLOAT_EQ(saved.fontColorBlue, 1.0f);
  std::vector<std::uint8_t> font;
  EXPECT_TRUE(loadFontData(kWatermarkFileName, "DejaVuSans-Bold", font));
  EXPECT_GT(font.size(), 10000u);
  EXPECT_EQ(menu()->currentText(), "PROOF");
  ASSERT_EQ(dialog.sync(false), kNoErr);
  EXPECT_EQ(*dialog.ticket().getString(key::kWatermarkName), "PROOF");
}

TEST_F(BookletWatermarkPanelTest, APictureWatermarkIsSavedUnderItsFileName) {
  const std::filesystem::path picture = shared.path() / "logo.png";
  QImage image(40, 20, QImage::Format_RGB32);
  image.fill(Qt::darkGreen);
  ASSERT_TRUE(image.save(QString::fromStdString(picture.string())));
  open();
  ModalDriver driver(
      {[&](QWidget* editor) {
         editor->findChild<QRadioButton*>("ZWe_2")->setChecked(true);
         EXPECT_FALSE(editor->findChild<QWidget*>("ZWe_3")->isEnabled());
         EXPECT_FALSE(editor->findChild<QPushButton*>("ZWe_ok")->isEnabled()) << "no picture yet";
         // Clicked once this step is over: the driver answers no
         // window that opens inside one of its steps.
         QTimer::singleShot(0, editor->findChild<QPushButton*>("ZWe_7"), &QPushButton::click);
       },
       [&](QWidget* files) { ChooseFile(files, picture.string()); },
       // The editor again once the file is chosen.
       [&](QWidget* editor) { Press(editor, "ZWe_ok"); }});
  choose("New...");
  EXPECT_TRUE(driver.done());
  WatermarkData saved;
  ASSERT_TRUE(loadWatermarkData(kWatermarkFileName, "logo.png", saved));
  EXPECT_FALSE(saved.isText);
  EXPECT_EQ(saved.filePath, picture.string());
  EXPECT_EQ(list().back(), "logo.png");
}

TEST_F(BookletWatermarkPanelTest, EditingRenamesInPlaceAndDeletingRemoves) {
  open();
  choose("Draft");
  ModalDriver driver({[&](QWidget* editor) {
    auto* text = editor->findChild<QLineEdit*>("ZWe_3");
    EXPECT_EQ(text->text(), "Draft");
    text->setText("Draft 2");
    Press(editor, "ZWe_ok");
  }});
  choose("Edit...");
  EXPECT_TRUE(driver.done());
  EXPECT_EQ(list(), (std::vector<std::string>{"Draft 2", "Confidential", "Copy"}));
  WatermarkData old;
  EXPECT_FALSE(loadWatermarkData(kWatermarkFileName, "Draft", old));
  EXPECT_EQ(menu()->currentText(), "Draft 2");

  ModalDriver confirm({[&](QWidget* question) {
    auto* box = qobject_cast<QMessageBox*>(question);
    ASSERT_NE(box, nullptr);
    box->button(QMessageBox::Yes)->click();
  }});
  choose("Delete");
  EXPECT_TRUE(confirm.done());
  EXPECT_EQ(list(), (std::vector<std::string>{"Confidential", "Copy"}));
  EXPECT_FALSE(loadWatermarkData(kWatermarkFileName, "Draft 2", old));
  EXPECT_EQ(menu()->currentIndex(), 0);
  EXPECT_FALSE(enabled("Delete"));
}

}  // namespace
}  // namespace zorva::test

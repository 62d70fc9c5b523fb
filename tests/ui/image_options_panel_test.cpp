// The Image Options panel in the real module: the defaults on an empty
// ticket, every menu written to its key and read back, values the menus do
// not list kept, the highlight colour, and the image shift and full colour
// dialogs taking their values into the ticket and the job ticket document.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTest>

#include "core/ticket_keys.h"
#include "host/ticket_helpers.h"
#include "jobticket/jotf_export.h"
#include "modal_driver.h"
#include "plugin_host.h"
#include "support/test_support.h"

namespace zorva::test {
namespace {

namespace key = tkey;
constexpr int kImageOptionsTab = 3;

// The panel's menus, in control order, with their keys.
constexpr std::string_view kMenuKeys[] = {
    key::kResolution,     key::kLightenDarken, key::kTonerSaver,       key::kAntialiasing,
    key::kHalftoneScreen, key::kOutputOrder,   key::kPrinterEmulation,
};

class ImageOptionsPanelTest : public ::testing::Test {
 protected:
  void open() {
    dialog.start();
    dialog.showPanel(kImageOptionsTab);
  }
  template <typename T>
  T* control(const char* prefix, int number) {
    T* widget = dialog.find<T>(QStringLiteral("%1_%2").arg(prefix).arg(number));
    EXPECT_NE(widget, nullptr) << prefix << number;
    return widget;
  }
  QComboBox* menu(int number) { return control<QComboBox>("ZImg", number); }
  void press(QWidget* window, const char* name) {
    auto* button = window->findChild<QPushButton*>(name);
    ASSERT_NE(button, nullptr) << name;
    button->click();
  }
  Dialog dialog;
};

TEST_F(ImageOptionsPanelTest, AnEmptyTicketShowsPrinterDefaultsAndWritesNothing) {
  open();
  for (int n = 1; n <= 8; ++n) {
    EXPECT_EQ(menu(n)->currentIndex(), 0) << n;
    EXPECT_EQ(menu(n)->currentText(), "Printer Default") << n;
  }
  EXPECT_FALSE(control<QSpinBox>("ZImg", 9)->isEnabled());
  EXPECT_EQ(control<QLabel>("ZImg", 12)->text(), "No image shift set");
  ASSERT_EQ(dialog.sync(false), kNoErr);
  for (std::string_view k : kMenuKeys) EXPECT_FALSE(dialog.ticket().contains(k)) << k;
  EXPECT_FALSE(dialog.ticket().contains(key::kImageShiftJob));
  EXPECT_FALSE(dialog.ticket().contains(key::kFullColorOptions));
  EXPECT_FALSE(dialog.ticket().contains(key::kHighlightColorOptionsJob));
}

TEST_F(ImageOptionsPanelTest, EveryMenuItemIsWrittenToItsKeyAndReadBack) {
  open();
  for (int n = 1; n <= 7; ++n) {
    QComboBox* popup = menu(n);
    const std::string_view k = kMenuKeys[n - 1];
    for (int item = 1; item < popup->count(); ++item) {
      popup->setCurrentIndex(item);
      ASSERT_EQ(dialog.sync(false), kNoErr);
      const std::int32_t expected = popup->itemData(item, Qt::UserRole).toInt();
      const Value* stored = dialog.ticket().get(k);
      ASSERT_NE(stored, nullptr) << k;
      std::int32_t number = -1;
      if (const std::optional<bool> b = dialog.ticket().getBoolean(k)) {
        number = *b ? 1 : 0;
      } else {
        ASSERT_TRUE(dialog.ticket().getNumber(k, number)) << k;
      }
      EXPECT_EQ(number, expected) << k;
      EXPECT_EQ(dialog.ticket().item(k)->client, "Z");
      popup->setCurrentIndex(0);
      ASSERT_EQ(dialog.sync(true), kNoErr);
      EXPECT_EQ(popup->currentIndex(), item) << k;
    }
    popup->setCurrentIndex(0);
    ASSERT_EQ(dialog.sync(false), kNoErr);
    EXPECT_FALSE(dialog.ticket().contains(k));
  }
}

TEST_F(ImageOptionsPanelTest, AValueNoMenuListsShowsBlankAndIsKept) {
  open();
  dialog.ticket().setNumber("ZORVA", key::kResolution, 9);
  ASSERT_EQ(dialog.sync(true), kNoErr);
  EXPECT_EQ(menu(1)->currentIndex(), -1);
  ASSERT_EQ(dialog.sync(false), kNoErr);
  std::int32_t resolution = 0;
  EXPECT_TRUE(dialog.ticket().getNumber(key::kResolution, resolution));
  EXPECT_EQ(resolution, 9);
}

TEST_F(ImageOptionsPanelTest, TheCustomHighlightColourWritesItsNumber) {
  open();
  QComboBox* highlight = menu(8);
  highlight->setCurrentIndex(highlight->findData(7, Qt::UserRole));
  QSpinBox* number = control<QSpinBox>("ZImg", 9);
  EXPECT_TRUE(number->isEnabled());
  number->setValue(4);
  ASSERT_EQ(dialog.sync(false), kNoErr);
  const Dictionary* h = dialog.ticket().getDictionary(key::kHighlightColorOptionsJob);
  ASSERT_NE(h, nullptr);
  EXPECT_EQ(*h, (Dictionary{{"HiglightPrintingColor", Value(7)},
                            {"HighlightCustomColorIndex", Value(4)}}));
}

TEST_F(ImageOptionsPanelTest, TheImageShiftDialogWritesTheJobsShift) {
  open();
  ModalDriver driver({[&](QWidget* shift) {
    auto* one = shift->findChild<QComboBox*>("ZIsh_1");
    auto* two = shift->findChild<QComboBox*>("ZIsh_2");
    ASSERT_TRUE(one && two);
    one->setCurrentIndex(one->findData(2, Qt::UserRole));
    two->setCurrentIndex(two->findData(1, Qt::UserRole));
    EXPECT_FALSE(shift->findChild<QWidget*>("ZIsh_back")->isEnabled());
    // Millimetres; 1 inch typed first shows as 25.40 mm.
    shift->findChild<QDoubleSpinBox*>("ZIsh_5")->setValue(1.0);
    shift->findChild<QRadioButton*>("ZIsh_4")->setChecked(true);
    EXPECT_DOUBLE_EQ(shift->findChild<QDoubleSpinBox*>("ZIsh_5")->value(), 25.4);
    shift->findChild<QDoubleSpinBox*>("ZIsh_6")->setValue(-3.25);
    SavePicture(shift, "image-shift-dialog.png");
    press(shift, "ZIsh_ok");
  }});
  press(&dialog.pane(), "ZImg_11");
  EXPECT_TRUE(driver.done());
  EXPECT_EQ(control<QLabel>("ZImg", 12)->text(), "Front 25.40, -3.25; back 0.00, 0.00 mm");
  ASSERT_EQ(dialog.sync(false), kNoErr);
  const Dictionary* shift = dialog.ticket().getDictionary(key::kImageShiftJob);
  ASSERT_NE(shift, nullptr);
  EXPECT_EQ(*shift, (Dictionary{{"Option", Value(2)},
                                {"Option2Sided", Value(1)},
                                {"Inches", Value(0)},
                                {"X1", Value(2540)},
                                {"Y1", Value(-325)},
                                {"X2", Value(0)},
                                {"Y2", Value(0)},
                                {"FullPrecision", Value(true)}}));
  const std::string jotf = JOTFDocumentText(JOTFSettingsFromTicket(dialog.ticket()));
  EXPECT_NE(jotf.find("<x-side1-image-shift syntax=\"integer\">2540</x-side1-image-shift>"),
            std::string::npos);
}

TEST_F(ImageOptionsPanelTest, CancellingADialogChangesNothing) {
  open();
  ModalDriver driver({[&](QWidget* color) {
    color->findChild<QSpinBox*>("ZFc_1")->setValue(40);
    press(color, "ZFc_cancel");
  }});
  press(&dialog.pane(), "ZImg_13");
  EXPECT_TRUE(driver.done());
  ASSERT_EQ(dialog.sync(false), kNoErr);
  EXPECT_FALSE(dialog.ticket().contains(key::kFullColorOptions));
}

TEST_F(ImageOptionsPanelTest, TheFullColourSetupShowsTheTicketAndWritesEveryControl) {
  dialog.ticket().setDictionary(
      "ZORVA", key::kFullColorOptions,
      Dictionary{{"FCSaturation", Value(-20)}, {"RGBImagesProfile", Value("Studio RGB")}});
  open();
  EXPECT_EQ(control<QLabel>("ZImg", 14)->text(), "Colour settings changed");
  ModalDriver driver({[&](QWidget* color) {
    const auto spin = [&](int n) {
      return color->findChild<QSpinBox*>(QStringLiteral("ZFc_%1").arg(n));
    };
    const auto popup = [&](int n) {
      return color->findChild<QComboBox*>(QStringLiteral("ZFc_%1").arg(n));
    };
    const auto line = [&](int n) {
      return color->findChild<QLineEdit*>(QStringLiteral("ZFc_%1").arg(n));
    };
    const auto choose = [&](int n, int value) {
      popup(n)->setCurrentIndex(popup(n)->findData(value, Qt::UserRole));
    };
    // What the ticket holds, and "Default" for the rest.
    EXPECT_EQ(spin(3)->value(), -20);
    EXPECT_EQ(spin(1)->text(), "Default");
    EXPECT_EQ(popup(14)->currentData(Qt::UserRole).toInt(), 5);
    EXPECT_EQ(line(15)->text(), "Studio RGB");
    EXPECT_FALSE(line(17)->isEnabled());
    EXPECT_FALSE(spin(8)->isEnabled());
    spin(1)->setValue(10);
    spin(2)->setValue(-100);
    spin(4)->setValue(1);
    spin(5)->setValue(2);
    spin(6)->setValue(3);
    choose(7, 1);
    EXPECT_TRUE(spin(8)->isEnabled());
    spin(8)->setValue(4);
    spin(9)->setValue(20);
    choose(10, 2);
    choose(11, 4);
    choose(12, 5);
    choose(13, 6);
    choose(16, 2);
    choose(18, 3);
    line(19)->setText("Press CMYK");
    choose(20, 1);
    line(22)->setText("Gray 20");
    line(23)->setText("Gray 10");
    choose(24, 2);
    line(25)->setText("Sheetfed");
    line(26)->setText("Linear");
    SavePicture(color, "full-colour-setup.png");
    press(color, "ZFc_ok");
  }});
  press(&dialog.pane(), "ZImg_13");
  EXPECT_TRUE(driver.done());
  ASSERT_EQ(dialog.sync(false), kNoErr);
  const Dictionary* color = dialog.ticket().getDictionary(key::kFullColorOptions);
  ASSERT_NE(color, nullptr);
  EXPECT_EQ(*color, (Dictionary{{"FCLightness", Value(10)},
                                {"FCContrast", Value(-100)},
                                {"FCSaturation", Value(-20)},
                                {"FCColorCast", Value(Dictionary{{"FCCyanRed", Value(1)},
                                                                 {"FCMagentaGreen", Value(2)},
                                                                 {"FCYellowBlue", Value(3)}})},
                                {"FCTrapping", Value(1)},
                                {"FCTrappingFastDirection", Value(4)},
                                {"FCTrappingSlowDirection", Value(20)},
                                {"FCBlackOverprint", Value(2)},
                                {"FCTRC", Value("Linear")},
                                {"RGBImagesProfile", Value("Studio RGB")},
                                {"RGBTextAndGraphicsProfile", Value(2)},
                                {"CMYKImagesProfile", Value("Press CMYK")},
                                {"CMYKTextAndGraphicsProfile", Value(1)},
                                {"GrayImagesProfile", Value("Gray 20")},
                                {"GrayTextAndGraphicsProfile", Value("Gray 10")},
                                {"DestinationProfile", Value("Sheetfed")},
                                {"ImageRendering", Value(4)},
                                {"TextRendering", Value(5)},
                                {"GraphicRendering", Value(6)}}));
  const std::string jotf = JOTFDocumentText(JOTFSettingsFromTicket(dialog.ticket()));
  for (const char* line :
       {"<adjust-lightness syntax =\"integer\">10</adjust-lightness>",
        "<trap-width-slow syntax=\"integer\">20</trap-width-slow>",
        "<black-overprint syntax=\"keyword\">black-overprint-off</black-overprint>",
        "<rendering-intent-text syntax=\"keyword\">pure-text</rendering-intent-text>",
        ">Sheetfed</color-destination-profile-front>", ">Linear</trc-name>"}) {
    EXPECT_NE(jotf.find(line), std::string::npos) << line;
  }
}

}  // namespace
}  // namespace zorva::test

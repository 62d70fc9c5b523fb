// The Advanced panel in the real module: its controls show the ticket (or
// the defaults), write back with the rotate offset and the page fields, force
// the booklet's paper size, and a picture of it is saved for review.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

#include "core/ticket_keys.h"
#include "plugin_host.h"
#include "support/test_support.h"

namespace zorva::test {
namespace {

namespace key = tkey;
constexpr int kAdvancedTab = 6;

class AdvancedPanelTest : public ::testing::Test {
 protected:
  void open() {
    dialog.start();
    dialog.showPanel(kAdvancedTab);
  }
  template <typename T>
  T* control(int number) {
    T* widget = dialog.find<T>(QStringLiteral("ZAdv_%1").arg(number));
    EXPECT_NE(widget, nullptr) << number;
    return widget;
  }
  std::int32_t number(std::string_view name) {
    std::int32_t n = -1;
    EXPECT_TRUE(dialog.ticket().getNumber(name, n)) << name;
    return n;
  }
  Dialog dialog;
};

TEST_F(AdvancedPanelTest, AnEmptyTicketShowsTheDefaults) {
  open();
  EXPECT_EQ(control<QComboBox>(1)->currentIndex(), 1);
  EXPECT_EQ(control<QComboBox>(1)->count(), 4);
  EXPECT_EQ(control<QComboBox>(2)->currentIndex(), 0);
  EXPECT_TRUE(control<QCheckBox>(3)->isChecked());
  EXPECT_EQ(control<QComboBox>(4)->currentIndex(), 0);
  EXPECT_EQ(control<QComboBox>(5)->currentIndex(), 0);
  EXPECT_TRUE(control<QRadioButton>(6)->isChecked());
  EXPECT_EQ(control<QLineEdit>(8)->text(), "");
  EXPECT_EQ(control<QLineEdit>(9)->text(), "");
  EXPECT_FALSE(control<QCheckBox>(10)->isChecked());
  EXPECT_FALSE(control<QComboBox>(11)->isEnabled());
}

TEST_F(AdvancedPanelTest, TicketValuesAreShownAndAnUnchangedPanelWritesRotateLessOne) {
  open();
  // Set after opening: every switch away from this panel writes the rotate
  // value less one, so what the ticket held before depends on the tabs seen.
  Ticket& ticket = dialog.ticket();
  ticket.setNumber("Z", key::kAdvancedBookletLayoutOrder, 3);
  ticket.setNumber("Z", key::kRotateImage180, 2);
  ticket.setNumber("Z", key::kEmitJOTF, 0);
  ticket.setNumber("Z", key::kPagesToPrintSelected, 1);
  ticket.setNumber("Z", key::kPagesToPrintFrom, 3);
  ticket.setNumber("Z", key::kPagesToPrintTo, 0);
  ASSERT_EQ(dialog.sync(true), kNoErr);
  EXPECT_EQ(control<QComboBox>(1)->currentIndex(), 2);
  EXPECT_EQ(control<QComboBox>(2)->currentIndex(), 1);
  EXPECT_FALSE(control<QCheckBox>(3)->isChecked());
  EXPECT_TRUE(control<QRadioButton>(7)->isChecked());
  EXPECT_EQ(control<QLineEdit>(8)->text(), "3");
  EXPECT_EQ(control<QLineEdit>(9)->text(), "");
  ASSERT_EQ(dialog.sync(false), kNoErr);
  EXPECT_EQ(number(key::kRotateImage180), 1);
  EXPECT_EQ(number(key::kAdvancedBookletLayoutOrder), 3);
  EXPECT_EQ(number(key::kEmitJOTF), 0);
  EXPECT_EQ(number(key::kPagesToPrintFrom), 3);
  EXPECT_EQ(dialog.ticket().item(key::kRotateImage180)->client, "com.zorva.printingmanager");
}

TEST_F(AdvancedPanelTest, TypedPagesChooseTheRangeAndAreWritten) {
  open();
  QLineEdit* to = control<QLineEdit>(9);
  QTest::keyClicks(to, "x12");  // the letter is refused
  EXPECT_EQ(to->text(), "12");
  EXPECT_TRUE(control<QRadioButton>(7)->isChecked());
  ASSERT_EQ(dialog.sync(false), kNoErr);
  EXPECT_EQ(number(key::kPagesToPrintSelected), 1);
  EXPECT_EQ(number(key::kPagesToPrintTo), 12);
  EXPECT_FALSE(dialog.ticket().contains(key::kPagesToPrintFrom));
}

TEST_F(AdvancedPanelTest, ForcingTheBookletSizeWritesItAndTurningItOffUndoesIt) {
  dialog.ticket().setDictionary("Z", key::kJobLevelStock, Dictionary{{"Color", Value(3)}});
  open();
  control<QCheckBox>(10)->setChecked(true);
  QComboBox* size = control<QComboBox>(11);
  EXPECT_TRUE(size->isEnabled());
  size->setCurrentIndex(size->findData(4, Qt::UserRole));
  ASSERT_EQ(dialog.sync(false), kNoErr);
  const Dictionary* stock = dialog.ticket().getDictionary(key::kJobLevelStock);
  ASSERT_NE(stock, nullptr);
  EXPECT_EQ(*stock, (Dictionary{{"Color", Value(3)},
                                {"Size", Value(4)},
                                {"Width", Value(21000)},
                                {"Length", Value(29700)}}));
  EXPECT_EQ(dialog.ticket().getBoolean(key::kBookletForceNewSize), true);

  control<QCheckBox>(10)->setChecked(false);
  ASSERT_EQ(dialog.sync(false), kNoErr);
  EXPECT_EQ(*dialog.ticket().getDictionary(key::kJobLevelStock), (Dictionary{{"Color", Value(3)}}));
  EXPECT_FALSE(dialog.ticket().contains(key::kBookletForceNewSize));
}

TEST_F(AdvancedPanelTest, ValuesMergedIntoTheTicketShowOnTheNextReadingSync) {
  open();
  dialog.ticket().setNumber("ZORVA", key::kOPIPrescan, 3);
  dialog.ticket().setNumber("ZORVA", key::kPagesToPrintFrom, 5);
  ASSERT_EQ(dialog.sync(true), kNoErr);
  EXPECT_EQ(control<QComboBox>(5)->currentIndex(), 2);
  EXPECT_EQ(control<QLineEdit>(8)->text(), "5");
}

}  // namespace
}  // namespace zorva::test

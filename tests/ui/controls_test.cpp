// Pop-ups filled from keyword tables: item data, the count that includes
// filtered rows, histories, selection by value, the text setters and the
// typed-text limiter.
#include "ui/controls.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

#include "core/bundle.h"
#include "host/installable_options.h"
#include "host/keyword_tables.h"
#include "host/preferences.h"
#include "support/test_support.h"

namespace zorva {
namespace {

constexpr SettingMap kFiltered[] = {
    {"PrinterDefault", kUnset, 0, nullptr, 1},
    {"Stacker", 4, FourCC("Zstk"), "StackerTray1Key", 1},
    {"-", kSeparatorValue, 0, nullptr, 1},
    {"Top Tray", 3, 0, nullptr, 1},
    {nullptr, 0, 0, nullptr, 0},
};

class ControlsTest : public ::testing::Test {
 protected:
  void SetUp() override { UnloadInstallableOptions(); }
  void TearDown() override { UnloadInstallableOptions(); }
  const Bundle* bundle = Bundle::FindByIdentifier(kBundleIdentifier);
  QComboBox popup;
};

TEST_F(ControlsTest, ItemsCarryValueAndCommandAndTheMaximumCountsSkippedRows) {
  ASSERT_NE(bundle, nullptr);
  popup.addItem("stale");
  EXPECT_EQ(PopulatePopupButtonFromMap(bundle, &popup, kFiltered, JobContext::Job, 0), 4);
  // The stacker row is filtered out; the separator takes a place.
  ASSERT_EQ(popup.count(), 3);
  EXPECT_EQ(popup.property(kMaximumProperty).toInt(), 4);
  EXPECT_EQ(popup.itemText(0), "Printer Default");
  EXPECT_EQ(popup.itemData(0, kTicketValueRole).toInt(), kUnset);
  EXPECT_EQ(popup.itemText(2), "Top Tray");
  EXPECT_EQ(popup.itemData(2, kTicketValueRole).toInt(), 3);

  ASSERT_TRUE(SetInstallableOptions(Dictionary{{"Option1", "HCSS80"}}, InstalledFeatures));
  EXPECT_EQ(PopulatePopupButtonFromMap(bundle, &popup, kFiltered, JobContext::Insert, 0), 4);
  ASSERT_EQ(popup.count(), 4);
  EXPECT_EQ(popup.itemText(0), "Use Job Setting");
  EXPECT_EQ(popup.itemData(1, kCommandRole).toUInt(), FourCC("Zstk"));
  // A command given to the fill replaces every row's own.
  PopulatePopupButtonFromMap(bundle, &popup, kFiltered, JobContext::Job, FourCC("Zcmd"));
  EXPECT_EQ(popup.itemData(1, kCommandRole).toUInt(), FourCC("Zcmd"));
  EXPECT_EQ(popup.property("settingMap").value<quintptr>(), reinterpret_cast<quintptr>(kFiltered));
}

TEST_F(ControlsTest, AMenuOfActionsGetsTheSameItemsAndSeparator) {
  QMenu menu;
  EXPECT_EQ(PopulateMenuFromMap(bundle, &menu, kFiltered, JobContext::Job, 0), 4);
  const QList<QAction*> actions = menu.actions();
  ASSERT_EQ(actions.size(), 3);
  EXPECT_EQ(actions[0]->text(), "Printer Default");
  EXPECT_EQ(actions[0]->data().toInt(), kUnset);
  EXPECT_TRUE(actions[1]->isSeparator());
  EXPECT_EQ(actions[2]->text(), "Top Tray");
  EXPECT_EQ(actions[2]->data().toInt(), 3);
  EXPECT_EQ(menu.property("settingMap").value<quintptr>(), reinterpret_cast<quintptr>(kFiltered));
  PopulateMenuFromMap(bundle, &menu, kFiltered, JobContext::Job, FourCC("Zcmd"));
  EXPECT_EQ(menu.actions()[3]->property(kCommandProperty).toUInt(), FourCC("Zcmd"));
}

TEST_F(ControlsTest, SelectionByValueFindsTheFirstItemOrLeavesTheSelection) {
  PopulatePopupButtonFromMap(bundle, &popup, PlexMap, JobContext::Job, 0);
  EXPECT_EQ(SetPopupButtonToTicketValue(&popup, 2), 1);
  EXPECT_EQ(GetPopupButtonTicketValue(&popup), 2);
  EXPECT_EQ(SetPopupButtonToTicketValue(&popup, 99), 0);
  EXPECT_EQ(GetPopupButtonTicketValue(&popup), 2);
  EXPECT_EQ(SetPopupButtonToTicketValue(nullptr, 2), 0);
  SetPopupButtonPosition(&popup, 1);
  EXPECT_EQ(GetPopupButtonPosition(&popup), 1);
  SetPopupButtonPosition(&popup, 9);  // out of range: unchanged
  EXPECT_EQ(GetPopupButtonPosition(&popup), 1);
}

TEST_F(ControlsTest, HistoryStringsGoInAfterTheGivenItemAndCountTowardsTheMaximum) {
  test::TempDir prefs;
  test::ScopedEnv env("ZORVA_PREFERENCES_DIR", prefs.path().string());
  ASSERT_TRUE(WriteUserPreferences(
      "com.zorva.print.inputhistory.plist",
      Value(Dictionary{{"JobName", Value(Array{Value("first"), Value(7), Value("third")})}})));
  const std::uint16_t count = PopulatePopupButtonFromMapAndHistory(
      bundle, &popup, PlexMap, JobContext::Job, "JobName", 1, FourCC("Zhis"), 0);
  EXPECT_EQ(count, 4 + 2);
  EXPECT_EQ(popup.property(kMaximumProperty).toInt(), 6);
  ASSERT_EQ(popup.count(), 6);
  EXPECT_EQ(popup.itemText(1), "first");
  // The number took a place in the insertion order though it made no item.
  EXPECT_EQ(popup.itemText(3), "third");
  EXPECT_EQ(popup.itemData(3, kCommandRole).toUInt(), FourCC("Zhis"));
  EXPECT_FALSE(popup.itemData(3, kTicketValueRole).isValid());
  // No history key: only the table.
  EXPECT_EQ(
      PopulatePopupButtonFromMapAndHistory(bundle, &popup, PlexMap, JobContext::Job, "", 1, 0, 0),
      4);
}

TEST_F(ControlsTest, LocalisedSettersFormatAndIgnoreMissingArguments) {
  QLabel label("before");
  SetLocalizedStaticText(bundle, "Tabrix", &label);
  EXPECT_EQ(label.text(), "Zorva Features");
  SetLocalizedStaticText(bundle, "NoSuchKeyAnywhere", &label);
  EXPECT_EQ(label.text(), "STRING NOT FOUND");
  SetLocalizedStaticText(nullptr, "Tabrix", &label);
  SetLocalizedStaticText(bundle, nullptr, &label);
  EXPECT_EQ(label.text(), "STRING NOT FOUND");
  QWidget window;
  SetLocalizedWindowTitle(bundle, "Advanced", &window);
  EXPECT_EQ(window.windowTitle(), "Advanced");
  PopulatePopupButtonFromMap(bundle, &popup, PlexMap, JobContext::Job, 0);
  SetLocalizedMenuTitle(bundle, "Advanced", &popup, 2);
  EXPECT_EQ(popup.itemText(1), "Advanced");
}

TEST_F(ControlsTest, LimiterRefusesTooLongTextAndForeignCharactersButLetsEditingKeysPass) {
  QLineEdit field;
  LimitInputLengthAndCharacters(&field, 3, "0123456789");
  QTest::keyClicks(&field, "1a2");
  EXPECT_EQ(field.text(), "12");
  QTest::keyClicks(&field, "345");
  EXPECT_EQ(field.text(), "123");
  QTest::keyClick(&field, Qt::Key_Backspace);
  EXPECT_EQ(field.text(), "12");
  // Typing over a selection replaces it, so it fits.
  field.selectAll();
  QTest::keyClicks(&field, "9");
  EXPECT_EQ(field.text(), "9");
}

}  // namespace
}  // namespace zorva

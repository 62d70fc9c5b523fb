// The Special Pages panel in the real module: an empty ticket, covers,
// inserts and exception pages added through their dialogs landing in the
// ticket and the job ticket document and read back, bad page text alerting
// with its code and changing nothing, undo, moving inserts, deleting with
// the confirmation, and the booklet rule for covers.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTreeWidget>

#include "core/bundle.h"
#include "core/ticket_keys.h"
#include "modal_driver.h"
#include "model/page_ranges.h"
#include "model/special_page_lists.h"
#include "plugin_host.h"

namespace zorva::test {
namespace {

constexpr int kSpecialPagesTab = 2;
// Buttons of the panel.
enum { kAddCover = 1, kAddInsert, kAddException, kEdit, kDelete, kDeleteAll, kUndo, kUp, kDown };

template <typename T>
T* Child(QWidget* window, const QString& name) {
  T* widget = window->findChild<T*>(name);
  EXPECT_NE(widget, nullptr) << name.toStdString();
  return widget;
}

// Picks the item carrying value in the pop-up named name.
void Choose(QWidget* window, const char* name, int value) {
  auto* popup = Child<QComboBox>(window, name);
  const int at = popup->findData(value, Qt::UserRole);
  ASSERT_GE(at, 0) << name << " " << value;
  popup->setCurrentIndex(at);
}

void AnswerAlert(QWidget* modal, Status expected) {
  auto* box = qobject_cast<QMessageBox*>(modal);
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(box->objectName(), "SpecialPagesAlert");
  EXPECT_EQ(box->property("code").toInt(), expected);
  const auto text = SpecialPagesAlertTextFor(expected, GetPDEBundle());
  ASSERT_TRUE(text);
  EXPECT_EQ(box->text().toStdString(), text->message);
  box->button(QMessageBox::Ok)->click();
}

Dictionary Page(std::initializer_list<std::pair<const char*, std::int32_t>> numbers) {
  Dictionary d;
  for (const auto& [k, v] : numbers) d.set(k, Value(v));
  return d;
}

// The number under key (kUnset when absent).
std::int64_t Number(const Dictionary* d, std::string_view key) {
  const Value* v = d ? d->find(key) : nullptr;
  return v && v->integer() ? *v->integer() : kUnset;
}

class SpecialPagesPanelTest : public ::testing::Test {
 protected:
  void open() {
    dialog.start();
    dialog.showPanel(kSpecialPagesTab);
  }
  QTreeWidget* list() { return Child<QTreeWidget>(&dialog.pane(), "ZSpg_list"); }
  QPushButton* button(int n) {
    return Child<QPushButton>(&dialog.pane(), QStringLiteral("ZSpg_%1").arg(n));
  }
  QStringList column(int c) {
    QStringList texts;
    for (int i = 0; i < list()->topLevelItemCount(); ++i) texts << list()->topLevelItem(i)->text(c);
    return texts;
  }
  // Selects rows in the order given, as ctrl-clicks do.
  void select(std::initializer_list<int> rows) {
    list()->clearSelection();
    for (int row : rows) list()->topLevelItem(row)->setSelected(true);
  }
  std::vector<bool> enabled() {
    std::vector<bool> on;
    for (int n = kEdit; n <= kDown; ++n) on.push_back(button(n)->isEnabled());
    return on;
  }
  // Reads the ticket as given (the panel's own lists are replaced).
  void load(const Ticket& ticket) {
    dialog.ticket() = ticket;
    ASSERT_EQ(dialog.sync(true), kNoErr);
  }
  // Inserts after pages 2, 5 and 7.
  void loadInserts() {
    Ticket t;
    t.setArray("Z", tkey::kInsertList,
               Array{Value(Page({{"StartPage", 2}})), Value(Page({{"StartPage", 5}})),
                     Value(Page({{"StartPage", 7}}))});
    load(t);
  }
  void answerConfirm(bool yes) {
    steps.push_back([yes](QWidget* modal) {
      EXPECT_EQ(modal->objectName(), "SpecialPagesConfirm");
      Press(modal, yes ? "yes" : "no");
    });
  }
  void press(int n) {
    ModalDriver driver(std::move(steps));
    steps.clear();
    button(n)->click();
    EXPECT_TRUE(driver.done());
  }

  Dialog dialog;
  std::deque<ModalDriver::Step> steps;
};

TEST_F(SpecialPagesPanelTest, AnEmptyTicketListsNothingAndWritesNoKeys) {
  open();
  EXPECT_EQ(list()->topLevelItemCount(), 0);
  for (int n : {kAddCover, kAddInsert, kAddException}) EXPECT_TRUE(button(n)->isEnabled()) << n;
  EXPECT_EQ(enabled(), std::vector<bool>(6, false));
  EXPECT_TRUE(Child<QLabel>(&dialog.pane(), "ZSpg_booklet")->isHidden());
  ASSERT_EQ(dialog.sync(false), kNoErr);
  for (std::string_view k :
       {tkey::kFrontCover, tkey::kBackCover, tkey::kInsertList, tkey::kExceptionList}) {
    EXPECT_FALSE(dialog.ticket().contains(k)) << k;
  }
}

TEST_F(SpecialPagesPanelTest, DialogsWriteCoversInsertsAndExceptionsThatReadBackAndExport) {
  open();
  int blue = 0;
  // Both covers, printed on the front, on a paper chosen in the stock dialog.
  steps = {[](QWidget* cover) {
             Child<QRadioButton>(cover, "ZCov_3")->setChecked(true);
             Choose(cover, "ZCov_4", 2);
             PressLater(cover, "ZCov_5");
           },
           [&blue](QWidget* stock) {
             auto* color = Child<QComboBox>(stock, "ZStk_9");
             color->setCurrentIndex(color->findText("Blue"));
             blue = color->currentData(Qt::UserRole).toInt();
             Press(stock, "ok");
           },
           [](QWidget* cover) {
             EXPECT_NE(Child<QLabel>(cover, "ZCov_6")->text().indexOf("Blue"), -1);
             Press(cover, "ZCov_ok");
           }};
  press(kAddCover);
  steps = {[](QWidget* insert) {
    Child<QLineEdit>(insert, "ZIns_1")->setText("4");
    Child<QSpinBox>(insert, "ZIns_3")->setValue(2);
    Press(insert, "ZIns_ok");
  }};
  press(kAddInsert);
  steps = {[](QWidget* exception) {
             Child<QLineEdit>(exception, "ZExc_1")->setText("3-5");
             Choose(exception, "ZExc_3", 2);   // two-sided
             Choose(exception, "ZExc_4", -3);  // lighter
             Choose(exception, "ZExc_5", 1);   // grayscale
             Choose(exception, "ZExc_6", 2);
             Choose(exception, "ZExc_7", 1);
             PressLater(exception, "ZExc_8");
           },
           [](QWidget* shift) {
             Choose(shift, "ZIsh_1", 2);
             Child<QDoubleSpinBox>(shift, "ZIsh_5")->setValue(0.5);
             Press(shift, "ZIsh_ok");
           },
           [](QWidget* exception) {
             EXPECT_TRUE(Child<QPushButton>(exception, "ZExc_9")->isEnabled());
             SavePicture(exception, "special-pages-exception-dialog.png");
             Press(exception, "ZExc_ok");
           }};
  press(kAddException);
  const QStringList kinds{"Front Cover", "Insert", "Exception Pages", "Back Cover"};
  EXPECT_EQ(column(0), kinds);
  EXPECT_EQ(column(1), (QStringList{"", "4", "3-5", ""}));
  // The row picked last shows its whole summary under the list.
  select({2});
  auto* detail = Child<QLabel>(&dialog.pane(), "ZSpg_detail");
  EXPECT_EQ(detail->text(), list()->topLevelItem(2)->text(2));
  EXPECT_TRUE(detail->text().contains("Anti-aliasing: Standard")) << detail->text().toStdString();
  SavePicture(&dialog.pane(), "special-pages-panel.png");

  ASSERT_EQ(dialog.sync(false), kNoErr);
  const Ticket& t = dialog.ticket();
  const Dictionary* front = t.getDictionary(tkey::kFrontCover);
  ASSERT_NE(front, nullptr);
  EXPECT_EQ(Number(front, "SidesImaged"), 2);
  EXPECT_EQ(Number(front->getDictionary("Stock"), "Color"), blue);
  EXPECT_EQ(*t.getDictionary(tkey::kBackCover), *front);
  const Array* inserts = t.getArray(tkey::kInsertList);
  ASSERT_TRUE(inserts && inserts->size() == 1);
  EXPECT_EQ(Number((*inserts)[0].dictionary(), "StartPage"), 4);
  EXPECT_EQ(Number((*inserts)[0].dictionary(), "Quantity"), 2);
  const Array* exceptions = t.getArray(tkey::kExceptionList);
  ASSERT_TRUE(exceptions && exceptions->size() == 1);
  const Dictionary& range = *(*exceptions)[0].dictionary();
  const std::pair<const char*, int> kRange[] = {
      {"StartPage", 3},   {"EndPage", 5},      {"SidesImaged", 2},   {"LightenDarken", -3},
      {"OutputColor", 1}, {"Antialiasing", 2}, {"HalftoneScreen", 1}};
  for (const auto& [k, v] : kRange) EXPECT_EQ(Number(&range, k), v) << k;
  const Dictionary* shift = range.getDictionary(tkey::kPageImageShift);
  ASSERT_NE(shift, nullptr);
  EXPECT_EQ(Number(shift, "X1"), 50);

  // Read back into a fresh list.
  const Ticket written = t;
  load(Ticket{});
  EXPECT_EQ(list()->topLevelItemCount(), 0);
  load(written);
  EXPECT_EQ(column(0), kinds);
  EXPECT_EQ(column(1), (QStringList{"", "4", "3-5", ""}));

  // The job ticket document has them as chosen.
  const std::string jotf = Export(written);
  for (const char* part :
       {"<cover-front syntax=\"collection\">", "<cover-back syntax=\"collection\">",
        "<cover-type syntax=\"keyword\">print-front</cover-type>",
        "<media-color syntax=\"keyword\">blue</media-color>",
        "<insert-after-page-number syntax=\"integer\">4<", "<insert-count syntax=\"integer\">2<",
        "<lower-bound syntax=\"integer\">3<", "<upper-bound syntax=\"integer\">5<",
        "<sides syntax=\"keyword\">two-sided-long-edge<",
        "<adjust-bw-darkness-value syntax=\"integer\">-3<"}) {
    EXPECT_TRUE(Has(jotf, part)) << part << "\n" << jotf;
  }
}

TEST_F(SpecialPagesPanelTest, BadPageTextAlertsWithItsCodeAndChangesNothing) {
  open();
  loadInserts();
  // The ticket as every panel writes it.
  ASSERT_EQ(dialog.sync(false), kNoErr);
  const Ticket before = dialog.ticket();
  const struct {
    int button;
    const char* field;
    const char* text;
    Status code;
  } cases[] = {
      {kAddInsert, "ZIns_1", "", kInvalidPageRanges},
      {kAddInsert, "ZIns_1", "1--3", kInvalidPageRanges},
      {kAddInsert, "ZIns_1", "1-", kInvalidPageRanges},  // ten million inserts
      {kAddInsert, "ZIns_1", "5-2", kInvalidRangeOrder},
      {kAddException, "ZExc_1", "10000000", kPageNumberTooLarge},
      {kAddException, "ZExc_1", "0-3", kInvalidPageNumbers},
      {kAddException, "ZExc_1", " , ", kInvalidPageRanges},
  };
  for (const auto& c : cases) {
    const QString field = c.field;
    const QString ok = field.left(4) + "_ok";
    const QString cancel = field.left(4) + "_cancel";
    steps = {[&](QWidget* modal) {
               Child<QLineEdit>(modal, field)->setText(c.text);
               QTimer::singleShot(0, Child<QPushButton>(modal, ok), &QPushButton::click);
             },
             [&](QWidget* alert) { AnswerAlert(alert, c.code); },
             [&](QWidget* modal) {
               // The dialog stays open with the text as typed.
               EXPECT_EQ(Child<QLineEdit>(modal, field)->text(), c.text);
               Child<QPushButton>(modal, cancel)->click();
             }};
    press(c.button);
    EXPECT_EQ(column(1), (QStringList{"2", "5", "7"})) << c.text;
    EXPECT_FALSE(button(kUndo)->isEnabled()) << c.text;
    ASSERT_EQ(dialog.sync(false), kNoErr);
    EXPECT_EQ(dialog.ticket().toDictionary(), before.toDictionary()) << c.text;
  }
}

TEST_F(SpecialPagesPanelTest, AnInsertBeforeTheFirstPageNeedsNoPageText) {
  open();
  steps = {[](QWidget* insert) {
    Child<QCheckBox>(insert, "ZIns_2")->setChecked(true);
    EXPECT_FALSE(Child<QLineEdit>(insert, "ZIns_1")->isEnabled());
    Press(insert, "ZIns_ok");
  }};
  press(kAddInsert);
  EXPECT_EQ(column(1), QStringList{"Before Page 1"});
  ASSERT_EQ(dialog.sync(false), kNoErr);
  EXPECT_EQ(Number((*dialog.ticket().getArray(tkey::kInsertList))[0].dictionary(), "StartPage"), 0);
  // Editing it shows the choice again.
  select({0});
  steps = {[](QWidget* insert) {
    EXPECT_TRUE(Child<QCheckBox>(insert, "ZIns_2")->isChecked());
    Press(insert, "ZIns_cancel");
  }};
  press(kEdit);
}

TEST_F(SpecialPagesPanelTest, InsertsMoveUndoAndDeleteWithTheConfirmation) {
  open();
  loadInserts();
  select({1});
  // Edit, Delete, Delete All, Undo, Move Up, Move Down.
  EXPECT_EQ(enabled(), (std::vector<bool>{true, true, true, false, true, true}));
  press(kUp);
  EXPECT_EQ(column(1), (QStringList{"5", "2", "7"}));
  // The moved insert stays selected; the first one cannot move up.
  EXPECT_TRUE(list()->topLevelItem(0)->isSelected());
  EXPECT_EQ(enabled(), (std::vector<bool>{true, true, true, true, false, true}));
  press(kUndo);
  EXPECT_EQ(column(1), (QStringList{"2", "5", "7"}));
  EXPECT_FALSE(button(kUndo)->isEnabled());
  // The last one picked (the first row) decides; each selected insert that
  // can moves one place.
  select({2, 0});
  press(kDown);
  EXPECT_EQ(column(1), (QStringList{"5", "2", "7"}));

  select({1});
  answerConfirm(false);
  press(kDelete);
  EXPECT_EQ(column(1), (QStringList{"5", "2", "7"}));
  EXPECT_TRUE(button(kUndo)->isEnabled()) << "the snapshot is taken before asking";
  answerConfirm(true);
  press(kDelete);
  EXPECT_EQ(column(1), (QStringList{"5", "7"}));
  answerConfirm(true);
  press(kDeleteAll);
  EXPECT_EQ(list()->topLevelItemCount(), 0);
  EXPECT_EQ(enabled(), (std::vector<bool>{false, false, false, true, false, false}));
  ASSERT_EQ(dialog.sync(false), kNoErr);
  EXPECT_FALSE(dialog.ticket().contains(tkey::kInsertList));
  press(kUndo);
  EXPECT_EQ(column(1), (QStringList{"5", "7"}));
}

TEST_F(SpecialPagesPanelTest, EditingAnExceptionReplacesItsRangeAndAddsItsColour) {
  open();
  Ticket t;
  t.setArray("Z", tkey::kExceptionList,
             Array{Value(Page({{"StartPage", 3}, {"EndPage", 5}, {"HalftoneScreen", 2}}))});
  load(t);
  select({0});
  steps = {[](QWidget* exception) {
             auto* pages = Child<QLineEdit>(exception, "ZExc_1");
             EXPECT_EQ(pages->text(), "3-5");
             EXPECT_EQ(Child<QComboBox>(exception, "ZExc_7")->currentData(Qt::UserRole), 2);
             pages->setText("8-9");
             PressLater(exception, "ZExc_11");
           },
           [](QWidget* color) {
             // A page's colour follows the job's unless set.
             EXPECT_EQ(Child<QComboBox>(color, "ZFc_11")->itemText(0), "Use Job Setting");
             Choose(color, "ZFc_11", 4);
             Press(color, "ZFc_ok");
           },
           [](QWidget* exception) { Press(exception, "ZExc_ok"); }};
  press(kEdit);
  EXPECT_EQ(column(1), QStringList{"8-9"});
  ASSERT_EQ(dialog.sync(false), kNoErr);
  const Dictionary& range = *(*dialog.ticket().getArray(tkey::kExceptionList))[0].dictionary();
  EXPECT_EQ(Number(&range, "HalftoneScreen"), 2);
  EXPECT_NE(range.getDictionary("FullColorOptionsPage"), nullptr);
}

TEST_F(SpecialPagesPanelTest, UnderBookletLayoutTheCoverIsOneSheetForBothSides) {
  open();
  Ticket t;
  t.setBoolean("Z", tkey::kBookletLayout, true);
  t.setDictionary("Z", tkey::kFrontCover, Page({{"SidesImaged", 4}}));
  load(t);
  EXPECT_EQ(column(0), (QStringList{"Front Cover", "Back Cover"}));
  EXPECT_FALSE(Child<QLabel>(&dialog.pane(), "ZSpg_booklet")->isHidden());
  select({1});
  steps = {[](QWidget* cover) {
    EXPECT_TRUE(Child<QRadioButton>(cover, "ZCov_3")->isChecked());
    EXPECT_FALSE(Child<QRadioButton>(cover, "ZCov_1")->isEnabled());
    EXPECT_FALSE(Child<QLabel>(cover, "ZCov_note")->isHidden());
    Choose(cover, "ZCov_4", 3);
    Press(cover, "ZCov_ok");
  }};
  press(kEdit);
  ASSERT_EQ(dialog.sync(false), kNoErr);
  EXPECT_EQ(Number(dialog.ticket().getDictionary(tkey::kFrontCover), "SidesImaged"), 3);
  EXPECT_FALSE(dialog.ticket().contains(tkey::kBackCover)) << "the back cover is the front one";
  // Deleting one cover deletes its twin.
  select({0});
  answerConfirm(true);
  press(kDelete);
  EXPECT_EQ(list()->topLevelItemCount(), 0);
}

}  // namespace
}  // namespace zorva::test

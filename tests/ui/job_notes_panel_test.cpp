// The Job Notes panel in the real module: empty on an empty ticket, every
// field written to its key and shown again, the accounting ids limited to
// what the job ticket carries, the input histories offered in the next
// dialog, the saved defaults filling a new job, and the document's name.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "core/ticket_keys.h"
#include "host/preferences.h"
#include "jobticket/jotf_export.h"
#include "plugin_host.h"
#include "support/test_support.h"

namespace zorva::test {
namespace {

namespace key = tkey;
constexpr int kJobNotesTab = 4;

// Control number and key of each text field.
constexpr struct {
  int control;
  std::string_view key;
} kFields[] = {
    {1, key::kJobNotesJobName},  {3, key::kJobNotesSenderName},     {4, key::kJobNotesRecipient},
    {5, key::kJobNotesMessage},  {6, key::kJobNotesAdditionalInfo}, {7, key::kJobNotesSheetMessage},
    {9, key::kAccountingUserId}, {10, key::kAccountingAccountId},
};

class JobNotesPanelTest : public ::testing::Test {
 protected:
  void open(Dialog& d) {
    d.start();
    d.showPanel(kJobNotesTab);
  }
  void open() { open(dialog); }
  QWidget* field(int number, Dialog& d) {
    QWidget* w = d.find<QWidget>(QStringLiteral("ZJn_%1").arg(number));
    EXPECT_NE(w, nullptr) << number;
    return w;
  }
  QLineEdit* edit(int number, Dialog& d) {
    QWidget* w = field(number, d);
    if (auto* combo = qobject_cast<QComboBox*>(w)) return combo->lineEdit();
    return qobject_cast<QLineEdit*>(w);
  }
  QLineEdit* edit(int number) { return edit(number, dialog); }
  QCheckBox* box(int number) {
    return dialog.find<QCheckBox>(QStringLiteral("ZJn_%1").arg(number));
  }
  const std::string* text(std::string_view k) { return dialog.ticket().getString(k); }

  TempDir preferences;
  ScopedEnv env{"ZORVA_PREFERENCES_DIR", preferences.path().string()};
  Dialog dialog;
};

TEST_F(JobNotesPanelTest, AnEmptyTicketShowsEmptyFieldsAndWritesNothing) {
  open();
  for (const auto& f : kFields) EXPECT_EQ(edit(f.control)->text(), "") << f.control;
  EXPECT_FALSE(box(2)->isChecked());
  EXPECT_FALSE(box(8)->isChecked());
  EXPECT_FALSE(edit(9)->isEnabled());
  ASSERT_EQ(dialog.sync(false), kNoErr);
  for (const auto& f : kFields) EXPECT_FALSE(dialog.ticket().contains(f.key)) << f.key;
  EXPECT_FALSE(dialog.ticket().contains(key::kAccountingOn));
  EXPECT_FALSE(dialog.ticket().contains(key::kJobNotesUseJobName));
}

TEST_F(JobNotesPanelTest, EveryFieldIsWrittenToItsKeyAndShownAgain) {
  open();
  box(8)->setChecked(true);
  for (const auto& f : kFields) {
    QTest::keyClicks(edit(f.control), QStringLiteral("v%1").arg(f.control));
  }
  ASSERT_EQ(dialog.sync(false), kNoErr);
  for (const auto& f : kFields) {
    ASSERT_NE(text(f.key), nullptr) << f.key;
    EXPECT_EQ(*text(f.key), "v" + std::to_string(f.control));
    EXPECT_EQ(dialog.ticket().item(f.key)->client, "com.zorva.printingmanager");
  }
  std::int32_t on = 0;
  EXPECT_TRUE(dialog.ticket().getNumber(key::kAccountingOn, on));
  EXPECT_EQ(on, 3);
  // Values merged into the ticket show on the next reading sync.
  for (const auto& f : kFields) {
    dialog.ticket().setString("ZORVA", f.key, "new " + std::to_string(f.control));
  }
  ASSERT_EQ(dialog.sync(true), kNoErr);
  for (const auto& f : kFields) {
    EXPECT_EQ(edit(f.control)->text(), QStringLiteral("new %1").arg(f.control));
  }
  // Turning accounting off keeps the ids back from the job ticket.
  box(8)->setChecked(false);
  EXPECT_FALSE(edit(10)->isEnabled());
  ASSERT_EQ(dialog.sync(false), kNoErr);
  EXPECT_TRUE(dialog.ticket().getNumber(key::kAccountingOn, on));
  EXPECT_EQ(on, 2);
  // A cleared field leaves no key.
  edit(5)->clear();
  ASSERT_EQ(dialog.sync(false), kNoErr);
  EXPECT_FALSE(dialog.ticket().contains(key::kJobNotesMessage));
}

TEST_F(JobNotesPanelTest, AccountingIdsTakeOnlyWhatTheJobTicketCarries) {
  open();
  box(8)->setChecked(true);
  QTest::keyClicks(edit(9), "an");
  // A letter outside ASCII, as a keyboard sends it: refused.
  QKeyEvent umlaut(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier,
                   QString::fromUtf8("\xC3\xBC"));
  QApplication::sendEvent(edit(9), &umlaut);
  QTest::keyClicks(edit(9), "a");
  EXPECT_EQ(edit(9)->text(), "ana");
  QTest::keyClicks(edit(10), QString(100, QChar('7')));
  EXPECT_EQ(edit(10)->text().size(), 79);
  ASSERT_EQ(dialog.sync(false), kNoErr);
  const std::string jotf = JOTFDocumentText(JOTFSettingsFromTicket(dialog.ticket()));
  EXPECT_NE(jotf.find(">ana</job-accounting-user-id>"), std::string::npos) << jotf;
  EXPECT_NE(jotf.find(">" + std::string(79, '7') + "</job-accounting-id>"), std::string::npos);
}

TEST_F(JobNotesPanelTest, TypedTextsAreOfferedAgainInTheNextDialog) {
  open();
  QTest::keyClicks(edit(4), "Front desk");
  ASSERT_EQ(dialog.sync(false), kNoErr);
  Dialog next;
  open(next);
  auto* recipient = qobject_cast<QComboBox*>(field(4, next));
  ASSERT_NE(recipient, nullptr);
  ASSERT_EQ(recipient->count(), 1);
  EXPECT_EQ(recipient->itemText(0), "Front desk");
  EXPECT_EQ(recipient->currentText(), "") << "an empty ticket starts empty";
}

TEST_F(JobNotesPanelTest, SavedDefaultsFillANewJob) {
  open();
  QTest::keyClicks(edit(3), "Ana");
  QTest::keyClicks(edit(5), "not a default");
  box(8)->setChecked(true);
  QTest::keyClicks(edit(9), "ana");
  dialog.find<QPushButton>("ZJn_11")->click();
  const std::optional<Value> file = CopyUserPreferences(kJobNotesPreferencesFile);
  ASSERT_TRUE(file && file->dictionary());
  Dialog next;
  open(next);
  EXPECT_EQ(edit(3, next)->text(), "Ana");
  EXPECT_EQ(edit(5, next)->text(), "");
  EXPECT_EQ(edit(9, next)->text(), "ana");
  EXPECT_TRUE(next.find<QCheckBox>("ZJn_8")->isChecked());
  ASSERT_EQ(next.sync(false), kNoErr);
  EXPECT_EQ(*next.ticket().getString(key::kJobNotesSenderName), "Ana");
}

TEST_F(JobNotesPanelTest, TheDocumentsNameStandsInForTheJobName) {
  dialog.ticket().setString("Z", key::kPMJobName, "report.pdf");
  open();
  QTest::keyClicks(edit(1), "Brochure");
  box(2)->setChecked(true);
  EXPECT_FALSE(field(1, dialog)->isEnabled());
  EXPECT_EQ(edit(1)->text(), "report.pdf");
  ASSERT_EQ(dialog.sync(false), kNoErr);
  EXPECT_EQ(dialog.ticket().getBoolean(key::kJobNotesUseJobName), true);
  EXPECT_EQ(*text(key::kJobNotesJobName), "Brochure");
  box(2)->setChecked(false);
  EXPECT_EQ(edit(1)->text(), "Brochure");
}

}  // namespace
}  // namespace zorva::test

// The Advanced panel's "Export..." and "Import...": the summary window's
// texts and buttons, "Copy All", the file dialog, and the ticket that comes
// back from an import showing in the panel.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <deque>
#include <functional>

#include "core/ticket_keys.h"
#include "jobticket/jotf_export.h"
#include "modal_driver.h"
#include "plugin_host.h"
#include "support/test_support.h"

namespace zorva::test {
namespace {

namespace key = tkey;
const std::filesystem::path kZorvaPPD =
    std::filesystem::path(ZORVA_TEST_DATA) / "../../examples/zorva-qm4400.ppd";

class JOTFDialogsTest : public ::testing::Test {
 protected:
  void openAdvanced(Dialog& dialog) {
    dialog.start();
    dialog.showPanel(6);
  }
  TempDir dir;
};

TEST_F(JOTFDialogsTest, ExportShowsTheSummaryCopiesItAndWritesTheChosenFile) {
  Dialog dialog;
  dialog.ticket().setString("Z", key::kJobNotesJobName, "Quarterly");
  openAdvanced(dialog);
  dialog.find<QComboBox>("ZAdv_5")->setCurrentIndex(1);  // prescan and gather
  const std::string path = (dir / "job.jotf").string();
  QString shown;
  ModalDriver driver({
      [&](QWidget* summary) {
        EXPECT_EQ(summary->windowTitle(), "Export Zorva Job Ticket");
        EXPECT_EQ(summary->findChild<QPushButton*>("ok")->text(), "Export...");
        EXPECT_EQ(summary->findChild<QPushButton*>("cancel")->text(), "Cancel");
        EXPECT_EQ(summary->findChild<QPushButton*>("copyAll")->text(), "Copy All");
        shown = summary->findChild<QPlainTextEdit*>("lines")->toPlainText();
        Press(summary, "copyAll");
        EXPECT_TRUE(summary->isVisible());  // copying leaves it open
        Press(summary, "ok");
      },
      [&](QWidget* files) { ChooseFile(files, path); },
  });
  dialog.find<QPushButton>("ZAdv_13")->click();
  EXPECT_TRUE(driver.done());
  EXPECT_NE(shown.indexOf("Quarterly"), -1) << shown.toStdString();
  EXPECT_EQ(QApplication::clipboard()->text(), shown);
  // The panel's value went into the ticket before the document was written.
  std::int32_t prescan = 0;
  EXPECT_TRUE(dialog.ticket().getNumber(key::kOPIPrescan, prescan));
  EXPECT_EQ(prescan, 2);
  EXPECT_EQ(ReadText(path), JOTFDocumentText(JOTFSettingsFromTicket(dialog.ticket())));
}

TEST_F(JOTFDialogsTest, CancelInTheSummaryWritesNothing) {
  Dialog dialog;
  openAdvanced(dialog);
  ModalDriver driver({[&](QWidget* summary) { Press(summary, "cancel"); }});
  dialog.find<QPushButton>("ZAdv_13")->click();
  EXPECT_TRUE(driver.done());
  EXPECT_TRUE(std::filesystem::is_empty(dir.path()));
}

// Importing reads the document through the printer's feature database,
// which is there only for the printer's own PPD.
TEST_F(JOTFDialogsTest, ImportShowsWhatTheFileHoldsAndThePanelShowsItAfterwards) {
  const std::string path = (dir / "in.jotf").string();
  {
    Dialog source;
    // The document names a job only together with its sender.
    source.ticket().setString("Z", key::kJobNotesJobName, "Annual");
    source.ticket().setString("Z", key::kJobNotesSenderName, "Ines");
    source.ticket().setNumber("Z", key::kOPIPrescan, 2);
    openAdvanced(source);
    ModalDriver driver({[&](QWidget* summary) { Press(summary, "ok"); },
                        [&](QWidget* files) { ChooseFile(files, path); }});
    source.find<QPushButton>("ZAdv_13")->click();
    ASSERT_TRUE(driver.done());
  }
  Dialog dialog("pap://nowhere/queue", kZorvaPPD);
  openAdvanced(dialog);
  ASSERT_EQ(dialog.find<QComboBox>("ZAdv_5")->currentIndex(), 0);
  ModalDriver driver({
      [&](QWidget* files) { ChooseFile(files, path); },
      [&](QWidget* summary) {
        EXPECT_EQ(summary->windowTitle(), "Import Zorva Job Ticket (in.jotf)");
        EXPECT_EQ(summary->findChild<QPushButton*>("ok")->text(), "Import");
        EXPECT_NE(summary->findChild<QPlainTextEdit*>("lines")->toPlainText().indexOf("Annual"),
                  -1);
        Press(summary, "ok");
      },
  });
  dialog.find<QPushButton>("ZAdv_12")->click();
  EXPECT_TRUE(driver.done());
  const std::string* name = dialog.ticket().getString(key::kJobNotesJobName);
  ASSERT_NE(name, nullptr);
  EXPECT_EQ(*name, "Annual");
  EXPECT_EQ(dialog.find<QComboBox>("ZAdv_5")->currentIndex(), 1);
}

TEST_F(JOTFDialogsTest, AnotherMakersPPDLeavesTheFeatureDatabaseUnloaded) {
  const std::string path = (dir / "in.jotf").string();
  const std::filesystem::path jotf =
      std::filesystem::path(ZORVA_TEST_DATA) / "jotf" / "job-attributes.jotf";
  WriteText(path, ReadText(jotf));
  std::string ppd = ReadText(kZorvaPPD);
  ppd.replace(ppd.find("*Manufacturer: \"Zorva\""), 22, "*Manufacturer: \"Other\"");
  WriteText(dir / "other.ppd", ppd);
  for (const bool ours : {true, false}) {
    Dialog dialog("pap://nowhere/queue", ours ? kZorvaPPD : dir / "other.ppd");
    openAdvanced(dialog);
    QString shown;
    ModalDriver driver({
        [&](QWidget* files) { ChooseFile(files, path); },
        [&](QWidget* summary) {
          shown = summary->findChild<QPlainTextEdit*>("lines")->toPlainText();
          Press(summary, "cancel");
        },
    });
    dialog.find<QPushButton>("ZAdv_12")->click();
    EXPECT_TRUE(driver.done());
    // Only the four headings and their separators without the database.
    EXPECT_EQ(shown.count('\n') > 7, ours) << shown.toStdString();
  }
}

}  // namespace
}  // namespace zorva::test

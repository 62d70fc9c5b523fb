// The Paper/Output panel in the real module: the defaults it shows, the
// duplex it takes from the printer's PPD, its finishing menu for the
// printer's finisher, the finishing dialogs (OK, Cancel, refused values) and
// what the job ticket then exports, the paper dialog and the job-type set-up.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>
#include <deque>
#include <functional>

#include "core/ticket_keys.h"
#include "jobticket/jotf_frame.h"
#include "jobticket/jotf_summary.h"
#include "modal_driver.h"
#include "model/stock.h"
#include "plugin_host.h"
#include "support/test_support.h"

namespace zorva::test {
namespace {

namespace key = tkey;
const std::filesystem::path kZorvaPPD =
    std::filesystem::path(ZORVA_TEST_DATA) / "../../examples/zorva-qm4400.ppd";

class PaperOutputPanelTest : public ::testing::Test {
 protected:
  explicit PaperOutputPanelTest(std::filesystem::path ppd = {})
      : dialog("pap://nowhere/queue", std::move(ppd)) {}
  void open() {
    dialog.start();
    ASSERT_EQ(dialog.visiblePanel(), 1);
  }
  template <typename T>
  T* control(int number) {
    T* widget = dialog.find<T>(QStringLiteral("ZPpo_%1").arg(number));
    EXPECT_NE(widget, nullptr) << number;
    return widget;
  }
  std::int32_t number(std::string_view name) {
    std::int32_t n = -1;
    EXPECT_TRUE(dialog.ticket().getNumber(name, n)) << name;
    return n;
  }
  QAction* finishingItem(const QString& text) {
    for (QAction* a : control<QPushButton>(8)->menu()->actions()) {
      if (a->text() == text) return a;
    }
    ADD_FAILURE() << "no finishing item " << text.toStdString();
    return nullptr;
  }
  QStringList finishingTexts() {
    QStringList texts;
    for (QAction* a : control<QPushButton>(8)->menu()->actions()) {
      texts << (a->isSeparator() ? QStringLiteral("-") : a->text());
    }
    return texts;
  }
  Dialog dialog;
};

TEST_F(PaperOutputPanelTest, AnEmptyTicketShowsAndWritesTheDefaults) {
  open();
  EXPECT_EQ(control<QLabel>(1)->text(), "Printer Default");
  EXPECT_EQ(control<QComboBox>(3)->currentText(), "Print");
  EXPECT_FALSE(control<QPushButton>(4)->isEnabled());
  EXPECT_EQ(control<QComboBox>(6)->currentText(), "Color");
  EXPECT_EQ(control<QComboBox>(7)->currentText(), "Printer Default");
  EXPECT_EQ(control<QLabel>(9)->text(), "Printer Default");
  EXPECT_EQ(control<QSpinBox>(11)->value(), 24);
  EXPECT_FALSE(control<QSpinBox>(11)->isEnabled());
  // Without a finisher only the fixed items show.
  EXPECT_EQ(finishingTexts(), (QStringList{"Printer Default", "None", "-", "-"}));
  EXPECT_EQ(control<QComboBox>(7)->count(), 2);
  // What the defaults are is the panel logic's test; here they are written.
  ASSERT_EQ(dialog.sync(false), kNoErr);
  EXPECT_EQ(number(key::kOutputDestination), 19);
  EXPECT_EQ(number("com.zorva.print.Gutter"), 24);
  EXPECT_NE(dialog.ticket().getDictionary(key::kJobType), nullptr);
}

TEST_F(PaperOutputPanelTest, TicketValuesShowAndChangesAreWritten) {
  open();
  Ticket& t = dialog.ticket();
  t.setNumber("Z", key::kOutputColor, 1);
  t.remove(key::kFinishingDuplex);
  t.setNumber("Z", key::kPMDuplexing, 3);
  t.setBoolean("Z", "com.zorva.print.BookletLayout", true);
  ASSERT_EQ(dialog.sync(true), kNoErr);
  EXPECT_EQ(control<QComboBox>(6)->currentText(), "Grayscale");
  EXPECT_EQ(control<QComboBox>(5)->currentIndex(), 3);
  EXPECT_TRUE(control<QSpinBox>(11)->isEnabled());
  EXPECT_FALSE(control<QComboBox>(5)->isEnabled());
  control<QCheckBox>(10)->setChecked(false);
  EXPECT_TRUE(control<QComboBox>(5)->isEnabled());
  control<QComboBox>(5)->setCurrentIndex(2);  // long edge
  ASSERT_EQ(dialog.sync(false), kNoErr);
  EXPECT_EQ(number(key::kFinishingDuplex), 2);
  EXPECT_EQ(number(key::kPMDuplexing), 2);
  EXPECT_TRUE(Has(Export(t), "two-sided-long-edge"));
}

TEST_F(PaperOutputPanelTest, ValuesTheMenusDoNotListAreKeptUntilTheUserChooses) {
  open();
  Ticket& t = dialog.ticket();
  t.setNumber("Z", key::kOutputDestination, 5);  // an imported "stacker-1"
  t.setDictionary("Z", key::kJobType, Dictionary{{"JobType", Value(4)}});
  ASSERT_EQ(dialog.sync(true), kNoErr);
  ASSERT_EQ(dialog.sync(false), kNoErr);
  EXPECT_EQ(number(key::kOutputDestination), 5);
  std::int32_t type = 0;
  EXPECT_TRUE(t.getDictionary(key::kJobType)->find("JobType")->getNumber(type));
  EXPECT_EQ(type, 4);
  control<QComboBox>(7)->setCurrentIndex(1);  // Auto
  ASSERT_EQ(dialog.sync(false), kNoErr);
  EXPECT_EQ(number(key::kOutputDestination), 1);
}

TEST_F(PaperOutputPanelTest, JobTypeSetupIsEnabledForSecurePrintAndKeepsThePassCode) {
  open();
  QComboBox* type = control<QComboBox>(3);
  type->setCurrentIndex(type->findText("Secure Print"));
  EXPECT_TRUE(control<QPushButton>(4)->isEnabled());
  ModalDriver driver({
      [](QWidget* setup) {
        EXPECT_TRUE(setup->findChild<QLineEdit*>("ZJob_6")->isVisibleTo(setup));
        Press(setup, "ok");  // an empty pass code is refused
      },
      [](QWidget* alert) {
        EXPECT_EQ(alert->objectName(), "JobTypeAlert");
        static_cast<QMessageBox*>(alert)->accept();
      },
      [](QWidget* setup) {
        setup->findChild<QLineEdit*>("ZJob_6")->setText("4711");
        Press(setup, "ok");
      },
  });
  control<QPushButton>(4)->click();
  EXPECT_TRUE(driver.done());
  ASSERT_EQ(dialog.sync(false), kNoErr);
  const Dictionary* jobType = dialog.ticket().getDictionary(key::kJobType);
  ASSERT_NE(jobType, nullptr);
  EXPECT_EQ(*jobType->getString("SecurePrintPassword"), "4711");
  std::int32_t n = 0;
  EXPECT_TRUE(jobType->find("JobType")->getNumber(n) && n == 5);
  // Kept as typed, and shown nowhere: not in the summary, not in the job ticket.
  SummaryLines lines;
  buildSummaryText(dialog.ticket().toDictionary(), lines);
  for (const std::string& line : lines) EXPECT_FALSE(Has(line, "4711")) << line;
  EXPECT_FALSE(Has(Export(dialog.ticket()), "4711"));
}

TEST_F(PaperOutputPanelTest, ASavedJobIsSavedUnderTheJobsNameInTheChosenFormat) {
  dialog.ticket().setString("Z", key::kPMJobName, "Brochure");
  open();
  QComboBox* type = control<QComboBox>(3);
  type->setCurrentIndex(type->findText("Saved Job"));
  ModalDriver driver({
      [](QWidget* setup) {
        EXPECT_FALSE(setup->findChild<QLineEdit*>("ZJob_6")->isVisibleTo(setup));
        Press(setup, "ok");  // neither a name nor the job's name
      },
      [](QWidget* alert) { static_cast<QMessageBox*>(alert)->accept(); },
      [](QWidget* setup) {
        auto* disposition = setup->findChild<QComboBox*>("ZJob_1");
        disposition->setCurrentIndex(disposition->findData(2));
        setup->findChild<QCheckBox*>("ZJob_3")->setChecked(true);
        auto* format = setup->findChild<QComboBox*>("ZJob_5");
        format->setCurrentIndex(format->findData(3));
        Press(setup, "ok");
      },
  });
  control<QPushButton>(4)->click();
  EXPECT_TRUE(driver.done());
  ASSERT_EQ(dialog.sync(false), kNoErr);
  const std::string jotf = Export(dialog.ticket());
  for (const char* part :
       {">print-save</save-disposition>", ">Brochure</save-name>",
        ">application/pdf</save-document-format>", ">file:///job-repository/</save-location>"}) {
    EXPECT_TRUE(Has(jotf, part)) << part << "\n" << jotf;
  }
  // Cancel keeps what was set.
  ModalDriver cancel({[](QWidget* setup) {
    setup->findChild<QCheckBox*>("ZJob_3")->setChecked(false);
    Press(setup, "cancel");
  }});
  control<QPushButton>(4)->click();
  EXPECT_TRUE(cancel.done());
  ASSERT_EQ(dialog.sync(false), kNoErr);
  EXPECT_TRUE(Has(Export(dialog.ticket()), ">Brochure</save-name>"));
}

TEST_F(PaperOutputPanelTest, ThePaperDialogRefusesBadSizesAndCancelChangesNothing) {
  open();
  ModalDriver driver({
      [](QWidget* paper) {
        auto* size = paper->findChild<QComboBox*>("ZStk_2");
        size->setCurrentIndex(size->findData(75));
        paper->findChild<QDoubleSpinBox*>("ZStk_3")->setValue(50);
        paper->findChild<QDoubleSpinBox*>("ZStk_4")->setValue(300);
        Press(paper, "ok");
      },
      [](QWidget* alert) {
        EXPECT_EQ(alert->objectName(), "StockAlert");
        static_cast<QMessageBox*>(alert)->accept();
      },
      [](QWidget* paper) { Press(paper, "cancel"); },
  });
  control<QPushButton>(2)->click();
  EXPECT_TRUE(driver.done());
  EXPECT_EQ(control<QLabel>(1)->text(), "Printer Default");

  ModalDriver again({
      [](QWidget* paper) {
        auto* size = paper->findChild<QComboBox*>("ZStk_2");
        size->setCurrentIndex(size->findData(75));
        paper->findChild<QDoubleSpinBox*>("ZStk_3")->setValue(210);
        paper->findChild<QDoubleSpinBox*>("ZStk_4")->setValue(280);
        auto* weight = paper->findChild<QComboBox*>("ZStk_5");
        weight->setCurrentIndex(weight->findData(-10));
        paper->findChild<QSpinBox*>("ZStk_6")->setValue(120);
        paper->findChild<QLineEdit*>("ZStk_1")->setText("Report Cover");
        Press(paper, "ok");
      },
  });
  control<QPushButton>(2)->click();
  EXPECT_TRUE(again.done());
  EXPECT_EQ(control<QLabel>(1)->text(), "Report Cover");
  ASSERT_EQ(dialog.sync(false), kNoErr);
  const std::string jotf = Export(dialog.ticket());
  EXPECT_TRUE(Has(jotf, "<x-dimension syntax=\"integer\">21000</x-dimension>")) << jotf;
  EXPECT_TRUE(Has(jotf, "<y-dimension syntax=\"integer\">28000</y-dimension>")) << jotf;
  EXPECT_TRUE(Has(jotf, "120")) << jotf;
}

TEST_F(PaperOutputPanelTest, ThePaperDialogKeepsSizesAndTypesItsMenusDoNotList) {
  Stock paper;
  paper.setSize(18);  // A5: in the size table, not in the menu
  paper.setType(4);   // pre-cut tabs
  paper.setModulus(5);
  dialog.ticket().setDictionary("Z", key::kJobLevelStock, paper.asTicket());
  open();
  ModalDriver driver({[](QWidget* w) {
    w->findChild<QLineEdit*>("ZStk_16")->setText("Tabbed A5");
    Press(w, "ok");
  }});
  control<QPushButton>(2)->click();
  EXPECT_TRUE(driver.done());
  ASSERT_EQ(dialog.sync(false), kNoErr);
  const Stock back(dialog.ticket().getDictionary(key::kJobLevelStock));
  EXPECT_EQ(back.size(), 18);
  EXPECT_EQ(back.type(), 4);
  EXPECT_EQ(back.modulus(), 5);
  EXPECT_EQ(back.description(), "Tabbed A5");
}

TEST_F(PaperOutputPanelTest, TabStockTakesItsSetSizeFromTheSetUp) {
  open();
  QString alert;
  ModalDriver driver({
      [](QWidget* paper) {
        auto* type = paper->findChild<QComboBox*>("ZStk_7");
        type->setCurrentIndex(type->findData(5));  // full-cut tabs
        EXPECT_TRUE(paper->findChild<QPushButton*>("ZStk_19")->isEnabled());
        PressLater(paper, "ZStk_19");
      },
      [](QWidget* setup) {
        setup->findChild<QSpinBox*>("ZOrd_1")->setValue(0);
        Press(setup, "ok");
      },
      [&](QWidget* box) {
        alert = static_cast<QMessageBox*>(box)->text();
        static_cast<QMessageBox*>(box)->accept();
      },
      [](QWidget* setup) {
        setup->findChild<QSpinBox*>("ZOrd_1")->setValue(8);
        Press(setup, "ok");
      },
      [](QWidget* paper) { Press(paper, "ok"); },
  });
  control<QPushButton>(2)->click();
  EXPECT_TRUE(driver.done());
  EXPECT_EQ(alert, "The number must be between 1 and 99.");
  ASSERT_EQ(dialog.sync(false), kNoErr);
  const Dictionary* stock = dialog.ticket().getDictionary(key::kJobLevelStock);
  ASSERT_NE(stock, nullptr);
  std::int32_t modulus = 0;
  EXPECT_TRUE(stock->find("Modulus") && stock->find("Modulus")->getNumber(modulus));
  EXPECT_EQ(modulus, 8);
}

class PaperOutputWithFinisherTest : public PaperOutputPanelTest {
 protected:
  PaperOutputWithFinisherTest() : PaperOutputPanelTest(kZorvaPPD) {}
};

TEST_F(PaperOutputWithFinisherTest, TheMenuAndDestinationsFollowTheFinisher) {
  open();
  EXPECT_EQ(finishingTexts(), (QStringList{"Printer Default", "None", "1 Staple...", "2 Staples...",
                                           "-", "Slip Sheets", "Offset/Subset...", "-"}));
  QStringList destinations;
  for (int i = 0; i < control<QComboBox>(7)->count(); ++i) {
    destinations << control<QComboBox>(7)->itemText(i);
  }
  EXPECT_EQ(destinations, (QStringList{"Printer Default", "Auto", "Finisher B: Main Stacker",
                                       "Finisher B: Top Tray"}));
}

// Every position's export is the finishing dialogs' test; here the panel
// takes the dialog's choice into its menu mark, line and ticket.
TEST_F(PaperOutputWithFinisherTest, AStaplePositionExportsAsItIsNamed) {
  open();
  struct Case {
    QString item;
    QString position;
    int expected;
  };
  const Case cases[] = {
      {"1 Staple...", "Top Right", 22},
      {"2 Staples...", "Bottom", 31},
  };
  for (const Case& c : cases) {
    ModalDriver driver({[&](QWidget* w) {
      auto* popup = w->findChild<QComboBox*>("ZFin_1");
      const int index = popup->findText(c.position);
      ASSERT_GE(index, 0) << c.position.toStdString();
      popup->setCurrentIndex(index);
      Press(w, "ok");
    }});
    finishingItem(c.item)->trigger();
    EXPECT_TRUE(driver.done());
    EXPECT_TRUE(finishingItem(c.item)->isChecked());
    ASSERT_EQ(dialog.sync(false), kNoErr);
    const std::string jotf = Export(dialog.ticket());
    EXPECT_TRUE(Has(jotf, "<value syntax=\"enum\">" + std::to_string(c.expected) + "</value>"))
        << c.position.toStdString() << "\n"
        << jotf;
  }
  EXPECT_EQ(control<QLabel>(9)->text(), "2 Staples: Bottom");
}

TEST_F(PaperOutputWithFinisherTest, CancelLeavesTheFinishingAsItWas) {
  open();
  ModalDriver driver({[](QWidget* w) { Press(w, "ok"); }, [](QWidget* w) { Press(w, "cancel"); }});
  finishingItem("1 Staple...")->trigger();
  const QString before = control<QLabel>(9)->text();
  finishingItem("2 Staples...")->trigger();
  EXPECT_TRUE(driver.done());
  EXPECT_EQ(control<QLabel>(9)->text(), before);
  ASSERT_EQ(dialog.sync(false), kNoErr);
  EXPECT_EQ(number(key::kFinishingOptions), 2);
  EXPECT_EQ(number(key::kFinishingStaple2), 0);
}

TEST_F(PaperOutputWithFinisherTest, SlipSheetsAndOffsetExport) {
  open();
  finishingItem("Slip Sheets")->trigger();
  ModalDriver driver({[](QWidget* w) {
    auto* offset = w->findChild<QComboBox*>("ZFin_1");
    offset->setCurrentIndex(offset->findData(3));
    w->findChild<QCheckBox*>("ZFin_5")->setChecked(true);
    w->findChild<QSpinBox*>("ZFin_6")->setValue(5);
    Press(w, "ok");
  }});
  finishingItem("Offset/Subset...")->trigger();
  EXPECT_TRUE(driver.done());
  EXPECT_EQ(control<QLabel>(9)->text(), "Printer Default; Slip Sheets; Offset");
  ASSERT_EQ(dialog.sync(false), kNoErr);
  EXPECT_EQ(number(key::kFinishingSlipSheet), 2);
  EXPECT_EQ(number(key::kFinishingOffsetPagesPerSubset), 5);
  const std::string jotf = Export(dialog.ticket());
  EXPECT_TRUE(Has(jotf, "separator-sheets")) << jotf;
  EXPECT_TRUE(Has(jotf, "offset-set")) << jotf;
}

// A printer whose default is short-edge two-sided printing.
class PaperOutputDuplexDefaultTest : public PaperOutputPanelTest {
 protected:
  static std::filesystem::path WritePPD(const TempDir& dir) {
    std::string text = ReadText(kZorvaPPD);
    const std::string from = "*DefaultDuplex: None";
    const auto at = text.find(from);
    EXPECT_NE(at, std::string::npos);
    if (at != std::string::npos) text.replace(at, from.size(), "*DefaultDuplex: DuplexTumble");
    const auto path = dir / "tumble.ppd";
    WriteText(path, text);
    return path;
  }
  PaperOutputDuplexDefaultTest() : PaperOutputPanelTest(WritePPD(dir)) {}
  static TempDir dir;
};
TempDir PaperOutputDuplexDefaultTest::dir;

TEST_F(PaperOutputDuplexDefaultTest, ThePPDsDefaultIsTheLastFallback) {
  open();
  EXPECT_EQ(control<QComboBox>(5)->currentIndex(), 3);
  // Opening a dialog after another one writes the shown panel first.
  dialog.ticket().remove(key::kFinishingDuplex);
  dialog.ticket().setNumber("Z", key::kPMDuplexing, 1);
  ASSERT_EQ(dialog.sync(true), kNoErr);
  EXPECT_EQ(control<QComboBox>(5)->currentIndex(), 1);
  dialog.ticket().setNumber("Z", key::kFinishingDuplex, 2);
  ASSERT_EQ(dialog.sync(true), kNoErr);
  EXPECT_EQ(control<QComboBox>(5)->currentIndex(), 2);
}

TEST_F(PaperOutputPanelTest, BackgroundFormsMergeWithAStoredFormAndRememberItsName) {
  TempDir prefs;
  setenv("ZORVA_PREFERENCES_DIR", prefs.path().c_str(), 1);
  open();
  QString alert;
  ModalDriver driver({
      [](QWidget* w) {
        auto* choice = w->findChild<QComboBox*>("ZBfm_1");
        choice->setCurrentIndex(choice->findData(2));
        Press(w, "ok");  // no form named
      },
      [&](QWidget* box) {
        alert = static_cast<QMessageBox*>(box)->text();
        static_cast<QMessageBox*>(box)->accept();
      },
      [](QWidget* w) {
        w->findChild<QComboBox*>("ZBfm_2")->setEditText("Letterhead");
        w->findChild<QSpinBox*>("ZBfm_5")->setValue(3);
        w->findChild<QDoubleSpinBox*>("ZBfm_6")->setValue(0.5);
        Press(w, "ok");
      },
  });
  control<QPushButton>(14)->click();
  EXPECT_TRUE(driver.done());
  EXPECT_EQ(alert, "Type the name of the form.");
  EXPECT_EQ(control<QLabel>(15)->text(), "Letterhead");
  ASSERT_EQ(dialog.sync(false), kNoErr);
  const std::string jotf = Export(dialog.ticket());
  EXPECT_TRUE(Has(jotf, ">Letterhead</form-name>")) << jotf;
  EXPECT_TRUE(Has(jotf, ">3</form-cycle-start>")) << jotf;
  EXPECT_TRUE(Has(jotf, ">1270</forms-x-image-shift>")) << jotf;

  // The name is offered next time; Cancel keeps everything.
  ModalDriver again({[](QWidget* w) {
    auto* merge = w->findChild<QComboBox*>("ZBfm_2");
    EXPECT_EQ(merge->itemText(0), "Letterhead");
    w->findChild<QComboBox*>("ZBfm_1")->setCurrentIndex(0);
    Press(w, "cancel");
  }});
  control<QPushButton>(14)->click();
  EXPECT_TRUE(again.done());
  EXPECT_EQ(control<QLabel>(15)->text(), "Letterhead");
  unsetenv("ZORVA_PREFERENCES_DIR");
}

// zorva-print reads the ticket into the panel and writes it back on OK; the
// zorva tool's export then names the paper, sides, colour, bin and staples.
TEST(PaperOutputEndToEnd, ValuesSavedByZorvaPrintExportAsChosen) {
  TempDir dir;
  const auto path = dir / "job.plist";
  Ticket chosen;
  Stock paper;
  paper.setSize(4);
  paper.setWeight(120);
  chosen.setDictionary("Z", key::kJobLevelStock, paper.asTicket());
  chosen.setNumber("Z", key::kFinishingDuplex, 3);
  chosen.setNumber("Z", key::kOutputColor, 1);
  chosen.setNumber("Z", key::kOutputDestination, 4);
  chosen.setNumber("Z", key::kFinishingOptions, 3);
  chosen.setNumber("Z", key::kFinishingStaple2, 12);
  ASSERT_EQ(chosen.save(path), 0);
  const ToolResult print = RunProgram(
      ZORVA_PRINT_TOOL, {"--ticket", path.string(), "--ppd", kZorvaPPD.string(), "--ok"});
  ASSERT_EQ(print.exitCode, 0) << print.err;
  const std::optional<Ticket> saved = Ticket::Load(path);
  ASSERT_TRUE(saved);
  // The panel wrote its keys, the platform duplex among them.
  std::int32_t platform = 0;
  EXPECT_TRUE(saved->getNumber(key::kPMDuplexing, platform));
  EXPECT_EQ(platform, 3);
  const auto jotf = dir / "job.jotf";
  const ToolResult exported = RunTool({"jotf", "export", path.string(), "-o", jotf.string()});
  ASSERT_EQ(exported.exitCode, 0) << exported.err;
  const std::string text = ReadText(jotf);
  for (const char* part : {"<x-dimension syntax=\"integer\">21000</x-dimension>",
                           "<media-weight-metric syntax=\"integer\">120</media-weight-metric>",
                           ">two-sided-short-edge</sides>", ">monochrome-grayscale<",
                           ">stacker</output-bin>", "<value syntax=\"enum\">31</value>"}) {
    EXPECT_TRUE(Has(text, part)) << part << "\n" << text;
  }
}

// Pictures of the panel and its dialogs, kept when ZORVA_SCREENSHOT_DIR is set.
TEST_F(PaperOutputWithFinisherTest, Pictures) {
  open();
  dialog.pane().show();
  const char* dir = std::getenv("ZORVA_SCREENSHOT_DIR");
  const auto save = [dir](QWidget* w, const char* name) {
    const QImage image = w->grab().toImage();
    EXPECT_FALSE(image.isNull()) << name;
    if (dir) {
      EXPECT_TRUE(image.save(QString::fromUtf8(dir) + "/" + name));
    }
  };
  save(&dialog.pane(), "paper-output-panel.png");
  ModalDriver driver({
      [&](QWidget* w) {
        save(w, "staple-dialog.png");
        Press(w, "cancel");
      },
      [&](QWidget* w) {
        save(w, "offset-dialog.png");
        Press(w, "cancel");
      },
      [&](QWidget* w) {
        save(w, "paper-dialog.png");
        Press(w, "cancel");
      },
      [&](QWidget* w) {
        save(w, "background-forms-dialog.png");
        Press(w, "cancel");
      },
      [&](QWidget* w) {
        save(w, "saved-job-dialog.png");
        Press(w, "cancel");
      },
  });
  finishingItem("2 Staples...")->trigger();
  finishingItem("Offset/Subset...")->trigger();
  control<QPushButton>(2)->click();
  control<QPushButton>(14)->click();
  control<QComboBox>(3)->setCurrentIndex(control<QComboBox>(3)->findText("Saved Job"));
  control<QPushButton>(4)->click();
  EXPECT_TRUE(driver.done());
}

}  // namespace
}  // namespace zorva::test

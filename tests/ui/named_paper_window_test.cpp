// The named-paper library window: a paper made with "New..." lands in My
// Paper List and "Use In Job" hands it back; a paper without a name is
// refused; under "Force Unique Names" a taken name asks to "Replace"; the
// printer's papers can be added to the user's. Runs in this process with a
// preference folder of its own.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QTreeWidget>

#include "modal_driver.h"
#include "paper/ipp_papers.h"
#include "paper/printer_named_papers.h"
#include "paper/stock_library.h"
#include "paper/stock_library_view.h"
#include "support/test_support.h"
#include "ui/named_paper_window.h"

namespace zorva::test {
namespace {

class NamedPaperWindowTest : public ::testing::Test {
 protected:
  NamedPaperWindowTest() { setenv("ZORVA_PREFERENCES_DIR", prefs.path().c_str(), 1); }
  ~NamedPaperWindowTest() override {
    unsetenv("ZORVA_PREFERENCES_DIR");
    ClearPrinterNamedPaperList();
  }
  static QTreeWidget* Table(QWidget* w) { return w->findChild<QTreeWidget*>("ZNpl_2"); }
  static QTreeWidgetItem* Row(QWidget* w, const QString& name) {
    const auto found = Table(w)->findItems(name, Qt::MatchExactly, 1);
    return found.isEmpty() ? nullptr : found.front();
  }
  // The paper dialog: names the paper and picks A4.
  static ModalDriver::Step NamePaper(const QString& name) {
    return [name](QWidget* paper) {
      paper->findChild<QLineEdit*>("ZStk_1")->setText(name);
      auto* size = paper->findChild<QComboBox*>("ZStk_2");
      size->setCurrentIndex(size->findData(4));
      Press(paper, "ok");
    };
  }
  TempDir prefs;
};

TEST_F(NamedPaperWindowTest, ANewPaperIsStoredAndUsedInTheJob) {
  Stock job;
  ModalDriver driver({
      [](QWidget* w) { PressLater(w, "ZNpl_3"); },
      NamePaper(""),
      [](QWidget* alert) {
        EXPECT_EQ(alert->objectName(), "NamedPaperAlert");
        static_cast<QMessageBox*>(alert)->accept();
      },
      [](QWidget* w) { PressLater(w, "ZNpl_3"); },
      NamePaper("Gloss 170"),
      [](QWidget* w) {
        QTreeWidgetItem* row = Row(w, "Gloss 170");
        ASSERT_NE(row, nullptr);
        EXPECT_EQ(row->text(2), "A4 (210 x 297 mm)");
        Table(w)->setCurrentItem(row);
        if (const char* dir = std::getenv("ZORVA_SCREENSHOT_DIR")) {
          w->grab().save(QString::fromUtf8(dir) + "/named-papers.png");
        }
        Press(w, "ok");
      },
  });
  ASSERT_TRUE(RunModalNamedPaperWindow(nullptr, job, nullptr));
  EXPECT_TRUE(driver.done());
  EXPECT_EQ(job.customName(), "Gloss 170");
  EXPECT_EQ(job.size(), 4);
  // Stored for good: a new list reads it back.
  const StockLibraryList mine;
  EXPECT_TRUE(mine.isDuplicate("GLOSS 170"));
}

TEST_F(NamedPaperWindowTest, AForcedUniqueNameAsksToReplaceAndDoneChangesNotTheJob) {
  {
    StockLibraryList mine;
    StockLibrary entry;
    Stock stock;
    stock.setCustomName("Bond");
    stock.setSize(1);
    entry.setStock(stock);
    mine.add(entry);
  }
  Stock job;
  job.setSize(5);
  QString message;
  ModalDriver driver({
      [](QWidget* w) {
        w->findChild<QCheckBox*>("ZNpl_8")->setChecked(true);
        PressLater(w, "ZNpl_3");
      },
      NamePaper("bond"),
      [&](QWidget* box) {
        auto* alert = static_cast<QMessageBox*>(box);
        message = alert->text();
        for (QAbstractButton* b : alert->buttons()) {
          if (b->text() == "Replace") b->click();
        }
      },
      [](QWidget* w) {
        // One paper of that name, holding what was just typed.
        EXPECT_EQ(Row(w, "Bond"), nullptr);
        QTreeWidgetItem* row = Row(w, "bond");
        EXPECT_NE(row, nullptr);
        EXPECT_EQ(row ? row->text(2) : QString(), "A4 (210 x 297 mm)");
        Press(w, "cancel");
      },
  });
  EXPECT_FALSE(RunModalNamedPaperWindow(nullptr, job, nullptr));
  EXPECT_TRUE(driver.done());
  EXPECT_EQ(message, "A paper named \"bond\" is already in My Paper List. Replace it?");
  EXPECT_EQ(job.size(), 5);
}

TEST_F(NamedPaperWindowTest, APrinterPaperIsAddedToMyPaperList) {
  PrinterStockList fetched;
  auto stock = std::make_unique<Stock>();
  stock->setCustomName("Printer Coated 250");
  stock->setWeight(250);
  fetched.push_back(std::move(stock));
  ASSERT_TRUE(RebuildPrinterNamedPaperList(3, &fetched));
  Stock job;
  ModalDriver driver({
      [](QWidget* w) {
        w->findChild<QComboBox*>("ZNpl_1")->setCurrentIndex(1);
        EXPECT_FALSE(w->findChild<QPushButton*>("ZNpl_3")->isEnabled());
        QTreeWidgetItem* row = Row(w, "Printer Coated 250");
        ASSERT_NE(row, nullptr);
        EXPECT_EQ(row->text(6), "250 gsm");
        Table(w)->setCurrentItem(row);
        Press(w, "ZNpl_7");
        EXPECT_EQ(w->findChild<QComboBox*>("ZNpl_1")->currentIndex(), 0);
        Table(w)->setCurrentItem(Row(w, "Printer Coated 250"));
        Press(w, "ok");
      },
  });
  ASSERT_TRUE(RunModalNamedPaperWindow(nullptr, job, nullptr));
  EXPECT_TRUE(driver.done());
  EXPECT_EQ(job.weight(), 250);
}

TEST_F(NamedPaperWindowTest, PreferencesChooseTheColumnsAndAreKept) {
  Stock job;
  ModalDriver driver({
      [](QWidget* w) { PressLater(w, "ZNpl_9"); },
      [](QWidget* preferences) {
        preferences->findChild<QCheckBox*>("ZNpp_2")->setChecked(false);  // colour
        preferences->findChild<QComboBox*>("ZNpp_13")->setCurrentIndex(1);
        Press(preferences, "ok");
      },
      [](QWidget* w) {
        EXPECT_TRUE(Table(w)->isColumnHidden(3));
        EXPECT_FALSE(Table(w)->isColumnHidden(2));
        EXPECT_TRUE(w->findChild<QCheckBox*>("ZNpl_8")->isChecked());
        PressLater(w, "ZNpl_9");
      },
      [](QWidget* preferences) {
        preferences->findChild<QCheckBox*>("ZNpp_1")->setChecked(false);
        Press(preferences, "cancel");
      },
      [](QWidget* w) {
        EXPECT_FALSE(Table(w)->isColumnHidden(2));
        Press(w, "cancel");
      },
  });
  EXPECT_FALSE(RunModalNamedPaperWindow(nullptr, job, nullptr));
  EXPECT_TRUE(driver.done());
  const StockLibraryViewPreferences kept = ReadStockLibraryViewPreferences();
  EXPECT_FALSE(kept.showColumn[1]);
  EXPECT_TRUE(kept.showColumn[0]);
  EXPECT_TRUE(kept.forceUniqueNames);
}

}  // namespace
}  // namespace zorva::test

// The finishing dialogs with a finisher that can do everything: every item
// of the finishing menu is chosen through its dialog, and the job ticket
// then lists the finishings the dialog named. Cancel changes nothing; a
// multiple finishing of one part and a custom finishing without a name are
// refused. The dialogs run in this process, so the test installs its own
// finisher.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>

#include "modal_driver.h"
#include "panels/paper_output.h"
#include "support/finishing_enums.h"
#include "ui/finishing_dialogs.h"

namespace zorva::test {
namespace {

namespace key = tkey;

// A finisher that can do everything.
struct EveryFeature : InstalledFinisher {
  EveryFeature() : InstalledFinisher(EveryFinishingFeature()) {}
};

// Chooses item `pick` (counted from the last) in every shown pop-up, names a
// custom finishing, and accepts.
void Fill(QWidget* w, int pick) {
  for (QComboBox* popup : w->findChildren<QComboBox*>()) {
    if (!popup->isVisibleTo(w) || popup->count() == 0) continue;
    popup->setCurrentIndex(std::max(0, popup->count() - 1 - pick % popup->count()));
  }
  if (auto* name = w->findChild<QLineEdit*>("ZFin_4"); name && name->isVisibleTo(w)) {
    name->setText("Wire-O");
  }
  Press(w, "ok");
}

TEST(FinishingDialogs, EveryMenuItemExportsWhatItsDialogNamed) {
  EveryFeature finisher;
  int checked = 0;
  for (const FinishingMenuItem& item : PopulateFinishingMenu()) {
    if (item.kind != FinishingItemKind::Choice || !FinishingOptionHasDialog(item.option)) continue;
    for (int pick = 0; pick < 4; ++pick) {
      PaperOutputSettings s;
      ModalDriver driver({[pick](QWidget* w) { Fill(w, pick); }});
      ASSERT_TRUE(RunModalFinishingDialog(nullptr, s, item.option)) << item.textKey;
      EXPECT_TRUE(driver.done());
      EXPECT_EQ(s.finishingOptions, item.option);
      Ticket ticket;
      WritePaperOutputSettings(ticket, s);
      const std::string jotf = Export(ticket);
      if (item.option == finishing::kCustom) {
        EXPECT_TRUE(Has(jotf, ">Wire-O</finishing-template>")) << jotf;
        ++checked;
        continue;
      }
      int named = 0;
      for (const FinishingValue& v : kFinishingValues) {
        if (FinishingFieldValue(s, v.key) != v.value) continue;
        ++named;
        EXPECT_TRUE(Has(jotf, FinishingEnumLine(kFinishingEnumForName.at(v.nameKey))))
            << item.textKey << " " << v.nameKey << "\n"
            << jotf;
      }
      EXPECT_GE(named, 1) << item.textKey;
      ++checked;
    }
  }
  // Staples (3), bind, punches (3), fold, Z-fold, multiple, custom, booklet.
  EXPECT_EQ(checked, 12 * 4);
}

TEST(FinishingDialogs, CancelChangesNothing) {
  EveryFeature finisher;
  PaperOutputSettings s;
  s.finishingOptions = finishing::kOneStaple;
  s.staple1 = 5;
  ModalDriver driver({[](QWidget* w) {
    w->findChild<QComboBox*>("ZFin_1")->setCurrentIndex(1);
    Press(w, "cancel");
  }});
  EXPECT_FALSE(RunModalFinishingDialog(nullptr, s, finishing::kFold));
  EXPECT_TRUE(driver.done());
  EXPECT_EQ(s.finishingOptions, finishing::kOneStaple);
  EXPECT_EQ(s.staple1, 5);
  EXPECT_EQ(s.fold, 0);
}

TEST(FinishingDialogs, OnePartOfAMultipleFinishingOrANamelessCustomOneIsRefused) {
  EveryFeature finisher;
  PaperOutputSettings s;
  QString alert;
  ModalDriver driver({
      [](QWidget* w) {
        // Only a staple: the punch and Z-fold pop-ups stay at "None".
        w->findChild<QComboBox*>("ZFin_1")->setCurrentIndex(1);
        Press(w, "ok");
      },
      [&](QWidget* box) {
        alert = static_cast<QMessageBox*>(box)->text();
        static_cast<QMessageBox*>(box)->accept();
      },
      [](QWidget* w) {
        w->findChild<QComboBox*>("ZFin_7")->setCurrentIndex(2);
        Press(w, "ok");
      },
  });
  ASSERT_TRUE(RunModalFinishingDialog(nullptr, s, finishing::kMultiple));
  EXPECT_TRUE(driver.done());
  EXPECT_EQ(alert, "Choose at least two finishings to combine.");
  EXPECT_EQ(s.staple1, 5);
  EXPECT_EQ(s.zFold, 22);

  ModalDriver custom({
      [](QWidget* w) { Press(w, "ok"); },
      [&](QWidget* box) {
        alert = static_cast<QMessageBox*>(box)->text();
        static_cast<QMessageBox*>(box)->accept();
      },
      [](QWidget* w) { Press(w, "cancel"); },
  });
  EXPECT_FALSE(RunModalFinishingDialog(nullptr, s, finishing::kCustom));
  EXPECT_TRUE(custom.done());
  EXPECT_EQ(alert, "Type the name of the finishing template.");
  EXPECT_EQ(s.finishingOptions, finishing::kMultiple);
}

}  // namespace
}  // namespace zorva::test

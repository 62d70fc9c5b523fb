// The cover, insert and exception-page dialogs: views from the bundle, the
// entry shown from the page being edited, and on OK the entry handed to the
// editing model, which refuses bad page text with a code this file alerts.
#include "ui/special_pages_dialogs.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <array>
#include <memory>

#include "host/keyword_tables.h"
#include "model/page_ranges.h"
#include "model/summaries.h"
#include "panels/special_pages.h"
#include "ui/controls.h"
#include "ui/image_options_dialogs.h"
#include "ui/panel_view.h"
#include "ui/paper_dialogs.h"

namespace zorva {
namespace {

QString Text(const std::string& s) {
  return QString::fromStdString(s);
}

// Shows the value; one the table does not list shows nothing and is kept.
void ShowPopupValue(QComboBox* popup, std::int32_t value) {
  if (!SetPopupButtonToTicketValue(popup, value)) popup->setCurrentIndex(-1);
}

std::int32_t PopupValue(const QComboBox* popup, std::int32_t held) {
  return popup->currentIndex() >= 0 ? GetPopupButtonTicketValue(popup) : held;
}

// Runs the dialog until the entry is taken (true) or the user cancels;
// `apply` gives the model's code, and a refused entry alerts and goes back.
template <typename Apply>
bool RunUntilApplied(const Bundle* bundle, QDialog* dialog, Apply apply) {
  while (dialog->exec() == QDialog::Accepted) {
    const Status code = apply();
    if (code == kNoErr) return true;
    SpecialPagesUserNotification(code, bundle, dialog);
  }
  return false;
}

// ---- Cover ----------------------------------------------------------------------------

struct CoverControls {
  std::array<QRadioButton*, 3> choices{};  // front, back, both
  QLabel* note = nullptr;
  QComboBox* sides = nullptr;
  QPushButton* paper = nullptr;
  QLabel* summary = nullptr;
};

bool FindCoverControls(QWidget* view, CoverControls& c) {
  for (int i = 0; i < 3; ++i) c.choices[i] = NumberedControl<QRadioButton>(view, "ZCov", i + 1);
  c.note = view->findChild<QLabel*>("ZCov_note");
  c.sides = NumberedControl<QComboBox>(view, "ZCov", 4);
  c.paper = NumberedControl<QPushButton>(view, "ZCov", 5);
  c.summary = NumberedControl<QLabel>(view, "ZCov", 6);
  return c.choices[0] && c.choices[1] && c.choices[2] && c.note && c.sides && c.paper && c.summary;
}

void ShowCoverStock(const Bundle* bundle, const CoverControls& c, const Cover& cover) {
  const std::string summary = CreateStockSummary(*cover.stock(), bundle, ", ");
  // Nothing chosen: the cover is printed on the job's paper.
  c.summary->setText(summary.empty() ? LocalizedText(bundle, "UseJobSetting") : Text(summary));
}

// ---- Insert ---------------------------------------------------------------------------

struct InsertControls {
  QLineEdit* pages = nullptr;
  QCheckBox* beforeFirst = nullptr;
  QSpinBox* quantity = nullptr;
  QPushButton* paper = nullptr;
  QLabel* description = nullptr;
};

bool FindInsertControls(QWidget* view, InsertControls& c) {
  c.pages = NumberedControl<QLineEdit>(view, "ZIns", 1);
  c.beforeFirst = NumberedControl<QCheckBox>(view, "ZIns", 2);
  c.quantity = NumberedControl<QSpinBox>(view, "ZIns", 3);
  c.paper = NumberedControl<QPushButton>(view, "ZIns", 4);
  c.description = NumberedControl<QLabel>(view, "ZIns", 5);
  return c.pages && c.beforeFirst && c.quantity && c.paper && c.description;
}

// The page being edited, or a reset one for a new entry.
Insert StartingInsert(const Insert* editing) {
  if (editing) return Insert(*editing);
  Insert insert;
  ResetInsert(insert);
  return insert;
}

ExceptionPage StartingPage(const ExceptionPage* editing) {
  if (editing) return ExceptionPage(*editing);
  ExceptionPage page;
  ResetExceptionPage(page);
  return page;
}

// ---- Exception pages --------------------------------------------------------------------

// Control numbers of the exception dialog ("ZExc_<n>"); the menus are 3 to 7
// in the order of ExceptionMenuRows().
constexpr int kExceptionPages = 1;
constexpr int kExceptionPaper = 2;
constexpr int kFirstExceptionMenu = 3;
constexpr int kImageShiftButton = 8;
constexpr int kJobImageShiftButton = 9;
constexpr int kImageShiftSummary = 10;
constexpr int kFullColorButton = 11;
constexpr int kFullColorSummary = 12;
constexpr int kExceptionDescription = 13;

struct ExceptionControls {
  QLineEdit* pages = nullptr;
  QPushButton* paper = nullptr;
  std::vector<QComboBox*> menus;
  QPushButton* imageShift = nullptr;
  QPushButton* jobImageShift = nullptr;
  QLabel* imageShiftSummary = nullptr;
  QPushButton* fullColor = nullptr;
  QLabel* fullColorSummary = nullptr;
  QLabel* description = nullptr;
};

bool FindExceptionControls(QWidget* view, ExceptionControls& c) {
  c.pages = NumberedControl<QLineEdit>(view, "ZExc", kExceptionPages);
  c.paper = NumberedControl<QPushButton>(view, "ZExc", kExceptionPaper);
  bool menus = true;
  for (std::size_t i = 0; i < ExceptionMenuRows().size(); ++i) {
    c.menus.push_back(
        NumberedControl<QComboBox>(view, "ZExc", kFirstExceptionMenu + static_cast<int>(i)));
    menus = menus && c.menus.back();
  }
  c.imageShift = NumberedControl<QPushButton>(view, "ZExc", kImageShiftButton);
  c.jobImageShift = NumberedControl<QPushButton>(view, "ZExc", kJobImageShiftButton);
  c.imageShiftSummary = NumberedControl<QLabel>(view, "ZExc", kImageShiftSummary);
  c.fullColor = NumberedControl<QPushButton>(view, "ZExc", kFullColorButton);
  c.fullColorSummary = NumberedControl<QLabel>(view, "ZExc", kFullColorSummary);
  c.description = NumberedControl<QLabel>(view, "ZExc", kExceptionDescription);
  return menus && c.pages && c.paper && c.imageShift && c.jobImageShift && c.imageShiftSummary &&
         c.fullColor && c.fullColorSummary && c.description;
}

// The menus into the page (values the menus cannot show are kept).
void TakeExceptionMenus(const ExceptionControls& c, ExceptionPage& page) {
  const auto rows = ExceptionMenuRows();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    (page.*rows[i].set)(PopupValue(c.menus[i], (page.*rows[i].get)()));
  }
}

// The summaries of what the buttons hold, and the whole entry's description.
void ShowExceptionSummaries(const Bundle* bundle, const ExceptionControls& c,
                            const ExceptionPage& page) {
  const ImageShiftOptions& shift = page.imageShift();
  c.imageShiftSummary->setText(shift.hasMode() ? ImageShiftSummaryText(bundle, shift)
                                               : LocalizedText(bundle, "PageImageShiftNone"));
  c.jobImageShift->setEnabled(shift.hasMode());
  const bool colorSet = !page.colorOptions().asTicket().empty();
  c.fullColorSummary->setText(
      LocalizedText(bundle, colorSet ? "FullColorSummarySet" : "PageFullColorNone"));
  // The pages as typed, shown with the settings.
  ExceptionPage shown(page);
  const PageRangeList ranges =
      CreatePageRangesBySeparatingString(c.pages->text().toStdString(), /*asRanges=*/true);
  if (ranges.code == kNoErr && ranges.ranges.size() == 1) {
    shown.setStartPage(ranges.ranges[0].first);
    shown.setEndPage(ranges.ranges[0].first + ranges.ranges[0].count - 1);
  }
  c.description->setText(Text(CreateExceptionAttributesDescription(bundle, &shown)));
}

void ConnectExceptionButtons(const Bundle* bundle, QDialog* dialog, const ExceptionControls& c,
                             ExceptionPage& page) {
  const auto refresh = [bundle, &c, &page] {
    TakeExceptionMenus(c, page);
    ShowExceptionSummaries(bundle, c, page);
  };
  QObject::connect(c.paper, &QPushButton::clicked, dialog, [dialog, &page, refresh] {
    if (RunModalStockDialog(dialog, *page.stock(), JobContext::ExceptionPage)) refresh();
  });
  QObject::connect(c.imageShift, &QPushButton::clicked, dialog, [bundle, dialog, &page, refresh] {
    if (RunModalImageShiftDialog(bundle, dialog, page.imageShift())) refresh();
  });
  QObject::connect(c.jobImageShift, &QPushButton::clicked, dialog, [&page, refresh] {
    page.imageShift() = ImageShiftOptions();
    refresh();
  });
  QObject::connect(c.fullColor, &QPushButton::clicked, dialog, [bundle, dialog, &page, refresh] {
    if (RunModalFullColorSetup(bundle, dialog, page.colorOptions(), JobContext::ExceptionPage))
      refresh();
  });
  for (QComboBox* menu : c.menus) {
    QObject::connect(menu, &QComboBox::currentIndexChanged, dialog, refresh);
  }
  QObject::connect(c.pages, &QLineEdit::textChanged, dialog, refresh);
}

}  // namespace

void SpecialPagesUserNotification(Status code, const Bundle* bundle, QWidget* parent) {
  const std::optional<SpecialPagesAlertText> text = SpecialPagesAlertTextFor(code, bundle);
  if (!text) return;
  QMessageBox box(QMessageBox::Warning, Text(text->title), Text(text->message), QMessageBox::Ok,
                  parent);
  box.setObjectName("SpecialPagesAlert");
  box.setProperty("code", code);
  box.exec();
}

bool RunModalCoverDialog(const Bundle* bundle, QWidget* parent, SpecialPagesContext& pages,
                         const SpecialPageItem* editing, bool booklet) {
  std::unique_ptr<QDialog> dialog =
      LoadDialog(bundle, "CoverDialog", "CoverDialog", "CoverDialogTitle", "ZCov", parent);
  CoverControls c;
  if (!dialog || !FindCoverControls(dialog.get(), c)) return false;
  CoverEntry entry = CoverEntryFor(pages, editing, booklet);
  const std::optional<CoverChoice> started =
      editing ? std::optional<CoverChoice>(entry.choice) : std::nullopt;
  c.choices[static_cast<int>(entry.choice) - 1]->setChecked(true);
  // Under booklet layout the one cover is both covers; the note says why.
  c.choices[0]->setEnabled(!booklet);
  c.choices[1]->setEnabled(!booklet);
  c.note->setVisible(booklet);
  PopulatePopupButtonFromMap(bundle, c.sides, CoverSidesImagedMap, JobContext::FrontCover, 0);
  ShowPopupValue(c.sides, entry.cover.sidesImaged());
  ShowCoverStock(bundle, c, entry.cover);
  QObject::connect(c.paper, &QPushButton::clicked, dialog.get(),
                   [bundle, &c, &entry, d = dialog.get()] {
                     if (RunModalStockDialog(d, *entry.cover.stock(), JobContext::FrontCover)) {
                       ShowCoverStock(bundle, c, entry.cover);
                     }
                   });
  dialog->adjustSize();
  const bool accepted = RunUntilApplied(bundle, dialog.get(), [&] {
    for (int i = 0; i < 3; ++i) {
      if (c.choices[i]->isChecked()) entry.choice = static_cast<CoverChoice>(i + 1);
    }
    entry.cover.setSidesImaged(PopupValue(c.sides, entry.cover.sidesImaged()));
    ApplyCoverEntry(pages, entry, started, booklet);
    return kNoErr;
  });
  dialog.reset();  // gone before the entry its signals reach
  return accepted;
}

bool RunModalInsertDialog(const Bundle* bundle, QWidget* parent, SpecialPagesContext& pages,
                          const Insert* editing) {
  std::unique_ptr<QDialog> dialog =
      LoadDialog(bundle, "InsertDialog", "InsertDialog", "InsertDialogTitle", "ZIns", parent);
  InsertControls c;
  if (!dialog || !FindInsertControls(dialog.get(), c)) return false;
  Insert insert = StartingInsert(editing);
  c.pages->setPlaceholderText(LocalizedText(bundle, "PagesPlaceholder"));
  c.pages->setText(Text(PageEntryText(editing)));
  c.beforeFirst->setChecked(editing && editing->startPage() == 0);
  c.pages->setEnabled(!c.beforeFirst->isChecked());
  c.quantity->setRange(1, kMaxInsertQuantity);
  c.quantity->setValue(insert.quantity());
  const auto describe = [bundle, &c, &insert] {
    insert.setQuantity(c.quantity->value());
    c.description->setText(Text(CreateInsertAttributesDescription(bundle, &insert)));
  };
  describe();
  QObject::connect(c.beforeFirst, &QCheckBox::toggled, dialog.get(),
                   [&c](bool before) { c.pages->setEnabled(!before); });
  QObject::connect(c.quantity, &QSpinBox::valueChanged, dialog.get(), describe);
  QObject::connect(c.paper, &QPushButton::clicked, dialog.get(),
                   [&insert, describe, d = dialog.get()] {
                     if (RunModalStockDialog(d, *insert.stock(), JobContext::Insert)) describe();
                   });
  dialog->adjustSize();
  const bool accepted = RunUntilApplied(bundle, dialog.get(), [&] {
    insert.setQuantity(c.quantity->value());
    return ApplyInsertEntry(pages, c.pages->text().toStdString(), c.beforeFirst->isChecked(),
                            insert, editing);
  });
  dialog.reset();
  return accepted;
}

bool RunModalExceptionDialog(const Bundle* bundle, QWidget* parent, SpecialPagesContext& pages,
                             const ExceptionPage* editing) {
  std::unique_ptr<QDialog> dialog = LoadDialog(bundle, "ExceptionDialog", "ExceptionDialog",
                                               "ExceptionDialogTitle", "ZExc", parent);
  ExceptionControls c;
  if (!dialog || !FindExceptionControls(dialog.get(), c)) return false;
  ExceptionPage page = StartingPage(editing);
  const auto rows = ExceptionMenuRows();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    PopulatePopupButtonFromMap(bundle, c.menus[i], rows[i].map, JobContext::ExceptionPage, 0);
    ShowPopupValue(c.menus[i], (page.*rows[i].get)());
  }
  c.pages->setPlaceholderText(LocalizedText(bundle, "PagesPlaceholder"));
  c.pages->setText(Text(PageEntryText(editing)));
  ShowExceptionSummaries(bundle, c, page);
  ConnectExceptionButtons(bundle, dialog.get(), c, page);
  dialog->adjustSize();
  const bool accepted = RunUntilApplied(bundle, dialog.get(), [&] {
    TakeExceptionMenus(c, page);
    return ApplyExceptionEntry(pages, c.pages->text().toStdString(), page, editing);
  });
  dialog.reset();
  return accepted;
}

}  // namespace zorva

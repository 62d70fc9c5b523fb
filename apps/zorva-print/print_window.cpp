// The print dialog window. The standard choices live in the print settings
// and page format under the platform's own keys, so the plug-in, the job
// ticket and the job options all read them where they always have.
#include "print_window.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>

#include "jobticket/jotf_page_size.h"
#include "preview_pane.h"
#include "print/presets.h"
#include "print/print_job.h"
#include "print/printers.h"

namespace zorva {

namespace {

constexpr const char* kOrientations[] = {"Portrait", "Landscape", "Reverse Portrait",
                                         "Reverse Landscape"};
constexpr int kMaxCopies = 9999;
constexpr int kMaxPage = 99999;

QString Q(const std::string& s) {
  return QString::fromStdString(s);
}

}  // namespace

PrintWindow::PrintWindow(PDEInterfaceTable& ops, std::filesystem::path document,
                         std::optional<Ticket> settings)
    : ops_(ops), document_(std::move(document)), initial_(std::move(settings)) {
  setWindowTitle(QStringLiteral("Print %1").arg(Q(document_.filename().string())));
  // The choices and the plug-in's pane on the left, the preview beside them.
  auto* outer = new QVBoxLayout(this);
  auto* body = new QHBoxLayout;
  auto* layout = new QVBoxLayout;
  body->addLayout(layout, 1);
  preview_ = new PreviewPane(this);
  preview_->setObjectName("preview");
  preview_->setDocument(document_);
  body->addWidget(preview_);
  outer->addLayout(body, 1);

  // Printer and presets each on a row of their own: printer descriptions can
  // be long, and the presets' buttons stay next to their menu.
  auto* top = new QFormLayout;
  printers_ = new QComboBox(this);
  printers_->setObjectName("printers");
  printers_->setMinimumWidth(260);
  printers_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  presets_ = new QComboBox(this);
  presets_->setObjectName("presets");
  presets_->setMinimumWidth(260);
  presets_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  auto* save = new QPushButton(QStringLiteral("Save…"), this);
  save->setObjectName("savePreset");
  auto* remove = new QPushButton(QStringLiteral("Delete"), this);
  remove->setObjectName("deletePreset");
  auto* printerRow = new QHBoxLayout;
  printerRow->addWidget(printers_);
  printerRow->addStretch();
  auto* presetRow = new QHBoxLayout;
  presetRow->addWidget(presets_);
  presetRow->addWidget(save);
  presetRow->addWidget(remove);
  presetRow->addStretch();
  top->addRow(QStringLiteral("Printer:"), printerRow);
  top->addRow(QStringLiteral("Presets:"), presetRow);
  layout->addLayout(top);

  auto* job = new QGroupBox(QStringLiteral("Copies and Pages"), this);
  auto* grid = new QHBoxLayout(job);
  auto* left = new QFormLayout;
  auto* copiesRow = new QHBoxLayout;
  copies_ = new QSpinBox(job);
  copies_->setObjectName("copies");
  copies_->setRange(1, kMaxCopies);
  collate_ = new QCheckBox(QStringLiteral("Collated"), job);
  collate_->setObjectName("collate");
  copiesRow->addWidget(copies_);
  copiesRow->addWidget(collate_);
  copiesRow->addStretch();
  left->addRow(QStringLiteral("Copies:"), copiesRow);
  auto* pagesRow = new QHBoxLayout;
  allPages_ = new QRadioButton(QStringLiteral("All"), job);
  somePages_ = new QRadioButton(QStringLiteral("From"), job);
  from_ = new QSpinBox(job);
  to_ = new QSpinBox(job);
  from_->setObjectName("fromPage");
  to_->setObjectName("toPage");
  from_->setRange(1, kMaxPage);
  to_->setRange(1, kMaxPage);
  pagesRow->addWidget(allPages_);
  pagesRow->addWidget(somePages_);
  pagesRow->addWidget(from_);
  pagesRow->addWidget(new QLabel(QStringLiteral("to"), job));
  pagesRow->addWidget(to_);
  pagesRow->addStretch();
  left->addRow(QStringLiteral("Pages:"), pagesRow);
  auto* right = new QFormLayout;
  orientation_ = new QComboBox(job);
  orientation_->setObjectName("orientation");
  for (const char* o : kOrientations) orientation_->addItem(QString::fromUtf8(o));
  paper_ = new QComboBox(job);
  paper_->setObjectName("paperSize");
  right->addRow(QStringLiteral("Orientation:"), orientation_);
  right->addRow(QStringLiteral("Paper Size:"), paper_);
  grid->addLayout(left, 1);
  grid->addLayout(right, 1);
  layout->addWidget(job);

  paneArea_ = new QVBoxLayout;
  layout->addLayout(paneArea_, 1);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  printButton_ = buttons->addButton(QStringLiteral("Print"), QDialogButtonBox::AcceptRole);
  printButton_->setObjectName("print");
  printButton_->setDefault(true);
  outer->addWidget(buttons);

  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(printButton_, &QPushButton::clicked, this, &PrintWindow::printClicked);
  connect(printers_, qOverload<int>(&QComboBox::activated), this, &PrintWindow::printerChosen);
  connect(presets_, qOverload<int>(&QComboBox::activated), this, &PrintWindow::presetChosen);
  connect(save, &QPushButton::clicked, this, &PrintWindow::savePreset);
  connect(remove, &QPushButton::clicked, this, &PrintWindow::deletePreset);
  connect(somePages_, &QRadioButton::toggled, from_, &QWidget::setEnabled);
  connect(somePages_, &QRadioButton::toggled, to_, &QWidget::setEnabled);
  connect(preview_, &PreviewPane::refreshRequested, this, &PrintWindow::refreshPreview);
  connect(allPages_, &QRadioButton::toggled, this, &PrintWindow::pageRangeChanged);
  connect(from_, &QSpinBox::valueChanged, this, &PrintWindow::pageRangeChanged);
  connect(to_, &QSpinBox::valueChanged, this, &PrintWindow::pageRangeChanged);
}

PrintWindow::~PrintWindow() {
  closePrinter();
}

std::string PrintWindow::start(const std::string& printer) {
  std::string error;
  const std::vector<PrinterQueue> queues = ListPrinterQueues(&error);
  if (!error.empty()) return error;
  if (queues.empty()) return "the print server has no printers";
  int chosen = -1;
  for (const PrinterQueue& q : queues) {
    printers_->addItem(Q(q.info == q.name ? q.name : q.info + " (" + q.name + ")"));
    queues_.push_back(q.name);
    const int index = static_cast<int>(queues_.size()) - 1;
    if (printer.empty() ? q.isDefault && chosen < 0 : q.name == printer) chosen = index;
  }
  if (chosen < 0 && !printer.empty()) return "no printer named \"" + printer + "\"";
  if (chosen < 0) chosen = 0;
  printers_->setCurrentIndex(chosen);
  return openPrinter(queues_[static_cast<std::size_t>(chosen)], initial_);
}

std::string PrintWindow::openPrinter(const std::string& name, std::optional<Ticket> settings) {
  PPDPtr ppd = PPDOpenQueue(name);
  if (!ppd) return "cannot get the PPD of printer \"" + name + "\"";
  std::string uri;
  std::string ignored;
  for (const PrinterQueue& q : ListPrinterQueues(&ignored)) {
    if (q.name == name) uri = q.deviceUri;
  }
  auto session = std::make_unique<PrintSession>(name, uri, std::filesystem::path());
  if (!settings) settings = LoadLastUsedSettings(name);
  if (settings) {
    session->printSettings() = std::move(*settings);
  } else if (session_) {
    session->printSettings() = session_->printSettings();  // carried over from the last printer
  }
  session_ = std::move(session);
  ppd_ = std::move(ppd);
  papers_ = PPDPaperSizes(ppd_.get());

  pane_ = new QWidget(this);
  paneArea_->addWidget(pane_);
  std::uint32_t creator = 0;
  const char* kind = nullptr;
  const char* title = nullptr;
  float maxH = 0;
  float maxV = 0;
  std::uint32_t flags = 0;
  if (ops_.Prologue(&context_, &creator, &kind, &title, &maxH, &maxV) != kNoErr) {
    context_ = nullptr;
    return "the plug-in could not be set up";
  }
  pane_->setMinimumSize(static_cast<int>(maxH), static_cast<int>(maxV));
  if (ops_.Initialize(context_, &flags, nullptr, pane_, session_.get()) != kNoErr ||
      ops_.Open(context_) != kNoErr) {
    return "the plug-in's panels could not be shown";
  }
  settingsToControls();
  fillPresets();
  // Switching panels shows what the panel left behind; queued, so the host
  // has finished the switch (and the panel its Sync) first.
  if (auto* tabs = pane_->findChild<QComboBox*>("Zshl_16")) {
    connect(tabs, &QComboBox::currentIndexChanged, this, &PrintWindow::refreshPreview,
            Qt::QueuedConnection);
  }
  refreshPreview();
  return {};
}

void PrintWindow::refreshPreview() {
  if (!session_) return;
  if (context_ != nullptr) ops_.Sync(context_, session_.get(), false);
  controlsToSettings();
  preview_->setSettings(session_->printSettings(), ppd_.get());
}

void PrintWindow::pageRangeChanged() {
  if (loadingControls_ || !session_) return;
  controlsToSettings();
  preview_->setSettings(session_->printSettings(), ppd_.get());
}

void PrintWindow::closePrinter() {
  if (context_ != nullptr) {
    ops_.Sync(context_, session_.get(), false);
    controlsToSettings();
    ops_.Close(context_);
    ops_.Terminate(context_, kNoErr);
    context_ = nullptr;
  }
  delete pane_;  // also the pane of a plug-in that could not be set up
  pane_ = nullptr;
}

void PrintWindow::printerChosen(int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= queues_.size()) return;
  const std::string previous = session_ ? session_->printerName() : std::string();
  const std::string name = queues_[static_cast<std::size_t>(index)];
  if (name == previous) return;
  closePrinter();
  if (std::string error = openPrinter(name, std::nullopt); !error.empty()) {
    QMessageBox::warning(this, windowTitle(), Q(error));
    closePrinter();
    const auto back = std::find(queues_.begin(), queues_.end(), previous);
    printers_->setCurrentIndex(static_cast<int>(back - queues_.begin()));
    if (!previous.empty()) openPrinter(previous, std::nullopt);
  }
}

void PrintWindow::fillPresets() {
  presets_->clear();
  presets_->addItem(QStringLiteral("Last Used Settings"));
  for (const std::string& name : ListPresets()) presets_->addItem(Q(name), Q(name));
}

void PrintWindow::presetChosen(int index) {
  if (!session_ || context_ == nullptr) return;
  std::optional<Ticket> chosen;
  std::string error;
  if (index == 0) {
    chosen = LoadLastUsedSettings(session_->printerName());
  } else {
    chosen = LoadPreset(presets_->itemData(index).toString().toStdString(), &error);
  }
  if (!chosen) {
    if (!error.empty()) QMessageBox::warning(this, windowTitle(), Q(error));
    return;
  }
  session_->printSettings() = std::move(*chosen);
  ops_.Sync(context_, session_.get(), true);
  settingsToControls();
  preview_->setSettings(session_->printSettings(), ppd_.get());
}

void PrintWindow::savePreset() {
  if (!session_ || context_ == nullptr) return;
  bool ok = false;
  const QString name =
      QInputDialog::getText(this, QStringLiteral("Save Preset"), QStringLiteral("Preset name:"),
                            QLineEdit::Normal, presets_->currentData().toString(), &ok);
  if (!ok) return;
  ops_.Sync(context_, session_.get(), false);
  controlsToSettings();
  std::string error;
  if (!SavePreset(name.toStdString(), session_->printSettings(), &error)) {
    QMessageBox::warning(this, windowTitle(), Q(error));
    return;
  }
  fillPresets();
  presets_->setCurrentIndex(presets_->findData(name));
}

void PrintWindow::deletePreset() {
  const QString name = presets_->currentData().toString();
  if (name.isEmpty()) return;
  if (QMessageBox::question(this, windowTitle(),
                            QStringLiteral("Delete the preset \"%1\"?").arg(name)) !=
      QMessageBox::Yes) {
    return;
  }
  std::string error;
  if (!DeletePreset(name.toStdString(), &error)) {
    QMessageBox::warning(this, windowTitle(), Q(error));
  }
  fillPresets();
}

void PrintWindow::settingsToControls() {
  loadingControls_ = true;
  const Ticket& t = session_->printSettings();
  std::int32_t copies = 1;
  t.getNumber(tkey::kPMCopies, copies);
  copies_->setValue(copies);
  collate_->setChecked(t.getBoolean(tkey::kPMCopyCollate).value_or(true));
  std::int32_t first = 1;
  std::int32_t last = kAllPages;
  t.getNumber(tkey::kPMFirstPage, first);
  t.getNumber(tkey::kPMLastPage, last);
  const bool all = first <= 1 && last >= kAllPages;
  (all ? allPages_ : somePages_)->setChecked(true);
  from_->setEnabled(!all);
  to_->setEnabled(!all);
  from_->setValue(all ? 1 : first);
  to_->setValue(all ? 1 : last);
  std::int32_t orientation = 0;
  session_->pageFormat().getNumber(tkey::kPMOrientation, orientation);
  orientation_->setCurrentIndex(orientation >= 0 && orientation < 4 ? orientation : 0);
  paper_->clear();
  std::optional<std::string> choice = PPDCopyCurrentChoice(t, "PageSize");
  if (!choice) choice = PPDCopyDefaultChoice(ppd_.get(), "PageSize");
  for (const PPDPaperSize& p : papers_) {
    paper_->addItem(Q(p.text.empty() ? p.choice : p.text), Q(p.choice));
    if (choice && p.choice == *choice) paper_->setCurrentIndex(paper_->count() - 1);
  }
  loadingControls_ = false;
  controlsToSettings();  // the page format the job ticket's paper fallback reads
}

void PrintWindow::controlsToSettings() {
  if (!session_) return;
  Ticket& t = session_->printSettings();
  t.setNumber(kTicketClientSystem, tkey::kPMCopies, copies_->value());
  t.setBoolean(kTicketClientSystem, tkey::kPMCopyCollate, collate_->isChecked());
  const bool all = allPages_->isChecked();
  t.setNumber(kTicketClientSystem, tkey::kPMFirstPage, all ? 1 : from_->value());
  t.setNumber(kTicketClientSystem, tkey::kPMLastPage,
              all ? kAllPages : std::max(from_->value(), to_->value()));
  Ticket& page = session_->pageFormat();
  page.setNumber(kTicketClientSystem, tkey::kPMOrientation, orientation_->currentIndex());
  const int index = paper_->currentIndex();
  if (index >= 0 && static_cast<std::size_t>(index) < papers_.size()) {
    const PPDPaperSize& p = papers_[static_cast<std::size_t>(index)];
    PPDSetCurrentChoice(t, "PageSize", p.choice);
    if (p.width > 0 && p.length > 0) {
      page.setReal(kTicketClientSystem, tkey::kPMPaperWidth, p.width);
      page.setReal(kTicketClientSystem, tkey::kPMPaperLength, p.length);
    }
  }
}

std::string PrintWindow::print() {
  if (std::optional<PrintFailure> bad = CheckPrintDocument(document_)) return bad->message;
  if (!session_ || context_ == nullptr) return "no printer is chosen";
  ops_.Sync(context_, session_.get(), false);
  controlsToSettings();
  const PrintJob job = BuildPrintJob(*session_, ppd_.get(), document_, true);
  int id = 0;
  if (std::optional<PrintFailure> failure = SubmitPrintJob(job, &id)) return failure->message;
  submitted_ = session_->printerName() + "-" + std::to_string(id);
  std::string ignored;  // the job is printing; a settings file we cannot write is no reason to stop
  SaveLastUsedSettings(session_->printerName(), session_->printSettings(), &ignored);
  return {};
}

void PrintWindow::printClicked() {
  if (std::string error = print(); !error.empty()) {
    QMessageBox::warning(this, windowTitle(), Q(error));
    return;
  }
  accept();
}

}  // namespace zorva

// The named-paper library window ("NamedPapers"). The user's list is read
// when the window opens and every change is written at once; the printer's
// list is the one the last paper-list fetch built, and is only read here.
#include "ui/named_paper_window.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QHeaderView>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <array>
#include <memory>

#include "core/bundle.h"
#include "core/ticket.h"
#include "host/keyword_tables.h"
#include "paper/printer_named_papers.h"
#include "paper/stock_library.h"
#include "paper/stock_library_view.h"
#include "paper/stock_status.h"
#include "ui/controls.h"
#include "ui/panel_view.h"
#include "ui/paper_dialogs.h"

namespace zorva {
namespace {

constexpr int kMyList = 0;
constexpr int kPrinterList = 1;
constexpr int kUUIDRole = 0x0100;  // Qt::UserRole
constexpr int kStatusColumn = 0;
constexpr int kNameColumn = 1;

// Where each optional column's text comes from.
struct ColumnSource {
  const SettingMap* map;  // nullptr: a text or number of its own
  std::int32_t (Stock::*number)() const;
};

const ColumnSource kColumnSources[] = {
    {StockSizeMap, &Stock::size},
    {StockColorMap, &Stock::color},
    {StockTypeMap, &Stock::type},
    {StockPunchedMap, &Stock::punched},
    {nullptr, &Stock::weight},
    {SidesCoatedMap, &Stock::sidesCoated},
    {CoatingTypeMap, &Stock::coatingType},
    {FinishMap, &Stock::finish},
    {GrainMap, &Stock::grain},
    {nullptr, nullptr},
    {nullptr, nullptr},
};
static_assert(std::size(kColumnSources) == kStockLibraryColumns.size());

// A dot in the status colour; the icon's file name goes with it for tools.
QIcon StatusIcon(std::int32_t status) {
  QPixmap pixmap(12, 12);
  pixmap.fill(Qt::transparent);
  const QColor colours[] = {Qt::transparent, QColor(40, 150, 60), QColor(200, 50, 40),
                            QColor(40, 110, 200)};
  if (status >= 1 && status <= 3) {
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(colours[status]);
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(1, 1, 10, 10);
  }
  return QIcon(pixmap);
}

QString Text(const OptionalString& s) {
  return QString::fromStdString(s.value_or(std::string()));
}

QString ColumnText(const Bundle* bundle, const Stock& s, std::size_t column) {
  if (column == 9) return Text(s.description());
  if (column == 10) return Text(s.comment());
  const ColumnSource& source = kColumnSources[column];
  const std::int32_t value = (s.*source.number)();
  if (value == kUnset) return LocalizedText(bundle, "PrinterDefault");
  if (!source.map) return QStringLiteral("%1 gsm").arg(value);
  if (source.map == StockTypeMap && value == 7) return Text(s.customType());
  if (source.map == StockColorMap && value == 10) return Text(s.customColor());
  if (source.map == StockSizeMap && value == kStockSizeCustom) {
    return QStringLiteral("%1 x %2 mm").arg(s.width() / 100.0).arg(s.length() / 100.0);
  }
  const char* key = LocalizedKeyForTicketValue(source.map, value);
  return key ? LocalizedText(bundle, key) : QString::number(value);
}

struct Window {
  std::unique_ptr<QWidget> view;
  QDialog* dialog = nullptr;
  QComboBox* which = nullptr;
  QTreeWidget* table = nullptr;
  QPushButton* create = nullptr;
  QPushButton* copy = nullptr;
  QPushButton* edit = nullptr;
  QPushButton* remove = nullptr;
  QPushButton* addToMine = nullptr;
  QCheckBox* unique = nullptr;
  QPushButton* use = nullptr;
  StockLibraryList mine;
  StockLibraryViewPreferences preferences = ReadStockLibraryViewPreferences();
  const Bundle* bundle = GetPDEBundle();

  const StockLibraryList* shown() const {
    return which->currentIndex() == kPrinterList ? PrinterNamedPaperList() : &mine;
  }
  std::optional<StockLibrary> selected() const {
    const QTreeWidgetItem* item = table->currentItem();
    const StockLibraryList* list = shown();
    if (!item || !list) return std::nullopt;
    return list->entry(item->data(kNameColumn, kUUIDRole).toString().toStdString());
  }
};

void FillTable(Window& w) {
  QStringList headers{QString(), LocalizedText(w.bundle, "Paper Name Column")};
  for (const char* column : kStockLibraryColumns) headers << LocalizedText(w.bundle, column);
  w.table->clear();
  w.table->setHeaderLabels(headers);
  for (std::size_t c = 0; c < kStockLibraryColumns.size(); ++c) {
    w.table->setColumnHidden(int(c) + 2, !w.preferences.showColumn[c]);
  }
  const StockLibraryList* list = w.shown();
  if (!list) return;
  for (const StockLibrary& e : SortedStockLibraryEntries(*list, kColumnName)) {
    if (e.status() == 2 && !w.preferences.showUnsupportedValues) continue;
    if (e.status() == 3 && !w.preferences.showUnsupportedAttributes) continue;
    auto* item = new QTreeWidgetItem(w.table);
    item->setIcon(kStatusColumn, StatusIcon(e.status()));
    item->setToolTip(kStatusColumn, StockStatusIconName(e.status()));
    item->setData(kStatusColumn, Qt::UserRole + 1, e.status());
    item->setText(kNameColumn, Text(e.stock().customName()));
    item->setData(kNameColumn, kUUIDRole, QString::fromStdString(e.uuid()));
    for (std::size_t c = 0; c < kStockLibraryColumns.size(); ++c) {
      item->setText(int(c) + 2, ColumnText(w.bundle, e.stock(), c));
    }
  }
  w.table->sortItems(kNameColumn, Qt::AscendingOrder);
  w.table->header()->resizeSections(QHeaderView::ResizeToContents);
}

void KeepButtonsInStep(Window& w) {
  const bool mine = w.which->currentIndex() == kMyList;
  const bool any = w.table->currentItem() != nullptr;
  w.create->setEnabled(mine);
  w.copy->setEnabled(mine && any);
  w.edit->setEnabled(mine && any);
  w.remove->setEnabled(mine && any);
  w.addToMine->setEnabled(!mine && any);
  w.use->setEnabled(any);
}

void Alert(QWidget* parent, const char* key) {
  QMessageBox box(QMessageBox::Warning, LocalizedText(GetPDEBundle(), "PaperStock"),
                  LocalizedText(GetPDEBundle(), key), QMessageBox::Ok, parent);
  box.setObjectName("NamedPaperAlert");
  box.exec();
}

// Stores the entry as a new paper. A paper must have a name; under "Force
// Unique Names" a taken name asks whether to replace that paper.
bool Store(Window& w, StockLibrary entry) {
  const std::string name = entry.stock().customName().value_or(std::string());
  if (name.empty()) {
    Alert(w.dialog, "Paper Name Empty");
    return false;
  }
  if (w.preferences.forceUniqueNames && w.mine.isDuplicate(name)) {
    QMessageBox box(
        QMessageBox::Warning, LocalizedText(w.bundle, "PaperStock"),
        LocalizedText(w.bundle, "Replace Named Paper Message", {FormatArg(std::string_view(name))}),
        QMessageBox::NoButton, w.dialog);
    box.setObjectName("ReplaceNamedPaper");
    QPushButton* replace =
        box.addButton(LocalizedText(w.bundle, "Replace"), QMessageBox::AcceptRole);
    box.addButton(LocalizedText(w.bundle, "Cancel"), QMessageBox::RejectRole);
    box.exec();
    if (box.clickedButton() != replace) return false;
    w.mine.replace(entry);
    return true;
  }
  w.mine.add(entry);
  return true;
}

void Create(Window& w, const Stock& start) {
  Stock stock = start;
  if (!RunModalStockDialog(w.dialog, stock, JobContext::Job)) return;
  StockLibrary entry;
  entry.setStock(stock);
  if (Store(w, entry)) FillTable(w);
}

// The list preferences: which columns show, the list shown first, whether
// names must be unique and whether papers the device cannot take show.
bool RunPreferences(QWidget* parent, StockLibraryViewPreferences& p) {
  const Bundle* bundle = GetPDEBundle();
  Status status = kNoErr;
  std::unique_ptr<QWidget> view(LoadView(bundle, "NamedPaperPreferences", "Preferences", &status));
  auto* dialog = qobject_cast<QDialog*>(view.get());
  if (!dialog) return false;
  if (parent) dialog->setParent(parent, dialog->windowFlags());
  dialog->setWindowTitle(LocalizedText(bundle, "Named Paper Preferences"));
  std::array<QCheckBox*, kStockLibraryColumns.size()> columns{};
  for (std::size_t i = 0; i < columns.size(); ++i) {
    columns[i] = dialog->findChild<QCheckBox*>(QStringLiteral("ZNpp_%1").arg(i + 1));
    if (!columns[i]) return false;
    columns[i]->setChecked(p.showColumn[i]);
  }
  auto* list = dialog->findChild<QComboBox*>("ZNpp_12");
  auto* names = dialog->findChild<QComboBox*>("ZNpp_13");
  auto* values = dialog->findChild<QCheckBox*>("ZNpp_14");
  auto* attributes = dialog->findChild<QCheckBox*>("ZNpp_15");
  auto* ok = dialog->findChild<QPushButton*>("ok");
  auto* cancel = dialog->findChild<QPushButton*>("cancel");
  if (!list || !names || !values || !attributes || !ok || !cancel) return false;
  list->addItems(
      {LocalizedText(bundle, "My Paper List"), LocalizedText(bundle, "Printer Paper List")});
  names->addItems({LocalizedText(bundle, "Allow Duplicate Names"),
                   LocalizedText(bundle, "Force Unique Names")});
  list->setCurrentIndex(p.printerListByDefault ? 1 : 0);
  names->setCurrentIndex(p.forceUniqueNames ? 1 : 0);
  values->setChecked(p.showUnsupportedValues);
  attributes->setChecked(p.showUnsupportedAttributes);
  QObject::connect(ok, &QPushButton::clicked, dialog, &QDialog::accept);
  QObject::connect(cancel, &QPushButton::clicked, dialog, &QDialog::reject);
  dialog->adjustSize();
  if (dialog->exec() != QDialog::Accepted) return false;
  for (std::size_t i = 0; i < columns.size(); ++i) p.showColumn[i] = columns[i]->isChecked();
  p.printerListByDefault = list->currentIndex() == 1;
  p.forceUniqueNames = names->currentIndex() == 1;
  p.showUnsupportedValues = values->isChecked();
  p.showUnsupportedAttributes = attributes->isChecked();
  return true;
}

void Connect(Window& w) {
  QObject::connect(w.which, &QComboBox::currentIndexChanged, w.dialog, [&w] {
    FillTable(w);
    KeepButtonsInStep(w);
  });
  QObject::connect(w.table, &QTreeWidget::currentItemChanged, w.dialog,
                   [&w] { KeepButtonsInStep(w); });
  QObject::connect(w.create, &QPushButton::clicked, w.dialog, [&w] { Create(w, Stock()); });
  QObject::connect(w.copy, &QPushButton::clicked, w.dialog, [&w] {
    if (const auto e = w.selected()) Create(w, e->stock());
  });
  QObject::connect(w.addToMine, &QPushButton::clicked, w.dialog, [&w] {
    if (const auto e = w.selected(); e && Store(w, *e)) {
      w.which->setCurrentIndex(kMyList);
    }
  });
  QObject::connect(w.edit, &QPushButton::clicked, w.dialog, [&w] {
    auto e = w.selected();
    if (!e || !RunModalStockDialog(w.dialog, e->stock(), JobContext::Job)) return;
    if (e->stock().customName().value_or(std::string()).empty()) {
      Alert(w.dialog, "Paper Name Empty");
      return;
    }
    w.mine.update(e->uuid(), *e);
    FillTable(w);
  });
  QObject::connect(w.remove, &QPushButton::clicked, w.dialog, [&w] {
    if (const auto e = w.selected()) w.mine.remove(e->uuid());
    FillTable(w);
    KeepButtonsInStep(w);
  });
  QObject::connect(w.unique, &QCheckBox::toggled, w.dialog, [&w](bool on) {
    w.preferences.forceUniqueNames = on;
    WriteStockLibraryViewPreferences(w.preferences);
  });
  if (auto* preferences = w.dialog->findChild<QPushButton*>("ZNpl_9")) {
    QObject::connect(preferences, &QPushButton::clicked, w.dialog, [&w] {
      StockLibraryViewPreferences edited = w.preferences;
      if (!RunPreferences(w.dialog, edited)) return;
      w.preferences = edited;
      WriteStockLibraryViewPreferences(w.preferences);
      const QSignalBlocker quiet(w.unique);
      w.unique->setChecked(w.preferences.forceUniqueNames);
      FillTable(w);
      KeepButtonsInStep(w);
    });
  }
  QObject::connect(w.table, &QTreeWidget::itemDoubleClicked, w.dialog, [&w] { w.use->click(); });
  QObject::connect(w.use, &QPushButton::clicked, w.dialog, &QDialog::accept);
  if (auto* done = w.dialog->findChild<QPushButton*>("cancel")) {
    QObject::connect(done, &QPushButton::clicked, w.dialog, &QDialog::reject);
  }
}

bool Open(Window& w, QWidget* parent) {
  Status status = kNoErr;
  w.view.reset(LoadView(w.bundle, "NamedPapers", "NamedPapers", &status));
  w.dialog = qobject_cast<QDialog*>(w.view.get());
  if (!w.dialog) return false;
  if (parent) w.dialog->setParent(parent, w.dialog->windowFlags());
  w.which = w.dialog->findChild<QComboBox*>("ZNpl_1");
  w.table = w.dialog->findChild<QTreeWidget*>("ZNpl_2");
  w.create = w.dialog->findChild<QPushButton*>("ZNpl_3");
  w.copy = w.dialog->findChild<QPushButton*>("ZNpl_4");
  w.edit = w.dialog->findChild<QPushButton*>("ZNpl_5");
  w.remove = w.dialog->findChild<QPushButton*>("ZNpl_6");
  w.addToMine = w.dialog->findChild<QPushButton*>("ZNpl_7");
  w.unique = w.dialog->findChild<QCheckBox*>("ZNpl_8");
  w.use = w.dialog->findChild<QPushButton*>("ok");
  return w.which && w.table && w.create && w.copy && w.edit && w.remove && w.addToMine &&
         w.unique && w.use;
}

}  // namespace

bool RunModalNamedPaperWindow(QWidget* parent, Stock& stock, const Ticket* printSettings) {
  Window w;
  if (!Open(w, parent)) return false;
  w.dialog->setWindowTitle(LocalizedText(w.bundle, "Named Papers"));
  w.which->addItem(LocalizedText(w.bundle, "My Paper List"));
  w.which->addItem(LocalizedText(w.bundle, "Printer Paper List"));
  if (printSettings) markStockStatus(w.mine, *printSettings);
  w.unique->setChecked(w.preferences.forceUniqueNames);
  w.which->setCurrentIndex(
      w.preferences.printerListByDefault && PrinterNamedPaperList() ? kPrinterList : kMyList);
  FillTable(w);
  KeepButtonsInStep(w);
  Connect(w);
  if (w.dialog->exec() != QDialog::Accepted) return false;
  std::optional<StockLibrary> chosen = w.selected();
  if (!chosen) return false;
  Stock taken = chosen->stock();
  validateAndFixStockEntry(taken);
  stock = taken;
  return true;
}

}  // namespace zorva

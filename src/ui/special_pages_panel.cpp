// The Special Pages panel: the list of covers, inserts and exception pages
// with the summary of each, and the buttons that add, edit, delete, undo and
// move them. The editing rules are the model's (special_pages_editing) and
// the panel's own (panels/special_pages); this file keeps the list and the
// buttons in step with them. The panel exists once at a time: a second
// Open of it is refused.
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTreeWidget>
#include <QWidget>
#include <array>
#include <cstdio>
#include <new>

#include "core/print_session.h"
#include "model/summaries.h"
#include "panels/special_pages.h"
#include "ui/controls.h"
#include "ui/panel_view.h"
#include "ui/special_pages_dialogs.h"

namespace zorva {
namespace {

// Buttons of the view ("ZSpg_<n>").
enum Button : int {
  kAddCover = 1,
  kAddInsert,
  kAddException,
  kEdit,
  kDelete,
  kDeleteAll,
  kUndo,
  kMoveUp,
  kMoveDown,
  kButtonCount = kMoveDown
};

struct SpecialPagesControls {
  QTreeWidget* list = nullptr;
  QLabel* bookletNote = nullptr;
  QLabel* detail = nullptr;                              // the whole summary of the row picked last
  std::array<QPushButton*, kButtonCount + 1> buttons{};  // by Button; [0] unused
};

struct SpecialPagesPanelContext {
  PanelContextHead head;
  SpecialPagesContext pages;
  bool booklet = false;  // booklet layout, as the ticket last said
  std::vector<SpecialPageItem> rows;
  SpecialPagesControls controls;
};

// The one special pages panel of the process (nullptr when none).
SpecialPagesPanelContext* gSpecialPagesContext = nullptr;

std::vector<SpecialPageItem> Selection(const SpecialPagesPanelContext& panel) {
  std::vector<int> picked;
  if (QItemSelectionModel* model = panel.controls.list->selectionModel()) {
    for (const QModelIndex& index : model->selectedRows()) picked.push_back(index.row());
  }
  return ItemsOfRows(panel.rows, picked);
}

// The list shows one line per page; the row picked last is shown whole.
void ShowDetail(SpecialPagesPanelContext& panel, SpecialPageSelection selection) {
  QLabel* detail = panel.controls.detail;
  detail->setText(selection.empty() ? QString()
                                    : QString::fromStdString(CopySpecialPageSummary(
                                          selection.back().page, panel.head.bundle)));
  detail->setVisible(!detail->text().isEmpty());
}

void UpdateButtons(SpecialPagesPanelContext& panel) {
  const std::vector<SpecialPageItem> selection = Selection(panel);
  ShowDetail(panel, selection);
  const SpecialPagesCommandState state = UpdateSpecialPagesCommandButtons(panel.pages, selection);
  const auto& b = panel.controls.buttons;
  b[kEdit]->setEnabled(state.edit);
  b[kDelete]->setEnabled(state.remove);
  b[kDeleteAll]->setEnabled(state.removeAll);
  b[kUndo]->setEnabled(state.undo);
  b[kMoveUp]->setEnabled(state.moveUp);
  b[kMoveDown]->setEnabled(state.moveDown);
}

// Rebuilds the list from the pages, selecting the rows of `keep`.
void ShowRows(SpecialPagesPanelContext& panel, SpecialPageSelection keep) {
  if (!panel.head.controlsBuilt) return;
  QTreeWidget* list = panel.controls.list;
  const QSignalBlocker quiet(list->selectionModel());
  list->clear();
  panel.rows = SpecialPagesItems(panel.pages);
  const std::vector<SpecialPageSummaryRow> texts = UpdateSpecialPagesSummary(
      panel.head.bundle, panel.pages.frontCover.get(), *panel.pages.inserts,
      *panel.pages.exceptionPages, panel.pages.backCover.get());
  for (const SpecialPageSummaryRow& text : texts) {
    auto* item = new QTreeWidgetItem(list);
    item->setText(0, QString::fromStdString(text.kind));
    item->setText(1, QString::fromStdString(text.pages));
    item->setText(2, QString::fromStdString(text.summary));
    item->setToolTip(2, QString::fromStdString(text.summary));
  }
  for (int row : RowsOfItems(panel.rows, keep)) list->topLevelItem(row)->setSelected(true);
  panel.controls.bookletNote->setVisible(panel.booklet);
  UpdateButtons(panel);
}

void ShowSettings(SpecialPagesPanelContext& panel) {
  ShowRows(panel, {});
}

bool Confirm(const DeleteConfirmation& text, QWidget* parent) {
  QMessageBox box(QMessageBox::Warning, QString::fromStdString(text.title),
                  QString::fromStdString(text.message), QMessageBox::NoButton, parent);
  box.setObjectName("SpecialPagesConfirm");
  QPushButton* no =
      box.addButton(QString::fromStdString(text.defaultButton), QMessageBox::RejectRole);
  QPushButton* yes =
      box.addButton(QString::fromStdString(text.alternateButton), QMessageBox::AcceptRole);
  no->setObjectName("no");
  yes->setObjectName("yes");
  box.setDefaultButton(no);
  box.exec();
  return box.clickedButton() == yes;
}

void Edit(SpecialPagesPanelContext& panel) {
  const std::vector<SpecialPageItem> selection = Selection(panel);
  if (selection.size() != 1) return;
  const SpecialPageItem item = selection.front();
  const Bundle* bundle = panel.head.bundle;
  QWidget* parent = panel.controls.list;
  bool changed = false;
  switch (item.kind) {
    case SpecialPageKind::FrontCover:
    case SpecialPageKind::BackCover:
      changed = RunModalCoverDialog(bundle, parent, panel.pages, &item, panel.booklet);
      break;
    case SpecialPageKind::Insert:
      changed =
          RunModalInsertDialog(bundle, parent, panel.pages, static_cast<const Insert*>(item.page));
      break;
    case SpecialPageKind::ExceptionPage:
      changed = RunModalExceptionDialog(bundle, parent, panel.pages,
                                        static_cast<const ExceptionPage*>(item.page));
      break;
  }
  if (changed) ShowRows(panel, {});
}

void Delete(SpecialPagesPanelContext& panel, bool all) {
  QWidget* parent = panel.controls.list;
  const ConfirmDelete confirm = [parent](const DeleteConfirmation& text) {
    return Confirm(text, parent);
  };
  const std::vector<SpecialPageItem> selection =
      SelectionToDelete(panel.pages, Selection(panel), panel.booklet);
  if (all) {
    DeleteAllSpecialPages(panel.pages, confirm, panel.head.bundle);
  } else {
    DeleteSelectedSpecialPages(panel.pages, selection, confirm, panel.head.bundle);
  }
  // Also after "No": the snapshot was taken, so Undo may now be on.
  ShowRows(panel, selection);
}

void Move(SpecialPagesPanelContext& panel, bool up) {
  const std::vector<SpecialPageItem> selection = Selection(panel);
  MoveSelectedInserts(panel.pages, selection, up);
  ShowRows(panel, selection);
}

void ConnectButtons(SpecialPagesPanelContext& panel, QWidget* view) {
  SpecialPagesPanelContext* p = &panel;
  const Bundle* bundle = panel.head.bundle;
  const auto on = [&](Button button, auto action) {
    QObject::connect(panel.controls.buttons[button], &QPushButton::clicked, view, action);
  };
  QWidget* parent = panel.controls.list;
  on(kAddCover, [p, bundle, parent] {
    if (RunModalCoverDialog(bundle, parent, p->pages, nullptr, p->booklet)) ShowRows(*p, {});
  });
  on(kAddInsert, [p, bundle, parent] {
    if (RunModalInsertDialog(bundle, parent, p->pages, nullptr)) ShowRows(*p, {});
  });
  on(kAddException, [p, bundle, parent] {
    if (RunModalExceptionDialog(bundle, parent, p->pages, nullptr)) ShowRows(*p, {});
  });
  on(kEdit, [p] { Edit(*p); });
  on(kDelete, [p] { Delete(*p, false); });
  on(kDeleteAll, [p] { Delete(*p, true); });
  on(kUndo, [p] {
    PerformUndo(p->pages);
    ShowRows(*p, {});
  });
  on(kMoveUp, [p] { Move(*p, true); });
  on(kMoveDown, [p] { Move(*p, false); });
  QObject::connect(panel.controls.list, &QTreeWidget::itemSelectionChanged, view,
                   [p] { UpdateButtons(*p); });
  QObject::connect(panel.controls.list, &QTreeWidget::itemDoubleClicked, view, [p] { Edit(*p); });
}

bool BuildControls(SpecialPagesPanelContext& panel, QWidget* view) {
  SpecialPagesControls& c = panel.controls;
  c.list = view->findChild<QTreeWidget*>("ZSpg_list");
  c.bookletNote = view->findChild<QLabel*>("ZSpg_booklet");
  c.detail = view->findChild<QLabel*>("ZSpg_detail");
  if (!c.list || !c.bookletNote || !c.detail) return false;
  for (int n = 1; n <= kButtonCount; ++n) {
    c.buttons[n] = view->findChild<QPushButton*>(QStringLiteral("ZSpg_%1").arg(n));
    if (!c.buttons[n]) return false;
  }
  const Bundle* bundle = panel.head.bundle;
  c.list->setColumnCount(3);
  c.list->setHeaderLabels({LocalizedText(bundle, "SpecialPageColumn"),
                           LocalizedText(bundle, "PagesColumn"),
                           LocalizedText(bundle, "SettingsColumn")});
  c.list->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
  c.list->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
  c.list->header()->setStretchLastSection(true);
  ConnectButtons(panel, view);
  return true;
}

// ---- The contract ----------------------------------------------------------------------

using Standard = StandardPanel<SpecialPagesPanelContext, PanelKind::SpecialPages>;

Status SpecialPagesPrologue(PDEContext* context, std::uint32_t* /*creator*/,
                            const char** /*userOptionKind*/, const char** title, float* /*maxH*/,
                            float* /*maxV*/) {
  if (!context) return kInvalidPDEContext;
  auto* panel = new (std::nothrow) SpecialPagesPanelContext{};
  if (!panel) return kInvalidPDEContext;
  // Only the context and the title: creator, kind and size stay as the
  // caller had them.
  FillPanelPrologue(panel->head, DescribePanel(PanelKind::SpecialPages), nullptr, nullptr, title);
  gSpecialPagesContext = panel;
  *context = panel;
  return kNoErr;
}

Status SpecialPagesSync(PDEContext context, PrintSession* session, bool reinitializePlugIn) {
  if (!context) return kInvalidPDEContext;
  auto* panel = static_cast<SpecialPagesPanelContext*>(context);
  Ticket* ticket = nullptr;
  const Status status = GetTicketFromSession(session, kPrintSettingsTicketName, &ticket);
  if (status != kNoErr || !ticket) return status;
  if (!reinitializePlugIn) return SyncSpecialPages(*ticket, SyncDirection::ToTicket, panel->pages);
  panel->booklet = BookletLayoutIsOn(*ticket);
  const Status read = SyncSpecialPages(*ticket, SyncDirection::FromTicket, panel->pages);
  ShowSettings(*panel);
  return read;
}

Status SpecialPagesInitialize(PDEContext context, std::uint32_t* /*flags*/, void* /*ref*/,
                              PDEPaneRef userPane, PrintSession* session) {
  if (!context) return kInvalidPDEContext;
  static_cast<SpecialPagesPanelContext*>(context)->head.userPane = static_cast<QWidget*>(userPane);
  return SpecialPagesSync(context, session, true);
}

Status SpecialPagesOpen(PDEContext context) {
  if (!context) return kInvalidPDEContext;
  auto* panel = static_cast<SpecialPagesPanelContext*>(context);
  if (panel->head.controlsBuilt) return kInvalidPDEContext;
  if (!panel->head.userPane) {
    std::fputs("!! Failed to get user pane control reference.\n", stdout);
    return kInvalidPDEContext;
  }
  return Standard::Open(context);
}

Status SpecialPagesTerminate(PDEContext context, Status status) {
  if (context && gSpecialPagesContext == context) gSpecialPagesContext = nullptr;
  return Standard::Terminate(context, status);
}

}  // namespace

Status CreateSpecialPagesPanelInterface(PanelInterface** out) {
  const PDEInterfaceTable table{nullptr,
                                nullptr,
                                nullptr,
                                SpecialPagesPrologue,
                                SpecialPagesInitialize,
                                SpecialPagesSync,
                                Standard::GetSummaryText,
                                SpecialPagesOpen,
                                Standard::Close,
                                SpecialPagesTerminate};
  return NewPanelInterface(table, out);
}

}  // namespace zorva

// The summary window and the export and import dialogs.
#include "ui/jotf_dialogs.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QFileDialog>
#include <QPlainTextEdit>
#include <QPushButton>
#include <cstdio>
#include <memory>

#include "core/bundle.h"
#include "core/print_session.h"
#include "jobticket/jotf_export.h"
#include "jobticket/jotf_import.h"
#include "jobticket/jotf_summary.h"
#include "ui/controls.h"
#include "ui/panel_view.h"
#include "ui/tabrix_host.h"

namespace zorva {
namespace {

QString JoinedLines(const Dictionary& settings) {
  SummaryLines lines;
  buildSummaryText(settings, lines);
  QStringList joined;
  for (const std::string& line : lines) joined << QString::fromStdString(line);
  return joined.join('\n');
}

// Qt's own file dialog, so every platform (and the tests) drive the same one.
std::unique_ptr<QFileDialog> FileDialog(QWidget* parent, QFileDialog::AcceptMode mode) {
  auto dialog = std::make_unique<QFileDialog>(parent);
  dialog->setOption(QFileDialog::DontUseNativeDialog);
  dialog->setObjectName("JOTFFileDialog");
  dialog->setAcceptMode(mode);
  dialog->setFileMode(mode == QFileDialog::AcceptSave ? QFileDialog::AnyFile
                                                      : QFileDialog::ExistingFiles);
  return dialog;
}

}  // namespace

bool DisplayJOTFImportExportSummary(const Dictionary& settings, JOTFSummaryMode mode,
                                    const QString& fileName, QWidget* parent) {
  const Bundle* bundle = GetPDEBundle();
  Status status = kNoErr;
  std::unique_ptr<QWidget> view(LoadView(bundle, "JOTFSummary", "Summary", &status));
  auto* window = qobject_cast<QDialog*>(view.get());
  if (!window) return false;
  if (parent) window->setParent(parent, window->windowFlags());
  const bool exporting = mode == JOTFSummaryMode::Export;
  QString title =
      LocalizedText(bundle, exporting ? "Export Zorva Job Ticket" : "Import Zorva Job Ticket");
  if (!fileName.isEmpty()) title += QStringLiteral(" (%1)").arg(fileName);
  window->setWindowTitle(title);
  auto* ok = window->findChild<QPushButton*>("ok");
  auto* cancel = window->findChild<QPushButton*>("cancel");
  auto* copyAll = window->findChild<QPushButton*>("copyAll");
  auto* lines = window->findChild<QPlainTextEdit*>("lines");
  if (!ok || !cancel || !copyAll || !lines) return false;
  ok->setText(LocalizedText(bundle, exporting ? "Export..." : "Import"));
  const QString text = JoinedLines(settings);
  lines->setPlainText(text);
  QObject::connect(ok, &QPushButton::clicked, window, &QDialog::accept);
  QObject::connect(cancel, &QPushButton::clicked, window, &QDialog::reject);
  QObject::connect(copyAll, &QPushButton::clicked, window,
                   [text] { QApplication::clipboard()->setText(text); });
  window->adjustSize();
  return window->exec() == QDialog::Accepted;
}

void RunModalJOTFExportDialog(QWidget* parent) {
  PrintSession* session = GetCurrentPrintSession();
  if (!session) return;
  // The file holds what every panel shows now.
  PDESync(session, false);
  AddJOTFHostTicketItems(session->printSettings());
  if (!DisplayJOTFImportExportSummary(JOTFSettingsFromTicket(session->printSettings()),
                                      JOTFSummaryMode::Export, {}, parent)) {
    return;
  }
  const auto dialog = FileDialog(parent, QFileDialog::AcceptSave);
  if (dialog->exec() != QDialog::Accepted || dialog->selectedFiles().isEmpty()) return;
  std::string reason;
  const std::string path = dialog->selectedFiles().first().toStdString();
  if (JOTFExportToFileAtPath(path, &reason) != kNoErr) {
    std::fprintf(stderr, "JOTFExportToFileAtPath() failed: %s: %s\n", path.c_str(), reason.c_str());
  }
}

void RunModalJOTFImportDialog(QWidget* parent) {
  PrintSession* session = GetCurrentPrintSession();
  if (!session) return;
  const auto dialog = FileDialog(parent, QFileDialog::AcceptOpen);
  if (dialog->exec() != QDialog::Accepted) return;
  std::vector<std::filesystem::path> files;
  Dictionary preview;
  for (const QString& file : dialog->selectedFiles()) {
    files.emplace_back(file.toStdString());
    JOTFImportFileAtPath(files.back(), &preview);
  }
  if (files.empty()) return;
  const QString name =
      files.size() == 1 ? QString::fromStdString(files[0].filename().string()) : QString();
  if (!DisplayJOTFImportExportSummary(preview, JOTFSummaryMode::Import, name, parent)) return;
  // The panels' current values go into the ticket first, so the merge
  // changes only what the files hold; then every panel shows the result.
  PDESync(session, false);
  std::vector<std::filesystem::path> failed;
  JOTFImportFiles(files, &failed);
  for (const auto& file : failed) {
    std::fprintf(stderr, "JOTFImportFiles() could not read %s\n", file.c_str());
  }
  PDESync(session, true);
}

}  // namespace zorva

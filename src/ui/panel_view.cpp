// Panel views from the bundle's .ui files and the shared panel plumbing.
#include "ui/panel_view.h"

#include <QDialog>
#include <QFile>
#include <QPushButton>
#include <QUiLoader>
#include <QVBoxLayout>
#include <QWidget>
#include <cstdio>
#include <new>

#include "core/bundle.h"
#include "host/tabrix.h"
#include "ui/controls.h"

namespace zorva {

QWidget* LoadView(const Bundle* bundle, std::string_view uiFile, std::string_view window,
                  Status* status) {
  const std::optional<std::filesystem::path> path =
      bundle ? bundle->resourcePath(uiFile, "ui") : std::nullopt;
  QFile file(path ? QString::fromStdString(path->string()) : QString());
  if (!path || !file.open(QIODevice::ReadOnly)) {
    std::fputs("!! Failed to load nib from bundle.\n", stdout);
    if (status) *status = kResNotFound;
    return nullptr;
  }
  QUiLoader loader;
  QWidget* view = loader.load(&file);
  if (!view || view->objectName() != QString::fromUtf8(window.data(), window.size())) {
    delete view;
    std::fputs("!! Failed to create window from nib.\n", stdout);
    if (status) *status = kResNotFound;
    return nullptr;
  }
  LocalizeView(bundle, view);
  if (status) *status = kNoErr;
  return view;
}

std::unique_ptr<QDialog> LoadDialog(const Bundle* bundle, const char* uiFile, const char* window,
                                    const char* titleKey, const char* prefix, QWidget* parent) {
  Status status = kNoErr;
  std::unique_ptr<QDialog> dialog(
      qobject_cast<QDialog*>(LoadView(bundle, uiFile, window, &status)));
  if (!dialog) return nullptr;
  dialog->setParent(parent, Qt::Dialog);
  SetLocalizedWindowTitle(bundle, titleKey, dialog.get());
  const QString name = QString::fromLatin1(prefix);
  if (auto* ok = dialog->findChild<QPushButton*>(name + "_ok")) {
    QObject::connect(ok, &QPushButton::clicked, dialog.get(), &QDialog::accept);
  }
  if (auto* cancel = dialog->findChild<QPushButton*>(name + "_cancel")) {
    QObject::connect(cancel, &QPushButton::clicked, dialog.get(), &QDialog::reject);
  }
  return dialog;
}

void EmbedView(QWidget* pane, QWidget* view) {
  if (!pane || !view) return;
  auto* layout = qobject_cast<QVBoxLayout*>(pane->layout());
  if (!layout) {
    layout = new QVBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
  }
  view->setParent(pane);
  layout->addWidget(view);
  view->show();
}

void FillPanelPrologue(PanelContextHead& head, const PanelDescription& panel,
                       std::uint32_t* creator, const char** userOptionKind, const char** title) {
  head.bundle = Bundle::FindByIdentifier(kBundleIdentifier);
  if (creator) *creator = panel.creator;
  if (userOptionKind) *userOptionKind = kUserOptionKind.data();
  const std::string_view text =
      head.bundle ? head.bundle->localizedString(panel.titleKey, {}) : std::string_view{};
  if (!text.empty()) {
    head.title = text;
    if (title) *title = head.title.c_str();
  }
}

Status NewPanelInterface(const PDEInterfaceTable& table, PanelInterface** out) {
  auto* interface = new (std::nothrow) PanelInterface{nullptr};
  if (!interface) return kMemFullErr;
  interface->vtbl = new (std::nothrow) PDEInterfaceTable(table);
  if (!interface->vtbl) {
    delete interface;
    return kMemFullErr;
  }
  *out = interface;
  return kNoErr;
}

}  // namespace zorva

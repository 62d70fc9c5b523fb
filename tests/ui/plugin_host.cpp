// The tests' miniature print dialog.
#include "plugin_host.h"

#include <QComboBox>

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace zorva::test {

PluginModule::PluginModule() {
  handle_ = dlopen(ZORVA_MODULE, RTLD_NOW | RTLD_LOCAL);
  if (!handle_) throw std::runtime_error(dlerror());
}

PluginModule::~PluginModule() {
  // Qt keeps the module's metaobjects registered: it stays loaded.
}

void* PluginModule::symbol(const char* name) const {
  return dlsym(handle_, name);
}

void PluginModule::setPanelSource(const char* const* names,
                                  PanelInterfaceEntry (*lookup)(const char*)) const {
  reinterpret_cast<SetPanelSource>(symbol("ZorvaPDESetPanelSource"))(names, lookup);
}

PluginModule& Module() {
  static PluginModule module;
  return module;
}

Dialog::Dialog(std::string deviceUri, std::filesystem::path ppd)
    : pane_(std::make_unique<QWidget>()), session_("Q", std::move(deviceUri), std::move(ppd)) {
  pane_->resize(540, 491);
  void* instance = Module().factory()(nullptr, &kPDETypeID);
  if (!instance) throw std::runtime_error("factory gave no instance");
  instance_ = instance;
  auto* unknown = *static_cast<IUnknownVTbl**>(instance);
  void* intf = nullptr;
  if (unknown->QueryInterface(instance, kPDEInterfaceID, &intf) != 0 || !intf) {
    throw std::runtime_error("no dialog-extension interface");
  }
  intf_ = static_cast<PlugInIntf*>(intf);
}

Dialog::~Dialog() {
  if (!terminated_) terminate();
  pane_.reset();
  intf_->vtbl->Release(&intf_);
  (*static_cast<IUnknownVTbl**>(instance_))->Release(instance_);
}

Status Dialog::prologue() {
  const char* kind = nullptr;
  const char* title = nullptr;
  const Status status = ops().Prologue(&context_, &creator_, &kind, &title, &maxH_, &maxV_);
  if (title) title_ = title;
  terminated_ = status != kNoErr;
  return status;
}

Status Dialog::initialize() {
  std::uint32_t flags = 0;
  return ops().Initialize(context_, &flags, nullptr, pane_.get(), &session_);
}

Status Dialog::open() {
  return ops().Open(context_);
}
Status Dialog::close() {
  return ops().Close(context_);
}
Status Dialog::sync(bool reinitialize) {
  return ops().Sync(context_, &session_, reinitialize);
}

Status Dialog::terminate() {
  terminated_ = true;
  return ops().Terminate(context_, kNoErr);
}

void Dialog::start() {
  ASSERT_EQ(prologue(), kNoErr);
  ASSERT_EQ(initialize(), kNoErr);
  ASSERT_EQ(open(), kNoErr);
}

void Dialog::showPanel(int tab) {
  auto* tabs = find<QComboBox>("Zshl_16");
  ASSERT_NE(tabs, nullptr);
  tabs->setCurrentIndex(tab - 1);
  emit tabs->activated(tab - 1);
  ASSERT_EQ(visiblePanel(), tab);
}

int Dialog::visiblePanel() {
  for (QWidget* w : pane_->findChildren<QWidget*>(QRegularExpression("^ZSgb_\\d+$"))) {
    if (w->isVisibleTo(pane_.get())) return w->objectName().mid(5).toInt();
  }
  return 0;
}

}  // namespace zorva::test

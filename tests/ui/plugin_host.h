// A print dialog in miniature for the tests: loads the real module with
// dlopen, asks its factory for an instance, queries the dialog-extension
// interface and drives the host through it with a pane and a session.
#pragma once

#include <QWidget>
#include <memory>
#include <string>
#include <vector>

#include "core/print_session.h"
#include "host/pde_interface.h"

namespace zorva::test {

class PluginModule {
 public:
  PluginModule();
  ~PluginModule();
  void* handle() const { return handle_; }
  void* symbol(const char* name) const;
  using Factory = void* (*)(void* allocator, const UuidBytes* typeID);
  Factory factory() const { return reinterpret_cast<Factory>(symbol("ZorvaPDEPluginFactory")); }
  using SetPanelSource = void (*)(const char* const*, PanelInterfaceEntry (*)(const char*));
  // Loads panels from names/lookup (nullptr restores the built-in ones).
  void setPanelSource(const char* const* names, PanelInterfaceEntry (*lookup)(const char*)) const;

 private:
  void* handle_ = nullptr;
};

// The module, loaded once for the whole suite.
PluginModule& Module();

// One dialog: the host's interface, its context, the pane and the session.
class Dialog {
 public:
  explicit Dialog(std::string deviceUri = "pap://nowhere/queue", std::filesystem::path ppd = {});
  ~Dialog();

  Status prologue();
  Status initialize();
  Status open();
  Status close();
  Status sync(bool reinitialize);
  Status terminate();
  // Prologue, Initialize and Open.
  void start();

  PDEInterfaceTable& ops() { return *intf_->vtbl; }
  PDEContext context() const { return context_; }
  QWidget& pane() { return *pane_; }
  PrintSession& session() { return session_; }
  Ticket& ticket() { return session_.printSettings(); }
  const std::string& title() const { return title_; }
  std::uint32_t creator() const { return creator_; }
  float maxH() const { return maxH_; }
  float maxV() const { return maxV_; }

  template <typename T>
  T* find(const QString& name) {
    return pane_->findChild<T*>(name);
  }
  // The shown panel pane's number (ZSgb_<n>), 0 when none shows.
  int visiblePanel();
  // Picks panel `tab` (1-based) in the tab pop-up as a click does: the
  // pop-up shows the item, then reports it; the panel must then show.
  void showPanel(int tab);

 private:
  void* instance_ = nullptr;
  PlugInIntf* intf_ = nullptr;
  PDEContext context_ = nullptr;
  std::unique_ptr<QWidget> pane_;
  PrintSession session_;
  std::string title_;
  std::uint32_t creator_ = 0;
  float maxH_ = 0;
  float maxV_ = 0;
  bool terminated_ = true;
};

}  // namespace zorva::test

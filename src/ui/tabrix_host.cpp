// The host panel: the one pane the print dialog sees. It loads the six
// panels, builds the tab pop-up and the panel area from the "Tabrix" view,
// passes every life-cycle call on (the panel on screen last), switches
// panels, adds its own items to the ticket and starts the printer's paper
// list fetch on the first Open.
#include "ui/tabrix_host.h"

#include <dlfcn.h>
#include <QComboBox>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QPointer>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>
#include <QWidget>
#include <cstdio>
#include <new>

#include "core/bundle.h"
#include "core/print_session.h"
#include "host/installable_options.h"
#include "jobticket/device_profile.h"
#include "jobticket/jotf_export.h"
#include "paper/ppd.h"
#include "paper/printer_named_papers.h"
#include "paper/printer_papers.h"
#include "paper/worker.h"
#include "ui/controls.h"
#include "ui/image_manager.h"
#include "ui/panel_view.h"

namespace zorva {
namespace {

constexpr std::string_view kTabrixView = "Tabrix";
constexpr std::string_view kTabrixWindow = "Window";
constexpr int kHostContent = 10;
constexpr int kPanelFrame = 15;
constexpr int kTabPopup = 16;
constexpr int kPanelArea = 17;
constexpr int kBackArrow = 1966;     // shows the "up" image, sends ZFdn
constexpr int kForwardArrow = 1967;  // shows the "down" image, sends ZFup
constexpr std::uint32_t kCommandForward = FourCC("ZFup");
constexpr std::uint32_t kCommandBack = FourCC("ZFdn");
constexpr std::uint32_t kCommandOK = FourCC("ok  ");
constexpr std::uint32_t kCommandHelp = FourCC("help");
constexpr std::string_view kBackImage = "ButtonGraphic_MacUp.png";
constexpr std::string_view kForwardImage = "ButtonGraphic_MacDown.png";
// Where an installed external colour-options panel lives, and its module.
#ifndef ZORVA_INSTALL_PDES
#define ZORVA_INSTALL_PDES ""
#endif
constexpr std::string_view kColorOptionsBundle = "ColorOptions.bundle";
constexpr std::string_view kColorOptionsModule = "ColorOptions.so";

QString ControlName(int number) {
  return QStringLiteral("Zshl_%1").arg(number);
}

// The paper-list events reach the host through the worker's receiver.
class PaperEvents : public PrinterPaperEventReceiver {
 public:
  explicit PaperEvents(TabrixContext* context) : context_(context) {}
  void printerPaperListArrived() override {
    tabrixEventHandler(*context_, TabrixEvent{TabrixEventKind::PaperListArrived});
  }
  void printerPaperListRefresh() override {}

 private:
  TabrixContext* context_;
};

// The window side of the host context.
struct HostView {
  QPointer<QWidget> content;  // Zshl_10, inside the host pane
  QPointer<QComboBox> tabs;   // Zshl_16
  QPointer<QToolButton> back;
  QPointer<QToolButton> forward;
  QPointer<QWidget> container;  // Zshl_17
  PaperEvents paperEvents;
  WindowRef paperWindow = 0;
  std::unique_ptr<ImageManager> images;  // from the first Open to Terminate
  // The dialog window's commands (OK, Help) while the pane is open.
  std::vector<QMetaObject::Connection> windowHandlers;
  explicit HostView(TabrixContext* context) : paperEvents(context) {}
};

HostView& View(TabrixContext& context) {
  return *static_cast<HostView*>(context.view);
}

const char* const* gPanelNames = PanelInterfaces;
PanelInterfaceEntry (*gPanelLookup)(const char* name) = nullptr;

// This module's own exported symbol of that name.
PanelInterfaceEntry OwnSymbol(const char* name) {
  Dl_info info{};
  if (!dladdr(reinterpret_cast<void*>(&OwnSymbol), &info) || !info.dli_fname) return nullptr;
  void* self = dlopen(info.dli_fname, RTLD_NOW | RTLD_NOLOAD);
  if (!self) return nullptr;
  void* symbol = dlsym(self, name);
  dlclose(self);
  return reinterpret_cast<PanelInterfaceEntry>(symbol);
}

// The external colour-options panel's entry point, from the module in its
// own bundle folder. The module stays loaded: panels taken from it may be
// called until the process ends.
PanelInterfaceEntry ColorOptionsSymbol(const char* name) {
  const std::filesystem::path folder =
      ColorOptionsBundlePath(std::filesystem::path(ZORVA_INSTALL_PDES) / kColorOptionsBundle);
  void* module = dlopen((folder / kColorOptionsModule).c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!module) {
    std::fprintf(stderr, "!! Failed to load the colour options panel: %s\n", dlerror());
    return nullptr;
  }
  return reinterpret_cast<PanelInterfaceEntry>(dlsym(module, name));
}

PanelInterfaceEntry LookUpPanel(std::string_view name) {
  const std::string text(name);
  if (gPanelLookup) return gPanelLookup(text.c_str());
  if (name == kColorOptionPanelEntry) return ColorOptionsSymbol(text.c_str());
  return OwnSymbol(text.c_str());
}

template <typename F>
Status Guarded(F&& body) {
  try {
    return body();
  } catch (const std::bad_alloc&) {
    return kMemFullErr;
  } catch (...) {
    return kParamErr;
  }
}

Status HostPrologue(PDEContext* context, std::uint32_t* creator, const char** userOptionKind,
                    const char** title, float* maxH, float* maxV) {
  return Guarded([&]() -> Status {
    if (!context) return kInvalidPDEContext;
    auto* host = new (std::nothrow) TabrixContext{};
    if (!host) return kInvalidPDEContext;
    host->view = new HostView(host);
    host->bundle = Bundle::FindByIdentifier(kBundleIdentifier);
    gCurrentPanel = 0;
    gContext = host;
    *context = host;
    if (maxH) *maxH = kHostMaxH;
    if (maxV) *maxV = kHostMaxV;
    if (creator) *creator = kHostCreator;
    if (userOptionKind) *userOptionKind = kUserOptionKind.data();
    const std::string_view text =
        host->bundle ? host->bundle->localizedString(kHostTitleKey, {}) : std::string_view{};
    if (!text.empty()) {
      host->title = text;
      if (title) *title = host->title.c_str();
    }
    LoadBuiltInPanels(*host, gPanelNames, LookUpPanel);
    return kNoErr;
  });
}

Status HostSync(PDEContext context, PrintSession* session, bool reinitializePlugIn) {
  return Guarded([&]() -> Status {
    if (!context) return kInvalidPDEContext;
    auto& host = *static_cast<TabrixContext*>(context);
    Status status = SyncPanels(host, session, reinitializePlugIn);
    if (!reinitializePlugIn) {
      Ticket* ticket = nullptr;
      status = GetTicketFromSession(session, kPrintSettingsTicketName, &ticket);
      if (ticket) AddJOTFHostTicketItems(*ticket);
    }
    return status;
  });
}

Status HostInitialize(PDEContext context, std::uint32_t* flags, void* ref, PDEPaneRef userPane,
                      PrintSession* session) {
  return Guarded([&]() -> Status {
    if (!context) return kInvalidPDEContext;
    auto& host = *static_cast<TabrixContext*>(context);
    SetCurrentPrintSession(session);
    host.session = session;
    // The printer's own features exist only for the printers they describe.
    if (PPD* ppd = PPDGetCurrent(); ppd && PPDManufacturer(ppd) == kZorvaManufacturer) {
      ZDPInitialize();
      LoadInstallableOptions(ppd, InstalledFeatures);
    }
    host.userPane = userPane;
    auto* pane = static_cast<QWidget*>(userPane);
    // Kept for readers outside the plug-in (the bundle, creator ZPDE, tag MBND).
    if (pane && host.bundle) {
      pane->setProperty("ZPDE_MBND", QString::fromStdString(host.bundle->path().string()));
    }
    RegisterMyHelpBook(host);
    if (!host.bundle || !host.bundle->resourcePath(kTabrixView, "ui")) {
      std::fputs("Initialize()::CreateNibReferenceWithCFBundle() failed.\n", stderr);
      return kInvalidPDEContext;
    }
    Status status = kNoErr;
    std::unique_ptr<QWidget> window(LoadView(host.bundle, kTabrixView, kTabrixWindow, &status));
    QWidget* area = window ? window->findChild<QWidget*>(ControlName(kPanelArea)) : nullptr;
    if (!area) {
      std::fputs("Initialize()::CreateWindowFromNib() failed.\n", stderr);
      return kInvalidPDEContext;
    }
    window->adjustSize();
    const QSize areaSize = area->minimumSize();
    ForEachShownPanel(host, [&](PanelRecord& panel) {
      auto* panelPane = new QWidget(pane);
      panelPane->setObjectName(QStringLiteral("ZSgb_%1").arg(panel.tabIndex));
      panelPane->resize(areaSize);
      panelPane->hide();
      panel.pane = panelPane;
      if (panel.interface.Initialize) {
        panel.interface.Initialize(panel.context, flags, ref, panelPane, session);
      }
    });
    Ticket* ticket = nullptr;
    if (GetTicketFromSession(session, kPrintSettingsTicketName, &ticket) != kNoErr || !ticket) {
      std::fputs("Initialize()::GetTicketFromSession() failed.\n", stderr);
      return kInvalidPDEContext;
    }
    return HostSync(context, session, true);
  });
}

Status HostGetSummaryText(PDEContext context, Array** titles, Array** values) {
  if (!context) return kInvalidPDEContext;
  return PanelsSummaryText(*static_cast<TabrixContext*>(context), titles, values);
}

// The first Open's controls: the host's view in its pane, the tab pop-up,
// the arrows and every panel's pane in the panel area.
bool BuildHostControls(TabrixContext& host) {
  HostView& view = View(host);
  auto* pane = static_cast<QWidget*>(host.userPane);
  Status status = kNoErr;
  std::unique_ptr<QWidget> window(LoadView(host.bundle, kTabrixView, kTabrixWindow, &status));
  QWidget* content = window ? window->findChild<QWidget*>(ControlName(kHostContent)) : nullptr;
  if (!content || !pane) return false;
  auto* layout = qobject_cast<QVBoxLayout*>(pane->layout());
  if (!layout) {
    layout = new QVBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
  }
  content->setParent(pane);
  layout->addWidget(content);
  content->show();
  view.content = content;
  view.tabs = content->findChild<QComboBox*>(ControlName(kTabPopup));
  view.back = content->findChild<QToolButton*>(ControlName(kBackArrow));
  view.forward = content->findChild<QToolButton*>(ControlName(kForwardArrow));
  view.container = content->findChild<QWidget*>(ControlName(kPanelArea));
  if (!view.tabs || !view.container) return false;

  view.tabs->clear();
  ForEachShownPanel(
      host, [&](PanelRecord& panel) { view.tabs->addItem(QString::fromStdString(panel.title)); });
  view.tabs->setProperty(kMaximumProperty, view.tabs->count());
  QObject::connect(view.tabs, &QComboBox::activated, view.tabs, [&host](int index) {
    tabrixEventHandler(host, TabrixEvent{TabrixEventKind::ControlHit, kTabPopup, 0, index + 1});
  });
  for (QToolButton* arrow : {view.back.data(), view.forward.data()}) {
    if (!arrow) continue;
    const bool up = arrow == view.back;
    const QIcon image = view.images ? view.images->icon(up ? kBackImage : kForwardImage) : QIcon();
    if (!image.isNull()) {
      arrow->setIcon(image);
    } else {
      arrow->setArrowType(up ? Qt::UpArrow : Qt::DownArrow);
    }
    const int control = up ? kBackArrow : kForwardArrow;
    const std::uint32_t command = up ? kCommandBack : kCommandForward;
    QObject::connect(arrow, &QToolButton::clicked, arrow, [&host, control, command] {
      tabrixEventHandler(host, TabrixEvent{TabrixEventKind::Command, control, command});
    });
    arrow->hide();
  }
  // Every pane sits at the area's origin; only the selected one shows.
  auto* grid = new QGridLayout(view.container);
  grid->setContentsMargins(0, 0, 0, 0);
  ForEachShownPanel(host, [&](PanelRecord& panel) {
    auto* panelPane = static_cast<QWidget*>(panel.pane);
    if (panelPane) grid->addWidget(panelPane, 0, 0);
  });
  return true;
}

void StartWorker(TabrixContext& host) {
  HostView& view = View(host);
  PrinterStockWorker& worker = ProcessPrinterStockWorker();
  // The worker's messages to the dialog are served on this thread.
  worker.dialogRunLoop()->setWakeUp([loop = std::weak_ptr(worker.dialogRunLoop())] {
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [loop] {
          if (auto l = loop.lock()) l->processPending();
        },
        Qt::QueuedConnection);
  });
  if (!view.paperWindow) view.paperWindow = RegisterPaperEventWindow(&view.paperEvents);
  const std::string uri = host.session ? host.session->deviceUri() : std::string();
  const bool started =
      StartPrinterPaperWorkerOnOpen(true, uri, host.bundle, view.paperWindow, worker);
  if (view.content) view.content->setProperty("paperWorkerStarted", started);
}

// The dialog's own buttons send their commands to the host while it is open.
void InstallWindowHandler(TabrixContext& host) {
  HostView& view = View(host);
  auto* pane = static_cast<QWidget*>(host.userPane);
  auto* buttons = pane ? pane->window()->findChild<QDialogButtonBox*>() : nullptr;
  if (!buttons) return;
  TabrixContext* context = &host;
  view.windowHandlers.push_back(
      QObject::connect(buttons, &QDialogButtonBox::helpRequested, [context] {
        tabrixEventHandler(*context, TabrixEvent{TabrixEventKind::Command, 0, kCommandHelp});
      }));
  view.windowHandlers.push_back(QObject::connect(buttons, &QDialogButtonBox::accepted, [context] {
    tabrixEventHandler(*context, TabrixEvent{TabrixEventKind::Command, 0, kCommandOK});
  }));
}

void RemoveWindowHandler(TabrixContext& host) {
  for (const QMetaObject::Connection& c : View(host).windowHandlers) QObject::disconnect(c);
  View(host).windowHandlers.clear();
}

// The registered help book's start page, in the desktop's browser.
void DisplayHelp(const TabrixContext& host) {
  if (host.helpBook.empty()) return;
  QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(host.helpBook.string())));
}

Status HostOpen(PDEContext context) {
  return Guarded([&]() -> Status {
    if (!context) return kInvalidPDEContext;
    auto& host = *static_cast<TabrixContext*>(context);
    RemoveWindowHandler(host);
    InstallWindowHandler(host);
    HostView& view = View(host);
    if (!view.images && host.bundle)
      view.images = std::make_unique<ImageManager>(host.bundle->path());
    if (!host.controlsBuilt) {
      if (!BuildHostControls(host)) return kInvalidPDEContext;
      host.controlsBuilt = true;
      StartWorker(host);
      ForEachShownPanel(host, [&](PanelRecord& panel) {
        if (panel.interface.Open) panel.interface.Open(panel.context);
      });
      if (gCurrentPanel == 0) gCurrentPanel = 1;
    } else {
      ForEachShownPanel(host, [&](PanelRecord& panel) {
        if (panel.interface.Open) panel.interface.Open(panel.context);
      });
    }
    selectPanel(gCurrentPanel, host);
    if (View(host).tabs) View(host).tabs->setCurrentIndex(gCurrentPanel - 1);
    return kNoErr;
  });
}

Status HostClose(PDEContext context) {
  return Guarded([&]() -> Status {
    if (!context) return kInvalidPDEContext;
    auto& host = *static_cast<TabrixContext*>(context);
    ForEachShownPanel(host, [&](PanelRecord& panel) {
      if (panel.interface.Close) panel.interface.Close(panel.context);
    });
    StopPrinterPaperWorkerOnClose();
    RemoveWindowHandler(host);
    return kNoErr;
  });
}

Status HostTerminate(PDEContext context, Status status) {
  return Guarded([&]() -> Status {
    if (!context) return kInvalidPDEContext;
    auto* host = static_cast<TabrixContext*>(context);
    SetCurrentPrintSession(nullptr);
    TerminatePanels(*host, status);
    RemoveWindowHandler(*host);
    auto* view = static_cast<HostView*>(host->view);
    view->images.reset();
    if (view->paperWindow) UnregisterPaperEventWindow(view->paperWindow);
    delete view;
    if (gContext == host) gContext = nullptr;
    delete host;
    ClearPrinterNamedPaperList();
    PPDCloseCurrent();
    UnloadInstallableOptions();
    ZDPFinalize();
    return kNoErr;
  });
}

}  // namespace

const PDEInterfaceTable& TabrixOperations() {
  static const PDEInterfaceTable table{
      nullptr,  nullptr,   nullptr,      HostPrologue, HostInitialize, HostSync, HostGetSummaryText,
      HostOpen, HostClose, HostTerminate};
  return table;
}

void SetPanelSource(const char* const* names, PanelInterfaceEntry (*lookup)(const char* name)) {
  gPanelNames = names ? names : PanelInterfaces;
  gPanelLookup = lookup;
}

Status PDESync(PrintSession* session, bool reinitializePlugIn) {
  return HostSync(gContext, session, reinitializePlugIn);
}

void selectPanel(std::int32_t tabIndex, TabrixContext& context) {
  HostView& view = View(context);
  if (context.panels.empty()) {
    lastTabIndex = tabIndex;
    if (view.container) view.container->show();
    return;
  }
  SyncForTabSwitch(context);
  if (view.container) view.container->hide();
  ForEachShownPanel(context, [&](PanelRecord& panel) {
    auto* pane = static_cast<QWidget*>(panel.pane);
    if (!pane) return;
    const bool selected = panel.tabIndex == tabIndex;
    pane->setEnabled(selected);
    pane->setVisible(selected);
  });
  gCurrentPanel = tabIndex;
  lastTabIndex = tabIndex;
  if (view.container) view.container->show();
}

bool tabrixEventHandler(TabrixContext& context, const TabrixEvent& event) {
  HostView& view = View(context);
  const int count = ShownPanelCount(context);
  const auto step = [&](std::int32_t index) {
    selectPanel(index, context);
    if (view.tabs) view.tabs->setCurrentIndex(index - 1);
  };
  switch (event.kind) {
    case TabrixEventKind::ControlHit:
      if (event.control == kTabPopup) {
        if (event.item != lastTabIndex) selectPanel(event.item, context);
        return true;
      }
      return false;
    case TabrixEventKind::Command:
      // The button with the "up" image steps back, the command named "up"
      // forward: the pairing the dialog has always had.
      if (event.control == kForwardArrow && event.command == kCommandForward) {
        step(NextTabIndex(lastTabIndex, count));
        return true;
      }
      if (event.control == kBackArrow && event.command == kCommandBack) {
        step(PreviousTabIndex(lastTabIndex, count));
        return true;
      }
      if (event.command == kCommandOK) return false;
      if (event.command == kCommandHelp) {
        DisplayHelp(context);
        return true;
      }
      return false;
    case TabrixEventKind::MenuEnable:
      return true;
    case TabrixEventKind::PaperListArrived:
      // The fetched list is read only now, between the worker's report and
      // the next fetch.
      if (RebuildPrinterNamedPaperList(ProcessPrinterStockWorker().status(),
                                       &PrinterStockLibraryList()) &&
          view.content) {
        // How many papers the printer offers, for whatever shows them.
        view.content->setProperty("printerPaperCount",
                                  static_cast<int>(PrinterNamedPaperList()->count()));
      }
      return true;
  }
  return false;
}

}  // namespace zorva

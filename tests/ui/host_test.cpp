// The host panel through the real module: the order in which it calls the
// panels, panel loading that retries a failing panel, tab switching and the
// arrows, the host's ticket items and the paper worker's start rule.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <QUrl>
#include <array>
#include <string>
#include <vector>

#include "core/ticket_keys.h"
#include "plugin_host.h"
#include "support/ipp_printer.h"
#include "support/test_support.h"

namespace zorva::test {
namespace {

// Every call a panel gets, as "<panel>:<operation>" (Sync with its direction).
std::vector<std::string> gCalls;

constexpr int kBuiltIn = 6;
constexpr int kRecorder = 6;  // the test's own seventh panel
std::array<PDEInterfaceTable, kBuiltIn + 1> gReal{};
int gRecorderFailuresLeft = 0;
int gRecorderLookups = 0;

void Record(int panel, const std::string& op) {
  gCalls.push_back(std::to_string(panel + 1) + ":" + op);
}

template <int N>
Status RecProlog(PDEContext* c, std::uint32_t* cr, const char** k, const char** t, float* h,
                 float* v) {
  Record(N, "Prologue");
  return gReal[N].Prologue(c, cr, k, t, h, v);
}
template <int N>
Status RecInit(PDEContext c, std::uint32_t* f, void* r, PDEPaneRef p, PrintSession* s) {
  Record(N, "Initialize");
  return gReal[N].Initialize(c, f, r, p, s);
}
template <int N>
Status RecSync(PDEContext c, PrintSession* s, bool re) {
  Record(N, re ? "Sync(true)" : "Sync(false)");
  return gReal[N].Sync(c, s, re);
}
template <int N>
Status RecSummary(PDEContext c, Array** t, Array** v) {
  Record(N, "GetSummaryText");
  return gReal[N].GetSummaryText(c, t, v);
}
// What each panel's last Open answered.
std::array<Status, kBuiltIn + 1> gOpenStatus{};

template <int N>
Status RecOpen(PDEContext c) {
  Record(N, "Open");
  gOpenStatus[N] = gReal[N].Open(c);
  return gOpenStatus[N];
}
template <int N>
Status RecClose(PDEContext c) {
  Record(N, "Close");
  return gReal[N].Close(c);
}
template <int N>
Status RecTerminate(PDEContext c, Status s) {
  Record(N, "Terminate");
  return gReal[N].Terminate(c, s);
}

// The seventh panel's own operations: a context and nothing else.
Status OwnPrologue(PDEContext* c, std::uint32_t*, const char**, const char** t, float*, float*) {
  *c = new int(7);
  *t = "Recorder";
  return kNoErr;
}
Status OwnInit(PDEContext, std::uint32_t*, void*, PDEPaneRef, PrintSession*) {
  return kNoErr;
}
Status OwnSync(PDEContext, PrintSession*, bool) {
  return kNoErr;
}
Status OwnSummary(PDEContext, Array** t, Array** v) {
  *t = nullptr;
  *v = nullptr;
  return kNoErr;
}
Status OwnOpen(PDEContext) {
  return kNoErr;
}
Status OwnTerminate(PDEContext c, Status) {
  delete static_cast<int*>(c);
  return kNoErr;
}

template <int N>
Status RecordingEntry(PanelInterface** out) {
  PanelInterfaceEntry real = nullptr;
  if (N < kBuiltIn) {
    static const char* const names[] = {
        "GetPaperOutputPanelInterface",      "GetSpecialPagesPanelInterface",
        "GetImageOptionsPanelInterface",     "GetJobNotesPanelInterface",
        "GetBookletWatermarkPanelInterface", "GetAdvancedPanelInterface"};
    real = reinterpret_cast<PanelInterfaceEntry>(Module().symbol(names[N]));
    PanelInterface* interface = nullptr;
    const Status status = real(&interface);
    if (status != kNoErr) return status;
    gReal[N] = *interface->vtbl;
    delete interface->vtbl;
    delete interface;
  } else {
    if (gRecorderFailuresLeft > 0) {
      --gRecorderFailuresLeft;
      return kMemFullErr;
    }
    gReal[N] = PDEInterfaceTable{nullptr, nullptr,    nullptr, OwnPrologue, OwnInit,
                                 OwnSync, OwnSummary, OwnOpen, OwnOpen,     OwnTerminate};
  }
  *out = new PanelInterface{new PDEInterfaceTable{nullptr, nullptr, nullptr, RecProlog<N>,
                                                  RecInit<N>, RecSync<N>, RecSummary<N>, RecOpen<N>,
                                                  RecClose<N>, RecTerminate<N>}};
  return kNoErr;
}

const char* const kRecordedNames[] = {"P1", "P2", "P3", "P4", "P5", "P6", "Recorder", nullptr};

PanelInterfaceEntry RecordingLookup(const char* name) {
  static const std::array<PanelInterfaceEntry, 7> entries = {
      RecordingEntry<0>, RecordingEntry<1>, RecordingEntry<2>, RecordingEntry<3>,
      RecordingEntry<4>, RecordingEntry<5>, RecordingEntry<6>};
  for (int i = 0; kRecordedNames[i]; ++i) {
    if (std::string(name) == kRecordedNames[i]) {
      if (i == kRecorder) ++gRecorderLookups;
      return entries[i];
    }
  }
  return nullptr;
}

class HostTest : public ::testing::Test {
 protected:
  void SetUp() override {
    gCalls.clear();
    gRecorderFailuresLeft = 3;
    gRecorderLookups = 0;
    Module().setPanelSource(kRecordedNames, RecordingLookup);
  }
  void TearDown() override { Module().setPanelSource(nullptr, nullptr); }

  static std::vector<std::string> CallsOf(const std::string& op) {
    std::vector<std::string> panels;
    for (const std::string& call : gCalls) {
      if (call.substr(call.find(':') + 1) == op) panels.push_back(call.substr(0, call.find(':')));
    }
    return panels;
  }
};

const std::vector<std::string> kAllSeven = {"1", "2", "3", "4", "5", "6", "7"};

TEST_F(HostTest, PrologueReportsTheHostAndLoadsEveryPanelRetryingOneThatFails) {
  Dialog dialog;
  ASSERT_EQ(dialog.prologue(), kNoErr);
  EXPECT_EQ(dialog.title(), "Zorva Features");
  EXPECT_EQ(dialog.creator(), 0x70646520u);  // "pde "
  EXPECT_EQ(dialog.maxH(), 540);
  EXPECT_EQ(dialog.maxV(), 491);
  // The recorder's entry failed three times and was asked again each time.
  EXPECT_EQ(gRecorderLookups, 4);
  EXPECT_EQ(CallsOf("Prologue"), kAllSeven);
}

TEST_F(HostTest, LifeCycleReachesEveryPanelInOrderWithTheShownPanelLast) {
  {
    Dialog dialog;
    dialog.start();
    EXPECT_EQ(CallsOf("Initialize"), kAllSeven);
    EXPECT_EQ(CallsOf("Open"), kAllSeven);
    gCalls.clear();
    EXPECT_EQ(dialog.sync(false), kNoErr);
    const std::vector<std::string> shownLast = {"2", "3", "4", "5", "6", "7", "1"};
    EXPECT_EQ(CallsOf("Sync(false)"), shownLast);
    gCalls.clear();
    Array* titles = reinterpret_cast<Array*>(1);
    Array* values = reinterpret_cast<Array*>(1);
    EXPECT_EQ(dialog.ops().GetSummaryText(dialog.context(), &titles, &values), kNoErr);
    EXPECT_EQ(titles, nullptr);
    EXPECT_EQ(values, nullptr);
    EXPECT_EQ(CallsOf("GetSummaryText"), kAllSeven);
    gCalls.clear();
    EXPECT_EQ(dialog.close(), kNoErr);
    EXPECT_EQ(CallsOf("Close"), kAllSeven);
  }
  EXPECT_EQ(CallsOf("Terminate"), kAllSeven);
}

TEST_F(HostTest, EveryOperationRefusesAMissingContext) {
  Dialog dialog;
  PDEInterfaceTable& ops = dialog.ops();
  std::uint32_t flags = 0;
  EXPECT_EQ(ops.Prologue(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), kInvalidPDEContext);
  EXPECT_EQ(ops.Initialize(nullptr, &flags, nullptr, nullptr, nullptr), kInvalidPDEContext);
  EXPECT_EQ(ops.Sync(nullptr, nullptr, true), kInvalidPDEContext);
  EXPECT_EQ(ops.GetSummaryText(nullptr, nullptr, nullptr), kInvalidPDEContext);
  EXPECT_EQ(ops.Open(nullptr), kInvalidPDEContext);
  EXPECT_EQ(ops.Close(nullptr), kInvalidPDEContext);
  EXPECT_EQ(ops.Terminate(nullptr, 0), kInvalidPDEContext);
  PDEAPIVersion version{};
  EXPECT_EQ(ops.GetAPIVersion(nullptr, &version), kNoErr);
  EXPECT_EQ(version.buildVersionMajor, 1u);
  EXPECT_EQ(version.baseVersionMajor, 1u);
}

TEST_F(HostTest, TabPopUpListsThePanelsAndSwitchingSavesTheLeftPanelThenReloadsTheOthers) {
  Dialog dialog;
  dialog.start();
  auto* tabs = dialog.find<QComboBox>("Zshl_16");
  ASSERT_NE(tabs, nullptr);
  ASSERT_EQ(tabs->count(), 7);
  EXPECT_EQ(tabs->itemText(0), "Paper/Output");
  EXPECT_EQ(tabs->itemText(5), "Advanced");
  EXPECT_EQ(tabs->itemText(6), "Recorder");
  EXPECT_EQ(dialog.visiblePanel(), 1);
  gCalls.clear();
  tabs->setCurrentIndex(5);
  emit tabs->activated(5);
  EXPECT_EQ(dialog.visiblePanel(), 6);
  const std::vector<std::string> expected = {"1:Sync(false)", "2:Sync(true)", "3:Sync(true)",
                                             "4:Sync(true)",  "5:Sync(true)", "6:Sync(true)",
                                             "7:Sync(true)"};
  EXPECT_EQ(gCalls, expected);
  // Choosing the panel already shown does nothing.
  gCalls.clear();
  emit tabs->activated(5);
  EXPECT_TRUE(gCalls.empty());
}

TEST_F(HostTest, ArrowsStepWithTheirCommandsAndWrapAtBothEnds) {
  Dialog dialog;
  dialog.start();
  auto* tabs = dialog.find<QComboBox>("Zshl_16");
  auto* back = dialog.find<QToolButton>("Zshl_1966");
  auto* forward = dialog.find<QToolButton>("Zshl_1967");
  ASSERT_TRUE(tabs && back && forward);
  // Their pictures come from the bundle.
  EXPECT_FALSE(back->icon().isNull());
  EXPECT_FALSE(forward->icon().isNull());
  EXPECT_TRUE(back->isHidden());
  EXPECT_TRUE(forward->isHidden());
  back->click();  // from panel 1 back to the last
  EXPECT_EQ(dialog.visiblePanel(), 7);
  EXPECT_EQ(tabs->currentIndex(), 6);
  forward->click();  // past the last to panel 1
  EXPECT_EQ(dialog.visiblePanel(), 1);
  forward->click();
  EXPECT_EQ(dialog.visiblePanel(), 2);
  EXPECT_EQ(tabs->currentIndex(), 1);
}

TEST_F(HostTest, ANewDialogOpensOnPanelOneAndReopeningShowsThePanelSeenLast) {
  Dialog dialog;
  dialog.start();
  auto* tabs = dialog.find<QComboBox>("Zshl_16");
  emit tabs->activated(3);
  ASSERT_EQ(dialog.visiblePanel(), 4);
  ASSERT_EQ(dialog.close(), kNoErr);
  gCalls.clear();
  ASSERT_EQ(dialog.open(), kNoErr);
  EXPECT_EQ(dialog.visiblePanel(), 4);
  EXPECT_EQ(CallsOf("Open"), kAllSeven);
  dialog.terminate();

  Dialog next;
  next.start();
  EXPECT_EQ(next.visiblePanel(), 1);
}

TEST_F(HostTest, TheSpecialPagesPanelRefusesASecondOpenAndTheOthersTakeIt) {
  Dialog dialog;
  dialog.start();
  for (int i = 0; i < kBuiltIn; ++i) EXPECT_EQ(gOpenStatus[i], kNoErr) << i;
  dialog.close();
  ASSERT_EQ(dialog.open(), kNoErr);
  for (int i = 0; i < kBuiltIn; ++i) {
    EXPECT_EQ(gOpenStatus[i], i == 1 ? kInvalidPDEContext : kNoErr) << i;
  }
  // Each panel filled its own pane once.
  for (int tab = 1; tab <= kBuiltIn; ++tab) {
    auto* pane = dialog.find<QWidget>(QStringLiteral("ZSgb_%1").arg(tab));
    ASSERT_NE(pane, nullptr);
    EXPECT_EQ(pane->children().size(), 2) << tab;  // its layout and its view
  }
}

TEST_F(HostTest, SavingSyncAddsTheHostItems) {
  Dialog dialog;
  dialog.start();
  dialog.ticket().setNumber("Z", tkey::kRotateBooklet180, 1);
  ASSERT_EQ(dialog.sync(false), kNoErr);
  const Dictionary* options = dialog.ticket().getDictionary(tkey::kOptions);
  ASSERT_NE(options, nullptr);
  EXPECT_EQ(options->getBool(tkey::kOptionAll), true);
  EXPECT_FALSE(dialog.ticket().contains(tkey::kRotateBooklet180));
  const TicketItem* family = dialog.ticket().item(tkey::kControllerFamily);
  ASSERT_NE(family, nullptr);
  EXPECT_EQ(*family->value.string(), "Kestrix");
  EXPECT_EQ(family->client, "Z");
  EXPECT_FALSE(family->locked);
  // A reading Sync adds nothing of the host's.
  Dialog reading;
  reading.start();
  reading.ticket().clear();
  ASSERT_EQ(reading.sync(true), kNoErr);
  EXPECT_TRUE(reading.ticket().empty());
}

TEST_F(HostTest, PapPrinterStartsNoWorkerAndNeitherDoesASecondOpen) {
  {
    Dialog dialog("PAP://zone/printer");
    dialog.start();
    auto* content = dialog.find<QWidget>("Zshl_10");
    ASSERT_NE(content, nullptr);
    EXPECT_EQ(content->property("paperWorkerStarted").toBool(), false);
  }
  Dialog dialog("ipp://127.0.0.1:9/ipp/print");
  dialog.start();
  auto* content = dialog.find<QWidget>("Zshl_10");
  EXPECT_EQ(content->property("paperWorkerStarted").toBool(), true);
  dialog.close();
  content->setProperty("paperWorkerStarted", QVariant());
  dialog.open();
  EXPECT_FALSE(content->property("paperWorkerStarted").isValid());
}

TEST_F(HostTest, ThePrintersPaperListArrivesInTheOpenDialog) {
  IppEvePrinter printer(MediaColDatabaseAttributes(GeneratedCatalogue(3)));
  ASSERT_TRUE(printer.ready());
  Dialog dialog("ipp://" + printer.address() + "/ipp/print");
  dialog.start();
  auto* content = dialog.find<QWidget>("Zshl_10");
  ASSERT_NE(content, nullptr);
  EXPECT_TRUE(content->property("paperWorkerStarted").toBool());
  QTRY_COMPARE_WITH_TIMEOUT(content->property("printerPaperCount").toInt(), 3, 10000);
  dialog.close();
}

// Stands in for the desktop's browser.
class UrlCatcher : public QObject {
  Q_OBJECT

 public slots:
  void open(const QUrl& url) { urls << url; }

 public:
  QList<QUrl> urls;
};

TEST_F(HostTest, TheDialogsHelpButtonOpensTheBundlesHelpPageWhileThePaneIsOpen) {
  UrlCatcher browser;
  QDesktopServices::setUrlHandler("file", &browser, "open");
  Dialog dialog;
  auto* buttons =
      new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Help, &dialog.pane());
  dialog.start();
  buttons->button(QDialogButtonBox::Help)->click();
  ASSERT_EQ(browser.urls.size(), 1);
  EXPECT_TRUE(browser.urls[0].toLocalFile().endsWith("ZorvaFeatures.bundle/Help.html"));
  EXPECT_TRUE(QFileInfo(browser.urls[0].toLocalFile()).isFile());
  dialog.close();
  buttons->button(QDialogButtonBox::Help)->click();
  EXPECT_EQ(browser.urls.size(), 1);
  QDesktopServices::unsetUrlHandler("file");
}

TEST_F(HostTest, InitializeWithoutTheSessionsTicketFails) {
  Dialog dialog;
  ASSERT_EQ(dialog.prologue(), kNoErr);
  std::uint32_t flags = 0;
  testing::internal::CaptureStderr();
  EXPECT_EQ(dialog.ops().Initialize(dialog.context(), &flags, nullptr, &dialog.pane(), nullptr),
            kInvalidPDEContext);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Initialize()::GetTicketFromSession() failed.\n");
}

TEST_F(HostTest, AColourOptionsPanelIsLoadedFromItsOwnBundle) {
  const char* const names[] = {"GetAdvancedPanelInterface", "GetColorOptionPanelInterface",
                               nullptr};
  Module().setPanelSource(names, nullptr);
  ScopedEnv where("ZORVA_COLOR_OPTIONS_BUNDLE", ZORVA_COLOR_OPTIONS_TEST_BUNDLE);
  {
    Dialog dialog;
    dialog.start();
    auto* tabs = dialog.find<QComboBox>("Zshl_16");
    ASSERT_NE(tabs, nullptr);
    ASSERT_EQ(tabs->count(), 2);
    EXPECT_EQ(tabs->itemText(1), "Colour Options");
  }
  void* module = dlopen(ZORVA_COLOR_OPTIONS_TEST_BUNDLE "/ColorOptions.so", RTLD_NOW | RTLD_NOLOAD);
  ASSERT_NE(module, nullptr);
  auto calls = reinterpret_cast<int* (*)()>(dlsym(module, "ColorOptionsCalls"))();
  EXPECT_EQ(std::vector<int>(calls, calls + 4), (std::vector<int>{1, 1, 1, 1}));
  dlclose(module);
}

// Each panel fits the host's width. zorva-print's --screenshots takes the
// panels' pictures for review; this is the check on them.
TEST(HostPanels, ThePanelsFitTheHostsWidth) {
  Dialog dialog;
  dialog.start();
  dialog.pane().show();
  for (int tab : {3, 4, 5, 6}) {
    dialog.showPanel(tab);
    EXPECT_EQ(dialog.pane().grab().width(), 540) << tab;
  }
}

TEST_F(HostTest, TheModuleExportsOnlyTheFactoryAndTheEntryPoints) {
  EXPECT_NE(Module().symbol("ZorvaPDEPluginFactory"), nullptr);
  EXPECT_NE(Module().symbol("GetAdvancedPanelInterface"), nullptr);
  // Its own copy of the library stays inside.
  EXPECT_EQ(Module().symbol("_ZN5zorva12GetPDEBundleEv"), nullptr);
  EXPECT_EQ(Module().factory()(nullptr, &kIUnknownID), nullptr);
}

}  // namespace
}  // namespace zorva::test

#include "host_test.moc"

// The paper-list worker: the handshake with the dialog, the failure path,
// the delayed messages, the start and stop rules of the host, and the
// message channel under it.
#include "paper/worker.h"

#include <gtest/gtest.h>

#include <cstring>
#include <mutex>
#include <vector>

#include "hostile_printer.h"
#include "support/ipp_printer.h"

namespace zorva {
namespace {

using namespace std::chrono_literals;

struct Event {
  bool refresh;
  std::int32_t status;
};

// A window of the dialog: records what it hears, with the status then.
class RecordingWindow : public PrinterPaperEventReceiver {
 public:
  explicit RecordingWindow(const PrinterStockWorker& worker)
      : worker_(worker), ref_(RegisterPaperEventWindow(this)) {}
  ~RecordingWindow() override { UnregisterPaperEventWindow(ref_); }
  void printerPaperListArrived() override { events.push_back({false, worker_.status()}); }
  void printerPaperListRefresh() override { events.push_back({true, worker_.status()}); }
  WindowRef ref() const { return ref_; }
  std::vector<Event> events;

 private:
  const PrinterStockWorker& worker_;
  WindowRef ref_;
};

// Every message either side received, in order: +id to the dialog, -id to
// the worker.
class Trace {
 public:
  void attach(PrinterStockWorker& worker) {
    worker.setTrace([this](bool toDialog, std::int32_t id) {
      std::lock_guard lock(mutex_);
      seen_.push_back(toDialog ? id : -id);
    });
  }
  std::vector<std::int32_t> seen() const {
    std::lock_guard lock(mutex_);
    return seen_;
  }

 private:
  mutable std::mutex mutex_;
  std::vector<std::int32_t> seen_;
};

MessageData WindowPayload(WindowRef window) {
  MessageData data(sizeof window);
  std::memcpy(data.data(), &window, sizeof window);
  return data;
}

// Serves the dialog's side in short slices, so that conditions set by the
// worker alone (a task that ended, a request the printer saw) are noticed.
bool PumpUntil(PrinterStockWorker& worker, const std::function<bool()>& done,
               std::chrono::milliseconds timeout = 10s) {
  const auto until = std::chrono::steady_clock::now() + timeout;
  while (!done()) {
    if (std::chrono::steady_clock::now() > until) return false;
    worker.dialogRunLoop()->runFor(5ms);
  }
  return true;
}

TEST(PrinterStockWorker, HandshakeFetchesAndReports) {
  test::IppEvePrinter printer(test::MediaColDatabaseAttributes(test::GeneratedCatalogue(3)));
  ASSERT_TRUE(printer.ready());
  Trace trace;  // outlives the worker, whose thread reports to it
  PrinterStockWorker worker;
  trace.attach(worker);
  RecordingWindow window(worker);
  EXPECT_TRUE(StartPrinterPaperWorkerOnOpen(true, "ipp://" + printer.address() + "/ipp/print",
                                            nullptr, window.ref(), worker));
  EXPECT_EQ(worker.status(), kPrinterStockNoTask);
  ASSERT_TRUE(PumpUntil(worker, [&] { return !window.events.empty(); }));
  EXPECT_EQ(trace.seen(), (std::vector<std::int32_t>{100, -200, 202, 204}));
  EXPECT_TRUE(
      worker.dialogPortName().starts_with("com.zorva.print.pde.zorvafeatures.qm4400."
                                          "MainThread-"));
  ASSERT_EQ(window.events.size(), 1u);
  EXPECT_FALSE(window.events[0].refresh);
  EXPECT_EQ(window.events[0].status, kPrinterStockDone);
  ASSERT_EQ(PrinterStockLibraryList().size(), 3u);
  EXPECT_EQ(PrinterStockLibraryList()[2]->customName(), "paper-2");

  StopPrinterPaperWorkerOnClose(worker);
  EXPECT_TRUE(PumpUntil(
      worker, [&] { return worker.taskEnded(); }, 2s));
  EXPECT_EQ(trace.seen().back(), -201);
  PrinterStockLibraryList().clear();
}

TEST(PrinterStockWorker, ANewDialogAfterACloseFetchesItsOwnPrinter) {
  test::IppEvePrinter second(test::MediaColDatabaseAttributes(test::GeneratedCatalogue(5)));
  ASSERT_TRUE(second.ready());
  PrinterStockWorker worker;
  RecordingWindow window(worker);
  // The first dialog's printer is not there.
  const std::string nobody = "127.0.0.1:" + std::to_string(test::FreeLoopbackPort());
  ASSERT_TRUE(StartPrinterPaperWorkerOnOpen(true, "ipp://" + nobody + "/ipp/print", nullptr,
                                            window.ref(), worker));
  ASSERT_TRUE(PumpUntil(worker, [&] { return !window.events.empty(); }));
  EXPECT_EQ(window.events[0].status, kPrinterStockFailed);
  // While the first dialog is open a second start changes nothing.
  worker.MySpawnThread("x", second.address(), window.ref());
  StopPrinterPaperWorkerOnClose(worker);

  window.events.clear();
  ASSERT_TRUE(StartPrinterPaperWorkerOnOpen(true, "ipp://" + second.address() + "/ipp/print",
                                            nullptr, window.ref(), worker));
  ASSERT_TRUE(PumpUntil(worker, [&] { return !window.events.empty(); }));
  EXPECT_EQ(window.events[0].status, kPrinterStockDone);
  EXPECT_EQ(PrinterStockLibraryList().size(), 5u);
  StopPrinterPaperWorkerOnClose(worker);
  PrinterStockLibraryList().clear();
}

TEST(PrinterStockWorker, ADialogGoneBeforeTheHandshakeLeavesNoTaskBehind) {
  test::IppEvePrinter printer(test::MediaColDatabaseAttributes(test::GeneratedCatalogue(4)));
  ASSERT_TRUE(printer.ready());
  PrinterStockWorker worker;
  {
    // Opened and closed before the task introduced itself: nobody told it
    // to quit (the status was still 4).
    RecordingWindow gone(worker);
    ASSERT_TRUE(StartPrinterPaperWorkerOnOpen(true, "ipp://127.0.0.1:9/ipp/print", nullptr,
                                              gone.ref(), worker));
    StopPrinterPaperWorkerOnClose(worker);
  }
  RecordingWindow window(worker);
  ASSERT_TRUE(StartPrinterPaperWorkerOnOpen(true, "ipp://" + printer.address() + "/ipp/print",
                                            nullptr, window.ref(), worker));
  ASSERT_TRUE(PumpUntil(worker, [&] { return !window.events.empty(); }));
  EXPECT_EQ(window.events[0].status, kPrinterStockDone);
  EXPECT_EQ(PrinterStockLibraryList().size(), 4u);
  StopPrinterPaperWorkerOnClose(worker);
  PrinterStockLibraryList().clear();
}

TEST(PrinterStockWorker, FailedFetchReportedToAnyWindowThatAsks) {
  Trace trace;  // outlives the worker, whose thread reports to it
  PrinterStockWorker worker;
  trace.attach(worker);
  RecordingWindow host(worker);
  RecordingWindow dialog(worker);
  const std::string nobody = "127.0.0.1:" + std::to_string(test::FreeLoopbackPort());
  testing::internal::CaptureStderr();
  worker.MySpawnThread("org.example.test", nobody, host.ref());
  ASSERT_TRUE(PumpUntil(worker, [&] { return !host.events.empty(); }));
  testing::internal::GetCapturedStderr();
  EXPECT_EQ(trace.seen(), (std::vector<std::int32_t>{100, -200, 202, 203}));
  EXPECT_EQ(host.events[0].status, kPrinterStockFailed);

  // The named-paper dialog opens later and asks for the outcome itself.
  worker.SendMessageToThread(kReportStatusMessage, WindowPayload(dialog.ref()));
  ASSERT_TRUE(PumpUntil(worker, [&] { return !dialog.events.empty(); }));
  EXPECT_EQ(dialog.events[0].status, kPrinterStockFailed);
  EXPECT_FALSE(dialog.events[0].refresh);
  EXPECT_EQ(host.events.size(), 1u);
  EXPECT_EQ(worker.status(), kPrinterStockFailed);
  const std::vector<std::int32_t> seen = trace.seen();
  EXPECT_EQ(std::vector<std::int32_t>(seen.end() - 3, seen.end()),
            (std::vector<std::int32_t>{-206, 207, 203}));
}

TEST(PrinterStockWorker, DelayedMessages) {
  PrinterStockWorker worker;
  RecordingWindow window(worker);
  testing::internal::CaptureStderr();
  worker.MySpawnThread("org.example.test", "127.0.0.1:" + std::to_string(test::FreeLoopbackPort()),
                       window.ref());
  ASSERT_TRUE(PumpUntil(worker, [&] { return window.events.size() == 1; }));
  testing::internal::GetCapturedStderr();

  const auto start = std::chrono::steady_clock::now();
  worker.SendMessageToThread(kDelayedRefreshMessage);
  ASSERT_TRUE(PumpUntil(worker, [&] { return window.events.size() == 2; }));
  EXPECT_TRUE(window.events[1].refresh);
  EXPECT_GE(std::chrono::steady_clock::now() - start, 1s);

  worker.SendMessageToThread(kDelayedDoneMessage);
  ASSERT_TRUE(PumpUntil(worker, [&] { return window.events.size() == 3; }));
  EXPECT_FALSE(window.events[2].refresh);
  EXPECT_EQ(worker.status(), kPrinterStockDone);
  EXPECT_GE(std::chrono::steady_clock::now() - start, 3s);
}

TEST(PrinterStockWorker, HostStartAndStopRules) {
  {
    // No task for "pap:" in any case, and Close then sends nothing.
    Trace trace;
    PrinterStockWorker worker;
    trace.attach(worker);
    EXPECT_FALSE(StartPrinterPaperWorkerOnOpen(true, "PAP://zone/printer", nullptr, 0, worker));
    StopPrinterPaperWorkerOnClose(worker);
    worker.dialogRunLoop()->runFor(100ms);
    EXPECT_EQ(worker.status(), kPrinterStockNoTask);
    EXPECT_TRUE(trace.seen().empty());
    EXPECT_TRUE(worker.dialogPortName().empty());
  }
  {
    // A second Open starts nothing more.
    Trace trace;
    PrinterStockWorker worker;
    trace.attach(worker);
    const std::string uri = "socket://127.0.0.1:" + std::to_string(test::FreeLoopbackPort());
    testing::internal::CaptureStderr();
    EXPECT_TRUE(StartPrinterPaperWorkerOnOpen(true, uri, nullptr, 0, worker));
    EXPECT_FALSE(StartPrinterPaperWorkerOnOpen(false, uri, nullptr, 0, worker));
    worker.MySpawnThread("org.example.test", "elsewhere", 0);
    ASSERT_TRUE(PumpUntil(worker, [&] { return worker.status() == kPrinterStockFailed; }));
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(trace.seen(), (std::vector<std::int32_t>{100, -200, 202, 203}));
    StopPrinterPaperWorkerOnClose(worker);
    EXPECT_TRUE(PumpUntil(
        worker, [&] { return worker.taskEnded(); }, 2s));
  }
}

TEST(PrinterStockWorker, DeviceUriToAddress) {
  const std::pair<const char*, std::optional<std::string>> cases[] = {
      {"ipp://10.1.2.3/ipp/print", "10.1.2.3"},
      {"ipp://printer.local:8631/ipp/print", "printer.local:8631"},
      {"lpd://[fe80::1]:515/queue", "[fe80::1]:515"},
      {"socket://10.0.0.9", "10.0.0.9"},
      {"pap://zone/printer", std::nullopt},
      {"Pap://zone/printer", std::nullopt},
      {"usb:", std::nullopt},
      {"ipp:///nohost", std::nullopt},
      {"dnssd://Zorva%20Printer._ipp._tcp.local/?uuid=1",
       "dnssd://Zorva%20Printer._ipp._tcp.local/?uuid=1"},
  };
  for (const auto& [uri, address] : cases) {
    EXPECT_EQ(PrinterAddressFromDeviceUri(uri), address) << uri;
  }
  EXPECT_EQ(ResolvePrinterAddress("10.1.2.3:631", nullptr), "10.1.2.3:631");
  // Nothing on this machine answers for the service: the fetch then fails.
  EXPECT_EQ(ResolvePrinterAddress("dnssd://Nobody._ipp._tcp.local/", nullptr), std::nullopt);
}

// Close returns at once and the task ends promptly even while a printer
// holds the fetch open without answering, or trickles its answer.
TEST(PrinterStockWorker, StopIsPromptWhilePrinterStalls) {
  const test::HostilePrinter::Mode modes[] = {test::HostilePrinter::Mode::Silent,
                                              test::HostilePrinter::Mode::Trickle};
  for (auto mode : modes) {
    test::HostilePrinter printer(mode, std::string(512, 'x'));
    PrinterStockWorker worker;
    FetchControl control;
    control.answerTimeout = 60s;
    worker.setFetchControl(control);
    worker.MySpawnThread("org.example.test", printer.address(), 0);
    ASSERT_TRUE(PumpUntil(worker, [&] { return printer.requestsSeen() == 1; }));
    EXPECT_EQ(worker.status(), kPrinterStockRunning);
    const auto start = std::chrono::steady_clock::now();
    StopPrinterPaperWorkerOnClose(worker);
    const auto closed = std::chrono::steady_clock::now() - start;
    while (!worker.taskEnded() && std::chrono::steady_clock::now() - start < 5s) {
      std::this_thread::sleep_for(1ms);
    }
    const auto ended = std::chrono::steady_clock::now() - start;
    EXPECT_TRUE(worker.taskEnded());
    // Generous bounds for loaded and sanitizer builds; the fetch would
    // otherwise hold on for a minute.
    EXPECT_LT(closed, 50ms);
    EXPECT_LT(ended, 1s);
    RecordProperty(
        mode == test::HostilePrinter::Mode::Silent ? "silent_stop_us" : "trickle_stop_us",
        static_cast<int>(std::chrono::duration_cast<std::chrono::microseconds>(ended).count()));
  }
}

// ---- the channel ----------------------------------------------------------------------

TEST(MessagePort, NamesRepliesAndTimeouts) {
  auto loop = std::make_shared<RunLoop>();
  auto port = LocalMessagePort::Create(
      "test.port",
      [](std::int32_t id, const MessageData& data) {
        MessageData reply = data;
        reply.push_back(static_cast<std::uint8_t>(id));
        return reply;
      },
      loop);
  ASSERT_TRUE(port);
  EXPECT_FALSE(LocalMessagePort::Create(
      "test.port", [](std::int32_t, const MessageData&) { return MessageData{}; }, loop));
  EXPECT_FALSE(RemoteMessagePort::Open("test.nobody"));
  auto remote = RemoteMessagePort::Open("test.port");
  ASSERT_TRUE(remote);

  // A reply comes back from the receiving thread.
  std::thread server([loop] { loop->run(); });
  MessageData reply;
  EXPECT_EQ(remote->send(7, {1, 2}, 100ms, 2000ms, &reply), PortResult::Success);
  EXPECT_EQ(reply, (MessageData{1, 2, 7}));
  loop->stop();
  server.join();

  // Nobody serving: the reply times out, then the bounded queue fills.
  EXPECT_EQ(remote->send(1, {}, 100ms, 50ms, &reply), PortResult::ReceiveTimeout);
  PortResult last = PortResult::Success;
  for (std::size_t i = 0; i < LocalMessagePort::kQueueLimit && last == PortResult::Success; ++i) {
    last = remote->send(2, {}, 10ms);
  }
  EXPECT_EQ(last, PortResult::SendTimeout);

  // A sender waiting for a reply hears at once when the receiver's loop
  // stops and throws its queue away.
  auto quiet = std::make_shared<RunLoop>();
  auto quietPort = LocalMessagePort::Create(
      "test.quiet", [](std::int32_t, const MessageData&) { return MessageData{}; }, quiet);
  PortResult waited = PortResult::Success;
  std::thread sender([&waited] {
    MessageData ignored;
    waited = RemoteMessagePort::Open("test.quiet")->send(1, {}, 100ms, 60s, &ignored);
  });
  std::this_thread::sleep_for(50ms);
  quiet->stop();
  sender.join();
  EXPECT_EQ(waited, PortResult::IsInvalid);

  port->invalidate();
  EXPECT_EQ(remote->send(3, {}, 100ms), PortResult::IsInvalid);
  EXPECT_FALSE(RemoteMessagePort::Open("test.port"));
  EXPECT_TRUE(LocalMessagePort::Create(
      "test.port", [](std::int32_t, const MessageData&) { return MessageData{}; }, loop));
}

}  // namespace
}  // namespace zorva

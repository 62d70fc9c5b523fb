// The background worker that fetches the printer paper list. The dialog's
// thread and the worker share no lock: they talk only through two named
// message ports by small numbered messages, and the dialog hears of a
// finished fetch through an event to a receiver it registered.
//
// Who writes what: the status word, the message port handle and the shared
// parameters are written only on the dialog's thread; the printer paper
// list only by the worker, during a fetch. The dialog reads the list only
// after the paper-list event and before it asks for another fetch.
//
// The dialog's side of the ports is served by the worker object's dialog
// run loop, which the host runs on its own thread (a GUI event loop hooks
// RunLoop::setWakeUp and calls processPending()).
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include "core/status.h"
#include "paper/message_port.h"
#include "paper/printer_papers.h"

namespace zorva {

class Bundle;

// A window that receives the worker's events, as a 32-bit reference (it
// travels in message payloads). 0 is no window.
using WindowRef = std::uint32_t;

constexpr std::uint32_t FourCharCode(const char (&code)[5]) {
  return (std::uint32_t{static_cast<unsigned char>(code[0])} << 24) |
         (std::uint32_t{static_cast<unsigned char>(code[1])} << 16) |
         (std::uint32_t{static_cast<unsigned char>(code[2])} << 8) |
         std::uint32_t{static_cast<unsigned char>(code[3])};
}
// The events, agreed with the named-paper dialog: class and kinds.
inline constexpr std::uint32_t kPaperEventClass = FourCharCode("ZPDE");
inline constexpr std::uint32_t kPaperListArrivedEventKind = FourCharCode("ZbdC");
inline constexpr std::uint32_t kPaperListRefreshEventKind = FourCharCode("ZBpC");

// What a window implements to hear from the worker; called on the dialog's
// thread.
class PrinterPaperEventReceiver {
 public:
  virtual ~PrinterPaperEventReceiver() = default;
  // 'ZPDE'/'ZbdC': a fetch ended (the status word tells how).
  virtual void printerPaperListArrived() = 0;
  // 'ZPDE'/'ZBpC': reload the printer list.
  virtual void printerPaperListRefresh() = 0;
};

// Windows are known to the worker by reference; unregister before the
// receiver goes. Events for an unknown reference are dropped.
WindowRef RegisterPaperEventWindow(PrinterPaperEventReceiver* receiver);
void UnregisterPaperEventWindow(WindowRef window);

// The messages between the dialog and the worker.
enum PrinterStockMessage : std::int32_t {
  kTaskPortNameMessage = 100,    // worker -> dialog: its port name
  kFetchMessage = 200,           // dialog -> worker: fetch the list
  kQuitMessage = 201,            // dialog -> worker: end at once
  kAddressMessage = 202,         // worker -> dialog, reply: the printer address
  kFetchFailedMessage = 203,     // worker -> dialog: status 1, paper-list event
  kFetchDoneMessage = 204,       // worker -> dialog: status 3, paper-list event
  kDelayedDoneMessage = 205,     // dialog -> worker: 204 after 2 s
  kReportStatusMessage = 206,    // dialog -> worker: 203 or 204 for the status
  kStatusMessage = 207,          // worker -> dialog, reply: the status word
  kDelayedRefreshMessage = 208,  // dialog -> worker: 209 after 1 s
  kRefreshMessage = 209,         // worker -> dialog: refresh event
};

// The status word of the fetch.
inline constexpr std::int32_t kPrinterStockFailed = 1;
inline constexpr std::int32_t kPrinterStockRunning = 2;
inline constexpr std::int32_t kPrinterStockDone = 3;
inline constexpr std::int32_t kPrinterStockNoTask = 4;

inline constexpr std::chrono::milliseconds kPortSendTimeout{100};
inline constexpr std::chrono::milliseconds kPortReplyTimeout{2000};
inline constexpr std::chrono::milliseconds kDelayedDoneWait{2000};     // 120 ticks
inline constexpr std::chrono::milliseconds kDelayedRefreshWait{1000};  // 60 ticks
inline constexpr std::size_t kMaxAddressReply = 1023;

// The worker, its ports and the shared words. The process has one (see
// ProcessPrinterStockWorker); tests make their own.
class PrinterStockWorker {
 public:
  PrinterStockWorker();
  // Ends the task if it still runs (abandoning a fetch) and waits for it.
  ~PrinterStockWorker();
  PrinterStockWorker(const PrinterStockWorker&) = delete;
  PrinterStockWorker& operator=(const PrinterStockWorker&) = delete;

  // The dialog side's run loop; the host serves it on the dialog's thread.
  const std::shared_ptr<RunLoop>& dialogRunLoop() const { return dialogLoop_; }

  // Stores address and window, creates the dialog's port and starts the
  // task. One task at a time: while a task serves an open dialog later calls
  // do nothing; a task told to quit, or whose dialog's window is gone, is
  // ended and a new one started, so the next dialog fetches its own
  // printer's papers.
  void MySpawnThread(std::string_view bundleIdentifier, std::string address, WindowRef window);
  // Sends id to the task (0.1 s send time-out, no reply); nothing before
  // the task has introduced itself. Returns 0.
  Status SendMessageToThread(std::int32_t id, const MessageData& data = {});
  // Sends 201, and abandons a fetch or wait in progress so the task ends
  // promptly. Never waits for the task.
  Status MyRemoveThread();

  // gPrinterStockBiDiStatus.
  std::int32_t status() const { return status_.load(); }
  // The dialog's port name, empty before MySpawnThread.
  const std::string& dialogPortName() const { return dialogPortName_; }
  // True once the task thread has returned (for tests and shutdown).
  bool taskEnded() const { return taskEnded_.load(); }
  // How the task's fetches are bounded (set before MySpawnThread).
  void setFetchControl(const FetchControl& control) { fetchControl_ = control; }
  // Called with every message a side receives (toDialog, id), on the
  // receiving thread; for logs and tests. Set before MySpawnThread.
  using MessageTrace = std::function<void(bool toDialog, std::int32_t id)>;
  void setTrace(MessageTrace trace) { trace_ = std::move(trace); }

 private:
  struct Task;
  MessageData MainThreadResponseHandler(std::int32_t id, const MessageData& data);
  void postPaperEvent(const MessageData& data, bool refresh) const;
  void ServerThreadEntryPoint(const std::string& dialogPortName);
  MessageData ProcessClientRequest(Task& task, std::int32_t id, const MessageData& data);
  void fetch(Task& task);
  // Ends a task that was told to quit or lost its window so a new one can
  // start; false while the task still serves an open dialog.
  bool RetireTask();
  bool abortableWait(std::chrono::milliseconds duration);

  // Dialog thread only.
  std::shared_ptr<RunLoop> dialogLoop_;
  std::shared_ptr<LocalMessagePort> dialogPort_;
  std::shared_ptr<RemoteMessagePort> gMessagePort_;
  std::string dialogPortName_;
  std::string address_;  // gPrinterStockListParams
  WindowRef window_ = 0;
  std::atomic<std::int32_t> status_{kPrinterStockNoTask};
  bool spawned_ = false;

  // Read by the task; set before it starts.
  FetchControl fetchControl_;
  MessageTrace trace_;

  // Ends the task's fetches and waits from any thread.
  std::atomic<bool> abort_{false};
  std::mutex abortMutex_;
  std::condition_variable abortChanged_;
  std::shared_ptr<RunLoop> taskLoop_;
  std::atomic<bool> taskEnded_{false};
  std::thread thread_;
};

// The process's worker.
PrinterStockWorker& ProcessPrinterStockWorker();

// The printer's network address from its device URI: the third "/" piece
// (host, with its port when the URI has one). Nothing for a "pap:" URI (any
// case) or one without a host piece. A "dnssd://" URI is kept whole: the
// worker resolves it through the IPP library before fetching, off the
// dialog's thread.
std::optional<std::string> PrinterAddressFromDeviceUri(std::string_view deviceUri);

// "host[:port]" for an address, resolving a "dnssd://" URI through the IPP
// library (at most a few seconds; not begun once abort is set); nothing
// when it cannot be resolved.
std::optional<std::string> ResolvePrinterAddress(const std::string& address,
                                                 const std::atomic<bool>* abort);

// The host's Open: on the first Open of a host context only, starts the
// worker for the printer unless its URI rules that out. True when started.
bool StartPrinterPaperWorkerOnOpen(bool firstOpen, std::string_view deviceUri, const Bundle* bundle,
                                   WindowRef window,
                                   PrinterStockWorker& worker = ProcessPrinterStockWorker());

// The host's Close: sends 201 exactly when the status is not 4.
void StopPrinterPaperWorkerOnClose(PrinterStockWorker& worker = ProcessPrinterStockWorker());

}  // namespace zorva

// The paper-list worker: its start and stop, the two port callbacks, the
// status word and the events to the dialog.
#include "paper/worker.h"

#include <cups/cups.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstring>
#include <map>

#include "core/bundle.h"
#include "core/text.h"

namespace zorva {
namespace {

// What the platform's thread identifier was to the port names.
int CurrentThreadId() {
  return static_cast<int>(::syscall(SYS_gettid));
}

MessageData BytesOf(std::string_view text) {
  return MessageData(text.begin(), text.end());
}

// The window a message names, when it carries one.
std::optional<WindowRef> WindowOf(const MessageData& data) {
  if (data.size() != sizeof(WindowRef)) return std::nullopt;
  WindowRef window = 0;
  std::memcpy(&window, data.data(), sizeof window);
  if (window == 0) return std::nullopt;
  return window;
}

struct WindowRegistry {
  std::mutex mutex;
  std::map<WindowRef, PrinterPaperEventReceiver*> windows;
  WindowRef next = 1;
};

WindowRegistry& Windows() {
  static WindowRegistry registry;
  return registry;
}

PrinterPaperEventReceiver* ReceiverFor(WindowRef window) {
  WindowRegistry& registry = Windows();
  std::lock_guard lock(registry.mutex);
  auto found = registry.windows.find(window);
  return found == registry.windows.end() ? nullptr : found->second;
}

std::vector<std::string_view> SplitAtSlash(std::string_view text) {
  std::vector<std::string_view> pieces;
  std::size_t start = 0;
  while (true) {
    const std::size_t slash = text.find('/', start);
    pieces.push_back(text.substr(start, slash - start));
    if (slash == std::string_view::npos) return pieces;
    start = slash + 1;
  }
}

constexpr std::string_view kDnssdScheme = "dnssd:";
constexpr int kResolveTimeoutMs = 5000;

bool IsDnssd(std::string_view uri) {
  return uri.size() > kDnssdScheme.size() &&
         EqualsCaseInsensitive(uri.substr(0, kDnssdScheme.size()), kDnssdScheme);
}

}  // namespace

// The worker thread's own state: its run loop, its port and its handle on
// the dialog's port.
struct PrinterStockWorker::Task {
  std::shared_ptr<RemoteMessagePort> dialog;
  std::shared_ptr<LocalMessagePort> port;
};

WindowRef RegisterPaperEventWindow(PrinterPaperEventReceiver* receiver) {
  WindowRegistry& registry = Windows();
  std::lock_guard lock(registry.mutex);
  const WindowRef window = registry.next++;
  registry.windows[window] = receiver;
  return window;
}

void UnregisterPaperEventWindow(WindowRef window) {
  WindowRegistry& registry = Windows();
  std::lock_guard lock(registry.mutex);
  registry.windows.erase(window);
}

PrinterStockWorker::PrinterStockWorker()
    : dialogLoop_(std::make_shared<RunLoop>()), taskLoop_(std::make_shared<RunLoop>()) {}

PrinterStockWorker::~PrinterStockWorker() {
  {
    std::lock_guard lock(abortMutex_);
    abort_ = true;
  }
  abortChanged_.notify_all();
  // The dialog's side goes first, so a task waiting on a reply from it
  // hears at once that none will come.
  if (dialogPort_) dialogPort_->invalidate();
  dialogLoop_->stop();
  taskLoop_->stop();
  if (thread_.joinable()) thread_.join();
}

void PrinterStockWorker::MySpawnThread(std::string_view bundleIdentifier, std::string address,
                                       WindowRef window) {
  if (spawned_ && !RetireTask()) return;
  spawned_ = true;
  address_ = std::move(address);
  window_ = window;
  dialogPortName_ =
      std::string(bundleIdentifier) + ".MainThread-" + std::to_string(CurrentThreadId());
  // Without its port the dialog never hears from the task, but the task is
  // still started, as it always was.
  dialogPort_ = LocalMessagePort::Create(
      dialogPortName_,
      [this](std::int32_t id, const MessageData& data) {
        return MainThreadResponseHandler(id, data);
      },
      dialogLoop_);
  thread_ = std::thread([this, name = dialogPortName_] {
    ServerThreadEntryPoint(name);
    taskEnded_ = true;
  });
}

bool PrinterStockWorker::RetireTask() {
  // A task still serving an open dialog stays. One that was told to quit, or
  // whose dialog has gone (closed before the task introduced itself, so it
  // was never told), is ended and waited for, which takes at most the rest
  // of a connection attempt; the worker then starts afresh.
  if (!abort_ && ReceiverFor(window_) != nullptr) return false;
  {
    std::lock_guard lock(abortMutex_);
    abort_ = true;
  }
  abortChanged_.notify_all();
  if (dialogPort_) dialogPort_->invalidate();
  taskLoop_->stop();
  if (thread_.joinable()) thread_.join();
  dialogPort_.reset();
  gMessagePort_.reset();
  taskLoop_ = std::make_shared<RunLoop>();
  status_ = kPrinterStockNoTask;
  taskEnded_ = false;
  abort_ = false;
  spawned_ = false;
  return true;
}

Status PrinterStockWorker::SendMessageToThread(std::int32_t id, const MessageData& data) {
  if (gMessagePort_) gMessagePort_->send(id, data, kPortSendTimeout);
  return kNoErr;
}

Status PrinterStockWorker::MyRemoveThread() {
  {
    std::lock_guard lock(abortMutex_);
    abort_ = true;
  }
  abortChanged_.notify_all();
  return SendMessageToThread(kQuitMessage);
}

// ---- the dialog's side ----------------------------------------------------------------

void PrinterStockWorker::postPaperEvent(const MessageData& data, bool refresh) const {
  const WindowRef window = WindowOf(data).value_or(window_);
  PrinterPaperEventReceiver* receiver = ReceiverFor(window);
  if (receiver == nullptr) return;
  if (refresh) {
    receiver->printerPaperListRefresh();
  } else {
    receiver->printerPaperListArrived();
  }
}

MessageData PrinterStockWorker::MainThreadResponseHandler(std::int32_t id,
                                                          const MessageData& data) {
  if (trace_) trace_(true, id);
  switch (id) {
    case kTaskPortNameMessage:
      gMessagePort_ = RemoteMessagePort::Open(std::string(data.begin(), data.end()));
      if (gMessagePort_) {
        SendMessageToThread(kFetchMessage);
        status_ = kPrinterStockRunning;
      }
      return {};
    case kAddressMessage:
      return BytesOf(std::string_view(address_).substr(0, kMaxAddressReply));
    case kFetchFailedMessage:
      status_ = kPrinterStockFailed;
      postPaperEvent(data, false);
      return {};
    case kFetchDoneMessage:
      status_ = kPrinterStockDone;
      postPaperEvent(data, false);
      return {};
    case kStatusMessage: {
      const std::int32_t status = status_;
      MessageData reply(sizeof status);
      std::memcpy(reply.data(), &status, sizeof status);
      return reply;
    }
    case kRefreshMessage:
      postPaperEvent(data, true);
      return {};
    default:
      return {};
  }
}

// ---- the worker's side ----------------------------------------------------------------

bool PrinterStockWorker::abortableWait(std::chrono::milliseconds duration) {
  std::unique_lock lock(abortMutex_);
  return !abortChanged_.wait_for(lock, duration, [this] { return abort_.load(); });
}

void PrinterStockWorker::fetch(Task& task) {
  MessageData reply;
  if (task.dialog == nullptr ||
      task.dialog->send(kAddressMessage, {}, kPortSendTimeout, kPortReplyTimeout, &reply) !=
          PortResult::Success) {
    return;
  }
  FetchControl control = fetchControl_;
  control.abort = &abort_;
  const std::string given(reply.begin(), reply.end());
  std::optional<std::string> address = ResolvePrinterAddress(given, &abort_);
  const Status status = address ? RetrievePrinterStockLibrary(*address, control) : kNoConnection;
  if (abort_) return;  // the dialog has closed; nobody is waiting for the outcome
  const std::int32_t outcome = status == kNoErr ? kFetchDoneMessage : kFetchFailedMessage;
  task.dialog->send(outcome, {}, kPortSendTimeout);
}

MessageData PrinterStockWorker::ProcessClientRequest(Task& task, std::int32_t id,
                                                     const MessageData& data) {
  if (trace_) trace_(false, id);
  switch (id) {
    case kFetchMessage:
      fetch(task);
      break;
    case kQuitMessage:
      task.port->invalidate();
      taskLoop_->stop();
      break;
    case kDelayedDoneMessage:
      if (abortableWait(kDelayedDoneWait) && task.dialog) {
        task.dialog->send(kFetchDoneMessage, {}, kPortSendTimeout);
      }
      break;
    case kReportStatusMessage: {
      MessageData reply;
      if (!task.dialog ||
          task.dialog->send(kStatusMessage, {}, kPortSendTimeout, kPortReplyTimeout, &reply) !=
              PortResult::Success ||
          reply.size() != sizeof(std::int32_t)) {
        break;
      }
      std::int32_t status = 0;
      std::memcpy(&status, reply.data(), sizeof status);
      const std::int32_t answer =
          status == kPrinterStockFailed ? kFetchFailedMessage : kFetchDoneMessage;
      task.dialog->send(answer, data, kPortSendTimeout);
      break;
    }
    case kDelayedRefreshMessage:
      if (abortableWait(kDelayedRefreshWait) && task.dialog) {
        task.dialog->send(kRefreshMessage, {}, kPortSendTimeout);
      }
      break;
    default:
      break;
  }
  return {};
}

void PrinterStockWorker::ServerThreadEntryPoint(const std::string& dialogPortName) {
  Task task;
  task.dialog = RemoteMessagePort::Open(dialogPortName);
  const std::string name = "com.zorva.print.pde.Thread-" + std::to_string(CurrentThreadId());
  task.port = LocalMessagePort::Create(
      name,
      [this, &task](std::int32_t id, const MessageData& data) {
        return ProcessClientRequest(task, id, data);
      },
      taskLoop_);
  if (!task.port) return;  // ends silently; the dialog's status stays 4
  if (task.dialog) task.dialog->send(kTaskPortNameMessage, BytesOf(name), kPortSendTimeout);
  taskLoop_->run();
  task.port->invalidate();
}

PrinterStockWorker& ProcessPrinterStockWorker() {
  static PrinterStockWorker worker;
  return worker;
}

std::optional<std::string> PrinterAddressFromDeviceUri(std::string_view deviceUri) {
  const std::vector<std::string_view> pieces = SplitAtSlash(deviceUri);
  if (EqualsCaseInsensitive(pieces.front(), "pap:")) return std::nullopt;
  if (IsDnssd(deviceUri)) return std::string(deviceUri);
  if (pieces.size() < 3 || pieces[2].empty()) return std::nullopt;
  return std::string(pieces[2]);
}

std::optional<std::string> ResolvePrinterAddress(const std::string& address,
                                                 const std::atomic<bool>* abort) {
  if (!IsDnssd(address)) return address;
  if (abort != nullptr && abort->load()) return std::nullopt;
  // The library resolves the service while connecting to the device; the
  // connection it made tells the host and port.
  cups_dest_t* dest = cupsGetDestWithURI(nullptr, address.c_str());
  if (dest == nullptr) return std::nullopt;
  char resource[1024];
  http_t* http = cupsConnectDest(dest, CUPS_DEST_FLAGS_DEVICE, kResolveTimeoutMs, nullptr, resource,
                                 sizeof resource, nullptr, nullptr);
  cupsFreeDests(1, dest);
  if (http == nullptr) return std::nullopt;
  char host[1024];
  std::optional<std::string> out;
  if (httpGetHostname(http, host, sizeof host) != nullptr && host[0] != '\0') {
    const int port = httpAddrPort(httpGetAddress(http));
    const bool v6 = std::strchr(host, ':') != nullptr;
    out = (v6 ? "[" + std::string(host) + "]" : std::string(host)) + ":" + std::to_string(port);
  }
  httpClose(http);
  return out;
}

bool StartPrinterPaperWorkerOnOpen(bool firstOpen, std::string_view deviceUri, const Bundle* bundle,
                                   WindowRef window, PrinterStockWorker& worker) {
  if (!firstOpen) return false;
  std::optional<std::string> address = PrinterAddressFromDeviceUri(deviceUri);
  if (!address) return false;
  const std::string_view identifier =
      bundle != nullptr ? std::string_view(bundle->identifier()) : kBundleIdentifier;
  worker.MySpawnThread(identifier, std::move(*address), window);
  return true;
}

void StopPrinterPaperWorkerOnClose(PrinterStockWorker& worker) {
  if (worker.status() != kPrinterStockNoTask) worker.MyRemoveThread();
}

}  // namespace zorva

// An in-process stand-in for named message ports and run loops: a thread
// serves its ports by running its RunLoop; any thread opens a port by name
// and sends it numbered messages with a byte payload, with a send time-out
// (the receiver's queue is bounded) and, when a reply is wanted, a reply
// time-out. The receiving callback runs on the receiver's own thread and
// its return value is the reply.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zorva {

using MessageData = std::vector<std::uint8_t>;

// What a send can come to, as the platform's port calls reported it.
enum class PortResult : std::int32_t {
  Success = 0,
  SendTimeout = -1,     // the receiver's queue stayed full
  ReceiveTimeout = -2,  // no reply in time
  IsInvalid = -3,       // the port is gone
};

// A queue of work served by one thread. post() may be called from any
// thread; the owner runs the work with run(), runFor() or processPending().
class RunLoop {
 public:
  using Task = std::function<void()>;

  void post(Task task);
  // Serves work until stop() (stop before run makes run return at once).
  void run();
  // Serves work for a while, or until stop(); returns early when stopped.
  void runFor(std::chrono::milliseconds duration);
  // Serves until the predicate holds (checked after each piece of work) or
  // the time is up; returns the predicate's last value.
  bool runUntil(const std::function<bool()>& done, std::chrono::milliseconds timeout);
  // Runs whatever is queued now, without waiting.
  void processPending();
  // Ends run() and discards the work still queued (a sender waiting for
  // a reply to it hears at once that none will come).
  void stop();
  bool stopped() const;
  // Called (from the posting thread) after each post: a GUI event loop uses
  // it to schedule processPending() on its own thread.
  void setWakeUp(std::function<void()> wakeUp);

 private:
  bool takeOne(std::unique_lock<std::mutex>& lock, std::chrono::steady_clock::time_point until);

  mutable std::mutex mutex_;
  std::condition_variable ready_;
  std::deque<Task> tasks_;
  std::function<void()> wakeUp_;
  bool stopped_ = false;
};

class LocalMessagePort;

// The receiving end. Created under a process-wide unique name; the callback
// runs on the run loop given at creation.
class LocalMessagePort : public std::enable_shared_from_this<LocalMessagePort> {
 public:
  // Returns the reply (ignored when the sender wants none).
  using Callback = std::function<MessageData(std::int32_t id, const MessageData& data)>;

  // Null when the name is taken or empty.
  static std::shared_ptr<LocalMessagePort> Create(const std::string& name, Callback callback,
                                                  std::shared_ptr<RunLoop> runLoop);
  ~LocalMessagePort();
  LocalMessagePort(const LocalMessagePort&) = delete;
  LocalMessagePort& operator=(const LocalMessagePort&) = delete;

  const std::string& name() const { return name_; }
  // Unregisters the name; queued and later messages are dropped.
  void invalidate();
  bool valid() const;

  // Messages waiting to be served beyond this many make senders wait.
  static constexpr std::size_t kQueueLimit = 64;

 private:
  friend class RemoteMessagePort;
  LocalMessagePort(std::string name, Callback callback, std::shared_ptr<RunLoop> runLoop);
  PortResult deliver(std::int32_t id, MessageData data, std::chrono::milliseconds sendTimeout,
                     std::chrono::milliseconds replyTimeout, MessageData* reply);
  void serve(std::int32_t id, const MessageData& data,
             const std::function<void(MessageData)>& done);

  std::string name_;
  Callback callback_;
  std::shared_ptr<RunLoop> runLoop_;
  mutable std::mutex mutex_;
  std::condition_variable space_;
  std::size_t queued_ = 0;
  bool valid_ = true;
};

// The sending end: a handle on a port found by name.
class RemoteMessagePort {
 public:
  // Null when no valid port has that name.
  static std::shared_ptr<RemoteMessagePort> Open(std::string_view name);

  // replyTimeout > 0 and reply != nullptr: waits for the callback's answer.
  PortResult send(std::int32_t id, const MessageData& data, std::chrono::milliseconds sendTimeout,
                  std::chrono::milliseconds replyTimeout = std::chrono::milliseconds(0),
                  MessageData* reply = nullptr);
  const std::string& name() const { return name_; }

 private:
  explicit RemoteMessagePort(std::weak_ptr<LocalMessagePort> port, std::string name)
      : port_(std::move(port)), name_(std::move(name)) {}
  std::weak_ptr<LocalMessagePort> port_;
  std::string name_;
};

}  // namespace zorva

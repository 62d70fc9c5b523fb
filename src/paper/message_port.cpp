// Run loops and named ports. The registry of names is process-wide; a port's
// queue bound and its validity are guarded by the port's own mutex, and a
// reply travels back through a small slot the sender waits on.
#include "paper/message_port.h"

#include <map>

namespace zorva {
namespace {

using Clock = std::chrono::steady_clock;

struct Registry {
  std::mutex mutex;
  std::map<std::string, std::weak_ptr<LocalMessagePort>, std::less<>> ports;
};

// Never destroyed: the process's worker is a static too, and it closes its
// ports while statics are being torn down, in no order relative to this one.
Registry& Ports() {
  static Registry* registry = new Registry;
  return *registry;
}

// Where a reply is left for the sender waiting on it.
struct ReplySlot {
  std::mutex mutex;
  std::condition_variable ready;
  bool answered = false;
  bool dropped = false;
  MessageData data;

  void answer(MessageData reply) {
    std::lock_guard lock(mutex);
    data = std::move(reply);
    answered = true;
    ready.notify_all();
  }
  // No effect on a sender that already has its answer.
  void drop() {
    std::lock_guard lock(mutex);
    dropped = true;
    ready.notify_all();
  }
};

}  // namespace

// ---- RunLoop ------------------------------------------------------------------------

void RunLoop::post(Task task) {
  std::function<void()> wakeUp;
  {
    std::lock_guard lock(mutex_);
    tasks_.push_back(std::move(task));
    wakeUp = wakeUp_;
  }
  ready_.notify_one();
  if (wakeUp) wakeUp();
}

bool RunLoop::takeOne(std::unique_lock<std::mutex>& lock, Clock::time_point until) {
  if (!ready_.wait_until(lock, until, [this] { return stopped_ || !tasks_.empty(); })) {
    return false;
  }
  if (stopped_) return false;
  Task task = std::move(tasks_.front());
  tasks_.pop_front();
  lock.unlock();
  task();
  lock.lock();
  return true;
}

void RunLoop::run() {
  std::unique_lock lock(mutex_);
  while (takeOne(lock, Clock::time_point::max())) {
  }
}

void RunLoop::runFor(std::chrono::milliseconds duration) {
  const Clock::time_point until = Clock::now() + duration;
  std::unique_lock lock(mutex_);
  while (Clock::now() < until && takeOne(lock, until)) {
  }
}

bool RunLoop::runUntil(const std::function<bool()>& done, std::chrono::milliseconds timeout) {
  const Clock::time_point until = Clock::now() + timeout;
  if (done()) return true;
  std::unique_lock lock(mutex_);
  while (takeOne(lock, until)) {
    lock.unlock();
    const bool finished = done();
    lock.lock();
    if (finished) return true;
  }
  lock.unlock();
  return done();
}

void RunLoop::processPending() {
  std::unique_lock lock(mutex_);
  for (std::size_t n = tasks_.size(); n > 0 && !stopped_ && !tasks_.empty(); --n) {
    Task task = std::move(tasks_.front());
    tasks_.pop_front();
    lock.unlock();
    task();
    lock.lock();
  }
}

void RunLoop::stop() {
  std::deque<Task> discarded;  // destroyed outside the lock: they may wake senders
  {
    std::lock_guard lock(mutex_);
    stopped_ = true;
    discarded.swap(tasks_);
  }
  ready_.notify_all();
}

bool RunLoop::stopped() const {
  std::lock_guard lock(mutex_);
  return stopped_;
}

void RunLoop::setWakeUp(std::function<void()> wakeUp) {
  std::lock_guard lock(mutex_);
  wakeUp_ = std::move(wakeUp);
}

// ---- LocalMessagePort ---------------------------------------------------------------

LocalMessagePort::LocalMessagePort(std::string name, Callback callback,
                                   std::shared_ptr<RunLoop> runLoop)
    : name_(std::move(name)), callback_(std::move(callback)), runLoop_(std::move(runLoop)) {}

std::shared_ptr<LocalMessagePort> LocalMessagePort::Create(const std::string& name,
                                                           Callback callback,
                                                           std::shared_ptr<RunLoop> runLoop) {
  if (name.empty() || !callback || !runLoop) return nullptr;
  Registry& registry = Ports();
  std::lock_guard lock(registry.mutex);
  auto found = registry.ports.find(name);
  if (found != registry.ports.end()) {
    auto existing = found->second.lock();
    if (existing && existing->valid()) return nullptr;
  }
  std::shared_ptr<LocalMessagePort> port(
      new LocalMessagePort(name, std::move(callback), std::move(runLoop)));
  registry.ports[name] = port;
  return port;
}

LocalMessagePort::~LocalMessagePort() {
  invalidate();
}

void LocalMessagePort::invalidate() {
  {
    Registry& registry = Ports();
    std::lock_guard lock(registry.mutex);
    auto found = registry.ports.find(name_);
    if (found != registry.ports.end()) {
      auto existing = found->second.lock();
      if (!existing || existing.get() == this) registry.ports.erase(found);
    }
  }
  std::lock_guard lock(mutex_);
  valid_ = false;
  space_.notify_all();
}

bool LocalMessagePort::valid() const {
  std::lock_guard lock(mutex_);
  return valid_;
}

void LocalMessagePort::serve(std::int32_t id, const MessageData& data,
                             const std::function<void(MessageData)>& done) {
  bool valid;
  {
    std::lock_guard lock(mutex_);
    --queued_;
    valid = valid_;
  }
  space_.notify_one();
  if (!valid) return;
  MessageData reply = callback_(id, data);
  if (done) done(std::move(reply));
}

PortResult LocalMessagePort::deliver(std::int32_t id, MessageData data,
                                     std::chrono::milliseconds sendTimeout,
                                     std::chrono::milliseconds replyTimeout, MessageData* reply) {
  {
    std::unique_lock lock(mutex_);
    if (!space_.wait_for(lock, sendTimeout, [this] { return !valid_ || queued_ < kQueueLimit; })) {
      return PortResult::SendTimeout;
    }
    if (!valid_) return PortResult::IsInvalid;
    ++queued_;
  }
  std::weak_ptr<LocalMessagePort> self = weak_from_this();
  if (reply == nullptr || replyTimeout.count() <= 0) {
    runLoop_->post([self, id, data = std::move(data)] {
      if (auto port = self.lock()) port->serve(id, data, nullptr);
    });
    return PortResult::Success;
  }
  auto slot = std::make_shared<ReplySlot>();
  // However the message ends (served, refused by an invalid port, or thrown
  // away with a stopped run loop), the guard wakes the sender.
  auto guard = std::shared_ptr<ReplySlot>(slot.get(), [slot](ReplySlot*) { slot->drop(); });
  runLoop_->post([self, id, data = std::move(data), guard = std::move(guard)] {
    if (auto port = self.lock()) {
      port->serve(id, data, [&guard](MessageData r) { guard->answer(std::move(r)); });
    }
  });
  std::unique_lock lock(slot->mutex);
  if (!slot->ready.wait_for(lock, replyTimeout,
                            [&slot] { return slot->answered || slot->dropped; })) {
    return PortResult::ReceiveTimeout;
  }
  if (!slot->answered) return PortResult::IsInvalid;
  *reply = std::move(slot->data);
  return PortResult::Success;
}

// ---- RemoteMessagePort --------------------------------------------------------------

std::shared_ptr<RemoteMessagePort> RemoteMessagePort::Open(std::string_view name) {
  Registry& registry = Ports();
  std::lock_guard lock(registry.mutex);
  auto found = registry.ports.find(name);
  if (found == registry.ports.end()) return nullptr;
  auto port = found->second.lock();
  if (!port || !port->valid()) return nullptr;
  return std::shared_ptr<RemoteMessagePort>(new RemoteMessagePort(port, std::string(name)));
}

PortResult RemoteMessagePort::send(std::int32_t id, const MessageData& data,
                                   std::chrono::milliseconds sendTimeout,
                                   std::chrono::milliseconds replyTimeout, MessageData* reply) {
  auto port = port_.lock();
  if (!port) return PortResult::IsInvalid;
  return port->deliver(id, data, sendTimeout, replyTimeout, reply);
}

}  // namespace zorva

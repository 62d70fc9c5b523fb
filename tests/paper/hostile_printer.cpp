// The misbehaving printer: one thread, one connection at a time.
#include "hostile_printer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>

namespace zorva::test {
namespace {

ssize_t AppendToString(void* context, ipp_uchar_t* data, size_t bytes) {
  static_cast<std::string*>(context)->append(reinterpret_cast<const char*>(data), bytes);
  return static_cast<ssize_t>(bytes);
}

void SendAll(int fd, const char* data, std::size_t size) {
  while (size > 0) {
    const ssize_t n = send(fd, data, size, MSG_NOSIGNAL);
    if (n <= 0) return;
    data += n;
    size -= static_cast<std::size_t>(n);
  }
}

}  // namespace

std::string EncodeIpp(ipp_t* message) {
  std::string out;
  ippSetState(message, IPP_STATE_IDLE);
  while (true) {
    const ipp_state_t state = ippWriteIO(&out, AppendToString, 1, nullptr, message);
    if (state == IPP_STATE_DATA || state == IPP_STATE_ERROR) break;
  }
  return out;
}

std::string AnswerHeaderBytes() {
  std::string out("\x02\x00\x00\x00\x00\x00\x00\x01", 8);
  out += '\x01';  // operation attributes
  auto add = [&out](char tag, const std::string& name, const std::string& value) {
    out += tag;
    out += static_cast<char>(name.size() >> 8);
    out += static_cast<char>(name.size() & 0xff);
    out += name;
    out += static_cast<char>(value.size() >> 8);
    out += static_cast<char>(value.size() & 0xff);
    out += value;
  };
  add('\x47', "attributes-charset", "utf-8");
  add('\x48', "attributes-natural-language", "en");
  return out;
}

HostilePrinter::HostilePrinter(Mode mode, std::string body, long declared,
                               std::chrono::milliseconds trickleInterval)
    : mode_(mode),
      body_(std::move(body)),
      declared_(declared < 0 ? static_cast<long>(body_.size()) : declared),
      interval_(trickleInterval) {
  listener_ = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in addr{};
  addr.sin_family = AF_INET;
  addr.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t len = sizeof addr;
  bind(listener_, reinterpret_cast<sockaddr*>(&addr), sizeof addr);
  listen(listener_, 8);
  getsockname(listener_, reinterpret_cast<sockaddr*>(&addr), &len);
  port_ = ntohs(addr.sin_port);
  if (pipe(wake_) != 0) wake_[0] = wake_[1] = -1;
  thread_ = std::thread([this] { serve(); });
}

HostilePrinter::~HostilePrinter() {
  stop_ = true;
  if (wake_[1] >= 0 && write(wake_[1], "x", 1) < 0) {
    // The thread also looks at stop_ between waits.
  }
  thread_.join();
  close(listener_);
  close(wake_[0]);
  close(wake_[1]);
}

bool HostilePrinter::waitReadable(int fd, int timeoutMs) const {
  pollfd fds[2] = {{fd, POLLIN, 0}, {wake_[0], POLLIN, 0}};
  const int n = poll(fds, 2, timeoutMs);
  return n > 0 && (fds[1].revents & POLLIN) == 0 && (fds[0].revents & (POLLIN | POLLHUP)) != 0;
}

void HostilePrinter::serve() {
  while (!stop_) {
    if (!waitReadable(listener_, 100)) continue;
    const int fd = accept(listener_, nullptr, nullptr);
    if (fd < 0) continue;
    handle(fd);
    close(fd);
  }
}

// Reads the request's headers and body (by its Content-Length), then
// misbehaves as told.
void HostilePrinter::handle(int fd) {
  std::string request;
  char buffer[4096];
  std::size_t want = std::string::npos;
  while (!stop_ && (want == std::string::npos || request.size() < want)) {
    if (!waitReadable(fd, 100)) continue;
    const ssize_t n = recv(fd, buffer, sizeof buffer, 0);
    if (n <= 0) return;
    request.append(buffer, static_cast<std::size_t>(n));
    const std::size_t end = request.find("\r\n\r\n");
    if (want == std::string::npos && end != std::string::npos) {
      const std::size_t at = request.find("Content-Length:");
      const long length = at == std::string::npos ? 0 : std::atol(request.c_str() + at + 15);
      want = end + 4 + static_cast<std::size_t>(length);
    }
  }
  ++requests_;
  if (mode_ == Mode::Silent) {
    // Hold the connection open, answering nothing, until the client gives up.
    while (!stop_) {
      if (waitReadable(fd, 100) && recv(fd, buffer, sizeof buffer, 0) <= 0) return;
    }
    return;
  }
  const std::string head = "HTTP/1.1 200 OK\r\nContent-Type: application/ipp\r\nContent-Length: " +
                           std::to_string(declared_) + "\r\nConnection: close\r\n\r\n";
  SendAll(fd, head.data(), head.size());
  if (mode_ == Mode::Answer) {
    SendAll(fd, body_.data(), body_.size());
    return;
  }
  for (std::size_t i = 0; i < body_.size() && !stop_; ++i) {
    SendAll(fd, &body_[i], 1);
    waitReadable(wake_[0], static_cast<int>(interval_.count()));
  }
}

}  // namespace zorva::test

// A misbehaving printer of the tests' own: a loopback server that reads one
// HTTP request per connection and then stays silent, answers with the bytes
// it was given (garbage, a truncated or malformed IPP message), or trickles
// them out slowly. Plus helpers that make IPP message bytes.
#pragma once

#include <cups/ipp.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

namespace zorva::test {

class HostilePrinter {
 public:
  enum class Mode { Silent, Answer, Trickle };

  // body: the HTTP body sent after "200 OK" (Answer and Trickle). declared:
  // the Content-Length claimed (defaults to the body's size).
  HostilePrinter(Mode mode, std::string body = {}, long declared = -1,
                 std::chrono::milliseconds trickleInterval = std::chrono::milliseconds(1000));
  ~HostilePrinter();
  HostilePrinter(const HostilePrinter&) = delete;
  HostilePrinter& operator=(const HostilePrinter&) = delete;

  int port() const { return port_; }
  std::string address() const { return "127.0.0.1:" + std::to_string(port_); }
  int requestsSeen() const { return requests_.load(); }

 private:
  void serve();
  void handle(int fd);
  bool waitReadable(int fd, int timeoutMs) const;

  Mode mode_;
  std::string body_;
  long declared_;
  std::chrono::milliseconds interval_;
  int listener_ = -1;
  int wake_[2] = {-1, -1};
  int port_ = 0;
  std::atomic<bool> stop_{false};
  std::atomic<int> requests_{0};
  std::thread thread_;
};

// The bytes of an IPP message as the library writes it.
std::string EncodeIpp(ipp_t* message);

// A successful Get-Printer-Attributes answer header (version 2.0, status 0,
// request id 1) with the operation group's charset and language; callers
// append attributes and the end tag themselves for hand-made messages.
std::string AnswerHeaderBytes();

}  // namespace zorva::test

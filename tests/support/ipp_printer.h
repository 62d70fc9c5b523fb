// A real IPP printer for tests: ippeveprinter on a free loopback port, with
// the private D-Bus it insists on, both started here and stopped by their
// own process ids. Also a helper that writes ippeveprinter's attributes
// file syntax for a media catalogue.
#pragma once

#include <sys/types.h>

#include <memory>
#include <string>
#include <vector>

namespace zorva::test {

class TempDir;

// A child process started without a shell; stopped (SIGTERM, then waited
// for) when the object goes.
class ChildProcess {
 public:
  ChildProcess(const std::vector<std::string>& argv, const std::vector<std::string>& extraEnv,
               const std::string& logPath);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  pid_t pid() const { return pid_; }
  bool running() const { return pid_ > 0; }
  void stop();

 private:
  pid_t pid_ = -1;
};

// A loopback TCP port nobody listens on right now.
int FreeLoopbackPort();
// True once something accepts connections on 127.0.0.1:port.
bool WaitForLoopbackPort(int port, int timeoutMs);

class IppEvePrinter {
 public:
  // attributes: the text of the attributes file (ipptool ATTR lines).
  // verbose: the log also holds each request and why one was refused.
  explicit IppEvePrinter(const std::string& attributes, bool verbose = false);
  ~IppEvePrinter();
  IppEvePrinter(const IppEvePrinter&) = delete;
  IppEvePrinter& operator=(const IppEvePrinter&) = delete;

  bool ready() const { return ready_; }
  int port() const { return port_; }
  std::string address() const { return "127.0.0.1:" + std::to_string(port_); }
  // What the printer wrote to its log (its requests and refusals).
  std::string logText() const;

 private:
  std::unique_ptr<TempDir> dir_;
  std::unique_ptr<ChildProcess> bus_;
  std::unique_ptr<ChildProcess> printer_;
  int port_ = 0;
  bool ready_ = false;
};

// "ATTR collection media-col-database {...},{...}" for the given member
// lists (each one "MEMBER keyword media-key \"x\" ..."); empty for none.
std::string MediaColDatabaseAttributes(const std::vector<std::string>& collections);

// A catalogue of n plain papers, each with key, size, type, colour, weight.
std::vector<std::string> GeneratedCatalogue(int n);

}  // namespace zorva::test

// ippeveprinter and its private bus as child processes of the test.
#include "support/ipp_printer.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <thread>

#include "support/test_support.h"

extern char** environ;

namespace zorva::test {
namespace {

std::vector<char*> CStrings(std::vector<std::string>& strings) {
  std::vector<char*> out;
  for (std::string& s : strings) out.push_back(s.data());
  out.push_back(nullptr);
  return out;
}

bool WaitForPath(const std::filesystem::path& path, int timeoutMs) {
  for (int waited = 0; waited < timeoutMs; waited += 5) {
    if (std::filesystem::exists(path)) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return false;
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& argv,
                           const std::vector<std::string>& extraEnv, const std::string& logPath) {
  std::vector<std::string> args = argv;
  std::vector<std::string> env;
  for (char** e = environ; *e != nullptr; ++e) env.emplace_back(*e);
  env.insert(env.end(), extraEnv.begin(), extraEnv.end());
  std::vector<char*> cargs = CStrings(args);
  std::vector<char*> cenv = CStrings(env);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 1, logPath.c_str(), O_WRONLY | O_CREAT | O_APPEND,
                                   0644);
  posix_spawn_file_actions_adddup2(&actions, 1, 2);
  pid_t pid = -1;
  if (posix_spawnp(&pid, cargs[0], &actions, nullptr, cargs.data(), cenv.data()) == 0) pid_ = pid;
  posix_spawn_file_actions_destroy(&actions);
}

ChildProcess::~ChildProcess() {
  stop();
}

void ChildProcess::stop() {
  if (pid_ <= 0) return;
  kill(pid_, SIGTERM);
  int status = 0;
  waitpid(pid_, &status, 0);
  pid_ = -1;
}

int FreeLoopbackPort() {
  const int fd = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in addr{};
  addr.sin_family = AF_INET;
  addr.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  addr.sin_port = 0;
  socklen_t len = sizeof addr;
  int port = 0;
  if (bind(fd, reinterpret_cast<sockaddr*>(&addr), sizeof addr) == 0 &&
      getsockname(fd, reinterpret_cast<sockaddr*>(&addr), &len) == 0) {
    port = ntohs(addr.sin_port);
  }
  close(fd);
  return port;
}

bool WaitForLoopbackPort(int port, int timeoutMs) {
  for (int waited = 0; waited < timeoutMs; waited += 10) {
    const int fd = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in addr{};
    addr.sin_family = AF_INET;
    addr.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    addr.sin_port = htons(static_cast<std::uint16_t>(port));
    const bool up = connect(fd, reinterpret_cast<sockaddr*>(&addr), sizeof addr) == 0;
    close(fd);
    if (up) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return false;
}

IppEvePrinter::IppEvePrinter(const std::string& attributes, bool verbose)
    : dir_(std::make_unique<TempDir>()) {
  const std::filesystem::path dir = dir_->path();
  std::filesystem::create_directories(dir / "spool");
  WriteText(dir / "attrs.conf", attributes);
  const std::string bus = "unix:path=" + (dir / "bus.sock").string();
  const std::string log = (dir / "log.txt").string();
  bus_ = std::make_unique<ChildProcess>(
      std::vector<std::string>{"dbus-daemon", "--session", "--nofork", "--nopidfile",
                               "--address=" + bus},
      std::vector<std::string>{}, log);
  if (!bus_->running() || !WaitForPath(dir / "bus.sock", 5000)) return;
  // Another test may take the port between our look and the printer's bind;
  // a few tries make that harmless.
  for (int attempt = 0; attempt < 3 && !ready_; ++attempt) {
    port_ = FreeLoopbackPort();
    std::vector<std::string> argv = {"ippeveprinter",
                                     "-a",
                                     (dir / "attrs.conf").string(),
                                     "-p",
                                     std::to_string(port_),
                                     "-n",
                                     "localhost",
                                     "-d",
                                     (dir / "spool").string(),
                                     "-r",
                                     "off",
                                     "ZorvaTest"};
    if (verbose) argv.insert(argv.begin() + 1, "-vv");
    printer_ = std::make_unique<ChildProcess>(
        argv, std::vector<std::string>{"DBUS_SYSTEM_BUS_ADDRESS=" + bus}, log);
    ready_ = printer_->running() && WaitForLoopbackPort(port_, 5000);
  }
}

std::string IppEvePrinter::logText() const {
  return ReadText(dir_->path() / "log.txt");
}

IppEvePrinter::~IppEvePrinter() {
  printer_.reset();
  bus_.reset();
}

std::string MediaColDatabaseAttributes(const std::vector<std::string>& collections) {
  std::string out = "ATTR keyword printer-make-and-model \"Zorva Test\"\n";
  if (collections.empty()) return out;
  out += "ATTR collection media-col-database ";
  for (std::size_t i = 0; i < collections.size(); ++i) {
    if (i > 0) out += ",";
    out += "{ " + collections[i] + " }";
  }
  out += "\n";
  return out;
}

std::vector<std::string> GeneratedCatalogue(int n) {
  static const char* const kColors[] = {"white", "blue", "yellow", "pink", "ivory"};
  static const char* const kTypes[] = {"stationery", "bond", "labels", "envelope"};
  std::vector<std::string> out;
  for (int i = 0; i < n; ++i) {
    out.push_back("MEMBER keyword media-key \"paper-" + std::to_string(i) +
                  "\" MEMBER name media-description \"Paper number " + std::to_string(i) +
                  "\" MEMBER collection media-size { MEMBER integer x-dimension 21000 "
                  "MEMBER integer y-dimension 29700 } MEMBER keyword media-color \"" +
                  kColors[i % 5] + "\" MEMBER keyword media-type \"" + kTypes[i % 4] +
                  "\" MEMBER integer media-weight-metric " + std::to_string(60 + i % 240) +
                  " MEMBER keyword media-front-coating \"glossy\""
                  " MEMBER keyword media-back-coating \"none\"");
  }
  return out;
}

}  // namespace zorva::test

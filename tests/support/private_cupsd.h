// A private CUPS server for tests that need a real queue: its own folders
// and configuration under a scratch folder, listening on a free loopback
// port, with queues added by lpadmin. Tests skip (with the reason) where
// cupsd cannot run, for example without the cups-daemon package.
#pragma once

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/ipp_printer.h"
#include "support/test_support.h"

namespace zorva::test {

// What a test adds to the server: filters and backends of its own (beside
// the system's), MIME type and conversion files for its ServerRoot, and
// environment variables for the programs the server runs.
struct CupsdExtras {
  std::vector<std::pair<std::string, std::filesystem::path>> filters;   // name, program
  std::vector<std::pair<std::string, std::filesystem::path>> backends;  // name, program
  std::vector<std::filesystem::path> mimeFiles;                         // *.types, *.convs
  std::vector<std::pair<std::string, std::string>> env;
};

class PrivateCupsd {
 public:
  PrivateCupsd() = default;
  ~PrivateCupsd() { stop(); }
  PrivateCupsd(const PrivateCupsd&) = delete;
  PrivateCupsd& operator=(const PrivateCupsd&) = delete;

  // Starts the server; false and a reason when it cannot run here.
  bool start(std::string* reason, const CupsdExtras& extras = {}) {
    if (access("/usr/sbin/cupsd", X_OK) != 0) return fail(reason, "/usr/sbin/cupsd is missing");
    port_ = FreeLoopbackPort();
    if (port_ == 0) return fail(reason, "no free loopback port");
    const std::filesystem::path root = dir_.path();
    chmod(root.c_str(), 0755);  // the server's helpers run as lp
    for (const char* sub : {"spool", "cache", "state", "log", "bin", "tmp", "home"}) {
      std::filesystem::create_directories(root / sub);
    }
    std::filesystem::create_directory_symlink("/usr/lib/cups/daemon", root / "bin/daemon");
    LinkPrograms("/usr/lib/cups/backend", extras.backends, root / "bin/backend");
    LinkPrograms("/usr/lib/cups/filter", extras.filters, root / "bin/filter");
    for (const std::filesystem::path& file : extras.mimeFiles) {
      std::filesystem::copy_file(file, root / file.filename());
    }
    std::string setEnv;
    for (const auto& [name, value] : extras.env) setEnv += "SetEnv " + name + " " + value + "\n";
    WriteText(root / "cupsd.conf",
              "Listen 127.0.0.1:" + std::to_string(port_) +
                  "\nBrowsing No\nWebInterface No\nDefaultAuthType None\nLogLevel warn\n"
                  "<Location />\nOrder allow,deny\nAllow 127.0.0.1\n</Location>\n"
                  "<Policy default>\n<Limit All>\nOrder deny,allow\n</Limit>\n</Policy>\n");
    WriteText(
        root / "cups-files.conf",
        "ServerRoot " + (root).string() + "\nRequestRoot " + (root / "spool").string() +
            "\nTempDir " + (root / "tmp").string() + "\nCacheDir " + (root / "cache").string() +
            "\nStateDir " + (root / "state").string() + "\nServerBin " + (root / "bin").string() +
            "\nErrorLog " + (root / "log/error_log").string() + "\nAccessLog " +
            (root / "log/access_log").string() + "\nPageLog " + (root / "log/page_log").string() +
            "\nDataDir /usr/share/cups\nFileDevice Yes\nSandboxing Relaxed\n"
            "SystemGroup root\n" +
            setEnv);
    pid_ = fork();
    if (pid_ < 0) return fail(reason, "fork failed");
    if (pid_ == 0) {
      setsid();
      const int null = open("/dev/null", O_RDWR);
      const std::string log = (root / "log/cupsd.out").string();
      const int out = open(log.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
      dup2(null, 0);
      dup2(out, 1);
      dup2(out, 2);
      const std::string conf = (root / "cupsd.conf").string();
      const std::string files = (root / "cups-files.conf").string();
      execl("/usr/sbin/cupsd", "cupsd", "-f", "-c", conf.c_str(), "-s", files.c_str(),
            static_cast<char*>(nullptr));
      _exit(127);
    }
    for (int i = 0; i < 100; ++i) {
      // lpstat exits 0 either way; only its text tells.
      if (RunProgram("lpstat", {"-h", server(), "-r"}).out == "scheduler is running\n") return true;
      int status = 0;
      if (waitpid(pid_, &status, WNOHANG) == pid_) {
        pid_ = -1;
        return fail(reason, "cupsd exited: " + ReadText(root / "log/cupsd.out"));
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return fail(reason, "cupsd did not answer on " + server());
  }

  // Puts a file into the server's folder: "x.types" and "x.convs" (before
  // start), "bin/backend/NAME" and "bin/filter/NAME" programs. A backend of
  // mode 0700 runs as root, so it may write into the test's folders.
  void putFile(const std::filesystem::path& relative, const std::string& text,
               std::filesystem::perms mode = std::filesystem::perms::owner_read |
                                             std::filesystem::perms::owner_write |
                                             std::filesystem::perms::group_read |
                                             std::filesystem::perms::others_read) {
    const std::filesystem::path path = dir_.path() / relative;
    std::filesystem::create_directories(path.parent_path());
    WriteText(path, text);
    std::filesystem::permissions(path, mode);
  }

  // Adds an enabled queue with the PPD, printing to /dev/null or to the
  // device given; false with lpadmin's message in *reason when it cannot.
  bool addQueue(const std::string& name, const std::filesystem::path& ppd,
                std::string* reason = nullptr, const std::string& device = "file:/dev/null") {
    ToolResult r =
        RunProgram("lpadmin", {"-h", server(), "-p", name, "-v", device, "-P", ppd.string(), "-E"});
    if (r.exitCode == 0) return true;
    return fail(reason, "lpadmin: " + r.err + ReadText(dir_.path() / "log/error_log"));
  }

  std::string server() const { return "127.0.0.1:" + std::to_string(port_); }
  const std::filesystem::path& folder() const { return dir_.path(); }

  void stop() {
    if (pid_ <= 0) return;
    kill(pid_, SIGTERM);
    int status = 0;
    waitpid(pid_, &status, 0);
    pid_ = -1;
  }

 private:
  // The system's folder as it is, or, when the test brings programs of its
  // own, a folder of links to the system's programs and the test's.
  // The folder gets the test's own programs first, then every program of
  // the system's folder that does not share a name with one already there
  // (a test may also have put programs in with putFile before start).
  static void LinkPrograms(const std::filesystem::path& system,
                           const std::vector<std::pair<std::string, std::filesystem::path>>& own,
                           const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    for (const auto& [name, program] : own) {
      if (!std::filesystem::exists(folder / name))
        std::filesystem::create_symlink(program, folder / name);
    }
    std::error_code ec;
    for (const auto& entry : std::filesystem::directory_iterator(system, ec)) {
      const std::filesystem::path link = folder / entry.path().filename();
      if (!std::filesystem::exists(link)) std::filesystem::create_symlink(entry.path(), link);
    }
  }

  static bool fail(std::string* reason, const std::string& why) {
    if (reason) *reason = why;
    return false;
  }

  TempDir dir_;
  int port_ = 0;
  pid_t pid_ = -1;
};

}  // namespace zorva::test

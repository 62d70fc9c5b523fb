// Shared test fixtures (see test_support.h).
#include "support/test_support.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

extern char** environ;

namespace zorva::test {

TempDir::TempDir() {
  std::string tmpl = (std::filesystem::temp_directory_path() / "zorva-test-XXXXXX").string();
  if (!mkdtemp(tmpl.data())) throw std::runtime_error("mkdtemp failed");
  path_ = tmpl;
}

TempDir::~TempDir() {
  std::error_code ec;
  std::filesystem::permissions(path_, std::filesystem::perms::owner_all,
                               std::filesystem::perm_options::add, ec);
  std::filesystem::remove_all(path_, ec);
}

ScopedEnv::ScopedEnv(std::string name, std::optional<std::string> value) : name_(std::move(name)) {
  if (const char* old = std::getenv(name_.c_str())) old_ = old;
  if (value) {
    setenv(name_.c_str(), value->c_str(), 1);
  } else {
    unsetenv(name_.c_str());
  }
}

ScopedEnv::~ScopedEnv() {
  if (old_) {
    setenv(name_.c_str(), old_->c_str(), 1);
  } else {
    unsetenv(name_.c_str());
  }
}

ToolResult RunProgram(const std::string& program, const std::vector<std::string>& args) {
  TempDir scratch;
  std::string outPath = (scratch.path() / "out").string();
  std::string errPath = (scratch.path() / "err").string();
  posix_spawn_file_actions_t fa;
  posix_spawn_file_actions_init(&fa);
  posix_spawn_file_actions_addopen(&fa, 0, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&fa, 1, outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  posix_spawn_file_actions_addopen(&fa, 2, errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  std::vector<char*> argv;
  argv.push_back(const_cast<char*>(program.c_str()));
  for (const auto& a : args) argv.push_back(const_cast<char*>(a.c_str()));
  argv.push_back(nullptr);
  pid_t pid = 0;
  ToolResult r;
  if (posix_spawnp(&pid, program.c_str(), &fa, nullptr, argv.data(), environ) != 0) {
    posix_spawn_file_actions_destroy(&fa);
    return r;
  }
  posix_spawn_file_actions_destroy(&fa);
  int status = 0;
  waitpid(pid, &status, 0);
  r.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  r.out = ReadText(outPath);
  r.err = ReadText(errPath);
  return r;
}

ToolResult RunTool(const std::vector<std::string>& args) {
  return RunProgram(ZORVA_TOOL, args);
}

std::string ReadText(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream ss;
  ss << in.rdbuf();
  return ss.str();
}

void WriteText(const std::filesystem::path& path, const std::string& text) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << text;
}

std::filesystem::path TestData(const std::string& name) {
  return std::filesystem::path(ZORVA_TEST_DATA) / name;
}

}  // namespace zorva::test

#include "core/plist_io.h"

namespace zorva {
void PrintTo(const Value& v, std::ostream* os) {
  *os << ToXmlPropertyList(v);
}
void PrintTo(const Dictionary& d, std::ostream* os) {
  *os << ToXmlPropertyList(Value(d));
}
void PrintTo(const Array& a, std::ostream* os) {
  *os << ToXmlPropertyList(Value(a));
}
}  // namespace zorva

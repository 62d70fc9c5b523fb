// Shared test fixtures: scratch folders, scoped environment variables and a
// runner for the zorva tool that captures its output and exit status.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace zorva::test {

// A fresh folder under the system temp dir, removed (recursively) at scope end.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;
  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

// Sets (or, with nullopt, unsets) an environment variable for the scope.
class ScopedEnv {
 public:
  ScopedEnv(std::string name, std::optional<std::string> value);
  ~ScopedEnv();
  ScopedEnv(const ScopedEnv&) = delete;
  ScopedEnv& operator=(const ScopedEnv&) = delete;

 private:
  std::string name_;
  std::optional<std::string> old_;
};

struct ToolResult {
  int exitCode = -1;
  std::string out;
  std::string err;
};

// Runs the built zorva tool with args (no shell), stdin from /dev/null.
ToolResult RunTool(const std::vector<std::string>& args);

// Runs any program (looked up on PATH) the same way.
ToolResult RunProgram(const std::string& program, const std::vector<std::string>& args);

std::string ReadText(const std::filesystem::path& path);
void WriteText(const std::filesystem::path& path, const std::string& text);

// The folder of checked-in test data (tests/data).
std::filesystem::path TestData(const std::string& name);

}  // namespace zorva::test

#include <ostream>

#include "core/value.h"

namespace zorva {
// Readable failure output for values: their XML property-list form.
void PrintTo(const Value& v, std::ostream* os);
void PrintTo(const Dictionary& d, std::ostream* os);
void PrintTo(const Array& a, std::ostream* os);
}  // namespace zorva

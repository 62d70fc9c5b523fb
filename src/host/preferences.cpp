// The per-user preference files and the machine-wide data folder: where they
// live, reading them (a missing or damaged preference file simply reads as
// empty) and writing them back atomically.
#include "host/preferences.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "core/file_io.h"
#include "core/plist_io.h"

namespace zorva {

namespace fs = std::filesystem;

namespace {

constexpr const char* kMachineDataFolder = "/var/lib/zorva";

// An environment variable's value; an empty one counts as unset.
std::optional<fs::path> EnvPath(const char* name) {
  const char* value = std::getenv(name);
  if (!value || !*value) return std::nullopt;
  return fs::path(value);
}

// An XDG base folder from its variable; relative values are ignored, as the
// base-directory rules require, in favour of the default under $HOME.
std::optional<fs::path> XdgFolder(const char* variable, const char* homeRelativeDefault) {
  if (auto dir = EnvPath(variable); dir && dir->is_absolute()) return dir;
  if (auto home = EnvPath("HOME")) return *home / homeRelativeDefault;
  return std::nullopt;
}

// File names come from our own callers, but a name that could step out of
// the folder is refused rather than trusted.
bool IsPlainFileName(std::string_view name) {
  return !name.empty() && name != "." && name != ".." && name.find('/') == std::string_view::npos &&
         name.find('\0') == std::string_view::npos;
}

bool IsWritableFolder(const fs::path& dir) {
  std::error_code ec;
  return fs::is_directory(dir, ec) && access(dir.c_str(), W_OK | X_OK) == 0;
}

// The machine-wide folder is shared by every user of the machine, each of
// whom adds watermark files to it, so it is made world-writable with the
// sticky bit (like /tmp): anyone may add files, only a file's owner may
// replace or remove it. The mode is set again after mkdir because the umask
// would otherwise take the write bits away.
bool MakeMachineDataFolder(const char* dir) {
  if (mkdir(dir, 01777) != 0) return errno == EEXIST && IsWritableFolder(dir);
  return chmod(dir, 01777) == 0;
}

std::optional<fs::path> SharedDataFolder() {
  if (auto dir = EnvPath("ZORVA_SHARED_DIR")) {
    if (MakeDirectories(*dir, 0755) != 0) return std::nullopt;
    return dir;
  }
  if (IsWritableFolder(kMachineDataFolder) || MakeMachineDataFolder(kMachineDataFolder)) {
    return fs::path(kMachineDataFolder);
  }
  auto dir = XdgFolder("XDG_DATA_HOME", ".local/share");
  if (!dir) return std::nullopt;
  *dir /= "zorva";
  if (MakeDirectories(*dir, 0755) != 0) return std::nullopt;
  return dir;
}

}  // namespace

std::optional<fs::path> UserPreferencesFolder() {
  if (auto dir = EnvPath("ZORVA_PREFERENCES_DIR")) return dir;
  auto config = XdgFolder("XDG_CONFIG_HOME", ".config");
  if (!config) return std::nullopt;
  return *config / "zorva";
}

std::optional<Value> CopyUserPreferences(std::string_view fileName) {
  auto folder = UserPreferencesFolder();
  if (!folder) return std::nullopt;
  if (IsPlainFileName(fileName)) {
    if (auto list = ReadPropertyListFile(*folder / fileName)) return list;
  }
  return Value(Dictionary{});
}

bool WriteUserPreferences(std::string_view fileName, const Value& propertyList) {
  int err = 0;
  auto folder = UserPreferencesFolder();
  if (!folder) {
    err = ENOENT;
  } else if (!IsPlainFileName(fileName)) {
    err = EINVAL;
  } else {
    // Preferences are the user's own business: nobody else needs to see them.
    err = MakeDirectories(*folder, 0700);
    if (err == 0) err = WritePropertyListFile(*folder / fileName, propertyList);
  }
  if (err != 0) std::fprintf(stderr, "WriteUserPreferences() failed (%d)\n", err);
  return err == 0;
}

std::optional<fs::path> CopyPreferenceFileURL(std::string_view fileName) {
  if (!IsPlainFileName(fileName)) return std::nullopt;
  auto folder = SharedDataFolder();
  if (!folder) return std::nullopt;
  return *folder / fileName;
}

std::optional<Value> CopyXMLData(std::string_view fileName) {
  auto path = CopyPreferenceFileURL(fileName);
  if (!path) return std::nullopt;
  auto bytes = ReadWholeFile(*path);
  if (!bytes) return std::nullopt;
  std::string error;
  auto list = ParsePropertyList(std::span<const std::uint8_t>(*bytes), &error);
  if (!list) {
    std::fprintf(stderr, "CopyXMLData()::CFPropertyListCreateFromXMLData() error: %s\n",
                 error.c_str());
  }
  return list;
}

}  // namespace zorva

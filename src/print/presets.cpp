// Presets as ticket files. Names are shown to the user as typed, so a file
// is named after its preset as it is; the few names a file cannot carry are
// refused with the reason. Printer names come from the print server and are
// escaped instead, since the user never types them.
#include "print/presets.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "core/ticket_keys.h"
#include "host/preferences.h"
#include "print/job_options.h"

namespace zorva {

namespace {

// Items of one document or one moment, never kept in a preset.
constexpr std::string_view kTransientKeys[] = {
    tkey::kPMFirstPage,    tkey::kPMLastPage,         tkey::kPMJobName,
    tkey::kClientUserName, tkey::kClientComputerName, tkey::kClientIPAddress,
};

// File names are limited to 255 bytes; the extension takes its share.
constexpr std::size_t kMaxNameBytes = 255 - kPresetExtension.size();

std::string EscapedPrinter(std::string_view printer) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string out;
  for (const char c : printer) {
    const auto b = static_cast<unsigned char>(c);
    if ((b >= 'a' && b <= 'z') || (b >= 'A' && b <= 'Z') || (b >= '0' && b <= '9') || b == '-' ||
        b == '_' || (b == '.' && !out.empty())) {
      out += c;
    } else {
      out += '%';
      out += kHex[b >> 4];
      out += kHex[b & 15];
    }
  }
  return out.substr(0, kMaxNameBytes);
}

bool Save(const std::filesystem::path& path, const Ticket& settings, std::string* error) {
  std::error_code ec;
  std::filesystem::create_directories(path.parent_path(), ec);
  const int err = PresetSettings(settings).save(path);
  if (err == 0) return true;
  if (error) *error = "cannot write " + path.string() + ": " + std::strerror(err);
  return false;
}

}  // namespace

std::optional<std::filesystem::path> PresetsFolder() {
  const std::optional<std::filesystem::path> root = UserPreferencesFolder();
  if (!root) return std::nullopt;
  return *root / "presets";
}

std::optional<std::filesystem::path> LastUsedFolder() {
  const std::optional<std::filesystem::path> root = UserPreferencesFolder();
  if (!root) return std::nullopt;
  return *root / "last-used";
}

std::string PresetNameProblem(std::string_view name) {
  if (name.empty()) return "a preset needs a name";
  if (name.size() > kMaxNameBytes) {
    return "a preset name is at most " + std::to_string(kMaxNameBytes) + " bytes long";
  }
  if (name.find('/') != std::string_view::npos) return "a preset name cannot contain \"/\"";
  if (name.front() == '.') return "a preset name cannot begin with \".\"";
  if (std::any_of(name.begin(), name.end(),
                  [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; })) {
    return "a preset name cannot contain control characters";
  }
  return {};
}

std::optional<std::filesystem::path> PresetPath(std::string_view name) {
  if (!PresetNameProblem(name).empty()) return std::nullopt;
  const std::optional<std::filesystem::path> folder = PresetsFolder();
  if (!folder) return std::nullopt;
  return *folder / (std::string(name) + std::string(kPresetExtension));
}

std::vector<std::string> ListPresets() {
  std::vector<std::string> names;
  const std::optional<std::filesystem::path> folder = PresetsFolder();
  std::error_code ec;
  if (!folder) return names;
  for (const auto& entry : std::filesystem::directory_iterator(*folder, ec)) {
    const std::string file = entry.path().filename().string();
    if (!file.ends_with(kPresetExtension) || !entry.is_regular_file(ec)) continue;
    std::string name = file.substr(0, file.size() - kPresetExtension.size());
    if (PresetNameProblem(name).empty()) names.push_back(std::move(name));
  }
  std::sort(names.begin(), names.end());
  return names;
}

Ticket PresetSettings(const Ticket& settings) {
  Ticket kept = settings;
  for (std::string_view key : kTransientKeys) kept.remove(key);
  return kept;
}

bool SavePreset(std::string_view name, const Ticket& settings, std::string* error) {
  if (std::string problem = PresetNameProblem(name); !problem.empty()) {
    if (error) *error = problem;
    return false;
  }
  const std::optional<std::filesystem::path> path = PresetPath(name);
  if (!path) {
    if (error) *error = "no configuration folder for presets (HOME is not set)";
    return false;
  }
  return Save(*path, settings, error);
}

std::optional<Ticket> LoadPreset(std::string_view name, std::string* error) {
  const std::optional<std::filesystem::path> path = PresetPath(name);
  if (!path || !std::filesystem::exists(*path)) {
    if (error) *error = "no preset named \"" + std::string(name) + "\"";
    return std::nullopt;
  }
  return Ticket::Load(*path, error);
}

bool DeletePreset(std::string_view name, std::string* error) {
  const std::optional<std::filesystem::path> path = PresetPath(name);
  std::error_code ec;
  if (!path || !std::filesystem::remove(*path, ec)) {
    if (error) {
      *error = ec ? "cannot delete " + path->string() + ": " + ec.message()
                  : "no preset named \"" + std::string(name) + "\"";
    }
    return false;
  }
  return true;
}

std::optional<std::filesystem::path> LastUsedPath(std::string_view printer) {
  const std::optional<std::filesystem::path> folder = LastUsedFolder();
  if (!folder || printer.empty()) return std::nullopt;
  return *folder / (EscapedPrinter(printer) + std::string(kPresetExtension));
}

bool SaveLastUsedSettings(std::string_view printer, const Ticket& settings, std::string* error) {
  const std::optional<std::filesystem::path> path = LastUsedPath(printer);
  if (!path) {
    if (error) *error = "no configuration folder for the last used settings";
    return false;
  }
  return Save(*path, settings, error);
}

std::optional<Ticket> LoadLastUsedSettings(std::string_view printer) {
  const std::optional<std::filesystem::path> path = LastUsedPath(printer);
  if (!path || !std::filesystem::exists(*path)) return std::nullopt;
  return Ticket::Load(*path);
}

}  // namespace zorva

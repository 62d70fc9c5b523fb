// Print presets: named sets of job settings the user saves and chooses
// again, and the settings last printed with on each printer. A preset is a
// ticket file (an XML property list of key to value) in the user's
// configuration folder, so every zorva ticket and jotf command reads it.
//
// Layout: <preference folder>/presets/<name>.plist for the user's presets,
// <preference folder>/last-used/<printer>.plist for the last used settings.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/ticket.h"

namespace zorva {

inline constexpr std::string_view kPresetExtension = ".plist";

// The folders (not created here); nullopt when no preference folder is known.
std::optional<std::filesystem::path> PresetsFolder();
std::optional<std::filesystem::path> LastUsedFolder();

// Why a name cannot be a preset's ("" when it can): empty, too long, a
// slash, a leading dot, or control characters.
std::string PresetNameProblem(std::string_view name);

// The file of a preset, or nullopt for a name that cannot be one or when
// there is no preference folder.
std::optional<std::filesystem::path> PresetPath(std::string_view name);

// The user's presets by name, sorted; files that are not presets are left out.
std::vector<std::string> ListPresets();

// The settings a preset keeps: everything but what belongs to one document
// or one moment (page range, job name, client information).
Ticket PresetSettings(const Ticket& settings);

// Saves (replacing a preset of that name), loads and deletes presets. On
// failure: false or nullopt with a one-line reason in *error.
bool SavePreset(std::string_view name, const Ticket& settings, std::string* error);
std::optional<Ticket> LoadPreset(std::string_view name, std::string* error);
bool DeletePreset(std::string_view name, std::string* error);

// The settings last printed with on a printer; nullopt when none are kept.
bool SaveLastUsedSettings(std::string_view printer, const Ticket& settings, std::string* error);
std::optional<Ticket> LoadLastUsedSettings(std::string_view printer);
std::optional<std::filesystem::path> LastUsedPath(std::string_view printer);

}  // namespace zorva

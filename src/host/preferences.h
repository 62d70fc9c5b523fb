// The user's preference files and the machine-wide data folder.
//
// Preference files (input histories, job-notes defaults, the named-paper
// list) live in $ZORVA_PREFERENCES_DIR, else $XDG_CONFIG_HOME/zorva, else
// ~/.config/zorva. Data shared by every user of the machine (watermarks and
// their fonts) lives in $ZORVA_SHARED_DIR, else /var/lib/zorva when it can be
// written or created, else $XDG_DATA_HOME/zorva (~/.local/share/zorva).
// File names are used exactly as given: no extension is added.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "core/value.h"

namespace zorva {

// The user's input histories: each text field's history name holds an array
// of the strings typed there, newest first.
inline constexpr std::string_view kInputHistoryFile = "com.zorva.print.inputhistory.plist";
// The job-notes defaults (sender, recipient, accounting ids ...).
inline constexpr std::string_view kJobNotesPreferencesFile = "com.zorva.print.jobnotes.plist";

// The preference folder (not created here), or nullopt when no home is known.
std::optional<std::filesystem::path> UserPreferencesFolder();

// The parsed file from the preference folder; an empty dictionary when it is
// missing or cannot be parsed; nullopt only when there is no preference folder.
std::optional<Value> CopyUserPreferences(std::string_view fileName);

// Writes the list as an XML property list over the file, atomically (the
// folder is created when missing). Returns false and prints
// "WriteUserPreferences() failed (%d)\n" with the error code on failure.
bool WriteUserPreferences(std::string_view fileName, const Value& propertyList);

// The path of fileName in the shared data folder, creating that folder when
// missing; nullopt when no folder can be found or made.
std::optional<std::filesystem::path> CopyPreferenceFileURL(std::string_view fileName);

// The parsed file from the shared data folder, or nullopt when it cannot be
// read or parsed. A parse error prints
// "CopyXMLData()::CFPropertyListCreateFromXMLData() error: <reason>".
std::optional<Value> CopyXMLData(std::string_view fileName);

}  // namespace zorva

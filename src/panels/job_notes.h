// The Job Notes panel's settings and how they travel between the print
// settings, the panel, the user's job-notes defaults and the input
// histories: job name (or the document's own), sender, recipient, special
// instructions, additional information, banner message, and the accounting
// switch with its user and account ids.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "core/ticket.h"
#include "core/value.h"

namespace zorva {

// The switch value that sends the accounting ids, and the one that keeps
// them back once the user has turned them off.
inline constexpr std::int32_t kAccountingOn = 3;
inline constexpr std::int32_t kAccountingOff = 2;
// The job ticket writer cuts accounting ids to this many bytes; the fields
// take only printable ASCII, so characters and bytes agree.
inline constexpr int kAccountingIdLength = 79;
inline constexpr std::string_view kAccountingIdCharacters =
    " !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`"
    "abcdefghijklmnopqrstuvwxyz{|}~";
// Strings each input history keeps, newest first.
inline constexpr std::size_t kInputHistoryLength = 10;

struct JobNotesSettings {
  bool useJobName = false;  // the document's own name instead of jobName
  std::string jobName;
  std::string sender;
  std::string recipient;
  std::string message;  // special instructions to the operator
  std::string additionalInfo;
  std::string sheetMessage;  // banner page message
  std::int32_t accounting = kUnset;
  std::string userId;
  std::string accountId;
  friend bool operator==(const JobNotesSettings&, const JobNotesSettings&) = default;
};

// One text field: its ticket key, its input history and its entry in the
// defaults file (empty: not a default).
struct JobNotesTextField {
  std::string_view key;
  std::string_view history;
  std::string_view preference;
  std::string JobNotesSettings::*field;
};
std::span<const JobNotesTextField> JobNotesTextFields();

// The panel's keys; an absent key takes the user's default (defaults may be
// null: nothing is filled in).
JobNotesSettings ReadJobNotesSettings(const Ticket& ticket, const JobNotesSettings* defaults);

// Writes with "com.zorva.printingmanager": texts when not empty (an empty
// field removes its key, so the job ticket carries no empty note), the
// job-name switch when on, the accounting switch when set.
void WriteJobNotesSettings(Ticket& ticket, const JobNotesSettings& settings);

// The defaults file's values (an empty settings when there is none) and
// writing the current values as the new defaults (false on failure).
JobNotesSettings ReadJobNotesDefaults();
bool WriteJobNotesDefaults(const JobNotesSettings& settings);

// Puts text first in the named history (once, at most kInputHistoryLength
// strings); true when the history changed. Empty texts are not remembered.
bool RememberInHistory(Dictionary& histories, std::string_view history, std::string_view text);
// Remembers every non-empty text field in the input-history file, writing
// it only when a history changed.
void RememberJobNotes(const JobNotesSettings& settings);

}  // namespace zorva

// The Job Notes panel's ticket reading and writing, its defaults file and
// the input histories of its text fields.
#include "panels/job_notes.h"

#include <algorithm>

#include "core/ticket_keys.h"
#include "host/preferences.h"
#include "host/ticket_helpers.h"

namespace zorva {

namespace key = tkey;

namespace {

constexpr std::string_view kClient = kTicketClientPrintingManager;

constexpr JobNotesTextField kTextFields[] = {
    {key::kJobNotesJobName, "JobNotesJobName", "", &JobNotesSettings::jobName},
    {key::kJobNotesSenderName, "JobNotesSenderName", "SenderName", &JobNotesSettings::sender},
    {key::kJobNotesRecipient, "JobNotesRecipient", "RecipientName", &JobNotesSettings::recipient},
    {key::kJobNotesMessage, "JobNotesMessage", "", &JobNotesSettings::message},
    {key::kJobNotesAdditionalInfo, "JobNotesAdditionalInfo", "", &JobNotesSettings::additionalInfo},
    {key::kJobNotesSheetMessage, "JobNotesSheetMessage", "", &JobNotesSettings::sheetMessage},
    {key::kAccountingUserId, "", "AccountingUserId", &JobNotesSettings::userId},
    {key::kAccountingAccountId, "", "AccountingAccountId", &JobNotesSettings::accountId},
};

// Defaults-file entries that are not texts.
constexpr std::string_view kUseJobNamePreference = "UseJobName";
constexpr std::string_view kAccountingPreference = "AccountingOn";

}  // namespace

std::span<const JobNotesTextField> JobNotesTextFields() {
  return kTextFields;
}

JobNotesSettings ReadJobNotesSettings(const Ticket& ticket, const JobNotesSettings* defaults) {
  JobNotesSettings s = defaults ? *defaults : JobNotesSettings{};
  for (const JobNotesTextField& f : kTextFields) {
    if (const std::string* text = ticket.getString(f.key)) s.*f.field = *text;
  }
  if (const std::optional<bool> use = ticket.getBoolean(key::kJobNotesUseJobName)) {
    s.useJobName = *use;
  }
  ticket.getNumber(key::kAccountingOn, s.accounting);
  return s;
}

void WriteJobNotesSettings(Ticket& ticket, const JobNotesSettings& s) {
  for (const JobNotesTextField& f : kTextFields) {
    const std::string& text = s.*f.field;
    if (text.empty()) {
      ticket.remove(f.key);
    } else {
      ticket.setString(kClient, f.key, text);
    }
  }
  if (s.useJobName) {
    ticket.setBoolean(kClient, key::kJobNotesUseJobName, true);
  } else {
    ticket.remove(key::kJobNotesUseJobName);
  }
  if (s.accounting == kUnset) {
    ticket.remove(key::kAccountingOn);
  } else {
    ticket.setNumber(kClient, key::kAccountingOn, s.accounting);
  }
}

JobNotesSettings ReadJobNotesDefaults() {
  JobNotesSettings s;
  const std::optional<Value> file = CopyUserPreferences(kJobNotesPreferencesFile);
  const Dictionary* d = file ? file->dictionary() : nullptr;
  if (!d) return s;
  for (const JobNotesTextField& f : kTextFields) {
    if (f.preference.empty()) continue;
    if (const std::string* text = d->getString(f.preference)) s.*f.field = *text;
  }
  s.useJobName = d->getBool(kUseJobNamePreference).value_or(false);
  if (d->getBool(kAccountingPreference).value_or(false)) s.accounting = kAccountingOn;
  return s;
}

bool WriteJobNotesDefaults(const JobNotesSettings& s) {
  Dictionary d;
  for (const JobNotesTextField& f : kTextFields) {
    if (!f.preference.empty() && !(s.*f.field).empty()) d.set(f.preference, Value(s.*f.field));
  }
  if (s.useJobName) d.set(kUseJobNamePreference, Value(true));
  if (s.accounting == kAccountingOn) d.set(kAccountingPreference, Value(true));
  return WriteUserPreferences(kJobNotesPreferencesFile, Value(std::move(d)));
}

bool RememberInHistory(Dictionary& histories, std::string_view history, std::string_view text) {
  if (text.empty() || history.empty()) return false;
  Array* current = histories.getArray(history);
  if (current && !current->empty()) {
    const std::string* first = (*current)[0].string();
    if (first && *first == text) return false;
  }
  Array updated{Value(std::string(text))};
  if (current) {
    for (const Value& entry : *current) {
      const std::string* s = entry.string();
      if (!s || *s == text) continue;
      if (updated.size() == kInputHistoryLength) break;
      updated.push_back(entry);
    }
  }
  histories.set(history, Value(std::move(updated)));
  return true;
}

void RememberJobNotes(const JobNotesSettings& s) {
  std::optional<Value> file = CopyUserPreferences(kInputHistoryFile);
  if (!file) return;  // no preference folder
  Dictionary histories = file->dictionary() ? *file->dictionary() : Dictionary{};
  bool changed = false;
  for (const JobNotesTextField& f : kTextFields) {
    changed = RememberInHistory(histories, f.history, s.*f.field) || changed;
  }
  if (changed) WriteUserPreferences(kInputHistoryFile, Value(std::move(histories)));
}

}  // namespace zorva

// Exporting the job ticket of a print session: the items the host adds to
// the print settings when it saves the panels (the options asking for the
// whole document, controller and client information), the copy of the
// "com.zorva" items the writer is given, and the file itself.
#pragma once

#include <filesystem>
#include <string>

#include "core/print_session.h"
#include "core/status.h"
#include "core/ticket.h"
#include "core/value.h"

namespace zorva {

inline constexpr std::string_view kJotfControllerFamily = "Kestrix";
inline constexpr std::string_view kJotfControllerVersion = "6.0";

// The host's own items of a saving Sync: "com.zorva.print.JOTFOptions" with
// "JOTFOptionAll" = true, no "com.zorva.print.RotateBooklet180Degrees", the
// controller family and version, and the client's user name, computer name
// and IPv4 address (each removed when the machine has none to give).
void AddJOTFHostTicketItems(Ticket& ticket);

// The controller shows names in one character set, U+0020..U+00FE (223
// characters); a computer name outside it is not sent.
bool InControllerCharset(std::string_view utf8);

// Every ticket item whose key begins with "com.zorva", under the same key.
Dictionary JOTFSettingsFromTicket(const Ticket& ticket);

// The whole document of `settings` as text (empty when nothing is written).
std::string JOTFDocumentText(const Dictionary& settings);

// The job ticket the export command writes for `session`, as text: adds the
// host's items to its print settings and writes their "com.zorva" items, with
// `session` as the current print session meanwhile (the media writers read
// its page format). The print path sends exactly these bytes.
std::string JOTFExportText(PrintSession& session);

// The export command: adds the host's items to the current print session's
// print settings, writes the job ticket of its "com.zorva" items to `path`
// (replacing the file atomically). kPrintSessionErr without a session; a
// failed write gives the status for its errno (StatusForErrno) and, in
// *reason, the system's own words for it.
Status JOTFExportToFileAtPath(const std::filesystem::path& path, std::string* reason = nullptr);

}  // namespace zorva

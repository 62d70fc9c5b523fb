// Printing through CUPS: the job built from a print session (its settings,
// page format and printer), and its submission as one CUPS job whose first
// document is the job ticket (when the user sends it) and whose second is
// the user's PDF. Nothing is left half submitted: a job whose documents
// cannot all be sent is cancelled.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "core/print_session.h"
#include "core/status.h"
#include "print/job_options.h"

namespace zorva {

class PPD;

// The job ticket's own document format, which the CUPS files we install
// declare and pass on to the printer unchanged.
inline constexpr std::string_view kJobTicketFormat = "application/vnd.zorva-jotf+xml";
inline constexpr std::string_view kPDFFormat = "application/pdf";

// What is sent: the queue, the job's name, its options and documents.
struct PrintJob {
  std::string queue;
  std::string title;
  JobOptions options;
  std::optional<std::string> jobTicket;  // the first document, when sent
  std::filesystem::path document;        // the user's PDF
};

// Whether the settings ask for the job ticket to be sent
// ("com.zorva.print.EmitJOTF", on unless it is 0).
bool SendsJobTicket(const Ticket& settings);

// The job of the session's printer for the document. Adds the host's items to
// the session's print settings, as an export does, so the job ticket is byte
// for byte what the export writes for the same settings and page format.
// allowJobTicket false leaves the job ticket out whatever the settings say.
PrintJob BuildPrintJob(PrintSession& session, const PPD* ppd, const std::filesystem::path& document,
                       bool allowJobTicket);

// Why a print failed, for one line or one message box.
struct PrintFailure {
  Status status = kNoErr;
  std::string message;
};

// Checks that the file can be read and is a PDF document.
std::optional<PrintFailure> CheckPrintDocument(const std::filesystem::path& document);

// Submits the job to the CUPS server of the calling thread (cupsSetServer or
// CUPS_SERVER). On success returns nullopt and sets *jobId.
std::optional<PrintFailure> SubmitPrintJob(const PrintJob& job, int* jobId);

// The command-line path, the same as the dialog's: checks the document,
// finds the queue, fetches its PPD (the temporary copy is removed), builds
// the session from the queue and the settings, and submits.
struct PrintRequest {
  std::string queue;
  Ticket settings;
  std::optional<PageSizePoints> page;
  std::filesystem::path document;
  bool allowJobTicket = true;
};
std::optional<PrintFailure> PrintToQueue(const PrintRequest& request, int* jobId);

}  // namespace zorva

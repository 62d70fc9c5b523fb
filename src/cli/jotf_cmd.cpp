// zorva jotf: write the JOTF job ticket, the document the printer's server
// reads, from a settings property list (as it stands) or from a print-settings
// ticket the way the dialog's export command does.
#include <CLI/CLI.hpp>
#include <cstring>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "cli/cli_support.h"
#include "cli/commands.h"
#include "core/file_io.h"
#include "core/print_session.h"
#include "jobticket/jotf_export.h"
#include "jobticket/jotf_page_size.h"

namespace zorva::cli {
namespace {

struct JotfArgs {
  std::string input;
  std::string output;
  std::string pageSize;
  int orientation = 0;
};

constexpr const char* kWriteFooter =
    "The property list is used exactly as it stands: nothing is written unless it\n"
    "holds the dictionary \"com.zorva.print.JOTFOptions\" (\"JOTFOptionAll\" for the\n"
    "whole document; \"JOTFOptionCovers\", \"JOTFOptionInserts\" and\n"
    "\"JOTFOptionExceptions\" for those sections alone).\n"
    "\n"
    "Examples:\n"
    "  zorva jotf write settings.plist\n"
    "  zorva jotf write settings.plist -o job.jotf";

constexpr const char* kExportFooter =
    "Does what the dialog's Export command does: adds the options asking for the\n"
    "whole document and the controller and client information to the ticket, then\n"
    "writes the job ticket of its \"com.zorva\" items. A stock that names no paper\n"
    "size takes the page size given with --page-size (points, width,length) when it\n"
    "matches a size of the paper-size table exactly; --orientation 1 or 3 means the\n"
    "page is turned.\n"
    "\n"
    "Examples:\n"
    "  zorva jotf export examples/job-settings.plist -o job.jotf\n"
    "  zorva jotf export job.plist -o job.jotf --page-size 612,792 --orientation 0";

void WriteOutput(const std::string& text, const std::string& path) {
  if (path.empty()) {
    std::cout << text;
    return;
  }
  const int err = WriteFileAtomically(path, text);
  if (err != 0) FailRuntime("cannot write " + path + ": " + std::strerror(err));
}

void Write(const JotfArgs& args) {
  const Ticket settings = LoadTicketFile(args.input);
  WriteOutput(JOTFDocumentText(settings.toDictionary()), args.output);
}

void Export(const JotfArgs& args) {
  std::optional<PageSizePoints> page;
  if (!args.pageSize.empty()) page = ParsePageSizeOption(args.pageSize, args.orientation);
  PrintSession session;
  session.printSettings() = LoadTicketFile(args.input);
  if (page) {
    session.pageFormat().setReal(kTicketClientSystem, tkey::kPMPaperWidth, page->width);
    session.pageFormat().setReal(kTicketClientSystem, tkey::kPMPaperLength, page->length);
    session.pageFormat().setNumber(kTicketClientSystem, tkey::kPMOrientation, page->orientation);
  }
  SetCurrentPrintSession(&session);
  std::string reason;
  const Status status = JOTFExportToFileAtPath(args.output, &reason);
  SetCurrentPrintSession(nullptr);
  if (status != kNoErr) FailRuntime("cannot write " + args.output + ": " + reason);
}

void AddWrite(CLI::App* jotf, const std::shared_ptr<JotfArgs>& args) {
  CLI::App* cmd = jotf->add_subcommand(
      "write", "Write the job ticket of a settings property list, used as it stands");
  cmd->add_option("SETTINGS", args->input, "Settings dictionary (XML or binary property list)")
      ->required();
  cmd->add_option("-o,--output", args->output, "Write to FILE instead of standard output")
      ->option_text("FILE");
  cmd->footer(kWriteFooter);
  cmd->callback([args] { Write(*args); });
}

void AddExport(CLI::App* jotf, const std::shared_ptr<JotfArgs>& args) {
  CLI::App* cmd = jotf->add_subcommand(
      "export", "Export the job ticket of a print-settings ticket, as the dialog does");
  cmd->add_option("TICKET", args->input, "Print-settings ticket (XML or binary property list)")
      ->required();
  cmd->add_option("-o,--output", args->output, "The job ticket file to write")
      ->option_text("FILE")
      ->required();
  CLI::Option* size =
      cmd->add_option("--page-size", args->pageSize, "Page width and length in points")
          ->option_text("W,H");
  cmd->add_option("--orientation", args->orientation, "Page orientation, 0 to 3 (default 0)")
      ->option_text("N")
      ->check(CLI::Range(0, 3))
      ->needs(size);
  cmd->footer(kExportFooter);
  cmd->callback([args] { Export(*args); });
}

}  // namespace

void AddJotfCommands(CLI::App& app) {
  CLI::App* jotf = app.add_subcommand(
      "jotf", "Write, import and summarise JOTF job tickets for the printer's server");
  jotf->require_subcommand(1);
  auto args = std::make_shared<JotfArgs>();
  AddWrite(jotf, args);
  AddExport(jotf, args);
  AddJotfImportCommands(jotf);
}

}  // namespace zorva::cli

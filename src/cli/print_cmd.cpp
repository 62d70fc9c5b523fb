// zorva print: sends a PDF to a CUPS printer with the job settings of a
// ticket, exactly as the print dialog does: the job ticket first (unless the
// settings or --no-job-ticket leave it out), then the document, with the PPD
// choices and the standard job attributes of the settings as job options.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "cli/cli_support.h"
#include "cli/commands.h"
#include "print/print_job.h"

namespace zorva::cli {
namespace {

struct PrintArgs {
  std::string document;
  std::string printer;
  std::string ticket;
  std::string pageSize;
  int orientation = 0;
  bool noJobTicket = false;
};

constexpr const char* kFooter =
    "The job ticket sent is byte for byte what 'zorva jotf export' writes for the\n"
    "same ticket and page size. It is sent unless the ticket's\n"
    "\"com.zorva.print.EmitJOTF\" is 0 or --no-job-ticket is given. The print\n"
    "server is the one CUPS_SERVER names, else the user's or the system's.\n"
    "Prints the CUPS job id on success.\n"
    "\n"
    "Examples:\n"
    "  zorva print report.pdf --printer QM4400 --ticket job.plist\n"
    "  zorva print report.pdf --printer QM4400 --ticket job.plist --no-job-ticket";

void Print(const PrintArgs& args) {
  PrintRequest request;
  request.queue = args.printer;
  request.document = args.document;
  request.allowJobTicket = !args.noJobTicket;
  if (!args.pageSize.empty()) request.page = ParsePageSizeOption(args.pageSize, args.orientation);
  request.settings = LoadTicketFile(args.ticket);
  int jobId = 0;
  if (std::optional<PrintFailure> failure = PrintToQueue(request, &jobId)) {
    FailRuntime(failure->message);
  }
  std::cout << args.printer << "-" << jobId << "\n";
}

}  // namespace

void AddPrintCommand(CLI::App& app) {
  auto args = std::make_shared<PrintArgs>();
  CLI::App* cmd = app.add_subcommand(
      "print", "Print a PDF on a CUPS printer with the job settings of a ticket");
  cmd->add_option("FILE", args->document, "The PDF document to print")->required();
  cmd->add_option("--printer", args->printer, "The CUPS queue to print on")
      ->option_text("QUEUE")
      ->required();
  cmd->add_option("--ticket", args->ticket,
                  "Print-settings ticket or preset (XML or binary property list)")
      ->option_text("TICKET")
      ->required();
  CLI::Option* size =
      cmd->add_option("--page-size", args->pageSize, "Page width and length in points")
          ->option_text("W,H");
  cmd->add_option("--orientation", args->orientation, "Page orientation, 0 to 3 (default 0)")
      ->option_text("N")
      ->check(CLI::Range(0, 3))
      ->needs(size);
  cmd->add_flag("--no-job-ticket", args->noJobTicket,
                "Send the document alone, without the job ticket");
  cmd->footer(kFooter);
  cmd->callback([args] { Print(*args); });
}

}  // namespace zorva::cli

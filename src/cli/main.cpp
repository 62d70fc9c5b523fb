// The zorva tool: every logic feature of the print features from a shell.
// This file builds the command tree and turns every failure into one line on
// standard error and an exit status: 0 done, 1 the work failed, 2 bad usage.
#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <new>
#include <string>

#include "cli/cli_support.h"
#include "cli/commands.h"

namespace {

using zorva::cli::kExitFailure;
using zorva::cli::kExitOk;
using zorva::cli::kExitUsage;

constexpr const char* kFooter =
    "Exit status: 0 on success, 1 when the command could not do its work (a file\n"
    "that cannot be read or written, a missing key), 2 for a usage error (an\n"
    "unknown command or option, a value that does not parse as its type).\n"
    "Every error is one line on standard error starting with \"zorva: \".";

// One line, always: whatever a library put in the message, newlines go.
int Report(int code, const std::string& message) {
  if (message.empty()) return code;  // the command wrote its own message
  std::string line = "zorva: " + message;
  for (char& c : line) {
    if (c == '\n' || c == '\r') c = ' ';
  }
  std::cerr << line << '\n';
  return code;
}

// The deepest command the parser got to ("zorva ticket set").
const CLI::App* DeepestCommand(const CLI::App& app) {
  const CLI::App* at = &app;
  while (true) {
    std::vector<const CLI::App*> chosen =
        at->get_subcommands([](const CLI::App* a) { return a->parsed(); });
    if (chosen.empty()) return at;
    at = chosen.front();
  }
}

std::string CommandPath(const CLI::App* at) {
  std::string path = at->get_name();
  for (at = at->get_parent(); at != nullptr; at = at->get_parent()) {
    path = at->get_name() + " " + path;
  }
  return path;
}

int UsageError(const CLI::App& app, const CLI::ParseError& e) {
  const CLI::App* at = DeepestCommand(app);
  std::string message = e.what();
  // "zorva bogus" would otherwise only say that a subcommand is required.
  const std::vector<std::string> extra = at->remaining();
  if (at->get_require_subcommand_min() > 0 && !extra.empty() && !extra.front().starts_with("-")) {
    message = "unknown command \"" + extra.front() + "\"";
  }
  return Report(kExitUsage, message + " (see '" + CommandPath(at) + " --help')");
}

// Output that could not be written (a full disk, a closed pipe) is a failure.
int FinishOutput(int code) {
  std::cout.flush();
  if (!std::cout.good() || std::fflush(stdout) != 0) {
    return Report(kExitFailure, std::string("cannot write output: ") + std::strerror(errno));
  }
  return code;
}

int Run(CLI::App& app, int argc, char** argv) {
  try {
    app.parse(argc, argv);
    return FinishOutput(kExitOk);
  } catch (const CLI::Success& e) {
    return FinishOutput(app.exit(e));
  } catch (const CLI::ParseError& e) {
    return UsageError(app, e);
  } catch (const zorva::cli::CliError& e) {
    std::cout.flush();
    return Report(e.code(), e.what());
  } catch (const std::bad_alloc&) {
    return Report(kExitFailure, "out of memory");
  } catch (const std::exception& e) {
    return Report(kExitFailure, std::string("internal error: ") + e.what());
  }
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{
      "Prepare print jobs for the Zorva production printer: edit print-settings "
      "tickets and look up the codes they hold.",
      "zorva"};
  app.set_version_flag("--version", "zorva " + std::string(zorva::cli::kToolVersion),
                       "Print the version and exit");
  app.require_subcommand(1);
  app.footer(kFooter);
  zorva::cli::AddTicketCommands(app);
  zorva::cli::AddTablesCommand(app);
  zorva::cli::AddPagesCommands(app);
  zorva::cli::AddSpecialPagesCommands(app);
  zorva::cli::AddWatermarksCommands(app);
  zorva::cli::AddType42Command(app);
  zorva::cli::AddJotfCommands(app);
  zorva::cli::AddPPDCommand(app);
  zorva::cli::AddPapersCommands(app);
  zorva::cli::AddPrinterPapersCommand(app);
  zorva::cli::AddPrintCommand(app);
  zorva::cli::AddPresetsCommands(app);
  return Run(app, argc, argv);
}

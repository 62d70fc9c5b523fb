// Shared plumbing of the zorva tool: exit codes, the error every command
// throws to end with one line on standard error, ticket files in and out,
// and aligned text tables. Each command file uses these and nothing else of
// the others, so a new command is one more file.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "core/ticket.h"
#include "jobticket/jotf_page_size.h"

namespace zorva::cli {

inline constexpr int kExitOk = 0;
inline constexpr int kExitFailure = 1;  // the command could not do its work
inline constexpr int kExitUsage = 2;    // the command line or a value on it is wrong

#ifdef ZORVA_VERSION
inline constexpr std::string_view kToolVersion = ZORVA_VERSION;
#else
inline constexpr std::string_view kToolVersion = "0.1.0";
#endif

// Thrown by commands; main prints "zorva: <message>" and exits with code.
// An empty message means the command has already written its own error
// text in a fixed format and only the exit status is left to give.
class CliError : public std::runtime_error {
 public:
  CliError(int code, const std::string& message) : std::runtime_error(message), code_(code) {}
  int code() const { return code_; }

 private:
  int code_;
};

[[noreturn]] void FailUsage(const std::string& message);
[[noreturn]] void FailRuntime(const std::string& message);

// A piece of user input fit for an error line: quoted, control characters
// escaped, long text cut short.
std::string Shown(std::string_view text);

// Reads a ticket file (XML or binary property list with a dictionary root).
// Fails with kExitFailure and a message naming the file and the problem.
Ticket LoadTicketFile(const std::filesystem::path& path);

// Writes the ticket as an XML property list, atomically; kExitFailure on error.
void SaveTicketFile(const Ticket& ticket, const std::filesystem::path& path);

// The page size of --page-size "WIDTH,LENGTH" (points) with an orientation;
// a usage failure for anything but two positive numbers.
PageSizePoints ParsePageSizeOption(const std::string& text, int orientation);

// Everything on standard input (bounded, so a runaway pipe cannot eat memory).
std::string ReadStandardInput();

// Prints rows as left-aligned columns two spaces apart; no trailing blanks.
using TextRow = std::vector<std::string>;
void PrintColumns(std::ostream& out, const std::vector<TextRow>& rows);

}  // namespace zorva::cli

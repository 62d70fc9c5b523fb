// zorva ticket: read and edit print-settings ticket files (saved presets and
// the like) from the shell. Files are read as XML or binary property lists and
// always written back as XML, atomically, so a failed edit leaves the old file.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>
#include <system_error>

#include "cli/cli_support.h"
#include "cli/commands.h"
#include "cli/value_text.h"

namespace zorva::cli {
namespace {

struct TicketArgs {
  std::string file;
  std::string key;
  std::string value;
  std::string type = "auto";
  bool force = false;
};

constexpr const char* kSetFooter =
    "Types (--type): auto (the default) takes true/false as bool, a whole number as\n"
    "integer, a decimal or exponent number as real, anything else as string;\n"
    "number = integer or real; bool = true/false/yes/no/1/0; date =\n"
    "YYYY-MM-DDTHH:MM:SSZ (UTC); data = base64; dict and array = XML property-list\n"
    "text with that root, or - to read it from standard input.\n"
    "A value that does not parse as its type exits with status 2 and leaves the\n"
    "file as it was. A missing FILE is created.\n"
    "\n"
    "Examples:\n"
    "  zorva ticket set job.plist com.zorva.print.FinishingDuplex 2\n"
    "  zorva ticket set job.plist com.zorva.print.JobNotesMessage 'Deliver to room 4' --type "
    "string\n"
    "  zorva ticket get job.plist com.zorva.print.JobLevelStock > stock.plist\n"
    "  zorva ticket set other.plist com.zorva.print.JobLevelStock - --type dict < stock.plist";

void CheckKey(const std::string& key) {
  if (key.empty()) FailUsage("the key must not be empty");
  const std::string why = UnstorableTextReason(key);
  if (!why.empty()) FailUsage("the key " + why);
}

bool FileMissing(const std::string& file) {
  std::error_code ec;
  return !std::filesystem::exists(file, ec) && !ec;
}

void ShowTicket(const TicketArgs& args) {
  const Ticket ticket = LoadTicketFile(args.file);
  for (const auto& [key, item] : ticket.items()) DumpValue(std::cout, ShownKey(key), item.value);
}

void GetKey(const TicketArgs& args) {
  const Ticket ticket = LoadTicketFile(args.file);
  const Value* value = ticket.get(args.key);
  if (!value) FailRuntime(args.file + " has no key " + Shown(args.key));
  std::cout << PlainText(*value);
}

Value ParseArgument(const TicketArgs& args) {
  const ValueKind kind = ValueKindFromName(args.type).value_or(ValueKind::Auto);
  const bool fromStdin = args.value == "-" && (kind == ValueKind::Dict || kind == ValueKind::Array);
  std::string why;
  std::optional<Value> value =
      ParseValueText(fromStdin ? ReadStandardInput() : args.value, kind, &why);
  if (!value) FailUsage(why);
  return std::move(*value);
}

// Everything is checked before the file is touched.
void SetKey(const TicketArgs& args) {
  CheckKey(args.key);
  Value value = ParseArgument(args);
  Ticket ticket = FileMissing(args.file) ? Ticket{} : LoadTicketFile(args.file);
  const Status status = ticket.setValue(kTicketClientSystem, args.key, std::move(value));
  if (status != kNoErr) {
    FailRuntime("cannot set " + Shown(args.key) + " (status " + std::to_string(status) + ")");
  }
  SaveTicketFile(ticket, args.file);
}

void RemoveKey(const TicketArgs& args) {
  if (args.force && FileMissing(args.file)) return;
  Ticket ticket = LoadTicketFile(args.file);
  if (!ticket.contains(args.key)) {
    if (args.force) return;
    FailRuntime(args.file + " has no key " + Shown(args.key));
  }
  const Status status = ticket.remove(args.key);
  if (status != kNoErr) {
    FailRuntime("cannot remove " + Shown(args.key) + " (status " + std::to_string(status) + ")");
  }
  SaveTicketFile(ticket, args.file);
}

CLI::Option* AddFile(CLI::App* cmd, TicketArgs& args) {
  return cmd->add_option("FILE", args.file, "Ticket file (XML or binary property list)")
      ->required();
}

CLI::Option* AddKey(CLI::App* cmd, TicketArgs& args) {
  return cmd->add_option("KEY", args.key, "Ticket key, e.g. com.zorva.print.JobNotesMessage")
      ->required();
}

void AddShow(CLI::App* ticket, const std::shared_ptr<TicketArgs>& args) {
  CLI::App* cmd = ticket->add_subcommand(
      "show", "Print every key of a ticket in sorted order with its type and value");
  AddFile(cmd, *args);
  cmd->footer(
      "Nested dictionaries and arrays are indented; data shows its size and first bytes\n"
      "in hex; dates are ISO-8601 UTC.\n\nExample:\n  zorva ticket show job.plist");
  cmd->callback([args] { ShowTicket(*args); });
}

void AddGet(CLI::App* ticket, const std::shared_ptr<TicketArgs>& args) {
  CLI::App* cmd = ticket->add_subcommand("get", "Print the value of one key");
  AddFile(cmd, *args);
  AddKey(cmd, *args);
  cmd->footer(
      "Numbers, strings and dates print as plain text, booleans as true or false, data\n"
      "as base64, dictionaries and arrays as an XML property list. A missing key exits\n"
      "with status 1.\n\nExample:\n  zorva ticket get job.plist com.zorva.print.FinishingDuplex");
  cmd->callback([args] { GetKey(*args); });
}

void AddSet(CLI::App* ticket, const std::shared_ptr<TicketArgs>& args) {
  CLI::App* cmd = ticket->add_subcommand("set", "Store a value under a key (creating FILE)");
  AddFile(cmd, *args);
  AddKey(cmd, *args);
  cmd->add_option("VALUE", args->value, "The value, read as --type says")->required();
  std::vector<std::string> names(ValueKindNames().begin(), ValueKindNames().end());
  cmd->add_option("-t,--type", args->type, "How to read VALUE")
      ->check(CLI::IsMember(names))
      ->capture_default_str();
  cmd->footer(kSetFooter);
  cmd->callback([args] { SetKey(*args); });
}

void AddRemove(CLI::App* ticket, const std::shared_ptr<TicketArgs>& args) {
  CLI::App* cmd = ticket->add_subcommand("remove", "Remove a key");
  AddFile(cmd, *args);
  AddKey(cmd, *args);
  cmd->add_flag("-f,--force", args->force,
                "Succeed without changing anything when FILE or KEY is missing");
  cmd->footer(
      "Without --force a missing file or key exits with status 1, as ticket get does.\n\n"
      "Example:\n  zorva ticket remove job.plist com.zorva.print.JobNotesMessage");
  cmd->callback([args] { RemoveKey(*args); });
}

}  // namespace

void AddTicketCommands(CLI::App& app) {
  CLI::App* ticket =
      app.add_subcommand("ticket", "Read and edit print-settings ticket files and presets");
  ticket->require_subcommand(1);
  auto args = std::make_shared<TicketArgs>();
  AddShow(ticket, args);
  AddGet(ticket, args);
  AddSet(ticket, args);
  AddRemove(ticket, args);
}

}  // namespace zorva::cli

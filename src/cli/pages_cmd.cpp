// zorva pages: the page text of the insert and exception dialogs ("1-4, 9",
// "12-") as the ranges the dialogs would make of it, so scripts can check a
// page list before putting it into a ticket.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <memory>
#include <string>

#include <iostream>

#include "cli/cli_support.h"
#include "cli/commands.h"
#include "core/bundle.h"
#include "model/page_ranges.h"

namespace zorva::cli {
namespace {

struct ParseArgs {
  std::string text;
  bool pages = false;
};

constexpr const char* kParseFooter =
    "Numbers are separated by commas, blanks or any other character; A-B is a\n"
    "range, A- runs to the last page (9999999), -B starts at page 1. Each line of\n"
    "output is FIRST COUNT: one line per range, or with --pages one line per page.\n"
    "Text that starts with '-' goes after '--'. Bad text prints\n"
    "\"error CODE: MESSAGE\" on standard error and exits with status 1\n"
    "(1000 a number above 9999999, 1001 malformed or empty, 1002 a range that\n"
    "ends before it starts).\n"
    "\n"
    "Examples:\n"
    "  zorva pages parse '1-3, 7'          prints 1 3 and 7 1\n"
    "  zorva pages parse --pages 1-3       prints 1 1, 2 1 and 3 1\n"
    "  zorva pages parse -- -4             prints 1 4";

[[noreturn]] void FailParse(Status code) {
  auto alert = SpecialPagesAlertTextFor(code, GetPDEBundle());
  const std::string message = alert ? alert->message : "the page text cannot be used";
  // Scripts parse this line, so it has a fixed form without the tool's prefix.
  std::cerr << "error " << code << ": " << message << '\n';
  throw CliError(kExitFailure, "");
}

// One line per pair. Pages are written out from the ranges as they are
// printed, so "1-" lists ten million pages without holding them all.
void PrintRanges(const std::vector<PageRange>& ranges, bool pages) {
  for (const PageRange& range : ranges) {
    if (!pages) {
      std::printf("%d %d\n", range.first, range.count);
      continue;
    }
    const std::int64_t end = std::int64_t{range.first} + range.count;
    for (std::int64_t page = range.first; page < end; ++page) {
      std::printf("%lld 1\n", static_cast<long long>(page));
    }
  }
}

void Parse(const ParseArgs& args) {
  PageRangeList list = CreatePageRangesBySeparatingString(args.text, true);
  if (list.code != kNoErr) FailParse(list.code);
  PrintRanges(list.ranges, args.pages);
}

}  // namespace

void AddPagesCommands(CLI::App& app) {
  CLI::App* group = app.add_subcommand("pages", "Turn typed page numbers into page ranges");
  group->require_subcommand(1);

  auto args = std::make_shared<ParseArgs>();
  CLI::App* parse =
      group->add_subcommand("parse", "Print the page ranges a special-page dialog makes of TEXT");
  parse->add_flag("--pages", args->pages, "One line per page instead of one per range");
  parse->add_option("TEXT", args->text, "Page text, e.g. '1-4, 9, 12-'")->required();
  parse->footer(kParseFooter);
  parse->callback([args] { Parse(*args); });
}

}  // namespace zorva::cli

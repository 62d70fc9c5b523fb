// zorva printer-papers: the papers a printer knows (its media catalogue over
// IPP), listed as the named-paper dialog shows its "Printer Paper List", or
// as a property list of the stocks' dictionaries for scripts.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "cli/cli_support.h"
#include "cli/commands.h"
#include "core/bundle.h"
#include "core/plist_io.h"
#include "core/text.h"
#include "model/summaries.h"
#include "paper/printer_papers.h"
#include "paper/stock_library.h"
#include "paper/worker.h"

namespace zorva::cli {
namespace {

struct PrinterPapersArgs {
  std::string printer;
  bool plist = false;
  int timeout = 20;
  std::string addToMyPapers;
  bool replace = false;
};

constexpr const char* kFooter =
    "PRINTER is the printer's network address (\"10.1.2.3\", \"printer.local:8631\",\n"
    "\"[fe80::1]:631\"; without a port the IPP port, 631) or its device URI\n"
    "(\"ipp://10.1.2.3:631/ipp/print\", \"socket://...\": the host part is used;\n"
    "\"dnssd://...\" is resolved first). The printer is asked for its\n"
    "media-col-database over plain HTTP at \"/\".\n"
    "\n"
    "Columns: name, size, type, colour, weight, coating, comment; \"-\" where the\n"
    "printer gives nothing we can show. With --plist the output is an XML property\n"
    "list: an array of stock dictionaries (as tickets hold them) in the printer's\n"
    "order.\n"
    "\n"
    "--add-to-my-papers NAME copies the printer's paper of that name (compared\n"
    "without regard to case) into the user's named papers, as the dialog's \"Add To\n"
    "My Paper List\" does, and prints its new UUID; a paper of that name already\n"
    "in the list is kept unless --replace is given.\n"
    "\n"
    "Examples:\n"
    "  zorva printer-papers 10.1.2.3\n"
    "  zorva printer-papers ipp://printer.local:631/ipp/print --plist > papers.plist\n"
    "  zorva printer-papers 10.1.2.3 --add-to-my-papers \"Gloss 170\"";

bool LooksLikeUri(const std::string& text) {
  const std::size_t colon = text.find(':');
  return colon != std::string::npos && text.compare(colon, 2, ":/") == 0;
}

std::string AddressFor(const std::string& printer) {
  if (!LooksLikeUri(printer)) return printer;
  std::optional<std::string> address = PrinterAddressFromDeviceUri(printer);
  if (!address) FailUsage("the device URI " + Shown(printer) + " has no network printer in it");
  std::optional<std::string> resolved = ResolvePrinterAddress(*address, nullptr);
  if (!resolved) FailRuntime("cannot find the printer " + Shown(printer) + " on the network");
  return *resolved;
}

PrinterStockList Fetch(const PrinterPapersArgs& args) {
  const std::string address = AddressFor(args.printer);
  FetchControl control;
  control.answerTimeout = std::chrono::seconds(args.timeout);
  control.connectTimeout = std::min(control.answerTimeout, control.connectTimeout);
  errno = 0;
  PrinterAnswer got = FetchMediaColDatabase(address, control);
  if (got.outcome == FetchOutcome::NoConnection) {
    const std::string why = errno != 0 ? std::string(": ") + std::strerror(errno) : "";
    FailRuntime("cannot connect to the printer at " + Shown(address) + why);
  }
  if (got.outcome == FetchOutcome::NoAnswer) {
    FailRuntime("the printer at " + Shown(address) + " sent no usable answer");
  }
  return PrinterStocksFromAnswer(got.answer.get());
}

std::string Cell(const std::optional<std::string>& text) {
  return text && !text->empty() ? *text : "-";
}

void PrintTable(const PrinterStockList& stocks) {
  const Bundle* bundle = GetPDEBundle();
  std::vector<TextRow> rows = {{"NAME", "SIZE", "TYPE", "COLOUR", "WEIGHT", "COATING", "COMMENT"}};
  for (const auto& stock : stocks) {
    rows.push_back({Cell(stock->customName()), Cell(StockSizeText(*stock, bundle)),
                    Cell(StockTypeText(*stock, bundle)), Cell(StockColorText(*stock, bundle)),
                    Cell(StockWeightText(*stock, bundle)), Cell(StockCoatingText(*stock, bundle)),
                    Cell(stock->comment())});
  }
  PrintColumns(std::cout, rows);
}

void PrintPlist(const PrinterStockList& stocks) {
  Array array;
  for (const auto& stock : stocks) array.push_back(stock->asTicket());
  std::cout << ToXmlPropertyList(Value(std::move(array)));
}

// The user's list gets a copy of the printer's paper under the paper's own
// name; the printer's list is never written.
void AddToMyPapers(const PrinterStockList& stocks, const PrinterPapersArgs& args) {
  const auto found = std::find_if(stocks.begin(), stocks.end(), [&](const auto& stock) {
    return stock->customName() && EqualsCaseInsensitive(*stock->customName(), args.addToMyPapers);
  });
  if (found == stocks.end()) {
    FailRuntime("the printer has no paper named " + Shown(args.addToMyPapers) +
                "; 'zorva printer-papers " + args.printer + "' lists them");
  }
  StockLibrary entry;
  entry.setStock(**found);
  entry.setName(*(*found)->customName());
  StockLibraryList list;
  if (list.isDuplicate(entry.name())) {
    if (!args.replace) {
      FailRuntime("a paper named " + Shown(entry.name()) +
                  " is in your list; --replace replaces it");
    }
    list.replace(entry);
    std::cout << *list.findByName(entry.name()) << '\n';
    return;
  }
  std::cout << list.add(entry) << '\n';
}

void Run(const PrinterPapersArgs& args) {
  const PrinterStockList stocks = Fetch(args);
  if (!args.addToMyPapers.empty()) {
    AddToMyPapers(stocks, args);
  } else if (args.plist) {
    PrintPlist(stocks);
  } else {
    PrintTable(stocks);
  }
}

}  // namespace

void AddPrinterPapersCommand(CLI::App& app) {
  auto args = std::make_shared<PrinterPapersArgs>();
  CLI::App* cmd = app.add_subcommand(
      "printer-papers", "List the papers a printer knows (its media catalogue over IPP)");
  cmd->add_option("PRINTER", args->printer, "Network address or device URI of the printer")
      ->required();
  cmd->add_flag("--plist", args->plist, "Print an XML property list of the stocks instead");
  cmd->add_option("--timeout", args->timeout, "Seconds to wait for the answer (default 20)")
      ->check(CLI::Range(1, 600));
  CLI::Option* add =
      cmd->add_option("--add-to-my-papers", args->addToMyPapers,
                      "Copy the printer's paper of this name into your named papers");
  cmd->add_flag("--replace", args->replace,
                "With --add-to-my-papers: replace a paper of the same name in your list")
      ->needs(add);
  add->excludes("--plist");
  cmd->footer(kFooter);
  cmd->callback([args] { Run(*args); });
}

}  // namespace zorva::cli

// zorva ppd: a PPD as the product reads it (its encoding, each main keyword's
// choices with their texts and ticket values, the installable options and
// the features they turn on), and two one-item-a-line forms for scripts: the
// menu of one keyword and the installed features.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "cli/cli_support.h"
#include "cli/commands.h"
#include "core/bundle.h"
#include "core/print_session.h"
#include "paper/ppd.h"

namespace zorva::cli {
namespace {

struct PPDArgs {
  std::string file;
  std::string queue;
  std::string choices;
  bool checkConflicts = false;
  bool installed = false;
};

const char* EncodingName(TextEncoding encoding) {
  switch (encoding) {
    case TextEncoding::UTF8:
      return "UTF-8";
    case TextEncoding::ISOLatin1:
      return "ISO Latin 1";
    case TextEncoding::ISOLatin2:
      return "ISO Latin 2";
    case TextEncoding::ISOLatin5:
      return "ISO Latin 5";
    case TextEncoding::ShiftJIS:
      return "Shift-JIS";
    case TextEncoding::MacRoman:
      break;
  }
  return "Mac Roman";
}

// Opens the PPD through a print session, as the dialog does.
PPD* OpenPPD(const PPDArgs& args, PrintSession& session) {
  if (args.file.empty() == args.queue.empty()) FailUsage("give either a PPD FILE or --queue NAME");
  if (!args.file.empty()) {
    session.setPpdPath(args.file);
  } else {
    session.setPrinterName(args.queue);
  }
  SetCurrentPrintSession(&session);
  PPD* ppd = PPDGetCurrent();
  if (ppd != nullptr) return ppd;
  if (!args.file.empty()) FailRuntime("cannot read " + Shown(args.file) + " as a PPD file");
  FailRuntime("cannot get the PPD of queue " + Shown(args.queue) + " from the CUPS server");
}

// Each feature key of the table once, in table order.
std::vector<std::string> FeatureKeys() {
  std::vector<std::string> keys;
  std::set<std::string> seen;
  for (const InstalledFeature* row = InstalledFeatures; row->feature; ++row) {
    if (seen.insert(row->feature).second) keys.push_back(row->feature);
  }
  return keys;
}

void PrintChoices(PPD* ppd, const PPDArgs& args) {
  if (!PPDHasOption(ppd, args.choices)) {
    FailRuntime("the PPD has no option " + Shown(args.choices));
  }
  for (const PPDMenuItem& item :
       PPDPopulateMenuWithChoices(ppd, args.choices, args.checkConflicts)) {
    std::cout << item.value << '\t' << item.text << '\n';
  }
}

void PrintInstalled() {
  for (const std::string& feature : FeatureKeys()) {
    std::int32_t value = 0;
    if (getInstallableOptionTicketValue(feature, value))
      std::cout << feature << '\t' << value << '\n';
  }
}

std::string ValueText(std::int32_t value) {
  return value == -1 ? "skipped (not in the tables)" : std::to_string(value);
}

void PrintOptions(const std::vector<PPDOptionInfo>& options) {
  for (const PPDOptionInfo& option : options) {
    std::cout << option.keyword << " (" << option.text << "), default "
              << option.defaultChoice.value_or("none") << '\n';
    std::vector<TextRow> rows;
    for (const PPDChoiceInfo& c : option.choices) {
      rows.push_back({"  " + c.choice, ValueText(c.value), c.text});
    }
    PrintColumns(std::cout, rows);
  }
}

void PrintInstallableOptions(const PPD* ppd) {
  std::cout << "\nInstallable options:\n";
  const std::vector<PPDOptionInfo> options = PPDInstallableOptions(ppd);
  if (options.empty()) std::cout << "  none\n";
  std::vector<TextRow> rows;
  rows.reserve(options.size());
  for (const PPDOptionInfo& o : options) {
    rows.push_back({"  " + o.keyword, o.defaultChoice.value_or("none"), o.text});
  }
  PrintColumns(std::cout, rows);
}

void PrintFeatures() {
  std::cout << "\nFeatures turned on:\n";
  std::vector<TextRow> rows;
  for (const std::string& feature : FeatureKeys()) {
    std::int32_t value = 0;
    if (!getInstallableOptionTicketValue(feature, value)) continue;
    auto label = CopyLocalizedStringForInstalledFeatureFromPlugin(feature, GetPDEBundle());
    rows.push_back({"  " + feature, std::to_string(value), label.value_or("")});
  }
  if (rows.empty()) std::cout << "  none\n";
  PrintColumns(std::cout, rows);
}

void Describe(PPD* ppd, const PPDArgs& args) {
  std::cout << "PPD: " << (args.file.empty() ? "queue " + args.queue : args.file) << '\n'
            << "Encoding: " << EncodingName(PPDGetEncoding(ppd)) << "\n\nMain keywords:\n";
  PrintOptions(PPDMainKeywordOptions(ppd));
  PrintInstallableOptions(ppd);
  PrintFeatures();
}

void RunPPD(const PPDArgs& args) {
  PrintSession session;
  PPD* ppd = OpenPPD(args, session);
  LoadInstallableOptions(ppd, InstalledFeatures);
  if (!args.choices.empty()) {
    PrintChoices(ppd, args);
  } else if (args.installed) {
    PrintInstalled();
  } else {
    Describe(ppd, args);
  }
  UnloadInstallableOptions();
  PPDCloseCurrent();
  SetCurrentPrintSession(nullptr);
}

}  // namespace

void AddPPDCommand(CLI::App& app) {
  auto args = std::make_shared<PPDArgs>();
  CLI::App* cmd = app.add_subcommand("ppd", "Show a PPD as the print features read it");
  cmd->add_option("FILE", args->file, "The PPD file");
  cmd->add_option("-q,--queue", args->queue,
                  "Read the PPD of this CUPS queue instead (the server is $CUPS_SERVER, "
                  "else the local one)");
  CLI::Option* choices =
      cmd->add_option("-c,--choices", args->choices,
                      "Print the menu of this main keyword, one VALUE<TAB>TEXT line per item");
  cmd->add_flag("--check-conflicts", args->checkConflicts,
                "With --choices: leave out choices that conflict with the PPD's defaults")
      ->needs(choices);
  cmd->add_flag("--installed", args->installed,
                "Print each installed feature of the feature table as FEATURE<TAB>TICKET-VALUE")
      ->excludes(choices);
  cmd->footer(
      "Without --choices or --installed, prints the PPD's encoding, each main keyword\n"
      "the print features use with its default, every choice with its ticket value\n"
      "and text (choices the tables do not know are marked skipped), the installable\n"
      "options (group \"InstallableOptions\") and the features they turn on.\n"
      "Texts are decoded by the PPD's *LanguageEncoding and printed in UTF-8.\n"
      "With --choices, skipped choices are reported on standard error.\n\n"
      "Examples:\n"
      "  zorva ppd examples/zorva-qm4400.ppd\n"
      "  zorva ppd examples/zorva-qm4400.ppd --choices OutputBin --check-conflicts\n"
      "  zorva ppd --queue QM4400 --installed");
  cmd->callback([args] { RunPPD(*args); });
}

}  // namespace zorva::cli

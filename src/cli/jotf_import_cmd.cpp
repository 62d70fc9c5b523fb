// zorva jotf import, summary and profile: reading job tickets back into a
// print-settings ticket as the dialog's Import command does, the readable
// summary of a ticket, and the device profile import relies on.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/cli_support.h"
#include "cli/commands.h"
#include "cli/value_text.h"
#include "jobticket/device_profile.h"
#include "jobticket/jotf_export.h"
#include "jobticket/jotf_import.h"
#include "jobticket/jotf_summary.h"
#include "paper/ppd.h"

namespace zorva::cli {
namespace {

struct ImportArgs {
  std::string ticket;
  std::vector<std::string> files;
  bool recover = false;
  std::string ppd;
  std::string feature;
};

constexpr const char* kImportFooter =
    "Does what the dialog's Import command does: every job ticket that parses is\n"
    "read through the device profile and the values found are merged into the\n"
    "print-settings ticket (created when missing, replaced atomically). A file\n"
    "that does not parse is named on standard error, adds nothing, and makes the\n"
    "exit status 1; the other files are still merged.\n"
    "\n"
    "--recover reads damaged files with the XML reader's recovery mode (a ticket\n"
    "exported with accounting on needs it) and says what it skipped. --ppd makes\n"
    "the import behave as the dialog does for that printer: the device profile is\n"
    "used only when the PPD's manufacturer is \"Zorva\".\n"
    "\n"
    "Examples:\n"
    "  zorva jotf import job.plist received.jotf\n"
    "  zorva jotf import job.plist a.jotf b.jotf --recover";

constexpr const char* kSummaryFooter =
    "Prints the lines the dialog shows before an export and after an import: job\n"
    "notes, job setup, output and image adjustment, each ending in a blank line.\n"
    "\n"
    "Example:\n"
    "  zorva jotf summary job.plist";

constexpr const char* kProfileFooter =
    "Without FEATURE lists every feature of the bundled device profile with its\n"
    "syntaxes and default; with FEATURE shows its properties, keywords (and the\n"
    "document text each stands for), ranges and character set.\n"
    "\n"
    "Examples:\n"
    "  zorva jotf profile\n"
    "  zorva jotf profile StockType";

void LoadProfile(const std::string& ppdPath) {
  if (!ppdPath.empty()) {
    const PPDPtr ppd = PPDOpenFile(ppdPath);
    if (!ppd) FailRuntime("cannot read " + ppdPath + " as a PPD");
    if (PPDManufacturer(ppd.get()) != kZorvaManufacturer) return;
  }
  ZDPInitialize();
  if (!ZDPIsLoaded()) FailRuntime("cannot load the device profile of the bundle");
}

void ReportRecovered(const std::string& file, const JotfImportReport& report) {
  if (report.errors == 0) return;
  std::cerr << "zorva: " << file << ": recovered: skipped " << report.errors
            << (report.errors == 1 ? " error" : " errors") << ", the first at line "
            << report.firstErrorLine << ": " << report.firstError << '\n';
}

void Import(const ImportArgs& args) {
  LoadProfile(args.ppd);
  PrintSession session;
  if (std::filesystem::exists(args.ticket)) session.printSettings() = LoadTicketFile(args.ticket);
  Dictionary settings;
  bool failed = false;
  for (const std::string& file : args.files) {
    JotfImportReport report;
    if (JOTFImportFileAtPath(file, &settings, {.recover = args.recover}, &report) != kNoErr) {
      std::cerr << "zorva: " << file << ": not a readable job ticket (-208)\n";
      failed = true;
      continue;
    }
    ReportRecovered(file, report);
  }
  if (JOTFImportMergeIntoJobTicket(&session, settings) != kNoErr) {
    FailRuntime("a locked ticket item refused an imported value");
  }
  SaveTicketFile(session.printSettings(), args.ticket);
  if (failed) throw CliError(kExitFailure, "");
}

void Summary(const ImportArgs& args) {
  SummaryLines lines;
  buildSummaryText(JOTFSettingsFromTicket(LoadTicketFile(args.ticket)), lines);
  std::cout << JoinSummaryLines(lines) << '\n';
}

// A profile value as it is shown: strings quoted, numbers and booleans plain.
std::string ValueText(const Value& v) {
  if (const std::string* s = v.string()) return "\"" + *s + "\"";
  if (const std::int64_t* i = v.integer()) return std::to_string(*i);
  if (const auto b = v.boolean()) return *b ? "true" : "false";
  if (const auto d = v.real()) return FormatReal(*d);
  return std::string(TypeLabel(v.type()));
}

std::string Syntaxes(const Dictionary* feature) {
  std::string text;
  for (const char* s : {"Keyword", "Name", "Number"}) {
    if (!ZDPGetFeatureSyntax(feature, s)) continue;
    text += text.empty() ? s : std::string(",") + s;
  }
  return text;
}

std::string DefaultText(const Dictionary* feature) {
  std::string syntax;
  Value value;
  if (!ZDPGetFeatureDefaultValue(feature, &syntax, &value)) return "-";
  return ValueText(value);
}

void ListFeatures() {
  std::vector<TextRow> rows{{"FEATURE", "SYNTAX", "DEFAULT", "IMPORTED"}};
  for (const std::string& name : ZDPFeatureNames()) {
    const Dictionary* f = ZDPGetFeature(name);
    const Value* jotf = ZDPGetFeatureProperty(f, "JOTF");
    rows.push_back(
        {name, Syntaxes(f), DefaultText(f), jotf && *jotf == Value(true) ? "yes" : "no"});
  }
  PrintColumns(std::cout, rows);
}

void ShowFeature(const std::string& name) {
  const Dictionary* f = ZDPGetFeature(name);
  if (!f) FailRuntime("the device profile has no feature " + Shown(name));
  std::cout << name << '\n';
  if (const Dictionary* props = f->getDictionary("Properties")) {
    for (const auto& [k, v] : *props) {
      std::cout << "  " << k << " = " << ValueText(v) << '\n';
    }
  }
  if (const Value* kw = ZDPGetFeatureSyntax(f, "Keyword"); kw && kw->dictionary()) {
    std::cout << "Keyword\n";
    std::vector<TextRow> rows;
    for (const auto& [keyword, entry] : *kw->dictionary()) {
      const Dictionary* k = entry.dictionary();
      const Dictionary* props = k ? k->getDictionary("Properties") : nullptr;
      const std::string* jotf = props ? props->getString("JOTFValue") : nullptr;
      const std::string* name2 = props ? props->getString("NameSyntax") : nullptr;
      std::string text = jotf ? "\"" + *jotf + "\"" : name2 ? "name \"" + *name2 + "\"" : "-";
      rows.push_back({"  " + keyword, text, k && k->getBool("Default") == true ? "default" : ""});
    }
    PrintColumns(std::cout, rows);
  }
  for (const char* s : {"Name", "Number"}) {
    const Value* syntax = ZDPGetFeatureSyntax(f, s);
    if (!syntax || !syntax->dictionary()) continue;
    std::cout << s << '\n';
    for (const auto& [k, v] : *syntax->dictionary()) {
      std::cout << "  " << k << " = " << ValueText(v) << '\n';
    }
  }
}

void Profile(const ImportArgs& args) {
  LoadProfile("");
  if (args.feature.empty()) {
    ListFeatures();
  } else {
    ShowFeature(args.feature);
  }
}

}  // namespace

void AddJotfImportCommands(CLI::App* jotf) {
  auto args = std::make_shared<ImportArgs>();
  CLI::App* imp = jotf->add_subcommand(
      "import", "Merge job tickets into a print-settings ticket, as the dialog does");
  imp->add_option("TICKET", args->ticket, "Print-settings ticket to merge into")->required();
  imp->add_option("FILES", args->files, "Job tickets (JOTF) to import")->required();
  imp->add_flag("--recover", args->recover,
                "Read damaged tickets in the XML reader's recovery mode");
  imp->add_option("--ppd", args->ppd, "Use the device profile only for this printer's PPD")
      ->option_text("FILE");
  imp->footer(kImportFooter);
  imp->callback([args] { Import(*args); });

  CLI::App* sum =
      jotf->add_subcommand("summary", "Print the readable summary of a print-settings ticket");
  sum->add_option("TICKET", args->ticket, "Print-settings ticket")->required();
  sum->footer(kSummaryFooter);
  sum->callback([args] { Summary(*args); });

  CLI::App* prof =
      jotf->add_subcommand("profile", "List the device profile's features, or show one of them");
  prof->add_option("FEATURE", args->feature, "A feature's name, such as StockType");
  prof->footer(kProfileFooter);
  prof->callback([args] { Profile(*args); });
}

}  // namespace zorva::cli

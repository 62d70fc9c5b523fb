// The zorva tool's command groups. Each group lives in its own file and adds
// its subcommands to the application; main.cpp calls every Add* function here.
// Commands report failure by throwing CliError (cli_support.h).
#pragma once

namespace CLI {
class App;
}

namespace zorva::cli {

// zorva ticket show|get|set|remove
void AddTicketCommands(CLI::App& app);

// zorva tables [NAME]
void AddTablesCommand(CLI::App& app);

// zorva pages parse
void AddPagesCommands(CLI::App& app);

// zorva special-pages list|summary|add-cover|add-insert|add-exception|remove
void AddSpecialPagesCommands(CLI::App& app);

// zorva watermarks list|show|defaults|remove|render
void AddWatermarksCommands(CLI::App& app);

// zorva type42 FONT [--name NAME] [-o FILE] [--split-large-tables]
void AddType42Command(CLI::App& app);

// zorva jotf write|export|import|summary|profile
void AddJotfCommands(CLI::App& app);
// The import, summary and profile subcommands of zorva jotf.
void AddJotfImportCommands(CLI::App* jotf);

// zorva printer-papers PRINTER [--plist] [--timeout SECONDS]
void AddPrinterPapersCommand(CLI::App& app);

// zorva ppd FILE | --queue NAME [--choices KEYWORD [--check-conflicts]] [--installed]
void AddPPDCommand(CLI::App& app);

// zorva papers list|show|add|remove|use|recent
void AddPapersCommands(CLI::App& app);

// zorva print FILE --printer QUEUE --ticket TICKET [--no-job-ticket]
void AddPrintCommand(CLI::App& app);
// zorva presets list|path|save|delete
void AddPresetsCommands(CLI::App& app);

}  // namespace zorva::cli

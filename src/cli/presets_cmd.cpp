// zorva presets: the print presets the dialog saves, from a shell. A preset
// is a ticket file, so 'zorva presets path NAME' hands it to every ticket
// and jotf command.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>

#include "cli/cli_support.h"
#include "cli/commands.h"
#include "print/presets.h"

namespace zorva::cli {
namespace {

struct PresetArgs {
  std::string name;
  std::string ticket;
};

constexpr const char* kFooter =
    "Presets live in the user's configuration folder ($XDG_CONFIG_HOME/zorva/presets,\n"
    "or $ZORVA_PREFERENCES_DIR/presets), one ticket file NAME.plist each.\n"
    "\n"
    "Examples:\n"
    "  zorva presets save \"Booklet proofs\" job.plist\n"
    "  zorva jotf export \"$(zorva presets path 'Booklet proofs')\" -o job.jotf";

std::filesystem::path PathOf(const std::string& name) {
  if (std::string problem = PresetNameProblem(name); !problem.empty()) FailUsage(problem);
  const std::optional<std::filesystem::path> path = PresetPath(name);
  if (!path) FailRuntime("no configuration folder for presets (HOME is not set)");
  return *path;
}

}  // namespace

void AddPresetsCommands(CLI::App& app) {
  CLI::App* presets = app.add_subcommand("presets", "List, save and delete print presets");
  presets->require_subcommand(1);
  presets->footer(kFooter);
  auto args = std::make_shared<PresetArgs>();

  presets->add_subcommand("list", "List the presets by name")->callback([] {
    for (const std::string& name : ListPresets()) std::cout << name << "\n";
  });

  CLI::App* path = presets->add_subcommand("path", "Print the ticket file of a preset");
  path->add_option("NAME", args->name, "The preset's name")->required();
  path->callback([args] {
    const std::filesystem::path file = PathOf(args->name);
    if (!std::filesystem::exists(file)) FailRuntime("no preset named " + Shown(args->name));
    std::cout << file.string() << "\n";
  });

  CLI::App* save = presets->add_subcommand("save", "Save a ticket's settings as a preset");
  save->add_option("NAME", args->name, "The preset's name (replaced when it exists)")->required();
  save->add_option("TICKET", args->ticket, "Print-settings ticket (XML or binary property list)")
      ->required();
  save->callback([args] {
    PathOf(args->name);
    std::string error;
    if (!SavePreset(args->name, LoadTicketFile(args->ticket), &error)) FailRuntime(error);
  });

  CLI::App* remove = presets->add_subcommand("delete", "Delete a preset");
  remove->add_option("NAME", args->name, "The preset's name")->required();
  remove->callback([args] {
    PathOf(args->name);
    std::string error;
    if (!DeletePreset(args->name, &error)) FailRuntime(error);
  });
}

}  // namespace zorva::cli

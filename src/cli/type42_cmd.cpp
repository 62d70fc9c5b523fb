// zorva type42: turns a TrueType font file into the Type 42 font program sent
// to the printer with a watermark drawn in that font, so the program can be
// made, inspected and checked from a shell.
#include <CLI/CLI.hpp>

#include <memory>

#include "cli/cli_support.h"
#include "cli/commands.h"
#include "cli/type42_run.h"

namespace zorva::cli {

void AddType42Command(CLI::App& app) {
  auto args = std::make_shared<Type42Job>();
  CLI::App* cmd = app.add_subcommand("type42", "Convert a TrueType font to a Type 42 font program");
  cmd->add_option("FONT", args->font, "TrueType font file (.ttf)")->required();
  CLI::Option* nameOption = cmd->add_option(
      "--name", args->name, "Font name in the program (default: the font's PostScript name)");
  cmd->add_option("-o,--output", args->output, "Write the program to this file (default: stdout)");
  cmd->add_flag("--split-large-tables", args->splitLargeTables,
                "Cut tables larger than 65534 bytes on 4-byte boundaries so the program is "
                "always complete");
  cmd->footer(ZORVA_TYPE42_NOTES
              "Examples:\n  zorva type42 DejaVuSans.ttf -o DejaVuSans.t42\n"
              "  zorva type42 --split-large-tables --name Watermark Font.ttf > Watermark.t42");
  cmd->callback([args, nameOption] {
    try {
      if (nameOption->count() > 0) CheckType42Name(args->name, Shown);
      RunType42Job(*args, Shown);
    } catch (const Type42Failure& e) {
      throw CliError(e.code(), e.what());
    }
  });
}

}  // namespace zorva::cli

// zorva tables: the keyword tables behind the dialog's menus and the PPD
// conversions, so operators and scripts can see which number a ticket stores
// for which menu item or PPD choice.
#include <CLI/CLI.hpp>
#include <array>
#include <cstdio>
#include <iostream>
#include <memory>
#include <string>
#include <variant>

#include "cli/cli_support.h"
#include "cli/commands.h"
#include "core/bundle.h"
#include "host/keyword_tables.h"

namespace zorva::cli {
namespace {

template <class... Fs>
struct Overloaded : Fs... {
  using Fs::operator()...;
};
template <class... Fs>
Overloaded(Fs...) -> Overloaded<Fs...>;

std::string NumberText(std::int32_t value) {
  return value == kUnset ? "unset" : std::to_string(value);
}

// Hundredths of a millimetre as millimetres with two decimals.
std::string MillimetreText(std::int32_t hundredths) {
  if (hundredths == kUnset) return "unset";
  std::array<char, 32> buf{};
  std::snprintf(buf.data(), buf.size(), "%.2f", hundredths / 100.0);
  return buf.data();
}

std::string CommandText(std::uint32_t code) {
  if (code == 0) return "-";
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) {
    const auto c = static_cast<unsigned char>(code >> shift);
    if (c < 0x20 || c > 0x7e) {
      std::array<char, 16> buf{};
      std::snprintf(buf.data(), buf.size(), "0x%08x", code);
      return buf.data();
    }
    text += static_cast<char>(c);
  }
  return text;
}

std::string RowText(const char* key) {
  if (std::string_view(key) == "-") return "-";  // separators have no text
  return std::string(LocalizedString(key));
}

std::string_view KindName(const KeywordTableRef& table) {
  return std::visit(Overloaded{[](const SettingMap*) { return "setting-map"; },
                               [](const PaperSizeSettingMap*) { return "paper-size"; },
                               [](const KeywordPair*) { return "keyword-pair"; },
                               [](const MainKeyword*) { return "main-keyword"; }},
                    table);
}

int RowCount(const KeywordTableRef& table) {
  return std::visit([](auto* map) { return CountMaps(map); }, table);
}

std::string TableNameOf(const KeywordPair* choices) {
  for (const KeywordTableEntry& entry : AllKeywordTables()) {
    const auto* const* pairs = std::get_if<const KeywordPair*>(&entry.table);
    if (pairs && *pairs == choices) return entry.name;
  }
  return "?";
}

std::vector<TextRow> SettingRows(const SettingMap* map) {
  bool filtered = false;
  for (int i = 0; i < CountMaps(map); ++i) filtered = filtered || map[i].featureKey != nullptr;
  std::vector<TextRow> rows = {{"POS", "KEY", "TEXT", "VALUE", "COMMAND"}};
  if (filtered) rows[0].push_back("FEATURE");
  for (int i = 0; i < CountMaps(map); ++i) {
    const SettingMap& row = map[i];
    rows.push_back({std::to_string(i + 1), row.key, RowText(row.key), NumberText(row.value),
                    CommandText(row.command)});
    if (!filtered) continue;
    rows.back().push_back(row.featureKey == nullptr
                              ? "-"
                              : std::string(row.featureKey) + "=" +
                                    std::to_string(static_cast<int>(row.featureValue)));
  }
  return rows;
}

std::vector<TextRow> PaperSizeRows(const PaperSizeSettingMap* map) {
  std::vector<TextRow> rows = {
      {"POS", "KEY", "TEXT", "VALUE", "WIDTH-MM", "HEIGHT-MM", "WIDTH-PT", "HEIGHT-PT"}};
  for (int i = 0; i < CountMaps(map); ++i) {
    const PaperSizeSettingMap& row = map[i];
    rows.push_back({std::to_string(i + 1), row.key, RowText(row.key), NumberText(row.value),
                    MillimetreText(row.width), MillimetreText(row.height),
                    NumberText(row.widthPoints), NumberText(row.heightPoints)});
  }
  return rows;
}

std::vector<TextRow> KeywordPairRows(const KeywordPair* map) {
  std::vector<TextRow> rows = {{"POS", "CHOICE", "VALUE"}};
  for (int i = 0; i < CountMaps(map); ++i) {
    rows.push_back({std::to_string(i + 1), map[i].choice, NumberText(map[i].value)});
  }
  return rows;
}

std::vector<TextRow> MainKeywordRows(const MainKeyword* map) {
  std::vector<TextRow> rows = {{"POS", "KEYWORD", "TABLE"}};
  for (int i = 0; i < CountMaps(map); ++i) {
    rows.push_back({std::to_string(i + 1), map[i].keyword, TableNameOf(map[i].choices)});
  }
  return rows;
}

void ListTables() {
  std::vector<TextRow> rows = {{"NAME", "KIND", "ROWS"}};
  for (const KeywordTableEntry& entry : AllKeywordTables()) {
    rows.push_back(
        {entry.name, std::string(KindName(entry.table)), std::to_string(RowCount(entry.table))});
  }
  PrintColumns(std::cout, rows);
}

void ShowTable(const std::string& name) {
  const KeywordTableEntry* entry = FindKeywordTable(name);
  if (!entry) {
    FailUsage("no keyword table named " + Shown(name) + "; 'zorva tables' lists them");
  }
  PrintColumns(std::cout,
               std::visit(Overloaded{[](const SettingMap* m) { return SettingRows(m); },
                                     [](const PaperSizeSettingMap* m) { return PaperSizeRows(m); },
                                     [](const KeywordPair* m) { return KeywordPairRows(m); },
                                     [](const MainKeyword* m) { return MainKeywordRows(m); }},
                          entry->table));
}

}  // namespace

void AddTablesCommand(CLI::App& app) {
  auto name = std::make_shared<std::string>();
  CLI::App* cmd =
      app.add_subcommand("tables", "List the keyword tables, or the rows of one of them");
  cmd->add_option("NAME", *name, "Table to show, e.g. PlexMap (case does not matter)");
  cmd->footer(
      "Without NAME: every table with its kind and row count. With NAME: its rows.\n"
      "Setting maps show position, localisation key, menu text, ticket value and\n"
      "command code; the paper-size table adds the sheet size in millimetres and points;\n"
      "keyword pairs show the PPD choice and its value; MainKeywordMap shows which table\n"
      "converts each PPD keyword. \"unset\" is the printer-default value.\n\n"
      "Examples:\n  zorva tables\n  zorva tables PlexMap");
  cmd->callback([name] { name->empty() ? ListTables() : ShowTable(*name); });
}

}  // namespace zorva::cli

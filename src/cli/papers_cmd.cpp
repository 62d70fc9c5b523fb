// zorva papers: the user's named papers from the shell. list, show, add and
// remove manage the library; use puts a paper into a ticket as the job's
// paper the way the dialog's "Use In Job" does (repaired first, recorded in
// the recent list); recent prints that list.
#include <CLI/CLI.hpp>
#include <cctype>
#include <charconv>
#include <cmath>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/cli_support.h"
#include "cli/commands.h"
#include "cli/value_text.h"
#include "core/bundle.h"
#include "core/plist_io.h"
#include "core/ticket_keys.h"
#include "host/keyword_tables.h"
#include "host/setting_map.h"
#include "paper/stock_library.h"
#include "paper/stock_library_view.h"
#include "paper/stock_status.h"

namespace zorva::cli {
namespace {

constexpr const char* kLibraryNote =
    "The papers live in the preference file com.zorva.print.stocklibrary in\n"
    "$ZORVA_PREFERENCES_DIR, else $XDG_CONFIG_HOME/zorva (~/.config/zorva); until\n"
    "the first change the factory list shipped with the print features is shown.";

struct PaperArgs {
  std::string paper;  // name or UUID
  std::string ticket;
  std::string file;
  std::string name, size, type, color, grain, finish, coating, comment;
  std::optional<double> width, length;
  std::optional<std::int32_t> weight;
  bool punched = false;
  bool replace = false;
};

// ---- Values typed by users --------------------------------------------------------

// Letters and digits only, lower case: "High-Gloss" and "CoatingHighGloss"
// minus its prefix meet as "highgloss".
std::string Normalized(std::string_view text) {
  std::string out;
  for (unsigned char c : text) {
    if (std::isalnum(c)) out.push_back(static_cast<char>(std::tolower(c)));
  }
  return out;
}

std::optional<std::int32_t> Integer(std::string_view text) {
  std::int32_t value = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (ec != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

// The forms of a table key a user may type: the key, the key without the
// table's prefix or suffix, and the part before a " (" dimension note.
bool KeyMatches(std::string_view key, std::string_view typed, std::string_view affix) {
  const std::string want = Normalized(typed);
  if (want.empty()) return false;
  std::string k = Normalized(key);
  if (k == want) return true;
  const std::string a = Normalized(affix);
  if (!a.empty() && k.starts_with(a) && k.substr(a.size()) == want) return true;
  if (!a.empty() && k.ends_with(a) && k.substr(0, k.size() - a.size()) == want) return true;
  const std::size_t paren = key.find(" (");
  return paren != std::string_view::npos && Normalized(key.substr(0, paren)) == want;
}

std::optional<std::int32_t> FromSettingMap(const SettingMap* map, std::string_view typed,
                                           std::string_view affix) {
  if (auto n = Integer(typed)) return n;
  for (const SettingMap* row = map; row->key; ++row) {
    if (row->value > 0 && KeyMatches(row->key, typed, affix)) return row->value;
  }
  return std::nullopt;
}

std::int32_t SizeCode(std::string_view typed) {
  if (auto n = Integer(typed)) return *n;
  for (const PaperSizeSettingMap* row = CompleteStockSizeMap; row->key; ++row) {
    if (row->value > 0 && KeyMatches(row->key, typed, "StockSize")) return row->value;
  }
  FailUsage("unknown paper size " + Shown(typed) +
            "; give a code, A4, Letter, ... ('zorva tables CompleteStockSizeMap' lists them)");
}

std::int32_t Required(std::optional<std::int32_t> value, const char* what, std::string_view typed,
                      const char* table) {
  if (value) return *value;
  FailUsage(std::string("unknown ") + what + " " + Shown(typed) + " ('zorva tables " + table +
            "' lists them)");
}

// Hundredths of a millimetre from millimetres.
std::int32_t Hundredths(double mm, const char* what) {
  if (!(mm > 0 && mm < 10000)) FailUsage(std::string(what) + " must be between 0 and 10000 mm");
  return static_cast<std::int32_t>(std::lround(mm * 100));
}

constexpr std::int32_t kCustomTypeCode = 7;
constexpr std::int32_t kCustomColorCode = 10;
constexpr std::int32_t kSidesCoatedNone = 1;
constexpr std::int32_t kSidesCoatedBoth = 3;

void ApplyType(Stock& s, const std::string& typed) {
  if (auto code = FromSettingMap(StockTypeMap, typed, "StockType")) {
    s.setType(*code);
  } else {  // any other word names a custom type
    s.setType(kCustomTypeCode);
    s.setCustomType(typed);
  }
}

void ApplyColor(Stock& s, const std::string& typed) {
  if (auto code = FromSettingMap(StockColorMap, typed, "StockColor")) {
    s.setColor(*code);
  } else {
    s.setColor(kCustomColorCode);
    s.setCustomColor(typed);
  }
}

// "none", or a coating type with the sides after a colon ("matte",
// "glossy:front"); both sides when none are given.
void ApplyCoating(Stock& s, const std::string& typed) {
  if (Normalized(typed) == "none") {
    s.setSidesCoated(kSidesCoatedNone);
    return;
  }
  const std::size_t colon = typed.find(':');
  const std::string type = typed.substr(0, colon);
  s.setCoatingType(
      Required(FromSettingMap(CoatingTypeMap, type, "Coating"), "coating", type, "CoatingTypeMap"));
  s.setSidesCoated(kSidesCoatedBoth);
  if (colon != std::string::npos) {
    const std::string sides = typed.substr(colon + 1);
    s.setSidesCoated(Required(FromSettingMap(SidesCoatedMap, sides, "SidesCoated"), "coated sides",
                              sides, "SidesCoatedMap"));
  }
}

Stock StockFromFile(const std::string& path) {
  std::string error;
  std::optional<Value> v = ReadPropertyListFile(path, &error);
  if (!v) FailRuntime("cannot read " + Shown(path) + ": " + error);
  const Dictionary* d = v->dictionary();
  if (!d) FailRuntime(Shown(path) + " does not hold a stock dictionary");
  // A saved named-paper entry holds its stock under "Stock".
  if (const Dictionary* inner = d->getDictionary(kEntryStockKey)) d = inner;
  return Stock(d);
}

Stock StockFromArgs(const PaperArgs& a) {
  Stock s;
  if (!a.file.empty()) {
    s = StockFromFile(a.file);
  } else {
    DefaultStock(&s, JobContext::Job);
  }
  if (!a.name.empty()) s.setCustomName(a.name);
  if (!a.size.empty()) s.setSize(SizeCode(a.size));
  if (a.width) s.setWidth(Hundredths(*a.width, "--width"));
  if (a.length) s.setLength(Hundredths(*a.length, "--length"));
  if (a.weight) s.setWeight(*a.weight);
  if (!a.type.empty()) ApplyType(s, a.type);
  if (!a.color.empty()) ApplyColor(s, a.color);
  if (!a.grain.empty()) {
    s.setGrain(Required(FromSettingMap(GrainMap, a.grain, "Grain"), "grain", a.grain, "GrainMap"));
  }
  if (!a.finish.empty()) {
    s.setFinish(
        Required(FromSettingMap(FinishMap, a.finish, "Finish"), "finish", a.finish, "FinishMap"));
  }
  if (!a.coating.empty()) ApplyCoating(s, a.coating);
  if (a.punched) s.setPunched(2);
  if (!a.comment.empty()) s.setComment(a.comment);
  return s;
}

// ---- Commands ------------------------------------------------------------------------

std::string DisplayName(const StockLibrary& e) {
  return e.stock().customName().value_or("");
}

// The paper's UUID: the exact UUID, else the name by simple case folding.
std::string FindPaper(const StockLibraryList& list, const std::string& paper) {
  if (list.stockList().getDictionary(paper)) return paper;
  if (auto uuid = list.findByName(paper)) return *uuid;
  FailRuntime("no named paper " + Shown(paper) + "; 'zorva papers list' shows them");
}

void ListPapers(const PaperArgs& a) {
  StockLibraryList list;
  if (!a.ticket.empty()) markStockStatus(list, LoadTicketFile(a.ticket));
  for (const StockLibrary& e : SortedStockLibraryEntries(list, kColumnName)) {
    std::cout << e.uuid() << '\t' << e.status() << '\t' << DisplayName(e) << '\n';
  }
}

const char* StatusMeaning(std::int32_t status) {
  switch (status) {
    case kStockStatusInUse:
      return "in use by the job";
    case kStockStatusUnsupportedValue:
      return "unsupported value";
    case kStockStatusUnsupportedAttribute:
      return "unsupported attribute (finish or grain)";
    default:
      return "ok";
  }
}

void ShowPaper(const PaperArgs& a) {
  StockLibraryList list;
  const std::string uuid = FindPaper(list, a.paper);
  const StockLibrary e = *list.entry(uuid);
  PrintColumns(std::cout,
               {{"name:", QuoteString(DisplayName(e))},
                {"uuid:", uuid},
                {"status:", std::to_string(e.status()) + " (" + StatusMeaning(e.status()) + ")"}});
  DumpValue(std::cout, "stock", Value(e.stock().asTicket()));
}

void AddPaper(const PaperArgs& a) {
  StockLibrary entry;
  entry.setStock(StockFromArgs(a));
  const std::string name = DisplayName(entry);
  if (name.empty()) FailUsage("a named paper needs a name (--name, or CustomName in the file)");
  StockLibraryList list;
  if (list.isDuplicate(name)) {
    if (a.replace) {
      list.replace(entry);
      std::cout << *list.findByName(name) << '\n';
      return;
    }
    if (ReadStockLibraryViewPreferences().forceUniqueNames) {
      FailRuntime("a paper named " + Shown(name) + " exists; --replace replaces it");
    }
  }
  std::cout << list.add(entry) << '\n';
}

void RemovePaper(const PaperArgs& a) {
  StockLibraryList list;
  const std::string uuid = FindPaper(list, a.paper);
  const std::string name = DisplayName(*list.entry(uuid));
  list.remove(uuid);
  if (!list.findByName(name)) StockLibraryOrderList().remove(name);
}

void UsePaper(const PaperArgs& a) {
  Ticket ticket = LoadTicketFile(a.ticket);
  StockLibraryList list;
  const std::string uuid = FindPaper(list, a.paper);
  const StockLibrary entry = *list.entry(uuid);
  Stock stock = entry.stock();
  const bool repaired = validateAndFixStockEntry(stock);
  if (ticket.setDictionary(kTicketClientPrint, tkey::kJobLevelStock, stock.asTicket()) != 0) {
    FailRuntime("the ticket's job paper is locked");
  }
  SaveTicketFile(ticket, a.ticket);
  StockLibraryOrderList().updateOrderList(DisplayName(entry));
  std::cout << "Job paper: " << DisplayName(entry) << " (" << uuid << ")\n";
  if (repaired) {
    std::cout << "Repaired: values the printer does not offer were reset; the job's paper no\n"
                 "longer carries the paper's name.\n";
  }
}

void RecentPapers() {
  StockLibraryOrderList order;
  for (const Value& v : order.stockOrderList()) {
    if (const std::string* name = v.string()) std::cout << *name << '\n';
  }
}

// ---- Command tree ----------------------------------------------------------------------

void AddPaperArg(CLI::App* cmd, PaperArgs& a) {
  cmd->add_option("PAPER", a.paper, "The paper's name (any letter case) or UUID")->required();
}

void AddStockOptions(CLI::App* cmd, PaperArgs& a) {
  cmd->add_option("FILE", a.file, "A stock dictionary (property list) to start from");
  cmd->add_option("-n,--name", a.name, "The paper's name");
  cmd->add_option("--size", a.size, "Size: a code, a table key or a name such as A4 or Letter");
  cmd->add_option("--width", a.width, "Custom width in mm (makes the size custom)");
  cmd->add_option("--length", a.length, "Custom length in mm (makes the size custom)");
  cmd->add_option("--weight", a.weight, "Weight in g/m2");
  cmd->add_option("--type", a.type,
                  "Type: a code or name (Plain, Transparency, ...); any other "
                  "word makes a custom type");
  cmd->add_option("--color", a.color,
                  "Colour: a code or name (White, Blue, ...); any other "
                  "word makes a custom colour");
  cmd->add_option("--grain", a.grain, "Grain: a code, Y (long) or X (short)");
  cmd->add_option("--finish", a.finish,
                  "Uncoated finish: a code, Fine, Medium, Coarse, SemiCoarse");
  cmd->add_option("--coating", a.coating,
                  "none, or Glossy, HighGloss, SemiGloss, Satin or Matte, optionally with the "
                  "sides: Matte:Front (default both)");
  cmd->add_flag("--punched", a.punched, "The paper is pre-punched");
  cmd->add_option("--comment", a.comment, "A comment shown in the list");
  cmd->add_flag("--replace", a.replace,
                "When a paper of that name exists, give it this stock (it keeps its UUID)");
}

}  // namespace

void AddPapersCommands(CLI::App& app) {
  auto a = std::make_shared<PaperArgs>();
  CLI::App* group = app.add_subcommand("papers", "Manage the user's named papers");
  group->require_subcommand(1);
  group->footer(kLibraryNote);

  CLI::App* list = group->add_subcommand("list", "Print UUID<TAB>STATUS<TAB>NAME for each paper");
  list->add_option("--ticket", a->ticket, "Mark the papers this ticket's job uses (status 1)");
  list->footer(
      "Sorted by name. Status: 0 ok, 1 in use by the job, 2 holds a value the printer's\n"
      "tables do not know, 3 sets a finish or grain the printer does not offer.\n\n"
      "Example:\n  zorva papers list --ticket job.plist");
  list->callback([a] { ListPapers(*a); });

  CLI::App* show = group->add_subcommand("show", "Print one paper's status and stock");
  AddPaperArg(show, *a);
  show->footer("Example:\n  zorva papers show \"Gloss 170\"");
  show->callback([a] { ShowPaper(*a); });

  CLI::App* add = group->add_subcommand("add", "Add a paper; prints its new UUID");
  AddStockOptions(add, *a);
  add->footer(
      "Starts from FILE, or from a plain paper, and applies the options. Every paper\n"
      "added gets a new UUID. A name already in the list is added again unless the\n"
      "list forces unique names (then it fails) or --replace is given.\n\n"
      "Examples:\n"
      "  zorva papers add --name \"Gloss 170\" --size A4 --weight 170 --coating Glossy\n"
      "  zorva papers add --name Banner --width 210 --length 450 --weight 135\n"
      "  zorva papers add stock.plist --name \"Recycled 80 Blue\" --color Blue");
  add->callback([a] { AddPaper(*a); });

  CLI::App* remove = group->add_subcommand("remove", "Remove a paper");
  AddPaperArg(remove, *a);
  remove->footer("Example:\n  zorva papers remove \"Gloss 170\"");
  remove->callback([a] { RemovePaper(*a); });

  CLI::App* use = group->add_subcommand("use", "Make a paper the job's paper in a ticket");
  AddPaperArg(use, *a);
  use->add_option("TICKET", a->ticket, "The print-settings ticket file, changed in place")
      ->required();
  use->footer(
      "As \"Use In Job\" does: values the printer does not offer are reset first (and\n"
      "the job's paper then no longer carries the name), the stock goes under\n"
      "com.zorva.print.JobLevelStock and the name goes to the front of the recent list.\n\n"
      "Example:\n  zorva papers use \"gloss 170\" job.plist");
  use->callback([a] { UsePaper(*a); });

  CLI::App* recent = group->add_subcommand("recent", "Print the papers chosen last, newest first");
  recent->footer("At most 25 names, one a line.");
  recent->callback(RecentPapers);
}

}  // namespace zorva::cli

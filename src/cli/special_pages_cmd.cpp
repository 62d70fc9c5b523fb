// zorva special-pages: the covers, inserts and exception pages of a ticket
// file, edited through the same rules as the Special Pages panel (inserts kept
// in page order, a new exception range winning over what it overlaps, covers
// under booklet layout) and listed with the panel's summaries.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>
#include <system_error>

#include "cli/cli_support.h"
#include "cli/commands.h"
#include "core/bundle.h"
#include "host/keyword_tables.h"
#include "model/page_ranges.h"
#include "model/special_pages_editing.h"
#include "model/summaries.h"

namespace zorva::cli {
namespace {

// Stock fields a command may set; unset (and empty) fields are left alone.
struct StockArgs {
  std::int32_t size = kUnset;
  std::int32_t color = kUnset;
  std::int32_t type = kUnset;
  std::int32_t modulus = kUnset;
  std::int32_t punched = kUnset;
  std::int32_t weight = kUnset;
  std::int32_t sidesCoated = kUnset;
  std::int32_t coatingType = kUnset;
  std::int32_t grain = kUnset;
  std::int32_t finish = kUnset;
  std::int32_t source = kUnset;
  std::string name;
  std::string description;
  std::string customColor;
  std::string customType;
};

struct Args {
  std::string file;
  StockArgs stock;
  bool front = false;
  bool back = false;
  std::int32_t sides = 1;
  std::string pages;
  bool beforeFirst = false;
  std::int32_t quantity = 1;
  std::int32_t plex = kUnset;
  std::int32_t outputColor = kUnset;
  std::int32_t halftone = kUnset;
  std::int32_t antialiasing = kUnset;
  long long index = -1;
  bool all = false;
};

constexpr const char* kGroupFooter =
    "summary, and every command that edits, print the pages one line each:\n"
    "INDEX KIND PAGES SUMMARY (list leaves out SUMMARY). KIND is front-cover,\n"
    "insert, exception or back-cover; PAGES is the range of an exception, the\n"
    "page an insert follows (0: before page 1) or '-' for a cover. INDEX is\n"
    "what 'remove --index' takes. Inserts are one per page, at most 9999 at once.\n"
    "\n"
    "Examples:\n"
    "  zorva special-pages add-insert job.plist --pages '3, 7' --quantity 2\n"
    "  zorva special-pages add-exception job.plist --pages 10-12 --plex 2\n"
    "  zorva special-pages add-cover job.plist --front --sides 2 --weight 250\n"
    "  zorva special-pages remove job.plist --index 1";

constexpr const char* kStockFooter =
    "Stock codes are those of 'zorva tables' (CompleteStockSizeMap, WeightMap,\n"
    "...); a weight outside WeightMap is grams per square metre.";

bool FileMissing(const std::string& file) {
  std::error_code ec;
  return !std::filesystem::exists(file, ec) && !ec;
}

const char* KindName(SpecialPageKind kind) {
  switch (kind) {
    case SpecialPageKind::FrontCover:
      return "front-cover";
    case SpecialPageKind::Insert:
      return "insert";
    case SpecialPageKind::ExceptionPage:
      return "exception";
    case SpecialPageKind::BackCover:
      return "back-cover";
  }
  return "";
}

std::string PagesColumn(const SpecialPageItem& item) {
  if (const auto* e = dynamic_cast<const ExceptionPage*>(item.page)) {
    return std::to_string(e->startPage()) + "-" + std::to_string(e->endPage());
  }
  if (item.kind == SpecialPageKind::Insert) return std::to_string(item.page->startPage());
  return "-";
}

void PrintPages(const SpecialPagesContext& context, bool withSummary = true) {
  const Bundle* bundle = GetPDEBundle();
  std::vector<TextRow> rows;
  const std::vector<SpecialPageItem> items = SpecialPagesItems(context);
  for (std::size_t i = 0; i < items.size(); ++i) {
    rows.push_back({std::to_string(i), KindName(items[i].kind), PagesColumn(items[i])});
    if (withSummary) rows.back().push_back(CopySpecialPageSummary(items[i].page, bundle));
  }
  PrintColumns(std::cout, rows);
}

SpecialPagesContext Load(Ticket& ticket) {
  SpecialPagesContext context;
  SyncSpecialPages(ticket, SyncDirection::FromTicket, context);
  return context;
}

void Save(Ticket& ticket, SpecialPagesContext& context, const std::string& file) {
  const Status status = SyncSpecialPages(ticket, SyncDirection::ToTicket, context);
  if (status != kNoErr) {
    FailRuntime(file + ": cannot store the special pages (status " + std::to_string(status) +
                ", a locked item?)");
  }
  SaveTicketFile(ticket, file);
  PrintPages(context);
}

void ApplyStock(const StockArgs& a, Stock& s) {
  // Size and type before the rest, as the dialog sets them: their coupled
  // setters may reset dimensions and colour, which later options then win over.
  if (a.size != kUnset) s.setSize(a.size);
  if (a.type != kUnset) s.setType(a.type);
  if (a.color != kUnset) s.setColor(a.color);
  const std::pair<std::int32_t, void (Stock::*)(std::int32_t)> numbers[] = {
      {a.modulus, &Stock::setModulus},         {a.punched, &Stock::setPunched},
      {a.weight, &Stock::setWeight},           {a.sidesCoated, &Stock::setSidesCoated},
      {a.coatingType, &Stock::setCoatingType}, {a.grain, &Stock::setGrain},
      {a.finish, &Stock::setFinish},           {a.source, &Stock::setSource},
  };
  for (const auto& [value, setter] : numbers) {
    if (value != kUnset) (s.*setter)(value);
  }
  if (!a.name.empty()) s.setCustomName(a.name);
  if (!a.description.empty()) s.setDescription(a.description);
  if (!a.customColor.empty()) s.setCustomColor(a.customColor);
  if (!a.customType.empty()) s.setCustomType(a.customType);
}

void AddStockOptions(CLI::App* cmd, StockArgs& a) {
  const char* group = "Stock";
  cmd->add_option("--stock-size", a.size, "Size code (75 custom)")->group(group);
  cmd->add_option("--stock-color", a.color, "Colour code (10: --custom-color)")->group(group);
  cmd->add_option("--custom-color", a.customColor, "Colour name for colour 10")->group(group);
  cmd->add_option("--stock-type", a.type, "Type code (7: --custom-type)")->group(group);
  cmd->add_option("--custom-type", a.customType, "Type name for types 6 and 7")->group(group);
  cmd->add_option("--modulus", a.modulus, "Tabs per set of a tab stock")->group(group);
  cmd->add_option("--punched", a.punched, "1 not punched, 2 punched")->group(group);
  cmd->add_option("--weight", a.weight, "Weight code or grams per square metre")->group(group);
  cmd->add_option("--sides-coated", a.sidesCoated, "1 uncoated, 2 front, 3 both, 4 back")
      ->group(group);
  cmd->add_option("--coating-type", a.coatingType, "1 glossy .. 5 matte")->group(group);
  cmd->add_option("--grain", a.grain, "1 along feed, 2 across")->group(group);
  cmd->add_option("--finish", a.finish, "1 fine, 2 medium, 3 coarse, 4 semi-coarse")->group(group);
  cmd->add_option("--source", a.source, "Tray code (10: the post-process inserter)")->group(group);
  cmd->add_option("--paper-name", a.name, "The paper's name")->group(group);
  cmd->add_option("--description", a.description, "Free description")->group(group);
}

void RequireRow(const SettingMap* map, std::int32_t value, const char* option) {
  if (value != kUnset && LocalizedKeyForTicketValue(map, value) == nullptr) {
    FailUsage(std::string(option) + " " + std::to_string(value) + " is not a known code");
  }
}

[[noreturn]] void FailPages(const std::string& text, Status code) {
  auto alert = SpecialPagesAlertTextFor(code, GetPDEBundle());
  FailUsage("--pages " + Shown(text) + ": " + (alert ? alert->message : "unusable page text") +
            " (code " + std::to_string(code) + ")");
}

void List(const Args& a, bool withSummary) {
  Ticket ticket = LoadTicketFile(a.file);
  PrintPages(Load(ticket), withSummary);
}

void AddCover(const Args& a) {
  if (a.front == a.back) FailUsage("give exactly one of --front and --back");
  RequireRow(CoverSidesImagedMap, a.sides, "--sides");
  Ticket ticket = FileMissing(a.file) ? Ticket{} : LoadTicketFile(a.file);
  SpecialPagesContext context = Load(ticket);
  auto cover = std::make_unique<Cover>();
  cover->setSidesImaged(a.sides);
  ApplyStock(a.stock, *cover->stock());
  (a.front ? context.frontCover : context.backCover) = std::move(cover);
  Save(ticket, context, a.file);
}

void AddInsert(const Args& a) {
  if (a.beforeFirst == !a.pages.empty())
    FailUsage("give exactly one of --pages and --before-first");
  if (a.quantity < 1) FailUsage("--quantity must be 1 or more");
  Ticket ticket = FileMissing(a.file) ? Ticket{} : LoadTicketFile(a.file);
  SpecialPagesContext context = Load(ticket);
  Insert settings;
  settings.setQuantity(a.quantity);
  ApplyStock(a.stock, *settings.stock());
  const Status code = ApplyInsertEntry(context, a.pages, a.beforeFirst, settings);
  if (code != kNoErr) FailPages(a.pages, code);
  Save(ticket, context, a.file);
}

void AddException(const Args& a) {
  RequireRow(PlexMap, a.plex, "--plex");
  RequireRow(OutputColorMap, a.outputColor, "--output-color");
  RequireRow(HalftoneScreenMap, a.halftone, "--halftone");
  RequireRow(AntialiasingMap, a.antialiasing, "--antialiasing");
  Ticket ticket = FileMissing(a.file) ? Ticket{} : LoadTicketFile(a.file);
  SpecialPagesContext context = Load(ticket);
  ExceptionPage settings;
  settings.setPlex(a.plex);
  settings.setOutputColor(a.outputColor);
  settings.setHalftoneScreen(a.halftone);
  settings.setAntialiasing(a.antialiasing);
  ApplyStock(a.stock, *settings.stock());
  const Status code = ApplyExceptionEntry(context, a.pages, settings);
  if (code != kNoErr) FailPages(a.pages, code);
  Save(ticket, context, a.file);
}

void Remove(const Args& a) {
  if (a.all == (a.index >= 0)) FailUsage("give exactly one of --index and --all");
  Ticket ticket = LoadTicketFile(a.file);
  SpecialPagesContext context = Load(ticket);
  const auto yes = [](const DeleteConfirmation&) { return true; };
  if (a.all) {
    DeleteAllSpecialPages(context, yes, nullptr);
  } else {
    const std::vector<SpecialPageItem> items = SpecialPagesItems(context);
    if (a.index >= static_cast<long long>(items.size())) {
      FailUsage("--index " + std::to_string(a.index) + ": the ticket has " +
                std::to_string(items.size()) + " special pages");
    }
    const SpecialPageItem picked[] = {items[static_cast<std::size_t>(a.index)]};
    DeleteSelectedSpecialPages(context, picked, yes, nullptr);
  }
  Save(ticket, context, a.file);
}

CLI::App* Command(CLI::App* group, const char* name, const char* help, Args& a) {
  CLI::App* cmd = group->add_subcommand(name, help);
  cmd->add_option("TICKET", a.file, "Ticket file (property list)")->required();
  return cmd;
}

}  // namespace

void AddSpecialPagesCommands(CLI::App& app) {
  CLI::App* group =
      app.add_subcommand("special-pages", "List and edit the covers, inserts and exception pages");
  group->require_subcommand(1);
  group->footer(kGroupFooter);
  auto a = std::make_shared<Args>();

  CLI::App* list = Command(group, "list", "Print INDEX KIND PAGES of every special page", *a);
  list->callback([a] { List(*a, false); });
  CLI::App* summary = Command(group, "summary", "Print every special page with its summary", *a);
  summary->callback([a] { List(*a, true); });

  CLI::App* cover = Command(group, "add-cover", "Set the front or back cover", *a);
  cover->add_flag("--front", a->front, "The front cover");
  cover->add_flag("--back", a->back, "The back cover");
  cover->add_option("--sides", a->sides, "1 none, 2 front, 3 back, 4 both (default 1)");
  AddStockOptions(cover, a->stock);
  cover->footer(kStockFooter);
  cover->callback([a] { AddCover(*a); });

  CLI::App* insert = Command(group, "add-insert", "Add inserts after the given pages", *a);
  insert->add_option("--pages", a->pages, "Pages to follow, e.g. '3, 7-9' (one insert each)");
  insert->add_flag("--before-first", a->beforeFirst, "One insert before page 1");
  insert->add_option("--quantity", a->quantity, "Sheets per insert (default 1)");
  AddStockOptions(insert, a->stock);
  insert->footer(kStockFooter);
  insert->callback([a] { AddInsert(*a); });

  CLI::App* exception =
      Command(group, "add-exception", "Add exception pages; new ranges win over old", *a);
  exception->add_option("--pages", a->pages, "Ranges, e.g. '3-5, 9' (one page each)")->required();
  exception->add_option("--plex", a->plex, "1 one-sided, 2 two-sided, 3 short edge");
  exception->add_option("--output-color", a->outputColor, "1 grayscale, 2 colour");
  exception->add_option("--halftone", a->halftone, "1 standard, 2 detail, 3 smooth");
  exception->add_option("--antialiasing", a->antialiasing, "1 off, 2 standard");
  AddStockOptions(exception, a->stock);
  exception->footer(kStockFooter);
  exception->callback([a] { AddException(*a); });

  CLI::App* remove = Command(group, "remove", "Delete one special page or all", *a);
  remove->add_option("--index", a->index, "INDEX as printed by list");
  remove->add_flag("--all", a->all, "Every special page");
  remove->callback([a] { Remove(*a); });
}

}  // namespace zorva::cli

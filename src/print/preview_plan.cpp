// The preview's plan of a job: covers, inserted sheets, document and
// exception pages in the order the printer delivers them, and the booklet's
// imposition. Everything is read through the special-page model, so the
// preview orders and merges pages exactly as the job ticket does.
#include "print/preview_plan.h"

#include <algorithm>
#include <cctype>
#include <memory>
#include <string_view>
#include <utility>

#include "core/bundle.h"
#include "core/localization.h"
#include "core/ticket_keys.h"
#include "host/keyword_tables.h"
#include "model/special_page_lists.h"
#include "model/special_pages.h"
#include "model/summaries.h"
#include "print/job_options.h"

namespace zorva {

namespace {

// A hostile ticket must not make the preview list millions of sheets.
constexpr std::int32_t kMaxInsertSheets = 100;

constexpr std::int32_t kCoverPrintNone = 1;
constexpr std::int32_t kCoverPrintFront = 2;
constexpr std::int32_t kCoverPrintBack = 3;
constexpr std::int32_t kCoverPrintBoth = 4;

struct TintRow {
  const char* name;    // how a custom colour may spell it
  std::int32_t color;  // the stock's colour code
  std::uint8_t rgb[3];
};
// Paper colours as a screen shows them: pale, so printed marks stay legible.
constexpr TintRow kTints[] = {
    {"white", 1, {255, 255, 255}},   {"blue", 2, {190, 215, 245}},
    {"yellow", 3, {255, 245, 160}},  {"green", 4, {195, 235, 190}},
    {"pink", 5, {250, 205, 220}},    {"clear", 6, {235, 245, 250}},
    {"buff", 7, {240, 220, 170}},    {"goldenrod", 8, {240, 200, 90}},
    {"red", 9, {240, 140, 130}},     {"ivory", 11, {255, 250, 225}},
    {"gray", 12, {215, 215, 215}},   {"grey", 12, {215, 215, 215}},
    {"orange", 13, {255, 200, 140}},
};

std::string Label(const Bundle* bundle, std::string_view key) {
  return std::string(bundle != nullptr ? bundle->localizedString(key) : kStringNotFound);
}

std::string ValueLabel(const Bundle* bundle, const SettingMap* map, std::int32_t value) {
  const char* key = LocalizedKeyForTicketValue(map, value);
  return Label(bundle, key != nullptr ? key : "PrinterDefault");
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
           return std::tolower(static_cast<unsigned char>(x)) ==
                  std::tolower(static_cast<unsigned char>(y));
         });
}

// Takes the printed pages a cover carries off the front (or back) of the list.
std::int32_t TakeFront(std::vector<std::int32_t>& pages) {
  if (pages.empty()) return 0;
  const std::int32_t p = pages.front();
  pages.erase(pages.begin());
  return p;
}
std::int32_t TakeBack(std::vector<std::int32_t>& pages) {
  if (pages.empty()) return 0;
  const std::int32_t p = pages.back();
  pages.pop_back();
  return p;
}

bool IsPrintedCover(const Cover* cover) {
  return cover != nullptr && cover->sidesImaged() >= kCoverPrintNone &&
         cover->sidesImaged() <= kCoverPrintBoth;
}

PreviewItem CoverItem(PreviewItemKind kind, const Cover& cover) {
  PreviewItem item;
  item.kind = kind;
  item.stock = *cover.stock();
  item.sides = cover.sidesImaged();
  return item;
}

struct PlacedInsert {
  std::size_t anchor;  // how many of the remaining pages come before it
  const Insert* insert;
};

std::vector<PlacedInsert> PlaceInserts(const InsertList& inserts,
                                       const std::vector<std::int32_t>& pages) {
  std::vector<PlacedInsert> placed;
  for (SpecialPageList::Index i = 0; i < inserts.count(); ++i) {
    const Insert* insert = inserts.pageAtIndex(i);
    const auto after = std::upper_bound(pages.begin(), pages.end(), insert->startPage());
    placed.push_back({static_cast<std::size_t>(after - pages.begin()), insert});
  }
  // Sheets at the same place keep the list's order, which the user may have set.
  std::stable_sort(placed.begin(), placed.end(), [](const PlacedInsert& a, const PlacedInsert& b) {
    return a.anchor < b.anchor;
  });
  return placed;
}

void AddInsertSheets(std::vector<PreviewItem>& items, const Insert& insert) {
  const std::int32_t quantity = std::clamp(insert.quantity(), 0, kMaxInsertSheets);
  for (std::int32_t sheet = 1; sheet <= quantity; ++sheet) {
    PreviewItem item;
    item.kind = PreviewItemKind::Insert;
    item.stock = *insert.stock();
    item.afterPage = insert.startPage();
    item.sheet = sheet;
    item.quantity = quantity;
    items.push_back(std::move(item));
  }
}

// Pages come in ascending order and the exception list is sorted without
// overlaps, so one cursor walks both: linear in pages plus ranges.
class ExceptionCursor {
 public:
  explicit ExceptionCursor(const ExceptionPageList& list) : list_(list) {}
  const ExceptionPage* rangeOf(std::int32_t page) {
    while (next_ < list_.count() && list_.pageAtIndex(next_)->endPage() < page) ++next_;
    const ExceptionPage* e = list_.pageAtIndex(next_);
    return e != nullptr && e->startPage() <= page ? e : nullptr;
  }

 private:
  const ExceptionPageList& list_;
  SpecialPageList::Index next_ = 0;
};

PreviewItem PageItem(std::int32_t page, const Stock& jobStock, std::int32_t jobSides,
                     ExceptionCursor& exceptions) {
  PreviewItem item;
  item.frontPage = page;
  if (const ExceptionPage* e = exceptions.rangeOf(page)) {
    item.kind = PreviewItemKind::ExceptionPage;
    item.stock = *e->stock();
    item.sides = e->plex() != kUnset ? e->plex() : jobSides;
    item.rangeFirst = e->startPage();
    item.rangeLast = e->endPage();
    return item;
  }
  item.stock = jobStock;
  item.sides = jobSides;
  return item;
}

std::string PaperText(const Stock& stock, const Bundle* bundle) {
  if (stock.customName() && !stock.customName()->empty()) return *stock.customName();
  std::string out;
  for (auto text : {StockSizeText(stock, bundle), StockColorText(stock, bundle),
                    StockTypeText(stock, bundle)}) {
    if (!text || text->empty()) continue;
    if (!out.empty()) out += ", ";
    out += *text;
  }
  return out.empty() ? Label(bundle, "PrinterDefault") : out;
}

}  // namespace

bool operator==(const PreviewItem& a, const PreviewItem& b) {
  // Stocks holding a null string are unequal even to themselves; compare
  // their dictionaries instead.
  return a.kind == b.kind && a.stock.asTicket() == b.stock.asTicket() && a.sides == b.sides &&
         a.frontPage == b.frontPage && a.backPage == b.backPage && a.afterPage == b.afterPage &&
         a.sheet == b.sheet && a.quantity == b.quantity && a.rangeFirst == b.rangeFirst &&
         a.rangeLast == b.rangeLast;
}

std::vector<BookletSide> BookletImposition(std::int32_t pages) {
  std::vector<BookletSide> sides;
  if (pages <= 0) return sides;
  const std::int32_t padded = (pages + 3) / 4 * 4;
  for (std::int32_t i = 0; i < padded / 4; ++i) {
    sides.push_back({i + 1, true, padded - 2 * i, 1 + 2 * i});
    sides.push_back({i + 1, false, 2 + 2 * i, padded - 1 - 2 * i});
  }
  return sides;
}

PreviewPlan BuildPreviewPlan(const Ticket& settings, const PreviewInput& input, const PPD* ppd) {
  PreviewPlan plan;
  Ticket ticket = settings;  // the model's readers take a ticket they may write
  std::unique_ptr<Cover> front;
  std::unique_ptr<Cover> back;
  SyncCovers(ticket, SyncDirection::FromTicket, front, back);
  InsertList inserts;
  SyncSpecialPageList(ticket, SyncDirection::FromTicket, tkey::kInsertList, inserts);
  ExceptionPageList exceptions;
  SyncSpecialPageList(ticket, SyncDirection::FromTicket, tkey::kExceptionList, exceptions);
  const Stock jobStock(settings.getDictionary(tkey::kJobLevelStock));
  const std::int32_t jobSides = JobDuplexValue(settings, ppd).value_or(kUnset);
  plan.booklet = settings.getBoolean(tkey::kBookletLayout).value_or(false);
  plan.watermark = WatermarkChoiceFromTicket(settings);

  std::vector<std::int32_t> pages;
  const std::int32_t first = std::max(input.firstPage, 1);
  const std::int32_t last = std::min(input.lastPage, input.pageCount);
  for (std::int32_t p = first; p <= last; ++p) pages.push_back(p);
  plan.firstPrintedPage = pages.empty() ? 0 : pages.front();

  // A booklet's cover wraps it: the back cover is the front one's other half.
  if (plan.booklet) back.reset();

  std::vector<PreviewItem> items;
  if (IsPrintedCover(front.get())) {
    PreviewItem item = CoverItem(PreviewItemKind::FrontCover, *front);
    if (item.sides == kCoverPrintFront || item.sides == kCoverPrintBoth) {
      item.frontPage = TakeFront(pages);
    }
    if (item.sides == kCoverPrintBack || item.sides == kCoverPrintBoth) {
      item.backPage = TakeFront(pages);
    }
    items.push_back(std::move(item));
  }
  std::optional<PreviewItem> backItem;
  if (IsPrintedCover(back.get())) {
    backItem = CoverItem(PreviewItemKind::BackCover, *back);
    if (backItem->sides == kCoverPrintBack || backItem->sides == kCoverPrintBoth) {
      backItem->backPage = TakeBack(pages);
    }
    if (backItem->sides == kCoverPrintFront || backItem->sides == kCoverPrintBoth) {
      backItem->frontPage = TakeBack(pages);
    }
  }

  const std::vector<PlacedInsert> placed = PlaceInserts(inserts, pages);
  ExceptionCursor ranges(exceptions);
  auto next = placed.begin();
  for (std::size_t i = 0; i <= pages.size(); ++i) {
    for (; next != placed.end() && next->anchor == i; ++next) AddInsertSheets(items, *next->insert);
    if (i < pages.size()) items.push_back(PageItem(pages[i], jobStock, jobSides, ranges));
  }
  if (backItem) items.push_back(std::move(*backItem));
  plan.items = std::move(items);

  if (plan.booklet && !pages.empty()) {
    plan.bookletPages = pages;
    plan.bookletPages.resize((pages.size() + 3) / 4 * 4, 0);
    plan.bookletSides = BookletImposition(static_cast<std::int32_t>(pages.size()));
    for (BookletSide& side : plan.bookletSides) {
      side.left = plan.bookletPages[static_cast<std::size_t>(side.left - 1)];
      side.right = plan.bookletPages[static_cast<std::size_t>(side.right - 1)];
    }
  }
  return plan;
}

bool WatermarkPrintsOn(const PreviewPlan& plan, std::int32_t page) {
  if (!plan.watermark || page <= 0) return false;
  return !plan.watermark->firstPageOnly || page == plan.firstPrintedPage;
}

PreviewItemText DescribePreviewItem(const PreviewItem& item, const Bundle* bundle) {
  PreviewItemText text;
  text.paper = PaperText(item.stock, bundle);
  switch (item.kind) {
    case PreviewItemKind::FrontCover:
    case PreviewItemKind::BackCover:
      text.kind = Label(bundle, item.kind == PreviewItemKind::FrontCover ? "Front Cover Label"
                                                                         : "Back Cover Label");
      text.sides = ValueLabel(bundle, CoverSidesImagedMap, item.sides);
      break;
    case PreviewItemKind::Insert:
      text.kind = FormatString(
          Label(bundle, item.afterPage > 0 ? "Preview Insert After" : "Preview Insert Before"),
          {std::int64_t{item.sheet}, std::int64_t{item.quantity}, std::int64_t{item.afterPage}});
      text.sides = Label(bundle, "CoverPrintNone");
      break;
    case PreviewItemKind::DocumentPage:
      text.kind = FormatString(Label(bundle, "Preview Page"), {std::int64_t{item.frontPage}});
      text.sides = ValueLabel(bundle, PlexMap, item.sides);
      break;
    case PreviewItemKind::ExceptionPage:
      text.kind = FormatString(Label(bundle, "Preview Exception Page"),
                               {std::int64_t{item.frontPage}, std::int64_t{item.rangeFirst},
                                std::int64_t{item.rangeLast}});
      text.sides = ValueLabel(bundle, PlexMap, item.sides);
      break;
  }
  return text;
}

std::optional<std::array<std::uint8_t, 3>> StockTint(const Stock& stock) {
  for (const TintRow& row : kTints) {
    const bool match = stock.color() == kStockColorCustom
                           ? EqualsIgnoringCase(stock.customColor().value_or(""), row.name)
                           : stock.color() == row.color;
    if (match) return std::array<std::uint8_t, 3>{row.rgb[0], row.rgb[1], row.rgb[2]};
  }
  return std::nullopt;
}

}  // namespace zorva

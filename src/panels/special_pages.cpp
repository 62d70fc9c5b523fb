// The Special Pages panel's cover, menu, page-field and selection rules.
#include "panels/special_pages.h"

#include <algorithm>
#include <array>

#include "host/keyword_tables.h"
#include "model/special_page_lists.h"
#include "model/summaries.h"

namespace zorva {

bool BookletLayoutIsOn(const Ticket& ticket) {
  return ticket.getBoolean(tkey::kBookletLayout).value_or(false);
}

namespace {

std::unique_ptr<Cover>& Slot(SpecialPagesContext& context, CoverChoice side) {
  return side == CoverChoice::Back ? context.backCover : context.frontCover;
}

bool Includes(CoverChoice choice, CoverChoice side) {
  return choice == CoverChoice::Both || choice == side;
}

Cover StartingCover(const Cover* held) {
  if (held) return Cover(*held);
  Cover cover;
  DefaultStock(cover.stock(), JobContext::FrontCover);
  return cover;
}

}  // namespace

CoverEntry CoverEntryFor(const SpecialPagesContext& context, const SpecialPageItem* editing,
                         bool booklet) {
  const bool isCover = editing && (editing->kind == SpecialPageKind::FrontCover ||
                                   editing->kind == SpecialPageKind::BackCover);
  if (!isCover) {
    return {booklet ? CoverChoice::Both : CoverChoice::Front, StartingCover(nullptr)};
  }
  const bool front = editing->kind == SpecialPageKind::FrontCover;
  const Cover* mine = front ? context.frontCover.get() : context.backCover.get();
  const Cover* other = front ? context.backCover.get() : context.frontCover.get();
  CoverChoice choice = front ? CoverChoice::Front : CoverChoice::Back;
  if (booklet || (mine && other && *mine == *other)) choice = CoverChoice::Both;
  return {choice, StartingCover(mine)};
}

void ApplyCoverEntry(SpecialPagesContext& context, const CoverEntry& entry,
                     std::optional<CoverChoice> editing, bool booklet) {
  SaveUndoState(context);
  for (CoverChoice side : {CoverChoice::Front, CoverChoice::Back}) {
    if (editing && Includes(*editing, side)) Slot(context, side).reset();
  }
  const CoverChoice choice = booklet ? CoverChoice::Both : entry.choice;
  for (CoverChoice side : {CoverChoice::Front, CoverChoice::Back}) {
    if (Includes(choice, side)) Slot(context, side) = std::make_unique<Cover>(entry.cover);
  }
}

std::span<const ExceptionMenuRow> ExceptionMenuRows() {
  static constexpr std::array<ExceptionMenuRow, 5> kRows{{
      {PlexMap, &ExceptionPage::plex, &ExceptionPage::setPlex},
      {LightenDarkenMenuMap, &ExceptionPage::lightenDarken, &ExceptionPage::setLightenDarken},
      {OutputColorMap, &ExceptionPage::outputColor, &ExceptionPage::setOutputColor},
      {AntialiasingMap, &ExceptionPage::antialiasing, &ExceptionPage::setAntialiasing},
      {HalftoneScreenMap, &ExceptionPage::halftoneScreen, &ExceptionPage::setHalftoneScreen},
  }};
  return kRows;
}

std::string PageEntryText(const SpecialPage* page) {
  if (dynamic_cast<const ExceptionPage*>(page)) return SpecialPagePagesText(page, nullptr);
  if (const auto* insert = dynamic_cast<const Insert*>(page)) {
    return insert->startPage() == 0 ? std::string() : std::to_string(insert->startPage());
  }
  return std::string();
}

std::vector<SpecialPageItem> ItemsOfRows(std::span<const SpecialPageItem> rows,
                                         std::span<const int> selectedRows) {
  std::vector<SpecialPageItem> items;
  for (int row : selectedRows) {
    if (row >= 0 && static_cast<std::size_t>(row) < rows.size()) items.push_back(rows[row]);
  }
  return items;
}

std::vector<int> RowsOfItems(std::span<const SpecialPageItem> rows, SpecialPageSelection items) {
  std::vector<int> found;
  for (const SpecialPageItem& item : items) {
    const auto at = std::find(rows.begin(), rows.end(), item);
    if (at != rows.end()) found.push_back(static_cast<int>(at - rows.begin()));
  }
  return found;
}

std::vector<SpecialPageItem> SelectionToDelete(const SpecialPagesContext& context,
                                               SpecialPageSelection selection, bool booklet) {
  std::vector<SpecialPageItem> result(selection.begin(), selection.end());
  if (!booklet) return result;
  const auto has = [&](SpecialPageKind kind) {
    return std::any_of(result.begin(), result.end(),
                       [kind](const SpecialPageItem& i) { return i.kind == kind; });
  };
  const bool cover = has(SpecialPageKind::FrontCover) || has(SpecialPageKind::BackCover);
  if (cover && context.frontCover && !has(SpecialPageKind::FrontCover)) {
    result.push_back({SpecialPageKind::FrontCover, context.frontCover.get()});
  }
  if (cover && context.backCover && !has(SpecialPageKind::BackCover)) {
    result.push_back({SpecialPageKind::BackCover, context.backCover.get()});
  }
  return result;
}

}  // namespace zorva

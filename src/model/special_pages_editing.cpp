// The Special Pages panel's editing rules: undo snapshot, delete and move
// commands, the command-button rule and the dialogs' entry rules.
#include "model/special_pages_editing.h"

#include <algorithm>
#include <utility>

#include "core/bundle.h"
#include "model/page_ranges.h"

namespace zorva {
namespace {

std::unique_ptr<Cover> CloneCover(const std::unique_ptr<Cover>& cover) {
  return cover ? std::make_unique<Cover>(*cover) : nullptr;
}

template <typename List>
std::unique_ptr<List> CloneList(const List& list) {
  return std::make_unique<List>(list);
}

std::string Text(const Bundle* bundle, std::string_view key) {
  return std::string(bundle != nullptr ? bundle->localizedString(key) : kStringNotFound);
}

// The live insert a row names, or null when the row is no insert or its
// page has left the list.
const Insert* SelectedInsert(const SpecialPagesContext& context, const SpecialPageItem& item) {
  if (item.kind != SpecialPageKind::Insert) return nullptr;
  const SpecialPageList::Index i = context.inserts->indexOfPage(item.page);
  return context.inserts->pageAtIndex(i);
}

void DeleteItem(SpecialPagesContext& context, const SpecialPageItem& item) {
  switch (item.kind) {
    case SpecialPageKind::FrontCover:
      if (item.page == context.frontCover.get()) context.frontCover.reset();
      break;
    case SpecialPageKind::BackCover:
      if (item.page == context.backCover.get()) context.backCover.reset();
      break;
    case SpecialPageKind::Insert:
      context.inserts->remove(item.page);
      break;
    case SpecialPageKind::ExceptionPage:
      context.exceptionPages->remove(item.page);
      break;
  }
}

template <typename Page>
std::vector<const SpecialPage*> Views(const std::vector<std::unique_ptr<Page>>& pages) {
  std::vector<const SpecialPage*> views;
  views.reserve(pages.size());
  for (const auto& page : pages) views.push_back(page.get());
  return views;
}

// Replaces `editing` when the list holds it, else adds.
void Store(SpecialPageList& list, const SpecialPage* editing,
           const std::vector<const SpecialPage*>& pages) {
  if (editing != nullptr && list.indexOfPage(editing) >= 0) {
    list.update(editing, SpecialPageList::PageSpan(pages));
  } else {
    list.add(SpecialPageList::PageSpan(pages));
  }
}

}  // namespace

Status SyncSpecialPages(Ticket& ticket, SyncDirection direction, SpecialPagesContext& context) {
  const Status statuses[] = {
      SyncCovers(ticket, direction, context.frontCover, context.backCover),
      SyncSpecialPageList(ticket, direction, tkey::kInsertList, *context.inserts),
      SyncSpecialPageList(ticket, direction, tkey::kExceptionList, *context.exceptionPages),
  };
  for (Status s : statuses) {
    if (s != kNoErr) return s;
  }
  return kNoErr;
}

Status SaveUndoState(SpecialPagesContext& context) {
  context.savedFrontCover = CloneCover(context.frontCover);
  context.savedBackCover = CloneCover(context.backCover);
  context.savedInserts = CloneList(*context.inserts);
  context.savedExceptionPages = CloneList(*context.exceptionPages);
  return kNoErr;
}

Status PerformUndo(SpecialPagesContext& context) {
  // Every snapshot saves both lists, so without them nothing was saved; the
  // live lists are kept rather than left empty-handed.
  if (!context.savedInserts || !context.savedExceptionPages) return kNoErr;
  context.frontCover = std::move(context.savedFrontCover);
  context.backCover = std::move(context.savedBackCover);
  context.inserts = std::move(context.savedInserts);
  context.exceptionPages = std::move(context.savedExceptionPages);
  return kNoErr;
}

bool CanUndo(const SpecialPagesContext& context) {
  return context.savedFrontCover || context.savedBackCover || context.savedInserts ||
         context.savedExceptionPages;
}

std::vector<SpecialPageItem> SpecialPagesItems(const SpecialPagesContext& context) {
  std::vector<SpecialPageItem> items;
  if (context.frontCover) items.push_back({SpecialPageKind::FrontCover, context.frontCover.get()});
  for (SpecialPageList::Index i = 0; i < context.inserts->count(); ++i) {
    items.push_back({SpecialPageKind::Insert, context.inserts->pageAtIndex(i)});
  }
  for (SpecialPageList::Index i = 0; i < context.exceptionPages->count(); ++i) {
    items.push_back({SpecialPageKind::ExceptionPage, context.exceptionPages->pageAtIndex(i)});
  }
  if (context.backCover) items.push_back({SpecialPageKind::BackCover, context.backCover.get()});
  return items;
}

DeleteConfirmation DeleteConfirmationFor(bool all, const Bundle* bundle) {
  return {Text(bundle, "Delete Special Pages Title"),
          Text(bundle, all ? "Delete All Special Pages" : "Delete Selected Special Pages"),
          Text(bundle, "No Command"), Text(bundle, "Yes Command")};
}

bool DeleteSelectedSpecialPages(SpecialPagesContext& context, SpecialPageSelection selection,
                                const ConfirmDelete& confirm, const Bundle* bundle) {
  SaveUndoState(context);
  if (!confirm || !confirm(DeleteConfirmationFor(false, bundle))) return false;
  for (const SpecialPageItem& item : selection) DeleteItem(context, item);
  return true;
}

bool DeleteAllSpecialPages(SpecialPagesContext& context, const ConfirmDelete& confirm,
                           const Bundle* bundle) {
  SaveUndoState(context);
  if (!confirm || !confirm(DeleteConfirmationFor(true, bundle))) return false;
  context.frontCover.reset();
  context.backCover.reset();
  context.inserts->clear();
  context.exceptionPages->clear();
  return true;
}

int MoveSelectedInserts(SpecialPagesContext& context, SpecialPageSelection selection, bool up) {
  SaveUndoState(context);
  int moved = 0;
  for (const SpecialPageItem& item : selection) {
    const Insert* insert = SelectedInsert(context, item);
    if (insert == nullptr) continue;
    InsertList& list = *context.inserts;
    const bool done = up ? list.canPromote(insert) && list.promote(insert)
                         : list.canDemote(insert) && list.demote(insert);
    if (done) ++moved;
  }
  return moved;
}

SpecialPagesCommandState UpdateSpecialPagesCommandButtons(const SpecialPagesContext& context,
                                                          SpecialPageSelection selection) {
  SpecialPagesCommandState state;
  state.edit = selection.size() == 1;
  state.remove = !selection.empty();
  state.removeAll = !SpecialPagesItems(context).empty();
  if (!selection.empty()) {
    // Only the last selected row decides whether the move commands apply.
    const Insert* last = SelectedInsert(context, selection.back());
    state.moveUp = last != nullptr && context.inserts->canPromote(last);
    state.moveDown = last != nullptr && context.inserts->canDemote(last);
  }
  state.undo = CanUndo(context);
  return state;
}

Status MakeInsertsFromEntry(std::string_view text, bool beforeFirstPage, const Insert& settings,
                            std::vector<std::unique_ptr<Insert>>* result) {
  if (result == nullptr) return kParamErr;
  result->clear();
  std::vector<PageRange> ranges{{0, 1}};
  if (!beforeFirstPage) {
    PageRangeList parsed = CreatePageRangesBySeparatingString(text, true);
    if (parsed.code != kNoErr) return parsed.code;
    ranges = std::move(parsed.ranges);
  }
  std::int64_t total = 0;
  for (const PageRange& r : ranges) total += r.count;
  if (total > kMaxInsertsPerEntry) return kInvalidPageRanges;
  for (const PageRange& r : ranges) {
    for (std::int32_t k = 0; k < r.count; ++k) {
      auto insert = std::make_unique<Insert>(settings);
      insert->setStartPage(r.first + k);
      result->push_back(std::move(insert));
    }
  }
  return kNoErr;
}

Status MakeExceptionPagesFromEntry(std::string_view text, const ExceptionPage& settings,
                                   std::vector<std::unique_ptr<ExceptionPage>>* result) {
  if (result == nullptr) return kParamErr;
  result->clear();
  PageRangeList parsed = CreatePageRangesBySeparatingString(text, true);
  if (parsed.code != kNoErr) return parsed.code;
  const auto refused = [](const PageRange& r) { return r.first <= 0; };
  if (std::any_of(parsed.ranges.begin(), parsed.ranges.end(), refused)) {
    return kInvalidPageNumbers;
  }
  for (const PageRange& r : parsed.ranges) {
    auto page = std::make_unique<ExceptionPage>(settings);
    page->setStartPage(r.first);
    page->setEndPage(r.first + r.count - 1);
    result->push_back(std::move(page));
  }
  return kNoErr;
}

Status ApplyInsertEntry(SpecialPagesContext& context, std::string_view text, bool beforeFirstPage,
                        const Insert& settings, const Insert* editing) {
  std::vector<std::unique_ptr<Insert>> pages;
  const Status code = MakeInsertsFromEntry(text, beforeFirstPage, settings, &pages);
  if (code != kNoErr) return code;
  SaveUndoState(context);
  Store(*context.inserts, editing, Views(pages));
  return kNoErr;
}

Status ApplyExceptionEntry(SpecialPagesContext& context, std::string_view text,
                           const ExceptionPage& settings, const ExceptionPage* editing) {
  std::vector<std::unique_ptr<ExceptionPage>> pages;
  const Status code = MakeExceptionPagesFromEntry(text, settings, &pages);
  if (code != kNoErr) return code;
  SaveUndoState(context);
  Store(*context.exceptionPages, editing, Views(pages));
  return kNoErr;
}

void ResetInsert(Insert& insert) {
  DefaultStock(insert.stock(), JobContext::Insert);
  insert.setQuantity(1);
}

void ResetExceptionPage(ExceptionPage& page) {
  DefaultStock(page.stock(), JobContext::ExceptionPage);
}

}  // namespace zorva

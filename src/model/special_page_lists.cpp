// Special-page lists: ownership, the insert ordering and the exception-range
// merge, and the ticket side of covers and lists.
//
// Both lists find their insertion point by binary search so that building a
// long list (a ticket with many thousand exception ranges, say) stays close
// to linear; the results are those of walking the list from its start.
#include "model/special_page_lists.h"

#include <algorithm>

namespace zorva {

// ---- SpecialPageList -------------------------------------------------------------

SpecialPageList::SpecialPageList(const SpecialPageList& other) {
  pages_.reserve(other.pages_.size());
  for (const auto& page : other.pages_) pages_.push_back(page->clone());
}

SpecialPageList& SpecialPageList::operator=(const SpecialPageList& other) {
  if (this != &other) {
    Pages copy;
    copy.reserve(other.pages_.size());
    for (const auto& page : other.pages_) copy.push_back(page->clone());
    pages_ = std::move(copy);
  }
  return *this;
}

const SpecialPage* SpecialPageList::pageAtIndex(Index i) const {
  return i >= 0 && i < count() ? pages_[static_cast<std::size_t>(i)].get() : nullptr;
}

SpecialPageList::Index SpecialPageList::indexOfPage(const SpecialPage* page) const {
  if (!page) return -1;
  auto it =
      std::find_if(pages_.begin(), pages_.end(), [page](const auto& p) { return p.get() == page; });
  return it == pages_.end() ? -1 : it - pages_.begin();
}

bool SpecialPageList::remove(const SpecialPage* page) {
  Index i = indexOfPage(page);
  if (i < 0) return false;
  pages_.erase(pages_.begin() + i);
  return true;
}

void SpecialPageList::clear() {
  pages_.clear();
}

bool SpecialPageList::update(const SpecialPage* page, PageSpan newPages) {
  Index i = indexOfPage(page);
  if (i < 0) return false;
  // Held until the new pages are in: newPages may name the old page itself
  // (add copies the pages it is given before changing anything).
  std::unique_ptr<SpecialPage> old = std::move(pages_[static_cast<std::size_t>(i)]);
  pages_.erase(pages_.begin() + i);
  add(newPages);
  return false;
}

std::optional<Array> SpecialPageList::asTicket() const {
  if (pages_.empty()) return std::nullopt;
  Array array;
  for (const auto& page : pages_) array.push_back(Value(page->asTicket()));
  return array;
}

// The caller's pages of kind T, copied before the list changes: a caller may
// pass pages of this very list, which a merge cuts back or deletes, so each
// one is taken as it was when the call was made.
template <class T>
std::vector<std::unique_ptr<T>> SpecialPageList::ClonesOf(PageSpan pages) {
  std::vector<std::unique_ptr<T>> clones;
  clones.reserve(pages.size());
  for (const SpecialPage* page : pages) {
    if (auto* typed = dynamic_cast<const T*>(page)) clones.push_back(std::make_unique<T>(*typed));
  }
  return clones;
}

// ---- InsertList -------------------------------------------------------------------

const Insert* InsertList::pageAtIndex(Index i) const {
  return static_cast<const Insert*>(SpecialPageList::pageAtIndex(i));
}

void InsertList::place(std::unique_ptr<Insert> insert) {
  auto startsAfter = [start = insert->startPage()](const auto& p) {
    return p->startPage() > start;
  };
  auto byStart = [](const auto& a, const auto& b) { return a->startPage() < b->startPage(); };
  if (!sorted_) sorted_ = std::is_sorted(pages_.begin(), pages_.end(), byStart);
  if (sorted_ && (pages_.empty() || !startsAfter(pages_.back()))) {
    pages_.push_back(std::move(insert));  // the usual case: pages come in order
    return;
  }
  // In start-page order the first later page is found by halving; after a
  // promote or demote only the walk from the front gives the same answer.
  auto at = sorted_ ? std::partition_point(pages_.begin(), pages_.end(),
                                           [&](const auto& p) { return !startsAfter(p); })
                    : std::find_if(pages_.begin(), pages_.end(), startsAfter);
  pages_.insert(at, std::move(insert));
}

bool InsertList::add(PageSpan pages) {
  for (auto& insert : ClonesOf<Insert>(pages)) place(std::move(insert));
  return false;
}

void InsertList::fromTicket(const Array* array) {
  clear();
  sorted_ = true;
  if (!array) return;
  for (const Value& entry : *array) {
    if (const Dictionary* d = entry.dictionary()) place(std::make_unique<Insert>(d));
  }
}

std::unique_ptr<SpecialPageList> InsertList::clone() const {
  return std::make_unique<InsertList>(*this);
}

bool InsertList::canPromote(const Insert* insert) const {
  Index i = indexOfPage(insert);
  return i > 0 && pageAtIndex(i - 1)->startPage() != 0;
}

bool InsertList::promote(const Insert* insert) {
  if (!canPromote(insert)) return false;
  swapWithNext(indexOfPage(insert) - 1);
  return true;
}

bool InsertList::canDemote(const Insert* insert) const {
  Index i = indexOfPage(insert);
  return i >= 0 && i + 1 < count() && pageAtIndex(i + 1)->startPage() != 0;
}

bool InsertList::demote(const Insert* insert) {
  if (!canDemote(insert)) return false;
  swapWithNext(indexOfPage(insert));
  return true;
}

void InsertList::swapWithNext(Index i) {
  auto& a = pages_[static_cast<std::size_t>(i)];
  auto& b = pages_[static_cast<std::size_t>(i + 1)];
  if (a->startPage() != b->startPage()) sorted_ = false;
  std::swap(a, b);
}

// ---- ExceptionPageList ----------------------------------------------------------

const ExceptionPage* ExceptionPageList::pageAtIndex(Index i) const {
  return static_cast<const ExceptionPage*>(SpecialPageList::pageAtIndex(i));
}

// The list is sorted and free of overlaps, so end pages rise strictly too.
ExceptionPageList::Index ExceptionPageList::firstEndingAtOrAfter(Index from,
                                                                 std::int64_t page) const {
  auto it = std::partition_point(pages_.begin() + from, pages_.end(), [page](const auto& p) {
    return static_cast<const ExceptionPage&>(*p).endPage() < page;
  });
  return it - pages_.begin();
}

void ExceptionPageList::merge(std::unique_ptr<ExceptionPage> page) {
  const std::int32_t start = page->startPage();
  const std::int32_t end = page->endPage();
  if (end < start) return;
  if (pages_.empty() || at(count() - 1).endPage() < start) {
    pages_.push_back(std::move(page));  // the usual case: ranges come in order
    return;
  }
  // Pages before i lie wholly before the new range.
  Index i = firstEndingAtOrAfter(0, start);
  if (i < count() && at(i).startPage() < start) {
    // The new range begins inside this page: keep its head, and its tail as
    // a page of its own when the new range ends inside it too.
    ExceptionPage& head = at(i);
    std::unique_ptr<ExceptionPage> tail;
    if (end < head.endPage()) {
      tail = std::make_unique<ExceptionPage>(head);
      tail->setStartPage(end + 1);
    }
    head.setEndPage(start - 1);
    ++i;
    if (tail) {
      pages_.insert(pages_.begin() + i, std::move(tail));
      pages_.insert(pages_.begin() + i, std::move(page));
      return;
    }
  }
  // From i on every page starts at or after the new one; those ending
  // within it are covered and go, the next loses the pages they share.
  Index j = firstEndingAtOrAfter(i, std::int64_t{end} + 1);
  if (j < count() && at(j).startPage() <= end) at(j).setStartPage(end + 1);
  if (j > i) {
    pages_[static_cast<std::size_t>(i)] = std::move(page);
    pages_.erase(pages_.begin() + i + 1, pages_.begin() + j);
  } else {
    pages_.insert(pages_.begin() + i, std::move(page));
  }
}

bool ExceptionPageList::add(PageSpan pages) {
  for (auto& exception : ClonesOf<ExceptionPage>(pages)) merge(std::move(exception));
  return false;
}

void ExceptionPageList::fromTicket(const Array* array) {
  clear();
  if (!array) return;
  for (const Value& entry : *array) {
    if (const Dictionary* d = entry.dictionary()) merge(std::make_unique<ExceptionPage>(d));
  }
}

std::unique_ptr<SpecialPageList> ExceptionPageList::clone() const {
  return std::make_unique<ExceptionPageList>(*this);
}

// ---- Ticket ------------------------------------------------------------------------

namespace {

bool BookletLayout(const Ticket& ticket) {
  std::optional<bool> on = ticket.getBoolean(tkey::kBookletLayout);
  return on && *on;
}

Status WriteCovers(Ticket& ticket, const Cover* front, const Cover* back) {
  if (front) {
    ticket.setDictionary(kTicketClientPrint, tkey::kFrontCover, front->asTicket());
  } else {
    ticket.remove(tkey::kFrontCover);
  }
  // Under booklet layout one cover sheet wraps the booklet: a back cover
  // like the front one is that same sheet and is not stored twice.
  const bool sameSheet = back && front && BookletLayout(ticket) && *back == *front;
  if (!back || sameSheet) return ticket.remove(tkey::kBackCover);
  return ticket.setDictionary(kTicketClientPrint, tkey::kBackCover, back->asTicket());
}

std::unique_ptr<Cover> ReadCover(const Ticket& ticket, std::string_view key) {
  const Dictionary* d = ticket.getDictionary(key);
  return d ? std::make_unique<Cover>(d) : nullptr;
}

}  // namespace

Status SyncCovers(Ticket& ticket, SyncDirection direction, std::unique_ptr<Cover>& front,
                  std::unique_ptr<Cover>& back) {
  if (direction == SyncDirection::ToTicket) return WriteCovers(ticket, front.get(), back.get());
  front = ReadCover(ticket, tkey::kFrontCover);
  back.reset();
  if (BookletLayout(ticket)) {
    if (front) back = std::make_unique<Cover>(*front);
  } else {
    back = ReadCover(ticket, tkey::kBackCover);
  }
  return kNoErr;
}

Status SyncSpecialPageList(Ticket& ticket, SyncDirection direction, std::string_view key,
                           SpecialPageList& list) {
  if (direction == SyncDirection::FromTicket) {
    list.fromTicket(ticket.getArray(key));
    return kNoErr;
  }
  if (std::optional<Array> array = list.asTicket())
    return ticket.setArray(kTicketClientPrint, key, std::move(*array));
  return ticket.remove(key);
}

}  // namespace zorva

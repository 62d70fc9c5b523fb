// The ordered lists of special pages and how covers and lists live in the
// print-settings ticket.
//
// A list owns its pages and knows them by identity: two pages with equal
// settings are still different pages. Inserts stay in start-page order
// (equal start pages in the order they were added) until the user moves one
// by hand; exception pages are always sorted by start page with no two ranges
// overlapping, a newly added range winning over whatever it overlaps.
//
// Pages are handed out read-only so that nothing outside the list can break
// that order; to change a page, clone it, edit the clone and `update`.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "core/status.h"
#include "core/ticket.h"
#include "core/ticket_keys.h"
#include "core/value.h"
#include "model/special_pages.h"

namespace zorva {

class SpecialPageList {
 public:
  using Index = std::ptrdiff_t;
  using PageSpan = std::span<const SpecialPage* const>;

  virtual ~SpecialPageList() = default;

  Index count() const { return static_cast<Index>(pages_.size()); }
  bool empty() const { return pages_.empty(); }
  // Null when i is negative or not below count().
  virtual const SpecialPage* pageAtIndex(Index i) const;
  // By identity; -1 when the page is not in the list.
  Index indexOfPage(const SpecialPage* page) const;

  // Adds clones of the pages by the list's ordering rules; the caller keeps
  // what it passed. Pages of another kind than the list holds are skipped.
  // The pages may belong to this list: all are copied as they stand before
  // the list changes. Returns false (nothing is ever kept back).
  virtual bool add(PageSpan pages) = 0;
  bool add(std::initializer_list<const SpecialPage*> pages) { return add(PageSpan(pages)); }
  bool add(const SpecialPage& page) { return add({&page}); }

  // Removes and deletes the page; false when it is not in the list.
  bool remove(const SpecialPage* page);
  void clear();
  // Replaces the page by clones of newPages, placed by the ordering rules.
  // Nothing changes when the page is not in the list. Returns false (the old
  // page is never kept).
  bool update(const SpecialPage* page, PageSpan newPages);
  bool update(const SpecialPage* page, std::initializer_list<const SpecialPage*> newPages) {
    return update(page, PageSpan(newPages));
  }

  // The pages' dictionaries in list order; nullopt for an empty list.
  std::optional<Array> asTicket() const;
  // Clears the list, then adds a page built from every dictionary of the
  // array (other entries are skipped), so a stored list is re-sorted and
  // re-merged on every read. Null leaves the list empty.
  virtual void fromTicket(const Array* array) = 0;

  // A copy owning clones of every page, in order.
  virtual std::unique_ptr<SpecialPageList> clone() const = 0;

 protected:
  using Pages = std::vector<std::unique_ptr<SpecialPage>>;

  template <class T>
  static std::vector<std::unique_ptr<T>> ClonesOf(PageSpan pages);

  SpecialPageList() = default;
  SpecialPageList(const SpecialPageList& other);
  SpecialPageList& operator=(const SpecialPageList& other);
  SpecialPageList(SpecialPageList&&) noexcept = default;
  SpecialPageList& operator=(SpecialPageList&&) noexcept = default;

  Pages pages_;
};

class InsertList final : public SpecialPageList {
 public:
  InsertList() = default;
  InsertList(const InsertList&) = default;
  InsertList& operator=(const InsertList&) = default;
  InsertList(InsertList&&) noexcept = default;
  InsertList& operator=(InsertList&&) noexcept = default;

  const Insert* pageAtIndex(Index i) const override;

  using SpecialPageList::add;
  // Each insert goes before the first page whose start page is greater.
  bool add(PageSpan pages) override;
  void fromTicket(const Array* array) override;
  std::unique_ptr<SpecialPageList> clone() const override;

  // Moving an insert past a neighbour is allowed unless that neighbour's
  // start page is 0. Start pages are not changed, so the list may leave
  // start-page order; the user's order stands.
  bool canPromote(const Insert* insert) const;
  bool promote(const Insert* insert);  // one place towards the front
  bool canDemote(const Insert* insert) const;
  bool demote(const Insert* insert);  // one place towards the end

 private:
  void place(std::unique_ptr<Insert> insert);
  void swapWithNext(Index i);

  // Whether the pages are known to be in start-page order; while they are,
  // the insertion point is found by binary search.
  bool sorted_ = true;
};

class ExceptionPageList final : public SpecialPageList {
 public:
  ExceptionPageList() = default;
  ExceptionPageList(const ExceptionPageList&) = default;
  ExceptionPageList& operator=(const ExceptionPageList&) = default;
  ExceptionPageList(ExceptionPageList&&) noexcept = default;
  ExceptionPageList& operator=(ExceptionPageList&&) noexcept = default;

  const ExceptionPage* pageAtIndex(Index i) const override;

  using SpecialPageList::add;
  // Each new range wins: pages it covers are deleted, a page it overlaps is
  // cut back, and a page it falls inside is split (the tail is a clone with
  // all its settings). A range ending before it starts names no page and is
  // not added.
  bool add(PageSpan pages) override;
  void fromTicket(const Array* array) override;
  std::unique_ptr<SpecialPageList> clone() const override;

 private:
  ExceptionPage& at(Index i) { return static_cast<ExceptionPage&>(*pages_[i]); }
  const ExceptionPage& at(Index i) const { return static_cast<const ExceptionPage&>(*pages_[i]); }
  Index firstEndingAtOrAfter(Index from, std::int64_t page) const;
  void merge(std::unique_ptr<ExceptionPage> page);
};

enum class SyncDirection : std::int32_t { ToTicket = 0, FromTicket = 1 };

// Moves the covers between the ticket and the caller's variables. Writing
// leaves out a back cover equal to the front one under booklet layout;
// reading under booklet layout makes the back cover a copy of the front one
// and ignores the ticket's back cover. Returns the last ticket call's status.
Status SyncCovers(Ticket& ticket, SyncDirection direction, std::unique_ptr<Cover>& front,
                  std::unique_ptr<Cover>& back);

// Moves a list between the ticket key and the list: an empty list removes the
// key; reading re-adds every stored page. Returns the last ticket call's status.
Status SyncSpecialPageList(Ticket& ticket, SyncDirection direction, std::string_view key,
                           SpecialPageList& list);

}  // namespace zorva

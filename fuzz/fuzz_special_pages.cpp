// Builds stocks, colour options, special pages and the special-page lists
// from arbitrary property lists and writes them back. Whatever the input,
// nothing may crash or leak, every form must read back to itself, and an
// exception list must come out sorted and free of overlaps (inserts sorted).
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>

#include "core/plist_io.h"
#include "core/ticket.h"
#include "model/special_page_lists.h"

namespace {

using namespace zorva;

void Check(bool ok) {
  if (!ok) std::abort();
}

// Writing, reading and writing again gives the same dictionary.
template <class T>
void CheckRoundTrip(const Dictionary& form) {
  T again(&form);
  Check(again.asTicket() == form);
}

void CheckExceptions(const ExceptionPageList& list) {
  for (SpecialPageList::Index i = 0; i < list.count(); ++i) {
    const ExceptionPage* page = list.pageAtIndex(i);
    Check(page && page->startPage() <= page->endPage());
    if (i > 0) Check(list.pageAtIndex(i - 1)->endPage() < page->startPage());
  }
}

void CheckInserts(const InsertList& list) {
  for (SpecialPageList::Index i = 1; i < list.count(); ++i)
    Check(list.pageAtIndex(i - 1)->startPage() <= list.pageAtIndex(i)->startPage());
}

// A list written and read again is the same list.
void CheckListRoundTrip(const SpecialPageList& list, SpecialPageList& fresh) {
  std::optional<Array> written = list.asTicket();
  fresh.fromTicket(written ? &*written : nullptr);
  Check(fresh.asTicket() == written);
}

void OnePage(const Dictionary& d) {
  CheckRoundTrip<Stock>(Stock(&d).asTicket());
  CheckRoundTrip<FullColorOptions>(FullColorOptions(&d).asTicket());
  CheckRoundTrip<Cover>(Cover(&d).asTicket());
  CheckRoundTrip<Insert>(Insert(&d).asTicket());
  CheckRoundTrip<ExceptionPage>(ExceptionPage(&d).asTicket());
  std::optional<Dictionary> shift = ImageShiftOptions(&d).asTicket(ImageShiftForm::Job);
  Check(ImageShiftOptions(&*shift).asTicket(ImageShiftForm::Job) == shift);
}

// The lists as the panel reads them, then page by page as a user adds them.
void Lists(const Array& array) {
  ExceptionPageList exceptions;
  exceptions.fromTicket(&array);
  CheckExceptions(exceptions);
  ExceptionPageList exceptionsAgain;
  CheckListRoundTrip(exceptions, exceptionsAgain);

  InsertList inserts;
  inserts.fromTicket(&array);
  CheckInserts(inserts);
  InsertList insertsAgain;
  CheckListRoundTrip(inserts, insertsAgain);

  ExceptionPageList byHand;
  for (const Value& entry : array) {
    const Dictionary* d = entry.dictionary();
    if (!d) continue;
    OnePage(*d);
    ExceptionPage page(d);
    byHand.add(page);
    CheckExceptions(byHand);
    if (byHand.count() > 1) byHand.update(byHand.pageAtIndex(0), {&page});
    CheckExceptions(byHand);
  }
}

void Tickets(const Dictionary& root) {
  Ticket ticket = Ticket::FromDictionary(root);
  std::unique_ptr<Cover> front, back;
  SyncCovers(ticket, SyncDirection::FromTicket, front, back);
  SyncCovers(ticket, SyncDirection::ToTicket, front, back);
  InsertList inserts;
  ExceptionPageList exceptions;
  SyncSpecialPageList(ticket, SyncDirection::FromTicket, tkey::kInsertList, inserts);
  SyncSpecialPageList(ticket, SyncDirection::FromTicket, tkey::kExceptionList, exceptions);
  CheckInserts(inserts);
  CheckExceptions(exceptions);
  if (inserts.count() > 1) inserts.demote(inserts.pageAtIndex(0));
  SyncSpecialPageList(ticket, SyncDirection::ToTicket, tkey::kInsertList, inserts);
  SyncSpecialPageList(ticket, SyncDirection::ToTicket, tkey::kExceptionList, exceptions);
  if (const Array* stored = root.getArray(tkey::kExceptionList)) Lists(*stored);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  auto value = ParsePropertyList(std::span<const std::uint8_t>(data, size));
  if (!value) return 0;
  if (const Dictionary* root = value->dictionary()) {
    OnePage(*root);
    Tickets(*root);
  } else if (const Array* array = value->array()) {
    Lists(*array);
  }
  return 0;
}

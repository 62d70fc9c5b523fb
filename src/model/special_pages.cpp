// Special pages: their dictionary forms and clones.
#include "model/special_pages.h"

#include "core/ticket_keys.h"
#include "model/dictionary_fields.h"

namespace zorva {

namespace {

const Dictionary* StockEntry(const Dictionary* d) {
  return d ? d->getDictionary(tkey::kStock) : nullptr;
}

}  // namespace

// ---- SpecialPage ------------------------------------------------------------------

SpecialPage::SpecialPage(const Dictionary* d) : stock_(StockEntry(d)) {
  std::int32_t start = 0;
  if (fields::Read(d, tkey::kStartPage, start)) setStartPage(start);
}

Dictionary SpecialPage::asTicket() const {
  Dictionary d;
  d.set(tkey::kStartPage, Value(startPage_));
  d.set(tkey::kStock, Value(stock_.asTicket()));
  return d;
}

// ---- Cover ----------------------------------------------------------------------------

Cover::Cover(const Dictionary* d) : SpecialPage(d) {
  fields::Read(d, tkey::kSidesImaged, sidesImaged_);
}

Dictionary Cover::asTicket() const {
  Dictionary d = SpecialPage::asTicket();
  d.set(tkey::kSidesImaged, Value(sidesImaged_));
  return d;
}

std::unique_ptr<SpecialPage> Cover::clone() const {
  return std::make_unique<Cover>(*this);
}

bool operator==(const Cover& a, const Cover& b) {
  return a.sidesImaged_ == b.sidesImaged_ && *a.stock() == *b.stock();
}

// ---- Insert ---------------------------------------------------------------------------

Insert::Insert(const Dictionary* d) : SpecialPage(d) {
  fields::Read(d, tkey::kQuantity, quantity_);
}

Dictionary Insert::asTicket() const {
  Dictionary d = SpecialPage::asTicket();
  d.set(tkey::kQuantity, Value(quantity_));
  return d;
}

std::unique_ptr<SpecialPage> Insert::clone() const {
  return std::make_unique<Insert>(*this);
}

// ---- ExceptionPage --------------------------------------------------------------------

ExceptionPage::ExceptionPage(const Dictionary* d) : SpecialPage(d) {
  if (!d) return;
  using fields::Read;
  if (const Dictionary* shift = d->getDictionary(tkey::kPageImageShift))
    imageShift_.fromTicket(shift);
  Read(d, tkey::kEndPage, endPage_);
  colorOptions_.fromTicket(d->getDictionary(tkey::kPageFullColor));
  Read(d, tkey::kPageHalftoneScreen, halftoneScreen_);
  Read(d, tkey::kPageAntialiasing, antialiasing_);
  Read(d, tkey::kPageOutputColor, outputColor_);
  Read(d, tkey::kSidesImaged, plex_);
  Read(d, tkey::kPageLightenDarken, lightenDarken_);
}

Dictionary ExceptionPage::asTicket() const {
  using fields::PutIfSet;
  Dictionary d = SpecialPage::asTicket();
  d.set(tkey::kEndPage, Value(endPage_));
  if (auto shift = imageShift_.asTicket(ImageShiftForm::Page))
    d.set(tkey::kPageImageShift, Value(std::move(*shift)));
  PutIfSet(d, tkey::kSidesImaged, plex_);
  d.set(tkey::kPageFullColor, Value(colorOptions_.asTicket()));
  PutIfSet(d, tkey::kPageAntialiasing, antialiasing_);
  PutIfSet(d, tkey::kPageOutputColor, outputColor_);
  PutIfSet(d, tkey::kPageHalftoneScreen, halftoneScreen_);
  PutIfSet(d, tkey::kPageLightenDarken, lightenDarken_);
  return d;
}

std::unique_ptr<SpecialPage> ExceptionPage::clone() const {
  return std::make_unique<ExceptionPage>(*this);
}

}  // namespace zorva

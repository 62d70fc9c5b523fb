// Special pages: their dictionary forms and clones.
#include "model/special_pages.h"

#include "model/dictionary_fields.h"

namespace zorva {

namespace {

const Dictionary* StockEntry(const Dictionary* d) {
  return d ? d->getDictionary("Stock") : nullptr;
}

}  // namespace

// ---- SpecialPage ------------------------------------------------------------------

SpecialPage::SpecialPage(const Dictionary* d) : stock_(StockEntry(d)) {
  std::int32_t start = 0;
  if (fields::Read(d, "StartPage", start)) setStartPage(start);
}

Dictionary SpecialPage::asTicket() const {
  Dictionary d;
  d.set("StartPage", Value(startPage_));
  d.set("Stock", Value(stock_.asTicket()));
  return d;
}

// ---- Cover ----------------------------------------------------------------------------

Cover::Cover(const Dictionary* d) : SpecialPage(d) {
  fields::Read(d, "SidesImaged", sidesImaged_);
}

Dictionary Cover::asTicket() const {
  Dictionary d = SpecialPage::asTicket();
  d.set("SidesImaged", Value(sidesImaged_));
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
  fields::Read(d, "Quantity", quantity_);
}

Dictionary Insert::asTicket() const {
  Dictionary d = SpecialPage::asTicket();
  d.set("Quantity", Value(quantity_));
  return d;
}

std::unique_ptr<SpecialPage> Insert::clone() const {
  return std::make_unique<Insert>(*this);
}

// ---- ExceptionPage --------------------------------------------------------------------

ExceptionPage::ExceptionPage(const Dictionary* d) : SpecialPage(d) {
  if (!d) return;
  using fields::Read;
  if (const Dictionary* shift = d->getDictionary(kImageShiftOptionsPageKey))
    imageShift_.fromTicket(shift);
  Read(d, "EndPage", endPage_);
  colorOptions_.fromTicket(d->getDictionary("FullColorOptionsPage"));
  Read(d, "HalftoneScreen", halftoneScreen_);
  Read(d, "Antialiasing", antialiasing_);
  Read(d, "OutputColor", outputColor_);
  Read(d, "SidesImaged", plex_);
  Read(d, "LightenDarken", lightenDarken_);
}

Dictionary ExceptionPage::asTicket() const {
  using fields::PutIfSet;
  Dictionary d = SpecialPage::asTicket();
  d.set("EndPage", Value(endPage_));
  if (auto shift = imageShift_.asTicket(ImageShiftForm::Page))
    d.set(kImageShiftOptionsPageKey, Value(std::move(*shift)));
  PutIfSet(d, "SidesImaged", plex_);
  d.set("FullColorOptionsPage", Value(colorOptions_.asTicket()));
  PutIfSet(d, "Antialiasing", antialiasing_);
  PutIfSet(d, "OutputColor", outputColor_);
  PutIfSet(d, "HalftoneScreen", halftoneScreen_);
  PutIfSet(d, "LightenDarken", lightenDarken_);
  return d;
}

std::unique_ptr<SpecialPage> ExceptionPage::clone() const {
  return std::make_unique<ExceptionPage>(*this);
}

}  // namespace zorva

// ImageShiftOptions: the job and page dictionary forms.
#include "model/image_shift_options.h"

#include "core/ticket_keys.h"
#include "model/dictionary_fields.h"

namespace zorva {

std::optional<Dictionary> ImageShiftOptions::asTicket(ImageShiftForm form) const {
  // A page without a mode of its own follows the job; writing its zero
  // shifts would make the printer override the job's shift on that page.
  if (form == ImageShiftForm::Page && !hasMode()) return std::nullopt;
  Dictionary d;
  fields::PutIfSet(d, tkey::kImageShiftOption, oneSidedMode_);
  fields::PutIfSet(d, tkey::kImageShiftOption2Sided, twoSidedMode_);
  d.set(tkey::kInches, Value(inches_));
  d.set(tkey::kX1, Value(x1_));
  d.set(tkey::kY1, Value(y1_));
  d.set(tkey::kX2, Value(x2_));
  d.set(tkey::kY2, Value(y2_));
  if (fullPrecision_) d.set(tkey::kFullPrecision, Value(true));
  return d;
}

void ImageShiftOptions::fromTicket(const Dictionary* d) {
  *this = ImageShiftOptions();
  if (!d) return;
  using fields::Read;
  Read(d, tkey::kImageShiftOption, oneSidedMode_);
  Read(d, tkey::kImageShiftOption2Sided, twoSidedMode_);
  Read(d, tkey::kInches, inches_);
  Read(d, tkey::kX1, x1_);
  Read(d, tkey::kY1, y1_);
  Read(d, tkey::kX2, x2_);
  Read(d, tkey::kY2, y2_);
  Read(d, tkey::kFullPrecision, fullPrecision_);
}

}  // namespace zorva

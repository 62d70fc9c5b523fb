// ImageShiftOptions: the job and page dictionary forms.
#include "model/image_shift_options.h"

#include "model/dictionary_fields.h"

namespace zorva {

std::optional<Dictionary> ImageShiftOptions::asTicket(ImageShiftForm form) const {
  // A page without a mode of its own follows the job; writing its zero
  // shifts would make the printer override the job's shift on that page.
  if (form == ImageShiftForm::Page && !hasMode()) return std::nullopt;
  Dictionary d;
  fields::PutIfSet(d, "Option", oneSidedMode_);
  fields::PutIfSet(d, "Option2Sided", twoSidedMode_);
  d.set("Inches", Value(inches_));
  d.set("X1", Value(x1_));
  d.set("Y1", Value(y1_));
  d.set("X2", Value(x2_));
  d.set("Y2", Value(y2_));
  if (fullPrecision_) d.set("FullPrecision", Value(true));
  return d;
}

void ImageShiftOptions::fromTicket(const Dictionary* d) {
  *this = ImageShiftOptions();
  if (!d) return;
  using fields::Read;
  Read(d, "Option", oneSidedMode_);
  Read(d, "Option2Sided", twoSidedMode_);
  Read(d, "Inches", inches_);
  Read(d, "X1", x1_);
  Read(d, "Y1", y1_);
  Read(d, "X2", x2_);
  Read(d, "Y2", y2_);
  Read(d, "FullPrecision", fullPrecision_);
}

}  // namespace zorva

// ImageShiftOptions: how far the image is moved on the front and the back of
// the sheet, for the whole job or for one exception page. The image options
// panel edits the job's record; every exception page holds its own.
//
// Units: with "FullPrecision" the shifts are hundredths of a millimetre as
// stored; otherwise "Inches" non-zero means hundredths of an inch and zero
// means tenths of a millimetre. The job-ticket writer converts.
#pragma once

#include <cstdint>
#include <optional>

#include "core/value.h"

namespace zorva {

// Modes of the one-sided and the two-sided shift menus; unset follows the job
// (for a page) or the printer (for the job).
inline constexpr std::int32_t kImageShiftOff = 1;     // the image stays put
inline constexpr std::int32_t kImageShiftCustom = 2;  // X1/Y1 (and X2/Y2 on the back) apply

// Which dictionary form to make. The job's form is always written; a page's
// form exists only when the page sets a mode of its own.
enum class ImageShiftForm { Job, Page };

class ImageShiftOptions {
 public:
  ImageShiftOptions() = default;
  // Defaults, then the keys present. Null gives the defaults.
  explicit ImageShiftOptions(const Dictionary* dictionary) { fromTicket(dictionary); }

  std::int32_t oneSidedMode() const { return oneSidedMode_; }
  void setOneSidedMode(std::int32_t v) { oneSidedMode_ = v; }
  std::int32_t twoSidedMode() const { return twoSidedMode_; }
  void setTwoSidedMode(std::int32_t v) { twoSidedMode_ = v; }
  std::int32_t inches() const { return inches_; }
  void setInches(std::int32_t v) { inches_ = v; }
  // Front (side 1) and back (side 2) shifts.
  std::int32_t x1() const { return x1_; }
  void setX1(std::int32_t v) { x1_ = v; }
  std::int32_t y1() const { return y1_; }
  void setY1(std::int32_t v) { y1_ = v; }
  std::int32_t x2() const { return x2_; }
  void setX2(std::int32_t v) { x2_ = v; }
  std::int32_t y2() const { return y2_; }
  void setY2(std::int32_t v) { y2_ = v; }
  bool fullPrecision() const { return fullPrecision_; }
  void setFullPrecision(bool v) { fullPrecision_ = v; }

  // True when either mode is set.
  bool hasMode() const { return oneSidedMode_ != kUnset || twoSidedMode_ != kUnset; }

  // "Option", "Option2Sided" (when set), "Inches", "X1", "Y1", "X2", "Y2",
  // "FullPrecision" (true only). The page form is nullopt without a mode.
  std::optional<Dictionary> asTicket(ImageShiftForm form) const;
  // Resets to the defaults, then reads the keys present (null: defaults).
  void fromTicket(const Dictionary* dictionary);

  friend bool operator==(const ImageShiftOptions&, const ImageShiftOptions&) = default;

 private:
  std::int32_t oneSidedMode_ = kUnset;
  std::int32_t twoSidedMode_ = kUnset;
  std::int32_t inches_ = 1;
  std::int32_t x1_ = 0;
  std::int32_t y1_ = 0;
  std::int32_t x2_ = 0;
  std::int32_t y2_ = 0;
  bool fullPrecision_ = false;
};

}  // namespace zorva

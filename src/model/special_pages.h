// Special pages: covers, inserts and exception pages. Each is a start page and
// a stock plus what its kind adds; each turns itself into the dictionary the
// ticket keeps (and the job-ticket writer reads) and back.
//
// Pages are polymorphic and live on the heap, owned by their list (or, for
// covers, by whoever holds them); `clone()` makes an owned copy of the same
// class. Copying a page copies its stock member by member, not through the
// stock's coupled assignment.
#pragma once

#include <cstdint>
#include <memory>

#include "core/ticket_keys.h"
#include "core/value.h"
#include "model/full_color_options.h"
#include "model/image_shift_options.h"
#include "model/stock.h"

namespace zorva {

class SpecialPage {
 public:
  SpecialPage() = default;
  SpecialPage(const SpecialPage&) = default;
  SpecialPage& operator=(const SpecialPage&) = delete;  // no slicing assignments
  virtual ~SpecialPage() = default;

  // 0 when unset (for an insert: before the first page).
  std::int32_t startPage() const { return startPage_; }
  void setStartPage(std::int32_t v) { startPage_ = v; }
  const Stock* stock() const { return &stock_; }
  Stock* stock() { return &stock_; }

  // "StartPage" and "Stock", then the class's own keys.
  virtual Dictionary asTicket() const;
  virtual std::unique_ptr<SpecialPage> clone() const = 0;

 protected:
  // The stock from "Stock" (default when missing), "StartPage" when present.
  explicit SpecialPage(const Dictionary* dictionary);

 private:
  std::int32_t startPage_ = 0;
  Stock stock_;
};

class Cover : public SpecialPage {
 public:
  Cover() = default;
  explicit Cover(const Dictionary* dictionary);
  Cover(const Cover&) = default;

  // Which sides of the cover carry an image; 1 unless read otherwise.
  std::int32_t sidesImaged() const { return sidesImaged_; }
  void setSidesImaged(std::int32_t v) { sidesImaged_ = v; }

  Dictionary asTicket() const override;
  std::unique_ptr<SpecialPage> clone() const override;

  // Same printed sides and equal stocks; the start page does not count.
  friend bool operator==(const Cover& a, const Cover& b);

 private:
  std::int32_t sidesImaged_ = 1;
};

class Insert : public SpecialPage {
 public:
  Insert() = default;
  explicit Insert(const Dictionary* dictionary);
  Insert(const Insert&) = default;

  std::int32_t quantity() const { return quantity_; }
  void setQuantity(std::int32_t v) { quantity_ = v; }

  Dictionary asTicket() const override;
  std::unique_ptr<SpecialPage> clone() const override;

 private:
  std::int32_t quantity_ = 1;
};

class ExceptionPage : public SpecialPage {
 public:
  ExceptionPage() = default;
  explicit ExceptionPage(const Dictionary* dictionary);
  ExceptionPage(const ExceptionPage&) = default;

  // Last page of the range, inclusive.
  std::int32_t endPage() const { return endPage_; }
  void setEndPage(std::int32_t v) { endPage_ = v; }
  // Sides printed; kept under the same key as a cover's printed sides.
  std::int32_t plex() const { return plex_; }
  void setPlex(std::int32_t v) { plex_ = v; }
  const ImageShiftOptions& imageShift() const { return imageShift_; }
  ImageShiftOptions& imageShift() { return imageShift_; }
  const FullColorOptions& colorOptions() const { return colorOptions_; }
  FullColorOptions& colorOptions() { return colorOptions_; }
  std::int32_t antialiasing() const { return antialiasing_; }
  void setAntialiasing(std::int32_t v) { antialiasing_ = v; }
  std::int32_t outputColor() const { return outputColor_; }
  void setOutputColor(std::int32_t v) { outputColor_ = v; }
  std::int32_t halftoneScreen() const { return halftoneScreen_; }
  void setHalftoneScreen(std::int32_t v) { halftoneScreen_ = v; }
  std::int32_t lightenDarken() const { return lightenDarken_; }
  void setLightenDarken(std::int32_t v) { lightenDarken_ = v; }

  Dictionary asTicket() const override;
  std::unique_ptr<SpecialPage> clone() const override;

 private:
  std::int32_t endPage_ = 0;
  std::int32_t plex_ = kUnset;
  ImageShiftOptions imageShift_;
  FullColorOptions colorOptions_;
  std::int32_t antialiasing_ = kUnset;
  std::int32_t outputColor_ = kUnset;
  std::int32_t halftoneScreen_ = kUnset;
  std::int32_t lightenDarken_ = kUnset;
};

}  // namespace zorva

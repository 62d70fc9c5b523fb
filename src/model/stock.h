// Stock: one paper stock (size or custom dimensions, type, colour, weight,
// coating, names, tray). It is what the Paper/Output panel, every special
// page and every named paper hold, and what the job-ticket writer turns into
// media attributes. Also the two look-ups between size codes and dimensions.
//
// The setters are coupled on purpose: a standard size never carries custom
// dimensions, any custom dimension makes the size "Custom" (75), and a
// transparency is always clear. Reading a dictionary bypasses the couplings;
// assignment goes through them in a fixed order.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/value.h"

namespace zorva {

// What a stock or an option set is being edited for.
enum class JobContext : std::int32_t {
  Job = 0,  // the job's own paper
  FrontCover = 1,
  BackCover = 2,
  Insert = 3,
  ExceptionPage = 4,
};

// Size code meaning "custom size given by width and length".
inline constexpr std::int32_t kStockSizeCustom = 75;
// Type code of a transparency, and the colour it forces.
inline constexpr std::int32_t kStockTypeTransparency = 2;
inline constexpr std::int32_t kStockColorClear = 6;
// Colour code of a colour given by its name (the stock's custom colour text).
inline constexpr std::int32_t kStockColorCustom = 10;
// "SidesCoated" of a stock coated on neither side.
inline constexpr std::int32_t kStockSidesUncoated = 1;

// A string field that may be null. Null and empty differ: a null string makes
// two stocks unequal, an empty one is simply not written.
using OptionalString = std::optional<std::string>;

class Stock {
 public:
  Stock() = default;
  // Defaults, then the keys present (no coupling applied). Null gives defaults.
  explicit Stock(const Dictionary* dictionary);
  Stock(const Stock&) = default;  // member-wise
  // Through the setters, in the order the couplings require.
  Stock& operator=(const Stock& other);
  virtual ~Stock() = default;

  std::int32_t size() const { return size_; }
  void setSize(std::int32_t v);
  std::int32_t width() const { return width_; }
  void setWidth(std::int32_t v);
  std::int32_t length() const { return length_; }
  void setLength(std::int32_t v);
  std::int32_t type() const { return type_; }
  void setType(std::int32_t v);
  const OptionalString& customType() const { return customType_; }
  void setCustomType(OptionalString v) { customType_ = std::move(v); }
  std::int32_t color() const { return color_; }
  void setColor(std::int32_t v) { color_ = v; }
  const OptionalString& customColor() const { return customColor_; }
  void setCustomColor(OptionalString v) { customColor_ = std::move(v); }
  std::int32_t modulus() const { return modulus_; }
  void setModulus(std::int32_t v) { modulus_ = v; }
  std::int32_t punched() const { return punched_; }
  void setPunched(std::int32_t v) { punched_ = v; }
  std::int32_t weight() const { return weight_; }
  void setWeight(std::int32_t v) { weight_ = v; }
  const OptionalString& description() const { return description_; }
  void setDescription(OptionalString v) { description_ = std::move(v); }
  std::int32_t sidesCoated() const { return sidesCoated_; }
  void setSidesCoated(std::int32_t v) { sidesCoated_ = v; }
  std::int32_t coatingType() const { return coatingType_; }
  void setCoatingType(std::int32_t v) { coatingType_ = v; }
  std::int32_t finish() const { return finish_; }
  void setFinish(std::int32_t v) { finish_ = v; }
  std::int32_t grain() const { return grain_; }
  void setGrain(std::int32_t v) { grain_ = v; }
  const OptionalString& customName() const { return customName_; }
  void setCustomName(OptionalString v) { customName_ = std::move(v); }
  bool customNameOnly() const { return customNameOnly_; }
  void setCustomNameOnly(bool v) { customNameOnly_ = v; }
  const OptionalString& comment() const { return comment_; }
  void setComment(OptionalString v) { comment_ = std::move(v); }
  std::int32_t source() const { return source_; }
  void setSource(std::int32_t v) { source_ = v; }

  // The dictionary form kept in tickets and named-paper files.
  Dictionary asTicket() const;

  // Strings compare case-insensitively and a null string on either side makes
  // the stocks unequal (so a stock holding one is not even equal to itself).
  friend bool operator==(const Stock& a, const Stock& b);

 private:
  std::int32_t size_ = kUnset;
  std::int32_t width_ = kUnset;
  std::int32_t length_ = kUnset;
  std::int32_t type_ = kUnset;
  OptionalString customType_ = std::string();
  std::int32_t color_ = kUnset;
  OptionalString customColor_ = std::string();
  std::int32_t modulus_ = kUnset;
  std::int32_t punched_ = kUnset;
  std::int32_t weight_ = kUnset;
  OptionalString description_ = std::string();
  std::int32_t sidesCoated_ = kUnset;
  std::int32_t coatingType_ = 1;
  std::int32_t finish_ = kUnset;
  std::int32_t grain_ = kUnset;
  OptionalString customName_ = std::string();
  bool customNameOnly_ = false;
  OptionalString comment_ = std::string();
  std::int32_t source_ = kUnset;
};

// Resets the fields a dialog offers to the defaults of a context: punched
// "no" (1) for the job's own paper, unset otherwise. Leaves coating type,
// finish, grain, comment and source alone.
void DefaultStock(Stock* stock, JobContext context);

// The code of the first size-table row whose width column equals either
// argument (the length column is never compared); unset when none does.
// Hundredths of a millimetre. Not an exact match: legal gives letter.
std::int32_t GetSizeForStockDimensions(std::int32_t width, std::int32_t length);

// True and the size's dimensions (hundredths of a millimetre), or false and 0, 0.
bool GetStockDimensionsForSize(std::int32_t size, std::int32_t* width, std::int32_t* length);

}  // namespace zorva

// Stock: coupled setters, the dictionary form, assignment, equality, the
// per-context defaults and the size-table look-ups.
#include "model/stock.h"

#include "core/text.h"
#include "core/ticket_keys.h"
#include "host/keyword_tables.h"
#include "model/dictionary_fields.h"

namespace zorva {

namespace {

bool StringsEqual(const OptionalString& a, const OptionalString& b) {
  return a && b && EqualsCaseInsensitive(*a, *b);
}

}  // namespace

Stock::Stock(const Dictionary* d) {
  if (!d) return;
  using fields::Read;
  if (Read(d, tkey::kSize, size_) && size_ == kStockSizeCustom) {
    Read(d, tkey::kWidth, width_);
    Read(d, tkey::kLength, length_);
  }
  Read(d, tkey::kType, type_);
  Read(d, tkey::kCustomType, customType_);
  Read(d, tkey::kModulus, modulus_);
  Read(d, tkey::kColor, color_);
  Read(d, tkey::kCustomColor, customColor_);
  Read(d, tkey::kWeight, weight_);
  Read(d, tkey::kPunched, punched_);
  Read(d, tkey::kDescription, description_);
  if (Read(d, tkey::kSidesCoated, sidesCoated_)) Read(d, tkey::kCoatingType, coatingType_);
  Read(d, tkey::kFinish, finish_);
  Read(d, tkey::kGrain, grain_);
  Read(d, tkey::kCustomName, customName_);
  Read(d, tkey::kCustomNameOnly, customNameOnly_);
  Read(d, tkey::kCustomComment, comment_);
  Read(d, tkey::kSource, source_);
}

void Stock::setSize(std::int32_t v) {
  size_ = v;
  if (v != kStockSizeCustom) {
    setWidth(kUnset);
    setLength(kUnset);
  }
}

void Stock::setWidth(std::int32_t v) {
  width_ = v;
  if (v != kUnset) setSize(kStockSizeCustom);
}

void Stock::setLength(std::int32_t v) {
  length_ = v;
  if (v != kUnset) setSize(kStockSizeCustom);
}

void Stock::setType(std::int32_t v) {
  type_ = v;
  if (v == kStockTypeTransparency) color_ = kStockColorClear;
}

// The order matters: a later coupled setter may overwrite what an earlier
// one copied (size by the dimensions, colour by a transparency type).
Stock& Stock::operator=(const Stock& o) {
  if (this == &o) return *this;
  setSize(o.size_);
  setWidth(o.width_);
  setLength(o.length_);
  setColor(o.color_);
  setCustomColor(o.customColor_);
  setType(o.type_);
  setCustomType(o.customType_);
  setModulus(o.modulus_);
  setWeight(o.weight_);
  setPunched(o.punched_);
  setDescription(o.description_);
  setSidesCoated(o.sidesCoated_);
  setCoatingType(o.coatingType_);
  setFinish(o.finish_);
  setGrain(o.grain_);
  setCustomName(o.customName_);
  setCustomNameOnly(o.customNameOnly_);
  setComment(o.comment_);
  setSource(o.source_);
  return *this;
}

Dictionary Stock::asTicket() const {
  using fields::PutIfNonEmpty;
  using fields::PutIfSet;
  Dictionary d;
  PutIfSet(d, tkey::kSize, size_);
  if (size_ == kStockSizeCustom) {  // written even when unset
    d.set(tkey::kWidth, Value(width_));
    d.set(tkey::kLength, Value(length_));
  }
  PutIfSet(d, tkey::kType, type_);
  PutIfNonEmpty(d, tkey::kCustomType, customType_);
  PutIfSet(d, tkey::kModulus, modulus_);
  PutIfSet(d, tkey::kColor, color_);
  PutIfNonEmpty(d, tkey::kCustomColor, customColor_);
  PutIfSet(d, tkey::kWeight, weight_);
  PutIfSet(d, tkey::kPunched, punched_);
  PutIfNonEmpty(d, tkey::kDescription, description_);
  if (sidesCoated_ != kUnset) {  // the coating type is meaningless without it
    d.set(tkey::kSidesCoated, Value(sidesCoated_));
    d.set(tkey::kCoatingType, Value(coatingType_));
  }
  PutIfSet(d, tkey::kFinish, finish_);
  PutIfSet(d, tkey::kGrain, grain_);
  PutIfNonEmpty(d, tkey::kCustomName, customName_);
  if (customNameOnly_) d.set(tkey::kCustomNameOnly, Value(true));
  PutIfNonEmpty(d, tkey::kCustomComment, comment_);
  PutIfSet(d, tkey::kSource, source_);
  return d;
}

bool operator==(const Stock& a, const Stock& b) {
  return a.size_ == b.size_ && a.width_ == b.width_ && a.length_ == b.length_ &&
         a.color_ == b.color_ && a.type_ == b.type_ && a.modulus_ == b.modulus_ &&
         a.weight_ == b.weight_ && a.punched_ == b.punched_ && a.sidesCoated_ == b.sidesCoated_ &&
         a.coatingType_ == b.coatingType_ && a.finish_ == b.finish_ && a.grain_ == b.grain_ &&
         a.customNameOnly_ == b.customNameOnly_ && StringsEqual(a.customColor_, b.customColor_) &&
         StringsEqual(a.customType_, b.customType_) &&
         StringsEqual(a.description_, b.description_) &&
         StringsEqual(a.customName_, b.customName_) && StringsEqual(a.comment_, b.comment_) &&
         a.source_ == b.source_;
}

void DefaultStock(Stock* stock, JobContext context) {
  if (!stock) return;
  stock->setSize(kUnset);
  stock->setColor(kUnset);
  stock->setType(kUnset);
  stock->setPunched(context == JobContext::Job ? 1 : kUnset);
  stock->setWeight(kUnset);
  stock->setCustomType(std::string());
  stock->setCustomColor(std::string());
  stock->setDescription(std::string());
  stock->setCustomName(std::string());
  stock->setModulus(kUnset);
  stock->setCustomNameOnly(false);
  stock->setSidesCoated(kUnset);
}

std::int32_t GetSizeForStockDimensions(std::int32_t width, std::int32_t length) {
  const PaperSizeSettingMap* row = CompleteStockSizeMap;
  while (row->key && row->width != width && row->width != length) ++row;
  return row->value == 0 ? kUnset : row->value;
}

bool GetStockDimensionsForSize(std::int32_t size, std::int32_t* width, std::int32_t* length) {
  const PaperSizeSettingMap* row = CompleteStockSizeMap;
  while (row->key && row->value != size) ++row;
  const bool found = row->key != nullptr;
  if (length) *length = found ? row->height : 0;
  if (width) *width = found ? row->width : 0;
  return found;
}

}  // namespace zorva

// Value, Array and Dictionary: construction, typed views and exact number access.
#include "core/value.h"

#include <cmath>

namespace zorva {

const char* ValueTypeName(ValueType type) {
  static constexpr const char* kNames[] = {"boolean", "integer", "real",  "string",
                                           "data",    "date",    "array", "dictionary"};
  return kNames[static_cast<int>(type)];
}

// ---- Array -----------------------------------------------------------------

Array::Array(std::initializer_list<Value> items) : items_(items) {}

void Array::push_back(Value v) {
  items_.push_back(std::move(v));
}

void Array::insert(std::size_t index, Value v) {
  if (index > items_.size()) index = items_.size();
  items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(index), std::move(v));
}

void Array::erase(std::size_t index) {
  if (index < items_.size()) items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(index));
}

bool operator==(const Array& a, const Array& b) {
  return a.items_ == b.items_;
}

// ---- Dictionary --------------------------------------------------------------

Dictionary::Dictionary(std::initializer_list<std::pair<const std::string, Value>> items)
    : items_(items) {}

const Value* Dictionary::find(std::string_view key) const {
  auto it = items_.find(key);
  return it == items_.end() ? nullptr : &it->second;
}

Value* Dictionary::find(std::string_view key) {
  auto it = items_.find(key);
  return it == items_.end() ? nullptr : &it->second;
}

void Dictionary::set(std::string_view key, Value v) {
  auto it = items_.find(key);
  if (it != items_.end()) {
    it->second = std::move(v);
  } else {
    items_.emplace(std::string(key), std::move(v));
  }
}

bool Dictionary::erase(std::string_view key) {
  auto it = items_.find(key);
  if (it == items_.end()) return false;
  items_.erase(it);
  return true;
}

const std::string* Dictionary::getString(std::string_view key) const {
  const Value* v = find(key);
  return v ? v->string() : nullptr;
}

const Dictionary* Dictionary::getDictionary(std::string_view key) const {
  const Value* v = find(key);
  return v ? v->dictionary() : nullptr;
}

Dictionary* Dictionary::getDictionary(std::string_view key) {
  Value* v = find(key);
  return v ? v->dictionary() : nullptr;
}

const Array* Dictionary::getArray(std::string_view key) const {
  const Value* v = find(key);
  return v ? v->array() : nullptr;
}

Array* Dictionary::getArray(std::string_view key) {
  Value* v = find(key);
  return v ? v->array() : nullptr;
}

std::optional<bool> Dictionary::getBool(std::string_view key) const {
  const Value* v = find(key);
  return v ? v->boolean() : std::nullopt;
}

bool operator==(const Dictionary& a, const Dictionary& b) {
  return a.items_ == b.items_;
}

// ---- Value -------------------------------------------------------------------

std::optional<bool> Value::boolean() const {
  if (const bool* b = std::get_if<bool>(&v_)) return *b;
  return std::nullopt;
}

std::optional<double> Value::real() const {
  if (const auto* r = std::get_if<detail::Real>(&v_)) return r->value;
  if (const auto* i = std::get_if<std::int64_t>(&v_)) return static_cast<double>(*i);
  return std::nullopt;
}

bool Value::isSingleReal() const {
  const auto* r = std::get_if<detail::Real>(&v_);
  return r && r->single;
}

const Array* Value::array() const {
  const auto* b = std::get_if<detail::Box<Array>>(&v_);
  return b ? b->get() : nullptr;
}

Array* Value::array() {
  auto* b = std::get_if<detail::Box<Array>>(&v_);
  return b ? b->get() : nullptr;
}

const Dictionary* Value::dictionary() const {
  const auto* b = std::get_if<detail::Box<Dictionary>>(&v_);
  return b ? b->get() : nullptr;
}

Dictionary* Value::dictionary() {
  auto* b = std::get_if<detail::Box<Dictionary>>(&v_);
  return b ? b->get() : nullptr;
}

namespace {

// 2^63 as a double; every double in [-2^63, 2^63) converts to int64 exactly
// when it has no fraction.
constexpr double kTwo63 = 9223372036854775808.0;

bool RealToInt64(double d, std::int64_t& out) {
  if (!(d >= -kTwo63 && d < kTwo63)) return false;  // also rejects NaN
  out = static_cast<std::int64_t>(d);
  return true;
}

}  // namespace

bool ValueGetInt(const Value& v, std::int64_t lo, std::int64_t hi, std::int64_t& out) {
  std::int64_t i = 0;
  if (const std::int64_t* p = v.integer()) {
    i = *p;
  } else if (v.type() == ValueType::Real) {
    double d = *v.real();
    if (std::trunc(d) != d || !RealToInt64(d, i)) return false;
  } else {
    return false;
  }
  if (i < lo || i > hi) return false;
  out = i;
  return true;
}

bool ValueGetFloat(const Value& v, bool single, double& out) {
  std::optional<double> d = v.real();
  if (!d) return false;
  if (single && std::isfinite(*d) &&
      std::fabs(*d) > static_cast<double>(std::numeric_limits<float>::max()))
    return false;
  out = *d;
  return true;
}

bool Value::toInt32(std::int32_t& out) const {
  std::int64_t i = 0;
  if (const std::int64_t* p = integer()) {
    i = *p;
  } else if (type() == ValueType::Real) {
    if (!RealToInt64(std::trunc(*real()), i)) return false;
  } else {
    return false;
  }
  if (i < std::numeric_limits<std::int32_t>::min() || i > std::numeric_limits<std::int32_t>::max())
    return false;
  out = static_cast<std::int32_t>(i);
  return true;
}

bool operator==(const Value& a, const Value& b) {
  if (a.isNumber() && b.isNumber()) {
    if (a.integer() && b.integer()) return *a.integer() == *b.integer();
    return *a.real() == *b.real();
  }
  if (a.type() != b.type()) return false;
  switch (a.type()) {
    case ValueType::Boolean:
      return a.boolean() == b.boolean();
    case ValueType::String:
      return *a.string() == *b.string();
    case ValueType::Data:
      return *a.data() == *b.data();
    case ValueType::Date:
      return *a.date() == *b.date();
    case ValueType::Array:
      return *a.array() == *b.array();
    case ValueType::Dictionary:
      return *a.dictionary() == *b.dictionary();
    default:
      return false;
  }
}

}  // namespace zorva

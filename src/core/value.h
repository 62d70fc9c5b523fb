// Value: the property-list value model every ticket, preference file and job
// setting is made of. Eight kinds (boolean, integer, real, string, data, date,
// array, dictionary) with plain value semantics: copying a Value copies the
// whole tree. Dictionaries keep their keys sorted, so iteration (and every
// file we write) is deterministic.
#pragma once

#include <compare>
#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace zorva {

// "Printer default / not specified" in every 32-bit integer setting.
inline constexpr std::int32_t kUnset = std::numeric_limits<std::int32_t>::min();

class Value;
class Array;
class Dictionary;

using Data = std::vector<std::uint8_t>;

// A point in time as seconds since 2001-01-01T00:00:00Z (the property-list epoch).
struct Date {
  double seconds = 0;
  friend bool operator==(const Date&, const Date&) = default;
};

enum class ValueType { Boolean, Integer, Real, String, Data, Date, Array, Dictionary };

const char* ValueTypeName(ValueType type);

namespace detail {
// Owning pointer with deep-copy semantics; lets Value hold containers of itself.
template <class T>
class Box {
 public:
  Box() : p_(std::make_unique<T>()) {}
  explicit Box(T v) : p_(std::make_unique<T>(std::move(v))) {}
  Box(const Box& o) : p_(std::make_unique<T>(*o.p_)) {}
  Box(Box&&) noexcept = default;
  Box& operator=(const Box& o) {
    if (this != &o) p_ = std::make_unique<T>(*o.p_);
    return *this;
  }
  Box& operator=(Box&&) noexcept = default;
  T& operator*() { return *p_; }
  const T& operator*() const { return *p_; }
  T* get() { return p_.get(); }
  const T* get() const { return p_.get(); }

 private:
  std::unique_ptr<T> p_;
};

struct Real {
  double value = 0;
  bool single = false;  // stored from a 32-bit float; kept so callers can ask
};
}  // namespace detail

class Array {
 public:
  using Items = std::vector<Value>;
  Array() = default;
  Array(std::initializer_list<Value> items);

  // (Defined after Value, which must be complete for them.)
  std::size_t size() const;
  bool empty() const;
  const Value& operator[](std::size_t i) const;
  Value& operator[](std::size_t i);
  // Element i, or nullptr past the end.
  const Value* at(std::size_t i) const;
  Value* at(std::size_t i);

  void push_back(Value v);
  void insert(std::size_t index, Value v);  // index past the end appends
  void erase(std::size_t index);            // ignored past the end
  void clear();

  Items::const_iterator begin() const { return items_.begin(); }
  Items::const_iterator end() const { return items_.end(); }
  Items::iterator begin() { return items_.begin(); }
  Items::iterator end() { return items_.end(); }

  friend bool operator==(const Array& a, const Array& b);

 private:
  Items items_;
};

class Dictionary {
 public:
  using Items = std::map<std::string, Value, std::less<>>;
  Dictionary() = default;
  Dictionary(std::initializer_list<std::pair<const std::string, Value>> items);

  std::size_t size() const { return items_.size(); }
  bool empty() const { return items_.empty(); }
  bool contains(std::string_view key) const { return find(key) != nullptr; }

  // The entry under key, or nullptr. Looking up never allocates.
  const Value* find(std::string_view key) const;
  Value* find(std::string_view key);

  void set(std::string_view key, Value v);
  bool erase(std::string_view key);  // true when something was removed
  void clear() { items_.clear(); }

  // Typed views; an entry of another type counts as absent.
  const std::string* getString(std::string_view key) const;
  const Dictionary* getDictionary(std::string_view key) const;
  Dictionary* getDictionary(std::string_view key);
  const Array* getArray(std::string_view key) const;
  Array* getArray(std::string_view key);
  std::optional<bool> getBool(std::string_view key) const;

  Items::const_iterator begin() const { return items_.begin(); }
  Items::const_iterator end() const { return items_.end(); }
  Items::iterator begin() { return items_.begin(); }
  Items::iterator end() { return items_.end(); }

  friend bool operator==(const Dictionary& a, const Dictionary& b);

 private:
  Items items_;
};

// Number types a caller may ask for, as the platform's number API named them.
template <class T>
concept NumberTarget = std::same_as<T, std::int8_t> || std::same_as<T, std::int16_t> ||
    std::same_as<T, std::int32_t> || std::same_as<T, std::int64_t> || std::same_as<T, long> ||
    std::same_as<T, long long> || std::same_as<T, float> || std::same_as<T, double>;

class Value {
 public:
  Value() : v_(false) {}
  Value(bool b) : v_(b) {}  // NOLINT(google-explicit-constructor)
  template <std::integral T>
  requires(!std::same_as<T, bool> && !std::same_as<T, char>) Value(T i)
      : v_(static_cast<std::int64_t>(i)) {}          // NOLINT(google-explicit-constructor)
  Value(double d) : v_(detail::Real{d, false}) {}    // NOLINT(google-explicit-constructor)
  Value(float f) : v_(detail::Real{f, true}) {}      // NOLINT(google-explicit-constructor)
  Value(std::string s) : v_(std::move(s)) {}         // NOLINT(google-explicit-constructor)
  Value(std::string_view s) : v_(std::string(s)) {}  // NOLINT(google-explicit-constructor)
  Value(const char* s) : v_(std::string(s)) {}       // NOLINT(google-explicit-constructor)
  Value(zorva::Data d) : v_(std::move(d)) {}         // NOLINT(google-explicit-constructor)
  Value(zorva::Date d) : v_(d) {}                    // NOLINT(google-explicit-constructor)
  Value(zorva::Array a) : v_(detail::Box<zorva::Array>(std::move(a))) {}  // NOLINT
  Value(zorva::Dictionary d)                                              // NOLINT
      : v_(detail::Box<zorva::Dictionary>(std::move(d))) {}

  ValueType type() const { return static_cast<ValueType>(v_.index()); }
  bool isNumber() const { return type() == ValueType::Integer || type() == ValueType::Real; }

  // Typed views: nullptr (or nullopt) when the value is of another type.
  std::optional<bool> boolean() const;
  const std::int64_t* integer() const { return std::get_if<std::int64_t>(&v_); }
  std::optional<double> real() const;  // integers and reals, as a double
  bool isSingleReal() const;           // a real stored from a 32-bit float
  const std::string* string() const { return std::get_if<std::string>(&v_); }
  std::string* string() { return std::get_if<std::string>(&v_); }
  const zorva::Data* data() const { return std::get_if<zorva::Data>(&v_); }
  const zorva::Date* date() const { return std::get_if<zorva::Date>(&v_); }
  const zorva::Array* array() const;
  zorva::Array* array();
  const zorva::Dictionary* dictionary() const;
  zorva::Dictionary* dictionary();

  // Two rules read an integer setting, on purpose:
  //
  //  - Exact (getNumber, and DictionaryGetNumber and the job-ticket writer's
  //    ReadInt32 over it): a real 2.7, or a number beyond the target's range,
  //    counts as absent. The job-ticket writer uses it: a printer's server
  //    must never receive a value nobody chose, so a damaged or foreign
  //    setting is left out of the document rather than altered.
  //  - Truncating (toInt32, and DictionaryGetInt32 and GetIndexFromDictionary
  //    over it): a real is cut toward zero, 2.7 reads as 2; out of range
  //    still fails. The value classes (stock, special pages, colour options)
  //    and the watermark store's integer fields use it: their dictionaries
  //    were written by the platform's number objects, where an integer
  //    setting read back from a real was always truncated, and the dialog
  //    must show what the platform showed for the same file.
  //
  // Exact number access: true only for a number that converts to T without
  // loss (integers in range; reals with no fraction and in range). Strings,
  // booleans and everything else fail. `out` is untouched on failure.
  // Float targets take any finite real or integer within range, rounded.
  template <NumberTarget T>
  bool getNumber(T& out) const;

  // The value classes' rule: an integral value in range is taken, a real is
  // truncated toward zero (and must then be in range).
  bool toInt32(std::int32_t& out) const;

  friend bool operator==(const Value& a, const Value& b);

 private:
  std::variant<bool, std::int64_t, detail::Real, std::string, zorva::Data, zorva::Date,
               detail::Box<zorva::Array>, detail::Box<zorva::Dictionary>>
      v_;
};

inline std::size_t Array::size() const {
  return items_.size();
}
inline bool Array::empty() const {
  return items_.empty();
}
inline const Value& Array::operator[](std::size_t i) const {
  return items_[i];
}
inline Value& Array::operator[](std::size_t i) {
  return items_[i];
}
inline const Value* Array::at(std::size_t i) const {
  return i < items_.size() ? &items_[i] : nullptr;
}
inline Value* Array::at(std::size_t i) {
  return i < items_.size() ? &items_[i] : nullptr;
}
inline void Array::clear() {
  items_.clear();
}

// Non-template core of Value::getNumber.
bool ValueGetInt(const Value& v, std::int64_t lo, std::int64_t hi, std::int64_t& out);
bool ValueGetFloat(const Value& v, bool single, double& out);

template <NumberTarget T>
bool Value::getNumber(T& out) const {
  if constexpr (std::floating_point<T>) {
    double d = 0;
    if (!ValueGetFloat(*this, std::same_as<T, float>, d)) return false;
    out = static_cast<T>(d);
  } else {
    std::int64_t i = 0;
    if (!ValueGetInt(*this, std::numeric_limits<T>::min(), std::numeric_limits<T>::max(), i))
      return false;
    out = static_cast<T>(i);
  }
  return true;
}

}  // namespace zorva

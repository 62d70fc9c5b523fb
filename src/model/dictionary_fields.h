// Small helpers the value classes share to write and read their dictionary
// forms: numbers only when set, strings only when non-empty, and reads that
// treat an entry of the wrong type as absent.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/value.h"
#include "host/ticket_helpers.h"

namespace zorva::fields {

// Stores v as a number unless it is unset.
inline void PutIfSet(Dictionary& d, std::string_view key, std::int32_t v) {
  if (v != kUnset) d.set(key, Value(v));
}

// Stores the string when it is non-null and not empty.
inline void PutIfNonEmpty(Dictionary& d, std::string_view key,
                          const std::optional<std::string>& s) {
  if (s && !s->empty()) d.set(key, Value(*s));
}

// The value-class number rule (integral in range taken, real truncated).
inline bool Read(const Dictionary* d, std::string_view key, std::int32_t& out) {
  return DictionaryGetInt32(d, key, out);
}

// A string entry; another type counts as absent.
inline bool Read(const Dictionary* d, std::string_view key, std::optional<std::string>& out) {
  const std::string* s = d ? d->getString(key) : nullptr;
  if (!s) return false;
  out = *s;
  return true;
}

// A boolean entry; another type counts as absent.
inline bool Read(const Dictionary* d, std::string_view key, bool& out) {
  std::optional<bool> b = d ? d->getBool(key) : std::nullopt;
  if (!b) return false;
  out = *b;
  return true;
}

}  // namespace zorva::fields

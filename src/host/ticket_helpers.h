// Small helpers every panel and writer uses to read and write numbers,
// strings and nested dictionaries in ticket dictionaries. They mirror the
// platform helpers they replace: null arguments do nothing, getters return
// false and leave their output untouched, an entry of the wrong type counts
// as absent.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/value.h"

namespace zorva {

// Stores a signed 32-bit number under key.
void WriteTicketValue(Dictionary* dictionary, std::string_view key, std::int32_t value);

// True and the number as a signed index when the key holds a number that
// has an integral value in range (a real is truncated toward zero).
bool GetIndexFromDictionary(const Dictionary* dictionary, std::string_view key, std::int64_t& out);

// Stores a number of the given type (a float stays a 32-bit real).
template <NumberTarget T>
void DictionarySetNumber(Dictionary* dictionary, std::string_view key, T value) {
  if (dictionary) dictionary->set(key, Value(value));
}

// True only when the key holds a number that converts to T exactly.
template <NumberTarget T>
bool DictionaryGetNumber(const Dictionary* dictionary, std::string_view key, T& out) {
  if (!dictionary) return false;
  const Value* v = dictionary->find(key);
  return v && v->getNumber(out);
}

// The value-class reading rule: an integral value in range is taken, a real
// is truncated toward zero; anything else leaves out untouched.
bool DictionaryGetInt32(const Dictionary* dictionary, std::string_view key, std::int32_t& out);

enum class TextEncoding { UTF8, MacRoman, ISOLatin1, ISOLatin2, ISOLatin5, ShiftJIS };

// Stores a string made from a zero-terminated byte string in the encoding.
// Bytes that do not decode become U+FFFD.
void DictionarySetCString(Dictionary* dictionary, std::string_view key, const char* text,
                          TextEncoding encoding = TextEncoding::UTF8);

// Converts bytes in an encoding to UTF-8.
std::string DecodeText(std::string_view bytes, TextEncoding encoding);

// The dictionary stored under key; when there is none (or the entry is not a
// dictionary), a new empty one is stored there and returned. Owned by the parent.
Dictionary* DictionaryGetDictionaryOrCreate(Dictionary* dictionary, std::string_view key);

// Replaces XML entities: "&amp;", "&lt;", "&gt;", "&apos;", "&quot;", the
// caller's own (their definitions win over the five), and numeric character
// references ("&#38;", "&#x26;") naming a character XML allows. Anything
// else after "&" is left as it stands.
std::string XMLCreateStringByUnescapingEntities(std::string_view text,
                                                const Dictionary* extraEntities = nullptr);

}  // namespace zorva

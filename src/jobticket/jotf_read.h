// How the job-ticket writers read the settings: numbers as exact signed
// 32-bit values, booleans only as true/false, strings escaped for XML. An
// entry of the wrong type counts as absent, so a damaged ticket makes a writer
// skip (or take its default), never fail.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/value.h"

namespace zorva::jotf {

// The number under key when it converts to int32 exactly.
std::optional<std::int32_t> ReadInt32(const Dictionary* d, std::string_view key);
inline std::int32_t ReadInt32Or(const Dictionary* d, std::string_view key, std::int32_t fallback) {
  return ReadInt32(d, key).value_or(fallback);
}

// True only for the boolean true.
bool ReadTrue(const Dictionary* d, std::string_view key);

const Dictionary* ReadDictionary(const Dictionary* d, std::string_view key);
const std::string* ReadString(const Dictionary* d, std::string_view key);

// Well-formed UTF-8: the text as it is; otherwise every ill-formed byte
// becomes U+FFFD (what a conversion of platform text to UTF-8 yields).
std::string AsUtf8(std::string_view text);

// The string escaped for XML, as UTF-8; nullopt when absent.
std::optional<std::string> ReadEscaped(const Dictionary* d, std::string_view key);

// The first `limit` bytes of text (a plain byte cut, as a bounded copy does).
std::string CutBytes(std::string text, std::size_t limit);

}  // namespace zorva::jotf

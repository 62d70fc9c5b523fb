// Property-list reading (XML and binary) and writing (XML) through libplist.
// Reading is for untrusted input: bounded nesting, every failure reported as
// text, never a crash.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>

#include "core/value.h"

namespace zorva {

// Deepest nesting of arrays and dictionaries accepted on read.
// (Below the XML reader's own element limit, so whatever we read we can
// also write and read back.)
inline constexpr int kMaxPlistDepth = 200;

// Parses an XML or binary property list. On failure returns nullopt and, when
// error is given, a one-line description of what is wrong.
std::optional<Value> ParsePropertyList(std::span<const std::uint8_t> bytes,
                                       std::string* error = nullptr);
std::optional<Value> ParsePropertyList(std::string_view text, std::string* error = nullptr);

// The XML property-list form of a value (UTF-8, tab-indented, keys sorted).
std::string ToXmlPropertyList(const Value& value);

// Reads a whole file (at most kMaxFileBytes) and parses it. error gets the
// reason for I/O failures ("larger than 256 MiB", or the system's text).
std::optional<Value> ReadPropertyListFile(const std::filesystem::path& path,
                                          std::string* error = nullptr);

// Writes the XML form atomically. Returns 0 or the errno of the failure.
int WritePropertyListFile(const std::filesystem::path& path, const Value& value);

}  // namespace zorva

// Text forms of property-list values for the zorva tool: how a value is shown
// to a person (the indented dump), printed alone for scripts, and parsed back
// from a command-line argument. The plain forms round-trip: what `get` prints
// is what `set` accepts for the same type.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/value.h"

namespace zorva::cli {

// The kinds a command-line value may be asked to be. Auto guesses from the text.
enum class ValueKind { Auto, Number, Integer, Real, String, Bool, Date, Data, Dict, Array };

// "bool", "integer", "real", "string", "data", "date", "array", "dict": the
// same names the --type option takes.
std::string_view TypeLabel(ValueType type);
// "an array", "a dict": the label for use in a sentence.
std::string TypeWithArticle(ValueType type);

// Parses a --type name; nullopt when unknown.
std::optional<ValueKind> ValueKindFromName(std::string_view name);
// Every accepted --type name, in the order help lists them.
std::span<const std::string_view> ValueKindNames();

// Turns an argument into a value of the kind asked for. On failure nullopt
// and a one-line reason in *error.
std::optional<Value> ParseValueText(std::string_view text, ValueKind kind, std::string* error);

// Why text cannot go into a property-list file as it stands (not UTF-8, or a
// control character XML cannot carry), or an empty string when it can.
std::string UnstorableTextReason(std::string_view text);

// Shortest text that reads back as the same double.
std::string FormatReal(double d);

// "YYYY-MM-DDTHH:MM:SSZ" (fractions of a second dropped). Dates outside the
// years 1 to 9999 are shown as seconds from the property-list epoch.
std::string FormatDate(Date date);
std::optional<Date> ParseDate(std::string_view text);

std::string EncodeBase64(std::span<const std::uint8_t> bytes);
// Accepts white space anywhere and missing padding; rejects anything else.
std::optional<Data> DecodeBase64(std::string_view text);

// A double-quoted form with \" \\ \n \t \r and \xNN escapes, one line always.
std::string QuoteString(std::string_view text);

// "N bytes: 0a1b2c3d ..." with at most maxBytes shown.
std::string DataPreview(const Data& data, std::size_t maxBytes = 16);

// The value alone, as `ticket get` prints it: numbers, strings, true/false,
// base64 data and ISO dates as text; arrays and dictionaries as an XML
// property list. Always ends in a newline.
std::string PlainText(const Value& value);

// The readable dump: "label: type value", children indented two spaces.
void DumpValue(std::ostream& out, std::string_view label, const Value& value, int depth = 0);

// A dictionary key for the dump: as it is when unambiguous, else quoted.
std::string ShownKey(std::string_view key);

}  // namespace zorva::cli

// Localised string tables and the format syntax of their texts.
//
// Tables are gettext PO files: msgid is the key, msgstr the text. A format
// holds "%@" or "%s" (a string argument), "%d", "%ld", "%i" or "%u" (an
// integer), "%f" (a real, six decimals), "%%" (a percent sign), and the
// positional forms "%1$@", "%2$d" so a translation may reorder arguments.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace zorva {

using StringTable = std::map<std::string, std::string, std::less<>>;

// Parses PO text. Entries with an empty msgstr (untranslated) and the header
// entry (empty msgid) are left out. Returns nullopt with "line N: reason" in
// *error for malformed text.
std::optional<StringTable> ParsePoStrings(std::string_view text, std::string* error = nullptr);

using FormatArg = std::variant<std::int64_t, double, std::string_view>;

// Fills a format with arguments. A directive whose argument is missing or of
// the wrong kind is kept as it stands, so a bad translation shows its markers
// instead of crashing.
std::string FormatString(std::string_view format, const std::vector<FormatArg>& args);

}  // namespace zorva

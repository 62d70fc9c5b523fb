// The text of a PPD in the encoding its *LanguageEncoding names. libcups hands
// every option and choice text over as UTF-8, converted by its own reading of
// that keyword (a missing one read as Latin-1, "ISOLatin5" as ISO 8859-5,
// anything unknown as UTF-8). The product reads PPDs by its own table
// instead, so the texts are taken back to the file's bytes and decoded again.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/ticket_helpers.h"

namespace zorva {

// The product's table: "ISOLatin1", "ISOLatin2", "ISOLatin5", "JIS83-RKSJ",
// "UTF-8"/"UTF8" by exact comparison; anything else, or none, is Mac Roman.
TextEncoding EncodingForLanguageEncoding(std::optional<std::string_view> languageEncoding);

// A text as libcups gave it, turned into UTF-8 by the product's table.
std::string PPDTextToUtf8(std::string_view cupsText,
                          std::optional<std::string_view> languageEncoding);

}  // namespace zorva

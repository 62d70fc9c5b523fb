// The PostScript name a font gives itself (name ID 6 of its "name" table),
// used as the default name of its Type 42 program. Only printable ASCII other
// than the PostScript delimiters survives, so a hostile font cannot smuggle
// program text into the "/FontName" line.
#include <optional>
#include <string_view>

#include "watermarks/font_cursor.h"
#include "watermarks/type42.h"

namespace zorva {
namespace {

constexpr std::uint16_t kPostScriptNameId = 6;
constexpr std::uint16_t kPlatformUnicode = 0;
constexpr std::uint16_t kPlatformMacintosh = 1;
constexpr std::uint16_t kPlatformWindows = 3;

struct NameRecord {
  std::uint16_t platform = 0;
  std::uint16_t encoding = 0;
  std::uint16_t length = 0;
  std::uint16_t offset = 0;
};

bool IsPostScriptNameChar(std::uint32_t c) {
  constexpr std::string_view kDelimiters = "[](){}<>/%";
  return c >= 33 && c <= 126 && kDelimiters.find(static_cast<char>(c)) == std::string_view::npos;
}

// Windows records in UTF-16BE (and Unicode-platform ones), Macintosh ones
// in single bytes; preferred in that order, Macintosh Roman only.
int Preference(const NameRecord& r) {
  if (r.platform == kPlatformWindows && (r.encoding == 0 || r.encoding == 1 || r.encoding == 10)) {
    return 3;
  }
  if (r.platform == kPlatformMacintosh && r.encoding == 0) return 2;
  if (r.platform == kPlatformUnicode) return 1;
  return 0;
}

std::optional<NameRecord> BestRecord(FontCursor records, std::uint16_t count) {
  std::optional<NameRecord> best;
  for (std::uint16_t i = 0; i < count; ++i) {
    NameRecord r;
    r.platform = records.U16();
    r.encoding = records.U16();
    records.Skip(2);  // language
    const std::uint16_t nameId = records.U16();
    r.length = records.U16();
    r.offset = records.U16();
    if (nameId != kPostScriptNameId || Preference(r) == 0) continue;
    if (!best || Preference(r) > Preference(*best)) best = r;
  }
  return best;
}

std::string Decode(FontCursor text, const NameRecord& r) {
  const bool wide = r.platform != kPlatformMacintosh;
  std::string name;
  for (std::uint16_t i = 0; i + (wide ? 1 : 0) < r.length; i += wide ? 2 : 1) {
    const std::uint32_t c = wide ? text.U16() : text.U8();
    if (IsPostScriptNameChar(c)) name += static_cast<char>(c);
  }
  return name;
}

}  // namespace

std::string ReadPostScriptName(std::span<const std::uint8_t> font) {
  try {
    const std::vector<TableRecord> directory = ReadTableDirectory(font);
    const TableRecord* table = find_table("name", directory);
    if (!table) return {};
    FontCursor c = FontCursor(font).At(std::uint64_t{table->offset} + 2, "\"name\" table");
    const std::uint16_t count = c.U16();
    const std::uint64_t strings = std::uint64_t{table->offset} + c.U16();
    const std::optional<NameRecord> record = BestRecord(c, count);
    if (!record) return {};
    return Decode(c.At(strings + record->offset, "PostScript name"), *record);
  } catch (const FontFormatError&) {
    return {};
  }
}

}  // namespace zorva

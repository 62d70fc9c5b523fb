// TrueType to Type 42 conversion (see type42.h). Everything the program
// needs is read and checked first; only then is text appended, so a font that
// is refused leaves the output buffer as it was. The hex body, which is most
// of the output, is sized exactly and encoded four bytes at a time.
#include "watermarks/type42.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstring>
#include <ostream>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "watermarks/font_cursor.h"
#include "watermarks/glyph_lists.h"

namespace zorva {
namespace {

constexpr std::uint32_t kHeadMagic = 0x5F0F3CF5;
constexpr std::uint32_t kPostFormat2 = 0x00020000;
constexpr std::size_t kMacNameCount = 258;
constexpr std::size_t kMaxFontNameBytes = 511;
constexpr std::string_view kNotdef = ".notdef";
constexpr std::string_view kMalformedPrefix = "DEBUG: Malformed TrueType file - ";

// Ends a conversion before anything is written. Only two refusals are ever
// written to the diagnostic stream, a missing vital table and a bad magic
// number, in the words printers' tools have always logged; every other
// refusal is silent there and says why only in the result, for the caller's
// own message.
struct Refusal {
  std::string message;
  bool diagnose = false;
};

struct FontFacts {
  std::int32_t version = 0;  // 16.16 fixed
  std::int32_t revision = 0;
  std::uint32_t minMem = 0;
  std::uint32_t maxMem = 0;
  std::array<std::int32_t, 4> bbox{};  // divided by units per em, 16.16 fixed
  std::uint16_t glyphCount = 0;
  bool hasGlyphNames = false;
  std::vector<std::string_view> glyphNames;
  std::array<std::string_view, 256> encoding{};
  std::vector<std::uint64_t> splitPoints;  // sorted, unique
};

struct Piece {
  std::uint64_t start = 0;
  std::uint64_t end = 0;
};

struct SfntsPlan {
  std::vector<Piece> pieces;
  bool stopped = false;
  std::uint64_t stopOffset = 0;
};

// Names are C strings in the program: a name stops at its first NUL.
std::string_view UpToNul(std::string_view text) {
  return text.substr(0, text.find('\0'));
}

std::string_view AsText(std::span<const std::uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// At most kMaxFontNameBytes bytes, not cutting a UTF-8 sequence in two.
std::string_view FontNameText(std::string_view name) {
  name = UpToNul(name);
  if (name.size() <= kMaxFontNameBytes) return name;
  std::size_t cut = kMaxFontNameBytes;
  while (cut > 0 && (static_cast<unsigned char>(name[cut]) & 0xC0) == 0x80) --cut;
  return name.substr(0, cut);
}

const TableRecord& RequireTable(std::span<const TableRecord> directory, std::string_view tag) {
  const TableRecord* table = find_table(tag, directory);
  if (!table) throw Refusal{"missing vital table.", true};
  return *table;
}

// Glyph names of a "post" 2.0 table: indices below 258 name a Macintosh
// standard glyph, the others the Pascal strings after the index array.
std::vector<std::string_view> ReadGlyphNames(FontCursor post, std::uint16_t glyphCount) {
  FontCursor c = post.At(post.position() + 32, "\"post\" glyph name table");
  const std::uint16_t count = c.U16();
  if (count != glyphCount) {
    throw Refusal{"\"post\" names " + std::to_string(count) + " glyphs but \"maxp\" has " +
                  std::to_string(glyphCount)};
  }
  std::vector<std::uint16_t> indices(count);
  std::size_t extraCount = 0;
  for (std::uint16_t& index : indices) {
    index = c.U16();
    if (index >= kMacNameCount) extraCount = std::max<std::size_t>(extraCount, index - 257);
  }
  std::vector<std::string_view> extra;
  extra.reserve(extraCount);
  while (extra.size() < extraCount) {
    const std::uint8_t length = c.U8();
    extra.push_back(UpToNul(AsText(c.Bytes(length))));
  }
  std::vector<std::string_view> names(count);
  for (std::size_t g = 0; g < count; ++g) {
    names[g] = indices[g] < kMacNameCount ? macGlyphEncoding[indices[g]]
                                          : extra[indices[g] - kMacNameCount];
  }
  return names;
}

// The standard encoding's code of each of its names (".notdef" left out).
const std::unordered_map<std::string_view, std::uint8_t>& StandardCodes() {
  static const auto* const codes = [] {
    auto* map = new std::unordered_map<std::string_view, std::uint8_t>();
    for (std::size_t code = 0; code < StandardEncodings.size(); ++code) {
      if (StandardEncodings[code] != kNotdef) {
        map->emplace(StandardEncodings[code], static_cast<std::uint8_t>(code));
      }
    }
    return map;
  }();
  return *codes;
}

// Codes whose standard name the font lacks take glyph 0's name; then every
// glyph not yet encoded takes the first ".notdef" code from 32 upwards.
std::array<std::string_view, 256> BuildEncoding(const std::vector<std::string_view>& names) {
  std::array<bool, 256> inFont{};
  bool hasNotdef = false;
  const auto& standardCodes = StandardCodes();
  for (std::string_view name : names) {
    if (name == kNotdef) hasNotdef = true;
    if (const auto it = standardCodes.find(name); it != standardCodes.end()) {
      inFont[it->second] = true;
    }
  }
  std::array<std::string_view, 256> encoding = StandardEncodings;
  const std::string_view fallback = names.empty() ? kNotdef : names.front();
  for (std::size_t code = 0; code < encoding.size(); ++code) {
    const bool kept = encoding[code] == kNotdef ? hasNotdef : inFont[code];
    if (!kept) encoding[code] = fallback;
  }
  std::unordered_set<std::string_view> encoded(encoding.begin(), encoding.end(), 1024);
  std::size_t code = 32;
  for (std::string_view name : names) {
    if (encoded.contains(name)) continue;
    while (code < encoding.size() && encoding[code] != kNotdef) ++code;
    if (code == encoding.size()) break;
    encoding[code] = name;
    encoded.insert(name);
  }
  return encoding;
}

// Where an sfnts string may end: every table start, and every glyph start in
// "glyf" that falls on a 4-byte boundary.
std::vector<std::uint64_t> SplitPoints(const FontCursor& font,
                                       std::span<const TableRecord> directory,
                                       std::uint16_t glyphCount, bool longLoca, bool alignedOnly) {
  std::vector<std::uint64_t> points;
  for (const TableRecord& table : directory) {
    if (!alignedOnly || table.offset % 4 == 0) points.push_back(table.offset);
  }
  std::sort(points.begin(), points.end());
  const auto tableCount = static_cast<std::ptrdiff_t>(points.size());
  const TableRecord* loca = find_table("loca", directory);
  const TableRecord* glyf = find_table("glyf", directory);
  if (loca && glyf) {
    FontCursor c = font.At(loca->offset, "\"loca\" table");
    points.reserve(points.size() + glyphCount);
    for (std::uint32_t g = 0; g < glyphCount; ++g) {
      const std::uint64_t start = longLoca ? c.U32() : std::uint64_t{c.U16()} * 2;
      const std::uint64_t point = std::uint64_t{glyf->offset} + start;
      if (point % 4 == 0) points.push_back(point);
    }
  }
  // Glyph starts normally come in order already; only a lying "loca" needs a sort.
  const auto glyphs = points.begin() + tableCount;
  if (!std::is_sorted(glyphs, points.end())) std::sort(glyphs, points.end());
  std::inplace_merge(points.begin(), glyphs, points.end());
  points.erase(std::unique(points.begin(), points.end()), points.end());
  return points;
}

// What the program takes from "head".
struct HeadFields {
  std::int32_t version = 0;
  std::int32_t revision = 0;
  std::uint16_t unitsPerEm = 0;
  std::array<std::int16_t, 4> box{};
  bool longLoca = false;
};

HeadFields ReadHead(FontCursor h) {
  HeadFields head;
  head.version = h.I32();
  head.revision = h.I32();
  h.Skip(4);
  if (h.U32() != kHeadMagic) throw Refusal{"Bad magic number", true};
  h.Skip(2);
  head.unitsPerEm = h.U16();
  h.Skip(16);
  for (std::int16_t& v : head.box) v = h.I16();
  h.Skip(6);
  head.longLoca = h.I16() != 0;
  return head;
}

void ReadPost(FontCursor p, FontFacts& facts) {
  const FontCursor table = p;
  const std::uint32_t format = p.U32();
  p.Skip(12);
  facts.minMem = p.U32();
  facts.maxMem = p.U32();
  if (format == kPostFormat2) {
    facts.hasGlyphNames = true;
    facts.glyphNames = ReadGlyphNames(table, facts.glyphCount);
  }
}

FontFacts ReadFacts(std::span<const std::uint8_t> bytes, const Type42Options& options) {
  const FontCursor font(bytes);
  const std::vector<TableRecord> directory = ReadTableDirectory(bytes);
  const TableRecord& maxp = RequireTable(directory, "maxp");
  const TableRecord& head = RequireTable(directory, "head");
  const TableRecord& post = RequireTable(directory, "post");
  const TableRecord& name = RequireTable(directory, "name");

  const HeadFields h = ReadHead(font.At(head.offset, "\"head\" table"));
  FontFacts facts;
  facts.version = h.version;
  facts.revision = h.revision;
  facts.glyphCount = font.At(std::uint64_t{maxp.offset} + 4, "\"maxp\" table").U16();
  ReadPost(font.At(post.offset, "\"post\" table"), facts);
  const std::uint16_t nameFormat = font.At(name.offset, "\"name\" table").U16();
  if (nameFormat != 0) {
    throw Refusal{"\"name\" table format is " + std::to_string(nameFormat) + ", not 0"};
  }
  if (h.unitsPerEm == 0) throw Refusal{"units per em is 0"};
  for (std::size_t i = 0; i < h.box.size(); ++i) {
    // 16.16 fixed point: shifted left 16, divided, truncated toward 0.
    facts.bbox[i] = static_cast<std::int32_t>(std::int64_t{h.box[i]} * 65536 / h.unitsPerEm);
  }
  facts.encoding = facts.hasGlyphNames ? BuildEncoding(facts.glyphNames) : StandardEncodings;
  facts.splitPoints =
      SplitPoints(font, directory, facts.glyphCount, h.longLoca, options.splitLargeTables);
  return facts;
}

// The strings of the sfnts array; stops where no split point lies within
// reach, or, when splitting large tables, cuts on a 4-byte boundary there.
SfntsPlan PlanStrings(std::uint64_t size, const std::vector<std::uint64_t>& points, bool split) {
  SfntsPlan plan;
  std::uint64_t pos = 0;
  while (pos < size) {
    std::uint64_t end = size;
    if (size - pos >= kMaxSfntsString) {
      const std::uint64_t limit = pos + kMaxSfntsString;
      const auto after = std::upper_bound(points.begin(), points.end(), limit);
      if (after != points.begin() && *(after - 1) > pos) {
        end = *(after - 1);
      } else if (split) {
        end = limit - limit % 4;
      } else {
        plan.stopped = true;
        plan.stopOffset = pos;
        return plan;
      }
    }
    plan.pieces.push_back({pos, end});
    pos = end;
  }
  return plan;
}

// Bytes after which string k (starting at font offset start) breaks the
// line: those at offsets p with (p + 2k) mod 30 = 29.
std::uint64_t FirstBreak(std::uint64_t start, std::size_t k) {
  return 29 - (start + 2 * k) % 30;
}

std::uint64_t HexStringSize(const Piece& piece, std::size_t k) {
  const std::uint64_t length = piece.end - piece.start;
  const std::uint64_t first = FirstBreak(piece.start, k);
  const std::uint64_t breaks = length > first ? (length - first - 1) / 30 + 1 : 0;
  return 1 + 2 * length + breaks + 3;
}

constexpr std::array<std::array<char, 2>, 256> kHexPairs = [] {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::array<std::array<char, 2>, 256> pairs{};
  for (std::size_t b = 0; b < pairs.size(); ++b) pairs[b] = {kDigits[b >> 4], kDigits[b & 15]};
  return pairs;
}();

// Four bytes to eight hex digits at once: each byte's nibbles are spread
// into a byte of their own (high nibble first, as they are printed), and
// digits above 9 are moved up to the letters.
char* WriteHex4(char* out, const std::uint8_t* in) {
  constexpr std::uint64_t kLowNibbles = 0x000F000F000F000FULL;
  constexpr std::uint64_t kOnes = 0x0101010101010101ULL;
  const std::uint64_t spread = std::uint64_t{in[0]} | std::uint64_t{in[1]} << 16 |
                               std::uint64_t{in[2]} << 32 | std::uint64_t{in[3]} << 48;
  const std::uint64_t nibbles = ((spread >> 4) & kLowNibbles) | ((spread & kLowNibbles) << 8);
  const std::uint64_t letters = ((nibbles + 6 * kOnes) >> 4) & kOnes;
  std::uint64_t digits = nibbles + '0' * kOnes + 7 * letters;
  if constexpr (std::endian::native == std::endian::big) digits = __builtin_bswap64(digits);
  std::memcpy(out, &digits, sizeof digits);
  return out + sizeof digits;
}

char* WriteHex(char* out, std::span<const std::uint8_t> bytes) {
  std::size_t i = 0;
  for (; i + 4 <= bytes.size(); i += 4) out = WriteHex4(out, bytes.data() + i);
  for (; i < bytes.size(); ++i) {
    std::memcpy(out, kHexPairs[bytes[i]].data(), 2);
    out += 2;
  }
  return out;
}

void AppendHexString(std::string& out, std::span<const std::uint8_t> bytes, const Piece& piece,
                     std::size_t k) {
  const std::size_t at = out.size();
  out.resize(at + HexStringSize(piece, k));
  char* w = out.data() + at;
  *w++ = '<';
  std::uint64_t nextBreak = FirstBreak(piece.start, k);
  std::uint64_t i = 0;
  const std::uint64_t length = bytes.size();
  while (i < length) {
    const std::uint64_t stop = std::min(length, nextBreak + 1);
    w = WriteHex(w, bytes.subspan(i, stop - i));
    if (stop == nextBreak + 1) {
      *w++ = '\n';
      nextBreak += 30;
    }
    i = stop;
  }
  *w++ = '0';
  *w++ = '0';
  *w++ = '>';
}

void AppendUnsigned(std::string& out, std::uint64_t value) {
  char buf[24];
  const auto r = std::to_chars(buf, buf + sizeof buf, value);
  out.append(buf, r.ptr);
}

// printf's "%.Nf" of a 16.16 fixed-point value, independent of the locale.
void AppendFixed(std::string& out, std::int32_t fixed, int decimals) {
  char buf[64];
  const auto r =
      std::to_chars(buf, buf + sizeof buf, fixed / 65536.0, std::chars_format::fixed, decimals);
  out.append(buf, r.ptr);
}

void AppendHeader(std::string& out, const FontFacts& facts, std::string_view fontName) {
  out += "%!PS-TrueTypeFont-";
  AppendFixed(out, facts.version, 4);
  out += '-';
  AppendFixed(out, facts.revision, 4);
  out += '\n';
  if (facts.maxMem != 0) {
    out += "%%VMUsage: ";
    AppendUnsigned(out, facts.minMem);
    out += ' ';
    AppendUnsigned(out, facts.maxMem);
    out += '\n';
  }
  out += "11 dict begin\n/FontName /";
  out += FontNameText(fontName);
  out += " def\n/Encoding 256 array\n";
  for (std::size_t code = 0; code < facts.encoding.size(); ++code) {
    out += "dup ";
    AppendUnsigned(out, code);
    out += " /";
    out += facts.encoding[code];
    out += " put\n";
  }
  // The encoding's closing and the next entry share a line: the program
  // text is compared byte for byte, so this stays.
  out += "readonly def/PaintType 0 def\n/FontMatrix [1 0 0 1 0 0] def\n/FontBBox [";
  for (std::size_t i = 0; i < facts.bbox.size(); ++i) {
    if (i > 0) out += ' ';
    AppendFixed(out, facts.bbox[i], 6);
  }
  out += "] def\n/FontType 42 def\n/FontInfo 8 dict dup begin\nend readonly def\n";
}

void AppendCharStrings(std::string& out, const FontFacts& facts) {
  out += "/CharStrings ";
  AppendUnsigned(out, facts.glyphCount);
  out += " dict dup begin\n";
  if (facts.hasGlyphNames) {
    out += "/.notdef 0 def\n";
    for (std::size_t g = 1; g < facts.glyphNames.size(); ++g) {
      out += '/';
      out += facts.glyphNames[g];
      out += ' ';
      AppendUnsigned(out, g);
      out += " def\n";
    }
  }
  out += "end readonly def\nFontName currentdict end definefont pop\n";
}

// An upper bound of what the program appends, so the buffer grows once.
std::uint64_t ProgramSizeBound(const FontFacts& facts, const SfntsPlan& plan,
                               std::string_view fontName) {
  std::uint64_t size = 1024 + fontName.size();
  for (std::string_view name : facts.encoding) size += name.size() + 16;
  for (std::string_view name : facts.glyphNames) size += name.size() + 16;
  for (std::size_t k = 0; k < plan.pieces.size(); ++k) size += HexStringSize(plan.pieces[k], k);
  return size;
}

// The table that holds offset (the innermost when tables overlap).
const TableRecord* TableAt(std::span<const TableRecord> directory, std::uint64_t offset) {
  const TableRecord* found = nullptr;
  for (const TableRecord& table : directory) {
    const bool holds =
        table.offset <= offset && offset < std::uint64_t{table.offset} + table.length;
    if (holds && (!found || table.offset > found->offset)) found = &table;
  }
  return found;
}

Type42Result Malformed(const std::string& what) {
  Type42Result result;
  result.status = Type42Status::kMalformed;
  result.message = "Malformed TrueType file - " + what;
  return result;
}

Type42Result Incomplete(std::span<const std::uint8_t> font, std::uint64_t stopOffset) {
  Type42Result result;
  result.status = Type42Status::kIncomplete;
  result.stopOffset = stopOffset;
  const std::vector<TableRecord> directory = ReadTableDirectory(font);
  if (const TableRecord* table = TableAt(directory, stopOffset)) {
    result.table = std::string(table->tagText());
    result.tableLength = table->length;
  }
  return result;
}

// Where the program goes: straight into the caller's buffer, or through a
// bounded buffer handed to a sink whenever it holds kChunk bytes, so a
// program streamed to a file never needs memory for all of itself.
class ProgramOut {
 public:
  static constexpr std::size_t kChunk = 1 << 16;

  ProgramOut(std::string& buffer, const Type42Sink* sink) : buffer_(buffer), sink_(sink) {}
  std::string& text() { return buffer_; }
  void Reserve(std::uint64_t bound) {
    // A sink's buffer holds at most a chunk plus one whole sfnts string.
    if (sink_) bound = std::min<std::uint64_t>(bound, kChunk + 3 * std::uint64_t{kMaxSfntsString});
    buffer_.reserve(buffer_.size() + bound);
  }
  void Flush(bool force = false) {
    if (!sink_ || buffer_.empty() || (!force && buffer_.size() < kChunk)) return;
    (*sink_)(buffer_);
    buffer_.clear();
  }

 private:
  std::string& buffer_;
  const Type42Sink* sink_;
};

Type42Result Convert(std::span<const std::uint8_t> font, std::string_view fontName,
                     std::string& buffer, const Type42Sink* sink, const Type42Options& options,
                     std::ostream* diagnostics) {
  FontFacts facts;
  try {
    facts = ReadFacts(font, options);
  } catch (const Refusal& refusal) {
    if (refusal.diagnose && diagnostics) {
      *diagnostics << kMalformedPrefix << refusal.message << '\n';
    }
    return Malformed(refusal.message);
  } catch (const FontFormatError& e) {
    return Malformed(e.what());
  }
  const SfntsPlan plan = PlanStrings(font.size(), facts.splitPoints, options.splitLargeTables);
  ProgramOut out(buffer, sink);
  out.Reserve(ProgramSizeBound(facts, plan, fontName));
  AppendHeader(out.text(), facts, fontName);
  out.text() += "/sfnts [\n";
  const FontCursor body(font);
  for (std::size_t k = 0; k < plan.pieces.size(); ++k) {
    out.Flush();
    const Piece& piece = plan.pieces[k];
    FontCursor c = body.At(piece.start, "sfnts data");
    AppendHexString(out.text(), c.Bytes(piece.end - piece.start), piece, k);
  }
  if (!plan.stopped) {
    out.text() += "] def\n";
    out.Flush();
    AppendCharStrings(out.text(), facts);
  }
  out.Flush(true);
  return plan.stopped ? Incomplete(font, plan.stopOffset) : Type42Result{};
}

}  // namespace

std::vector<TableRecord> ReadTableDirectory(std::span<const std::uint8_t> font) {
  FontCursor c = FontCursor(font).At(4, "table directory");
  const std::uint16_t count = c.U16();
  c = c.At(12, "table directory");
  std::vector<TableRecord> tables(count);
  for (TableRecord& table : tables) {
    const auto tag = c.Bytes(4);
    std::copy(tag.begin(), tag.end(), table.tag.begin());
    table.checksum = c.U32();
    table.offset = c.U32();
    table.length = c.U32();
  }
  return tables;
}

const TableRecord* find_table(std::string_view tag, std::span<const TableRecord> directory) {
  for (const TableRecord& table : directory) {
    if (table.tagText() == tag) return &table;
  }
  return nullptr;
}

Type42Result convertTTFtoPS42(std::span<const std::uint8_t> font, std::string_view fontName,
                              std::string& output, const Type42Options& options,
                              std::ostream* diagnostics) {
  return Convert(font, fontName, output, nullptr, options, diagnostics);
}

Type42Result convertTTFtoPS42(std::span<const std::uint8_t> font, std::string_view fontName,
                              const Type42Sink& sink, const Type42Options& options,
                              std::ostream* diagnostics) {
  std::string chunk;
  return Convert(font, fontName, chunk, &sink, options, diagnostics);
}

}  // namespace zorva

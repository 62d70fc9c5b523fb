// The command table of the job ticket and its writer. The six colour
// adjustment rows keep the blank before "=" in their syntax attribute: the
// printer's server has always been given them so.
#include "jobticket/jotf_commands.h"

#include <span>

#include "jobticket/jotf_maps.h"

namespace zorva {

namespace {

using KeywordOf = JotfKeywordRow;

enum class Shape : std::uint8_t {
  Integer,        // any value, decimal
  AdjustInteger,  // the same with "syntax =\"integer\""
  Keyword,        // a listed value's keyword (or the row's fallback)
  Enum,           // a listed value's enum number
  KeywordSet,     // a 1setOf of every keyword listed for the value
  IntegerSet,     // a 1setOf holding the value
  SlipSheets,     // a fixed collection
};

struct CommandRow {
  int code;
  Shape shape;
  const char* attribute;
  std::span<const KeywordOf> values = {};
  const char* otherwise = nullptr;  // keyword for values the list lacks
};

constexpr KeywordOf kCollate[] = {{1, "collated"}};
constexpr KeywordOf kOrientation[] = {{0, "3"}, {1, "4"}, {2, "5"}, {3, "6"}};

constexpr CommandRow kCommands[] = {
    {0, Shape::Integer, "copies"},
    {1, Shape::Keyword, "sheet-collate", kCollate, "uncollated"},
    {2, Shape::Keyword, "sides", JotfSidesMap},
    {3, Shape::Enum, "orientation-requested", kOrientation},
    {4, Shape::Keyword, "output-bin", JotfOutputBinMap},
    {5, Shape::Integer, "adjust-bw-darkness-value"},
    {6, Shape::Keyword, "toner-saver", JotfTonerSaverMap},
    {7, Shape::KeywordSet, "job-offset", JotfJobOffsetMap},
    {8, Shape::IntegerSet, "pages-per-subset"},
    {9, Shape::Keyword, "adjust-bw-darkness-mode", JotfPrinterEmulationMap},
    {10, Shape::Keyword, "page-rotation", JotfPageRotationMap},
    {11, Shape::SlipSheets, "separator-sheets"},
    {12, Shape::Keyword, "opi-image-insertion", JotfOPISubstitutionMap},
    {13, Shape::Keyword, "opi-image-pre-scan", JotfOPIPrescanMap},
    {14, Shape::Keyword, "anti-aliasing", JotfAntialiasingMap},
    {16, Shape::AdjustInteger, "adjust-lightness"},
    {17, Shape::AdjustInteger, "adjust-contrast"},
    {18, Shape::AdjustInteger, "adjust-saturation"},
    {19, Shape::AdjustInteger, "adjust-cyan-red"},
    {20, Shape::AdjustInteger, "adjust-magenta-green"},
    {21, Shape::AdjustInteger, "adjust-yellow-blue"},
    {22, Shape::Keyword, "trapping", JotfTrappingMap},
    {23, Shape::Integer, "trap-width-fast"},
    {24, Shape::Integer, "trap-width-slow"},
    {25, Shape::Keyword, "black-overprint", JotfBlackOverprintMap},
    {26, Shape::Keyword, "rendering-intent-images", JotfRenderingMap},
    {27, Shape::Keyword, "rendering-intent-text", JotfRenderingMap},
    {28, Shape::Keyword, "rendering-intent-graphics", JotfRenderingMap},
    {29, Shape::Keyword, "page-delivery", JotfOutputOrderMap},
    {30, Shape::Keyword, "color-effects-type", JotfOutputColorMap},
};

const CommandRow* RowFor(int code) {
  for (const CommandRow& row : kCommands) {
    if (row.code == code) return &row;
  }
  return nullptr;
}

const char* TextFor(const CommandRow& row, std::int32_t value) {
  for (const KeywordOf& k : row.values) {
    if (k.value == value) return k.keyword;
  }
  return row.otherwise;
}

void WriteKeywordSet(const JotfSink* sink, const CommandRow& row, std::int32_t value) {
  JotfPrintf(sink, "\t\t<%s syntax=\"1setOf\">\n", row.attribute);
  for (const KeywordOf& k : row.values) {
    if (k.value == value)
      JotfPrintf(sink, "\t\t\t<value syntax=\"keyword\">%s</value>\n", k.keyword);
  }
  JotfPrintf(sink, "\t\t</%s>\n", row.attribute);
}

void WriteIntegerSet(const JotfSink* sink, const CommandRow& row, std::int32_t value) {
  JotfPrintf(sink, "\t\t<%s syntax=\"1setOf\">\n", row.attribute);
  JotfPrintf(sink, "\t\t\t<value syntax=\"integer\">%d</value>\n", value);
  JotfPrintf(sink, "\t\t</%s>\n", row.attribute);
}

void WriteSlipSheets(const JotfSink* sink) {
  JotfWrite(sink, "\t\t<separator-sheets syntax=\"collection\">\n");
  JotfWrite(
      sink,
      "\t\t\t<separator-sheets-type syntax=\"keyword\">slip-sheets</separator-sheets-type>\n");
  JotfWrite(sink, "\t\t</separator-sheets>\n");
}

void WriteListed(const JotfSink* sink, const CommandRow& row, const char* syntax,
                 std::int32_t value) {
  const char* text = TextFor(row, value);
  if (!text) return;
  JotfPrintf(sink, "\t\t<%s syntax=\"%s\">%s</%s>\n", row.attribute, syntax, text, row.attribute);
}

}  // namespace

std::int32_t JotfCommandValueFor(int code, std::string_view keyword) {
  const CommandRow* row = RowFor(code);
  if (!row) return -1;
  for (const KeywordOf& k : row->values) {
    if (keyword == k.keyword) return k.value;
  }
  return -1;
}

int WriteJotfCommands(const JotfSink* sink, int code, std::int32_t value) {
  const CommandRow* row = RowFor(code);
  if (!row) return 0;
  switch (row->shape) {
    case Shape::Integer:
      JotfPrintf(sink, "\t\t<%s syntax=\"integer\">%d</%s>\n", row->attribute, value,
                 row->attribute);
      break;
    case Shape::AdjustInteger:
      JotfPrintf(sink, "\t\t<%s syntax =\"integer\">%d</%s>\n", row->attribute, value,
                 row->attribute);
      break;
    case Shape::Keyword:
      WriteListed(sink, *row, "keyword", value);
      break;
    case Shape::Enum:
      WriteListed(sink, *row, "enum", value);
      break;
    case Shape::KeywordSet:
      WriteKeywordSet(sink, *row, value);
      break;
    case Shape::IntegerSet:
      WriteIntegerSet(sink, *row, value);
      break;
    case Shape::SlipSheets:
      WriteSlipSheets(sink);
      break;
  }
  return 0;
}

}  // namespace zorva

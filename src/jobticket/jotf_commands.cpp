// The command table of the job ticket and its writer. The six colour
// adjustment rows keep the blank before "=" in their syntax attribute: the
// printer's server has always been given them so.
#include "jobticket/jotf_commands.h"

#include <span>

namespace zorva {

namespace {

struct KeywordOf {
  std::int32_t value;
  const char* text;
};

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
constexpr KeywordOf kSides[] = {
    {0, "one-sided"}, {1, "two-sided-long-edge"}, {2, "two-sided-short-edge"}};
constexpr KeywordOf kOrientation[] = {{0, "3"}, {1, "4"}, {2, "5"}, {3, "6"}};
constexpr KeywordOf kOutputBin[] = {
    {0, "automatic"}, {1, "top"},     {2, "stacker"},   {3, "side"},
    {4, "top-1"},     {5, "top-2"},   {6, "stacker-1"}, {7, "stacker-2"},
    {8, "top"},       {9, "stacker"}, {10, "tray-1"},
};
constexpr KeywordOf kTonerSaver[] = {{0, "none"}, {1, "standard"}};
constexpr KeywordOf kJobOffset[] = {
    {0, "none"},       {1, "offset-set"},    {2, "offset-subset"},
    {3, "offset-set"}, {3, "offset-subset"}, {4, "offset-job"},
};
constexpr KeywordOf kDarknessMode[] = {{2, "normal"}, {3, "taltek180-adjustable"}};
constexpr KeywordOf kPageRotation[] = {{1, "rotate-0"}, {0, "rotate-180"}};
constexpr KeywordOf kOPIInsertion[] = {{0, "insert"}, {1, "do-not-insert"}};
constexpr KeywordOf kOPIPreScan[] = {
    {0, "no-pre-scan"}, {1, "pre-scan"}, {2, "pre-scan-and-gather"}};
constexpr KeywordOf kAntiAliasing[] = {{1, "none"}, {2, "standard"}};
constexpr KeywordOf kTrapping[] = {{1, "all"}, {2, "off"}};
constexpr KeywordOf kBlackOverprint[] = {{1, "black-overprint-on"}, {2, "black-overprint-off"}};
constexpr KeywordOf kRendering[] = {
    {1, "saturation"},
    {2, "relative-colorimetric"},
    {3, "absolute-colorimetric"},
    {4, "perceptual"},
    {5, "pure-text"},
    {6, "automatic"},
};
constexpr KeywordOf kPageDelivery[] = {
    {2, "same-order-face-down"},
    {3, "reverse-order-face-up"},
    {4, "same-order-face-up"},
    {5, "reverse-order-face-down"},
};
constexpr KeywordOf kColorEffects[] = {{1, "monochrome-grayscale"}, {2, "color"}};

constexpr CommandRow kCommands[] = {
    {0, Shape::Integer, "copies"},
    {1, Shape::Keyword, "sheet-collate", kCollate, "uncollated"},
    {2, Shape::Keyword, "sides", kSides},
    {3, Shape::Enum, "orientation-requested", kOrientation},
    {4, Shape::Keyword, "output-bin", kOutputBin},
    {5, Shape::Integer, "adjust-bw-darkness-value"},
    {6, Shape::Keyword, "toner-saver", kTonerSaver},
    {7, Shape::KeywordSet, "job-offset", kJobOffset},
    {8, Shape::IntegerSet, "pages-per-subset"},
    {9, Shape::Keyword, "adjust-bw-darkness-mode", kDarknessMode},
    {10, Shape::Keyword, "page-rotation", kPageRotation},
    {11, Shape::SlipSheets, "separator-sheets"},
    {12, Shape::Keyword, "opi-image-insertion", kOPIInsertion},
    {13, Shape::Keyword, "opi-image-pre-scan", kOPIPreScan},
    {14, Shape::Keyword, "anti-aliasing", kAntiAliasing},
    {16, Shape::AdjustInteger, "adjust-lightness"},
    {17, Shape::AdjustInteger, "adjust-contrast"},
    {18, Shape::AdjustInteger, "adjust-saturation"},
    {19, Shape::AdjustInteger, "adjust-cyan-red"},
    {20, Shape::AdjustInteger, "adjust-magenta-green"},
    {21, Shape::AdjustInteger, "adjust-yellow-blue"},
    {22, Shape::Keyword, "trapping", kTrapping},
    {23, Shape::Integer, "trap-width-fast"},
    {24, Shape::Integer, "trap-width-slow"},
    {25, Shape::Keyword, "black-overprint", kBlackOverprint},
    {26, Shape::Keyword, "rendering-intent-images", kRendering},
    {27, Shape::Keyword, "rendering-intent-text", kRendering},
    {28, Shape::Keyword, "rendering-intent-graphics", kRendering},
    {29, Shape::Keyword, "page-delivery", kPageDelivery},
    {30, Shape::Keyword, "color-effects-type", kColorEffects},
};

const CommandRow* RowFor(int code) {
  for (const CommandRow& row : kCommands) {
    if (row.code == code) return &row;
  }
  return nullptr;
}

const char* TextFor(const CommandRow& row, std::int32_t value) {
  for (const KeywordOf& k : row.values) {
    if (k.value == value) return k.text;
  }
  return row.otherwise;
}

void WriteKeywordSet(const JotfSink* sink, const CommandRow& row, std::int32_t value) {
  JotfPrintf(sink, "\t\t<%s syntax=\"1setOf\">\n", row.attribute);
  for (const KeywordOf& k : row.values) {
    if (k.value == value) JotfPrintf(sink, "\t\t\t<value syntax=\"keyword\">%s</value>\n", k.text);
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

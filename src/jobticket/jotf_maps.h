// The keyword tables of the job ticket, one per attribute: a ticket value and
// the text the document carries for it. The writer reads them forwards and
// import reads them backwards, so the two can never disagree. Where several
// values share one keyword, import takes the first row that has it, so the
// row order says which value comes back.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "core/value.h"

namespace zorva {

struct JotfKeywordRow {
  std::int32_t value;
  const char* keyword;
};
using JotfKeywordMap = std::span<const JotfKeywordRow>;

// Integer to integer (codes to `finishings` enums and the like).
struct JotfCodeRow {
  std::int32_t from;
  std::int32_t to;
};
using JotfCodeMap = std::span<const JotfCodeRow>;

// ---- Command table rows whose values are the ticket's own ---------------------------
inline constexpr JotfKeywordRow JotfSidesMap[] = {
    {0, "one-sided"}, {1, "two-sided-long-edge"}, {2, "two-sided-short-edge"}};
inline constexpr JotfKeywordRow JotfOutputBinMap[] = {
    {0, "automatic"}, {1, "top"},     {2, "stacker"},   {3, "side"},
    {4, "top-1"},     {5, "top-2"},   {6, "stacker-1"}, {7, "stacker-2"},
    {8, "top"},       {9, "stacker"}, {10, "tray-1"},
};
inline constexpr JotfKeywordRow JotfTonerSaverMap[] = {{0, "none"}, {1, "standard"}};
inline constexpr JotfKeywordRow JotfJobOffsetMap[] = {
    {0, "none"},       {1, "offset-set"},    {2, "offset-subset"},
    {3, "offset-set"}, {3, "offset-subset"}, {4, "offset-job"},
};
inline constexpr JotfKeywordRow JotfPrinterEmulationMap[] = {{2, "normal"},
                                                             {3, "taltek180-adjustable"}};
inline constexpr JotfKeywordRow JotfPageRotationMap[] = {{1, "rotate-0"}, {0, "rotate-180"}};
inline constexpr JotfKeywordRow JotfOPISubstitutionMap[] = {{0, "insert"}, {1, "do-not-insert"}};
inline constexpr JotfKeywordRow JotfOPIPrescanMap[] = {
    {0, "no-pre-scan"}, {1, "pre-scan"}, {2, "pre-scan-and-gather"}};
inline constexpr JotfKeywordRow JotfAntialiasingMap[] = {{1, "none"}, {2, "standard"}};
inline constexpr JotfKeywordRow JotfTrappingMap[] = {{1, "all"}, {2, "off"}};
inline constexpr JotfKeywordRow JotfBlackOverprintMap[] = {{1, "black-overprint-on"},
                                                           {2, "black-overprint-off"}};
inline constexpr JotfKeywordRow JotfRenderingMap[] = {
    {1, "saturation"},
    {2, "relative-colorimetric"},
    {3, "absolute-colorimetric"},
    {4, "perceptual"},
    {5, "pure-text"},
    {6, "automatic"},
};
inline constexpr JotfKeywordRow JotfOutputOrderMap[] = {
    {2, "same-order-face-down"},
    {3, "reverse-order-face-up"},
    {4, "same-order-face-up"},
    {5, "reverse-order-face-down"},
};
inline constexpr JotfKeywordRow JotfOutputColorMap[] = {{1, "monochrome-grayscale"}, {2, "color"}};

// ---- Ticket values that the writer translates first ---------------------------------
// "com.zorva.print.FinishingDuplex"; anything else is written "one-sided".
inline constexpr JotfKeywordRow JotfDuplexMap[] = {
    {1, "one-sided"}, {2, "two-sided-long-edge"}, {3, "two-sided-short-edge"}};
// "com.zorva.print.FinishingOutputDestination": "top" comes back as 2,
// "stacker" as 4.
inline constexpr JotfKeywordRow JotfOutputDestinationMap[] = {
    {1, "automatic"}, {2, "top"},      {3, "top"},       {18, "top"},      {4, "stacker"},
    {12, "stacker"},  {17, "stacker"}, {5, "stacker-1"}, {6, "stacker-2"}, {8, "top-1"},
    {9, "top-2"},     {16, "top"},     {20, "tray-1"},
};
// "com.zorva.print.AdvancedRotateImage180".
inline constexpr JotfKeywordRow JotfRotationMap[] = {{1, "rotate-0"}, {2, "rotate-180"}};
// "com.zorva.print.Resolution": cross-feed by feed-direction, in dots per inch.
inline constexpr JotfKeywordRow JotfResolutionMap[] = {
    {1, "300x300"}, {2, "600x600"}, {3, "1200x600"}, {4, "1200x1200"}};
// "com.zorva.print.HalftoneScreen".
inline constexpr JotfKeywordRow JotfHalftoneMap[] = {{1, "standard"}, {2, "fine"}, {3, "coarse"}};
// The highlight colour's printing colour; 7 is a custom colour (written by name).
inline constexpr JotfKeywordRow JotfHighlightColorantMap[] = {
    {1, "red"}, {2, "green"}, {3, "blue"}, {4, "cyan"}, {5, "magenta"}, {6, "yellow"}};
// A cover's "SidesImaged"; other values are written "no-cover" (which comes
// back as 0).
inline constexpr JotfKeywordRow JotfCoverTypeMap[] = {
    {1, "print-none"}, {2, "print-front"}, {3, "print-back"}, {4, "print-both"}, {0, "no-cover"}};
// The saved job's "MediaType".
inline constexpr JotfKeywordRow JotfSaveFormatMap[] = {
    {1, "application/X-single-page-tiff"},
    {2, "application/X-multi-page-tiff"},
    {3, "application/pdf"},
    {4, "application/X-fast-reprint"},
    {5, "application/X-fast-reprint-and-dri"},
};
// The saved job's disposition code (hold, 1, has no collection of its own).
inline constexpr JotfKeywordRow JotfSaveDispositionMap[] = {
    {0, "none"}, {2, "save-only"}, {3, "print-save"}};
// Disposition code -> the saved job's "JobType" that import sets.
inline constexpr JotfCodeRow JotfJobTypeForDisposition[] = {{0, 1}, {1, 2}, {2, 3}, {3, 4}};

// ---- Media ----------------------------------------------------------------------------
// Colour code -> `media-color` keyword (code 12 is a name, 13 nothing).
inline constexpr JotfKeywordRow JotfMediaColorMap[] = {
    {0, "no-color"}, {1, "white"},     {2, "pink"}, {3, "yellow"}, {4, "blue"},  {5, "green"},
    {6, "buff"},     {7, "goldenrod"}, {8, "red"},  {9, "ivory"},  {10, "gray"}, {11, "orange"},
};
// Media type code -> `media-type` keyword (6, 7, 9, 10 and 13 are written otherwise).
inline constexpr JotfKeywordRow JotfMediaTypeMap[] = {
    {0, "stationery"},   {1, "transparency"},  {2, "tab-stock"},
    {3, "pre-cut-tabs"}, {4, "full-cut-tabs"}, {5, "labels"},
    {8, "envelope"},     {11, "other"},        {12, "bond"},
};
inline constexpr JotfKeywordRow JotfPrePrintedMap[] = {
    {0, "blank"}, {1, "pre-printed"}, {2, "letter-head"}};
inline constexpr JotfKeywordRow JotfCoatingMap[] = {
    {1, "glossy"}, {2, "high-gloss"}, {3, "semi-gloss"}, {4, "satin"}, {5, "matte"}};
inline constexpr JotfKeywordRow JotfToothMap[] = {
    {1, "fine"}, {2, "medium"}, {3, "coarse"}, {4, "semi-coarse"}};
inline constexpr JotfKeywordRow JotfGrainMap[] = {{1, "y-grain"}, {2, "x-grain"}};

// ---- Finishing ------------------------------------------------------------------------
// The dialogs' staple values -> staple codes (one table for every staple entry).
inline constexpr JotfCodeRow JotfStapleValueMap[] = {
    {5, 0},  {6, 2},  {7, 1},   {8, 20},  {10, 3},  {11, 4},
    {12, 5}, {13, 6}, {26, 16}, {27, 17}, {28, 18}, {29, 19},
};
// Hole-punch values -> punch codes; punch options (holes) -> punch-holes codes.
inline constexpr JotfCodeRow JotfPunchValueMap[] = {{32, 31}, {33, 32}, {34, 33}, {35, 34}};
inline constexpr JotfCodeRow JotfHoleCountMap[] = {{2, 35}, {3, 36}, {4, 37}};
// Codes -> `finishings` enums.
inline constexpr JotfCodeRow JotfStapleEnumMap[] = {
    {0, 20},  {1, 22},  {2, 21},  {3, 28},  {4, 29},  {5, 31},  {6, 30},
    {7, 110}, {16, 32}, {17, 33}, {18, 35}, {19, 34}, {20, 23},
};
inline constexpr JotfCodeRow JotfFoldEnumMap[] = {
    {9, 3},     {10, 111},  {23, 111},  {11, 1000}, {27, 1000}, {12, 1001},
    {29, 1001}, {13, 50},   {14, 52},   {15, 13},   {21, 1003}, {22, 1004},
    {24, 110},  {25, 1011}, {26, 1008}, {28, 1005}, {30, 1012},
};
inline constexpr JotfCodeRow JotfPunchEnumMap[] = {{31, 93}, {32, 94}, {33, 96}, {34, 95}};
inline constexpr JotfCodeRow JotfPunchHoleEnumMap[] = {{35, 90}, {36, 91}, {37, 92}};

// Which ticket entry a staple code is read back into: single corner
// staples, two staples, three staples (the centre choice).
inline constexpr JotfCodeRow JotfStapleKindMap[] = {
    {0, 1}, {1, 1}, {2, 1},  {20, 1}, {3, 2},  {4, 2},
    {5, 2}, {6, 2}, {16, 3}, {17, 3}, {18, 3}, {19, 3},
};
// Which entry a fold code is read back into: 1 fold, 2 Z-fold, 3 bind,
// 4 booklet ("com.zorva.print.BookletFoldStaple").
inline constexpr JotfCodeRow JotfFoldKindMap[] = {
    {9, 1},  {10, 1}, {11, 1}, {12, 1}, {23, 1}, {27, 1}, {29, 1}, {21, 2},
    {22, 2}, {25, 3}, {26, 3}, {28, 3}, {30, 3}, {13, 4}, {14, 4}, {15, 4},
};

// ---- Look-ups ----------------------------------------------------------------------------
enum class JotfDirection { ToJotf, ToTicket };

// Converts through a keyword table: ToJotf takes a number and gives the
// keyword string of its first row; ToTicket takes a string and gives the
// value of the first row with that keyword. Values compare by the value
// model's equality. False (out untouched) when no row matches.
bool JOTFConvertKeyword(JotfKeywordMap map, JotfDirection direction, const Value& in, Value* out);

// The keyword of value, or nullptr.
const char* JotfKeywordFor(JotfKeywordMap map, std::int32_t value);
// The value of the first row with keyword.
std::optional<std::int32_t> JotfValueFor(JotfKeywordMap map, std::string_view keyword);
// Forwards and backwards through a code table (first match); -1 when none.
std::int32_t JotfMapCode(JotfCodeMap map, std::int32_t from);
std::int32_t JotfUnmapCode(JotfCodeMap map, std::int32_t to);

}  // namespace zorva

// The keyword tables themselves. Rows are in menu (or PPD look-up) order and
// are kept exactly as shipped, duplicates and odd keys included: saved
// tickets, named papers and printer paper lists hold these values, and the
// first-match rule of the look-ups depends on the order.
#include "host/keyword_tables.h"

#include <cstddef>

namespace zorva {

namespace {

// A plain menu row: no command, no installable-option filter.
constexpr SettingMap Item(const char* key, std::int32_t value, std::uint32_t command = 0) {
  return {key, value, command, nullptr, 1};
}

constexpr SettingMap kEndOfSettings{nullptr, 0, 0, nullptr, 0};
constexpr KeywordPair kEndOfPairs{nullptr, 0};

}  // namespace

// ---- SettingMap tables --------------------------------------------------------

constexpr SettingMap PlexMap[] = {
    Item("PrinterDefault", kUnset), Item("Simplex", 1), Item("Duplex", 2),
    Item("DuplexShort", 3),         kEndOfSettings,
};

// One setting ("no watermark") followed by commands; the user's watermarks
// are inserted between them at run time.
constexpr SettingMap WatermarkMap[] = {
    Item("NoWatermark", 1, FourCC("ZWmZ")),
    Item("-", kSeparatorValue),
    Item("Options", -6, FourCC("ZWmO")),
    Item("New...", -7, FourCC("ZWmN")),
    Item("Edit...", -8, FourCC("ZWmE")),
    Item("Delete", -9, FourCC("ZWmD")),
    kEndOfSettings,
};

constexpr SettingMap StockTypeMap[] = {
    Item("PrinterDefault", kUnset),
    Item("StockTypePlain", 1),
    Item("StockTypeTransparency", 2),
    Item("StockTypePrePrinted", 3),
    Item("StockTypeFullCutTab", 5),
    Item("StockTypeCustom...", 7),
    kEndOfSettings,
};

// Every type a stock may carry, for reading named papers and printer lists.
constexpr SettingMap CompleteStockTypeMap[] = {
    Item("PrinterDefault", kUnset),
    Item("StockTypePlain", 1),
    Item("StockTypeTransparency", 2),
    Item("Recycled", 10),
    Item("Labels", 9),
    Item("StockTypePrePrinted", 3),
    Item("StockTypePrecutTab", 4),
    Item("StockTypeFullCutTab", 5),
    Item("Envelope", 8),
    Item("StockTypeOrdered", 6),
    Item("StockTypeCustom...", 7),
    kEndOfSettings,
};

constexpr SettingMap StockColorMap[] = {
    Item("PrinterDefault", kUnset),
    Item("StockColorWhite", 1),
    Item("StockColorBlue", 2),
    Item("StockColorYellow", 3),
    Item("StockColorGreen", 4),
    Item("StockColorPink", 5),
    Item("StockColorClear", 6),
    Item("Ivory", 11),
    Item("Gray", 12),
    Item("StockColorBuff", 7),
    Item("StockColorGoldenrod", 8),
    Item("StockColorRed", 9),
    Item("Orange", 13),
    Item("StockColorCustom...", 10),
    kEndOfSettings,
};

// Same rows as the menu table; kept separate so the two can diverge.
constexpr SettingMap CompleteStockColorMap[] = {
    Item("PrinterDefault", kUnset),
    Item("StockColorWhite", 1),
    Item("StockColorBlue", 2),
    Item("StockColorYellow", 3),
    Item("StockColorGreen", 4),
    Item("StockColorPink", 5),
    Item("StockColorClear", 6),
    Item("Ivory", 11),
    Item("Gray", 12),
    Item("StockColorBuff", 7),
    Item("StockColorGoldenrod", 8),
    Item("StockColorRed", 9),
    Item("Orange", 13),
    Item("StockColorCustom...", 10),
    kEndOfSettings,
};

constexpr SettingMap StockPunchedMap[] = {
    Item("StockPunchedNo", 1),
    Item("StockPunchedYes", 2),
    Item("PrinterDefault", kUnset),
    kEndOfSettings,
};

// The size pop-up; its keys for codes 7 and 11 differ from the size table's.
constexpr SettingMap StockSizeMap[] = {
    Item("PrinterDefault", kUnset),
    Item("LetterStockSize", 1),
    Item("LegalStockSize", 2),
    Item("TabloidStockSize", 3),
    Item("StockSize8x10", 10),
    Item("StockSize8x13", 13),
    Item("StockSize8.5x13", 12),
    Item("StockSize9x11", 8),
    Item("Oversize Tabloid (12 x 18\")", 11),
    Item("A4StockSize", 4),
    Item("A3StockSize", 5),
    Item("JIS B4 (257 x 364 mm)", 56),
    Item("JIS B5 (182 x 257 mm)", 55),
    Item("223x297StockSize", 7),
    Item("SRA3 (320 x 450 mm)", 15),
    Item("Custom...", 75),
    kEndOfSettings,
};

// The keyed row of value 0 ends every value scan, so any description the
// menu does not list shows as "Custom...".
constexpr SettingMap StockDescriptionMap[] = {
    Item("PrinterDefault", kUnset),
    Item("Custom...", 0),
    kEndOfSettings,
};

// ---- Stock attributes, special pages and image settings -----------------------
// Codes follow the job ticket: weights are grams per square metre; finish 1-4
// and grain 1-2 are the media tooth and grain keywords; sides coated 1-4 and
// coating types 1-5 are the coating keywords; output colour and
// anti-aliasing are the job attributes' codes. The tables checked by
// named-paper validation (weight, sides coated, both finish tables, grain)
// carry a printer-default row and never a keyed row of value 0, so every
// code can be found; a custom entry there is a command row.

constexpr SettingMap WeightMap[] = {
    Item("PrinterDefault", kUnset),
    Item("Weight60", 60),
    Item("Weight64", 64),
    Item("Weight75", 75),
    Item("Weight80", 80),
    Item("Weight90", 90),
    Item("Weight100", 100),
    Item("Weight105", 105),
    Item("Weight120", 120),
    Item("Weight135", 135),
    Item("Weight150", 150),
    Item("Weight163", 163),
    Item("Weight176", 176),
    Item("Weight200", 200),
    Item("Weight216", 216),
    Item("Weight250", 250),
    Item("Weight270", 270),
    Item("Weight300", 300),
    Item("Weight350", 350),
    Item("-", kSeparatorValue),
    Item("WeightCustom...", -10, FourCC("ZWtC")),
    kEndOfSettings,
};

constexpr SettingMap FinishMap[] = {
    Item("PrinterDefault", kUnset), Item("FinishFine", 1),       Item("FinishMedium", 2),
    Item("FinishCoarse", 3),        Item("FinishSemiCoarse", 4), kEndOfSettings,
};

// The finishes offered for uncoated stock; the same codes, listed apart so
// the uncoated menu can differ from the general one.
constexpr SettingMap FinishMap1[] = {
    Item("PrinterDefault", kUnset), Item("FinishFine", 1),       Item("FinishMedium", 2),
    Item("FinishCoarse", 3),        Item("FinishSemiCoarse", 4), kEndOfSettings,
};

constexpr SettingMap GrainMap[] = {
    Item("PrinterDefault", kUnset),
    Item("GrainY", 1),
    Item("GrainX", 2),
    kEndOfSettings,
};

constexpr SettingMap SidesCoatedMap[] = {
    Item("PrinterDefault", kUnset), Item("SidesCoatedNone", 1), Item("SidesCoatedFront", 2),
    Item("SidesCoatedBoth", 3),     Item("SidesCoatedBack", 4), kEndOfSettings,
};

// The coating type always has a value (1 by default), so no default row.
constexpr SettingMap CoatingTypeMap[] = {
    Item("CoatingGlossy", 1), Item("CoatingHighGloss", 2), Item("CoatingSemiGloss", 3),
    Item("CoatingSatin", 4),  Item("CoatingMatte", 5),     kEndOfSettings,
};

// Which sides of a cover carry an image; a cover always says.
constexpr SettingMap CoverSidesImagedMap[] = {
    Item("CoverPrintNone", 1),
    Item("CoverPrintFront", 2),
    Item("CoverPrintBack", 3),
    Item("CoverPrintBoth", 4),
    kEndOfSettings,
};

constexpr SettingMap OutputColorMap[] = {
    Item("PrinterDefault", kUnset),
    Item("OutputColorGrayscale", 1),
    Item("OutputColorColor", 2),
    kEndOfSettings,
};

constexpr SettingMap HalftoneScreenMap[] = {
    Item("PrinterDefault", kUnset),
    Item("HalftoneStandard", 1),
    Item("HalftoneDetail", 2),
    Item("HalftoneSmooth", 3),
    kEndOfSettings,
};

constexpr SettingMap AntialiasingMap[] = {
    Item("PrinterDefault", kUnset),
    Item("AntialiasingOff", 1),
    Item("AntialiasingStandard", 2),
    kEndOfSettings,
};

// Image-shift modes ("Option" and "Option2Sided" of the image-shift options):
// 1 no shift, 2 the user's own shift.
constexpr SettingMap ImageShiftOptions1SidedMap[] = {
    Item("ImageShiftNone", 1),
    Item("ImageShiftCustom", 2),
    kEndOfSettings,
};

constexpr SettingMap ImageShiftOptions2SidedMap[] = {
    Item("ImageShiftNone", 1),
    Item("ImageShiftCustom", 2),
    kEndOfSettings,
};

// ---- Image options ------------------------------------------------------------------
// Values are the job ticket's codes for each attribute (resolution 1-4,
// page delivery 2-5, emulation 2-3, trapping and overprint 1 on / 2 off,
// rendering intents 1-6, highlight colorants 1-6 and 7 for a custom colour).
// The profile tables end in the code that names a profile of the user's own.

constexpr SettingMap ResolutionMap[] = {
    Item("PrinterDefault", kUnset), Item("Resolution300", 1),  Item("Resolution600", 2),
    Item("Resolution1200x600", 3),  Item("Resolution1200", 4), kEndOfSettings,
};

// The darkness adjustment of the job ticket, lightest first.
constexpr SettingMap LightenDarkenMenuMap[] = {
    Item("PrinterDefault", kUnset),
    Item("Lighten5", -5),
    Item("Lighten4", -4),
    Item("Lighten3", -3),
    Item("Lighten2", -2),
    Item("Lighten1", -1),
    Item("LightenDarkenNormal", 0),
    Item("Darken1", 1),
    Item("Darken2", 2),
    Item("Darken3", 3),
    Item("Darken4", 4),
    Item("Darken5", 5),
    kEndOfSettings,
};

// Toner saver is a yes/no setting; 0 and 1 are its two answers.
constexpr SettingMap TonerSaverMap[] = {
    Item("PrinterDefault", kUnset),
    Item("TonerSaverOff", 0),
    Item("TonerSaverOn", 1),
    kEndOfSettings,
};

constexpr SettingMap OutputOrderMap[] = {
    Item("PrinterDefault", kUnset),        Item("OutputOrderSameFaceDown", 2),
    Item("OutputOrderReverseFaceUp", 3),   Item("OutputOrderSameFaceUp", 4),
    Item("OutputOrderReverseFaceDown", 5), kEndOfSettings,
};

constexpr SettingMap PrinterEmulationMap[] = {
    Item("PrinterDefault", kUnset),
    Item("EmulationNormal", 2),
    Item("EmulationAdjustable", 3),
    kEndOfSettings,
};

constexpr SettingMap HighlightColorMap[] = {
    Item("PrinterDefault", kUnset), Item("HighlightRed", 1),    Item("HighlightGreen", 2),
    Item("HighlightBlue", 3),       Item("HighlightCyan", 4),   Item("HighlightMagenta", 5),
    Item("HighlightYellow", 6),     Item("HighlightCustom", 7), kEndOfSettings,
};

constexpr SettingMap TrappingMap[] = {
    Item("PrinterDefault", kUnset),
    Item("TrappingOn", 1),
    Item("TrappingOff", 2),
    kEndOfSettings,
};

constexpr SettingMap BlackOverprintMap[] = {
    Item("PrinterDefault", kUnset),
    Item("BlackOverprintOn", 1),
    Item("BlackOverprintOff", 2),
    kEndOfSettings,
};

constexpr SettingMap RenderingIntentMap[] = {
    Item("PrinterDefault", kUnset),
    Item("RenderingSaturation", 1),
    Item("RenderingRelativeColorimetric", 2),
    Item("RenderingAbsoluteColorimetric", 3),
    Item("RenderingPerceptual", 4),
    Item("RenderingPureText", 5),
    Item("RenderingAutomatic", 6),
    kEndOfSettings,
};

constexpr SettingMap RGBProfileMap[] = {
    Item("PrinterDefault", kUnset),
    Item("ProfileZorvaRGB", 1),
    Item("ProfileSRGB", 2),
    Item("ProfileAppleRGB", 3),
    Item("ProfileAdobeRGB", 4),
    Item("ProfileCustom", 5),
    kEndOfSettings,
};

constexpr SettingMap CMYKProfileMap[] = {
    Item("PrinterDefault", kUnset), Item("ProfileSWOP", 1), Item("ProfileEuroscale", 2),
    Item("ProfileCustom", 3),       kEndOfSettings,
};

constexpr SettingMap DestinationProfileMap[] = {
    Item("PrinterDefault", kUnset),
    Item("ProfileSystem", 1),
    Item("ProfileCustom", 2),
    kEndOfSettings,
};

// ---- Paper sizes ----------------------------------------------------------------

// Key, code, reserved, width and length in 1/100 mm, width and length in points.
constexpr PaperSizeSettingMap CompleteStockSizeMap[] = {
    {"PrinterDefault", kUnset, 0, kUnset, kUnset, kUnset, kUnset},
    {"LetterStockSize", 1, 0, 21600, 27900, 612, 792},
    {"LegalStockSize", 2, 0, 21600, 35600, 612, 1008},
    {"TabloidStockSize", 3, 0, 27900, 43200, 792, 1224},
    {"Postcard (4 x 6\")", 59, 0, 10200, 15200, 288, 432},
    {"Postcard (5 x 7\")", 41, 0, 12700, 17800, 360, 504},
    {"Statement (5.5 x 8.5\")", 17, 0, 14000, 21600, 396, 612},
    {"Postcard (6 x 9\")", 62, 0, 15200, 22900, 432, 648},
    {"7 x 10\"", 28, 0, 17800, 25400, 504, 720},
    {"Executive (7.25 x 10.5\")", 21, 0, 18400, 26700, 522, 756},
    {"StockSize8x10", 10, 0, 20300, 25400, 576, 720},
    {"StockSize8x13", 13, 0, 20300, 33000, 576, 936},
    {"StockSize8.5x13", 12, 0, 21600, 33000, 612, 936},
    {"StockSize8.5x13.5", 79, 0, 21600, 34000, 612, 972},
    {"StockSize9x11", 8, 0, 22900, 27900, 648, 792},
    {"StockSizeTab9x11", 82, 0, 22900, 27900, 648, 792},
    {"9 x 14\"", 36, 0, 22900, 35600, 648, 1008},
    {"9.5 x 11\"", 48, 0, 24100, 27900, 684, 792},
    {"2 up 6 x 9", 54, 0, 24100, 31800, 684, 900},
    {"11 x 15\"", 63, 0, 27900, 38100, 792, 1080},
    {"12x18StockSize", 11, 0, 30500, 45700, 864, 1296},
    {"12 x 18.5\"", 38, 0, 30500, 47000, 864, 1332},
    {"12.6 x 18.5\"", 49, 0, 32000, 47000, 907, 1332},
    {"12 x 19\"", 71, 0, 30500, 48300, 864, 1368},
    {"12.6 x 19.2\"", 64, 0, 32000, 48800, 907, 1382},
    {"13 x 18\"", 65, 0, 33000, 45700, 935, 1296},
    {"13 x 19\"", 66, 0, 33000, 48300, 935, 1368},
    {"A4StockSize", 4, 0, 21000, 29700, 595, 842},
    {"A3StockSize", 5, 0, 29700, 42000, 842, 1191},
    {"A5 (148 x 210 mm)", 18, 0, 14800, 21000, 420, 595},
    {"A6 (105 x 148 mm)", 40, 0, 10500, 14800, 297, 420},
    {"B3 (105 x 148 mm)", 70, 0, 35300, 50000, 1001, 1417},
    {"B4 (250 x 353 mm)", 14, 0, 25000, 35300, 709, 1001},
    {"JIS B4 (257 x 364 mm)", 56, 0, 25700, 36400, 729, 1032},
    {"JIS B5 (182 x 257 mm)", 55, 0, 18200, 25700, 516, 729},
    {"JIS B6 (128 x 182 mm)", 57, 0, 12800, 18200, 363, 516},
    {"StockSize223x297", 7, 0, 22300, 29700, 632, 842},
    {"Oversized A5 (161 x 210 mm)", 19, 0, 16100, 21000, 456, 595},
    {"Postcard (100 x 148 mm)", 60, 0, 10000, 14800, 284, 420},
    {"Postcard (148 x 200 mm)", 61, 0, 14800, 20000, 420, 567},
    {"SRA3 (320 x 450 mm)", 15, 0, 32000, 45000, 907, 1276},
    {"SRA4", 47, 0, 22500, 32000, 638, 907},
    {"8K (267 x 388 mm)", 23, 0, 26700, 38800, 757, 1099},
    {"8K (270 x 390 mm)", 67, 0, 27000, 39000, 765, 1105},
    {"16K (194 x 267 mm)", 29, 0, 19400, 26700, 550, 757},
    {"16K (195 x 270 mm)", 68, 0, 19500, 27000, 553, 765},
    {"210 x 270 mm", 30, 0, 21000, 27000, 595, 765},
    {"210 x 330 mm", 31, 0, 21000, 33000, 595, 936},
    {"215 x 275 mm", 32, 0, 21500, 27500, 609, 780},
    {"215 x 315 mm", 22, 0, 21500, 31500, 609, 893},
    {"220 x 330 mm", 24, 0, 22000, 33000, 624, 936},
    {"226 x 310 mm", 35, 0, 22600, 31000, 640, 878},
    {"252 x 358 mm", 37, 0, 25200, 35800, 713, 1015},
    {"310 x 432 mm", 39, 0, 31000, 43200, 878, 1224},
    {"328 x 453 mm", 72, 0, 32800, 45300, 930, 1284},
    {"Envelope (6 x 9\")", 25, 0, 15200, 22900, 432, 648},
    {"Envelope (9 x 12\")", 26, 0, 22900, 30500, 648, 864},
    {"Envelope (120 x 235 mm)", 69, 0, 12000, 23500, 340, 666},
    {"Envelope (220 x 312 mm)", 27, 0, 22000, 31200, 624, 884},
    {"Envelope C4 (229 x 324 mm)", 58, 0, 22900, 32400, 649, 919},
    {"Envelope C5 (162 x 229 mm)", 20, 0, 16200, 22900, 459, 649},
    {"Envelope Open Catalog (6 x 9\")", 50, 0, 15200, 27300, 432, 774},
    {"Envelope Open Catalog (7 x 10\")", 52, 0, 17800, 30500, 504, 864},
    {"Envelope Open Catalog (178 x 254 mm)", 53, 0, 17800, 28700, 504, 814},
    {"Envelope Open Catalog C5 (162 x 229 mm)", 51, 0, 16200, 26200, 459, 742},
    {"Postcard (4 x 6\")", 43, 0, 11400, 15200, 324, 432},
    {"Postcard (114 x 152\")", 81, 0, 11400, 15200, 324, 432},
    {"8.5 x 13\"", 16, 0, 21600, 33000, 612, 936},
    {"8.5 x 13.5\"", 78, 0, 21600, 34000, 612, 972},
    {"No. 10 Envelope (4.125 x 9.5\")", 45, 0, 10500, 24100, 297, 684},
    {"No. 9 Envelope (4.125 x 9.5\")", 77, 0, 9800, 22500, 297, 639},
    {"Monarch Envelope (3.875 x 7.5\")", 44, 0, 9800, 19100, 279, 540},
    {"DL Envelope (110 x 220 mm)", 46, 0, 11000, 22000, 312, 624},
    {"5.5 x 7 Stock Size", 76, 0, 14000, 17800, 396, 504},
    {"Custom", 75, 0, 0, 0, 0, 0},
    {nullptr, 0, 0, 0, 0, 0, 0},
};

// ---- PPD keyword pairs --------------------------------------------------------

constexpr KeywordPair BannerPageMap[] = {{"True", 1}, {"False", 0}, kEndOfPairs};

constexpr KeywordPair RequestOffsetMap[] = {{"EndOfSet", 1}, {"None", 0}, kEndOfPairs};

constexpr KeywordPair JCLTrueGrayGraphicsMap[] = {{"False", 1}, {"True", 2}, kEndOfPairs};

constexpr KeywordPair JCLTrueGrayImagesMap[] = {{"False", 1}, {"True", 2}, kEndOfPairs};

constexpr KeywordPair LightenDarkenMap[] = {
    {"Lighten5", -5}, {"Lighten4", -4}, {"Lighten3", -3}, {"Lighten2", -2},
    {"Lighten1", -1}, {"Normal", 0},    {"Darken1", 1},   {"Darken2", 2},
    {"Darken3", 3},   {"Darken4", 4},   {"Darken5", 5},   kEndOfPairs,
};

constexpr KeywordPair MediaColorMap[] = {
    {"PrinterDefaultColor", 23},
    {"Buff", 7},
    {"Blue", 2},
    {"Clear", 6},
    {"Gray", 12},
    {"Green", 4},
    {"Ivory", 11},
    {"Orange", 13},
    {"Other", 14},
    {"Pink", 5},
    {"Red", 9},
    {"White", 1},
    {"Yellow", 3},
    {"Goldenrod", 8},
    {"Unspecified", 22},
    {"Custom1", 15},
    {"Custom2", 16},
    {"Custom3", 17},
    {"Custom4", 18},
    {"Custom5", 19},
    {"Custom6", 20},
    {"Custom7", 21},
    kEndOfPairs,
};

// Shared by "MediaType" and "ZRSlipSheetType". "CardStock" appears twice on
// purpose: the choice reads as 12, while 43 reads back as "CardStock".
constexpr KeywordPair MediaTypeMap[] = {
    {"SystemDefault", 23},
    {"Transparency", 2},
    {"Labels", 9},
    {"Punched", 11},
    {"Recycled", 10},
    {"PrePrinted", 3},
    {"Bond", 13},
    {"Letterhead", 14},
    {"TabStock", 24},
    {"Envelopes", 8},
    {"Other", 22},
    {"Custom1", 15},
    {"Custom2", 16},
    {"Custom3", 17},
    {"Custom4", 18},
    {"Custom5", 19},
    {"Custom6", 20},
    {"Custom7", 21},
    {"Standard", 1},
    {"CardStock", 12},
    {"Archive", 45},
    {"CardStock2", 26},
    {"CardStock", 43},
    {"CardStockF", 43},
    {"HeavyweightLabels", 25},
    {"ExtraHeavyweight", 27},
    {"ExtraHeavyweight2", 28},
    {"LightGlossy", 29},
    {"LightGlossy2", 30},
    {"LightGlossyF", 44},
    {"HeavyGlossy", 31},
    {"HeavyGlossy2", 32},
    {"HeavyTabStock", 33},
    {"Unspecified", 34},
    {"ExtraHeavyPlus", 35},
    {"ExtraHeavyPlus2", 36},
    {"ExtraHeavyGlossy", 37},
    {"ExtraHeavyGlossy2", 38},
    {"ExtraHeavyLabels", 39},
    {"Rough", 40},
    kEndOfPairs,
};

constexpr KeywordPair PPDDuplexMap[] = {
    {"None", 1},
    {"DuplexNoTumble", 2},
    {"DuplexTumble", 3},
    kEndOfPairs,
};

constexpr KeywordPair JCLPrintQualityMap[] = {
    {"TonerSaver", 1},  {"Standard", 2},       {"Enhanced", 3}, {"HighSpeed", 4},
    {"HighQuality", 5}, {"HighResolution", 6}, kEndOfPairs,
};

constexpr KeywordPair ZRRGBColorSpaceMap[] = {
    {"ZorvaRGB", 1}, {"sRGB", 2}, {"AppleRGB", 3}, {"AdobeRGB", 4}, kEndOfPairs,
};

constexpr KeywordPair ZRCMYKColorSpaceMap[] = {
    {"SNAP", 1}, {"SWOP", 2}, {"EuroScale", 3}, {"Commercial", 4}, {"JapanColor", 5}, kEndOfPairs,
};

constexpr KeywordPair JCLColorCorrectionMap[] = {
    {"Auto", 1}, {"sRGB", 2},     {"BlackWhite", 3}, {"PressMatch", 4},
    {"None", 5}, {"Standard", 6}, kEndOfPairs,
};

constexpr KeywordPair PageSizeMap[] = {
    {"Letter", 1},
    {"Legal", 2},
    {"Tabloid", 3},
    {"A4", 4},
    {"A3", 5},
    {"FanFoldGermanLegal", 16},
    {"8.5x13", 12},
    {"3x5", 80},
    {"Officio", 78},
    {"Statement", 17},
    {"A5", 18},
    {"A6", 40},
    {"Executive", 21},
    {"B5", 6},
    {"A4Cover", 7},
    {"9x11", 8},
    {"9x11L", 82},
    {"B4", 14},
    {"5x7", 41},
    {"B6", 42},
    {"8x10", 10},
    {"4x6Pcard", 43},
    {"114x152Pcard", 81},
    {"EnvMonarch", 44},
    {"Env9", 77},
    {"Env10", 45},
    {"EnvDL", 46},
    {"EnvC5", 20},
    {"JISB5", 55},
    {"JISB4", 56},
    {"JISB6", 57},
    {"SpanishFolio", 22},
    {"EnvC4", 58},
    {"4x6", 59},
    {"100x148Postcard", 60},
    {"148x200Postcard", 61},
    {"TabloidExtra", 11},
    {"12x19", 71},
    {"13x19", 66},
    {"SRA3", 15},
    kEndOfPairs,
};

// Three choices share 5; the value reads back as "Upper", the first of them.
constexpr KeywordPair OutputBinMap[] = {
    {"Auto", 1},
    {"Side", 3},
    {"Top", 2},
    {"TopTray", 18},
    {"Stacker", 4},
    {"TopTrayHCS", 16},
    {"StackerTrayHCS", 17},
    {"Upper", 5},
    {"Lower", 6},
    {"Booklet", 7},
    {"Middle", 11},
    {"Middle2", 15},
    {"PrinterDefault", kUnset},
    {"Center", 5},
    {"Bottom", 5},
    {"EnvFolder", 13},
    {"SBM", 14},
    kEndOfPairs,
};

constexpr KeywordPair ZRFoldMap[] = {
    {"None", 1},          {"C", 19},   {"Z", 20}, {"ZFoldHalfSheet", 36}, {"BiFold", 43},
    {"BiFoldStaple", 53}, kEndOfPairs,
};

constexpr KeywordPair ZRPunchMap[] = {
    {"None", 1},       {"HolePunch", 2},  {"2HolePunch", 3},
    {"3HolePunch", 4}, {"4HolePunch", 5}, kEndOfPairs,
};

constexpr KeywordPair ZRStapleMap[] = {
    {"None", 1}, {"SinglePortrait", 5}, {"DualLandscape", 10}, {"MultipleStaples", 54}, kEndOfPairs,
};

constexpr KeywordPair DraftModeMap[] = {{"None", 2}, {"Draft", 1}, kEndOfPairs};

constexpr KeywordPair PPDOutputOptionMap[] = {{"True", 1}, {"False", 0}, kEndOfPairs};

constexpr KeywordPair PPDResolutionMap[] = {
    {"200x100dpi", 6},  {"200x200dpi", 5},   {"300x300dpi", 1},   {"600x600dpi", 2},
    {"1200x600dpi", 3}, {"1200x1200dpi", 4}, {"1800x1800dpi", 7}, kEndOfPairs,
};

constexpr KeywordPair ColorModeMap[] = {{"Grayscale", 1}, {"Color", 2}, kEndOfPairs};

// Also converts the cover-sheet and slip-sheet sources. "Auto" is 0, an
// ordinary value in keyword pairs.
constexpr KeywordPair InputSlotMap[] = {
    {"Auto", 0},  {"Tray1", 1}, {"Tray2", 2},    {"Tray3", 3}, {"Tray4", 4},
    {"Tray5", 5}, {"Tray6", 6}, {"Bypass", 100}, kEndOfPairs,
};

constexpr KeywordPair FeedEdgeMap[] = {{"LongEdge", 1}, {"ShortEdge", 2}, kEndOfPairs};

constexpr KeywordPair SlipSheetMap[] = {{"None", 1}, {"Blank", 2}, {"Printed", 3}, kEndOfPairs};

// Which table converts the choices of each PPD main keyword.
constexpr MainKeyword MainKeywordMap[] = {
    {"JCLBanner", BannerPageMap},
    {"Jog", RequestOffsetMap},
    {"JCLTrueGrayGraphics", JCLTrueGrayGraphicsMap},
    {"JCLTrueGrayImages", JCLTrueGrayImagesMap},
    {"ZRImageQuality", LightenDarkenMap},
    {"MediaColor", MediaColorMap},
    {"MediaType", MediaTypeMap},
    {"Duplex", PPDDuplexMap},
    {"JCLPrintQuality", JCLPrintQualityMap},
    {"JCLRGBColorSpace", ZRRGBColorSpaceMap},
    {"JCLCMYKColorSpace", ZRCMYKColorSpaceMap},
    {"JCLColorCorrection", JCLColorCorrectionMap},
    {"PageSize", PageSizeMap},
    {"OutputBin", OutputBinMap},
    {"ZRFold", ZRFoldMap},
    {"ZRPunch", ZRPunchMap},
    {"StapleLocation", ZRStapleMap},
    {"ZREconomode", DraftModeMap},
    {"ZROutputOption", PPDOutputOptionMap},
    {"Resolution", PPDResolutionMap},
    {"ZRColorMode", ColorModeMap},
    {"InputSlot", InputSlotMap},
    {"ZRFeedEdge", FeedEdgeMap},
    {"ZRFrontCoverSheet", InputSlotMap},
    {"ZRBackCoverSheet", InputSlotMap},
    {"ZRSlipSheetPrint", SlipSheetMap},
    {"ZRSlipSheetSource", InputSlotMap},
    {"ZRSlipSheetType", MediaTypeMap},
    {nullptr, nullptr},
};

// ---- Registry ---------------------------------------------------------------------

namespace {

constexpr KeywordTableEntry kRegistry[] = {
    {"PlexMap", PlexMap},
    {"WatermarkMap", WatermarkMap},
    {"StockTypeMap", StockTypeMap},
    {"CompleteStockTypeMap", CompleteStockTypeMap},
    {"StockColorMap", StockColorMap},
    {"CompleteStockColorMap", CompleteStockColorMap},
    {"StockPunchedMap", StockPunchedMap},
    {"StockSizeMap", StockSizeMap},
    {"StockDescriptionMap", StockDescriptionMap},
    {"WeightMap", WeightMap},
    {"FinishMap", FinishMap},
    {"FinishMap1", FinishMap1},
    {"GrainMap", GrainMap},
    {"SidesCoatedMap", SidesCoatedMap},
    {"CoatingTypeMap", CoatingTypeMap},
    {"CoverSidesImagedMap", CoverSidesImagedMap},
    {"OutputColorMap", OutputColorMap},
    {"HalftoneScreenMap", HalftoneScreenMap},
    {"AntialiasingMap", AntialiasingMap},
    {"ImageShiftOptions1SidedMap", ImageShiftOptions1SidedMap},
    {"ImageShiftOptions2SidedMap", ImageShiftOptions2SidedMap},
    {"ResolutionMap", ResolutionMap},
    {"LightenDarkenMenuMap", LightenDarkenMenuMap},
    {"TonerSaverMap", TonerSaverMap},
    {"OutputOrderMap", OutputOrderMap},
    {"PrinterEmulationMap", PrinterEmulationMap},
    {"HighlightColorMap", HighlightColorMap},
    {"TrappingMap", TrappingMap},
    {"BlackOverprintMap", BlackOverprintMap},
    {"RenderingIntentMap", RenderingIntentMap},
    {"RGBProfileMap", RGBProfileMap},
    {"CMYKProfileMap", CMYKProfileMap},
    {"DestinationProfileMap", DestinationProfileMap},
    {"CompleteStockSizeMap", CompleteStockSizeMap},
    {"BannerPageMap", BannerPageMap},
    {"RequestOffsetMap", RequestOffsetMap},
    {"JCLTrueGrayGraphicsMap", JCLTrueGrayGraphicsMap},
    {"JCLTrueGrayImagesMap", JCLTrueGrayImagesMap},
    {"LightenDarkenMap", LightenDarkenMap},
    {"MediaColorMap", MediaColorMap},
    {"MediaTypeMap", MediaTypeMap},
    {"PPDDuplexMap", PPDDuplexMap},
    {"JCLPrintQualityMap", JCLPrintQualityMap},
    {"ZRRGBColorSpaceMap", ZRRGBColorSpaceMap},
    {"ZRCMYKColorSpaceMap", ZRCMYKColorSpaceMap},
    {"JCLColorCorrectionMap", JCLColorCorrectionMap},
    {"PageSizeMap", PageSizeMap},
    {"OutputBinMap", OutputBinMap},
    {"ZRFoldMap", ZRFoldMap},
    {"ZRPunchMap", ZRPunchMap},
    {"ZRStapleMap", ZRStapleMap},
    {"DraftModeMap", DraftModeMap},
    {"PPDOutputOptionMap", PPDOutputOptionMap},
    {"PPDResolutionMap", PPDResolutionMap},
    {"ColorModeMap", ColorModeMap},
    {"InputSlotMap", InputSlotMap},
    {"FeedEdgeMap", FeedEdgeMap},
    {"SlipSheetMap", SlipSheetMap},
    {"MainKeywordMap", MainKeywordMap},
};

// Table names are ASCII identifiers, so folding ASCII letters is enough.
constexpr char FoldAscii(char c) {
  return (c >= 'A' && c <= 'Z') ? static_cast<char>(c + 32) : c;
}

bool EqualsIgnoringAsciiCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (FoldAscii(a[i]) != FoldAscii(b[i])) return false;
  }
  return true;
}

}  // namespace

std::span<const KeywordTableEntry> AllKeywordTables() {
  return kRegistry;
}

const KeywordTableEntry* FindKeywordTable(std::string_view name) {
  for (const KeywordTableEntry& entry : kRegistry) {
    if (name == entry.name) return &entry;
  }
  for (const KeywordTableEntry& entry : kRegistry) {
    if (EqualsIgnoringAsciiCase(name, entry.name)) return &entry;
  }
  return nullptr;
}

}  // namespace zorva

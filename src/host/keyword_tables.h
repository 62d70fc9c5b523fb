// The keyword tables: constant data, one definition each, rows in menu order.
// SettingMap tables fill pop-up menus; the paper-size table adds dimensions;
// keyword-pair tables convert PPD choices. A registry lists them by name for
// tools that show users the codes a ticket takes.
#pragma once

#include <span>
#include <string_view>
#include <variant>

#include "host/setting_map.h"

namespace zorva {

// ---- SettingMap tables --------------------------------------------------------
extern const SettingMap PlexMap[];
extern const SettingMap WatermarkMap[];
extern const SettingMap StockTypeMap[];
extern const SettingMap CompleteStockTypeMap[];
extern const SettingMap StockColorMap[];
extern const SettingMap CompleteStockColorMap[];
extern const SettingMap StockPunchedMap[];
extern const SettingMap StockSizeMap[];
extern const SettingMap StockDescriptionMap[];
extern const SettingMap WeightMap[];
extern const SettingMap FinishMap[];
extern const SettingMap FinishMap1[];
extern const SettingMap GrainMap[];
extern const SettingMap SidesCoatedMap[];
extern const SettingMap CoatingTypeMap[];
extern const SettingMap CoverSidesImagedMap[];
extern const SettingMap OutputColorMap[];
extern const SettingMap HalftoneScreenMap[];
extern const SettingMap AntialiasingMap[];
extern const SettingMap ImageShiftOptions1SidedMap[];
extern const SettingMap ImageShiftOptions2SidedMap[];
// Image options and full colour setup.
extern const SettingMap ResolutionMap[];
extern const SettingMap LightenDarkenMenuMap[];
extern const SettingMap TonerSaverMap[];
extern const SettingMap OutputOrderMap[];
extern const SettingMap PrinterEmulationMap[];
extern const SettingMap HighlightColorMap[];
extern const SettingMap TrappingMap[];
extern const SettingMap BlackOverprintMap[];
extern const SettingMap RenderingIntentMap[];
extern const SettingMap RGBProfileMap[];
extern const SettingMap CMYKProfileMap[];
extern const SettingMap DestinationProfileMap[];

// ---- Paper sizes ----------------------------------------------------------------
extern const PaperSizeSettingMap CompleteStockSizeMap[];

// ---- PPD keyword pairs --------------------------------------------------------
extern const KeywordPair BannerPageMap[];
extern const KeywordPair RequestOffsetMap[];
extern const KeywordPair JCLTrueGrayGraphicsMap[];
extern const KeywordPair JCLTrueGrayImagesMap[];
extern const KeywordPair LightenDarkenMap[];
extern const KeywordPair MediaColorMap[];
extern const KeywordPair MediaTypeMap[];
extern const KeywordPair PPDDuplexMap[];
extern const KeywordPair JCLPrintQualityMap[];
extern const KeywordPair ZRRGBColorSpaceMap[];
extern const KeywordPair ZRCMYKColorSpaceMap[];
extern const KeywordPair JCLColorCorrectionMap[];
extern const KeywordPair PageSizeMap[];
extern const KeywordPair OutputBinMap[];
extern const KeywordPair ZRFoldMap[];
extern const KeywordPair ZRPunchMap[];
extern const KeywordPair ZRStapleMap[];
extern const KeywordPair DraftModeMap[];
extern const KeywordPair PPDOutputOptionMap[];
extern const KeywordPair PPDResolutionMap[];
extern const KeywordPair ColorModeMap[];
extern const KeywordPair InputSlotMap[];
extern const KeywordPair FeedEdgeMap[];
extern const KeywordPair SlipSheetMap[];

extern const MainKeyword MainKeywordMap[];

// ---- Registry ---------------------------------------------------------------------
using KeywordTableRef = std::variant<const SettingMap*, const PaperSizeSettingMap*,
                                     const KeywordPair*, const MainKeyword*>;

struct KeywordTableEntry {
  const char* name;  // as users type it: "PlexMap", "MediaTypeMap", ...
  KeywordTableRef table;
};

// Every table, in a stable order (setting maps, paper sizes, keyword pairs).
std::span<const KeywordTableEntry> AllKeywordTables();
// Exact name first, then a case-insensitive match; nullptr when unknown.
const KeywordTableEntry* FindKeywordTable(std::string_view name);

}  // namespace zorva

// Summary texts of special pages, stocks and colour options.
#include "model/summaries.h"

#include <cstdint>
#include <optional>

#include "core/bundle.h"
#include "core/localization.h"
#include "host/installable_options.h"
#include "host/keyword_tables.h"
#include "host/setting_map.h"

namespace zorva {
namespace {

constexpr std::int32_t kTypePrecutTab = 4;
constexpr std::int32_t kTypeOrdered = 6;
constexpr std::int32_t kTypeCustom = 7;
// Types whose name the printer gives (its "MediaType" choices).
constexpr std::int32_t kTypeTabStock = 24;
constexpr std::int32_t kTypePrinterTab = 33;
constexpr std::int32_t kSourcePostProcessInserter = 10;
constexpr const char* kInserterFeature = "PostPrintInserterKey";

using Items = std::vector<std::string>;

std::string Label(const Bundle* bundle, std::string_view key) {
  return std::string(bundle != nullptr ? bundle->localizedString(key) : kStringNotFound);
}

// The text of a coded value, or nullopt when its table has no row for it.
std::optional<std::string> ValueText(const Bundle* bundle, const SettingMap* map,
                                     std::int32_t value) {
  const char* key = LocalizedKeyForTicketValue(map, value);
  if (key == nullptr) return std::nullopt;
  return Label(bundle, key);
}

std::string Join(const Items& items, std::string_view separator) {
  std::string out;
  for (const std::string& item : items) {
    if (!out.empty()) out += separator;
    out += item;
  }
  return out;
}

std::string Str(const OptionalString& s) {
  return s.value_or(std::string());
}

// "%@ %@": a label and a text.
std::string Labelled(const Bundle* bundle, std::string_view labelKey, std::string_view text) {
  return FormatString("%@ %@", {Label(bundle, labelKey), text});
}

void AddText(Items& items, std::optional<std::string> text) {
  if (text && !text->empty()) items.push_back(std::move(*text));
}

void AddLabelled(Items& items, const Bundle* bundle, std::string_view labelKey,
                 const std::optional<std::string>& text) {
  if (text) items.push_back(Labelled(bundle, labelKey, *text));
}

std::optional<std::string> SizeText(const Stock& stock, const Bundle* bundle) {
  if (stock.size() == kUnset) return std::nullopt;
  const char* key = LocalizedKeyForPaperSizeTicketValue(CompleteStockSizeMap, stock.size());
  if (key == nullptr) return std::nullopt;
  return Label(bundle, key);
}

std::optional<std::string> ColorText(const Stock& stock, const Bundle* bundle) {
  if (stock.color() == kUnset) return std::nullopt;
  if (stock.color() == kStockColorCustom) return Str(stock.customColor());
  return ValueText(bundle, CompleteStockColorMap, stock.color());
}

// A name followed by the tab modulus, when there is one.
std::string WithModulus(const std::string& name, std::int32_t modulus) {
  if (modulus == kUnset) return name;
  return FormatString("%@ (%d)", {name, std::int64_t{modulus}});
}

std::optional<std::string> TypeText(const Stock& stock, const Bundle* bundle) {
  const std::int32_t type = stock.type();
  if (type == kUnset) return std::nullopt;
  if (type == kTypeOrdered) return WithModulus(Str(stock.customType()), stock.modulus());
  if (type == kTypePrecutTab) {
    return WithModulus(Label(bundle, "StockTypePrecutTab"), stock.modulus());
  }
  const bool printerTab = type == kTypeTabStock || type == kTypePrinterTab;
  if (printerTab && stock.modulus() > 0) {
    // The printer names these types; until a PPD is at hand its choice
    // keyword stands in for the PPD's own text.
    const char* choice = PPDChoiceForTicketValue("MediaType", type);
    if (choice == nullptr) return std::nullopt;
    return WithModulus(choice, stock.modulus());
  }
  if (type == kTypeCustom) return Str(stock.customType());
  return ValueText(bundle, CompleteStockTypeMap, type);
}

std::optional<std::string> WeightText(const Stock& stock, const Bundle* bundle) {
  if (stock.weight() == kUnset) return std::nullopt;
  if (auto text = ValueText(bundle, WeightMap, stock.weight())) return text;
  return FormatString("%@ %d gsm", {Label(bundle, "Weight Label"), std::int64_t{stock.weight()}});
}

std::optional<std::string> CoatingText(const Stock& stock, const Bundle* bundle) {
  if (stock.sidesCoated() == kUnset) return std::nullopt;
  if (stock.sidesCoated() == kStockSidesUncoated) return Label(bundle, "Uncoated");
  auto type = ValueText(bundle, CoatingTypeMap, stock.coatingType());
  auto sides = ValueText(bundle, SidesCoatedMap, stock.sidesCoated());
  if (!type || !sides) return std::nullopt;
  return FormatString("%@ %@ - %@", {Label(bundle, "Coating Label"), *type, *sides});
}

std::optional<std::string> SetValueText(const Bundle* bundle, const SettingMap* map,
                                        std::int32_t value) {
  if (value == kUnset) return std::nullopt;
  return ValueText(bundle, map, value);
}

// The page-class item: printed sides of a cover, quantity of an insert,
// plex of an exception page.
std::optional<std::string> PageClassText(const SpecialPage& page, const Bundle* bundle) {
  if (const auto* cover = dynamic_cast<const Cover*>(&page)) {
    return ValueText(bundle, CoverSidesImagedMap, cover->sidesImaged());
  }
  if (const auto* insert = dynamic_cast<const Insert*>(&page)) {
    return FormatString("%@ [%d]",
                        {Label(bundle, "InsertSummaryQuantity"), std::int64_t{insert->quantity()}});
  }
  if (const auto* exception = dynamic_cast<const ExceptionPage*>(&page)) {
    return SetValueText(bundle, PlexMap, exception->plex());
  }
  return std::nullopt;
}

void AddExceptionItems(Items& items, const ExceptionPage& page, const Bundle* bundle) {
  AddText(items, CreateImageShiftAttributesDescription(bundle, &page.imageShift()));
  AddText(items, SetValueText(bundle, OutputColorMap, page.outputColor()));
  AddLabelled(items, bundle,
              "Halftone Screen:", SetValueText(bundle, HalftoneScreenMap, page.halftoneScreen()));
  AddLabelled(items, bundle,
              "Anti-aliasing:", SetValueText(bundle, AntialiasingMap, page.antialiasing()));
  FullColorOptions::Name trc;
  page.colorOptions().trc(&trc);
  if (trc && !trc->empty()) items.push_back(Labelled(bundle, "TRC:", *trc));
  AddText(items, CreateColorOptionsSummary(page.colorOptions(), bundle, ", "));
}

// The post-process inserter's name as the printer's features give it.
std::string InserterText(const Bundle* bundle) {
  const char* key = InstalledFeatureLabelKey(kInserterFeature);
  return Label(bundle, key != nullptr ? key : kInserterFeature);
}

std::string Signed(const Bundle* bundle, std::string_view labelKey, std::int32_t v) {
  return FormatString("%@ %d", {Label(bundle, labelKey), std::int64_t{v}});
}

void AddAdjustment(Items& items, const Bundle* bundle, std::string_view labelKey,
                   std::int32_t value) {
  if (value != kUnset) items.push_back(Signed(bundle, labelKey, value));
}

void AddProfileName(Items& items, const Bundle* bundle, std::string_view labelKey,
                    const FullColorOptions::Name& name) {
  if (name && !name->empty()) items.push_back(Labelled(bundle, labelKey, *name));
}

// A profile shows only when chosen by name (its custom kind): built-in
// profile codes have no table to name them.
void AddCustomProfile(Items& items, const Bundle* bundle, std::string_view labelKey,
                      std::int32_t kind, std::int32_t custom, const FullColorOptions::Name& name) {
  if (kind == custom) AddProfileName(items, bundle, labelKey, name);
}

void AddProfiles(Items& items, const FullColorOptions& o, const Bundle* bundle) {
  std::int32_t kind = kUnset;
  FullColorOptions::Name name;
  o.rgbImagesProfile(&kind, &name);
  AddCustomProfile(items, bundle, "RGB Images Profile Label", kind, kRGBProfileCustom, name);
  o.rgbTextAndGraphicsProfile(&kind, &name);
  AddCustomProfile(items, bundle, "RGB Text Profile Label", kind, kRGBProfileCustom, name);
  o.cmykImagesProfile(&kind, &name);
  AddCustomProfile(items, bundle, "CMYK Images Profile Label", kind, kCMYKProfileCustom, name);
  o.cmykTextAndGraphicsProfile(&kind, &name);
  AddCustomProfile(items, bundle, "CMYK Text Profile Label", kind, kCMYKProfileCustom, name);
  o.grayImagesProfile(&name);
  AddProfileName(items, bundle, "Gray Images Profile Label", name);
  o.grayTextAndGraphicsProfile(&name);
  AddProfileName(items, bundle, "Gray Text Profile Label", name);
  o.destinationProfile(&kind, &name);
  AddCustomProfile(items, bundle, "Destination Profile Label", kind, kDestinationProfileCustom,
                   name);
}

std::string Range(std::int32_t start, std::int32_t end) {
  if (end == start) return std::to_string(start);
  return std::to_string(start) + "-" + std::to_string(end);
}

}  // namespace

std::optional<std::string> StockSizeText(const Stock& stock, const Bundle* bundle) {
  return SizeText(stock, bundle);
}
std::optional<std::string> StockColorText(const Stock& stock, const Bundle* bundle) {
  return ColorText(stock, bundle);
}
std::optional<std::string> StockTypeText(const Stock& stock, const Bundle* bundle) {
  return TypeText(stock, bundle);
}
std::optional<std::string> StockWeightText(const Stock& stock, const Bundle* bundle) {
  return WeightText(stock, bundle);
}
std::optional<std::string> StockCoatingText(const Stock& stock, const Bundle* bundle) {
  return CoatingText(stock, bundle);
}

Items StockSummaryItems(const Stock& stock, const Bundle* bundle) {
  Items items;
  AddText(items, SizeText(stock, bundle));
  AddText(items, ColorText(stock, bundle));
  AddText(items, TypeText(stock, bundle));
  AddLabelled(items, bundle, "Hole Punched Label",
              SetValueText(bundle, StockPunchedMap, stock.punched()));
  AddText(items, WeightText(stock, bundle));
  AddText(items, CoatingText(stock, bundle));
  AddText(items, SetValueText(bundle, GrainMap, stock.grain()));
  AddText(items, SetValueText(bundle, FinishMap, stock.finish()));
  const std::string description = Str(stock.description());
  if (!description.empty()) items.push_back(Labelled(bundle, "Description Label", description));
  return items;
}

std::string CreateStockSummary(const Stock& stock, const Bundle* bundle,
                               std::string_view separator) {
  return Join(StockSummaryItems(stock, bundle), separator);
}

Items ColorOptionsSummaryItems(const FullColorOptions& o, const Bundle* bundle) {
  Items items;
  std::int32_t v = kUnset;
  o.lightness(&v);
  AddAdjustment(items, bundle, "Lightness Label", v);
  o.contrast(&v);
  AddAdjustment(items, bundle, "Contrast Label", v);
  o.saturation(&v);
  AddAdjustment(items, bundle, "Saturation Label", v);
  std::int32_t cr = kUnset, mg = kUnset, yb = kUnset;
  o.colorCast(&cr, &mg, &yb);
  if (cr != kUnset && mg != kUnset && yb != kUnset) {
    items.push_back(FormatString(
        "%@ %d/%d/%d",
        {Label(bundle, "Color Cast Label"), std::int64_t{cr}, std::int64_t{mg}, std::int64_t{yb}}));
  }
  std::int32_t trapping = kUnset, slow = kUnset, fast = kUnset;
  o.trapping(&trapping);
  o.trappingAdjustment(&slow, &fast);
  if (trapping == kTrappingAdjustable && slow != kUnset && fast != kUnset) {
    items.push_back(FormatString("%@ %d/%d", {Label(bundle, "Trapping Widths Label"),
                                              std::int64_t{fast}, std::int64_t{slow}}));
  }
  AddProfiles(items, o, bundle);
  return items;
}

std::string CreateColorOptionsSummary(const FullColorOptions& options, const Bundle* bundle,
                                      std::string_view separator) {
  return Join(ColorOptionsSummaryItems(options, bundle), separator);
}

std::string CopySpecialPageSummary(const SpecialPage* page, const Bundle* bundle) {
  if (page == nullptr) return std::string();
  const Stock& stock = *page->stock();
  Items items;
  const std::string name = Str(stock.customName());
  if (!name.empty()) items.push_back(Labelled(bundle, "Paper Name Label", name));
  AddText(items, PageClassText(*page, bundle));
  if (stock.source() == kUnset) {
    for (std::string& item : StockSummaryItems(stock, bundle)) items.push_back(std::move(item));
    if (const auto* exception = dynamic_cast<const ExceptionPage*>(page)) {
      AddExceptionItems(items, *exception, bundle);
    }
  } else if (stock.source() == kSourcePostProcessInserter) {
    items.push_back(InserterText(bundle));
  }
  return Join(items, "; ");
}

std::string CreateInsertAttributesDescription(const Bundle* bundle, const Insert* insert) {
  if (insert == nullptr) return std::string();
  Items items{Signed(bundle, "InsertSummaryQuantity", insert->quantity())};
  AddText(items, CreateStockSummary(*insert->stock(), bundle, ", "));
  return Join(items, ";  ");
}

std::string CreateImageShiftAttributesDescription(const Bundle* bundle,
                                                  const ImageShiftOptions* options) {
  if (options == nullptr || options->twoSidedMode() == kUnset) return std::string();
  Items items;
  if (auto mode = ValueText(bundle, ImageShiftOptions2SidedMap, options->twoSidedMode())) {
    items.push_back(
        FormatString("%@%@%@", {Label(bundle, "ImageShift"), Label(bundle, ":"), *mode}));
  }
  return Join(items, ", ");
}

std::string CreateExceptionAttributesDescription(const Bundle* bundle, const ExceptionPage* page) {
  if (page == nullptr) return std::string();
  Items items{Labelled(bundle, "Pages Label", SpecialPagePagesText(page, bundle))};
  AddText(items, CopySpecialPageSummary(page, bundle));
  return Join(items, ";  ");
}

std::string SpecialPagePagesText(const SpecialPage* page, const Bundle* bundle) {
  if (const auto* exception = dynamic_cast<const ExceptionPage*>(page)) {
    return Range(exception->startPage(), exception->endPage());
  }
  if (const auto* insert = dynamic_cast<const Insert*>(page)) {
    if (insert->startPage() == 0) return Label(bundle, "Before Page 1");
    return std::to_string(insert->startPage());
  }
  return std::string();
}

std::vector<SpecialPageSummaryRow> UpdateSpecialPagesSummary(const Bundle* bundle,
                                                             const Cover* front,
                                                             const InsertList& inserts,
                                                             const ExceptionPageList& exceptions,
                                                             const Cover* back) {
  std::vector<SpecialPageSummaryRow> rows;
  const auto add = [&](std::string_view kindKey, const SpecialPage* page) {
    rows.push_back({Label(bundle, kindKey), SpecialPagePagesText(page, bundle),
                    CopySpecialPageSummary(page, bundle)});
  };
  if (front != nullptr) add("Front Cover Label", front);
  for (SpecialPageList::Index i = 0; i < inserts.count(); ++i) {
    add("Insert Label", inserts.pageAtIndex(i));
  }
  for (SpecialPageList::Index i = 0; i < exceptions.count(); ++i) {
    add("Exception Page Label", exceptions.pageAtIndex(i));
  }
  if (back != nullptr) add("Back Cover Label", back);
  return rows;
}

}  // namespace zorva

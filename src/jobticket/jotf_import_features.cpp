// Where each feature of the device profile is read in a JOTF document and
// which setting it becomes. Every conversion is the writer's own table read
// backwards (jotf_maps.h), so what the writer wrote comes back as it was.
#include <algorithm>
#include <charconv>
#include <functional>

#include "core/ticket_keys.h"
#include "host/keyword_tables.h"
#include "jobticket/device_profile.h"
#include "jobticket/jotf_commands.h"
#include "jobticket/jotf_import.h"
#include "jobticket/jotf_maps.h"
#include "jobticket/jotf_media.h"
#include "model/stock.h"

namespace zorva {

namespace {

namespace key = tkey;

// Finds an element by a path below some base (the group's start node, or an
// element such as a cover's `media-col`).
using Finder = std::function<xmlNodePtr(std::string_view)>;

std::string_view NameOf(xmlNodePtr node) {
  return std::string_view(reinterpret_cast<const char*>(node->name));
}

// The first child element of node named name (a dotted path walks down).
xmlNodePtr Child(xmlNodePtr node, std::string_view path) {
  while (node && !path.empty()) {
    const std::size_t dot = path.find('.');
    const std::string_view name = path.substr(0, dot);
    path = dot == std::string_view::npos ? std::string_view() : path.substr(dot + 1);
    xmlNodePtr c = node->children;
    while (c && !(c->type == XML_ELEMENT_NODE && NameOf(c) == name)) c = c->next;
    node = c;
  }
  return node;
}

// Element children named "value" of node.
std::vector<xmlNodePtr> Values(xmlNodePtr node) {
  std::vector<xmlNodePtr> values;
  for (xmlNodePtr c = node ? node->children : nullptr; c; c = c->next) {
    if (c->type == XML_ELEMENT_NODE && NameOf(c) == "value") values.push_back(c);
  }
  return values;
}

Finder GroupFinder(const JotfImportContext* ctx) {
  return [ctx](std::string_view path) -> xmlNodePtr {
    return ctx->paths ? ctx->paths->find(path) : JOTFImportGetNode(ctx->start, path);
  };
}

Finder ChildFinder(xmlNodePtr base) {
  return [base](std::string_view path) -> xmlNodePtr {
    // Paths of this finder start with "."; the base stands for the group.
    return Child(base, path.substr(path.starts_with('.') ? 1 : 0));
  };
}

// A node's value as the feature takes it: the keyword (a name-syntax text
// standing for one included), a number or a name, with the class it was taken as.
struct Read {
  std::string syntax;
  Value value;
  bool isKeyword() const { return syntax == kJotfSyntaxKeyword; }
  const std::string* text() const { return value.string(); }
  std::optional<std::int32_t> number() const {
    std::int32_t n = 0;
    if (syntax == kJotfSyntaxNumber && value.getNumber(n)) return n;
    return std::nullopt;
  }
};

std::optional<Read> ReadNode(const Dictionary* feature, xmlNodePtr node) {
  if (!node) return std::nullopt;
  // JOTFImportFeatureOneToOne looks the path up itself; a context whose
  // start is the node answers "." + its name with it.
  JotfImportContext one;
  one.start = node;
  Read r;
  std::optional<Value> v =
      JOTFImportFeatureOneToOne(feature, &one, "." + std::string(NameOf(node)), &r.syntax);
  if (!v) return std::nullopt;
  r.value = std::move(*v);
  return r;
}

std::optional<Read> ReadPath(const Dictionary* feature, const Finder& find, std::string_view path) {
  return ReadNode(feature, find(path));
}

// The keyword's value in map (the keyword's text is the document's text).
std::optional<std::int32_t> MapKeyword(const std::optional<Read>& r, JotfKeywordMap map) {
  if (!r || !r->isKeyword()) return std::nullopt;
  return JotfValueFor(map, *r->text());
}

// The `finishings` enum a finishing keyword stands for ("JOTFValue").
std::optional<std::int32_t> EnumOf(const Dictionary* feature, const Read& r) {
  if (!r.isKeyword()) return std::nullopt;
  const Value* keywords = ZDPGetFeatureSyntax(feature, kJotfSyntaxKeyword);
  const Dictionary* k = keywords && keywords->dictionary()
                            ? keywords->dictionary()->getDictionary(*r.text())
                            : nullptr;
  const Dictionary* props = k ? k->getDictionary("Properties") : nullptr;
  const std::string* text = props ? props->getString("JOTFValue") : nullptr;
  std::int32_t n = 0;
  if (!text || std::from_chars(text->data(), text->data() + text->size(), n).ec != std::errc()) {
    return std::nullopt;
  }
  return n;
}

// The dictionary under key (created when missing), or a nested one below it.
Dictionary& Sub(Dictionary& d, std::string_view k) {
  if (!d.getDictionary(k)) d.set(k, Value(Dictionary{}));
  return *d.getDictionary(k);
}

void SetInt(Dictionary& d, std::string_view k, std::int32_t v) {
  d.set(k, Value(v));
}

// ---- Stocks ------------------------------------------------------------------------

using StockReader = void (*)(const Dictionary* feature, const Finder& find, Dictionary& stock);

void ReadStockSize(const Dictionary* feature, const Finder& find, Dictionary& stock) {
  const auto x = ReadPath(feature, find, ".media-col.media-size.x-dimension");
  const auto y = ReadPath(feature, find, ".media-col.media-size.y-dimension");
  if (!x || !y || !x->number() || !y->number()) return;
  for (const PaperSizeSettingMap* row = CompleteStockSizeMap; row->key; ++row) {
    if (row->value != kUnset && row->width == *x->number() && row->height == *y->number()) {
      SetInt(stock, key::kSize, row->value);
      return;
    }
  }
  SetInt(stock, key::kSize, kStockSizeCustom);
  SetInt(stock, key::kWidth, *x->number());
  SetInt(stock, key::kLength, *y->number());
}

void ReadStockType(const Dictionary* feature, const Finder& find, Dictionary& stock) {
  std::optional<std::int32_t> type;
  if (const auto t = ReadPath(feature, find, ".media-col.media-type")) {
    if (t->isKeyword()) {
      if (const auto code = JotfValueFor(JotfMediaTypeMap, *t->text())) {
        type = JotfStockTypeForCode(*code, 0, 0);
      } else {
        type = JotfStockTypeForName(*t->text());  // a name standing for a keyword
      }
    } else if (t->syntax == kJotfSyntaxName) {
      type = kStockTypeCustom;
      stock.set(key::kCustomType, t->value);
    }
  }
  if (const auto kind =
          MapKeyword(ReadPath(feature, find, ".media-col.media-pre-printed"), JotfPrePrintedMap)) {
    type = JotfStockTypeForCode(6, *kind, 0);
  }
  if (const auto r = ReadPath(feature, find, ".media-col.media-recycled");
      r && r->isKeyword() && *r->text() == "standard") {
    type = JotfStockTypeForCode(7, 0, 1);
  }
  if (type) SetInt(stock, key::kType, *type);
  if (const auto n = ReadPath(feature, find, ".media-col.media-order-count"); n && n->number()) {
    SetInt(stock, key::kModulus, *n->number());
  }
}

void ReadStockColor(const Dictionary* feature, const Finder& find, Dictionary& stock) {
  const auto c = ReadPath(feature, find, ".media-col.media-color");
  if (!c) return;
  if (c->isKeyword()) {
    const auto code = JotfValueFor(JotfMediaColorMap, *c->text());
    const std::optional<std::int32_t> color =
        code ? JotfStockColorForCode(*code) : JotfStockColorForName(*c->text());
    if (color) SetInt(stock, key::kColor, *color);
  } else if (c->syntax == kJotfSyntaxName) {
    SetInt(stock, key::kColor, kStockColorCustom);
    stock.set(key::kCustomColor, c->value);
  }
}

void ReadStockNumber(const Dictionary* feature, const Finder& find, std::string_view path,
                     Dictionary& stock, std::string_view k) {
  if (const auto n = ReadPath(feature, find, path); n && n->number())
    SetInt(stock, k, *n->number());
}

void ReadStockWeight(const Dictionary* feature, const Finder& find, Dictionary& stock) {
  ReadStockNumber(feature, find, ".media-col.media-weight-metric", stock, key::kWeight);
}

void ReadStockDescription(const Dictionary* feature, const Finder& find, Dictionary& stock) {
  const auto d = ReadPath(feature, find, ".media-col.media-description");
  if (d && d->syntax == kJotfSyntaxName) stock.set(key::kDescription, d->value);
}

void ReadStockGrain(const Dictionary* feature, const Finder& find, Dictionary& stock) {
  const auto g = MapKeyword(ReadPath(feature, find, ".media-col.media-grain"), JotfGrainMap);
  if (g) SetInt(stock, key::kGrain, *g);
}

void ReadStockFinish(const Dictionary* feature, const Finder& find, Dictionary& stock) {
  const auto t = MapKeyword(ReadPath(feature, find, ".media-col.media-tooth"), JotfToothMap);
  if (t) SetInt(stock, key::kFinish, *t);
}

// Front and back coating keywords; "none" on a side means that side is bare.
struct Coating {
  std::optional<std::string> front, back;
};

Coating ReadCoating(const Dictionary* feature, const Finder& find) {
  Coating c;
  if (auto f = ReadPath(feature, find, ".media-col.media-front-coating"); f && f->isKeyword()) {
    c.front = *f->text();
  }
  if (auto b = ReadPath(feature, find, ".media-col.media-back-coating"); b && b->isKeyword()) {
    c.back = *b->text();
  }
  return c;
}

// The inverse of the writer: bare/bare 1, front only 2, both 3, back only 4.
void ReadStockCoating(const Dictionary* feature, const Finder& find, Dictionary& stock) {
  const Coating c = ReadCoating(feature, find);
  if (!c.front || !c.back) return;
  const bool front = *c.front != "none", back = *c.back != "none";
  SetInt(stock, key::kSidesCoated, front ? (back ? 3 : 2) : (back ? 4 : 1));
}

void ReadStockCoatingType(const Dictionary* feature, const Finder& find, Dictionary& stock) {
  const Coating c = ReadCoating(feature, find);
  for (const auto& side : {c.front, c.back}) {
    if (const auto type = side ? JotfValueFor(JotfCoatingMap, *side) : std::nullopt) {
      SetInt(stock, key::kCoatingType, *type);
      return;
    }
  }
}

// Hole count 0 is "not punched" (1), 3 is "punched" (2).
void ReadStockPunch(const Dictionary* feature, const Finder& find, Dictionary& stock) {
  const auto n = ReadPath(feature, find, ".media-col.media-hole-count");
  if (!n || !n->number()) return;
  if (*n->number() == 0) SetInt(stock, key::kPunched, 1);
  if (*n->number() == 3) SetInt(stock, key::kPunched, 2);
}

struct StockRow {
  std::string_view id;
  StockReader read;
};

constexpr StockRow kStockRows[] = {
    {"StockSize", ReadStockSize},
    {"StockType", ReadStockType},
    {"StockWeight", ReadStockWeight},
    {"StockColor", ReadStockColor},
    {"StockDescription", ReadStockDescription},
    {"StockGrain", ReadStockGrain},
    {"StockFinish", ReadStockFinish},
    {"StockCoating", ReadStockCoating},
    {"StockCoatingType", ReadStockCoatingType},
    {"StockPunch", ReadStockPunch},
};

// Every stock feature of the profile, on the `media-col` below base.
std::optional<Dictionary> ReadStockBelow(xmlNodePtr base) {
  if (!Child(base, "media-col")) return std::nullopt;
  Dictionary stock;
  const Finder find = ChildFinder(base);
  for (const StockRow& row : kStockRows) {
    if (const Dictionary* feature = ZDPGetFeature(row.id)) row.read(feature, find, stock);
  }
  if (stock.empty()) return std::nullopt;  // the writer's media of a page without a stock
  return stock;
}

// ---- Placement rows ------------------------------------------------------------------

using Apply = void (*)(const Dictionary* feature, const JotfImportContext* ctx);

enum class Convert : std::uint8_t { Map, Number, Name, Boolean };

// One element, one setting (in the dictionary under `key` when `sub` is
// given, one level further for `sub2`).
struct OneToOneRow {
  std::string_view id;
  std::string_view path;
  Convert convert;
  std::string_view key;
  std::string_view sub = {};
  std::string_view sub2 = {};
  JotfKeywordMap map = {};
};

constexpr OneToOneRow kOneToOne[] = {
    {"OutputColor",
     ".color-effects-type",
     Convert::Map,
     key::kOutputColor,
     {},
     {},
     JotfOutputColorMap},
    {"Duplex", ".sides", Convert::Map, key::kFinishingDuplex, {}, {}, JotfDuplexMap},
    {"OutputDestination",
     ".output-bin",
     Convert::Map,
     key::kOutputDestination,
     {},
     {},
     JotfOutputDestinationMap},
    {"HalftoneScreen",
     ".halftone-graphics",
     Convert::Map,
     key::kHalftoneScreen,
     {},
     {},
     JotfHalftoneMap},
    {"LightenDarken", ".adjust-bw-darkness-value", Convert::Number, key::kLightenDarken},
    {"TonerSaver", ".toner-saver", Convert::Boolean, key::kTonerSaver, {}, {}, JotfTonerSaverMap},
    {"Antialiasing",
     ".anti-aliasing",
     Convert::Map,
     key::kAntialiasing,
     {},
     {},
     JotfAntialiasingMap},
    {"Rotation", ".page-rotation", Convert::Map, key::kRotateImage180, {}, {}, JotfRotationMap},
    {"TaltekEmulation",
     ".adjust-bw-darkness-mode",
     Convert::Map,
     key::kPrinterEmulation,
     {},
     {},
     JotfPrinterEmulationMap},
    {"OutputOrder", ".page-delivery", Convert::Map, key::kOutputOrder, {}, {}, JotfOutputOrderMap},
    {"OPISubstitution",
     ".opi-image-insertion",
     Convert::Map,
     key::kOPISubstitution,
     {},
     {},
     JotfOPISubstitutionMap},
    {"OPIPrescan",
     ".opi-image-pre-scan",
     Convert::Map,
     key::kOPIPrescan,
     {},
     {},
     JotfOPIPrescanMap},
    {"BannerMessage", ".job-sheet-message", Convert::Name, key::kJobNotesSheetMessage},
    {"RecipientName", ".job-recipient-name", Convert::Name, key::kJobNotesRecipient},
    {"JobStartMessage", ".job-message-to-operator", Convert::Name, key::kJobNotesMessage},
    {"AdditionalNotes", ".job-accounting-data", Convert::Name, key::kJobNotesAdditionalInfo},
    {"HighlightPrintingColor",
     ".highlight-colorant",
     Convert::Map,
     key::kHighlightColorOptionsJob,
     key::kHighlightPrintingColor,
     {},
     JotfHighlightColorantMap},
    {"ColorTRC", ".trc.trc-name", Convert::Name, key::kFullColorOptions, key::kFCTRC},
    {"ColorOutputGraphicRendering",
     ".rendering-intent-graphics",
     Convert::Map,
     key::kFullColorOptions,
     key::kGraphicRendering,
     {},
     JotfRenderingMap},
    {"ColorOutputImageRendering",
     ".rendering-intent-images",
     Convert::Map,
     key::kFullColorOptions,
     key::kImageRendering,
     {},
     JotfRenderingMap},
    {"ColorOutputTextRendering",
     ".rendering-intent-text",
     Convert::Map,
     key::kFullColorOptions,
     key::kTextRendering,
     {},
     JotfRenderingMap},
    {"ColorOutputProfile", ".color-destination-profile-front", Convert::Name,
     key::kFullColorOptions, key::kDestinationProfile},
    {"ColorLightness", ".adjust-lightness", Convert::Number, key::kFullColorOptions,
     key::kFCLightness},
    {"ColorSaturation", ".adjust-saturation", Convert::Number, key::kFullColorOptions,
     key::kFCSaturation},
    {"ColorContrast", ".adjust-contrast", Convert::Number, key::kFullColorOptions,
     key::kFCContrast},
    {"ColorCastCyanRed", ".adjust-cyan-red", Convert::Number, key::kFullColorOptions,
     key::kFCColorCast, key::kFCCyanRed},
    {"ColorCastMagentaGreen", ".adjust-magenta-green", Convert::Number, key::kFullColorOptions,
     key::kFCColorCast, key::kFCMagentaGreen},
    {"ColorCastYellowBlue", ".adjust-yellow-blue", Convert::Number, key::kFullColorOptions,
     key::kFCColorCast, key::kFCYellowBlue},
    {"ColorRGBSourceProfileImages", ".undefined-source-rgb-images", Convert::Name,
     key::kFullColorOptions, key::kRGBImagesProfile},
    {"ColorRGBSourceProfileTextAndGraphics", ".undefined-source-rgb-text", Convert::Name,
     key::kFullColorOptions, key::kRGBTextAndGraphicsProfile},
    {"ColorCMYKSourceProfileImages", ".undefined-source-cmyk-images", Convert::Name,
     key::kFullColorOptions, key::kCMYKImagesProfile},
    {"ColorCMYKSourceProfileTextAndGraphics", ".undefined-source-cmyk-text", Convert::Name,
     key::kFullColorOptions, key::kCMYKTextAndGraphicsProfile},
    {"ColorGraySourceProfileImages", ".undefined-source-gray-images", Convert::Name,
     key::kFullColorOptions, key::kGrayImagesProfile},
    {"ColorGraySourceProfileTextAndGraphics", ".undefined-source-gray-text", Convert::Name,
     key::kFullColorOptions, key::kGrayTextAndGraphicsProfile},
    {"ColorTrapping",
     ".trapping",
     Convert::Map,
     key::kFullColorOptions,
     key::kFCTrapping,
     {},
     JotfTrappingMap},
    {"ColorTrappingLength", ".trap-width-fast", Convert::Number, key::kFullColorOptions,
     key::kFCTrappingFast},
    {"ColorTrappingWidth", ".trap-width-slow", Convert::Number, key::kFullColorOptions,
     key::kFCTrappingSlow},
    {"ColorBlackOverprint",
     ".black-overprint",
     Convert::Map,
     key::kFullColorOptions,
     key::kFCBlackOverprint,
     {},
     JotfBlackOverprintMap},
    {"JobName", ".job-name", Convert::Name, key::kJobNotesJobName},
    {"SenderName", ".requesting-user-name", Convert::Name, key::kJobNotesSenderName},
    {"SaveJobFormat",
     ".job-save-disposition.save-info.value.save-document-format",
     Convert::Map,
     key::kJobType,
     key::kJobTypeMediaType,
     {},
     JotfSaveFormatMap},
    {"SaveJobLocation", ".job-save-disposition.save-info.value.save-location", Convert::Name,
     key::kJobType, key::kJobTypeSavedJobLocation},
    {"SaveJobName", ".job-save-disposition.save-info.value.save-name", Convert::Name, key::kJobType,
     key::kJobTypeSavedJobName},
    {"FormMergeCycle", ".forms-col.value.form-cycle-start", Convert::Number, key::kBackgroundForms,
     key::kCyclePages},
};

std::optional<Value> Converted(const OneToOneRow& row, const Read& r) {
  switch (row.convert) {
    case Convert::Map:
      if (const auto v = MapKeyword(r, row.map)) return Value(*v);
      break;
    case Convert::Boolean:
      if (const auto v = MapKeyword(r, row.map)) return Value(*v != 0);
      break;
    case Convert::Number:
      if (const auto n = r.number()) return Value(*n);
      break;
    case Convert::Name:
      if (r.syntax == kJotfSyntaxName) return r.value;
      break;
  }
  return std::nullopt;
}

void Put(Dictionary& settings, const OneToOneRow& row, Value v) {
  if (row.sub.empty()) {
    settings.set(row.key, std::move(v));
  } else if (row.sub2.empty()) {
    Sub(settings, row.key).set(row.sub, std::move(v));
  } else {
    Sub(Sub(settings, row.key), row.sub).set(row.sub2, std::move(v));
  }
}

bool ApplyOneToOne(std::string_view id, const Dictionary* feature, const JotfImportContext* ctx) {
  for (const OneToOneRow& row : kOneToOne) {
    if (row.id != id) continue;
    const std::optional<Read> r = ReadPath(feature, GroupFinder(ctx), row.path);
    if (!r) return true;
    if (std::optional<Value> v = Converted(row, *r)) Put(*ctx->settings, row, std::move(*v));
    return true;
  }
  return false;
}

// ---- Features with more than one element or setting -----------------------------------

void ApplyStock(const Dictionary* feature, const JotfImportContext* ctx) {
  const std::string_view id = *ZDPGetFeatureProperty(feature, "ID")->string();
  Dictionary stock;
  for (const StockRow& row : kStockRows) {
    if (row.id == id) row.read(feature, GroupFinder(ctx), stock);
  }
  if (stock.empty()) return;
  Dictionary& job = Sub(*ctx->settings, key::kJobLevelStock);
  for (auto& [k, v] : stock) job.set(k, v);
}

void ApplySaveJob(const Dictionary* feature, const JotfImportContext* ctx) {
  const auto code =
      MapKeyword(ReadPath(feature, GroupFinder(ctx), ".job-save-disposition.save-disposition"),
                 JotfSaveDispositionMap);
  if (code) {
    SetInt(Sub(*ctx->settings, key::kJobType), key::kJobTypeJobType,
           JotfMapCode(JotfJobTypeForDisposition, *code));
  }
}

// The writer puts the hold directly in the group; the collection form is
// accepted too.
void ApplyHoldJob(const Dictionary* feature, const JotfImportContext* ctx) {
  std::optional<Read> r = ReadPath(feature, GroupFinder(ctx), ".job-hold-until");
  if (!r) r = ReadPath(feature, GroupFinder(ctx), ".job-save-disposition.job-hold-until");
  if (r && r->isKeyword()) {
    SetInt(Sub(*ctx->settings, key::kJobType), key::kJobTypeJobType,
           JotfMapCode(JotfJobTypeForDisposition, 1));
  }
}

// Each `finishings` value the feature knows, as its enum.
std::vector<std::int32_t> FinishingEnums(const Dictionary* feature, const JotfImportContext* ctx) {
  std::vector<std::int32_t> enums;
  for (xmlNodePtr value : Values(GroupFinder(ctx)(".finishings"))) {
    const std::optional<Read> r = ReadNode(feature, value);
    if (const auto e = r ? EnumOf(feature, *r) : std::nullopt) enums.push_back(*e);
  }
  return enums;
}

constexpr std::string_view kStapleKeys[] = {key::kFinishingStaple1, key::kFinishingStaple2,
                                            key::kFinishingStapleCenter};
constexpr std::string_view kFoldKeys[] = {key::kFinishingFold, key::kFinishingZFold,
                                          key::kFinishingBind, key::kBookletFoldStaple};

void ApplyStaple(const Dictionary* feature, const JotfImportContext* ctx) {
  for (const std::int32_t e : FinishingEnums(feature, ctx)) {
    const std::int32_t code = JotfUnmapCode(JotfStapleEnumMap, e);
    const std::int32_t value = JotfUnmapCode(JotfStapleValueMap, code);
    const std::int32_t kind = JotfMapCode(JotfStapleKindMap, code);
    if (value != -1 && kind >= 1) SetInt(*ctx->settings, kStapleKeys[kind - 1], value);
  }
}

void ApplyFoldCodes(const Dictionary* feature, const JotfImportContext* ctx) {
  for (const std::int32_t e : FinishingEnums(feature, ctx)) {
    const std::int32_t code = JotfUnmapCode(JotfFoldEnumMap, e);
    const std::int32_t kind = JotfMapCode(JotfFoldKindMap, code);
    if (kind >= 1) SetInt(*ctx->settings, kFoldKeys[kind - 1], code);
  }
}

void ApplyPunchLocation(const Dictionary* feature, const JotfImportContext* ctx) {
  for (const std::int32_t e : FinishingEnums(feature, ctx)) {
    const std::int32_t value = JotfUnmapCode(JotfPunchValueMap, JotfUnmapCode(JotfPunchEnumMap, e));
    if (value != -1) SetInt(*ctx->settings, key::kFinishingHolePunch, value);
  }
}

void ApplyPunchCount(const Dictionary* feature, const JotfImportContext* ctx) {
  for (const std::int32_t e : FinishingEnums(feature, ctx)) {
    const std::int32_t holes =
        JotfUnmapCode(JotfHoleCountMap, JotfUnmapCode(JotfPunchHoleEnumMap, e));
    if (holes != -1) SetInt(*ctx->settings, key::kFinishingHolePunchOptions, holes);
  }
}

constexpr std::int32_t kFinishingCustomOption = 13;

void ApplyFinishingCustom(const Dictionary* feature, const JotfImportContext* ctx) {
  const auto r = ReadPath(feature, GroupFinder(ctx), ".finishings-col.finishing-template");
  if (!r || r->syntax != kJotfSyntaxName) return;
  ctx->settings->set(key::kFinishingCustom, r->value);
  SetInt(*ctx->settings, key::kFinishingOptions, kFinishingCustomOption);
}

constexpr std::int32_t kSlipSheetsOn = 2;

void ApplySlipSheets(const Dictionary* feature, const JotfImportContext* ctx) {
  const auto r = ReadPath(feature, GroupFinder(ctx), ".separator-sheets.separator-sheets-type");
  if (r && r->isKeyword()) SetInt(*ctx->settings, key::kFinishingSlipSheet, kSlipSheetsOn);
}

void ApplyResolution(const Dictionary* feature, const JotfImportContext* ctx) {
  // The pair of numbers is one keyword of the feature: "1200x600".
  const Finder find = GroupFinder(ctx);
  xmlNodePtr crossNode = find(".printer-resolution.cross-feed");
  xmlNodePtr feedNode = find(".printer-resolution.feed-direction");
  if (!crossNode || !feedNode) return;
  xmlChar* a = xmlNodeGetContent(crossNode);
  xmlChar* b = xmlNodeGetContent(feedNode);
  const std::string pair = std::string(a ? reinterpret_cast<const char*>(a) : "") + "x" +
                           std::string(b ? reinterpret_cast<const char*>(b) : "");
  xmlFree(a);
  xmlFree(b);
  const Value* keywords = ZDPGetFeatureSyntax(feature, kJotfSyntaxKeyword);
  if (!keywords || !keywords->dictionary()) return;
  for (const auto& [keyword, entry] : *keywords->dictionary()) {
    const Dictionary* props =
        entry.dictionary() ? entry.dictionary()->getDictionary("Properties") : nullptr;
    const std::string* text = props ? props->getString("JOTFValue") : nullptr;
    if (!text || *text != pair) continue;
    if (const auto v = JotfValueFor(JotfResolutionMap, keyword)) {
      SetInt(*ctx->settings, key::kResolution, *v);
    }
    return;
  }
}

// The set of `job-offset` keywords back to the offset choice: the command
// value whose keywords are exactly those read, plus 2 (the writer's offset
// 2 to 5 are command values 0 to 3).
void ApplyOffset(const Dictionary* feature, const JotfImportContext* ctx) {
  std::vector<std::string> read;
  for (xmlNodePtr value : Values(GroupFinder(ctx)(".job-offset"))) {
    const std::optional<Read> r = ReadNode(feature, value);
    if (!r || !r->isKeyword()) return;  // an unknown keyword spoils the whole set
    read.push_back(*r->text());
  }
  if (read.empty()) return;
  std::sort(read.begin(), read.end());
  for (std::int32_t command = 0; command <= 3; ++command) {
    std::vector<std::string> written;
    for (const JotfKeywordRow& row : JotfJobOffsetMap) {
      if (row.value == command) written.emplace_back(row.keyword);
    }
    std::sort(written.begin(), written.end());
    if (written == read) {
      SetInt(*ctx->settings, key::kFinishingOffset, command + 2);
      return;
    }
  }
}

void ApplyPagesPerSubset(const Dictionary* feature, const JotfImportContext* ctx) {
  const auto n = ReadPath(feature, GroupFinder(ctx), ".pages-per-subset.value");
  if (!n || !n->number()) return;
  SetInt(*ctx->settings, key::kFinishingOffsetPagesPerSubset, *n->number());
  SetInt(*ctx->settings, key::kFinishingOffsetEnableSubset, 1);
}

constexpr std::int32_t kImageShiftCustomOption = 2;

struct ShiftRow {
  std::string_view id;
  std::string_view path;
  std::string_view sub;
};
constexpr ShiftRow kShiftRows[] = {
    {"ImageShiftSide1X", ".x-side1-image-shift", key::kX1},
    {"ImageShiftSide1Y", ".y-side1-image-shift", key::kY1},
    {"ImageShiftSide2X", ".x-side2-image-shift", key::kX2},
    {"ImageShiftSide2Y", ".y-side2-image-shift", key::kY2},
    {"FormMergeShiftX", ".forms-col.value.forms-x-image-shift", key::kX1},
    {"FormMergeShiftY", ".forms-col.value.forms-y-image-shift", key::kY1},
};

// The document holds hundredths of a millimetre: stored as they are, with
// "FullPrecision", so the writer gives back exactly what it read.
void ApplyShift(const Dictionary* feature, const JotfImportContext* ctx) {
  const std::string_view id = *ZDPGetFeatureProperty(feature, "ID")->string();
  for (const ShiftRow& row : kShiftRows) {
    if (row.id != id) continue;
    const auto n = ReadPath(feature, GroupFinder(ctx), row.path);
    if (!n || !n->number()) return;
    const bool forms = id.starts_with("Form");
    Dictionary& d = Sub(*ctx->settings, forms ? key::kBackgroundForms : key::kImageShiftJob);
    SetInt(d, row.sub, *n->number());
    d.set(key::kFullPrecision, Value(true));
    if (!forms) SetInt(d, key::kImageShiftOption, kImageShiftCustomOption);
  }
}

constexpr std::int32_t kMergeWithExistingForm = 2;
constexpr std::int32_t kCreateNewForm = 3;

void ApplyFormName(const Dictionary* feature, const JotfImportContext* ctx) {
  const bool create = *ZDPGetFeatureProperty(feature, "ID") == Value("FormCreateName");
  const auto r = ReadPath(
      feature, GroupFinder(ctx),
      create ? ".form-save.form-save-info.value.form-save-name" : ".forms-col.value.form-name");
  if (!r || r->syntax != kJotfSyntaxName) return;
  Dictionary& forms = Sub(*ctx->settings, key::kBackgroundForms);
  forms.set(create ? key::kNewFormString : key::kMergeWithString, r->value);
  SetInt(forms, key::kUseExistingForm, create ? kCreateNewForm : kMergeWithExistingForm);
}

void ApplyCover(const Dictionary* feature, const JotfImportContext* ctx) {
  const bool front = *ZDPGetFeatureProperty(feature, "ID") == Value("CoverFront");
  xmlNodePtr cover = GroupFinder(ctx)(front ? ".cover-front" : ".cover-back");
  if (!cover) return;
  const auto type = MapKeyword(ReadNode(feature, Child(cover, "cover-type")), JotfCoverTypeMap);
  if (!type) return;
  Dictionary entry;
  SetInt(entry, key::kSidesImaged, *type);
  if (std::optional<Dictionary> stock = ReadStockBelow(cover)) {
    entry.set(key::kStock, Value(std::move(*stock)));
  }
  ctx->settings->set(front ? key::kFrontCover : key::kBackCover, Value(std::move(entry)));
}

std::optional<std::int32_t> NumberBelow(const Dictionary* feature, xmlNodePtr base,
                                        std::string_view path) {
  const std::optional<Read> r = ReadNode(feature, Child(base, path));
  return r ? r->number() : std::nullopt;
}

void ApplyInserts(const Dictionary* feature, const JotfImportContext* ctx) {
  Array list;
  for (xmlNodePtr value : Values(GroupFinder(ctx)(".insert-sheet"))) {
    const auto after = NumberBelow(feature, value, "insert-after-page-number");
    const auto count = NumberBelow(feature, value, "insert-count");
    if (!after || !count) continue;
    Dictionary entry{{std::string(key::kStartPage), Value(*after)},
                     {std::string(key::kQuantity), Value(*count)}};
    if (std::optional<Dictionary> stock = ReadStockBelow(value)) {
      entry.set(key::kStock, Value(std::move(*stock)));
    }
    list.push_back(Value(std::move(entry)));
  }
  if (!list.empty()) ctx->settings->set(key::kInsertList, Value(std::move(list)));
}

void ApplyExceptions(const Dictionary* feature, const JotfImportContext* ctx) {
  Array list;
  for (xmlNodePtr value : Values(GroupFinder(ctx)(".page-overrides"))) {
    xmlNodePtr range = Child(value, "pages.value");
    const auto lower = NumberBelow(feature, range, "lower-bound");
    const auto upper = NumberBelow(feature, range, "upper-bound");
    if (!lower || !upper) continue;
    list.push_back(Value(Dictionary{{std::string(key::kStartPage), Value(*lower)},
                                    {std::string(key::kEndPage), Value(*upper)}}));
  }
  if (!list.empty()) ctx->settings->set(key::kExceptionList, Value(std::move(list)));
}

struct PlacementRow {
  std::string_view id;
  Apply apply;
};

constexpr PlacementRow kPlacements[] = {
    {"StockSize", ApplyStock},
    {"StockType", ApplyStock},
    {"StockWeight", ApplyStock},
    {"StockColor", ApplyStock},
    {"StockDescription", ApplyStock},
    {"StockGrain", ApplyStock},
    {"StockFinish", ApplyStock},
    {"StockCoating", ApplyStock},
    {"StockCoatingType", ApplyStock},
    {"StockPunch", ApplyStock},
    {"SaveJob", ApplySaveJob},
    {"HoldJob", ApplyHoldJob},
    {"FinishingStaple", ApplyStaple},
    {"FinishingFold", ApplyFoldCodes},
    {"FinishingPunchLocation", ApplyPunchLocation},
    {"FinishingPunchCount", ApplyPunchCount},
    {"FinishingBind", ApplyFoldCodes},
    {"FinishingCustom", ApplyFinishingCustom},
    {"SlipSheets", ApplySlipSheets},
    {"Resolution", ApplyResolution},
    {"Offset", ApplyOffset},
    {"PagesPerSubset", ApplyPagesPerSubset},
    {"ImageShiftSide1X", ApplyShift},
    {"ImageShiftSide1Y", ApplyShift},
    {"ImageShiftSide2X", ApplyShift},
    {"ImageShiftSide2Y", ApplyShift},
    {"FormMergeShiftX", ApplyShift},
    {"FormMergeShiftY", ApplyShift},
    {"FormCreateName", ApplyFormName},
    {"FormMergeName", ApplyFormName},
    {"CoverFront", ApplyCover},
    {"CoverBack", ApplyCover},
    {"PageInserts", ApplyInserts},
    {"PageExceptions", ApplyExceptions},
};

bool Has(const Dictionary& d, std::string_view k) {
  std::int32_t n = 0;
  const Value* v = d.find(k);
  return v && v->getNumber(n) && n > 0;
}

std::int32_t Number(const Dictionary& d, std::string_view k) {
  std::int32_t n = 0;
  const Value* v = d.find(k);
  return v && v->getNumber(n) ? n : 0;
}

}  // namespace

void JOTFImportFeature(const Dictionary* feature, JotfImportContext* context) {
  const Value* id = ZDPGetFeatureProperty(feature, "ID");
  if (!id || !id->string() || !context || !context->settings) return;
  if (ApplyOneToOne(*id->string(), feature, context)) return;
  for (const PlacementRow& row : kPlacements) {
    if (row.id == *id->string()) {
      row.apply(feature, context);
      return;
    }
  }
}

void ComputeFinishingOptionKey(Dictionary* settings) {
  if (!settings || settings->contains(key::kFinishingOptions)) return;
  const Dictionary& s = *settings;
  const bool staple = Has(s, key::kFinishingStaple1) || Has(s, key::kFinishingStaple2) ||
                      Has(s, key::kFinishingStapleCenter);
  const bool punch = Has(s, key::kFinishingHolePunch);
  const bool zfold = Has(s, key::kFinishingZFold);
  std::int32_t option = 0;
  if (int(staple) + int(punch) + int(zfold) >= 2) {
    option = 11;
  } else if (Has(s, key::kFinishingStaple1)) {
    option = 2;
  } else if (Has(s, key::kFinishingStaple2)) {
    option = 3;
  } else if (Has(s, key::kFinishingStapleCenter)) {
    option = 4;
  } else if (punch) {
    const std::int32_t holes = Number(s, key::kFinishingHolePunchOptions);
    option = holes == 2 ? 6 : holes == 4 ? 8 : 7;
  } else if (zfold) {
    option = 10;
  } else if (Has(s, key::kBookletFoldStaple)) {
    option = JotfMapCode(JotfFoldEnumMap, Number(s, key::kBookletFoldStaple)) == 13 ? 12 : 14;
  } else if (Has(s, key::kFinishingFold)) {
    option = 9;
  } else if (Has(s, key::kFinishingBind)) {
    option = 5;
  }
  if (option != 0) SetInt(*settings, key::kFinishingOptions, option);
}

}  // namespace zorva

// Media keywords to stock codes, and media collections to stocks.
#include "paper/ipp_papers.h"

#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "core/text.h"
#include "core/value.h"

namespace zorva {
namespace {

struct KeywordIndex {
  const char* keyword;
  std::int32_t index;
};

// Index 10 is left out on purpose: it is the custom colour.
constexpr KeywordIndex kMediaColorTable[] = {
    {"white", 1},    {"blue", 2},     {"yellow", 3},    {"green", 4},    {"pink", 5},
    {"no-color", 6}, {"buff", 7},     {"goldenrod", 8}, {"red", 9},      {"ivory", 11},
    {"gray", 12},    {"orange", 13},  {"other", 14},    {"custom1", 15}, {"custom2", 16},
    {"custom3", 17}, {"custom4", 18}, {"custom5", 19},  {"custom6", 20}, {"custom7", 21},
};

// "tab-stock" is the printer's own tab type (24), not the ordered tab (3).
constexpr KeywordIndex kMediaTypeTable[] = {
    {"stationery", 1},    {"transparency", 2}, {"tab-stock", 24}, {"pre-cut-tabs", 4},
    {"full-cut-tabs", 5}, {"labels", 9},       {"envelope", 8},   {"other", 22},
    {"bond", 13},         {"custom1", 15},     {"custom2", 16},   {"custom3", 17},
    {"custom4", 18},      {"custom5", 19},     {"custom6", 20},   {"custom7", 21},
};
constexpr KeywordIndex kPrePrintedTable[] = {{"pre-printed", 3}, {"letter-head", 14}};
// A "none" recycled value selects the same type as "standard".
constexpr KeywordIndex kRecycledTable[] = {{"standard", 10}, {"none", 10}};
constexpr std::int32_t kTypeOrderedTabs = 6;
constexpr std::int32_t kTypeCustom = 7;
constexpr std::int32_t kTypePrecutTabs = 4;
constexpr std::int32_t kTypeEnvelope = 8;

constexpr KeywordIndex kCoatingTable[] = {
    {"glossy", 1}, {"high-gloss", 2}, {"semi-gloss", 3}, {"satin", 4}, {"matte", 5},
};

constexpr std::int32_t kSidesOneCoated = 2;
constexpr std::int32_t kSidesBothCoated = 3;

// Hole counts 0, 2, 3, 4 map to "not punched" (1) and "punched" (2).
constexpr std::int32_t kPunchedNo = 1;
constexpr std::int32_t kPunchedYes = 2;

// The size table's envelope row wins over the same width's sheet (6).
constexpr std::int32_t kSizeSharedWithEnvelope = 6;
constexpr std::int32_t kSizeEnvelope = 73;

template <std::size_t N>
std::optional<std::int32_t> Lookup(const KeywordIndex (&table)[N], const char* keyword) {
  if (keyword == nullptr) return std::nullopt;
  for (const KeywordIndex& row : table) {
    if (EqualsCaseInsensitive(row.keyword, keyword)) return row.index;
  }
  return std::nullopt;
}

// The members of one media collection that the translation reads. Strings
// point into the collection, which outlives this record.
struct MediaMembers {
  const char* key = nullptr;
  const char* description = nullptr;
  const char* color = nullptr;
  const char* type = nullptr;
  const char* prePrinted = nullptr;
  const char* frontCoating = nullptr;
  const char* backCoating = nullptr;
  const char* info = nullptr;
  const char* recycled = nullptr;
  std::optional<std::int32_t> holeCount;
  std::optional<std::int32_t> orderCount;
  std::optional<std::int32_t> weight;
  std::optional<std::int32_t> xDimension;
  std::optional<std::int32_t> yDimension;
};

bool IsStringTag(ipp_tag_t tag) {
  switch (tag) {
    case IPP_TAG_TEXT:
    case IPP_TAG_NAME:
    case IPP_TAG_KEYWORD:
    case IPP_TAG_URI:
    case IPP_TAG_URISCHEME:
    case IPP_TAG_CHARSET:
    case IPP_TAG_LANGUAGE:
    case IPP_TAG_MIMETYPE:
    case IPP_TAG_TEXTLANG:
    case IPP_TAG_NAMELANG:
      return true;
    default:
      return false;
  }
}

// A member of the wrong syntax counts as absent.
const char* StringValue(ipp_attribute_t* attr) {
  if (!IsStringTag(ippGetValueTag(attr))) return nullptr;
  return ippGetString(attr, 0, nullptr);
}

std::optional<std::int32_t> IntegerValue(ipp_attribute_t* attr) {
  const ipp_tag_t tag = ippGetValueTag(attr);
  if (tag != IPP_TAG_INTEGER && tag != IPP_TAG_ENUM) return std::nullopt;
  return ippGetInteger(attr, 0);
}

struct TextMember {
  const char* name;
  const char* MediaMembers::*field;
};
constexpr TextMember kTextMembers[] = {
    {"media-key", &MediaMembers::key},
    {"media-description", &MediaMembers::description},
    {"media-color", &MediaMembers::color},
    {"media-type", &MediaMembers::type},
    {"media-pre-printed", &MediaMembers::prePrinted},
    {"media-front-coating", &MediaMembers::frontCoating},
    {"media-back-coating", &MediaMembers::backCoating},
    {"media-info", &MediaMembers::info},
    {"media-recycled", &MediaMembers::recycled},
};

struct IntegerMember {
  const char* name;
  std::optional<std::int32_t> MediaMembers::*field;
};
constexpr IntegerMember kIntegerMembers[] = {
    {"media-hole-count", &MediaMembers::holeCount},
    {"media-order-count", &MediaMembers::orderCount},
    {"media-weight-metric", &MediaMembers::weight},
};

void ReadMediaSize(ipp_t* size, MediaMembers& m) {
  for (ipp_attribute_t* a = ippFirstAttribute(size); a != nullptr; a = ippNextAttribute(size)) {
    const char* name = ippGetName(a);
    if (name == nullptr) continue;
    if (std::strcmp(name, "x-dimension") == 0) m.xDimension = IntegerValue(a);
    if (std::strcmp(name, "y-dimension") == 0) m.yDimension = IntegerValue(a);
  }
}

// Names are compared whole and exactly, so "media-key-x" is not "media-key".
void ReadMember(ipp_attribute_t* a, MediaMembers& m) {
  const char* name = ippGetName(a);
  if (name == nullptr) return;
  for (const TextMember& t : kTextMembers) {
    if (std::strcmp(name, t.name) == 0) {
      m.*t.field = StringValue(a);
      return;
    }
  }
  for (const IntegerMember& i : kIntegerMembers) {
    if (std::strcmp(name, i.name) == 0) {
      m.*i.field = IntegerValue(a);
      return;
    }
  }
  if (std::strcmp(name, "media-size") == 0 && ippGetValueTag(a) == IPP_TAG_BEGIN_COLLECTION) {
    if (ipp_t* size = ippGetCollection(a, 0)) ReadMediaSize(size, m);
  }
}

std::int32_t PunchedForHoleCount(std::int32_t holes) {
  if (holes == 0) return kPunchedNo;
  if (holes >= 2 && holes <= 4) return kPunchedYes;
  return kUnset;
}

void ApplyType(const MediaMembers& m, Stock& stock) {
  const std::int32_t orderCount = m.orderCount.value_or(kUnset);
  const std::int32_t type = convertJOTFTypeToIndex(m.type, m.prePrinted, m.recycled, orderCount);
  stock.setType(type);
  if (type == kTypeCustom) stock.setCustomType(std::string(m.type));
  if ((type == kTypeOrderedTabs || type == kTypePrecutTabs) && m.orderCount) {
    stock.setModulus(*m.orderCount);
  }
}

void ApplySize(const MediaMembers& m, Stock& stock) {
  std::int32_t size = GetSizeForStockDimensions(*m.xDimension, *m.yDimension);
  if (size == kSizeSharedWithEnvelope && stock.type() == kTypeEnvelope) size = kSizeEnvelope;
  stock.setSize(size);
}

void ApplyMembers(const MediaMembers& m, Stock& stock) {
  if (m.key) stock.setCustomName(std::string(m.key));
  if (m.description) stock.setDescription(std::string(m.description));
  if (m.color) {
    const std::int32_t color = convertJOTFColorToIndex(m.color);
    stock.setColor(color);
    if (color == kStockColorCustom) stock.setCustomColor(std::string(m.color));
  }
  if (m.type) ApplyType(m, stock);
  if (m.holeCount) stock.setPunched(PunchedForHoleCount(*m.holeCount));
  if (m.weight && *m.weight != 0) stock.setWeight(*m.weight);
  if (m.xDimension && m.yDimension) ApplySize(m, stock);
  std::int32_t sidesCoated = kUnset;
  std::int32_t coatingType = kUnset;
  convertJOTFSidesCoatedAndCoatingType(m.frontCoating, m.backCoating, &sidesCoated, &coatingType);
  stock.setSidesCoated(sidesCoated);
  stock.setCoatingType(coatingType);
  if (m.info) stock.setComment(std::string(m.info));
}

enum class Side { Absent, Uncoated, Coated };

Side Classify(const char* coating) {
  if (coating == nullptr) return Side::Absent;
  return EqualsCaseInsensitive(coating, "none") ? Side::Uncoated : Side::Coated;
}

}  // namespace

std::int32_t convertJOTFColorToIndex(const char* colour) {
  return Lookup(kMediaColorTable, colour).value_or(kStockColorCustom);
}

std::int32_t convertJOTFTypeToIndex(const char* type, const char* prePrinted, const char* recycled,
                                    std::int32_t orderCount) {
  if (auto index = Lookup(kMediaTypeTable, type)) return *index;
  if (auto index = Lookup(kPrePrintedTable, prePrinted)) return *index;
  if (auto index = Lookup(kRecycledTable, recycled)) return *index;
  if (orderCount != kUnset) return kTypeOrderedTabs;
  return kTypeCustom;
}

std::int32_t convertJOTFCoatingTypeToIndex(const char* coating) {
  return Lookup(kCoatingTable, coating).value_or(kUnset);
}

void convertJOTFSidesCoatedAndCoatingType(const char* front, const char* back,
                                          std::int32_t* sidesCoated, std::int32_t* coatingType) {
  const Side f = Classify(front);
  const Side b = Classify(back);
  if (f == Side::Uncoated && b == Side::Uncoated) {
    *sidesCoated = kStockSidesUncoated;
    *coatingType = kUnset;
  } else if (f == Side::Coated && b == Side::Coated) {
    *sidesCoated = kSidesBothCoated;
    *coatingType = convertJOTFCoatingTypeToIndex(front);
  } else if (f == Side::Coated) {
    *sidesCoated = kSidesOneCoated;
    *coatingType = convertJOTFCoatingTypeToIndex(front);
  } else if (b == Side::Coated) {
    *sidesCoated = kSidesOneCoated;
    *coatingType = convertJOTFCoatingTypeToIndex(back);
  }
  // Both absent, or one side uncoated and the other absent: nothing is known.
}

std::unique_ptr<Stock> StockFromMediaCollection(ipp_t* collection) {
  auto stock = std::make_unique<Stock>();
  MediaMembers members;
  for (ipp_attribute_t* a = ippFirstAttribute(collection); a != nullptr;
       a = ippNextAttribute(collection)) {
    ReadMember(a, members);
  }
  ApplyMembers(members, *stock);
  return stock;
}

PrinterStockList PrinterStocksFromAnswer(ipp_t* answer) {
  PrinterStockList list;
  if (answer == nullptr) return list;
  for (ipp_attribute_t* a = ippFirstAttribute(answer); a != nullptr; a = ippNextAttribute(answer)) {
    if (ippGetValueTag(a) != IPP_TAG_BEGIN_COLLECTION) continue;
    const int count = ippGetCount(a);
    for (int i = 0; i < count; ++i) {
      if (ipp_t* collection = ippGetCollection(a, i)) {
        list.push_back(StockFromMediaCollection(collection));
      }
    }
  }
  return list;
}

}  // namespace zorva

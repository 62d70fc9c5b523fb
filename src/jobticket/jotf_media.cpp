// Filling MEDIADATA from a stock dictionary and printing it as the job
// ticket's media attribute. The type and colour tables are data: the rows a
// printer's paper list may bring (type 11 and up) included.
#include "jobticket/jotf_media.h"

#include "core/ticket_keys.h"
#include "host/keyword_tables.h"
#include "jobticket/jotf_maps.h"
#include "jobticket/jotf_page_size.h"
#include "jobticket/jotf_read.h"
#include "model/stock.h"

namespace zorva {

namespace {

using jotf::ReadInt32;
using jotf::ReadInt32Or;

// Where a custom type or colour name comes from.
enum class NameFrom : std::uint8_t { None, Literal, Stock };

constexpr std::int32_t kNoMediaType = 13;
constexpr std::int32_t kNoColor = 13;
constexpr std::int32_t kNamedColor = 12;

// ---- Colour ---------------------------------------------------------------------

struct ColorRow {
  std::int32_t color;  // the stock's "Color"
  std::int32_t code;   // colour code
  NameFrom from;
  const char* name;
};

constexpr ColorRow kColorRows[] = {
    {1, 1, NameFrom::None, nullptr},        {2, 4, NameFrom::None, nullptr},
    {3, 3, NameFrom::None, nullptr},        {4, 5, NameFrom::None, nullptr},
    {5, 2, NameFrom::None, nullptr},        {6, 0, NameFrom::None, nullptr},
    {7, 6, NameFrom::None, nullptr},        {8, 7, NameFrom::None, nullptr},
    {9, 8, NameFrom::None, nullptr},        {10, 12, NameFrom::Stock, nullptr},
    {11, 9, NameFrom::None, nullptr},       {12, 10, NameFrom::None, nullptr},
    {13, 11, NameFrom::None, nullptr},      {14, 12, NameFrom::Literal, "other"},
    {15, 12, NameFrom::Literal, "custom1"}, {16, 12, NameFrom::Literal, "custom2"},
    {17, 12, NameFrom::Literal, "custom3"}, {18, 12, NameFrom::Literal, "custom4"},
    {19, 12, NameFrom::Literal, "custom5"}, {20, 12, NameFrom::Literal, "custom6"},
    {21, 12, NameFrom::Literal, "custom7"},
};

// ---- Type -----------------------------------------------------------------------

struct TypeRow {
  std::int32_t type;  // the stock's "Type"
  std::int32_t code;  // media type code
  std::int32_t weight = -1;
  std::int32_t holeCount = -1;
  std::int32_t prePrinted = 0;
  std::int32_t recycled = 0;
  std::int32_t sidesCoated = -1;
  std::int32_t coatingType = -1;
  std::int32_t tooth = -1;
  NameFrom from = NameFrom::None;
  const char* name = nullptr;
};

constexpr const char* kStationery2 = "stationery2";

constexpr TypeRow kTypeRows[] = {
    {.type = 1, .code = 0},
    {.type = 2, .code = 1},
    {.type = 3, .code = 6, .prePrinted = 1},
    {.type = 4, .code = 3},
    {.type = 5, .code = 4},
    {.type = 6, .code = 10, .from = NameFrom::Stock},
    {.type = 7, .code = 10, .from = NameFrom::Stock},
    {.type = 8, .code = 8},
    {.type = 9, .code = 5},
    {.type = 10, .code = 7, .recycled = 1},
    {.type = 11, .code = 0, .holeCount = 3},
    {.type = 12, .code = 0, .weight = 141},
    {.type = 13, .code = 12},
    {.type = 14, .code = 6, .prePrinted = 2},
    {.type = 15, .code = 10, .from = NameFrom::Literal, .name = "Custom1"},
    {.type = 16, .code = 10, .from = NameFrom::Literal, .name = "Custom2"},
    {.type = 17, .code = 10, .from = NameFrom::Literal, .name = "Custom3"},
    {.type = 18, .code = 10, .from = NameFrom::Literal, .name = "Custom4"},
    {.type = 19, .code = 10, .from = NameFrom::Literal, .name = "Custom5"},
    {.type = 20, .code = 10, .from = NameFrom::Literal, .name = "Custom6"},
    {.type = 21, .code = 10, .from = NameFrom::Literal, .name = "Custom7"},
    {.type = 22, .code = 11},
    {.type = 23, .code = 10, .from = NameFrom::Literal, .name = ""},
    {.type = 24, .code = 3},
    {.type = 25, .code = 5, .weight = 219},
    {.type = 26, .code = 10, .weight = 141, .from = NameFrom::Literal, .name = kStationery2},
    {.type = 27, .code = 0, .weight = 219},
    {.type = 28, .code = 10, .weight = 219, .from = NameFrom::Literal, .name = kStationery2},
    {.type = 29, .code = 0, .sidesCoated = 2, .coatingType = 1},
    {.type = 30,
     .code = 10,
     .sidesCoated = 2,
     .coatingType = 1,
     .from = NameFrom::Literal,
     .name = kStationery2},
    {.type = 31, .code = 0, .weight = 219, .sidesCoated = 2, .coatingType = 1},
    {.type = 32,
     .code = 10,
     .weight = 219,
     .sidesCoated = 2,
     .coatingType = 1,
     .from = NameFrom::Literal,
     .name = kStationery2},
    {.type = 33, .code = 3, .weight = 229},
    {.type = 34, .code = 13},
    {.type = 35, .code = 0, .weight = 229},
    {.type = 36, .code = 10, .weight = 229, .from = NameFrom::Literal, .name = kStationery2},
    {.type = 37, .code = 0, .weight = 229, .sidesCoated = 2, .coatingType = 1},
    {.type = 38,
     .code = 10,
     .weight = 229,
     .sidesCoated = 2,
     .coatingType = 1,
     .from = NameFrom::Literal,
     .name = kStationery2},
    {.type = 39, .code = 5, .weight = 229},
    {.type = 40, .code = 0, .tooth = 3},
    {.type = 41, .code = 13},
    {.type = 42, .code = 13},
    {.type = 43, .code = 13},
    {.type = 44, .code = 13},
    {.type = 45, .code = 0, .weight = 141},
};

// The custom name a table row gives: the stock's own (escaped, cut), a fixed
// one, or none.
std::optional<std::string> RowName(NameFrom from, const char* literal, const Dictionary& stock,
                                   std::string_view key) {
  switch (from) {
    case NameFrom::Stock:
      return jotf::CutBytes(jotf::ReadEscaped(&stock, key).value_or(""), kMediaNameBytes);
    case NameFrom::Literal:
      return std::string(literal);
    case NameFrom::None:
      break;
  }
  return std::nullopt;
}

}  // namespace

// ---- Filling --------------------------------------------------------------------

void FillMediaSize(MEDIADATA* media, const Dictionary& stock) {
  std::int32_t width = 0, length = 0;
  GetStockDimensionsForSize(ReadInt32Or(&stock, tkey::kSize, kUnset), &width, &length);
  if (width == 0) width = ReadInt32Or(&stock, tkey::kWidth, width);
  if (length == 0) length = ReadInt32Or(&stock, tkey::kLength, length);
  if (width == kUnset || length == kUnset) width = length = 0;
  media->xDimension = static_cast<std::uint32_t>(width);
  media->yDimension = static_cast<std::uint32_t>(length);
  if (width != 0 || length != 0) return;
  if (const std::optional<PageSizePoints> page = CurrentPageSize()) {
    MediaSizeForPage(*page, &media->xDimension, &media->yDimension);
  }
}

void FillMediaColor(MEDIADATA* media, const Dictionary& stock) {
  const std::int32_t color = ReadInt32Or(&stock, tkey::kColor, kUnset);
  media->color = kNoColor;
  for (const ColorRow& row : kColorRows) {
    if (row.color != color) continue;
    media->color = row.code;
    media->customColorName = RowName(row.from, row.name, stock, tkey::kCustomColor);
    return;
  }
}

void FillMediaType(MEDIADATA* media, const Dictionary& stock) {
  const std::int32_t type = ReadInt32Or(&stock, tkey::kType, kUnset);
  media->orderCount = ReadInt32Or(&stock, tkey::kModulus, -1);
  media->mediaType = kNoMediaType;
  for (const TypeRow& row : kTypeRows) {
    if (row.type != type) continue;
    media->mediaType = row.code;
    media->weight = row.weight;
    media->holeCount = row.holeCount;
    media->prePrinted = row.prePrinted;
    media->recycled = row.recycled;
    media->sidesCoated = row.sidesCoated;
    media->coatingType = row.coatingType;
    media->tooth = row.tooth;
    media->customTypeName = RowName(row.from, row.name, stock, tkey::kCustomType);
    return;
  }
}

void FillMediaWeight(MEDIADATA* media, const Dictionary& stock) {
  if (media->weight == -1) media->weight = ReadInt32Or(&stock, tkey::kWeight, -1);
}

void FillMediaPunched(MEDIADATA* media, const Dictionary& stock) {
  if (media->holeCount != -1) return;
  const std::int32_t punched = ReadInt32Or(&stock, tkey::kPunched, kUnset);
  if (punched == 1) media->holeCount = 0;
  if (punched == 2) media->holeCount = 3;
}

void FillMediaDescription(MEDIADATA* media, const Dictionary& stock) {
  media->description = jotf::ReadEscaped(&stock, tkey::kDescription);
}

void FillMediaFinish(MEDIADATA* media, const Dictionary& stock) {
  if (media->tooth == -1) media->tooth = ReadInt32Or(&stock, tkey::kFinish, -1);
}

void FillMediaGrain(MEDIADATA* media, const Dictionary& stock) {
  media->grain = ReadInt32Or(&stock, tkey::kGrain, -1);
}

void FillMediaCoating(MEDIADATA* media, const Dictionary& stock) {
  if (media->sidesCoated != -1) return;
  const std::optional<std::int32_t> sides = ReadInt32(&stock, tkey::kSidesCoated);
  if (!sides) return;
  media->sidesCoated = *sides;
  media->coatingType = ReadInt32Or(&stock, tkey::kCoatingType, -1);
}

void FillMediaSource(MEDIADATA* media, const Dictionary& stock) {
  if (ReadInt32(&stock, tkey::kSource) == 10) media->source = 0;
}

void FillMediaData(MEDIADATA* media, const Dictionary* stock) {
  *media = MEDIADATA{};
  static const Dictionary kEmpty;
  const Dictionary& s = stock ? *stock : kEmpty;
  if (ReadInt32(&s, tkey::kSource)) {
    FillMediaSource(media, s);
    return;
  }
  if (s.getBool(tkey::kCustomNameOnly)) {
    if (jotf::ReadTrue(&s, tkey::kCustomNameOnly)) {
      media->mediaKey = jotf::ReadEscaped(&s, tkey::kCustomName);
    }
    return;
  }
  FillMediaSize(media, s);
  FillMediaColor(media, s);
  FillMediaType(media, s);
  FillMediaWeight(media, s);
  FillMediaPunched(media, s);
  FillMediaDescription(media, s);
  FillMediaFinish(media, s);
  FillMediaGrain(media, s);
  FillMediaCoating(media, s);
}

void FinalizeMediaData(MEDIADATA* media) {
  if (!media) return;
  media->customTypeName.reset();
  media->customColorName.reset();
  media->description.reset();
  media->mediaKey.reset();
}

// ---- Reading back ---------------------------------------------------------------

std::optional<std::int32_t> JotfStockColorForCode(std::int32_t code) {
  for (const ColorRow& row : kColorRows) {
    if (row.code == code && row.from == NameFrom::None) return row.color;
  }
  return std::nullopt;
}

std::int32_t JotfStockColorForName(std::string_view name) {
  for (const ColorRow& row : kColorRows) {
    if (row.from == NameFrom::Literal && name == row.name) return row.color;
  }
  return kStockColorCustom;
}

std::optional<std::int32_t> JotfStockTypeForCode(std::int32_t code, std::int32_t prePrinted,
                                                 std::int32_t recycled) {
  for (const TypeRow& row : kTypeRows) {
    if (row.code == code && row.prePrinted == prePrinted && row.recycled == recycled &&
        row.from == NameFrom::None) {
      return row.type;
    }
  }
  return std::nullopt;
}

std::int32_t JotfStockTypeForName(std::string_view name) {
  for (const TypeRow& row : kTypeRows) {
    if (row.from == NameFrom::Literal && name == row.name) return row.type;
  }
  return kStockTypeCustom;
}

// ---- Printing -------------------------------------------------------------------

namespace {

const char* NameOf(const std::optional<std::string>& name) {
  return name ? name->c_str() : "";
}

void WriteMediaType(const JotfSink* sink, const MEDIADATA* m) {
  if (const char* keyword = JotfKeywordFor(JotfMediaTypeMap, m->mediaType)) {
    JotfPrintf(sink, "\t\t\t<media-type syntax=\"keyword\">%s</media-type>\n", keyword);
  } else if (m->mediaType == 9 || m->mediaType == 10) {
    JotfPrintf(sink, "\t\t\t<media-type syntax=\"name\" xml:space=\"preserve\">%s</media-type>\n",
               NameOf(m->customTypeName));
  } else if (m->mediaType == 6) {
    if (const char* kind = JotfKeywordFor(JotfPrePrintedMap, m->prePrinted)) {
      JotfPrintf(sink, "\t\t\t<media-pre-printed syntax=\"keyword\">%s</media-pre-printed>\n",
                 kind);
    }
  } else if (m->mediaType == 7) {
    JotfWrite(sink, "\t\t\t<media-recycled syntax=\"keyword\">standard</media-recycled>\n");
  }
}

void WriteOrderCount(const JotfSink* sink, const MEDIADATA* m) {
  const bool tabs =
      m->mediaType == 2 || m->mediaType == 3 || m->mediaType == 9 || m->mediaType == 10;
  if (!tabs || m->orderCount == -1) return;
  JotfPrintf(sink, "\t\t\t<media-order-count syntax=\"integer\">%d</media-order-count>\n",
             m->orderCount);
}

void WriteWeightDescriptionHoles(const JotfSink* sink, const MEDIADATA* m) {
  if (m->weight != -1) {
    JotfPrintf(sink, "\t\t\t<media-weight-metric syntax=\"integer\">%d</media-weight-metric>\n",
               m->weight);
  }
  if (m->description) {
    JotfPrintf(
        sink,
        "\t\t\t<media-description syntax=\"name\" xml:space=\"preserve\">%s</media-description>\n",
        m->description->c_str());
  }
  if (m->holeCount >= 0) {
    JotfPrintf(sink, "\t\t\t<media-hole-count syntax=\"integer\">%d</media-hole-count>\n",
               m->holeCount);
  }
}

void WriteColor(const JotfSink* sink, const MEDIADATA* m) {
  if (const char* keyword = JotfKeywordFor(JotfMediaColorMap, m->color)) {
    JotfPrintf(sink, "\t\t\t<media-color syntax=\"keyword\">%s</media-color>\n", keyword);
  } else if (m->color == kNamedColor) {
    JotfPrintf(sink, "\t\t\t<media-color syntax=\"name\" xml:space=\"preserve\">%s</media-color>\n",
               NameOf(m->customColorName));
  }
}

void WriteSize(const JotfSink* sink, const MEDIADATA* m) {
  if (m->xDimension == 0 || m->yDimension == 0) return;
  JotfWrite(sink, "\t\t\t<media-size syntax=\"collection\">\n");
  JotfPrintf(sink, "\t\t\t\t<x-dimension syntax=\"integer\">%lu</x-dimension>\n",
             static_cast<unsigned long>(m->xDimension));
  JotfPrintf(sink, "\t\t\t\t<y-dimension syntax=\"integer\">%lu</y-dimension>\n",
             static_cast<unsigned long>(m->yDimension));
  JotfWrite(sink, "\t\t\t</media-size>\n");
}

void WriteCoating(const JotfSink* sink, const MEDIADATA* m) {
  if (m->sidesCoated == -1) return;
  const char* coating = JotfKeywordFor(JotfCoatingMap, m->coatingType);
  const char* front = coating;
  const char* back = coating;
  if (m->sidesCoated == 1) front = back = "none";
  if (m->sidesCoated == 2) back = "none";
  if (m->sidesCoated == 4) front = "none";
  if (front) {
    JotfPrintf(sink, "\t\t\t<media-front-coating syntax=\"keyword\">%s</media-front-coating>\n",
               front);
  }
  if (back) {
    JotfPrintf(sink, "\t\t\t<media-back-coating syntax=\"keyword\">%s</media-back-coating>\n",
               back);
  }
}

void WriteToothAndGrain(const JotfSink* sink, const MEDIADATA* m) {
  if (const char* tooth = JotfKeywordFor(JotfToothMap, m->tooth)) {
    JotfPrintf(sink, "\t\t\t<media-tooth syntax=\"keyword\">%s</media-tooth>\n", tooth);
  }
  if (const char* grain = JotfKeywordFor(JotfGrainMap, m->grain)) {
    JotfPrintf(sink, "\t\t\t<media-grain syntax=\"keyword\">%s</media-grain>\n", grain);
  }
}

}  // namespace

int WriteJotfMedia(const JotfSink* sink, const MEDIADATA* m) {
  if (m->source != -1) {
    JotfPrintf(sink, "\t\t<media syntax=\"keyword\">%s</media>\n",
               m->source == 0 ? "post-fuser-inserter" : "");
    return 0;
  }
  JotfWrite(sink, "\t\t<media-col syntax=\"collection\">\n");
  if (m->mediaKey && !m->mediaKey->empty()) {
    JotfPrintf(sink, "\t\t\t<media-key syntax=\"name\" xml:space=\"preserve\">%s</media-key>\n",
               m->mediaKey->c_str());
    JotfWrite(sink, "\t\t</media-col>\n");
    return 0;
  }
  WriteMediaType(sink, m);
  WriteOrderCount(sink, m);
  WriteWeightDescriptionHoles(sink, m);
  WriteColor(sink, m);
  WriteSize(sink, m);
  WriteCoating(sink, m);
  WriteToothAndGrain(sink, m);
  JotfWrite(sink, "\t\t</media-col>\n");
  return 0;
}

void WriteJOTFJobLevelStock(const Dictionary* settings) {
  MEDIADATA media;
  FillMediaData(&media, jotf::ReadDictionary(settings, tkey::kJobLevelStock));
  WriteJotfMedia(&writeData, &media);
  FinalizeMediaData(&media);
}

}  // namespace zorva

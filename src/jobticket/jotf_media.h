// Media of the job ticket: a paper-stock dictionary reduced to a plain record
// (MEDIADATA) and printed as the `media` / `media-col` attribute. Used for
// the job's own paper and for every cover, insert and exception page.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/value.h"
#include "jobticket/jotf_sink.h"
#include "model/stock.h"

namespace zorva {

// One stock, reduced. -1 means unset unless said otherwise.
struct MEDIADATA {
  std::int32_t mediaType = -1;                 // 0..13, see the media-type table
  std::int32_t color = -1;                     // 0..13, see the colour table
  std::int32_t orderCount = -1;                // tabs in one set ("Modulus")
  std::int32_t holeCount = -1;                 // pre-drilled holes
  std::int32_t prePrinted = 0;                 // 0 blank, 1 pre-printed, 2 letter-head
  std::int32_t recycled = 0;                   // 1 = recycled
  std::optional<std::string> customTypeName;   // at most 30 bytes
  std::optional<std::string> customColorName;  // at most 30 bytes
  std::optional<std::string> description;      // escaped
  std::int32_t weight = -1;                    // g/m²
  std::uint32_t xDimension = 0;                // hundredths of a millimetre; 0 = none
  std::uint32_t yDimension = 0;
  std::int32_t tooth = -1;              // finish 1..4
  std::int32_t grain = -1;              // 1 or 2
  std::int32_t sidesCoated = -1;        // 1..4
  std::int32_t coatingType = -1;        // 1..5
  std::optional<std::string> mediaKey;  // escaped custom name of a name-only stock
  std::int32_t source = -1;             // 0 = the post-fuser inserter; -1 = a tray
};

// Custom colour and type names are cut to this many bytes.
inline constexpr std::size_t kMediaNameBytes = 30;

// Resets the record and fills it from a stock dictionary (null allowed).
void FillMediaData(MEDIADATA* media, const Dictionary* stock);

// One aspect each, in the order FillMediaData calls them. Weight, punched,
// finish and coating fill their field only while it is still unset, so what
// the type implies wins over the stock's own value.
void FillMediaSize(MEDIADATA* media, const Dictionary& stock);
void FillMediaColor(MEDIADATA* media, const Dictionary& stock);
void FillMediaType(MEDIADATA* media, const Dictionary& stock);
void FillMediaWeight(MEDIADATA* media, const Dictionary& stock);
void FillMediaPunched(MEDIADATA* media, const Dictionary& stock);
void FillMediaDescription(MEDIADATA* media, const Dictionary& stock);
void FillMediaFinish(MEDIADATA* media, const Dictionary& stock);
void FillMediaGrain(MEDIADATA* media, const Dictionary& stock);
void FillMediaCoating(MEDIADATA* media, const Dictionary& stock);
void FillMediaSource(MEDIADATA* media, const Dictionary& stock);

// Frees the strings (type name, colour name, description, media key).
void FinalizeMediaData(MEDIADATA* media);

// Prints the record: `media` for the inserter, else a `media-col` collection
// at two tabs with its members at three.
int WriteJotfMedia(const JotfSink* sink, const MEDIADATA* media);

// The writer's colour and type tables read backwards, for import: the
// stock's "Color" of a colour code (first row), or of a name written for it
// ("other", "custom1"...; any other name is the custom colour 10); the
// "Type" of a media type code with the pre-printed kind and recycled flag it
// implies, or of a type name ("Custom1"..., "stationery2"; any other name is
// the custom type 6).
inline constexpr std::int32_t kStockTypeCustom = 6;
std::optional<std::int32_t> JotfStockColorForCode(std::int32_t code);
std::int32_t JotfStockColorForName(std::string_view name);
std::optional<std::int32_t> JotfStockTypeForCode(std::int32_t code, std::int32_t prePrinted,
                                                 std::int32_t recycled);
std::int32_t JotfStockTypeForName(std::string_view name);

// The job's own paper ("com.zorva.print.JobLevelStock"); always writes.
void WriteJOTFJobLevelStock(const Dictionary* settings);

}  // namespace zorva

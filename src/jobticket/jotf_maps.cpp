// Look-ups through the job ticket's keyword tables, in table order.
#include "jobticket/jotf_maps.h"

namespace zorva {

const char* JotfKeywordFor(JotfKeywordMap map, std::int32_t value) {
  for (const JotfKeywordRow& row : map) {
    if (row.value == value) return row.keyword;
  }
  return nullptr;
}

std::optional<std::int32_t> JotfValueFor(JotfKeywordMap map, std::string_view keyword) {
  for (const JotfKeywordRow& row : map) {
    if (keyword == row.keyword) return row.value;
  }
  return std::nullopt;
}

bool JOTFConvertKeyword(JotfKeywordMap map, JotfDirection direction, const Value& in, Value* out) {
  for (const JotfKeywordRow& row : map) {
    const bool hit =
        direction == JotfDirection::ToJotf ? in == Value(row.value) : in == Value(row.keyword);
    if (!hit) continue;
    if (out) *out = direction == JotfDirection::ToJotf ? Value(row.keyword) : Value(row.value);
    return true;
  }
  return false;
}

std::int32_t JotfMapCode(JotfCodeMap map, std::int32_t from) {
  for (const JotfCodeRow& row : map) {
    if (row.from == from) return row.to;
  }
  return -1;
}

std::int32_t JotfUnmapCode(JotfCodeMap map, std::int32_t to) {
  for (const JotfCodeRow& row : map) {
    if (row.to == to) return row.from;
  }
  return -1;
}

}  // namespace zorva

// Reading settings for the job-ticket writers.
#include "jobticket/jotf_read.h"

#include "core/text.h"
#include "jobticket/jotf_sink.h"

namespace zorva::jotf {

std::optional<std::int32_t> ReadInt32(const Dictionary* d, std::string_view key) {
  if (!d) return std::nullopt;
  const Value* v = d->find(key);
  std::int32_t n = 0;
  if (!v || !v->getNumber(n)) return std::nullopt;
  return n;
}

bool ReadTrue(const Dictionary* d, std::string_view key) {
  return d && d->getBool(key).value_or(false);
}

const Dictionary* ReadDictionary(const Dictionary* d, std::string_view key) {
  return d ? d->getDictionary(key) : nullptr;
}

const std::string* ReadString(const Dictionary* d, std::string_view key) {
  return d ? d->getString(key) : nullptr;
}

std::string AsUtf8(std::string_view text) {
  return ReplaceIllFormedUtf8(text);
}

std::optional<std::string> ReadEscaped(const Dictionary* d, std::string_view key) {
  const std::string* s = ReadString(d, key);
  if (!s) return std::nullopt;
  return AsUtf8(XMLCreateStringByEscapingEntities(*s));
}

std::string CutBytes(std::string text, std::size_t limit) {
  if (text.size() > limit) text.resize(limit);
  return text;
}

}  // namespace zorva::jotf

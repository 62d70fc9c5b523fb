// Reading settings for the job-ticket writers.
#include "jobticket/jotf_read.h"

#include "core/text.h"
#include "jobticket/jotf_sink.h"

namespace zorva::jotf {

namespace {

// Length of the well-formed UTF-8 sequence at text[i], or 0.
std::size_t SequenceLength(std::string_view text, std::size_t i) {
  const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(text[k]); };
  const unsigned char b = byte(i);
  if (b < 0x80) return 1;
  std::size_t n = 0;
  unsigned char lo = 0x80, hi = 0xBF;
  if (b >= 0xC2 && b <= 0xDF) {
    n = 2;
  } else if (b >= 0xE0 && b <= 0xEF) {
    n = 3;
    if (b == 0xE0) lo = 0xA0;
    if (b == 0xED) hi = 0x9F;
  } else if (b >= 0xF0 && b <= 0xF4) {
    n = 4;
    if (b == 0xF0) lo = 0x90;
    if (b == 0xF4) hi = 0x8F;
  } else {
    return 0;
  }
  if (i + n > text.size()) return 0;
  if (byte(i + 1) < lo || byte(i + 1) > hi) return 0;
  for (std::size_t k = 2; k < n; ++k) {
    if (byte(i + k) < 0x80 || byte(i + k) > 0xBF) return 0;
  }
  return n;
}

}  // namespace

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
  if (IsValidUtf8(text)) return std::string(text);
  std::string out;
  out.reserve(text.size() + 8);
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t n = SequenceLength(text, i);
    if (n == 0) {
      out.append("\xEF\xBF\xBD");
      ++i;
    } else {
      out.append(text.substr(i, n));
      i += n;
    }
  }
  return out;
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

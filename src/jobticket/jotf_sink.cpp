// The job-ticket sink, the growing formatter and entity escaping.
#include "jobticket/jotf_sink.h"

#include <cstdarg>
#include <cstring>

namespace zorva {

thread_local std::FILE* jotf_ofp ZORVA_TLS_MODEL = nullptr;

int DevWriteJotf(void*, const char* text, int) {
  if (jotf_ofp && text) std::fputs(text, jotf_ofp);
  return 0;
}

JotfSink writeData = {nullptr, DevWriteJotf};

namespace {

const char* EntityFor(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '\'':
      return "&apos;";
    case '"':
      return "&quot;";
    default:
      return nullptr;
  }
}

const char* FormatV(std::string& buffer, const char* format, va_list args) {
  if (buffer.capacity() < 256) buffer.reserve(256);
  buffer.resize(buffer.capacity());
  va_list again;
  va_copy(again, args);
  const int n = std::vsnprintf(buffer.data(), buffer.size() + 1, format, args);
  if (n < 0) {
    buffer.clear();
  } else if (static_cast<std::size_t>(n) > buffer.size()) {
    buffer.resize(static_cast<std::size_t>(n));
    std::vsnprintf(buffer.data(), buffer.size() + 1, format, again);
  } else {
    buffer.resize(static_cast<std::size_t>(n));
  }
  va_end(again);
  return buffer.c_str();
}

// Line lengths stay far below INT_MAX in practice; a longer text still goes
// out whole because the sink ignores the length.
int LengthOf(std::size_t n) {
  return n > 0x7fffffff ? 0x7fffffff : static_cast<int>(n);
}

}  // namespace

std::string XMLCreateStringByEscapingEntities(std::string_view text, const Dictionary*) {
  std::string out;
  out.reserve(text.size() + text.size() / 8);
  std::size_t run = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char* entity = EntityFor(text[i]);
    if (!entity) continue;
    out.append(text.substr(run, i - run));
    out.append(entity);
    run = i + 1;
  }
  out.append(text.substr(run));
  return out;
}

void JotfWrite(const JotfSink* sink, const char* text) {
  sink->write(sink->handle, text, LengthOf(std::strlen(text)));
}

void JotfWriteNoLength(const JotfSink* sink, const char* text) {
  sink->write(sink->handle, text, 0);
}

const char* JotfFormatInto(std::string& buffer, const char* format, ...) {
  va_list args;
  va_start(args, format);
  const char* text = FormatV(buffer, format, args);
  va_end(args);
  return text;
}

void JotfPrintf(const JotfSink* sink, const char* format, ...) {
  thread_local std::string buffer ZORVA_TLS_MODEL;
  va_list args;
  va_start(args, format);
  const char* text = FormatV(buffer, format, args);
  va_end(args);
  sink->write(sink->handle, text, LengthOf(buffer.size()));
}

}  // namespace zorva

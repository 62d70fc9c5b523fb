// The prolog's place in a PostScript document and the stream around it
// (see watermark_filter.h).
#include "watermarks/watermark_filter.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace zorva {
namespace {

struct Line {
  std::string_view text;  // without its end
  std::size_t next = 0;   // where the following line starts
};

// The line starting at `at`; lines end in LF, CR or CR LF.
Line LineAt(std::string_view s, std::size_t at) {
  const std::size_t end = s.find_first_of("\r\n", at);
  if (end == std::string_view::npos) return {s.substr(at), s.size()};
  std::size_t next = end + 1;
  if (s[end] == '\r' && next < s.size() && s[next] == '\n') ++next;
  return {s.substr(at, end - at), next};
}

bool StartsWith(std::string_view s, std::string_view prefix) {
  return s.substr(0, prefix.size()) == prefix;
}

// Header comments run to "%%EndComments", or up to the first line that is
// not a comment of their own ("%%Begin...", "%%Page:", or no "%%" at all).
bool EndsHeader(std::string_view line) {
  return !StartsWith(line, "%%") || StartsWith(line, "%%Begin") || StartsWith(line, "%%Page:") ||
         StartsWith(line, "%%Trailer") || StartsWith(line, "%%EOF");
}

bool WriteAll(int fd, std::string_view bytes, std::string* error) {
  while (!bytes.empty()) {
    const ssize_t n = write(fd, bytes.data(), bytes.size());
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) {
      if (error) *error = std::string("cannot write the output: ") + std::strerror(errno);
      return false;
    }
    bytes.remove_prefix(static_cast<std::size_t>(n));
  }
  return true;
}

// Reads up to `want` bytes (fewer only at the end of the input).
bool ReadUpTo(int fd, std::string& into, std::size_t want, std::string* error) {
  const std::size_t start = into.size();
  into.resize(start + want);
  std::size_t got = 0;
  while (got < want) {
    const ssize_t n = read(fd, into.data() + start + got, want - got);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) {
      if (error) *error = std::string("cannot read the input: ") + std::strerror(errno);
      return false;
    }
    if (n == 0) break;
    got += static_cast<std::size_t>(n);
  }
  into.resize(start + got);
  return true;
}

}  // namespace

std::optional<PrologInsertion> FindPrologInsertion(std::string_view head) {
  head = head.substr(0, kDocumentHeadBytes);
  // A leading Control-D (end of a previous job on serial printers) is kept.
  const std::size_t start = StartsWith(head, "\x04") ? 1 : 0;
  if (!StartsWith(head.substr(start), "%!")) return std::nullopt;
  const Line first = LineAt(head, start);
  PrologInsertion at{first.next, StartsWith(first.text, "%!PS-Adobe-")};
  if (!at.structured) return at;
  std::size_t pos = first.next;
  while (pos < head.size()) {
    const Line line = LineAt(head, pos);
    if (line.text == "%%EndComments") {
      pos = line.next;
      break;
    }
    if (EndsHeader(line.text)) break;
    pos = line.next;
  }
  // The comments of a header cut off by the end of the head stay whole:
  // the prolog goes after the first line instead.
  if (pos >= head.size() && head.size() == kDocumentHeadBytes) return at;
  at.offset = pos;
  if (pos < head.size()) {
    const Line next = LineAt(head, pos);
    if (StartsWith(next.text, "%%BeginProlog")) at.offset = next.next;
  }
  return at;
}

std::string InsertWatermarkProlog(std::string_view head, std::string_view prolog,
                                  std::vector<std::string>& warnings) {
  const auto at = FindPrologInsertion(head);
  if (!at) {
    warnings.emplace_back(
        "the document does not start with %!, so it is not PostScript; it is printed without "
        "the watermark");
    return std::string(head);
  }
  if (!at->structured) {
    warnings.emplace_back(
        "the document has no page structure comments; the watermark is installed after its "
        "first line");
  }
  std::string out(head.substr(0, at->offset));
  if (!out.empty() && out.back() != '\n' && out.back() != '\r') out += '\n';
  out += prolog;
  out += head.substr(at->offset);
  return out;
}

bool StreamWithProlog(int in, int out, const std::string* prolog,
                      std::vector<std::string>& warnings, std::string* error) {
  std::string buffer;
  if (!ReadUpTo(in, buffer, kDocumentHeadBytes, error)) return false;
  if (prolog && !buffer.empty()) {
    if (!WriteAll(out, InsertWatermarkProlog(buffer, *prolog, warnings), error)) return false;
  } else if (!WriteAll(out, buffer, error)) {
    return false;
  }
  constexpr std::size_t kChunk = std::size_t{64} * 1024;
  while (true) {
    buffer.clear();
    if (!ReadUpTo(in, buffer, kChunk, error)) return false;
    if (buffer.empty()) return true;
    if (!WriteAll(out, buffer, error)) return false;
  }
}

}  // namespace zorva

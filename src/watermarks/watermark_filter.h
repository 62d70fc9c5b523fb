// Putting a watermark's prolog into a PostScript document on its way to the
// printer: where in the document it goes (after the header comments, inside
// the document's own prolog when it has one, else after the first line) and
// the copying around it. Only the head of the document is looked at, so a
// job of any length streams through in constant memory.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zorva {

// How much of a document's start is searched for its header comments.
inline constexpr std::size_t kDocumentHeadBytes = std::size_t{64} * 1024;

struct PrologInsertion {
  std::size_t offset = 0;   // where the prolog goes
  bool structured = false;  // the document declares page structure comments
};

// nullopt when the text is not PostScript (it does not start with "%!").
// Looks at no more than kDocumentHeadBytes of head.
std::optional<PrologInsertion> FindPrologInsertion(std::string_view head);

// head with the prolog inserted; a head that is not PostScript comes back
// unchanged. Adds a warning (one line, no prefix) when the document is not
// PostScript or has no page structure comments.
std::string InsertWatermarkProlog(std::string_view head, std::string_view prolog,
                                  std::vector<std::string>& warnings);

// Copies the file descriptor's bytes to out, the first kDocumentHeadBytes
// through InsertWatermarkProlog (with an empty prolog: unchanged). False with
// the reason in *error when reading or writing fails.
bool StreamWithProlog(int in, int out, const std::string* prolog,
                      std::vector<std::string>& warnings, std::string* error);

}  // namespace zorva

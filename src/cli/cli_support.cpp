// Shared plumbing of the zorva tool (see cli_support.h).
#include "cli/cli_support.h"

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <iostream>
#include <optional>
#include <span>

#include "cli/value_text.h"
#include "core/file_io.h"
#include "core/plist_io.h"
#include "core/text.h"

namespace zorva::cli {
namespace {

// More than any ticket or property list a user would pipe in.
constexpr std::size_t kMaxStandardInput = 64u << 20;
constexpr std::size_t kShownUnits = 60;

std::string ErrnoText(int err) {
  return err != 0 ? std::strerror(err) : "unknown error";
}

// Paths go into messages as typed, unless they would break the one-line rule.
std::string ShownPath(const std::filesystem::path& path) {
  const std::string s = path.string();
  for (char ch : s) {
    if (static_cast<unsigned char>(ch) < 0x20) return QuoteString(s);
  }
  return s;
}

std::size_t DisplayWidth(std::string_view text) {
  std::size_t n = 0;
  for (char ch : text) n += (static_cast<unsigned char>(ch) & 0xC0) != 0x80;
  return n;
}

}  // namespace

void FailUsage(const std::string& message) {
  throw CliError(kExitUsage, message);
}
void FailRuntime(const std::string& message) {
  throw CliError(kExitFailure, message);
}

std::string Shown(std::string_view text) {
  const std::string_view head = TruncateUtf16(text, kShownUnits);
  return QuoteString(head) + (head.size() < text.size() ? "..." : "");
}

Ticket LoadTicketFile(const std::filesystem::path& path) {
  int err = 0;
  std::optional<std::vector<std::uint8_t>> bytes = ReadWholeFile(path, &err);
  if (!bytes) FailRuntime("cannot read " + ShownPath(path) + ": " + ReadFailureText(err));
  std::string why;
  std::optional<Value> root = ParsePropertyList(std::span<const std::uint8_t>(*bytes), &why);
  if (!root) FailRuntime(ShownPath(path) + " is not a property list: " + why);
  const Dictionary* dict = root->dictionary();
  if (!dict) {
    FailRuntime(ShownPath(path) + " is not a ticket: its root is " + TypeWithArticle(root->type()) +
                ", not a dict");
  }
  return Ticket::FromDictionary(*dict);
}

void SaveTicketFile(const Ticket& ticket, const std::filesystem::path& path) {
  const int err = ticket.save(path);
  if (err != 0) FailRuntime("cannot write " + ShownPath(path) + ": " + ErrnoText(err));
}

std::string ReadStandardInput() {
  std::string text;
  char buf[65536];
  while (std::cin.read(buf, sizeof buf) || std::cin.gcount() > 0) {
    text.append(buf, static_cast<std::size_t>(std::cin.gcount()));
    if (text.size() > kMaxStandardInput) FailUsage("standard input is larger than 64 MiB");
  }
  if (std::cin.bad()) FailRuntime("cannot read standard input: " + ErrnoText(errno));
  return text;
}

void PrintColumns(std::ostream& out, const std::vector<TextRow>& rows) {
  std::vector<std::size_t> widths;
  for (const TextRow& row : rows) {
    if (widths.size() < row.size()) widths.resize(row.size(), 0);
    for (std::size_t i = 0; i < row.size(); ++i) {
      widths[i] = std::max(widths[i], DisplayWidth(row[i]));
    }
  }
  for (const TextRow& row : rows) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
      line += row[i];
      if (i + 1 < row.size()) line.append(widths[i] - DisplayWidth(row[i]) + 2, ' ');
    }
    while (!line.empty() && line.back() == ' ') line.pop_back();
    out << line << '\n';
  }
}

namespace {

std::optional<double> ParsePositive(std::string_view text) {
  double value = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (ec != std::errc() || end != text.data() + text.size() || !std::isfinite(value) ||
      value <= 0) {
    return std::nullopt;
  }
  return value;
}

}  // namespace

PageSizePoints ParsePageSizeOption(const std::string& text, int orientation) {
  const std::size_t comma = text.find(',');
  std::optional<double> width, length;
  if (comma != std::string::npos) {
    width = ParsePositive(std::string_view(text).substr(0, comma));
    length = ParsePositive(std::string_view(text).substr(comma + 1));
  }
  if (!width || !length) {
    FailUsage("--page-size wants two positive numbers of points, WIDTH,LENGTH: " + Shown(text));
  }
  return {*width, *length, orientation};
}

}  // namespace zorva::cli

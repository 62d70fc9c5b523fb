// Gettext PO string tables and the format syntax of localised texts.
#include "core/localization.h"

#include <charconv>
#include <cstdio>

namespace zorva {

namespace {

// ---- PO parsing ---------------------------------------------------------------

struct PoEntry {
  std::string id;
  std::string str;
  bool hasId = false;
  bool hasStr = false;
};

class PoParser {
 public:
  explicit PoParser(std::string_view text) : text_(text) {}

  std::optional<StringTable> parse(std::string* error) {
    while (pos_ < text_.size()) {
      ++line_;
      std::string_view l = nextLine();
      if (!parseLine(Trim(l))) {
        if (error) *error = "line " + std::to_string(line_) + ": " + error_;
        return std::nullopt;
      }
    }
    flush();
    return std::move(table_);
  }

 private:
  static std::string_view Trim(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r'))
      s.remove_suffix(1);
    return s;
  }

  std::string_view nextLine() {
    std::size_t end = text_.find('\n', pos_);
    if (end == std::string_view::npos) end = text_.size();
    std::string_view l = text_.substr(pos_, end - pos_);
    pos_ = end + 1;
    return l;
  }

  bool parseLine(std::string_view l) {
    if (l.empty() || l.front() == '#') return true;
    if (l.front() == '"') return appendContinuation(l);
    std::size_t sp = l.find_first_of(" \t");
    if (sp == std::string_view::npos) return fail("expected a keyword and a quoted string");
    std::string_view keyword = l.substr(0, sp);
    std::string_view rest = Trim(l.substr(sp));
    std::string value;
    if (!unquote(rest, value)) return false;
    return startField(keyword, std::move(value));
  }

  bool startField(std::string_view keyword, std::string value) {
    if (keyword == "msgctxt" || keyword == "msgid") {
      if (entry_.hasStr) flush();  // a new entry begins
    }
    if (keyword == "msgid") {
      entry_.id = std::move(value);
      entry_.hasId = true;
      current_ = &entry_.id;
      return true;
    }
    if (keyword == "msgctxt") {  // contexts are not used: keys are unique
      ignored_ = std::move(value);
      current_ = &ignored_;
      return true;
    }
    if (keyword == "msgid_plural") {
      current_ = &ignored_;
      return true;
    }
    if (keyword == "msgstr" || keyword == "msgstr[0]") {
      if (!entry_.hasId) return fail("msgstr without msgid");
      entry_.str = std::move(value);
      entry_.hasStr = true;
      current_ = &entry_.str;
      return true;
    }
    if (keyword.starts_with("msgstr[")) {
      current_ = &ignored_;  // only the singular form is used
      return true;
    }
    return fail("unknown keyword \"" + std::string(keyword) + "\"");
  }

  bool appendContinuation(std::string_view l) {
    if (!current_) return fail("string outside an entry");
    std::string value;
    if (!unquote(l, value)) return false;
    *current_ += value;
    return true;
  }

  bool unquote(std::string_view s, std::string& out) {
    if (s.size() < 2 || s.front() != '"' || s.back() != '"') {
      return fail("expected a quoted string");
    }
    s = s.substr(1, s.size() - 2);
    for (std::size_t i = 0; i < s.size(); ++i) {
      char c = s[i];
      if (c == '"') return fail("unescaped quote inside a string");
      if (c != '\\') {
        out += c;
        continue;
      }
      if (++i == s.size()) return fail("string ends in a backslash");
      if (!unescape(s[i], out)) return false;
    }
    return true;
  }

  bool unescape(char c, std::string& out) {
    switch (c) {
      case 'n':
        out += '\n';
        return true;
      case 't':
        out += '\t';
        return true;
      case 'r':
        out += '\r';
        return true;
      case '"':
        out += '"';
        return true;
      case '\\':
        out += '\\';
        return true;
      case 'a':
        out += '\a';
        return true;
      case 'b':
        out += '\b';
        return true;
      case 'f':
        out += '\f';
        return true;
      case 'v':
        out += '\v';
        return true;
      default:
        return fail(std::string("unknown escape \\") + c);
    }
  }

  void flush() {
    if (entry_.hasId && entry_.hasStr && !entry_.id.empty() && !entry_.str.empty()) {
      table_.insert_or_assign(std::move(entry_.id), std::move(entry_.str));
    }
    entry_ = PoEntry{};
    current_ = nullptr;
  }

  bool fail(std::string reason) {
    error_ = std::move(reason);
    return false;
  }

  std::string_view text_;
  std::size_t pos_ = 0;
  std::size_t line_ = 0;
  PoEntry entry_;
  std::string ignored_;
  std::string* current_ = nullptr;
  std::string error_;
  StringTable table_;
};

// ---- Formatting -----------------------------------------------------------------

struct Directive {
  std::size_t length = 0;  // characters of the directive, from its '%'
  int position = 0;        // 1-based argument number, 0 for "next"
  char conversion = 0;
};

// Parses the directive at s[0] == '%'; length 0 when it is not one.
Directive ParseDirective(std::string_view s) {
  Directive d;
  std::size_t i = 1;
  std::size_t digits = i;
  while (digits < s.size() && digits - i < 3 && s[digits] >= '0' && s[digits] <= '9') ++digits;
  if (digits > i && digits < s.size() && s[digits] == '$') {
    std::from_chars(s.data() + i, s.data() + digits, d.position);
    i = digits + 1;
  }
  while (i < s.size() && s[i] == 'l') ++i;
  if (i >= s.size()) return d;
  char c = s[i];
  if (c == '@' || c == 's' || c == 'd' || c == 'i' || c == 'u' || c == 'f' || c == '%') {
    d.conversion = c;
    d.length = i + 1;
  }
  return d;
}

bool AppendArg(std::string& out, char conversion, const FormatArg& arg) {
  const bool textual = conversion == '@' || conversion == 's';
  if (const auto* s = std::get_if<std::string_view>(&arg)) {
    if (!textual) return false;
    out += *s;
    return true;
  }
  if (const auto* i = std::get_if<std::int64_t>(&arg)) {
    if (conversion == 'f') {
      char buf[64];
      std::snprintf(buf, sizeof buf, "%f", static_cast<double>(*i));
      out += buf;
    } else {
      out += std::to_string(*i);
    }
    return true;
  }
  const double d = std::get<double>(arg);
  if (conversion != 'f' && !textual) return false;
  char buf[64];
  std::snprintf(buf, sizeof buf, conversion == 'f' ? "%f" : "%g", d);
  out += buf;
  return true;
}

}  // namespace

std::optional<StringTable> ParsePoStrings(std::string_view text, std::string* error) {
  return PoParser(text).parse(error);
}

std::string FormatString(std::string_view format, const std::vector<FormatArg>& args) {
  std::string out;
  out.reserve(format.size() + 16);
  std::size_t next = 0;
  for (std::size_t i = 0; i < format.size();) {
    if (format[i] != '%') {
      out += format[i++];
      continue;
    }
    Directive d = ParseDirective(format.substr(i));
    if (d.length == 0) {
      out += format[i++];
      continue;
    }
    if (d.conversion == '%') {
      out += '%';
    } else {
      std::size_t index = d.position > 0 ? static_cast<std::size_t>(d.position - 1) : next++;
      if (index >= args.size() || !AppendArg(out, d.conversion, args[index])) {
        out += format.substr(i, d.length);
      }
    }
    i += d.length;
  }
  return out;
}

}  // namespace zorva

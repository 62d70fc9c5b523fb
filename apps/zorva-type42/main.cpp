// zorva-type42: the type42 command of the zorva tool as a program of its own.
// It links only the converter, so it starts in a fraction of the full tool's
// time and memory, which is what counts when a script converts many fonts.
// Arguments are parsed by hand to keep start-up to the bare minimum.
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <new>
#include <string>
#include <string_view>

#include "cli/type42_run.h"

namespace {

#ifdef ZORVA_VERSION
constexpr std::string_view kVersion = ZORVA_VERSION;
#else
constexpr std::string_view kVersion = "0.1.0";
#endif

constexpr const char* kHelp =
    "Convert a TrueType font to a Type 42 font program\n"
    "Usage: zorva-type42 [OPTIONS] FONT\n\n"
    "Positionals:\n"
    "  FONT                        TrueType font file (.ttf)\n\n"
    "Options:\n"
    "  -h,--help                   Print this help message and exit\n"
    "  --version                   Print the version and exit\n"
    "  --name NAME                 Font name in the program (default: the font's PostScript name)\n"
    "  -o,--output FILE            Write the program to this file (default: stdout)\n"
    "  --split-large-tables        Cut tables larger than 65534 bytes on 4-byte boundaries so\n"
    "                              the program is always complete\n\n" ZORVA_TYPE42_NOTES
    "Examples:\n  zorva-type42 DejaVuSans.ttf -o DejaVuSans.t42\n"
    "  for f in *.ttf; do zorva-type42 \"$f\" -o \"${f%.ttf}.t42\"; done\n";

constexpr std::size_t kShownChars = 60;

// User input in a message: quoted, control characters escaped, cut short.
std::string Quote(std::string_view text) {
  std::string out = "\"";
  std::size_t chars = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    if ((c & 0xC0) != 0x80 && ++chars > kShownChars) return out + "\"...";
    if (c == '"' || c == '\\') {
      out += '\\';
      out += static_cast<char>(c);
    } else if (c < 0x20 || c == 0x7F) {
      char hex[8];
      std::snprintf(hex, sizeof hex, "\\x%02X", c);
      out += hex;
    } else {
      out += static_cast<char>(c);
    }
  }
  return out + "\"";
}

int Report(int code, const std::string& message) {
  std::string line = "zorva-type42: " + message;
  for (char& c : line) {
    if (c == '\n' || c == '\r') c = ' ';
  }
  std::cerr << line << '\n';
  return code;
}

int Usage(const std::string& message) {
  return Report(zorva::kType42ExitUsage, message + " (see 'zorva-type42 --help')");
}

// The command line; an option's value comes as the next argument or after "=".
struct Parsed {
  zorva::Type42Job job;
  bool named = false;
  bool fontSeen = false;
};

// Returns an exit status to end with, or -1 to go on and convert.
int Parse(int argc, char** argv, Parsed& p) {
  bool options = true;
  for (int i = 1; i < argc; ++i) {
    std::string_view arg = argv[i];
    std::string_view value;
    const bool hasValue = arg.starts_with("--") && arg.find('=') != std::string_view::npos;
    if (options && hasValue) {
      value = arg.substr(arg.find('=') + 1);
      arg = arg.substr(0, arg.find('='));
    }
    const auto takeValue = [&](std::string_view& out) {
      if (hasValue) return out = value, true;
      if (i + 1 >= argc) return false;
      out = argv[++i];
      return true;
    };
    std::string_view v;
    if (!options || arg == "-" || !arg.starts_with("-")) {
      if (p.fontSeen) return Usage("unexpected argument " + Quote(arg));
      p.job.font = std::string(arg), p.fontSeen = true;
    } else if (arg == "--") {
      options = false;
    } else if (arg == "-h" || arg == "--help") {
      std::cout << kHelp;
      return 0;
    } else if (arg == "--version") {
      std::cout << "zorva-type42 " << kVersion << '\n';
      return 0;
    } else if (arg == "--split-large-tables" && !hasValue) {
      p.job.splitLargeTables = true;
    } else if (arg == "--name" || arg == "-o" || arg == "--output") {
      if (!takeValue(v)) return Usage(std::string(arg) + " needs a value");
      if (arg == "--name") {
        p.job.name = std::string(v), p.named = true;
      } else {
        p.job.output = std::string(v);
      }
    } else if (arg.starts_with("-o") && arg.size() > 2) {
      p.job.output = std::string(arg.substr(2));
    } else {
      return Usage("unknown option " + Quote(argv[i]));
    }
  }
  return p.fontSeen ? -1 : Usage("FONT is required");
}

// Output that could not be written (a full disk, a closed pipe) is a failure.
int FinishOutput(int code) {
  std::cout.flush();
  if (!std::cout.good() || std::fflush(stdout) != 0) {
    return Report(zorva::kType42ExitFailure,
                  std::string("cannot write output: ") + std::strerror(errno));
  }
  return code;
}

}  // namespace

int main(int argc, char** argv) {
  Parsed p;
  try {
    if (const int code = Parse(argc, argv, p); code >= 0) return FinishOutput(code);
    if (p.named) zorva::CheckType42Name(p.job.name, Quote);
    zorva::RunType42Job(p.job, Quote);
    return FinishOutput(0);
  } catch (const zorva::Type42Failure& e) {
    std::cout.flush();
    return Report(e.code(), e.what());
  } catch (const std::bad_alloc&) {
    return Report(zorva::kType42ExitFailure, "out of memory");
  } catch (const std::exception& e) {
    return Report(zorva::kType42ExitFailure, std::string("internal error: ") + e.what());
  }
}

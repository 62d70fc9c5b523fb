// zorva type42: turns a TrueType font file into the Type 42 font program sent
// to the printer with a watermark drawn in that font, so the program can be
// made, inspected and checked from a shell.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "cli/cli_support.h"
#include "cli/commands.h"
#include "core/file_io.h"
#include "watermarks/type42.h"

namespace zorva::cli {
namespace {

// The program was written but stops early (a table too large to split).
constexpr int kExitIncomplete = 3;

struct Type42Args {
  std::filesystem::path font;
  std::string name;
  std::filesystem::path output;
  bool splitLargeTables = false;
};

// Characters a name may hold without breaking the "/FontName /NAME def"
// line (bytes of UTF-8 text above ASCII are let through).
bool IsNameByte(char ch) {
  const auto c = static_cast<unsigned char>(ch);
  return c > 32 && c != 127 && std::string_view("[](){}<>/%").find(ch) == std::string_view::npos;
}

void CheckFontName(const std::string& name) {
  if (name.empty() || !std::all_of(name.begin(), name.end(), IsNameByte)) {
    FailUsage("--name " + Shown(name) +
              " is not a PostScript name (no spaces, control characters or any of [](){}<>/%)");
  }
}

// Used when the font has no PostScript name of its own: the file name.
std::string NameFromFile(const std::filesystem::path& font) {
  std::string name;
  for (const char ch : font.stem().string()) {
    if (IsNameByte(ch) && static_cast<unsigned char>(ch) < 127) name += ch;
  }
  return name.empty() ? "Untitled" : name;
}

// The font file's bytes. Fonts run to megabytes: a regular file is read into
// one buffer of its size, left uninitialised as the read fills it.
class FontFile {
 public:
  explicit FontFile(const std::filesystem::path& path) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat st {};
    const bool ok = fd >= 0 && ::fstat(fd, &st) == 0 && ReadAll(fd, st);
    const int err = errno;
    if (fd >= 0) ::close(fd);
    if (!ok) FailRuntime("cannot read " + Shown(path.string()) + ": " + std::strerror(err));
  }
  std::span<const std::uint8_t> bytes() const { return {data_.get(), size_}; }

 private:
  bool ReadAll(int fd, const struct stat& st) {
    // TrueType offsets are 32-bit; anything near that is no font we can send.
    constexpr std::size_t kMaxFont = std::size_t{1} << 30;
    std::size_t capacity = S_ISREG(st.st_mode) ? static_cast<std::size_t>(st.st_size) : 65535;
    if (capacity >= kMaxFont) return TooLarge();
    data_.reset(new std::uint8_t[++capacity]);  // one spare byte shows a file that grew
    for (;;) {
      if (size_ == capacity) {
        if (capacity >= kMaxFont) return TooLarge();
        Grow(capacity *= 2);
      }
      const ssize_t n = ::read(fd, data_.get() + size_, capacity - size_);
      if (n == 0) return true;
      if (n < 0 && errno != EINTR) return false;
      if (n > 0) size_ += static_cast<std::size_t>(n);
    }
  }
  static bool TooLarge() {
    errno = EFBIG;
    return false;
  }
  void Grow(std::size_t capacity) {
    std::unique_ptr<std::uint8_t[]> bigger(new std::uint8_t[capacity]);
    std::copy(data_.get(), data_.get() + size_, bigger.get());
    data_ = std::move(bigger);
  }

  std::unique_ptr<std::uint8_t[]> data_;
  std::size_t size_ = 0;
};

// Standard output gets the program as it is made; a file is replaced only
// once the whole program is there.
Type42Result Convert(std::span<const std::uint8_t> font, const std::string& name,
                     const Type42Options& options, const std::filesystem::path& output) {
  if (!output.empty()) {
    std::string program;
    const Type42Result result = convertTTFtoPS42(font, name, program, options, nullptr);
    if (result.status == Type42Status::kMalformed) return result;
    if (const int err = WriteFileAtomically(output, program); err != 0) {
      FailRuntime("cannot write " + Shown(output.string()) + ": " + std::strerror(err));
    }
    return result;
  }
  const auto write = [](std::string_view piece) {
    std::cout.write(piece.data(), static_cast<std::streamsize>(piece.size()));
  };
  return convertTTFtoPS42(font, name, write, options, nullptr);
}

std::string IncompleteMessage(const Type42Result& result, const std::filesystem::path& font) {
  const std::string where =
      result.table.empty()
          ? "the data at byte " + std::to_string(result.stopOffset)
          : "table \"" + result.table + "\" (" + std::to_string(result.tableLength) + " bytes)";
  return Shown(font.filename().string()) + ": " + where + " has no split point within " +
         std::to_string(kMaxSfntsString) +
         " bytes: the program stops there (--split-large-tables converts the font whole)";
}

void RunType42(const Type42Args& args) {
  const FontFile file(args.font);
  std::string name = args.name;
  if (name.empty()) name = ReadPostScriptName(file.bytes());
  if (name.empty()) name = NameFromFile(args.font);

  Type42Options options;
  options.splitLargeTables = args.splitLargeTables;
  const Type42Result result = Convert(file.bytes(), name, options, args.output);
  if (result.status == Type42Status::kMalformed) {
    FailRuntime(Shown(args.font.filename().string()) + ": " + result.message);
  }
  if (result.status == Type42Status::kIncomplete) {
    throw CliError(kExitIncomplete, IncompleteMessage(result, args.font));
  }
}

}  // namespace

void AddType42Command(CLI::App& app) {
  auto args = std::make_shared<Type42Args>();
  CLI::App* cmd = app.add_subcommand("type42", "Convert a TrueType font to a Type 42 font program");
  cmd->add_option("FONT", args->font, "TrueType font file (.ttf)")->required();
  CLI::Option* nameOption = cmd->add_option(
      "--name", args->name, "Font name in the program (default: the font's PostScript name)");
  cmd->add_option("-o,--output", args->output, "Write the program to this file (default: stdout)");
  cmd->add_flag("--split-large-tables", args->splitLargeTables,
                "Cut tables larger than 65534 bytes on 4-byte boundaries so the program is "
                "always complete");
  cmd->footer(
      "The program carries the whole font as hexadecimal strings of at most 65534 bytes,\n"
      "split at table and glyph boundaries. NAME defaults to the font's PostScript name\n"
      "(or the file name when the font has none).\n\n"
      "Exit status: 0 complete program; 1 unreadable or malformed font, or the output\n"
      "cannot be written; 2 usage error; 3 the program was written but stops early\n"
      "because a table is larger than 65534 bytes and has no split point (the message\n"
      "names it; --split-large-tables avoids this).\n\n"
      "Examples:\n  zorva type42 DejaVuSans.ttf -o DejaVuSans.t42\n"
      "  zorva type42 --split-large-tables --name Watermark Font.ttf > Watermark.t42");
  cmd->callback([args, nameOption] {
    if (nameOption->count() > 0) CheckFontName(args->name);
    RunType42(*args);
  });
}

}  // namespace zorva::cli

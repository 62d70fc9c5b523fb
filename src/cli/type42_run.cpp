// Converting one font from a command line (see type42_run.h).
#include "cli/type42_run.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <iostream>
#include <memory>
#include <span>

#include "core/file_io.h"
#include "watermarks/type42.h"

namespace zorva {
namespace {

[[noreturn]] void Fail(int code, const std::string& message) {
  throw Type42Failure(code, message);
}

// Characters a name may hold without breaking the "/FontName /NAME def"
// line (bytes of UTF-8 text above ASCII are let through).
bool IsNameByte(char ch) {
  const auto c = static_cast<unsigned char>(ch);
  return c > 32 && c != 127 && std::string_view("[](){}<>/%").find(ch) == std::string_view::npos;
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
  FontFile(const std::filesystem::path& path, Type42Quote quote) {
    const int fd = OpenForReading(path);
    struct stat st {};
    const bool ok = fd >= 0 && ::fstat(fd, &st) == 0 && ReadAll(fd, st);
    const int err = errno;
    if (fd >= 0) ::close(fd);
    if (!ok) {
      Fail(kType42ExitFailure,
           "cannot read " + quote(path.string()) + ": " + ReadFailureText(err, kMaxFont));
    }
  }
  std::span<const std::uint8_t> bytes() const { return {data_.get(), size_}; }

 private:
  // TrueType offsets are 32-bit; anything near that is no font we can send.
  static constexpr std::size_t kMaxFont = std::size_t{1} << 30;

  bool ReadAll(int fd, const struct stat& st) {
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
Type42Result Convert(std::span<const std::uint8_t> font, const Type42Job& job,
                     const std::string& name, Type42Quote quote) {
  Type42Options options;
  options.splitLargeTables = job.splitLargeTables;
  if (!job.output.empty()) {
    std::string program;
    Type42Result result = convertTTFtoPS42(font, name, program, options, nullptr);
    if (result.status == Type42Status::kMalformed) return result;
    if (const int err = WriteFileAtomically(job.output, program); err != 0) {
      Fail(kType42ExitFailure,
           "cannot write " + quote(job.output.string()) + ": " + std::strerror(err));
    }
    return result;
  }
  const auto write = [](std::string_view piece) {
    std::cout.write(piece.data(), static_cast<std::streamsize>(piece.size()));
  };
  return convertTTFtoPS42(font, name, write, options, nullptr);
}

std::string IncompleteMessage(const Type42Result& result, const std::string& shownFile) {
  const std::string where =
      result.table.empty()
          ? "the data at byte " + std::to_string(result.stopOffset)
          : "table \"" + result.table + "\" (" + std::to_string(result.tableLength) + " bytes)";
  return shownFile + ": " + where + " has no split point within " +
         std::to_string(kMaxSfntsString) +
         " bytes: the program stops there (--split-large-tables converts the font whole)";
}

}  // namespace

void CheckType42Name(const std::string& name, Type42Quote quote) {
  if (name.empty() || !std::all_of(name.begin(), name.end(), IsNameByte)) {
    Fail(kType42ExitUsage,
         "--name " + quote(name) +
             " is not a PostScript name (no spaces, control characters or any of [](){}<>/%)");
  }
}

void RunType42Job(const Type42Job& job, Type42Quote quote) {
  const FontFile file(job.font, quote);
  std::string name = job.name;
  if (name.empty()) name = ReadPostScriptName(file.bytes());
  if (name.empty()) name = NameFromFile(job.font);

  const Type42Result result = Convert(file.bytes(), job, name, quote);
  if (result.status == Type42Status::kMalformed) {
    Fail(kType42ExitFailure, quote(job.font.filename().string()) + ": " + result.message);
  }
  if (result.status == Type42Status::kIncomplete) {
    Fail(kType42ExitIncomplete, IncompleteMessage(result, quote(job.font.filename().string())));
  }
}

}  // namespace zorva

// Whole-file reads and atomic file replacement (temporary file, fsync, rename).
#include "core/file_io.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

namespace zorva {

namespace {

class Fd {
 public:
  explicit Fd(int fd) : fd_(fd) {}
  ~Fd() {
    if (fd_ >= 0) ::close(fd_);
  }
  Fd(const Fd&) = delete;
  Fd& operator=(const Fd&) = delete;
  int get() const { return fd_; }
  // Closes now and reports close's own failure (a delayed write error).
  int close() {
    int r = ::close(fd_);
    fd_ = -1;
    return r == 0 ? 0 : errno;
  }

 private:
  int fd_;
};

int WriteAll(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    ssize_t n = ::write(fd, bytes.data(), bytes.size());
    if (n < 0) {
      if (errno == EINTR) continue;
      return errno;
    }
    bytes.remove_prefix(static_cast<std::size_t>(n));
  }
  return 0;
}

mode_t CurrentUmask() {
  mode_t m = ::umask(0);
  ::umask(m);
  return m;
}

// The mode the replacement should get: the old file's, else 0666 less umask.
mode_t TargetMode(const std::filesystem::path& path) {
  struct stat st {};
  if (::stat(path.c_str(), &st) == 0) return st.st_mode & 07777;
  return 0666 & ~CurrentUmask();
}

void SyncFolder(const std::filesystem::path& folder) {
  int fd = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd >= 0) {
    ::fsync(fd);  // best effort: the rename itself is already atomic
    ::close(fd);
  }
}

int WriteTemporary(int fd, std::string_view bytes, mode_t mode) {
  if (int e = WriteAll(fd, bytes)) return e;
  if (::fchmod(fd, mode) != 0) return errno;
  if (::fsync(fd) != 0) return errno;
  return 0;
}

}  // namespace

int OpenForReading(const std::filesystem::path& path) {
  // Opening a FIFO for reading blocks until some program opens it for
  // writing; non-blocking, the open returns at once, and once it is known
  // what the file is, reads go back to waiting for data as usual.
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (fd < 0) return -1;
  const int flags = ::fcntl(fd, F_GETFL);
  if (flags < 0 || ::fcntl(fd, F_SETFL, flags & ~O_NONBLOCK) < 0) {
    const int e = errno;
    ::close(fd);
    errno = e;
    return -1;
  }
  return fd;
}

std::optional<std::vector<std::uint8_t>> ReadWholeFile(const std::filesystem::path& path, int* err,
                                                       std::size_t maxBytes) {
  auto fail = [err](int e) {
    if (err) *err = e;
    return std::nullopt;
  };
  Fd fd(OpenForReading(path));
  if (fd.get() < 0) return fail(errno);
  struct stat st {};
  if (::fstat(fd.get(), &st) != 0) return fail(errno);
  std::vector<std::uint8_t> bytes;
  if (S_ISREG(st.st_mode)) {
    if (static_cast<std::uintmax_t>(st.st_size) > maxBytes) return fail(EFBIG);
    bytes.reserve(static_cast<std::size_t>(st.st_size));
  }
  std::uint8_t buf[65536];
  for (;;) {
    // One byte past the limit is enough to know the file is too large.
    const std::size_t room = std::min(sizeof buf, maxBytes - bytes.size() + 1);
    ssize_t n = ::read(fd.get(), buf, room);
    if (n < 0) {
      if (errno == EINTR) continue;
      return fail(errno);
    }
    if (n == 0) break;
    if (static_cast<std::size_t>(n) > maxBytes - bytes.size()) return fail(EFBIG);
    bytes.insert(bytes.end(), buf, buf + n);
  }
  return bytes;
}

std::string ByteCountText(std::size_t bytes) {
  constexpr std::array<std::pair<unsigned, const char*>, 3> kUnits = {
      {{30, " GiB"}, {20, " MiB"}, {10, " KiB"}}};
  for (const auto& [shift, unit] : kUnits) {
    const std::size_t one = std::size_t{1} << shift;
    if (bytes >= one && bytes % one == 0) return std::to_string(bytes >> shift) + unit;
  }
  return std::to_string(bytes) + (bytes == 1 ? " byte" : " bytes");
}

std::string ReadFailureText(int err, std::size_t maxBytes) {
  if (err == EFBIG) return "larger than " + ByteCountText(maxBytes);
  return err != 0 ? std::strerror(err) : "unknown error";
}

int WriteFileAtomically(const std::filesystem::path& path, std::string_view bytes) {
  const std::filesystem::path folder = path.parent_path();
  std::string tmpl = (folder / ("." + path.filename().string() + ".XXXXXX")).string();
  const mode_t mode = TargetMode(path);
  Fd fd(::mkostemp(tmpl.data(), O_CLOEXEC));
  if (fd.get() < 0) return errno;
  int e = WriteTemporary(fd.get(), bytes, mode);
  if (e == 0) e = fd.close();
  if (e == 0 && ::rename(tmpl.c_str(), path.c_str()) != 0) e = errno;
  if (e != 0) {
    ::unlink(tmpl.c_str());
    return e;
  }
  SyncFolder(folder);
  return 0;
}

int MakeDirectories(const std::filesystem::path& path, unsigned mode) {
  std::error_code ec;
  if (std::filesystem::is_directory(path, ec)) return 0;
  std::filesystem::path parent = path.parent_path();
  if (!parent.empty() && parent != path) {
    if (int e = MakeDirectories(parent, 0755)) return e;
  }
  if (::mkdir(path.c_str(), static_cast<mode_t>(mode)) == 0) {
    // mkdir applies the umask; give the folder the mode we were asked for.
    ::chmod(path.c_str(), static_cast<mode_t>(mode));
  } else if (errno != EEXIST) {
    return errno;
  }
  return std::filesystem::is_directory(path, ec) ? 0 : ENOTDIR;
}

}  // namespace zorva

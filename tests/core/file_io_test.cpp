// Whole-file reads (the size limit, pipes and devices) and atomic replacement:
// a failed write leaves the previous file and no debris.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <thread>

#include "core/file_io.h"
#include "support/test_support.h"

namespace zorva {
namespace {

using test::ReadText;
using test::TempDir;
using test::WriteText;

std::size_t CountEntries(const std::filesystem::path& dir) {
  std::size_t n = 0;
  for ([[maybe_unused]] const auto& e : std::filesystem::directory_iterator(dir)) ++n;
  return n;
}

TEST(WholeFileRead, StopsAtTheLimitForFilesAndEndlessDevices) {
  TempDir dir;
  WriteText(dir / "four.txt", "1234");
  int err = 0;
  EXPECT_EQ(ReadWholeFile(dir / "four.txt", &err, 4),
            (std::vector<std::uint8_t>{'1', '2', '3', '4'}));
  EXPECT_EQ(ReadWholeFile(dir / "four.txt", &err, 3), std::nullopt);
  EXPECT_EQ(err, EFBIG);
  err = 0;
  EXPECT_EQ(ReadWholeFile("/dev/zero", &err, 1000), std::nullopt);
  EXPECT_EQ(err, EFBIG);
  EXPECT_EQ(ReadFailureText(EFBIG), "larger than 256 MiB");
  EXPECT_EQ(ReadFailureText(EFBIG, 1 << 30), "larger than 1 GiB");
  EXPECT_EQ(ReadFailureText(EFBIG, 1000), "larger than 1000 bytes");
  EXPECT_EQ(ReadFailureText(ENOENT), "No such file or directory");
}

TEST(WholeFileRead, PipesAreReadToTheirEndAndFifosNeverHang) {
  TempDir dir;
  const auto fifo = dir / "pipe";
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  // Nobody writing: empty at once instead of waiting for a writer.
  EXPECT_EQ(ReadWholeFile(fifo), std::vector<std::uint8_t>{});

  // A pipe with a writer (as a shell's <(...) gives): everything the writer
  // sends, more than one pipe buffer, up to its end.
  int fds[2];
  ASSERT_EQ(pipe(fds), 0);
  std::thread writer([fd = fds[1]] {
    const std::string text(200000, 'x');
    for (std::size_t done = 0; done < text.size();) {
      const ssize_t n = write(fd, text.data() + done, text.size() - done);
      if (n <= 0) break;
      done += static_cast<std::size_t>(n);
    }
    close(fd);
  });
  const auto bytes = ReadWholeFile("/proc/self/fd/" + std::to_string(fds[0]));
  writer.join();
  close(fds[0]);
  ASSERT_TRUE(bytes);
  EXPECT_EQ(bytes->size(), 200000u);
}

TEST(AtomicWrite, ReplacesAndKeepsTheOldMode) {
  TempDir dir;
  auto file = dir / "prefs.plist";
  WriteText(file, "old");
  chmod(file.c_str(), 0640);
  ASSERT_EQ(WriteFileAtomically(file, "new contents"), 0);
  EXPECT_EQ(ReadText(file), "new contents");
  struct stat st {};
  stat(file.c_str(), &st);
  EXPECT_EQ(st.st_mode & 07777, 0640u);
  EXPECT_EQ(CountEntries(dir.path()), 1u);
}

TEST(AtomicWrite, DiskFullMidWriteLeavesThePreviousFile) {
  TempDir dir;
  auto file = dir / "big.plist";
  WriteText(file, "previous");
  // A file-size limit makes write() fail part way with EFBIG, as a full disk
  // would with ENOSPC.
  rlimit old{};
  getrlimit(RLIMIT_FSIZE, &old);
  auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit small = old;
  small.rlim_cur = 4096;
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  int err = WriteFileAtomically(file, std::string(100000, 'x'));
  setrlimit(RLIMIT_FSIZE, &old);
  std::signal(SIGXFSZ, oldHandler);
  EXPECT_EQ(err, EFBIG);
  EXPECT_EQ(ReadText(file), "previous");
  EXPECT_EQ(CountEntries(dir.path()), 1u);  // the temporary file is gone
}

TEST(AtomicWrite, MissingFolderIsReported) {
  TempDir dir;
  EXPECT_EQ(WriteFileAtomically(dir / "no/such/file", "x"), ENOENT);
  WriteText(dir / "plain", "x");
  EXPECT_EQ(WriteFileAtomically(dir / "plain/file", "x"), ENOTDIR);
}

TEST(AtomicWrite, MakeDirectoriesCreatesParentsWithTheMode) {
  TempDir dir;
  auto deep = dir / "a/b/c";
  ASSERT_EQ(MakeDirectories(deep, 01777), 0);
  struct stat st {};
  stat(deep.c_str(), &st);
  EXPECT_EQ(st.st_mode & 07777, 01777u);
  EXPECT_EQ(MakeDirectories(deep), 0);  // existing is fine
  WriteText(dir / "f", "");
  EXPECT_NE(MakeDirectories(dir / "f/sub"), 0);
}

}  // namespace
}  // namespace zorva

// Whole-file reads and atomic replacement: a file we write is first written in
// full to a temporary file in the same folder, flushed to disk and then renamed
// over the old one, so a crash or a full disk never leaves half a file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zorva {

// Whole-file reads stop at a limit, so a huge or endless file (/dev/zero, a
// runaway pipe) ends with EFBIG instead of taking all memory. The default is
// far above any ticket, preference file or property list a user keeps.
inline constexpr std::size_t kMaxFileBytes = std::size_t{256} << 20;

// The file's bytes, or nullopt with an errno-style code in *err (EFBIG when
// the file holds more than maxBytes). Pipes and devices are read as they come;
// a FIFO that no program is writing to reads as empty instead of waiting.
std::optional<std::vector<std::uint8_t>> ReadWholeFile(const std::filesystem::path& path,
                                                       int* err = nullptr,
                                                       std::size_t maxBytes = kMaxFileBytes);

// Opens a file for reading without blocking on a FIFO that has no writer (a
// FIFO with a writer, a device and a regular file read as usual). Returns the
// descriptor, or -1 with errno set.
int OpenForReading(const std::filesystem::path& path);

// The reason a read failed, for messages: "larger than 256 MiB" for EFBIG at
// that limit, else the system's text for err.
std::string ReadFailureText(int err, std::size_t maxBytes = kMaxFileBytes);

// A byte count as people write limits: "64 MiB", "1 GiB", "512 bytes".
std::string ByteCountText(std::size_t bytes);

// Replaces path with bytes. Returns 0 or the errno of the step that failed;
// on failure the previous file (if any) is left untouched and no temporary
// file remains. New files get mode 0666 less the umask; a replaced file keeps
// its mode.
int WriteFileAtomically(const std::filesystem::path& path, std::string_view bytes);

// Creates the folder and its parents with the given mode. Returns 0 or errno.
int MakeDirectories(const std::filesystem::path& path, unsigned mode = 0755);

}  // namespace zorva

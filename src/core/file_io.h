// Whole-file reads and atomic replacement: a file we write is first written in
// full to a temporary file in the same folder, flushed to disk and then renamed
// over the old one, so a crash or a full disk never leaves half a file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zorva {

// The file's bytes, or nullopt with errno-style code in *err.
std::optional<std::vector<std::uint8_t>> ReadWholeFile(const std::filesystem::path& path,
                                                       int* err = nullptr);

// Replaces path with bytes. Returns 0 or the errno of the step that failed;
// on failure the previous file (if any) is left untouched and no temporary
// file remains. New files get mode 0666 less the umask; a replaced file keeps
// its mode.
int WriteFileAtomically(const std::filesystem::path& path, std::string_view bytes);

// Creates the folder and its parents with the given mode. Returns 0 or errno.
int MakeDirectories(const std::filesystem::path& path, unsigned mode = 0755);

}  // namespace zorva

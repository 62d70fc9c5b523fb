// The printing system's status for a failed file operation.
#include "core/status.h"

#include <array>
#include <cerrno>
#include <utility>

namespace zorva {
namespace {

constexpr std::array<std::pair<int, Status>, 9> kErrnoStatus = {{
    {ENOENT, kDirNFErr},  // only the folder can be missing for a file we create
    {ENOTDIR, kDirNFErr},
    {EACCES, kWrPermErr},
    {EPERM, kWrPermErr},
    {EROFS, kWrPermErr},
    {ENOSPC, kDskFulErr},
    {EDQUOT, kDskFulErr},
    {EFBIG, kDskFulErr},
    {ENOMEM, kMemFullErr},
}};

}  // namespace

Status StatusForErrno(int err) {
  if (err == 0) return kNoErr;
  for (const auto& [e, status] : kErrnoStatus) {
    if (e == err) return status;
  }
  return kIOErr;
}

}  // namespace zorva

// Status codes returned by the dialog-extension operations and the ticket API:
// signed 32-bit, 0 for success, the printing system's negative codes otherwise.
#pragma once

#include <cstdint>

namespace zorva {

using Status = std::int32_t;

inline constexpr Status kNoErr = 0;
inline constexpr Status kParamErr = -50;             // bad argument
inline constexpr Status kMemFullErr = -108;          // out of memory
inline constexpr Status kResNotFound = -192;         // resource not found
inline constexpr Status kFnfErr = -43;               // file not found
inline constexpr Status kDskFulErr = -34;            // disk full
inline constexpr Status kIOErr = -36;                // I/O error
inline constexpr Status kWrPermErr = -61;            // no permission to write
inline constexpr Status kDirNFErr = -120;            // folder not found
inline constexpr Status kNoConnection = -3264;       // no connection to the printer
inline constexpr Status kInvalidPDEContext = -9530;  // missing dialog-extension context
inline constexpr Status kPrintSessionErr = -208;     // print session not usable
// A ticket item set as locked refuses to be changed or removed. No code of the
// printing system's fits, so this one is ours.
inline constexpr Status kTicketItemLocked = -30890;

// The status for a failed file operation's errno: callers that hand a status
// on keep the system's reason for their message themselves.
Status StatusForErrno(int err);

}  // namespace zorva

// The printer paper list: one Get-Printer-Attributes request for
// "media-col-database" sent straight to the printer's network address, the
// answer read whole and decoded from memory, and its collections translated
// into the process-wide list of stocks that the background worker fills.
//
// Every network wait is bounded, and a fetch can be abandoned from another
// thread through an abort flag, so a printer that accepts and then stays
// silent (or trickles a byte a second) never holds anyone up.
#pragma once

#include <cups/http.h>
#include <cups/ipp.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "core/status.h"
#include "paper/ipp_papers.h"

namespace zorva {

struct IppDeleter {
  void operator()(ipp_t* ipp) const { ippDelete(ipp); }
};
using IppPtr = std::unique_ptr<ipp_t, IppDeleter>;

// How long a fetch may take, and the flag that abandons it.
struct FetchControl {
  std::chrono::milliseconds connectTimeout{5000};
  // From the request being sent to the last byte of the answer.
  std::chrono::milliseconds answerTimeout{20000};
  // Answers larger than this are not read (a catalogue of 2,000 papers is
  // well under a megabyte).
  std::size_t maxAnswerBytes = std::size_t{64} << 20;
  // Set from any thread to give up within a few tens of milliseconds.
  const std::atomic<bool>* abort = nullptr;
};

// The process-wide printer paper list. Written only by the fetch (on the
// worker); the dialog reads it only after the worker has reported a
// finished fetch and before it asks for another.
PrinterStockList& PrinterStockLibraryList();

// "http://" followed by the address: no port of our own, no path.
std::string PrinterUriForAddress(std::string_view address);

// The Get-Printer-Attributes request for the printer's media catalogue.
IppPtr NewMediaColDatabaseRequest(const std::string& printerUri);

// Decodes one whole IPP message held in memory; null when the bytes are not
// a complete, well-formed message.
IppPtr DecodeIppMessage(const unsigned char* data, std::size_t size);

enum class FetchOutcome {
  Answer,        // an IPP answer arrived and decoded
  NoAnswer,      // connected, but nothing usable came back in time
  NoConnection,  // the printer could not be reached
};

struct PrinterAnswer {
  FetchOutcome outcome = FetchOutcome::NoAnswer;
  IppPtr answer;
};

// Connects, sends the request, reads the whole answer and decodes it; no
// translation. "host", "host:port" and "[v6]:port" are understood; without
// a port the IPP library's default port is used.
PrinterAnswer FetchMediaColDatabase(std::string_view address, const FetchControl& control);

// Fetches and translates into PrinterStockLibraryList(). 0 on success and
// when the printer sends no usable answer (the list is then kept), -3264
// when no connection can be made, -108 when memory runs out.
Status RetrievePrinterStockLibrary(std::string_view address, const FetchControl& control);
Status RetrievePrinterStockLibrary(std::string_view address);

}  // namespace zorva

// Feeds arbitrary bytes as a printer's answer to the decoder and the
// translation into paper stocks: no crash, no leak, whatever the printer sends.
#include <cstddef>
#include <cstdint>

#include "paper/ipp_papers.h"
#include "paper/printer_papers.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zorva::IppPtr answer = zorva::DecodeIppMessage(data, size);
  zorva::PrinterStockList stocks = zorva::PrinterStocksFromAnswer(answer.get());
  for (const auto& stock : stocks) {
    // Reading back every stock touches every string the translation kept.
    (void)stock->asTicket();
  }
  return 0;
}

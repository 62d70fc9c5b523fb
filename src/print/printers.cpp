// Listing the print server's queues for the printer chooser.
#include "print/printers.h"

#include <cups/cups.h>

namespace zorva {

std::string PrintServerName() {
  std::string server = cupsServer();
  if (server.starts_with("/") || server.find(':') != std::string::npos) return server;
  return server + ":" + std::to_string(ippPort());
}

std::vector<PrinterQueue> ListPrinterQueues(std::string* error) {
  std::vector<PrinterQueue> queues;
  cups_dest_t* dests = nullptr;
  const int count = cupsGetDests2(CUPS_HTTP_DEFAULT, &dests);
  if (count == 0) {
    // No queues, or no server: libcups answers both the same way.
    http_t* probe = httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1,
                                 10000, nullptr);
    if (probe == nullptr) {
      if (error) {
        *error =
            "cannot reach the print server " + PrintServerName() + ": " + cupsLastErrorString();
      }
      return queues;
    }
    httpClose(probe);
  }
  for (int i = 0; i < count; ++i) {
    const cups_dest_t& d = dests[i];
    if (d.instance != nullptr) continue;  // instances are lpoptions presets of their own
    const char* info = cupsGetOption("printer-info", d.num_options, d.options);
    const char* uri = cupsGetOption("device-uri", d.num_options, d.options);
    queues.push_back({d.name, info && *info ? info : d.name, uri ? uri : "", d.is_default != 0});
  }
  cupsFreeDests(count, dests);
  return queues;
}

}  // namespace zorva

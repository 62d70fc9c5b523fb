// The printers a print dialog offers: the queues of the CUPS server the
// calling thread uses (cupsSetServer or CUPS_SERVER), with the user's
// default (lpoptions) marked.
#pragma once

#include <string>
#include <vector>

namespace zorva {

struct PrinterQueue {
  std::string name;
  std::string info;  // the queue's description, or its name
  std::string deviceUri;
  bool isDefault = false;
};

// The calling thread's print server as users name it: host and port, or the
// socket's path.
std::string PrintServerName();

// The queues in the server's order; an empty list and a one-line reason in
// *error when the server cannot be asked.
std::vector<PrinterQueue> ListPrinterQueues(std::string* error);

}  // namespace zorva

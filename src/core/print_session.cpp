// The print session and the process-wide "current session" of the dialog.
#include "core/print_session.h"

#include <atomic>

namespace zorva {

Ticket* PrintSession::ticket(std::string_view name) {
  if (name == kPrintSettingsTicketName) return &printSettings_;
  if (name == kPageFormatTicketName) return &pageFormat_;
  if (name == kPrinterInfoTicketName) return &printerInfo_;
  return nullptr;
}

Status GetTicketFromSession(PrintSession* session, std::string_view name, Ticket** outTicket) {
  if (!session || !outTicket) return kParamErr;
  if (Ticket* t = session->ticket(name)) *outTicket = t;
  return kNoErr;
}

namespace {
// Set and cleared on the dialog's thread; read from anywhere.
std::atomic<PrintSession*> gCurrentSession{nullptr};
}  // namespace

PrintSession* GetCurrentPrintSession() {
  return gCurrentSession.load();
}

void SetCurrentPrintSession(PrintSession* session) {
  gCurrentSession.store(session);
}

}  // namespace zorva

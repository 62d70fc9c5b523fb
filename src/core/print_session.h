// PrintSession: what the print dialog knows about the job being set up: its
// three tickets, the current printer's queue name, device URI and PPD path.
// Tickets are reached by their platform names ("PMPrintSettingsTicket", ...).
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "core/status.h"
#include "core/ticket.h"

namespace zorva {

inline constexpr std::string_view kPrintSettingsTicketName = "PMPrintSettingsTicket";
inline constexpr std::string_view kPageFormatTicketName = "PMPageFormatTicket";
inline constexpr std::string_view kPrinterInfoTicketName = "PMPrinterInfoTicket";

class PrintSession {
 public:
  PrintSession() = default;
  PrintSession(std::string printerName, std::string deviceUri, std::filesystem::path ppdPath)
      : printerName_(std::move(printerName)),
        deviceUri_(std::move(deviceUri)),
        ppdPath_(std::move(ppdPath)) {}

  Ticket& printSettings() { return printSettings_; }
  const Ticket& printSettings() const { return printSettings_; }
  Ticket& pageFormat() { return pageFormat_; }
  const Ticket& pageFormat() const { return pageFormat_; }
  Ticket& printerInfo() { return printerInfo_; }
  const Ticket& printerInfo() const { return printerInfo_; }

  // The ticket of that name, or nullptr for a name the session has no item for.
  Ticket* ticket(std::string_view name);

  const std::string& printerName() const { return printerName_; }
  void setPrinterName(std::string name) { printerName_ = std::move(name); }
  const std::string& deviceUri() const { return deviceUri_; }
  void setDeviceUri(std::string uri) { deviceUri_ = std::move(uri); }
  const std::filesystem::path& ppdPath() const { return ppdPath_; }
  void setPpdPath(std::filesystem::path path) { ppdPath_ = std::move(path); }

 private:
  Ticket printSettings_;
  Ticket pageFormat_;
  Ticket printerInfo_;
  std::string printerName_;
  std::string deviceUri_;
  std::filesystem::path ppdPath_;
};

// Writes the session's ticket named `name` to *outTicket. A name the session
// has no item for leaves *outTicket untouched and returns kNoErr, as the
// platform did; a null session or out pointer gives kParamErr.
Status GetTicketFromSession(PrintSession* session, std::string_view name, Ticket** outTicket);

// The session of the dialog being shown (set while the dialog extension is
// initialised), or nullptr. Not owned.
PrintSession* GetCurrentPrintSession();
void SetCurrentPrintSession(PrintSession* session);

}  // namespace zorva

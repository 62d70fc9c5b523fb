// Exports the job ticket of a print-settings ticket, as `zorva jotf export`.
#include <zorva/core/print_session.h>
#include <zorva/jobticket/jotf_export.h>
#include <iostream>

int main(int argc, char** argv) {
  std::optional<zorva::Ticket> ticket = argc == 3 ? zorva::Ticket::Load(argv[1]) : std::nullopt;
  if (!ticket) return 2;
  zorva::PrintSession session;
  session.printSettings() = *ticket;
  zorva::SetCurrentPrintSession(&session);
  std::string reason;
  const zorva::Status status = zorva::JOTFExportToFileAtPath(argv[2], &reason);
  zorva::SetCurrentPrintSession(nullptr);
  if (status != zorva::kNoErr) std::cerr << "cannot write " << argv[2] << ": " << reason << "\n";
  return status == zorva::kNoErr ? 0 : 1;
}

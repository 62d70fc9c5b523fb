// Building and sending the print job. The job ticket goes first so that the
// printer's server has read it before the pages arrive; a CUPS server passes
// it to the printer unchanged through the conversion we install for its
// format. Every libcups job call of the product lives here.
#include "print/print_job.h"

#include <cups/cups.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <memory>

#include "core/file_io.h"
#include "core/ticket_keys.h"
#include "jobticket/jotf_export.h"
#include "paper/ppd.h"
#include "print/printers.h"
#include "watermarks/watermark_choice.h"

namespace zorva {

namespace {

struct DestFree {
  void operator()(cups_dest_t* d) const { cupsFreeDests(1, d); }
};
struct InfoFree {
  void operator()(cups_dinfo_t* i) const { cupsFreeDestInfo(i); }
};

std::string Quoted(std::string_view s) {
  return "\"" + std::string(s) + "\"";
}

PrintFailure Failure(Status status, std::string message) {
  return {status, std::move(message)};
}

constexpr int kConnectTimeoutMs = 10000;

// The PDF header may follow a few bytes of other data; readers look at the
// first kilobyte for it.
constexpr std::size_t kHeaderWindow = 1024;

bool WriteAll(http_t* http, const char* data, std::size_t size) {
  return cupsWriteRequestData(http, data, size) == HTTP_STATUS_CONTINUE;
}

// One document of the job; false with the server's words in *why.
bool SendDocument(http_t* http, cups_dest_t* dest, cups_dinfo_t* info, int jobId,
                  const std::string& name, std::string_view format, bool last,
                  const std::string* bytes, const std::filesystem::path* file, std::string* why) {
  if (cupsStartDestDocument(http, dest, info, jobId, name.c_str(), std::string(format).c_str(), 0,
                            nullptr, last ? 1 : 0) != HTTP_STATUS_CONTINUE) {
    *why = cupsLastErrorString();
    return false;
  }
  bool ok = true;
  if (bytes != nullptr) {
    ok = WriteAll(http, bytes->data(), bytes->size());
  } else {
    const int fd = OpenForReading(*file);
    if (fd < 0) {
      *why = std::strerror(errno);
      ok = false;
    } else {
      std::array<char, 65536> buffer{};
      ssize_t n = 0;
      while (ok && (n = read(fd, buffer.data(), buffer.size())) > 0) {
        ok = WriteAll(http, buffer.data(), static_cast<std::size_t>(n));
      }
      if (n < 0) {
        *why = std::strerror(errno);
        ok = false;
      }
      close(fd);
    }
  }
  const ipp_status_t finished = cupsFinishDestDocument(http, dest, info);
  if (ok && finished > IPP_STATUS_OK_CONFLICTING) {
    *why = cupsLastErrorString();
    ok = false;
  }
  if (!ok && why->empty()) *why = cupsLastErrorString();
  return ok;
}

// The queue of that name on the thread's server, or a failure naming why.
std::unique_ptr<cups_dest_t, DestFree> FindQueue(const std::string& queue, PrintFailure* failure) {
  std::unique_ptr<cups_dest_t, DestFree> dest(
      cupsGetNamedDest(CUPS_HTTP_DEFAULT, queue.c_str(), nullptr));
  if (dest) return dest;
  // libcups says "not found" for a server it could not reach as well; a
  // connection of our own tells the two apart.
  http_t* probe = httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1,
                               kConnectTimeoutMs, nullptr);
  if (probe == nullptr) {
    *failure = Failure(kNoConnection, "cannot reach the print server " + PrintServerName() + ": " +
                                          cupsLastErrorString());
  } else {
    httpClose(probe);
    *failure = Failure(kPrintSessionErr, "no printer named " + Quoted(queue) +
                                             " on the print server " + PrintServerName());
  }
  return nullptr;
}

}  // namespace

bool SendsJobTicket(const Ticket& settings) {
  std::int32_t emit = 1;
  return !settings.getNumber(tkey::kEmitJOTF, emit) || emit != 0;
}

PrintJob BuildPrintJob(PrintSession& session, const PPD* ppd, const std::filesystem::path& document,
                       bool allowJobTicket) {
  PrintJob job;
  job.queue = session.printerName();
  job.document = document;
  const std::string ticket = JOTFExportText(session);
  const Ticket& settings = session.printSettings();
  job.options = PPDChoiceOptions(settings, ppd);
  if (std::optional<std::string> sides = JobSides(settings, ppd)) {
    job.options.push_back({"sides", std::move(*sides)});
  }
  std::string jobName;
  JobOptions fromTicket = StandardAttributesFromJobTicket(ticket, &jobName);
  const bool hasMedia = std::any_of(fromTicket.begin(), fromTicket.end(), [](const JobOption& o) {
    return o.name == "media-col" || o.name == "media";
  });
  job.options.insert(job.options.end(), fromTicket.begin(), fromTicket.end());
  std::optional<PageSizePoints> page;
  {
    PrintSession* previous = GetCurrentPrintSession();
    SetCurrentPrintSession(&session);
    page = CurrentPageSize();
    if (std::int32_t o = 0; page && session.pageFormat().getNumber(tkey::kPMOrientation, o)) {
      page->orientation = o;
    }
    SetCurrentPrintSession(previous);
  }
  JobOptions fromSettings = StandardAttributesFromSettings(settings, page, hasMedia);
  job.options.insert(job.options.end(), fromSettings.begin(), fromSettings.end());
  // The watermark filter on the server draws what these name.
  if (const std::optional<WatermarkChoice> mark = WatermarkChoiceFromTicket(settings)) {
    for (auto& [name, value] : WatermarkJobOptions(*mark)) {
      job.options.push_back({std::move(name), std::move(value)});
    }
  }
  if (jobName.empty()) {
    if (const std::string* name = settings.getString(tkey::kPMJobName)) jobName = *name;
  }
  job.title = jobName.empty() ? document.filename().string() : jobName;
  if (allowJobTicket && SendsJobTicket(settings) && !ticket.empty()) job.jobTicket = ticket;
  return job;
}

std::optional<PrintFailure> CheckPrintDocument(const std::filesystem::path& document) {
  const int fd = OpenForReading(document);
  if (fd < 0) {
    return Failure(kFnfErr, "cannot read " + document.string() + ": " + std::strerror(errno));
  }
  std::array<char, kHeaderWindow> head{};
  std::size_t got = 0;
  ssize_t n = 0;
  while (got < head.size() && (n = read(fd, head.data() + got, head.size() - got)) > 0) {
    got += static_cast<std::size_t>(n);
  }
  const int err = errno;
  close(fd);
  if (n < 0) return Failure(kIOErr, "cannot read " + document.string() + ": " + std::strerror(err));
  if (std::string_view(head.data(), got).find("%PDF-") == std::string_view::npos) {
    return Failure(kParamErr, document.string() + " is not a PDF document");
  }
  return std::nullopt;
}

std::optional<PrintFailure> SubmitPrintJob(const PrintJob& job, int* jobId) {
  PrintFailure failure;
  std::unique_ptr<cups_dest_t, DestFree> dest = FindQueue(job.queue, &failure);
  if (!dest) return failure;
  // The thread's connection to its print server: the queues we print on
  // are that server's, and it is the connection cupsSetServer chooses.
  http_t* const http = CUPS_HTTP_DEFAULT;
  std::unique_ptr<cups_dinfo_t, InfoFree> info(cupsCopyDestInfo(http, dest.get()));
  if (!info) {
    return Failure(kNoConnection,
                   "cannot reach printer " + Quoted(job.queue) + ": " + cupsLastErrorString());
  }
  cups_option_t* options = nullptr;
  int count = 0;
  for (const JobOption& o : job.options) {
    count = cupsAddOption(o.name.c_str(), o.value.c_str(), count, &options);
  }
  int id = 0;
  const ipp_status_t created =
      cupsCreateDestJob(http, dest.get(), info.get(), &id, job.title.c_str(), count, options);
  cupsFreeOptions(count, options);
  if (created > IPP_STATUS_OK_CONFLICTING || id <= 0) {
    return Failure(kIOErr,
                   "printer " + Quoted(job.queue) + " refused the job: " + cupsLastErrorString());
  }
  std::string why;
  bool sent = true;
  if (job.jobTicket) {
    sent = SendDocument(http, dest.get(), info.get(), id, "job-ticket.jotf", kJobTicketFormat,
                        false, &*job.jobTicket, nullptr, &why);
  }
  if (sent) {
    sent = SendDocument(http, dest.get(), info.get(), id, job.document.filename().string(),
                        kPDFFormat, true, nullptr, &job.document, &why);
  }
  if (!sent) {
    cupsCancelDestJob(http, dest.get(), id);
    return Failure(kIOErr, "sending the job to printer " + Quoted(job.queue) +
                               " failed, so it was cancelled: " + why);
  }
  if (jobId) *jobId = id;
  return std::nullopt;
}

std::optional<PrintFailure> PrintToQueue(const PrintRequest& request, int* jobId) {
  if (std::optional<PrintFailure> bad = CheckPrintDocument(request.document)) return bad;
  PrintFailure failure;
  std::unique_ptr<cups_dest_t, DestFree> dest = FindQueue(request.queue, &failure);
  if (!dest) return failure;
  PPDPtr ppd = PPDOpenQueue(request.queue);
  if (!ppd) {
    return Failure(kPrintSessionErr, "cannot get the PPD of printer " + Quoted(request.queue) +
                                         ": " + cupsLastErrorString());
  }
  const char* uri = cupsGetOption("device-uri", dest->num_options, dest->options);
  PrintSession session(request.queue, uri ? uri : "", {});
  session.printSettings() = request.settings;
  if (request.page) {
    session.pageFormat().setReal(kTicketClientSystem, tkey::kPMPaperWidth, request.page->width);
    session.pageFormat().setReal(kTicketClientSystem, tkey::kPMPaperLength, request.page->length);
    session.pageFormat().setNumber(kTicketClientSystem, tkey::kPMOrientation,
                                   request.page->orientation);
  }
  const PrintJob job = BuildPrintJob(session, ppd.get(), request.document, request.allowJobTicket);
  return SubmitPrintJob(job, jobId);
}

}  // namespace zorva

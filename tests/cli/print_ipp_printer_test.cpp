// zorva print to an IPP printer through a CUPS queue: which of the job's
// standard attributes reach a printer that knows nothing of our PPD. A real
// ippeveprinter stands in for the printer; the private CUPS server's own ipp
// backend takes the job there, and the printer's job attributes tell what
// arrived.
#include <cups/cups.h>
#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <thread>

#include "cli/cli_test_util.h"
#include "core/ticket.h"
#include "core/ticket_keys.h"
#include "support/ipp_printer.h"
#include "support/recording_queue.h"

namespace zorva::test {
namespace {

constexpr const char* kPdf =
    "%PDF-1.4\n1 0 obj << /Type /Catalog /Pages 2 0 R >> endobj\n"
    "2 0 obj << /Type /Pages /Kids [] /Count 0 >> endobj\ntrailer << /Root 1 0 R >>\n%%EOF\n";

// What the printer says it supports: without a value listed here, CUPS
// leaves the attribute out or the printer refuses the job.
std::string PrinterAttributes() {
  // Each size with no margins and with the margins our PPD's sizes have
  // (CUPS sends the queue's imageable area as the margins, and the PPD's A4 in
  // whole points: 20990 by 29704 hundredths of a millimetre).
  const auto paper = [](int x, int y, int margin) {
    const std::string m = std::to_string(margin);
    return "MEMBER collection media-size { MEMBER integer x-dimension " + std::to_string(x) +
           " MEMBER integer y-dimension " + std::to_string(y) +
           " } MEMBER integer media-bottom-margin " + m + " MEMBER integer media-left-margin " + m +
           " MEMBER integer media-right-margin " + m + " MEMBER integer media-top-margin " + m;
  };
  return MediaColDatabaseAttributes({paper(21000, 29700, 0), paper(20990, 29704, 423),
                                     paper(21590, 27940, 0), paper(21590, 27940, 423)}) +
         "ATTR collection media-col-default { " + paper(21000, 29700, 0) +
         " }\n"
         "ATTR collection media-size-supported { MEMBER integer x-dimension 20990 MEMBER "
         "integer y-dimension 29704 },{ MEMBER integer x-dimension 21000 MEMBER integer "
         "y-dimension 29700 },{ MEMBER integer x-dimension 21590 MEMBER integer "
         "y-dimension 27940 }\n"
         "ATTR keyword media-supported iso_a4_210x297mm,na_letter_8.5x11in\n"
         "ATTR keyword media-default iso_a4_210x297mm\n"
         "ATTR keyword media-type-supported stationery,bond,cardstock\n"
         "ATTR keyword media-color-supported white,blue,yellow\n"
         "ATTR integer media-bottom-margin-supported 0,423\n"
         "ATTR integer media-left-margin-supported 0,423\n"
         "ATTR integer media-right-margin-supported 0,423\n"
         "ATTR integer media-top-margin-supported 0,423\n"
         "ATTR keyword sides-supported one-sided,two-sided-long-edge,two-sided-short-edge\n"
         "ATTR keyword sides-default one-sided\n"
         "ATTR rangeOfInteger copies-supported 1-999\n"
         "ATTR integer copies-default 1\n"
         "ATTR keyword print-color-mode-supported auto,color,monochrome\n"
         "ATTR keyword print-color-mode-default auto\n"
         "ATTR keyword output-bin-supported face-down,top,stacker-1\n"
         "ATTR keyword output-bin-default face-down\n"
         "ATTR enum finishings-supported 3,4,5,20,21,22,23,28,29,30,31,74,75,76,77\n"
         "ATTR enum finishings-default 3\n"
         "ATTR boolean job-account-id-supported true\n"
         "ATTR boolean job-accounting-user-id-supported true\n";
}

// The attributes of the printer's one job, as text by name; empty when no
// job arrived in time.
std::map<std::string, std::string> PrintersJob(const IppEvePrinter& printer) {
  const std::string uri = "ipp://" + printer.address() + "/ipp/print";
  for (int waited = 0; waited < 20000; waited += 200) {
    http_t* http = httpConnect2("127.0.0.1", printer.port(), nullptr, AF_INET,
                                HTTP_ENCRYPTION_NEVER, 1, 5000, nullptr);
    if (http == nullptr) return {};
    ipp_t* request = ippNewRequest(IPP_OP_GET_JOBS);
    ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, uri.c_str());
    ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "which-jobs", nullptr, "all");
    ippAddString(request, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", nullptr,
                 "all");
    ipp_t* answer = cupsDoRequest(http, request, "/ipp/print");
    std::map<std::string, std::string> job;
    for (ipp_attribute_t* a = ippFirstAttribute(answer); a; a = ippNextAttribute(answer)) {
      if (ippGetGroupTag(a) != IPP_TAG_JOB || !ippGetName(a)) continue;
      char text[2048];
      ippAttributeString(a, text, sizeof text);
      job[ippGetName(a)] = text;
    }
    ippDelete(answer);
    httpClose(http);
    if (!job.empty()) return job;
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
  }
  return {};
}

TEST(PrintToIppPrinter, TheStandardAttributesOfTheTicketReachThePrinter) {
  IppEvePrinter printer(PrinterAttributes(), /*verbose=*/true);
  if (!printer.ready()) GTEST_SKIP() << "ippeveprinter did not start";
  RecordingQueue queue;
  std::string reason;
  if (!queue.start(&reason)) GTEST_SKIP() << reason;
  ASSERT_TRUE(queue.cupsd().addQueue("IppPrinter", queue.cupsd().folder() / "queue.ppd", &reason,
                                     "ipp://" + printer.address() + "/ipp/print"))
      << reason;

  TempDir dir;
  ScopedEnv server("CUPS_SERVER", queue.server());
  ScopedEnv home("HOME", dir.path().string());
  WriteText(dir / "doc.pdf", kPdf);
  Ticket ticket = *Ticket::Load(ZORVA_TEST_DATA "/../../examples/job-settings.plist");
  ticket.setDictionary(kTicketClientSystem, tkey::kJobLevelStock,
                       Dictionary{{"Size", Value(4)}, {"Color", Value(2)}, {"Weight", Value(120)}});
  ticket.setNumber(kTicketClientSystem, tkey::kFinishingDuplex, 3);
  ticket.setNumber(kTicketClientSystem, tkey::kOutputColor, 1);
  ticket.setNumber(kTicketClientSystem, tkey::kPMCopies, 2);
  ticket.setString(kTicketClientSystem, tkey::kPMJobName, "Quarterly report");
  ticket.setNumber(kTicketClientSystem, tkey::kAccountingOn, 3);
  ticket.setString(kTicketClientSystem, tkey::kAccountingUserId, "dana");
  ticket.setString(kTicketClientSystem, tkey::kAccountingAccountId, "Dept 7");
  ASSERT_EQ(ticket.save(dir / "job.plist"), 0);

  // The job ticket is for the printer's own server; an IPP printer gets the
  // document alone.
  ToolResult r = RunTool({"print", (dir / "doc.pdf").string(), "--printer", "IppPrinter",
                          "--ticket", (dir / "job.plist").string(), "--no-job-ticket"});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  const std::map<std::string, std::string> job = PrintersJob(printer);
  ASSERT_FALSE(job.empty()) << "no job reached the printer; "
                            << ReadText(queue.cupsd().folder() / "log/error_log")
                            << printer.logText();
  const std::map<std::string, std::string> expected = {
      {"sides", "two-sided-short-edge"},   {"copies", "2"},
      {"print-color-mode", "monochrome"},  {"finishings", "staple-top-left"},
      {"job-account-id", "Dept 7"},        {"job-accounting-user-id", "dana"},
      {"job-name", "Quarterly report Q1"},
  };
  for (const auto& [name, value] : expected) {
    const auto got = job.find(name);
    EXPECT_TRUE(got != job.end() && got->second == value)
        << name << " = " << (got != job.end() ? got->second : "(absent)") << ", wanted " << value;
  }
  // The job's A4 paper, as the queue's PPD measures A4 (595 by 842 points).
  ASSERT_TRUE(job.contains("media-col"));
  EXPECT_NE(job.at("media-col").find("media-size={x-dimension=20990 y-dimension=29704}"),
            std::string::npos)
      << job.at("media-col");
  EXPECT_TRUE(job.contains("output-bin"));
}

}  // namespace
}  // namespace zorva::test

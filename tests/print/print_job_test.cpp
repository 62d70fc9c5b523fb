// Building the print job from a session: the job ticket is the export's,
// the "send job ticket" choice and the caller can leave it out, the job's
// name and the document check.
#include "print/print_job.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "core/ticket_keys.h"
#include "jobticket/jotf_export.h"
#include "paper/ppd.h"
#include "support/test_support.h"

namespace zorva {
namespace {

using test::TempDir;

PrintSession Session() {
  PrintSession s("QM4400", "ipp://printer.example/ipp/print", {});
  s.printSettings() = *Ticket::Load(test::TestData("../../examples/job-settings.plist"));
  s.pageFormat().setReal(kTicketClientSystem, tkey::kPMPaperWidth, 612);
  s.pageFormat().setReal(kTicketClientSystem, tkey::kPMPaperLength, 792);
  return s;
}

TEST(BuildPrintJob, TheJobTicketIsTheExportOfTheSameSession) {
  PrintSession exported = Session();
  const std::string expected = JOTFExportText(exported);
  PrintSession printed = Session();
  const PrintJob job = BuildPrintJob(printed, nullptr, "/tmp/report.pdf", true);
  ASSERT_TRUE(job.jobTicket.has_value());
  EXPECT_EQ(*job.jobTicket, expected);
  EXPECT_EQ(job.queue, "QM4400");
  EXPECT_EQ(GetCurrentPrintSession(), nullptr) << "the current session is given back";
  EXPECT_TRUE(printed.printSettings().contains(tkey::kOptions)) << "the host items, as on export";
}

TEST(BuildPrintJob, SendJobTicketChoiceAndCallerCanLeaveItOut) {
  struct Case {
    std::optional<std::int64_t> emit;
    bool allow;
    bool sent;
  };
  for (const Case& c : {Case{std::nullopt, true, true}, Case{1, true, true}, Case{0, true, false},
                        Case{1, false, false}}) {
    PrintSession s = Session();
    if (c.emit) s.printSettings().setNumber(kTicketClientSystem, tkey::kEmitJOTF, *c.emit);
    const PrintJob job = BuildPrintJob(s, nullptr, "/tmp/a.pdf", c.allow);
    EXPECT_EQ(job.jobTicket.has_value(), c.sent) << c.emit.value_or(-1) << " " << c.allow;
    EXPECT_FALSE(job.options.empty()) << "the job options go either way";
  }
}

TEST(BuildPrintJob, TitleFromTheJobTicketThenTheJobNameThenTheFile) {
  PrintSession s = Session();
  EXPECT_EQ(BuildPrintJob(s, nullptr, "/tmp/a.pdf", true).title, "Quarterly report Q1");
  PrintSession plain;
  EXPECT_EQ(BuildPrintJob(plain, nullptr, "/tmp/a.pdf", true).title, "a.pdf");
  plain.printSettings().setString(kTicketClientSystem, tkey::kPMJobName, "Report");
  EXPECT_EQ(BuildPrintJob(plain, nullptr, "/tmp/a.pdf", true).title, "Report");
}

TEST(BuildPrintJob, TheChosenWatermarkGoesToTheServersFilterAsJobOptions) {
  PrintSession s = Session();
  const auto named = [](const PrintJob& job, std::string_view name) {
    const auto at = std::find_if(job.options.begin(), job.options.end(),
                                 [&](const JobOption& o) { return o.name == name; });
    return at == job.options.end() ? std::string("(none)") : at->value;
  };
  EXPECT_EQ(named(BuildPrintJob(s, nullptr, "/tmp/a.pdf", true), "zorva-watermark"), "(none)");
  s.printSettings().setString(kTicketClientSystem, "com.zorva.print.WatermarkName", "Draft");
  s.printSettings().setBoolean(kTicketClientSystem, "com.zorva.print.WatermarkFirstPageOnly", true);
  const PrintJob job = BuildPrintJob(s, nullptr, "/tmp/a.pdf", false);
  EXPECT_EQ(named(job, "zorva-watermark"), "Draft");
  EXPECT_EQ(named(job, "zorva-watermark-pages"), "first");
  EXPECT_EQ(named(job, "zorva-watermark-layer"), "behind");
}

TEST(CheckPrintDocument, OnlyReadablePdfDocumentsPass) {
  TempDir dir;
  test::WriteText(dir / "ok.pdf", "%PDF-1.7\n%%EOF\n");
  test::WriteText(dir / "junk-first.pdf", std::string(300, ' ') + "%PDF-1.4\n");
  test::WriteText(dir / "late.pdf", std::string(2000, ' ') + "%PDF-1.4\n");
  test::WriteText(dir / "text.txt", "hello\n");
  test::WriteText(dir / "empty.pdf", "");
  EXPECT_FALSE(CheckPrintDocument(dir / "ok.pdf"));
  EXPECT_FALSE(CheckPrintDocument(dir / "junk-first.pdf"));
  for (const char* bad : {"late.pdf", "text.txt", "empty.pdf"}) {
    const std::optional<PrintFailure> f = CheckPrintDocument(dir / bad);
    ASSERT_TRUE(f) << bad;
    EXPECT_EQ(f->status, kParamErr);
    EXPECT_NE(f->message.find("is not a PDF document"), std::string::npos) << f->message;
  }
  const std::optional<PrintFailure> missing = CheckPrintDocument(dir / "missing.pdf");
  ASSERT_TRUE(missing);
  EXPECT_EQ(missing->message.find("cannot read"), 0u) << missing->message;
}

}  // namespace
}  // namespace zorva

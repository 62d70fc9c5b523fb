// zorva print end to end: a private CUPS server whose queue records what the
// printer would receive. The job ticket must arrive byte for byte as
// 'zorva jotf export' writes it, followed by the PDF as it is, with the PPD
// choices and standard attributes of the ticket among the job's options.
#include <gtest/gtest.h>

#include <string>

#include "cli/cli_test_util.h"
#include "core/ticket.h"
#include "core/ticket_keys.h"
#include "print/job_options.h"
#include "support/recording_queue.h"

namespace zorva::test {
namespace {

constexpr const char* kPdf =
    "%PDF-1.4\n1 0 obj << /Type /Catalog /Pages 2 0 R >> endobj\n"
    "2 0 obj << /Type /Pages /Kids [] /Count 0 >> endobj\ntrailer << /Root 1 0 R >>\n%%EOF\n";

class PrintCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string reason;
    if (!queue_.start(&reason)) GTEST_SKIP() << reason;
    server_.emplace("CUPS_SERVER", queue_.server());
    home_.emplace("HOME", dir_.path().string());
    WriteText(dir_ / "doc.pdf", kPdf);
    Ticket ticket = *Ticket::Load(ZORVA_TEST_DATA "/../../examples/job-settings.plist");
    ticket.setNumber(kTicketClientSystem, tkey::kFinishingDuplex, 3);
    ticket.setNumber(kTicketClientSystem, tkey::kAccountingOn, 3);  // accounting on
    ticket.setString(kTicketClientSystem, tkey::kAccountingUserId, "dana");
    ticket.setString(kTicketClientSystem, tkey::kAccountingAccountId, "Dept 7, \"Print\"");
    ticket.setNumber(kTicketClientSystem, tkey::kPMCopies, 2);
    ticket.setString(kTicketClientSystem, tkey::kPMJobName, "Quarterly report");
    ASSERT_EQ(ticket.save(dir_ / "job.plist"), 0);
  }

  // Runs zorva print and returns the recorded stream and options.
  void PrintAndRecord(std::vector<std::string> extra, std::string* data, std::string* options) {
    std::vector<std::string> args = {"print",     (dir_ / "doc.pdf").string(),
                                     "--printer", RecordingQueue::kQueue,
                                     "--ticket",  (dir_ / "job.plist").string()};
    args.insert(args.end(), extra.begin(), extra.end());
    ToolResult r = RunTool(args);
    ASSERT_EQ(r.exitCode, 0) << r.err;
    const std::string prefix = std::string(RecordingQueue::kQueue) + "-";
    ASSERT_EQ(r.out.rfind(prefix, 0), 0u) << r.out;
    const int id = std::stoi(r.out.substr(prefix.size()));
    ASSERT_TRUE(queue_.waitForJob(id, data, options)) << "job " << id << " never printed";
  }

  std::string Exported(std::vector<std::string> extra = {}) {
    std::vector<std::string> args = {"jotf", "export", (dir_ / "job.plist").string(), "-o",
                                     (dir_ / "export.jotf").string()};
    args.insert(args.end(), extra.begin(), extra.end());
    EXPECT_EQ(RunTool(args).exitCode, 0);
    return ReadText(dir_ / "export.jotf");
  }

  RecordingQueue queue_;
  TempDir dir_;
  std::optional<ScopedEnv> server_, home_;
};

TEST_F(PrintCommand, SendsTheExportedJobTicketThenThePdfWithTheJobOptions) {
  std::string data, options;
  PrintAndRecord({}, &data, &options);
  const std::string ticket = Exported();
  ASSERT_FALSE(ticket.empty());
  EXPECT_EQ(data, ticket + kPdf) << "job ticket first, unchanged, then the PDF";
  for (const char* option :
       {"Duplex=DuplexTumble", "sides=two-sided-short-edge", "ZRColorMode=Color",
        "job-account-id=Dept\\ 7,\\ \\\"Print\\\"", "print-color-mode=color"}) {
    EXPECT_NE(options.find(option), std::string::npos) << option << " in " << options;
  }
}

TEST_F(PrintCommand, PageSizeReachesTheJobTicketAsItDoesTheExport) {
  std::string data, options;
  PrintAndRecord({"--page-size", "595,842", "--orientation", "1"}, &data, &options);
  EXPECT_EQ(data, Exported({"--page-size", "595,842", "--orientation", "1"}) + kPdf);
  EXPECT_NE(options.find("orientation-requested=4"), std::string::npos) << options;
}

TEST_F(PrintCommand, WithoutTheJobTicketOnlyTheDocumentIsSent) {
  std::string data, options;
  PrintAndRecord({"--no-job-ticket"}, &data, &options);
  EXPECT_EQ(data, kPdf);
  EXPECT_NE(options.find("Duplex=DuplexTumble"), std::string::npos) << options;

  Ticket ticket = *Ticket::Load(dir_ / "job.plist");
  ticket.setNumber(kTicketClientSystem, tkey::kEmitJOTF, 0);
  ASSERT_EQ(ticket.save(dir_ / "job.plist"), 0);
  PrintAndRecord({}, &data, &options);
  EXPECT_EQ(data, kPdf) << "the Advanced panel's choice turns the job ticket off";
}

TEST_F(PrintCommand, FailuresAreOneLineAndSubmitNothing) {
  WriteText(dir_ / "notes.txt", "plain text, not a PDF\n");
  struct Case {
    std::vector<std::string> args;
    std::string message;
  };
  const std::string pdf = (dir_ / "doc.pdf").string();
  const std::string job = (dir_ / "job.plist").string();
  const std::vector<Case> cases = {
      {{"print", (dir_ / "notes.txt").string(), "--printer", "QM4400", "--ticket", job},
       "is not a PDF document"},
      {{"print", (dir_ / "missing.pdf").string(), "--printer", "QM4400", "--ticket", job},
       "cannot read"},
      {{"print", pdf, "--printer", "Gone", "--ticket", job}, "no printer named \"Gone\""},
      {{"print", pdf, "--printer", "QM4400", "--ticket", (dir_ / "none.plist").string()},
       "none.plist"},
  };
  // A raw queue has no PPD to fetch.
  ASSERT_EQ(RunProgram("lpadmin", {"-h", queue_.server(), "-p", "Raw", "-v",
                                   "record:" + queue_.records().string(), "-E"})
                .exitCode,
            0);
  std::vector<Case> all = cases;
  all.push_back({{"print", pdf, "--printer", "Raw", "--ticket", job},
                 "cannot get the PPD of printer \"Raw\""});
  for (const Case& c : all) {
    ToolResult r = RunTool(c.args);
    ExpectOneLineError(r, 1);
    EXPECT_NE(r.err.find(c.message), std::string::npos) << r.err;
  }
  {
    ScopedEnv down("CUPS_SERVER", "127.0.0.1:" + std::to_string(FreeLoopbackPort()));
    ToolResult r = RunTool({"print", pdf, "--printer", "QM4400", "--ticket", job});
    ExpectOneLineError(r, 1);
    EXPECT_NE(r.err.find("cannot reach the print server"), std::string::npos) << r.err;
  }
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  EXPECT_EQ(queue_.recordedJobs(), 0);
  EXPECT_EQ(RunProgram("lpstat", {"-h", queue_.server(), "-W", "all", "-o"}).out, "");
}

TEST(PrintCommandUsage, RequiresPrinterAndTicket) {
  ToolResult r = RunTool({"print", "doc.pdf", "--ticket", "job.plist"});
  ExpectOneLineError(r, 2);
  EXPECT_NE(r.err.find("--printer"), std::string::npos) << r.err;
  ToolResult help = RunTool({"print", "--help"});
  EXPECT_NE(help.out.find("--no-job-ticket"), std::string::npos);
}

}  // namespace
}  // namespace zorva::test

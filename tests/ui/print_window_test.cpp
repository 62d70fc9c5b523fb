// The print dialog of zorva-print, in this process on the offscreen
// platform, with the real plug-in module and a private CUPS server whose
// queues record what the printer receives: the job ticket arrives exactly as
// an export of the settings printed writes it, then the PDF; changing
// printer gives the plug-in a fresh session; failures give one message and
// submit nothing.
#include <cups/cups.h>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QPointer>
#include <QTest>

#include "core/ticket_keys.h"
#include "jobticket/jotf_export.h"
#include "jobticket/jotf_page_size.h"
#include "plugin_host.h"
#include "print/job_options.h"
#include "print/presets.h"
#include "print_window.h"
#include "support/recording_queue.h"

namespace zorva::test {
namespace {

constexpr const char* kPdf = "%PDF-1.4\n1 0 obj << /Type /Catalog >> endobj\n%%EOF\n";
const std::string kExample = std::string(ZORVA_TEST_DATA) + "/../../examples/job-settings.plist";

class PrintWindowTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string reason;
    if (!queue_.start(&reason) ||
        !queue_.cupsd().addQueue("Office", queue_.cupsd().folder() / "queue.ppd", &reason,
                                 "record:" + queue_.records().string())) {
      GTEST_SKIP() << reason;
    }
    // libcups keeps the server per thread once asked: name it for this test.
    cupsSetServer(queue_.server().c_str());
    prefs_.emplace("ZORVA_PREFERENCES_DIR", (dir_ / "config").string());
    WriteText(dir_ / "doc.pdf", kPdf);
  }
  void TearDown() override { cupsSetServer(nullptr); }

  // The stream the printer got for the job "QUEUE-ID".
  std::string Recorded(const std::string& job, std::string* options = nullptr) {
    std::string data, opts;
    EXPECT_TRUE(queue_.waitForJob(std::stoi(job.substr(job.rfind('-') + 1)), &data, &opts)) << job;
    if (options) *options = opts;
    return data;
  }

  // What the export writes for the settings last printed on the printer.
  std::string ExportOfLastUsed(const std::string& printer, double width, double length) {
    PrintSession s;
    s.printSettings() = *LoadLastUsedSettings(printer);
    s.pageFormat().setReal(kTicketClientSystem, tkey::kPMPaperWidth, width);
    s.pageFormat().setReal(kTicketClientSystem, tkey::kPMPaperLength, length);
    return JOTFExportText(s);
  }

  RecordingQueue queue_;
  TempDir dir_;
  std::optional<ScopedEnv> prefs_;
  Dialog plugin_;  // the module's interface; the window drives its life cycle
};

TEST_F(PrintWindowTest, PrintsTheExportedJobTicketThenThePdfWithTheJobOptions) {
  PrintWindow window(plugin_.ops(), dir_ / "doc.pdf", *Ticket::Load(kExample));
  ASSERT_EQ(window.start(RecordingQueue::kQueue), "");
  ASSERT_EQ(window.session()->printerName(), RecordingQueue::kQueue);
  window.findChild<QSpinBox*>("copies")->setValue(2);
  ASSERT_EQ(window.print(), "");
  std::string options;
  const std::string data = Recorded(window.submittedJob(), &options);
  const std::string ticket = ExportOfLastUsed(RecordingQueue::kQueue, 595, 842);  // A4, the PPD's
  ASSERT_FALSE(ticket.empty());
  EXPECT_EQ(data, ticket + kPdf);
  for (const char* option : {"PageSize=A4", "Duplex=DuplexNoTumble", "sides=two-sided-long-edge",
                             "multiple-document-handling=separate-documents-collated-copies"}) {
    EXPECT_NE(options.find(option), std::string::npos) << option << " in " << options;
  }
}

TEST_F(PrintWindowTest, ChangingPrinterEndsThePlugInsSessionAndStartsAFreshOne) {
  PrintWindow window(plugin_.ops(), dir_ / "doc.pdf", *Ticket::Load(kExample));
  ASSERT_EQ(window.start(RecordingQueue::kQueue), "");
  QPointer<QComboBox> firstTabs = window.findChild<QComboBox*>("Zshl_16");
  ASSERT_TRUE(firstTabs) << "the plug-in's host pane is shown";
  auto* printers = window.findChild<QComboBox*>("printers");
  const int office = printers->findText("Office");
  ASSERT_GE(office, 0);
  printers->setCurrentIndex(office);
  emit printers->activated(office);
  EXPECT_EQ(window.session()->printerName(), "Office");
  EXPECT_TRUE(firstTabs.isNull()) << "the old pane went with the old plug-in session";
  EXPECT_NE(window.findChild<QComboBox*>("Zshl_16"), nullptr);
  std::int32_t duplex = 0;
  EXPECT_TRUE(window.session()->printSettings().getNumber(tkey::kFinishingDuplex, duplex));
  EXPECT_EQ(duplex, 2) << "the settings go with the user to the other printer";
  ASSERT_EQ(window.print(), "");
  EXPECT_EQ(window.submittedJob().rfind("Office-", 0), 0u);
  EXPECT_EQ(Recorded(window.submittedJob()), ExportOfLastUsed("Office", 595, 842) + kPdf);
}

TEST_F(PrintWindowTest, StartsOnTheUsersDefaultPrinterWithItsLastUsedSettings) {
  ASSERT_EQ(RunProgram("lpadmin", {"-h", queue_.server(), "-d", "Office"}).exitCode, 0);
  Ticket last;
  last.setNumber(kTicketClientSystem, tkey::kFinishingDuplex, 3);
  ASSERT_TRUE(SaveLastUsedSettings("Office", last, nullptr));
  PrintWindow window(plugin_.ops(), dir_ / "doc.pdf", std::nullopt);
  ASSERT_EQ(window.start(""), "");
  EXPECT_EQ(window.session()->printerName(), "Office");
  std::int32_t duplex = 0;
  window.session()->printSettings().getNumber(tkey::kFinishingDuplex, duplex);
  EXPECT_EQ(duplex, 3);
}

TEST_F(PrintWindowTest, ChoosingAPresetLoadsItsSettingsIntoThePanels) {
  Ticket proofs;
  proofs.setNumber(kTicketClientSystem, tkey::kFinishingDuplex, 3);
  proofs.setNumber(kTicketClientSystem, tkey::kPMCopies, 4);
  ASSERT_TRUE(SavePreset("Proofs", proofs, nullptr));
  PrintWindow window(plugin_.ops(), dir_ / "doc.pdf", *Ticket::Load(kExample));
  ASSERT_EQ(window.start(RecordingQueue::kQueue), "");
  auto* presets = window.findChild<QComboBox*>("presets");
  ASSERT_EQ(presets->count(), 2);
  EXPECT_EQ(presets->itemText(0), "Last Used Settings");
  presets->setCurrentIndex(1);
  emit presets->activated(1);
  std::int32_t duplex = 0;
  window.session()->printSettings().getNumber(tkey::kFinishingDuplex, duplex);
  EXPECT_EQ(duplex, 3);
  EXPECT_EQ(window.findChild<QSpinBox*>("copies")->value(), 4);
  ASSERT_EQ(window.print(), "");
  std::string options;
  Recorded(window.submittedJob(), &options);
  EXPECT_NE(options.find("sides=two-sided-short-edge"), std::string::npos) << options;
}

TEST_F(PrintWindowTest, FailuresGiveOneMessageAndSubmitNothing) {
  WriteText(dir_ / "notes.txt", "not a PDF\n");
  {
    PrintWindow window(plugin_.ops(), dir_ / "doc.pdf", std::nullopt);
    EXPECT_EQ(window.start("Gone"), "no printer named \"Gone\"");
  }
  {
    PrintWindow window(plugin_.ops(), dir_ / "notes.txt", std::nullopt);
    ASSERT_EQ(window.start(RecordingQueue::kQueue), "");
    EXPECT_EQ(window.print(), (dir_ / "notes.txt").string() + " is not a PDF document");
  }
  {
    PrintWindow window(plugin_.ops(), dir_ / "doc.pdf", std::nullopt);
    ASSERT_EQ(window.start(RecordingQueue::kQueue), "");
    ASSERT_EQ(RunProgram("lpadmin", {"-h", queue_.server(), "-x", RecordingQueue::kQueue}).exitCode,
              0);
    const std::string message = window.print();
    EXPECT_EQ(message.rfind("no printer named \"QM4400\"", 0), 0u) << message;
    queue_.cupsd().stop();
    const std::string down = window.print();
    EXPECT_EQ(down.rfind("cannot reach the print server", 0), 0u) << down;
  }
  EXPECT_EQ(queue_.recordedJobs(), 0);
  PrintWindow window(plugin_.ops(), dir_ / "doc.pdf", std::nullopt);
  EXPECT_EQ(window.start("").rfind("cannot reach the print server", 0), 0u);
}

TEST_F(PrintWindowTest, ZorvaPrintPrintsFromTheCommandLineAsTheDialogDoes) {
  ScopedEnv server("CUPS_SERVER", queue_.server());
  const ToolResult r =
      RunProgram(ZORVA_PRINT_TOOL, {"--file", (dir_ / "doc.pdf").string(), "--printer",
                                    RecordingQueue::kQueue, "--ticket", kExample, "--print"});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  ASSERT_EQ(r.out.rfind("QM4400-", 0), 0u) << r.out;
  EXPECT_EQ(Recorded(r.out.substr(0, r.out.size() - 1)),
            ExportOfLastUsed(RecordingQueue::kQueue, 595, 842) + kPdf);

  // The document may also come without --file, as a file manager passes it.
  const ToolResult notPdf =
      RunProgram(ZORVA_PRINT_TOOL, {kExample, "--printer", RecordingQueue::kQueue, "--print"});
  EXPECT_EQ(notPdf.exitCode, 1);
  EXPECT_NE(notPdf.err.find("zorva-print: " + kExample + " is not a PDF document\n"),
            std::string::npos)
      << notPdf.err;
  const ToolResult noFile = RunProgram(ZORVA_PRINT_TOOL, {"--printer", "QM4400", "--print"});
  EXPECT_EQ(noFile.exitCode, 1);
  EXPECT_EQ(noFile.err,
            "zorva-print: --printer, --print and --screenshot need --file PDF (see --help)\n");
  EXPECT_EQ(queue_.recordedJobs(), 1);
}

}  // namespace
}  // namespace zorva::test

// zorva-print, run as a user would: OK saves what the panels and the host
// write and keeps everything else of the ticket, mistakes end with one line,
// and every panel can be pictured.
#include <gtest/gtest.h>

#include <filesystem>

#include "core/ticket.h"
#include "core/ticket_keys.h"
#include "support/test_support.h"

namespace zorva::test {
namespace {

namespace key = tkey;
const std::string kExample = std::string(ZORVA_TEST_DATA) + "/../../examples/job-settings.plist";

ToolResult RunPrint(const std::vector<std::string>& args) {
  return RunProgram(ZORVA_PRINT_TOOL, args);
}

TEST(ZorvaPrint, OKKeepsTheTicketAndAddsWhatThePanelsAndTheHostWrite) {
  TempDir dir;
  const auto path = dir / "job.plist";
  std::filesystem::copy_file(kExample, path);
  const Ticket before = *Ticket::Load(path);
  const ToolResult r = RunPrint({"--ticket", path.string(), "--ok"});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  std::string error;
  const std::optional<Ticket> after = Ticket::Load(path, &error);
  ASSERT_TRUE(after) << error;
  for (const auto& [name, item] : before.items()) {
    if (name == key::kJobLevelStock) continue;  // the Advanced panel reads and keeps it
    ASSERT_TRUE(after->contains(name)) << name;
    EXPECT_EQ(after->get(name)->type(), item.value.type()) << name;
  }
  std::int32_t rotate = -1;
  EXPECT_TRUE(after->getNumber(key::kRotateImage180, rotate));
  EXPECT_NE(after->getDictionary(key::kOptions), nullptr);
  EXPECT_EQ(*after->getString(key::kControllerFamily), "Kestrix");
}

TEST(ZorvaPrint, ANewTicketFileIsCreated) {
  TempDir dir;
  const auto path = dir / "new.plist";
  const ToolResult r = RunPrint({"--ticket", path.string(), "--ok"});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  const std::optional<Ticket> ticket = Ticket::Load(path);
  ASSERT_TRUE(ticket);
  std::int32_t order = 0;
  EXPECT_TRUE(ticket->getNumber(key::kAdvancedBookletLayoutOrder, order));
  EXPECT_EQ(order, 2);
}

TEST(ZorvaPrint, MistakesEndWithOneLineAndLeaveTheFileAlone) {
  TempDir dir;
  const auto bad = dir / "bad.plist";
  WriteText(bad, "<plist><dict><key>a</key>");
  struct Case {
    std::vector<std::string> args;
    std::string start;
  };
  const std::vector<Case> cases = {
      {{"--ok"}, "zorva-print: --ticket FILE is required"},
      {{"--ticket", bad.string(), "--ok"}, "zorva-print: " + bad.string() + ": "},
      {{"--ticket", (dir / "x").string(), "--ppd", (dir / "none.ppd").string()},
       "zorva-print: cannot read the PPD"},
      {{"--ticket", (dir / "x").string(), "a.pdf", "extra"},
       "zorva-print: unexpected argument \"extra\""},
      {{"--file", "a.pdf", "extra"}, "zorva-print: unexpected argument \"extra\""},
  };
  for (const Case& c : cases) {
    const ToolResult r = RunPrint(c.args);
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err.rfind(c.start, 0), 0u) << r.err;
    EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << r.err;
  }
  EXPECT_EQ(ReadText(bad), "<plist><dict><key>a</key>");
  EXPECT_FALSE(std::filesystem::exists(dir / "x"));
  const ToolResult help = RunPrint({"--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_NE(help.out.find("--ticket <FILE>"), std::string::npos);
}

// A copy of the bundle (the module linked, not copied) to take views from.
std::filesystem::path BundleCopy(const TempDir& dir) {
  namespace fs = std::filesystem;
  const fs::path original = fs::path(ZORVA_MODULE).parent_path();
  const fs::path copy = dir / original.filename().string();
  fs::create_directories(copy);
  for (const fs::directory_entry& entry : fs::directory_iterator(original)) {
    const fs::path target = copy / entry.path().filename();
    if (entry.path().extension() == ".so") {
      fs::create_symlink(entry.path(), target);
    } else {
      fs::copy(entry.path(), target, fs::copy_options::recursive);
    }
  }
  return copy;
}

TEST(ZorvaPrint, MissingOrBrokenViewsAreReportedAsTheDialogReportsThem) {
  TempDir dir;
  const std::filesystem::path bundle = BundleCopy(dir);
  ScopedEnv env("ZORVA_BUNDLE_PATH", dir.path().string());
  const std::string ticket = (dir / "t.plist").string();

  // A panel's view: the panel stays empty, the dialog still works.
  std::filesystem::remove(bundle / "AdvancedPanel.ui");
  ToolResult r = RunPrint({"--ticket", ticket, "--ok"});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  EXPECT_EQ(r.out, "!! Failed to load nib from bundle.\n");
  WriteText(bundle / "AdvancedPanel.ui", ReadText(bundle / "JobNotes.ui"));
  r = RunPrint({"--ticket", ticket, "--ok"});
  EXPECT_EQ(r.out, "!! Failed to create window from nib.\n");

  // The host's own view: nothing can be shown.
  std::filesystem::remove(bundle / "Tabrix.ui");
  r = RunPrint({"--ticket", ticket, "--ok"});
  EXPECT_EQ(r.exitCode, 1);
  EXPECT_NE(r.err.find("Initialize()::CreateNibReferenceWithCFBundle() failed.\n"),
            std::string::npos)
      << r.err;
  EXPECT_NE(r.err.find("zorva-print: the plug-in's panels could not be shown\n"),
            std::string::npos);
  WriteText(bundle / "Tabrix.ui",
            "<ui version=\"4.0\"><widget class=\"QWidget\" name=\"Window\"/></ui>");
  r = RunPrint({"--ticket", ticket, "--ok"});
  EXPECT_EQ(r.exitCode, 1);
  EXPECT_NE(r.err.find("Initialize()::CreateWindowFromNib() failed.\n"), std::string::npos)
      << r.err;
}

TEST(ZorvaPrint, EveryPanelCanBePictured) {
  TempDir dir;
  const ToolResult r = RunPrint({"--ticket", kExample, "--screenshots", (dir / "shots").string()});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  for (int i = 1; i <= 6; ++i) {
    EXPECT_TRUE(std::filesystem::file_size(dir / ("shots/panel-" + std::to_string(i) + ".png")) >
                1000)
        << i;
  }
}

}  // namespace
}  // namespace zorva::test

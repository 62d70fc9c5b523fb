// Whole documents compared byte for byte with golden files: one input
// property list per group of cases (tests/data/jotf/NAME.plist) and the job
// ticket it must give (NAME.jotf). Every document without a deliberate quirk
// must also be well-formed XML; the quirky ones must stay as they are.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

#include "core/print_session.h"
#include "jobticket/jotf_export.h"
#include "jotf_test_util.h"

namespace zorva::test {
namespace {

// Quirks kept on purpose: the accounting tag mismatch, the finishing
// printer's repeated line, names cut at 30 bytes inside an entity or a
// character. (An unlisted punch code repeats the fold line too, but that
// document stays well-formed.)
const std::set<std::string> kQuirky = {"accounting", "accounting-empty", "finishing-unlisted-fold",
                                       "media-name-cut"};

// Every input in the folder: frame and options, media (every row of the type
// and colour tables, every stock field), special pages, job attributes,
// finishing, saved jobs, colour.
TEST(JotfGolden, EveryInputGivesItsGoldenDocument) {
  int documents = 0;
  for (const auto& entry : std::filesystem::directory_iterator(JotfData(""))) {
    if (entry.path().extension() != ".plist") continue;
    const std::string name = entry.path().stem().string();
    SCOPED_TRACE(name);
    SetCurrentPrintSession(nullptr);
    const std::string text = JOTFDocumentText(LoadSettings(name));
    ExpectGolden(name + ".jotf", text);
    EXPECT_EQ(XmlProblem(text).empty(), !kQuirky.contains(name)) << XmlProblem(text);
    ++documents;
  }
  EXPECT_EQ(documents, 37);
}

}  // namespace
}  // namespace zorva::test

// The job-ticket summary: fixed section and line order, line formats, and
// the texts of the output section.
#include <gtest/gtest.h>

#include "jobticket/jotf_summary.h"

namespace zorva {
namespace {

SummaryLines Summary(const Dictionary& settings) {
  SummaryLines lines;
  buildSummaryText(settings, lines);
  return lines;
}

TEST(JotfSummaryTest, EmptySettingsGiveTheFourHeadingsAndSeparators) {
  EXPECT_EQ(Summary({}), (SummaryLines{"\tJob Notes", " ", "\tJob Setup", " ", "\tOutput", " ",
                                       "\tImage Adjustment", " "}));
}

TEST(JotfSummaryTest, JobNotesComeInTheirFixedOrder) {
  const Dictionary settings{{"com.zorva.print.JobNotesAdditionalInfo", Value("cc 12")},
                            {"com.zorva.print.JobNotesSenderName", Value("Dana")},
                            {"com.zorva.print.JobNotesMessage", Value("by noon")},
                            {"com.zorva.print.JobNotesJobName", Value("Report")},
                            {"com.zorva.print.JobNotesRecipient", Value("Desk")}};
  const SummaryLines lines = Summary(settings);
  const SummaryLines notes(lines.begin(), lines.begin() + 7);
  EXPECT_EQ(notes, (SummaryLines{"\tJob Notes", "\t\tJob Name: Report", "\t\tSender Name: Dana",
                                 "\t\tRecipient Name: Desk", "\t\tSpecial Instructions: by noon",
                                 "\t\tAdditional Information: cc 12", " "}));
}

TEST(JotfSummaryTest, JobSetupShowsDuplexAndTheStockNested) {
  const Dictionary settings{
      {"com.zorva.print.FinishingDuplex", Value(3)},
      {"com.zorva.print.JobLevelStock", Value(Dictionary{{"Size", Value(1)},
                                                         {"Color", Value(10)},
                                                         {"CustomColor", Value("Sea Blue")},
                                                         {"Type", Value(1)},
                                                         {"Weight", Value(90)}})}};
  SummaryLines setup;
  addJobSetup(settings, setup);
  EXPECT_EQ(setup, (SummaryLines{"\tJob Setup", "\t\tDuplex: 2-Sided, Short Edge",
                                 "\t\tPaper Stock: ", "\t\t\tSize = Letter (8.5 x 11\")",
                                 "\t\t\tColor = Sea Blue", "\t\t\tType = Plain",
                                 "\t\t\tWeight = 90 g/m\xC2\xB2", " "}));
  SummaryLines custom;
  addJobSetup(
      {{"com.zorva.print.JobLevelStock",
        Value(Dictionary{{"Size", Value(75)}, {"Width", Value(10050)}, {"Length", Value(20000)}})}},
      custom);
  EXPECT_EQ(custom[2], "\t\t\tSize = 100.5 x 200.0 mm");
}

TEST(JotfSummaryTest, OutputSectionTexts) {
  struct Case {
    Dictionary settings;
    SummaryLines lines;
  } cases[] = {
      {{{"com.zorva.print.FinishingOptions", Value(2)},
        {"com.zorva.print.FinishingStaple1Value", Value(5)},
        {"com.zorva.print.FinishingOutputDestination", Value(8)}},
       {"\t\tStapling/Finishing: 1 Staple (Portrait - Top Left,Landscape - Top Right)",
        "\t\tOutput Location: Top Tray 1"}},
      {{{"com.zorva.print.FinishingOptions", Value(7)},
        {"com.zorva.print.FinishingHolePunchValue", Value(32)}},
       {"\t\t\tHole Punch: 3 Holes Portrait - Left,Landscape - Top"}},
      {{{"com.zorva.print.FinishingOptions", Value(11)},
        {"com.zorva.print.FinishingStaple2Value", Value(11)},
        {"com.zorva.print.FinishingHolePunchValue", Value(35)},
        {"com.zorva.print.FinishingHolePunchOptions", Value(2)}},
       {"\t\tStapling/Finishing: Multiple Finishing",
        "\t\tStapling/Finishing: 2 Staples (Portrait - Top,Landscape - Right)",
        "\t\t\tHole Punch: 2 Holes Portrait - Bottom,Landscape - Left"}},
      {{{"com.zorva.print.FinishingOptions", Value(14)},
        {"com.zorva.print.BookletFoldStaple", Value(13)}},
       {"\t\tStapling/Finishing: Booklet Fold"}},
      {{{"com.zorva.print.FinishingOptions", Value(12)}},
       {"\t\tStapling/Finishing: Signature Booklet Maker"}},
      {{{"com.zorva.print.FinishingOptions", Value(13)},
        {"com.zorva.print.FinishingCustom", Value("Perfect bind")}},
       {"\t\tStapling/Finishing: Custom: Perfect bind"}},
      // A staple value no position has, an unknown destination: no line.
      {{{"com.zorva.print.FinishingOptions", Value(2)},
        {"com.zorva.print.FinishingStaple1Value", Value(99)},
        {"com.zorva.print.FinishingOutputDestination", Value(7)}},
       {}},
  };
  for (const Case& c : cases) {
    SummaryLines lines;
    addOutput(c.settings, lines);
    SummaryLines expected{"\tOutput"};
    expected.insert(expected.end(), c.lines.begin(), c.lines.end());
    expected.emplace_back(" ");
    EXPECT_EQ(lines, expected);
  }
}

TEST(JotfSummaryTest, ImageAdjustmentAndJoining) {
  SummaryLines lines;
  addImageAdjustment(
      {{"com.zorva.print.ImageShiftOptionsJob",
        Value(Dictionary{{"X1", Value(150)}, {"Y1", Value(-20)}, {"FullPrecision", Value(true)}})},
       {"com.zorva.print.OPIPrescan", Value(2)}},
      lines);
  EXPECT_EQ(lines,
            (SummaryLines{"\tImage Adjustment", "\t\tImage Shift: 1.50, -0.20 / 0.00, 0.00 mm",
                          "\t\tOPI Prescan: Prescan and Gather", " "}));
  EXPECT_EQ(JoinSummaryLines({"a", " ", "b"}), "a\n \nb");
}

}  // namespace
}  // namespace zorva

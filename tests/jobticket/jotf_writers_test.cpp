// The writers below the document: the command table, the finishing printer's
// repeated buffer, image-shift units, the page-size fallback and the record
// fills that decide what the type of a stock overrides.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "core/print_session.h"
#include "jobticket/jotf_commands.h"
#include "jobticket/jotf_job_attributes.h"
#include "jobticket/jotf_media.h"
#include "jobticket/jotf_page_size.h"
#include "jobticket/jotf_special_pages.h"
#include "jotf_test_util.h"

namespace zorva::test {
namespace {

std::string Commands(int code, std::int32_t value) {
  RecordingSink r;
  WriteJotfCommands(&r.sink, code, value);
  return r.text();
}

// Every row of the command table for the values -1 to 11 and one large value,
// in one golden file: "code value:" then what was written.
TEST(JotfCommands, EveryRowMatchesTheGolden) {
  std::string all;
  for (int code = -1; code <= 32; ++code) {
    for (std::int32_t value : {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 2147483647}) {
      all += std::to_string(code) + " " + std::to_string(value) + ":\n" + Commands(code, value);
    }
  }
  ExpectGolden("commands.txt", all);
}

TEST(JotfCommands, RowsThatAlwaysWrite) {
  EXPECT_EQ(Commands(kJotfSheetCollate, 42),
            "\t\t<sheet-collate syntax=\"keyword\">uncollated</sheet-collate>\n");
  EXPECT_EQ(Commands(kJotfSeparatorSheets, -7),
            "\t\t<separator-sheets syntax=\"collection\">\n"
            "\t\t\t<separator-sheets-type syntax=\"keyword\">slip-sheets</separator-sheets-type>\n"
            "\t\t</separator-sheets>\n");
  EXPECT_EQ(Commands(kJotfJobOffset, 9), "\t\t<job-offset syntax=\"1setOf\">\n\t\t</job-offset>\n");
  EXPECT_EQ(Commands(kJotfAdjustYellowBlue, -100),
            "\t\t<adjust-yellow-blue syntax =\"integer\">-100</adjust-yellow-blue>\n");
  EXPECT_EQ(Commands(15, 1), "");
  EXPECT_EQ(Commands(31, 1), "");
  EXPECT_EQ(Commands(kJotfSides, 3), "");
}

std::string Finishing(FINISHINGDATA f) {
  RecordingSink r;
  WriteJotfFinishing(&r.sink, &f);
  return r.text();
}

constexpr const char* kStart = "\t\t<finishings syntax=\"1setOf\">\n";
constexpr const char* kEnd = "\t\t</finishings>\n";

std::string EnumLine(int n) {
  return "\t\t\t<value syntax=\"enum\">" + std::to_string(n) + "</value>\n";
}

TEST(JotfFinishing, ListedCodesInStapleFoldPunchOrder) {
  EXPECT_EQ(Finishing({.staple = 20, .fold = 9, .punch = 31, .punchHoles = 35}),
            kStart + EnumLine(23) + EnumLine(3) + EnumLine(93) + EnumLine(90) + kEnd);
  EXPECT_EQ(Finishing({.fold = 23}), kStart + EnumLine(111) + kEnd);
  EXPECT_EQ(Finishing({}), "");
  // Punch holes alone, with no punch, writes nothing at all.
  EXPECT_EQ(Finishing({.punchHoles = 35}), "");
}

TEST(JotfFinishing, UnlistedCodesRepeatTheLineBefore) {
  // An unlisted staple code repeats the start line.
  EXPECT_EQ(Finishing({.staple = 8}), std::string(kStart) + kStart + kEnd);
  // An unlisted fold code repeats the staple line; an unlisted punch code the fold line.
  EXPECT_EQ(Finishing({.staple = 0, .fold = 16, .punch = 40, .punchHoles = 36}),
            kStart + EnumLine(20) + EnumLine(20) + EnumLine(20) + EnumLine(91) + kEnd);
  // An unlisted punch-holes code writes nothing (an empty line).
  EXPECT_EQ(Finishing({.punch = 32, .punchHoles = 3}), kStart + EnumLine(94) + kEnd);
}

TEST(JotfFinishing, TemplateNameWinsOverCodes) {
  EXPECT_EQ(Finishing({.staple = 0, .templateName = "Saddle"}),
            "\t\t<finishings-col syntax=\"collection\">\n"
            "\t\t\t<finishing-template syntax=\"name\" "
            "xml:space=\"preserve\">Saddle</finishing-template>\n"
            "\t\t</finishings-col>\n");
}

TEST(JotfFinishing, StapleValuesTranslateByOneTable) {
  const std::pair<int, int> rows[] = {{5, 0},  {6, 2},  {7, 1},   {8, 20},  {10, 3},  {11, 4},
                                      {12, 5}, {13, 6}, {26, 16}, {27, 17}, {28, 18}, {29, 19}};
  for (auto [value, code] : rows) EXPECT_EQ(JotfStapleCodeForValue(value), code) << value;
  for (int value : {0, 1, 9, 14, 25, 30}) EXPECT_EQ(JotfStapleCodeForValue(value), -1) << value;
}

ImageShiftSelections Shift(const Dictionary& d) {
  ImageShiftSelections s;
  FillImageShift(&d, &s);
  return s;
}

TEST(JotfImageShift, UnitRules) {
  ImageShiftSelections in = Shift({{"Inches", Value(1)},
                                   {"X1", Value(10)},
                                   {"Y1", Value(-3)},
                                   {"X2", Value(0.5)},
                                   {"Y2", Value(1)}});
  EXPECT_EQ(in.x1, 254);
  EXPECT_EQ(in.y1, -76);  // -76.2 truncated toward zero
  EXPECT_EQ(in.x2, 12);
  EXPECT_EQ(in.y2, 25);
  ImageShiftSelections mm = Shift({{"Inches", Value(0)}, {"X1", Value(7)}, {"Y2", Value(-2)}});
  EXPECT_EQ(mm.x1, 70);
  EXPECT_EQ(mm.y1, 0);
  EXPECT_EQ(mm.y2, -20);
  ImageShiftSelections full =
      Shift({{"Inches", Value(1)}, {"X1", Value(1234)}, {"FullPrecision", Value(true)}});
  EXPECT_EQ(full.x1, 1234);
  // Only the boolean true selects full precision.
  EXPECT_EQ(Shift({{"X1", Value(3)}, {"FullPrecision", Value(1)}}).x1, 30);
  EXPECT_EQ(Shift({{"X1", Value(3)}, {"FullPrecision", Value(false)}}).x1, 30);
}

TEST(JotfImageShift, ValuesWithoutA32BitResultBecomeTheLowest) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  ImageShiftSelections s =
      Shift({{"Inches", Value(1)}, {"X1", Value(nan)}, {"Y1", Value(1e12)}, {"X2", Value("12")}});
  EXPECT_EQ(s.x1, kUnset);
  EXPECT_EQ(s.y1, kUnset);
  EXPECT_EQ(s.x2, 0);  // not a number: counts 0
  EXPECT_EQ(Shift({}).x1, 0);
}

TEST(JotfSpecialPages, SidesImagedOfAnException) {
  const std::pair<std::int32_t, std::int32_t> rows[] = {{1, 0}, {2, 1}, {3, 2}, {0, -1}, {4, -1}};
  for (auto [sides, code] : rows) {
    PAGEDATA page;
    const Dictionary d{{"SidesImaged", Value(sides)}};
    FillPageSidesImaged(&page, &d);
    EXPECT_EQ(page.sides, code) << sides;
  }
}

TEST(JotfSpecialPages, CoverTypesAndListKinds) {
  MEDIADATA media;
  FillMediaData(&media, nullptr);
  const char* kinds[] = {"no-cover",   "print-none", "print-front",
                         "print-back", "print-both", "no-cover"};
  for (int type = 0; type <= 5; ++type) {
    RecordingSink r;
    WriteJotfCovers(&r.sink, 1, type, &media);
    EXPECT_EQ(r.text(), std::string("\t\t<cover-back syntax=\"collection\">\n") +
                            "\t\t\t<cover-type syntax=\"keyword\">" + kinds[type] +
                            "</cover-type>\n\t\t<media-col syntax=\"collection\">\n"
                            "\t\t</media-col>\n\t\t</cover-back>\n");
  }
  RecordingSink lists;
  for (int kind : {0, 1, 2, -1}) {
    WriteJotfSpecialPagesStart(&lists.sink, kind);
    WriteJotfSpecialPagesEnd(&lists.sink, kind);
  }
  EXPECT_EQ(lists.text(),
            "\t\t<page-overrides syntax=\"1setOf\">\n\t\t</page-overrides>\n"
            "\t\t<insert-sheet syntax=\"1setOf\">\n\t\t</insert-sheet>\n");
}

TEST(JotfMedia, TypeWinsOverTheStocksOwnValues) {
  MEDIADATA m;
  const Dictionary stock{{"Type", Value(31)},
                         {"Weight", Value(90)},
                         {"SidesCoated", Value(3)},
                         {"kCoatingType", Value(4)}};
  FillMediaData(&m, &stock);
  EXPECT_EQ(m.weight, 219);
  EXPECT_EQ(m.sidesCoated, 2);
  EXPECT_EQ(m.coatingType, 1);
  const Dictionary punched{{"Type", Value(11)}, {"Punched", Value(1)}};
  FillMediaData(&m, &punched);
  EXPECT_EQ(m.holeCount, 3);
  const Dictionary tooth{{"Type", Value(40)}, {"Finish", Value(1)}};
  FillMediaData(&m, &tooth);
  EXPECT_EQ(m.tooth, 3);
  FinalizeMediaData(&m);
  EXPECT_FALSE(m.customTypeName || m.customColorName || m.description || m.mediaKey);
  FinalizeMediaData(nullptr);
  FinalizePageData(nullptr);
}

TEST(JotfMedia, InitialValues) {
  MEDIADATA m;
  const Dictionary source{{"Source", Value(3)}, {"Size", Value(1)}};
  FillMediaData(&m, &source);
  EXPECT_EQ(m.mediaType, -1);
  EXPECT_EQ(m.color, -1);
  EXPECT_EQ(m.source, -1);
  EXPECT_EQ(m.xDimension, 0u);
  EXPECT_EQ(m.prePrinted, 0);
  MEDIADATA other = m;
  other.source = 7;
  RecordingSink r;
  WriteJotfMedia(&r.sink, &other);
  EXPECT_EQ(r.text(), "\t\t<media syntax=\"keyword\"></media>\n");
}

// The current print session's page size stands in for a stock with no size.
class JotfPageSize : public ::testing::Test {
 protected:
  void TearDown() override { SetCurrentPrintSession(nullptr); }

  std::pair<std::uint32_t, std::uint32_t> SizeFor(double width, double length, int orientation) {
    session_.pageFormat().clear();
    session_.pageFormat().setReal("Z", kPageFormatPaperWidthKey, width);
    session_.pageFormat().setReal("Z", kPageFormatPaperLengthKey, length);
    session_.pageFormat().setNumber("Z", kPageFormatOrientationKey, orientation);
    SetCurrentPrintSession(&session_);
    MEDIADATA m;
    FillMediaData(&m, nullptr);
    return {m.xDimension, m.yDimension};
  }

  PrintSession session_;
};

TEST_F(JotfPageSize, UprightAndTurnedPages) {
  using P = std::pair<std::uint32_t, std::uint32_t>;
  EXPECT_EQ(SizeFor(612, 792, 0), P(21600, 27900));
  EXPECT_EQ(SizeFor(612, 792, 2), P(21600, 27900));
  // Turned: (length, width) is compared and the row comes back turned too.
  EXPECT_EQ(SizeFor(792, 612, 1), P(27900, 21600));
  EXPECT_EQ(SizeFor(842, 595, 3), P(29700, 21000));
  // 9 x 11 and its tab size share points: the first row wins.
  EXPECT_EQ(SizeFor(648, 792, 0), P(22900, 27900));
}

TEST_F(JotfPageSize, NoExactMatchNoSessionOrOtherOrientationGivesNoSize) {
  using P = std::pair<std::uint32_t, std::uint32_t>;
  EXPECT_EQ(SizeFor(595.276, 841.89, 0), P(0, 0));
  EXPECT_EQ(SizeFor(612, 792, 4), P(0, 0));
  EXPECT_EQ(SizeFor(792, 612, 0), P(0, 0));
  SetCurrentPrintSession(nullptr);
  MEDIADATA m;
  FillMediaData(&m, nullptr);
  EXPECT_EQ(P(m.xDimension, m.yDimension), P(0, 0));
}

TEST_F(JotfPageSize, OnlyStocksWithoutAnySizeFallBack) {
  SizeFor(612, 792, 0);
  MEDIADATA m;
  const Dictionary a4{{"Size", Value(4)}};
  FillMediaData(&m, &a4);
  EXPECT_EQ(m.xDimension, 21000u);
  const Dictionary named{{"CustomNameOnly", Value(true)}, {"CustomName", Value("n")}};
  FillMediaData(&m, &named);
  EXPECT_EQ(m.xDimension, 0u);
  // A custom size with only one dimension is no size and no fallback.
  const Dictionary half{{"Size", Value(75)}, {"Width", Value(100)}};
  FillMediaData(&m, &half);
  EXPECT_EQ(m.xDimension, 100u);
  EXPECT_EQ(m.yDimension, 0u);
}

}  // namespace
}  // namespace zorva::test

// The writers below the document: the command table, the finishing printer's
// repeated buffer, image-shift units, the page-size fallback and the record
// fills that decide what the type of a stock overrides.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <tuple>

#include "core/print_session.h"
#include "jobticket/jotf_commands.h"
#include "jobticket/jotf_job_attributes.h"
#include "jobticket/jotf_media.h"
#include "jobticket/jotf_page_size.h"
#include "jobticket/jotf_special_pages.h"
#include "jotf_test_util.h"
#include "model/stock.h"

namespace zorva::test {
namespace {

// Every row of the command table for the values -1 to 11 and two outside any
// row, in one golden file: "code value:" then what was written. It holds the
// rulings too: code 7 writes an empty set for an unlisted value, code 11
// writes whatever the value, codes 15 and 31 write nothing.
TEST(JotfCommands, EveryRowMatchesTheGolden) {
  std::string all;
  for (int code = -1; code <= 32; ++code) {
    for (std::int32_t value : {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 2147483647}) {
      RecordingSink r;
      WriteJotfCommands(&r.sink, code, value);
      all += std::to_string(code) + " " + std::to_string(value) + ":\n" + r.text();
    }
  }
  ExpectGolden("commands.txt", all);
}

std::string EnumLine(int n) {
  return "\t\t\t<value syntax=\"enum\">" + std::to_string(n) + "</value>\n";
}

// Listed codes in staple, fold, punch order; an unlisted staple, fold or punch
// code repeats the line before (the start line, the staple line, the fold
// line); an unlisted punch-holes code writes nothing, and punch holes without
// punch nothing at all.
TEST(JotfFinishing, ListedAndUnlistedCodes) {
  const std::string start = "\t\t<finishings syntax=\"1setOf\">\n", end = "\t\t</finishings>\n";
  const std::pair<FINISHINGDATA, std::string> cases[] = {
      {{.staple = 20, .fold = 9, .punch = 31, .punchHoles = 35},
       start + EnumLine(23) + EnumLine(3) + EnumLine(93) + EnumLine(90) + end},
      {{.fold = 23}, start + EnumLine(111) + end},
      {{}, ""},
      {{.punchHoles = 35}, ""},
      {{.staple = 8}, start + start + end},
      {{.staple = 0, .fold = 16, .punch = 40, .punchHoles = 36},
       start + EnumLine(20) + EnumLine(20) + EnumLine(20) + EnumLine(91) + end},
      {{.punch = 32, .punchHoles = 3}, start + EnumLine(94) + end},
  };
  for (const auto& [data, expected] : cases) {
    FINISHINGDATA f = data;
    RecordingSink r;
    WriteJotfFinishing(&r.sink, &f);
    EXPECT_EQ(r.text(), expected);
  }
}

TEST(JotfFinishing, StapleValuesTranslateByOneTable) {
  const std::pair<int, int> rows[] = {{5, 0},  {6, 2},  {7, 1},   {8, 20},  {10, 3},  {11, 4},
                                      {12, 5}, {13, 6}, {26, 16}, {27, 17}, {28, 18}, {29, 19},
                                      {0, -1}, {9, -1}, {14, -1}, {25, -1}, {30, -1}};
  for (auto [value, code] : rows) EXPECT_EQ(JotfStapleCodeForValue(value), code) << value;
}

ImageShiftSelections Shift(const Dictionary& d) {
  ImageShiftSelections s;
  FillImageShift(&d, &s);
  return s;
}

// Inches become hundredths of a millimetre truncated toward zero unless
// full precision (only the boolean true) keeps them; millimetres are tenths.
// A value without a 32-bit result is the lowest; a non-number counts 0.
TEST(JotfImageShift, UnitRules) {
  ImageShiftSelections in =
      Shift({{"Inches", Value(1)}, {"X1", Value(10)}, {"Y1", Value(-3)}, {"X2", Value(0.5)}});
  EXPECT_EQ(std::tuple(in.x1, in.y1, in.x2, in.y2), std::tuple(254, -76, 12, 0));
  ImageShiftSelections mm = Shift({{"Inches", Value(0)}, {"X1", Value(7)}, {"Y2", Value(-2)}});
  EXPECT_EQ(std::tuple(mm.x1, mm.y1, mm.y2), std::tuple(70, 0, -20));
  EXPECT_EQ(Shift({{"Inches", Value(1)}, {"X1", Value(1234)}, {"FullPrecision", Value(true)}}).x1,
            1234);
  EXPECT_EQ(Shift({{"X1", Value(3)}, {"FullPrecision", Value(1)}}).x1, 30);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  ImageShiftSelections bad =
      Shift({{"Inches", Value(1)}, {"X1", Value(nan)}, {"Y1", Value(1e12)}, {"X2", Value("12")}});
  EXPECT_EQ(std::tuple(bad.x1, bad.y1, bad.x2), std::tuple(kUnset, kUnset, 0));
}

TEST(JotfMedia, TypeWinsOverTheStocksOwnValues) {
  MEDIADATA m;
  const Dictionary stock{{"Type", Value(31)},
                         {"Weight", Value(90)},
                         {"SidesCoated", Value(3)},
                         {"kCoatingType", Value(4)}};
  FillMediaData(&m, &stock);
  EXPECT_EQ(std::tuple(m.weight, m.sidesCoated, m.coatingType), std::tuple(219, 2, 1));
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

// The two integer rules side by side on one stock: the writer leaves out a
// weight that is not a whole number, the stock model cuts it to one.
TEST(JotfMedia, WriterReadsNumbersExactlyWhereTheModelTruncates) {
  const Dictionary stock{{"Weight", Value(90.5)}, {"Grain", Value(std::int64_t{1} << 32)}};
  MEDIADATA m;
  FillMediaData(&m, &stock);
  EXPECT_EQ(std::pair(m.weight, m.grain), std::pair(-1, -1));
  const Stock model(&stock);
  EXPECT_EQ(model.weight(), 90);
  EXPECT_EQ(model.grain(), kUnset);  // beyond 32 bits fails under both rules
}

TEST(JotfMedia, InitialValues) {
  MEDIADATA m;
  const Dictionary source{{"Source", Value(3)}, {"Size", Value(1)}};
  FillMediaData(&m, &source);
  EXPECT_EQ(std::tuple(m.mediaType, m.color, m.source, m.xDimension, m.prePrinted),
            std::tuple(-1, -1, -1, 0u, 0));
  m.source = 7;
  RecordingSink r;
  WriteJotfMedia(&r.sink, &m);
  EXPECT_EQ(r.text(), "\t\t<media syntax=\"keyword\"></media>\n");
}

// The current print session's page size stands in for a stock with no size.
class JotfPageSize : public ::testing::Test {
 protected:
  void TearDown() override { SetCurrentPrintSession(nullptr); }

  using Size = std::pair<std::uint32_t, std::uint32_t>;
  Size SizeFor(double width, double length, int orientation, const Dictionary* stock = nullptr) {
    session_.pageFormat().clear();
    session_.pageFormat().setReal("Z", tkey::kPMPaperWidth, width);
    session_.pageFormat().setReal("Z", tkey::kPMPaperLength, length);
    session_.pageFormat().setNumber("Z", tkey::kPMOrientation, orientation);
    SetCurrentPrintSession(&session_);
    MEDIADATA m;
    FillMediaData(&m, stock);
    return {m.xDimension, m.yDimension};
  }

  PrintSession session_;
};

TEST_F(JotfPageSize, FallbackForStocksWithoutASize) {
  EXPECT_EQ(SizeFor(612, 792, 0), Size(21600, 27900));
  EXPECT_EQ(SizeFor(612, 792, 2), Size(21600, 27900));
  // Turned: (length, width) is compared and the row comes back turned too.
  EXPECT_EQ(SizeFor(792, 612, 1), Size(27900, 21600));
  EXPECT_EQ(SizeFor(842, 595, 3), Size(29700, 21000));
  // 9 x 11 and its tab size share points: the first row wins.
  EXPECT_EQ(SizeFor(648, 792, 0), Size(22900, 27900));
  // No exact match, another orientation or no session: no size.
  EXPECT_EQ(SizeFor(595.276, 841.89, 0), Size(0, 0));
  EXPECT_EQ(SizeFor(612, 792, 4), Size(0, 0));
  EXPECT_EQ(SizeFor(792, 612, 0), Size(0, 0));
  SetCurrentPrintSession(nullptr);
  MEDIADATA m;
  FillMediaData(&m, nullptr);
  EXPECT_EQ(Size(m.xDimension, m.yDimension), Size(0, 0));
  // Only stocks without any size fall back.
  const Dictionary a4{{"Size", Value(4)}};
  EXPECT_EQ(SizeFor(612, 792, 0, &a4).first, 21000u);
  const Dictionary named{{"CustomNameOnly", Value(true)}, {"CustomName", Value("n")}};
  EXPECT_EQ(SizeFor(612, 792, 0, &named), Size(0, 0));
  // A custom size with only one dimension is no size and no fallback.
  const Dictionary half{{"Size", Value(75)}, {"Width", Value(100)}};
  EXPECT_EQ(SizeFor(612, 792, 0, &half), Size(100, 0));
}

}  // namespace
}  // namespace zorva::test

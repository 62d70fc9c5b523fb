// The watermark as it prints: Ghostscript renders watermarked two-page jobs
// and the tests look at the pixels where the record puts the watermark.
#include <gtest/gtest.h>

#include <cmath>

#include "watermarks/type42.h"
#include "watermarks/watermark_fixture.h"

namespace zorva::test {
namespace {

int CountNear(const PagePicture& page, Rgb want) {
  int n = 0;
  for (std::size_t i = 0; i + 2 < page.rgb.size(); i += 3) {
    n += Near({page.rgb[i], page.rgb[i + 1], page.rgb[i + 2]}, want) ? 1 : 0;
  }
  return n;
}

void ExpectPagesPrinted(const Rendered& r) {
  EXPECT_EQ(r.exitCode, 0) << r.out;
  EXPECT_EQ(r.out.find("Error"), std::string::npos) << r.out;
  ASSERT_EQ(r.pages.size(), 2u) << r.out;
}

TEST_F(WatermarkDrawing, TextInTheStoredFontOnEveryPage) {
  StoreDejaVu();
  const Printed p = Print(RedBlock());
  EXPECT_TRUE(p.warnings.empty()) << p.warnings.front();
  EXPECT_TRUE(Contains(p.job, "/FontName /DejaVuSans def"));
  EXPECT_TRUE(Contains(p.job, "/FontType 42 def"));
  ExpectPagesPrinted(p.rendered);
  for (const PagePicture& page : p.rendered.pages) {
    for (auto [x, y] : InsideBlock()) EXPECT_TRUE(Near(page.at(x, y), kRed)) << x << "," << y;
    EXPECT_TRUE(Near(page.at(150, 300), kWhite));  // left of the block
    EXPECT_TRUE(Near(page.at(250, 500), kWhite));  // above it
    EXPECT_TRUE(Near(page.at(30, 30), kBlack));    // the document's own mark
  }
}

// The store may hold the font already converted: the program is sent as it
// is (one definition of the font in the job) and still draws the block.
TEST_F(WatermarkDrawing, FontStoredAsAType42Program) {
  std::string program;
  Type42Options split;
  split.splitLargeTables = true;
  ASSERT_TRUE(
      convertTTFtoPS42(*ReadWholeFile(kDejaVuSans), "DejaVuSans", program, split).complete());
  StoreFont(std::vector<std::uint8_t>(program.begin(), program.end()));
  const Printed p = Print(RedBlock());
  EXPECT_TRUE(p.warnings.empty());
  EXPECT_TRUE(Contains(p.job, program));
  EXPECT_EQ(p.job.find("/FontType 42 def"), p.job.rfind("/FontType 42 def"));
  ExpectPagesPrinted(p.rendered);
  for (const PagePicture& page : p.rendered.pages) {
    for (auto [x, y] : InsideBlock()) EXPECT_TRUE(Near(page.at(x, y), kRed)) << x << "," << y;
  }
  // A program whose strings are not hexadecimal: the standard font.
  program.replace(program.find("/sfnts [\n<") + 10, 2, "zz");
  StoreFont(std::vector<std::uint8_t>(program.begin(), program.end()));
  const Printed damaged = Print(RedBlock());
  ASSERT_EQ(damaged.warnings.size(), 1u);
  EXPECT_TRUE(Contains(damaged.warnings[0], "is a damaged Type 42 program"));
  ExpectPagesPrinted(damaged.rendered);
}

TEST_F(WatermarkDrawing, FirstPageOnly) {
  StoreDejaVu();
  WatermarkRenderOptions options;
  options.firstPageOnly = true;
  const Printed p = Print(RedBlock(), options);
  ExpectPagesPrinted(p.rendered);
  EXPECT_TRUE(Near(p.rendered.pages[0].at(245, 340), kRed));
  EXPECT_EQ(CountNear(p.rendered.pages[1], kRed), 0);
  EXPECT_TRUE(Near(p.rendered.pages[1].at(30, 30), kBlack));
}

TEST_F(WatermarkDrawing, UnderOrOverThePagesMarks) {
  StoreDejaVu();
  const DocumentSpec boxed{{612, 792}, true, true};
  for (bool inFront : {false, true}) {
    WatermarkRenderOptions options;
    options.inFront = inFront;
    const Printed p = Print(RedBlock(), options, boxed);
    ExpectPagesPrinted(p.rendered);
    for (const PagePicture& page : p.rendered.pages) {
      EXPECT_TRUE(Near(page.at(245, 340), inFront ? kRed : kBlack)) << "in front: " << inFront;
    }
  }
}

// Angle, offsets in each unit, scale, and a page of another size: the
// block's middle lands where the placement says, on the page as printed.
TEST_F(WatermarkDrawing, PlacementFollowsTheRecord) {
  StoreDejaVu();
  struct Case {
    const char* what;
    int angle;
    float xOffset, yOffset;
    int units;
    int scale;
    PageSize page;
    double insideX, insideY;    // a point the block must cover
    double outsideX, outsideY;  // where it was before the change
  };
  const Case cases[] = {
      {"turned 90 degrees", 90, 0, 0, 0, 100, {612, 792}, 160, 345, 245, 340},
      {"offset in points", 0, 100, -100, 0, 100, {612, 792}, 345, 240, 245, 340},
      {"offset in inches", 0, 1, 2, 1, 100, {612, 792}, 317, 484, 245, 340},
      {"offset in millimetres", 0, 25.4f, 0, 2, 100, {612, 792}, 317, 340, 225, 340},
      {"half scale", 0, 0, 0, 0, 50, {612, 792}, 222, 320, 260, 380},
      {"on A4", 0, 0, 0, 0, 100, {595, 842}, 237, 365, 245, 275},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    WatermarkData w = RedBlock();
    w.angle = c.angle;
    w.xOffset = c.xOffset;
    w.yOffset = c.yOffset;
    w.units = c.units;
    w.scale = c.scale;
    const Printed p = Print(w, {}, {c.page, true, false});
    ExpectPagesPrinted(p.rendered);
    EXPECT_TRUE(Near(p.rendered.pages[1].at(c.insideX, c.insideY), kRed));
    EXPECT_TRUE(Near(p.rendered.pages[1].at(c.outsideX, c.outsideY), kWhite));
  }
}

TEST_F(WatermarkDrawing, DensityIsTheInksStrength) {
  StoreDejaVu();
  WatermarkData w = RedBlock();
  w.density = 50;
  const Printed p = Print(w);
  ExpectPagesPrinted(p.rendered);
  EXPECT_TRUE(Near(p.rendered.pages[0].at(245, 340), {255, 128, 128}, 12));
  w.density = 100;
  w.wellColorAlpha = 0.25f;
  const Printed faint = Print(w);
  EXPECT_TRUE(Near(faint.rendered.pages[0].at(245, 340), {255, 191, 191}, 12));
}

// A font that cannot be had: one warning, the standard font, both pages.
TEST_F(WatermarkDrawing, FontFallbacks) {
  struct Case {
    const char* what;
    std::vector<std::uint8_t> stored;  // empty: nothing stored
    std::string fontName;
    const char* warning;
  };
  const std::vector<std::uint8_t> garbage = {'n', 'o', 't', ' ', 'a', ' ', 'f', 'o', 'n', 't'};
  std::vector<std::uint8_t> cut = *ReadWholeFile(kDejaVuSans);
  cut.resize(2000);
  const Case cases[] = {
      {"not stored",
       {},
       "DejaVuSans",
       "font DejaVuSans is not in the watermark store; drawing "
       "with the printer's copy of it, or Helvetica"},
      {"corrupt data", garbage, "DejaVuSans",
       "font DejaVuSans in the watermark store cannot be "
       "converted"},
      {"cut short", cut, "DejaVuSans", "cannot be converted"},
      {"not a PostScript name", {}, "Dejavu Sans(1)", "is not a PostScript name"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    TempDir store;
    ScopedEnv env("ZORVA_SHARED_DIR", store.path().string());
    if (!c.stored.empty()) StoreFont(c.stored, c.fontName);
    WatermarkData w = RedBlock();
    w.fontName = c.fontName;
    w.textString = "HH";
    const Printed p = Print(w);
    ASSERT_EQ(p.warnings.size(), 1u);
    EXPECT_TRUE(Contains(p.warnings[0], c.warning));
    EXPECT_TRUE(Contains(p.job, "/Helvetica"));
    ExpectPagesPrinted(p.rendered);
    for (const PagePicture& page : p.rendered.pages) EXPECT_GT(CountNear(page, kRed), 100);
  }
}

TEST_F(WatermarkDrawing, DocumentWithoutPageStructureComments) {
  StoreDejaVu();
  const Printed p = Print(RedBlock(), {}, {{612, 792}, false, false});
  ASSERT_EQ(p.warnings.size(), 1u);
  EXPECT_TRUE(Contains(p.warnings[0], "no page structure comments"));
  ExpectPagesPrinted(p.rendered);
  for (const PagePicture& page : p.rendered.pages) EXPECT_TRUE(Near(page.at(245, 340), kRed));
}

// A red picture made by Ghostscript itself: 100 x 50 pixels at 72 per inch.
std::filesystem::path MakeRedJpeg(const std::filesystem::path& dir) {
  const std::filesystem::path jpeg = dir / "red.jpg";
  RunProgram("gs",
             {"-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-sDEVICE=jpeg", "-r72", "-g100x50",
              "-sOutputFile=" + jpeg.string(), "-c", "1 0 0 setrgbcolor clippath fill showpage"});
  return jpeg;
}

TEST_F(WatermarkDrawing, PictureScaledToItsSize) {
  WatermarkData w;
  w.filePath = MakeRedJpeg(dir_.path()).string();
  w.filename = "red.jpg";
  w.density = 100;
  w.wellColorAlpha = 1;
  w.scale = 200;
  w.xPos = 100;
  w.yPos = 100;
  const Printed p = Print(w);
  EXPECT_TRUE(p.warnings.empty());
  ExpectPagesPrinted(p.rendered);
  for (const PagePicture& page : p.rendered.pages) {
    EXPECT_TRUE(Near(page.at(105, 105), kRed));
    EXPECT_TRUE(Near(page.at(290, 190), kRed));  // 200 x 100 points at 200 %
    EXPECT_TRUE(Near(page.at(310, 150), kWhite));
    EXPECT_TRUE(Near(page.at(150, 210), kWhite));
  }
}

TEST_F(WatermarkDrawing, MissingPictureLeavesTheJobAlone) {
  WatermarkData w;
  w.filePath = (dir_.path() / "gone.jpg").string();
  w.filename = "gone.jpg";
  const WatermarkProlog prolog = BuildWatermarkProlog(w, {});
  EXPECT_TRUE(prolog.text.empty());
  ASSERT_EQ(prolog.warnings.size(), 1u);
  EXPECT_TRUE(Contains(prolog.warnings[0], "gone.jpg\" cannot be read"));
  WriteText(dir_ / "not.jpg", "GIF89a");
  w.filePath = (dir_.path() / "not.jpg").string();
  const WatermarkProlog notJpeg = BuildWatermarkProlog(w, {});
  EXPECT_TRUE(notJpeg.text.empty());
  ASSERT_EQ(notJpeg.warnings.size(), 1u);
  EXPECT_TRUE(Contains(notJpeg.warnings[0], "not a JPEG file"));
}

TEST(WatermarkPlacement, InkAndGeometry) {
  WatermarkData w;
  w.xPos = 10;
  w.yPos = 20;
  w.xOffset = 2;
  w.yOffset = -1;
  w.units = 1;
  w.angle = 45;
  w.fontSize = 72;
  w.scale = 0;  // read as 100 %
  w.density = 25;
  w.wellColorBlue = 1;
  w.wellColorAlpha = 1;
  const WatermarkPlacement p = PlaceWatermark(w, {595, 842});
  EXPECT_DOUBLE_EQ(p.x, 10 + 144 + (595 - 612) / 2.0);
  EXPECT_DOUBLE_EQ(p.y, 20 - 72 + (842 - 792) / 2.0);
  EXPECT_EQ(p.angle, 45);
  EXPECT_EQ(p.fontSize, 72);
  // The defaults' well colour at density 25 is their stored font colour.
  EXPECT_DOUBLE_EQ(p.red, 0.75);
  EXPECT_DOUBLE_EQ(p.green, 0.75);
  EXPECT_DOUBLE_EQ(p.blue, 1.0);
  JpegInfo picture{300, 150, 3, false, 150, 150};
  w.scale = 50;
  const WatermarkPlacement q =
      PlaceWatermark(w, kWatermarkLayoutPage, kWatermarkLayoutPage, &picture);
  EXPECT_DOUBLE_EQ(q.width, 72);
  EXPECT_DOUBLE_EQ(q.height, 36);
  w.density = 250;  // out of range: full strength
  EXPECT_DOUBLE_EQ(PlaceWatermark(w, kWatermarkLayoutPage).red, 0);
}

}  // namespace
}  // namespace zorva::test

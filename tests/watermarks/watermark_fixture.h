// Shared set-up of the watermark drawing tests: a watermark store of the
// test's own holding DejaVu Sans (a Debian font package: fonts-dejavu-core),
// a two-page PostScript document, and printing it through Ghostscript.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/file_io.h"
#include "support/test_support.h"
#include "watermarks/ghostscript_pages.h"
#include "watermarks/watermark_filter.h"
#include "watermarks/watermark_render.h"
#include "watermarks/watermark_store.h"

namespace zorva::test {

inline ::testing::AssertionResult Contains(const std::string& text, const std::string& part) {
  if (text.find(part) != std::string::npos) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "\"" << part << "\" is not in: " << text.substr(0, 2000);
}

inline const std::filesystem::path kDejaVuSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

// U+2588 FULL BLOCK: DejaVu Sans draws it as a solid box; the standard
// PostScript fonts have no such glyph, so a solid box proves the job's
// own font drew the text.
inline constexpr const char* kFullBlock = "\xE2\x96\x88";

struct DocumentSpec {
  PageSize page{612, 792};
  bool structured = true;
  bool blackBox = false;  // a black box over the middle of each page
};

inline std::string TwoPageDocument(const DocumentSpec& spec) {
  const std::string size = "<< /PageSize [" + std::to_string(static_cast<int>(spec.page.width)) +
                           " " + std::to_string(static_cast<int>(spec.page.height)) +
                           "] >> setpagedevice\n";
  const std::string marks = std::string("0 setgray 20 20 30 30 rectfill\n") +
                            (spec.blackBox ? "0 setgray 100 200 400 400 rectfill\n" : "");
  std::string doc;
  if (spec.structured) {
    doc =
        "%!PS-Adobe-3.0\n%%Creator: zorva tests\n%%Pages: 2\n%%EndComments\n"
        "%%BeginProlog\n/mark-page { " +
        marks +
        "} def\n%%EndProlog\n"
        "%%BeginSetup\n" +
        size + "%%EndSetup\n";
    for (int page = 1; page <= 2; ++page) {
      doc += "%%Page: " + std::to_string(page) + " " + std::to_string(page) +
             "\nsave mark-page restore showpage\n";
    }
    return doc + "%%EOF\n";
  }
  doc = "%!\n" + size;
  for (int page = 1; page <= 2; ++page) doc += "save\n" + marks + "restore showpage\n";
  return doc;
}

class WatermarkDrawing : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists(kDejaVuSans)) GTEST_SKIP() << "fonts-dejavu-core is missing";
    if (RunProgram("gs", {"--version"}).exitCode != 0) GTEST_SKIP() << "ghostscript is missing";
  }

  void StoreFont(const std::vector<std::uint8_t>& bytes, const std::string& name = "DejaVuSans") {
    ASSERT_EQ(storeFontData(kWatermarkFileName, name, bytes), 0);
  }
  void StoreDejaVu() { StoreFont(*ReadWholeFile(kDejaVuSans)); }

  // A red full block, 144 points, its baseline starting at (200, 300).
  static WatermarkData RedBlock() {
    WatermarkData w;
    w.isText = true;
    w.textString = kFullBlock;
    w.fontName = "DejaVuSans";
    w.fontSize = 144;
    w.scale = 100;
    w.density = 100;
    w.wellColorRed = 1;
    w.wellColorAlpha = 1;
    w.fontColorRed = 1;
    w.fontColorAlpha = 1;
    w.xPos = 200;
    w.yPos = 300;
    return w;
  }

  // The watermarked document, Ghostscript's pages of it, and the warnings.
  struct Printed {
    std::string job;
    std::vector<std::string> warnings;
    Rendered rendered;
  };

  Printed Print(const WatermarkData& record, const WatermarkRenderOptions& options = {},
                const DocumentSpec& doc = {}) {
    Printed out;
    const WatermarkProlog prolog = BuildWatermarkProlog(record, options);
    out.warnings = prolog.warnings;
    out.job = InsertWatermarkProlog(TwoPageDocument(doc), prolog.text, out.warnings);
    const std::filesystem::path path = dir_ / "job.ps";
    WriteText(path, out.job);
    out.rendered = RenderWithGhostscript(path);
    return out;
  }

  TempDir dir_;
  ScopedEnv store_{"ZORVA_SHARED_DIR", (dir_.path() / "store").string()};
};

inline const Rgb kRed{255, 0, 0};
inline const Rgb kWhite{255, 255, 255};
inline const Rgb kBlack{0, 0, 0};

// Points inside the block drawn by RedBlock() at its place: a 3 x 3 grid
// over its middle, every one of which a solid box covers.
inline std::vector<std::pair<double, double>> InsideBlock(double x = 200, double y = 300) {
  std::vector<std::pair<double, double>> points;
  for (double dx : {20.0, 45.0, 70.0}) {
    for (double dy : {0.0, 40.0, 80.0}) points.emplace_back(x + dx, y + dy);
  }
  return points;
}

}  // namespace zorva::test

// Drawing a stored watermark: where a record puts its text or picture on a
// page and in which ink (the placement, which the printer's PostScript and a
// screen preview both follow, so what the user sees is what prints), and the
// PostScript prolog that draws it on a job's pages.
//
// The prolog defines everything once per job (the watermark's own Type 42
// font converted from the store, or the picture's JPEG data) and hooks the
// page device: BeginPage draws the watermark under the page's own marks, or
// EndPage over them, on every page or only the first. Documents from any
// application get it, with or without page structure comments, since nothing
// depends on finding the pages in the file.
//
// Record fields and what they mean on the page:
//   xPos, yPos     the origin in points from the lower-left corner of the
//                  layout page (US Letter unless told): the start of the
//                  text's baseline, or the picture's lower-left corner; on a
//                  page of another size the watermark keeps its place
//                  relative to the page's centre
//   xOffset, yOffset added to the origin, in `units` (0 points, 1 inches,
//                  2 millimetres; other values read as points)
//   angle          degrees counter-clockwise about the origin
//   fontSize, scale the text's size in points times scale percent; a
//                  picture's natural size (its own resolution, else 72 pixels
//                  per inch) times scale percent; a scale of 0 or less is 100
//   wellColor*, density the chosen colour and the ink's strength in percent:
//                  the ink lies that far from white towards the colour (the
//                  alpha channel weakens it further); pictures are lightened
//                  the same way
//   fontName       the PostScript name of the font, whose TrueType file the
//                  store holds (converted here), or its Type 42 program
//                  (sent as it is); glyphs come from the font's character
//                  map, or from the record's glyph codes when it has none
// The font colour fields are the editor's derived display colour and are not
// read: the well colour at full density is the ink itself.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "watermarks/jpeg_info.h"
#include "watermarks/watermark_store.h"

namespace zorva {

struct PageSize {
  double width = 612;  // points
  double height = 792;
};

// The page the editor lays watermarks out on.
inline constexpr PageSize kWatermarkLayoutPage{612, 792};

// The standard font drawn with when the watermark's own cannot be had.
inline constexpr std::string_view kWatermarkFallbackFont = "Helvetica";

struct WatermarkPlacement {
  double x = 0;  // origin, points from the page's lower-left corner
  double y = 0;
  double angle = 0;     // degrees counter-clockwise
  double fontSize = 0;  // text: points
  double width = 0;     // picture: points
  double height = 0;
  double strength = 1;  // 0 (invisible) to 1 (the full colour)
  double red = 0;       // the ink: the colour at that strength over white
  double green = 0;
  double blue = 0;
};

// Where and how the record is drawn on a page of the given size. picture is
// the picture's facts (null for a text watermark, or when unknown: size 0).
WatermarkPlacement PlaceWatermark(const WatermarkData& record, PageSize page,
                                  PageSize layoutPage = kWatermarkLayoutPage,
                                  const JpegInfo* picture = nullptr);

struct WatermarkRenderOptions {
  PageSize layoutPage = kWatermarkLayoutPage;
  bool firstPageOnly = false;
  bool inFront = false;  // over the page's marks instead of under them
  std::string storeFile = std::string(kWatermarkFileName);  // where fonts are stored
};

struct WatermarkProlog {
  // The PostScript resource that installs the watermark; empty when nothing
  // can be drawn (no text, a picture that cannot be read).
  std::string text;
  // What went wrong, one line each without a program prefix; the job prints
  // regardless (with a standard font, or without the watermark).
  std::vector<std::string> warnings;
};

WatermarkProlog BuildWatermarkProlog(const WatermarkData& record,
                                     const WatermarkRenderOptions& options);

}  // namespace zorva

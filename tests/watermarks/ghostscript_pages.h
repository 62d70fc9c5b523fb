// Renders PostScript with Ghostscript into pixels the watermark tests can
// look at: one RGB picture per page, addressed in points from the page's
// lower-left corner as PostScript places things. Platform fonts are kept
// out, so a font is drawn only when the job itself carries it.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "support/test_support.h"

namespace zorva::test {

struct Rgb {
  int r = 0;
  int g = 0;
  int b = 0;
};

struct PagePicture {
  int width = 0;
  int height = 0;
  double dpi = 0;
  std::vector<std::uint8_t> rgb;

  // The pixel at (x, y) points from the lower-left corner.
  Rgb at(double x, double y) const {
    const int px = static_cast<int>(x * dpi / 72.0);
    const int py = height - 1 - static_cast<int>(y * dpi / 72.0);
    if (px < 0 || py < 0 || px >= width || py >= height) return {-1, -1, -1};
    const std::size_t i = (static_cast<std::size_t>(py) * width + px) * 3;
    return {rgb[i], rgb[i + 1], rgb[i + 2]};
  }
};

inline bool Near(Rgb c, Rgb want, int tolerance = 40) {
  return std::abs(c.r - want.r) <= tolerance && std::abs(c.g - want.g) <= tolerance &&
         std::abs(c.b - want.b) <= tolerance;
}

// Reads one binary PPM (P6, maxval 255) at the stream's position.
// The next header field of a PPM, past blanks and "#" comment lines.
inline std::string PpmField(std::istream& in) {
  in >> std::ws;
  while (in.peek() == '#') {
    std::string comment;
    std::getline(in, comment);
    in >> std::ws;
  }
  std::string field;
  in >> field;
  return field;
}

inline bool ReadPpm(std::istream& in, PagePicture& page) {
  if (PpmField(in) != "P6") return false;
  page.width = std::atoi(PpmField(in).c_str());
  page.height = std::atoi(PpmField(in).c_str());
  if (PpmField(in) != "255" || page.width <= 0 || page.height <= 0) return false;
  in.get();
  page.rgb.resize(static_cast<std::size_t>(page.width) * page.height * 3);
  return static_cast<bool>(in.read(reinterpret_cast<char*>(page.rgb.data()),
                                   static_cast<std::streamsize>(page.rgb.size())));
}

struct Rendered {
  int exitCode = -1;
  std::string out;  // Ghostscript's own output (error reports land here)
  std::vector<PagePicture> pages;
};

inline Rendered RenderWithGhostscript(const std::filesystem::path& ps, double dpi = 36) {
  const std::filesystem::path ppm = ps.string() + ".ppm";
  ToolResult r = RunProgram("gs", {"-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-dNOPLATFONTS",
                                   "-sDEVICE=ppmraw", "-r" + std::to_string(static_cast<int>(dpi)),
                                   "-sOutputFile=" + ppm.string(), ps.string()});
  Rendered out;
  out.exitCode = r.exitCode;
  out.out = r.out + r.err;
  std::ifstream in(ppm, std::ios::binary);
  PagePicture page;
  page.dpi = dpi;
  while (ReadPpm(in, page)) {
    out.pages.push_back(page);
  }
  return out;
}

}  // namespace zorva::test

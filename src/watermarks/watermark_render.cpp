// The watermark's placement and its PostScript prolog (see watermark_render.h).
#include "watermarks/watermark_render.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <optional>

#include "core/file_io.h"
#include "watermarks/font_cmap.h"
#include "watermarks/type42.h"
#include "watermarks/type42_reader.h"

namespace zorva {
namespace {

constexpr double kPointsPerInch = 72.0;
constexpr double kMillimetresPerInch = 25.4;
constexpr std::size_t kMaxCodes = 255;             // codes 1-255 of the derived font
constexpr std::size_t kHexBytesPerString = 32000;  // well under the string limit
constexpr std::size_t kHexBytesPerLine = 40;

std::string Num(double v) {
  char buf[32];
  std::snprintf(buf, sizeof buf, "%.6g", v);
  return buf;
}

double UnitSize(std::int32_t units) {
  switch (units) {
    case 1:
      return kPointsPerInch;
    case 2:
      return kPointsPerInch / kMillimetresPerInch;
    default:
      return 1.0;
  }
}

double Clamp01(double v) {
  return v < 0 ? 0 : v > 1 ? 1 : v;
}

// A PostScript string literal; bytes outside printable ASCII as octal.
std::string PsString(std::string_view bytes) {
  std::string out = "(";
  for (char ch : bytes) {
    const auto c = static_cast<unsigned char>(ch);
    if (c == '(' || c == ')' || c == '\\') {
      out += '\\';
      out += ch;
    } else if (c < 0x20 || c >= 0x7F) {
      char oct[8];
      std::snprintf(oct, sizeof oct, "\\%03o", c);
      out += oct;
    } else {
      out += ch;
    }
  }
  return out + ")";
}

void AppendHex(std::string& out, std::span<const std::uint8_t> bytes) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i % kHexBytesPerLine == 0) out += '\n';
    out += kDigits[bytes[i] >> 4];
    out += kDigits[bytes[i] & 0xF];
  }
}

// Names that the converter can write after "/FontName /" unchanged.
bool IsPostScriptName(std::string_view name) {
  if (name.empty() || name.size() > 127) return false;
  return std::all_of(name.begin(), name.end(), [](char ch) {
    const auto c = static_cast<unsigned char>(ch);
    return c > 0x20 && c < 0x7F &&
           std::string_view("()<>[]{}/%").find(ch) == std::string_view::npos;
  });
}

std::string Quoted(std::string_view text) {
  return "\"" + std::string(text) + "\"";
}

// ---- text ----------------------------------------------------------------

// The font that draws the text, defined as /ZorvaWatermarkFont, and the
// string of its codes to show.
struct TextFont {
  std::string setup;
  std::string shown;
};

// The stored font as a Type 42 program plus a font on top of it whose
// encoding holds exactly the text's glyphs, one code each.
std::optional<TextFont> EmbeddedFont(const WatermarkData& record, std::string_view storeFile,
                                     std::string& problem) {
  std::vector<std::uint8_t> font;
  if (!loadFontData(storeFile, record.fontName, font)) {
    problem = "is not in the watermark store";
    return std::nullopt;
  }
  TextFont out;
  std::string fontName = record.fontName;
  std::span<const std::uint8_t> sfnt(font);
  const std::string_view storedText(reinterpret_cast<const char*>(font.data()), font.size());
  std::optional<Type42Font> program;
  if (IsType42Program(storedText)) {
    // Stored already converted: sent as it is, read back for its glyphs.
    program = ReadType42Program(storedText);
    if (!program || !IsPostScriptName(program->fontName)) {
      problem = "in the watermark store is a damaged Type 42 program";
      return std::nullopt;
    }
    out.setup = storedText;
    if (!out.setup.ends_with('\n')) out.setup += '\n';
    fontName = program->fontName;
    sfnt = program->sfnt;
  } else {
    Type42Options split;
    split.splitLargeTables = true;
    const Type42Result converted = convertTTFtoPS42(font, fontName, out.setup, split, nullptr);
    if (!converted.complete()) {
      problem =
          "in the watermark store cannot be converted (" +
          (converted.message.empty() ? std::string("incomplete program") : converted.message) + ")";
      return std::nullopt;
    }
  }
  std::vector<std::uint16_t> glyphs;
  if (auto cmap = FontCharacterMap::Read(sfnt)) {
    for (char32_t cp : DecodeUtf8(record.textString)) glyphs.push_back(cmap->Glyph(cp));
  } else if (record.glyphs && !record.glyphs->empty()) {
    glyphs = *record.glyphs;
  } else {
    problem = "in the watermark store has no character map";
    return std::nullopt;
  }
  out.setup = "%%BeginResource: font " + fontName + "\n" + out.setup + "%%EndResource\n";
  std::map<std::uint16_t, std::size_t> codes;  // glyph id -> code
  std::vector<std::uint16_t> byCode;
  std::string hex = "<";
  for (std::uint16_t g : glyphs) {
    auto [it, added] = codes.emplace(g, byCode.size() + 1);
    if (added) {
      if (byCode.size() == kMaxCodes) {
        codes.erase(it);
        hex += "00";
        continue;
      }
      byCode.push_back(g);
    }
    char code[4];
    std::snprintf(code, sizeof code, "%02X", static_cast<unsigned>(it->second));
    hex += code;
  }
  out.shown = hex + ">";
  std::string& s = out.setup;
  s += "/" + fontName + " findfont dup length dict begin\n";
  s += "{ 1 index /FID ne { def } { pop pop } ifelse } forall\n";
  s += "/Encoding 256 array 0 1 255 { 1 index exch /.notdef put } for\n";
  std::string charStrings =
      "/CharStrings " + std::to_string(byCode.size() + 1) + " dict dup begin /.notdef 0 def\n";
  for (std::size_t i = 0; i < byCode.size(); ++i) {
    const std::string name = "/g" + std::to_string(byCode[i]);
    s += "dup " + std::to_string(i + 1) + " " + name + " put\n";
    charStrings += name + " " + std::to_string(byCode[i]) + " def\n";
  }
  s += "def\n" + charStrings + "end def\n";
  s += "currentdict end /ZorvaWatermarkFont exch definefont pop\n";
  return out;
}

// The printer's own copy of the font when it has one, else the standard
// font, re-encoded as Latin-1; characters beyond Latin-1 show as '?'.
TextFont StandardFont(const WatermarkData& record, bool tryNamedFont) {
  TextFont out;
  std::string& s = out.setup;
  if (tryNamedFont) {
    s += "/" + record.fontName + " /Font resourcestatus { pop pop /" + record.fontName + " } { /" +
         std::string(kWatermarkFallbackFont) + " } ifelse\n";
  } else {
    s += "/" + std::string(kWatermarkFallbackFont) + "\n";
  }
  s += "findfont dup length dict begin\n";
  s += "{ 1 index /FID ne { def } { pop pop } ifelse } forall\n";
  s += "/Encoding ISOLatin1Encoding def\n";
  s += "currentdict end /ZorvaWatermarkFont exch definefont pop\n";
  std::string latin1;
  for (char32_t cp : DecodeUtf8(record.textString)) {
    latin1 += cp <= 0xFF ? static_cast<char>(cp) : '?';
  }
  out.shown = PsString(latin1);
  return out;
}

TextFont TextFontFor(const WatermarkData& record, std::string_view storeFile,
                     std::vector<std::string>& warnings) {
  if (!IsPostScriptName(record.fontName)) {
    warnings.push_back("the font name " + Quoted(record.fontName) +
                       " is not a PostScript name; drawing with " +
                       std::string(kWatermarkFallbackFont));
    return StandardFont(record, false);
  }
  std::string problem;
  if (auto font = EmbeddedFont(record, storeFile, problem)) return *font;
  const bool stored = problem != "is not in the watermark store";
  warnings.push_back("font " + record.fontName + " " + problem + "; drawing with " +
                     (stored
                          ? std::string(kWatermarkFallbackFont)
                          : "the printer's copy of it, or " + std::string(kWatermarkFallbackFont)));
  return StandardFont(record, !stored);
}

// ---- picture -------------------------------------------------------------

struct Picture {
  JpegInfo info;
  std::string setup;  // /pict, the JPEG file as hex strings
};

std::optional<Picture> PictureFor(const WatermarkData& record, std::vector<std::string>& warnings) {
  const std::string path = record.filePath.empty() ? record.filename : record.filePath;
  const auto bytes = ReadWholeFile(path);
  if (!bytes) {
    warnings.push_back("the picture " + Quoted(path) +
                       " cannot be read; printing without the watermark");
    return std::nullopt;
  }
  std::string why;
  const auto info = ReadJpegInfo(*bytes, &why);
  if (!info) {
    warnings.push_back("the picture " + Quoted(path) + " cannot be drawn: " + why +
                       "; printing without the watermark");
    return std::nullopt;
  }
  Picture out{*info, "/pict ["};
  const std::span<const std::uint8_t> all(*bytes);
  for (std::size_t at = 0; at < all.size(); at += kHexBytesPerString) {
    out.setup += "<";
    AppendHex(out.setup, all.subspan(at, std::min(kHexBytesPerString, all.size() - at)));
    out.setup += ">\n";
  }
  out.setup += "] def\n/pictAt 0 def\n";
  out.setup +=
      "/pictNext { ZorvaWatermark begin pictAt pict length lt\n"
      "  { pict pictAt get /pictAt pictAt 1 add store } { () } ifelse end } bind def\n";
  return out;
}

std::string PictureDraw(const Picture& picture, const WatermarkPlacement& p) {
  const JpegInfo& info = picture.info;
  const std::string w = std::to_string(info.width);
  const std::string h = std::to_string(info.height);
  const std::string low = Num(1 - p.strength);
  std::string decode;
  for (int c = 0; c < info.components; ++c) decode += " " + low + " 1";
  return Num(p.width) + " " + Num(p.height) + " scale\n" +
         (info.components == 1 ? "/DeviceGray" : "/DeviceRGB") + " setcolorspace\n" +
         "ZorvaWatermark /pictAt 0 put\n"
         "<< /ImageType 1 /Width " +
         w + " /Height " + h + " /BitsPerComponent 8\n   /ImageMatrix [" + w + " 0 0 -" + h +
         " 0 " + h + "] /Decode [" + decode +
         " ]\n   /DataSource { pictNext } /DCTDecode filter >> image\n";
}

// ---- the resource ----------------------------------------------------------

// The page hooks: the old BeginPage and EndPage still run, ours around them.
std::string HookInstall(const WatermarkRenderOptions& options) {
  const std::string behind = options.inFront ? "false" : "true";
  const std::string front = options.inFront ? "true" : "false";
  return "/oldBegin currentpagedevice /BeginPage 2 copy known { get } { pop pop { pop } } ifelse "
         "def\n"
         "/oldEnd currentpagedevice /EndPage 2 copy known { get } { pop pop { exch pop 2 ne } } "
         "ifelse def\n"
         "/due { " +
         std::string(options.firstPageOnly ? "shown 0 get 0 eq" : "true") +
         " } bind def\n"
         "end\n"
         "<< /BeginPage { dup ZorvaWatermark /oldBegin get exec pop\n"
         "    ZorvaWatermark begin " +
         behind +
         " { due { draw } if } if end } bind\n"
         "   /EndPage { ZorvaWatermark begin dup 2 ne { " +
         front +
         " { due { draw } if } if shown 0 2 copy get 1 add put } if end\n"
         "    ZorvaWatermark /oldEnd get exec } bind\n"
         ">> setpagedevice\n";
}

std::string DrawProc(const WatermarkPlacement& p, const WatermarkRenderOptions& options,
                     const std::string& marks) {
  return "/draw { gsave initgraphics\n"
         "  currentpagedevice /PageSize get aload pop " +
         Num(options.layoutPage.height) + " sub 2 div exch " + Num(options.layoutPage.width) +
         " sub 2 div exch translate\n  " + Num(p.x) + " " + Num(p.y) + " translate " +
         Num(p.angle) + " rotate\n" + marks + "grestore } bind def\n";
}

}  // namespace

WatermarkPlacement PlaceWatermark(const WatermarkData& record, PageSize page, PageSize layoutPage,
                                  const JpegInfo* picture) {
  WatermarkPlacement p;
  const double unit = UnitSize(record.units);
  p.x = record.xPos + record.xOffset * unit + (page.width - layoutPage.width) / 2;
  p.y = record.yPos + record.yOffset * unit + (page.height - layoutPage.height) / 2;
  p.angle = record.angle;
  const double scale = (record.scale > 0 ? record.scale : 100) / 100.0;
  p.fontSize = record.fontSize * scale;
  if (picture && picture->xDensity > 0 && picture->yDensity > 0) {
    p.width = picture->width / picture->xDensity * kPointsPerInch * scale;
    p.height = picture->height / picture->yDensity * kPointsPerInch * scale;
  }
  p.strength = Clamp01(record.density / 100.0) * Clamp01(record.wellColorAlpha);
  p.red = 1 - (1 - Clamp01(record.wellColorRed)) * p.strength;
  p.green = 1 - (1 - Clamp01(record.wellColorGreen)) * p.strength;
  p.blue = 1 - (1 - Clamp01(record.wellColorBlue)) * p.strength;
  return p;
}

WatermarkProlog BuildWatermarkProlog(const WatermarkData& record,
                                     const WatermarkRenderOptions& options) {
  WatermarkProlog out;
  std::string resources;
  std::string marks;
  if (record.isText) {
    if (record.textString.empty()) {
      out.warnings.push_back("the watermark has no text; printing without it");
      return out;
    }
    const WatermarkPlacement p = PlaceWatermark(record, options.layoutPage, options.layoutPage);
    const TextFont font = TextFontFor(record, options.storeFile, out.warnings);
    resources = font.setup;
    marks = "  " + Num(p.red) + " " + Num(p.green) + " " + Num(p.blue) +
            " setrgbcolor\n  /ZorvaWatermarkFont findfont " + Num(p.fontSize) +
            " scalefont setfont\n  0 0 moveto " + font.shown + " show\n";
    resources += DrawProc(p, options, marks);
  } else {
    const auto picture = PictureFor(record, out.warnings);
    if (!picture) return out;
    const WatermarkPlacement p =
        PlaceWatermark(record, options.layoutPage, options.layoutPage, &picture->info);
    resources = picture->setup + DrawProc(p, options, PictureDraw(*picture, p));
  }
  std::string& t = out.text;
  t = "%%BeginResource: procset ZorvaWatermark 1.0 0\n";
  t += "% The watermark " + PsString(record.name()) + ", drawn " +
       (options.firstPageOnly ? "on the first page " : "on every page ") +
       (options.inFront ? "over" : "under") + " the page's own marks.\n";
  t += "% Anything that fails here leaves the job printing without it.\n";
  t += "countdictstack mark {\n";
  t += "/ZorvaWatermark 16 dict def\nZorvaWatermark begin\n";
  // The page count lives in global VM, which the documents' own save and
  // restore around each page do not roll back.
  t += "/shown currentglobal true setglobal [0] exch setglobal def\n";
  t += resources;
  t += HookInstall(options);
  t += "} stopped { cleartomark countdictstack exch sub { end } repeat\n";
  t += "  (%%[ Warning: the Zorva watermark could not be installed ]%%) = flush }\n";
  t += "{ cleartomark pop } ifelse\n%%EndResource\n";
  return out;
}

}  // namespace zorva

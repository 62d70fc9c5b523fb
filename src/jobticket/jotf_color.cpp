// Colour attributes: full colour options, highlight colour, halftone.
#include "jobticket/jotf_color.h"

#include <array>

#include "core/ticket_keys.h"
#include "jobticket/jotf_commands.h"
#include "jobticket/jotf_maps.h"
#include "jobticket/jotf_read.h"

namespace zorva {

namespace {

using jotf::ReadInt32;

// A profile entry holds a custom profile's name (a string) or a built-in
// profile's code (a number).
std::optional<std::string> ProfileName(const Dictionary* options, std::string_view key) {
  return jotf::ReadEscaped(options, key);
}

bool ProfileIsBuiltIn(const Dictionary* options, std::string_view key) {
  return ReadInt32(options, key).has_value();
}

void FillAdjustments(FULLCOLORDATA* c, const Dictionary* options) {
  c->lightness = ReadInt32(options, tkey::kFCLightness);
  c->contrast = ReadInt32(options, tkey::kFCContrast);
  c->saturation = ReadInt32(options, tkey::kFCSaturation);
  const Dictionary* cast = jotf::ReadDictionary(options, tkey::kFCColorCast);
  c->cyanRed = ReadInt32(cast, tkey::kFCCyanRed);
  c->magentaGreen = ReadInt32(cast, tkey::kFCMagentaGreen);
  c->yellowBlue = ReadInt32(cast, tkey::kFCYellowBlue);
}

void FillTrappingAndCurve(FULLCOLORDATA* c, const Dictionary* options) {
  c->trapping = ReadInt32(options, tkey::kFCTrapping);
  c->trapWidthFast = ReadInt32(options, tkey::kFCTrappingFast);
  c->trapWidthSlow = ReadInt32(options, tkey::kFCTrappingSlow);
  c->blackOverprint = ReadInt32(options, tkey::kFCBlackOverprint);
  c->trc = jotf::ReadEscaped(options, tkey::kFCTRC);
}

void FillProfiles(FULLCOLORDATA* c, const Dictionary* options) {
  c->rgbImages = ProfileName(options, tkey::kRGBImagesProfile);
  c->rgbTextAndGraphics = ProfileName(options, tkey::kRGBTextAndGraphicsProfile);
  c->cmykImages = ProfileName(options, tkey::kCMYKImagesProfile);
  c->cmykTextAndGraphics = ProfileName(options, tkey::kCMYKTextAndGraphicsProfile);
  c->grayImages = ProfileName(options, tkey::kGrayImagesProfile);
  c->grayTextAndGraphics = ProfileName(options, tkey::kGrayTextAndGraphicsProfile);
  c->destinationName = ProfileName(options, tkey::kDestinationProfile);
  c->destinationSystem = ProfileIsBuiltIn(options, tkey::kDestinationProfile);
}

void FillRenderings(FULLCOLORDATA* c, const Dictionary* options) {
  c->imageRendering = ReadInt32(options, tkey::kImageRendering);
  c->textRendering = ReadInt32(options, tkey::kTextRendering);
  c->graphicRendering = ReadInt32(options, tkey::kGraphicRendering);
}

void Command(const JotfSink* sink, int code, const std::optional<std::int32_t>& value) {
  if (value) WriteJotfCommands(sink, code, *value);
}

void WriteProfile(const JotfSink* sink, const char* attribute,
                  const std::optional<std::string>& name) {
  if (!name) return;
  JotfPrintf(sink, "\t\t<%s syntax=\"name\" xml:space=\"preserve\">%s</%s>\n", attribute,
             name->c_str(), attribute);
}

// The system's own destination profile: written without a line feed, as the
// printer's server has always received it.
void WriteSystemProfile(const JotfSink* sink, const char* attribute) {
  JotfPrintf(sink, "\t\t<%s syntax=\"keyword\">system-specified</%s>", attribute, attribute);
}

void WriteTrc(const JotfSink* sink, const FULLCOLORDATA* c) {
  if (!c->trc) return;
  JotfWrite(sink, "\t\t<trc syntax=\"collection\">\n");
  JotfPrintf(sink, "\t\t\t<trc-name syntax=\"name\" xml:space=\"preserve\">%s</trc-name>\n",
             c->trc->c_str());
  JotfWrite(sink, "\t\t</trc>\n");
}

// Text and graphics share one profile per colour space.
void WriteSourceProfiles(const JotfSink* sink, const FULLCOLORDATA* c) {
  WriteProfile(sink, "undefined-source-rgb-images", c->rgbImages);
  WriteProfile(sink, "undefined-source-rgb-text", c->rgbTextAndGraphics);
  WriteProfile(sink, "undefined-source-rgb-graphics", c->rgbTextAndGraphics);
  WriteProfile(sink, "undefined-source-cmyk-images", c->cmykImages);
  WriteProfile(sink, "undefined-source-cmyk-text", c->cmykTextAndGraphics);
  WriteProfile(sink, "undefined-source-cmyk-graphics", c->cmykTextAndGraphics);
  WriteProfile(sink, "undefined-source-gray-images", c->grayImages);
  WriteProfile(sink, "undefined-source-gray-text", c->grayTextAndGraphics);
  WriteProfile(sink, "undefined-source-gray-graphics", c->grayTextAndGraphics);
}

void WriteDestinationProfile(const JotfSink* sink, const FULLCOLORDATA* c) {
  if (c->destinationName) {
    WriteProfile(sink, "color-destination-profile-front", c->destinationName);
    WriteProfile(sink, "color-destination-profile-back", c->destinationName);
  } else if (c->destinationSystem) {
    WriteSystemProfile(sink, "color-destination-profile-front");
    WriteSystemProfile(sink, "color-destination-profile-back");
  }
}

// ---- Highlight colour ------------------------------------------------------------

constexpr std::int32_t kHighlightCustom = 7;

void WriteColorMembers(const JotfSink* sink, const char* collection,
                       const std::array<std::pair<const char*, std::int32_t>, 3>& members) {
  JotfPrintf(sink, "\t\t\t<%s syntax=\"collection\">\n", collection);
  for (const auto& [name, value] : members) {
    JotfPrintf(sink, "\t\t\t\t<%s syntax=\"integer\">%d</%s>\n", name, value, name);
  }
  JotfPrintf(sink, "\t\t\t</%s>\n", collection);
}

// RGB when all three of Red, Green, Blue are there, else HSV when all three
// of Hue, Saturation, Value are; otherwise no collection.
void WriteCustomColor(const JotfSink* sink, const Dictionary* color) {
  const auto r = ReadInt32(color, tkey::kColorRed), g = ReadInt32(color, tkey::kColorGreen),
             b = ReadInt32(color, tkey::kColorBlue);
  const auto h = ReadInt32(color, tkey::kColorHue), s = ReadInt32(color, tkey::kColorSaturation),
             v = ReadInt32(color, tkey::kColorValue);
  const bool rgb = r && g && b;
  if (!rgb && !(h && s && v)) return;
  JotfWrite(sink, "\t\t<highlight-colorant-color-custom-col syntax=\"collection\">\n");
  if (rgb) {
    WriteColorMembers(
        sink, "color-srgb-col",
        {{{"color-srgb-red", *r}, {"color-srgb-green", *g}, {"color-srgb-blue", *b}}});
  } else {
    WriteColorMembers(
        sink, "color-hsv-col",
        {{{"color-hsv-hue", *h}, {"color-hsv-saturation", *s}, {"color-hsv-value", *v}}});
  }
  JotfWrite(sink, "\t\t</highlight-colorant-color-custom-col>\n");
}

}  // namespace

void FillFullColorOptions(FULLCOLORDATA* color, const Dictionary* options) {
  *color = FULLCOLORDATA{};
  FillAdjustments(color, options);
  FillTrappingAndCurve(color, options);
  FillProfiles(color, options);
  FillRenderings(color, options);
}

void FinalizeFullColorOptions(FULLCOLORDATA* color) {
  if (!color) return;
  for (std::optional<std::string>* s :
       {&color->trc, &color->rgbImages, &color->rgbTextAndGraphics, &color->cmykImages,
        &color->cmykTextAndGraphics, &color->grayImages, &color->grayTextAndGraphics,
        &color->destinationName}) {
    s->reset();
  }
}

int WriteJotfFullColor(const JotfSink* sink, const FULLCOLORDATA* c) {
  Command(sink, kJotfAdjustLightness, c->lightness);
  Command(sink, kJotfAdjustContrast, c->contrast);
  Command(sink, kJotfAdjustSaturation, c->saturation);
  Command(sink, kJotfAdjustCyanRed, c->cyanRed);
  Command(sink, kJotfAdjustMagentaGreen, c->magentaGreen);
  Command(sink, kJotfAdjustYellowBlue, c->yellowBlue);
  Command(sink, kJotfTrapping, c->trapping);
  Command(sink, kJotfTrapWidthFast, c->trapWidthFast);
  Command(sink, kJotfTrapWidthSlow, c->trapWidthSlow);
  Command(sink, kJotfBlackOverprint, c->blackOverprint);
  WriteTrc(sink, c);
  WriteSourceProfiles(sink, c);
  WriteDestinationProfile(sink, c);
  Command(sink, kJotfRenderingImages, c->imageRendering);
  Command(sink, kJotfRenderingText, c->textRendering);
  Command(sink, kJotfRenderingGraphics, c->graphicRendering);
  return 0;
}

void WriteJOTFFullColorOptions(const Dictionary* options) {
  FULLCOLORDATA color;
  FillFullColorOptions(&color, options);
  WriteJotfFullColor(&writeData, &color);
  FinalizeFullColorOptions(&color);
}

void WriteJOTFHighlightColor(const Dictionary* options) {
  const std::optional<std::int32_t> printing = ReadInt32(options, tkey::kHighlightPrintingColor);
  if (!printing) return;
  if (const char* colorant = JotfKeywordFor(JotfHighlightColorantMap, *printing)) {
    JotfPrintf(&writeData, "\t\t<highlight-colorant syntax=\"keyword\">%s</highlight-colorant>\n",
               colorant);
    return;
  }
  if (*printing != kHighlightCustom) return;
  JotfPrintf(&writeData,
             "\t\t<highlight-colorant-color syntax=\"name\" "
             "xml:space=\"preserve\">zorva-custom-color-%d</highlight-colorant-color>\n",
             jotf::ReadInt32Or(options, tkey::kHighlightCustomColorIndex, 1));
  WriteCustomColor(&writeData, jotf::ReadDictionary(options, tkey::kHighlightCustomColor));
}

void WriteJOTFHalftone(const Dictionary* settings) {
  const std::int32_t screen = jotf::ReadInt32Or(settings, tkey::kHalftoneScreen, 0);
  const char* keyword = JotfKeywordFor(JotfHalftoneMap, screen);
  if (!keyword) return;
  JotfPrintf(&writeData, "\t\t<halftone-graphics syntax=\"keyword\">%s</halftone-graphics>\n",
             keyword);
}

}  // namespace zorva

// Colour attributes of the job ticket: the full colour options of the job or
// of one exception page (adjustments, trapping, overprint, tone curve,
// profiles, rendering intents), the highlight colour and the halftone.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/value.h"
#include "jobticket/jotf_sink.h"

namespace zorva {

// Full colour options, reduced. Absent entries stay nullopt and write nothing.
struct FULLCOLORDATA {
  std::optional<std::int32_t> lightness, contrast, saturation;
  std::optional<std::int32_t> cyanRed, magentaGreen, yellowBlue;
  std::optional<std::int32_t> trapping, trapWidthFast, trapWidthSlow;
  std::optional<std::int32_t> blackOverprint;
  std::optional<std::string> trc;  // escaped
  // Source profiles given by name (escaped). A profile given by a built-in
  // code names no profile here: the printer uses its own.
  std::optional<std::string> rgbImages, rgbTextAndGraphics;
  std::optional<std::string> cmykImages, cmykTextAndGraphics;
  std::optional<std::string> grayImages, grayTextAndGraphics;
  // Destination: a name, or a built-in code meaning the system's own profile.
  std::optional<std::string> destinationName;
  bool destinationSystem = false;
  std::optional<std::int32_t> imageRendering, textRendering, graphicRendering;
};

// Fills the record from a full-colour dictionary (null gives an empty record).
void FillFullColorOptions(FULLCOLORDATA* color, const Dictionary* options);
void FinalizeFullColorOptions(FULLCOLORDATA* color);

// Prints the colour attributes at two tabs, in command-code order, with the
// tone curve and the profiles between black overprint and rendering intents.
int WriteJotfFullColor(const JotfSink* sink, const FULLCOLORDATA* color);

// The job's full colour options ("com.zorva.print.FullColorOptions").
void WriteJOTFFullColorOptions(const Dictionary* options);

// Highlight colour from whatever dictionary it is given (the whole settings,
// then the job's highlight-colour dictionary): "HiglightPrintingColor" 1..6
// is a colorant keyword, 7 a custom colour ("HighlightCustomColorIndex",
// default 1, and "HighlightCustomColor" with Red/Green/Blue or
// Hue/Saturation/Value).
void WriteJOTFHighlightColor(const Dictionary* options);

// "com.zorva.print.HalftoneScreen": 1 "standard", 2 "fine", 3 "coarse".
void WriteJOTFHalftone(const Dictionary* settings);

}  // namespace zorva

// The command writer: one job attribute chosen by a code, for a value, from
// a fixed table. Every dictionary-side writer that sets a plain keyword or
// integer attribute goes through it.
#pragma once

#include <cstdint>
#include <string_view>

#include "jobticket/jotf_sink.h"

namespace zorva {

// Codes of the command table.
enum JotfCommand : int {
  kJotfCopies = 0,
  kJotfSheetCollate = 1,
  kJotfSides = 2,
  kJotfOrientation = 3,
  kJotfOutputBin = 4,
  kJotfDarknessValue = 5,
  kJotfTonerSaver = 6,
  kJotfJobOffset = 7,
  kJotfPagesPerSubset = 8,
  kJotfDarknessMode = 9,
  kJotfPageRotation = 10,
  kJotfSeparatorSheets = 11,
  kJotfOPIInsertion = 12,
  kJotfOPIPreScan = 13,
  kJotfAntiAliasing = 14,
  kJotfAdjustLightness = 16,
  kJotfAdjustContrast = 17,
  kJotfAdjustSaturation = 18,
  kJotfAdjustCyanRed = 19,
  kJotfAdjustMagentaGreen = 20,
  kJotfAdjustYellowBlue = 21,
  kJotfTrapping = 22,
  kJotfTrapWidthFast = 23,
  kJotfTrapWidthSlow = 24,
  kJotfBlackOverprint = 25,
  kJotfRenderingImages = 26,
  kJotfRenderingText = 27,
  kJotfRenderingGraphics = 28,
  kJotfPageDelivery = 29,
  kJotfColorEffects = 30,
};

// Writes the attribute of `code` for `value` at two tabs. Codes without a
// row (15, 31 and above, negatives) and values a keyword row does not list
// write nothing; the job-offset row writes an empty set for them.
int WriteJotfCommands(const JotfSink* sink, int code, std::int32_t value);

// The first value of the command's row that writes keyword; -1 when none.
std::int32_t JotfCommandValueFor(int code, std::string_view keyword);

}  // namespace zorva

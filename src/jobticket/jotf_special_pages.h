// Special pages of the job ticket: covers (`cover-front`, `cover-back`),
// inserted sheets (`insert-sheet`) and page exceptions (`page-overrides`),
// plus the image-shift reading that exception pages and the job share.
#pragma once

#include <cstdint>

#include "core/value.h"
#include "jobticket/jotf_color.h"
#include "jobticket/jotf_media.h"
#include "jobticket/jotf_sink.h"

namespace zorva {

// Image shifts in hundredths of a millimetre.
struct ImageShiftSelections {
  std::int32_t x1 = 0;
  std::int32_t y1 = 0;
  std::int32_t x2 = 0;
  std::int32_t y2 = 0;
};

// One exception page, reduced.
struct PAGEDATA {
  std::int32_t inputDocumentsUpper = 1;
  std::int32_t inputDocumentsLower = 1;
  std::int32_t pagesUpper = 1;  // "EndPage"
  std::int32_t pagesLower = 1;  // "StartPage"
  bool hasLightenDarken = false;
  std::int32_t lightenDarken = 0;
  bool hasImageShift = false;
  std::int32_t xSide1Shift = 0;
  std::int32_t xSide2Shift = 0;
  std::int32_t ySide1Shift = 0;
  std::int32_t ySide2Shift = 0;
  std::int32_t sides = -1;  // -1 none, 0 one-sided, 1 long edge, 2 short edge
  FULLCOLORDATA color;
  // Read with the page but not written: the printer takes them per job only.
  std::int32_t antialiasing = kUnset;
  std::int32_t halftoneScreen = kUnset;
  std::int32_t outputColor = kUnset;
};

// Image shift from a dictionary with "Inches", "X1", "Y1", "X2", "Y2" and
// "FullPrecision" (missing numbers count 0). Full precision takes the values
// as hundredths of a millimetre; otherwise inches multiply by 25.4 and
// millimetres by 10, truncated toward zero.
void FillImageShift(const Dictionary* shift, ImageShiftSelections* out);

// "SidesImaged" 1, 2, 3 give one-sided, long edge, short edge; else none.
void FillPageSidesImaged(PAGEDATA* page, const Dictionary* exception);

// Resets the record and fills it from an exception-page dictionary.
void FillPageData(PAGEDATA* page, const Dictionary* exception);
void FinalizePageData(PAGEDATA* page);

// Kinds of WriteJotfSpecialPagesStart/End.
inline constexpr int kJotfPageOverrides = 0;
inline constexpr int kJotfInsertSheet = 1;

int WriteJotfSpecialPagesStart(const JotfSink* sink, int kind);
int WriteJotfSpecialPagesEnd(const JotfSink* sink, int kind);

// which: 0 front, 1 back. coverType: 1 print-none, 2 print-front,
// 3 print-back, 4 print-both, anything else no-cover.
int WriteJotfCovers(const JotfSink* sink, int which, int coverType, const MEDIADATA* media);
// One member of `insert-sheet`.
int WriteJotfInserts(const JotfSink* sink, int afterPage, int count, const MEDIADATA* media);
// One member of `page-overrides`.
int WriteJotfPageExceptions(const JotfSink* sink, const PAGEDATA* page, const MEDIADATA* media);

// Dictionary side: each reads its ticket entry from the settings.
void WriteJOTFFrontCover(const Dictionary* settings);
void WriteJOTFBackCover(const Dictionary* settings);
void WriteJOTFInserts(const Dictionary* settings);
void WriteJOTFExceptions(const Dictionary* settings);

}  // namespace zorva

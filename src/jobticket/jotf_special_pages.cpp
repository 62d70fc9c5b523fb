// Covers, inserts and page exceptions. The indentation of the literal lines
// is the format's own: the media of every special page sits at two tabs and
// an exception's `sides` and darkness lines keep the job-level depth.
#include "jobticket/jotf_special_pages.h"

#include <cmath>

#include "core/ticket_keys.h"
#include "jobticket/jotf_commands.h"
#include "jobticket/jotf_maps.h"
#include "jobticket/jotf_read.h"

namespace zorva {

namespace {

using jotf::ReadInt32;
using jotf::ReadInt32Or;

double ReadNumber(const Dictionary* d, std::string_view key) {
  const Value* v = d ? d->find(key) : nullptr;
  double out = 0;
  if (v && v->getNumber(out)) return out;
  return 0;
}

// Truncation toward zero; what has no 32-bit value (NaN, out of range)
// becomes the lowest one, as the processor's conversion gives.
std::int32_t TruncateToInt32(double d) {
  if (!(d > -2147483649.0 && d < 2147483648.0)) return kUnset;
  return static_cast<std::int32_t>(std::trunc(d));
}

void WriteRange(const JotfSink* sink, const char* attribute, std::int32_t lower,
                std::int32_t upper) {
  JotfPrintf(sink, "\t\t\t<%s syntax=\"1setOf\">\n", attribute);
  JotfWrite(sink, "\t\t\t\t<value syntax=\"rangeOfInteger\">\n");
  JotfPrintf(sink, "\t\t\t\t\t<lower-bound syntax=\"integer\">%d</lower-bound>\n", lower);
  JotfPrintf(sink, "\t\t\t\t\t<upper-bound syntax=\"integer\">%d</upper-bound>\n", upper);
  JotfWrite(sink, "\t\t\t\t</value>\n");
  JotfPrintf(sink, "\t\t\t</%s>\n", attribute);
}

void WritePageImageShift(const JotfSink* sink, const PAGEDATA* page) {
  if (!page->hasImageShift) return;
  JotfPrintf(sink, "\t\t\t<x-side1-image-shift syntax=\"integer\">%ld</x-side1-image-shift>\n",
             static_cast<long>(page->xSide1Shift));
  JotfPrintf(sink, "\t\t\t<x-side2-image-shift syntax=\"integer\">%ld</x-side2-image-shift>\n",
             static_cast<long>(page->xSide2Shift));
  JotfPrintf(sink, "\t\t\t<y-side1-image-shift syntax=\"integer\">%ld</y-side1-image-shift>\n",
             static_cast<long>(page->ySide1Shift));
  JotfPrintf(sink, "\t\t\t<y-side2-image-shift syntax=\"integer\">%ld</y-side2-image-shift>\n",
             static_cast<long>(page->ySide2Shift));
}

const char* CoverTypeKeyword(int coverType) {
  const char* keyword = coverType >= 1 ? JotfKeywordFor(JotfCoverTypeMap, coverType) : nullptr;
  return keyword ? keyword : "no-cover";
}

void WriteCover(const Dictionary* settings, std::string_view key, int which) {
  const Dictionary* cover = jotf::ReadDictionary(settings, key);
  if (!cover) return;
  MEDIADATA media;
  FillMediaData(&media, jotf::ReadDictionary(cover, tkey::kStock));
  WriteJotfCovers(&writeData, which, ReadInt32Or(cover, tkey::kSidesImaged, 1), &media);
  FinalizeMediaData(&media);
}

// The dictionaries of a non-empty list; other entries are passed over.
const Array* NonEmptyList(const Dictionary* settings, std::string_view key) {
  const Array* list = settings ? settings->getArray(key) : nullptr;
  return list && !list->empty() ? list : nullptr;
}

void WriteInsert(const Dictionary& insert) {
  MEDIADATA media;
  FillMediaData(&media, jotf::ReadDictionary(&insert, tkey::kStock));
  WriteJotfInserts(&writeData, ReadInt32Or(&insert, tkey::kStartPage, 1),
                   ReadInt32Or(&insert, tkey::kQuantity, 1), &media);
  FinalizeMediaData(&media);
}

void WriteException(const Dictionary& exception) {
  MEDIADATA media;
  PAGEDATA page;
  FillMediaData(&media, jotf::ReadDictionary(&exception, tkey::kStock));
  FillPageData(&page, &exception);
  WriteJotfPageExceptions(&writeData, &page, &media);
  FinalizeMediaData(&media);
  FinalizePageData(&page);
}

}  // namespace

void FillImageShift(const Dictionary* shift, ImageShiftSelections* out) {
  const double x1 = ReadNumber(shift, tkey::kX1), y1 = ReadNumber(shift, tkey::kY1);
  const double x2 = ReadNumber(shift, tkey::kX2), y2 = ReadNumber(shift, tkey::kY2);
  const std::optional<bool> fullPrecision =
      shift ? shift->getBool(tkey::kFullPrecision) : std::nullopt;
  double scale = 1;
  if (!fullPrecision.value_or(false)) scale = ReadNumber(shift, tkey::kInches) != 0 ? 25.4 : 10;
  out->x1 = TruncateToInt32(x1 * scale);
  out->y1 = TruncateToInt32(y1 * scale);
  out->x2 = TruncateToInt32(x2 * scale);
  out->y2 = TruncateToInt32(y2 * scale);
}

void FillPageSidesImaged(PAGEDATA* page, const Dictionary* exception) {
  const std::int32_t sides = ReadInt32Or(exception, tkey::kSidesImaged, 0);
  page->sides = (sides >= 1 && sides <= 3) ? sides - 1 : -1;
}

void FillPageData(PAGEDATA* page, const Dictionary* exception) {
  *page = PAGEDATA{};
  page->pagesLower = ReadInt32Or(exception, tkey::kStartPage, 1);
  page->pagesUpper = ReadInt32Or(exception, tkey::kEndPage, 1);
  FillPageSidesImaged(page, exception);
  if (const Dictionary* shift = jotf::ReadDictionary(exception, tkey::kPageImageShift)) {
    ImageShiftSelections s;
    FillImageShift(shift, &s);
    page->hasImageShift = true;
    page->xSide1Shift = s.x1;
    page->xSide2Shift = s.x2;
    page->ySide1Shift = s.y1;
    page->ySide2Shift = s.y2;
  }
  if (const std::optional<std::int32_t> ld = ReadInt32(exception, tkey::kPageLightenDarken)) {
    page->hasLightenDarken = true;
    page->lightenDarken = *ld;
  }
  FillFullColorOptions(&page->color, jotf::ReadDictionary(exception, tkey::kPageFullColor));
  page->antialiasing = ReadInt32Or(exception, tkey::kPageAntialiasing, kUnset);
  page->halftoneScreen = ReadInt32Or(exception, tkey::kPageHalftoneScreen, kUnset);
  page->outputColor = ReadInt32Or(exception, tkey::kPageOutputColor, kUnset);
}

void FinalizePageData(PAGEDATA* page) {
  if (page) FinalizeFullColorOptions(&page->color);
}

int WriteJotfSpecialPagesStart(const JotfSink* sink, int kind) {
  if (kind == kJotfPageOverrides) JotfWrite(sink, "\t\t<page-overrides syntax=\"1setOf\">\n");
  if (kind == kJotfInsertSheet) JotfWrite(sink, "\t\t<insert-sheet syntax=\"1setOf\">\n");
  return 0;
}

int WriteJotfSpecialPagesEnd(const JotfSink* sink, int kind) {
  if (kind == kJotfPageOverrides) JotfWrite(sink, "\t\t</page-overrides>\n");
  if (kind == kJotfInsertSheet) JotfWrite(sink, "\t\t</insert-sheet>\n");
  return 0;
}

int WriteJotfCovers(const JotfSink* sink, int which, int coverType, const MEDIADATA* media) {
  const char* element = which == 0 ? "cover-front" : "cover-back";
  JotfPrintf(sink, "\t\t<%s syntax=\"collection\">\n", element);
  JotfPrintf(sink, "\t\t\t<cover-type syntax=\"keyword\">%s</cover-type>\n",
             CoverTypeKeyword(coverType));
  WriteJotfMedia(sink, media);
  JotfPrintf(sink, "\t\t</%s>\n", element);
  return 0;
}

int WriteJotfInserts(const JotfSink* sink, int afterPage, int count, const MEDIADATA* media) {
  JotfWrite(sink, "\t\t\t<value syntax=\"collection\">\n");
  JotfPrintf(sink,
             "\t\t\t<insert-after-page-number syntax=\"integer\">%d</insert-after-page-number>\n",
             afterPage);
  JotfPrintf(sink, "\t\t\t<insert-count syntax=\"integer\">%d</insert-count>\n", count);
  WriteJotfMedia(sink, media);
  JotfWrite(sink, "\t\t\t</value>\n");
  return 0;
}

int WriteJotfPageExceptions(const JotfSink* sink, const PAGEDATA* page, const MEDIADATA* media) {
  JotfWrite(sink, "\t\t\t<value syntax=\"collection\">\n");
  WriteRange(sink, "input-documents", page->inputDocumentsLower, page->inputDocumentsUpper);
  WriteRange(sink, "pages", page->pagesLower, page->pagesUpper);
  WriteJotfCommands(sink, kJotfSides, page->sides);
  if (page->hasLightenDarken) WriteJotfCommands(sink, kJotfDarknessValue, page->lightenDarken);
  WritePageImageShift(sink, page);
  WriteJotfMedia(sink, media);
  WriteJotfFullColor(sink, &page->color);
  JotfWrite(sink, "\t\t\t</value>\n");
  return 0;
}

void WriteJOTFFrontCover(const Dictionary* settings) {
  WriteCover(settings, tkey::kFrontCover, 0);
}

void WriteJOTFBackCover(const Dictionary* settings) {
  WriteCover(settings, tkey::kBackCover, 1);
}

void WriteJOTFInserts(const Dictionary* settings) {
  const Array* list = NonEmptyList(settings, tkey::kInsertList);
  if (!list) return;
  WriteJotfSpecialPagesStart(&writeData, kJotfInsertSheet);
  for (const Value& entry : *list) {
    if (const Dictionary* insert = entry.dictionary()) WriteInsert(*insert);
  }
  WriteJotfSpecialPagesEnd(&writeData, kJotfInsertSheet);
}

void WriteJOTFExceptions(const Dictionary* settings) {
  const Array* list = NonEmptyList(settings, tkey::kExceptionList);
  if (!list) return;
  WriteJotfSpecialPagesStart(&writeData, kJotfPageOverrides);
  for (const Value& entry : *list) {
    if (const Dictionary* exception = entry.dictionary()) WriteException(*exception);
  }
  WriteJotfSpecialPagesEnd(&writeData, kJotfPageOverrides);
}

}  // namespace zorva

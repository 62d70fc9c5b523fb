// Plain job attributes: duplex, output bin, resolution, the OPI, anti-aliasing,
// darkness, toner saver, delivery order, emulation, rotation and output
// colour settings, and the job's image shift.
#include "jobticket/jotf_job_attributes.h"

#include <charconv>

#include "core/ticket_keys.h"
#include "jobticket/jotf_commands.h"
#include "jobticket/jotf_maps.h"
#include "jobticket/jotf_read.h"
#include "jobticket/jotf_special_pages.h"

namespace zorva {

namespace {

using jotf::ReadInt32;

// The command value that writes the keyword of the ticket value in map.
std::optional<std::int32_t> CommandValue(JotfKeywordMap map, int code,
                                         std::optional<std::int32_t> v) {
  const char* keyword = v ? JotfKeywordFor(map, *v) : nullptr;
  if (!keyword) return std::nullopt;
  return JotfCommandValueFor(code, keyword);
}

// "1200x600" -> 1200, 600.
bool ParseResolution(std::string_view keyword, std::int32_t* crossFeed,
                     std::int32_t* feedDirection) {
  const std::size_t x = keyword.find('x');
  if (x == std::string_view::npos) return false;
  const auto a = std::from_chars(keyword.data(), keyword.data() + x, *crossFeed);
  const auto b =
      std::from_chars(keyword.data() + x + 1, keyword.data() + keyword.size(), *feedDirection);
  return a.ec == std::errc() && b.ec == std::errc();
}

// The entry's value, as it is, through the command writer.
void WriteAsIs(const Dictionary* settings, std::string_view key, int code) {
  if (const std::optional<std::int32_t> v = ReadInt32(settings, key)) {
    WriteJotfCommands(&writeData, code, *v);
  }
}

}  // namespace

void WriteJOTFDuplex(const Dictionary* settings) {
  std::optional<std::int32_t> duplex = ReadInt32(settings, tkey::kFinishingDuplex);
  if (!duplex) duplex = ReadInt32(settings, tkey::kPMDuplexing);
  WriteJotfCommands(&writeData, kJotfSides,
                    CommandValue(JotfDuplexMap, kJotfSides, duplex).value_or(0));
}

void WriteJOTFOutputDestination(const Dictionary* settings) {
  const auto bin = CommandValue(JotfOutputDestinationMap, kJotfOutputBin,
                                ReadInt32(settings, tkey::kOutputDestination));
  if (bin) WriteJotfCommands(&writeData, kJotfOutputBin, *bin);
}

void WriteJOTFResolution(const Dictionary* settings) {
  const std::optional<std::int32_t> v = ReadInt32(settings, tkey::kResolution);
  const char* keyword = v ? JotfKeywordFor(JotfResolutionMap, *v) : nullptr;
  std::int32_t crossFeed = 0, feedDirection = 0;
  if (keyword && ParseResolution(keyword, &crossFeed, &feedDirection)) {
    WriteJotfResolution(&writeData, crossFeed, feedDirection);
  }
}

int WriteJotfResolution(const JotfSink* sink, std::int32_t crossFeed, std::int32_t feedDirection) {
  JotfWrite(sink, "\t\t<printer-resolution syntax=\"resolution\">\n");
  JotfPrintf(sink, "\t\t\t<cross-feed syntax=\"integer\">%d</cross-feed>\n", crossFeed);
  JotfPrintf(sink, "\t\t\t<feed-direction syntax=\"integer\">%d</feed-direction>\n", feedDirection);
  JotfPrintf(sink, "\t\t\t<units syntax=\"integer\">%d</units>\n", 3);
  JotfWrite(sink, "\t\t</printer-resolution>\n");
  return 0;
}

void WriteJOTFOPISubsitution(const Dictionary* settings) {
  WriteAsIs(settings, tkey::kOPISubstitution, kJotfOPIInsertion);
}

void WriteJOTFOPIPreScan(const Dictionary* settings) {
  WriteAsIs(settings, tkey::kOPIPrescan, kJotfOPIPreScan);
}

void WriteJOTFAntiAliasing(const Dictionary* settings) {
  WriteAsIs(settings, tkey::kAntialiasing, kJotfAntiAliasing);
}

void WriteJOTFLightenDarken(const Dictionary* settings) {
  WriteAsIs(settings, tkey::kLightenDarken, kJotfDarknessValue);
}

void WriteJOTFTonerSaver(const Dictionary* settings) {
  const std::optional<bool> on = settings ? settings->getBool(tkey::kTonerSaver) : std::nullopt;
  if (on) WriteJotfCommands(&writeData, kJotfTonerSaver, *on ? 1 : 0);
}

void WriteJOTFOutputOrder(const Dictionary* settings) {
  WriteAsIs(settings, tkey::kOutputOrder, kJotfPageDelivery);
}

void WriteJOTFPrinterEmulation(const Dictionary* settings) {
  WriteAsIs(settings, tkey::kPrinterEmulation, kJotfDarknessMode);
}

void WriteJOTFImageRotation(const Dictionary* settings) {
  const auto rotation =
      CommandValue(JotfRotationMap, kJotfPageRotation, ReadInt32(settings, tkey::kRotateImage180));
  if (rotation) WriteJotfCommands(&writeData, kJotfPageRotation, *rotation);
}

void WriteJOTFOutputColor(const Dictionary* settings) {
  WriteAsIs(settings, tkey::kOutputColor, kJotfColorEffects);
}

void WriteJOTFImageShift(const Dictionary* imageShift) {
  if (!imageShift) return;
  ImageShiftSelections shift;
  FillImageShift(imageShift, &shift);
  WriteJotfImageShift(&writeData, shift.x1, shift.x2, shift.y1, shift.y2);
}

int WriteJotfImageShift(const JotfSink* sink, long x1, long x2, long y1, long y2) {
  JotfPrintf(sink, "\t\t<x-side1-image-shift syntax=\"integer\">%ld</x-side1-image-shift>\n", x1);
  JotfPrintf(sink, "\t\t<x-side2-image-shift syntax=\"integer\">%ld</x-side2-image-shift>\n", x2);
  JotfPrintf(sink, "\t\t<y-side1-image-shift syntax=\"integer\">%ld</y-side1-image-shift>\n", y1);
  JotfPrintf(sink, "\t\t<y-side2-image-shift syntax=\"integer\">%ld</y-side2-image-shift>\n", y2);
  return 0;
}

}  // namespace zorva

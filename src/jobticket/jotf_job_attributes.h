// Job-wide attributes of the job ticket, inside `job-template-attributes`:
// the dictionary-side writers that pick a ticket entry, translate it and
// write it (mostly through the command writer), and the printers of the
// attributes that have a shape of their own (resolution, image shift, job
// notes, accounting, page ranges, finishing, saved job, background forms).
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "core/value.h"
#include "jobticket/jotf_sink.h"

namespace zorva {

// ---- Plain attributes (jotf_job_attributes.cpp) ------------------------------------
// Each takes the settings dictionary and writes through writeData.
void WriteJOTFDuplex(const Dictionary* settings);  // always writes `sides`
void WriteJOTFOutputDestination(const Dictionary* settings);
void WriteJOTFResolution(const Dictionary* settings);
void WriteJOTFOPISubsitution(const Dictionary* settings);
void WriteJOTFOPIPreScan(const Dictionary* settings);
void WriteJOTFAntiAliasing(const Dictionary* settings);
void WriteJOTFLightenDarken(const Dictionary* settings);
void WriteJOTFTonerSaver(const Dictionary* settings);
void WriteJOTFOutputOrder(const Dictionary* settings);
void WriteJOTFPrinterEmulation(const Dictionary* settings);
void WriteJOTFImageRotation(const Dictionary* settings);
void WriteJOTFOutputColor(const Dictionary* settings);
// Given the job's image-shift dictionary.
void WriteJOTFImageShift(const Dictionary* imageShift);

int WriteJotfResolution(const JotfSink* sink, std::int32_t crossFeed, std::int32_t feedDirection);
int WriteJotfImageShift(const JotfSink* sink, long x1, long x2, long y1, long y2);

// ---- Job notes, name and user, accounting, pages (jotf_notes.cpp) -------------------
void WriteJOTFJobNotes(const Dictionary* settings);
void WriteJOTFJobNameAndUser(const Dictionary* settings);
void WriteJOTFAccounting(const Dictionary* settings);
void WriteJOTFPagesToPrint(const Dictionary* settings);

// A text element in three pieces (start tag, text, end tag and line feed),
// so that a note of any length is written whole.
int WriteJotfJobNotes(const JotfSink* sink, const char* attribute, const char* text);
// Texts are written as given: not escaped, at most 79 bytes each.
int WriteJotfAccounting(const JotfSink* sink, const char* userId, const char* accountId);
int WriteJotfPageRanges(const JotfSink* sink, long lower, long upper);

// Accounting ids are cut to this many bytes.
inline constexpr std::size_t kAccountingIdBytes = 79;

// ---- Finishing (jotf_finishing.cpp) ---------------------------------------------------
struct FINISHINGDATA {
  std::int32_t staple = -1;
  std::int32_t fold = -1;
  std::int32_t punch = -1;
  std::int32_t punchHoles = -1;
  std::optional<std::string> templateName = std::nullopt;  // escaped
};

int WriteJotfFinishing(const JotfSink* sink, const FINISHINGDATA* finishing);
// Reads the finishing entries, writes slip sheets, the finishing and the offset.
void WriteJOTFFinishing(const Dictionary* settings);
void WriteJOTFOffset(const Dictionary* settings);
// Fills the record from the finishing entries of the settings.
void FillFinishingData(FINISHINGDATA* finishing, const Dictionary* settings);
// The staple code of a staple entry's value, or -1.
std::int32_t JotfStapleCodeForValue(std::int32_t value);

// ---- Saved job (jotf_saved_job.cpp) ---------------------------------------------------
struct JOBTYPEDATA {
  std::int32_t disposition = 0;         // 0 none, 1 hold, 2 save only, 3 print and save, 4 nothing
  std::int32_t format = -1;             // 0..4
  std::optional<std::string> saveName;  // escaped
  std::optional<std::string> saveLocation;  // escaped
};

// jobType: the "com.zorva.print.JobType" dictionary; settings: the whole
// settings (for the job name).
void FillJobTypeData(JOBTYPEDATA* data, const Dictionary* jobType, const Dictionary* settings);
int WriteJotfJobTypes(const JotfSink* sink, const JOBTYPEDATA* data);
void WriteJOTFJobType(const Dictionary* settings);

// ---- Background forms (jotf_forms.cpp) ------------------------------------------------
void WriteJOTFBackgroundForms(const Dictionary* settings);

}  // namespace zorva

// Finishing: which staple, fold and punch the finishing menu's choice takes
// from the dialogs' values, the `finishings` set they become, slip sheets and
// offset. The finishing printer formats every line into one buffer; a code
// its lists do not name leaves the buffer as it was, so the line before is
// written again. Servers in the field are matched to that output, so it stays.
#include <string>

#include "core/ticket_keys.h"
#include "jobticket/jotf_commands.h"
#include "jobticket/jotf_finishing.h"
#include "jobticket/jotf_job_attributes.h"
#include "jobticket/jotf_maps.h"
#include "jobticket/jotf_read.h"

namespace zorva {

namespace {

using jotf::ReadInt32;
using jotf::ReadInt32Or;

std::int32_t Map(JotfCodeMap map, std::int32_t code) {
  return JotfMapCode(map, code);
}

const FinishingChoice* ChoiceFor(std::int32_t option) {
  return FindFinishingChoice(option);
}

std::int32_t StapleFrom(const Dictionary* settings, std::string_view key) {
  if (key != kAnyStaple) return JotfStapleCodeForValue(ReadInt32Or(settings, key, 0));
  for (std::string_view k :
       {tkey::kFinishingStaple1, tkey::kFinishingStaple2, tkey::kFinishingStapleCenter}) {
    const std::int32_t code = JotfStapleCodeForValue(ReadInt32Or(settings, k, 0));
    if (code != -1) return code;
  }
  return -1;
}

// Fold, bind and booklet values are the fold codes themselves; 0 is none.
std::int32_t FoldFrom(const Dictionary* settings, std::string_view key) {
  const std::int32_t value = ReadInt32Or(settings, key, 0);
  return value > 0 ? value : -1;
}

void FillFromChoice(FINISHINGDATA* f, const FinishingChoice& c, const Dictionary* settings) {
  if (!c.stapleKey.empty()) f->staple = StapleFrom(settings, c.stapleKey);
  if (!c.foldKey.empty()) f->fold = FoldFrom(settings, c.foldKey);
  if (c.punch) {
    f->punch = Map(JotfPunchValueMap, ReadInt32Or(settings, tkey::kFinishingHolePunch, 0));
    f->punchHoles = c.holes != 0 ? c.holes
                                 : Map(JotfHoleCountMap,
                                       ReadInt32Or(settings, tkey::kFinishingHolePunchOptions, 0));
  }
  if (c.custom) {
    std::optional<std::string> name = jotf::ReadEscaped(settings, tkey::kFinishingCustom);
    if (name && !name->empty()) f->templateName = std::move(name);
  }
}

void Emit(const JotfSink* sink, const std::string& buffer) {
  JotfWriteNoLength(sink, buffer.c_str());
}

// Formats the value line when the code is listed; the buffer is written
// either way.
void EmitValue(const JotfSink* sink, std::string& buffer, JotfCodeMap enums, std::int32_t code) {
  const std::int32_t value = Map(enums, code);
  if (value != -1) JotfFormatInto(buffer, "\t\t\t<value syntax=\"enum\">%d</value>\n", value);
  Emit(sink, buffer);
}

void WriteTemplate(const JotfSink* sink, std::string& buffer, const std::string& name) {
  Emit(sink, buffer = "\t\t<finishings-col syntax=\"collection\">\n");
  JotfFormatInto(buffer,
                 "\t\t\t<finishing-template syntax=\"name\" "
                 "xml:space=\"preserve\">%s</finishing-template>\n",
                 name.c_str());
  Emit(sink, buffer);
  Emit(sink, buffer = "\t\t</finishings-col>\n");
}

}  // namespace

std::int32_t JotfStapleCodeForValue(std::int32_t value) {
  return Map(JotfStapleValueMap, value);
}

int WriteJotfFinishing(const JotfSink* sink, const FINISHINGDATA* f) {
  std::string buffer;
  if (f->templateName) {
    WriteTemplate(sink, buffer, *f->templateName);
    return 0;
  }
  if (f->staple == -1 && f->fold == -1 && f->punch == -1) return 0;
  Emit(sink, buffer = "\t\t<finishings syntax=\"1setOf\">\n");
  if (f->staple != -1) EmitValue(sink, buffer, JotfStapleEnumMap, f->staple);
  if (f->fold != -1) EmitValue(sink, buffer, JotfFoldEnumMap, f->fold);
  if (f->punch != -1) {
    EmitValue(sink, buffer, JotfPunchEnumMap, f->punch);
    const std::int32_t holes = Map(JotfPunchHoleEnumMap, f->punchHoles);
    if (holes != -1) {
      JotfFormatInto(buffer, "\t\t\t<value syntax=\"enum\">%d</value>\n", holes);
    } else {
      buffer.clear();
    }
    Emit(sink, buffer);
  }
  Emit(sink, buffer = "\t\t</finishings>\n");
  return 0;
}

void FillFinishingData(FINISHINGDATA* finishing, const Dictionary* settings) {
  *finishing = FINISHINGDATA{};
  const FinishingChoice* choice = ChoiceFor(ReadInt32Or(settings, tkey::kFinishingOptions, 0));
  if (choice) FillFromChoice(finishing, *choice, settings);
}

void WriteJOTFOffset(const Dictionary* settings) {
  const std::int32_t offset = ReadInt32Or(settings, tkey::kFinishingOffset, 0);
  if (offset >= 2 && offset <= 5) WriteJotfCommands(&writeData, kJotfJobOffset, offset - 2);
  if (ReadInt32Or(settings, tkey::kFinishingOffsetEnableSubset, 0) == 0) return;
  if (const auto pages = ReadInt32(settings, tkey::kFinishingOffsetPagesPerSubset)) {
    WriteJotfCommands(&writeData, kJotfPagesPerSubset, *pages);
  }
}

void WriteJOTFFinishing(const Dictionary* settings) {
  if (ReadInt32(settings, tkey::kFinishingSlipSheet) == 2) {
    WriteJotfCommands(&writeData, kJotfSeparatorSheets, 0);
  }
  FINISHINGDATA finishing;
  FillFinishingData(&finishing, settings);
  WriteJotfFinishing(&writeData, &finishing);
  WriteJOTFOffset(settings);
}

}  // namespace zorva

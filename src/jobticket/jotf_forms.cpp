// Background forms: merging the job with a form kept on the printer
// (`forms-col`), or saving the job as a new form (`form-save`).
#include <climits>

#include "core/ticket_keys.h"
#include "jobticket/jotf_job_attributes.h"
#include "jobticket/jotf_read.h"
#include "jobticket/jotf_special_pages.h"

namespace zorva {

namespace {

// "UseExistingForm": 2 merges with "MergeWithString", 3 saves the job as
// the form "NewFormString"; any other choice uses no form.
constexpr std::int32_t kMergeWithExistingForm = 2;
constexpr std::int32_t kCreateNewForm = 3;
constexpr std::int32_t kDefaultCyclePages = 2;

int Precision(const std::string& s) {
  return s.size() > INT_MAX ? INT_MAX : static_cast<int>(s.size());
}

void WriteMerge(const JotfSink* sink, const Dictionary* forms, const std::string& name) {
  ImageShiftSelections shift;
  FillImageShift(forms, &shift);
  JotfWrite(sink, "\t\t<forms-col syntax=\"1setOf\">\n");
  JotfWrite(sink, "\t\t\t<value syntax=\"collection\">\n");
  JotfPrintf(sink, "\t\t\t\t<form-name syntax=\"name\" xml:space=\"preserve\">%.*s</form-name>\n",
             Precision(name), name.c_str());
  JotfPrintf(sink, "\t\t\t\t<form-cycle-start syntax=\"integer\">%d</form-cycle-start>\n",
             jotf::ReadInt32Or(forms, tkey::kCyclePages, kDefaultCyclePages));
  JotfPrintf(sink, "\t\t\t\t<forms-x-image-shift syntax=\"integer\">%d</forms-x-image-shift>\n",
             shift.x1);
  JotfPrintf(sink, "\t\t\t\t<forms-y-image-shift syntax=\"integer\">%d</forms-y-image-shift>\n",
             shift.y1);
  JotfWrite(sink, "\t\t\t</value>\n");
  JotfWrite(sink, "\t\t</forms-col>\n");
}

void WriteSave(const JotfSink* sink, const std::string& name) {
  JotfWrite(sink, "\t\t<form-save syntax=\"collection\">\n");
  JotfWrite(sink,
            "\t\t\t<form-save-disposition syntax=\"keyword\">save-only</form-save-disposition>\n");
  JotfWrite(sink, "\t\t\t<form-save-info syntax=\"1setOf\">\n");
  JotfWrite(sink, "\t\t\t\t<value syntax=\"collection\">\n");
  JotfWrite(sink,
            "\t\t\t\t\t<form-save-location syntax=\"uri\">file:///form-repository/"
            "</form-save-location>\n");
  JotfPrintf(sink,
             "\t\t\t\t\t<form-save-name syntax=\"name\" "
             "xml:space=\"preserve\">%.*s</form-save-name>\n",
             Precision(name), name.c_str());
  JotfWrite(sink,
            "\t\t\t\t\t<form-save-format syntax=\"mimeMediaType\">application/X-single-page-tiff"
            "</form-save-format>\n");
  JotfWrite(sink, "\t\t\t\t</value>\n");
  JotfWrite(sink, "\t\t\t</form-save-info>\n");
  JotfWrite(sink, "\t\t</form-save>\n");
}

}  // namespace

void WriteJOTFBackgroundForms(const Dictionary* settings) {
  const Dictionary* forms = jotf::ReadDictionary(settings, tkey::kBackgroundForms);
  const std::int32_t choice = jotf::ReadInt32Or(forms, tkey::kUseExistingForm, 1);
  if (choice == kMergeWithExistingForm) {
    if (const auto name = jotf::ReadEscaped(forms, tkey::kMergeWithString)) {
      WriteMerge(&writeData, forms, *name);
    }
  } else if (choice == kCreateNewForm) {
    if (const auto name = jotf::ReadEscaped(forms, tkey::kNewFormString)) {
      WriteSave(&writeData, *name);
    }
  }
}

}  // namespace zorva

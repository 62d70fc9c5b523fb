// Fuzz target for job-ticket import: any bytes as a JOTF document, read
// strictly and in recovery mode, through the bundled device profile. Nothing
// may crash or leak, and whatever is read must be a settings dictionary the
// summary and the writer can use again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "jobticket/device_profile.h"
#include "jobticket/jotf_export.h"
#include "jobticket/jotf_import.h"
#include "jobticket/jotf_summary.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  zorva::ZDPInitialize();
  // Without the profile import reads nothing, and the run would prove little.
  if (!zorva::ZDPIsLoaded()) std::abort();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  for (const bool recover : {false, true}) {
    zorva::Dictionary settings;
    const zorva::Status status =
        zorva::JOTFImportDocumentText(text, &settings, {.recover = recover});
    if (status != zorva::kNoErr && !settings.empty()) std::abort();  // nothing added on refusal
    zorva::SummaryLines lines;
    zorva::buildSummaryText(settings, lines);
    settings.set("com.zorva.print.JOTFOptions",
                 zorva::Value(zorva::Dictionary{{"JOTFOptionAll", zorva::Value(true)}}));
    (void)zorva::JOTFDocumentText(settings);
  }
  return 0;
}

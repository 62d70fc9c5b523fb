// The saved-job disposition: hold, save only, print and save, or none, with
// where and in which format the printer keeps the job.
#include "core/ticket_keys.h"
#include "jobticket/jotf_job_attributes.h"
#include "jobticket/jotf_maps.h"
#include "jobticket/jotf_read.h"

namespace zorva {

namespace {

using jotf::ReadInt32Or;

constexpr std::string_view kDefaultSaveLocation = "file:///job-repository/";

std::int32_t DispositionFor(const Dictionary* jobType) {
  switch (ReadInt32Or(jobType, tkey::kJobTypeJobType, 1)) {
    case 2:
      return 1;
    case 3:
      return ReadInt32Or(jobType, tkey::kJobTypeSaveDisposition, kUnset) == 2 ? 3 : 2;
    case 4:
      return 3;
    case 9:
      return 4;
    default:
      return 0;
  }
}

void WriteDispositionStart(const JotfSink* sink, const char* disposition) {
  JotfWrite(sink, "\t\t<job-save-disposition syntax=\"collection\">\n");
  JotfPrintf(sink, "\t\t\t<save-disposition syntax=\"keyword\">%s</save-disposition>\n",
             disposition);
}

void WriteSaveInfo(const JotfSink* sink, const JOBTYPEDATA* data) {
  JotfWrite(sink, "\t\t\t<save-info syntax=\"1setOf\">\n");
  JotfWrite(sink, "\t\t\t\t<value syntax=\"collection\">\n");
  JotfPrintf(sink, "\t\t\t\t\t<save-location syntax=\"uri\">%s</save-location>\n",
             data->saveLocation ? data->saveLocation->c_str() : "");
  JotfPrintf(sink, "\t\t\t\t\t<save-name syntax=\"name\" xml:space=\"preserve\">%s</save-name>\n",
             data->saveName ? data->saveName->c_str() : "");
  // Format codes count from 0, the ticket's "MediaType" from 1.
  if (const char* format = JotfKeywordFor(JotfSaveFormatMap, data->format + 1)) {
    JotfPrintf(
        sink,
        "\t\t\t\t\t<save-document-format syntax=\"mimeMediaType\">%s</save-document-format>\n",
        format);
  }
  JotfWrite(sink, "\t\t\t\t</value>\n");
  JotfWrite(sink, "\t\t\t</save-info>\n");
}

}  // namespace

void FillJobTypeData(JOBTYPEDATA* data, const Dictionary* jobType, const Dictionary* settings) {
  *data = JOBTYPEDATA{};
  data->disposition = DispositionFor(jobType);
  const std::int32_t mediaType = ReadInt32Or(jobType, tkey::kJobTypeMediaType, 1);
  data->format = (mediaType >= 1 && mediaType <= 5) ? mediaType - 1 : -1;
  data->saveName = jotf::ReadTrue(jobType, tkey::kJobTypeUseJobName)
                       ? jotf::ReadEscaped(settings, tkey::kPMJobName)
                       : jotf::ReadEscaped(jobType, tkey::kJobTypeSavedJobName);
  data->saveLocation = jotf::ReadEscaped(jobType, tkey::kJobTypeSavedJobLocation);
  if (!data->saveLocation) data->saveLocation = std::string(kDefaultSaveLocation);
}

int WriteJotfJobTypes(const JotfSink* sink, const JOBTYPEDATA* data) {
  switch (data->disposition) {
    case 0:
      WriteDispositionStart(sink, JotfKeywordFor(JotfSaveDispositionMap, 0));
      break;
    case 1:
      // No collection around it, and three tabs deep: the server reads it so.
      JotfWrite(sink, "\t\t\t<job-hold-until syntax=\"keyword\">indefinite</job-hold-until>\n");
      return 0;
    case 2:
    case 3:
      WriteDispositionStart(sink, JotfKeywordFor(JotfSaveDispositionMap, data->disposition));
      WriteSaveInfo(sink, data);
      break;
    default:
      return 0;
  }
  JotfWrite(sink, "\t\t</job-save-disposition>\n");
  return 0;
}

void WriteJOTFJobType(const Dictionary* settings) {
  const Dictionary* jobType = jotf::ReadDictionary(settings, tkey::kJobType);
  if (!jobType) return;
  JOBTYPEDATA data;
  FillJobTypeData(&data, jobType, settings);
  WriteJotfJobTypes(&writeData, &data);
}

}  // namespace zorva

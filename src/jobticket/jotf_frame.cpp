// The document frame and the section order. Which sections run depends only
// on which option keys are present, never on their values.
#include "jobticket/jotf_frame.h"

#include <array>

#include "core/ticket_keys.h"
#include "jobticket/jotf_color.h"
#include "jobticket/jotf_job_attributes.h"
#include "jobticket/jotf_media.h"
#include "jobticket/jotf_special_pages.h"

namespace zorva {

namespace {

constexpr std::array<const char*, 6> kDocumentTypes = {
    "jotf-v02020.dtd", "jotf-v02021.dtd", "jotf-v02022.dtd",
    "jotf-v02023.dtd", "jotf-v02024.dtd", "jotf-v02025.dtd",
};

constexpr const char* kProlog = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
constexpr const char* kRoot = "<jotf version=\"1.0\" xml:lang=\"en-US\" cpss-version=\"2.01\">\n";

struct Sections {
  bool all = false;
  bool covers = false;
  bool inserts = false;
  bool exceptions = false;
  bool full = false;
};

Sections SectionsFor(const Dictionary& options, const Dictionary& settings) {
  Sections s;
  s.all = options.contains(tkey::kOptionAll);
  s.covers = options.contains(tkey::kOptionCovers);
  s.inserts = options.contains(tkey::kOptionInserts);
  s.exceptions = options.contains(tkey::kOptionExceptions);
  s.full =
      s.all ||
      (s.covers && (settings.contains(tkey::kFrontCover) || settings.contains(tkey::kBackCover))) ||
      (s.inserts && settings.contains(tkey::kInsertList)) ||
      (s.exceptions && settings.contains(tkey::kExceptionList));
  return s;
}

// The settings entry as a dictionary, for the writers given one.
const Dictionary* Entry(const Dictionary& settings, std::string_view key) {
  return settings.getDictionary(key);
}

// The colour and image writers, in the order the printer's server expects.
void WriteImageSections(const Dictionary& settings) {
  WriteJOTFHighlightColor(&settings);
  if (const Dictionary* shift = Entry(settings, tkey::kImageShiftJob)) {
    WriteJOTFImageShift(shift);
  }
  if (const Dictionary* highlight = Entry(settings, tkey::kHighlightColorOptionsJob)) {
    WriteJOTFHighlightColor(highlight);
  }
  if (const Dictionary* color = Entry(settings, tkey::kFullColorOptions)) {
    WriteJOTFFullColorOptions(color);
  }
}

void WriteJobSections(const Dictionary& settings) {
  WriteJOTFFinishing(&settings);
  WriteJOTFJobNotes(&settings);
  WriteJOTFJobType(&settings);
  WriteJOTFDuplex(&settings);
  WriteJOTFOutputDestination(&settings);
  WriteJOTFResolution(&settings);
  WriteImageSections(settings);
  WriteJOTFOPISubsitution(&settings);
  WriteJOTFOPIPreScan(&settings);
  WriteJOTFAntiAliasing(&settings);
  WriteJOTFHalftone(&settings);
  WriteJOTFLightenDarken(&settings);
  WriteJOTFTonerSaver(&settings);
  WriteJOTFOutputOrder(&settings);
  WriteJOTFPrinterEmulation(&settings);
  WriteJOTFImageRotation(&settings);
  WriteJOTFOutputColor(&settings);
  WriteJOTFBackgroundForms(&settings);
  WriteJOTFAccounting(&settings);
  WriteJOTFPagesToPrint(&settings);
}

void WriteSpecialPageSections(const Dictionary& settings, const Sections& s) {
  if (s.all || s.covers) {
    WriteJOTFFrontCover(&settings);
    WriteJOTFBackCover(&settings);
  }
  if (s.all || s.inserts) WriteJOTFInserts(&settings);
  if (s.all || s.exceptions) WriteJOTFExceptions(&settings);
}

}  // namespace

int WriteJotfHeader(const JotfSink* sink, int documentType) {
  std::string text = kProlog;
  if (documentType >= 0 && static_cast<std::size_t>(documentType) < kDocumentTypes.size()) {
    text += "<!DOCTYPE jotf SYSTEM \"";
    text += kDocumentTypes[static_cast<std::size_t>(documentType)];
    text += "\">\n";
  }
  text += kRoot;
  JotfWrite(sink, text.c_str());
  return 0;
}

int WriteJotfOpAttrib(const JotfSink* sink, int mode, const char* jobName, const char* userName) {
  if (mode == 1) {
    JotfPrintf(sink,
               "\t\t<job-recipient-name syntax=\"name\" "
               "xml:space=\"preserve\">%s</job-recipient-name>\n",
               userName ? userName : "");
    return 0;
  }
  if (mode != 0) return 0;
  JotfWrite(sink, "\t<jotf-operation-attributes>\n");
  JotfPrintf(sink, "\t\t<job-name syntax=\"name\" xml:space=\"preserve\">%s</job-name>\n",
             jobName ? jobName : "");
  JotfPrintf(sink,
             "\t\t<requesting-user-name syntax=\"name\" "
             "xml:space=\"preserve\">%s</requesting-user-name>\n",
             userName ? userName : "");
  JotfWrite(sink,
            "\t\t<document-format syntax=\"mimeMediaType\">application/postscript"
            "</document-format>\n");
  JotfWrite(sink, "\t</jotf-operation-attributes>\n");
  return 0;
}

int WriteJotfJobAttribStart(const JotfSink* sink) {
  JotfWrite(sink, "\t<job-template-attributes>\n");
  return 0;
}

int WriteJotfJobAttribEnd(const JotfSink* sink) {
  JotfWrite(sink, "\t</job-template-attributes>\n");
  return 0;
}

int WriteJotfTrailer(const JotfSink* sink) {
  JotfWrite(sink, "</jotf>");
  return 0;
}

void WriteJOTF(std::FILE* out, const Dictionary* settings) {
  const Dictionary* options = settings ? settings->getDictionary(tkey::kOptions) : nullptr;
  if (!options) return;
  jotf_ofp = out;
  const Sections s = SectionsFor(*options, *settings);
  if (s.full) WriteJotfHeader(&writeData, kJotfDocumentType);
  if (s.all) WriteJOTFJobNameAndUser(settings);
  if (s.full) WriteJotfJobAttribStart(&writeData);
  if (s.all) WriteJOTFJobLevelStock(settings);
  WriteSpecialPageSections(*settings, s);
  if (s.all) WriteJobSections(*settings);
  if (s.full) {
    WriteJotfJobAttribEnd(&writeData);
    WriteJotfTrailer(&writeData);
  }
}

}  // namespace zorva

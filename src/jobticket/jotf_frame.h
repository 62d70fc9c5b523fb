// The job-ticket document: its one entry point WriteJOTF, the prolog and
// root, the two attribute groups, which sections the options ask for and
// the fixed order in which the section writers run.
#pragma once

#include <cstdio>

#include "core/value.h"
#include "jobticket/jotf_sink.h"

namespace zorva {

// The document type WriteJOTF declares (jotf-v02025.dtd).
inline constexpr int kJotfDocumentType = 5;

// Writes the job ticket of `settings` (the ticket's "com.zorva" items) to
// `out`. Nothing at all without a "com.zorva.print.JOTFOptions" dictionary.
// Sets jotf_ofp to `out`; never opens, flushes or closes the stream.
void WriteJOTF(std::FILE* out, const Dictionary* settings);
inline void WriteJOTF(std::FILE* out, const Dictionary& settings) {
  WriteJOTF(out, &settings);
}

// Prolog and root start tag in one write; types 0 to 5 name
// jotf-v02020.dtd to jotf-v02025.dtd, any other leaves the document type out.
int WriteJotfHeader(const JotfSink* sink, int documentType);

// Mode 0: the operation-attribute group with the job and user names (both
// already escaped). Mode 1: only a `job-recipient-name` line with userName.
int WriteJotfOpAttrib(const JotfSink* sink, int mode, const char* jobName, const char* userName);

int WriteJotfJobAttribStart(const JotfSink* sink);
int WriteJotfJobAttribEnd(const JotfSink* sink);
// Closes the root, with no line feed after it.
int WriteJotfTrailer(const JotfSink* sink);

}  // namespace zorva

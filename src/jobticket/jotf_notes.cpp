// Job notes, the job name and user, accounting and the pages to print.
// Notes go out in pieces so that a text of any length is written whole; the
// accounting ids go out as given (not escaped, cut to 79 bytes), because the
// accounting server matches them byte for byte.
#include "core/ticket_keys.h"
#include "jobticket/jotf_frame.h"
#include "jobticket/jotf_job_attributes.h"
#include "jobticket/jotf_read.h"

namespace zorva {

namespace {

using jotf::ReadEscaped;

constexpr std::int32_t kAccountingEnabled = 3;

void WriteNote(const Dictionary* settings, std::string_view key, const char* attribute) {
  if (const std::optional<std::string> text = ReadEscaped(settings, key)) {
    WriteJotfJobNotes(&writeData, attribute, text->c_str());
  }
}

std::string AccountingId(const Dictionary* settings, std::string_view key) {
  const std::string* id = jotf::ReadString(settings, key);
  return id ? jotf::CutBytes(jotf::AsUtf8(*id), kAccountingIdBytes) : std::string();
}

}  // namespace

int WriteJotfJobNotes(const JotfSink* sink, const char* attribute, const char* text) {
  JotfPrintf(sink, "\t\t<%s syntax=\"text\" xml:space=\"preserve\">", attribute);
  JotfWrite(sink, text);
  JotfPrintf(sink, "</%s>\n", attribute);
  return 0;
}

void WriteJOTFJobNotes(const Dictionary* settings) {
  WriteNote(settings, tkey::kJobNotesMessage, "job-message-to-operator");
  if (const std::optional<std::string> recipient =
          ReadEscaped(settings, tkey::kJobNotesRecipient)) {
    WriteJotfOpAttrib(&writeData, 1, nullptr, recipient->c_str());
  }
  WriteNote(settings, tkey::kJobNotesSheetMessage, "job-sheet-message");
  WriteNote(settings, tkey::kJobNotesAdditionalInfo, "job-accounting-data");
}

void WriteJOTFJobNameAndUser(const Dictionary* settings) {
  const std::string_view nameKey = jotf::ReadTrue(settings, tkey::kJobNotesUseJobName)
                                       ? tkey::kPMJobName
                                       : tkey::kJobNotesJobName;
  const std::optional<std::string> name = ReadEscaped(settings, nameKey);
  const std::optional<std::string> user = ReadEscaped(settings, tkey::kJobNotesSenderName);
  if (name && user) WriteJotfOpAttrib(&writeData, 0, name->c_str(), user->c_str());
}

int WriteJotfAccounting(const JotfSink* sink, const char* userId, const char* accountId) {
  std::string line;
  JotfWriteNoLength(sink, JotfFormatInto(line,
                                         "\t\t<job-accounting-user-id syntax=\"name\" "
                                         "xml:space=\"preserve\">%s</job-accounting-user-id>\n",
                                         userId));
  // The end tag does not match the start tag; the accounting server expects
  // exactly this line.
  JotfWriteNoLength(sink, JotfFormatInto(line,
                                         "\t\t<job-account-id syntax=\"name\" "
                                         "xml:space=\"preserve\">%s</job-accounting-id>\n",
                                         accountId));
  return 0;
}

void WriteJOTFAccounting(const Dictionary* settings) {
  if (jotf::ReadInt32(settings, tkey::kAccountingOn) != kAccountingEnabled) return;
  const std::string user = AccountingId(settings, tkey::kAccountingUserId);
  const std::string account = AccountingId(settings, tkey::kAccountingAccountId);
  WriteJotfAccounting(&writeData, user.c_str(), account.c_str());
}

int WriteJotfPageRanges(const JotfSink* sink, long lower, long upper) {
  std::string line;
  JotfWriteNoLength(sink, "\t\t<page-ranges syntax=\"1setOf\">\n");
  JotfWriteNoLength(sink, "\t\t\t<value syntax=\"rangeOfInteger\">\n");
  JotfWriteNoLength(
      sink,
      JotfFormatInto(line, "\t\t\t\t<lower-bound syntax=\"integer\">%ld</lower-bound>\n", lower));
  JotfWriteNoLength(
      sink,
      JotfFormatInto(line, "\t\t\t\t<upper-bound syntax=\"integer\">%ld</upper-bound>\n", upper));
  JotfWriteNoLength(sink, "\t\t\t</value>\n");
  JotfWriteNoLength(sink, "\t\t</page-ranges>\n");
  return 0;
}

void WriteJOTFPagesToPrint(const Dictionary* settings) {
  if (jotf::ReadInt32(settings, tkey::kPagesToPrintSelected) != 1) return;
  std::int32_t from = jotf::ReadInt32Or(settings, tkey::kPagesToPrintFrom, 0);
  std::int32_t to = jotf::ReadInt32Or(settings, tkey::kPagesToPrintTo, 0);
  if (from < 1 || to < 1) return;
  if (from > to) std::swap(from, to);
  WriteJotfPageRanges(&writeData, from, to);
}

}  // namespace zorva

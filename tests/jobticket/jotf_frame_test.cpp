// The document frame: the sink, the prolog and its document types, the
// options gating and the escaping every writer applies.
#include <gtest/gtest.h>

#include "jobticket/jotf_export.h"
#include "jobticket/jotf_frame.h"
#include "jobticket/jotf_job_attributes.h"
#include "jotf_test_util.h"

namespace zorva::test {
namespace {

Dictionary WithOptions(Dictionary options, Dictionary settings = {}) {
  settings.set("com.zorva.print.JOTFOptions", Value(std::move(options)));
  return settings;
}

Dictionary InsertList() {
  return Dictionary{{"com.zorva.print.SpecialPages.InsertList",
                     Array{Value(Dictionary{{"StartPage", Value(2)}})}}};
}

TEST(JotfSink, WritesTheWholeTextWhateverTheLength) {
  const std::string text = Captured([] {
    writeData.write(writeData.handle, "abc", 0);
    writeData.write(writeData.handle, "defgh", 2);
  });
  EXPECT_EQ(text, "abcdefgh");
  EXPECT_EQ(writeData.handle, nullptr);
}

TEST(JotfSink, WithNoStreamNothingHappens) {
  std::FILE* before = jotf_ofp;
  jotf_ofp = nullptr;
  EXPECT_EQ(DevWriteJotf(nullptr, "lost", 4), 0);
  jotf_ofp = before;
}

TEST(JotfSink, FormatterGrowsToAnyLength) {
  std::string buffer;
  const std::string name(100000, 'n');
  EXPECT_EQ(std::string(JotfFormatInto(buffer, "<%s>", name.c_str())), "<" + name + ">");
  EXPECT_EQ(std::string(JotfFormatInto(buffer, "%d", 7)), "7");
}

TEST(JotfEscaping, ReplacesTheFiveCharactersOnly) {
  EXPECT_EQ(XMLCreateStringByEscapingEntities("A&B <x>"), "A&amp;B &lt;x&gt;");
  EXPECT_EQ(XMLCreateStringByEscapingEntities("\"it's\""), "&quot;it&apos;s&quot;");
  EXPECT_EQ(XMLCreateStringByEscapingEntities("&amp; stays text"), "&amp;amp; stays text");
  EXPECT_EQ(XMLCreateStringByEscapingEntities("Zoë\tß"), "Zoë\tß");
  EXPECT_EQ(XMLCreateStringByEscapingEntities(""), "");
  const Dictionary ignored{{"amp", Value("and")}};
  EXPECT_EQ(XMLCreateStringByEscapingEntities("&", &ignored), "&amp;");
}

TEST(JotfHeader, DocumentTypesZeroToFive) {
  for (int type = 0; type <= 5; ++type) {
    RecordingSink r;
    EXPECT_EQ(WriteJotfHeader(&r.sink, type), 0);
    ASSERT_EQ(r.calls.size(), 1u) << "one write";
    EXPECT_EQ(r.calls[0].first,
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE jotf SYSTEM \"jotf-v0202" +
                  std::to_string(type) +
                  ".dtd\">\n<jotf version=\"1.0\" xml:lang=\"en-US\" cpss-version=\"2.01\">\n");
  }
}

TEST(JotfHeader, OtherTypesLeaveTheDocumentTypeOut) {
  for (int type : {6, -1, 1000}) {
    RecordingSink r;
    WriteJotfHeader(&r.sink, type);
    EXPECT_EQ(r.text(),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
              "<jotf version=\"1.0\" xml:lang=\"en-US\" cpss-version=\"2.01\">\n");
  }
}

TEST(JotfFrame, GroupsAndTrailer) {
  RecordingSink r;
  WriteJotfJobAttribStart(&r.sink);
  WriteJotfJobAttribEnd(&r.sink);
  WriteJotfTrailer(&r.sink);
  EXPECT_EQ(r.text(), "\t<job-template-attributes>\n\t</job-template-attributes>\n</jotf>");
}

TEST(JotfFrame, OperationAttributeModes) {
  RecordingSink group, recipient, other;
  WriteJotfOpAttrib(&group.sink, 0, "Job", "Ann");
  WriteJotfOpAttrib(&recipient.sink, 1, "Job", "Front desk");
  WriteJotfOpAttrib(&other.sink, 2, "Job", "Ann");
  EXPECT_EQ(group.text(),
            "\t<jotf-operation-attributes>\n"
            "\t\t<job-name syntax=\"name\" xml:space=\"preserve\">Job</job-name>\n"
            "\t\t<requesting-user-name syntax=\"name\" "
            "xml:space=\"preserve\">Ann</requesting-user-name>\n"
            "\t\t<document-format syntax=\"mimeMediaType\">application/postscript"
            "</document-format>\n"
            "\t</jotf-operation-attributes>\n");
  EXPECT_EQ(recipient.text(),
            "\t\t<job-recipient-name syntax=\"name\" xml:space=\"preserve\">Front "
            "desk</job-recipient-name>\n");
  EXPECT_EQ(other.text(), "");
}

TEST(JotfFrame, NoOptionsDictionaryWritesNothing) {
  EXPECT_EQ(JOTFDocumentText(InsertList()), "");
  Dictionary notADictionary = InsertList();
  notADictionary.set("com.zorva.print.JOTFOptions", Value("JOTFOptionAll"));
  EXPECT_EQ(JOTFDocumentText(notADictionary), "");
}

TEST(JotfFrame, PartialOptionsWithoutTheirSectionsWriteNothing) {
  // Covers asked for, none in the ticket: the cover writers run and find nothing.
  EXPECT_EQ(JOTFDocumentText(WithOptions({{"JOTFOptionCovers", Value(true)}}, InsertList())), "");
  EXPECT_EQ(JOTFDocumentText(WithOptions({{"JOTFOptionExceptions", Value(true)}}, InsertList())),
            "");
  // An options dictionary with no known key: nothing either.
  EXPECT_EQ(JOTFDocumentText(WithOptions({{"Other", Value(true)}}, InsertList())), "");
}

TEST(JotfFrame, PresenceOfAnOptionCountsNotItsValue) {
  const std::string withFalse =
      JOTFDocumentText(WithOptions({{"JOTFOptionAll", Value(false)}}, Dictionary{}));
  const std::string withTrue =
      JOTFDocumentText(WithOptions({{"JOTFOptionAll", Value(true)}}, Dictionary{}));
  EXPECT_EQ(withFalse, withTrue);
  EXPECT_TRUE(withFalse.ends_with("\t</job-template-attributes>\n</jotf>")) << withFalse;
}

TEST(JotfFrame, SetsTheStreamAndLeavesItOpenAndSet) {
  std::FILE* out = std::tmpfile();
  ASSERT_NE(out, nullptr);
  WriteJOTF(out, WithOptions({{"JOTFOptionAll", Value(true)}}));
  EXPECT_EQ(jotf_ofp, out);
  // Still open: it can be written to, read back and closed by its owner.
  EXPECT_GE(std::fputs("!", out), 0);
  std::rewind(out);
  char head[6] = {};
  ASSERT_EQ(std::fread(head, 1, 5, out), 5u);
  EXPECT_STREQ(head, "<?xml");
  jotf_ofp = nullptr;
  std::fclose(out);
}

TEST(JotfFrame, LongNamesAndNotesAreWrittenWhole) {
  const std::string name(5000, 'j');
  const std::string note = std::string(4999, 'n') + "&";
  Dictionary settings = WithOptions({{"JOTFOptionAll", Value(true)}});
  settings.set("com.zorva.print.JobNotesJobName", Value(name));
  settings.set("com.zorva.print.JobNotesSenderName", Value("u"));
  settings.set("com.zorva.print.JobNotesMessage", Value(note));
  const std::string text = JOTFDocumentText(settings);
  EXPECT_NE(text.find(">" + name + "</job-name>\n"), std::string::npos);
  EXPECT_NE(text.find(">" + std::string(4999, 'n') + "&amp;</job-message-to-operator>\n"),
            std::string::npos);
  EXPECT_EQ(XmlProblem(text), "");
}

// The finishing, accounting and page-range writers pass a length of 0; every
// other writer passes the text's length.
TEST(JotfFrame, WhichWritersPassALengthOfZero) {
  RecordingSink r;
  FINISHINGDATA finishing;
  finishing.staple = 0;
  WriteJotfFinishing(&r.sink, &finishing);
  WriteJotfAccounting(&r.sink, "u", "a");
  WriteJotfPageRanges(&r.sink, 1, 2);
  ASSERT_FALSE(r.calls.empty());
  for (const auto& [text, length] : r.calls) EXPECT_EQ(length, 0) << text;

  RecordingSink other;
  WriteJotfHeader(&other.sink, 5);
  WriteJotfResolution(&other.sink, 600, 600);
  WriteJotfJobNotes(&other.sink, "job-sheet-message", "text");
  for (const auto& [text, length] : other.calls) {
    EXPECT_EQ(length, static_cast<int>(text.size())) << text;
  }
}

}  // namespace
}  // namespace zorva::test

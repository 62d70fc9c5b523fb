// The document frame: the sink, the prolog and its document types, the
// options gating and the escaping every writer applies.
#include <gtest/gtest.h>

#include "jobticket/jotf_export.h"
#include "jobticket/jotf_frame.h"
#include "jotf_test_util.h"

namespace zorva::test {
namespace {

Dictionary WithOptions(Dictionary options, Dictionary settings = {}) {
  settings.set("com.zorva.print.JOTFOptions", Value(std::move(options)));
  return settings;
}

TEST(JotfSink, WritesTheWholeTextWhateverTheLength) {
  const std::string text = Captured([] {
    writeData.write(writeData.handle, "abc", 0);
    writeData.write(writeData.handle, "defgh", 2);
  });
  EXPECT_EQ(text, "abcdefgh");
  EXPECT_EQ(writeData.handle, nullptr);
  // With no stream nothing happens.
  EXPECT_EQ(Captured([] {
              jotf_ofp = nullptr;
              EXPECT_EQ(DevWriteJotf(nullptr, "lost", 4), 0);
            }),
            "");
  // The formatter grows to any length.
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
  const Dictionary ignored{{"amp", Value("and")}};
  EXPECT_EQ(XMLCreateStringByEscapingEntities("&", &ignored), "&amp;");
}

// Types 0 to 5 name their document type in one write; others leave it out.
TEST(JotfHeader, DocumentTypes) {
  for (int type : {-1, 0, 3, 5, 6, 1000}) {
    RecordingSink r;
    EXPECT_EQ(WriteJotfHeader(&r.sink, type), 0);
    ASSERT_EQ(r.calls.size(), 1u) << type;
    const std::string doctype = type < 0 || type > 5 ? ""
                                                     : "<!DOCTYPE jotf SYSTEM \"jotf-v0202" +
                                                           std::to_string(type) + ".dtd\">\n";
    EXPECT_EQ(r.calls[0], "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + doctype +
                              "<jotf version=\"1.0\" xml:lang=\"en-US\" "
                              "cpss-version=\"2.01\">\n");
  }
}

// Mode 0 (the group) is in the goldens; mode 1 writes only the recipient.
TEST(JotfFrame, OperationAttributeModes) {
  RecordingSink recipient, other;
  WriteJotfOpAttrib(&recipient.sink, 1, "Job", "Front desk");
  WriteJotfOpAttrib(&other.sink, 2, "Job", "Ann");
  EXPECT_EQ(recipient.text(),
            "\t\t<job-recipient-name syntax=\"name\" xml:space=\"preserve\">Front "
            "desk</job-recipient-name>\n");
  EXPECT_EQ(other.text(), "");
}

TEST(JotfFrame, OptionsGateTheDocument) {
  const Dictionary inserts{{"com.zorva.print.SpecialPages.InsertList",
                            Array{Value(Dictionary{{"StartPage", Value(2)}})}}};
  Dictionary notADictionary = inserts;
  notADictionary.set("com.zorva.print.JOTFOptions", Value("JOTFOptionAll"));
  // No options, options that are not a dictionary, partial options whose
  // sections the ticket lacks, or no known option: nothing at all.
  for (const Dictionary& settings :
       {inserts, notADictionary, WithOptions({{"JOTFOptionCovers", Value(true)}}, inserts),
        WithOptions({{"JOTFOptionExceptions", Value(true)}}, inserts),
        WithOptions({{"Other", Value(true)}}, inserts)}) {
    EXPECT_EQ(JOTFDocumentText(settings), "");
  }
  // The presence of an option counts, not its value.
  const std::string withFalse = JOTFDocumentText(WithOptions({{"JOTFOptionAll", Value(false)}}));
  EXPECT_EQ(withFalse, JOTFDocumentText(WithOptions({{"JOTFOptionAll", Value(true)}})));
  EXPECT_TRUE(withFalse.ends_with("\t</job-template-attributes>\n</jotf>")) << withFalse;
}

// WriteJOTF sets the stream and leaves it set and open: Captured closes it.
TEST(JotfFrame, SetsTheStreamAndLeavesItOpenAndSet) {
  const std::string text = Captured([] {
    std::FILE* out = jotf_ofp;
    jotf_ofp = nullptr;
    WriteJOTF(out, WithOptions({{"JOTFOptionAll", Value(true)}}));
    EXPECT_EQ(jotf_ofp, out);
  });
  EXPECT_TRUE(text.starts_with("<?xml")) << text;
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

}  // namespace
}  // namespace zorva::test

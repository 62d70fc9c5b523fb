// Job-ticket import: the syntax classes and their checks, the name-syntax
// keywords, the placement of values, files that do not parse, the XML
// reader's safety, the path index against the literal search, and the merge.
#include <gtest/gtest.h>
#include <libxml/parser.h>

#include <functional>
#include <set>

#include "core/plist_io.h"
#include "core/ticket_keys.h"
#include "jobticket/device_profile.h"
#include "jobticket/jotf_import.h"
#include "jotf_test_util.h"
#include "support/test_support.h"

namespace zorva {
namespace {

std::string Document(const std::string& body, const std::string& operation = "") {
  std::string doc =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<!DOCTYPE jotf SYSTEM \"jotf-v02025.dtd\">\n"
      "<jotf version=\"1.0\" xml:lang=\"en-US\" cpss-version=\"2.01\">\n";
  if (!operation.empty()) {
    doc += "\t<jotf-operation-attributes>\n" + operation + "\t</jotf-operation-attributes>\n";
  }
  return doc + "\t<job-template-attributes>\n" + body + "\t</job-template-attributes>\n</jotf>";
}

std::string Element(const std::string& name, const std::string& syntax, const std::string& text) {
  return "\t\t<" + name + " syntax=\"" + syntax + "\">" + text + "</" + name + ">\n";
}

class JotfImportTest : public ::testing::Test {
 protected:
  void SetUp() override { ZDPInitialize(); }
  void TearDown() override { ZDPFinalize(); }

  static Dictionary Import(const std::string& text, Status expect = kNoErr) {
    Dictionary settings;
    EXPECT_EQ(JOTFImportDocumentText(text, &settings), expect);
    return settings;
  }
};

// One element per case: what it becomes, or nothing when the text is refused.
TEST_F(JotfImportTest, SyntaxClassesAndTheirChecks) {
  struct Case {
    std::string element;
    const char* key;
    std::optional<Value> expected;
  } cases[] = {
      // Keyword: by the keyword's text; an unknown keyword sets nothing.
      {Element("sides", "keyword", "two-sided-short-edge"), "com.zorva.print.FinishingDuplex",
       Value(3)},
      {Element("sides", "keyword", "two-sided-sideways"), "com.zorva.print.FinishingDuplex", {}},
      {Element("output-bin", "keyword", "top"), "com.zorva.print.FinishingOutputDestination",
       Value(2)},  // the first of the values written as "top"
      // The node's syntax must be one the feature has.
      {Element("sides", "name", "one-sided"), "com.zorva.print.FinishingDuplex", {}},
      {Element("toner-saver", "keyword", "none"), "com.zorva.print.TonerSaver", Value(false)},
      // Number: within Minimum and Maximum; not a number sets nothing.
      {Element("adjust-bw-darkness-value", "integer", "-5"), "com.zorva.print.LightenDarken",
       Value(-5)},
      {Element("adjust-bw-darkness-value", "integer", "6"), "com.zorva.print.LightenDarken", {}},
      {Element("adjust-bw-darkness-value", "integer", "2.5"), "com.zorva.print.LightenDarken", {}},
      {Element("adjust-bw-darkness-value", "integer", "99999999999"),
       "com.zorva.print.LightenDarken",
       {}},
      {Element("adjust-bw-darkness-value", "keyword", "3"), "com.zorva.print.LightenDarken", {}},
      // Name (and text, uri): the text as it stands, entities decoded.
      {Element("job-sheet-message", "text", "Tom &amp; Jerry &lt;3"),
       "com.zorva.print.JobNotesSheetMessage", Value("Tom & Jerry <3")},
      {Element("job-message-to-operator", "uri", " spaced "), "com.zorva.print.JobNotesMessage",
       Value(" spaced ")},
      {Element("job-recipient-name", "collection", "x"), "com.zorva.print.JobNotesRecipient", {}},
  };
  for (const Case& c : cases) {
    const Dictionary settings = Import(Document(c.element));
    const Value* got = settings.find(c.key);
    if (c.expected) {
      ASSERT_NE(got, nullptr) << c.element;
      EXPECT_EQ(*got, *c.expected) << c.element;
    } else {
      EXPECT_EQ(got, nullptr) << c.element;
    }
  }
}

// "Minimum", "Maximum" and "CharacterSet" are looked up in the syntax
// dictionary first, then in the feature's properties.
TEST_F(JotfImportTest, LimitsComeFromTheSyntaxThenTheProperties) {
  ZDPFinalize();
  test::TempDir dir;
  auto feature = [](const std::string& id, Dictionary props, Dictionary syntax) {
    props.set("ID", Value(id));
    props.set("JOTF", Value(true));
    return Value(Dictionary{{"Properties", Value(props)}, {"Syntax", Value(syntax)}});
  };
  const Dictionary features{
      {"LightenDarken", feature("LightenDarken", {{"Minimum", Value(0)}, {"Maximum", Value(10)}},
                                {{"Number", Value(Dictionary{{"Maximum", Value(5)}})}})},
      {"PagesPerSubset",
       feature("PagesPerSubset", {{"Maximum", Value(10)}}, {{"Number", Value(Dictionary{})}})},
      {"BannerMessage", feature("BannerMessage", {{"CharacterSet", Value("a-c")}},
                                {{"Name", Value(Dictionary{{"CharacterSet", Value("x-z")}})}})},
      {"RecipientName", feature("RecipientName", {{"CharacterSet", Value("a-c")}},
                                {{"Name", Value(Dictionary{})}})}};
  ASSERT_EQ(
      WritePropertyListFile(dir / "p.plist", Value(Dictionary{{"Features", Value(features)}})), 0);
  ASSERT_TRUE(ZDPInitializeFromFile(dir / "p.plist"));
  const auto subset = [](const char* n) {
    return "\t\t<pages-per-subset syntax=\"1setOf\">\n" + Element("value", "integer", n) +
           "\t\t</pages-per-subset>\n";
  };
  struct Case {
    std::string body;
    const char* key;
    bool accepted;
  } cases[] = {
      {Element("adjust-bw-darkness-value", "integer", "5"), "com.zorva.print.LightenDarken", true},
      {Element("adjust-bw-darkness-value", "integer", "7"), "com.zorva.print.LightenDarken", false},
      {Element("adjust-bw-darkness-value", "integer", "-1"), "com.zorva.print.LightenDarken",
       false},
      {subset("10"), "com.zorva.print.FinishingOffsetPagesPerSubset", true},
      {subset("11"), "com.zorva.print.FinishingOffsetPagesPerSubset", false},
      {Element("job-sheet-message", "text", "xyz"), "com.zorva.print.JobNotesSheetMessage", true},
      {Element("job-sheet-message", "text", "abc"), "com.zorva.print.JobNotesSheetMessage", false},
      {Element("job-recipient-name", "name", "cab"), "com.zorva.print.JobNotesRecipient", true},
      {Element("job-recipient-name", "name", "cad"), "com.zorva.print.JobNotesRecipient", false},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Import(Document(c.body)).contains(c.key), c.accepted) << c.body;
  }
}

TEST_F(JotfImportTest, NodeSyntaxClasses) {
  const std::string doc = Document(
      Element("a", "keyword", "") + Element("b", "mimeMediaType", "") + Element("c", "enum", "") +
      Element("d", "integer", "") + Element("e", "name", "") + Element("f", "uri", "") +
      Element("g", "text", "") + Element("h", "rangeOfInteger", "") + "\t\t<i/>\n");
  xmlDocPtr parsed =
      xmlReadMemory(doc.data(), static_cast<int>(doc.size()), nullptr, nullptr, XML_PARSE_NONET);
  ASSERT_NE(parsed, nullptr);
  const JotfPathIndex index(xmlDocGetRootElement(parsed));
  const std::pair<const char*, std::string_view> expected[] = {
      {"a", "Keyword"}, {"b", "Keyword"}, {"c", "Keyword"},     {"d", "Number"},      {"e", "Name"},
      {"f", "Name"},    {"g", "Name"},    {"h", "--Unknown--"}, {"i", "--Unknown--"},
  };
  for (const auto& [name, syntax] : expected) {
    EXPECT_EQ(
        JOTFImportGetNodeSyntax(index.find(std::string(".jotf.job-template-attributes.") + name)),
        syntax)
        << name;
  }
  EXPECT_EQ(JOTFImportGetNodeSyntax(nullptr), "--Unknown--");
  xmlFreeDoc(parsed);
}

TEST_F(JotfImportTest, CharacterSetRefusesTextOutsideIt) {
  struct Case {
    std::string name;
    bool accepted;
  } cases[] = {{"Dana Whitfield", true},
               {"J\xC3\xBCrgen", true},
               {"Euro \xE2\x82\xAC", false},
               {"tab\there", false}};
  for (const Case& c : cases) {
    const Dictionary settings =
        Import(Document("", Element("requesting-user-name", "name", c.name)));
    EXPECT_EQ(settings.contains("com.zorva.print.JobNotesSenderName"), c.accepted) << c.name;
  }
  EXPECT_TRUE(JotfInCharacterSet("a-z", "-az"));
  EXPECT_FALSE(JotfInCharacterSet("b", "a-"));
}

TEST_F(JotfImportTest, NamesStandingForKeywords) {
  auto stock = [](const std::string& members) {
    return "\t\t<media-col syntax=\"collection\">\n" + members + "\t\t</media-col>\n";
  };
  struct Case {
    std::string members;
    Dictionary expected;
  } cases[] = {
      {Element("media-color", "name", "custom3"), {{"Color", Value(17)}}},
      {Element("media-color", "name", "other"), {{"Color", Value(14)}}},
      {Element("media-color", "name", "Sea Blue"),
       {{"Color", Value(10)}, {"CustomColor", Value("Sea Blue")}}},
      {Element("media-type", "name", "Custom2"), {{"Type", Value(16)}}},
      {Element("media-type", "name", "Heavy Card"),
       {{"Type", Value(6)}, {"CustomType", Value("Heavy Card")}}},
      {Element("media-type", "keyword", "Custom2"), {}},  // only as a name
      {Element("media-pre-printed", "keyword", "letter-head"), {{"Type", Value(14)}}},
      {Element("media-recycled", "keyword", "standard"), {{"Type", Value(10)}}},
  };
  for (const Case& c : cases) {
    const Dictionary settings = Import(Document(stock(c.members)));
    const Dictionary* got = settings.getDictionary("com.zorva.print.JobLevelStock");
    EXPECT_EQ(got ? *got : Dictionary{}, c.expected) << c.members;
  }
}

TEST_F(JotfImportTest, StapleAndPunchTogetherDeriveMultipleFinishing) {
  const std::string finishings = "\t\t<finishings syntax=\"1setOf\">\n" +
                                 Element("value", "enum", "20") + Element("value", "enum", "93") +
                                 Element("value", "enum", "90") + "\t\t</finishings>\n";
  const Dictionary settings = Import(Document(finishings));
  EXPECT_EQ(settings, (Dictionary{{"com.zorva.print.FinishingStaple1Value", Value(5)},
                                  {"com.zorva.print.FinishingHolePunchValue", Value(32)},
                                  {"com.zorva.print.FinishingHolePunchOptions", Value(2)},
                                  {"com.zorva.print.FinishingOptions", Value(11)}}));
}

TEST_F(JotfImportTest, FinishingOptionKeyRules) {
  struct Case {
    Dictionary read;
    std::optional<std::int32_t> option;
  } cases[] = {
      {{{"com.zorva.print.FinishingStaple2Value", Value(10)}}, 3},
      {{{"com.zorva.print.FinishingStapleCenterValue", Value(26)}}, 4},
      {{{"com.zorva.print.FinishingHolePunchValue", Value(33)}}, 7},
      {{{"com.zorva.print.FinishingHolePunchValue", Value(33)},
        {"com.zorva.print.FinishingHolePunchOptions", Value(4)}},
       8},
      {{{"com.zorva.print.FinishingZFoldValue", Value(21)},
        {"com.zorva.print.FinishingStaple1Value", Value(5)}},
       11},
      // Bind and fold do not count towards multiple finishing.
      {{{"com.zorva.print.FinishingBindValue", Value(25)},
        {"com.zorva.print.FinishingStaple1Value", Value(5)}},
       2},
      {{{"com.zorva.print.BookletFoldStaple", Value(15)}}, 12},
      {{{"com.zorva.print.BookletFoldStaple", Value(14)}}, 14},
      {{{"com.zorva.print.FinishingFoldValue", Value(9)}}, 9},
      {{{"com.zorva.print.FinishingBindValue", Value(25)}}, 5},
      {{{"com.zorva.print.FinishingOptions", Value(13)},
        {"com.zorva.print.FinishingStaple1Value", Value(5)}},
       13},  // kept as a feature wrote it
      {{}, std::nullopt},
  };
  for (Case& c : cases) {
    Dictionary settings = c.read;
    ComputeFinishingOptionKey(&settings);
    const Value* option = settings.find("com.zorva.print.FinishingOptions");
    if (c.option) {
      ASSERT_NE(option, nullptr);
      EXPECT_EQ(*option, Value(*c.option));
    } else {
      EXPECT_EQ(option, nullptr);
    }
  }
}

TEST_F(JotfImportTest, OperationGroupAloneStillGivesNameAndSender) {
  const std::string doc = "<?xml version=\"1.0\"?>\n<jotf>\n\t<jotf-operation-attributes>\n" +
                          Element("job-name", "name", "Report") +
                          Element("requesting-user-name", "name", "Dana") +
                          "\t</jotf-operation-attributes>\n</jotf>";
  EXPECT_EQ(Import(doc), (Dictionary{{"com.zorva.print.JobNotesJobName", Value("Report")},
                                     {"com.zorva.print.JobNotesSenderName", Value("Dana")}}));
  // Elements outside their group are not read.
  EXPECT_TRUE(Import("<jotf>" + Element("sides", "keyword", "one-sided") + "</jotf>").empty());
}

TEST_F(JotfImportTest, HoldIsReadWhereTheWriterPutsItAndNested) {
  const std::string nested = "\t\t<job-save-disposition syntax=\"collection\">\n" +
                             Element("job-hold-until", "keyword", "indefinite") +
                             "\t\t</job-save-disposition>\n";
  for (const std::string& body : {Element("job-hold-until", "keyword", "indefinite"), nested}) {
    EXPECT_EQ(Import(Document(body)),
              (Dictionary{{"com.zorva.print.JobType", Value(Dictionary{{"JobType", Value(2)}})}}));
  }
}

TEST_F(JotfImportTest, WithoutAProfileNothingIsFound) {
  ZDPFinalize();
  EXPECT_TRUE(Import(Document(Element("sides", "keyword", "one-sided"),
                              Element("job-name", "name", "x") +
                                  Element("requesting-user-name", "name", "y")))
                  .empty());
}

TEST_F(JotfImportTest, FilesThatDoNotParseAddNothingAndTheOthersStillMerge) {
  test::TempDir dir;
  const auto good = dir / "good.jotf", bad = dir / "bad.jotf", missing = dir / "none.jotf";
  test::WriteText(good, Document(Element("sides", "keyword", "two-sided-long-edge")));
  test::WriteText(bad, Document(Element("sides", "keyword", "one-sided")) + "<trailing/>");
  Dictionary settings;
  EXPECT_EQ(JOTFImportFileAtPath(bad, &settings), kPrintSessionErr);
  EXPECT_EQ(JOTFImportFileAtPath(missing, &settings), kPrintSessionErr);
  EXPECT_TRUE(settings.empty());

  PrintSession session;
  session.printSettings().setNumber(kTicketClientSystem, "com.zorva.print.Resolution", 2);
  SetCurrentPrintSession(&session);
  std::vector<std::filesystem::path> failed;
  EXPECT_EQ(JOTFImportFiles({bad, good, missing}, &failed), kNoErr);
  SetCurrentPrintSession(nullptr);
  EXPECT_EQ(failed, (std::vector<std::filesystem::path>{bad, missing}));
  const TicketItem* duplex = session.printSettings().item("com.zorva.print.FinishingDuplex");
  ASSERT_NE(duplex, nullptr);
  EXPECT_EQ(duplex->value, Value(2));
  EXPECT_EQ(duplex->client, kTicketClientImport);
  EXPECT_EQ(*session.printSettings().get("com.zorva.print.Resolution"), Value(2));
  EXPECT_EQ(JOTFImportMergeIntoJobTicket(nullptr, settings), kPrintSessionErr);
}

TEST_F(JotfImportTest, RecoveryReadsADamagedTicketAndSaysWhatItSkipped) {
  // Accounting on writes an end tag that does not match its start tag.
  const std::string doc = Document(
      Element("sides", "keyword", "two-sided-long-edge") +
      "\t\t<job-account-id syntax=\"name\" xml:space=\"preserve\">42</job-accounting-id>\n" +
      Element("page-delivery", "keyword", "same-order-face-up"));
  Dictionary settings;
  EXPECT_EQ(JOTFImportDocumentText(doc, &settings), kPrintSessionErr);
  EXPECT_TRUE(settings.empty());
  JotfImportReport report;
  EXPECT_EQ(JOTFImportDocumentText(doc, &settings, {.recover = true}, &report), kNoErr);
  EXPECT_EQ(*settings.find("com.zorva.print.FinishingDuplex"), Value(2));
  EXPECT_GE(report.errors, 1);
  EXPECT_EQ(report.firstErrorLine, 6);
  EXPECT_NE(report.firstError.find("mismatch"), std::string::npos) << report.firstError;
}

TEST_F(JotfImportTest, EntityExpansionIsBoundedAndExternalEntitiesAreNotRead) {
  std::string laughs = "<?xml version=\"1.0\"?>\n<!DOCTYPE jotf [\n<!ENTITY a0 \"lol\">\n";
  for (int i = 1; i <= 10; ++i) {
    laughs += "<!ENTITY a" + std::to_string(i) + " \"";
    for (int k = 0; k < 10; ++k) laughs += "&a" + std::to_string(i - 1) + ";";
    laughs += "\">\n";
  }
  laughs += "]>\n<jotf><job-template-attributes>" + Element("job-sheet-message", "text", "&a10;") +
            "</job-template-attributes></jotf>";
  Dictionary settings;
  EXPECT_EQ(JOTFImportDocumentText(laughs, &settings), kPrintSessionErr);
  EXPECT_EQ(JOTFImportDocumentText(laughs, &settings, {.recover = true}), kPrintSessionErr);
  EXPECT_TRUE(settings.empty());

  test::TempDir dir;
  test::WriteText(dir / "secret.txt", "SECRET");
  const std::string external =
      "<?xml version=\"1.0\"?>\n<!DOCTYPE jotf [\n<!ENTITY x SYSTEM \"file://" +
      (dir / "secret.txt").string() + "\">\n]>\n<jotf><job-template-attributes>" +
      Element("job-sheet-message", "text", "before&x;after") + "</job-template-attributes></jotf>";
  EXPECT_TRUE(Import(external, kPrintSessionErr).empty());
  EXPECT_EQ(JOTFImportDocumentText(external, &settings, {.recover = true}), kPrintSessionErr);
  EXPECT_TRUE(settings.empty());
}

// The index answers every path exactly as the literal depth-first search.
TEST_F(JotfImportTest, PathIndexGivesTheLiteralSearchAnswers) {
  const std::string text = test::ReadText(test::JotfData("example-export.jotf"));
  xmlDocPtr doc =
      xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr, XML_PARSE_NONET);
  ASSERT_NE(doc, nullptr);
  xmlNodePtr root = xmlDocGetRootElement(doc);
  const JotfPathIndex top(root);
  xmlNodePtr group = top.find(".jotf.job-template-attributes");
  ASSERT_NE(group, nullptr);
  const JotfPathIndex index(group->children);
  // Every path the document has, and some it has not.
  std::set<std::string> paths = {".nothing", ".media-col.nothing", "", ".", ".media-col.",
                                 ".media",   ".media-co"};
  std::function<void(xmlNodePtr, const std::string&)> collect = [&](xmlNodePtr n,
                                                                    const std::string& at) {
    for (; n; n = n->next) {
      if (n->type != XML_ELEMENT_NODE) continue;
      const std::string path = at + "." + reinterpret_cast<const char*>(n->name);
      paths.insert(path);
      collect(n->children, path);
    }
  };
  collect(group->children, "");
  ASSERT_GT(paths.size(), 60u);
  for (const std::string& path : paths) {
    EXPECT_EQ(index.find(path), JOTFImportGetNode(group->children, path)) << path;
    EXPECT_EQ(index.find(path), JOTFImportGetNode(group->children, path)) << path;  // remembered
  }
  EXPECT_EQ(top.find(".jotf.job-template-attributes"),
            JOTFImportGetNode(root, ".jotf.job-template-attributes"));
  xmlFreeDoc(doc);
}

}  // namespace
}  // namespace zorva

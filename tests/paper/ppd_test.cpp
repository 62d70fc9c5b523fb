// PPD access on our own PPD files: opening (and refusing) files, the
// encoding table and the texts it yields, default and current choices and
// their ticket values, menus with unknown and conflicting choices, the
// installable options and the features they turn on, and the current PPD of
// the print session.
#include "paper/ppd.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/print_session.h"
#include "host/setting_map.h"
#include "paper/ppd_text.h"
#include "support/test_support.h"

namespace zorva {
namespace {

using test::TestData;

PPDPtr Open(const std::string& name) {
  PPDPtr ppd = PPDOpenFile(TestData("ppd/" + name));
  EXPECT_TRUE(ppd) << name;
  return ppd;
}

PPDPtr FromText(const std::string& text) {
  return PPDOpenData(std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
}

// A small PPD with one MediaColor choice whose text is `text` (raw bytes).
std::string ColorPPD(const std::string& encodingLine, const std::string& text,
                     const std::string& installed = "") {
  return "*PPD-Adobe: \"4.3\"\n" + encodingLine + installed +
         "*OpenUI *MediaColor/Colour: PickOne\n*DefaultMediaColor: White\n"
         "*MediaColor White/" +
         text + ": \"\"\n*CloseUI: *MediaColor\n";
}

class InstalledOptionsReset : public ::testing::Test {
 protected:
  void SetUp() override { UnloadInstallableOptions(); }
  void TearDown() override { UnloadInstallableOptions(); }
};

TEST(PPDLookups, TableDuplicatesAndZeroValues) {
  EXPECT_EQ(PPDTicketValueForChoice("MediaType", "CardStock"), 12);
  EXPECT_STREQ(PPDChoiceForTicketValue("MediaType", 43), "CardStock");
  EXPECT_STREQ(PPDChoiceForTicketValue("OutputBin", 5), "Upper");
  EXPECT_EQ(PPDTicketValueForChoice("InputSlot", "Auto"), 0);
  EXPECT_STREQ(PPDChoiceForTicketValue("InputSlot", 0), "Auto");
  EXPECT_EQ(PPDTicketValueForChoice("OutputBin", "Mailbox"), -1);
  EXPECT_EQ(PPDTicketValueForChoice("mediatype", "CardStock"), -1) << "keywords match exactly";
}

TEST(PPDOpen, UnreadableInputGivesNullAndNullIsHarmless) {
  EXPECT_FALSE(PPDOpenFile(TestData("ppd/missing.ppd")));
  EXPECT_FALSE(PPDOpenFile(TestData("ppd/malformed.ppd")));
  EXPECT_FALSE(FromText(""));
  EXPECT_FALSE(FromText("not a PPD at all\n"));
  EXPECT_EQ(PPDGetEncoding(nullptr), TextEncoding::MacRoman);
  EXPECT_EQ(PPDCopyDefaultChoice(nullptr, "Duplex"), std::nullopt);
  EXPECT_EQ(PPDCopyChoiceText(nullptr, "Duplex", "None"), std::nullopt);
  EXPECT_TRUE(PPDPopulateMenuWithChoices(nullptr, "Duplex", true).empty());
  EXPECT_TRUE(PPDMainKeywordOptions(nullptr).empty());
  std::int32_t value = 77;
  PPDGetTicketValueForChoiceOrDefault(nullptr, Ticket(), "Duplex", value);
  EXPECT_EQ(value, 77);
}

TEST(PPDEncoding, TableByExactComparison) {
  const std::pair<std::optional<std::string_view>, TextEncoding> cases[] = {
      {"ISOLatin1", TextEncoding::ISOLatin1},  {"ISOLatin2", TextEncoding::ISOLatin2},
      {"ISOLatin5", TextEncoding::ISOLatin5},  {"JIS83-RKSJ", TextEncoding::ShiftJIS},
      {"UTF-8", TextEncoding::UTF8},           {"UTF8", TextEncoding::UTF8},
      {"utf8", TextEncoding::MacRoman},        {"isolatin1", TextEncoding::MacRoman},
      {"WindowsANSI", TextEncoding::MacRoman}, {std::nullopt, TextEncoding::MacRoman},
  };
  for (const auto& [text, encoding] : cases) {
    EXPECT_EQ(EncodingForLanguageEncoding(text), encoding) << text.value_or("(none)");
  }
  EXPECT_EQ(PPDGetEncoding(Open("zorva-production.ppd").get()), TextEncoding::ISOLatin1);
  EXPECT_EQ(PPDGetEncoding(Open("utf8.ppd").get()), TextEncoding::UTF8);
  EXPECT_EQ(PPDGetEncoding(Open("quillon-office.ppd").get()), TextEncoding::MacRoman);
}

TEST(PPDEncoding, ChoiceTextsDecodeByTheProductsTable) {
  struct Case {
    const char* encodingLine;
    const char* raw;
    const char* expected;
  };
  const Case cases[] = {
      {"*LanguageEncoding: ISOLatin1\n", "Wei\xDF", "Weiß"},
      {"*LanguageEncoding: ISOLatin2\n", "\xB9pi\xE8ka", "špička"},
      {"*LanguageEncoding: ISOLatin5\n", "Kap\xFD", "Kapı"},
      {"*LanguageEncoding: JIS83-RKSJ\n", "\x83\x41", "ア"},
      {"*LanguageEncoding: UTF8\n", "Wei\xC3\x9F", "Weiß"},
      {"*LanguageEncoding: UTF-8\n", "\xE9\x87\x91", "金"},
      {"", "Gelb \x8A", "Gelb ä"},                                // none: Mac Roman
      {"*LanguageEncoding: WindowsANSI\n", "\x80pfel", "Äpfel"},  // unknown: Mac Roman
      {"*LanguageEncoding: MacStandard\n", "\x9A", "ö"},
  };
  for (const Case& c : cases) {
    PPDPtr ppd = FromText(ColorPPD(c.encodingLine, c.raw));
    ASSERT_TRUE(ppd) << c.encodingLine;
    EXPECT_EQ(PPDCopyChoiceText(ppd.get(), "MediaColor", "White"), c.expected) << c.encodingLine;
  }
  EXPECT_EQ(PPDCopyChoiceText(Open("zorva-production.ppd").get(), "MediaColor", "White"), "Weiß");
  EXPECT_EQ(PPDCopyChoiceText(Open("utf8.ppd").get(), "MediaColor", "Goldenrod"), "金色");
  EXPECT_EQ(PPDCopyChoiceText(Open("quillon-office.ppd").get(), "MediaColor", "Yellow"), "Gelb äö");
}

TEST(PPDChoices, DefaultsTextsAndTicketValues) {
  PPDPtr ppd = Open("zorva-production.ppd");
  EXPECT_EQ(PPDCopyDefaultChoice(ppd.get(), "Option1"), "HCSS80");
  EXPECT_EQ(PPDCopyDefaultChoice(ppd.get(), "JCLBanner"), std::nullopt);
  EXPECT_EQ(PPDCopyChoiceText(ppd.get(), "OutputBin", "Stacker"), "Main Tray");
  EXPECT_EQ(PPDCopyChoiceText(ppd.get(), "OutputBin", "Side"), std::nullopt);
  EXPECT_EQ(PPDCopyChoiceText(ppd.get(), "Nope", "None"), std::nullopt);

  Ticket ticket;
  EXPECT_EQ(PPDCopyCurrentChoice(ticket, "OutputBin"), std::nullopt);
  struct Case {
    const char* keyword;
    const char* ticketChoice;  // nullptr: none in the ticket
    std::int32_t expected;     // 77: left untouched
  };
  const Case cases[] = {
      {"OutputBin", nullptr, 5},          // the PPD's default, Upper
      {"InputSlot", nullptr, 0},          // Auto: 0 is an ordinary value
      {"OutputBin", "Stacker", 4},        // the ticket wins
      {"OutputBin", "Mailbox", -1},       // a choice the tables do not know
      {"ZRSlipSheetPrint", nullptr, 77},  // neither the ticket nor the PPD
      {"ZRSlipSheetPrint", "Printed", 3},
  };
  for (const Case& c : cases) {
    Ticket t;
    if (c.ticketChoice) PPDSetCurrentChoice(t, c.keyword, c.ticketChoice);
    std::int32_t value = 77;
    PPDGetTicketValueForChoiceOrDefault(ppd.get(), t, c.keyword, value);
    EXPECT_EQ(value, c.expected) << c.keyword << " " << (c.ticketChoice ? c.ticketChoice : "");
  }
  PPDSetCurrentChoice(ticket, "Duplex", "DuplexTumble");
  PPDSetCurrentChoice(ticket, "OutputBin", "Upper");
  EXPECT_EQ(PPDCopyCurrentChoice(ticket, "Duplex"), "DuplexTumble");
  EXPECT_EQ(*ticket.getDictionary(kPPDDictionaryKey),
            (Dictionary{{"Duplex", Value("DuplexTumble")}, {"OutputBin", Value("Upper")}}));

  Dictionary withOther = *ticket.getDictionary(kPPDDictionaryKey);
  withOther.set("Jog", Value(1));
  ticket.setDictionary("test", kPPDDictionaryKey, withOther);
  using Options = std::vector<std::pair<std::string, std::string>>;
  EXPECT_EQ(PPDJobOptions(ticket), (Options{{"Duplex", "DuplexTumble"}, {"OutputBin", "Upper"}}));
  EXPECT_TRUE(PPDJobOptions(Ticket()).empty());

  std::int32_t value = 0;
  PPDGetTicketValueForChoiceOrDefault(Open("utf8.ppd").get(), Ticket(), "MediaType", value);
  EXPECT_EQ(value, 12) << "CardStock reads as its first row";
}

TEST(PPDMenus, UnknownChoicesAreSkippedWithAMessage) {
  PPDPtr ppd = Open("zorva-production.ppd");
  testing::internal::CaptureStderr();
  const auto bins = PPDPopulateMenuWithChoices(ppd.get(), "OutputBin", false);
  const auto types = PPDPopulateMenuWithChoices(ppd.get(), "MediaType", true);
  const auto missing = PPDPopulateMenuWithChoices(ppd.get(), "ZRFrontCoverSheet", false);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Skipped unrecognized choice in PPD: Mailbox\n"
            "Skipped unrecognized choice in PPD: Pearl\n"
            "Expected PPD option not found: ZRFrontCoverSheet\n");
  EXPECT_EQ(bins, (std::vector<PPDMenuItem>{{"Top Tray", 5, "Upper"},
                                            {"Main Tray", 4, "Stacker"},
                                            {"Stacker Top Tray", 16, "TopTrayHCS"},
                                            {"Centre Tray", 5, "Center"}}));
  std::vector<std::int32_t> values;
  for (const PPDMenuItem& item : types) values.push_back(item.value);
  EXPECT_EQ(values, (std::vector<std::int32_t>{1, 12, 26, 2, 40}));
  EXPECT_TRUE(missing.empty());
}

std::vector<std::string> Choices(const std::vector<PPDMenuItem>& items) {
  std::vector<std::string> out;
  for (const PPDMenuItem& item : items) out.push_back(item.choice);
  return out;
}

TEST(PPDMenus, ConflictingChoicesAreLeftOutFromTheDefaultsEachTime) {
  PPDPtr ppd = Open("conflicts.ppd");
  using V = std::vector<std::string>;
  EXPECT_EQ(Choices(PPDPopulateMenuWithChoices(ppd.get(), "MediaType", false)),
            (V{"Standard", "Transparency", "CardStock"}));
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(Choices(PPDPopulateMenuWithChoices(ppd.get(), "MediaType", true)), V{"Standard"});
    EXPECT_EQ(Choices(PPDPopulateMenuWithChoices(ppd.get(), "Duplex", true)),
              (V{"None", "DuplexNoTumble", "DuplexTumble"}));
    EXPECT_EQ(Choices(PPDPopulateMenuWithChoices(ppd.get(), "StapleLocation", true)),
              (V{"None", "SinglePortrait"}));
  }
}

TEST(PPDOptions, MainKeywordsInTableOrderAndInstallableGroup) {
  PPDPtr ppd = Open("zorva-production.ppd");
  std::vector<std::string> keywords;
  for (const PPDOptionInfo& o : PPDMainKeywordOptions(ppd.get())) keywords.push_back(o.keyword);
  EXPECT_EQ(keywords, (std::vector<std::string>{"MediaColor", "MediaType", "Duplex", "PageSize",
                                                "OutputBin", "ZRFold", "ZRPunch", "StapleLocation",
                                                "Resolution", "ZRColorMode", "InputSlot"}));
  const auto installable = PPDInstallableOptions(ppd.get());
  ASSERT_EQ(installable.size(), 2u);
  EXPECT_EQ(installable[0].keyword, "Option1");
  EXPECT_EQ(installable[0].text, "Finisher");
  EXPECT_EQ(installable[0].defaultChoice, "HCSS80");
  EXPECT_EQ(installable[0].choices.size(), 5u);
  EXPECT_TRUE(PPDInstallableOptions(Open("quillon-office.ppd").get()).empty());
}

TEST_F(InstalledOptionsReset, FinisherFeaturesFollowThePPD) {
  PPDPtr ppd = Open("zorva-production.ppd");
  ASSERT_TRUE(LoadInstallableOptions(ppd.get(), InstalledFeatures));
  std::string_view choice;
  ASSERT_TRUE(getInstallableOptionValue("Option1", choice));
  EXPECT_EQ(choice, "HCSS80");
  ASSERT_TRUE(getInstallableOptionValue("Option2", choice));
  EXPECT_EQ(choice, "False");
  std::int32_t value = 0;
  EXPECT_TRUE(getInstallableOptionTicketValue("StackerTray1Key", value));
  EXPECT_EQ(value, 4);
  EXPECT_TRUE(getInstalledFeature("2StaplesB"));
  EXPECT_FALSE(getInstalledFeature("Custom"));

  const Bundle* bundle = GetPDEBundle();
  ASSERT_TRUE(bundle);
  EXPECT_EQ(CopyLocalizedStringForInstalledFeatureFromPlugin("StackerTray1Key", bundle),
            "Main Tray");
  EXPECT_EQ(CopyLocalizedStringForInstalledFeatureFromPlugin("Offset", bundle), std::nullopt);
  EXPECT_EQ(CopyLocalizedStringForInstalledFeatureFromPlugin("Nope", bundle), std::nullopt);
  EXPECT_EQ(CopyLocalizedStringForInstalledFeatureFromPlugin("StackerTray1Key", nullptr),
            "STRING NOT FOUND");

  PPDPtr other = FromText(ColorPPD("", "White",
                                   "*OpenGroup: InstallableOptions\n"
                                   "*OpenUI *Option1: PickOne\n*DefaultOption1: StdFinisher\n"
                                   "*Option1 StdFinisher: \"\"\n*CloseUI: *Option1\n"
                                   "*CloseGroup: InstallableOptions\n"));
  ASSERT_TRUE(other);
  EXPECT_FALSE(LoadInstallableOptions(other.get(), InstalledFeatures)) << "already loaded";
  EXPECT_TRUE(getInstalledFeature("StackerTray1Key"));

  UnloadInstallableOptions();
  ASSERT_TRUE(LoadInstallableOptions(other.get(), InstalledFeatures));
  EXPECT_FALSE(getInstalledFeature("StackerTray1Key"));
  EXPECT_TRUE(getInstalledFeature("SimpleCatchTrayKey"));
}

TEST_F(InstalledOptionsReset, OnlyTheGroupNamedExactlyCountsAndOwnMapsApply) {
  PPDPtr quillon = Open("quillon-office.ppd");
  EXPECT_FALSE(LoadInstallableOptions(quillon.get(), InstalledFeatures));
  EXPECT_FALSE(getInstalledFeature("StackerTray1Key"));
  EXPECT_FALSE(LoadInstallableOptions(quillon.get(), InstalledFeatures))
      << "the feature map counts as loaded even with no options";
  UnloadInstallableOptions();

  static constexpr InstalledFeature kOwnMap[] = {
      {"Always", nullptr, nullptr, nullptr, 9},
      {"Feeder", "Option2", "True", nullptr, 1},
      {"Booklet", "Option1", "HCSS80", "Top Tray", 7},
      {nullptr, nullptr, nullptr, nullptr, 0},
  };
  PPDPtr ppd = Open("zorva-production.ppd");
  ASSERT_TRUE(LoadInstallableOptions(ppd.get(), kOwnMap));
  std::int32_t value = 0;
  EXPECT_TRUE(getInstallableOptionTicketValue("Booklet", value));
  EXPECT_EQ(value, 7);
  EXPECT_TRUE(getInstalledFeature("Always"));
  EXPECT_FALSE(getInstalledFeature("Feeder"));
  EXPECT_FALSE(getInstalledFeature("StackerTray1Key")) << "the shipped table is not in use";
}

TEST(PPDCurrent, OpensFromTheSessionOnceAndRetriesAfterFailure) {
  PPDCloseCurrent();
  SetCurrentPrintSession(nullptr);
  EXPECT_EQ(PPDGetCurrent(), nullptr);

  PrintSession session("", "", TestData("ppd/missing.ppd"));
  SetCurrentPrintSession(&session);
  EXPECT_EQ(PPDGetCurrent(), nullptr);
  session.setPpdPath(TestData("ppd/zorva-production.ppd"));
  PPD* first = PPDGetCurrent();
  ASSERT_NE(first, nullptr);
  session.setPpdPath(TestData("ppd/utf8.ppd"));
  EXPECT_EQ(PPDGetCurrent(), first) << "kept until closed";
  EXPECT_EQ(PPDGetEncoding(PPDGetCurrent()), TextEncoding::ISOLatin1);
  PPDCloseCurrent();
  EXPECT_EQ(PPDGetEncoding(PPDGetCurrent()), TextEncoding::UTF8);
  PPDCloseCurrent();
  SetCurrentPrintSession(nullptr);
}

}  // namespace
}  // namespace zorva

namespace zorva {
namespace {

TEST(PPDPaperSizes, EveryPageSizeWithItsDimensionsInPPDOrder) {
  const std::vector<PPDPaperSize> sizes =
      PPDPaperSizes(PPDOpenFile(test::TestData("ppd/zorva-production.ppd")).get());
  ASSERT_EQ(sizes.size(), 5u);
  const PPDPaperSize expected[] = {{"Letter", "Letter", 612, 792},
                                   {"A4", "A4", 595, 842},
                                   {"A3", "A3", 842, 1191},
                                   {"SRA3", "SRA3", 907, 1276},
                                   {"Postcard", "Postcard", 283, 416}};
  for (std::size_t i = 0; i < sizes.size(); ++i) {
    EXPECT_EQ(sizes[i].choice, expected[i].choice);
    EXPECT_EQ(sizes[i].text, expected[i].text);
    EXPECT_EQ(sizes[i].width, expected[i].width) << sizes[i].choice;
    EXPECT_EQ(sizes[i].length, expected[i].length) << sizes[i].choice;
  }
  EXPECT_TRUE(PPDPaperSizes(nullptr).empty());
}

}  // namespace
}  // namespace zorva

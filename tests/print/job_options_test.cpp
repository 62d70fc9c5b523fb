// The job options of a print job: PPD choices of the settings, the two-sided
// fallback, the standard attributes read from the job ticket, and option
// values that survive libcups' parser whatever the user typed.
#include "print/job_options.h"

#include <cups/cups.h>
#include <gtest/gtest.h>

#include "core/ticket_keys.h"
#include "jobticket/jotf_export.h"
#include "paper/ppd.h"
#include "support/test_support.h"

namespace zorva {
namespace {

using test::TempDir;
using test::TestData;

PPDPtr ProductionPPD(const std::string& duplexDefault = "None") {
  std::string text = test::ReadText(TestData("ppd/zorva-production.ppd"));
  const std::string line = "*DefaultDuplex: None";
  text.replace(text.find(line), line.size(), "*DefaultDuplex: " + duplexDefault);
  return PPDOpenData({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

Ticket With(std::initializer_list<std::pair<std::string_view, std::int64_t>> numbers) {
  Ticket t;
  for (const auto& [key, n] : numbers) t.setNumber(kTicketClientSystem, key, n);
  return t;
}

TEST(JobDuplexValue, PanelThenPlatformThenThePPDsDefault) {
  const PPDPtr tumble = ProductionPPD("DuplexTumble");
  const PPDPtr none = ProductionPPD("None");
  struct Case {
    Ticket settings;
    const PPD* ppd;
    std::optional<std::int32_t> expected;
  };
  const Case cases[] = {
      {With({{tkey::kFinishingDuplex, 2}, {tkey::kPMDuplexing, 3}}), tumble.get(), 2},
      {With({{tkey::kPMDuplexing, 3}}), none.get(), 3},
      {With({}), tumble.get(), 3},
      {With({}), none.get(), 1},
      {With({}), nullptr, std::nullopt},
      {With({{tkey::kFinishingDuplex, kUnset}}), tumble.get(), 3},
      {With({{tkey::kFinishingDuplex, 9}}), tumble.get(), std::nullopt},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(JobDuplexValue(c.settings, c.ppd), c.expected) << &c - cases;
    constexpr const char* kSides[] = {"one-sided", "two-sided-long-edge", "two-sided-short-edge"};
    EXPECT_EQ(JobSides(c.settings, c.ppd),
              c.expected ? std::optional<std::string>(kSides[*c.expected - 1]) : std::nullopt);
  }
}

TEST(PPDChoiceOptions, SettingsFirstThenTheTicketsChoicesThePPDOffers) {
  const PPDPtr ppd = ProductionPPD();
  Ticket t = With({{tkey::kFinishingDuplex, 3}, {tkey::kOutputColor, 1}});
  PPDSetCurrentChoice(t, "Duplex", "None");          // the setting wins
  PPDSetCurrentChoice(t, "OutputBin", "Upper");      // offered
  PPDSetCurrentChoice(t, "JCLBanner", "True");       // not in this PPD
  PPDSetCurrentChoice(t, "StapleLocation", "Ring");  // not a choice of it
  const JobOptions expected = {
      {"Duplex", "DuplexTumble"}, {"ZRColorMode", "Grayscale"}, {"OutputBin", "Upper"}};
  EXPECT_EQ(PPDChoiceOptions(t, ppd.get()), expected);
  EXPECT_EQ(PPDChoiceOptions(t, nullptr).size(), 5u) << "without a PPD nothing is filtered";
}

TEST(QuotedOptionValue, LibcupsReadsEveryValueBackUnchanged) {
  for (std::string_view value :
       {"plain", "two words", "a,b", "say \"hi\"", "back\\slash", "{braces}", "it's", "a=b", "",
        "tab\there", "Grüße", "vertical\vtab", "form\ffeed"}) {
    cups_option_t* options = nullptr;
    const std::string text = "name=" + QuotedOptionValue(value);
    const int n = cupsParseOptions(text.c_str(), 0, &options);
    ASSERT_EQ(n, 1) << text;
    EXPECT_EQ(std::string_view(options[0].value), value) << text;
    cupsFreeOptions(n, options);
  }
}

TEST(StandardAttributesFromJobTicket, TakesTheStandardOnesOfTheDocument) {
  Ticket t = *Ticket::Load(TestData("../../examples/job-settings.plist"));
  t.setString(kTicketClientSystem, tkey::kAccountingAccountId, "Dept 7");
  t.setNumber(kTicketClientSystem, tkey::kAccountingOn, 3);  // accounting on
  t.setString(kTicketClientSystem, tkey::kAccountingUserId, "dana");
  t.setNumber(kTicketClientSystem, tkey::kOutputColor, 1);
  PrintSession session;
  session.printSettings() = t;
  std::string name;
  const JobOptions options = StandardAttributesFromJobTicket(JOTFExportText(session), &name);
  const auto value = [&](std::string_view n) -> std::string {
    for (const JobOption& o : options) {
      if (o.name == n) return o.value;
    }
    return "(none)";
  };
  EXPECT_EQ(value("print-color-mode"), "monochrome");
  EXPECT_EQ(value("job-account-id"), "Dept 7") << "read through its odd end tag";
  EXPECT_EQ(value("job-accounting-user-id"), "dana");
  EXPECT_EQ(name, "Quarterly report Q1");
  EXPECT_EQ(value("media-col"),
            "{media-type=stationery media-weight-metric=90 media-color=white "
            "media-size={x-dimension=21600 y-dimension=27900}}");
  EXPECT_EQ(value("sides"), "(none)") << "sides follows the two-sided fallback instead";
  EXPECT_EQ(value("adjust-bw-darkness-value"), "(none)") << "controller-only attributes stay out";
}

TEST(StandardAttributesFromJobTicket, AnythingButAJobTicketGivesNothing) {
  for (std::string_view text : {"", "<jotf", "<other/>", "not xml at all",
                                "<jotf><job-template-attributes><copies syntax=\"collection\">"
                                "<a syntax=\"collection\"><b syntax=\"collection\"/></a>"
                                "</copies></job-template-attributes></jotf>"}) {
    std::string name = "kept";
    const JobOptions options = StandardAttributesFromJobTicket(text, &name);
    EXPECT_EQ(name, "kept");
    if (!text.starts_with("<jotf><job")) {
      EXPECT_TRUE(options.empty()) << text;
    }
  }
}

TEST(StandardAttributesFromSettings, CopiesCollationRangeOrientationAndPaper) {
  Ticket t = With({{tkey::kPMCopies, 3}, {tkey::kPMFirstPage, 2}, {tkey::kPMLastPage, 5}});
  t.setBoolean(kTicketClientSystem, tkey::kPMCopyCollate, false);
  const PageSizePoints a4{595, 842, 1};
  const JobOptions expected = {
      {"copies", "3"},
      {"multiple-document-handling", "separate-documents-uncollated-copies"},
      {"page-ranges", "2-5"},
      {"orientation-requested", "4"},
      {"media-col", "{media-size={x-dimension=21000 y-dimension=29700}}"}};
  EXPECT_EQ(StandardAttributesFromSettings(t, a4, false), expected);
  EXPECT_EQ(StandardAttributesFromSettings(t, a4, true).size(), 4u) << "the ticket's paper wins";
  EXPECT_TRUE(
      StandardAttributesFromSettings(
          With({{tkey::kPMFirstPage, 1}, {tkey::kPMLastPage, kAllPages}}), std::nullopt, false)
          .empty())
      << "all pages is no range";
}

}  // namespace
}  // namespace zorva

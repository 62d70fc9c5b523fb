// The Paper/Output panel's ticket rules: absent values, the order of the
// keys, the duplex fallback, the finishing menu and output destinations per
// installed finisher, the enabling rules, and every finishing choice
// exported by the job-ticket writer as the finishing it names.
#include "panels/paper_output.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "core/ticket_keys.h"
#include "support/finisher.h"
#include "support/finishing_enums.h"

namespace zorva {
namespace {

namespace key = tkey;

using test::EveryFinishingFeature;
using test::Export;
using Finisher = test::InstalledFinisher;

std::vector<std::string> MenuKeys() {
  std::vector<std::string> keys;
  for (const FinishingMenuItem& item : PopulateFinishingMenu()) keys.push_back(item.textKey);
  return keys;
}

TEST(PaperOutput, AnEmptyTicketReadsAsTheDefaults) {
  PaperOutputSettings s;
  s.outputDestination = 3;
  s.gutter = 7;
  ReadPaperOutputSettings(Ticket{}, s, std::nullopt);
  EXPECT_EQ(s.outputDestination, 19);
  EXPECT_EQ(s.outputColor, 2);
  EXPECT_EQ(s.gutter, 24);
  EXPECT_EQ(s.creep, 0);
  EXPECT_EQ(s.offset, 1);
  EXPECT_EQ(s.offsetEnableSubset, 0);
  EXPECT_EQ(s.pagesPerSubset, 1);
  EXPECT_EQ(s.finishingOptions, 0);
  EXPECT_EQ(s.duplex, kUnset);
  EXPECT_FALSE(s.custom);
  EXPECT_TRUE(s.jobStock.asTicket().empty());
  // The job type a ticket without one gets.
  const Dictionary& j = s.jobType;
  EXPECT_EQ(*j.getString("SavedJobName"), "");
  EXPECT_EQ(*j.getString("SavedJobLocation"), "file:///job-repository/");
  std::int32_t n = 0;
  EXPECT_TRUE(j.find("MediaType")->getNumber(n) && n == 1);
  EXPECT_TRUE(j.find("JobType")->getNumber(n) && n == 1);
  EXPECT_FALSE(j.contains("UseJobName"));
  EXPECT_EQ(j.size(), 4u);
}

TEST(PaperOutput, BookletLayoutIsOnlyTurnedOnAndItsBordersOnlyChangedByTheTicket) {
  PaperOutputSettings s;
  s.bookletLayout = true;
  s.bookletDrawOutlines = 3;
  Ticket ticket;
  ticket.setBoolean("Z", tkey::kBookletLayout, false);
  ReadPaperOutputSettings(ticket, s, std::nullopt);
  EXPECT_TRUE(s.bookletLayout);
  EXPECT_EQ(s.bookletDrawOutlines, 3);
  s.bookletLayout = false;
  ticket.setBoolean("Z", tkey::kBookletLayout, true);
  ticket.setNumber("Z", tkey::kBookletDrawOutlines, 1);
  ReadPaperOutputSettings(ticket, s, std::nullopt);
  EXPECT_TRUE(s.bookletLayout);
  EXPECT_EQ(s.bookletDrawOutlines, 1);
}

TEST(PaperOutput, KeysAreWrittenInTheirOrderWithTheirClients) {
  PaperOutputSettings s;
  s.custom = "Perfect bound";
  Ticket ticket;
  std::vector<std::string> order;
  WritePaperOutputSettings(ticket, s, &order);
  const std::vector<std::string> expected = {
      "com.zorva.print.JobLevelStock",
      "com.zorva.print.FinishingOutputDestination",
      "com.zorva.print.FinishingOutputColor",
      "com.zorva.print.JobType",
      "com.zorva.print.BackgroundFormsOptions",
      "com.zorva.print.BookletLayout",
      "com.zorva.print.BookletDrawOutlines",
      "com.zorva.print.BookletForceNewSize",
      "com.zorva.print.Gutter",
      "com.zorva.print.Creep",
      "com.zorva.print.FinishingDuplex",
      "com.zorva.print.FinishingOptions",
      "com.zorva.print.FinishingOffset",
      "com.zorva.print.FinishingOffsetEnableSubset",
      "com.zorva.print.FinishingOffsetPagesPerSubset",
      "com.zorva.print.FinishingSlipSheet",
      "com.zorva.print.FinishingFoldValue",
      "com.zorva.print.FinishingZFoldValue",
      "com.zorva.print.FinishingHolePunchValue",
      "com.zorva.print.FinishingHolePunchOptions",
      "com.zorva.print.FinishingStaple1Value",
      "com.zorva.print.FinishingStaple2Value",
      "com.zorva.print.FinishingStapleCenterValue",
      "com.zorva.print.FinishingBindValue",
      "com.zorva.print.BookletFoldStaple",
      "com.zorva.print.FinishingCustom",
  };
  EXPECT_EQ(order, expected);
  for (const char* k : {"com.zorva.print.Gutter", "com.zorva.print.Creep"}) {
    EXPECT_EQ(ticket.item(k)->client, "Z") << k;
  }
  EXPECT_EQ(ticket.item(key::kOutputColor)->client, "com.zorva.printingmanager");
  EXPECT_EQ(*ticket.getString(key::kFinishingCustom), "Perfect bound");
  // Unset duplex and no forced size: both keys are removed, not written.
  EXPECT_FALSE(ticket.contains(key::kFinishingDuplex));
  EXPECT_FALSE(ticket.contains(key::kBookletForceNewSize));
  // And what was written reads back the same.
  PaperOutputSettings back;
  ReadPaperOutputSettings(ticket, back, std::nullopt);
  EXPECT_EQ(back.jobType, s.jobType);
  EXPECT_EQ(back.custom, s.custom);
}

TEST(PaperOutput, TheForcedSizeNeedsAJobPaperWithASize) {
  PaperOutputSettings s;
  s.bookletForceNewSize = true;
  Ticket ticket;
  WritePaperOutputSettings(ticket, s, nullptr);
  EXPECT_FALSE(ticket.contains(key::kBookletForceNewSize));
  s.jobStock.setSize(4);
  WritePaperOutputSettings(ticket, s, nullptr);
  ASSERT_TRUE(ticket.getBoolean(key::kBookletForceNewSize).value_or(false));
  EXPECT_EQ(ticket.item(key::kBookletForceNewSize)->client, "Z");
}

TEST(PaperOutput, DuplexFallsBackToThePlatformThenThePrintersDefault) {
  struct Case {
    std::optional<std::int32_t> panel, platform;
    std::optional<std::string> ppd;
    std::int32_t expected;
  };
  const Case cases[] = {
      {2, 3, "DuplexTumble", 2},
      {std::nullopt, 3, "None", 3},
      {std::nullopt, std::nullopt, "DuplexTumble", 3},
      {std::nullopt, std::nullopt, "None", 1},
      {std::nullopt, std::nullopt, "Sideways", kUnset},
      {std::nullopt, std::nullopt, std::nullopt, kUnset},
  };
  for (const Case& c : cases) {
    Ticket ticket;
    if (c.panel) ticket.setNumber("Z", key::kFinishingDuplex, *c.panel);
    if (c.platform) ticket.setNumber("Z", key::kPMDuplexing, *c.platform);
    PaperOutputSettings s;
    ReadPaperOutputSettings(ticket, s, c.ppd);
    EXPECT_EQ(s.duplex, c.expected) << c.ppd.value_or("-");
  }
}

TEST(PaperOutput, ThePlatformDuplexIsKeptInStep) {
  PaperOutputSettings s;
  s.duplex = 3;
  Ticket ticket;
  ticket.setNumber("Z", key::kPMDuplexing, 1);
  WritePaperOutputSettings(ticket, s, nullptr);
  std::int32_t platform = 0;
  ASSERT_TRUE(ticket.getNumber(key::kPMDuplexing, platform));
  EXPECT_EQ(platform, 3);
}

TEST(PaperOutput, JobTypeDictionaryKeepsEveryEntryAndLeavesFalseOut) {
  JobTypeSettings j;
  j.jobType = jobtype::kSecurePrint;
  j.securePrintPassword = "0042";
  j.delayedPrintTime = "22:30";
  j.saveDisposition = jobtype::kPrintAndSave;
  const JobTypeSettings back = JobTypeSettings::FromDictionary(j.asTicket());
  EXPECT_EQ(back.securePrintPassword, "0042");
  EXPECT_EQ(back.delayedPrintTime, "22:30");
  EXPECT_EQ(back.saveDisposition, jobtype::kPrintAndSave);
  EXPECT_FALSE(j.asTicket().contains("UseJobName"));
  j.useJobName = true;
  EXPECT_EQ(j.asTicket().getBool("UseJobName"), true);
}

TEST(PaperOutput, JobInfoGivesUnknownForAMissingJobName) {
  PaperOutputSettings s;
  Ticket pageFormat;
  pageFormat.setNumber("Z", tkey::kPMOrientation, 2);
  ReadPaperOutputJobInfo(Ticket{}, &pageFormat, s);
  EXPECT_EQ(s.jobName, "Unknown");
  EXPECT_EQ(s.orientation, 2);
  Ticket settings;
  settings.setString("Z", key::kPMJobName, "Annual report");
  ReadPaperOutputJobInfo(settings, nullptr, s);
  EXPECT_EQ(s.jobName, "Annual report");
}

// The menu's items for what the finisher has; "Multiple Finishing..." needs
// two of staple, punch and Z-fold.
TEST(PaperOutputMenu, ItemsFollowTheInstalledFeatures) {
  using Keys = std::vector<std::string>;
  const Keys fixed = {"Printer Default", "None", "-", "-"};
  struct Case {
    Keys features;
    Keys menu;  // empty: only whether Multiple Finishing is offered is checked
    bool multiple;
  };
  const Case cases[] = {
      {{}, fixed, false},
      {{"BindLeft", "BiFoldSingleInside", "Offset"},
       {"Printer Default", "None", "Bind", "Fold...", "-", "Offset/Subset...", "-"},
       false},
      {EveryFinishingFeature(),
       {"Printer Default", "None", "1 Staple...", "2 Staples...", "Center Staple...", "Bind...",
        "2 Hole Punch...", "3 Hole Punch...", "4 Hole Punch...", "Fold...", "Z Fold Half Sheet...",
        "Multiple Finishing...", "SignatureBooklet", "Custom...", "-", "Slip Sheets",
        "Offset/Subset...", "-", "Booklet Creation..."},
       true},
      {{"1StapleTL", "3HolePunchL"}, {}, true},
      {{"1StapleT", "ZFoldHalfLeft"}, {}, true},
      {{"4HolePunchB", "ZFoldHalfRight"}, {}, true},
      {{"1StapleTL", "2StaplesL", "1StapleL"}, {}, false},
      {{"BindLeft", "BiFoldSingleInside", "2StaplesT"}, {}, false},
      {{"BindLeft", "CFoldSingleOutside"}, {}, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.features.empty() ? "nothing" : c.features.front());
    Finisher f(c.features);
    const Keys keys = MenuKeys();
    if (!c.menu.empty()) {
      EXPECT_EQ(keys, c.menu);
    }
    EXPECT_EQ(std::count(keys.begin(), keys.end(), "Multiple Finishing..."), c.multiple ? 1 : 0);
  }
}

TEST(PaperOutputMenu, DialogsOfferOnlyWhatTheFinisherCanDo) {
  Finisher f({"1StapleTL", "1StapleBR", "3HolePunchL", "2HolePunchT"});
  std::vector<std::int32_t> staples;
  for (const FinishingValue* v : AvailableFinishingValues(key::kFinishingStaple1)) {
    staples.push_back(v->value);
  }
  EXPECT_EQ(staples, (std::vector<std::int32_t>{5, 8}));
  EXPECT_EQ(AvailableFinishingValues(key::kFinishingHolePunch, 3).size(), 1u);
  EXPECT_EQ(AvailableFinishingValues(key::kFinishingHolePunch, 3).front()->value, 32);
  EXPECT_EQ(AvailableFinishingValues(key::kFinishingHolePunch).size(), 2u);
  EXPECT_EQ(AvailableHoleCounts(), (std::vector<std::int32_t>{2, 3}));
}

TEST(PaperOutputMenu, TheMarkFollowsTheValues) {
  Finisher f(EveryFinishingFeature());
  const auto menu = PopulateFinishingMenu();
  PaperOutputSettings s;
  s.finishingOptions = finishing::kFold;
  s.slipSheet = finishing::kSlipSheetsOn;
  const auto marks = MarkFinishingMenu(menu, s);
  ASSERT_EQ(marks.size(), menu.size());
  for (std::size_t i = 0; i < menu.size(); ++i) {
    const bool expected =
        menu[i].option == finishing::kFold || menu[i].kind == FinishingItemKind::SlipSheets;
    EXPECT_EQ(marks[i], expected) << menu[i].textKey;
  }
}

TEST(PaperOutputDestinations, ItemsFollowTheInstalledOptions) {
  struct Case {
    std::vector<std::string> features;
    std::string finisher;
    std::vector<std::int32_t> values;
  };
  const Case cases[] = {
      {{}, "None", {19, 1}},
      {{"SimpleCatchTrayKey"}, "StdFinisher", {19, 1, 3}},
      {{"StackerTray1Key", "SimpleCatchTrayKey"}, "HCS80", {19, 1, 4, 3}},
      {{"StackerTray1Key", "StackerTray2Key"}, "HCS80", {19, 1, 12}},
      {{}, "BFMBFM", {19, 1, 17, 16}},
      {{"AutoSwitchTrayKey"}, "BFMBFMFTM", {19, 1, 17, 16, 18}},
      // The inserter feeds paper; it is no place for output.
      {{"VantraInserter"}, "None", {19, 1}},
  };
  for (const Case& c : cases) {
    Finisher f(c.features, Dictionary{{"Option1", Value(c.finisher)}});
    std::vector<std::int32_t> values;
    for (const OutputDestinationItem& item : PopulateOutputDestination()) {
      values.push_back(item.value);
    }
    EXPECT_EQ(values, c.values) << c.finisher;
  }
}

TEST(PaperOutputDestinations, ABookletFinishingRemovesTheDestination) {
  PaperOutputSettings s;
  s.outputDestination = 4;
  Ticket ticket;
  WritePaperOutputSettings(ticket, s, nullptr);
  EXPECT_TRUE(ticket.contains(key::kOutputDestination));
  for (const std::int32_t option : {finishing::kBooklet, finishing::kSignatureBooklet}) {
    s.finishingOptions = option;
    EXPECT_FALSE(PaperOutputControlEnabled(PaperOutputControl::OutputDestination, s));
    WritePaperOutputSettings(ticket, s, nullptr);
    EXPECT_FALSE(ticket.contains(key::kOutputDestination));
  }
}

TEST(PaperOutputRules, EnablingFollowsTheTable) {
  PaperOutputSettings s;
  EXPECT_FALSE(EnableDisableJobTypeSetupButton(s));
  for (const std::int32_t type : {jobtype::kPrint, jobtype::kHold}) {
    JobTypeSettings j;
    j.jobType = type;
    s.jobType = j.asTicket();
    EXPECT_FALSE(EnableDisableJobTypeSetupButton(s)) << type;
  }
  for (const std::int32_t type : {jobtype::kSave, jobtype::kSecurePrint, jobtype::kDelayedPrint}) {
    JobTypeSettings j;
    j.jobType = type;
    s.jobType = j.asTicket();
    EXPECT_TRUE(EnableDisableJobTypeSetupButton(s)) << type;
  }
  EXPECT_FALSE(PaperOutputControlEnabled(PaperOutputControl::BookletOptions, s));
  EXPECT_TRUE(PaperOutputControlEnabled(PaperOutputControl::Duplex, s));
  s.bookletLayout = true;
  EXPECT_TRUE(PaperOutputControlEnabled(PaperOutputControl::BookletOptions, s));
  EXPECT_FALSE(PaperOutputControlEnabled(PaperOutputControl::Duplex, s));
  // Stapling a booklet layout's sheets in a corner makes no booklet.
  Finisher f(EveryFinishingFeature());
  ChooseFinishingOption(s, finishing::kOneStaple);
  EXPECT_FALSE(s.bookletLayout);
}

TEST(PaperOutputText, TheFinishingLineNamesTheChoiceAndItsValues) {
  Finisher f(EveryFinishingFeature());
  const Localizer same = [](std::string_view k) { return std::string(k); };
  PaperOutputSettings s;
  EXPECT_EQ(CreateFinishingString(s, same), "Printer Default");
  ChooseFinishingOption(s, finishing::kThreeHolePunch);
  s.holePunch = 33;
  s.holePunchOptions = 3;
  s.slipSheet = finishing::kSlipSheetsOn;
  EXPECT_EQ(CreateFinishingString(s, same), "3 Hole Punch: Top, Three; Slip Sheets");
  ChooseFinishingOption(s, finishing::kCustom);
  s.custom = "Spiral";
  s.slipSheet = 0;
  EXPECT_EQ(CreateFinishingString(s, same), "Custom: Spiral");
  Stock paper;
  paper.setSize(4);
  EXPECT_EQ(AppendSeparatorSummary(2, paper, same), "2 Slip Sheets: A4StockSize");
}

// ---- Every finishing exported as the finishing it names ----------------------------------

using test::FinishingEnumLine;
using test::kFinishingEnumForName;

TEST(PaperOutputExport, EverySingleFinishingValueExportsAsItsName) {
  Finisher f(EveryFinishingFeature());
  for (const FinishingValue& v : kFinishingValues) {
    if (v.key == key::kFinishingHolePunchOptions) continue;
    std::int32_t option = -1;
    for (const FinishingMenuItem& item : PopulateFinishingMenu()) {
      const FinishingChoice* c = FindFinishingChoice(item.option);
      if (!c || item.option == finishing::kMultiple) continue;
      const bool staple = c->stapleKey == v.key;
      const bool fold = c->foldKey == v.key;
      const bool punch = c->punch && v.key == key::kFinishingHolePunch;
      if ((staple || fold || punch) && option == -1) option = item.option;
    }
    ASSERT_NE(option, -1) << v.nameKey;
    PaperOutputSettings s;
    ChooseFinishingOption(s, option);
    *FinishingField(s, v.key) = v.value;
    Ticket ticket;
    WritePaperOutputSettings(ticket, s, nullptr);
    const std::string jotf = Export(ticket);
    EXPECT_NE(jotf.find(FinishingEnumLine(kFinishingEnumForName.at(v.nameKey))), std::string::npos)
        << v.nameKey << "\n"
        << jotf;
  }
}

TEST(PaperOutputExport, PunchCountsAndMultipleFinishingExportEveryPart) {
  Finisher f(EveryFinishingFeature());
  PaperOutputSettings s;
  ChooseFinishingOption(s, finishing::kFourHolePunch);
  s.holePunch = 34;
  Ticket ticket;
  WritePaperOutputSettings(ticket, s, nullptr);
  std::string jotf = Export(ticket);
  EXPECT_NE(jotf.find(FinishingEnumLine(96)), std::string::npos);
  EXPECT_NE(jotf.find(FinishingEnumLine(92)), std::string::npos);

  ChooseFinishingOption(s, finishing::kMultiple);
  s.staple2 = 11;
  s.holePunch = 32;
  s.holePunchOptions = 2;
  s.zFold = 22;
  WritePaperOutputSettings(ticket, s, nullptr);
  jotf = Export(ticket);
  for (const int e : {29, 1004, 93, 90}) {
    EXPECT_NE(jotf.find(FinishingEnumLine(e)), std::string::npos) << e << "\n" << jotf;
  }

  ChooseFinishingOption(s, finishing::kCustom);
  s.custom = "Spiral & wire";
  WritePaperOutputSettings(ticket, s, nullptr);
  jotf = Export(ticket);
  EXPECT_NE(jotf.find(">Spiral &amp; wire</finishing-template>"), std::string::npos) << jotf;
  EXPECT_EQ(jotf.find("<finishings "), std::string::npos);
}

TEST(PaperOutputExport, ChoosingAFinishingClearsWhatItDoesNotUse) {
  Finisher f(EveryFinishingFeature());
  PaperOutputSettings s;
  s.staple1 = 5;
  s.fold = 9;
  s.custom = "x";
  ChooseFinishingOption(s, finishing::kSignatureBooklet);
  EXPECT_EQ(s.staple1, 0);
  EXPECT_EQ(s.fold, 0);
  EXPECT_FALSE(s.custom);
  EXPECT_EQ(s.bookletFoldStaple, 15);
  Ticket ticket;
  WritePaperOutputSettings(ticket, s, nullptr);
  EXPECT_NE(Export(ticket).find(FinishingEnumLine(13)), std::string::npos);
}

}  // namespace
}  // namespace zorva

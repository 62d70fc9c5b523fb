// The Job Notes panel's rules: every field round-trips under its key,
// empty fields leave no key (so the job ticket carries no empty note), the
// user's defaults fill only what the ticket lacks, the accounting switch,
// and the input histories.
#include "panels/job_notes.h"

#include <gtest/gtest.h>

#include "core/ticket_keys.h"
#include "host/preferences.h"
#include "jobticket/jotf_job_attributes.h"
#include "support/test_support.h"

namespace zorva {
namespace {

namespace key = tkey;

// A preference folder of the test's own.
class JobNotesFiles : public ::testing::Test {
 protected:
  test::TempDir folder_;
  test::ScopedEnv env_{"ZORVA_PREFERENCES_DIR", folder_.path().string()};
};

JobNotesSettings Filled() {
  JobNotesSettings s;
  s.useJobName = true;
  s.jobName = "Brochure";
  s.sender = "Ana";
  s.recipient = "Front desk";
  s.message = "Trim after binding & <check>";
  s.additionalInfo = "Order 7";
  s.sheetMessage = "RUSH";
  s.accounting = kAccountingOn;
  s.userId = "ana";
  s.accountId = "4711";
  return s;
}

TEST(JobNotes, AnEmptyTicketWithoutDefaultsWritesNothing) {
  Ticket ticket;
  const JobNotesSettings s = ReadJobNotesSettings(ticket, nullptr);
  EXPECT_EQ(s, JobNotesSettings{});
  WriteJobNotesSettings(ticket, s);
  EXPECT_TRUE(ticket.empty());
}

TEST(JobNotes, EveryFieldRoundTripsUnderItsKey) {
  Ticket ticket;
  WriteJobNotesSettings(ticket, Filled());
  EXPECT_EQ(ReadJobNotesSettings(ticket, nullptr), Filled());
  for (const JobNotesTextField& f : JobNotesTextFields()) {
    ASSERT_NE(ticket.getString(f.key), nullptr) << f.key;
    EXPECT_EQ(ticket.item(f.key)->client, "com.zorva.printingmanager");
  }
  EXPECT_EQ(ticket.getBoolean(key::kJobNotesUseJobName), true);
  std::int32_t on = 0;
  EXPECT_TRUE(ticket.getNumber(key::kAccountingOn, on));
  EXPECT_EQ(on, 3);
}

TEST(JobNotes, ClearedFieldsRemoveTheirKeys) {
  Ticket ticket;
  WriteJobNotesSettings(ticket, Filled());
  JobNotesSettings s = Filled();
  s.message.clear();
  s.useJobName = false;
  s.accounting = kUnset;
  WriteJobNotesSettings(ticket, s);
  EXPECT_FALSE(ticket.contains(key::kJobNotesMessage));
  EXPECT_FALSE(ticket.contains(key::kJobNotesUseJobName));
  EXPECT_FALSE(ticket.contains(key::kAccountingOn));
  EXPECT_TRUE(ticket.contains(key::kJobNotesSenderName));
}

TEST(JobNotes, TheFieldLimitIsWhereTheWriterCutsAndAllowsOnlySingleBytes) {
  EXPECT_EQ(static_cast<std::size_t>(kAccountingIdLength), kAccountingIdBytes);
  for (const char c : kAccountingIdCharacters) {
    EXPECT_TRUE(c >= 0x20 && c < 0x7f) << static_cast<int>(c);
  }
  EXPECT_EQ(kAccountingIdCharacters.size(), 95u);
}

TEST_F(JobNotesFiles, DefaultsFillOnlyWhatTheTicketLacks) {
  ASSERT_TRUE(WriteJobNotesDefaults(Filled()));
  const JobNotesSettings defaults = ReadJobNotesDefaults();
  // Only the sender, recipient, accounting and the job-name switch are defaults.
  EXPECT_EQ(defaults.sender, "Ana");
  EXPECT_EQ(defaults.recipient, "Front desk");
  EXPECT_EQ(defaults.userId, "ana");
  EXPECT_EQ(defaults.accountId, "4711");
  EXPECT_EQ(defaults.accounting, kAccountingOn);
  EXPECT_TRUE(defaults.useJobName);
  EXPECT_TRUE(defaults.message.empty());
  EXPECT_TRUE(defaults.jobName.empty());
  Ticket ticket;
  ticket.setString("ZORVA", key::kJobNotesSenderName, "Bo");
  ticket.setBoolean("ZORVA", key::kJobNotesUseJobName, false);
  const JobNotesSettings s = ReadJobNotesSettings(ticket, &defaults);
  EXPECT_EQ(s.sender, "Bo");
  EXPECT_FALSE(s.useJobName);
  EXPECT_EQ(s.recipient, "Front desk");
}

TEST_F(JobNotesFiles, NoDefaultsFileGivesEmptyDefaults) {
  EXPECT_EQ(ReadJobNotesDefaults(), JobNotesSettings{});
}

TEST(JobNotes, HistoriesKeepTheNewestTenOnceEach) {
  Dictionary histories;
  EXPECT_FALSE(RememberInHistory(histories, "H", ""));
  for (int i = 0; i < 12; ++i) {
    EXPECT_TRUE(RememberInHistory(histories, "H", "text " + std::to_string(i)));
  }
  EXPECT_FALSE(RememberInHistory(histories, "H", "text 11"));
  EXPECT_TRUE(RememberInHistory(histories, "H", "text 5"));
  const Array* h = histories.getArray("H");
  ASSERT_NE(h, nullptr);
  ASSERT_EQ(h->size(), kInputHistoryLength);
  EXPECT_EQ(*(*h)[0].string(), "text 5");
  EXPECT_EQ(*(*h)[1].string(), "text 11");
  EXPECT_EQ(*(*h)[9].string(), "text 2");  // 5 moved up; nothing else moved out
}

TEST_F(JobNotesFiles, RememberingWritesTheHistoryFileWithEachFieldsName) {
  JobNotesSettings s;
  s.recipient = "Front desk";
  s.userId = "ana";  // ids keep no history
  RememberJobNotes(s);
  const std::optional<Value> file = CopyUserPreferences(kInputHistoryFile);
  ASSERT_TRUE(file && file->dictionary());
  EXPECT_EQ(*file->dictionary(),
            (Dictionary{{"JobNotesRecipient", Value(Array{Value("Front desk")})}}));
}

}  // namespace
}  // namespace zorva

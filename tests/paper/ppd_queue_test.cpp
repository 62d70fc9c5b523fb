// The current PPD from a real CUPS queue: a private cupsd serves a queue
// made with our production PPD, and the session names only the queue.
#include <cups/cups.h>
#include <gtest/gtest.h>

#include "core/print_session.h"
#include "paper/ppd.h"
#include "support/private_cupsd.h"
#include "support/test_support.h"

namespace zorva {
namespace {

class PPDQueue : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    cupsd_ = new test::PrivateCupsd;
    std::string reason;
    if (!cupsd_->start(&reason)) {
      skipReason_ = "cupsd cannot run here: " + reason;
    } else if (!cupsd_->addQueue("ZorvaQM4400", test::TestData("ppd/zorva-production.ppd"),
                                 &reason)) {
      skipReason_ = "could not add the test queue: " + reason;
    }
  }
  static void TearDownTestSuite() {
    delete cupsd_;
    cupsd_ = nullptr;
  }
  void SetUp() override {
    if (!skipReason_.empty()) GTEST_SKIP() << skipReason_;
    cupsSetServer(cupsd_->server().c_str());
  }
  void TearDown() override {
    PPDCloseCurrent();
    SetCurrentPrintSession(nullptr);
    cupsSetServer(nullptr);
  }

  static inline test::PrivateCupsd* cupsd_ = nullptr;
  static inline std::string skipReason_;
};

TEST_F(PPDQueue, SessionQueueGivesItsPPD) {
  PrintSession session("ZorvaQM4400", "file:/dev/null", "");
  SetCurrentPrintSession(&session);
  PPD* ppd = PPDGetCurrent();
  ASSERT_NE(ppd, nullptr);
  EXPECT_EQ(PPDGetEncoding(ppd), TextEncoding::ISOLatin1);
  EXPECT_EQ(PPDCopyDefaultChoice(ppd, "Option1"), "HCSS80");
  EXPECT_EQ(PPDCopyChoiceText(ppd, "MediaColor", "White"), "Weiß");
  EXPECT_EQ(PPDGetCurrent(), ppd);
}

TEST_F(PPDQueue, UnknownQueueGivesNull) {
  EXPECT_FALSE(PPDOpenQueue("NoSuchQueue"));
  EXPECT_FALSE(PPDOpenQueue(""));
  PPDPtr ppd = PPDOpenQueue("ZorvaQM4400");
  ASSERT_TRUE(ppd);
  EXPECT_EQ(PPDMainKeywordOptions(ppd.get()).size(), 11u);
}

}  // namespace
}  // namespace zorva

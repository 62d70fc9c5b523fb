// Every item of the print-settings ticket that the program defines (the one
// definition in core/ticket_keys.h, read from the header itself so that the
// list is never typed a second time) is read by some panel when the dialog
// opens and written back by it in a saving sync. A ticket with a value other
// than the default for each key goes in; after the panels have read it, the
// ticket is emptied and the host syncs: every key must come back as it was.
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "core/ticket_keys.h"
#include "plugin_host.h"
#include "support/test_support.h"

namespace zorva::test {
namespace {

// Keys no panel owns, each with the reason.
const std::map<std::string, std::string, std::less<>> kNotAPanelKey = {
    {std::string(tkey::kPageImageShift), "an exception page's own item, inside the list"},
    {std::string(tkey::kPMPaperWidth), "page format: the print dialog's paper size"},
    {std::string(tkey::kPMPaperLength), "page format: the print dialog's paper size"},
    {std::string(tkey::kPMOrientation), "page format: the print dialog's orientation"},
    {std::string(tkey::kPMCopies), "the print dialog's copies"},
    {std::string(tkey::kPMCopyCollate), "the print dialog's collation"},
    {std::string(tkey::kPMFirstPage), "the print dialog's page range"},
    {std::string(tkey::kPMLastPage), "the print dialog's page range"},
    {std::string(tkey::kPMJobName), "the document's name, given by the application"},
    {std::string(tkey::kOptions), "the host's own item, rewritten on every saving sync"},
    {std::string(tkey::kRotateBooklet180), "removed by the host on every saving sync"},
    {std::string(tkey::kControllerFamily), "the host's own item (the printer's controller)"},
    {std::string(tkey::kControllerVersion), "the host's own item (the printer's controller)"},
    {std::string(tkey::kClientUserName), "the host's own item (this computer's user)"},
    {std::string(tkey::kClientComputerName), "the host's own item (this computer)"},
    {std::string(tkey::kClientIPAddress), "the host's own item (this computer's address)"},
};

// Keys a panel writes back other than it read them, with the value the test
// ticket's one comes back as.
const std::map<std::string, Value, std::less<>> kWrittenDifferently = {
    // Read as the menu's position (1-based), written as the job ticket's
    // 0-based value.
    {std::string(tkey::kRotateImage180), Value(std::int32_t{1})},
};

// The ticket's item keys: every constant of the header whose text is a
// reverse-domain name (the keys inside dictionaries are plain words).
std::vector<std::string> DefinedTicketKeys() {
  std::ifstream in(TestData("../../src/core/ticket_keys.h"));
  std::stringstream text;
  text << in.rdbuf();
  const std::string source = text.str();
  static const std::regex constant(R"re(constexpr std::string_view \w+ =\s*"(com\.[^"]+)")re");
  std::vector<std::string> keys;
  for (std::sregex_iterator it(source.begin(), source.end(), constant), end; it != end; ++it) {
    keys.push_back((*it)[1].str());
  }
  return keys;
}

TEST(KeyCoverage, EveryTicketKeyIsReadAndWrittenBySomePanel) {
  const std::vector<std::string> defined = DefinedTicketKeys();
  ASSERT_GT(defined.size(), 60u) << "the header's constants were not found";
  const std::optional<Ticket> every = Ticket::Load(TestData("keys/every-key.plist"));
  ASSERT_TRUE(every);

  Dialog dialog;
  dialog.ticket() = *every;
  dialog.start();
  for (int tab = 1; tab <= 6; ++tab) dialog.showPanel(tab);
  dialog.ticket().clear();
  ASSERT_EQ(dialog.sync(false), kNoErr);
  const Ticket& written = dialog.ticket();

  for (const std::string& key : defined) {
    if (kNotAPanelKey.contains(key)) continue;
    const Value* before = every->get(key);
    if (before == nullptr) {
      ADD_FAILURE() << key << ": the test ticket needs a value for it";
      continue;
    }
    const Value* after = written.get(key);
    if (after == nullptr) {
      ADD_FAILURE() << key << ": no panel writes it";
    } else {
      const auto different = kWrittenDifferently.find(key);
      const Value& expected = different != kWrittenDifferently.end() ? different->second : *before;
      EXPECT_EQ(*after, expected) << key << ": not read back as it was";
    }
  }
  for (const auto& [key, reason] : kNotAPanelKey) {
    EXPECT_NE(std::find(defined.begin(), defined.end(), key), defined.end())
        << key << " (" << reason << ") is no longer defined";
  }
}

}  // namespace
}  // namespace zorva::test

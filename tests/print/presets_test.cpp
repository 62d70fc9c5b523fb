// Presets in the user's configuration folder: saved, listed, chosen and
// deleted by name; names a file cannot carry refused; the last used
// settings kept per printer; and a preset reads as any ticket file.
#include "print/presets.h"

#include <gtest/gtest.h>

#include "core/ticket_keys.h"
#include "print/job_options.h"
#include "support/test_support.h"

namespace zorva {
namespace {

using test::ScopedEnv;
using test::TempDir;

class Presets : public ::testing::Test {
 protected:
  Presets() : prefs_("ZORVA_PREFERENCES_DIR", (dir_ / "config").string()) {
    settings_.setNumber(kTicketClientSystem, tkey::kFinishingDuplex, 2);
    settings_.setString(kTicketClientSystem, tkey::kPMJobName, "Report");
    settings_.setNumber(kTicketClientSystem, tkey::kPMFirstPage, 3);
    settings_.setString(kTicketClientSystem, tkey::kClientIPAddress, "10.0.0.7");
  }
  TempDir dir_;
  ScopedEnv prefs_;
  Ticket settings_;
};

TEST_F(Presets, SaveListChooseDelete) {
  std::string error;
  EXPECT_TRUE(ListPresets().empty()) << "no folder yet";
  ASSERT_TRUE(SavePreset("Duplex proofs", settings_, &error)) << error;
  ASSERT_TRUE(SavePreset("Ärger & Co", settings_, &error)) << error;
  ASSERT_TRUE(SavePreset("Booklet", Ticket(), &error)) << error;
  test::WriteText(dir_ / "config/presets/notes.txt", "not a preset");
  EXPECT_EQ(ListPresets(), (std::vector<std::string>{"Booklet", "Duplex proofs", "Ärger & Co"}));

  const std::optional<Ticket> chosen = LoadPreset("Duplex proofs", &error);
  ASSERT_TRUE(chosen) << error;
  std::int32_t duplex = 0;
  EXPECT_TRUE(chosen->getNumber(tkey::kFinishingDuplex, duplex));
  EXPECT_EQ(duplex, 2);
  for (std::string_view gone : {tkey::kPMJobName, tkey::kPMFirstPage, tkey::kClientIPAddress}) {
    EXPECT_FALSE(chosen->contains(gone)) << gone << " belongs to one job, not to a preset";
  }
  EXPECT_TRUE(Ticket::Load(*PresetPath("Duplex proofs"))) << "a preset is a ticket file";

  settings_.setNumber(kTicketClientSystem, tkey::kFinishingDuplex, 3);
  ASSERT_TRUE(SavePreset("Duplex proofs", settings_, &error)) << "saving again replaces";
  LoadPreset("Duplex proofs", &error)->getNumber(tkey::kFinishingDuplex, duplex);
  EXPECT_EQ(duplex, 3);

  ASSERT_TRUE(DeletePreset("Booklet", &error)) << error;
  EXPECT_FALSE(DeletePreset("Booklet", &error));
  EXPECT_EQ(error, "no preset named \"Booklet\"");
  EXPECT_FALSE(LoadPreset("Booklet", &error));
  EXPECT_EQ(ListPresets().size(), 2u);
}

TEST_F(Presets, NamesAFileCannotCarryAreRefused) {
  const std::pair<std::string, std::string> cases[] = {
      {"", "a preset needs a name"},
      {"a/b", "a preset name cannot contain \"/\""},
      {"..", "a preset name cannot begin with \".\""},
      {".hidden", "a preset name cannot begin with \".\""},
      {"tab\there", "a preset name cannot contain control characters"},
      {std::string(250, 'x'), "a preset name is at most 249 bytes long"},
  };
  for (const auto& [name, problem] : cases) {
    std::string error;
    EXPECT_EQ(PresetNameProblem(name), problem);
    EXPECT_FALSE(SavePreset(name, settings_, &error)) << name;
    EXPECT_EQ(error, problem);
    EXPECT_FALSE(PresetPath(name));
  }
  EXPECT_FALSE(std::filesystem::exists(dir_ / "config/presets")) << "nothing was written";
}

TEST_F(Presets, LastUsedSettingsArePerPrinter) {
  std::string error;
  Ticket other;
  other.setNumber(kTicketClientSystem, tkey::kFinishingDuplex, 1);
  ASSERT_TRUE(SaveLastUsedSettings("QM4400", settings_, &error)) << error;
  ASSERT_TRUE(SaveLastUsedSettings("../Office/2", other, &error)) << error;
  std::int32_t duplex = 0;
  LoadLastUsedSettings("QM4400")->getNumber(tkey::kFinishingDuplex, duplex);
  EXPECT_EQ(duplex, 2);
  LoadLastUsedSettings("../Office/2")->getNumber(tkey::kFinishingDuplex, duplex);
  EXPECT_EQ(duplex, 1);
  EXPECT_EQ(LastUsedPath("../Office/2")->parent_path(), dir_ / "config/last-used")
      << "a printer name never leaves the folder";
  EXPECT_FALSE(LoadLastUsedSettings("Elsewhere"));
  EXPECT_TRUE(ListPresets().empty()) << "last used settings are not presets";
}

}  // namespace
}  // namespace zorva

// Tests for the preference store: defaults for missing or damaged files,
// folder creation, and that a failed write never damages the previous file.
#include "host/preferences.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include "support/test_support.h"

namespace zorva {
namespace {

namespace fs = std::filesystem;
using test::ReadText;
using test::ScopedEnv;
using test::TempDir;
using test::WriteText;

constexpr const char* kFile = "com.zorva.print.inputhistory.plist";

class PreferencesTest : public ::testing::Test {
 protected:
  // Runs a write with stderr captured and returns what it printed.
  template <typename F>
  static std::string Captured(F write) {
    testing::internal::CaptureStderr();
    write();
    return testing::internal::GetCapturedStderr();
  }

  TempDir tmp_;
  fs::path prefs_ = tmp_.path() / "prefs";
  fs::path shared_ = tmp_.path() / "shared";
  ScopedEnv prefsEnv_{"ZORVA_PREFERENCES_DIR", prefs_.string()};
  ScopedEnv sharedEnv_{"ZORVA_SHARED_DIR", shared_.string()};
};

// Every entry of the folder, so a left-over temporary file shows up.
std::vector<std::string> Entries(const fs::path& dir) {
  std::vector<std::string> names;
  for (const auto& e : fs::directory_iterator(dir)) names.push_back(e.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

TEST_F(PreferencesTest, MissingFileIsAWritableEmptyDictionaryThatPythonReads) {
  auto prefs = CopyUserPreferences(kFile);
  ASSERT_TRUE(prefs && prefs->dictionary());
  EXPECT_TRUE(prefs->dictionary()->empty());
  EXPECT_FALSE(fs::exists(prefs_));  // reading creates nothing

  Dictionary stock{{"Name", Value("Matte <\"A4\"> & more")}, {"Weight", Value(120)}};
  prefs->dictionary()->set("Stock", Value(stock));
  prefs->dictionary()->set("History", Value(Array{Value("\u00E9t\u00E9"), Value(0.25)}));
  ASSERT_TRUE(WriteUserPreferences(kFile, *prefs));
  EXPECT_EQ(fs::status(prefs_).permissions() & fs::perms::all, fs::perms::owner_all);
  EXPECT_EQ(CopyUserPreferences(kFile), prefs);
  auto r = test::RunProgram(
      "python3", {"-c",
                  "import plistlib,sys; d=plistlib.load(open(sys.argv[1],'rb')); "
                  "assert d['Stock']['Weight']==120 and d['History'][0]=='\\u00e9t\\u00e9', d",
                  (prefs_ / kFile).string()});
  EXPECT_EQ(r.exitCode, 0) << r.err;
}

TEST_F(PreferencesTest, DamagedFileIsEmptyForUserPrefsAndAnErrorForSharedData) {
  fs::create_directories(prefs_);
  WriteText(prefs_ / kFile, "<plist><dict><key>a</key>");
  auto prefs = CopyUserPreferences(kFile);
  ASSERT_TRUE(prefs && prefs->dictionary());
  EXPECT_TRUE(prefs->dictionary()->empty());

  EXPECT_EQ(Captured([] { EXPECT_FALSE(CopyXMLData("absent.plist")); }), "");
  // The shared folder is made on first use, however deep.
  ScopedEnv nested("ZORVA_SHARED_DIR", (shared_ / "a" / "b").string());
  auto path = CopyPreferenceFileURL(kFile);
  ASSERT_TRUE(path);
  EXPECT_EQ(*path, shared_ / "a" / "b" / kFile);
  EXPECT_TRUE(fs::is_directory(shared_ / "a" / "b"));

  WriteText(*path, "<plist><dict><key>a</key>");
  const std::string err = Captured([] { EXPECT_FALSE(CopyXMLData(kFile)); });
  const std::string prefix = "CopyXMLData()::CFPropertyListCreateFromXMLData() error: ";
  EXPECT_EQ(err.substr(0, prefix.size()), prefix) << err;
  EXPECT_GT(err.size(), prefix.size() + 1) << "no reason given";
  EXPECT_EQ(err.back(), '\n');

  WriteText(*path,
            "<plist version=\"1.0\"><dict><key>Text</key><string>DRAFT</string></dict>"
            "</plist>\n");
  auto data = CopyXMLData(kFile);
  ASSERT_TRUE(data && data->dictionary());
  EXPECT_EQ(*data->dictionary()->getString("Text"), "DRAFT");
}

TEST_F(PreferencesTest, NoFolderOrAnEscapingNameFails) {
  EXPECT_FALSE(CopyPreferenceFileURL("../escape"));
  EXPECT_EQ(
      Captured([] { EXPECT_FALSE(WriteUserPreferences("/tmp/escape", Value(Dictionary{}))); }),
      "WriteUserPreferences() failed (22)\n");

  ScopedEnv noPrefs("ZORVA_PREFERENCES_DIR", std::nullopt);
  {
    ScopedEnv xdg("XDG_CONFIG_HOME", "relative");  // ignored: not absolute
    ScopedEnv home("HOME", "/home/op");
    EXPECT_EQ(UserPreferencesFolder(), fs::path("/home/op/.config/zorva"));
  }
  ScopedEnv noXdg("XDG_CONFIG_HOME", std::nullopt);
  ScopedEnv noHome("HOME", std::nullopt);
  EXPECT_FALSE(CopyUserPreferences(kFile));
  EXPECT_EQ(Captured([] { EXPECT_FALSE(WriteUserPreferences(kFile, Value(Dictionary{}))); }),
            "WriteUserPreferences() failed (2)\n");
}

TEST_F(PreferencesTest, FolderThatIsAFileFailsWithoutTouchingIt) {
  WriteText(prefs_, "not a folder");
  EXPECT_EQ(Captured([] { EXPECT_FALSE(WriteUserPreferences(kFile, Value(Dictionary{}))); }),
            "WriteUserPreferences() failed (20)\n");
  EXPECT_EQ(ReadText(prefs_), "not a folder");
  EXPECT_EQ(Entries(tmp_.path()), std::vector<std::string>{"prefs"});
}

TEST_F(PreferencesTest, WriteCutShortKeepsTheOldFile) {
  ASSERT_TRUE(WriteUserPreferences(kFile, Value(Dictionary{{"Old", Value("yes")}})));
  const std::string before = ReadText(prefs_ / kFile);
  Dictionary big;
  for (int i = 0; i < 2000; ++i) big.set("Key" + std::to_string(i), Value(std::string(40, 'v')));

  // A file-size limit stops the write part-way, as a full disk would.
  rlimit old{};
  getrlimit(RLIMIT_FSIZE, &old);
  auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit small = old;
  small.rlim_cur = 8192;
  setrlimit(RLIMIT_FSIZE, &small);
  const std::string err = Captured([&] { EXPECT_FALSE(WriteUserPreferences(kFile, Value(big))); });
  setrlimit(RLIMIT_FSIZE, &old);
  std::signal(SIGXFSZ, oldHandler);

  EXPECT_EQ(err, "WriteUserPreferences() failed (27)\n");  // EFBIG
  EXPECT_EQ(ReadText(prefs_ / kFile), before);
  EXPECT_EQ(Entries(prefs_), std::vector<std::string>{kFile});
  ASSERT_TRUE(WriteUserPreferences(kFile, Value(big)));  // and goes through once lifted
}

}  // namespace
}  // namespace zorva

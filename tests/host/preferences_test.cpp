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

TEST_F(PreferencesTest, MissingFileReadsAsEmptyDictionaryAndWritesBack) {
  auto prefs = CopyUserPreferences(kFile);
  ASSERT_TRUE(prefs);
  ASSERT_NE(prefs->dictionary(), nullptr);
  EXPECT_TRUE(prefs->dictionary()->empty());
  EXPECT_FALSE(fs::exists(prefs_));  // reading creates nothing

  prefs->dictionary()->set("StockName", Value(Array{Value("Gloss 120")}));
  ASSERT_TRUE(WriteUserPreferences(kFile, *prefs));
  EXPECT_EQ(fs::status(prefs_).permissions() & fs::perms::all, fs::perms::owner_all);
  EXPECT_EQ(CopyUserPreferences(kFile), prefs);
}

TEST_F(PreferencesTest, WrittenFileIsReadableByOtherPlistReaders) {
  Dictionary stock{{"Name", Value("Matte <\"A4\"> & more")}, {"Weight", Value(120)}};
  Value list(Dictionary{{"Count", Value(-3)},
                        {"Ratio", Value(0.25)},
                        {"Stock", Value(stock)},
                        {"History", Value(Array{Value("\u00E9t\u00E9"), Value(7)})}});
  ASSERT_TRUE(WriteUserPreferences(kFile, list));
  auto r = test::RunProgram(
      "python3", {"-c",
                  "import plistlib,sys; d=plistlib.load(open(sys.argv[1],'rb')); "
                  "assert d['Stock']['Weight']==120 and d['History'][0]=='\\u00e9t\\u00e9', d",
                  (prefs_ / kFile).string()});
  EXPECT_EQ(r.exitCode, 0) << r.err;
}

TEST_F(PreferencesTest, DamagedFileIsEmptyForUserPrefsAndAnErrorForSharedData) {
  fs::create_directories(prefs_);
  fs::create_directories(shared_);
  WriteText(prefs_ / kFile, "<plist><dict><key>a</key>");
  WriteText(shared_ / kFile, "<plist><dict><key>a</key>");

  auto prefs = CopyUserPreferences(kFile);
  ASSERT_TRUE(prefs && prefs->dictionary());
  EXPECT_TRUE(prefs->dictionary()->empty());

  testing::internal::CaptureStderr();
  EXPECT_FALSE(CopyXMLData(kFile));
  std::string err = testing::internal::GetCapturedStderr();
  const std::string prefix = "CopyXMLData()::CFPropertyListCreateFromXMLData() error: ";
  EXPECT_EQ(err.substr(0, prefix.size()), prefix) << err;
  EXPECT_GT(err.size(), prefix.size() + 1) << "no reason given";
  EXPECT_EQ(err.back(), '\n');
}

TEST_F(PreferencesTest, SharedDataMissingFileIsSilentAndValidFileParses) {
  testing::internal::CaptureStderr();
  EXPECT_FALSE(CopyXMLData("absent.plist"));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");

  auto path = CopyPreferenceFileURL("marks.plist");
  ASSERT_TRUE(path);
  WriteText(*path,
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n"
            "<dict><key>Text</key><string>DRAFT</string></dict></plist>\n");
  auto data = CopyXMLData("marks.plist");
  ASSERT_TRUE(data && data->dictionary());
  EXPECT_EQ(*data->dictionary()->getString("Text"), "DRAFT");
}

TEST_F(PreferencesTest, SharedFolderIsCreatedOnFirstUse) {
  ScopedEnv nested("ZORVA_SHARED_DIR", (shared_ / "a" / "b").string());
  ASSERT_FALSE(fs::exists(shared_));
  auto path = CopyPreferenceFileURL("com.zorva.printing.watermarks.plist");
  ASSERT_TRUE(path);
  EXPECT_EQ(*path, shared_ / "a" / "b" / "com.zorva.printing.watermarks.plist");
  EXPECT_TRUE(fs::is_directory(shared_ / "a" / "b"));
  EXPECT_FALSE(fs::exists(*path));
}

TEST_F(PreferencesTest, FolderFollowsTheEnvironment) {
  ScopedEnv noPrefs("ZORVA_PREFERENCES_DIR", std::nullopt);
  {
    ScopedEnv xdg("XDG_CONFIG_HOME", "/cfg");
    EXPECT_EQ(UserPreferencesFolder(), fs::path("/cfg/zorva"));
  }
  ScopedEnv relativeXdg("XDG_CONFIG_HOME", "relative");
  {
    ScopedEnv home("HOME", "/home/op");
    EXPECT_EQ(UserPreferencesFolder(), fs::path("/home/op/.config/zorva"));
  }
  ScopedEnv noXdg("XDG_CONFIG_HOME", std::nullopt);
  ScopedEnv noHome("HOME", std::nullopt);
  EXPECT_FALSE(UserPreferencesFolder());
  EXPECT_FALSE(CopyUserPreferences(kFile));
  testing::internal::CaptureStderr();
  EXPECT_FALSE(WriteUserPreferences(kFile, Value(Dictionary{})));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "WriteUserPreferences() failed (2)\n");
}

TEST_F(PreferencesTest, FileNamesCannotLeaveTheFolder) {
  EXPECT_FALSE(CopyPreferenceFileURL("../escape"));
  EXPECT_FALSE(CopyPreferenceFileURL(""));
  testing::internal::CaptureStderr();
  EXPECT_FALSE(WriteUserPreferences("/tmp/escape", Value(Dictionary{})));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "WriteUserPreferences() failed (22)\n");
}

// ---- Failed writes ------------------------------------------------------------

TEST_F(PreferencesTest, FolderThatIsAFileFailsWithoutTouchingIt) {
  WriteText(prefs_, "not a folder");
  testing::internal::CaptureStderr();
  EXPECT_FALSE(WriteUserPreferences(kFile, Value(Dictionary{{"k", Value(1)}})));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "WriteUserPreferences() failed (20)\n");
  EXPECT_EQ(ReadText(prefs_), "not a folder");
  EXPECT_EQ(Entries(tmp_.path()), std::vector<std::string>{"prefs"});
}

// Limits the size of files this process may write, the way a full disk would
// stop a write part-way, and puts everything back afterwards.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &old_);
    oldHandler_ = std::signal(SIGXFSZ, SIG_IGN);
    rlimit small = old_;
    small.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &old_);
    std::signal(SIGXFSZ, oldHandler_);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  rlimit old_{};
  void (*oldHandler_)(int) = SIG_DFL;
};

TEST_F(PreferencesTest, WriteCutShortKeepsTheOldFile) {
  ASSERT_TRUE(WriteUserPreferences(kFile, Value(Dictionary{{"Old", Value("yes")}})));
  const std::string before = ReadText(prefs_ / kFile);

  Dictionary big;
  for (int i = 0; i < 2000; ++i) big.set("Key" + std::to_string(i), Value(std::string(40, 'v')));
  bool ok = true;
  std::string err;
  {
    FileSizeLimit limit(8192);
    testing::internal::CaptureStderr();
    ok = WriteUserPreferences(kFile, Value(big));
    err = testing::internal::GetCapturedStderr();
  }
  EXPECT_FALSE(ok);
  EXPECT_EQ(err, "WriteUserPreferences() failed (27)\n");  // EFBIG
  EXPECT_EQ(ReadText(prefs_ / kFile), before);
  EXPECT_EQ(Entries(prefs_), std::vector<std::string>{kFile});

  // The same data goes through once the limit is gone.
  ASSERT_TRUE(WriteUserPreferences(kFile, Value(big)));
  EXPECT_EQ(CopyUserPreferences(kFile), Value(big));
}

}  // namespace
}  // namespace zorva

// Tests for the watermark store: records survive the file with every field
// under its own key and type, the defaults, fonts, damaged files, and that a
// failed write reports itself and leaves the previous file as it was.
#include "watermarks/watermark_store.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <bit>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "core/bundle.h"
#include "core/plist_io.h"
#include "support/test_support.h"

namespace zorva {
namespace {

namespace fs = std::filesystem;
using test::ReadText;
using test::ScopedEnv;
using test::TempDir;
using test::WriteText;

constexpr std::string_view kFile = kWatermarkFileName;

class WatermarkStoreTest : public ::testing::Test {
 protected:
  Dictionary Root() const {
    std::optional<Value> root = ReadPropertyListFile(file_);
    return root && root->dictionary() ? *root->dictionary() : Dictionary{};
  }
  static Dictionary Entry(const Dictionary& root, std::string_view name) {
    const Dictionary* entry = root.getDictionary(name);
    EXPECT_NE(entry, nullptr) << name;
    return entry ? *entry : Dictionary{};
  }

  TempDir tmp_;
  fs::path shared_ = tmp_.path() / "shared";
  fs::path file_ = shared_ / std::string(kFile);
  ScopedEnv sharedEnv_{"ZORVA_SHARED_DIR", shared_.string()};
  ScopedEnv bundleEnv_{"ZORVA_BUNDLE_PATH", ZORVA_BUILD_BUNDLES};
  ScopedEnv languageEnv_{"LANGUAGE", "en"};
};

// Every field different from every other, and floats that only survive when
// they are written with all their digits.
WatermarkData TextWatermark() {
  WatermarkData w;
  w.isText = true;
  w.textString = "Entwurf – vertraulich";
  w.filename = "stale.png";
  w.filePath = "/home/ana/Pictures/stale.png";
  w.fontName = "DejaVuSans-Bold";
  w.xOffset = 0.1f;
  w.yOffset = -2.7f;
  w.fontColorRed = 0.2f;
  w.fontColorGreen = 0.3f;
  w.fontColorBlue = 0.4f;
  w.fontColorAlpha = 0.9f;
  w.wellColorRed = 0.15f;
  w.wellColorGreen = 0.25f;
  w.wellColorBlue = 0.35f;
  w.wellColorAlpha = 0.45f;
  w.angle = -30;
  w.density = 40;
  w.scale = 150;
  w.units = 2;
  w.fontSize = 96;
  w.xPos = 123.456789012345;
  w.yPos = -311.049927;
  w.glyphs = std::vector<std::uint16_t>{0x0024, 0xfffe, 0x0000, 0x1234};
  return w;
}

WatermarkData PictureWatermark() {
  WatermarkData w;
  w.filename = "logo.png";
  w.filePath = "/srv/art/logo.png";
  w.fontColorAlpha = 0.5f;
  w.wellColorAlpha = 0.75f;
  w.scale = 80;
  w.density = 60;
  w.xPos = 10.5;
  w.yPos = 20.25;
  return w;
}

TEST_F(WatermarkStoreTest, TextAndPictureRoundTripAndGlyphKeysOnlyWithGlyphs) {
  const WatermarkData text = TextWatermark();
  const WatermarkData picture = PictureWatermark();
  ASSERT_EQ(saveWatermarkData(kFile, text), 0);
  ASSERT_EQ(saveWatermarkData(kFile, picture), 0);
  WatermarkData loaded;
  ASSERT_TRUE(loadWatermarkData(kFile, text.textString, loaded));
  EXPECT_EQ(loaded, text);
  ASSERT_TRUE(loadWatermarkData(kFile, "logo.png", loaded));
  EXPECT_EQ(loaded, picture);  // so the glyphs of the text watermark are gone
  EXPECT_FALSE(loadWatermarkData(kFile, "No such watermark", loaded));
  EXPECT_EQ(loaded, picture);

  const Dictionary none = Entry(Root(), "logo.png");
  EXPECT_FALSE(none.contains("glyphCount") || none.contains("glyphs"));
  EXPECT_EQ(none.size(), 21u);
  // An empty but present array is still "has glyphs".
  WatermarkData empty = text;
  empty.glyphs = std::vector<std::uint16_t>{};
  ASSERT_EQ(saveWatermarkData(kFile, empty), 0);
  EXPECT_EQ(*Entry(Root(), empty.textString).find("glyphCount"), Value(0));
}

TEST_F(WatermarkStoreTest, PythonReadsTheFileAndFloatsStayThirtyTwoBit) {
  const WatermarkData w = TextWatermark();
  ASSERT_EQ(saveWatermarkData(kFile, w), 0);
  // Each real of the entry as its big-endian 32-bit bytes when it is exactly
  // a 32-bit float, otherwise as its repr; then the glyph bytes.
  const char* script =
      "import plistlib, struct, sys\n"
      "e = plistlib.load(open(sys.argv[1], 'rb'))[sys.argv[2]]\n"
      "for k in sorted(k for k in e if isinstance(e[k], float)):\n"
      "    b = struct.pack('>f', e[k])\n"
      "    print(k, b.hex() if struct.unpack('>f', b)[0] == e[k] else repr(e[k]))\n"
      "print(e['glyphCount'], e['glyphs'].hex())\n";
  test::ToolResult r = test::RunProgram("python3", {"-c", script, file_.string(), w.textString});
  ASSERT_EQ(r.exitCode, 0) << r.err;

  auto f32 = [](float f) {
    char hex[9];
    std::snprintf(hex, sizeof hex, "%08x", std::bit_cast<std::uint32_t>(f));
    return std::string(hex);
  };
  const std::string expected =
      "fontColorAlpha " + f32(w.fontColorAlpha) + "\nfontColorBlue " + f32(w.fontColorBlue) +
      "\nfontColorGreen " + f32(w.fontColorGreen) + "\nfontColorRed " + f32(w.fontColorRed) +
      "\nwellColorAlpha " + f32(w.wellColorAlpha) + "\nwellColorBlue " + f32(w.wellColorBlue) +
      "\nwellColorGreen " + f32(w.wellColorGreen) + "\nwellColorRed " + f32(w.wellColorRed) +
      "\nxOffset " + f32(w.xOffset) + "\nxPos 123.456789012345\nyOffset " + f32(w.yOffset) +
      "\nyPos -311.049927\n4 0024fffe00001234\n";
  EXPECT_EQ(r.out, expected);
}

TEST_F(WatermarkStoreTest, DefaultsMakeThreeEntriesAndTheList) {
  EXPECT_TRUE(loadWatermarkList(kFile).empty());  // no file yet
  ASSERT_EQ(CreateDefaultWatermarks(GetPDEBundle()), 0);

  EXPECT_EQ(Root().size(), 4u);  // the three below and the list
  EXPECT_EQ(loadWatermarkList(kFile), (std::vector<std::string>{"Draft", "Confidential", "Copy"}));

  WatermarkData expected;
  expected.isText = true;
  expected.fontName = "ArialMT";
  expected.fontSize = 72;
  expected.angle = 45;
  expected.density = 25;
  expected.scale = 100;
  expected.fontColorRed = expected.fontColorGreen = 0.75f;
  expected.fontColorBlue = expected.fontColorAlpha = 1.0f;
  expected.wellColorBlue = expected.wellColorAlpha = 1.0f;
  const struct {
    const char* name;
    double x, y;
  } positions[] = {{"Draft", 280.627441, 311.049927},
                   {"Confidential", 201.350601, 231.773102},
                   {"Copy", 276.36319, 306.785675}};
  for (const auto& p : positions) {
    expected.textString = p.name;
    expected.xPos = p.x;
    expected.yPos = p.y;
    WatermarkData loaded;
    ASSERT_TRUE(loadWatermarkData(kFile, p.name, loaded));
    EXPECT_EQ(loaded, expected) << p.name;
  }
}

TEST_F(WatermarkStoreTest, ReplacingAndRemovingTouchOnlyThatEntry) {
  ASSERT_EQ(CreateDefaultWatermarks(GetPDEBundle()), 0);
  WatermarkData picture = PictureWatermark();
  picture.filename = "Draft";  // a picture named like a text watermark replaces it
  ASSERT_EQ(saveWatermarkData(kFile, picture), 0);
  WatermarkData loaded;
  ASSERT_TRUE(loadWatermarkData(kFile, "Draft", loaded));
  EXPECT_EQ(loaded, picture);

  ASSERT_EQ(storeFontData(kFile, "Confidential", Data{1, 2}), 0);
  ASSERT_EQ(removeWatermarkData(kFile, "Confidential"), 0);
  Dictionary root = Root();
  EXPECT_FALSE(root.contains("Confidential"));
  EXPECT_TRUE(root.contains("com.zorva.printing.font.Confidential"));
  EXPECT_EQ(root.size(), 4u);
  EXPECT_EQ(loadWatermarkList(kFile).size(), 3u);  // the list is the caller's to change

  // Nothing to remove: nothing is written, and the list is no watermark.
  const std::string before = ReadText(file_);
  EXPECT_EQ(removeWatermarkData(kFile, "Confidential"), 0);
  EXPECT_EQ(removeWatermarkData(kFile, "WatermarkListEntries"), 0);
  EXPECT_EQ(ReadText(file_), before);
}

TEST_F(WatermarkStoreTest, FontsKeepTheirBytesBesideTheWatermarks) {
  const Data font = {0x00, 0x01, 0x00, 0x00, 0xff, 0x00, 0x7f};
  ASSERT_EQ(storeFontData(kFile, "ArialMT", font), 0);
  ASSERT_EQ(saveWatermarkList(kFile, {"Draft"}), 0);

  std::vector<std::uint8_t> buffer = {0xaa};
  ASSERT_TRUE(loadFontData(kFile, "ArialMT", buffer));
  EXPECT_EQ(buffer, (std::vector<std::uint8_t>{0xaa, 0x00, 0x01, 0x00, 0x00, 0xff, 0x00, 0x7f}));
  EXPECT_FALSE(loadFontData(kFile, "Missing", buffer));
  EXPECT_EQ(buffer.size(), 8u);

  // Watermark names that would overwrite the list or a font are refused, and
  // the message says why rather than blaming a write that never happened.
  testing::internal::CaptureStderr();
  WatermarkData clash = PictureWatermark();
  clash.filename = "WatermarkListEntries";
  EXPECT_EQ(saveWatermarkData(kFile, clash), EINVAL);
  clash.filename = "com.zorva.printing.font.ArialMT";
  EXPECT_EQ(saveWatermarkData(kFile, clash), EINVAL);
  EXPECT_EQ(storeFontData(kFile, "", font), EINVAL);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "saveWatermarkData: \"WatermarkListEntries\" is a reserved name; the watermark was "
            "not saved\n"
            "saveWatermarkData: \"com.zorva.printing.font.ArialMT\" is a reserved name; the "
            "watermark was not saved\n"
            "storeFontData: a font needs a name; the font was not saved\n");
  EXPECT_EQ(loadWatermarkList(kFile), std::vector<std::string>{"Draft"});
  EXPECT_TRUE(loadFontData(kFile, "ArialMT", buffer));
}

TEST_F(WatermarkStoreTest, LongTextIsCutOnACharacterBoundary) {
  std::string longText;
  for (int i = 0; i < 300; ++i) longText += "é";  // two bytes each
  WatermarkData w = TextWatermark();
  w.textString = longText;
  w.filePath = "/" + std::string(9000, 'p');
  ASSERT_EQ(saveWatermarkData(kFile, w), 0);
  const std::string cut = longText.substr(0, 510);
  const Dictionary root = Root();  // the file itself holds only what fits
  EXPECT_EQ(*Entry(root, cut).getString("textString"), cut);
  EXPECT_EQ(Entry(root, cut).getString("filePath")->size(), 8191u);

  EXPECT_EQ(CutUtf8("a€", 3), "a");  // never half a three-byte character
  EXPECT_EQ(CutUtf8("a€", 4), "a€");
}

TEST_F(WatermarkStoreTest, DamagedFilesReadSafely) {
  fs::create_directories(shared_);
  // Wrong types are skipped, a lying glyph count is held to the data.
  WriteText(file_,
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>"
            "<key>WatermarkListEntries</key><array><string>W</string><integer>3</integer>"
            "<dict/><string>X</string></array>"
            "<key>W</key><dict><key>angle</key><string>45</string><key>scale</key>"
            "<real>99.9</real><key>fontColorRed</key><integer>1</integer>"
            "<key>glyphCount</key><integer>99</integer><key>glyphs</key><data>AAEAAgM=</data>"
            "</dict><key>X</key><string>not a watermark</string></dict></plist>\n");
  EXPECT_EQ(loadWatermarkList(kFile), (std::vector<std::string>{"W", "X"}));
  WatermarkData w;
  ASSERT_TRUE(loadWatermarkData(kFile, "W", w));
  EXPECT_EQ(w.angle, 0);
  EXPECT_EQ(w.scale, 99);
  EXPECT_EQ(w.fontColorRed, 1.0f);
  EXPECT_EQ(w.glyphs, (std::vector<std::uint16_t>{1, 2}));
  EXPECT_FALSE(loadWatermarkData(kFile, "X", w));

  // A file that is no property list reads as an empty store, and saving
  // starts a new one.
  WriteText(file_, "<plist><dict><key>");
  testing::internal::CaptureStderr();
  EXPECT_TRUE(loadWatermarkList(kFile).empty());
  ASSERT_EQ(saveWatermarkData(kFile, PictureWatermark()), 0);
  EXPECT_NE(testing::internal::GetCapturedStderr().find("CopyXMLData()"), std::string::npos);
  EXPECT_EQ(Root().size(), 1u);
}

TEST_F(WatermarkStoreTest, FailedWritesReportAndKeepTheOldFile) {
  ASSERT_EQ(CreateDefaultWatermarks(GetPDEBundle()), 0);
  const std::string before = ReadText(file_);
  const std::vector<std::pair<std::string, std::function<int()>>> writes = {
      {"saveWatermarkData", [] { return saveWatermarkData(kFile, TextWatermark()); }},
      {"removeWatermarkData", [] { return removeWatermarkData(kFile, "Copy"); }},
      {"saveWatermarkList", [] { return saveWatermarkList(kFile, {"Copy"}); }},
      {"storeFontData", [] { return storeFontData(kFile, "F", Data(4096, 7)); }},
  };
  // Root is not stopped by permissions; a file-size limit fails the write of
  // the new file part way, as a full disk would.
  rlimit old{};
  getrlimit(RLIMIT_FSIZE, &old);
  auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
  for (const auto& [who, write] : writes) {
    testing::internal::CaptureStderr();
    rlimit small = old;
    small.rlim_cur = 256;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const int err = write();
    setrlimit(RLIMIT_FSIZE, &old);
    EXPECT_EQ(err, EFBIG) << who;
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              who + ": Error " + std::to_string(EFBIG) + " writing data to file\n");
    EXPECT_EQ(ReadText(file_), before) << who;
  }
  std::signal(SIGXFSZ, oldHandler);
  // No temporary file left (the store and its lock file are all there is).
  for (const fs::directory_entry& e : fs::directory_iterator(shared_)) {
    EXPECT_NE(e.path().filename().string()[0], '.') << e.path();
  }

  // A data folder that cannot exist (its path runs through a file).
  WriteText(tmp_.path() / "plain", "x");
  ScopedEnv blocked("ZORVA_SHARED_DIR", (tmp_.path() / "plain" / "shared").string());
  testing::internal::CaptureStderr();
  EXPECT_NE(saveWatermarkData(kFile, TextWatermark()), 0);
  EXPECT_EQ(testing::internal::GetCapturedStderr().rfind("saveWatermarkData: Error ", 0), 0u);
  EXPECT_TRUE(loadWatermarkList(kFile).empty());
}

// The shared folder is sticky: a user may not replace a file another user
// created. The store then rewrites that file in place, and the owner stays.
TEST_F(WatermarkStoreTest, AnotherUserSavesIntoAStoreSomeoneElseCreated) {
  if (::geteuid() != 0) GTEST_SKIP() << "acting as a second user needs root";
  ASSERT_EQ(CreateDefaultWatermarks(GetPDEBundle()), 0);
  fs::permissions(tmp_.path(), fs::perms(0755));
  fs::permissions(shared_, fs::perms(01777));
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    // The child only reports through its exit status.
    if (::setgid(65534) != 0 || ::setuid(65534) != 0) ::_exit(2);
    WatermarkData other = TextWatermark();
    other.textString = "Other";
    std::vector<std::string> names = loadWatermarkList(kFile);
    names.push_back("Other");
    const bool saved = saveWatermarkData(kFile, other) == 0 && saveWatermarkList(kFile, names) == 0;
    ::_exit(saved ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
  struct stat st {};
  ASSERT_EQ(::stat(file_.c_str(), &st), 0);
  EXPECT_EQ(st.st_uid, 0u) << "rewritten in place, not replaced";
  EXPECT_EQ(loadWatermarkList(kFile),
            (std::vector<std::string>{"Draft", "Confidential", "Copy", "Other"}));
  WatermarkData other;
  EXPECT_TRUE(loadWatermarkData(kFile, "Other", other));
  // And the owner still replaces it as before.
  EXPECT_EQ(removeWatermarkData(kFile, "Other"), 0);
  EXPECT_FALSE(loadWatermarkData(kFile, "Other", other));
}

}  // namespace
}  // namespace zorva

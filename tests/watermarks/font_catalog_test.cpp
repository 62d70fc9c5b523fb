// The installed TrueType fonts as fontconfig lists them, and storing one for
// the watermarks: the stored bytes are the font file's and convert to a
// Type 42 program; a file that is no font is refused and nothing is stored.
#include "watermarks/font_catalog.h"

#include <gtest/gtest.h>

#include <fstream>

#include "core/file_io.h"
#include "support/test_support.h"
#include "watermarks/watermark_store.h"

namespace zorva {
namespace {

class FontCatalogTest : public ::testing::Test {
 protected:
  test::TempDir shared_;
  test::ScopedEnv sharedEnv_{"ZORVA_SHARED_DIR", shared_.path().string()};
};

// The project's setup installs DejaVu and Liberation fonts.
TEST_F(FontCatalogTest, ListsInstalledTrueTypeFontsOncePerPostScriptName) {
  const std::vector<InstalledFont> fonts = InstalledTrueTypeFonts();
  ASSERT_FALSE(fonts.empty());
  for (std::size_t i = 0; i < fonts.size(); ++i) {
    EXPECT_EQ(fonts[i].file.extension(), ".ttf") << fonts[i].file;
    EXPECT_FALSE(fonts[i].postScriptName.empty());
    for (std::size_t j = i + 1; j < fonts.size(); ++j) {
      EXPECT_NE(fonts[i].postScriptName, fonts[j].postScriptName);
    }
  }
  const std::optional<InstalledFont> sans = FindInstalledFont("DejaVuSans");
  ASSERT_TRUE(sans);
  EXPECT_EQ(sans->family, "DejaVu Sans");
  EXPECT_FALSE(FindInstalledFont("NoSuchFont-Regular"));
}

TEST_F(FontCatalogTest, AStoredFontIsTheFileItselfAndConverts) {
  const std::optional<InstalledFont> sans = FindInstalledFont("DejaVuSans");
  ASSERT_TRUE(sans);
  std::string reason;
  ASSERT_EQ(StoreWatermarkFont(kWatermarkFileName, *sans, &reason), 0) << reason;
  std::vector<std::uint8_t> stored;
  ASSERT_TRUE(loadFontData(kWatermarkFileName, "DejaVuSans", stored));
  EXPECT_EQ(stored, *ReadWholeFile(sans->file));
}

TEST_F(FontCatalogTest, AFileThatIsNoFontIsRefusedAndNothingIsStored) {
  const std::filesystem::path fake = shared_.path() / "fake.ttf";
  std::ofstream(fake) << "not a font at all";
  std::string reason;
  EXPECT_NE(
      StoreWatermarkFont(kWatermarkFileName, {"Fake", "Regular", "Fake-Regular", fake}, &reason),
      0);
  EXPECT_NE(reason.find("cannot be sent to the printer"), std::string::npos) << reason;
  std::vector<std::uint8_t> stored;
  EXPECT_FALSE(loadFontData(kWatermarkFileName, "Fake-Regular", stored));
}

}  // namespace
}  // namespace zorva

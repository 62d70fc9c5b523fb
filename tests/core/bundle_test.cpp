// Bundles: finding by identifier, resources, PO tables, languages, formats.
#include <gtest/gtest.h>

#include "core/bundle.h"
#include "core/localization.h"
#include "support/test_support.h"

namespace zorva {
namespace {

using test::ScopedEnv;
using test::TempDir;
using test::WriteText;

void MakeBundle(const std::filesystem::path& dir, const std::string& id) {
  std::filesystem::create_directories(dir / "strings" / "en");
  std::filesystem::create_directories(dir / "strings" / "de");
  WriteText(dir / "Info.plist",
            "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>CFBundleIdentifier</key>"
            "<string>" +
                id + "</string></dict></plist>");
  WriteText(dir / "strings" / "en" / "Localizable.po",
            "msgid \"Duplex\"\nmsgstr \"Two-Sided\"\n\nmsgid \"Only\"\nmsgstr \"English only\"\n");
  WriteText(dir / "strings" / "de" / "Localizable.po",
            "# German\nmsgid \"Duplex\"\nmsgstr \"\"\n\"Beid\"\n\"seitig\"\n\nmsgid \"Only\"\n"
            "msgstr \"\"\n");
  WriteText(dir / "Device Profile.plist", "<plist><dict/></plist>");
}

TEST(Bundle, FindsByIdentifierOnTheSearchPath) {
  TempDir dir;
  MakeBundle(dir / "Other.bundle", "com.example.other");
  MakeBundle(dir / "Mine.bundle", "com.zorva.test.findme");
  ScopedEnv path("ZORVA_BUNDLE_PATH", "/nonexistent:" + dir.path().string());
  const Bundle* b = Bundle::FindByIdentifier("com.zorva.test.findme");
  ASSERT_NE(b, nullptr);
  EXPECT_EQ(b->path(), dir / "Mine.bundle");
  EXPECT_EQ(Bundle::FindByIdentifier("com.zorva.test.findme"), b);  // opened once
  EXPECT_EQ(Bundle::FindByIdentifier("com.zorva.test.absent"), nullptr);
  EXPECT_EQ(b->resourcePath("Device Profile", "plist"), dir / "Mine.bundle/Device Profile.plist");
  EXPECT_EQ(b->resourcePath("Missing", "plist"), std::nullopt);
  EXPECT_EQ(b->resourcePath("../Other.bundle/Info", "plist"), std::nullopt);
}

TEST(Bundle, LocalisationFallsBackByLanguageThenToTheDefault) {
  TempDir dir;
  MakeBundle(dir.path(), "com.zorva.test.l10n");
  ScopedEnv lang("LANGUAGE", "de_AT:fr");
  auto b = Bundle::Open(dir.path());
  ASSERT_TRUE(b);
  EXPECT_EQ(b->localizedString("Duplex"), "Beidseitig");  // de_AT -> de
  EXPECT_EQ(b->localizedString("Only"), "English only");  // untranslated -> English
  EXPECT_EQ(b->localizedString("Nope"), "STRING NOT FOUND");
  EXPECT_EQ(b->localizedString("Nope", "fallback"), "fallback");
  EXPECT_EQ(b->localizedString("Duplex", kStringNotFound, "NoTable"), "STRING NOT FOUND");
}

TEST(Bundle, PreferredLanguagesFromTheEnvironment) {
  ScopedEnv language("LANGUAGE", std::nullopt);
  ScopedEnv all("LC_ALL", std::nullopt);
  ScopedEnv messages("LC_MESSAGES", "pt_BR.UTF-8@euro");
  ScopedEnv langVar("LANG", "de_DE.UTF-8");
  EXPECT_EQ(Bundle::PreferredLanguages(), (std::vector<std::string>{"pt_BR", "pt", "en"}));
  ScopedEnv c("LC_MESSAGES", "C");
  EXPECT_EQ(Bundle::PreferredLanguages(), (std::vector<std::string>{"en"}));
}

TEST(Bundle, ShippedBundleHasTheHostTitle) {
  ScopedEnv path("ZORVA_BUNDLE_PATH", ZORVA_BUILD_BUNDLES);
  ASSERT_NE(GetPDEBundle(), nullptr);
  EXPECT_EQ(LocalizedString("UseJobSetting"), "Use Job Setting");
  EXPECT_EQ(LocalizedString("no such key"), "STRING NOT FOUND");
}

TEST(PoStrings, ParsesEscapesContinuationsAndSkipsHeader) {
  std::string error;
  auto t = ParsePoStrings(
      "msgid \"\"\nmsgstr \"Language: en\\n\"\n\n"
      "msgctxt \"menu\"\nmsgid \"Letter\"\nmsgstr \"Letter (8.5 x 11\\\")\"\n"
      "msgid \"Tab\"\nmsgstr \"a\\tb\\\\\"\n"
      "msgid \"one\"\nmsgid_plural \"many\"\nmsgstr[0] \"one item\"\nmsgstr[1] \"%d items\"\n",
      &error);
  ASSERT_TRUE(t) << error;
  EXPECT_EQ(t->size(), 3u);
  EXPECT_EQ(t->at("Letter"), "Letter (8.5 x 11\")");
  EXPECT_EQ(t->at("Tab"), "a\tb\\");
  EXPECT_EQ(t->at("one"), "one item");
}

TEST(PoStrings, MalformedTextNamesTheLine) {
  std::string error;
  EXPECT_FALSE(ParsePoStrings("msgid \"a\"\nmsgstr \"b\n", &error));
  EXPECT_EQ(error, "line 2: expected a quoted string");
  EXPECT_FALSE(ParsePoStrings("msgstr \"b\"\n", &error));
  EXPECT_EQ(error, "line 1: msgstr without msgid");
  EXPECT_FALSE(ParsePoStrings("msgid \"a\\q\"\n", &error));
  EXPECT_EQ(error, "line 1: unknown escape \\q");
  EXPECT_FALSE(ParsePoStrings("\"orphan\"\n", &error));
}

TEST(Format, ObjectAndNumberDirectivesInOrderAndByPosition) {
  EXPECT_EQ(FormatString("%@ %@", {"Paper Name:", "Gloss 200"}), "Paper Name: Gloss 200");
  EXPECT_EQ(FormatString("%@ [%d]", {"Quantity", std::int64_t{3}}), "Quantity [3]");
  EXPECT_EQ(FormatString("%2$@ / %1$@", {"a", "b"}), "b / a");
  EXPECT_EQ(FormatString("100%% %ld gsm", {std::int64_t{90}}), "100% 90 gsm");
  // Missing or mismatched arguments leave the directive visible.
  EXPECT_EQ(FormatString("%@ and %@", {"one"}), "one and %@");
  EXPECT_EQ(FormatString("%d", {"text"}), "%d");
  EXPECT_EQ(FormatString("50%", {}), "50%");
}

}  // namespace
}  // namespace zorva

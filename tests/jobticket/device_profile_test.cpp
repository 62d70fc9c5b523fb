// The device profile: loading (and refusing malformed profiles), the default
// look-up order, searches by property with the value model's equality, and
// the answers when nothing is loaded.
#include <gtest/gtest.h>

#include "core/plist_io.h"
#include "jobticket/device_profile.h"
#include "jobticket/jotf_maps.h"
#include "support/test_support.h"

namespace zorva {
namespace {

Dictionary Feature(const std::string& id, Dictionary syntax, Dictionary props = {}) {
  props.set("ID", Value(id));
  return Dictionary{{"Properties", Value(props)}, {"Syntax", Value(syntax)}};
}

Dictionary Keyword(bool isDefault, Dictionary props = {}) {
  Dictionary k{{"Properties", Value(props)}};
  if (isDefault) k.set("Default", Value(true));
  return k;
}

class DeviceProfileTest : public ::testing::Test {
 protected:
  void TearDown() override { ZDPFinalize(); }

  bool Load(const Dictionary& features) {
    const auto path = dir_ / "profile.plist";
    EXPECT_EQ(WritePropertyListFile(path, Value(Dictionary{{"Features", Value(features)}})), 0);
    return ZDPInitializeFromFile(path);
  }

  test::TempDir dir_;
};

TEST_F(DeviceProfileTest, BundledProfileLoadsAndNamesEveryFeatureByItsKey) {
  ZDPInitialize();
  ASSERT_TRUE(ZDPIsLoaded());
  const std::vector<std::string> names = ZDPFeatureNames();
  EXPECT_GT(names.size(), 70u);
  for (const std::string& name : names) {
    EXPECT_EQ(*ZDPGetFeatureProperty(ZDPGetFeature(name), "ID"), Value(name));
  }
  // A second initialise keeps the profile it holds.
  const Dictionary* before = ZDPGetFeature("Duplex");
  ZDPInitialize();
  EXPECT_EQ(ZDPGetFeature("Duplex"), before);
}

TEST_F(DeviceProfileTest, MalformedProfilesAreRefused) {
  const Dictionary good = Feature("Duplex", {});
  EXPECT_FALSE(Load({{"Duplex", Value(Feature("Sides", {}))}}));  // ID is not the key
  EXPECT_FALSE(Load({{"Duplex", Value(Dictionary{{"Syntax", Value(Dictionary{})}})}}));
  EXPECT_FALSE(Load({{"Duplex", Value(3)}}));
  EXPECT_FALSE(ZDPIsLoaded());
  EXPECT_TRUE(Load({{"Duplex", Value(good)}}));
}

TEST_F(DeviceProfileTest, DefaultLookUpOrder) {
  const Dictionary twoDefaults{{"Keyword", Value(Dictionary{{"b", Value(Keyword(true))},
                                                            {"a", Value(Keyword(false))},
                                                            {"c", Value(Keyword(true))}})},
                               {"Name", Value(Dictionary{{"Default", Value("n")}})}};
  const Dictionary nameOverNumber{{"Keyword", Value(Dictionary{{"a", Value(Keyword(false))}})},
                                  {"Name", Value(Dictionary{{"Default", Value("n")}})},
                                  {"Number", Value(Dictionary{{"Default", Value(5)}})}};
  const Dictionary numberOnly{{"Number", Value(Dictionary{{"Default", Value(5)}})}};
  ASSERT_TRUE(Load({{"A", Value(Feature("A", twoDefaults))},
                    {"B", Value(Feature("B", nameOverNumber))},
                    {"C", Value(Feature("C", numberOnly))},
                    {"D", Value(Feature("D", {}))}}));
  struct Case {
    const char* feature;
    bool found;
    const char* syntax;
    Value value;
  } cases[] = {
      {"A", true, "Keyword", Value("b")},  // the first of two in the profile's order
      {"B", true, "Name", Value("n")},
      {"C", true, "Number", Value(5)},
      {"D", false, "", Value()},
  };
  for (const Case& c : cases) {
    std::string syntax;
    Value value;
    EXPECT_EQ(ZDPGetFeatureDefaultValue(ZDPGetFeature(c.feature), &syntax, &value), c.found)
        << c.feature;
    if (!c.found) continue;
    EXPECT_EQ(syntax, c.syntax) << c.feature;
    EXPECT_EQ(value, c.value) << c.feature;
  }
  EXPECT_FALSE(ZDPGetFeatureDefaultValue(nullptr, nullptr, nullptr));
}

TEST_F(DeviceProfileTest, SearchesCompareByValueEquality) {
  ASSERT_TRUE(Load({{"On", Value(Feature("On", {}, {{"JOTF", Value(true)}}))},
                    {"One", Value(Feature("One", {}, {{"JOTF", Value(1)}}))},
                    {"Real", Value(Feature("Real", {}, {{"JOTF", Value(1.0)}}))},
                    {"None", Value(Feature("None", {}))}}));
  const Value yes(true), one(1);
  EXPECT_EQ(ZDPGetFeaturesWithPropertyAndValue("JOTF", &yes),
            FeatureList{ZDPGetFeature("On")});  // true is not the number 1
  EXPECT_EQ(ZDPGetFeaturesWithPropertyAndValue("JOTF", &one),
            (FeatureList{ZDPGetFeature("One"), ZDPGetFeature("Real")}));
  EXPECT_EQ(ZDPGetFeaturesWithProperty("JOTF").size(), 3u);
  EXPECT_TRUE(ZDPGetFeaturesWithProperty("Nobody").empty());
}

TEST_F(DeviceProfileTest, KeywordsByPropertyAreTheKeywordDictionaries) {
  const Dictionary red = Keyword(false, {{"JOTFValue", Value("red")}, {"Tone", Value(1)}});
  const Dictionary blue = Keyword(true, {{"JOTFValue", Value("blue")}, {"Tone", Value(1)}});
  ASSERT_TRUE(Load(
      {{"Color", Value(Feature("Color", {{"Keyword", Value(Dictionary{{"red", Value(red)},
                                                                      {"blue", Value(blue)}})}}))},
       {"Plain", Value(Feature("Plain", {}))}}));
  const FeatureList tone = ZDPGetKeywordsWithPropertyAndValue(ZDPGetFeature("Color"), "Tone", 1);
  ASSERT_EQ(tone.size(), 2u);
  EXPECT_EQ(*tone[0], blue);  // the dictionary, in the profile's order
  EXPECT_TRUE(
      ZDPGetKeywordsWithPropertyAndValue(ZDPGetFeature("Color"), "Tone", Value(true)).empty());
  EXPECT_TRUE(ZDPGetKeywordsWithPropertyAndValue(ZDPGetFeature("Plain"), "Tone", 1).empty());
  EXPECT_TRUE(ZDPGetKeywordsWithPropertyAndValue(nullptr, "Tone", 1).empty());
}

TEST_F(DeviceProfileTest, NothingLoadedAnswersNullAndEmpty) {
  ZDPFinalize();
  EXPECT_EQ(ZDPGetFeature("Duplex"), nullptr);
  EXPECT_TRUE(ZDPGetFeaturesWithProperty("JOTF").empty());
  EXPECT_EQ(ZDPGetFeatureSyntax(nullptr, "Keyword"), nullptr);
  EXPECT_EQ(ZDPGetFeatureProperty(nullptr, "ID"), nullptr);
  ZDPInitialize();
  EXPECT_NE(ZDPGetFeature("Duplex"), nullptr);
  ZDPFinalize();
  EXPECT_EQ(ZDPGetFeature("Duplex"), nullptr);
}

// Every keyword the writer can put into an attribute is one the profile
// accepts for the feature that reads it back, with the same text.
TEST_F(DeviceProfileTest, BundledProfileAcceptsEveryKeywordTheWriterWrites) {
  ZDPInitialize();
  struct Pair {
    const char* feature;
    JotfKeywordMap map;
  } pairs[] = {
      {"Duplex", JotfDuplexMap},
      {"OutputDestination", JotfOutputDestinationMap},
      {"OutputColor", JotfOutputColorMap},
      {"Rotation", JotfRotationMap},
      {"Resolution", JotfResolutionMap},
      {"HalftoneScreen", JotfHalftoneMap},
      {"TonerSaver", JotfTonerSaverMap},
      {"Antialiasing", JotfAntialiasingMap},
      {"TaltekEmulation", JotfPrinterEmulationMap},
      {"OutputOrder", JotfOutputOrderMap},
      {"OPISubstitution", JotfOPISubstitutionMap},
      {"OPIPrescan", JotfOPIPrescanMap},
      {"HighlightPrintingColor", JotfHighlightColorantMap},
      {"ColorTrapping", JotfTrappingMap},
      {"ColorBlackOverprint", JotfBlackOverprintMap},
      {"ColorOutputImageRendering", JotfRenderingMap},
      {"SaveJobFormat", JotfSaveFormatMap},
      {"SaveJob", JotfSaveDispositionMap},
      {"Offset", JotfJobOffsetMap},
      {"CoverFront", JotfCoverTypeMap},
      {"StockColor", JotfMediaColorMap},
      {"StockType", JotfMediaTypeMap},
      {"StockType", JotfPrePrintedMap},
      {"StockCoatingType", JotfCoatingMap},
      {"StockFinish", JotfToothMap},
      {"StockGrain", JotfGrainMap},
  };
  for (const Pair& p : pairs) {
    const Dictionary* feature = ZDPGetFeature(p.feature);
    ASSERT_NE(feature, nullptr) << p.feature;
    for (const JotfKeywordRow& row : p.map) {
      EXPECT_EQ(ZDPGetKeywordsWithPropertyAndValue(feature, "JOTFValue", Value(row.keyword)).size(),
                1u)
          << p.feature << " " << row.keyword;
    }
  }
}

}  // namespace
}  // namespace zorva

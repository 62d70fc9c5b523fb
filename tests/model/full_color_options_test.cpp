// FullColorOptions: range checks that refuse without changing anything, the
// profile rules, the dictionary form and merging a dictionary in.
#include "model/full_color_options.h"

#include <gtest/gtest.h>

#include "support/test_support.h"

namespace zorva {
namespace {

TEST(FullColorOptionsTest, SettersRefuseOutOfRangeAndChangeNothing) {
  FullColorOptions o;
  std::int32_t v = 0, c = 0, m = 0, y = 0, slow = 0, fast = 0;
  EXPECT_EQ(o.setLightness(40), kNoErr);
  EXPECT_EQ(o.setLightness(101), kParamErr);
  o.lightness(&v);
  EXPECT_EQ(v, 40);
  EXPECT_EQ(o.setSaturation(-101), kParamErr);
  EXPECT_EQ(o.setColorCast(1, 2, 3), kNoErr);
  EXPECT_EQ(o.setColorCast(10, 200, 0), kParamErr);
  o.colorCast(&c, &m, &y);
  EXPECT_EQ(c * 100 + m * 10 + y, 123);
  EXPECT_EQ(o.setTrappingAdjustment(20, 0), kNoErr);
  EXPECT_EQ(o.setTrappingAdjustment(21, 5), kParamErr);
  o.trappingAdjustment(&slow, &fast);
  EXPECT_EQ(slow * 100 + fast, 2000);
  // Getters refuse only when they have nowhere to write.
  EXPECT_EQ(o.lightness(nullptr), kParamErr);
  EXPECT_EQ(o.trappingAdjustment(nullptr, &fast), kNoErr);

  // Custom profiles need a name short enough in UTF-16 units; another kind
  // keeps the stored name.
  std::int32_t kind = 0;
  FullColorOptions::Name name;
  EXPECT_EQ(o.setRGBImagesProfile(kRGBProfileCustom, std::nullopt), kParamErr);
  EXPECT_EQ(o.setRGBImagesProfile(kRGBProfileCustom, std::string("Press")), kNoErr);
  EXPECT_EQ(o.setRGBImagesProfile(2, std::nullopt), kNoErr);
  o.rgbImagesProfile(&kind, &name);
  EXPECT_EQ(kind, 2);
  EXPECT_EQ(name, std::string("Press"));
  std::string e255;
  for (int i = 0; i < 255; ++i) e255 += "\xC3\xA9";
  EXPECT_EQ(o.setCMYKImagesProfile(kCMYKProfileCustom, e255), kNoErr);
  EXPECT_EQ(o.setCMYKImagesProfile(kCMYKProfileCustom, e255 + "x"), kParamErr);
}

TEST(FullColorOptionsTest, DictionaryFormWritesOnlyWhatIsSet) {
  FullColorOptions o;
  EXPECT_TRUE(o.asTicket().empty());

  o.setColorCast(5, kUnset, 5);
  o.setTrapping(2);
  o.setTrappingAdjustment(3, 4);
  EXPECT_TRUE(o.asTicket().contains("FCTrapping"));
  EXPECT_EQ(o.asTicket().size(), 1u) << "no partial colour cast, no widths without trapping 1";

  o.setColorCast(5, 6, 7);
  o.setTrapping(kTrappingAdjustable);
  o.setTRC(std::string("Curve A"));
  o.setRGBImagesProfile(kRGBProfileCustom, std::string("MyProfile"));
  o.setCMYKTextAndGraphicsProfile(4, std::nullopt);
  o.setGrayTextAndGraphicsProfile(std::string("Gray 20"));
  o.setGraphicObjectRendering(3);
  Dictionary expected{
      {"FCColorCast", Dictionary{{"FCCyanRed", 5}, {"FCMagentaGreen", 6}, {"FCYellowBlue", 7}}},
      {"FCTrapping", 1},
      {"FCTrappingFastDirection", 4},
      {"FCTrappingSlowDirection", 3},
      {"FCTRC", "Curve A"},
      {"RGBImagesProfile", "MyProfile"},
      {"CMYKTextAndGraphicsProfile", 4},
      {"GrayTextAndGraphicsProfile", "Gray 20"},
      {"GraphicRendering", 3}};
  EXPECT_EQ(o.asTicket(), expected);
  EXPECT_TRUE(FullColorOptions(&expected) == o);
}

TEST(FullColorOptionsTest, ReadingMergesIntoCurrentValues) {
  FullColorOptions o;
  o.setLightness(10);
  o.setRGBImagesProfile(kRGBProfileCustom, std::string("Old"));
  o.setTrappingAdjustment(1, 1);

  Dictionary number{{"RGBImagesProfile", 2}, {"FCContrast", 500}, {"FCTrappingSlowDirection", 9}};
  o.fromTicket(&number);
  std::int32_t v = 0, kind = 0, slow = 0;
  FullColorOptions::Name name;
  o.lightness(&v);
  EXPECT_EQ(v, 10) << "keys not present keep their values";
  o.contrast(&v);
  EXPECT_EQ(v, 500) << "reading does not range-check";
  o.trappingAdjustment(&slow, nullptr);
  EXPECT_EQ(slow, 1) << "directions are read only with a trapping mode";
  o.rgbImagesProfile(&kind, &name);
  EXPECT_EQ(kind, 2);
  EXPECT_EQ(name, std::string("Old"));

  Dictionary named{{"RGBImagesProfile", "MyProfile"},
                   {"DestinationProfile", std::string(256, 'x')},
                   {"GrayImagesProfile", 3},
                   {"FCTRC", 1},
                   {"FCColorCast", 4}};
  o.fromTicket(&named);
  o.rgbImagesProfile(&kind, &name);
  EXPECT_EQ(kind, kRGBProfileCustom);
  EXPECT_EQ(name, std::string("MyProfile"));
  o.destinationProfile(&kind, &name);
  EXPECT_EQ(kind, kUnset) << "an over-long name is ignored";
  o.trc(&name);
  EXPECT_FALSE(name.has_value());
}

}  // namespace
}  // namespace zorva

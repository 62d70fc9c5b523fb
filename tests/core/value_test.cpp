// Value model: exact number access, the value-class reading rule, typed views.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "core/value.h"

namespace zorva {
namespace {

TEST(ValueNumbers, Int32ReadIsExactOrNothing) {
  std::int32_t out = 77;
  // Wrong kinds fail and leave the output alone.
  EXPECT_FALSE(Value("12").getNumber(out));
  EXPECT_FALSE(Value(true).getNumber(out));
  EXPECT_FALSE(Value(Dictionary{}).getNumber(out));
  // A fraction is not exact.
  EXPECT_FALSE(Value(2.5).getNumber(out));
  // Out of range both ways.
  EXPECT_FALSE(Value(std::int64_t{2147483648}).getNumber(out));
  EXPECT_FALSE(Value(std::int64_t{-2147483649}).getNumber(out));
  EXPECT_FALSE(Value(1e300).getNumber(out));
  EXPECT_FALSE(Value(std::numeric_limits<double>::quiet_NaN()).getNumber(out));
  EXPECT_EQ(out, 77);

  EXPECT_TRUE(Value(kUnset).getNumber(out));
  EXPECT_EQ(out, kUnset);
  EXPECT_TRUE(Value(std::int64_t{2147483647}).getNumber(out));
  EXPECT_EQ(out, 2147483647);
  EXPECT_TRUE(Value(-3.0).getNumber(out));  // an integral real converts exactly
  EXPECT_EQ(out, -3);
}

TEST(ValueNumbers, NarrowAndWideTargets) {
  std::int8_t i8 = 0;
  EXPECT_FALSE(Value(128).getNumber(i8));
  EXPECT_TRUE(Value(-128).getNumber(i8));
  EXPECT_EQ(i8, -128);
  std::int64_t i64 = 0;
  EXPECT_TRUE(Value(std::numeric_limits<std::int64_t>::min()).getNumber(i64));
  EXPECT_FALSE(Value(9.3e18).getNumber(i64));  // beyond 2^63
  float f = 0;
  EXPECT_TRUE(Value(0.1f).getNumber(f));
  EXPECT_EQ(f, 0.1f);
  EXPECT_TRUE(Value(0.1f).isSingleReal());
  EXPECT_FALSE(Value(1e300).getNumber(f));  // would become infinity
  double d = 0;
  EXPECT_TRUE(Value(5).getNumber(d));
  EXPECT_EQ(d, 5.0);
}

TEST(ValueNumbers, ValueClassRuleTruncatesReals) {
  std::int32_t out = 9;
  EXPECT_TRUE(Value(2.9).toInt32(out));
  EXPECT_EQ(out, 2);
  EXPECT_TRUE(Value(-2.9).toInt32(out));
  EXPECT_EQ(out, -2);
  EXPECT_FALSE(Value(std::int64_t{1} << 40).toInt32(out));
  EXPECT_FALSE(Value(3e10).toInt32(out));
  EXPECT_FALSE(Value("4").toInt32(out));
  EXPECT_EQ(out, -2);
}

TEST(ValueContainers, TypedViewsTreatOtherTypesAsAbsent) {
  Dictionary d{{"s", "text"}, {"n", 4}, {"b", true}, {"sub", Dictionary{{"x", 1}}}};
  EXPECT_EQ(*d.getString("s"), "text");
  EXPECT_EQ(d.getString("n"), nullptr);
  EXPECT_EQ(d.getDictionary("s"), nullptr);
  EXPECT_EQ(d.getBool("n"), std::nullopt);
  EXPECT_EQ(d.getBool("b"), true);
  ASSERT_NE(d.getDictionary("sub"), nullptr);
  EXPECT_TRUE(d.getDictionary("sub")->contains("x"));
  EXPECT_EQ(d.getArray("missing"), nullptr);
}

TEST(ValueContainers, CopiesAreDeepAndKeysSorted) {
  Dictionary inner{{"k", 1}};
  Dictionary outer{{"z", 1}, {"a", inner}, {"m", Array{1, "two"}}};
  Dictionary copy = outer;
  copy.getDictionary("a")->set("k", 2);
  EXPECT_EQ(*outer.getDictionary("a")->find("k")->integer(), 1);
  EXPECT_NE(copy, outer);
  std::string keys;
  for (const auto& [k, v] : outer) keys += k;
  EXPECT_EQ(keys, "amz");
  EXPECT_TRUE(copy.erase("z"));
  EXPECT_FALSE(copy.erase("z"));
}

TEST(ValueContainers, NumbersCompareByValueAcrossKinds) {
  EXPECT_EQ(Value(5), Value(5.0));
  EXPECT_NE(Value(5), Value("5"));
  EXPECT_NE(Value(true), Value(1));
  EXPECT_EQ(Value(Array{1, 2}), Value(Array{1, 2}));
  EXPECT_NE(Value(Array{1, 2}), Value(Array{2, 1}));
}

TEST(ValueContainers, ArrayInsertAndEraseClampToBounds) {
  Array a{1, 3};
  a.insert(1, 2);
  a.insert(99, 4);
  a.erase(99);
  ASSERT_EQ(a.size(), 4u);
  for (std::size_t i = 0; i < a.size(); ++i) EXPECT_EQ(*a[i].integer(), static_cast<int>(i) + 1);
  EXPECT_EQ(a.at(4), nullptr);
}

}  // namespace
}  // namespace zorva

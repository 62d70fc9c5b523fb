// Stock: the coupled setters, assignment through them, the dictionary form,
// the null-string rule of equality, context defaults and the size look-ups.
#include "model/stock.h"

#include <gtest/gtest.h>

#include "support/test_support.h"

namespace zorva {
namespace {

TEST(StockTest, DimensionsAndSizeAreCoupled) {
  Stock s;
  s.setSize(1);
  s.setWidth(kUnset);
  EXPECT_EQ(s.size(), 1);

  s.setWidth(20000);
  EXPECT_EQ(s.size(), kStockSizeCustom);
  EXPECT_EQ(s.length(), kUnset);
  // A custom size writes both dimensions, even the unset one.
  EXPECT_EQ(s.asTicket(), (Dictionary{{"Size", 75}, {"Width", 20000}, {"Length", kUnset}}));

  s.setLength(30000);
  s.setSize(4);
  EXPECT_EQ(s.width(), kUnset);
  EXPECT_EQ(s.length(), kUnset);
  EXPECT_EQ(s.asTicket(), (Dictionary{{"Size", 4}}));
}

TEST(StockTest, TransparencyForcesClearOnlyThroughTheSetter) {
  Stock s;
  s.setColor(1);
  s.setType(kStockTypeTransparency);
  EXPECT_EQ(s.color(), kStockColorClear);
  s.setType(1);
  EXPECT_EQ(s.color(), kStockColorClear);

  // Reading does not couple: a stored transparency keeps its stored colour.
  Dictionary d{{"Type", 2}, {"Color", 1}};
  Stock read(&d);
  EXPECT_EQ(read.color(), 1);
  // Assignment goes through the setters, type after colour: clear wins.
  Stock assigned;
  assigned = read;
  EXPECT_EQ(assigned.color(), kStockColorClear);
  // The copy constructor is member-wise and keeps the stored colour.
  EXPECT_EQ(Stock(read).color(), 1);
}

TEST(StockTest, AssignmentCopiesEveryField) {
  Dictionary all{{"Size", 75},
                 {"Width", 20000},
                 {"Length", 30000},
                 {"Type", 7},
                 {"CustomType", "Card"},
                 {"Color", 10},
                 {"CustomColor", "Sand"},
                 {"Modulus", 5},
                 {"Punched", 2},
                 {"Weight", 120},
                 {"Description", "d"},
                 {"SidesCoated", 2},
                 {"kCoatingType", 4},
                 {"Finish", 3},
                 {"kGrain", 1},
                 {"CustomName", "Mine"},
                 {"CustomNameOnly", true},
                 {"CustomComment", "c"},
                 {"Source", 10}};
  Stock source(&all);
  Stock t;
  t = source;
  EXPECT_EQ(t.asTicket(), all);
  t = t;
  EXPECT_TRUE(t == source);
}

TEST(StockTest, DictionaryFormKeysAndConditions) {
  Stock s;
  EXPECT_EQ(s.coatingType(), 1);
  EXPECT_TRUE(s.asTicket().empty());

  s.setCoatingType(3);
  s.setDescription(std::string());
  EXPECT_TRUE(s.asTicket().empty()) << "coating type is never written without coated sides";

  s.setSidesCoated(2);
  s.setGrain(2);
  s.setComment(std::string("note"));
  s.setCustomName(std::string("Gloss 200"));
  s.setCustomNameOnly(true);
  Dictionary expected{
      {"SidesCoated", 2},        {"kCoatingType", 3},         {"kGrain", 2},
      {"CustomComment", "note"}, {"CustomName", "Gloss 200"}, {"CustomNameOnly", true}};
  EXPECT_EQ(s.asTicket(), expected);
  Stock back(&expected);
  EXPECT_TRUE(back == s);
}

TEST(StockTest, ReadingToleratesMissingAndMistypedKeys) {
  Stock none(nullptr);
  EXPECT_TRUE(none.asTicket().empty());

  // Dimensions only with a custom size; the coating type only with coated sides.
  Dictionary d{{"Size", 4},        {"Width", 100}, {"Length", 200},      {"kCoatingType", 5},
               {"Weight", 90.9},   {"Type", "2"},  {"Color", 1e12},      {"CustomType", 7},
               {"Punched", false}, {"Finish", 2},  {"CustomNameOnly", 1}};
  Stock s(&d);
  EXPECT_EQ(s.size(), 4);
  EXPECT_EQ(s.width(), kUnset);
  EXPECT_EQ(s.coatingType(), 1);
  EXPECT_EQ(s.weight(), 90);  // a real is truncated
  EXPECT_EQ(s.type(), kUnset);
  EXPECT_EQ(s.color(), kUnset);  // out of range
  EXPECT_EQ(s.customType(), std::string());
  EXPECT_EQ(s.punched(), kUnset);
  EXPECT_EQ(s.finish(), 2);
  EXPECT_FALSE(s.customNameOnly());

  Dictionary custom{{"Size", 75}, {"Width", 100}};
  Stock c(&custom);
  EXPECT_EQ(c.width(), 100);
  EXPECT_EQ(c.length(), kUnset);
}

TEST(StockTest, EqualityFoldsCaseAndRefusesNullStrings) {
  Stock a, b;
  a.setDescription(std::string("Glossy White"));
  b.setDescription(std::string("GLOSSY white"));
  EXPECT_TRUE(a == b);
  b.setDescription(std::string("Glossy Whites"));
  EXPECT_FALSE(a == b);

  Stock n;
  n.setComment(std::nullopt);
  EXPECT_FALSE(n == n);
  EXPECT_TRUE(n.asTicket().empty());

  Stock s1, s2;
  s2.setSource(10);
  EXPECT_FALSE(s1 == s2);
}

TEST(StockTest, DefaultsDependOnContextAndLeaveTheRest) {
  Stock s;
  s.setWidth(20000);
  s.setType(4);
  s.setCustomName(std::nullopt);
  s.setCustomNameOnly(true);
  s.setSidesCoated(3);
  s.setCoatingType(2);
  s.setGrain(1);
  s.setSource(10);
  s.setComment(std::string("keep"));

  DefaultStock(&s, JobContext::Job);
  EXPECT_EQ(s.punched(), 1);
  EXPECT_EQ(s.size(), kUnset);
  EXPECT_EQ(s.width(), kUnset);
  EXPECT_EQ(s.customName(), std::string());
  EXPECT_FALSE(s.customNameOnly());
  EXPECT_EQ(s.sidesCoated(), kUnset);
  EXPECT_EQ(s.coatingType(), 2);
  EXPECT_EQ(s.grain(), 1);
  EXPECT_EQ(s.source(), 10);
  EXPECT_EQ(s.comment(), std::string("keep"));

  DefaultStock(&s, JobContext::Insert);
  EXPECT_EQ(s.punched(), kUnset);
  DefaultStock(nullptr, JobContext::Job);
}

TEST(StockTest, SizeLookUpsTakeTheFirstRow) {
  EXPECT_EQ(GetSizeForStockDimensions(21000, 29700), 4);
  EXPECT_EQ(GetSizeForStockDimensions(21600, 35600), 1);  // legal reads as letter
  EXPECT_EQ(GetSizeForStockDimensions(27900, 21600), 1);  // either argument matches
  EXPECT_EQ(GetSizeForStockDimensions(0, 0), kStockSizeCustom);
  EXPECT_EQ(GetSizeForStockDimensions(kUnset, 5), kUnset);
  EXPECT_EQ(GetSizeForStockDimensions(12345, 54321), kUnset);

  std::int32_t w = -1, l = -1;
  EXPECT_TRUE(GetStockDimensionsForSize(5, &w, &l));
  EXPECT_EQ(w, 29700);
  EXPECT_EQ(l, 42000);
  EXPECT_TRUE(GetStockDimensionsForSize(kStockSizeCustom, &w, &l));
  EXPECT_EQ(w, 0);
  EXPECT_TRUE(GetStockDimensionsForSize(kUnset, &w, &l));
  EXPECT_EQ(l, kUnset);
  EXPECT_FALSE(GetStockDimensionsForSize(999, &w, &l));
  EXPECT_EQ(w, 0);
  EXPECT_EQ(l, 0);
  EXPECT_FALSE(GetStockDimensionsForSize(0, &w, &l));
}

}  // namespace
}  // namespace zorva

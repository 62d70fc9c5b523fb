// Stock: the coupled setters, assignment through them, the dictionary form,
// the null-string rule of equality, context defaults and the size look-ups.
#include "model/stock.h"

#include <gtest/gtest.h>

#include "support/test_support.h"

namespace zorva {
namespace {

TEST(StockTest, DimensionsAndSizeAreCoupled) {
  Stock s;
  s.setWidth(20000);
  EXPECT_EQ(s.size(), kStockSizeCustom);
  // A custom size writes both dimensions, even the unset one.
  EXPECT_EQ(s.asTicket(), (Dictionary{{"Size", 75}, {"Width", 20000}, {"Length", kUnset}}));
  s.setSize(4);
  EXPECT_EQ(s.asTicket(), (Dictionary{{"Size", 4}}));
  s.setWidth(kUnset);
  EXPECT_EQ(s.size(), 4);
}

TEST(StockTest, TransparencyForcesClearThroughSettersAndAssignment) {
  Stock s;
  s.setColor(1);
  s.setType(kStockTypeTransparency);
  EXPECT_EQ(s.color(), kStockColorClear);

  // Reading does not couple: a stored transparency keeps its stored colour,
  // and so does the member-wise copy constructor.
  Dictionary d{{"Type", 2}, {"Color", 1}};
  Stock read(&d);
  EXPECT_EQ(read.color(), 1);
  EXPECT_EQ(Stock(read).color(), 1);
  // Assignment goes through the setters, type after colour: clear wins.
  Stock assigned;
  assigned = read;
  EXPECT_EQ(assigned.color(), kStockColorClear);
}

TEST(StockTest, DictionaryRoundTripsEveryFieldAndItsConditions) {
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
  Stock t;
  t = Stock(&all);
  EXPECT_EQ(t.asTicket(), all);
  t = t;
  EXPECT_TRUE(t == Stock(&all));

  Stock s;
  s.setCoatingType(3);
  s.setDescription(std::string());
  EXPECT_TRUE(s.asTicket().empty()) << "coating type is never written without coated sides";
}

TEST(StockTest, ReadingToleratesMissingAndMistypedKeys) {
  EXPECT_TRUE(Stock(nullptr).asTicket().empty());
  // Dimensions only with a custom size; the coating type only with coated sides.
  Dictionary d{{"Size", 4},        {"Width", 100}, {"Length", 200},      {"kCoatingType", 5},
               {"Weight", 90.9},   {"Type", "2"},  {"Color", 1e12},      {"CustomType", 7},
               {"Punched", false}, {"Finish", 2},  {"CustomNameOnly", 1}};
  Stock s(&d);
  EXPECT_EQ(s.asTicket(), (Dictionary{{"Size", 4}, {"Weight", 90}, {"Finish", 2}}));
  EXPECT_EQ(s.coatingType(), 1);
  EXPECT_EQ(s.customType(), std::string());

  Dictionary custom{{"Size", 75}, {"Width", 100}};
  EXPECT_EQ(Stock(&custom).width(), 100);
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
}

TEST(StockTest, DefaultsDependOnContextAndLeaveTheRest) {
  Stock s;
  s.setWidth(20000);
  s.setCustomName(std::nullopt);
  s.setCustomNameOnly(true);
  s.setSidesCoated(3);
  s.setCoatingType(2);
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
  EXPECT_EQ(GetSizeForStockDimensions(12345, 54321), kUnset);

  std::int32_t w = -1, l = -1;
  EXPECT_TRUE(GetStockDimensionsForSize(5, &w, &l));
  EXPECT_EQ(std::make_pair(w, l), std::make_pair(29700, 42000));
  EXPECT_TRUE(GetStockDimensionsForSize(kUnset, &w, &l));
  EXPECT_EQ(l, kUnset);
  EXPECT_FALSE(GetStockDimensionsForSize(999, &w, &l));
  EXPECT_EQ(std::make_pair(w, l), std::make_pair(0, 0));
}

}  // namespace
}  // namespace zorva

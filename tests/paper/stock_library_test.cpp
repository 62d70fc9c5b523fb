// Named papers against a real preference folder and the shipped bundle: the
// factory fallback (also for a damaged file, which is left alone until the
// user changes something), add/replace/duplicates by simple case folding,
// deferred lists that never write, status marks, the recent-names list and
// the list view's saved state and sort.
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>

#include "core/bundle.h"
#include "core/plist_io.h"
#include "host/preferences.h"
#include "paper/stock_library.h"
#include "paper/stock_library_view.h"
#include "paper/stock_status.h"
#include "support/test_support.h"

namespace zorva {
namespace {

using test::ScopedEnv;
using test::TempDir;

Stock NamedStock(const std::string& name, std::int32_t weight = 80) {
  Stock s;
  s.setSize(4);
  s.setType(1);
  s.setColor(1);
  s.setWeight(weight);
  s.setCustomName(name);
  return s;
}

StockLibrary Entry(const std::string& name, std::int32_t weight = 80) {
  StockLibrary e;
  e.setStock(NamedStock(name, weight));
  return e;
}

class StockLibraryTest : public ::testing::Test {
 protected:
  std::filesystem::path File() const { return prefs_ / std::string(kStockLibraryFile); }
  bool FileExists() const { return std::filesystem::exists(File()); }
  // The list as stored on disk, or nullptr.
  std::optional<Value> Stored() const { return ReadPropertyListFile(File()); }

  TempDir prefs_;
  ScopedEnv prefsEnv_{"ZORVA_PREFERENCES_DIR", prefs_.path().string()};
  ScopedEnv bundleEnv_{"ZORVA_BUNDLE_PATH", ZORVA_BUILD_BUNDLES};
};

TEST_F(StockLibraryTest, FactoryListIsReadWhenTheUserHasNoneAndIsAllValid) {
  StockLibraryList list;
  ASSERT_GE(list.count(), 12u);
  for (const auto& [uuid, value] : list.stockList()) {
    StockLibrary entry(*value.dictionary());
    EXPECT_EQ(entry.status(), kStockStatusNone) << uuid;
    EXPECT_EQ(entry.uuid(), uuid);
    Stock repaired = entry.stock();
    EXPECT_FALSE(validateAndFixStockEntry(repaired)) << uuid;
    EXPECT_TRUE(entry.stock().customName() && !entry.stock().customName()->empty());
  }
  EXPECT_TRUE(list.isDuplicate("gloss 170"));
  StockLibraryOrderList order;
  EXPECT_GT(order.stockOrderList().size(), 0u);
  EXPECT_FALSE(FileExists()) << "reading alone never writes";
}

TEST_F(StockLibraryTest, DamagedFileReadsAsFactoryListAndIsKeptUntilAChange) {
  test::WriteText(File(), "<plist><dict><key>broken");
  {
    StockLibraryList list;
    EXPECT_TRUE(list.isDuplicate("Gloss 170"));
    markStockStatus(list, Ticket());
    list.setInUse(list.stockList().begin()->first);
    StockLibraryOrderList order;
  }
  EXPECT_EQ(test::ReadText(File()), "<plist><dict><key>broken");
  {
    StockLibraryList list;
    StockLibrary e = Entry("Mine");
    list.add(e);
  }
  auto stored = Stored();
  ASSERT_TRUE(stored);
  const Dictionary* papers = stored->dictionary()->getDictionary(kStockListKey);
  ASSERT_TRUE(papers);
  EXPECT_GE(papers->size(), 13u) << "the factory papers the user saw are kept";
}

TEST_F(StockLibraryTest, AddGivesAFreshUuidAndWritesAtOnce) {
  StockLibraryList list(false);
  StockLibrary e = Entry("Gloss 170");
  e.setUUID("OLD");
  const std::string uuid = list.add(e);
  EXPECT_TRUE(std::regex_match(uuid, std::regex("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}")));
  EXPECT_EQ(e.uuid(), uuid);
  EXPECT_FALSE(list.stockList().contains("OLD"));
  EXPECT_NE(list.add(e), uuid) << "adding the same entry again makes a second paper";
  EXPECT_EQ(list.count(), 2u);
  auto stored = Stored();
  ASSERT_TRUE(stored);
  EXPECT_EQ(*stored->dictionary()->getDictionary(kStockListKey), list.stockList());
}

TEST_F(StockLibraryTest, DeferredListNeverWrites) {
  {
    StockLibraryList list(true);
    StockLibrary e = Entry("A");
    const std::string uuid = list.add(e);
    list.update(uuid, Entry("B"));
    list.replace(Entry("b", 90));
    list.setInUse(uuid);
    list.remove(uuid);
    list.add(e);
    EXPECT_EQ(list.count(), 1u);
  }
  EXPECT_FALSE(FileExists());
}

TEST_F(StockLibraryTest, ReplaceAndDuplicatesCompareBySimpleCaseFolding) {
  StockLibraryList list(true);
  StockLibrary weiss = Entry("Weiß 80");
  weiss.setName("stored name");
  const std::string uuid = list.add(weiss);
  list.setInUse(uuid);
  StockLibrary unnamed = Entry("");
  list.add(unnamed);

  EXPECT_TRUE(list.isDuplicate("WEIß 80"));
  EXPECT_FALSE(list.isDuplicate("WEISS 80"));
  EXPECT_FALSE(list.isDuplicate(""));
  EXPECT_FALSE(StockLibraryList(true).isDuplicate("Weiß 80"));

  EXPECT_FALSE(list.replace(Entry("WEISS 80", 120)));
  EXPECT_FALSE(list.replace(Entry("", 120))) << "unnamed papers never match";
  EXPECT_TRUE(list.replace(Entry("weiß 80", 120)));
  auto replaced = list.entry(uuid);
  ASSERT_TRUE(replaced);
  EXPECT_EQ(replaced->stock().weight(), 120);
  EXPECT_EQ(replaced->stock().customName(), "weiß 80");
  EXPECT_EQ(replaced->status(), kStockStatusInUse);
  EXPECT_EQ(replaced->name(), "stored name");
  EXPECT_EQ(replaced->uuid(), uuid);
  EXPECT_EQ(list.count(), 2u);
  EXPECT_EQ(list.findByName("WEIß 80"), uuid);
}

TEST_F(StockLibraryTest, UnknownKeysChangeNothingAndMatchesUseStockEquality) {
  StockLibraryList list(true);
  StockLibrary e = Entry("Gloss 170", 170);
  const std::string uuid = list.add(e);
  const Dictionary before = list.stockList();
  list.setInUse("nope");
  list.setNotInUse("nope");
  list.remove("nope");
  EXPECT_EQ(list.stockList(), before);

  EXPECT_EQ(list.findMatch(NamedStock("GLOSS 170", 170)), uuid);
  EXPECT_EQ(list.findMatch(NamedStock("Gloss 170", 171)), std::nullopt);
  list.remove(uuid);
  EXPECT_EQ(list.count(), 0u);
}

TEST_F(StockLibraryTest, CopiesNeverCarryTheReferenceCount) {
  StockLibrary e = Entry("A");
  e.setReferenceCount(7);
  e.setStatus(kStockStatusInUse);
  StockLibrary copy(e);
  EXPECT_EQ(copy.referenceCount(), 0);
  EXPECT_EQ(copy.status(), kStockStatusInUse);
  StockLibrary assigned;
  assigned.setReferenceCount(3);
  assigned = e;
  EXPECT_EQ(assigned.referenceCount(), 0);
  EXPECT_EQ(assigned.asTicket(), e.asTicket());
}

TEST_F(StockLibraryTest, StoredFormOmitsEmptyIdentifiersAndLoadingRevalidates) {
  StockLibrary e = Entry("A");
  Dictionary d = e.asTicket();
  EXPECT_FALSE(d.contains(kEntryUUIDKey));
  EXPECT_FALSE(d.contains(kEntryNameKey));
  EXPECT_EQ(d.find(kEntryStatusKey)->integer() ? *d.find(kEntryStatusKey)->integer() : -1, 0);

  d.set(kEntryStatusKey, Value(1));
  d.getDictionary(kEntryStockKey)->set("kGrain", Value(1));
  EXPECT_EQ(StockLibrary(d).status(), kStockStatusUnsupportedAttribute);
  d.getDictionary(kEntryStockKey)->erase("kGrain");
  EXPECT_EQ(StockLibrary(d).status(), kStockStatusInUse) << "a valid stock keeps its status";
}

struct StatusCase {
  const char* what;
  void (*change)(Stock&);
  int status;  // -1: left as it was
};

const StatusCase kStatusCases[] = {
    {"valid", [](Stock&) {}, -1},
    {"weight 59", [](Stock& s) { s.setWeight(59); }, 2},
    {"weight 60", [](Stock& s) { s.setWeight(60); }, -1},
    {"weight 299 (free)", [](Stock& s) { s.setWeight(299); }, -1},
    {"weight 300", [](Stock& s) { s.setWeight(300); }, -1},
    {"weight 301", [](Stock& s) { s.setWeight(301); }, 2},
    {"weight 350 (menu)", [](Stock& s) { s.setWeight(350); }, -1},
    {"colour unknown", [](Stock& s) { s.setColor(99); }, 2},
    {"type recycled (not in the menu)", [](Stock& s) { s.setType(10); }, 2},
    {"punched unknown", [](Stock& s) { s.setPunched(3); }, 2},
    {"sides coated unknown", [](Stock& s) { s.setSidesCoated(9); }, 2},
    {"finish set", [](Stock& s) { s.setFinish(2); }, 3},
    {"finish unknown", [](Stock& s) { s.setFinish(7); }, 2},
    {"grain set", [](Stock& s) { s.setGrain(1); }, 3},
    {"grain not in the table", [](Stock& s) { s.setGrain(5); }, 2},
    {"colour unknown and grain set",
     [](Stock& s) {
       s.setColor(99);
       s.setGrain(2);
     },
     2},
};

TEST(StockStatus, RulesAndBoundaries) {
  for (const StatusCase& c : kStatusCases) {
    StockLibrary e = Entry("Paper");
    e.setStatus(kStockStatusInUse);
    c.change(e.stock());
    e.validateStockEntry();
    EXPECT_EQ(e.status(), c.status == -1 ? kStockStatusInUse : c.status) << c.what;
  }
  EXPECT_STREQ(StockStatusIconName(2), "NamedPaper_Unsupported.icns");
  EXPECT_STREQ(StockStatusIconName(3), "NamedPaper_Info.icns");
  EXPECT_STREQ(StockStatusIconName(1), "NamedPaper_InUse.icns");
  EXPECT_STREQ(StockStatusIconName(9), "NamedPaper_Blank.icns");
}

TEST(StockStatus, RepairResetsEachBadAttributeAndForgetsTheName) {
  Stock bad = NamedStock("Odd");
  bad.setCustomNameOnly(true);
  bad.setColor(99);
  bad.setType(10);
  bad.setPunched(3);
  bad.setWeight(301);
  bad.setSidesCoated(9);
  bad.setCoatingType(4);
  bad.setFinish(7);
  bad.setGrain(5);
  EXPECT_TRUE(validateAndFixStockEntry(bad));
  EXPECT_EQ(bad.color(), kUnset);
  EXPECT_EQ(bad.type(), kUnset);
  EXPECT_EQ(bad.punched(), kUnset);
  EXPECT_EQ(bad.weight(), kUnset);
  EXPECT_EQ(bad.sidesCoated(), 9) << "the sides-coated value itself stays";
  EXPECT_EQ(bad.coatingType(), kUnset);
  EXPECT_EQ(bad.finish(), kUnset);
  EXPECT_EQ(bad.grain(), kUnset);
  EXPECT_EQ(bad.customName(), "");
  EXPECT_FALSE(bad.customNameOnly());

  Stock good = NamedStock("Fine", 300);
  good.setGrain(1);  // an attribute the device lacks is not repaired away
  good.setFinish(2);
  const Stock before = good;
  EXPECT_FALSE(validateAndFixStockEntry(good));
  EXPECT_EQ(good.asTicket(), before.asTicket());
}

TEST_F(StockLibraryTest, ClearStatusKeepsOnlyUnsupportedValues) {
  StockLibraryList list(true);
  StockLibrary inUse = Entry("In use");
  StockLibrary attribute = Entry("Grain");
  attribute.stock().setGrain(1);
  StockLibrary value = Entry("Heavy", 400);
  const std::string a = list.add(inUse);
  const std::string b = list.add(attribute);
  const std::string c = list.add(value);
  list.setInUse(a);
  EXPECT_EQ(list.entry(a)->status(), 1);
  list.clearStatus();
  EXPECT_EQ(*list.stockList().getDictionary(a)->find(kEntryStatusKey)->integer(), 0);
  EXPECT_EQ(*list.stockList().getDictionary(b)->find(kEntryStatusKey)->integer(), 0);
  EXPECT_EQ(list.entry(c)->status(), 2);
  EXPECT_EQ(list.entry(b)->status(), 3) << "loading brings the attribute mark back";
}

TEST_F(StockLibraryTest, MarkStockStatusMarksEveryPaperTheJobUses) {
  StockLibraryList list(true);
  StockLibrary job = Entry("Job"), insert = Entry("Insert"), cover = Entry("Cover"),
               unused = Entry("Unused");
  const std::string j = list.add(job), i = list.add(insert), c = list.add(cover),
                    u = list.add(unused);
  list.setInUse(u);
  Ticket t;
  t.setDictionary("test", "com.zorva.print.JobLevelStock", job.stock().asTicket());
  Array inserts{Value(Dictionary{{"Stock", Value(insert.stock().asTicket())}}), Value("junk")};
  t.setArray("test", "com.zorva.print.SpecialPages.InsertList", inserts);
  t.setDictionary("test", "com.zorva.print.SpecialPages.BackCover",
                  Dictionary{{"Stock", Value(cover.stock().asTicket())}});
  markStockStatus(list, t);
  EXPECT_EQ(list.entry(j)->status(), 1);
  EXPECT_EQ(list.entry(i)->status(), 1);
  EXPECT_EQ(list.entry(c)->status(), 1);
  EXPECT_EQ(list.entry(u)->status(), 0);
}

TEST_F(StockLibraryTest, OrderListKeepsTheLast25NewestFirst) {
  {
    StockLibraryOrderList order;
    order.clearOrderList();
    for (int n = 1; n <= 26; ++n) order.updateOrderList("Paper " + std::to_string(n));
    ASSERT_EQ(order.stockOrderList().size(), 25u);
    EXPECT_EQ(*order.stockOrderList()[0].string(), "Paper 26");
    EXPECT_EQ(*order.stockOrderList()[24].string(), "Paper 2");
    order.updateOrderList("Paper 10");
    EXPECT_EQ(order.stockOrderList().size(), 25u);
    EXPECT_EQ(*order.stockOrderList()[0].string(), "Paper 10");
    EXPECT_EQ(*order.stockOrderList()[1].string(), "Paper 26");
    order.remove("Paper 26");
    order.updateOrderList("");
    EXPECT_EQ(order.stockOrderList().size(), 24u);
  }
  StockLibraryOrderList reread;
  EXPECT_EQ(reread.stockOrderList().size(), 24u);
  EXPECT_EQ(*reread.stockOrderList()[1].string(), "Paper 25");
  reread.clearOrderList();
}

TEST_F(StockLibraryTest, ClearedOrderListIsWrittenByTheDestructor) {
  { StockLibraryOrderList().clearOrderList(); }
  EXPECT_EQ(StockLibraryOrderList().stockOrderList().size(), 0u)
      << "an empty saved list does not fall back to the factory one";
}

TEST_F(StockLibraryTest, ViewPreferencesReadOnlyTheIndexesTheArrayHolds) {
  using P = StockLibraryViewPreferences;
  EXPECT_EQ(P::FromArray(nullptr), P());
  Array eleven;
  for (int n = 0; n < 11; ++n) eleven.push_back(Value(false));
  P p = P::FromArray(&eleven);
  EXPECT_FALSE(p.showColumn[10]);
  EXPECT_EQ(p.printerListByDefault, P().printerListByDefault);
  Array twelve = eleven;
  twelve.push_back(Value(true));
  p = P::FromArray(&twelve);
  EXPECT_TRUE(p.printerListByDefault);
  EXPECT_FALSE(p.forceUniqueNames);
  Array wrongTypes{Value("yes"), Value(false)};
  p = P::FromArray(&wrongTypes);
  EXPECT_TRUE(p.showColumn[0]);
  EXPECT_FALSE(p.showColumn[1]);

  P all;
  all.forceUniqueNames = true;
  all.showUnsupportedAttributes = false;
  all.showColumn[3] = false;
  EXPECT_EQ(all.toArray().size(), 15u);
  ASSERT_TRUE(WriteStockLibraryViewPreferences(all));
  EXPECT_EQ(ReadStockLibraryViewPreferences(), all);

  ASSERT_TRUE(WriteStockLibraryColumnWidths({120, 80, 64}));
  EXPECT_EQ(ReadStockLibraryColumnWidths(), (std::vector<std::int32_t>{120, 80, 64}));
  EXPECT_EQ(ReadStockLibrarySelectedRow(), std::nullopt);
  ASSERT_TRUE(WriteStockLibrarySelectedRow("ABC"));
  EXPECT_EQ(ReadStockLibrarySelectedRow(), "ABC");
  EXPECT_TRUE(StockLibraryList().isDuplicate("Gloss 170")) << "other keys keep the factory list";
}

std::vector<std::string> Names(const std::vector<StockLibrary>& entries) {
  std::vector<std::string> names;
  for (const StockLibrary& e : entries) names.push_back(*e.stock().customName());
  return names;
}

TEST_F(StockLibraryTest, SortByColumnThenByNameCaseInsensitively) {
  StockLibraryList list(true);
  auto add = [&list](const std::string& name, std::int32_t weight, auto&& change) {
    StockLibrary e = Entry(name, weight);
    change(e.stock());
    list.add(e);
  };
  add("b", 90, [](Stock& s) {
    s.setSize(75);
    s.setWidth(20000);
    s.setLength(30000);
  });
  add("A", 90, [](Stock& s) {
    s.setSize(75);
    s.setWidth(20000);
    s.setLength(29000);
  });
  add("c", 300, [](Stock& s) {
    s.setType(7);
    s.setCustomType("card");
  });
  add("D", 80, [](Stock& s) {
    s.setType(7);
    s.setCustomType("Bond");
  });
  using V = std::vector<std::string>;
  EXPECT_EQ(Names(SortedStockLibraryEntries(list, kColumnName)), (V{"A", "b", "c", "D"}));
  EXPECT_EQ(Names(SortedStockLibraryEntries(list, kColumnName, false)), (V{"D", "c", "b", "A"}));
  EXPECT_EQ(Names(SortedStockLibraryEntries(list, kColumnWeight)), (V{"D", "A", "b", "c"}));
  EXPECT_EQ(Names(SortedStockLibraryEntries(list, kColumnSize)), (V{"c", "D", "A", "b"}));
  EXPECT_EQ(Names(SortedStockLibraryEntries(list, kColumnType)), (V{"A", "b", "D", "c"}));
  EXPECT_TRUE(StockLibraryListItemCompareCallback(Entry("a"), Entry("B"), kColumnStatus));
  EXPECT_FALSE(StockLibraryListItemCompareCallback(Entry("B"), Entry("a"), kColumnStatus));
}

}  // namespace
}  // namespace zorva

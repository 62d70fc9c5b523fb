// Media keywords to stock codes, and media collections to stocks.
#include "paper/ipp_papers.h"

#include <gtest/gtest.h>

#include <variant>
#include <vector>

#include "core/value.h"
#include "paper/printer_papers.h"

namespace zorva {
namespace {

struct Member {
  const char* name;
  std::variant<const char*, int> value;
};

// A media collection with keyword and integer members, in the given order.
IppPtr Collection(const std::vector<Member>& members) {
  IppPtr c(ippNew());
  for (const Member& m : members) {
    if (const auto* text = std::get_if<const char*>(&m.value)) {
      ippAddString(c.get(), IPP_TAG_ZERO, IPP_TAG_KEYWORD, m.name, nullptr, *text);
    } else {
      ippAddInteger(c.get(), IPP_TAG_ZERO, IPP_TAG_INTEGER, m.name, std::get<int>(m.value));
    }
  }
  return c;
}

std::unique_ptr<Stock> Translate(const std::vector<Member>& members) {
  IppPtr c = Collection(members);
  return StockFromMediaCollection(c.get());
}

TEST(MediaKeywords, ColourTable) {
  const std::pair<const char*, std::int32_t> cases[] = {
      {"white", 1},  {"WHITE", 1},    {"no-color", 6}, {"goldenrod", 8}, {"red", 9},
      {"ivory", 11}, {"gray", 12},    {"other", 14},   {"custom1", 15},  {"Custom7", 21},
      {"grey", 10},  {"custom8", 10}, {"", 10},        {nullptr, 10},
  };
  for (const auto& [keyword, index] : cases) {
    EXPECT_EQ(convertJOTFColorToIndex(keyword), index) << (keyword ? keyword : "(null)");
  }
}

TEST(MediaKeywords, TypeTableDecidesInOrder) {
  struct Case {
    const char* type;
    const char* prePrinted;
    const char* recycled;
    std::int32_t orderCount;
    std::int32_t index;
  };
  const Case cases[] = {
      {"stationery", nullptr, nullptr, kUnset, 1},
      {"Transparency", nullptr, nullptr, kUnset, 2},
      {"tab-stock", nullptr, nullptr, 5, 24},
      {"pre-cut-tabs", nullptr, nullptr, 5, 4},
      {"full-cut-tabs", nullptr, nullptr, kUnset, 5},
      {"labels", "pre-printed", nullptr, kUnset, 9},  // the type keyword wins
      {"envelope", nullptr, nullptr, kUnset, 8},
      {"other", nullptr, nullptr, kUnset, 22},
      {"bond", nullptr, "standard", kUnset, 13},
      {"custom3", nullptr, nullptr, kUnset, 17},
      {"card", "pre-printed", "standard", 3, 3},
      {"card", "LETTER-HEAD", nullptr, kUnset, 14},
      {"card", "blank", "none", kUnset, 10},
      {"card", nullptr, "standard", kUnset, 10},
      {"card", nullptr, "recycled", 4, 6},
      {"card", nullptr, nullptr, 0, 6},
      {"card", nullptr, nullptr, kUnset, 7},
      {nullptr, nullptr, nullptr, kUnset, 7},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(convertJOTFTypeToIndex(c.type, c.prePrinted, c.recycled, c.orderCount), c.index)
        << (c.type ? c.type : "(null)") << " " << (c.prePrinted ? c.prePrinted : "-") << " "
        << (c.recycled ? c.recycled : "-") << " " << c.orderCount;
  }
}

TEST(MediaKeywords, CoatingTable) {
  const std::pair<const char*, std::int32_t> cases[] = {
      {"glossy", 1}, {"high-gloss", 2},  {"semi-gloss", 3}, {"satin", 4},
      {"MATTE", 5},  {"velvet", kUnset}, {"none", kUnset},  {nullptr, kUnset},
  };
  for (const auto& [keyword, index] : cases) {
    EXPECT_EQ(convertJOTFCoatingTypeToIndex(keyword), index) << (keyword ? keyword : "(null)");
  }
}

TEST(MediaKeywords, SidesCoatedCombinations) {
  constexpr std::int32_t kUntouched = 99;
  struct Case {
    const char* front;
    const char* back;
    std::int32_t sides;
    std::int32_t coating;
  };
  const Case cases[] = {
      {"glossy", "none", 2, 1},
      {"none", "none", 1, kUnset},
      {"None", nullptr, kUntouched, kUntouched},
      {nullptr, "none", kUntouched, kUntouched},
      {nullptr, nullptr, kUntouched, kUntouched},
      {"glossy", "matte", 3, 1},
      {"satin", nullptr, 2, 4},
      {nullptr, "satin", 2, 4},
      {"none", "semi-gloss", 2, 3},
      {"velvet", "none", 2, kUnset},  // coated, with a coating we cannot name
  };
  for (const Case& c : cases) {
    std::int32_t sides = kUntouched;
    std::int32_t coating = kUntouched;
    convertJOTFSidesCoatedAndCoatingType(c.front, c.back, &sides, &coating);
    EXPECT_EQ(sides, c.sides) << (c.front ? c.front : "-") << "/" << (c.back ? c.back : "-");
    EXPECT_EQ(coating, c.coating) << (c.front ? c.front : "-") << "/" << (c.back ? c.back : "-");
  }
}

TEST(MediaCollection, TypeModulusAndCustomType) {
  auto tab = Translate({{"media-type", "tab-stock"}, {"media-order-count", 5}});
  EXPECT_EQ(tab->type(), 24);
  EXPECT_EQ(tab->modulus(), kUnset);

  auto precut = Translate({{"media-type", "pre-cut-tabs"}, {"media-order-count", 5}});
  EXPECT_EQ(precut->type(), 4);
  EXPECT_EQ(precut->modulus(), 5);

  auto ordered = Translate({{"media-order-count", 3}, {"media-type", "ordered-tabs"}});
  EXPECT_EQ(ordered->type(), 6);
  EXPECT_EQ(ordered->modulus(), 3);
  EXPECT_EQ(ordered->customType(), std::string());

  auto unknown = Translate({{"media-type", "heavy-card"}});
  EXPECT_EQ(unknown->type(), 7);
  EXPECT_EQ(unknown->customType(), "heavy-card");

  // An order count without a type sets nothing.
  auto countOnly = Translate({{"media-order-count", 3}});
  EXPECT_EQ(countOnly->type(), kUnset);
  EXPECT_EQ(countOnly->modulus(), kUnset);
}

TEST(MediaCollection, HoleCounts) {
  const std::pair<int, std::int32_t> cases[] = {
      {0, 1}, {1, kUnset}, {2, 2}, {3, 2}, {4, 2}, {5, kUnset}, {-1, kUnset},
  };
  for (const auto& [holes, punched] : cases) {
    EXPECT_EQ(Translate({{"media-hole-count", holes}})->punched(), punched) << holes;
  }
  EXPECT_EQ(Translate({})->punched(), kUnset);
}

TEST(MediaCollection, NamesColourWeightAndComment) {
  auto s = Translate({{"media-key", "Heavy Gloss"},
                      {"media-description", "Heavy gloss 200"},
                      {"media-color", "sea-green"},
                      {"media-weight-metric", 200},
                      {"media-info", "tray 3 only"}});
  EXPECT_EQ(s->customName(), "Heavy Gloss");
  EXPECT_EQ(s->description(), "Heavy gloss 200");
  EXPECT_EQ(s->color(), 10);
  EXPECT_EQ(s->customColor(), "sea-green");
  EXPECT_EQ(s->weight(), 200);
  EXPECT_EQ(s->comment(), "tray 3 only");

  auto blue = Translate({{"media-color", "Blue"}, {"media-weight-metric", 0}});
  EXPECT_EQ(blue->color(), 2);
  EXPECT_EQ(blue->customColor(), std::string());
  EXPECT_EQ(blue->weight(), kUnset);
}

TEST(MediaCollection, MembersMatchWholeNamesAndTheirSyntax) {
  // A longer name is not its prefix, and a member of the wrong syntax is
  // as good as absent.
  auto s = Translate({{"media-key-x", "no"}, {"media-color", 3}, {"media-weight-metric", "90"}});
  EXPECT_EQ(s->customName(), std::string());
  EXPECT_EQ(s->color(), kUnset);
  EXPECT_EQ(s->weight(), kUnset);
}

TEST(MediaCollection, CoatingAlwaysStored) {
  // A stock starts with coating type 1; a collection without coatings
  // leaves both coating fields unset.
  auto plain = Translate({{"media-key", "plain"}});
  EXPECT_EQ(plain->sidesCoated(), kUnset);
  EXPECT_EQ(plain->coatingType(), kUnset);
  auto gloss = Translate({{"media-front-coating", "glossy"}, {"media-back-coating", "none"}});
  EXPECT_EQ(gloss->sidesCoated(), 2);
  EXPECT_EQ(gloss->coatingType(), 1);
}

TEST(MediaCollection, SizeFromDimensions) {
  IppPtr size(ippNew());
  ippAddInteger(size.get(), IPP_TAG_ZERO, IPP_TAG_INTEGER, "x-dimension", 29700);
  ippAddInteger(size.get(), IPP_TAG_ZERO, IPP_TAG_INTEGER, "y-dimension", 21000);
  IppPtr c(ippNew());
  ippAddCollection(c.get(), IPP_TAG_ZERO, "media-size", size.get());
  EXPECT_EQ(StockFromMediaCollection(c.get())->size(), 4);  // A4, either way round

  IppPtr flat = Collection({{"media-size", 21000}, {"x-dimension", 21000}, {"y-dimension", 29700}});
  EXPECT_EQ(StockFromMediaCollection(flat.get())->size(), kUnset);

  IppPtr odd(ippNew());
  ippAddInteger(odd.get(), IPP_TAG_ZERO, IPP_TAG_INTEGER, "x-dimension", 12345);
  ippAddInteger(odd.get(), IPP_TAG_ZERO, IPP_TAG_INTEGER, "y-dimension", 54321);
  IppPtr c2(ippNew());
  ippAddCollection(c2.get(), IPP_TAG_ZERO, "media-size", odd.get());
  EXPECT_EQ(StockFromMediaCollection(c2.get())->size(), kUnset);
}

TEST(MediaAnswer, EveryCollectionInAnswerOrder) {
  IppPtr answer(ippNew());
  ippAddString(answer.get(), IPP_TAG_PRINTER, IPP_TAG_KEYWORD, "media-supported", nullptr, "a4");
  IppPtr a = Collection({{"media-key", "first"}});
  IppPtr b = Collection({{"media-key", "second"}});
  IppPtr c = Collection({{"media-key", "third"}});
  ipp_attribute_t* db =
      ippAddCollection(answer.get(), IPP_TAG_PRINTER, "media-col-database", a.get());
  ippSetCollection(answer.get(), &db, 1, b.get());
  ippSetCollection(answer.get(), &db, 2, c.get());
  PrinterStockList list = PrinterStocksFromAnswer(answer.get());
  ASSERT_EQ(list.size(), 3u);
  EXPECT_EQ(list[0]->customName(), "first");
  EXPECT_EQ(list[1]->customName(), "second");
  EXPECT_EQ(list[2]->customName(), "third");
  EXPECT_TRUE(PrinterStocksFromAnswer(nullptr).empty());
}

TEST(PrinterRequest, UriAndAttributesInOrder) {
  EXPECT_EQ(PrinterUriForAddress("10.1.2.3"), "http://10.1.2.3");
  EXPECT_EQ(PrinterUriForAddress("printer.local:8631"), "http://printer.local:8631");

  IppPtr r = NewMediaColDatabaseRequest("http://10.1.2.3");
  EXPECT_EQ(ippGetOperation(r.get()), IPP_OP_GET_PRINTER_ATTRIBUTES);
  EXPECT_EQ(ippGetRequestId(r.get()), 1);
  struct Expected {
    const char* name;
    ipp_tag_t tag;
    const char* value;
  };
  const Expected expected[] = {
      {"attributes-charset", IPP_TAG_CHARSET, "utf-8"},
      {"attributes-natural-language", IPP_TAG_LANGUAGE, "en"},
      {"printer-uri", IPP_TAG_URI, "http://10.1.2.3"},
      {"document-format", IPP_TAG_MIMETYPE, "application/octet-stream"},
      {"requested-attributes", IPP_TAG_KEYWORD, "media-col-database"},
  };
  ipp_attribute_t* a = ippFirstAttribute(r.get());
  for (const Expected& e : expected) {
    ASSERT_NE(a, nullptr) << e.name;
    EXPECT_STREQ(ippGetName(a), e.name);
    EXPECT_EQ(ippGetGroupTag(a), IPP_TAG_OPERATION);
    EXPECT_EQ(ippGetValueTag(a), e.tag) << e.name;
    EXPECT_STREQ(ippGetString(a, 0, nullptr), e.value);
    a = ippNextAttribute(r.get());
  }
  EXPECT_EQ(a, nullptr);
}

}  // namespace
}  // namespace zorva

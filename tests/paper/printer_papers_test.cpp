// Fetching the paper list from a real IPP printer, and from printers that
// misbehave: nothing crashes, and the list is kept or replaced as it should.
#include "paper/printer_papers.h"

#include <gtest/gtest.h>

#include <thread>

#include "hostile_printer.h"
#include "paper/ipp_guard.h"
#include "support/ipp_printer.h"

namespace zorva {
namespace {

using test::HostilePrinter;
using test::IppEvePrinter;
using namespace std::chrono_literals;

// Puts one recognisable stock in the process-wide list, to see whether a
// fetch kept or replaced it.
void SeedList() {
  PrinterStockLibraryList().clear();
  auto marker = std::make_unique<Stock>();
  marker->setCustomName(std::string("previous"));
  PrinterStockLibraryList().push_back(std::move(marker));
}

bool ListKept() {
  const PrinterStockList& list = PrinterStockLibraryList();
  return list.size() == 1 && list[0]->customName() == "previous";
}

FetchControl Quick() {
  FetchControl control;
  control.connectTimeout = 2s;
  control.answerTimeout = 1s;
  return control;
}

TEST(PrinterFetch, RealPrinterCatalogues) {
  const std::vector<std::string> three = {
      "MEMBER keyword media-key \"Plain A4\" MEMBER collection media-size { MEMBER integer "
      "x-dimension 21000 MEMBER integer y-dimension 29700 } MEMBER keyword media-type "
      "\"stationery\" MEMBER integer media-weight-metric 90 MEMBER keyword media-color \"white\"",
      "MEMBER keyword media-key \"Tabs\" MEMBER keyword media-type \"pre-cut-tabs\" MEMBER integer "
      "media-order-count 5 MEMBER integer media-hole-count 3",
      "MEMBER keyword media-key \"Gloss\" MEMBER keyword media-front-coating \"glossy\" MEMBER "
      "keyword media-back-coating \"glossy\" MEMBER text media-info \"heavy\"",
  };
  struct Case {
    std::vector<std::string> collections;
    std::size_t expected;
  };
  const Case cases[] = {
      {{}, 0},
      {{three[0]}, 1},
      {three, 3},
      {test::GeneratedCatalogue(2000), 2000},
  };
  for (const Case& c : cases) {
    IppEvePrinter printer(test::MediaColDatabaseAttributes(c.collections));
    ASSERT_TRUE(printer.ready()) << "ippeveprinter did not start";
    SeedList();
    EXPECT_EQ(RetrievePrinterStockLibrary(printer.address(), Quick()), kNoErr);
    const PrinterStockList& list = PrinterStockLibraryList();
    ASSERT_EQ(list.size(), c.expected);
    if (c.expected == 3) {
      EXPECT_EQ(list[0]->customName(), "Plain A4");
      EXPECT_EQ(list[0]->size(), 4);
      EXPECT_EQ(list[0]->type(), 1);
      EXPECT_EQ(list[0]->weight(), 90);
      EXPECT_EQ(list[0]->color(), 1);
      EXPECT_EQ(list[1]->type(), 4);
      EXPECT_EQ(list[1]->modulus(), 5);
      EXPECT_EQ(list[1]->punched(), 2);
      EXPECT_EQ(list[2]->sidesCoated(), 3);
      EXPECT_EQ(list[2]->coatingType(), 1);
      EXPECT_EQ(list[2]->comment(), "heavy");
    }
    if (c.expected == 2000) {
      EXPECT_EQ(list.front()->customName(), "paper-0");
      EXPECT_EQ(list.back()->customName(), "paper-1999");
      EXPECT_EQ(list.back()->weight(), 60 + 1999 % 240);
    }
  }
  PrinterStockLibraryList().clear();
}

TEST(PrinterFetch, NoConnection) {
  SeedList();
  const int port = test::FreeLoopbackPort();
  testing::internal::CaptureStderr();
  EXPECT_EQ(RetrievePrinterStockLibrary("127.0.0.1:" + std::to_string(port), Quick()),
            kNoConnection);
  EXPECT_EQ(testing::internal::GetCapturedStderr().rfind("Unable to connect to server", 0), 0u);
  EXPECT_TRUE(ListKept());
  PrinterStockLibraryList().clear();
}

std::string WithEndTag(std::string bytes) {
  bytes += '\x03';
  return bytes;
}

// A member attribute inside a collection value, in the wire form.
std::string Member(const std::string& name) {
  std::string out;
  out += '\x4a';
  out += '\0';
  out += '\0';
  out += static_cast<char>(0);
  out += static_cast<char>(name.size());
  out += name;
  return out;
}

std::string DeeplyNested(int depth) {
  std::string out = test::AnswerHeaderBytes();
  out += '\x04';  // printer attributes
  const std::string name = "media-col-database";
  out += '\x34';
  out += '\0';
  out += static_cast<char>(name.size());
  out += name;
  out += std::string(2, '\0');
  for (int i = 0; i < depth; ++i) {
    out += Member("media-size");
    out += std::string("\x34\x00\x00\x00\x00", 5);
  }
  for (int i = 0; i <= depth; ++i) out += std::string("\x37\x00\x00\x00\x00", 5);
  return WithEndTag(out);
}

std::string MediaSizeNotACollection() {
  IppPtr answer(ippNew());
  ippSetStatusCode(answer.get(), IPP_STATUS_OK);
  ippSetRequestId(answer.get(), 1);
  IppPtr c(ippNew());
  ippAddString(c.get(), IPP_TAG_ZERO, IPP_TAG_KEYWORD, "media-key", nullptr, "flat");
  ippAddInteger(c.get(), IPP_TAG_ZERO, IPP_TAG_INTEGER, "media-size", 21000);
  ippAddCollection(answer.get(), IPP_TAG_PRINTER, "media-col-database", c.get());
  return test::EncodeIpp(answer.get());
}

std::string UnterminatedString() {
  std::string out = test::AnswerHeaderBytes();
  out += '\x04';
  out += '\x44';  // keyword
  out += std::string("\x00\x0cmedia-ready", 2 + 11);
  out += std::string("\x7f\xff", 2);  // a value far longer than the message
  out += "a4";
  return out;
}

TEST(PrinterFetch, HostileAnswers) {
  struct Case {
    const char* what;
    std::string body;
    long declared;
    bool replaced;
    std::size_t stocks;
  };
  const std::string good = MediaSizeNotACollection();
  const Case cases[] = {
      {"garbage", "\x89PNG this is not IPP at all", -1, false, 0},
      {"empty body", "", -1, false, 0},
      {"truncated message", good.substr(0, good.size() / 2), -1, false, 0},
      {"shorter than declared", good.substr(0, good.size() - 3), static_cast<long>(good.size()),
       false, 0},
      {"nested too deep", DeeplyNested(kMaxIppCollectionDepth + 1), -1, false, 0},
      {"nested to exhaust the stack", DeeplyNested(200000), -1, false, 0},
      {"unterminated string", UnterminatedString(), -1, false, 0},
      {"media-size not a collection", good, -1, true, 1},
  };
  for (const Case& c : cases) {
    HostilePrinter printer(HostilePrinter::Mode::Answer, c.body, c.declared);
    SeedList();
    EXPECT_EQ(RetrievePrinterStockLibrary(printer.address(), Quick()), kNoErr) << c.what;
    if (!c.replaced) {
      EXPECT_TRUE(ListKept()) << c.what;
      continue;
    }
    ASSERT_EQ(PrinterStockLibraryList().size(), c.stocks) << c.what;
    EXPECT_EQ(PrinterStockLibraryList()[0]->customName(), "flat");
    EXPECT_EQ(PrinterStockLibraryList()[0]->size(), kUnset);
  }
  PrinterStockLibraryList().clear();
}

TEST(PrinterFetch, SilentPrinterRunsOutItsTime) {
  HostilePrinter printer(HostilePrinter::Mode::Silent);
  SeedList();
  FetchControl control = Quick();
  control.answerTimeout = 200ms;
  EXPECT_EQ(RetrievePrinterStockLibrary(printer.address(), control), kNoErr);
  EXPECT_TRUE(ListKept());
  EXPECT_EQ(printer.requestsSeen(), 1);
  PrinterStockLibraryList().clear();
}

// The abort flag ends a fetch stuck on a silent or trickling printer long
// before its own time-out would.
TEST(PrinterFetch, AbortEndsAStuckFetch) {
  const HostilePrinter::Mode modes[] = {HostilePrinter::Mode::Silent,
                                        HostilePrinter::Mode::Trickle};
  for (HostilePrinter::Mode mode : modes) {
    HostilePrinter printer(mode, MediaSizeNotACollection());
    std::atomic<bool> abort{false};
    FetchControl control;
    control.answerTimeout = 60s;
    control.abort = &abort;
    const auto start = std::chrono::steady_clock::now();
    std::thread stopper([&abort] {
      std::this_thread::sleep_for(100ms);
      abort = true;
    });
    PrinterAnswer got = FetchMediaColDatabase(printer.address(), control);
    stopper.join();
    EXPECT_EQ(got.outcome, FetchOutcome::NoAnswer);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
  }
}

TEST(PrinterFetch, DecodeFromMemoryMatchesTheMessage) {
  IppPtr request = NewMediaColDatabaseRequest("http://10.1.2.3");
  const std::string bytes = test::EncodeIpp(request.get());
  IppPtr decoded =
      DecodeIppMessage(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  ASSERT_TRUE(decoded);
  EXPECT_EQ(test::EncodeIpp(decoded.get()), bytes);
  EXPECT_FALSE(DecodeIppMessage(reinterpret_cast<const unsigned char*>(bytes.data()), 5));
  EXPECT_FALSE(DecodeIppMessage(nullptr, 0));
  const std::string deepest = DeeplyNested(kMaxIppCollectionDepth - 1);
  EXPECT_TRUE(
      DecodeIppMessage(reinterpret_cast<const unsigned char*>(deepest.data()), deepest.size()));
}

}  // namespace
}  // namespace zorva

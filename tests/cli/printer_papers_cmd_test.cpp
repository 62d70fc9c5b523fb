// zorva printer-papers against a real IPP printer: the list as the dialog
// shows it, the property list for scripts, and the errors.
#include <gtest/gtest.h>

#include "cli_test_util.h"
#include "core/plist_io.h"
#include "support/ipp_printer.h"

namespace zorva::test {
namespace {

const std::vector<std::string> kCatalogue = {
    "MEMBER keyword media-key \"Plain A4\" MEMBER collection media-size { MEMBER integer "
    "x-dimension 21000 MEMBER integer y-dimension 29700 } MEMBER keyword media-type "
    "\"stationery\" MEMBER integer media-weight-metric 90 MEMBER keyword media-color \"white\"",
    "MEMBER keyword media-key \"Sea card\" MEMBER keyword media-type \"heavy-card\" MEMBER "
    "keyword media-color \"sea-green\" MEMBER text media-info \"tray 3 only\"",
    "MEMBER keyword media-key \"Gloss\" MEMBER keyword media-front-coating \"glossy\" MEMBER "
    "keyword media-back-coating \"none\"",
};

TEST(PrinterPapersCmd, ListsThePrintersPapers) {
  IppEvePrinter printer(MediaColDatabaseAttributes(kCatalogue));
  ASSERT_TRUE(printer.ready());
  for (const std::string& target :
       {printer.address(), "ipp://" + printer.address() + "/ipp/print"}) {
    ToolResult r = RunTool({"printer-papers", target});
    ASSERT_EQ(r.exitCode, 0) << r.err;
    std::vector<std::string> lines;
    for (std::size_t at = 0, nl; (nl = r.out.find('\n', at)) != std::string::npos; at = nl + 1) {
      lines.push_back(r.out.substr(at, nl - at));
    }
    ASSERT_EQ(lines.size(), 4u) << r.out;
    EXPECT_EQ(lines[0].rfind("NAME", 0), 0u);
    EXPECT_EQ(lines[1].rfind("Plain A4", 0), 0u);
    EXPECT_NE(lines[1].find("90"), std::string::npos) << lines[1];
    EXPECT_NE(lines[2].find("heavy-card"), std::string::npos) << lines[2];
    EXPECT_NE(lines[2].find("sea-green"), std::string::npos) << lines[2];
    EXPECT_NE(lines[2].find("tray 3 only"), std::string::npos) << lines[2];
    EXPECT_EQ(lines[3].rfind("Gloss", 0), 0u);
  }
}

TEST(PrinterPapersCmd, PropertyListOfStocksInPrinterOrder) {
  IppEvePrinter printer(MediaColDatabaseAttributes(kCatalogue));
  ASSERT_TRUE(printer.ready());
  ToolResult r = RunTool({"printer-papers", printer.address(), "--plist"});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  std::optional<Value> v = ParsePropertyList(std::string_view(r.out));
  ASSERT_TRUE(v && v->array()) << r.out;
  const Array& stocks = *v->array();
  ASSERT_EQ(stocks.size(), 3u);
  auto number = [&stocks](std::size_t i, const char* key) {
    const Value* value = stocks[i].dictionary()->find(key);
    return value != nullptr && value->integer() ? *value->integer() : -1;
  };
  EXPECT_EQ(stocks[0].dictionary()->find("CustomName")->string()[0], "Plain A4");
  EXPECT_EQ(number(0, "Weight"), 90);
  EXPECT_EQ(number(0, "Size"), 4);
  EXPECT_EQ(stocks[1].dictionary()->find("CustomComment")->string()[0], "tray 3 only");
  EXPECT_EQ(number(1, "Type"), 7);
  EXPECT_EQ(number(2, "SidesCoated"), 2);

  // Nothing in the catalogue: an empty array.
  IppEvePrinter bare(MediaColDatabaseAttributes({}));
  ASSERT_TRUE(bare.ready());
  r = RunTool({"printer-papers", bare.address(), "--plist"});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  v = ParsePropertyList(std::string_view(r.out));
  ASSERT_TRUE(v && v->array());
  EXPECT_EQ(v->array()->size(), 0u);
}

// A printer's paper goes into the user's list under its own name; a second
// copy of the same name needs --replace; the printer's list is not written.
TEST(PrinterPapersCmd, AddsAPrintersPaperToMyPapers) {
  TempDir tmp;
  ScopedEnv prefs("ZORVA_PREFERENCES_DIR", (tmp.path() / "prefs").string());
  IppEvePrinter printer(MediaColDatabaseAttributes(kCatalogue));
  ASSERT_TRUE(printer.ready());
  ToolResult r = RunTool({"printer-papers", printer.address(), "--add-to-my-papers", "plain a4"});
  ASSERT_EQ(r.exitCode, 0) << r.err;
  const std::string uuid = r.out.substr(0, r.out.size() - 1);
  EXPECT_EQ(uuid.size(), 36u) << r.out;

  ToolResult show = RunTool({"papers", "show", "Plain A4"});
  ASSERT_EQ(show.exitCode, 0) << show.err;
  EXPECT_NE(show.out.find(uuid), std::string::npos) << show.out;
  EXPECT_NE(show.out.find("Weight"), std::string::npos) << show.out;

  ExpectOneLineError(
      RunTool({"printer-papers", printer.address(), "--add-to-my-papers", "Plain A4"}), 1);
  r = RunTool({"printer-papers", printer.address(), "--add-to-my-papers", "Plain A4", "--replace"});
  EXPECT_EQ(r.exitCode, 0) << r.err;
  ToolResult missing = RunTool({"printer-papers", printer.address(), "--add-to-my-papers", "Nope"});
  ExpectOneLineError(missing, 1);
  EXPECT_NE(missing.err.find("no paper named"), std::string::npos) << missing.err;
}

TEST(PrinterPapersCmd, Errors) {
  const std::string nobody = "127.0.0.1:" + std::to_string(FreeLoopbackPort());
  ToolResult r = RunTool({"printer-papers", nobody});
  ExpectOneLineError(r, 1);
  EXPECT_NE(r.err.find("cannot connect to the printer at"), std::string::npos) << r.err;
  ExpectOneLineError(RunTool({"printer-papers", "pap://zone/printer"}), 2);
  ExpectOneLineError(RunTool({"printer-papers"}), 2);
  ExpectOneLineError(RunTool({"printer-papers", nobody, "--timeout", "0"}), 2);
}

}  // namespace
}  // namespace zorva::test

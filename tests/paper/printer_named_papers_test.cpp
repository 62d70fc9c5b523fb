// The printer's named papers rebuilt on the paper-list event: only after a
// finished fetch, one entry per fetched stock named by its custom name, and
// never written to the user's preference file.
#include "paper/printer_named_papers.h"

#include <gtest/gtest.h>

#include "paper/worker.h"
#include "support/test_support.h"

namespace zorva {
namespace {

std::unique_ptr<Stock> Named(const char* name, std::int32_t size) {
  auto stock = std::make_unique<Stock>();
  stock->setCustomName(std::string(name));
  stock->setSize(size);
  return stock;
}

TEST(PrinterNamedPapers, AFinishedFetchReplacesTheListAndTheUsersFileStaysUntouched) {
  test::TempDir prefs;
  test::ScopedEnv env("ZORVA_PREFERENCES_DIR", prefs.path().string());
  ClearPrinterNamedPaperList();
  PrinterStockList fetched;
  fetched.push_back(Named("Gloss 200", 4));
  fetched.push_back(Named("Bond", 1));

  EXPECT_FALSE(RebuildPrinterNamedPaperList(kPrinterStockFailed, &fetched));
  EXPECT_FALSE(RebuildPrinterNamedPaperList(kPrinterStockDone, nullptr));
  EXPECT_EQ(PrinterNamedPaperList(), nullptr);

  ASSERT_TRUE(RebuildPrinterNamedPaperList(kPrinterStockDone, &fetched));
  const StockLibraryList* list = PrinterNamedPaperList();
  ASSERT_NE(list, nullptr);
  EXPECT_TRUE(list->deferWrite());
  ASSERT_EQ(list->count(), 2u);
  const std::optional<std::string> uuid = list->findByName("gloss 200");
  ASSERT_TRUE(uuid);
  const std::optional<StockLibrary> entry = list->entry(*uuid);
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->name(), "Gloss 200");
  EXPECT_EQ(entry->stock().size(), 4);

  // The next fetch's list replaces this one whole.
  fetched.erase(fetched.begin());
  ASSERT_TRUE(RebuildPrinterNamedPaperList(kPrinterStockDone, &fetched));
  EXPECT_EQ(PrinterNamedPaperList()->count(), 1u);
  ClearPrinterNamedPaperList();
  EXPECT_TRUE(std::filesystem::is_empty(prefs.path()));
}

}  // namespace
}  // namespace zorva

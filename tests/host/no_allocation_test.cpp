// Menu and PPD look-ups run on every redraw and every ticket sync; they must
// never allocate. This suite counts global operator new calls around them.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

#include "core/bundle.h"
#include "host/installable_options.h"
#include "host/keyword_tables.h"
#include "support/test_support.h"

namespace {
std::atomic<long> gAllocations{0};
}  // namespace

void* operator new(std::size_t n) {
  ++gAllocations;
  if (void* p = std::malloc(n ? n : 1)) return p;
  throw std::bad_alloc();
}
void operator delete(void* p) noexcept {
  std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
  std::free(p);
}

namespace zorva {
namespace {

TEST(NoAllocation, TableAndFeatureLookups) {
  test::ScopedEnv path("ZORVA_BUNDLE_PATH", ZORVA_BUILD_BUNDLES);
  ASSERT_TRUE(SetInstallableOptions(Dictionary{{"Option1", "HCSS80"}}, InstalledFeatures));
  ASSERT_NE(GetPDEBundle(), nullptr);
  LocalizedString("LetterStockSize");  // the first look-up loads the table

  const long before = gAllocations.load();
  int sink = 0;
  sink += TicketToUI(CompleteStockTypeMap, 7);
  sink += TicketToUI(StockDescriptionMap, 5);
  sink += LocalizedKeyForTicketValue(StockColorMap, 13) != nullptr;
  sink += LocalizedKeyForPaperSizeTicketValue(CompleteStockSizeMap, 75) != nullptr;
  sink += PPDTicketValueForChoice("MediaType", "HeavyGlossy2");
  sink += PPDChoiceForTicketValue("OutputBin", 5) != nullptr;
  sink += getInstalledFeature("2StaplesB");
  std::int32_t value = 0;
  sink += getInstallableOptionTicketValue("StackerTray1Key", value);
  std::string_view choice;
  sink += getInstallableOptionValue("Option1", choice);
  sink += static_cast<int>(LocalizedString("LetterStockSize").size());
  sink += static_cast<int>(LocalizedString("no such key").size());
  const long after = gAllocations.load();
  UnloadInstallableOptions();

  EXPECT_EQ(after, before);
  EXPECT_GT(sink, 0);
}

}  // namespace
}  // namespace zorva

// A named-paper library of 1,000 and of 10,000 papers: reading the
// preference file, validating every entry (clearStatus, as the dialog does
// when it opens) and sorting the list view by name and by weight. Run both
// sizes side by side: 10,000 papers should take at most 12 times as long as
// 1,000 (the sort's n log n is the only part above linear).
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>
#include <map>
#include <string>

#include "core/plist_io.h"
#include "paper/stock_library.h"
#include "paper/stock_library_view.h"

namespace zorva {
namespace {

namespace fs = std::filesystem;

// A preference folder holding a library of n papers, made once per size.
const fs::path& LibraryFolder(std::int64_t n) {
  static std::map<std::int64_t, fs::path> folders;
  auto [it, made] = folders.try_emplace(n);
  if (!made) return it->second;
  it->second = fs::temp_directory_path() / ("zorva-bench-papers-" + std::to_string(n));
  fs::create_directories(it->second);
  setenv("ZORVA_PREFERENCES_DIR", it->second.c_str(), 1);
  StockLibraryList list(true);
  for (std::int64_t k = 0; k < n; ++k) {
    StockLibrary entry;
    Stock& s = entry.stock();
    s.setSize(k % 3 == 0 ? 4 : 1);
    s.setType(k % 5 == 0 ? 7 : 1);
    if (k % 5 == 0) s.setCustomType("Recycled");
    s.setColor(static_cast<std::int32_t>(1 + k % 9));
    s.setWeight(static_cast<std::int32_t>(60 + (k * 7) % 260));
    s.setSidesCoated(k % 2 == 0 ? 1 : 3);
    if (k % 11 == 0) s.setGrain(1);
    s.setCustomName("Paper " + std::to_string((k * 7919) % n) + (k % 4 == 0 ? " Gloss" : ""));
    list.add(entry);
  }
  list.write();
  return it->second;
}

void Use(std::int64_t n) {
  setenv("ZORVA_PREFERENCES_DIR", LibraryFolder(n).c_str(), 1);
}

void BM_LoadValidateSort(benchmark::State& state) {
  const std::int64_t n = state.range(0);
  Use(n);
  for (auto _ : state) {
    StockLibraryList list;
    list.clearStatus();
    auto byName = SortedStockLibraryEntries(list, kColumnName);
    auto byWeight = SortedStockLibraryEntries(list, kColumnWeight);
    benchmark::DoNotOptimize(byName.data());
    benchmark::DoNotOptimize(byWeight.data());
  }
  state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_LoadValidateSort)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void BM_Read(benchmark::State& state) {
  Use(state.range(0));
  for (auto _ : state) {
    StockLibraryList list;
    benchmark::DoNotOptimize(list.count());
  }
}
BENCHMARK(BM_Read)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void BM_SortByName(benchmark::State& state) {
  Use(state.range(0));
  StockLibraryList list;
  for (auto _ : state) {
    auto sorted = SortedStockLibraryEntries(list, kColumnName);
    benchmark::DoNotOptimize(sorted.data());
  }
}
BENCHMARK(BM_SortByName)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zorva

namespace zorva {
namespace {

void BM_ParseFileOnly(benchmark::State& state) {
  const fs::path file = LibraryFolder(state.range(0)) / std::string(kStockLibraryFile);
  for (auto _ : state) {
    auto v = ReadPropertyListFile(file);
    benchmark::DoNotOptimize(v.has_value());
  }
}
BENCHMARK(BM_ParseFileOnly)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zorva

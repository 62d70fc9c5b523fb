// Special-page lists at scale: adding sorted, non-overlapping exception
// ranges (and inserts) one by one, and reading a ticket that holds many
// exception pages. Run the sizes side by side: the time per page should
// stay about the same from 10,000 to 100,000 pages.
#include <benchmark/benchmark.h>

#include <cstdint>

#include "core/ticket.h"
#include "model/special_page_lists.h"

namespace zorva {
namespace {

// Ranges of two pages with a one-page gap: 1-2, 4-5, 7-8, ...
ExceptionPage RangeNumber(std::int64_t k, ExceptionPage page) {
  page.setStartPage(static_cast<std::int32_t>(3 * k + 1));
  page.setEndPage(static_cast<std::int32_t>(3 * k + 2));
  return page;
}

ExceptionPage Template() {
  ExceptionPage page;
  page.setPlex(2);
  page.stock()->setSize(4);
  page.stock()->setWeight(120);
  return page;
}

void BM_AddSortedExceptions(benchmark::State& state) {
  const std::int64_t n = state.range(0);
  const ExceptionPage base = Template();
  for (auto _ : state) {
    ExceptionPageList list;
    for (std::int64_t k = 0; k < n; ++k) list.add(RangeNumber(k, base));
    benchmark::DoNotOptimize(list.count());
  }
  state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_AddSortedExceptions)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_AddSortedInserts(benchmark::State& state) {
  const std::int64_t n = state.range(0);
  Insert insert;
  for (auto _ : state) {
    InsertList list;
    for (std::int64_t k = 0; k < n; ++k) {
      insert.setStartPage(static_cast<std::int32_t>(k + 1));
      list.add(insert);
    }
    benchmark::DoNotOptimize(list.count());
  }
  state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_AddSortedInserts)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_ReadExceptionTicket(benchmark::State& state) {
  const std::int64_t n = state.range(0);
  const ExceptionPage base = Template();
  Array stored;
  for (std::int64_t k = 0; k < n; ++k) stored.push_back(Value(RangeNumber(k, base).asTicket()));
  Ticket ticket;
  ticket.setArray(kTicketClientPrint, tkey::kExceptionList, std::move(stored));
  for (auto _ : state) {
    ExceptionPageList list;
    SyncSpecialPageList(ticket, SyncDirection::FromTicket, tkey::kExceptionList, list);
    benchmark::DoNotOptimize(list.count());
  }
  state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BM_ReadExceptionTicket)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zorva

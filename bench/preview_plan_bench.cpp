// The print preview's plan of a long job: a document of 10,000 or 100,000
// pages with covers, an insert after every 50th page and a two-page exception
// range every 10 pages. The time per page should stay about the same across
// the sizes (the plan is linear in pages, inserts and ranges).
#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>

#include "core/ticket.h"
#include "model/special_page_lists.h"
#include "print/preview_plan.h"

namespace zorva {
namespace {

Ticket LongJob(std::int32_t pages) {
  Ticket t;
  auto front = std::make_unique<Cover>();
  front->setSidesImaged(2);
  auto back = std::make_unique<Cover>();
  back->setSidesImaged(3);
  SyncCovers(t, SyncDirection::ToTicket, front, back);
  InsertList inserts;
  ExceptionPageList exceptions;
  for (std::int32_t p = 10; p <= pages; p += 10) {
    ExceptionPage range;
    range.setStartPage(p - 1);
    range.setEndPage(p);
    range.setPlex(2);
    exceptions.add(range);
    if (p % 50 == 0) {
      Insert insert;
      insert.setStartPage(p);
      inserts.add(insert);
    }
  }
  SyncSpecialPageList(t, SyncDirection::ToTicket, tkey::kInsertList, inserts);
  SyncSpecialPageList(t, SyncDirection::ToTicket, tkey::kExceptionList, exceptions);
  return t;
}

void BM_PreviewPlan(benchmark::State& state) {
  const auto pages = static_cast<std::int32_t>(state.range(0));
  const Ticket job = LongJob(pages);
  for (auto _ : state) {
    const PreviewPlan plan = BuildPreviewPlan(job, {pages});
    benchmark::DoNotOptimize(plan.items.size());
  }
  state.SetItemsProcessed(state.iterations() * pages);
}
BENCHMARK(BM_PreviewPlan)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zorva

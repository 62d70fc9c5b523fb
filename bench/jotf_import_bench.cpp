// Job-ticket import at scale: an exported ticket with 10,000 and with
// 100,000 exception pages (each with its own paper, sides, darkness and some
// with image shift and colour). BM_ImportJotf reads it back through the
// bundled device profile; BM_XmllintReadsImportedJotf has xmllint (--noout)
// read the same file. Two figures matter, both from one run
// (bench/jotf_import_bench.sh prints them): import at 100,000 within 12 times
// import at 10,000, and import within 1.5 times xmllint's read.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

#include "bench_tickets.h"
#include "core/file_io.h"
#include "jobticket/device_profile.h"
#include "jobticket/jotf_export.h"
#include "jobticket/jotf_import.h"
#include "xmllint_run.h"

namespace zorva {
namespace {

using bench::ExceptionNumber;

// The exported document of n exception pages, written once per size.
const std::filesystem::path& DocumentPath(std::int64_t n) {
  static std::map<std::int64_t, std::filesystem::path> made;
  auto [at, fresh] = made.try_emplace(n);
  if (!fresh) return at->second;
  Array exceptions;
  for (std::int64_t k = 0; k < n; ++k) exceptions.push_back(Value(ExceptionNumber(k)));
  Dictionary settings{
      {"com.zorva.print.JOTFOptions", Value(Dictionary{{"JOTFOptionAll", Value(true)}})},
      {"com.zorva.print.SpecialPages.ExceptionList", Value(std::move(exceptions))},
      {"com.zorva.print.FinishingDuplex", Value(2)},
      {"com.zorva.print.JobNotesJobName", Value("Bench <job>")},
      {"com.zorva.print.JobNotesSenderName", Value("Bench")}};
  at->second =
      std::filesystem::temp_directory_path() /
      ("zorva-jotf-import-bench-" + std::to_string(getpid()) + "-" + std::to_string(n) + ".jotf");
  WriteFileAtomically(at->second, JOTFDocumentText(settings));
  return at->second;
}

void BM_ImportJotf(benchmark::State& state) {
  ZDPInitialize();
  if (!ZDPIsLoaded()) {
    state.SkipWithError("no device profile (run from the build tree)");
    return;
  }
  const std::filesystem::path& path = DocumentPath(state.range(0));
  std::size_t pages = 0;
  for (auto _ : state) {
    Dictionary settings;
    if (JOTFImportFileAtPath(path, &settings) != kNoErr) {
      state.SkipWithError("import failed");
      break;
    }
    const Array* list = settings.getArray("com.zorva.print.SpecialPages.ExceptionList");
    pages = list ? list->size() : 0;
  }
  if (pages != static_cast<std::size_t>(state.range(0))) state.SkipWithError("pages lost");
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_ImportJotf)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_XmllintReadsImportedJotf(benchmark::State& state) {
  const std::filesystem::path& path = DocumentPath(state.range(0));
  for (auto _ : state) {
    if (bench::RunXmllint(path) != 0) {
      state.SkipWithError("xmllint failed (is libxml2-utils installed?)");
      break;
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_XmllintReadsImportedJotf)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// The documents go when the run ends.
struct Cleanup {
  ~Cleanup() {
    for (std::int64_t n : {10000, 100000}) std::filesystem::remove(DocumentPath(n));
  }
} cleanup;

}  // namespace
}  // namespace zorva

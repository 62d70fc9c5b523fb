// Job-ticket writing at scale: a ticket with 10,000 and with 100,000
// exception pages plus as many inserts. BM_WriteJotf writes the document to
// a file; BM_XmllintReadsJotf has xmllint (--noout) read the same document.
// Two figures matter, both from one run (bench/jotf_bench.sh prints them):
// the writer's time at 100,000 should stay within 12 times its time at
// 10,000, and writing should take no longer than xmllint takes to read.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>

#include "bench_tickets.h"
#include "jobticket/jotf_export.h"
#include "jobticket/jotf_frame.h"
#include "xmllint_run.h"

namespace zorva {
namespace {

using bench::ExceptionNumber;
using bench::StockNumber;

Dictionary InsertNumber(std::int64_t k) {
  return Dictionary{{"StartPage", Value(3 * k + 3)},
                    {"Quantity", Value(1 + k % 3)},
                    {"Stock", Value(StockNumber(k + 1))}};
}

const Dictionary& Settings(std::int64_t n) {
  static std::map<std::int64_t, Dictionary> made;
  auto [at, fresh] = made.try_emplace(n);
  if (!fresh) return at->second;
  Array exceptions, inserts;
  for (std::int64_t k = 0; k < n; ++k) {
    exceptions.push_back(Value(ExceptionNumber(k)));
    inserts.push_back(Value(InsertNumber(k)));
  }
  Dictionary& d = at->second;
  d.set("com.zorva.print.JOTFOptions", Value(Dictionary{{"JOTFOptionAll", Value(true)}}));
  d.set("com.zorva.print.SpecialPages.ExceptionList", Value(std::move(exceptions)));
  d.set("com.zorva.print.SpecialPages.InsertList", Value(std::move(inserts)));
  d.set("com.zorva.print.JobLevelStock", Value(StockNumber(0)));
  d.set("com.zorva.print.JobNotesJobName", Value("Bench <job>"));
  d.set("com.zorva.print.JobNotesSenderName", Value("Bench"));
  return d;
}

std::filesystem::path DocumentPath(std::int64_t n) {
  return std::filesystem::temp_directory_path() /
         ("zorva-jotf-bench-" + std::to_string(getpid()) + "-" + std::to_string(n) + ".jotf");
}

void BM_WriteJotf(benchmark::State& state) {
  const Dictionary& settings = Settings(state.range(0));
  const std::filesystem::path path = DocumentPath(state.range(0));
  long bytes = 0;
  for (auto _ : state) {
    std::FILE* out = std::fopen(path.c_str(), "w");
    if (!out) {
      state.SkipWithError("cannot write the document");
      return;
    }
    WriteJOTF(out, settings);
    bytes = std::ftell(out);
    std::fclose(out);
  }
  jotf_ofp = nullptr;
  std::filesystem::remove(path);
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.counters["document_bytes"] = static_cast<double>(bytes);
}
BENCHMARK(BM_WriteJotf)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_XmllintReadsJotf(benchmark::State& state) {
  const std::filesystem::path path = DocumentPath(state.range(0));
  std::FILE* out = std::fopen(path.c_str(), "w");
  if (!out) {
    state.SkipWithError("cannot write the document");
    return;
  }
  WriteJOTF(out, Settings(state.range(0)));
  std::fclose(out);
  jotf_ofp = nullptr;
  for (auto _ : state) {
    if (bench::RunXmllint(path) != 0) {
      state.SkipWithError("xmllint failed (is libxml2-utils installed?)");
      break;
    }
  }
  std::filesystem::remove(path);
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_XmllintReadsJotf)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zorva

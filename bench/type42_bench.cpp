// Type 42 conversion speed in process: DejaVu Sans as it is and the 4 MB
// Droid fallback font with large tables split, reported as input bytes per
// second. bench/type42_vs_ttftotype42.sh compares the whole tool with another
// converter; this one isolates the conversion from start-up and file I/O.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "core/file_io.h"
#include "watermarks/type42.h"

namespace zorva {
namespace {

void Convert(benchmark::State& state, const char* path, bool split) {
  const auto font = ReadWholeFile(path);
  if (!font) {
    state.SkipWithError("font not installed");
    return;
  }
  Type42Options options;
  options.splitLargeTables = split;
  std::size_t outputSize = 0;
  for (auto _ : state) {
    std::string program;
    const Type42Result result = convertTTFtoPS42(*font, "Bench", program, options, nullptr);
    if (!result.complete()) state.SkipWithError("conversion incomplete");
    outputSize = program.size();
    benchmark::DoNotOptimize(program.data());
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * font->size()));
  state.counters["output_bytes"] = static_cast<double>(outputSize);
}

void BM_Type42DejaVuSans(benchmark::State& state) {
  Convert(state, "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", false);
}
void BM_Type42DroidFallbackSplit(benchmark::State& state) {
  Convert(state, "/usr/share/fonts/truetype/droid/DroidSansFallbackFull.ttf", true);
}
BENCHMARK(BM_Type42DejaVuSans)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Type42DroidFallbackSplit)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace zorva

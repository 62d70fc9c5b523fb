// The printer paper list against a real printer holding a large catalogue:
// fetch and translate (what the worker does), the transport and decoding
// alone, the library's plain request call, and ipptool asking the same
// printer for the same attribute. bench/printer_papers_bench.sh starts the
// printer and passes it in ZORVA_BENCH_PRINTER (host:port) and the ipptool
// test file in ZORVA_BENCH_IPPTOOL_TEST.
#include <benchmark/benchmark.h>
#include <cups/cups.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <cstdlib>
#include <string>

#include "paper/printer_papers.h"

extern char** environ;

namespace {

std::string Env(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

bool Configured(benchmark::State& state, const std::string& value) {
  if (!value.empty()) return true;
  state.SkipWithError("run through bench/printer_papers_bench.sh");
  return false;
}

void BM_FetchAndTranslate(benchmark::State& state) {
  const std::string printer = Env("ZORVA_BENCH_PRINTER");
  if (!Configured(state, printer)) return;
  for (auto _ : state) {
    if (zorva::RetrievePrinterStockLibrary(printer) != zorva::kNoErr) {
      state.SkipWithError("fetch failed");
      return;
    }
  }
  state.counters["papers"] = static_cast<double>(zorva::PrinterStockLibraryList().size());
}

void BM_TransportAndDecode(benchmark::State& state) {
  const std::string printer = Env("ZORVA_BENCH_PRINTER");
  if (!Configured(state, printer)) return;
  for (auto _ : state) {
    zorva::PrinterAnswer got = zorva::FetchMediaColDatabase(printer, zorva::FetchControl{});
    if (got.outcome != zorva::FetchOutcome::Answer) {
      state.SkipWithError("fetch failed");
      return;
    }
    benchmark::DoNotOptimize(got.answer.get());
  }
}

// The same request through the library's own request call, which reads the
// answer from the socket attribute by attribute.
void BM_LibraryRequestCall(benchmark::State& state) {
  const std::string printer = Env("ZORVA_BENCH_PRINTER");
  if (!Configured(state, printer)) return;
  const std::size_t colon = printer.rfind(':');
  const std::string host = printer.substr(0, colon);
  const int port = std::atoi(printer.c_str() + colon + 1);
  for (auto _ : state) {
    http_t* http =
        httpConnect2(host.c_str(), port, nullptr, AF_UNSPEC, cupsEncryption(), 1, 5000, nullptr);
    zorva::IppPtr request = zorva::NewMediaColDatabaseRequest("http://" + printer);
    ipp_t* answer = cupsDoRequest(http, request.release(), "/");
    if (answer == nullptr) state.SkipWithError("request failed");
    ippDelete(answer);
    httpClose(http);
  }
}

void BM_Ipptool(benchmark::State& state) {
  const std::string printer = Env("ZORVA_BENCH_PRINTER");
  const std::string test = Env("ZORVA_BENCH_IPPTOOL_TEST");
  if (!Configured(state, printer) || !Configured(state, test)) return;
  std::string uri = "ipp://" + printer + "/ipp/print";
  std::string program = "ipptool";
  std::string quiet = "-q";
  std::string file = test;
  char* argv[] = {program.data(), quiet.data(), uri.data(), file.data(), nullptr};
  for (auto _ : state) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    pid_t pid = -1;
    const int err = posix_spawnp(&pid, "ipptool", &actions, nullptr, argv, environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    if (err != 0 || waitpid(pid, &status, 0) != pid || !WIFEXITED(status) ||
        WEXITSTATUS(status) != 0) {
      state.SkipWithError("ipptool failed");
      return;
    }
  }
}

BENCHMARK(BM_FetchAndTranslate)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_TransportAndDecode)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_LibraryRequestCall)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_Ipptool)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

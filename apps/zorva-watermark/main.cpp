// zorva-watermark: the print filter that draws the job's chosen watermark.
// CUPS runs it in a queue's PostScript chain (see zorva-watermark.convs) as
//   zorva-watermark job-id user title copies options [file]
// It reads the watermark's name and settings from the job options, loads the
// record from the machine's watermark store, puts the drawing code and the
// watermark's font into the document's prolog and passes the rest through.
// A job without a watermark choice comes out byte for byte as it came in; a
// watermark that cannot be drawn as stored is drawn with a standard font or
// left out, with one warning in the job's log: the job always prints.
#include <cups/cups.h>
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "watermarks/watermark_choice.h"
#include "watermarks/watermark_filter.h"
#include "watermarks/watermark_render.h"
#include "watermarks/watermark_store.h"

namespace {

constexpr const char* kUsage = "Usage: zorva-watermark job-id user title copies options [file]\n";

constexpr const char* kHelp =
    "Usage: zorva-watermark job-id user title copies options [file]\n\n"
    "CUPS print filter: draws the job's watermark on its PostScript pages.\n"
    "Reads the file (or standard input) and writes PostScript to standard output.\n\n"
    "Job options:\n"
    "  zorva-watermark=NAME            the watermark, by its name in the store\n"
    "  zorva-watermark-pages=all|first every page (default) or the first only\n"
    "  zorva-watermark-layer=behind|front under the page's marks (default) or over them\n\n"
    "Without zorva-watermark the document passes through unchanged. The watermarks\n"
    "and their fonts are read from com.zorva.printing.watermarks.plist in the shared\n"
    "data folder ($ZORVA_SHARED_DIR, else /var/lib/zorva).\n";

// CUPS files each standard-error line by its prefix.
void Log(const char* level, const std::string& message) {
  std::fprintf(stderr, "%s: zorva-watermark: %s\n", level, message.c_str());
}

struct JobOptions {
  int count = 0;
  cups_option_t* options = nullptr;
  explicit JobOptions(const char* text) { count = cupsParseOptions(text, 0, &options); }
  ~JobOptions() { cupsFreeOptions(count, options); }
  JobOptions(const JobOptions&) = delete;
  JobOptions& operator=(const JobOptions&) = delete;
  const char* get(std::string_view name) const {
    return cupsGetOption(std::string(name).c_str(), count, options);
  }
};

// The prolog for the job's choice, or none (no choice, or nothing drawable).
std::optional<std::string> PrologFor(const JobOptions& job) {
  const auto choice =
      zorva::WatermarkChoiceFromOptions([&](std::string_view name) { return job.get(name); });
  if (!choice) return std::nullopt;
  zorva::WatermarkData record;
  if (!zorva::loadWatermarkData(zorva::kWatermarkFileName, choice->name, record)) {
    Log("WARNING", "there is no watermark named \"" + choice->name +
                       "\" in the watermark store; printing without it");
    return std::nullopt;
  }
  zorva::WatermarkRenderOptions options;
  options.firstPageOnly = choice->firstPageOnly;
  options.inFront = choice->inFront;
  zorva::WatermarkProlog prolog = zorva::BuildWatermarkProlog(record, options);
  for (const std::string& warning : prolog.warnings) Log("WARNING", warning);
  if (prolog.text.empty()) return std::nullopt;
  return std::move(prolog.text);
}

}  // namespace

int main(int argc, char* argv[]) {
  if (argc == 2 && (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0)) {
    std::fputs(kHelp, stdout);
    return 0;
  }
  if (argc < 6 || argc > 7) {
    std::fputs(kUsage, stderr);
    return 1;
  }
  int in = 0;
  if (argc == 7) {
    in = open(argv[6], O_RDONLY | O_CLOEXEC);
    if (in < 0) {
      Log("ERROR", std::string("cannot open ") + argv[6] + ": " + std::strerror(errno));
      return 1;
    }
  }
  const JobOptions job(argv[5]);
  const std::optional<std::string> prolog = PrologFor(job);
  std::vector<std::string> warnings;
  std::string error;
  const bool ok = zorva::StreamWithProlog(in, 1, prolog ? &*prolog : nullptr, warnings, &error);
  for (const std::string& warning : warnings) Log("WARNING", warning);
  if (!ok) {
    Log("ERROR", error);
    return 1;
  }
  if (in != 0) close(in);
  return 0;
}

// A private CUPS server with the product's job-ticket type installed and one
// queue whose backend records every job: its arguments (argv[5] holds the
// job options) and the one stream of bytes the printer would receive. The
// queue's PPD is the test printer's, with a filter that passes PDF on as it
// is (CUPS then streams all documents of a job to the one backend run).
#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "support/private_cupsd.h"
#include "support/test_support.h"

namespace zorva::test {

class RecordingQueue {
 public:
  static constexpr const char* kQueue = "QM4400";

  // False with the reason when the server or the queue cannot be set up.
  bool start(std::string* reason) {
    namespace fs = std::filesystem;
    const fs::path cups = ZORVA_CUPS_FILES;
    cupsd_.putFile("zorva-jotf.types", ReadText(cups / "zorva-jotf.types"));
    cupsd_.putFile("zorva-jotf.convs", ReadText(cups / "zorva-jotf.convs"));
    const auto exec = fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec |
                      fs::perms::others_read | fs::perms::others_exec;
    cupsd_.putFile("bin/filter/zorvajotf", ReadText(cups / "zorvajotf"), exec);
    cupsd_.putFile("bin/filter/passthrough", "#!/bin/sh\nexec cat ${6:+\"$6\"}\n", exec);
    cupsd_.putFile("bin/backend/record", kBackend, fs::perms::owner_all);
    if (!cupsd_.start(reason)) return false;
    std::string ppd = ReadText(TestData("ppd/zorva-production.ppd"));
    const std::string line = "*cupsFilter2: \"application/pdf application/pdf 0 -\"";
    const std::size_t at = ppd.find(line);
    if (at == std::string::npos) {
      *reason = "the test PPD has no PDF filter line";
      return false;
    }
    ppd.replace(at, line.size(), "*cupsFilter2: \"application/pdf application/pdf 0 passthrough\"");
    WriteText(cupsd_.folder() / "queue.ppd", ppd);
    fs::create_directories(records());
    return cupsd_.addQueue(kQueue, cupsd_.folder() / "queue.ppd", reason,
                           "record:" + records().string());
  }

  std::string server() const { return cupsd_.server(); }
  std::filesystem::path records() const { return cupsd_.folder() / "records"; }
  PrivateCupsd& cupsd() { return cupsd_; }

  // The bytes the printer got for job `id` and the job's options (argv[5]);
  // false when the job did not reach the backend within the time.
  bool waitForJob(int id, std::string* data, std::string* options, int timeoutMs = 15000) {
    const std::filesystem::path done = records() / (std::to_string(id) + ".data");
    for (int waited = 0; waited < timeoutMs; waited += 50) {
      if (std::filesystem::exists(done)) {
        *data = ReadText(done);
        *options = ReadText(records() / (std::to_string(id) + ".options"));
        return true;
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return false;
  }

  // Number of jobs the backend has recorded.
  int recordedJobs() const {
    int n = 0;
    for (const auto& e : std::filesystem::directory_iterator(records())) {
      if (e.path().extension() == ".data") ++n;
    }
    return n;
  }

 private:
  // argv: job user title copies options [file]; the stream is written under
  // a temporary name and renamed, so a reader never sees half of it.
  static constexpr const char* kBackend =
      "#!/bin/sh\n"
      "if [ $# -eq 0 ]; then echo 'direct record \"Unknown\" \"Recording backend\"'; exit 0; fi\n"
      "dir=${DEVICE_URI#record:}\n"
      "printf '%s' \"$5\" > \"$dir/$1.options\"\n"
      "if [ $# -ge 6 ]; then cat \"$6\" > \"$dir/$1.part\"; else cat > \"$dir/$1.part\"; fi\n"
      "mv \"$dir/$1.part\" \"$dir/$1.data\"\n";

  PrivateCupsd cupsd_;
};

}  // namespace zorva::test

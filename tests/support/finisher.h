// A finisher installed for one test, with exactly the features it names, and
// the whole job ticket a ticket exports: shared by the panel logic's tests
// and the finishing dialogs' tests, which both choose finishings and check
// what the job ticket then names.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "core/ticket.h"
#include "core/ticket_keys.h"
#include "host/installable_options.h"
#include "jobticket/jotf_frame.h"

namespace zorva::test {

// Installs a finisher that has exactly the given features (and options).
class InstalledFinisher {
 public:
  explicit InstalledFinisher(std::vector<std::string> features, Dictionary options = {})
      : names_(std::move(features)) {
    for (const std::string& f : names_) rows_.push_back({f.c_str(), nullptr, nullptr, nullptr, 0});
    rows_.push_back({nullptr, nullptr, nullptr, nullptr, 0});
    UnloadInstallableOptions();
    SetInstallableOptions(std::move(options), rows_.data());
  }
  ~InstalledFinisher() { UnloadInstallableOptions(); }
  InstalledFinisher(const InstalledFinisher&) = delete;
  InstalledFinisher& operator=(const InstalledFinisher&) = delete;

 private:
  std::vector<std::string> names_;
  std::vector<InstalledFeature> rows_;
};

// Every finishing feature a finisher can have, written out by hand.
inline std::vector<std::string> EveryFinishingFeature() {
  std::istringstream words(
      "1StapleTL 1StapleTR 1StapleBR 1StapleBL 2StaplesT 2StaplesR 2StaplesB 2StaplesL 1StapleT "
      "1StapleR 1StapleB 1StapleL BindLeft BindTop BindRight BindBottom BiFoldMultiple "
      "BiFoldStapleMultiple BiFoldSingleInside BiFoldSingleOutside CFoldSingleInside "
      "CFoldSingleOutside ZFoldHalfLeft ZFoldHalfRight SBM Custom SlipSheets Offset");
  std::vector<std::string> all{std::istream_iterator<std::string>(words), {}};
  for (const char* n : {"2", "3", "4"}) {
    for (const char* e : {"L", "T", "R", "B"}) all.push_back(std::string(n) + "HolePunch" + e);
  }
  return all;
}

// The whole job ticket of a ticket, as the dialog's export asks for it.
inline std::string Export(const Ticket& ticket) {
  char* buffer = nullptr;
  std::size_t size = 0;
  std::FILE* out = open_memstream(&buffer, &size);
  Dictionary settings = ticket.toDictionary();
  settings.set(tkey::kOptions, Value(Dictionary{{std::string(tkey::kOptionAll), Value(true)}}));
  WriteJOTF(out, settings);
  std::fclose(out);
  std::string text(buffer, size);
  std::free(buffer);
  return text;
}

}  // namespace zorva::test

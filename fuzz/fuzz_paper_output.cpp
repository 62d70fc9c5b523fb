// Feeds arbitrary tickets and finishers to the Paper/Output panel's ticket
// rules: the first four bytes say which finisher features are installed,
// the rest is a property list read as a ticket. Reading never fails; what is
// written reads back the same; the menus, marks and the finishing line are
// built for any values; choosing any finishing keeps only what it reads.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>
#include <vector>

#include "core/plist_io.h"
#include "core/ticket.h"
#include "host/installable_options.h"
#include "panels/paper_output.h"

namespace {

void Check(bool condition) {
  if (!condition) std::abort();
}

constexpr const char* kFeatures[] = {
    "1StapleTL",
    "2StaplesT",
    "1StapleT",
    "BindLeft",
    "BindTop",
    "2HolePunchL",
    "3HolePunchT",
    "4HolePunchB",
    "BiFoldSingleInside",
    "CFoldSingleOutside",
    "ZFoldHalfLeft",
    "ZFoldHalfRight",
    "SBM",
    "Custom",
    "SlipSheets",
    "Offset",
    "BiFoldMultiple",
    "BiFoldStapleMultiple",
    "StackerTray1Key",
    "StackerTray2Key",
    "SimpleCatchTrayKey",
    "AutoSwitchTrayKey",
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace zorva;
  std::uint32_t bits = 0;
  for (std::size_t i = 0; i < 4 && i < size; ++i) bits |= std::uint32_t(data[i]) << (8 * i);
  const std::span<const std::uint8_t> plist =
      size > 4 ? std::span(data + 4, size - 4) : std::span<const std::uint8_t>();

  std::vector<InstalledFeature> rows;
  for (std::size_t i = 0; i < std::size(kFeatures); ++i) {
    if (bits & (1u << i)) rows.push_back({kFeatures[i], nullptr, nullptr, nullptr, 0});
  }
  rows.push_back({nullptr, nullptr, nullptr, nullptr, 0});
  UnloadInstallableOptions();
  SetInstallableOptions(Dictionary{{"Option1", Value(std::string(bits >> 30 ? "BFMBFM" : "None"))}},
                        rows.data());

  Ticket ticket;
  const std::optional<Value> root = ParsePropertyList(plist);
  if (root && root->dictionary()) ticket = Ticket::FromDictionary(*root->dictionary());

  PaperOutputSettings read;
  ReadPaperOutputSettings(ticket, read, std::string("DuplexTumble"));
  WritePaperOutputSettings(ticket, read);
  PaperOutputSettings again;
  ReadPaperOutputSettings(ticket, again, std::nullopt);
  Check(again.finishingOptions == read.finishingOptions);
  Check(again.staple1 == read.staple1 && again.holePunch == read.holePunch);
  Check(again.custom == read.custom);
  Check(ticket.contains("com.zorva.print.FinishingOutputDestination") !=
        BookletFinishingFixesOutputBin(read.finishingOptions));

  const auto menu = PopulateFinishingMenu();
  Check(MarkFinishingMenu(menu, read).size() == menu.size());
  const Localizer same = [](std::string_view k) { return std::string(k); };
  Check(!CreateFinishingString(read, same).empty());
  (void)PopulateOutputDestination();
  for (const FinishingMenuItem& item : menu) {
    if (item.kind != FinishingItemKind::Choice) continue;
    PaperOutputSettings chosen = read;
    ChooseFinishingOption(chosen, item.option);
    Check(chosen.finishingOptions == item.option);
    Check(!CreateFinishingString(chosen, same).empty());
  }
  UnloadInstallableOptions();
  return 0;
}

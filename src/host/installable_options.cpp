// Installable options and the features they bring. The options dictionary
// is loaded once per dialog (from the printer's PPD, or set directly) and
// every menu filter asks it whether a finisher feature exists, so the
// look-ups compare in place and never allocate.
#include "host/installable_options.h"

#include <utility>

namespace zorva {

// Which finisher (the "Option1" choice) brings which feature. A feature may
// have several rows: the first row whose option matches decides.
constexpr InstalledFeature InstalledFeatures[] = {
    {"SlipSheets", "Option1", "StdFinisher", nullptr, 0},
    {"Offset", "Option1", "StdFinisher", nullptr, 0},
    {"SimpleCatchTrayKey", "Option1", "StdFinisher", "Top Tray", 3},
    {"SlipSheets", "Option1", "DFA", nullptr, 0},
    {"Offset", "Option1", "DFA", nullptr, 0},
    {"Custom", "Option1", "DFA", nullptr, 0},
    {"SimpleCatchTrayKey", "Option1", "DFA", "Top Tray", 3},
    {"SlipSheets", "Option1", "HCS80", nullptr, 0},
    {"Offset", "Option1", "HCS80", nullptr, 0},
    {"SimpleCatchTrayKey", "Option1", "HCS80", "Top Tray", 3},
    {"StackerTray1Key", "Option1", "HCS80", "Main Tray", 4},
    {"SlipSheets", "Option1", "HCSS80", nullptr, 0},
    {"Offset", "Option1", "HCSS80", nullptr, 0},
    {"1StapleTL", "Option1", "HCSS80", nullptr, 0},
    {"1StapleTR", "Option1", "HCSS80", nullptr, 0},
    {"1StapleBL", "Option1", "HCSS80", nullptr, 0},
    {"2StaplesL", "Option1", "HCSS80", nullptr, 0},
    {"2StaplesT", "Option1", "HCSS80", nullptr, 0},
    {"2StaplesR", "Option1", "HCSS80", nullptr, 0},
    {"2StaplesB", "Option1", "HCSS80", nullptr, 0},
    {"SimpleCatchTrayKey", "Option1", "HCSS80", "Top Tray", 3},
    {"StackerTray1Key", "Option1", "HCSS80", "Main Tray", 4},
    {nullptr, nullptr, nullptr, nullptr, 0},
};

namespace {

// Process-wide, used from the dialog's thread only.
struct OptionsState {
  bool loaded = false;
  Dictionary options;
  const InstalledFeature* featureMap = nullptr;
};

OptionsState& State() {
  static OptionsState state;
  return state;
}

bool RowMatches(const InstalledFeature& row, std::string_view feature) {
  if (feature != row.feature) return false;
  if (row.option == nullptr) return true;
  std::string_view choice;
  return getInstallableOptionValue(row.option, choice) && row.choice != nullptr &&
         choice == row.choice;
}

// The first row of the feature table in use that matches, or nullptr. With
// nothing loaded there is no table, so no feature exists.
const InstalledFeature* FindFeatureRow(std::string_view feature) {
  const OptionsState& state = State();
  if (!state.loaded || state.featureMap == nullptr) return nullptr;
  for (const InstalledFeature* row = state.featureMap; row->feature != nullptr; ++row) {
    if (RowMatches(*row, feature)) return row;
  }
  return nullptr;
}

}  // namespace

bool SetInstallableOptions(Dictionary options, const InstalledFeature* featureMap) {
  OptionsState& state = State();
  if (state.loaded) return false;
  state.options = std::move(options);
  state.featureMap = featureMap;
  state.loaded = true;
  return true;
}

void UnloadInstallableOptions() {
  OptionsState& state = State();
  state.options.clear();
  state.featureMap = nullptr;
  state.loaded = false;
}

const Dictionary* GetInstallableOptions() {
  const OptionsState& state = State();
  return state.loaded ? &state.options : nullptr;
}

bool getInstallableOptionValue(std::string_view option, std::string_view& value) {
  const Dictionary* options = GetInstallableOptions();
  if (options == nullptr) return false;
  const std::string* choice = options->getString(option);
  if (choice == nullptr) return false;
  value = *choice;
  return true;
}

bool getInstalledFeature(std::string_view feature) {
  return FindFeatureRow(feature) != nullptr;
}

bool getInstallableOptionTicketValue(std::string_view feature, std::int32_t& value) {
  const InstalledFeature* row = FindFeatureRow(feature);
  if (row == nullptr) return false;
  value = row->ticketValue;
  return true;
}

const char* InstalledFeatureLabelKey(std::string_view feature) {
  const InstalledFeature* row = FindFeatureRow(feature);
  return row != nullptr ? row->labelKey : nullptr;
}

}  // namespace zorva

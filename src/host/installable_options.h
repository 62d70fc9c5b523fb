// Installable options (finishers and the like) and the installed-feature
// table that turns them into features. The options dictionary maps a PPD
// option keyword to the keyword of its marked choice; it is process-wide,
// loaded once (from a PPD, or set directly by tools and tests) and unloaded
// when the dialog goes away.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/value.h"

namespace zorva {

struct InstalledFeature {
  const char* feature;   // feature key; nullptr ends the table
  const char* option;    // PPD option keyword, or nullptr when always present
  const char* choice;    // required choice of that option
  const char* labelKey;  // localisation key of the feature's label, or nullptr
  std::int32_t ticketValue;
};

extern const InstalledFeature InstalledFeatures[];

// Installs an options dictionary and feature table directly. Like loading
// from a PPD, it does nothing and returns false while one is loaded.
bool SetInstallableOptions(Dictionary options, const InstalledFeature* featureMap);
void UnloadInstallableOptions();
// The loaded dictionary, or nullptr.
const Dictionary* GetInstallableOptions();

// The stored choice keyword for a PPD option, if any (no copy is made).
bool getInstallableOptionValue(std::string_view option, std::string_view& value);

// True on the first row of the feature table that matches: same feature key,
// and either no option or the dictionary holding exactly the row's choice.
bool getInstalledFeature(std::string_view feature);

// On the first matching row writes its ticket value and returns true.
bool getInstallableOptionTicketValue(std::string_view feature, std::int32_t& value);

// Label key of the first matching row, or nullptr when none matches or the
// row has no label.
const char* InstalledFeatureLabelKey(std::string_view feature);

}  // namespace zorva

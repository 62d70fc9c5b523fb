// The device profile: the printer's job features as a property list shipped
// in the bundle (resource "Device Profile"), loaded once and kept for the
// plug-in's life. Each feature has "Properties" and the syntaxes its value
// may be given in ("Keyword", "Name", "Number"); job-ticket import reads it to
// learn how an attribute of an imported ticket is to be taken.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/value.h"

namespace zorva {

inline constexpr std::string_view kDeviceProfileResource = "Device Profile";
inline constexpr std::string_view kDeviceProfileType = "plist";

using FeatureList = std::vector<const Dictionary*>;

// Loads the bundle's profile unless one is held. A missing, unreadable or
// malformed profile (including a feature whose "ID" is not its key) leaves
// none loaded; nothing is reported.
void ZDPInitialize();
// The same from a given file (tests, the tool). True when a profile is held
// afterwards; a second call while one is held changes nothing.
bool ZDPInitializeFromFile(const std::filesystem::path& path);
void ZDPFinalize();
bool ZDPIsLoaded();

// The feature of that name, or nullptr (also when nothing is loaded).
const Dictionary* ZDPGetFeature(std::string_view name);

// Features whose "Properties" hold property (and, when value is given, hold
// it with a value equal to *value), in the profile's order. Empty, never an
// error, when nothing is loaded.
FeatureList ZDPGetFeaturesWithPropertyAndValue(std::string_view property, const Value* value);
FeatureList ZDPGetFeaturesWithProperty(std::string_view property);

const Value* ZDPGetFeatureSyntax(const Dictionary* feature, std::string_view syntax);
const Value* ZDPGetFeatureProperty(const Dictionary* feature, std::string_view property);

// The feature's default: the first keyword marked "Default" true, else the
// "Name" syntax's "Default", else the "Number" syntax's.
bool ZDPGetFeatureDefaultValue(const Dictionary* feature, std::string* syntaxOut, Value* valueOut);

// The keyword dictionaries (not the keyword strings) of the feature's
// "Keyword" syntax whose own "Properties" hold property with a value equal to value.
FeatureList ZDPGetKeywordsWithPropertyAndValue(const Dictionary* feature, std::string_view property,
                                               const Value& value);

// The names of every feature, in order (for listing).
std::vector<std::string> ZDPFeatureNames();

}  // namespace zorva

// Loading and querying the device profile. The profile is immutable once
// loaded; every look-up tolerates missing levels.
#include "jobticket/device_profile.h"

#include <memory>
#include <optional>

#include "core/bundle.h"
#include "core/plist_io.h"

namespace zorva {

namespace {

std::unique_ptr<const Dictionary> gProfile;  // the whole file's root

const Dictionary* Features() {
  return gProfile ? gProfile->getDictionary("Features") : nullptr;
}

// A profile we can answer from: "Features" is a dictionary of dictionaries,
// each feature's "Properties" (when present) a dictionary whose "ID" is the
// feature's own key, so a look-up by ID and by key always agree.
bool WellFormed(const Dictionary& root) {
  const Dictionary* features = root.getDictionary("Features");
  if (!features) return false;
  for (const auto& [name, value] : *features) {
    const Dictionary* feature = value.dictionary();
    if (!feature) return false;
    const Value* props = feature->find("Properties");
    if (props && !props->dictionary()) return false;
    const std::string* id = props ? props->dictionary()->getString("ID") : nullptr;
    if (!id || *id != name) return false;
    const Value* syntax = feature->find("Syntax");
    if (syntax && !syntax->dictionary()) return false;
  }
  return true;
}

const Dictionary* SubDictionary(const Dictionary* d, std::string_view key) {
  return d ? d->getDictionary(key) : nullptr;
}

}  // namespace

bool ZDPInitializeFromFile(const std::filesystem::path& path) {
  if (gProfile) return true;
  std::optional<Value> root = ReadPropertyListFile(path);
  if (!root || !root->dictionary() || !WellFormed(*root->dictionary())) return false;
  gProfile = std::make_unique<const Dictionary>(std::move(*root->dictionary()));
  return true;
}

void ZDPInitialize() {
  if (gProfile) return;
  const Bundle* bundle = GetPDEBundle();
  if (!bundle) return;
  if (auto path = bundle->resourcePath(kDeviceProfileResource, kDeviceProfileType)) {
    ZDPInitializeFromFile(*path);
  }
}

void ZDPFinalize() {
  gProfile.reset();
}

bool ZDPIsLoaded() {
  return gProfile != nullptr;
}

const Dictionary* ZDPGetFeature(std::string_view name) {
  return SubDictionary(Features(), name);
}

FeatureList ZDPGetFeaturesWithPropertyAndValue(std::string_view property, const Value* value) {
  FeatureList found;
  const Dictionary* features = Features();
  if (!features) return found;
  for (const auto& [name, entry] : *features) {
    const Dictionary* feature = entry.dictionary();
    const Value* stored = SubDictionary(feature, "Properties")
                              ? feature->getDictionary("Properties")->find(property)
                              : nullptr;
    if (stored && (!value || *stored == *value)) found.push_back(feature);
  }
  return found;
}

FeatureList ZDPGetFeaturesWithProperty(std::string_view property) {
  return ZDPGetFeaturesWithPropertyAndValue(property, nullptr);
}

const Value* ZDPGetFeatureSyntax(const Dictionary* feature, std::string_view syntax) {
  const Dictionary* syntaxes = SubDictionary(feature, "Syntax");
  return syntaxes ? syntaxes->find(syntax) : nullptr;
}

const Value* ZDPGetFeatureProperty(const Dictionary* feature, std::string_view property) {
  const Dictionary* props = SubDictionary(feature, "Properties");
  return props ? props->find(property) : nullptr;
}

bool ZDPGetFeatureDefaultValue(const Dictionary* feature, std::string* syntaxOut, Value* valueOut) {
  const Dictionary* syntaxes = SubDictionary(feature, "Syntax");
  if (!syntaxes) return false;
  if (const Dictionary* keywords = syntaxes->getDictionary("Keyword")) {
    for (const auto& [keyword, entry] : *keywords) {
      const Dictionary* k = entry.dictionary();
      if (k && k->getBool("Default") == true) {
        if (syntaxOut) *syntaxOut = "Keyword";
        if (valueOut) *valueOut = Value(keyword);
        return true;
      }
    }
  }
  for (std::string_view name : {"Name", "Number"}) {
    const Dictionary* s = syntaxes->getDictionary(name);
    const Value* def = s ? s->find("Default") : nullptr;
    if (!def) continue;
    if (syntaxOut) *syntaxOut = std::string(name);
    if (valueOut) *valueOut = *def;
    return true;
  }
  return false;
}

FeatureList ZDPGetKeywordsWithPropertyAndValue(const Dictionary* feature, std::string_view property,
                                               const Value& value) {
  FeatureList found;
  const Dictionary* keywords = SubDictionary(SubDictionary(feature, "Syntax"), "Keyword");
  if (!keywords) return found;
  for (const auto& [keyword, entry] : *keywords) {
    const Dictionary* k = entry.dictionary();
    const Dictionary* props = SubDictionary(k, "Properties");
    const Value* stored = props ? props->find(property) : nullptr;
    if (stored && *stored == value) found.push_back(k);
  }
  return found;
}

std::vector<std::string> ZDPFeatureNames() {
  std::vector<std::string> names;
  if (const Dictionary* features = Features()) {
    for (const auto& [name, entry] : *features) names.push_back(name);
  }
  return names;
}

}  // namespace zorva

// Bundle: the plug-in's folder of resources, found by its identifier on a
// search path (ZORVA_BUNDLE_PATH, then the build tree, then the install
// prefix), with resource look-up by name and type and its localised strings.
//
// A bundle is a folder holding an "Info.plist" whose "CFBundleIdentifier"
// names it; its resources sit beside that file. Localised string tables are
// gettext PO files at "strings/<language>/<table>.po", so translators can use
// their ordinary tools.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/localization.h"
#include "core/value.h"

namespace zorva {

inline constexpr std::string_view kBundleIdentifier = "com.zorva.print.pde.zorvafeatures.qm4400";
inline constexpr std::string_view kDefaultStringsTable = "Localizable";
inline constexpr std::string_view kStringNotFound = "STRING NOT FOUND";
// The bundle resource with the factory defaults for users who have saved
// nothing yet (background-form names, the named-paper list).
inline constexpr std::string_view kFeaturesResource = "ZorvaFeatures.plist";

class Bundle {
 public:
  // Opens the bundle folder at path; nullptr when it holds no readable
  // Info.plist with an identifier.
  static std::unique_ptr<Bundle> Open(const std::filesystem::path& path);

  // The bundle with that identifier on the search path, opened once per
  // process and kept; nullptr when none is found.
  static const Bundle* FindByIdentifier(std::string_view identifier);

  // The folders searched for bundles, in order: ZORVA_BUNDLE_PATH's, the
  // build tree's (for programs running from it), the installed one.
  static std::vector<std::filesystem::path> SearchPath();

  const std::string& identifier() const { return identifier_; }
  const std::filesystem::path& path() const { return path_; }

  // The resource "name.type" (or "name" when type is empty), looked up in the
  // bundle folder; nullopt when there is no such file.
  std::optional<std::filesystem::path> resourcePath(std::string_view name,
                                                    std::string_view type) const;

  // The text for key in a strings table of the user's languages (English
  // last); `fallback` when no language has it. The view stays valid for the
  // bundle's life. Loading a table happens once; later look-ups do not allocate.
  std::string_view localizedString(std::string_view key,
                                   std::string_view fallback = kStringNotFound,
                                   std::string_view table = kDefaultStringsTable) const;

  // The user's languages in order of preference, from LANGUAGE, LC_ALL,
  // LC_MESSAGES and LANG ("de_DE.UTF-8" gives "de_DE", "de"); always ends in "en".
  static std::vector<std::string> PreferredLanguages();

  ~Bundle();
  Bundle(const Bundle&) = delete;
  Bundle& operator=(const Bundle&) = delete;

 private:
  Bundle() = default;
  struct Tables;
  std::filesystem::path path_;
  std::string identifier_;
  std::unique_ptr<Tables> tables_;
};

// The plug-in's own bundle (kBundleIdentifier), or nullptr.
const Bundle* GetPDEBundle();

// Looks key up in the plug-in bundle's "Localizable" table; "STRING NOT FOUND"
// when the bundle or the key is missing.
std::string_view LocalizedString(std::string_view key);

// The plug-in bundle's ZorvaFeatures.plist, parsed; nullopt when the bundle,
// the file or its contents are missing or unreadable.
std::optional<Value> ReadFeaturesResource();

}  // namespace zorva

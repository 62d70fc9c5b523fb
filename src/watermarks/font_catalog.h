// The TrueType fonts installed on the machine (found with fontconfig) that
// a watermark may be drawn in, and storing one with the watermarks: the
// printer may not have the font, so the font's bytes go into the watermark
// store, once the Type 42 converter has shown that the printer will be able
// to take them.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zorva {

struct InstalledFont {
  std::string family;
  std::string style;
  std::string postScriptName;
  std::filesystem::path file;
  friend bool operator==(const InstalledFont&, const InstalledFont&) = default;
};

// Every installed TrueType font file (single-font files, not collections),
// one per PostScript name, ordered by family and style.
std::vector<InstalledFont> InstalledTrueTypeFonts();

// The installed font with that PostScript name.
std::optional<InstalledFont> FindInstalledFont(std::string_view postScriptName);

// Reads the font, converts it to a Type 42 program to check that it can be
// sent, and stores its bytes in the watermark store under its PostScript
// name. 0, or an error code with a one-line reason.
int StoreWatermarkFont(std::string_view storeFile, const InstalledFont& font, std::string* reason);

}  // namespace zorva

// Installed TrueType fonts through fontconfig, and storing one for the
// watermarks through the Type 42 converter and the watermark store.
#include "watermarks/font_catalog.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <tuple>

#include "core/file_io.h"
#include "watermarks/type42.h"
#include "watermarks/watermark_store.h"

namespace zorva {

namespace {

struct PatternDeleter {
  void operator()(FcPattern* p) const { FcPatternDestroy(p); }
};
struct ObjectSetDeleter {
  void operator()(FcObjectSet* s) const { FcObjectSetDestroy(s); }
};
struct FontSetDeleter {
  void operator()(FcFontSet* s) const { FcFontSetDestroy(s); }
};

std::string String(FcPattern* pattern, const char* object) {
  FcChar8* value = nullptr;
  if (FcPatternGetString(pattern, object, 0, &value) != FcResultMatch || !value) return {};
  return reinterpret_cast<const char*>(value);
}

bool IsSingleTrueTypeFile(FcPattern* pattern, const std::string& file) {
  int index = 0;
  FcPatternGetInteger(pattern, FC_INDEX, 0, &index);
  std::string extension = std::filesystem::path(file).extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return index == 0 && extension == ".ttf" && String(pattern, FC_FONTFORMAT) == "TrueType";
}

}  // namespace

std::vector<InstalledFont> InstalledTrueTypeFonts() {
  std::vector<InstalledFont> fonts;
  // The machine's font configuration, loaded once and kept for the process.
  static FcConfig* const config = FcInitLoadConfigAndFonts();
  if (!config) return fonts;
  std::unique_ptr<FcPattern, PatternDeleter> pattern(FcPatternCreate());
  std::unique_ptr<FcObjectSet, ObjectSetDeleter> objects(
      FcObjectSetBuild(FC_FAMILY, FC_STYLE, FC_POSTSCRIPT_NAME, FC_FILE, FC_INDEX, FC_FONTFORMAT,
                       static_cast<char*>(nullptr)));
  if (!pattern || !objects) return fonts;
  std::unique_ptr<FcFontSet, FontSetDeleter> set(FcFontList(config, pattern.get(), objects.get()));
  if (!set) return fonts;
  for (int i = 0; i < set->nfont; ++i) {
    FcPattern* font = set->fonts[i];
    const std::string file = String(font, FC_FILE);
    const std::string name = String(font, FC_POSTSCRIPT_NAME);
    if (file.empty() || name.empty() || !IsSingleTrueTypeFile(font, file)) continue;
    fonts.push_back({String(font, FC_FAMILY), String(font, FC_STYLE), name, file});
  }
  std::sort(fonts.begin(), fonts.end(), [](const InstalledFont& a, const InstalledFont& b) {
    return std::tie(a.family, a.style, a.postScriptName, a.file) <
           std::tie(b.family, b.style, b.postScriptName, b.file);
  });
  // The same font installed twice is offered once.
  std::vector<InstalledFont> unique;
  for (InstalledFont& f : fonts) {
    const bool seen = std::any_of(unique.begin(), unique.end(), [&](const InstalledFont& u) {
      return u.postScriptName == f.postScriptName;
    });
    if (!seen) unique.push_back(std::move(f));
  }
  return unique;
}

std::optional<InstalledFont> FindInstalledFont(std::string_view postScriptName) {
  for (InstalledFont& f : InstalledTrueTypeFonts()) {
    if (f.postScriptName == postScriptName) return std::move(f);
  }
  return std::nullopt;
}

int StoreWatermarkFont(std::string_view storeFile, const InstalledFont& font, std::string* reason) {
  int err = 0;
  const std::optional<std::vector<std::uint8_t>> bytes = ReadWholeFile(font.file, &err);
  if (!bytes) {
    if (reason) *reason = font.file.string() + ": " + ReadFailureText(err);
    return err != 0 ? err : EIO;
  }
  std::string program;
  const Type42Result converted = convertTTFtoPS42(*bytes, font.postScriptName, program,
                                                  Type42Options{.splitLargeTables = true}, nullptr);
  if (!converted.complete()) {
    if (reason) {
      *reason = font.file.string() + ": cannot be sent to the printer" +
                (converted.message.empty() ? std::string() : " (" + converted.message + ")");
    }
    return EINVAL;
  }
  err = storeFontData(storeFile, font.postScriptName, *bytes);
  if (err != 0 && reason) *reason = "the watermark store could not be written";
  return err;
}

}  // namespace zorva

// FullColorOptions: the colour adjustments of a job or of one exception page
// (lightness, contrast, saturation, colour cast, trapping, black overprint,
// tone curve, source and destination profiles, rendering intents), with
// range-checked setters and the dictionary form the ticket and the
// job-ticket writer use.
//
// A source or destination profile is either a built-in profile code or, with
// the field's custom code, a profile named by a string; in the dictionary one
// key carries either the number or the name.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/status.h"
#include "core/value.h"

namespace zorva {

// Profile kinds meaning "a custom profile named by the string".
inline constexpr std::int32_t kRGBProfileCustom = 5;
inline constexpr std::int32_t kCMYKProfileCustom = 3;
inline constexpr std::int32_t kDestinationProfileCustom = 2;
// Trapping mode whose widths are adjustable (and written).
inline constexpr std::int32_t kTrappingAdjustable = 1;
// Longest profile name, in UTF-16 units.
inline constexpr std::size_t kMaxProfileNameLength = 255;

class FullColorOptions {
 public:
  using Name = std::optional<std::string>;  // null = no name

  FullColorOptions() = default;
  // The defaults merged with the dictionary (null: defaults).
  explicit FullColorOptions(const Dictionary* dictionary) { fromTicket(dictionary); }

  // Getters: kParamErr when every output is null, else kNoErr with each
  // non-null output filled.
  Status lightness(std::int32_t* out) const { return Get(lightness_, out); }
  Status contrast(std::int32_t* out) const { return Get(contrast_, out); }
  Status saturation(std::int32_t* out) const { return Get(saturation_, out); }
  Status colorCast(std::int32_t* cyanRed, std::int32_t* magentaGreen,
                   std::int32_t* yellowBlue) const;
  Status trapping(std::int32_t* out) const { return Get(trapping_, out); }
  Status trappingAdjustment(std::int32_t* slow, std::int32_t* fast) const;
  Status blackOverprint(std::int32_t* out) const { return Get(blackOverprint_, out); }
  Status trc(Name* out) const;
  Status rgbImagesProfile(std::int32_t* kind, Name* name) const;
  Status rgbTextAndGraphicsProfile(std::int32_t* kind, Name* name) const;
  Status cmykImagesProfile(std::int32_t* kind, Name* name) const;
  Status cmykTextAndGraphicsProfile(std::int32_t* kind, Name* name) const;
  Status grayImagesProfile(Name* name) const;
  Status grayTextAndGraphicsProfile(Name* name) const;
  Status destinationProfile(std::int32_t* kind, Name* name) const;
  Status imageObjectRendering(std::int32_t* out) const { return Get(imageRendering_, out); }
  Status textObjectRendering(std::int32_t* out) const { return Get(textRendering_, out); }
  Status graphicObjectRendering(std::int32_t* out) const { return Get(graphicRendering_, out); }

  // Setters: kNoErr, or kParamErr with nothing changed.
  // Adjustments take unset or -100..100.
  Status setLightness(std::int32_t v) { return SetAdjustment(lightness_, v); }
  Status setContrast(std::int32_t v) { return SetAdjustment(contrast_, v); }
  Status setSaturation(std::int32_t v) { return SetAdjustment(saturation_, v); }
  // All three or none.
  Status setColorCast(std::int32_t cyanRed, std::int32_t magentaGreen, std::int32_t yellowBlue);
  // Each unset or 0..20; both or neither.
  Status setTrappingAdjustment(std::int32_t slow, std::int32_t fast);
  Status setTrapping(std::int32_t v) { return Store(trapping_, v); }
  Status setBlackOverprint(std::int32_t v) { return Store(blackOverprint_, v); }
  Status setImageObjectRendering(std::int32_t v) { return Store(imageRendering_, v); }
  Status setTextObjectRendering(std::int32_t v) { return Store(textRendering_, v); }
  Status setGraphicObjectRendering(std::int32_t v) { return Store(graphicRendering_, v); }
  Status setTRC(Name name);
  // With the field's custom kind the name must be non-null and at most 255
  // characters and replaces the stored one; any other kind keeps the name.
  Status setRGBImagesProfile(std::int32_t kind, Name name);
  Status setRGBTextAndGraphicsProfile(std::int32_t kind, Name name);
  Status setCMYKImagesProfile(std::int32_t kind, Name name);
  Status setCMYKTextAndGraphicsProfile(std::int32_t kind, Name name);
  Status setDestinationProfile(std::int32_t kind, Name name);
  // A non-null name must be at most 255 characters.
  Status setGrayImagesProfile(Name name);
  Status setGrayTextAndGraphicsProfile(Name name);

  // Keys only for what is set; a default object gives an empty dictionary.
  Dictionary asTicket() const;
  // Merges the keys present into the current values (null changes nothing).
  void fromTicket(const Dictionary* dictionary);

  friend bool operator==(const FullColorOptions&, const FullColorOptions&) = default;

 private:
  struct Profile {
    std::int32_t kind = kUnset;
    Name name;
    friend bool operator==(const Profile&, const Profile&) = default;
  };

  static Status Get(std::int32_t v, std::int32_t* out);
  static Status GetProfile(const Profile& p, std::int32_t* kind, Name* name);
  static Status Store(std::int32_t& field, std::int32_t v) {
    field = v;
    return kNoErr;
  }
  static Status SetAdjustment(std::int32_t& field, std::int32_t v);
  static Status SetProfile(Profile& p, std::int32_t custom, std::int32_t kind, Name name);
  static Status SetName(Name& field, Name name);
  static void PutProfile(Dictionary& d, std::string_view key, const Profile& p,
                         std::int32_t custom);
  static void ReadProfile(const Dictionary& d, std::string_view key, Profile& p,
                          std::int32_t custom);

  std::int32_t lightness_ = kUnset;
  std::int32_t contrast_ = kUnset;
  std::int32_t saturation_ = kUnset;
  std::int32_t cyanRed_ = kUnset;
  std::int32_t magentaGreen_ = kUnset;
  std::int32_t yellowBlue_ = kUnset;
  std::int32_t trapping_ = kUnset;
  std::int32_t trappingFast_ = kUnset;
  std::int32_t trappingSlow_ = kUnset;
  std::int32_t blackOverprint_ = kUnset;
  Name trc_;
  Profile rgbImages_;
  Profile rgbTextAndGraphics_;
  Profile cmykImages_;
  Profile cmykTextAndGraphics_;
  Name grayImagesName_;
  Name grayTextAndGraphicsName_;
  Profile destination_;
  std::int32_t imageRendering_ = kUnset;
  std::int32_t textRendering_ = kUnset;
  std::int32_t graphicRendering_ = kUnset;
};

}  // namespace zorva

// FullColorOptions: range checks, profile rules and the dictionary form.
#include "model/full_color_options.h"

#include "core/text.h"
#include "model/dictionary_fields.h"

namespace zorva {

namespace {

bool InRangeOrUnset(std::int32_t v, std::int32_t lo, std::int32_t hi) {
  return v == kUnset || (v >= lo && v <= hi);
}

bool NameFits(const std::string& name) {
  return Utf16Length(name) <= kMaxProfileNameLength;
}

}  // namespace

Status FullColorOptions::Get(std::int32_t v, std::int32_t* out) {
  if (!out) return kParamErr;
  *out = v;
  return kNoErr;
}

Status FullColorOptions::GetProfile(const Profile& p, std::int32_t* kind, Name* name) {
  if (!kind && !name) return kParamErr;
  if (kind) *kind = p.kind;
  if (name) *name = p.name;
  return kNoErr;
}

Status FullColorOptions::colorCast(std::int32_t* cyanRed, std::int32_t* magentaGreen,
                                   std::int32_t* yellowBlue) const {
  if (!cyanRed && !magentaGreen && !yellowBlue) return kParamErr;
  if (cyanRed) *cyanRed = cyanRed_;
  if (magentaGreen) *magentaGreen = magentaGreen_;
  if (yellowBlue) *yellowBlue = yellowBlue_;
  return kNoErr;
}

Status FullColorOptions::trappingAdjustment(std::int32_t* slow, std::int32_t* fast) const {
  if (!slow && !fast) return kParamErr;
  if (slow) *slow = trappingSlow_;
  if (fast) *fast = trappingFast_;
  return kNoErr;
}

Status FullColorOptions::trc(Name* out) const {
  if (!out) return kParamErr;
  *out = trc_;
  return kNoErr;
}

Status FullColorOptions::rgbImagesProfile(std::int32_t* kind, Name* name) const {
  return GetProfile(rgbImages_, kind, name);
}
Status FullColorOptions::rgbTextAndGraphicsProfile(std::int32_t* kind, Name* name) const {
  return GetProfile(rgbTextAndGraphics_, kind, name);
}
Status FullColorOptions::cmykImagesProfile(std::int32_t* kind, Name* name) const {
  return GetProfile(cmykImages_, kind, name);
}
Status FullColorOptions::cmykTextAndGraphicsProfile(std::int32_t* kind, Name* name) const {
  return GetProfile(cmykTextAndGraphics_, kind, name);
}
Status FullColorOptions::destinationProfile(std::int32_t* kind, Name* name) const {
  return GetProfile(destination_, kind, name);
}

Status FullColorOptions::grayImagesProfile(Name* name) const {
  if (!name) return kParamErr;
  *name = grayImagesName_;
  return kNoErr;
}

Status FullColorOptions::grayTextAndGraphicsProfile(Name* name) const {
  if (!name) return kParamErr;
  *name = grayTextAndGraphicsName_;
  return kNoErr;
}

Status FullColorOptions::SetAdjustment(std::int32_t& field, std::int32_t v) {
  if (!InRangeOrUnset(v, -100, 100)) return kParamErr;
  field = v;
  return kNoErr;
}

Status FullColorOptions::setColorCast(std::int32_t cyanRed, std::int32_t magentaGreen,
                                      std::int32_t yellowBlue) {
  if (!InRangeOrUnset(cyanRed, -100, 100) || !InRangeOrUnset(magentaGreen, -100, 100) ||
      !InRangeOrUnset(yellowBlue, -100, 100))
    return kParamErr;
  cyanRed_ = cyanRed;
  magentaGreen_ = magentaGreen;
  yellowBlue_ = yellowBlue;
  return kNoErr;
}

Status FullColorOptions::setTrappingAdjustment(std::int32_t slow, std::int32_t fast) {
  if (!InRangeOrUnset(slow, 0, 20) || !InRangeOrUnset(fast, 0, 20)) return kParamErr;
  trappingSlow_ = slow;
  trappingFast_ = fast;
  return kNoErr;
}

Status FullColorOptions::setTRC(Name name) {
  trc_ = std::move(name);
  return kNoErr;
}

Status FullColorOptions::SetProfile(Profile& p, std::int32_t custom, std::int32_t kind, Name name) {
  if (kind == custom) {
    if (!name || !NameFits(*name)) return kParamErr;
    p.name = std::move(name);
  }
  p.kind = kind;
  return kNoErr;
}

Status FullColorOptions::SetName(Name& field, Name name) {
  if (name && !NameFits(*name)) return kParamErr;
  field = std::move(name);
  return kNoErr;
}

Status FullColorOptions::setRGBImagesProfile(std::int32_t kind, Name name) {
  return SetProfile(rgbImages_, kRGBProfileCustom, kind, std::move(name));
}
Status FullColorOptions::setRGBTextAndGraphicsProfile(std::int32_t kind, Name name) {
  return SetProfile(rgbTextAndGraphics_, kRGBProfileCustom, kind, std::move(name));
}
Status FullColorOptions::setCMYKImagesProfile(std::int32_t kind, Name name) {
  return SetProfile(cmykImages_, kCMYKProfileCustom, kind, std::move(name));
}
Status FullColorOptions::setCMYKTextAndGraphicsProfile(std::int32_t kind, Name name) {
  return SetProfile(cmykTextAndGraphics_, kCMYKProfileCustom, kind, std::move(name));
}
Status FullColorOptions::setDestinationProfile(std::int32_t kind, Name name) {
  return SetProfile(destination_, kDestinationProfileCustom, kind, std::move(name));
}
Status FullColorOptions::setGrayImagesProfile(Name name) {
  return SetName(grayImagesName_, std::move(name));
}
Status FullColorOptions::setGrayTextAndGraphicsProfile(Name name) {
  return SetName(grayTextAndGraphicsName_, std::move(name));
}

// A custom profile is written as its name, a built-in one as its code. A
// custom kind whose name was never given (possible only after reading the
// bare code) names no usable profile and is left out.
void FullColorOptions::PutProfile(Dictionary& d, const char* key, const Profile& p,
                                  std::int32_t custom) {
  if (p.kind == kUnset) return;
  if (p.kind != custom) {
    d.set(key, Value(p.kind));
  } else if (p.name) {
    d.set(key, Value(*p.name));
  }
}

Dictionary FullColorOptions::asTicket() const {
  using fields::PutIfSet;
  Dictionary d;
  PutIfSet(d, "FCLightness", lightness_);
  PutIfSet(d, "FCContrast", contrast_);
  PutIfSet(d, "FCSaturation", saturation_);
  if (cyanRed_ != kUnset && magentaGreen_ != kUnset && yellowBlue_ != kUnset) {
    d.set("FCColorCast", Value(Dictionary{{"FCCyanRed", Value(cyanRed_)},
                                          {"FCMagentaGreen", Value(magentaGreen_)},
                                          {"FCYellowBlue", Value(yellowBlue_)}}));
  }
  PutIfSet(d, "FCTrapping", trapping_);
  if (trapping_ == kTrappingAdjustable) {
    PutIfSet(d, "FCTrappingFastDirection", trappingFast_);
    PutIfSet(d, "FCTrappingSlowDirection", trappingSlow_);
  }
  PutIfSet(d, "FCBlackOverprint", blackOverprint_);
  if (trc_) d.set("FCTRC", Value(*trc_));
  PutProfile(d, "RGBImagesProfile", rgbImages_, kRGBProfileCustom);
  PutProfile(d, "RGBTextAndGraphicsProfile", rgbTextAndGraphics_, kRGBProfileCustom);
  PutProfile(d, "CMYKImagesProfile", cmykImages_, kCMYKProfileCustom);
  PutProfile(d, "CMYKTextAndGraphicsProfile", cmykTextAndGraphics_, kCMYKProfileCustom);
  if (grayImagesName_) d.set("GrayImagesProfile", Value(*grayImagesName_));
  if (grayTextAndGraphicsName_)
    d.set("GrayTextAndGraphicsProfile", Value(*grayTextAndGraphicsName_));
  PutProfile(d, "DestinationProfile", destination_, kDestinationProfileCustom);
  PutIfSet(d, "ImageRendering", imageRendering_);
  PutIfSet(d, "TextRendering", textRendering_);
  PutIfSet(d, "GraphicRendering", graphicRendering_);
  return d;
}

// A number is the kind (the name stays); a string goes through the setter
// as a custom profile, so an over-long name is ignored. Other types are not
// a profile at all.
void FullColorOptions::ReadProfile(const Dictionary& d, const char* key, Profile& p,
                                   std::int32_t custom) {
  const Value* v = d.find(key);
  if (!v) return;
  if (v->isNumber()) {
    v->toInt32(p.kind);
  } else if (const std::string* s = v->string()) {
    SetProfile(p, custom, custom, *s);
  }
}

void FullColorOptions::fromTicket(const Dictionary* d) {
  if (!d) return;
  using fields::Read;
  Read(d, "FCLightness", lightness_);
  Read(d, "FCContrast", contrast_);
  Read(d, "FCSaturation", saturation_);
  if (const Dictionary* cast = d->getDictionary("FCColorCast")) {
    Read(cast, "FCCyanRed", cyanRed_);
    Read(cast, "FCMagentaGreen", magentaGreen_);
    Read(cast, "FCYellowBlue", yellowBlue_);
  }
  if (Read(d, "FCTrapping", trapping_)) {
    Read(d, "FCTrappingFastDirection", trappingFast_);
    Read(d, "FCTrappingSlowDirection", trappingSlow_);
  }
  Read(d, "FCBlackOverprint", blackOverprint_);
  if (const std::string* s = d->getString("FCTRC")) setTRC(*s);
  ReadProfile(*d, "RGBImagesProfile", rgbImages_, kRGBProfileCustom);
  ReadProfile(*d, "RGBTextAndGraphicsProfile", rgbTextAndGraphics_, kRGBProfileCustom);
  ReadProfile(*d, "CMYKImagesProfile", cmykImages_, kCMYKProfileCustom);
  ReadProfile(*d, "CMYKTextAndGraphicsProfile", cmykTextAndGraphics_, kCMYKProfileCustom);
  if (const std::string* s = d->getString("GrayImagesProfile")) setGrayImagesProfile(*s);
  if (const std::string* s = d->getString("GrayTextAndGraphicsProfile"))
    setGrayTextAndGraphicsProfile(*s);
  ReadProfile(*d, "DestinationProfile", destination_, kDestinationProfileCustom);
  Read(d, "ImageRendering", imageRendering_);
  Read(d, "TextRendering", textRendering_);
  Read(d, "GraphicRendering", graphicRendering_);
}

}  // namespace zorva

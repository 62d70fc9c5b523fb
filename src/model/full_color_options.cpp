// FullColorOptions: range checks, profile rules and the dictionary form.
#include "model/full_color_options.h"

#include "core/text.h"
#include "core/ticket_keys.h"
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
void FullColorOptions::PutProfile(Dictionary& d, std::string_view key, const Profile& p,
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
  PutIfSet(d, tkey::kFCLightness, lightness_);
  PutIfSet(d, tkey::kFCContrast, contrast_);
  PutIfSet(d, tkey::kFCSaturation, saturation_);
  if (cyanRed_ != kUnset && magentaGreen_ != kUnset && yellowBlue_ != kUnset) {
    d.set(tkey::kFCColorCast,
          Value(Dictionary{{std::string(tkey::kFCCyanRed), Value(cyanRed_)},
                           {std::string(tkey::kFCMagentaGreen), Value(magentaGreen_)},
                           {std::string(tkey::kFCYellowBlue), Value(yellowBlue_)}}));
  }
  PutIfSet(d, tkey::kFCTrapping, trapping_);
  if (trapping_ == kTrappingAdjustable) {
    PutIfSet(d, tkey::kFCTrappingFast, trappingFast_);
    PutIfSet(d, tkey::kFCTrappingSlow, trappingSlow_);
  }
  PutIfSet(d, tkey::kFCBlackOverprint, blackOverprint_);
  if (trc_) d.set(tkey::kFCTRC, Value(*trc_));
  PutProfile(d, tkey::kRGBImagesProfile, rgbImages_, kRGBProfileCustom);
  PutProfile(d, tkey::kRGBTextAndGraphicsProfile, rgbTextAndGraphics_, kRGBProfileCustom);
  PutProfile(d, tkey::kCMYKImagesProfile, cmykImages_, kCMYKProfileCustom);
  PutProfile(d, tkey::kCMYKTextAndGraphicsProfile, cmykTextAndGraphics_, kCMYKProfileCustom);
  if (grayImagesName_) d.set(tkey::kGrayImagesProfile, Value(*grayImagesName_));
  if (grayTextAndGraphicsName_)
    d.set(tkey::kGrayTextAndGraphicsProfile, Value(*grayTextAndGraphicsName_));
  PutProfile(d, tkey::kDestinationProfile, destination_, kDestinationProfileCustom);
  PutIfSet(d, tkey::kImageRendering, imageRendering_);
  PutIfSet(d, tkey::kTextRendering, textRendering_);
  PutIfSet(d, tkey::kGraphicRendering, graphicRendering_);
  return d;
}

// A number is the kind (the name stays); a string goes through the setter
// as a custom profile, so an over-long name is ignored. Other types are not
// a profile at all.
void FullColorOptions::ReadProfile(const Dictionary& d, std::string_view key, Profile& p,
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
  Read(d, tkey::kFCLightness, lightness_);
  Read(d, tkey::kFCContrast, contrast_);
  Read(d, tkey::kFCSaturation, saturation_);
  if (const Dictionary* cast = d->getDictionary(tkey::kFCColorCast)) {
    Read(cast, tkey::kFCCyanRed, cyanRed_);
    Read(cast, tkey::kFCMagentaGreen, magentaGreen_);
    Read(cast, tkey::kFCYellowBlue, yellowBlue_);
  }
  if (Read(d, tkey::kFCTrapping, trapping_)) {
    Read(d, tkey::kFCTrappingFast, trappingFast_);
    Read(d, tkey::kFCTrappingSlow, trappingSlow_);
  }
  Read(d, tkey::kFCBlackOverprint, blackOverprint_);
  if (const std::string* s = d->getString(tkey::kFCTRC)) setTRC(*s);
  ReadProfile(*d, tkey::kRGBImagesProfile, rgbImages_, kRGBProfileCustom);
  ReadProfile(*d, tkey::kRGBTextAndGraphicsProfile, rgbTextAndGraphics_, kRGBProfileCustom);
  ReadProfile(*d, tkey::kCMYKImagesProfile, cmykImages_, kCMYKProfileCustom);
  ReadProfile(*d, tkey::kCMYKTextAndGraphicsProfile, cmykTextAndGraphics_, kCMYKProfileCustom);
  if (const std::string* s = d->getString(tkey::kGrayImagesProfile)) setGrayImagesProfile(*s);
  if (const std::string* s = d->getString(tkey::kGrayTextAndGraphicsProfile))
    setGrayTextAndGraphicsProfile(*s);
  ReadProfile(*d, tkey::kDestinationProfile, destination_, kDestinationProfileCustom);
  Read(d, tkey::kImageRendering, imageRendering_);
  Read(d, tkey::kTextRendering, textRendering_);
  Read(d, tkey::kGraphicRendering, graphicRendering_);
}

}  // namespace zorva

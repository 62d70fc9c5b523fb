// Background-form options: their ticket dictionary and the user's histories
// of form names, kept in their own preference file with the bundle's
// ZorvaFeatures.plist as the factory default.
#include "model/background_forms.h"

#include <filesystem>

#include "core/bundle.h"
#include "core/plist_io.h"
#include "host/preferences.h"
#include "host/ticket_helpers.h"

namespace zorva {

namespace {

constexpr std::string_view kUseExistingFormKey = "UseExistingForm";
constexpr std::string_view kMergeWithStringKey = "MergeWithString";
constexpr std::string_view kCyclePagesKey = "CyclePages";
constexpr std::string_view kInchesKey = "Inches";
constexpr std::string_view kXOffsetKey = "X1";
constexpr std::string_view kYOffsetKey = "Y1";
constexpr std::string_view kUseDocumentNameKey = "UseDocumentName";
constexpr std::string_view kApplyPagesFromKey = "ApplyPagesFrom";
constexpr std::string_view kNewFormStringKey = "NewFormString";
constexpr std::string_view kExistingFormsArrayKey = "ExistingFormsArray";
constexpr std::string_view kNewFormsArrayKey = "NewFormsArray";

FormNames NamesFrom(const Dictionary& source, std::string_view key) {
  FormNames names;
  if (const Array* array = source.getArray(key)) {
    for (const Value& item : *array) {
      if (const std::string* name = item.string()) names.push_back(*name);
    }
  }
  return names;
}

Array NamesArray(const FormNames& names) {
  Array array;
  for (const std::string& name : names) array.push_back(Value(name));
  return array;
}

const Dictionary* NonEmptyDictionary(const Value* value) {
  const Dictionary* d = value ? value->dictionary() : nullptr;
  return d && !d->empty() ? d : nullptr;
}

std::optional<std::string> StringFrom(const Dictionary& ticket, std::string_view key) {
  if (const std::string* s = ticket.getString(key)) return *s;
  return std::nullopt;
}

}  // namespace

BackgroundFormsHistory ReadBackgroundFormsHistory(const Value* preferences, const Value* fallback) {
  const Dictionary* source = NonEmptyDictionary(preferences);
  if (!source && fallback) source = fallback->dictionary();
  if (!source) return {};
  return {NamesFrom(*source, kExistingFormsArrayKey), NamesFrom(*source, kNewFormsArrayKey)};
}

BackgroundFormsOptions::BackgroundFormsOptions() {
  loadHistory();
}

BackgroundFormsOptions::BackgroundFormsOptions(const Dictionary* ticket) {
  if (ticket) {
    fromTicket(ticket);
  } else {
    loadHistory();
  }
}

std::unique_ptr<BackgroundFormsOptions> BackgroundFormsOptions::clone() const {
  return std::make_unique<BackgroundFormsOptions>(*this);
}

Status BackgroundFormsOptions::setCyclePages(std::int32_t value, bool force) {
  if (!force && (value < kMinCyclePages || value > kMaxCyclePages)) return kParamErr;
  cyclePages_ = value;
  return kNoErr;
}

Dictionary BackgroundFormsOptions::asTicket() const {
  Dictionary d;
  WriteTicketValue(&d, kUseExistingFormKey, useExistingForm_);
  if (useExistingForm_ == kMergeWithExistingForm && mergeWithString_) {
    d.set(kMergeWithStringKey, Value(*mergeWithString_));
  }
  WriteTicketValue(&d, kCyclePagesKey, cyclePages_);
  WriteTicketValue(&d, kInchesKey, inches_);
  WriteTicketValue(&d, kXOffsetKey, xOffset_);
  WriteTicketValue(&d, kYOffsetKey, yOffset_);
  WriteTicketValue(&d, kUseDocumentNameKey, useDocumentName_);
  WriteTicketValue(&d, kApplyPagesFromKey, applyPagesFrom_);
  if (newFormString_) d.set(kNewFormStringKey, Value(*newFormString_));
  return d;
}

void BackgroundFormsOptions::resetNumbers() {
  const BackgroundFormsOptions defaults{NoHistory{}};
  useExistingForm_ = defaults.useExistingForm_;
  cyclePages_ = defaults.cyclePages_;
  inches_ = defaults.inches_;
  xOffset_ = defaults.xOffset_;
  yOffset_ = defaults.yOffset_;
  useDocumentName_ = defaults.useDocumentName_;
  applyPagesFrom_ = defaults.applyPagesFrom_;
}

void BackgroundFormsOptions::fromTicket(const Dictionary* ticket) {
  if (!ticket) return;
  // A ticket saved with some keys left out means those defaults, never
  // whatever an earlier ticket held.
  resetNumbers();
  DictionaryGetInt32(ticket, kUseExistingFormKey, useExistingForm_);
  DictionaryGetInt32(ticket, kCyclePagesKey, cyclePages_);
  DictionaryGetInt32(ticket, kInchesKey, inches_);
  DictionaryGetInt32(ticket, kXOffsetKey, xOffset_);
  DictionaryGetInt32(ticket, kYOffsetKey, yOffset_);
  DictionaryGetInt32(ticket, kUseDocumentNameKey, useDocumentName_);
  DictionaryGetInt32(ticket, kApplyPagesFromKey, applyPagesFrom_);
  newFormString_ = StringFrom(*ticket, kNewFormStringKey);
  mergeWithString_ = StringFrom(*ticket, kMergeWithStringKey);
  loadHistory();
}

void BackgroundFormsOptions::loadHistory() {
  std::optional<Value> preferences = CopyUserPreferences(kBackgroundFormsPreferences);
  std::optional<Value> fallback;
  if (!NonEmptyDictionary(preferences ? &*preferences : nullptr)) fallback = ReadFeaturesResource();
  BackgroundFormsHistory history = ReadBackgroundFormsHistory(preferences ? &*preferences : nullptr,
                                                              fallback ? &*fallback : nullptr);
  existingFormsArray_ = std::move(history.existingForms);
  newFormsArray_ = std::move(history.newForms);
}

Status BackgroundFormsOptions::saveHistory() const {
  std::optional<Value> preferences = CopyUserPreferences(kBackgroundFormsPreferences);
  if (!preferences || !preferences->dictionary()) preferences = Value(Dictionary{});
  Dictionary* d = preferences->dictionary();
  d->set(kExistingFormsArrayKey, Value(NamesArray(existingFormsArray_)));
  d->set(kNewFormsArrayKey, Value(NamesArray(newFormsArray_)));
  WriteUserPreferences(kBackgroundFormsPreferences, *preferences);
  return kNoErr;
}

}  // namespace zorva

// Background-form options: their ticket dictionary and the user's histories
// of form names, kept in their own preference file with the bundle's
// ZorvaFeatures.plist as the factory default.
#include "model/background_forms.h"

#include <filesystem>

#include "core/bundle.h"
#include "core/plist_io.h"
#include "core/ticket_keys.h"
#include "host/preferences.h"
#include "host/ticket_helpers.h"

namespace zorva {

namespace {

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
  return {NamesFrom(*source, tkey::kExistingFormsArray), NamesFrom(*source, tkey::kNewFormsArray)};
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
  WriteTicketValue(&d, tkey::kUseExistingForm, useExistingForm_);
  if (useExistingForm_ == kMergeWithExistingForm && mergeWithString_) {
    d.set(tkey::kMergeWithString, Value(*mergeWithString_));
  }
  WriteTicketValue(&d, tkey::kCyclePages, cyclePages_);
  WriteTicketValue(&d, tkey::kInches, inches_);
  WriteTicketValue(&d, tkey::kX1, xOffset_);
  WriteTicketValue(&d, tkey::kY1, yOffset_);
  WriteTicketValue(&d, tkey::kUseDocumentName, useDocumentName_);
  WriteTicketValue(&d, tkey::kApplyPagesFrom, applyPagesFrom_);
  if (newFormString_) d.set(tkey::kNewFormString, Value(*newFormString_));
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
  DictionaryGetInt32(ticket, tkey::kUseExistingForm, useExistingForm_);
  DictionaryGetInt32(ticket, tkey::kCyclePages, cyclePages_);
  DictionaryGetInt32(ticket, tkey::kInches, inches_);
  DictionaryGetInt32(ticket, tkey::kX1, xOffset_);
  DictionaryGetInt32(ticket, tkey::kY1, yOffset_);
  DictionaryGetInt32(ticket, tkey::kUseDocumentName, useDocumentName_);
  DictionaryGetInt32(ticket, tkey::kApplyPagesFrom, applyPagesFrom_);
  newFormString_ = StringFrom(*ticket, tkey::kNewFormString);
  mergeWithString_ = StringFrom(*ticket, tkey::kMergeWithString);
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
  d->set(tkey::kExistingFormsArray, Value(NamesArray(existingFormsArray_)));
  d->set(tkey::kNewFormsArray, Value(NamesArray(newFormsArray_)));
  WriteUserPreferences(kBackgroundFormsPreferences, *preferences);
  return kNoErr;
}

}  // namespace zorva

// Background forms: the overlay merged with every page of a job (an existing
// form stored on the printer, or a new one the job creates), how its pages
// cycle and where it sits, plus the user's two histories of form names, which
// live in the user's preferences rather than in the ticket.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/status.h"
#include "core/ticket_keys.h"
#include "core/value.h"

namespace zorva {

// The preference file holding the name histories.
inline constexpr std::string_view kBackgroundFormsPreferences = "com.zorva.print.backgroundforms";

using FormNames = std::vector<std::string>;

// The two histories as found in a preference (or resource) dictionary.
struct BackgroundFormsHistory {
  FormNames existingForms;
  FormNames newForms;
};

// The histories from the user's preferences when there are any (a non-empty
// dictionary), else from the fallback; a list missing from the chosen source,
// or not an array there, is empty. Entries that are not strings are skipped.
BackgroundFormsHistory ReadBackgroundFormsHistory(const Value* preferences, const Value* fallback);

class BackgroundFormsOptions {
 public:
  static constexpr std::int32_t kMinCyclePages = 2;
  static constexpr std::int32_t kMaxCyclePages = 999999;
  // The useExistingForm code that merges with the form named by mergeWithString.
  static constexpr std::int32_t kMergeWithExistingForm = 2;

  // Defaults, then the saved histories.
  BackgroundFormsOptions();
  // Defaults, then the dictionary read as fromTicket does (a null one only
  // loads the histories).
  explicit BackgroundFormsOptions(const Dictionary* ticket);
  BackgroundFormsOptions(const BackgroundFormsOptions&) = default;
  BackgroundFormsOptions& operator=(const BackgroundFormsOptions&) = default;

  std::unique_ptr<BackgroundFormsOptions> clone() const;

  std::int32_t useExistingForm() const { return useExistingForm_; }
  std::int32_t cyclePages() const { return cyclePages_; }
  std::int32_t inches() const { return inches_; }
  std::int32_t xOffset() const { return xOffset_; }
  std::int32_t yOffset() const { return yOffset_; }
  std::int32_t useDocumentName() const { return useDocumentName_; }
  std::int32_t applyPagesFrom() const { return applyPagesFrom_; }
  const FormNames& existingFormsArray() const { return existingFormsArray_; }
  const FormNames& newFormsArray() const { return newFormsArray_; }
  const std::optional<std::string>& mergeWithString() const { return mergeWithString_; }
  const std::optional<std::string>& newFormString() const { return newFormString_; }

  // Output-pointer getters: kNoErr with the value copied, kParamErr for null.
  Status useExistingForm(std::int32_t* out) const { return CopyOut(useExistingForm_, out); }
  Status cyclePages(std::int32_t* out) const { return CopyOut(cyclePages_, out); }
  Status inches(std::int32_t* out) const { return CopyOut(inches_, out); }
  Status xOffset(std::int32_t* out) const { return CopyOut(xOffset_, out); }
  Status yOffset(std::int32_t* out) const { return CopyOut(yOffset_, out); }
  Status useDocumentName(std::int32_t* out) const { return CopyOut(useDocumentName_, out); }
  Status applyPagesFrom(std::int32_t* out) const { return CopyOut(applyPagesFrom_, out); }
  Status existingFormsArray(FormNames* out) const { return CopyOut(existingFormsArray_, out); }
  Status newFormsArray(FormNames* out) const { return CopyOut(newFormsArray_, out); }
  Status mergeWithString(std::optional<std::string>* out) const {
    return CopyOut(mergeWithString_, out);
  }
  Status newFormString(std::optional<std::string>* out) const {
    return CopyOut(newFormString_, out);
  }

  Status setUseExistingForm(std::int32_t value) { return Store(useExistingForm_, value); }
  // Unforced, only kMinCyclePages..kMaxCyclePages is taken (else kParamErr
  // and no change); forced, any value is stored.
  Status setCyclePages(std::int32_t value, bool force = false);
  Status setInches(std::int32_t value) { return Store(inches_, value); }
  Status setXOffset(std::int32_t value) { return Store(xOffset_, value); }
  Status setYOffset(std::int32_t value) { return Store(yOffset_, value); }
  Status setUseDocumentName(std::int32_t value) { return Store(useDocumentName_, value); }
  Status setApplyPagesFrom(std::int32_t value) { return Store(applyPagesFrom_, value); }
  Status setExistingFormsArray(FormNames names) { return Store(existingFormsArray_, names); }
  Status setNewFormsArray(FormNames names) { return Store(newFormsArray_, names); }
  Status setMergeWithString(std::optional<std::string> name) {
    return Store(mergeWithString_, name);
  }
  Status setNewFormString(std::optional<std::string> name) { return Store(newFormString_, name); }

  // The ticket dictionary (the histories are never part of it).
  Dictionary asTicket() const;

  // Resets the seven numbers to their defaults and reads those present (no
  // range check), replaces both names by what the dictionary holds (null when
  // absent), then reloads the histories. A null dictionary changes nothing.
  void fromTicket(const Dictionary* ticket);

  // The histories from the user's preferences, or from the bundle's
  // ZorvaFeatures.plist when there are none saved.
  void loadHistory();
  // Writes both histories into the user's preferences, keeping the file's
  // other entries. Always kNoErr: a failed write has already been reported.
  Status saveHistory() const;

  friend bool operator==(const BackgroundFormsOptions&, const BackgroundFormsOptions&) = default;

 private:
  struct NoHistory {};
  explicit BackgroundFormsOptions(NoHistory) {}

  void resetNumbers();

  template <class T>
  static Status CopyOut(const T& field, T* out) {
    if (!out) return kParamErr;
    *out = field;
    return kNoErr;
  }
  template <class T>
  static Status Store(T& field, T& value) {
    field = std::move(value);
    return kNoErr;
  }

  std::int32_t useExistingForm_ = 1;
  std::int32_t cyclePages_ = 2;
  std::int32_t inches_ = 1;
  std::int32_t xOffset_ = 0;
  std::int32_t yOffset_ = 0;
  std::int32_t useDocumentName_ = 1;
  std::int32_t applyPagesFrom_ = 1;
  FormNames existingFormsArray_;
  FormNames newFormsArray_;
  std::optional<std::string> mergeWithString_;
  std::optional<std::string> newFormString_;
};

}  // namespace zorva

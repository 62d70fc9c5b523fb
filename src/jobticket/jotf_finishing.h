// The finishing definitions the job-ticket writer reads and the finishing
// menu and dialogs store: the choices of "com.zorva.print.FinishingOptions",
// which sub-value entries each choice takes, and every sub-value a dialog can
// store with the finisher feature that must be installed for it. Kept in one
// place so a choice made on screen always exports as the finishing it names.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/ticket_keys.h"

namespace zorva {

// Values of "com.zorva.print.FinishingOptions", the finishing menu's choice.
namespace finishing {
inline constexpr std::int32_t kPrinterDefault = 0;
inline constexpr std::int32_t kNone = 1;
inline constexpr std::int32_t kOneStaple = 2;
inline constexpr std::int32_t kTwoStaples = 3;
inline constexpr std::int32_t kCenterStaple = 4;
inline constexpr std::int32_t kBind = 5;
inline constexpr std::int32_t kTwoHolePunch = 6;
inline constexpr std::int32_t kThreeHolePunch = 7;
inline constexpr std::int32_t kFourHolePunch = 8;
inline constexpr std::int32_t kFold = 9;
inline constexpr std::int32_t kZFoldHalfSheet = 10;
inline constexpr std::int32_t kMultiple = 11;
inline constexpr std::int32_t kSignatureBooklet = 12;
inline constexpr std::int32_t kCustom = 13;
inline constexpr std::int32_t kBooklet = 14;

// "com.zorva.print.FinishingSlipSheet": 2 puts a blank sheet between sets.
inline constexpr std::int32_t kSlipSheetsOn = 2;
}  // namespace finishing

// What one choice of the finishing menu takes from the dialogs' values.
struct FinishingChoice {
  std::int32_t option;
  std::string_view stapleKey = {};  // "*": the first staple entry that has a value
  std::string_view foldKey = {};
  bool punch = false;
  std::int32_t holes = -1;  // punch-holes code; 0: from the punch options entry
  bool custom = false;
};

inline constexpr std::string_view kAnyStaple = "*";

inline constexpr FinishingChoice kFinishingChoices[] = {
    {.option = finishing::kOneStaple, .stapleKey = tkey::kFinishingStaple1},
    {.option = finishing::kTwoStaples, .stapleKey = tkey::kFinishingStaple2},
    {.option = finishing::kCenterStaple, .stapleKey = tkey::kFinishingStapleCenter},
    {.option = finishing::kBind, .foldKey = tkey::kFinishingBind},
    {.option = finishing::kTwoHolePunch, .punch = true, .holes = 35},
    {.option = finishing::kThreeHolePunch, .punch = true, .holes = 36},
    {.option = finishing::kFourHolePunch, .punch = true, .holes = 37},
    {.option = finishing::kFold, .foldKey = tkey::kFinishingFold},
    {.option = finishing::kZFoldHalfSheet, .foldKey = tkey::kFinishingZFold},
    {.option = finishing::kMultiple,
     .stapleKey = kAnyStaple,
     .foldKey = tkey::kFinishingZFold,
     .punch = true,
     .holes = 0},
    {.option = finishing::kSignatureBooklet, .foldKey = tkey::kBookletFoldStaple},
    {.option = finishing::kCustom, .custom = true},
    {.option = finishing::kBooklet, .foldKey = tkey::kBookletFoldStaple},
};

constexpr const FinishingChoice* FindFinishingChoice(std::int32_t option) {
  for (const FinishingChoice& c : kFinishingChoices) {
    if (c.option == option) return &c;
  }
  return nullptr;
}

// One value a finishing dialog stores under a sub-value entry: the entry,
// the value, the installable feature the finisher needs for it, and the
// localisation key of its name (also the job ticket's keyword for it).
struct FinishingValue {
  std::string_view key;
  std::int32_t value;
  std::string_view feature;
  std::string_view nameKey;
};

// Staple values go through the staple code table, punch values through the
// punch table, fold, bind and booklet values are fold codes themselves;
// punch options are hole counts.
inline constexpr FinishingValue kFinishingValues[] = {
    {tkey::kFinishingStaple1, 5, "1StapleTL", "1StapleTopLeft"},
    {tkey::kFinishingStaple1, 7, "1StapleTR", "1StapleTopRight"},
    {tkey::kFinishingStaple1, 6, "1StapleBL", "1StapleBottomLeft"},
    {tkey::kFinishingStaple1, 8, "1StapleBR", "1StapleBottomRight"},
    {tkey::kFinishingStaple2, 10, "2StaplesL", "2StaplesLeft"},
    {tkey::kFinishingStaple2, 11, "2StaplesT", "2StaplesTop"},
    {tkey::kFinishingStaple2, 13, "2StaplesR", "2StaplesRight"},
    {tkey::kFinishingStaple2, 12, "2StaplesB", "2StaplesBottom"},
    {tkey::kFinishingStapleCenter, 26, "1StapleL", "3StaplesLeft"},
    {tkey::kFinishingStapleCenter, 27, "1StapleT", "3StaplesTop"},
    {tkey::kFinishingStapleCenter, 29, "1StapleR", "3StaplesRight"},
    {tkey::kFinishingStapleCenter, 28, "1StapleB", "3StaplesBottom"},
    {tkey::kFinishingBind, 25, "BindLeft", "BindLeft"},
    {tkey::kFinishingBind, 26, "BindTop", "BindTop"},
    {tkey::kFinishingBind, 28, "BindRight", "BindRight"},
    {tkey::kFinishingBind, 30, "BindBottom", "BindBottom"},
    {tkey::kFinishingFold, 9, "BiFoldSingleInside", "BiFoldSingleInside"},
    {tkey::kFinishingFold, 10, "BiFoldSingleOutside", "BiFoldSingleOutside"},
    {tkey::kFinishingFold, 11, "CFoldSingleInside", "TriFoldCInside"},
    {tkey::kFinishingFold, 12, "CFoldSingleOutside", "TriFoldCOutside"},
    {tkey::kFinishingZFold, 21, "ZFoldHalfLeft", "ZFoldHalfLeft"},
    {tkey::kFinishingZFold, 22, "ZFoldHalfRight", "ZFoldHalfRight"},
    {tkey::kBookletFoldStaple, 13, "BiFoldMultiple", "BookletFold"},
    {tkey::kBookletFoldStaple, 14, "BiFoldStapleMultiple", "BookletFoldStaple"},
    {tkey::kBookletFoldStaple, 15, "SBM", "SignatureBooklet"},
    // Punch edge; the hole count comes from the menu item or the options
    // entry, and the feature needed is the count's digit and this
    // ("3HolePunchL"). A count's feature is likewise the prefix of its edges'.
    {tkey::kFinishingHolePunch, 32, "HolePunchL", "Left"},
    {tkey::kFinishingHolePunch, 33, "HolePunchT", "Top"},
    {tkey::kFinishingHolePunch, 34, "HolePunchR", "Right"},
    {tkey::kFinishingHolePunch, 35, "HolePunchB", "Bottom"},
    {tkey::kFinishingHolePunchOptions, 2, "2HolePunch", "Two"},
    {tkey::kFinishingHolePunchOptions, 3, "3HolePunch", "Three"},
    {tkey::kFinishingHolePunchOptions, 4, "4HolePunch", "Four"},
};

}  // namespace zorva

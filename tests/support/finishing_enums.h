// The job ticket's finishing numbers for the names of the finishing values
// (the device profile's keywords), written out independently of the
// product's tables so tests can check what a chosen finishing exports as.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace zorva::test {

inline const std::map<std::string_view, int> kFinishingEnumForName = {
    {"1StapleTopLeft", 20},
    {"1StapleBottomLeft", 21},
    {"1StapleTopRight", 22},
    {"1StapleBottomRight", 23},
    {"2StaplesLeft", 28},
    {"2StaplesTop", 29},
    {"2StaplesRight", 30},
    {"2StaplesBottom", 31},
    {"3StaplesLeft", 32},
    {"3StaplesTop", 33},
    {"3StaplesRight", 34},
    {"3StaplesBottom", 35},
    {"BindLeft", 1011},
    {"BindTop", 1008},
    {"BindRight", 1005},
    {"BindBottom", 1012},
    {"BiFoldSingleInside", 3},
    {"BiFoldSingleOutside", 111},
    {"TriFoldCInside", 1000},
    {"TriFoldCOutside", 1001},
    {"ZFoldHalfLeft", 1003},
    {"ZFoldHalfRight", 1004},
    {"BookletFold", 50},
    {"BookletFoldStaple", 52},
    {"SignatureBooklet", 13},
    {"Left", 93},
    {"Top", 94},
    {"Bottom", 95},
    {"Right", 96},
    {"Two", 90},
    {"Three", 91},
    {"Four", 92},
};

// A finishing number's line in the job ticket.
inline std::string FinishingEnumLine(int value) {
  return "<value syntax=\"enum\">" + std::to_string(value) + "</value>";
}

}  // namespace zorva::test

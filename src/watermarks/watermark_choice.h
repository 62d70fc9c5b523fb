// Which watermark a job prints with, as the print-settings ticket holds it
// and as the job options carry it to the printer's server, where the
// zorva-watermark filter reads it back. Ticket and job options name the same
// three settings; these are their only definitions.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/ticket_keys.h"

namespace zorva {

class Ticket;

// Job options (IPP attribute names are lower-case keywords): the name, the
// pages ("all" or "first") and the layer ("behind" the page's own marks or
// "front", over them).
inline constexpr std::string_view kWatermarkOption = "zorva-watermark";
inline constexpr std::string_view kWatermarkPagesOption = "zorva-watermark-pages";
inline constexpr std::string_view kWatermarkLayerOption = "zorva-watermark-layer";

struct WatermarkChoice {
  std::string name;  // the watermark's name in the store
  bool firstPageOnly = false;
  bool inFront = false;

  friend bool operator==(const WatermarkChoice&, const WatermarkChoice&) = default;
};

// The ticket's choice; nullopt when it names no watermark.
std::optional<WatermarkChoice> WatermarkChoiceFromTicket(const Ticket& ticket);

// The job options that carry the choice, in a fixed order.
std::vector<std::pair<std::string, std::string>> WatermarkJobOptions(const WatermarkChoice& choice);

// A job option's value by name, or null when the job has none.
using OptionLookup = std::function<const char*(std::string_view name)>;

// The choice from a job's options; nullopt when they name no watermark.
// Unknown page or layer values read as the defaults (all pages, behind).
std::optional<WatermarkChoice> WatermarkChoiceFromOptions(const OptionLookup& option);

}  // namespace zorva

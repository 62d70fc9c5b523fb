// The watermark choice between ticket and job options (see watermark_choice.h).
#include "watermarks/watermark_choice.h"

#include "core/ticket.h"

namespace zorva {

std::optional<WatermarkChoice> WatermarkChoiceFromTicket(const Ticket& ticket) {
  const std::string* name = ticket.getString(tkey::kWatermarkName);
  if (!name || name->empty()) return std::nullopt;
  WatermarkChoice choice;
  choice.name = *name;
  choice.firstPageOnly = ticket.getBoolean(tkey::kWatermarkFirstPageOnly).value_or(false);
  choice.inFront = ticket.getBoolean(tkey::kWatermarkInFront).value_or(false);
  return choice;
}

std::vector<std::pair<std::string, std::string>> WatermarkJobOptions(
    const WatermarkChoice& choice) {
  return {
      {std::string(kWatermarkOption), choice.name},
      {std::string(kWatermarkPagesOption), choice.firstPageOnly ? "first" : "all"},
      {std::string(kWatermarkLayerOption), choice.inFront ? "front" : "behind"},
  };
}

std::optional<WatermarkChoice> WatermarkChoiceFromOptions(const OptionLookup& option) {
  const char* name = option(kWatermarkOption);
  if (!name || !*name) return std::nullopt;
  WatermarkChoice choice;
  choice.name = name;
  const char* pages = option(kWatermarkPagesOption);
  choice.firstPageOnly = pages && std::string_view(pages) == "first";
  const char* layer = option(kWatermarkLayerOption);
  choice.inFront = layer && std::string_view(layer) == "front";
  return choice;
}

}  // namespace zorva

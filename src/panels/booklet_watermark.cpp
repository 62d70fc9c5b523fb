// The Booklet/Watermark panel's ticket reading and writing, its watermark
// menu and the watermark list's bookkeeping.
#include "panels/booklet_watermark.h"

#include <algorithm>

#include "core/ticket_keys.h"
#include "host/keyword_tables.h"

namespace zorva {

namespace key = tkey;

constexpr SettingMap BookletFoldStapleMap[] = {
    {"BookletFoldNone", 0, 0, nullptr, 1},
    {"BookletFold", 13, 0, nullptr, 1},
    {"BookletFoldStaple", 14, 0, nullptr, 1},
    {"BookletMaker", 15, 0, nullptr, 1},
    {nullptr, 0, 0, nullptr, 0},
};

namespace {

constexpr std::string_view kClient = kTicketClientPrintingManager;
constexpr std::string_view kHostClient = kTicketClientSystem;

}  // namespace

BookletSettings ReadBookletSettings(const Ticket& ticket) {
  BookletSettings s;
  s.layout = ticket.getBoolean(key::kBookletLayout).value_or(false);
  ticket.getNumber(key::kBookletDrawOutlines, s.drawOutlines);
  ticket.getNumber(key::kGutter, s.gutter);
  ticket.getNumber(key::kCreep, s.creep);
  ticket.getNumber(tkey::kBookletFoldStaple, s.foldStaple);
  s.rotate180 = ticket.getBoolean(key::kBookletRotate180).value_or(false);
  if (const std::string* name = ticket.getString(key::kWatermarkName)) s.watermark = *name;
  s.watermarkFirstPageOnly = ticket.getBoolean(key::kWatermarkFirstPageOnly).value_or(false);
  s.watermarkInFront = ticket.getBoolean(key::kWatermarkInFront).value_or(false);
  return s;
}

void WriteBookletSettings(Ticket& ticket, const BookletSettings& s) {
  ticket.setBoolean(kClient, key::kBookletLayout, s.layout);
  ticket.setNumber(kClient, key::kBookletDrawOutlines, s.drawOutlines);
  ticket.setNumber(kHostClient, key::kGutter, s.gutter);
  ticket.setNumber(kHostClient, key::kCreep, s.creep);
  ticket.setNumber(kClient, tkey::kBookletFoldStaple, s.foldStaple);
  ticket.setBoolean(kClient, key::kBookletRotate180, s.rotate180);
  const bool chosen = !s.watermark.empty();
  if (chosen) {
    ticket.setString(kClient, key::kWatermarkName, s.watermark);
  } else {
    ticket.remove(key::kWatermarkName);
  }
  const std::pair<std::string_view, bool> options[] = {
      {key::kWatermarkFirstPageOnly, chosen && s.watermarkFirstPageOnly},
      {key::kWatermarkInFront, chosen && s.watermarkInFront}};
  for (const auto& [k, on] : options) {
    if (on) {
      ticket.setBoolean(kClient, k, true);
    } else {
      ticket.remove(k);
    }
  }
}

std::vector<WatermarkMenuItem> WatermarkMenuItems(const std::vector<std::string>& names) {
  std::vector<WatermarkMenuItem> items;
  const SettingMap* row = WatermarkMap;
  items.push_back({row->key, row->value, row->command, false});
  for (const std::string& name : names) {
    items.push_back({name, 0, kWatermarkItemCommand, true});
  }
  for (++row; row->key; ++row) items.push_back({row->key, row->value, row->command, false});
  return items;
}

std::vector<std::string> ListAfterSave(std::vector<std::string> names, std::string_view previous,
                                       std::string_view name) {
  const auto at = std::find(names.begin(), names.end(), previous);
  if (!previous.empty() && at != names.end()) {
    *at = name;
  } else {
    names.emplace_back(name);
  }
  // A name saved over another watermark of that name stands once, first place.
  std::vector<std::string> unique;
  for (std::string& n : names) {
    if (std::find(unique.begin(), unique.end(), n) == unique.end()) unique.push_back(std::move(n));
  }
  return unique;
}

std::vector<std::string> ListAfterDelete(std::vector<std::string> names, std::string_view name) {
  std::erase(names, std::string(name));
  return names;
}

}  // namespace zorva

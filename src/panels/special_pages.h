// The Special Pages panel's rules beside its editing model: which cover the
// cover dialog edits and where its choice puts the cover (with the booklet
// rule), the exception dialog's menus, the text a dialog's page field starts
// with, and the list's selection kept on the same pages while rows change.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/ticket.h"
#include "host/setting_map.h"
#include "model/special_pages.h"
#include "model/special_pages_editing.h"

namespace zorva {

// ---- Covers -------------------------------------------------------------------------
// Where the cover dialog puts its cover.
enum class CoverChoice : std::int32_t { Front = 1, Back = 2, Both = 3 };

// A booklet is wrapped in one cover sheet, so its front and back covers are
// the same cover: the ticket keeps only the front one then, and reading
// makes the back a copy of it. The panel therefore offers only "both" under
// booklet layout and deletes the two together.
bool BookletLayoutIsOn(const Ticket& ticket);

struct CoverEntry {
  CoverChoice choice = CoverChoice::Front;
  Cover cover;
};

// What the cover dialog starts with: for a new cover (editing null) a reset
// front cover; for a cover row its cover, shown as "both" when the other
// cover is equal to it. Under booklet layout the choice is always "both".
CoverEntry CoverEntryFor(const SpecialPagesContext& context, const SpecialPageItem* editing,
                         bool booklet);

// The dialog's OK: takes the undo snapshot, takes away the cover(s) being
// edited (`editing`: the choice the dialog started with; nullopt for a new
// cover), then puts copies of the entry's cover where its choice says (both
// under booklet layout).
void ApplyCoverEntry(SpecialPagesContext& context, const CoverEntry& entry,
                     std::optional<CoverChoice> editing, bool booklet);

// ---- Inserts ------------------------------------------------------------------------
// The most sheets one insert may be: more is a typing slip, not a job.
inline constexpr int kMaxInsertQuantity = 999;

// ---- Exception pages -----------------------------------------------------------------
// One menu of the exception dialog: its keyword table and the page's field.
struct ExceptionMenuRow {
  const SettingMap* map;
  std::int32_t (ExceptionPage::*get)() const;
  void (ExceptionPage::*set)(std::int32_t);
};
// Sides, lighten/darken, output colour, anti-aliasing, halftone: the
// dialog's menus in control order.
std::span<const ExceptionMenuRow> ExceptionMenuRows();

// ---- Page fields and rows --------------------------------------------------------------
// The text a dialog's page field starts with when editing: "3-5" or "3" for
// an exception range, the page after which an insert goes (empty before the
// first page), empty for anything else.
std::string PageEntryText(const SpecialPage* page);

// The items of the selected rows, in the order given; rows out of range are
// skipped.
std::vector<SpecialPageItem> ItemsOfRows(std::span<const SpecialPageItem> rows,
                                         std::span<const int> selectedRows);
// The rows now showing the pages of `items` (by identity), in the items'
// order; items whose page has gone are skipped.
std::vector<int> RowsOfItems(std::span<const SpecialPageItem> rows, SpecialPageSelection items);

// The selection to delete: under booklet layout a selected cover brings the
// other cover with it.
std::vector<SpecialPageItem> SelectionToDelete(const SpecialPagesContext& context,
                                               SpecialPageSelection selection, bool booklet);

}  // namespace zorva

// The Special Pages panel's editing model without its widgets: the covers and
// lists being edited with their one-level undo, the rows the panel lists,
// deleting and moving the selected rows, which commands are enabled, and the
// entry rules of the insert and exception-page dialogs.
//
// A selection is a list of rows in the order the user picked them; rows name
// pages by identity, so a row whose page has since gone simply matches
// nothing.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/status.h"
#include "core/ticket.h"
#include "model/special_page_lists.h"
#include "model/special_pages.h"

namespace zorva {

class Bundle;

// Command codes of the panel's buttons.
inline constexpr std::int32_t kDeleteSpecialPagesCommand = 1300;
inline constexpr std::int32_t kDeleteAllSpecialPagesCommand = 1400;
inline constexpr std::int32_t kUndoSpecialPagesCommand = 1500;
inline constexpr std::int32_t kMoveUpSpecialPageCommand = 1600;
inline constexpr std::int32_t kMoveDownSpecialPageCommand = 1700;

// The most pages one insert entry may make. "1-" would otherwise ask for ten
// million inserts; such text is refused as invalid page ranges.
inline constexpr std::int64_t kMaxInsertsPerEntry = 9999;

// What the panel edits, and one saved copy of each part for undo (null when
// nothing is saved). The live lists always exist.
struct SpecialPagesContext {
  std::unique_ptr<Cover> frontCover;
  std::unique_ptr<Cover> backCover;
  std::unique_ptr<InsertList> inserts = std::make_unique<InsertList>();
  std::unique_ptr<ExceptionPageList> exceptionPages = std::make_unique<ExceptionPageList>();

  std::unique_ptr<Cover> savedFrontCover;
  std::unique_ptr<Cover> savedBackCover;
  std::unique_ptr<InsertList> savedInserts;
  std::unique_ptr<ExceptionPageList> savedExceptionPages;
};

// Moves covers and both lists between the ticket and the context (the panel's
// sync). Returns the first failing ticket call's status, else kNoErr.
Status SyncSpecialPages(Ticket& ticket, SyncDirection direction, SpecialPagesContext& context);

// Replaces the saved copies by clones of the live covers and lists.
Status SaveUndoState(SpecialPagesContext& context);
// Puts the saved copies in place of the live ones and empties the saved
// slots, so undo has one level. With nothing saved it changes nothing.
Status PerformUndo(SpecialPagesContext& context);
bool CanUndo(const SpecialPagesContext& context);

// One row of the panel's list.
enum class SpecialPageKind : std::int32_t { FrontCover, Insert, ExceptionPage, BackCover };
struct SpecialPageItem {
  SpecialPageKind kind;
  const SpecialPage* page;
  friend bool operator==(const SpecialPageItem&, const SpecialPageItem&) = default;
};
using SpecialPageSelection = std::span<const SpecialPageItem>;

// The rows in the panel's order: front cover, inserts, exception pages, back
// cover (each cover only when there is one).
std::vector<SpecialPageItem> SpecialPagesItems(const SpecialPagesContext& context);

// The confirmation the delete commands ask for, with texts from the bundle
// ("STRING NOT FOUND" for a missing text or bundle). The user's answer is
// true for the alternate button ("Yes").
struct DeleteConfirmation {
  std::string title;
  std::string message;
  std::string defaultButton;    // "No"
  std::string alternateButton;  // "Yes"
};
using ConfirmDelete = std::function<bool(const DeleteConfirmation&)>;
DeleteConfirmation DeleteConfirmationFor(bool all, const Bundle* bundle);

// Both take the undo snapshot first (also when the answer is "No"), then ask;
// only on "Yes" do they delete. True when pages were deleted.
bool DeleteSelectedSpecialPages(SpecialPagesContext& context, SpecialPageSelection selection,
                                const ConfirmDelete& confirm, const Bundle* bundle);
bool DeleteAllSpecialPages(SpecialPagesContext& context, const ConfirmDelete& confirm,
                           const Bundle* bundle);

// Move Up (towards the front) or Move Down: takes the snapshot, then moves
// every selected insert that can move, in selection order, by one place.
// Returns the number of inserts moved.
int MoveSelectedInserts(SpecialPagesContext& context, SpecialPageSelection selection, bool up);

// Which of the panel's commands are enabled for a selection.
struct SpecialPagesCommandState {
  bool edit = false;
  bool remove = false;     // Delete (1300)
  bool removeAll = false;  // Delete All (1400)
  bool moveUp = false;     // Move Up (1600)
  bool moveDown = false;   // Move Down (1700)
  bool undo = false;       // Undo (1500)
  friend bool operator==(const SpecialPagesCommandState&,
                         const SpecialPagesCommandState&) = default;
};
SpecialPagesCommandState UpdateSpecialPagesCommandButtons(const SpecialPagesContext& context,
                                                          SpecialPageSelection selection);

// The insert dialog's pages: one insert per page of the text (a copy of
// `settings` with that start page), or with beforeFirstPage one insert at
// page 0 whatever the text. A parser code on bad text; kInvalidPageRanges
// when the text names more than kMaxInsertsPerEntry pages.
Status MakeInsertsFromEntry(std::string_view text, bool beforeFirstPage, const Insert& settings,
                            std::vector<std::unique_ptr<Insert>>* result);

// The exception dialog's pages: one exception page per range (a copy of
// `settings` with that start and end). kInvalidPageNumbers when any range
// starts at page 0 or below.
Status MakeExceptionPagesFromEntry(std::string_view text, const ExceptionPage& settings,
                                   std::vector<std::unique_ptr<ExceptionPage>>* result);

// What the dialogs do on OK: make the pages; on success take the snapshot and
// either replace `editing` (when it is in its list) or add the new pages. On
// a non-zero code nothing changes and the caller shows that code's alert.
Status ApplyInsertEntry(SpecialPagesContext& context, std::string_view text, bool beforeFirstPage,
                        const Insert& settings, const Insert* editing = nullptr);
Status ApplyExceptionEntry(SpecialPagesContext& context, std::string_view text,
                           const ExceptionPage& settings, const ExceptionPage* editing = nullptr);

// A dialog reset: the stock's fields for the context, and for an insert a
// quantity of 1.
void ResetInsert(Insert& insert);
void ResetExceptionPage(ExceptionPage& page);

}  // namespace zorva

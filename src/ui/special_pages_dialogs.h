// The Special Pages panel's dialogs: a cover (front, back or both, printed
// sides, paper), an insert (after which pages, how many sheets, paper, or
// before the first page) and exception pages (page ranges, paper, sides,
// image settings, image shift and full colour options). Each edits the
// panel's pages through the editing model, which takes the undo snapshot.
#pragma once

#include "core/status.h"
#include "model/special_pages.h"
#include "model/special_pages_editing.h"

class QWidget;

namespace zorva {

class Bundle;

// The alert for a page-range code ("SpecialPagesAlert", its code in the
// "code" property); nothing for a code without one.
void SpecialPagesUserNotification(Status code, const Bundle* bundle, QWidget* parent);

// Each shows its dialog modally over parent, starting from `editing` (null:
// a new entry). On OK the pages change and the answer is true; text the
// page rules refuse shows its alert and the dialog stays open with nothing
// changed; Cancel changes nothing.
bool RunModalCoverDialog(const Bundle* bundle, QWidget* parent, SpecialPagesContext& pages,
                         const SpecialPageItem* editing, bool booklet);
bool RunModalInsertDialog(const Bundle* bundle, QWidget* parent, SpecialPagesContext& pages,
                          const Insert* editing);
bool RunModalExceptionDialog(const Bundle* bundle, QWidget* parent, SpecialPagesContext& pages,
                             const ExceptionPage* editing);

}  // namespace zorva

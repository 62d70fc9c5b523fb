// The named-paper library window: the user's papers ("My Paper List") or
// the printer's ("Printer Paper List"), with status icons, the columns the
// list preferences show, create, copy, edit and delete, "Add To My Paper
// List" and "Use In Job".
#pragma once

#include "model/stock.h"

class QWidget;

namespace zorva {

class Ticket;

// Shows the window; on "Use In Job" the chosen paper (repaired of values the
// device does not know) becomes stock and true is returned. printSettings,
// when given, marks the papers the job uses.
bool RunModalNamedPaperWindow(QWidget* parent, Stock& stock, const Ticket* printSettings);

}  // namespace zorva

// The Image Options panel's two dialogs: the job's image shift (modes for
// one- and two-sided jobs, inches or millimetres, front and back shifts) and
// the full colour setup (adjustments, colour cast, trapping, overprint,
// rendering intents, source and destination profiles, tone curve).
#pragma once

#include <QString>

#include "model/full_color_options.h"
#include "model/image_shift_options.h"
#include "model/stock.h"

class QWidget;

namespace zorva {

class Bundle;

// Shows the dialog modally over parent; on OK the options take the user's
// values and the answer is true, on Cancel nothing changes.
bool RunModalImageShiftDialog(const Bundle* bundle, QWidget* parent, ImageShiftOptions& options);
// An exception page's colour menus offer "Use Job Setting" where the job's
// offer "Printer Default".
bool RunModalFullColorSetup(const Bundle* bundle, QWidget* parent, FullColorOptions& options,
                            JobContext context = JobContext::Job);

// The shifts on one line ("Front x, y; back x, y unit"), in the units the
// options name.
QString ImageShiftSummaryText(const Bundle* bundle, const ImageShiftOptions& options);

}  // namespace zorva

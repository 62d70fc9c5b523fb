// The background-forms dialog: merge the job with a form stored on the
// printer or save the job as a new form, how many form pages cycle, and the
// form's shift; the form names typed are kept in the user's histories.
#pragma once

#include "model/background_forms.h"

class QWidget;

namespace zorva {

// How many names each history keeps.
inline constexpr int kFormHistoryLength = 10;
// "UseExistingForm": the job saved as the form "NewFormString".
inline constexpr std::int32_t kCreateNewForm = 3;

// Edits options in place; true when the user accepted (Cancel changes
// nothing, the histories included).
bool RunModalBackgroundFormsDialog(QWidget* parent, BackgroundFormsOptions& options);

}  // namespace zorva

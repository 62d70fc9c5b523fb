// The finishing dialogs behind the Paper/Output panel's finishing menu
// (staple, bind, hole punch, fold, Z-fold half sheet, booklet creation,
// multiple finishing, custom finishing, offset/subset) and the job-type
// set-up. Each edits a copy and hands it back only when the user accepts:
// "Cancel" changes nothing.
#pragma once

#include <cstdint>
#include <string>

#include "core/value.h"
#include "panels/paper_output.h"

class QWidget;

namespace zorva {

// The dialog of a finishing choice; on OK the choice and its values are the
// settings' (other finishing values cleared).
bool RunModalFinishingDialog(QWidget* parent, PaperOutputSettings& settings, std::int32_t option);
// Offset and subsets.
bool RunModalOffsetDialog(QWidget* parent, PaperOutputSettings& settings);
// The set-up of the job type the dictionary names (saved job, secure print,
// delayed print).
bool RunModalJobTypeSetup(QWidget* parent, Dictionary& jobType);

}  // namespace zorva

// The job ticket's export and import as the Advanced panel offers them: the
// summary window (what the ticket says, with "Copy All"), then the file
// dialog, then the export or the import into the print settings.
#pragma once

#include <QString>

#include "core/value.h"

class QWidget;

namespace zorva {

enum class JOTFSummaryMode { Export, Import };

// Shows the settings' summary ("JOTFSummary", window "Summary") modally.
// True when the user goes on ("Export..." or "Import"), false on "Cancel";
// "Copy All" puts every line on the clipboard and leaves the window open.
bool DisplayJOTFImportExportSummary(const Dictionary& settings, JOTFSummaryMode mode,
                                    const QString& fileName, QWidget* parent = nullptr);

// Export: the panels write the ticket, the summary shows it, a file dialog
// asks where, and the job ticket document is written there.
void RunModalJOTFExportDialog(QWidget* parent);

// Import: a file dialog asks for one or more files, the summary shows what
// they hold, and on "Import" they are merged into the ticket and the panels
// read it again.
void RunModalJOTFImportDialog(QWidget* parent);

}  // namespace zorva

// The export to a CSV file: which columns, which rows, and the run behind the dialog's button.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "export/adjustments.h"
#include "export/export_cells.h"
#include "session/ports/database_port.h"

namespace brenvik {

class frmExport;

/// The box at the end; those of exports to databases begin with it.
inline constexpr std::string_view ListExportComplete = "Export Complete!!";

/// The statement of the list as the grid shows it: filtered, sorted, grouped.
std::string ExportStatement();

/// The run: asks before an existing file is written over, then writes the whole file or, when that fails,
/// nothing; that is told in a message box with the path, and leaves the dialog open. The adjustments apply to
/// the columns of a profile only. The dialog is unloaded when the list is out.
void RunCsvExport(frmExport& form);

}  // namespace brenvik

// The export to a CSV file: which columns, which rows, and the run behind the dialog's button.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "export/export_cells.h"
#include "session/ports/database_port.h"

namespace brenvik {

class frmExport;

/// The box at the end; those of exports to databases begin with it.
inline constexpr std::string_view ListExportComplete = "Export Complete!!";

/// The statement of the list as the grid shows it: filtered, sorted, grouped.
std::string ExportStatement();

/// The run: asks before it overwrites an existing file, then writes the whole file. If that fails, no file is
/// written, a message box shows the path, and the dialog stays open. The adjustments apply to the columns of
/// a profile only. The dialog is unloaded when the list is out.
void RunCsvExport(frmExport& form);

}  // namespace brenvik

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

/// The columns of a list without a profile, parted by commas: all of them, or, while the list is grouped, the
/// quantity and the columns of the group.
std::string StandardColumnList();

/// The header of a profile's columns: their names without vertical bars and blanks around them.
std::string HeaderOfColumns(const std::vector<std::string>& columnNames);

/// The statement of the list as the grid shows it: filtered, sorted, grouped.
std::string ExportStatement();

/// A line for each record, every line with its end; cells that move their line's columns are noted. A failure
/// of the record set ends the lines.
std::string LinesOfRecords(Recordset& records, const LineMaker& maker, const AdjustmentRules& rules,
                           std::string_view lineEnd);

/// The run: asks before an existing file is written over, then writes the whole file or, when that fails,
/// nothing; that is told in a message box with the path, and leaves the dialog open. The adjustments apply to
/// the columns of a profile only. The dialog is unloaded when the list is out.
void RunCsvExport(frmExport& form);

}  // namespace brenvik

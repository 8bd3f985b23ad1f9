// The export into a table of an Access database file: reaching the file, the login that protects it, what can
// be mapped to what, and one INSERT for each record.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "export/adjustments.h"
#include "session/ports/export_database_port.h"

namespace brenvik {

class frmExport;

struct DatabaseLogin {
    std::string DbUser, DbPassword;
};

/// The connection string of a file. Without a password, the form for unprotected files.
std::string AccessConnectionString(std::string_view path, std::string_view password);

/// Opens the file. As long as the driver says that the password isn't valid, the user is asked for another,
/// which is kept in `login`. Null if the file can't be opened or the user gives up, after a message box.
std::unique_ptr<ExportConnection> ConnectToAccess(std::string_view path, DatabaseLogin& login);

/// Whether a table is offered: not the system's own, nor those of a switchboard.
bool IsOfferedTable(std::string_view name);

/// The select that gives the fields of a table: the columns of the part record from it.
std::string FieldsStatement(std::string_view table);

/// A caption of the list, the field behind it, and the column of the target table.
struct AccessMapping {
    std::string caption, field, target;
};

/// The statement for the current record. Every value is a quoted text, and nothing in it is escaped; a value
/// that can't be had is left out, and the database will refuse the row.
std::string InsertStatement(std::string_view table, std::span<const AccessMapping> mappings,
                            const Recordset& records, const SizeAdjustment& adjustment, bool fractions);

/// The run into the chosen table of the chosen file. A row that is refused shows its message and is passed
/// over. Unloads the dialog at its end.
void RunAccessExport(frmExport& form);

/// The check of a SQL Server: connects and reads one known field, and says whether that went well.
void CheckSqlServerConnection(std::string_view server, std::string_view database, const DatabaseLogin& login);

}  // namespace brenvik

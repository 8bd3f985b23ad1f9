// Module mDatabase: the working database, its file, and the two connections to it.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "session/ports/database_port.h"

namespace brenvik::mDatabase {

/// The working database, and the blank one that it is a copy of at first, in `_db` of the install folder.
inline constexpr std::string_view WorkingFile = "bv04.mdb", BlankFile = "bv-back04.mdb";

/// The path of the working database: the session's, or, when that is blank, the one of the settings or its
/// default beside the library, which the session then keeps.
std::string WorkingDatabasePath();
/// Takes the path from the settings into the session: blank means `_db\bv04.mdb` in the install folder, or,
/// while another program works there, a database of this program's own.
void TakeWorkingDatabasePath();
/// What the settings keep of the session's path: blank for the default, so that a home that is copied or
/// moved never leads back to the database of the old one.
std::string DatabasePathToKeep();

/// What scan and reader connections, and the grid's data control, are opened with. A path stands in it as it
/// is; one with a semicolon, in quotes.
std::string ConnectionString();
std::string ConnectionString(std::string_view databasePath);

/// Replaces the program's own database, mostly that in the install folder, by the blank copy. The session's
/// connections are closed first, since their file is deleted. Fails with 53 when there is no blank copy.
void RefreshWorkingDatabase();

/// Opens the scan connection unless it is open.
void OpenScanConnection();
/// Runs a statement on the scan connection. Fails with 91 when that was never opened.
void ExecuteSql(std::string_view text);

/// Opens a record set on the reader connection, which is opened with the first of its record sets. Returns
/// whether it holds any record. After a failure nothing is open that wasn't before.
bool OpenRecordset(std::string_view sql, std::unique_ptr<Recordset>& recordset);
/// Closes and releases the record set; the last one closes the reader connection. Does nothing for none.
void CloseRecordset(std::unique_ptr<Recordset>& recordset);

}  // namespace brenvik::mDatabase

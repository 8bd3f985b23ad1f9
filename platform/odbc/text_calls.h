// The driver manager's functions that take or give texts, each in its wide and its narrow form. Texts are
// UTF-8 here; a byte of a driver that is no UTF-8 counts as the character of that number.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "odbc/api.h"

namespace brenvik::odbc {

struct Diagnostic {
    /// Five characters.
    std::string state;
    std::string text;
};

/// The first diagnostic of the last call on a handle, if there is any.
std::optional<Diagnostic> FirstDiagnostic(const Handle& handle);

/// Connects, asking nothing of the user. Fails as the driver does; the failure doesn't show the string.
void Connect(const Handle& connection, std::string_view connectionString);

/// Runs a statement. Fails as the driver does, and for an empty text.
void RunStatement(const Handle& statement, std::string_view sql);

/// Asks for the list of tables of one type.
void ListTables(const Handle& statement, std::string_view type);

struct ColumnText {
    std::string name;
    SQLSMALLINT type = SQL_UNKNOWN_TYPE;
};

/// Name and type of a result's column from 1.
ColumnText DescribeColumnText(const Handle& statement, SQLUSMALLINT column);

/// The current record's value of a column from 1, however long it is; null for null.
std::optional<std::string> ReadLongText(const Handle& statement, SQLUSMALLINT column);
std::optional<std::string> ReadLongBytes(const Handle& statement, SQLUSMALLINT column);

}  // namespace brenvik::odbc

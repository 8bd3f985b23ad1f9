// The databases that a list is exported to: other people's tables, reached through a driver that the
// connection string names. In the shape of ADO, and apart from the part database, whose engine is ours.
//
// Failures come as Failure. Its description is the driver's own text of the first diagnostic, with its
// prefixes in brackets and not one character changed: the login compares it.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "session/ports/database_port.h"

namespace brenvik {

/// Where a connection keeps its cursors, by the numbers of ADO.
enum class CursorLocation { Server = 2, Client = 3 };

/// A result that is walked forward.
class ExportRecordset {
  public:
    virtual ~ExportRecordset() = default;
    virtual bool Eof() const = 0;
    /// Fails with 3021 behind the last record.
    virtual void MoveNext() = 0;
    virtual int FieldCount() const = 0;
    /// From 0, as the driver spells it; fails outside with 3265.
    virtual std::string FieldName(int index) const = 0;
    /// The number of the field's type in ADO: 2 short, 3 long, 4 single, 5 double, 6 currency, 11 boolean,
    /// 17 byte, 20 64-bit, 72 identity, 131 decimal, 133 date, 134 time, 135 date and time, 202 text, 203
    /// long text, 204 bytes, 205 long bytes; texts of a code page are 129 and 200 and, long, 201.
    virtual int FieldType(int index) const = 0;
    /// The current record's value; names compare without regard to case. Fails with 3265 for an unknown
    /// name and with 3021 where there is no record.
    virtual FieldValue Value(std::string_view fieldName) const = 0;
};

class ExportConnection {
  public:
    virtual ~ExportConnection() = default;
    /// Set before opening.
    virtual void SetCursorLocation(CursorLocation location) = 0;
    /// Fails with 3705 when the connection is open already, and as the driver does otherwise. The value of
    /// `Dbq` is a path of the system's own form; the platform puts the real place there.
    virtual void Open(std::string_view connectionString) = 0;
    /// Fails with 3704 when the connection is not open. Dropping an open connection closes it.
    virtual void Close() = 0;
    virtual ConnectionState State() const = 0;
    virtual void Execute(std::string_view sql) = 0;
    /// The record set may be used as long as the connection is open. A table without records gives its
    /// fields all the same.
    virtual std::unique_ptr<ExportRecordset> OpenRecordset(std::string_view sql) = 0;
    /// Names of the schema list's tables of this type ("TABLE"), in the order that the driver gives.
    virtual std::vector<std::string> TableNames(std::string_view type) = 0;
};

class ExportDatabasePort {
  public:
    virtual ~ExportDatabasePort() = default;
    virtual std::unique_ptr<ExportConnection> CreateConnection() = 0;
};

}  // namespace brenvik

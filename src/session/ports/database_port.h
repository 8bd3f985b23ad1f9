// The part database, in the shape of ADO: connections that run statements, record sets that are walked.
// Failures of the engine come as Failure with the engine's own description.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace brenvik {

/// A field's value: null, text, or a double (every numeric column is double precision).
using FieldValue = std::variant<std::monostate, std::string, double>;

/// The numbers of `Connection::State`.
enum class ConnectionState { Closed = 0, Open = 1 };

/// A result that is walked forward, and whose rows can be changed where the statement allows it.
class Recordset {
  public:
    virtual ~Recordset() = default;
    virtual bool Eof() const = 0;
    virtual void MoveNext() = 0;
    virtual int RecordCount() const = 0;
    virtual int FieldCount() const = 0;
    virtual std::string FieldName(int index) const = 0;
    /// The current record's value; names compare without regard to case; fails for an unknown name.
    virtual FieldValue Value(std::string_view fieldName) const = 0;
    virtual FieldValue Value(int index) const = 0;
    /// Any record by its place from 0, the current one left as it is.
    virtual FieldValue ValueAt(int record, int index) const = 0;
    /// False for a result whose rows are no rows of one table, such as a grouped one.
    virtual bool Updatable() const = 0;
    /// Writes one field of a record through to the table; fails where the record set is not updatable.
    virtual void Update(int record, int index, const FieldValue& value) = 0;
    virtual void Close() = 0;
};

class Connection {
  public:
    virtual ~Connection() = default;
    /// Fails when the connection is open already or the string names no database that can be opened.
    virtual void Open(std::string_view connectionString) = 0;
    virtual void Close() = 0;
    virtual ConnectionState State() const = 0;
    virtual void Execute(std::string_view sql) = 0;
    virtual std::unique_ptr<Recordset> OpenRecordset(std::string_view sql) = 0;
    virtual void BeginTrans() = 0;
    virtual void CommitTrans() = 0;
    virtual void RollbackTrans() = 0;
};

class DatabasePort {
  public:
    virtual ~DatabasePort() = default;
    virtual std::unique_ptr<Connection> CreateConnection() = 0;
    /// Makes an empty part database file at a path of the system's own form; an existing file is replaced.
    virtual void CreateBlankPartDatabase(std::string_view path) = 0;
};

}  // namespace brenvik

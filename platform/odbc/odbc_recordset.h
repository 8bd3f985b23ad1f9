// A result walked forward, record by record, as the driver gives it.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "odbc/api.h"
#include "odbc/field_types.h"
#include "session/ports/export_database_port.h"

namespace brenvik::odbc {

/// Holds one record at a time. Of a record only the fields up to the last one asked for are read, since a
/// driver hands them over in their order.
///
/// Once its connection is closed, the fields' names and types are still known, and everything else fails with
/// 3704. After a failure of the driver in `MoveNext` the record set is at its end.
class OdbcRecordset : public ExportRecordset {
  public:
    /// Takes a statement that was run. A statement without a result gives no fields and no records.
    explicit OdbcRecordset(std::shared_ptr<Handle> statement);

    bool Eof() const override;
    void MoveNext() override;
    int FieldCount() const override { return static_cast<int>(mFields.size()); }
    std::string FieldName(int index) const override;
    int FieldType(int index) const override;
    FieldValue Value(std::string_view fieldName) const override;

    /// The current record's value of a field from 0; fails outside with 3265.
    FieldValue ValueAt(int index) const;

  private:
    struct Field {
        std::string name;
        ColumnType type;
    };

    void Describe();
    Field DescribeColumn(SQLUSMALLINT column) const;
    void Fetch();
    void RequireOpen() const;
    const Field& RequireField(int index) const;

    std::shared_ptr<Handle> mStatement;
    std::vector<Field> mFields;
    mutable std::vector<FieldValue> mRecord;
    bool mAtEnd = false;
};

}  // namespace brenvik::odbc

// Columns described, records fetched, values read.
#include "odbc/odbc_recordset.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "base/letter_case.h"
#include "odbc/column_value.h"
#include "odbc/failures.h"
#include "odbc/text_calls.h"

namespace brenvik::odbc {

OdbcRecordset::OdbcRecordset(std::shared_ptr<Handle> statement) : mStatement(std::move(statement)) {
    Describe();
    if (mFields.empty())
        mAtEnd = true;
    else
        Fetch();
}

void OdbcRecordset::Describe() {
    SQLSMALLINT columns = 0;
    Require(SQLNumResultCols(mStatement->Get(), &columns), *mStatement, "fields of the result");
    for (SQLSMALLINT column = 1; column <= columns; ++column)
        mFields.push_back(DescribeColumn(static_cast<SQLUSMALLINT>(column)));
}

OdbcRecordset::Field OdbcRecordset::DescribeColumn(SQLUSMALLINT column) const {
    const ColumnText described = DescribeColumnText(*mStatement, column);
    Field field{described.name, {described.type}};
    const auto isSet = [&](SQLUSMALLINT attribute) {
        SQLLEN value = SQL_FALSE;
        return SQL_SUCCEEDED(
                   SQLColAttributeW(mStatement->Get(), column, attribute, nullptr, 0, nullptr, &value)) &&
               value == SQL_TRUE;
    };
    // Texts count as unsigned too, and a driver may not answer for them.
    if (ValueFormOf(field.type.type) == ValueForm::Number) {
        field.type.isUnsigned = isSet(SQL_DESC_UNSIGNED);
        field.type.isMoney = isSet(SQL_DESC_FIXED_PREC_SCALE);
    }
    return field;
}

// The end is noted before the driver is asked: whoever skips its failures must not walk for ever.
void OdbcRecordset::Fetch() {
    mRecord.clear();
    mAtEnd = true;
    const SQLRETURN result = SQLFetch(mStatement->Get());
    Require(result, *mStatement, "next record");
    mAtEnd = result == SQL_NO_DATA;
}

void OdbcRecordset::RequireOpen() const {
    if (mStatement->Get() == nullptr)
        throw ExportFailure(failure_number::ObjectClosed, "The connection of the record set is closed");
}

const OdbcRecordset::Field& OdbcRecordset::RequireField(int index) const {
    if (index < 0 || index >= FieldCount())
        throw ExportFailure(failure_number::NoSuchField, "There is no field number " + std::to_string(index));
    return mFields[static_cast<std::size_t>(index)];
}

bool OdbcRecordset::Eof() const {
    RequireOpen();
    return mAtEnd;
}

void OdbcRecordset::MoveNext() {
    if (Eof()) throw ExportFailure(failure_number::NoCurrentRecord, "There is no record to move on from");
    Fetch();
}

std::string OdbcRecordset::FieldName(int index) const { return RequireField(index).name; }

int OdbcRecordset::FieldType(int index) const { return AdoTypeNumber(RequireField(index).type); }

FieldValue OdbcRecordset::Value(std::string_view fieldName) const {
    const auto found = std::find_if(mFields.begin(), mFields.end(), [&](const Field& field) {
        return EqualsIgnoreCase(field.name, fieldName);
    });
    if (found == mFields.end())
        throw ExportFailure(failure_number::NoSuchField,
                            "There is no field named \"" + std::string(fieldName) + "\"");
    return ValueAt(static_cast<int>(found - mFields.begin()));
}

FieldValue OdbcRecordset::ValueAt(int index) const {
    RequireField(index);
    if (Eof()) throw ExportFailure(failure_number::NoCurrentRecord, "There is no current record");
    const auto place = static_cast<std::size_t>(index);
    while (mRecord.size() <= place) {
        const auto column = static_cast<SQLUSMALLINT>(mRecord.size() + 1);
        mRecord.push_back(ReadColumn(*mStatement, column, ValueFormOf(mFields[mRecord.size()].type.type)));
    }
    return mRecord[place];
}

}  // namespace brenvik::odbc

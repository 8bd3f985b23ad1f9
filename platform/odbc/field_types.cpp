// The table of types.
#include "odbc/field_types.h"

#include <algorithm>
#include <array>

namespace brenvik::odbc {
namespace {

struct TypeRow {
    SQLSMALLINT type;
    int number;
    /// The number without a sign, where there is one of its own.
    int unsignedNumber;
    ValueForm form;
};

// Dates have two numbers: 9 to 11 are those of ODBC 2, which old drivers still
// return.
constexpr std::array<TypeRow, 27> TypeRows = {{
    {SQL_CHAR, 129, 129, ValueForm::Text},
    {SQL_VARCHAR, 200, 200, ValueForm::Text},
    {SQL_LONGVARCHAR, 201, 201, ValueForm::Text},
    {SQL_WCHAR, 130, 130, ValueForm::Text},
    {SQL_WVARCHAR, 202, 202, ValueForm::Text},
    {SQL_WLONGVARCHAR, 203, 203, ValueForm::Text},
    {SQL_DECIMAL, 131, 131, ValueForm::Number},
    {SQL_NUMERIC, 131, 131, ValueForm::Number},
    {SQL_BIT, 11, 11, ValueForm::Switch},
    {SQL_TINYINT, 16, 17, ValueForm::Number},
    {SQL_SMALLINT, 2, 18, ValueForm::Number},
    {SQL_INTEGER, 3, 19, ValueForm::Number},
    {SQL_BIGINT, 20, 21, ValueForm::Number},
    {SQL_REAL, 4, 4, ValueForm::Number},
    {SQL_FLOAT, 5, 5, ValueForm::Number},
    {SQL_DOUBLE, 5, 5, ValueForm::Number},
    {SQL_BINARY, 128, 128, ValueForm::Bytes},
    {SQL_VARBINARY, 204, 204, ValueForm::Bytes},
    {SQL_LONGVARBINARY, 205, 205, ValueForm::Bytes},
    {SQL_TYPE_DATE, 133, 133, ValueForm::Text},
    {SQL_TYPE_TIME, 134, 134, ValueForm::Text},
    {SQL_TYPE_TIMESTAMP, 135, 135, ValueForm::Text},
    {SQL_DATE, 133, 133, ValueForm::Text},
    {SQL_TIME, 134, 134, ValueForm::Text},
    {SQL_TIMESTAMP, 135, 135, ValueForm::Text},
    {SQL_GUID, 72, 72, ValueForm::Text},
    {SQL_UNKNOWN_TYPE, 202, 202, ValueForm::Text},
}};

constexpr int AdoMoney = 6;

const TypeRow& RowOf(SQLSMALLINT type) {
    const auto* found = std::find_if(TypeRows.begin(), TypeRows.end(),
                                     [type](const TypeRow& row) { return row.type == type; });
    return found == TypeRows.end() ? TypeRows.back() : *found;
}

}  // namespace

int AdoTypeNumber(const ColumnType& column) {
    const bool isDecimal = column.type == SQL_DECIMAL || column.type == SQL_NUMERIC;
    if (isDecimal && column.isMoney) return AdoMoney;
    const TypeRow& row = RowOf(column.type);
    return column.isUnsigned ? row.unsignedNumber : row.number;
}

ValueForm ValueFormOf(SQLSMALLINT type) { return RowOf(type).form; }

}  // namespace brenvik::odbc

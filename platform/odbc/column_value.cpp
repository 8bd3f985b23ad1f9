// Values asked for in the form that fits their column.
#include "odbc/column_value.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/hex.h"
#include "odbc/text_calls.h"

namespace brenvik::odbc {
namespace {

FieldValue ReadText(const Handle& statement, SQLUSMALLINT column) {
    std::optional<std::string> text = ReadLongText(statement, column);
    if (!text) return std::monostate{};
    return std::move(*text);
}

FieldValue ReadBytes(const Handle& statement, SQLUSMALLINT column) {
    const std::optional<std::string> bytes = ReadLongBytes(statement, column);
    if (!bytes) return std::monostate{};
    return HexOf(*bytes);
}

FieldValue ReadNumber(const Handle& statement, SQLUSMALLINT column) {
    double number = 0;
    SQLLEN length = 0;
    const SQLRETURN result =
        SQLGetData(statement.Get(), column, SQL_C_DOUBLE, &number, sizeof number, &length);
    if (!SQL_SUCCEEDED(result)) return ReadText(statement, column);
    if (length == SQL_NULL_DATA) return std::monostate{};
    return number;
}

FieldValue ReadSwitch(const Handle& statement, SQLUSMALLINT column) {
    unsigned char state = 0;
    SQLLEN length = 0;
    Require(SQLGetData(statement.Get(), column, SQL_C_BIT, &state, sizeof state, &length), statement,
            "field " + std::to_string(column) + " of the record");
    if (length == SQL_NULL_DATA) return std::monostate{};
    return state == 0 ? 0.0 : -1.0;
}

}  // namespace

FieldValue ReadColumn(const Handle& statement, SQLUSMALLINT column, ValueForm form) {
    switch (form) {
        case ValueForm::Text:
            return ReadText(statement, column);
        case ValueForm::Number:
            return ReadNumber(statement, column);
        case ValueForm::Switch:
            return ReadSwitch(statement, column);
        case ValueForm::Bytes:
            return ReadBytes(statement, column);
    }
    return ReadText(statement, column);
}

}  // namespace brenvik::odbc

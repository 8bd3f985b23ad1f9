// A driver for the driver manager with no database behind it: it says what its script says. It tests what no
// driver of the package archive does: the login of a protected file, the types of Access, failures at a
// chosen moment.
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "test_driver_script.h"

using test_driver::Column;
using test_driver::Diagnostic;

namespace {

struct Object {
    std::vector<Diagnostic> diagnostics;
    test_driver::Result result;
    std::ptrdiff_t record = -1;
    // How much of the value that is being read was handed over already.
    SQLUSMALLINT column = 0;
    std::size_t offset = 0;
};

Object& At(SQLHANDLE handle) { return *static_cast<Object*>(handle); }

std::u16string_view View(const SQLWCHAR* text, SQLLEN length) {
    const auto* units = reinterpret_cast<const char16_t*>(text);
    return length == SQL_NTS ? std::u16string_view(units)
                             : std::u16string_view(units, static_cast<std::size_t>(length));
}

template <typename Length>
void PutText(const std::u16string& text, SQLWCHAR* target, SQLSMALLINT room, Length* length) {
    if (length != nullptr) *length = static_cast<Length>(text.size());
    if (target == nullptr || room <= 0) return;
    const std::size_t count = std::min(text.size(), static_cast<std::size_t>(room) - 1);
    std::copy_n(text.begin(), count, target);
    target[count] = 0;
}

SQLRETURN Refuse(Object& object, std::vector<Diagnostic> diagnostics) {
    object.diagnostics = std::move(diagnostics);
    return SQL_ERROR;
}

const Column& ColumnOf(Object& statement, SQLUSMALLINT column) {
    return statement.result.columns.at(static_cast<std::size_t>(column) - 1);
}

template <typename Unit>
SQLRETURN PutPiece(Object& statement, const std::u16string& value, SQLPOINTER target, SQLLEN room,
                   SQLLEN* remaining, std::size_t terminators) {
    if (statement.offset > 0 && statement.offset >= value.size()) return SQL_NO_DATA;
    const std::size_t left = value.size() - statement.offset;
    const std::size_t fits = static_cast<std::size_t>(room) / sizeof(Unit) - terminators;
    const std::size_t count = std::min(left, fits);
    auto* units = static_cast<Unit*>(target);
    for (std::size_t i = 0; i < count; ++i) units[i] = static_cast<Unit>(value[statement.offset + i]);
    if (terminators > 0) units[count] = 0;
    statement.offset += count;
    *remaining = static_cast<SQLLEN>(left * sizeof(Unit));
    return left > fits ? SQL_SUCCESS_WITH_INFO : SQL_SUCCESS;
}

}  // namespace

extern "C" {

SQLRETURN SQL_API SQLAllocHandle(SQLSMALLINT, SQLHANDLE, SQLHANDLE* handle) {
    *handle = new Object;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLFreeHandle(SQLSMALLINT, SQLHANDLE handle) {
    delete static_cast<Object*>(handle);
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLFreeStmt(SQLHSTMT, SQLUSMALLINT) { return SQL_SUCCESS; }
SQLRETURN SQL_API SQLSetEnvAttr(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER) { return SQL_SUCCESS; }

// As the real one: it can't watch the time.
SQLRETURN SQL_API SQLSetConnectAttrW(SQLHDBC connection, SQLINTEGER, SQLPOINTER, SQLINTEGER) {
    return Refuse(At(connection),
                  {{u"HYC00", u"[Microsoft][ODBC Microsoft Access Driver] Optional feature."}});
}

SQLRETURN SQL_API SQLSetStmtAttrW(SQLHSTMT statement, SQLINTEGER, SQLPOINTER, SQLINTEGER) {
    return Refuse(At(statement),
                  {{u"HYC00", u"[Microsoft][ODBC Microsoft Access Driver] Optional feature."}});
}

SQLRETURN SQL_API SQLGetInfoW(SQLHDBC, SQLUSMALLINT, SQLPOINTER, SQLSMALLINT, SQLSMALLINT*) {
    return SQL_ERROR;
}

SQLRETURN SQL_API SQLDriverConnectW(SQLHDBC connection, SQLHWND, SQLWCHAR* text, SQLSMALLINT length,
                                    SQLWCHAR*, SQLSMALLINT, SQLSMALLINT*, SQLUSMALLINT) {
    std::vector<Diagnostic> refusal = test_driver::RefusalOf(View(text, length));
    return refusal.empty() ? SQL_SUCCESS : Refuse(At(connection), std::move(refusal));
}

SQLRETURN SQL_API SQLDisconnect(SQLHDBC) { return SQL_SUCCESS; }
SQLRETURN SQL_API SQLEndTran(SQLSMALLINT, SQLHANDLE, SQLSMALLINT) { return SQL_SUCCESS; }

SQLRETURN SQL_API SQLExecDirectW(SQLHSTMT statement, SQLWCHAR* text, SQLINTEGER length) {
    At(statement).diagnostics.clear();
    std::optional<test_driver::Result> result = test_driver::ResultOf(View(text, length));
    if (!result) return Refuse(At(statement), test_driver::StatementRefusal(View(text, length)));
    const bool nothingToDo = result->columns.empty();
    At(statement).result = std::move(*result);
    return nothingToDo ? SQL_NO_DATA : SQL_SUCCESS;
}

SQLRETURN SQL_API SQLTablesW(SQLHSTMT statement, SQLWCHAR*, SQLSMALLINT, SQLWCHAR*, SQLSMALLINT, SQLWCHAR*,
                             SQLSMALLINT, SQLWCHAR*, SQLSMALLINT) {
    At(statement).result = test_driver::Tables();
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLNumResultCols(SQLHSTMT statement, SQLSMALLINT* count) {
    *count = static_cast<SQLSMALLINT>(At(statement).result.columns.size());
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLDescribeColW(SQLHSTMT statement, SQLUSMALLINT column, SQLWCHAR* name, SQLSMALLINT room,
                                  SQLSMALLINT* length, SQLSMALLINT* type, SQLULEN* size, SQLSMALLINT* digits,
                                  SQLSMALLINT* nullable) {
    const Column& described = ColumnOf(At(statement), column);
    PutText(described.name, name, room, length);
    *type = described.type;
    *size = 255;
    *digits = 0;
    *nullable = SQL_NULLABLE;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLColAttributeW(SQLHSTMT statement, SQLUSMALLINT column, SQLUSMALLINT attribute,
                                   SQLPOINTER, SQLSMALLINT, SQLSMALLINT*, SQLLEN* value) {
    const Column& described = ColumnOf(At(statement), column);
    *value = (attribute == SQL_DESC_UNSIGNED && described.isUnsigned) ||
                     (attribute == SQL_DESC_FIXED_PREC_SCALE && described.isMoney)
                 ? SQL_TRUE
                 : SQL_FALSE;
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLFetch(SQLHSTMT handle) {
    Object& statement = At(handle);
    ++statement.record;
    statement.column = 0;
    const auto record = static_cast<std::size_t>(statement.record);
    if (statement.result.failsAt == record) return Refuse(statement, {test_driver::Gone()});
    return record < statement.result.columns.front().values.size() ? SQL_SUCCESS : SQL_NO_DATA;
}

SQLRETURN SQL_API SQLGetData(SQLHSTMT handle, SQLUSMALLINT column, SQLSMALLINT type, SQLPOINTER target,
                             SQLLEN room, SQLLEN* length) {
    Object& statement = At(handle);
    const auto& value = ColumnOf(statement, column).values.at(static_cast<std::size_t>(statement.record));
    if (statement.column != column) statement.offset = 0;
    statement.column = column;
    if (!value) {
        *length = SQL_NULL_DATA;
        return SQL_SUCCESS;
    }
    const std::string narrow(value->begin(), value->end());
    if (type == SQL_C_WCHAR) return PutPiece<SQLWCHAR>(statement, *value, target, room, length, 1);
    if (type == SQL_C_BINARY) return PutPiece<unsigned char>(statement, *value, target, room, length, 0);
    if (type == SQL_C_BIT) {
        *static_cast<unsigned char*>(target) = narrow == "1" ? 1 : 0;
        return SQL_SUCCESS;
    }
    char* end = nullptr;
    const double number = std::strtod(narrow.c_str(), &end);
    if (end == narrow.c_str()) return Refuse(statement, {{u"22018", u"[Test][Driver] That is no number."}});
    std::memcpy(target, &number, sizeof number);
    return SQL_SUCCESS;
}

SQLRETURN SQL_API SQLGetDiagRecW(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT record, SQLWCHAR* state,
                                 SQLINTEGER* native, SQLWCHAR* text, SQLSMALLINT room, SQLSMALLINT* length) {
    const std::vector<Diagnostic>& diagnostics = At(handle).diagnostics;
    const auto place = static_cast<std::size_t>(record) - 1;
    if (place >= diagnostics.size()) return SQL_NO_DATA;
    PutText(diagnostics[place].state, state, 6, static_cast<SQLSMALLINT*>(nullptr));
    PutText(diagnostics[place].text, text, room, length);
    if (native != nullptr) *native = -1905;
    return SQL_SUCCESS;
}

// The manager takes diagnostics from a driver only if it can ask for their fields, too.
SQLRETURN SQL_API SQLGetDiagFieldW(SQLSMALLINT, SQLHANDLE handle, SQLSMALLINT, SQLSMALLINT field,
                                   SQLPOINTER value, SQLSMALLINT, SQLSMALLINT* length) {
    const std::vector<Diagnostic>& diagnostics = At(handle).diagnostics;
    if (field == SQL_DIAG_NUMBER) {
        *static_cast<SQLINTEGER*>(value) = static_cast<SQLINTEGER>(diagnostics.size());
        return SQL_SUCCESS;
    }
    if (length != nullptr) *length = 0;
    return SQL_NO_DATA;
}

}  // extern "C"

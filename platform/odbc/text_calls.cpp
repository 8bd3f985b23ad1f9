// Wide and narrow calls side by side.
#include "odbc/text_calls.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <span>
#include <vector>

#include "odbc/failures.h"
#include "odbc/wide_text.h"

namespace brenvik::odbc {
namespace {

bool IsWide(const Handle& handle) { return handle.Calls() == TextCalls::Wide; }

std::string Utf8Of(std::span<const SQLWCHAR> text) { return FromWide(text); }

std::string Utf8Of(std::span<const SQLCHAR> text) {
    return FromWide(ToWide(std::string(text.begin(), text.end())));
}

// A text as an argument in both forms. There are drivers that pass over the length and look for a zero.
class TextArgument {
  public:
    explicit TextArgument(std::string_view text) : mWide(ToWide(text)), mNarrow(text.begin(), text.end()) {
        mWide.push_back(0);
        mNarrow.push_back(0);
    }
    SQLWCHAR* Wide() { return mWide.data(); }
    SQLCHAR* Narrow() { return mNarrow.data(); }
    template <typename Length>
    Length WideLength() const {
        return static_cast<Length>(mWide.size() - 1);
    }
    template <typename Length>
    Length NarrowLength() const {
        return static_cast<Length>(mNarrow.size() - 1);
    }

  private:
    std::vector<SQLWCHAR> mWide;
    std::vector<SQLCHAR> mNarrow;
};

// The text up to its terminating zero, whatever length the driver reports.
template <typename Unit>
std::string UpToZero(std::span<const Unit> text) {
    const auto end = std::find(text.begin(), text.end(), Unit{0});
    return Utf8Of(text.first(static_cast<std::size_t>(end - text.begin())));
}

// Calls `get(buffer, room, length)` for a text of unknown length: once, and again with the room that it asked
// for. Nothing where the call fails.
template <typename Unit, typename Get>
std::optional<std::string> TextOf(Get&& get) {
    std::vector<Unit> buffer(512);
    SQLSMALLINT length = 0;
    for (int pass = 0; pass < 2; ++pass) {
        if (!SQL_SUCCEEDED(get(buffer.data(), static_cast<SQLSMALLINT>(buffer.size()), &length)))
            return std::nullopt;
        if (pass > 0 || static_cast<std::size_t>(std::max<SQLSMALLINT>(length, 0)) < buffer.size()) break;
        buffer.assign(static_cast<std::size_t>(length) + 1, Unit{0});
    }
    return UpToZero(std::span<const Unit>(buffer));
}

template <typename Length>
void RequireLength(std::string_view text, const char* what) {
    const std::size_t length = text.size();
    if (length > static_cast<std::size_t>(std::numeric_limits<Length>::max()))
        throw ExportFailure(failure_number::DatabaseUnavailable,
                            std::string(what) + " has " + std::to_string(length) + " characters; at most " +
                                std::to_string(std::numeric_limits<Length>::max()) + " were expected");
}

// All units of a value, or nothing for null. A text's piece ends with a zero that doesn't belong to it.
template <typename Unit>
std::optional<std::vector<Unit>> ReadUnits(const Handle& statement, SQLUSMALLINT column, SQLSMALLINT cType,
                                           std::size_t terminators) {
    std::vector<Unit> value;
    std::array<Unit, 4096> piece{};
    constexpr SQLLEN room = piece.size() * sizeof(Unit);
    const SQLLEN usable = room - static_cast<SQLLEN>(terminators * sizeof(Unit));
    for (;;) {
        SQLLEN remaining = 0;
        const SQLRETURN result = SQLGetData(statement.Get(), column, cType, piece.data(), room, &remaining);
        if (result == SQL_NO_DATA) return value;
        Require(result, statement, "field " + std::to_string(column) + " of the record");
        if (remaining == SQL_NULL_DATA) return std::nullopt;
        const bool cut = remaining == SQL_NO_TOTAL || remaining > usable;
        const auto bytes = static_cast<std::size_t>(cut ? usable : remaining);
        value.insert(value.end(), piece.begin(),
                     piece.begin() + static_cast<std::ptrdiff_t>(bytes / sizeof(Unit)));
        if (!cut || result == SQL_SUCCESS) return value;
    }
}

}  // namespace

std::optional<Diagnostic> FirstDiagnostic(const Handle& handle) {
    SQLINTEGER native = 0;
    std::array<SQLWCHAR, 6> wideState{};
    std::array<SQLCHAR, 6> narrowState{};
    const std::optional<std::string> text =
        IsWide(handle) ? TextOf<SQLWCHAR>([&](SQLWCHAR* buffer, SQLSMALLINT room, SQLSMALLINT* length) {
            return SQLGetDiagRecW(handle.Kind(), handle.Get(), 1, wideState.data(), &native, buffer, room,
                                  length);
        })
                       : TextOf<SQLCHAR>([&](SQLCHAR* buffer, SQLSMALLINT room, SQLSMALLINT* length) {
                             return SQLGetDiagRec(handle.Kind(), handle.Get(), 1, narrowState.data(), &native,
                                                  buffer, room, length);
                         });
    if (!text) return std::nullopt;
    return Diagnostic{IsWide(handle) ? Utf8Of({wideState.data(), 5}) : Utf8Of({narrowState.data(), 5}),
                      *text};
}

void Connect(const Handle& connection, std::string_view connectionString) {
    RequireLength<SQLSMALLINT>(connectionString, "The connection string");
    TextArgument text(connectionString);
    const SQLRETURN result =
        IsWide(connection)
            ? SQLDriverConnectW(connection.Get(), nullptr, text.Wide(), text.WideLength<SQLSMALLINT>(),
                                nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT)
            : SQLDriverConnect(connection.Get(), nullptr, text.Narrow(), text.NarrowLength<SQLSMALLINT>(),
                               nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(result)) throw DiagnosticOf(connection);
}

void RunStatement(const Handle& statement, std::string_view sql) {
    if (sql.empty())
        throw ExportFailure(failure_number::StatementRefused,
                            "The statement is empty; a statement of SQL was expected");
    RequireLength<SQLINTEGER>(sql, "The statement");
    TextArgument text(sql);
    Require(IsWide(statement)
                ? SQLExecDirectW(statement.Get(), text.Wide(), text.WideLength<SQLINTEGER>())
                : SQLExecDirect(statement.Get(), text.Narrow(), text.NarrowLength<SQLINTEGER>()),
            statement, sql);
}

void ListTables(const Handle& statement, std::string_view type) {
    RequireLength<SQLSMALLINT>(type, "The type of table");
    TextArgument text(type);
    Require(IsWide(statement) ? SQLTablesW(statement.Get(), nullptr, 0, nullptr, 0, nullptr, 0, text.Wide(),
                                           text.WideLength<SQLSMALLINT>())
                              : SQLTables(statement.Get(), nullptr, 0, nullptr, 0, nullptr, 0, text.Narrow(),
                                          text.NarrowLength<SQLSMALLINT>()),
            statement, "list of tables");
}

ColumnText DescribeColumnText(const Handle& statement, SQLUSMALLINT column) {
    SQLSMALLINT type = SQL_UNKNOWN_TYPE;
    SQLULEN size = 0;
    SQLSMALLINT digits = 0;
    SQLSMALLINT nullable = 0;
    const std::optional<std::string> name =
        IsWide(statement) ? TextOf<SQLWCHAR>([&](SQLWCHAR* buffer, SQLSMALLINT room, SQLSMALLINT* length) {
            return SQLDescribeColW(statement.Get(), column, buffer, room, length, &type, &size, &digits,
                                   &nullable);
        })
                          : TextOf<SQLCHAR>([&](SQLCHAR* buffer, SQLSMALLINT room, SQLSMALLINT* length) {
                                return SQLDescribeCol(statement.Get(), column, buffer, room, length, &type,
                                                      &size, &digits, &nullable);
                            });
    if (!name) throw DiagnosticOf(statement, "field " + std::to_string(column) + " of the result");
    return {*name, type};
}

std::optional<std::string> ReadLongText(const Handle& statement, SQLUSMALLINT column) {
    if (IsWide(statement)) {
        const auto wide = ReadUnits<SQLWCHAR>(statement, column, SQL_C_WCHAR, 1);
        return wide ? std::optional(Utf8Of(std::span(*wide))) : std::nullopt;
    }
    const auto narrow = ReadUnits<SQLCHAR>(statement, column, SQL_C_CHAR, 1);
    return narrow ? std::optional(Utf8Of(std::span(*narrow))) : std::nullopt;
}

std::optional<std::string> ReadLongBytes(const Handle& statement, SQLUSMALLINT column) {
    const auto bytes = ReadUnits<char>(statement, column, SQL_C_BINARY, 0);
    return bytes ? std::optional(std::string(bytes->begin(), bytes->end())) : std::nullopt;
}

}  // namespace brenvik::odbc

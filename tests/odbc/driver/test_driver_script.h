// What the test driver answers: results by the text of the statement, in the words of the driver that shops
// use for their Access files.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace test_driver {

/// A diagnostic record.
struct Diagnostic {
    std::u16string state;
    std::u16string text;
};

/// A column with the values of its records; nothing is null.
struct Column {
    std::u16string name;
    short type;
    bool isMoney = false;
    bool isUnsigned = false;
    std::vector<std::optional<std::u16string>> values;
};

/// A result, and the record from 0 whose fetching fails, if any does.
struct Result {
    std::vector<Column> columns;
    std::optional<std::size_t> failsAt;
};

/// Why a connection string is refused, or nothing: the password must be "geheim" for a file whose name
/// has "locked" in it.
std::vector<Diagnostic> RefusalOf(std::u16string_view connectionString);

/// What a statement gives; none for one that is refused.
std::optional<Result> ResultOf(std::u16string_view sql);

/// Why a statement is refused; empty for a driver that gives no reason.
std::vector<Diagnostic> StatementRefusal(std::u16string_view sql);

/// The list of tables, whatever type was asked for.
Result Tables();

/// The failure of a database that went away.
Diagnostic Gone();

}  // namespace test_driver

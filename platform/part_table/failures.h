// Failures of the part table, with the numbers that database programs of the trade know and show.
#pragma once

#include <string>
#include <utility>

#include "base/failure.h"

namespace brenvik::failure_number {

/// The engine refused a statement: its text, or what it would have stored.
inline constexpr long statementRefused = -2147217900;
/// The file is missing, locked, read-only, full or no part database.
inline constexpr long databaseUnavailable = -2147467259;
/// A record was changed or removed behind a record set's back.
inline constexpr long recordGone = -2147217864;
/// Commit or rollback with no transaction begun.
inline constexpr long noTransaction = -2147168242;
inline constexpr long noCurrentRecord = 3021;
inline constexpr long notUpdatable = 3251;
inline constexpr long noSuchField = 3265;
inline constexpr long objectClosed = 3704;
inline constexpr long objectOpen = 3705;

}  // namespace brenvik::failure_number

namespace brenvik::part_table {

/// A failure whose source is the part table. `detail` is the statement, where one is concerned.
inline Failure DatabaseFailure(long number, std::string description, std::string detail = {}) {
    return Failure(number, "Brenvik part table", std::move(description), std::move(detail));
}

}  // namespace brenvik::part_table

// Failures of export databases.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "base/failure.h"
#include "session/ports/database_failures.h"

namespace brenvik::odbc {

/// A failure whose source is an export database.
inline Failure ExportFailure(long number, std::string description, std::string detail = {}) {
    return Failure(number, "Brenvik export database", std::move(description), std::move(detail));
}

/// The number for a diagnostic's SQLSTATE of five characters.
inline long NumberOfState(std::string_view state) {
    if (state == "28000") return failure_number::LoginRefused;
    if (state == "42S02") return failure_number::TableMissing;
    if (state == "22018") return failure_number::WrongType;
    if (state.starts_with("23")) return failure_number::ConstraintBroken;
    if (state.starts_with("42")) return failure_number::StatementRefused;
    return failure_number::DatabaseUnavailable;
}

}  // namespace brenvik::odbc

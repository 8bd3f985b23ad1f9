// Failures of export databases, with the numbers that database programs of the trade know and show.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "base/failure.h"

namespace brenvik::failure_number {

inline constexpr long exportUnavailable = -2147467259;
inline constexpr long exportStatementRefused = -2147217900;
inline constexpr long exportLoginRefused = -2147217843;
inline constexpr long exportTableMissing = -2147217865;
inline constexpr long exportConstraintBroken = -2147217873;
inline constexpr long exportWrongType = -2147217913;
inline constexpr long exportNoCurrentRecord = 3021;
inline constexpr long exportNoSuchField = 3265;
inline constexpr long exportObjectClosed = 3704;
inline constexpr long exportObjectOpen = 3705;

}  // namespace brenvik::failure_number

namespace brenvik::odbc {

/// A failure whose source is an export database.
inline Failure ExportFailure(long number, std::string description, std::string detail = {}) {
    return Failure(number, "Brenvik export database", std::move(description), std::move(detail));
}

/// The number for a diagnostic's SQLSTATE of five characters.
inline long NumberOfState(std::string_view state) {
    if (state == "28000") return failure_number::exportLoginRefused;
    if (state == "42S02") return failure_number::exportTableMissing;
    if (state == "22018") return failure_number::exportWrongType;
    if (state.starts_with("23")) return failure_number::exportConstraintBroken;
    if (state.starts_with("42")) return failure_number::exportStatementRefused;
    return failure_number::exportUnavailable;
}

}  // namespace brenvik::odbc

// The numbers that failures of databases carry: those that database programs of the trade know and show.
// Part table and export databases have them in common.
#pragma once

namespace brenvik::failure_number {

/// The engine refused a statement: its text, or what it would have stored.
inline constexpr long StatementRefused = -2147217900;
/// The database is missing, locked, read-only, full, damaged or none; all that has no number of its own.
inline constexpr long DatabaseUnavailable = -2147467259;
/// A user's name or password was refused.
inline constexpr long LoginRefused = -2147217843;
inline constexpr long TableMissing = -2147217865;
inline constexpr long ConstraintBroken = -2147217873;
/// A value doesn't fit the type of its column.
inline constexpr long WrongType = -2147217913;
/// A record was changed or removed behind a record set's back.
inline constexpr long RecordGone = -2147217864;
/// Commit or rollback with no transaction begun.
inline constexpr long NoTransaction = -2147168242;
inline constexpr long NoCurrentRecord = 3021;
inline constexpr long NotUpdatable = 3251;
inline constexpr long NoSuchField = 3265;
inline constexpr long ObjectClosed = 3704;
inline constexpr long ObjectOpen = 3705;

}  // namespace brenvik::failure_number

// The system's statements are written for another engine and kept to the letter; here they are turned
// into the words of the engine at hand, outside quoted texts only.
#pragma once

#include <string>
#include <string_view>

namespace brenvik::part_table {

/// A statement as the engine takes it.
struct StatementText {
    std::string text;
    /// Each result row is one row of the part table, field by field, and `text` has that row's number as
    /// one more column at the end.
    bool selectsTableRows = false;
};

/// Translates a statement:
/// - isnull(x) becomes ((x) is null), since the word is an operator behind its operand here;
/// - two minus signs in a row are two signs, never the beginning of a remark;
/// - a number may have d before its exponent, as everywhere in the system.
/// With `withRowNumbers` a plain select of the part table's columns gets the row number as last column.
/// Fails for a text in double quotes (which engines read in different ways), a remark, a zero character,
/// and for a statement that begins with none of select, insert, update,
/// delete, create, drop and alter.
StatementText TranslateStatement(std::string_view sql, bool withRowNumbers);

}  // namespace brenvik::part_table

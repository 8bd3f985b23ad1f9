// The part table's creating statement, made from the list of columns.
#include "part_table/table_layout.h"

namespace brenvik::part_table {
namespace {

std::string ColumnDefinition(const TableColumn& column) {
    std::string name(column.name);
    switch (column.kind) {
        case ColumnKind::Number:
            return name + " REAL";
        case ColumnKind::Text: {
            const std::string limit = std::to_string(TextColumnCharacters);
            return name + " TEXT COLLATE NOCASE CONSTRAINT \"The column " + name + " holds " + limit +
                   " characters at most\" CHECK (length(" + name + ") <= " + limit + ")";
        }
    }
    return name;
}

}  // namespace

std::string CreateTableStatement() {
    std::string columns;
    for (const TableColumn& column : TableColumns) {
        if (!columns.empty()) columns += ", ";
        columns += ColumnDefinition(column);
    }
    // A strict table refuses a text in a number column, where the engine would otherwise keep it as text.
    return "CREATE TABLE " + std::string(TableName) + " (" + columns + ") STRICT";
}

}  // namespace brenvik::part_table

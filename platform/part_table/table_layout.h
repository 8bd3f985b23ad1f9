// The part table: its name, its columns in order, and the statement that makes it.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace brenvik::part_table {

inline constexpr std::string_view TableName = "brenvik_data";

/// Characters that a text column holds.
inline constexpr int TextColumnCharacters = 255;

enum class ColumnKind { Text, Number };

struct TableColumn {
    std::string_view name;
    ColumnKind kind;
};

inline constexpr std::array<TableColumn, 26> TableColumns = {{
    {"bv_id", ColumnKind::Text},          {"bv_qty", ColumnKind::Text},
    {"bv_partname", ColumnKind::Text},    {"bv_subassembly", ColumnKind::Text},
    {"bv_material", ColumnKind::Text},    {"bv_length", ColumnKind::Number},
    {"bv_width", ColumnKind::Number},     {"bv_thickness", ColumnKind::Number},
    {"bv_lwt", ColumnKind::Text},         {"bv_x", ColumnKind::Number},
    {"bv_y", ColumnKind::Number},         {"bv_z", ColumnKind::Number},
    {"bv_notes", ColumnKind::Text},       {"bv_userdata1", ColumnKind::Text},
    {"bv_userdata2", ColumnKind::Text},   {"bv_pn", ColumnKind::Text},
    {"bv_price", ColumnKind::Text},       {"bv_eb1", ColumnKind::Text},
    {"bv_eb2", ColumnKind::Text},         {"bv_eb3", ColumnKind::Text},
    {"bv_eb4", ColumnKind::Text},         {"bv_face", ColumnKind::Text},
    {"bv_layer", ColumnKind::Text},       {"bv_oldValue1", ColumnKind::Number},
    {"bv_oldValue2", ColumnKind::Number}, {"bv_oldValue3", ColumnKind::Number},
}};

/// The statement that makes the empty table. Text columns compare without case and take blanks; a text
/// that is too long is refused with a constraint whose name is the message for the user.
std::string CreateTableStatement();

}  // namespace brenvik::part_table

// The table of the part record's columns, and what is made from it.
#include "parts/part_table.h"

#include <array>

#include "base/letter_case.h"

namespace brenvik {

namespace {

using enum PartColumnKind;

constexpr auto Columns = std::to_array<PartColumn>({
    {1, "bv_id", "ID", "bv_ID", Text, "", ""},
    {2, "bv_qty", "Qty", "Qty", Text, "QUANTITY", "QUANTITY"},
    {3, "bv_partname", "Part Name", "Part Name", Text, "PARTNAME", "PARTNAME"},
    {4, "bv_subassembly", "Sub Assembly", "Sub Assembly", Text, "SUBASSEMBLY", "SUBASSEMBLY"},
    {5, "bv_material", "Material", "Material", Text, "MATERIAL", "MATERIAL"},
    {6, "bv_length", "Length", "Length", Number, "", ""},
    {7, "bv_width", "Width", "Width", Number, "", ""},
    {8, "bv_thickness", "Thickness", "Thickness", Number, "", ""},
    {9, "bv_lwt", "ORIE", "ORIE", Text, "ORIE", "LWT"},
    // Applying makes the present extents the old ones, so the raw extents are what the old keys take.
    {10, "bv_x", "Value1", "Value 1", Number, "OLDVALUE1", "X"},
    {11, "bv_y", "Value2", "Value 2", Number, "OLDVALUE2", "Y"},
    {12, "bv_z", "Value3", "Value 3", Number, "OLDVALUE3", "Z"},
    {13, "bv_notes", "Notes", "Notes", Text, "NOTES", "NOTES"},
    {14, "bv_userdata1", "User Data1", "User Data1", Text, "USERDATA1", "USERDATA1"},
    {15, "bv_userdata2", "User Data2", "User Data2", Text, "USERDATA2", "USERDATA2"},
    {16, "bv_pn", "PN", "PN", Text, "PN", "PN"},
    {17, "bv_price", "Price", "Price", Text, "PRICE", "PRICE"},
    {18, "bv_eb1", "EB1", "EB1", Text, "EB1", "EB1"},
    {19, "bv_eb2", "EB2", "EB2", Text, "EB2", "EB2"},
    {20, "bv_eb3", "EB3", "EB3", Text, "EB3", "EB3"},
    {21, "bv_eb4", "EB4", "EB4", Text, "EB4", "EB4"},
    {22, "bv_face", "Face", "Face", Text, "FACE", "FACE"},
    {23, "bv_layer", "Layer", "Layer", Text, "", "LAYERNAME"},
    {24, "bv_oldValue1", "OldValue1", "OldValue1", Number, "", ""},
    {25, "bv_oldValue2", "OldValue2", "OldValue2", Number, "", ""},
    {26, "bv_oldValue3", "OldValue3", "OldValue3", Number, "", ""},
});

const PartColumn* FindBy(std::string_view PartColumn::*member, std::string_view text) {
    if (text.empty()) return nullptr;
    for (const PartColumn& column : Columns)
        if (EqualsIgnoreCase(column.*member, text)) return &column;
    return nullptr;
}

}  // namespace

std::span<const PartColumn> PartColumns() { return Columns; }

const PartColumn* FindPartColumn(std::string_view column) { return FindBy(&PartColumn::column, column); }

const PartColumn* FindPartColumnByHeader(std::string_view header) {
    return FindBy(&PartColumn::header, header);
}

const PartColumn* FindPartColumnByKey(std::string_view partDataKey) {
    return FindBy(&PartColumn::partDataKey, partDataKey);
}

const std::string& FullSelect() {
    static const std::string statement = [] {
        std::string text = "SELECT ";
        for (const PartColumn& column : Columns) {
            if (column.gridColumn > 1) text += ", ";
            text += column.column;
        }
        return text + " FROM " + std::string(PartTableName);
    }();
    return statement;
}

}  // namespace brenvik

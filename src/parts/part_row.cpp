// The row's values by key, and the statement that adds them to the part table.
#include "parts/part_row.h"

#include <array>
#include <utility>

#include "base/number_text.h"
#include "base/numbers.h"
#include "base/quoted.h"
#include "parts/part_table.h"

namespace brenvik::mAutoCAD {

namespace {

using Value = std::string PartRow::*;

constexpr auto ScannedKeys = std::to_array<std::pair<std::string_view, Value>>({
    {"QUANTITY", &PartRow::QUANTITY},
    {"PARTNAME", &PartRow::PARTNAME},
    {"SUBASSEMBLY", &PartRow::SUBASSEMBLY},
    {"MATERIAL", &PartRow::MATERIAL},
    {"ORIE", &PartRow::ORIE},
    {"USERDATA1", &PartRow::USERDATA1},
    {"USERDATA2", &PartRow::USERDATA2},
    {"PN", &PartRow::PN},
    {"PRICE", &PartRow::PRICE},
    {"EB1", &PartRow::EB1},
    {"EB2", &PartRow::EB2},
    {"EB3", &PartRow::EB3},
    {"EB4", &PartRow::EB4},
    {"NOTES", &PartRow::NOTES},
    {"VALUE1", &PartRow::VALUE1},
    {"VALUE2", &PartRow::VALUE2},
    {"VALUE3", &PartRow::VALUE3},
    {"OLDVALUE1", &PartRow::OLDVALUE1},
    {"OLDVALUE2", &PartRow::OLDVALUE2},
    {"OLDVALUE3", &PartRow::OLDVALUE3},
    {"FACE", &PartRow::FACE},
});

std::string Quoted(std::string_view text) { return "'" + std::string(text) + "', "; }
std::string Unquoted(std::string_view numberText) { return std::string(numberText) + ", "; }
std::string AsNumber(std::string_view text) { return Unquoted(NumberToText(LenientNumber(text))); }

}  // namespace

std::string* PartRow::ValueOf(std::string_view partDataKey) {
    for (const auto& [key, value] : ScannedKeys)
        if (key == partDataKey) return &(this->*value);
    return nullptr;
}

std::string TextWithQuote(const PartRow& row, std::string_view layer) {
    const auto found = [](std::string_view caption, std::string_view text) {
        return std::string(caption) + " " + InQuotes(text);
    };
    for (const auto& [key, value] : ScannedKeys) {
        const PartColumn* column = FindPartColumnByKey(key);
        const bool isText = column != nullptr && column->kind == PartColumnKind::Text;
        if (isText && (row.*value).find('\'') != std::string::npos) return found(column->caption, row.*value);
    }
    return layer.find('\'') == std::string_view::npos ? std::string() : found("Layer", layer);
}

std::string InsertStatement(const PartRow& row, std::string_view handle, std::string_view layer) {
    std::string sql = "INSERT INTO brenvik_data  (bv_id, bv_qty, bv_partname, bv_subassembly ";
    sql += ", bv_material, bv_length, bv_width, bv_thickness, bv_lwt, bv_x, bv_y, bv_z, bv_notes ";
    sql += ", bv_userdata1, bv_userdata2, bv_pn, bv_price, bv_eb1, bv_eb2, bv_eb3, bv_eb4, bv_face, ";
    sql += "bv_oldValue1, bv_oldValue2, bv_oldValue3,bv_layer)";
    sql += " values (";
    sql += Quoted(handle) + Quoted(row.QUANTITY) + Quoted(row.PARTNAME) + Quoted(row.SUBASSEMBLY);
    sql += Quoted(row.MATERIAL) + Unquoted(row.length) + Unquoted(row.width) + Unquoted(row.thickness);
    sql += Quoted(row.ORIE);
    for (const double extent : row.extents.E) sql += AsNumber(NumberToText(extent));
    sql += Quoted(row.NOTES) + Quoted(row.USERDATA1) + Quoted(row.USERDATA2) + Quoted(row.PN);
    sql += Quoted(row.PRICE) + Quoted(row.EB1) + Quoted(row.EB2) + Quoted(row.EB3) + Quoted(row.EB4);
    sql += Quoted(row.FACE);
    sql += AsNumber(row.OLDVALUE1) + AsNumber(row.OLDVALUE2) + AsNumber(row.OLDVALUE3);
    sql += "'" + std::string(layer) + "'  )";
    return sql;
}

}  // namespace brenvik::mAutoCAD

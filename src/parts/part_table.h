// The part record: the columns of the part table with their captions, their place in the grid, and the key
// under which a value is kept on the solid. Everything that names columns is made from this one table.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace brenvik {

enum class PartColumnKind { Text, Number };

struct PartColumn {
    int gridColumn;            ///< Place in the grid, from 1.
    std::string_view column;   ///< Name in the table.
    std::string_view caption;  ///< As the dialogs name it.
    std::string_view header;   ///< As the grid's header shows it.
    PartColumnKind kind;
    std::string_view partDataKey;  ///< Where Apply writes the cell on the solid; blank: nowhere.
    std::string_view widthKey;  ///< Name of the column's width in the settings, without its suffix; or blank.
};

inline constexpr std::string_view PartTableName = "brenvik_data";

/// The 26 columns in the order of the table and of the grid.
std::span<const PartColumn> PartColumns();

/// By the name in the table, or by the grid's header, each without regard to case; null if unknown.
const PartColumn* FindPartColumn(std::string_view column);
const PartColumn* FindPartColumnByHeader(std::string_view header);
/// The column whose cell Apply writes under this key, or null for a key without a column.
const PartColumn* FindPartColumnByKey(std::string_view partDataKey);

/// The statement that selects every column of every part, in the order of the table.
const std::string& FullSelect();
/// The statement that the scan leaves the grid with.
inline constexpr std::string_view ScanSelect = "SELECT * FROM brenvik_data";

// The lists of names, parted by commas.

/// Keys of the data on a solid, in the order in which scan and Apply walk them.
inline constexpr std::string_view PartDataKeyList =
    "QUANTITY,PARTNAME,SUBASSEMBLY,MATERIAL,ORIE,X,Y,Z,NOTES,USERDATA1,USERDATA2,PN,PRICE,EB1,EB2,EB3,EB4,"
    "FACE,LAYERNAME,VALUE1,VALUE2,VALUE3,OLDVALUE1,OLDVALUE2,OLDVALUE3";
/// Captions of the grid form.
inline constexpr std::string_view GridCaptionList =
    "Qty,Part Name,Sub Assembly,Material,ORIE,X,Y,Z,Notes,User Data1,User Data2,PN,Price,EB1,EB2,EB3,EB4,"
    "Face,Layer Name,ID";

}  // namespace brenvik

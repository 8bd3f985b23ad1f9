// One part on its way from the solid to the part table.
#pragma once

#include <string>
#include <string_view>

#include "parts/orie_update.h"

namespace brenvik::mAutoCAD {

/// The values of one row. In a scan they carry over from part to part until they are overwritten.
struct PartRow {
    std::string QUANTITY, PARTNAME, SUBASSEMBLY, MATERIAL, ORIE, NOTES, USERDATA1, USERDATA2, PN, PRICE;
    std::string EB1, EB2, EB3, EB4, FACE;
    std::string VALUE1, VALUE2, VALUE3, OLDVALUE1, OLDVALUE2, OLDVALUE3;
    MeasuredExtents extents;
    std::string length = "0", width = "0", thickness = "0";  ///< Number text.

    /// The value that the scan reads under a part-data key, or null for a key that it passes over.
    std::string* ValueOf(std::string_view partDataKey);
};

/// The text of the row that holds a single quote, with its caption, as in: Part Name "O'Brien". Blank for a
/// row without one.
std::string TextWithQuote(const PartRow& row, std::string_view layer);

/// The statement that adds the row. No value is escaped: a single quote in a text makes it fail.
std::string InsertStatement(const PartRow& row, std::string_view handle, std::string_view layer);

}  // namespace brenvik::mAutoCAD

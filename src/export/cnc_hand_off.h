// From the export dialog to a CNC run: the dialog leaves two lists and the number of the target behind, and
// the run starts when the grid has closed.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "parts/cnc_list.h"

namespace brenvik {

class frmExport;

/// The columns of the first list, unless a profile names others.
inline constexpr std::string_view CncColumns =
    "ID,QTY,Part Name,Sub Assembly,Material,Length,Width,Thickness,ORIE,Notes,User Data1,User "
    "Data2,PN,Price,EB1,EB2,EB3,EB4,Face,Layer";

/// A group of identical parts by their ids, in the order of their lines.
using CncGroup = std::vector<std::string>;

/// Lines that are equal, letter by letter, behind their second comma, in the order of their first ones. A
/// line with nothing behind its second comma belongs to no group.
std::vector<CncGroup> CncGroupsOf(std::span<const std::string> lines);

/// The second list from the lines of the first: "id,count" for each group, with the id of its first line. A
/// blank id makes no line.
std::string GroupedCncList(std::span<const std::string> lines, std::string_view lineEnd);

/// Hands the parts over to the run of a target (1 to 12): turns grouping off, writes both lists from all rows
/// of the part table, stores the target in `ExportTarget` and unloads the dialog. Adjustments that can't be
/// applied are told, and the dialog stays open; so does it when no part has anything behind its quantity, and
/// when an old list stands in the way of the new one. Parts that are left out are told.
void HandOffToCnc(frmExport& form, int exportTarget);

}  // namespace brenvik

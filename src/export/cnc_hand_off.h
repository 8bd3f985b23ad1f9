// From the export dialog to a CNC run: the dialog leaves two lists and the number of the target behind, and
// the run starts when the grid has closed.
#pragma once

#include <string_view>

namespace brenvik {

class frmExport;

/// The columns of the first list, unless a profile names others.
inline constexpr std::string_view CncColumns =
    "ID,QTY,Part Name,Sub Assembly,Material,Length,Width,Thickness,ORIE,Notes,User Data1,User "
    "Data2,PN,Price,EB1,EB2,EB3,EB4,Face,Layer";

/// Hands the parts over to the run of a target (1 to 12): turns grouping off, writes both lists from all rows
/// of the part table, stores the target in `ExportTarget` and unloads the dialog. The dialog stays open, with
/// a message, if adjustments can't be applied, if no part has a value behind its quantity, or if an old list
/// can't be replaced. Parts that are left out are reported.
void HandOffToCnc(frmExport& form, int exportTarget);

}  // namespace brenvik

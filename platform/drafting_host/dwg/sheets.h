// Sheets and the blocks that hold what is drawn on them.
#pragma once

#include "drafting_host/dwg/names.h"
#include "drafting_host/dxf/reading/reading.h"

namespace brenvik::dwg {

/// Gives each space of `names` the handle of its sheet. Sheet and block name each other, except in releases
/// 13 and 14, where only the sheet does. One reference is enough; contradictions are reported, and so are
/// sheets that no block has, and what a sheet can't be. Blocks have their full names.
void JoinSheets(Names& names, const Header& header, Release release, Reading& reading);

}  // namespace brenvik::dwg

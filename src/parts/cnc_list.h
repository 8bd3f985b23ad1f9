// The lists by which the grid hands parts over to a CNC run.
#pragma once

#include <string_view>

namespace brenvik {

/// The lists in the hand-over folder: a line for each row of the part table, and a line for each group of
/// identical parts, which the run reads.
inline constexpr std::string_view CncWorkFile = "CNCExportList.txt";
inline constexpr std::string_view CncListFile = "CNCExportList2.txt";

}  // namespace brenvik

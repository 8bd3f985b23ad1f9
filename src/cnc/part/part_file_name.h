// What the files of a run are called. Work lists have names of their own, by target.
#pragma once

#include <string>
#include <string_view>

namespace brenvik {

struct RunState;

/// What the files of a part begin with, before its number, and those of its second side before that.
inline constexpr std::string_view PartFileHead = "Part_", SecondSideMark = "B";

/// The files of all parts, by wildcards.
inline constexpr std::string_view FirstSideDxfFiles = "Part_*.dxf", SecondSideDxfFiles = "BPart_*.dxf";
inline constexpr std::string_view FirstSideDrawings = "Part_*.dwg", SecondSideDrawings = "BPart_*.dwg";

/// The work drawings of a run, without their folders.
inline constexpr std::string_view WorkDrawingName = "wblock.dwg", WorkDrawing2Name = "wblock2.dwg";

/// "Part_0": what the names of a part's files have in common, on its first side.
std::string PartFileHeadOf(int index);

/// The name of the part's DXF file for this pass, without its folder.
std::string WrittenFileName(const RunState& run);

}  // namespace brenvik

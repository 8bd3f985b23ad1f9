// What the files of a run are called. Work lists have names of their own, by target.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "cnc/part/run_state.h"

namespace brenvik {

/// What the files of a part begin with, before its number, and those of its second side before that.
inline constexpr std::string_view PartFileHead = "Part_", SecondSideMark = "B";

/// The files of all parts, by wildcards.
inline constexpr std::string_view SecondSideDxfFiles = "BPart_*.dxf", SecondSideDrawings = "BPart_*.dwg";
inline constexpr std::string_view FirstSideDxfFiles = SecondSideDxfFiles.substr(SecondSideMark.size()),
                                  FirstSideDrawings = SecondSideDrawings.substr(SecondSideMark.size());
static_assert(SecondSideDxfFiles.starts_with(SecondSideMark) && FirstSideDxfFiles.starts_with(PartFileHead));
static_assert(SecondSideDrawings.starts_with(SecondSideMark) && FirstSideDrawings.starts_with(PartFileHead));

/// The folder of second sides within that of the first.
inline constexpr std::string_view SecondSideFolderName = "2-sided";
static_assert(SecondSideFolder.substr(OutputFolder.size()).starts_with(SecondSideFolderName));

/// The work drawings of a run, without their folders.
inline constexpr std::string_view WorkDrawingName = WorkDrawing.substr(OutputFolder.size()),
                                  WorkDrawing2Name = WorkDrawing2.substr(OutputFolder.size());

/// "Part_0": what the names of a part's files have in common, on its first side.
std::string PartFileHeadOf(int index);

/// The number in the name of a part's file, on either side: "Part_12_Door_.dxf" has 12. Null for a name that
/// no run gives.
std::optional<int> PartNumberIn(std::string_view fileName);

/// The name of the part's DXF file for this pass, without its folder.
std::string WrittenFileName(const RunState& run);

}  // namespace brenvik

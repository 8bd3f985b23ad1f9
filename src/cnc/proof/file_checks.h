// What a written file has to hold besides what it cuts: outline, sheet, tools, directions and colours.
#pragma once

#include <string>
#include <vector>

namespace brenvik {

class AcadDocument;
struct RunState;

/// Lists what a run with these settings and materials would have written differently in a side's file. The
/// run knows the part as it lies, its material and the target. Depths are left to the proof.
std::vector<std::string> FaultsOfFile(const RunState& run, AcadDocument& file, bool secondSide);

}  // namespace brenvik

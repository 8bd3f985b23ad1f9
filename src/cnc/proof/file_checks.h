// What a written file has to hold besides what it cuts: outline, sheet, tools, directions and colours.
#pragma once

#include <string>
#include <vector>

namespace brenvik {

class AcadDocument;
struct RunState;

/// What in the file of a side isn't as a run with these settings and this material library writes it, in
/// words. The run knows the part as it lies, its material and the target. What is told by comparing what the
/// operations cut, such as depths, isn't looked at here.
std::vector<std::string> FaultsOfFile(const RunState& run, AcadDocument& file, bool secondSide);

}  // namespace brenvik

// What the DXF file of a part and side is called.
#pragma once

#include <string>

namespace brenvik {

struct RunState;

/// The name of the part's DXF file for this pass, without its folder.
std::string WrittenFileName(const RunState& run);

}  // namespace brenvik

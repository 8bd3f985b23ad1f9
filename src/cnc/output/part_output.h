// The DXF file of a part and side.
#pragma once

namespace brenvik {

struct RunState;

/// Writes the part's DXF file for this pass.
void WritePartFile(RunState& run);

}  // namespace brenvik

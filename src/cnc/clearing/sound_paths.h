// Paths of a pass that no machine can follow as they are: joined the wrong way where contours meet in a
// corner, or with a way that runs out and back.
#pragma once

#include "cnc/clearing/part_slabs.h"
#include "cnc/part/run_state.h"

namespace brenvik {

/// Takes away the paths that would cut into wood that the part has: what they were meant to clear is looked
/// for anew.
void DropStrayPaths(RunState& run, const PartSlabs& slabs);

/// Gives paths that meet themselves, turn back upon themselves or stop at one place twice a plain way round
/// the same area.
void CleanPaths(RunState& run, const PartSlabs& slabs);

}  // namespace brenvik

// Operations of a pass that the others of the pass make needless.
#pragma once

#include "cnc/clearing/part_slabs.h"
#include "cnc/part/run_state.h"

namespace brenvik {

/// Takes away the holes and paths of which the others clear all: a hole in the end of a slot that a pocket
/// clears to the same depth would be cut twice.
void DropNeedlessCuts(RunState& run, const PartSlabs& slabs);

}  // namespace brenvik

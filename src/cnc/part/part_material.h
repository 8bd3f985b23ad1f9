// The material of the part that a run works on: looked up, told where the library hasn't it, and refused
// where its record can't be what was meant.
#pragma once

#include "cnc/part/run_state.h"

namespace brenvik {

/// Fills `record` with the material of the run's `MaterialKeyText`; what it held stays where the library has
/// none. False when the record has no first tool then, which has been told. Fails with 13 for a record with a
/// value that nobody can cut by, naming the file, the line, the value and what was expected. What of it is
/// doubtful is noted for the run's report.
bool TakeMaterial(const RunState& run, MaterialRecord& record);

/// Tells that the library hasn't the part's material, and notes the key for the run's report.
void TellUnknownMaterial(const RunState& run);

}  // namespace brenvik

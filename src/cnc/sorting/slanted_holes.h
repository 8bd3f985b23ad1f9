// Holes at an angle to the part: no operation makes them, so each is reported to the operator.
#pragma once

#include <span>

#include "session/ports/host_interface.h"

namespace brenvik {

struct RunState;

/// Notes every hole whose axis is neither vertical nor horizontal, once: by its circles (floor, or a rim in
/// a face square to the axis), or by the pair of ellipses that a through hole leaves in top and underside.
void NoteSlantedHoles(RunState& run, const Box3& part, std::span<const AcadCircle* const> slantedCircles);

}  // namespace brenvik

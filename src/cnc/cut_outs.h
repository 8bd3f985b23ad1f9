// Contours that are cut right through the inside of a part.
#pragma once

#include "cnc/run_state.h"
#include "session/host_interface.h"

namespace brenvik {

/// How deep a through path goes: the part's thickness and the spoil board's share.
double ThroughDepth(const RunState& run);

/// The height of the part's top plane, on which all paths lie.
double TopPlane(const RunState& run);

/// Makes a path cut through the part of a closed contour: on the top plane, running clockwise, named with
/// the bit that its shortest side allows. A contour that is open, or has material above it, is deleted and
/// left for the other side. Skips the part where no bit is chosen, which has been told then.
PartStep CutOut(RunState& run, AcadLWPolyline& contour);

/// The same for every polyline on `ThroughxRoute`, in drawing order. Tells in `leftForOtherSide` whether a
/// contour was left.
PartStep CutOutContours(RunState& run, bool& leftForOtherSide);

/// Notes something that no operation was made for, once.
void NotePassedOver(RunState& run, std::string_view text);

}  // namespace brenvik

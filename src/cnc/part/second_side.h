// When a part gets its other side, and where a place of that side lay on the first one. The requests and
// their withdrawal are here; `run/part_loop` resets the flags between passes and parts, and looks at the
// setting that forbids second sides:
//
//   NeedOtherSide          sorting/circular_routes  a circular route that opens below
//                          routes/routing           an inner contour under wood, or one that doesn't close
//                          outline/cut_outs         the same of the kept face's contours
//                          holes/hole_account       a hole that opens below
//                          clearing/clear_rest      air that only a bit from below reaches
//   NeedOtherSideForBores  run/recognising          edge bores that a setting leaves to the second side
//   CancelOtherSide        clearing/clear_rest      all that was left to it is made on the first side
//                          run/part_loop            the part's files are gone
//                          run/work_apart           a part that is worked on apart begins with no request
#pragma once

#include "session/ports/host_interface.h"

namespace brenvik {

struct RunState;

/// Requests a second side for the part, for something that a recogniser leaves to it.
void NeedOtherSide(RunState& run);
/// The same for edge bores alone: `ThroughRouteSeen` stays as it is, by which a second pass without any bores
/// ends early.
void NeedOtherSideForBores(RunState& run);
/// Takes every request back.
void CancelOtherSide(RunState& run);
/// Whether one has been made. It stands until the part's files go, so on a second pass it says that the part
/// is to be turned over.
bool NeedsOtherSide(const RunState& run);

/// A place of the second pass as the first pass saw it: the part has been turned over about X in between.
Point3 OnFirstSide(const RunState& run, const Box3& part, const Point3& place);

}  // namespace brenvik

// Bores too wide to be drilled: found by the circles on one vertical axis, and routed or pocketed.
#pragma once

#include "cnc/part/run_state.h"
#include "session/ports/host_interface.h"

namespace brenvik {

/// Sorts the circles of `RouteCircleHold`: those of through bores go to `ThroughRouteCirclePV`, the floors of
/// bores that are open to the top to `RouteCirclePV`; what has to be cut from the underside raises
/// `NeedSecondSide`, and on a first pass `ThroughRouteSeen`. `part` is the box of the solid, which stands in
/// the drawing. Skips the part, with a report, if a circle on the underside stands alone on its axis.
///
/// A circle only becomes an operation where the solid has nothing but air from it up to the top; whatever
/// can be cut from neither side is noted as unexplained.
PassOutcome SortCircularRoutes(RunState& run, const Box3& part);

}  // namespace brenvik

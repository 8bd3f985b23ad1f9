// Contours that are cut right through the inside of a part.
#pragma once

#include <string_view>
#include <vector>

#include "cnc/drawing/polyline_shape.h"
#include "cnc/part/run_state.h"
#include "session/ports/host_interface.h"

namespace brenvik {

/// How deep a through path goes: the part's thickness and the spoil board's share.
double ThroughDepth(const RunState& run);

/// Whether a contour, by its thickness and colour, is cut right through, be it to a skin that a setting
/// leaves.
bool IsCutThrough(const RunState& run, const AcadLWPolyline& path);

/// The height of the part's top plane, on which all paths lie.
double TopPlane(const RunState& run);

/// Makes a path cut through the part of a closed contour: on the top plane, running clockwise, named with the
/// bit that its shortest side allows. A contour that is open, or has material above it, is deleted and left
/// for the other side. Skips the part if no bit is chosen, which has been reported then.
PassOutcome CutOut(RunState& run, AcadLWPolyline& contour);

/// A contour of the kept face that no path was made of, as it lay.
struct LeftContour {
    std::vector<double> coordinates;
    Footprint footprint;
};

/// Calls `CutOut` for each polyline on `ThroughxRoute`, in drawing order, and appends to `left` those without
/// a path.
PassOutcome CutOutContours(RunState& run, std::vector<LeftContour>& left);

}  // namespace brenvik

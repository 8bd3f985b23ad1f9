// Routes and pockets that stop inside a part.
#pragma once

#include <string_view>

#include "cnc/part/run_state.h"

namespace brenvik {

/// Closed shapes that stop inside the part become routes and pockets. Skips the part where no bit was
/// chosen, and where a floor can't be followed.
/// A contour that only other recesses cut short of any bit is left to the sections, unless the run isn't
/// `proven`: then nobody would tell of a floor that these can't clear either.
PassOutcome RecogniseRoutes(RunState& run, bool proven = true);

/// Which way paths inside a part run: "Clockwise" or "CounterClockwise".
std::string_view DirectionOfCut(const MaterialRecord& material);

/// Of a path that stops inside: the measure that its bit is chosen by.
double ShortestSide(const AcadLWPolyline& path);

/// Makes a path of a closed contour that lies on its floor: on the top plane, as deep as the floor lies, with
/// the bit that its shortest side allows, run off the part's edges, and named. `part` is the box of the
/// solid. False when no bit was chosen, which gives the part up.
bool CutInside(RunState& run, const Box3& part, AcadLWPolyline& path);

/// A route that is named already: its bit and its number on the part.
struct GrownRoute {
    const MaterialTool& tool;
    int counter = 1;
};
/// Renames a route whose path has been made wider since, where wood would now stay in its middle: it becomes
/// a pocket with the same bit, as `CutInside` would have made it. With the setting `ClearCores` alone.
void ClearGrownCore(RunState& run, const Box3& part, AcadLWPolyline& path, const GrownRoute& route);

/// `CutInside` for a circle, as a circular pocket.
bool CutCirclePocket(RunState& run, const Box3& part, AcadCircle& circle);

}  // namespace brenvik

// Whether a tool can come down on a contour from above: a trial cut on a copy of the solid.
#pragma once

#include "session/ports/host_interface.h"

namespace brenvik {

struct RunState;

/// What a trial cut straight up from a contour found.
enum class OpenTop {
    Open,     ///< Nothing but air above: the contour can be cut from this side.
    Covered,  ///< Material stands above it: it belongs to the other side.
    Grown,    ///< The volume rose, which no cut does: the modeller failed.
};

/// Copies the closed curve, makes a region of the copy, raises it by 1000.0 and takes the body away from a
/// copy of the last solid; the copy's volume is compared with `PartState::PartVolume`, both rounded to
/// `digits` decimals. All objects of the trial are gone again afterwards. The curve itself stays as it is.
///
/// Fails for a curve that makes no region (one that is open, or crosses itself), where the drawing holds no
/// solid, and where a layer of the trial is locked.
OpenTop OpenToTop(RunState& run, AcadEntity& closedCurve, int digits);

/// The same from the other side: whether a tool reaches the contour from below once the part is turned over.
OpenTop OpenToUnderside(RunState& run, AcadEntity& closedCurve, int digits);

/// How much material stands over the contour, as a volume; below 0 where the trial cut makes the part grow,
/// which shows that the modeller failed.
double MaterialAbove(RunState& run, AcadEntity& closedCurve);

/// How much material stands within a level cylinder from one point of its axis to another, as a volume.
/// Leaves the drawing as it was, like the trials above. Fails where it holds no solid, and where the modeller
/// does.
double MaterialWithin(RunState& run, const Point3& from, const Point3& to, double radius);

}  // namespace brenvik

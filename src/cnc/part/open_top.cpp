// The trial cut: everything it makes is a temporary object, and it leaves the drawing as it found it.
#include "cnc/part/open_top.h"

#include <cmath>
#include <numbers>

#include "base/numbers.h"
#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/part/run_state.h"
#include "cnc/part/trial_objects.h"

namespace brenvik {

namespace {

// Higher than any part is thick, in millimetres as in inches.
constexpr double TrialHeight = 1000.0;
constexpr double NoTaper = 0;
constexpr int TrialColor = 2;

/// The volume that is left of the part when all above the region, or below it, is taken away; 0 where nothing
/// is left.
double VolumeAfterCut(AcadDocument& drawing, Acad3DSolid& part, AcadRegion& region, double upward,
                      TrialObjects& objects) {
    // A region may look down; the tool comes from the same side all the same.
    const double height = region.Normal().z < 0 ? -upward : upward;
    Acad3DSolid& cut = objects.Keep(drawing.ModelSpace().AddExtrudedSolid(region, height, NoTaper));
    cut.SetLayer(layers::Zero);
    cut.SetColor(TrialColor);
    Acad3DSolid& trial = objects.Keep(dynamic_cast<Acad3DSolid*>(part.Copy()));
    trial.Boolean(BooleanKind::Subtraction, cut);
    double volume = 0;
    Skip([&] { volume = trial.Volume(); });
    return volume;
}

/// The volume of the part that a trial cut from the curve on leaves.
double VolumeLeft(RunState& run, AcadEntity& closedCurve, double upward) {
    AcadDocument& drawing = *run.part.drawing;
    Acad3DSolid& part = LastSolid(drawing);
    AddLayer(drawing, layers::CircleHold);
    TrialObjects objects;
    AcadEntity& copy = objects.Keep(closedCurve.Copy());
    copy.SetLayer(layers::CircleHold);
    copy.SetColor(TrialColor);
    return VolumeAfterCut(drawing, part, RegionOf(drawing, copy, objects), upward, objects);
}

OpenTop TrialCut(RunState& run, AcadEntity& closedCurve, double upward, int digits) {
    const double left = RoundHalfEven(VolumeLeft(run, closedCurve, upward), digits);
    const double whole = RoundHalfEven(run.part.PartVolume, digits);
    if (left < whole) return OpenTop::Covered;
    return left > whole ? OpenTop::Grown : OpenTop::Open;
}

}  // namespace

OpenTop OpenToTop(RunState& run, AcadEntity& closedCurve, int digits) {
    return TrialCut(run, closedCurve, TrialHeight, digits);
}

OpenTop OpenToUnderside(RunState& run, AcadEntity& closedCurve, int digits) {
    return TrialCut(run, closedCurve, -TrialHeight, digits);
}

double MaterialAbove(RunState& run, AcadEntity& closedCurve) {
    return run.part.PartVolume - VolumeLeft(run, closedCurve, TrialHeight);
}

double MaterialWithin(RunState& run, const Point3& from, const Point3& to, double radius) {
    AcadDocument& drawing = *run.part.drawing;
    Acad3DSolid& part = LastSolid(drawing);
    TrialObjects objects;
    const double dx = to.x - from.x, dy = to.y - from.y;
    const Point3 middle{(from.x + to.x) / 2, (from.y + to.y) / 2, (from.z + to.z) / 2};
    Acad3DSolid& bore = objects.Keep(drawing.ModelSpace().AddCylinder(middle, radius, std::hypot(dx, dy)));
    bore.SetLayer(layers::Zero);
    // A cylinder is made upright, about its middle.
    bore.Rotate3D(middle, {middle.x - dy, middle.y + dx, middle.z}, std::numbers::pi / 2);
    Acad3DSolid& trial = objects.Keep(dynamic_cast<Acad3DSolid*>(part.Copy()));
    const double whole = trial.Volume();
    trial.Boolean(BooleanKind::Subtraction, bore);
    return whole - trial.Volume();
}

}  // namespace brenvik

// Slanted holes are seen by what they leave in the drawing: circles on one slanted axis, or shifted ellipses.
#include "cnc/sorting/slanted_holes.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/part/run_state.h"
#include "cnc/part/told.h"

namespace brenvik {

namespace {

constexpr std::string_view Kind = "slanted hole";

/// How far a point lies off the line through `on` along the unit vector `along`.
double OffAxis(const Point3& point, const Point3& on, const Point3& along) {
    const Point3 away{point.x - on.x, point.y - on.y, point.z - on.z};
    return std::hypot(away.y * along.z - away.z * along.y, away.z * along.x - away.x * along.z,
                      away.x * along.y - away.y * along.x);
}

bool OnOneAxis(const AcadCircle& a, const AcadCircle& b) {
    return NearlyEqual(a.Diameter(), b.Diameter()) &&
           NearlyEqual(OffAxis(a.Center(), b.Center(), b.Normal()), 0) &&
           NearlyEqual(OffAxis(a.Normal(), {}, b.Normal()), 0);
}

/// An ellipse, as far as its box shows it.
struct Oval {
    Point3 center;
    double sizeX = 0, sizeY = 0;
};

bool Alike(const Oval& a, const Oval& b) {
    return NearlyEqual(a.sizeX, b.sizeX) && NearlyEqual(a.sizeY, b.sizeY);
}
bool Above(const Oval& a, const Oval& b) {
    return NearlyEqual(a.center.x, b.center.x) && NearlyEqual(a.center.y, b.center.y);
}

/// Ellipses of the solid's faces in one horizontal plane, each once. What the projection drew is no face.
std::vector<Oval> OvalsAt(AcadDocument& drawing, double z) {
    std::vector<Oval> found;
    for (const AcadEntity* entity : All<AcadEntity>(drawing)) {
        if (entity->ObjectName() != "AcDbEllipse") continue;
        const std::string layer = entity->Layer();
        if (layers::OnProjection(layer)) continue;
        const Box3 box = entity->GetBoundingBox();
        if (!NearlyEqual(box.min.z, z) || !NearlyEqual(box.max.z, z)) continue;
        const Oval oval{{(box.min.x + box.max.x) / 2, (box.min.y + box.max.y) / 2, z},
                        box.max.x - box.min.x,
                        box.max.y - box.min.y};
        const bool known = std::ranges::any_of(
            found, [&](const Oval& other) { return Alike(oval, other) && Above(oval, other); });
        if (!known) found.push_back(oval);
    }
    return found;
}

Box3 Around(const Oval& top, const Oval& bottom) {
    const double x = std::max(top.sizeX, bottom.sizeX) / 2, y = std::max(top.sizeY, bottom.sizeY) / 2;
    const Point3 &a = top.center, &b = bottom.center;
    return {{std::min(a.x, b.x) - x, std::min(a.y, b.y) - y, b.z},
            {std::max(a.x, b.x) + x, std::max(a.y, b.y) + y, a.z}};
}

/// A slanted wall cuts top and underside in equal ellipses that lie apart; those of an upright wall lie over
/// each other.
void NoteThroughHoles(RunState& run, const Box3& part) {
    const std::vector<Oval> tops = OvalsAt(*run.part.drawing, part.max.z);
    if (tops.empty()) return;
    const std::vector<Oval> bottoms = OvalsAt(*run.part.drawing, part.min.z);
    for (const Oval& top : tops) {
        const auto over = [&](const Oval& bottom) { return Alike(top, bottom) && Above(top, bottom); };
        const auto alike =
            std::ranges::find_if(bottoms, [&](const Oval& bottom) { return Alike(top, bottom); });
        if (alike != bottoms.end() && std::ranges::none_of(bottoms, over))
            NoteUnexplained(run, part, Kind, std::min(top.sizeX, top.sizeY), top.center, Around(top, *alike));
    }
}

}  // namespace

void NoteSlantedHoles(RunState& run, const Box3& part, std::span<const AcadCircle* const> slantedCircles) {
    std::vector<const AcadCircle*> noted;
    for (const AcadCircle* circle : slantedCircles) {
        if (std::ranges::any_of(noted, [&](const AcadCircle* other) { return OnOneAxis(*circle, *other); }))
            continue;
        noted.push_back(circle);
        NoteUnexplained(run, part, Kind, circle->Diameter(), circle->Center(),
                        AroundAxis(part, circle->Center(), circle->Normal(), circle->Radius()));
    }
    NoteThroughHoles(run, part);
}

}  // namespace brenvik

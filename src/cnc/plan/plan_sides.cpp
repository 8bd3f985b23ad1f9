// Vertices and bulges, and the way that an entity faces.
#include "cnc/plan/plan_sides.h"

namespace brenvik {

std::vector<PlanSide> SidesOf(const AcadLWPolyline& polyline) {
    const std::vector<double> at = polyline.Coordinates();
    // A polyline that looks down has its own X run the other way.
    const double turn = polyline.Normal().z < 0 ? -1 : 1;
    const std::size_t count = at.size() / 2;
    std::vector<PlanSide> sides;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t next = (i + 1) % count;
        sides.push_back({{turn * at[2 * i], at[2 * i + 1]},
                         {turn * at[2 * next], at[2 * next + 1]},
                         turn * polyline.GetBulge(static_cast<int>(i))});
    }
    return sides;
}

std::vector<PlanSide> SidesOf(const AcadCircle& circle) {
    const Point3 center = circle.Center();
    const PlanPoint left{center.x - circle.Radius(), center.y}, right{center.x + circle.Radius(), center.y};
    return {{left, right, 1}, {right, left, 1}};
}

}  // namespace brenvik

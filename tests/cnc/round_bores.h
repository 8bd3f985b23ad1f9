// Boards with bores of several diameters on one upright axis, and the circles that their rims leave behind.
#pragma once

#include <algorithm>
#include <compare>
#include <ostream>
#include <random>
#include <vector>

#include "cnc/cnc_fixture.h"
#include "cnc/sorting/circle_sorting.h"
#include "cnc/sorting/circular_routes.h"

namespace brenvik {

/// Diameters from the underside up, a layer of `StepHeight` each; 0 is material.
using Bore = std::vector<double>;
inline constexpr double StepHeight = 10;

struct RimOf {
    double diameter = 0, z = 0;
    friend auto operator<=>(const RimOf&, const RimOf&) = default;
    friend std::ostream& operator<<(std::ostream& out, const RimOf& rim) {
        return out << rim.diameter << " at " << rim.z;
    }
};

inline std::vector<RimOf> Sorted(std::vector<RimOf> rims) {
    std::ranges::sort(rims);
    return rims;
}

/// The circles in which the walls of a bore end, from the underside up.
inline std::vector<RimOf> RimsOf(const Bore& bore) {
    std::vector<RimOf> rims;
    for (std::size_t level = 0; level <= bore.size(); ++level) {
        const double below = level == 0 ? 0 : bore[level - 1];
        const double above = level == bore.size() ? 0 : bore[level];
        if (below == above) continue;
        const double z = StepHeight * static_cast<double>(level);
        if (below > 0) rims.push_back({below, z});
        if (above > 0) rims.push_back({above, z});
    }
    return rims;
}

class RoundBoreTest : public CncTest {
  protected:
    /// The board with the bore at 100,100.
    Acad3DSolid& BoardWith(const Bore& bore) {
        const double thickness = StepHeight * static_cast<double>(bore.size());
        app::Workpiece board = Board(200, 200, thickness);
        for (std::size_t level = 0; level < bore.size(); ++level)
            if (bore[level] > 0)
                board.Drill({100, 100, StepHeight * static_cast<double>(level + 1)}, app::Axis::Z,
                            -StepHeight, bore[level]);
        return board.Solid();
    }

    AcadCircle& Circle(const Point3& center, double diameter, std::string_view layer = layers::CircleHold,
                       const Point3& normal = {0, 0, 1}) {
        AddLayer(document, layer);
        AcadCircle& circle = *document.ModelSpace().AddCircle(center, diameter / 2);
        circle.SetNormal(normal);
        circle.SetLayer(layer);
        return circle;
    }

    /// Sorts what stands in the drawing.
    PassOutcome Sort(RunState& run) {
        const Acad3DSolid& solid = LastSolid(document);
        const Box3 part = solid.GetBoundingBox();
        run.part.PartThickness = part.max.z - part.min.z;
        run.part.PartBottomZ = part.min.z;
        run.part.PartVolume = solid.Volume();
        SortCircles(run, part);
        return SortCircularRoutes(run, part);
    }

    /// A pass over a board whose circles stand in the drawing in this order.
    PassOutcome SortBore(RunState& run, const Bore& bore, const std::vector<RimOf>& rims) {
        Clear();
        BoardWith(bore);
        for (const RimOf& rim : rims) Circle({100, 100, rim.z}, rim.diameter);
        return Sort(run);
    }
    PassOutcome SortBore(RunState& run, const Bore& bore) { return SortBore(run, bore, RimsOf(bore)); }

    void Clear() {
        for (AcadEntity* entity : All<AcadEntity>(document)) entity->Delete();
    }

    std::vector<RimOf> On(std::string_view layer) {
        std::vector<RimOf> found;
        for (const AcadCircle* circle : AllOn<AcadCircle>(document, layer))
            found.push_back({circle->Diameter(), circle->Center().z});
        return found;
    }
    std::vector<RimOf> Through() { return On(layers::ThroughRouteCirclePv); }
    std::vector<RimOf> Pockets() { return On(layers::RouteCirclePv); }
};

}  // namespace brenvik

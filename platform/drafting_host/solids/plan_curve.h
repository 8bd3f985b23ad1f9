// Straight and round edges seen from above: where they cross, and what lies inside a ring of them.
#pragma once

#include <TopoDS_Edge.hxx>
#include <optional>
#include <span>
#include <vector>

namespace brenvik::solids {

struct PlanPoint {
    double x = 0, y = 0;
};

/// An edge in plan. A straight one runs from `start` to `end`, a round one counter-clockwise over `sweep`
/// radians from `from`. An upright straight edge is a single point.
struct PlanCurve {
    bool round = false;
    PlanPoint start, end;
    PlanPoint center;
    double radius = 0, from = 0, sweep = 0;
    double lowZ = 0, highZ = 0;
    PlanPoint low, high;  ///< Its box in plan.

    /// By its share of the way, from 0 to 1.
    PlanPoint At(double share) const;
    bool Upright() const;
};

/// Null for an edge that is neither straight nor round in a level plane.
std::optional<PlanCurve> SeenFromAbove(const TopoDS_Edge& edge);

/// Whether the point lies inside the ring by the rule of even and odd; no number where it lies too close to
/// the ray's trouble spots, such as a corner at its own height.
std::optional<bool> Inside(std::span<const PlanCurve> ring, const PlanPoint& point);

double DistanceTo(std::span<const PlanCurve> ring, const PlanPoint& point);

/// A point well inside the ring; null if none is found.
std::optional<PlanPoint> PointInside(std::span<const PlanCurve> ring);

/// True if some part of the curve runs inside the ring, further than `film` from its boundary. Also true if
/// that can't be decided.
bool Enters(const PlanCurve& curve, std::span<const PlanCurve> ring, double film);

}  // namespace brenvik::solids

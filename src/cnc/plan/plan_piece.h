// A side of a contour as a graph over X: what a sweep across the plan works with.
#pragma once

#include <span>
#include <vector>

#include "session/ports/section_port.h"

namespace brenvik {

/// A stretch of a side that runs one way in X: straight, or the upper or lower half of a circle.
struct PlanPiece {
    double x0 = 0, x1 = 0;  ///< Ascending.
    int way = 1;            ///< 1 where the side runs towards higher X, else -1.
    double y0 = 0, y1 = 0;  ///< At the two ends.
    double centerX = 0, centerY = 0, radius = 0;
    int half = 0;  ///< 0 straight, 1 the upper half of the circle, -1 the lower.

    double At(double x) const;  ///< Its Y there; beyond the ends of a straight one, that of the end.
    /// Of a point from the whole line or circle that the piece is of.
    double Distance(double x, double y) const;
    /// What lies below it, down to the X axis.
    double AreaBelow(double from, double to) const;
    double Lowest(double from, double to) const;
    double Highest(double from, double to) const;
};

/// The pieces of a side; an upright one has none. `stray` is what a round side may differ from its chord to
/// count as straight.
void AddPieces(const PlanSide& side, double stray, std::vector<PlanPiece>& pieces);

/// Where two pieces cross, in X. Points where they only touch may be missing.
void AddCrossings(const PlanPiece& a, const PlanPiece& b, std::vector<double>& places);

/// The circle of a round side.
struct PlanRound {
    PlanPoint center;
    double radius = 0;
    double sweep = 0;  ///< Of the side; positive for counter-clockwise.
};
/// The circle of a side, which has to be round.
PlanRound RoundOf(const PlanSide& side);

/// The straight sides of a closed path by its corners.
std::vector<PlanSide> SidesAround(const std::vector<PlanPoint>& corners);

/// The area that the sides enclose, positive when they run counter-clockwise.
double SignedArea(std::span<const PlanSide> sides);

}  // namespace brenvik

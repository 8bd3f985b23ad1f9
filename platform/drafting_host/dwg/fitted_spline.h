// Splines that a binary drawing holds as the points through which they run: their control points are
// reckoned.
#pragma once

#include "drafting_host/dxf/data/drawing_data.h"

namespace brenvik::dwg {

/// How parameters are given to the points of a spline, by the file's numbers.
enum class KnotKind { Chord = 0, SquareRoot = 1, Uniform = 2, Own = 15 };

/// What stands beside the points.
struct FitEnds {
    Point3 start, end;  ///< Derivatives at the ends; a zero one leaves its end free (without curvature).
    KnotKind kind = KnotKind::Chord;
    bool isClosed = false;
};

/// Gives a spline its knots and control points, so that it runs through its fit points as a cubic with steady
/// curvature, and takes the fit points away. False, and nothing changed, where that isn't settled by the
/// file: closed ones, points that coincide, knots of a kind of their own.
bool FitThroughPoints(SplineData& spline, const FitEnds& ends);

/// Sets the flags for a plane and a straight spline, and the normal of the plane.
void MarkFlatness(SplineData& spline);

}  // namespace brenvik::dwg

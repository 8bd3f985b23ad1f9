// B-splines as ACIS records hold them: the numbers behind the words nubs and nurbs. Knots stand with one
// repetition less at both ends than the modeller counts.
#pragma once

#include "drafting_host/acis/sat_records.h"

#include <gp_XY.hxx>
#include <gp_XYZ.hxx>

#include <string>
#include <vector>

namespace brenvik::acis {

/// Knot values in rising order, each with its repetitions as the record counts them.
struct SplineKnots {
    int degree = 0;
    std::vector<double> values;
    std::vector<int> repetitions;

    /// Poles along these knots.
    std::size_t PoleCount() const;
};

/// A curve in space; `weights` is empty where the spline is not rational.
struct SplineCurveRecord {
    SplineKnots knots;
    std::vector<gp_XYZ> poles;
    std::vector<double> weights;
    bool reversed = false;  ///< The curve runs against its spline.
};

/// A curve in the parameters of a surface.
struct PlaneSplineRecord {
    SplineKnots knots;
    std::vector<gp_XY> poles;
    std::vector<double> weights;
};

/// A surface; poles and weights run along u first.
struct SplineSurfaceRecord {
    SplineKnots u, v;
    std::vector<gp_XYZ> poles;
    std::vector<double> weights;
    bool reversed = false;  ///< The outside is the side that the parameters turn away from.
};

/// Each reads a spline from the word nubs or nurbs on. Throws BadRecord for damaged numbers and for splines
/// that the modeller cannot hold.
SplineCurveRecord ReadSplineCurve(FieldCursor& fields, long record);
PlaneSplineRecord ReadPlaneSpline(FieldCursor& fields, long record);
SplineSurfaceRecord ReadSplineSurface(FieldCursor& fields, long record);

/// The whole records of version 400, over several lines. A pcurve names its surface by the number that the
/// surface's braces have in the text, which is known only when the whole text is: `{ ref ? }` stands there.
std::string SplineCurveText(const SplineCurveRecord& curve);
std::string SplineSurfaceText(const SplineSurfaceRecord& surface);
std::string PcurveText(const PlaneSplineRecord& curve, double misfit);

/// A number in the fewest digits that give it back to the last bit. Throws WriteFailure if it isn't finite.
std::string NumberText(double value);

}  // namespace brenvik::acis

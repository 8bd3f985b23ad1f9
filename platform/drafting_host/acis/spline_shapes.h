// B-splines between the records and the modeller, exact both ways wherever the modeller can: free curves
// and surfaces of any kind become splines, with the parameters they had.
#pragma once

#include "drafting_host/acis/geometry.h"
#include "drafting_host/acis/spline_records.h"

#include <Geom2d_BSplineCurve.hxx>
#include <Geom2d_Curve.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_BSplineSurface.hxx>

#include <optional>

namespace brenvik::acis {

/// Placed splines of records. Throw BadRecord, or the modeller's failure for numbers that it refuses.
Handle(Geom_BSplineSurface) MakeSplineSurface(const SplineSurfaceRecord& surface, const Placement& placement);
Handle(Geom2d_BSplineCurve) MakePlaneSpline(const PlaneSplineRecord& curve);

/// A free curve along an edge that runs from start to end, the whole turn when `closed`. Throws BadRecord
/// where the vertices do not lie on it.
EdgeCurve SplineEdge(const SplineCurveRecord& curve, bool reversed, const gp_Pnt& start, const gp_Pnt& end,
                     bool closed, const Placement& placement, long record);

/// The part of a curve between two parameters. Empty where the modeller cannot make a spline of it.
std::optional<SplineCurveRecord> SplineOf(const Handle(Geom_Curve) & curve, double first, double last);

/// The part of a surface within bounds of its parameters, which are those of the spline too. Surfaces that
/// are no splines in their own parameters, such as a turned profile, are met within 1e-8. Empty where the
/// modeller cannot make a spline of it.
std::optional<SplineSurfaceRecord> SplineOf(const Handle(Geom_Surface) & surface, double u1, double u2,
                                            double v1, double v2);

/// The part of a curve in the parameters of a surface, backwards when `reversed`: its parameters then run
/// from -last to -first.
std::optional<PlaneSplineRecord> SplineOf(const Handle(Geom2d_Curve) & curve, double first, double last,
                                          bool reversed);

}  // namespace brenvik::acis

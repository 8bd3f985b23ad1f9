// Between the drawing's analytic curves and the modeller's edges.
#pragma once

#include <TopoDS_Edge.hxx>
#include <optional>
#include <vector>

#include "drafting_host/document/geometry/host_geometry.h"

namespace brenvik {

// The edge of a curve, ends in the curve's own direction. Null for data that make no curve (no
// length, no radius, knots that do not fit).
std::optional<TopoDS_Edge> EdgeOf(const LineData& data);
std::optional<TopoDS_Edge> EdgeOf(const ArcData& data);
std::optional<TopoDS_Edge> EdgeOf(const CircleData& data);
std::optional<TopoDS_Edge> EdgeOf(const EllipseData& data);
std::optional<TopoDS_Edge> EdgeOf(const SplineData& data);

/// The edges that a curve or polyline is made of; none for everything else.
std::vector<TopoDS_Edge> EdgesOf(const HostGeometry& geometry);

/// The line, arc, circle, ellipse or spline that an edge lies on, `normal` for its normal where the
/// curve allows it: a round curve's normal is its axis, on the side of `normal`. Null for an edge
/// without a curve, such as the tip of a cone.
std::optional<HostGeometry> CurveOf(const TopoDS_Edge& edge, const Point3& normal);

/// A unit direction with what turning a part has left beside a world axis (less than 1e-10) taken out.
Point3 Squared(const Point3& direction);

}  // namespace brenvik

// Laying curves onto a plane: lines by their ends, round curves by their conjugate radii, splines by their
// control points.
#include "drafting_host/document/geometry/flat_curves.h"

#include <algorithm>

#include "drafting_host/document/geometry/vectors.h"

namespace brenvik {

using namespace vectors;

namespace {

/// Shorter images are those of lines along the line of sight, which turning a part has left a trace askew.
constexpr double Shortest = 1e-9;
/// Sine of the angle below which two directions are one.
constexpr double SameDirection = 1e-9;

Point3 FlatVector(const Point3& vector, const SightPlane& plane) {
    return Flattened(vector, {{}, plane.towardsEye});
}

std::optional<HostGeometry> FlatLine(const Point3& start, const Point3& end, const SightPlane& plane) {
    const LineData line{Flattened(start, plane), Flattened(end, plane), 0, plane.towardsEye};
    if (Distance(line.start, line.end) < Shortest) return std::nullopt;
    return line;
}

/// A round curve by its centre and two conjugate radii: center + u cos t + v sin t.
struct Round {
    Point3 center, u, v;
    double start = 0, end = FullTurn;

    bool Whole() const { return end - start >= FullTurn - 1e-12; }
    Point3 At(double t) const {
        const auto [sine, cosine] = OfAngle(t);
        return center + u * cosine + v * sine;
    }
};

/// The stretch of a line that a round curve covers when it is seen from its edge.
std::optional<HostGeometry> FromEdge(const Round& round, const SightPlane& plane) {
    const Point3 along = Unit(Length(round.u) >= Length(round.v) ? round.u : round.v);
    const double peak = std::atan2(Dot(round.v, along), Dot(round.u, along));
    std::vector<Point3> ends;
    if (!round.Whole()) ends = {round.At(round.start), round.At(round.end)};
    for (const double t : {peak, peak + FullTurn / 2})
        if (round.Whole() || InSpan(t, round.start, round.end)) ends.push_back(round.At(t));
    const auto nearer = [&](const Point3& a, const Point3& b) { return Dot(a, along) < Dot(b, along); };
    const auto [low, high] = std::ranges::minmax_element(ends, nearer);
    return FlatLine(*low, *high, plane);
}

std::optional<HostGeometry> Oval(const Round& round, const SightPlane& plane) {
    // The axes stand where the distance from the centre peaks.
    const Point3 &u = round.u, &v = round.v;
    const double turn = std::atan2(2 * Dot(u, v), Dot(u, u) - Dot(v, v)) / 2;
    const auto [sine, cosine] = OfAngle(turn);
    EllipseData result;
    result.center = round.center;
    result.majorAxis = u * cosine + v * sine;
    const Point3 minor = v * cosine - u * sine;
    result.normal = plane.towardsEye;
    result.ratio = std::min(1.0, Length(minor) / Length(result.majorAxis));
    const bool against = Dot(Cross(result.majorAxis, minor), plane.towardsEye) < 0;
    if (round.Whole()) return result;
    const double span = round.end - round.start;
    result.startParameter = NormalAngle(against ? turn - round.end : round.start - turn);
    result.endParameter = result.startParameter + span;
    return result;
}

std::optional<HostGeometry> FlatRound(Round round, const SightPlane& plane) {
    round.center = Flattened(round.center, plane);
    round.u = FlatVector(round.u, plane);
    round.v = FlatVector(round.v, plane);
    const double longer = std::max(Length(round.u), Length(round.v));
    if (longer < Shortest) return std::nullopt;
    const bool fromEdge = Length(Cross(round.u, round.v)) < SameDirection * longer * longer;
    return fromEdge ? FromEdge(round, plane) : Oval(round, plane);
}

bool SquareTo(const Point3& normal, const SightPlane& plane) {
    return Length(Cross(Unit(normal), plane.towardsEye)) < SameDirection;
}

std::optional<HostGeometry> FlatArc(const ArcData& arc, const SightPlane& plane) {
    if (SquareTo(arc.normal, plane)) {
        ArcData flat = arc;
        flat.center = Flattened(arc.center, plane);
        flat.thickness = 0;
        flat.normal = plane.towardsEye;
        if (Dot(arc.normal, plane.towardsEye) < 0) {
            // Seen from behind, the plane's X axis points the other way and the arc runs backwards.
            flat.startAngle = NormalAngle(FullTurn / 2 - arc.endAngle);
            flat.endAngle = NormalAngle(FullTurn / 2 - arc.startAngle);
        }
        return flat;
    }
    const Axes axes = ObjectAxes(arc.normal);
    double span = NormalAngle(arc.endAngle - arc.startAngle);
    if (span == 0) span = FullTurn;
    return FlatRound(
        {arc.center, axes.x * arc.radius, axes.y * arc.radius, arc.startAngle, arc.startAngle + span}, plane);
}

std::optional<HostGeometry> FlatCircle(const CircleData& circle, const SightPlane& plane) {
    if (SquareTo(circle.normal, plane))
        return CircleData{Flattened(circle.center, plane), circle.radius, 0, plane.towardsEye};
    const Axes axes = ObjectAxes(circle.normal);
    return FlatRound({circle.center, axes.x * circle.radius, axes.y * circle.radius}, plane);
}

std::optional<HostGeometry> FlatEllipse(const EllipseData& ellipse, const SightPlane& plane) {
    Round round{ellipse.center, ellipse.majorAxis,
                Cross(Unit(ellipse.normal), ellipse.majorAxis) * ellipse.ratio};
    double span = ellipse.endParameter - ellipse.startParameter;
    if (std::abs(span) < FullTurn - 1e-12) {
        span = NormalAngle(span);
        round.start = ellipse.startParameter;
        round.end = ellipse.startParameter + (span == 0 ? FullTurn : span);
    }
    return FlatRound(round, plane);
}

std::optional<HostGeometry> FlatSpline(SplineData spline, const SightPlane& plane) {
    for (Point3& point : spline.controlPoints) point = Flattened(point, plane);
    for (Point3& point : spline.fitPoints) point = Flattened(point, plane);
    spline.normal = plane.towardsEye;
    if (spline.controlPoints.empty()) return std::nullopt;
    const Point3 &first = spline.controlPoints.front(), &last = spline.controlPoints.back();
    const bool onePoint = std::ranges::all_of(
        spline.controlPoints, [&](const Point3& point) { return Distance(point, first) < Shortest; });
    if (onePoint) return std::nullopt;
    const bool straight = std::ranges::all_of(spline.controlPoints, [&](const Point3& point) {
        const Point3 way = last - first;
        return Length(Cross(way, point - first)) <= SameDirection * Dot(way, way) &&
               Dot(point - first, way) >= 0 && Dot(point - last, way) <= 0;
    });
    if (straight) return FlatLine(first, last, plane);
    return spline;
}

}  // namespace

Point3 Flattened(const Point3& point, const SightPlane& plane) {
    const Point3 &eye = plane.towardsEye, &origin = plane.origin;
    if (eye.x == 0 && eye.y == 0) return {point.x, point.y, origin.z};
    if (eye.x == 0 && eye.z == 0) return {point.x, origin.y, point.z};
    if (eye.y == 0 && eye.z == 0) return {origin.x, point.y, point.z};
    return point - eye * Dot(point - origin, eye);
}

std::optional<HostGeometry> Flattened(const HostGeometry& curve, const SightPlane& plane) {
    if (const auto* line = std::get_if<LineData>(&curve)) return FlatLine(line->start, line->end, plane);
    if (const auto* arc = std::get_if<ArcData>(&curve)) return FlatArc(*arc, plane);
    if (const auto* circle = std::get_if<CircleData>(&curve)) return FlatCircle(*circle, plane);
    if (const auto* ellipse = std::get_if<EllipseData>(&curve)) return FlatEllipse(*ellipse, plane);
    if (const auto* spline = std::get_if<SplineData>(&curve)) return FlatSpline(*spline, plane);
    return std::nullopt;
}

}  // namespace brenvik

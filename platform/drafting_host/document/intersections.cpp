// Common points of straight and round curves, anywhere in space.
#include "drafting_host/document/intersections.h"

#include <optional>

#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/document/host_entity.h"

namespace brenvik {

using namespace vectors;

namespace {

/// A straight or round curve, and whether it goes on beyond its ends.
struct Curve {
    PolylinePiece piece;
    bool endless = false;
};

std::vector<Curve> CurvesOf(const HostEntity& entity, bool extend) {
    const HostGeometry geometry = entity.Geometry();
    std::vector<Curve> result;
    if (const auto* line = std::get_if<LineData>(&geometry)) result.push_back({*line, extend});
    if (const auto* arc = std::get_if<ArcData>(&geometry)) result.push_back({*arc, extend});
    if (const auto* circle = std::get_if<CircleData>(&geometry))
        result.push_back({ArcData{circle->center, circle->radius, 0, 0, 0, circle->normal}, true});
    const auto take = [&](const std::vector<PolylinePiece>& pieces) {
        for (const PolylinePiece& piece : pieces) result.push_back({piece, false});
    };
    if (const auto* polyline = std::get_if<LWPolylineData>(&geometry)) take(PiecesOf(*polyline));
    if (const auto* polyline = std::get_if<PolylineData>(&geometry)) take(PiecesOf(*polyline));
    return result;
}

bool OnCurve(const Curve& curve, const Point3& p) {
    if (const auto* line = std::get_if<LineData>(&curve.piece)) {
        const Point3 along = Unit(line->end - line->start);
        const double at = Dot(p - line->start, along);
        if (Length(p - line->start - along * at) > PointTolerance) return false;
        return curve.endless ||
               (at >= -PointTolerance && at <= Distance(line->start, line->end) + PointTolerance);
    }
    const auto& arc = std::get<ArcData>(curve.piece);
    const Axes axes = ObjectAxes(arc.normal);
    const Point3 local = FromWorld(axes, p - arc.center);
    if (std::abs(local.z) > PointTolerance) return false;
    if (std::abs(std::hypot(local.x, local.y) - arc.radius) > PointTolerance) return false;
    const double slack = PointTolerance / std::max(arc.radius, PointTolerance);
    return curve.endless || InSpan(std::atan2(local.y, local.x), arc.startAngle, arc.endAngle, slack);
}

/// Points of the endless line through `origin` (unit direction) that lie on the endless circle.
std::vector<Point3> LineMeetsCircle(const Point3& origin, const Point3& along, const ArcData& arc) {
    const Point3 normal = Unit(arc.normal);
    const double slope = Dot(along, normal), height = Dot(origin - arc.center, normal);
    if (std::abs(slope) > 1e-12) return {origin - along * (height / slope)};
    if (std::abs(height) > PointTolerance) return {};
    const Point3 middle = origin + along * Dot(arc.center - origin, along);
    const double off = Distance(middle, arc.center);
    const double square = arc.radius * arc.radius - off * off;
    // A line that touches within the tolerance of points has one point, not two close ones.
    if (off > arc.radius - PointTolerance * PointTolerance / 2)
        return off <= arc.radius + PointTolerance ? std::vector{middle} : std::vector<Point3>{};
    const double half = std::sqrt(square);
    return {middle - along * half, middle + along * half};
}

std::vector<Point3> Meet(const LineData& a, const LineData& b) {
    const Point3 u = Unit(a.end - a.start), v = Unit(b.end - b.start), n = Cross(u, v);
    const double square = Dot(n, n);
    if (square < 1e-20) return {};
    const Point3 between = b.start - a.start;
    if (std::abs(Dot(between, n)) / std::sqrt(square) > PointTolerance) return {};
    return {a.start + u * (Dot(Cross(between, v), n) / square)};
}

std::vector<Point3> Meet(const LineData& a, const ArcData& b) {
    return LineMeetsCircle(a.start, Unit(a.end - a.start), b);
}

std::vector<Point3> Meet(const ArcData& a, const LineData& b) { return Meet(b, a); }

std::vector<Point3> Meet(const ArcData& a, const ArcData& b) {
    const Point3 n = Unit(a.normal), m = Unit(b.normal), cross = Cross(n, m);
    const Point3 between = b.center - a.center;
    if (Length(cross) > 1e-10) {
        // Two planes: what the circles share lies on the planes' common line.
        const Point3 along = Unit(cross), up = Cross(along, n);
        const Point3 origin = a.center + up * (Dot(between, m) / Dot(up, m));
        return LineMeetsCircle(origin, along, a);
    }
    if (std::abs(Dot(between, n)) > PointTolerance) return {};
    const double distance = Length(between);
    if (distance < PointTolerance) return {};
    const double along = (distance * distance + a.radius * a.radius - b.radius * b.radius) / (2 * distance);
    const Point3 direction = Unit(between);
    return LineMeetsCircle(a.center + direction * along, Cross(n, direction), a);
}

double PlaceAlong(const Curve& curve, const Point3& p) {
    if (const auto* line = std::get_if<LineData>(&curve.piece))
        return Dot(p - line->start, line->end - line->start);
    const auto& arc = std::get<ArcData>(curve.piece);
    const Point3 local = FromWorld(ObjectAxes(arc.normal), p - arc.center);
    return NormalAngle(std::atan2(local.y, local.x) - arc.startAngle);
}

std::vector<Curve> RequiredCurves(const HostEntity& entity, const HostEntity& partner, bool extend) {
    std::vector<Curve> curves = CurvesOf(entity, extend);
    if (curves.empty()) {
        throw host_failure::NotPossible("intersections of " + std::string(entity.ObjectName()) + " and " +
                                        std::string(partner.ObjectName()) +
                                        " are not known, only those of lines, arcs, circles and polylines");
    }
    return curves;
}

}  // namespace

std::vector<Point3> Intersections(const HostEntity& one, const HostEntity& other, ExtendOption option) {
    const bool extendOne = option == ExtendOption::This || option == ExtendOption::Both;
    const bool extendOther = option == ExtendOption::Other || option == ExtendOption::Both;
    const std::vector<Curve> mine = RequiredCurves(one, other, extendOne);
    const std::vector<Curve> theirs = RequiredCurves(other, one, extendOther);
    std::vector<Point3> result;
    for (const Curve& a : mine) {
        std::vector<Point3> onThis;
        for (const Curve& b : theirs) {
            const auto meet = [](const auto& x, const auto& y) { return Meet(x, y); };
            for (const Point3& p : std::visit(meet, a.piece, b.piece))
                if (OnCurve(a, p) && OnCurve(b, p)) onThis.push_back(p);
        }
        std::sort(onThis.begin(), onThis.end(),
                  [&](const Point3& p, const Point3& q) { return PlaceAlong(a, p) < PlaceAlong(a, q); });
        for (const Point3& p : onThis) {
            const bool known = std::any_of(result.begin(), result.end(),
                                           [&](const Point3& q) { return Distance(p, q) <= PointTolerance; });
            if (!known) result.push_back(p);
        }
    }
    return result;
}

}  // namespace brenvik

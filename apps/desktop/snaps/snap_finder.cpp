// Candidates near the place, the nearest that can be seen first.
#include "snaps/snap_finder.h"

#include <BRepExtrema_DistShapeShape.hxx>
#include <BRep_Tool.hxx>
#include <GeomAPI_ProjectPointOnCurve.hxx>
#include <Standard_Failure.hxx>
#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

#include "drafting_host/document/geometry/modeller_points.h"

namespace brenvik::desktop {

using namespace vectors;

namespace {

/// A face so little in front of a point doesn't hide it: it is the one on which the point lies.
constexpr double Clearance = 1e-4;
/// Edges that are looked at closely, the nearest ones: far away, a whole kitchen lies within reach.
constexpr std::size_t MostEdges = 10;

/// Where two straight edges meet.
void CrossStraight(const SnapEdge& one, const SnapEdge& other, std::vector<Point3>& met) {
    const Point3 a = one.course[1] - one.course[0], b = other.course[1] - other.course[0];
    const Point3 between = other.course[0] - one.course[0];
    const Point3 normal = Cross(a, b);
    const double square = Dot(normal, normal);
    // Edges along each other have no one point in common.
    if (square <= 1e-12 * Dot(a, a) * Dot(b, b)) return;
    const double along = Dot(Cross(between, b), normal) / square;
    const double alongOther = Dot(Cross(between, a), normal) / square;
    const double slack = PointTolerance / Length(a), otherSlack = PointTolerance / Length(b);
    if (along < -slack || along > 1 + slack || alongOther < -otherSlack || alongOther > 1 + otherSlack)
        return;
    const Point3 point = one.course[0] + a * along;
    if (Distance(point, other.course[0] + b * alongOther) <= PointTolerance) met.push_back(point);
}

std::vector<Point3> Crossings(const SnapEdge& one, const SnapEdge& other) {
    std::vector<Point3> met;
    if (one.straight && other.straight) {
        CrossStraight(one, other, met);
        return met;
    }
    try {
        const BRepExtrema_DistShapeShape nearest(one.edge, other.edge);
        if (nearest.IsDone() && nearest.Value() <= PointTolerance)
            for (int i = 1; i <= nearest.NbSolution(); ++i)
                met.push_back(FromModeller(nearest.PointOnShape1(i)));
    } catch (const Standard_Failure&) {
        // What the modeller can't compare offers no intersection.
    }
    return met;
}

/// The world axis that a direction is nearest to. Of equal ones the later: in the isometric views the floor
/// is where things stand.
Point3 NearestAxis(const Point3& direction) {
    constexpr double even = 1e-9;
    const double x = std::abs(direction.x), y = std::abs(direction.y), z = std::abs(direction.z);
    if (z >= std::max(x, y) - even) return {0, 0, 1};
    if (y >= x - even) return {0, 1, 0};
    return {1, 0, 0};
}

std::vector<Point3> FeetOn(const SnapEdge& edge, const Point3& base) {
    std::vector<Point3> feet;
    if (edge.straight) {
        const Point3 along = edge.course[1] - edge.course[0];
        const double share = Dot(base - edge.course[0], along) / Dot(along, along);
        if (share >= 0 && share <= 1) feet.push_back(edge.course[0] + along * share);
        return feet;
    }
    try {
        double from = 0, to = 0;
        const opencascade::handle<Geom_Curve> curve = BRep_Tool::Curve(edge.edge, from, to);
        if (curve.IsNull()) return feet;
        const GeomAPI_ProjectPointOnCurve projection({base.x, base.y, base.z}, curve, from, to);
        for (int i = 1; i <= projection.NbPoints(); ++i) feet.push_back(FromModeller(projection.Point(i)));
    } catch (const Standard_Failure&) {
        // What the modeller can't project to offers no foot.
    }
    return feet;
}

}  // namespace

std::string_view WordsOf(SnapKind kind) {
    switch (kind) {
        case SnapKind::End:
            return "End point";
        case SnapKind::Middle:
            return "Middle";
        case SnapKind::Centre:
            return "Centre";
        case SnapKind::Intersection:
            return "Intersection";
        case SnapKind::Perpendicular:
            return "Perpendicular";
        case SnapKind::Face:
            return "On a face";
        case SnapKind::Free:
            return "Free point";
    }
    return {};
}

struct SnapFinder::NearEdge {
    const SnapEdge* edge;
    double distance;
    Point3 nearest;  ///< Of its course.
};

struct SnapFinder::Candidate {
    Snap snap;
    double distance;
    double nearness;
    Point3 seen;  ///< What must not be hidden.

    /// Half a pixel and a thousandth of a unit are no difference, or rounding would choose.
    auto Rank() const {
        return std::tuple(std::lround(distance * 2), -std::llround(nearness * 1000), snap.kind);
    }
};

void SnapFinder::SetBodies(const std::vector<TopoDS_Shape>& shapes) {
    std::vector<SnapBody> before = std::exchange(mBodies, {});
    for (const TopoDS_Shape& shape : shapes) {
        const auto known =
            std::ranges::find_if(before, [&](const SnapBody& body) { return body.Shape().IsSame(shape); });
        if (known == before.end()) {
            mBodies.emplace_back(shape);
            continue;
        }
        mBodies.push_back(std::move(*known));
        before.erase(known);
    }
}

std::vector<const SnapBody*> SnapFinder::BodiesAt(const Sight& sight, const ScreenPlace& place,
                                                  double reach) const {
    std::vector<const SnapBody*> found;
    for (const SnapBody& body : mBodies)
        if (body.MayShowAt(sight, place, reach)) found.push_back(&body);
    return found;
}

bool SnapFinder::Hidden(const Sight& sight, const Point3& point) const {
    for (const SnapBody* body : BodiesAt(sight, sight.PlaceOf(point), 1))
        if (body->NearestFace(point, sight.axes.z).value_or(0) > Clearance) return true;
    return false;
}

std::optional<Snap> SnapFinder::FindPoint(const Sight& sight, const ScreenPlace& place,
                                          const SnapWishes& wishes) const {
    std::vector<Candidate> candidates;
    const auto offer = [&](SnapKind kind, const Point3& point) {
        const double distance = Apart(place, sight.PlaceOf(point));
        if (distance <= wishes.reach)
            candidates.push_back({{kind, point}, distance, sight.NearnessOf(point), point});
    };
    std::vector<NearEdge> near;
    for (const SnapBody* body : BodiesAt(sight, place, wishes.reach)) {
        for (const Snap& point : body->Points()) offer(point.kind, point.point);
        for (const SnapEdge& edge : body->Edges())
            if (auto found = NearestOf(edge, sight, place); found.distance <= wishes.reach)
                near.push_back(found);
    }
    std::ranges::sort(near, {}, &NearEdge::distance);
    near.resize(std::min(near.size(), MostEdges));
    for (std::size_t i = 0; i < near.size(); ++i) {
        const SnapEdge& edge = *near[i].edge;
        for (std::size_t other = 0; other < i; ++other)
            for (const Point3& point : Crossings(edge, *near[other].edge))
                offer(SnapKind::Intersection, point);
        if (wishes.base)
            for (const Point3& foot : FeetOn(edge, *wishes.base)) offer(SnapKind::Perpendicular, foot);
        // A hole's rim shows its centre, though behind whatever lies nearer.
        if (edge.centre)
            candidates.push_back({{SnapKind::Centre, *edge.centre},
                                  near[i].distance + wishes.reach + 1,
                                  sight.NearnessOf(near[i].nearest),
                                  near[i].nearest});
    }
    std::ranges::stable_sort(candidates, {}, &Candidate::Rank);
    for (const Candidate& candidate : candidates)
        if (wishes.seeThrough || !Hidden(sight, candidate.seen)) return candidate.snap;
    return std::nullopt;
}

SnapFinder::NearEdge SnapFinder::NearestOf(const SnapEdge& edge, const Sight& sight,
                                           const ScreenPlace& place) {
    NearEdge found{&edge, std::numeric_limits<double>::infinity(), edge.course.front()};
    for (std::size_t i = 1; i < edge.course.size(); ++i) {
        const double distance =
            DistanceToLine(place, sight.PlaceOf(edge.course[i - 1]), sight.PlaceOf(edge.course[i]));
        if (distance < found.distance) found = {&edge, distance, edge.course[i]};
    }
    return found;
}

std::optional<Snap> SnapFinder::FindFace(const Sight& sight, const ScreenPlace& place) const {
    const Point3 from = sight.PointAt(place);
    std::optional<double> nearest;
    for (const SnapBody* body : BodiesAt(sight, place, 1))
        if (const std::optional<double> own = body->NearestFace(from, sight.axes.z))
            nearest = std::max(nearest.value_or(*own), *own);
    if (!nearest) return std::nullopt;
    return Snap{SnapKind::Face, from + sight.axes.z * *nearest};
}

Snap SnapFinder::Find(const Sight& sight, const ScreenPlace& place, const SnapWishes& wishes) const {
    if (wishes.snapping)
        if (const std::optional<Snap> point = FindPoint(sight, place, wishes)) return *point;
    if (const std::optional<Snap> face = FindFace(sight, place)) return *face;
    const Point3 from = sight.PointAt(place), through = wishes.base.value_or(Point3{});
    const Point3& eye = sight.axes.z;
    const Point3 normal = NearestAxis(eye);
    return {SnapKind::Free, from + eye * (Dot(through - from, normal) / Dot(eye, normal))};
}

}  // namespace brenvik::desktop

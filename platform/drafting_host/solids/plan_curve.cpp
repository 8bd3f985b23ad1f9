// Lines and circles in plan, by formula.
#include "drafting_host/solids/plan_curve.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRep_Tool.hxx>
#include <TopExp.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Vertex.hxx>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

#include "base/angles.h"

namespace brenvik::solids {
namespace {

constexpr double Level = 1e-9;

PlanPoint Plan(const gp_Pnt& point) { return {point.X(), point.Y()}; }
double Distance(const PlanPoint& a, const PlanPoint& b) { return std::hypot(a.x - b.x, a.y - b.y); }

/// How far along the arc a direction from its centre lies, 0 to 1; outside beyond.
double ShareOf(const PlanCurve& arc, const PlanPoint& point) {
    const double angle =
        WithinFullTurn(std::atan2(point.y - arc.center.y, point.x - arc.center.x) - arc.from);
    // Just before the beginning is the beginning, and not the far end of a turn.
    return (angle > FullTurn - 1e-12 ? angle - FullTurn : angle) / arc.sweep;
}

double ShareOnLine(const PlanCurve& line, const PlanPoint& point) {
    const double dx = line.end.x - line.start.x, dy = line.end.y - line.start.y;
    const double square = dx * dx + dy * dy;
    return square > 0 ? ((point.x - line.start.x) * dx + (point.y - line.start.y) * dy) / square : 0;
}

double ShareOn(const PlanCurve& curve, const PlanPoint& point) {
    return curve.round ? ShareOf(curve, point) : ShareOnLine(curve, point);
}

void SetBox(PlanCurve& curve) {
    const auto take = [&curve](const PlanPoint& point) {
        curve.low = {std::min(curve.low.x, point.x), std::min(curve.low.y, point.y)};
        curve.high = {std::max(curve.high.x, point.x), std::max(curve.high.y, point.y)};
    };
    curve.low = curve.high = curve.At(0);
    take(curve.At(1));
    if (!curve.round) return;
    for (int quarter = 0; quarter < 4; ++quarter) {
        const double angle = quarter * std::numbers::pi / 2;
        const PlanPoint extreme{curve.center.x + curve.radius * std::cos(angle),
                                curve.center.y + curve.radius * std::sin(angle)};
        const double share = ShareOf(curve, extreme);
        if (share >= 0 && share <= 1) take(extreme);
    }
}

/// Where the carrying lines and circles of two curves meet or come closest; a few points more do no harm.
void Meetings(const PlanCurve& a, const PlanCurve& b, std::vector<PlanPoint>& found) {
    if (a.round && b.round) {
        const double apart = Distance(a.center, b.center);
        if (apart < Level) return;
        const double along = (apart * apart + a.radius * a.radius - b.radius * b.radius) / (2 * apart);
        const double across = std::sqrt(std::max(0.0, a.radius * a.radius - along * along));
        const double ux = (b.center.x - a.center.x) / apart, uy = (b.center.y - a.center.y) / apart;
        for (const double side : {across, -across})
            found.push_back({a.center.x + ux * along - uy * side, a.center.y + uy * along + ux * side});
        return;
    }
    if (a.round != b.round) {
        const PlanCurve &line = a.round ? b : a, &arc = a.round ? a : b;
        const double length = Distance(line.start, line.end);
        if (length < Level) return;
        const double ux = (line.end.x - line.start.x) / length, uy = (line.end.y - line.start.y) / length;
        const double foot = (arc.center.x - line.start.x) * ux + (arc.center.y - line.start.y) * uy;
        const PlanPoint near{line.start.x + ux * foot, line.start.y + uy * foot};
        const double off = Distance(near, arc.center);
        const double half = std::sqrt(std::max(0.0, arc.radius * arc.radius - off * off));
        for (const double side : {half, -half}) found.push_back({near.x + ux * side, near.y + uy * side});
        return;
    }
    const double ax = a.end.x - a.start.x, ay = a.end.y - a.start.y;
    const double bx = b.end.x - b.start.x, by = b.end.y - b.start.y;
    const double cross = ax * by - ay * bx;
    if (std::abs(cross) < 1e-12 * std::hypot(ax, ay) * std::hypot(bx, by)) return;
    const double share = ((b.start.x - a.start.x) * by - (b.start.y - a.start.y) * bx) / cross;
    found.push_back({a.start.x + ax * share, a.start.y + ay * share});
}

/// Where the level line through a height crosses a curve. False where it runs through a trouble spot.
bool Crossings(const PlanCurve& curve, double y, std::vector<double>& found) {
    constexpr double clear = 1e-6;
    if (y < curve.low.y - clear || y > curve.high.y + clear) return true;
    if (std::abs(curve.At(0).y - y) < clear || std::abs(curve.At(1).y - y) < clear) return false;
    if (!curve.round) {
        const double share = (y - curve.start.y) / (curve.end.y - curve.start.y);
        if (share > 0 && share < 1) found.push_back(curve.start.x + share * (curve.end.x - curve.start.x));
        return true;
    }
    const double up = y - curve.center.y;
    if (std::abs(std::abs(up) - curve.radius) < clear) return false;
    if (std::abs(up) > curve.radius) return true;
    const double half = std::sqrt(curve.radius * curve.radius - up * up);
    for (const double x : {curve.center.x - half, curve.center.x + half}) {
        const double share = ShareOf(curve, {x, y});
        if (share > 0 && share < 1) found.push_back(x);
    }
    return true;
}

std::optional<std::vector<double>> AllCrossings(std::span<const PlanCurve> ring, double y) {
    std::vector<double> found;
    for (const PlanCurve& curve : ring)
        if (!Crossings(curve, y, found)) return std::nullopt;
    std::ranges::sort(found);
    return found;
}

}  // namespace

PlanPoint PlanCurve::At(double share) const {
    if (!round) return {start.x + share * (end.x - start.x), start.y + share * (end.y - start.y)};
    const double angle = from + share * sweep;
    return {center.x + radius * std::cos(angle), center.y + radius * std::sin(angle)};
}

bool PlanCurve::Upright() const { return !round && Distance(start, end) < Level; }

std::optional<PlanCurve> SeenFromAbove(const TopoDS_Edge& edge) {
    const BRepAdaptor_Curve adaptor(edge);
    PlanCurve curve;
    if (adaptor.GetType() == GeomAbs_Line) {
        const gp_Pnt first = adaptor.Value(adaptor.FirstParameter());
        const gp_Pnt last = adaptor.Value(adaptor.LastParameter());
        curve.start = Plan(first);
        curve.end = Plan(last);
        curve.lowZ = std::min(first.Z(), last.Z());
        curve.highZ = std::max(first.Z(), last.Z());
    } else if (adaptor.GetType() == GeomAbs_Circle) {
        const gp_Circ circle = adaptor.Circle();
        const double up = circle.Axis().Direction().Z();
        if (std::abs(up) < 1 - 1e-14) return std::nullopt;
        curve.round = true;
        curve.center = Plan(circle.Location());
        curve.radius = circle.Radius();
        const gp_Dir x = circle.XAxis().Direction();
        const double turn = std::atan2(x.Y(), x.X());
        const double first = adaptor.FirstParameter(), last = adaptor.LastParameter();
        curve.from = WithinFullTurn(up > 0 ? turn + first : turn - last);
        curve.sweep = last - first;
        curve.lowZ = curve.highZ = circle.Location().Z();
    } else {
        return std::nullopt;
    }
    SetBox(curve);
    return curve;
}

std::optional<bool> Inside(std::span<const PlanCurve> ring, const PlanPoint& point) {
    const std::optional<std::vector<double>> crossings = AllCrossings(ring, point.y);
    if (!crossings) return std::nullopt;
    const auto right = std::ranges::count_if(*crossings, [&](double x) { return x > point.x; });
    return right % 2 == 1;
}

double DistanceTo(std::span<const PlanCurve> ring, const PlanPoint& point) {
    double nearest = std::numeric_limits<double>::infinity();
    for (const PlanCurve& curve : ring) {
        nearest = std::min({nearest, Distance(point, curve.At(0)), Distance(point, curve.At(1))});
        const double share = ShareOn(curve, point);
        if (share < 0 || share > 1) continue;
        nearest = std::min(nearest, curve.round ? std::abs(Distance(point, curve.center) - curve.radius)
                                                : Distance(point, curve.At(share)));
    }
    return nearest;
}

std::optional<PlanPoint> PointInside(std::span<const PlanCurve> ring) {
    double low = std::numeric_limits<double>::infinity(), high = -low;
    for (const PlanCurve& curve : ring) {
        low = std::min(low, curve.low.y);
        high = std::max(high, curve.high.y);
    }
    // No share of the height that drawn parts are likely to have a corner at.
    for (const double share : {0.4871, 0.3137, 0.6719, 0.1713, 0.8291}) {
        const double y = low + share * (high - low);
        const std::optional<std::vector<double>> crossings = AllCrossings(ring, y);
        if (!crossings || crossings->size() < 2 || crossings->size() % 2 != 0) continue;
        double width = 0, middle = 0;
        for (std::size_t i = 0; i + 1 < crossings->size(); i += 2) {
            const double from = (*crossings)[i], to = (*crossings)[i + 1];
            if (to - from <= width) continue;
            width = to - from;
            middle = (from + to) / 2;
        }
        if (width > 1e-6) return PlanPoint{middle, y};
    }
    return std::nullopt;
}

bool Enters(const PlanCurve& curve, std::span<const PlanCurve> ring, double film) {
    std::vector<double> shares{0, 1};
    std::vector<PlanPoint> meetings;
    for (const PlanCurve& side : ring) {
        meetings.clear();
        Meetings(curve, side, meetings);
        meetings.push_back(side.At(0));
        meetings.push_back(side.At(1));
        for (const PlanPoint& meeting : meetings) {
            const double share = ShareOn(curve, meeting);
            if (share > 0 && share < 1) shares.push_back(share);
        }
    }
    std::ranges::sort(shares);
    for (std::size_t i = 0; i + 1 < shares.size(); ++i) {
        if (curve.Upright() && i > 0) break;
        // Not the exact middle: a full circle's lies level with its seam.
        const PlanPoint probe = curve.At(shares[i] + 0.4871 * (shares[i + 1] - shares[i]));
        if (DistanceTo(ring, probe) <= film) continue;
        if (Inside(ring, probe).value_or(true)) return true;
    }
    return false;
}

}  // namespace brenvik::solids

// Lines and circles crossed by formula; ends that lie on another side part it.
#include "cnc/plan/plan_curve_cuts.h"

#include <algorithm>
#include <cmath>

#include "base/angles.h"
#include "cnc/plan/plan_piece.h"
#include "cnc/plan/plan_vectors.h"

namespace brenvik {

namespace {

/// A round side whose middle strays from its chord by less than this is straight, in any unit.
constexpr double NoArch = 1e-9;

/// A side with those of its values that are needed again and again.
struct Curve {
    PlanSide side;
    bool round = false;
    PlanRound circle;
    double fromAngle = 0;
    double minX = 0, maxX = 0, minY = 0, maxY = 0;
    std::vector<double> cuts;
    std::size_t number = 0;
};

/// By the height of its arch over the chord.
bool HasArch(const PlanSide& side) {
    return std::abs(side.bulge) * Distance(side.from, side.to) / 2 > NoArch;
}

Curve CurveOf(const PlanSide& side) {
    Curve curve;
    curve.side = side;
    curve.round = HasArch(side);
    const auto [lowX, highX] = std::minmax(side.from.x, side.to.x);
    const auto [lowY, highY] = std::minmax(side.from.y, side.to.y);
    curve.minX = lowX, curve.maxX = highX, curve.minY = lowY, curve.maxY = highY;
    if (!curve.round) return curve;
    curve.circle = RoundOf(side);
    curve.fromAngle = std::atan2(side.from.y - curve.circle.center.y, side.from.x - curve.circle.center.x);
    const PlanPoint& center = curve.circle.center;
    const double radius = curve.circle.radius;
    // The whole circle's box: the question is only which sides may meet at all.
    curve.minX = center.x - radius, curve.maxX = center.x + radius;
    curve.minY = center.y - radius, curve.maxY = center.y + radius;
    return curve;
}

/// The share of the side's length at the point next to it, unbounded; for a round one within a whole turn.
double ShareOf(const Curve& curve, const PlanPoint& point) {
    const PlanSide& side = curve.side;
    if (!curve.round) {
        const double dx = side.to.x - side.from.x, dy = side.to.y - side.from.y;
        return ((point.x - side.from.x) * dx + (point.y - side.from.y) * dy) / (dx * dx + dy * dy);
    }
    const PlanPoint& center = curve.circle.center;
    double turn = std::atan2(point.y - center.y, point.x - center.x) - curve.fromAngle;
    const double sweep = curve.circle.sweep;
    if (sweep < 0) turn = -turn;
    turn = std::fmod(std::fmod(turn, FullTurn) + FullTurn, FullTurn);
    return turn / std::abs(sweep);
}

/// Cuts a side at a point that lies on it, unless that is one of its ends.
void CutAt(Curve& curve, const PlanPoint& point, double same) {
    if (Distance(point, curve.side.from) < same || Distance(point, curve.side.to) < same) return;
    const double share = ShareOf(curve, point);
    if (share <= 0 || share >= 1) return;
    if (Distance(AtShare(curve.side, share), point) > same) return;
    curve.cuts.push_back(share);
}

void Meetings(const Curve& a, const Curve& b, double same, std::vector<PlanPoint>& points) {
    if (!a.round && !b.round) {
        const double ax = a.side.to.x - a.side.from.x, ay = a.side.to.y - a.side.from.y;
        const double bx = b.side.to.x - b.side.from.x, by = b.side.to.y - b.side.from.y;
        const double lean = ax * by - ay * bx;
        if (std::abs(lean) < 1e-12 * std::hypot(ax, ay) * std::hypot(bx, by)) return;
        const double share =
            ((b.side.from.x - a.side.from.x) * by - (b.side.from.y - a.side.from.y) * bx) / lean;
        points.push_back({a.side.from.x + share * ax, a.side.from.y + share * ay});
        return;
    }
    if (a.round && b.round) {
        const PlanPoint &one = a.circle.center, &other = b.circle.center;
        const double r = a.circle.radius, s = b.circle.radius;
        const double apart = Distance(one, other);
        // About one centre they lie on each other or nowhere.
        if (apart < same || apart > r + s + same || apart < std::abs(r - s) - same) return;
        const double ux = (other.x - one.x) / apart, uy = (other.y - one.y) / apart;
        const double along = (apart * apart + r * r - s * s) / (2 * apart);
        const double rest = r * r - along * along;
        const bool touch = apart > r + s - same || apart < std::abs(r - s) + same;
        const double across = touch ? 0 : std::sqrt(std::max(0.0, rest));
        points.push_back({one.x + along * ux - across * uy, one.y + along * uy + across * ux});
        if (!touch) points.push_back({one.x + along * ux + across * uy, one.y + along * uy - across * ux});
        return;
    }
    const Curve& line = a.round ? b : a;
    const PlanRound& circle = a.round ? a.circle : b.circle;
    const double dx = line.side.to.x - line.side.from.x, dy = line.side.to.y - line.side.from.y;
    const double length = std::hypot(dx, dy);
    const double ux = dx / length, uy = dy / length;
    const double along =
        (circle.center.x - line.side.from.x) * ux + (circle.center.y - line.side.from.y) * uy;
    const PlanPoint foot{line.side.from.x + along * ux, line.side.from.y + along * uy};
    const double away = Distance(foot, circle.center);
    if (away > circle.radius + same) return;
    const bool touch = away > circle.radius - same;
    const double half = touch ? 0 : std::sqrt(std::max(0.0, circle.radius * circle.radius - away * away));
    points.push_back({foot.x - half * ux, foot.y - half * uy});
    if (!touch) points.push_back({foot.x + half * ux, foot.y + half * uy});
}

void CutPair(Curve& a, Curve& b, double same) {
    for (const PlanPoint& end : {b.side.from, b.side.to}) CutAt(a, end, same);
    for (const PlanPoint& end : {a.side.from, a.side.to}) CutAt(b, end, same);
    std::vector<PlanPoint> points;
    Meetings(a, b, same, points);
    for (const PlanPoint& point : points) {
        // On both of them, and not only on the endless line or circle.
        const auto on = [&](const Curve& curve) {
            if (Distance(point, curve.side.from) < same || Distance(point, curve.side.to) < same) return true;
            const double share = ShareOf(curve, point);
            return share > 0 && share < 1;
        };
        if (!on(a) || !on(b)) continue;
        CutAt(a, point, 0.5 * same);
        CutAt(b, point, 0.5 * same);
    }
}

}  // namespace

PlanPoint AtShare(const PlanSide& side, double share) {
    if (!HasArch(side))
        return {side.from.x + share * (side.to.x - side.from.x),
                side.from.y + share * (side.to.y - side.from.y)};
    const PlanRound circle = RoundOf(side);
    const double angle =
        std::atan2(side.from.y - circle.center.y, side.from.x - circle.center.x) + share * circle.sweep;
    return {circle.center.x + circle.radius * std::cos(angle),
            circle.center.y + circle.radius * std::sin(angle)};
}

PlanSide Stretch(const PlanSide& side, double from, double to) {
    PlanSide part{from <= 0 ? side.from : AtShare(side, from), to >= 1 ? side.to : AtShare(side, to), 0};
    if (HasArch(side)) part.bulge = std::tan(std::atan(side.bulge) * (to - from));
    return part;
}

std::vector<NumberedStretch> NumberedStretches(std::span<const PlanSide> sides, double same) {
    std::vector<Curve> curves;
    for (std::size_t i = 0; i < sides.size(); ++i) {
        if (Distance(sides[i].from, sides[i].to) <= same) continue;
        curves.push_back(CurveOf(sides[i]));
        curves.back().number = i;
    }
    std::ranges::sort(curves, {}, &Curve::minX);
    for (std::size_t i = 0; i < curves.size(); ++i) {
        for (std::size_t j = i + 1; j < curves.size() && curves[j].minX < curves[i].maxX + same; ++j) {
            if (curves[j].minY > curves[i].maxY + same || curves[j].maxY < curves[i].minY - same) continue;
            CutPair(curves[i], curves[j], same);
        }
    }
    std::vector<NumberedStretch> stretches;
    for (Curve& curve : curves) {
        std::ranges::sort(curve.cuts);
        double from = 0;
        curve.cuts.push_back(1);
        for (const double to : curve.cuts) {
            const PlanSide part = Stretch(curve.side, from, to);
            if (Distance(part.from, part.to) < same && to < 1) continue;
            stretches.push_back({part, curve.number});
            from = to;
        }
    }
    return stretches;
}

std::vector<PlanSide> CutWhereTheyMeet(std::span<const PlanSide> sides, double same) {
    std::vector<PlanSide> cut;
    for (const NumberedStretch& stretch : NumberedStretches(sides, same)) cut.push_back(stretch.side);
    return cut;
}

}  // namespace brenvik

// Straight sides by projection, round ones by angles about their centre.
#include "cnc/plan/side_places.h"

#include <algorithm>
#include <cmath>

#include "base/angles.h"
#include "cnc/plan/plan_piece.h"
#include "cnc/plan/plan_vectors.h"

namespace brenvik {

bool IsRound(const PlanSide& side) { return std::abs(side.bulge) * Length(side.to - side.from) > 1e-9; }

double LengthOf(const PlanSide& side) {
    const double chord = Distance(side.from, side.to), angle = 4 * std::atan(side.bulge);
    return std::abs(angle) < 1e-9 ? chord : chord * std::abs(angle) / (2 * std::sin(std::abs(angle) / 2));
}

PlanSide Reversed(const PlanSide& side) { return {side.to, side.from, -side.bulge}; }

double AngleBetween(const PlanPoint& a, const PlanPoint& b) { return std::atan2(Cross(a, b), Dot(a, b)); }

double TurnTo(const PlanPoint& a, const PlanPoint& b) {
    const double angle = AngleBetween(a, b);
    return angle < 0 ? angle + FullTurn : angle;
}

PlanPoint NearestOn(const PlanSide& side, const PlanPoint& point) {
    if (!IsRound(side)) {
        const PlanPoint along = side.to - side.from;
        const double share = Dot(point - side.from, along) / Dot(along, along);
        return side.from + along * std::clamp(share, 0.0, 1.0);
    }
    const PlanRound round = RoundOf(side);
    const PlanPoint start = side.from - round.center, arm = point - round.center;
    const double turn = round.sweep > 0 ? TurnTo(start, arm) : TurnTo(arm, start);
    if (turn <= std::abs(round.sweep) && Length(arm) > 0)
        return round.center + arm * (round.radius / Length(arm));
    return Length(point - side.from) < Length(point - side.to) ? side.from : side.to;
}

PlanPoint WayAt(const PlanSide& side, bool atEnd) {
    const PlanPoint along = (side.to - side.from) * (1 / Length(side.to - side.from));
    const double turn = (atEnd ? 2 : -2) * std::atan(side.bulge);
    const double c = std::cos(turn), s = std::sin(turn);
    return {along.x * c - along.y * s, along.x * s + along.y * c};
}

}  // namespace brenvik

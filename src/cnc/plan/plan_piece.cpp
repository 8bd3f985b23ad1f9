// Lines and circles as functions of X.
#include "cnc/plan/plan_piece.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

namespace brenvik {

namespace {

/// What lies between a circle's half and its centre's height.
double AreaOfHalf(double radius, double from, double to) {
    const auto primitive = [radius](double u) {
        const double inside = std::clamp(u, -radius, radius);
        return (inside * std::sqrt(std::max(0.0, radius * radius - inside * inside)) +
                radius * radius * std::asin(inside / radius)) /
               2;
    };
    return primitive(to) - primitive(from);
}

void AddStraight(const PlanPoint& from, const PlanPoint& to, std::vector<PlanPiece>& pieces) {
    if (from.x == to.x) return;
    PlanPiece piece{from.x, to.x, 1, from.y, to.y};
    if (from.x > to.x) {
        std::swap(piece.x0, piece.x1);
        std::swap(piece.y0, piece.y1);
        piece.way = -1;
    }
    pieces.push_back(piece);
}

/// The stretch of a round side between two angles with no turning point in X between them.
void AddStretch(const PlanRound& round, const PlanPoint& from, const PlanPoint& to, double middle,
                std::vector<PlanPiece>& pieces) {
    const std::size_t before = pieces.size();
    AddStraight(from, to, pieces);
    if (pieces.size() == before) return;
    PlanPiece& piece = pieces.back();
    piece.centerX = round.center.x;
    piece.centerY = round.center.y;
    piece.radius = round.radius;
    piece.half = std::sin(middle) > 0 ? 1 : -1;
}

}  // namespace

double PlanPiece::At(double x) const {
    if (half == 0) {
        if (x <= x0) return y0;
        if (x >= x1) return y1;
        return y0 + (y1 - y0) * (x - x0) / (x1 - x0);
    }
    const double u = x - centerX;
    return centerY + half * std::sqrt(std::max(0.0, radius * radius - u * u));
}

double PlanPiece::Distance(double x, double y) const {
    if (half != 0) return std::abs(std::hypot(x - centerX, y - centerY) - radius);
    return std::abs((x - x0) * (y1 - y0) - (y - y0) * (x1 - x0)) / std::hypot(x1 - x0, y1 - y0);
}

double PlanPiece::AreaBelow(double from, double to) const {
    if (half == 0) return (At(from) + At(to)) / 2 * (to - from);
    return centerY * (to - from) + half * AreaOfHalf(radius, from - centerX, to - centerX);
}

double PlanPiece::Lowest(double from, double to) const {
    const bool bottom = half < 0 && from < centerX && centerX < to;
    return bottom ? centerY - radius : std::min(At(from), At(to));
}

double PlanPiece::Highest(double from, double to) const {
    const bool top = half > 0 && from < centerX && centerX < to;
    return top ? centerY + radius : std::max(At(from), At(to));
}

void AddPieces(const PlanSide& side, double stray, std::vector<PlanPiece>& pieces) {
    const double chord = std::hypot(side.to.x - side.from.x, side.to.y - side.from.y);
    if (chord == 0) return;
    if (std::abs(side.bulge) * chord / 2 < stray) return AddStraight(side.from, side.to, pieces);
    const PlanRound round = RoundOf(side);
    const double from = std::atan2(side.from.y - round.center.y, side.from.x - round.center.x);
    // Turning points in X lie at whole half turns.
    constexpr double half = std::numbers::pi;
    const double to = from + round.sweep;
    std::vector<double> turns;
    for (double turn = std::ceil(std::min(from, to) / half); turn * half < std::max(from, to); ++turn)
        turns.push_back(turn * half);
    if (round.sweep < 0) std::ranges::reverse(turns);
    turns.push_back(to);
    PlanPoint start = side.from;
    double angle = from;
    for (const double turn : turns) {
        const bool last = turn == turns.back();
        const double sign = std::cos(turn) > 0 ? 1 : -1;
        const PlanPoint end =
            last ? side.to : PlanPoint{round.center.x + sign * round.radius, round.center.y};
        AddStretch(round, start, end, (angle + turn) / 2, pieces);
        start = end;
        angle = turn;
    }
}

namespace {

void Keep(double x, const PlanPiece& a, const PlanPiece& b, std::vector<double>& places) {
    if (x > std::max(a.x0, b.x0) && x < std::min(a.x1, b.x1)) places.push_back(x);
}

void CrossLines(const PlanPiece& a, const PlanPiece& b, std::vector<double>& places) {
    const double from = std::max(a.x0, b.x0), to = std::min(a.x1, b.x1);
    const double before = a.At(from) - b.At(from), behind = a.At(to) - b.At(to);
    if ((before < 0) == (behind < 0) || before == behind) return;
    Keep(from + (to - from) * before / (before - behind), a, b, places);
}

void CrossLineAndRound(const PlanPiece& line, const PlanPiece& round, std::vector<double>& places) {
    const double slope = (line.y1 - line.y0) / (line.x1 - line.x0);
    // y = slope (x - centre) + rise, against u² + v² = r².
    const double rise = line.y0 + slope * (round.centerX - line.x0) - round.centerY;
    const double a = 1 + slope * slope, b = slope * rise, c = rise * rise - round.radius * round.radius;
    const double root = b * b - a * c;
    if (root < 0) return;
    for (const double sign : {-1.0, 1.0})
        Keep(round.centerX + (-b + sign * std::sqrt(root)) / a, line, round, places);
}

void CrossRounds(const PlanPiece& a, const PlanPiece& b, std::vector<double>& places) {
    const double dx = b.centerX - a.centerX, dy = b.centerY - a.centerY;
    const double distance = std::hypot(dx, dy);
    if (distance == 0 || distance > a.radius + b.radius || distance < std::abs(a.radius - b.radius)) return;
    const double along = (distance * distance + a.radius * a.radius - b.radius * b.radius) / (2 * distance);
    const double across = std::sqrt(std::max(0.0, a.radius * a.radius - along * along));
    for (const double sign : {-1.0, 1.0})
        Keep(a.centerX + (along * dx - sign * across * dy) / distance, a, b, places);
}

}  // namespace

void AddCrossings(const PlanPiece& a, const PlanPiece& b, std::vector<double>& places) {
    if (a.half == 0 && b.half == 0)
        CrossLines(a, b, places);
    else if (a.half == 0)
        CrossLineAndRound(a, b, places);
    else if (b.half == 0)
        CrossLineAndRound(b, a, places);
    else
        CrossRounds(a, b, places);
}

PlanRound RoundOf(const PlanSide& side) {
    const double dx = side.to.x - side.from.x, dy = side.to.y - side.from.y;
    const double off = (1 - side.bulge * side.bulge) / (4 * side.bulge);
    return {{(side.from.x + side.to.x) / 2 - dy * off, (side.from.y + side.to.y) / 2 + dx * off},
            std::hypot(dx, dy) * (1 + side.bulge * side.bulge) / (4 * std::abs(side.bulge)),
            4 * std::atan(side.bulge)};
}

std::vector<PlanSide> SidesAround(const std::vector<PlanPoint>& corners) {
    std::vector<PlanSide> sides;
    for (std::size_t i = 0; i < corners.size(); ++i)
        sides.push_back({corners[i], corners[(i + 1) % corners.size()]});
    return sides;
}

double SignedArea(std::span<const PlanSide> sides) {
    double twice = 0;
    for (const PlanSide& side : sides) {
        twice += side.from.x * side.to.y - side.to.x * side.from.y;
        if (side.bulge == 0) continue;
        const PlanRound round = RoundOf(side);
        twice += round.radius * round.radius * (round.sweep - std::sin(round.sweep));
    }
    return twice / 2;
}

}  // namespace brenvik

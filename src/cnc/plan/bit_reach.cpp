// Each side is moved inwards. At an outer corner the moved sides are joined through the corner itself, so
// that a place too narrow for the bit is run around in the opposite direction.
#include "cnc/plan/bit_reach.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "cnc/plan/plan_piece.h"
#include "cnc/plan/plan_vectors.h"
#include "cnc/plan/side_places.h"

namespace brenvik {

namespace {

/// Sine of the turn below which two sides run on into each other.
constexpr double NoTurn = 1e-9;

PlanPoint Left(const PlanPoint& a) { return {-a.y, a.x}; }

PlanPoint Turned(const PlanPoint& a, double angle) {
    const double c = std::cos(angle), s = std::sin(angle);
    return {c * a.x - s * a.y, s * a.x + c * a.y};
}

/// A side with the ways it sets out and arrives.
struct Way {
    PlanSide side;
    PlanPoint out, in;
};

Way WayOf(const PlanSide& side) {
    const PlanPoint chord = side.to - side.from;
    const PlanPoint along = chord * (1 / Length(chord));
    const double half = 2 * std::atan(side.bulge);
    return {side, Turned(along, -half), Turned(along, half)};
}

/// A rounding that is tighter than the bit would be turned inside out. In chords each of its corners is run
/// around as any corner is, and what is left begins further in than its roundness shows.
void AddWays(const PlanSide& side, double reach, std::vector<Way>& ways) {
    if (Length(side.to - side.from) == 0) return;
    if (side.bulge <= 0 || RoundOf(side).radius > reach) {
        ways.push_back(WayOf(side));
        return;
    }
    const PlanRound round = RoundOf(side);
    constexpr int chords = 16;
    PlanPoint last = side.from;
    for (int i = 1; i <= chords; ++i) {
        const PlanPoint next =
            i == chords ? side.to : round.center + Turned(side.from - round.center, round.sweep * i / chords);
        ways.push_back(WayOf({last, next, 0}));
        last = next;
    }
}

PlanSide Moved(const Way& way, double reach) {
    return {way.side.from + Left(way.out) * reach, way.side.to + Left(way.in) * reach, way.side.bulge};
}

void Join(const Way& before, const Way& behind, const PlanSide& from, const PlanSide& to,
          std::vector<PlanSide>& sides) {
    const double turn = std::atan2(Cross(before.in, behind.out), Dot(before.in, behind.out));
    const PlanPoint corner = before.side.to;
    if (std::abs(std::sin(turn)) < NoTurn && std::abs(turn) < 1) {
        sides.push_back({from.to, to.from});
    } else if (turn > 0) {
        sides.push_back({from.to, corner});
        sides.push_back({corner, to.from});
    } else {
        sides.push_back({from.to, to.from, std::tan(turn / 4)});
    }
}

}  // namespace

PlanSide MovedLeft(const PlanSide& side, double reach) { return Moved(WayOf(side), reach); }

std::vector<PlanSide> MovedLeft(std::span<const PlanSide> line, double reach) {
    std::vector<Way> ways;
    for (const PlanSide& side : line) AddWays(side, reach, ways);
    std::vector<PlanSide> sides;
    for (std::size_t i = 0; i < ways.size(); ++i) {
        const Way &here = ways[i], &next = ways[(i + 1) % ways.size()];
        const PlanSide moved = Moved(here, reach);
        sides.push_back(moved);
        Join(here, next, moved, Moved(next, reach), sides);
    }
    return sides;
}

std::vector<PlanSide> Reversed(std::span<const PlanSide> line) {
    std::vector<PlanSide> reversed;
    for (auto side = line.rbegin(); side != line.rend(); ++side) reversed.push_back(Reversed(*side));
    return reversed;
}

std::vector<PlanSide> InsideLeft(std::span<const PlanSide> line) {
    if (SignedArea(line) < 0) return Reversed(line);
    return {line.begin(), line.end()};
}

std::vector<PlanSide> CoreOf(std::span<const PlanSide> line, double reach) {
    return MovedLeft(InsideLeft(line), reach);
}

bool LeavesCore(std::span<const PlanSide> line, double reach, const PlanBox& sheet, double width) {
    const std::vector<PlanSide> around = SidesAround({{sheet.minX, sheet.minY},
                                                      {sheet.maxX, sheet.minY},
                                                      {sheet.maxX, sheet.maxY},
                                                      {sheet.minX, sheet.maxY}});
    // Of the sheet all that lies within the line should go.
    std::vector<PlanSide> rest = around;
    rest.insert(rest.end(), line.begin(), line.end());
    const std::array<PlanShape, 2> shapes{
        PlanShape{PlanShape::Role::Stock, around, -1, {}},
        {PlanShape::Role::Removal, {line.begin(), line.end()}, 0, CoreOf(line, reach)}};
    return std::ranges::any_of(CompareInPlan(rest, shapes, width),
                               [](const PlanSpot& spot) { return spot.difference == Difference::Standing; });
}

}  // namespace brenvik

// Chains of sides are tried away, longest first; rings are parted by a narrow corridor.
#include "cnc/clearing/path_shapes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "cnc/plan/plan_curve_cuts.h"
#include "cnc/plan/plan_vectors.h"

namespace brenvik {

namespace {

constexpr std::size_t LongestChain = 10;
/// How wide a ring is parted, in places that count as one: half a millimetre.
constexpr double Corridor = 25000;
constexpr int MostHoles = 24;

/// By the angle alone, however short the side is.
bool HasBulge(const PlanSide& side) { return std::abs(side.bulge) > 1e-6; }

/// `before` and `behind` as they meet when all between them is left out, or null.
std::optional<std::vector<PlanSide>> RunOn(const PlanSide& before, const PlanSide& behind, double same) {
    if (HasBulge(before) || HasBulge(behind)) {
        if (!HasBulge(before) || !HasBulge(behind) || (before.bulge > 0) != (behind.bulge > 0))
            return std::nullopt;
        const PlanRound one = RoundOf(before), other = RoundOf(behind);
        if (Distance(one.center, other.center) > 10 * same || std::abs(one.radius - other.radius) > 10 * same)
            return std::nullopt;
        const double to = std::atan2(behind.from.y - one.center.y, behind.from.x - one.center.x);
        const double from = std::atan2(before.to.y - one.center.y, before.to.x - one.center.x);
        constexpr double whole = 6.283185307179586;
        double sweep = std::fmod(to - from + 2 * whole, whole);
        if (before.bulge < 0) sweep = sweep - whole;
        if (std::abs(sweep) > whole / 2) return std::nullopt;
        return std::vector{before, PlanSide{before.to, behind.from, std::tan(sweep / 4)}, behind};
    }
    const double ax = before.to.x - before.from.x, ay = before.to.y - before.from.y;
    const double bx = behind.to.x - behind.from.x, by = behind.to.y - behind.from.y;
    const double la = std::hypot(ax, ay), lb = std::hypot(bx, by);
    const double lean = (ax * by - ay * bx) / (la * lb);
    const double gx = behind.from.x - before.from.x, gy = behind.from.y - before.from.y;
    if (std::abs(lean) < 1e-9) {
        const bool inLine = std::abs(ax * gy - ay * gx) / la < 5 * same && ax * bx + ay * by > 0 &&
                            (ax * gx + ay * gy) / la > la - same;
        if (!inLine) return std::nullopt;
        return std::vector{PlanSide{before.from, behind.to, 0}};
    }
    const double a = (gx * by - gy * bx) / (ax * by - ay * bx);
    const double b = (gx * ay - gy * ax) / (ax * by - ay * bx);
    // Ahead of the one, and before the end of the other.
    if (a * la < same || (1 - b) * lb < same) return std::nullopt;
    const PlanPoint corner{before.from.x + a * ax, before.from.y + a * ay};
    return std::vector{PlanSide{before.from, corner, 0}, PlanSide{corner, behind.to, 0}};
}

std::optional<PlanLoop> WithoutChain(const PlanLoop& loop, std::size_t before, std::size_t length,
                                     double same) {
    const std::size_t count = loop.size(), behind = (before + length + 1) % count;
    const auto run = RunOn(loop[before], loop[behind], same);
    if (!run) return std::nullopt;
    PlanLoop shorter = *run;
    for (std::size_t i = (behind + 1) % count; i != before; i = (i + 1) % count) shorter.push_back(loop[i]);
    if (shorter.size() >= count || shorter.size() < 3 || SignedArea(shorter) <= 0) return std::nullopt;
    return shorter;
}

struct Frame {
    double minX = std::numeric_limits<double>::max(), minY = minX, maxX = -minX, maxY = -minX;
    void Take(const PlanPoint& point) {
        minX = std::min(minX, point.x);
        minY = std::min(minY, point.y);
        maxX = std::max(maxX, point.x);
        maxY = std::max(maxY, point.y);
    }
};

Frame FrameOf(const PlanLoop& loop) {
    Frame frame;
    for (const PlanSide& side : loop)
        for (const double share : {0.0, 0.25, 0.5, 0.75}) frame.Take(AtShare(side, share));
    return frame;
}

PlanLoop Rectangle(double left, double front, double right, double back) {
    const std::array<PlanPoint, 4> corners{
        PlanPoint{left, front}, {right, front}, {right, back}, {left, back}};
    PlanLoop loop;
    for (std::size_t i = 0; i < 4; ++i) loop.push_back({corners[i], corners[(i + 1) % 4], 0});
    return loop;
}

/// The plan turned by quarters, so that a way out of a hole need only be looked for in one direction.
PlanPoint Turned(const PlanPoint& point, int quarters) {
    PlanPoint turned = point;
    for (int i = 0; i < (quarters & 3); ++i) turned = {-turned.y, turned.x};
    return turned;
}
PlanLoop Turned(const PlanLoop& loop, int quarters) {
    PlanLoop turned;
    for (const PlanSide& side : loop)
        turned.push_back({Turned(side.from, quarters), Turned(side.to, quarters), side.bulge});
    return turned;
}
PlanArea Turned(const PlanArea& area, int quarters) {
    PlanArea turned{Turned(area.outer, quarters), {}};
    for (const PlanLoop& hole : area.holes) turned.holes.push_back(Turned(hole, quarters));
    return turned;
}

std::vector<PlanArea> Combined(const PlanArea& area, const PlanLoop& box, bool within, double same) {
    std::vector<PlanSide> sides = SidesOf(area);
    const PlanField ofArea(sides), ofBox(box);
    sides.insert(sides.end(), box.begin(), box.end());
    return AreasOf(BorderOf(
        sides, [&](const PlanPoint& point) { return ofArea.Holds(point) && ofBox.Holds(point) == within; },
        same));
}

/// Where the upright line through the middle of a hole leaves the hole, and where it comes to the next wall.
struct WayOut {
    double x = 0, inside = 0, from = 0, to = 0;
};

std::optional<WayOut> WayUp(const PlanArea& area, const PlanLoop& hole) {
    const Frame frame = FrameOf(hole);
    WayOut way;
    way.x = (frame.minX + frame.maxX) / 2 + 1.234e-5 * (frame.maxX - frame.minX);
    std::vector<PlanPiece> pieces;
    const auto crossings = [&](const std::vector<PlanSide>& sides) {
        pieces.clear();
        for (const PlanSide& side : sides) AddPieces(side, 1e-9, pieces);
        std::vector<double> heights;
        for (const PlanPiece& piece : pieces)
            if (way.x >= piece.x0 && way.x < piece.x1) heights.push_back(piece.At(way.x));
        std::ranges::sort(heights);
        return heights;
    };
    const std::vector<double> own = crossings(hole), all = crossings(SidesOf(area));
    if (own.size() < 2) return std::nullopt;
    way.from = own.back();
    way.inside = (own[own.size() - 2] + way.from) / 2;
    const auto next = std::ranges::upper_bound(all, way.from + 1e-9);
    if (next == all.end()) return std::nullopt;
    way.to = *next;
    return way;
}

/// The area parted from a hole on, and the path over the parting.
struct Parting {
    std::vector<PlanArea> rest;
    PlanLoop over;
};

/// How far the path over a parting goes beyond it on either hand and into the hole's flanks, as shares of the
/// reach.
struct Overlap {
    double aside = 1, down = 1;
};

/// The path over the parting. Null if it would be a ring of its own.
std::optional<PlanLoop> OverParting(const PlanArea& area, const WayOut& way, double reach,
                                    const Overlap& overlap, double same) {
    const double front = std::max(way.inside, way.from - overlap.down * reach);
    const double half = Corridor * same / 2 + overlap.aside * reach;
    const PlanLoop box = Rectangle(way.x - half, front, way.x + half, FrameOf(area.outer).maxY + 1);
    const PlanPoint middle{way.x, (way.from + way.to) / 2};
    for (PlanArea& piece : Combined(area, box, true, same)) {
        if (!PlanField(SidesOf(piece)).Holds(middle)) continue;
        if (!piece.holes.empty()) return std::nullopt;
        return std::move(piece.outer);
    }
    return std::nullopt;
}

/// How wide a path is by its shortest side, by which its bit is chosen, beside how wide it is indeed: with 1
/// and more every bit that is chosen clears it whole.
double Roominess(const PlanLoop& over, const WayOut& way, double half) {
    double shortest = std::numeric_limits<double>::max();
    for (const PlanSide& side : over) shortest = std::min(shortest, Distance(side.from, side.to));
    return shortest / std::min(2 * half, way.to - way.from);
}

/// Beside a small hole the box that reaches furthest has short sides, which no bit fits: a narrower one may
/// stand on the hole alone.
std::optional<PlanLoop> RoomiestOver(const PlanArea& area, const WayOut& way, double reach, double same) {
    constexpr double enough = 0.99;
    constexpr std::array overlaps{Overlap{1, 1}, Overlap{1, 0.5}, Overlap{0.6, 1}, Overlap{0.6, 0.5},
                                  Overlap{0.6, 0.25}};
    std::optional<PlanLoop> best;
    double most = 0;
    for (const Overlap& overlap : overlaps) {
        auto over = OverParting(area, way, reach, overlap, same);
        if (!over) continue;
        const double room = Roominess(*over, way, overlap.aside * reach);
        if (best && room <= most) continue;
        most = room;
        best = std::move(over);
        if (most > enough) break;
    }
    return best;
}

std::optional<Parting> PartedAbove(const PlanArea& area, const WayOut& way, double reach, double same) {
    const double half = Corridor * same / 2, beyond = 4 * half;
    const PlanLoop corridor = Rectangle(way.x - half, way.inside, way.x + half, way.to + beyond);
    auto over = RoomiestOver(area, way, reach, same);
    if (!over) return std::nullopt;
    return Parting{Combined(area, corridor, false, same), *std::move(over)};
}

std::optional<Parting> PartedFrom(const PlanArea& area, const PlanLoop& hole, double reach, double same) {
    // Where the way is shortest; of equal ones the first.
    int best = -1;
    double shortest = 0;
    for (int quarters = 0; quarters < 4; ++quarters) {
        const auto way = WayUp(Turned(area, quarters), Turned(hole, quarters));
        if (!way || (best >= 0 && way->to - way->from > shortest - same)) continue;
        best = quarters;
        shortest = way->to - way->from;
    }
    if (best < 0) return std::nullopt;
    const PlanArea turned = Turned(area, best);
    auto parting = PartedAbove(turned, *WayUp(turned, Turned(hole, best)), reach, same);
    if (!parting) return std::nullopt;
    for (PlanArea& rest : parting->rest) rest = Turned(rest, -best);
    parting->over = Turned(parting->over, -best);
    return parting;
}

}  // namespace

PlanLoop WithoutBites(PlanLoop loop, const std::function<bool(const PlanLoop&)>& serves, double same) {
    bool found = true;
    while (found && loop.size() > 4) {
        found = false;
        for (std::size_t length = std::min(LongestChain, loop.size() - 3); length > 0 && !found; --length) {
            for (std::size_t before = 0; before < loop.size() && !found; ++before) {
                auto shorter = WithoutChain(loop, before, length, same);
                if (!shorter || !serves(*shorter)) continue;
                loop = std::move(*shorter);
                found = true;
            }
        }
    }
    return loop;
}

std::optional<std::vector<PlanLoop>> PartedRing(const PlanArea& area, double reach, double same) {
    std::vector<PlanLoop> paths;
    std::vector<PlanArea> open{area};
    for (int round = 0; !open.empty(); ++round) {
        if (round > MostHoles) return std::nullopt;
        const PlanArea ring = std::move(open.back());
        open.pop_back();
        if (ring.holes.empty()) {
            paths.push_back(ring.outer);
            continue;
        }
        auto parting = PartedFrom(ring, ring.holes.front(), reach, same);
        if (!parting) return std::nullopt;
        paths.push_back(std::move(parting->over));
        for (PlanArea& rest : parting->rest) open.push_back(std::move(rest));
    }
    return paths;
}

}  // namespace brenvik

// The centre of the bit may be anywhere on the line moved inwards, except where a part of the line is closer
// than half the bit. Those stretches are found by cutting the moved line where it meets itself. What remains
// is surrounded by walls that the bit can't follow, and by arcs where it turns from one stretch into the
// next.
#include "cnc/plan/bit_access.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

#include "base/failure.h"
#include "cnc/plan/bit_reach.h"
#include "cnc/plan/negligible_sizes.h"
#include "cnc/plan/plan_curve_cuts.h"
#include "cnc/plan/plan_piece.h"
#include "cnc/plan/plan_vectors.h"
#include "cnc/plan/side_places.h"

namespace brenvik {

namespace {

/// In millimetres: what is taken off a bit's radius, since sizes are rounded, so that it fits into a place
/// narrower by twice this; the distance of ends that count as one, and of places; how far arithmetic may
/// bring the bit's centre into a wall.
constexpr double Give = 0.001, SameEnd = 1e-7, SamePlace = 1e-5, TooClose = 1e-5;
/// In millimetres: a rest no wider than this doesn't count where a bit is wanted that leaves no rest.
constexpr double NoRestAtAll = 2e-4;
/// In millimetres: how far behind a wall a place is looked at for wood.
constexpr double BehindWall = 0.03;
/// The turns, in radians, below which a corner doesn't count, and below which two sides continue each other.
constexpr double NoCorner = 1e-3, NoTurn = 1e-9;
constexpr int Bisections = 14;
/// A free curve in chords has hundreds of sides, and looking for a bit takes its time.
constexpr std::size_t MostSides = 100;
/// Of the diameter: narrower bits aren't looked for.
constexpr double NarrowestShare = 0.02;

/// The stretch of a side between two of its points.
PlanSide Between(const PlanSide& side, const PlanPoint& from, const PlanPoint& to, double same) {
    if (!IsRound(side) || Length(to - from) < same) return {from, to, 0};
    const PlanRound round = RoundOf(side);
    const PlanPoint a = from - round.center, b = to - round.center;
    return {from, to, round.sweep > 0 ? std::tan(TurnTo(a, b) / 4) : -std::tan(TurnTo(b, a) / 4)};
}

/// A closed line with what is to be reached to its left.
class Walls {
  public:
    /// Ends closer than `samePlace` are one.
    Walls(std::vector<PlanSide> sides, double diameter, double unit, double samePlace)
        : mWalls(std::move(sides)),
          mUnit(unit),
          mRadius(diameter / 2 - Give * unit),
          mSamePlace(samePlace * unit) {
        std::erase_if(mWalls,
                      [this](const PlanSide& side) { return Length(side.to - side.from) < SameEnd * mUnit; });
    }

    /// Null if the way of the bit does not close.
    std::optional<BitRest> Left() {
        if (mRadius <= 0 || StandsOut()) return BitRest();
        FindRuns();
        std::vector<bool> forgivenBehind(mWalls.size(), false);
        for (const Run& run : mRuns)
            if (run.free && !RoundTheEnd(run, forgivenBehind)) return std::nullopt;
        for (const Run& run : mRuns) {
            if (run.free || run.atVertex) continue;
            const bool begins = !run.cutAtFrom && forgivenBehind[Before(run.wall)];
            const bool ends = !run.cutAtTo && forgivenBehind[run.wall];
            if (!begins && !ends)
                mRest.border.push_back(Between(mWalls[run.wall], run.touchFrom, run.touchTo, mSamePlace));
        }
        return std::move(mRest);
    }

  private:
    /// The bit's centre along a wall, or around an outer corner of the line; or that it can't be there.
    struct Run {
        std::size_t wall = 0;
        bool atVertex = false;  ///< Around the end of that wall.
        bool free = false;
        PlanPoint from, to;
        PlanPoint touchFrom, touchTo;
        /// Not where the wall begins or ends.
        bool cutAtFrom = false, cutAtTo = false;
    };

    std::size_t Behind(std::size_t wall) const { return (wall + 1) % mWalls.size(); }
    std::size_t Before(std::size_t wall) const { return (wall + mWalls.size() - 1) % mWalls.size(); }

    /// Positive to the left.
    double TurnBehind(std::size_t wall) const {
        return AngleBetween(WayAt(mWalls[wall], true), WayAt(mWalls[Behind(wall)], false));
    }

    /// The line has no hollows: a bit reaches all of it.
    bool StandsOut() const {
        for (std::size_t i = 0; i < mWalls.size(); ++i)
            if (mWalls[i].bulge > 0 || TurnBehind(i) > NoCorner) return false;
        return true;
    }

    bool MovesAlong(const PlanSide& wall) const {
        return wall.bulge <= 0 || !IsRound(wall) || RoundOf(wall).radius > mRadius;
    }

    bool LetsIn(const PlanPoint& middle) const {
        const double reach = mRadius - TooClose * mUnit;
        return std::ranges::all_of(
            mWalls, [&](const PlanSide& wall) { return Length(middle - NearestOn(wall, middle)) >= reach; });
    }

    void FindRuns() {
        std::vector<PlanSide> ways;
        std::vector<Run> ofWay;
        for (std::size_t i = 0; i < mWalls.size(); ++i) {
            const PlanSide &wall = mWalls[i], &next = mWalls[Behind(i)];
            if (MovesAlong(wall)) {
                ways.push_back(MovedLeft(wall, mRadius));
                ofWay.push_back({i, false, false, {}, {}, {}, {}});
            } else {
                mRuns.push_back({i, false, false, {}, {}, wall.from, wall.to});
            }
            const double turn = TurnBehind(i);
            if (turn > -NoTurn) continue;
            const auto beside = [&](const PlanPoint& way) {
                return wall.to + PlanPoint{-way.y, way.x} * mRadius;
            };
            ways.push_back({beside(WayAt(wall, true)), beside(WayAt(next, false)), std::tan(turn / 4)});
            ofWay.push_back({i, true, false, {}, {}, {}, {}});
        }
        std::vector<std::vector<PlanSide>> stretches(ways.size());
        for (const NumberedStretch& stretch : NumberedStretches(ways, SameEnd * mUnit))
            stretches[stretch.of].push_back(stretch.side);
        for (std::size_t i = 0; i < ways.size(); ++i) AddRuns(ofWay[i], stretches[i]);
    }

    void AddRuns(const Run& kind, const std::vector<PlanSide>& stretches) {
        const std::size_t first = mRuns.size();
        for (const PlanSide& stretch : stretches) {
            const bool free = LetsIn(AtShare(stretch, 0.5));
            if (mRuns.size() == first || mRuns.back().free != free) {
                mRuns.push_back(kind);
                mRuns.back().free = free;
                mRuns.back().from = stretch.from;
                mRuns.back().cutAtFrom = mRuns.size() > first + 1;
                if (mRuns.back().cutAtFrom) mRuns[mRuns.size() - 2].cutAtTo = true;
            }
            mRuns.back().to = stretch.to;
        }
        for (std::size_t i = first; i < mRuns.size(); ++i) {
            Run& run = mRuns[i];
            const PlanSide& wall = mWalls[run.wall];
            run.touchFrom = run.atVertex ? wall.to : run.cutAtFrom ? NearestOn(wall, run.from) : wall.from;
            run.touchTo = run.atVertex || !run.cutAtTo ? wall.to : NearestOn(wall, run.to);
        }
    }

    /// Where the bit turns from one wall to another, it leaves what lies beyond, round.
    bool RoundTheEnd(const Run& run, std::vector<bool>& forgivenBehind) {
        const Run* next = nullptr;
        for (const Run& other : mRuns) {
            if (!other.free || Length(other.from - run.to) > mSamePlace) continue;
            if (next == nullptr || Length(other.from - run.to) < Length(next->from - run.to)) next = &other;
        }
        if (next == nullptr) return false;
        if (Length(next->touchFrom - run.touchTo) < mSamePlace) return true;
        const double turn = TurnTo(run.touchTo - run.to, next->touchFrom - run.to);
        const PlanSide round{next->touchFrom, run.touchTo, -std::tan(turn / 4)};
        if (IsSharpCorner(run, *next)) {
            forgivenBehind[run.wall] = true;
            const PlanSide &before = mWalls[run.wall], &behind = mWalls[next->wall];
            mRest.corners.push_back({Between(before, run.touchTo, before.to, mSamePlace),
                                     Between(behind, behind.from, next->touchFrom, mSamePlace), round});
            return true;
        }
        mRest.border.push_back(round);
        return true;
    }

    /// Between two walls that meet there, with nothing else in the way.
    bool IsSharpCorner(const Run& run, const Run& next) const {
        if (run.atVertex || next.atVertex || next.wall != Behind(run.wall)) return false;
        if (!IsLastOf(run) || !IsFirstOf(next)) return false;
        const double turn = TurnBehind(run.wall);
        return turn > 0 && turn < std::numbers::pi - SharpestCorner;
    }
    bool IsLastOf(const Run& run) const {
        return std::ranges::none_of(mRuns, [&](const Run& other) {
            return &other > &run && other.free && !other.atVertex && other.wall == run.wall;
        });
    }
    bool IsFirstOf(const Run& run) const {
        return std::ranges::none_of(mRuns, [&](const Run& other) {
            return &other < &run && other.free && !other.atVertex && other.wall == run.wall;
        });
    }

    std::vector<PlanSide> mWalls;
    double mUnit, mRadius, mSamePlace;
    std::vector<Run> mRuns;
    BitRest mRest;
};

std::vector<PlanSpot> SpotsOf(const std::vector<PlanSide>& left, double noRest) {
    return CompareInPlan({}, std::vector{PlanShape{PlanShape::Role::Stock, left, -1}}, noRest);
}

/// Where a bit touches three walls at once, or runs on a hair's breadth from one, arithmetic may lose its
/// way; with one that is narrower by next to nothing, or with ends that meet less closely, it finds it.
BitRest LeftBy(std::span<const PlanSide> line, BitPath path, double diameter, double unit) {
    const std::vector<PlanSide> inside = InsideLeft(line);
    const std::vector<PlanSide> sides = path == BitPath::Around ? Reversed(inside) : inside;
    // A line that comes back on itself encloses nothing.
    if (std::abs(SignedArea(sides)) < NoRestAtAll * unit * unit) return {};
    for (const double samePlace : {SamePlace, 20 * SamePlace, 200 * SamePlace}) {
        for (const double less : {0.0, 0.0007, 0.0019, 0.0031, 0.0053, 0.011, 0.023}) {
            auto left = Walls(sides, diameter - less * unit, unit, samePlace).Left();
            if (left) return *std::move(left);
        }
    }
    throw Failure(failure_number::InvalidCall, "Brenvik", "The way of a bit does not close",
                  "the way of a bit does not close");
}

}  // namespace

BitRest RestOfBit(std::span<const PlanSide> line, BitPath path, double diameter, double unit) {
    BitRest rest = LeftBy(line, path, diameter, unit);
    if (!rest.border.empty() && SpotsOf(rest.border, NegligibleWidth * unit).empty()) rest.border.clear();
    return rest;
}

std::vector<PlanPoint> BehindWalls(const RoundedCorner& corner, double unit) {
    std::vector<PlanPoint> points;
    for (const PlanSide& wall : {corner.before, corner.behind}) {
        const PlanPoint chord = wall.to - wall.from;
        if (Length(chord) == 0) continue;
        for (const double share : {0.04, 0.3, 0.5, 0.7, 0.96}) {
            const PlanPoint along = AtShare(wall, share + 0.01) - AtShare(wall, share - 0.01);
            points.push_back(AtShare(wall, share) +
                             PlanPoint{along.y, -along.x} * (BehindWall * unit / Length(along)));
        }
    }
    return points;
}

bool IsCornerOf(const RoundedCorner& corner, const std::function<bool(const PlanPoint&)>& isWood,
                double unit) {
    return std::ranges::all_of(BehindWalls(corner, unit), isWood);
}

std::vector<PlanSide> BorderOf(const RoundedCorner& corner) {
    return {corner.before, corner.behind, corner.round};
}

double WidestForPlace(std::span<const PlanSide> line, BitPath path, const PlanBox& place, double diameter,
                      double unit) {
    if (line.size() > MostSides) return 0;
    const auto leaves = [&](double bit) {
        const std::vector<PlanSide> left = LeftBy(line, path, bit, unit).border;
        if (left.empty()) return false;
        return std::ranges::any_of(SpotsOf(left, NoRestAtAll * unit), [&](const PlanSpot& rest) {
            return rest.box.minX < place.maxX && rest.box.maxX > place.minX && rest.box.minY < place.maxY &&
                   rest.box.maxY > place.minY;
        });
    };
    double fits = diameter * NarrowestShare, leavesSome = diameter;
    if (!leaves(diameter)) return diameter;
    if (leaves(fits)) return 0;
    for (int step = 0; step < Bisections; ++step) {
        const double middle = (fits + leavesSome) / 2;
        (leaves(middle) ? leavesSome : fits) = middle;
    }
    return fits - 2 * Give * unit;
}

}  // namespace brenvik

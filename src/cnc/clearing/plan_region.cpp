// The sides are cut where they meet, each stretch is asked what lies to its left and to its right, and those
// with the region on one hand alone are strung to loops.
#include "cnc/clearing/plan_region.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <numbers>
#include <utility>

#include "base/angles.h"
#include "base/failure.h"
#include "cnc/drawing/plan_grid.h"
#include "cnc/plan/plan_curve_cuts.h"
#include "cnc/plan/plan_vectors.h"
#include "cnc/plan/side_places.h"

namespace brenvik {

namespace {

constexpr double StrayOfChords = 1e-9;
/// How far beside a stretch it is asked what lies there, in places that count as one.
constexpr double Beside = 3;
/// How far along a stretch its direction is taken: tangent ones part only then.
constexpr double AlongShare = 2500;

/// Ends that are one place, by number.
class Places {
  public:
    explicit Places(double same) : mSame(same) {}
    std::size_t NumberOf(const PlanPoint& point) {
        for (const std::size_t number : mGrid.Near(point.x, point.y))
            if (Distance(mPoints[number], point) < mSame) return number;
        mGrid.Add(point.x, point.y, mPoints.size());
        mPoints.push_back(point);
        return mPoints.size() - 1;
    }
    const PlanPoint& operator[](std::size_t number) const { return mPoints[number]; }

  private:
    double mSame;
    PlanGrid mGrid;
    std::vector<PlanPoint> mPoints;
};

/// A stretch between numbered ends.
struct Stretched {
    std::size_t from = 0, to = 0;
    PlanSide side;
};

class BorderWalk {
  public:
    BorderWalk(std::span<const PlanSide> sides, const std::function<bool(const PlanPoint&)>& holds,
               double same)
        : mHolds(holds), mSame(same), mPlaces(2 * same) {
        for (const PlanSide& side : CutWhereTheyMeet(sides, same)) Add(side);
    }

    std::vector<PlanLoop> Loops() {
        for (const Stretched& stretch : mStretches) Direct(stretch);
        std::vector<bool> used(mBorder.size(), false);
        std::vector<PlanLoop> loops;
        for (std::size_t i = 0; i < mBorder.size(); ++i)
            if (!used[i]) loops.push_back(Merged(Walk(i, used)));
        std::erase_if(loops, [this](const PlanLoop& loop) {
            return loop.size() < 2 || std::abs(SignedArea(loop)) < mSame;
        });
        return loops;
    }

  private:
    void Add(const PlanSide& side) {
        Stretched stretch{mPlaces.NumberOf(side.from), mPlaces.NumberOf(side.to), side};
        if (stretch.from == stretch.to) return;
        stretch.side.from = mPlaces[stretch.from];
        stretch.side.to = mPlaces[stretch.to];
        if (stretch.from > stretch.to) {
            std::swap(stretch.from, stretch.to);
            stretch.side = Reversed(stretch.side);
        }
        const PlanPoint middle = MiddleOf(stretch.side);
        std::vector<std::size_t>& between = mBetween[{stretch.from, stretch.to}];
        for (const std::size_t other : between)
            if (Distance(MiddleOf(mStretches[other].side), middle) < Beside * mSame) return;
        between.push_back(mStretches.size());
        mStretches.push_back(stretch);
    }

    /// Asked at three places: another side may touch this one at a single one of them.
    bool Holds(const PlanSide& side, double hand) const {
        int yes = 0;
        for (const double share : {0.5, 0.37, 0.61}) {
            const PlanPoint at = AtShare(side, share), before = AtShare(side, share - 0.01),
                            behind = AtShare(side, share + 0.01);
            const double dx = behind.x - before.x, dy = behind.y - before.y, size = std::hypot(dx, dy);
            const double off = hand * Beside * mSame / size;
            if (mHolds({at.x - dy * off, at.y + dx * off})) ++yes;
        }
        return yes > 1;
    }

    void Direct(const Stretched& stretch) {
        const bool left = Holds(stretch.side, 1), right = Holds(stretch.side, -1);
        if (left == right) return;
        Stretched directed = stretch;
        if (right) {
            std::swap(directed.from, directed.to);
            directed.side = Reversed(directed.side);
        }
        mLeaving[directed.from].push_back(mBorder.size());
        mBorder.push_back(directed);
    }

    /// The direction in which a side leaves its first end.
    double Leaves(const PlanSide& side) const {
        const double share = std::min(0.5, AlongShare * mSame / LengthOf(side));
        const PlanPoint at = AtShare(side, share);
        return std::atan2(at.y - side.from.y, at.x - side.from.x);
    }

    /// Of several ways to go on, the one that has only the region between it and the way in.
    std::size_t Next(std::size_t come, const std::vector<bool>& used) const {
        const double back = Leaves(Reversed(mBorder[come].side));
        std::size_t best = mBorder.size();
        double least = 3 * FullTurn;
        const auto leaving = mLeaving.find(mBorder[come].to);
        if (leaving == mLeaving.end()) return best;
        for (const std::size_t next : leaving->second) {
            if (used[next]) continue;
            double turn = std::fmod(back - Leaves(mBorder[next].side) + 2 * FullTurn, FullTurn);
            if (turn < 1e-9) turn += FullTurn;
            if (turn < least) {
                least = turn;
                best = next;
            }
        }
        return best;
    }

    PlanLoop Walk(std::size_t first, std::vector<bool>& used) const {
        PlanLoop loop;
        std::size_t at = first;
        while (true) {
            used[at] = true;
            loop.push_back(mBorder[at].side);
            if (mBorder[at].to == mBorder[first].from) return loop;
            at = Next(at, used);
            Require(at < mBorder.size());
        }
    }

    static void Require(bool closed) {
        if (!closed) throw InvalidCall("the border of a region doesn't close");
    }

    bool GoOn(const PlanSide& a, const PlanSide& b, PlanSide& both) const {
        const bool roundA = std::abs(a.bulge) * Distance(a.from, a.to) / 2 > StrayOfChords,
                   roundB = std::abs(b.bulge) * Distance(b.from, b.to) / 2 > StrayOfChords;
        if (roundA != roundB) return false;
        both = {a.from, b.to, 0};
        const double length = Distance(a.from, b.to);
        if (!roundA) {
            if (length < mSame) return false;
            const double dx = (b.to.x - a.from.x) / length, dy = (b.to.y - a.from.y) / length;
            const double along = (a.to.x - a.from.x) * dx + (a.to.y - a.from.y) * dy;
            const double across = (a.to.x - a.from.x) * dy - (a.to.y - a.from.y) * dx;
            return std::abs(across) < 3 * mSame && along > 0 && along < length;
        }
        if ((a.bulge > 0) != (b.bulge > 0)) return false;
        const PlanRound one = RoundOf(a), other = RoundOf(b);
        const double slack = 10 * mSame;
        if (Distance(one.center, other.center) > slack || std::abs(one.radius - other.radius) > slack)
            return false;
        const double sweep = one.sweep + other.sweep;
        // A side can't go all the way round.
        if (std::abs(sweep) > 1.75 * std::numbers::pi) return false;
        both.bulge = std::tan(sweep / 4);
        return true;
    }

    /// Cuts that the border has no use for heal.
    PlanLoop Merged(PlanLoop loop) const {
        for (std::size_t i = 0; i < loop.size() && loop.size() > 2;) {
            const std::size_t next = (i + 1) % loop.size();
            PlanSide both;
            if (!GoOn(loop[i], loop[next], both)) {
                ++i;
                continue;
            }
            loop[i] = both;
            loop.erase(loop.begin() + static_cast<std::ptrdiff_t>(next));
            if (next < i) --i;
        }
        return loop;
    }

    const std::function<bool(const PlanPoint&)>& mHolds;
    double mSame;
    Places mPlaces;
    std::vector<Stretched> mStretches, mBorder;
    std::map<std::pair<std::size_t, std::size_t>, std::vector<std::size_t>> mBetween;
    std::map<std::size_t, std::vector<std::size_t>> mLeaving;
};

}  // namespace

PlanPoint MiddleOf(const PlanSide& side) {
    return {(side.from.x + side.to.x) / 2 + side.bulge * (side.to.y - side.from.y) / 2,
            (side.from.y + side.to.y) / 2 - side.bulge * (side.to.x - side.from.x) / 2};
}

std::vector<PlanLoop> BorderOf(std::span<const PlanSide> sides,
                               const std::function<bool(const PlanPoint&)>& holds, double same) {
    return BorderWalk(sides, holds, same).Loops();
}

std::vector<PlanArea> AreasOf(std::vector<PlanLoop> loops) {
    std::vector<PlanArea> areas;
    std::vector<double> sizes;
    for (PlanLoop& loop : loops) {
        if (SignedArea(loop) <= 0) continue;
        sizes.push_back(SignedArea(loop));
        areas.push_back({std::move(loop), {}});
        loop.clear();
    }
    for (PlanLoop& loop : loops) {
        if (loop.empty()) continue;
        std::size_t smallest = areas.size();
        for (std::size_t i = 0; i < areas.size(); ++i) {
            if (!PlanField(areas[i].outer).Holds(MiddleOf(loop.front()))) continue;
            if (smallest == areas.size() || sizes[i] < sizes[smallest]) smallest = i;
        }
        if (smallest < areas.size()) areas[smallest].holes.push_back(std::move(loop));
    }
    return areas;
}

std::vector<PlanSide> SidesOf(std::span<const PlanLoop> loops) {
    std::vector<PlanSide> sides;
    for (const PlanLoop& loop : loops) sides.insert(sides.end(), loop.begin(), loop.end());
    return sides;
}

std::vector<PlanSide> SidesOf(const PlanArea& area) {
    std::vector<PlanSide> sides = area.outer;
    for (const PlanLoop& hole : area.holes) sides.insert(sides.end(), hole.begin(), hole.end());
    return sides;
}

}  // namespace brenvik

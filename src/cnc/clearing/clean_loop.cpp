// Spikes are found at the corners where a loop turns back upon itself, and cut off where its two flanks have
// come apart.
#include "cnc/clearing/clean_loop.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "cnc/plan/plan_curve_cuts.h"
#include "cnc/plan/plan_vectors.h"
#include "cnc/plan/side_places.h"

namespace brenvik {

namespace {

/// The cosine of the turn from which on a corner may be the tip of a spike.
constexpr double TurnsBack = -0.998;
/// Into how many steps a flank is divided to find where the other one has gone too far from it, and how often
/// the step in question is halved.
constexpr int Steps = 64, Halvings = 40;

bool TurnsBackAt(const PlanSide& out, const PlanSide& back) {
    return Dot(WayAt(out, true), WayAt(back, false)) < TurnsBack;
}

/// The share of a side's length at a place on it.
double ShareAt(const PlanSide& side, const PlanPoint& place) {
    if (!IsRound(side)) {
        const PlanPoint along = side.to - side.from;
        return std::clamp(Dot(place - side.from, along) / Dot(along, along), 0.0, 1.0);
    }
    const PlanRound round = RoundOf(side);
    const PlanPoint from = side.from - round.center, to = place - round.center;
    const double turn = round.sweep > 0 ? TurnTo(from, to) : TurnTo(to, from);
    return std::clamp(turn / std::abs(round.sweep), 0.0, 1.0);
}

/// Up to which share of it, from the tip on, a flank is no further from the other one than `narrow`.
double NarrowShare(const PlanSide& flank, const PlanSide& other, double narrow) {
    const auto isNarrow = [&](double share) {
        const PlanPoint place = AtShare(flank, share);
        return Length(NearestOn(other, place) - place) <= narrow;
    };
    double near = 0, far = 1;
    for (int step = 1; step <= Steps; ++step) {
        const double share = static_cast<double>(step) / Steps;
        if (isNarrow(share)) {
            near = share;
            continue;
        }
        far = share;
        break;
    }
    if (near >= 1) return 1;
    for (int halving = 0; halving < Halvings; ++halving) {
        const double middle = (near + far) / 2;
        (isNarrow(middle) ? near : far) = middle;
    }
    return near;
}

/// What two flanks of a spike, both seen from its tip, are cut off by.
struct CutOff {
    double one = 0, other = 0;  ///< As shares of the flanks.
};

CutOff CutOffOf(const PlanSide& one, const PlanSide& other, double narrow) {
    const bool first = LengthOf(one) < LengthOf(other);
    const PlanSide &shorter = first ? one : other, &longer = first ? other : one;
    const double share = NarrowShare(shorter, longer, narrow);
    const double beside = ShareAt(longer, NearestOn(longer, AtShare(shorter, share)));
    return first ? CutOff{share, beside} : CutOff{beside, share};
}

class Cleaning {
  public:
    Cleaning(PlanLoop loop, const SpikeLimits& limits) : mLoop(std::move(loop)), mLimits(limits) {}

    PlanLoop Clean() {
        DropShort();
        // Each step leaves less.
        for (std::size_t step = 0, most = 4 * mLoop.size(); step < most && CutOffOne(); ++step) DropShort();
        return std::move(mLoop);
    }

  private:
    std::size_t Next(std::size_t i) const { return (i + 1) % mLoop.size(); }
    void Erase(std::size_t i) { mLoop.erase(mLoop.begin() + static_cast<std::ptrdiff_t>(i)); }

    void DropShort() {
        for (std::size_t i = 0; i < mLoop.size() && mLoop.size() > 2;) {
            if (Length(mLoop[i].to - mLoop[i].from) > mLimits.shortest) {
                ++i;
                continue;
            }
            mLoop[(i + mLoop.size() - 1) % mLoop.size()].to = mLoop[i].to;
            Erase(i);
        }
    }

    bool CutOffOne() {
        if (mLoop.size() < 3) return false;
        for (std::size_t i = 0; i < mLoop.size(); ++i) {
            const std::size_t next = Next(i);
            if (!TurnsBackAt(mLoop[i], mLoop[next])) continue;
            const PlanSide one = Reversed(mLoop[i]), other = mLoop[next];
            const CutOff off = CutOffOf(one, other, mLimits.narrow);
            const double length = std::max(off.one * LengthOf(one), off.other * LengthOf(other));
            if (length <= mLimits.shortest || length > mLimits.longest) continue;
            const PlanPoint from = AtShare(one, off.one), to = AtShare(other, off.other);
            mLoop[i] = Reversed(Stretch(one, off.one, 1));
            mLoop[next] = Stretch(other, off.other, 1);
            if (off.one >= 1) mLoop[i] = {one.to, one.to, 0};
            if (off.other >= 1) mLoop[next] = {other.to, other.to, 0};
            mLoop.insert(mLoop.begin() + static_cast<std::ptrdiff_t>(i) + 1, {from, to, 0});
            return true;
        }
        return false;
    }

    PlanLoop mLoop;
    const SpikeLimits mLimits;
};

}  // namespace

bool IsSimple(std::span<const PlanSide> loop, double same) {
    if (NumberedStretches(loop, same).size() != loop.size()) return false;
    for (std::size_t i = 0; i < loop.size(); ++i)
        for (std::size_t j = i + 1; j < loop.size(); ++j)
            if (Length(loop[i].from - loop[j].from) < same) return false;
    return true;
}

std::vector<PlanArea> PlacesWithin(std::span<const PlanSide> loop, double same) {
    const PlanField field(loop);
    return AreasOf(BorderOf(
        loop, [&field](const PlanPoint& point) { return field.Holds(point); }, same));
}

PlanLoop WithoutSpikes(PlanLoop loop, const SpikeLimits& limits) {
    return Cleaning(std::move(loop), limits).Clean();
}

}  // namespace brenvik

// Each two sides that come near each other are walked along the shorter one.
#include "cnc/plan/doubled_back.h"

#include <algorithm>
#include <cmath>

#include "cnc/plan/plan_curve_cuts.h"
#include "cnc/plan/plan_piece.h"
#include "cnc/plan/plan_vectors.h"
#include "cnc/plan/side_places.h"

namespace brenvik {

namespace {

/// At how many places a side is looked at.
constexpr int Looks = 32;
/// The cosine of the angle from which on two ways count as opposite.
constexpr double Opposite = -0.998;

struct Frame {
    double minX = 0, maxX = 0, minY = 0, maxY = 0;
};

/// Around the side, arcs and all.
Frame FrameOf(const PlanSide& side) {
    const double beyond = std::abs(side.bulge) * Length(side.to - side.from);
    const auto [lowX, highX] = std::minmax(side.from.x, side.to.x);
    const auto [lowY, highY] = std::minmax(side.from.y, side.to.y);
    return {lowX - beyond, highX + beyond, lowY - beyond, highY + beyond};
}

struct Walked {
    PlanSide side;
    Frame frame;
    double length = 0;
};

/// The way of a side at one of its points.
PlanPoint WayBeside(const PlanSide& side, const PlanPoint& at) {
    if (!IsRound(side)) return WayAt(side, false);
    const PlanRound round = RoundOf(side);
    const PlanPoint arm = (at - round.center) * ((round.sweep > 0 ? 1 : -1) / Length(at - round.center));
    return {-arm.y, arm.x};
}

class Walk {
  public:
    Walk(std::span<const PlanSide> line, double apart, double shortest) : mApart(apart), mShortest(shortest) {
        for (const PlanSide& side : line) {
            const double chord = Length(side.to - side.from);
            if (chord <= 0) continue;
            const double arch = std::abs(std::atan(side.bulge));
            const double length = arch < 1e-6 ? chord : chord * 2 * arch / std::sin(2 * arch);
            mSides.push_back({side, FrameOf(side), length});
        }
        std::ranges::sort(mSides, {}, [](const Walked& each) { return each.frame.minX; });
    }

    std::vector<DoubledStretch> Found() {
        for (std::size_t i = 0; i < mSides.size(); ++i)
            for (std::size_t j = i + 1;
                 j < mSides.size() && mSides[j].frame.minX <= mSides[i].frame.maxX + mApart; ++j) {
                const Frame &a = mSides[i].frame, &b = mSides[j].frame;
                if (a.minY > b.maxY + mApart || b.minY > a.maxY + mApart) continue;
                const bool first = mSides[i].length < mSides[j].length;
                Along(first ? mSides[i] : mSides[j], first ? mSides[j].side : mSides[i].side);
            }
        std::ranges::sort(mFound, std::greater<>(),
                          [](const DoubledStretch& each) { return Length(each.to - each.from); });
        return std::move(mFound);
    }

  private:
    void Along(const Walked& shorter, const PlanSide& other) {
        DoubledStretch stretch;
        for (int i = 0; i < Looks; ++i) {
            const double share = (i + 0.5) / Looks;
            const PlanPoint at = AtShare(shorter.side, share), beside = NearestOn(other, at);
            const bool doubled = Length(beside - at) <= mApart &&
                                 Dot(WayBeside(shorter.side, at), WayBeside(other, beside)) < Opposite;
            if (!doubled) {
                Close(stretch, shorter.length);
                continue;
            }
            if (stretch.between.empty()) stretch.from = AtShare(shorter.side, share - 0.5 / Looks);
            stretch.to = AtShare(shorter.side, share + 0.5 / Looks);
            stretch.apart = std::max(stretch.apart, Length(beside - at));
            stretch.between.push_back((at + beside) * 0.5);
        }
        Close(stretch, shorter.length);
    }

    void Close(DoubledStretch& stretch, double length) {
        const double looks = static_cast<double>(stretch.between.size());
        if (looks > 0 && length * looks / Looks >= mShortest) mFound.push_back(std::move(stretch));
        stretch = {};
    }

    double mApart, mShortest;
    std::vector<Walked> mSides;
    std::vector<DoubledStretch> mFound;
};

}  // namespace

std::vector<DoubledStretch> DoubledBack(std::span<const PlanSide> line, double apart, double shortest) {
    return Walk(line, apart, shortest).Found();
}

}  // namespace brenvik

// Outside of the part and below it there is nothing to compare a cut with, so bounds are held.
#include "cnc/proof/reach_checks.h"

#include <algorithm>
#include <cmath>

#include "cnc/part/run_state.h"
#include "cnc/part/told.h"
#include "cnc/plan/plan_curve_cuts.h"
#include "cnc/proof/run_proof.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

/// In millimetres: no spoil board is cut deeper, whatever the setting of the day was.
constexpr double DeepestSpoil = 25;
/// In millimetres: by how much a run-off may miss its bound, and a depth in a name; places at one edge.
constexpr double ReachSlack = 1, DepthRounding = 0.01, SameEdge = 0.02;
/// Of the widest bit: a path runs off by less than a bit at an edge, and by less than another one where it
/// opens into air.
constexpr double BitsBeyond = 2;

class ReachCheck {
  public:
    ReachCheck(const RunState& run, const Box3& part)
        : mPart(part),
          mUnit(UnitOf(run)),
          mSpoil(std::max({DeepestSpoil * mUnit, NumberSetting(setting::BiesseWorksSpoil),
                           NumberSetting(setting::DrillSpoilAmount)})) {
        for (const MaterialTool& tool : run.part.Material.tools) mWidest = std::max(mWidest, tool.diameter);
    }

    void Look(const WrittenOperation& operation) {
        if (operation.bore) return LookAtMouth(operation);
        const double below = std::max(mPart.min.z - operation.low, operation.high - mPart.max.z);
        if (below > mSpoil + DepthRounding * mUnit)
            Fault(operation, "goes " + ReportedLength(below) + " into the spoil board, expected " +
                                 ReportedLength(mSpoil) + " at most");
        // A circle is known by what it cuts.
        if (operation.kind != OperationKind::Outline && !IsCircle(operation)) LookAtRunOff(operation);
    }

    std::vector<std::string> Faults() { return std::move(mFaults); }

  private:
    void Fault(const WrittenOperation& operation, const std::string& what) {
        mFaults.push_back(operation.layer + (operation.secondSide ? " of the second side " : " ") + what);
    }

    static bool IsCircle(const WrittenOperation& operation) {
        return operation.sides.size() == 2 && std::ranges::all_of(operation.sides, [](const PlanSide& side) {
                   return std::abs(std::abs(side.bulge) - 1) < 1e-9;
               });
    }

    double Outside(const PlanPoint& point) const {
        return std::max(
            {mPart.min.x - point.x, point.x - mPart.max.x, mPart.min.y - point.y, point.y - mPart.max.y});
    }

    void LookAtRunOff(const WrittenOperation& operation) {
        const double bit = std::max(mWidest, operation.bit);
        if (bit <= 0) return;
        double farthest = 0;
        for (const PlanSide& side : operation.sides)
            for (const double share : {0.0, 0.125, 0.25, 0.375, 0.5, 0.625, 0.75, 0.875})
                farthest = std::max(farthest, Outside(AtShare(side, share)));
        const double most = BitsBeyond * bit + ReachSlack * mUnit;
        if (farthest > most)
            Fault(operation, "runs on " + ReportedLength(farthest) + " outside the part, expected " +
                                 ReportedLength(most) + " at most");
    }

    void LookAtMouth(const WrittenOperation& operation) {
        const LevelRound& bore = *operation.bore;
        const auto off = [](double along, double at, double low, double high) {
            if (std::abs(along) < 0.5) return 0.0;
            return std::abs(at - (along > 0 ? low : high));
        };
        const double away = std::max(off(bore.along.x, bore.on.x, mPart.min.x, mPart.max.x),
                                     off(bore.along.y, bore.on.y, mPart.min.y, mPart.max.y));
        if (away > SameEdge * mUnit)
            Fault(operation, "begins " + ReportedLength(away) + " away from the edge that it is bored from");
    }

    const Box3 mPart;
    const double mUnit;
    const double mSpoil;
    double mWidest = 0;
    std::vector<std::string> mFaults;
};

}  // namespace

std::vector<std::string> FaultsOfReach(const RunState& run, const Box3& part,
                                       std::span<const WrittenOperation> operations) {
    ReachCheck check(run, part);
    for (const WrittenOperation& operation : operations) check.Look(operation);
    return check.Faults();
}

}  // namespace brenvik

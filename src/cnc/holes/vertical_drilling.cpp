// Vertical holes: each rim is paired with the circle at its floor, and one circle per hole is left on the top
// plane, on a layer that names depth and diameter in the language of the target.
//
// Holes that start on the top face come first. The others start in a recess, or belong to the other side; a
// trial cut decides which, and whether a pair of circles is a hole at all or the two ends of a pin. The
// circles of a place are few, so they are gathered once, in drawing order, and the list is kept in step with
// what is deleted.
#include "cnc/holes/vertical_drilling.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "base/numbers.h"
#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/holes/hole_account.h"
#include "cnc/holes/level_shapes.h"
#include "cnc/part/lengths.h"
#include "cnc/part/open_top.h"
#include "cnc/part/operation_layer.h"
#include "cnc/part/part_measures.h"
#include "cnc/part/run_state.h"
#include "cnc/targets/hole_rules.h"
#include "session/message.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

constexpr int CompareDecimals = 6;
// "Exactly 0" as far as the modeller can decide: a part laid at an odd angle leaves 1e-13.
constexpr double NoHeight = 1e-9;
// The share of a bore's volume that may be material and doesn't count: in files from other systems walls miss
// their circles by ten-thousandths.
constexpr double FilmShare = 1e-4;

/// A circle that may be a rim or a floor.
struct Rim : HoleCircle {
    AcadCircle* circle = nullptr;
    bool gone = false;
    bool passedOver = false;  ///< Looked at, with no operation; it stays in the drawing.
    bool ofPin = false;       ///< An end of a pin, which the account reports.
};

bool SameBore(const Rim& a, const Rim& b) { return SameLength(a.diameter, b.diameter) && OnOneAxis(a, b); }
bool Lower(const Rim& a, const Rim& b) { return Less(a.center.z, b.center.z); }
bool Wider(const Rim& a, const Rim& b) { return Less(b.diameter, a.diameter); }

/// What stands between a rim and its floor.
enum class Inside { Air, Pin, Other };

bool Upright(const AcadCircle& circle) {
    return std::abs(RoundHalfEven(circle.Normal().z, CompareDecimals)) == 1;
}

/// `circle` is on the floor.
void DrillDownTo(RunState& run, AcadCircle& circle, HoleStart start, const HoleHeights& heights,
                 double spoil) {
    HoleCut cut = CutOf(run, start, heights, spoil);
    cut.diameter = circle.Diameter();
    circle.SetThickness(HoleThickness(run, cut));
    circle.Move({0, 0, 0}, {0, 0, run.part.PartThickness - heights.floor});
    circle.SetColor(layers::HoleColor);
    cut.circleZ = circle.Center().z;
    const std::string layer = HoleLayerName(run, cut);
    EnsureOperationLayer(run, layer);
    circle.SetLayer(layer);
    circle.Update();
}

class Drilling {
  public:
    Drilling(RunState& run, const LevelShapes& shapes)
        : mRun(run),
          mShapes(shapes),
          mPart(BoxOfPart(run)),
          mSpoil(StrictNumberSetting(setting::DrillSpoilAmount)),
          mAccount(run, mPart) {
        for (AcadCircle* circle : AllOn<AcadCircle>(*run.part.drawing, layers::MaxCircleHold))
            mTop.push_back({{circle->Center(), circle->Diameter()}, circle});
        // A slanted circle is no candidate; the sorting has reported it.
        for (AcadCircle* circle : AllOn<AcadCircle>(*run.part.drawing, layers::CircleHold))
            if (Upright(*circle)) mRims.push_back({{circle->Center(), circle->Diameter()}, circle});
    }

    /// False when a floor lies where none can be: the part is given up.
    bool FromTopFace() {
        for (Rim& entry : mTop) {
            Rim* floor = FloorOfTopHole(entry);
            if (floor == nullptr) continue;
            if (!IsHole(entry, *floor)) continue;
            if (OnOtherSideAlready(entry, *floor))
                EraseBoth(entry, *floor);
            else if (!Drill(entry, *floor, HoleStart::TopFace))
                return false;
        }
        return true;
    }

    bool FromRecesses() {
        while (Rim* rim = NextRim()) {
            if (CoveredAbove(*rim)) {
                mCovered.push_back(*rim);
                GiveAway(*rim);
                continue;
            }
            Rim* floor = rim->passedOver ? nullptr : FloorOfRecessHole(*rim);
            if (floor == nullptr)
                PassOver(*rim);
            else if (OnOtherSideAlready(*rim, *floor))
                EraseBoth(*rim, *floor);
            else if (!IsHole(*rim, *floor))
                rim->passedOver = true;
            else if (!Drill(*rim, *floor, HoleStart::Recess))
                return false;
        }
        return true;
    }

    /// Reports circles that got no operation.
    void TellRest() {
        std::vector<HoleCircle> left;
        for (const std::vector<Rim>* rims : {&mTop, &mRims})
            for (const Rim& rim : *rims)
                if (!rim.gone && !rim.ofPin) left.push_back(rim);
        mAccount.Tell(left);
    }

  private:
    static void Erase(Rim& rim) {
        rim.circle->Delete();
        rim.gone = true;
    }
    static void EraseBoth(Rim& rim, Rim& floor) {
        Erase(rim);
        Erase(floor);
    }
    void GiveAway(Rim& rim) {
        Erase(rim);
        mAccount.AddGivenAway(rim);
    }

    /// The highest circle below a rim on the top face. The other levels of the hole, and what is wider below,
    /// are the other side's.
    Rim* FloorOfTopHole(const Rim& entry) {
        Rim* best = nullptr;
        for (Rim& other : mRims) {
            if (other.gone || !Lower(other, entry) || !OnOneAxis(other, entry)) continue;
            if (Wider(other, entry))
                GiveAway(other);
            else if (SameLength(other.diameter, entry.diameter))
                TakeHigher(best, other);
        }
        return best;
    }

    void TakeHigher(Rim*& best, Rim& other) {
        if (best == nullptr || SameLength(other.center.z, best->center.z)) {
            best = &other;
            return;
        }
        const bool replaces = Lower(*best, other);
        GiveAway(replaces ? *best : other);
        if (replaces) best = &other;
    }

    /// The first circle below the top plane, or the highest of its bore.
    Rim* NextRim() {
        Rim* candidate = nullptr;
        for (Rim& rim : mRims) {
            if (rim.gone || rim.passedOver || !Less(rim.center.z, mRun.part.PartThickness)) continue;
            if (candidate == nullptr || (SameBore(rim, *candidate) && Lower(*candidate, rim)))
                candidate = &rim;
        }
        return candidate;
    }

    /// Whether there is material above the rim. Circles of the same bore below a covered one are covered by
    /// the same material. Rims that the trial can't judge are passed over.
    bool CoveredAbove(Rim& rim) {
        for (const Rim& covered : mCovered)
            if (SameBore(covered, rim)) return true;
        switch (OpenToTop(mRun, *rim.circle, CompareDecimals)) {
            case OpenTop::Open:
                return false;
            case OpenTop::Covered:
                return true;
            case OpenTop::Grown:
                PassOver(rim);
                return false;
        }
        return false;
    }

    /// The highest circle of the bore below its rim; what is wider below the rim is the other side's. What is
    /// wider above it is open to the top just as the rim is, and waits for its own turn.
    Rim* FloorOfRecessHole(const Rim& entry) {
        Rim* best = nullptr;
        for (Rim& other : mRims) {
            if (other.gone || !Lower(other, entry) || !OnOneAxis(other, entry)) continue;
            if (Wider(other, entry)) {
                GiveAway(other);
            } else if (SameLength(other.diameter, entry.diameter) &&
                       (best == nullptr || Lower(*best, other))) {
                best = &other;
            }
        }
        return best;
    }

    /// The whole bore at once: without its rim, no circle of it can become a hole.
    void PassOver(const Rim& entry) {
        for (Rim& rim : mRims)
            if (SameBore(rim, entry)) rim.passedOver = true;
    }

    /// On the second side: whether the first has drilled this hole, through the part or out of a recess that
    /// lies below now.
    bool OnOtherSideAlready(const Rim& entry, const Rim& floor) const {
        if (mRun.FirstPass()) return false;
        if (std::abs(floor.center.z) < NoHeight) return true;
        return mAccount.DrilledOnFirstSide(entry, floor.center.z);
    }

    /// Whether there is only air between rim and floor, and above the rim: a pin that stands in a recess has
    /// the circles of a hole.
    bool IsHole(Rim& entry, Rim& floor) {
        switch (Between(entry, floor)) {
            case Inside::Air:
                return true;
            case Inside::Pin:
                mAccount.AddPin(entry, floor.center.z);
                for (Rim* end : {&entry, &floor}) end->passedOver = end->ofPin = true;
                return false;
            case Inside::Other:
                // Two cones have their wide ends on the faces, and the other side looks for the other one.
                if (Less(mPart.min.z, floor.center.z)) entry.passedOver = floor.passedOver = true;
                return false;
        }
        return false;
    }

    /// Whether anything but air may stand between the two circles. The wall of a lone hole in plain wood has
    /// no other circle and no floor or ledge of the part within it or around it, and the end of a pin has.
    bool MayBeBlocked(const Rim& floor) const {
        if (mShapes.Meet(floor.center, floor.diameter)) return true;
        const double radius = floor.diameter / 2;
        if (!Less(mPart.min.x, floor.center.x - radius) && !Less(floor.center.x + radius, mPart.max.x))
            return true;
        const auto within = [&](const Rim& other) {
            if (SameBore(other, floor) || Lower(other, floor)) return false;
            const double away = std::hypot(other.center.x - floor.center.x, other.center.y - floor.center.y);
            return Less(away, radius + other.diameter / 2);
        };
        return std::ranges::any_of(mTop, within) || std::ranges::any_of(mRims, within);
    }

    Inside Between(const Rim& entry, const Rim& floor) {
        if (!MayBeBlocked(floor)) return Inside::Air;
        const double height = std::max(0.0, entry.center.z - floor.center.z);
        const double bore = std::numbers::pi / 4 * floor.diameter * floor.diameter * height;
        const double material = MaterialAbove(mRun, *floor.circle);
        if (std::abs(material) <= FilmShare * bore) return Inside::Air;
        return std::abs(material - bore) <= FilmShare * bore ? Inside::Pin : Inside::Other;
    }

    bool Drill(Rim& entry, Rim& floor, HoleStart start) {
        if (!Less(floor.center.z, mRun.part.PartThickness)) {
            ShowMessage("error");
            return false;
        }
        const double top = start == HoleStart::TopFace ? entry.center.z : mRun.part.PartThickness;
        DrillDownTo(mRun, *floor.circle, start, {top, floor.center.z, mPart.max.z}, mSpoil);
        mAccount.AddDrilled(entry, floor.center.z);
        Erase(entry);
        floor.gone = true;
        return true;
    }

    RunState& mRun;
    const LevelShapes& mShapes;
    const Box3 mPart;
    const double mSpoil;
    HoleAccount mAccount;
    std::vector<Rim> mTop, mRims;
    std::vector<Rim> mCovered;  ///< Rims that the trial cut found material above.
};

}  // namespace

void DrillAt(RunState& run, AcadCircle& floor, bool fromTopFace) {
    const HoleStart start = fromTopFace ? HoleStart::TopFace : HoleStart::Recess;
    DrillDownTo(run, floor, start, {run.part.PartThickness, floor.Center().z, BoxOfPart(run).max.z},
                StrictNumberSetting(setting::DrillSpoilAmount));
}

PassOutcome DrillVertically(RunState& run, const LevelShapes& shapes) {
    Drilling drilling(run, shapes);
    if (!drilling.FromTopFace() || !drilling.FromRecesses()) return PassOutcome::SkipPart;
    drilling.TellRest();
    return PassOutcome::GoOn;
}

}  // namespace brenvik

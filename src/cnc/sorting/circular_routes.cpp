// The table of circular routes as it stands, and around it what keeps every operation in air and every bore
// covered where more than two diameters share an axis.
#include "cnc/sorting/circular_routes.h"

#include <algorithm>
#include <vector>

#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/plan_grid.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/part/lengths.h"
#include "cnc/part/open_top.h"
#include "cnc/part/second_side.h"
#include "cnc/part/told.h"
#include "cnc/sorting/bore_levels.h"
#include "session/message.h"

namespace brenvik {

namespace {

constexpr int PocketColor = 60, PlainColor = 6;
constexpr int VolumeDigits = 6;
constexpr std::string_view BadRoute = "Error with circular route path .... skipping this part.";

/// A path that the sorting settled on: the bore of this diameter is cut from the top down to the height.
struct Settled {
    double diameter = 0, floor = 0;
};

/// The circles on one vertical, by number and in drawing order.
struct Axis {
    std::vector<std::size_t> rims;
    std::vector<Settled> paths;
    bool sorted = false;  ///< A row of the table has worked on it.
    bool noted = false;   ///< The operator hears of it once.
};

class CircularRoutes {
  public:
    CircularRoutes(RunState& run, const Box3& part) : mRun(run), mDrawing(*run.part.drawing), mPart(part) {
        Gather();
    }

    PassOutcome Sort() {
        // An axis is done before the next circle of the underside is looked at: a fresh start of the scan
        // would find the same one first.
        for (std::size_t number = 0; number < mRims.size(); ++number) {
            while (mRims[number].held && OnUnderside(mRims[number]))
                if (!SortAxisOf(mRims[number])) return PassOutcome::SkipPart;
        }
        for (RouteRim& rim : mRims)
            if (rim.held && Between(rim)) SettleBetween(rim);
        for (Axis& axis : mAxes)
            if (axis.sorted) CoverRest(axis);
        for (const Axis& axis : mAxes) NoteOddRim(axis);
        return PassOutcome::GoOn;
    }

  private:
    void Gather() {
        PlanGrid grid;
        for (AcadCircle* circle : AllOn<AcadCircle>(mDrawing, layers::RouteCircleHold)) {
            RouteRim rim{circle, circle->Center(), circle->Diameter()};
            rim.axis = AxisAt(grid, rim.center);
            mAxes[rim.axis].rims.push_back(mRims.size());
            grid.Add(rim.center.x, rim.center.y, mRims.size());
            mRims.push_back(rim);
        }
    }

    std::size_t AxisAt(const PlanGrid& grid, const Point3& center) {
        for (const std::size_t other : grid.Near(center.x, center.y)) {
            const RouteRim& rim = mRims[other];
            if (SameLength(rim.center.x, center.x) && SameLength(rim.center.y, center.y)) return rim.axis;
        }
        mAxes.emplace_back();
        return mAxes.size() - 1;
    }

    bool OnUnderside(const RouteRim& rim) const { return SameLength(rim.center.z, 0); }
    bool OnTop(const RouteRim& rim) const { return SameLength(rim.center.z, mPart.max.z); }
    bool Between(const RouteRim& rim) const {
        return Less(mPart.min.z, rim.center.z) && Less(rim.center.z, mPart.max.z);
    }

    /// One round of the scan. False where the part has to be given up.
    bool SortAxisOf(RouteRim& bottom) {
        Axis& axis = mAxes[bottom.axis];
        mLevels.Begin(bottom);
        for (const std::size_t number : axis.rims) {
            RouteRim& rim = mRims[number];
            if (&rim == &bottom || !rim.held || !Less(0, rim.center.z)) continue;
            if (OnTop(rim))
                mLevels.TakeTop(rim);
            else
                mLevels.TakeBetween(rim);
        }
        const BorePlan plan = mLevels.Plan();
        if (plan.impossible && !mRun.FirstPass()) {
            // The first pass has seen it alone on the top, and reported it.
            bottom.held = false;
            return true;
        }
        axis.sorted = true;
        if (plan.impossible && IsOpen(*bottom.circle)) {
            // A bore right through, whose other rim another feature has bitten.
            MakeThrough(bottom, PlainColor);
            return true;
        }
        if (plan.impossible) {
            Note(bottom);
            ShowMessage(BadRoute);
            return false;
        }
        CarryOut(plan, bottom);
        return true;
    }

    void CarryOut(const BorePlan& plan, RouteRim& bottom) {
        if (plan.through == BorePlan::Through::B) {
            MakeThrough(bottom, plan.otherSide ? 0 : PlainColor);
        } else if (plan.through == BorePlan::Through::T) {
            RouteRim& top = *mLevels.T;
            top.circle->Move({0, 0, top.center.z}, {0, 0, 0});
            MakeThrough(top, 0);
        }
        if (plan.dropB) Drop(&bottom);
        if (plan.dropM1) Drop(mLevels.M1);
        if (plan.dropT) Drop(mLevels.T);
        if (plan.dropM2) Drop(mLevels.M2);
        // A floor with material above is left on hold, to be assigned to its side there.
        if (plan.pocket && IsOpen(*mLevels.M2->circle)) MakePocket(*mLevels.M2, PocketColor);
        if (plan.otherSide) NeedOtherSide(mRun);
    }

    /// Unfilled slots are null; slots from earlier rounds may point to deleted circles.
    static void Drop(RouteRim* rim) {
        if (rim == nullptr) return;
        Skip([rim] { rim->circle->Delete(); });
        rim->held = false;
    }

    bool IsOpen(AcadCircle& circle) { return OpenToTop(mRun, circle, VolumeDigits) == OpenTop::Open; }

    /// `rim` lies on the underside by now. What isn't open all the way up is no through bore: a cone is cut
    /// from its narrow side, and the round outside of a part is no bore at all.
    void MakeThrough(RouteRim& rim, int color) {
        rim.held = false;
        if (!IsOpen(*rim.circle)) {
            Note(rim);
            rim.circle->Delete();
            if (Less(mLevels.T->diameter, rim.diameter)) NeedOtherSide(mRun);
            return;
        }
        rim.circle->SetLayer(layers::ThroughRouteCirclePv);
        if (color != 0) rim.circle->SetColor(color);
        mAxes[rim.axis].paths.push_back({rim.diameter, mPart.min.z});
    }

    void MakePocket(RouteRim& rim, int color) {
        rim.held = false;
        rim.circle->SetLayer(layers::RouteCirclePv);
        rim.circle->SetColor(color);
        mAxes[rim.axis].paths.push_back({rim.diameter, rim.center.z});
    }

    void SettleBetween(RouteRim& rim) {
        if (IsOpen(*rim.circle))
            MakePocket(rim, PlainColor);
        else if (OpenToUnderside(mRun, *rim.circle, VolumeDigits) == OpenTop::Open)
            NeedOtherSide(mRun);
        else
            Note(rim);
    }

    void Note(const RouteRim& rim) {
        Axis& axis = mAxes[rim.axis];
        if (mRun.FirstPass() && !axis.noted)
            NoteUnexplained(mRun, mPart, "round shape", rim.diameter, rim.center);
        axis.noted = true;
    }

    static bool Covered(const Axis& axis, double diameter, double floor) {
        return std::ranges::any_of(axis.paths, [&](const Settled& path) {
            return !Less(path.diameter, diameter) && !Less(floor, path.floor);
        });
    }

    /// With three diameters and more on an axis the two slots can't name every step, and which ones they name
    /// hangs on the order of the drawing. What is open from above and still uncovered gets its path here.
    void CoverRest(Axis& axis) {
        const RouteRim *bottom = nullptr, *top = nullptr;
        for (const std::size_t number : axis.rims) {
            const RouteRim& rim = mRims[number];
            if (OnUnderside(rim)) bottom = &rim;
            if (OnTop(rim)) top = &rim;
        }
        if (axis.rims.size() < 3 || bottom == nullptr) return;
        if (top != nullptr)
            Cover(axis, {bottom->center.x, bottom->center.y, mPart.min.z},
                  std::min(bottom->diameter, top->diameter), layers::ThroughRouteCirclePv);
        std::vector<const RouteRim*> floors;
        for (const std::size_t number : axis.rims) {
            const RouteRim& rim = mRims[number];
            // A bore that ends below the top is cut from the underside, its far end included.
            const bool farEnd = top == nullptr && SameLength(rim.diameter, bottom->diameter);
            if (!rim.held && Between(rim) && !farEnd) floors.push_back(&rim);
        }
        std::ranges::sort(floors, [](const RouteRim* a, const RouteRim* b) {
            if (!SameLength(a->center.z, b->center.z)) return a->center.z < b->center.z;
            return a->diameter > b->diameter;
        });
        for (const RouteRim* rim : floors) Cover(axis, rim->center, rim->diameter, layers::RouteCirclePv);
    }

    void Cover(Axis& axis, const Point3& center, double diameter, std::string_view layer) {
        if (Covered(axis, diameter, center.z)) return;
        AcadCircle& circle = *mDrawing.ModelSpace().AddCircle(center, diameter / 2);
        circle.SetLayer(layer);
        circle.SetColor(PocketColor);
        if (IsOpen(circle))
            axis.paths.push_back({diameter, center.z});
        else
            circle.Delete();
    }

    /// Every plain bore has two rims of its diameter. A single one belongs to a cone, a dish, or a bore that
    /// another feature cuts into, and no circle shows how deep it is.
    void NoteOddRim(const Axis& axis) {
        for (const std::size_t number : axis.rims) {
            const RouteRim& rim = mRims[number];
            const auto alike = [&](std::size_t other) {
                return SameLength(mRims[other].diameter, rim.diameter);
            };
            if (std::ranges::count_if(axis.rims, alike) != 1) continue;
            Note(rim);
            return;
        }
    }

    RunState& mRun;
    AcadDocument& mDrawing;
    Box3 mPart;
    std::vector<RouteRim> mRims;
    std::vector<Axis> mAxes;
    BoreLevels mLevels;
};

}  // namespace

PassOutcome SortCircularRoutes(RunState& run, const Box3& part) { return CircularRoutes(run, part).Sort(); }

}  // namespace brenvik

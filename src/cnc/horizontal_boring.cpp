// Edge bores: a circle on one of the four faces of the part's box, with the nearest circle of its diameter
// behind it for a floor. The first family of targets keeps the circle with its normal; for the second, whose
// receivers have no edge face, the bore is drawn as the rectangle that its cylinder shows from above.
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

#include "base/numbers.h"
#include "base/skip.h"
#include "cnc/drawing_walk.h"
#include "cnc/drilled_holes.h"
#include "cnc/horizontal_boring_names.h"
#include "cnc/part_steps.h"
#include "cnc/target_table.h"

namespace brenvik {

namespace {

constexpr int CompareDecimals = 6, RectangleDecimals = 4;
constexpr int KeptColor = 8, ReplacedColor = 6, RectangleColor = 15;

/// One circle of the work layer. The part lies in the positive quadrant, so a coordinate below 0 is noise.
struct BoreCircle {
    AcadCircle* circle = nullptr;
    Point3 center, normal;
    double diameter = 0;
    bool explained = false;  ///< Part of a bore, as rim, floor, or in between.
};

/// A bore that was found: its rim and its floor, by their places in the list.
struct Bore {
    const SideTraits* side = nullptr;
    std::size_t rim = 0, floor = 0;
    double depth = 0;
};

double Along(const Point3& point, Axis axis) { return axis == Axis::X ? point.x : point.y; }
double Across(const Point3& point, Axis axis) { return axis == Axis::X ? point.y : point.x; }
double FaceOf(const Box3& part, const SideTraits& side) {
    return Along(side.atMax ? part.max : part.min, side.axis);
}
Point3 Outward(const SideTraits& side) {
    const double along = side.atMax ? 1 : -1;
    return side.axis == Axis::X ? Point3{along, 0, 0} : Point3{0, along, 0};
}

bool SameCircle(const BoreCircle& a, const BoreCircle& b) {
    return SameLength(a.center.x, b.center.x) && SameLength(a.center.y, b.center.y) &&
           SameLength(a.center.z, b.center.z) && SameLength(a.diameter, b.diameter);
}

class Boring {
  public:
    explicit Boring(RunState& run)
        : mRun(run), mTraits(TraitsOf(run.target)), mPart(LastSolid(*run.part).GetBoundingBox()) {
        for (AcadCircle* circle : AllOn<AcadCircle>(*run.part, mTraits.horizontalWorkLayer)) {
            const Point3 center = circle->Center();
            mCircles.push_back({circle,
                                {std::abs(center.x), std::abs(center.y), std::abs(center.z)},
                                circle->Normal(),
                                circle->Diameter()});
        }
    }

    /// A rim comes twice: from the face, looking out of the material, and from the bore's wall, looking along
    /// the axis either way. On the four faces both are made to look outward.
    void RepairNormals() {
        for (const Axis axis : {Axis::Y, Axis::X}) {
            for (const SideTraits& side : Sides()) {
                if (side.axis != axis) continue;
                for (BoreCircle& each : mCircles) LookOutward(each, side);
            }
        }
    }

    void FindBores() {
        for (const SideTraits& side : Sides()) {
            for (std::size_t rim = 0; rim < mCircles.size(); ++rim) {
                if (!IsRim(mCircles[rim], side)) continue;
                if (const std::optional<Bore> bore = BoreOf(rim, side)) Keep(*bore);
            }
        }
    }

    void PlaceBores() {
        for (const Bore& bore : mBores) {
            if (mTraits.firstFamily)
                PlaceCircle(bore);
            else
                PlaceRectangle(bore);
        }
        if (mTraits.firstFamily) {
            TopView(*mRun.part);
            mRun.part->SendCommand("regen ");
        }
        mRun.edgeBores = static_cast<int>(mBores.size());
    }

    /// Tells what is no part of a bore, and clears twins and what rectangles stand for now.
    void Finish() {
        for (const BoreCircle& each : mCircles)
            if (!each.explained && !InBore(each))
                NoteUnexplained(mRun, mPart, "edge bore", each.diameter, each.center);
        if (mTraits.firstFamily) {
            for (const std::size_t twin : mTwins) mCircles[twin].circle->Delete();
            return;
        }
        for (const BoreCircle& each : mCircles) each.circle->Delete();
    }

  private:
    void LookOutward(BoreCircle& each, const SideTraits& side) const {
        if (std::abs(RoundHalfEven(Along(each.normal, side.axis), CompareDecimals)) != 1) return;
        if (!SameLength(Along(each.center, side.axis), FaceOf(mPart, side))) return;
        each.normal = Outward(side);
        each.circle->SetNormal(each.normal);
    }

    bool IsRim(const BoreCircle& each, const SideTraits& side) const {
        return RoundHalfEven(Along(each.normal, side.axis), CompareDecimals) == (side.atMax ? 1 : -1) &&
               Less(Across(mPart.min, side.axis), Across(each.center, side.axis)) &&
               SameLength(Along(each.center, side.axis), FaceOf(mPart, side));
    }

    /// The bore with the nearest floor behind the rim; nothing where no circle of its diameter lies there.
    std::optional<Bore> BoreOf(std::size_t rim, const SideTraits& side) const {
        const BoreCircle& entry = mCircles[rim];
        std::optional<Bore> nearest;
        for (std::size_t i = mCircles.size(); i-- > 0;) {
            const BoreCircle& floor = mCircles[i];
            if (i == rim || !NearlyEqual(floor.diameter, entry.diameter) ||
                !SameLength(Across(floor.center, side.axis), Across(entry.center, side.axis)) ||
                !SameLength(floor.center.z, entry.center.z))
                continue;
            const double from = Along(entry.center, side.axis), to = Along(floor.center, side.axis);
            if (side.atMax ? !Less(to, from) : !Less(from, to)) continue;
            const double depth = WithoutNoise(std::abs(to - from));
            if (!nearest || depth < nearest->depth) nearest = Bore{&side, rim, i, depth};
        }
        return nearest;
    }

    /// A rim's twin is the same bore: of the two circles the first stays, and one operation comes of both.
    void Keep(const Bore& bore) {
        BoreCircle& rim = mCircles[bore.rim];
        mCircles[bore.floor].explained = rim.explained = true;
        for (const Bore& made : mBores) {
            if (!SameCircle(mCircles[made.rim], rim)) continue;
            mTwins.push_back(bore.rim);
            return;
        }
        mBores.push_back(bore);
    }

    void Dress(const Bore& bore, int color) {
        AcadCircle& circle = *mCircles[bore.rim].circle;
        circle.SetThickness(-bore.depth);
        circle.SetColor(color);
    }

    BoreCut CutOf(const Bore& bore) const {
        const BoreCircle& rim = mCircles[bore.rim];
        return {rim.diameter, bore.depth, rim.center.z};
    }

    void PlaceCircle(const Bore& bore) {
        Dress(bore, KeptColor);
        const std::string layer = BoreLayerName(mRun, *bore.side, CutOf(bore));
        EnsureOperationLayer(mRun, layer);
        AcadCircle& circle = *mCircles[bore.rim].circle;
        circle.SetLayer(layer);
        circle.Update();
    }

    void PlaceRectangle(const Bore& bore) {
        const SideTraits& side = *bore.side;
        const BoreCircle& rim = mCircles[bore.rim];
        AddLayer(*mRun.part, side.workLayer);
        Dress(bore, ReplacedColor);
        rim.circle->SetLayer(side.workLayer);

        const auto rounded = [](double value) { return RoundHalfEven(value, RectangleDecimals); };
        const double radius = rounded(rim.circle->Radius()), depth = rounded(bore.depth);
        const double middle = rounded(Across(rim.center, side.axis));
        const double face = rounded(Along(rim.center, side.axis));
        const double inside = rounded(side.atMax ? face - depth : face + depth);
        const double low = rounded(middle - radius), high = rounded(middle + radius);
        const std::array<double, 8> corners =
            side.axis == Axis::Y ? std::array<double, 8>{low, face, high, face, high, inside, low, inside}
                                 : std::array<double, 8>{face, low, face, high, inside, high, inside, low};
        AcadLWPolyline& rectangle = *mRun.part->ModelSpace().AddLightWeightPolyline(corners);
        rectangle.SetClosed(true);
        rectangle.SetThickness(0);
        rectangle.SetColor(RectangleColor);
        const std::string layer = BoreLayerName(mRun, side, CutOf(bore));
        EnsureOperationLayer(mRun, layer);
        rectangle.SetLayer(layer);
        rectangle.Update();
    }

    /// Whether a circle lies in a bore that was made: the twin of a rim or a floor, or a step no wider.
    bool InBore(const BoreCircle& each) const {
        for (const Bore& bore : mBores) {
            const BoreCircle &rim = mCircles[bore.rim], &floor = mCircles[bore.floor];
            const Axis axis = bore.side->axis;
            if (Less(rim.diameter, each.diameter) ||
                !SameLength(Across(each.center, axis), Across(rim.center, axis)) ||
                !SameLength(each.center.z, rim.center.z))
                continue;
            const double at = Along(each.center, axis);
            const double from = Along(rim.center, axis), to = Along(floor.center, axis);
            if (!Less(at, std::min(from, to)) && !Less(std::max(from, to), at)) return true;
        }
        return false;
    }

    RunState& mRun;
    const TargetTraits& mTraits;
    const Box3 mPart;
    std::vector<BoreCircle> mCircles;
    std::vector<Bore> mBores;
    std::vector<std::size_t> mTwins;
};

}  // namespace

void BoreHorizontally(RunState& run) {
    const std::string_view workLayer = TraitsOf(run.target).horizontalWorkLayer;
    Skip([&] { UnlockLayer(*run.part, workLayer); });
    Boring boring(run);
    boring.RepairNormals();
    boring.FindBores();
    boring.PlaceBores();
    boring.Finish();
}

}  // namespace brenvik

// Edge bores: a circle on one of the four faces of the part's box, with the nearest circle of its diameter
// behind it for a floor. The first family of targets keeps the circle with its normal; for the second, whose
// receivers have no edge face, the bore is drawn as the rectangle that its cylinder shows from above.
#include "cnc/holes/horizontal_boring.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "base/numbers.h"
#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/part/lengths.h"
#include "cnc/part/open_top.h"
#include "cnc/part/operation_layer.h"
#include "cnc/part/part_measures.h"
#include "cnc/part/run_state.h"
#include "cnc/part/told.h"
#include "cnc/targets/bore_rules.h"
#include "cnc/targets/target_table.h"

namespace brenvik {

namespace {

constexpr int CompareDecimals = 6, RectangleDecimals = 4;
constexpr int ReplacedColor = 6;

/// One circle of the work layer. The part lies in the positive quadrant, so a coordinate below 0 is noise.
struct BoreCircle {
    AcadCircle* circle = nullptr;
    Point3 center, normal;
    double diameter = 0;
    bool explained = false;  ///< Part of a bore, as rim, floor, or in between.
};

/// A curve that may end the wall of a bore; `arc` is nothing for those where two holes cross.
struct WallEnd {
    Box3 box;
    const AcadArc* arc = nullptr;
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
    explicit Boring(RunState& run) : mRun(run), mTraits(TraitsOf(run.target)), mPart(BoxOfPart(run)) {
        for (AcadCircle* circle : AllOn<AcadCircle>(*run.part.drawing, mTraits.horizontalWorkLayer)) {
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
                if (!IsRim(mCircles[rim], side) || !FaceIsAnEdge(side)) continue;
                if (IsTwin(rim)) continue;
                std::optional<Bore> bore = BoreOf(rim, side);
                if (bore && RunsIntoMaterial(*bore)) bore.reset();
                if (!bore) bore = OpenBore(rim, side);
                if (bore) Keep(*bore);
            }
        }
    }

    /// A recess may have bitten into the mouth of a bore and left an arc of its rim on the face. If a circle
    /// further in is whole, with only air between, it is bored from the face all the same.
    void FindBittenBores() {
        for (const SideTraits& side : Sides())
            while (const std::optional<std::size_t> floor = DeepestBitten(side))
                Keep({&side, AddRim(side, *floor), *floor, DepthOf(*floor, side)});
    }

    void PlaceBores() {
        for (const Bore& bore : mBores) {
            if (mTraits.firstFamily)
                PlaceCircle(bore);
            else
                PlaceRectangle(bore);
        }
        if (mTraits.firstFamily) {
            TopView(*mRun.part.drawing);
            mRun.part.drawing->SendCommand("regen ");
        }
        mRun.part.edgeBores = static_cast<int>(mBores.size());
    }

    /// Reports circles that belong to no bore; deletes twins, and circles that rectangles have replaced.
    void Finish() {
        for (const BoreCircle& each : mCircles)
            if (!each.explained && !InBore(each))
                NoteUnexplained(mRun, mPart, "edge bore", each.diameter, each.center,
                                AroundAxis(mPart, each.center, each.normal, each.diameter / 2));
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

    /// The bore with the nearest floor behind the rim; empty where there is no circle of its diameter.
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

    /// The circle that lies nearest behind a rim needn't be its floor: where a bolt's bore ends in its cam,
    /// it may be that of the fitting at the other end of the part. A bore whose wall is broken off on the way
    /// is tried.
    bool RunsIntoMaterial(const Bore& bore) {
        const std::vector<double> ends = WallEnds(*bore.side, mCircles[bore.rim]);
        return std::ranges::any_of(ends, [&](double end) { return Less(0, end) && Less(end, bore.depth); }) &&
               !LiesInAir(*bore.side, mCircles[bore.rim], bore.depth);
    }

    bool LiesInAir(const SideTraits& side, const BoreCircle& entry, double depth) const {
        // A little narrower and shorter than the bore, so that its own wall doesn't count.
        constexpr double share = 0.999, slack = 1e-4;
        const double radius = share * entry.diameter / 2;
        const Point3 out = Outward(side), &rim = entry.center;
        const double length = share * depth;
        const Point3 end{rim.x - out.x * length, rim.y - out.y * length, rim.z};
        double material = 0;
        return Skip([&] { material = MaterialWithin(mRun, rim, end, radius); }) &&
               material < slack * radius * radius * length;
    }

    /// A bore that opens into another hole has no floor of its own, as where the bolt of a fitting meets its
    /// cam: it goes as far as its wall does. The wall ends in arcs of the bore's own size, and in the curves
    /// where the two holes cross, which lie within the bore. Where another bore lies in the same line, some
    /// of them are that one's.
    std::optional<Bore> OpenBore(std::size_t rim, const SideTraits& side) {
        const BoreCircle& entry = mCircles[rim];
        std::vector<double> ends = WallEnds(side, entry);
        std::ranges::sort(ends, std::greater<>());
        const bool alone = !MeetsAnother(side, entry);
        double tried = 0;
        for (const double end : ends) {
            const double depth = WithoutNoise(end);
            if (!Less(0, depth)) break;
            if (SameLength(depth, tried)) continue;
            if (alone || LiesInAir(side, entry, depth)) return Bore{&side, rim, rim, depth};
            tried = depth;
        }
        return std::nullopt;
    }

    /// Whether a circle of another bore lies in the line of this one.
    bool MeetsAnother(const SideTraits& side, const BoreCircle& entry) const {
        return std::ranges::any_of(mCircles, [&](const BoreCircle& other) {
            return SameLength(Across(other.center, side.axis), Across(entry.center, side.axis)) &&
                   SameLength(other.center.z, entry.center.z) &&
                   !SameLength(Along(other.center, side.axis), Along(entry.center, side.axis));
        });
    }

    /// Depths behind the rim at which the bore's wall may end.
    std::vector<double> WallEnds(const SideTraits& side, const BoreCircle& entry) {
        if (!mWallEnds) mWallEnds = CurvesOfWalls();
        const double radius = entry.diameter / 2;
        const double middle = Across(entry.center, side.axis), from = Along(entry.center, side.axis);
        std::vector<double> depths;
        for (const auto& [box, arc] : *mWallEnds) {
            if (arc != nullptr && !IsOfBore(*arc, side, entry)) continue;
            if (Less(Across(box.min, side.axis), middle - radius) ||
                Less(middle + radius, Across(box.max, side.axis)) ||
                Less(box.min.z, entry.center.z - radius) || Less(entry.center.z + radius, box.max.z))
                continue;
            const double to = Along(side.atMax ? box.min : box.max, side.axis);
            depths.push_back(side.atMax ? from - to : to - from);
        }
        return depths;
    }

    /// Arcs about a level axis, and the curves where holes cross.
    std::vector<WallEnd> CurvesOfWalls() const {
        std::vector<WallEnd> found;
        mRun.part.drawing->ModelSpace().ForEach([&found](AcadEntity& entity) {
            const auto* arc = dynamic_cast<const AcadArc*>(&entity);
            if (arc != nullptr ? RoundHalfEven(arc->Normal().z, CompareDecimals) == 0
                               : entity.ObjectName() == "AcDbSpline" || entity.ObjectName() == "AcDbEllipse")
                found.push_back({entity.GetBoundingBox(), arc});
        });
        return found;
    }

    static bool IsOfBore(const AcadArc& arc, const SideTraits& side, const BoreCircle& entry) {
        return std::abs(RoundHalfEven(Along(arc.Normal(), side.axis), CompareDecimals)) == 1 &&
               NearlyEqual(2 * arc.Radius(), entry.diameter) &&
               SameLength(Across(arc.Center(), side.axis), Across(entry.center, side.axis)) &&
               SameLength(arc.Center().z, entry.center.z);
    }

    double DepthOf(std::size_t floor, const SideTraits& side) const {
        return WithoutNoise(std::abs(Along(mCircles[floor].center, side.axis) - FaceOf(mPart, side)));
    }

    /// Where the bore of a circle further in comes out of the face.
    BoreCircle MouthOf(std::size_t floor, const SideTraits& side) const {
        BoreCircle mouth = mCircles[floor];
        (side.axis == Axis::X ? mouth.center.x : mouth.center.y) = FaceOf(mPart, side);
        mouth.normal = Outward(side);
        return mouth;
    }

    std::optional<std::size_t> DeepestBitten(const SideTraits& side) {
        std::optional<std::size_t> deepest;
        for (std::size_t i = 0; i < mCircles.size(); ++i) {
            if (mCircles[i].explained || InBore(mCircles[i])) continue;
            if (deepest && DepthOf(i, side) <= DepthOf(*deepest, side)) continue;
            if (IsBitten(i, side)) deepest = i;
        }
        return deepest;
    }

    bool IsBitten(std::size_t floor, const SideTraits& side) {
        if (std::abs(RoundHalfEven(Along(mCircles[floor].normal, side.axis), CompareDecimals)) != 1 ||
            !Less(0, DepthOf(floor, side)) || !FaceIsAnEdge(side))
            return false;
        if (!mWallEnds) mWallEnds = CurvesOfWalls();
        const BoreCircle mouth = MouthOf(floor, side);
        const bool hasArc = std::ranges::any_of(*mWallEnds, [&](const WallEnd& end) {
            return end.arc != nullptr && IsOfBore(*end.arc, side, mouth) &&
                   SameLength(Along(end.arc->Center(), side.axis), FaceOf(mPart, side));
        });
        return hasArc && LiesInAir(side, mouth, DepthOf(floor, side));
    }

    std::size_t AddRim(const SideTraits& side, std::size_t floor) {
        BoreCircle rim = MouthOf(floor, side);
        rim.circle = mRun.part.drawing->ModelSpace().AddCircle(rim.center, rim.diameter / 2);
        rim.circle->SetNormal(rim.normal);
        rim.circle->SetLayer(mTraits.horizontalWorkLayer);
        mCircles.push_back(rim);
        return mCircles.size() - 1;
    }

    /// An edge of the part has straight lines in its plane; the end of a pin that stands out of an edge has
    /// none, and boring there would take the pin away.
    bool FaceIsAnEdge(const SideTraits& side) {
        std::optional<bool>& known = mFaceIsAnEdge[static_cast<std::size_t>(side.side)];
        if (known) return *known;
        const double face = FaceOf(mPart, side);
        known = false;
        mRun.part.drawing->ModelSpace().ForEach([&](AcadEntity& entity) {
            const auto* line = dynamic_cast<const AcadLine*>(&entity);
            known = *known || (line != nullptr && SameLength(Along(line->StartPoint(), side.axis), face) &&
                               SameLength(Along(line->EndPoint(), side.axis), face));
        });
        return *known;
    }

    /// A rim's twin is the same bore: the first of the two circles is kept, for one operation.
    bool IsTwin(std::size_t rim) {
        for (const Bore& made : mBores) {
            if (!SameCircle(mCircles[made.rim], mCircles[rim])) continue;
            mCircles[rim].explained = true;
            mTwins.push_back(rim);
            return true;
        }
        return false;
    }

    void Keep(const Bore& bore) {
        mCircles[bore.floor].explained = mCircles[bore.rim].explained = true;
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
        Dress(bore, layers::BoreColor);
        const std::string layer = BoreLayerName(mRun, *bore.side, CutOf(bore));
        EnsureOperationLayer(mRun, layer);
        AcadCircle& circle = *mCircles[bore.rim].circle;
        circle.SetLayer(layer);
        circle.Update();
    }

    void PlaceRectangle(const Bore& bore) {
        const SideTraits& side = *bore.side;
        const BoreCircle& rim = mCircles[bore.rim];
        AddLayer(*mRun.part.drawing, side.workLayer);
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
        AcadLWPolyline& rectangle = *mRun.part.drawing->ModelSpace().AddLightWeightPolyline(corners);
        rectangle.SetClosed(true);
        rectangle.SetThickness(0);
        rectangle.SetColor(layers::BoreRectangleColor);
        const std::string layer = BoreLayerName(mRun, side, CutOf(bore));
        EnsureOperationLayer(mRun, layer);
        rectangle.SetLayer(layer);
        rectangle.Update();
        if (const std::string_view group = SideGroupName(mRun, side); !group.empty()) Group(rectangle, group);
    }

    void Group(AcadEntity& entity, std::string_view name) const {
        AcadEntity* const member = &entity;
        mRun.part.drawing->Groups().Add(name)->AppendItems(std::span(&member, 1));
    }

    /// Whether a circle lies in a bore that was made: the twin of a rim or a floor, or a step no wider.
    bool InBore(const BoreCircle& each) const {
        for (const Bore& bore : mBores) {
            const BoreCircle& rim = mCircles[bore.rim];
            const Axis axis = bore.side->axis;
            if (Less(rim.diameter, each.diameter) ||
                !SameLength(Across(each.center, axis), Across(rim.center, axis)) ||
                !SameLength(each.center.z, rim.center.z))
                continue;
            const double at = Along(each.center, axis);
            const double from = Along(rim.center, axis);
            const double to = bore.side->atMax ? from - bore.depth : from + bore.depth;
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
    std::optional<std::vector<WallEnd>> mWallEnds;
    std::array<std::optional<bool>, 4> mFaceIsAnEdge;
};

}  // namespace

void BoreHorizontally(RunState& run) {
    Boring boring(run);
    boring.RepairNormals();
    boring.FindBores();
    boring.FindBittenBores();
    boring.PlaceBores();
    boring.Finish();
}

}  // namespace brenvik

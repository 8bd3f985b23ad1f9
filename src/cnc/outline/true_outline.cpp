// The united sections of the part, joined to the outside profile.
#include "cnc/outline/true_outline.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <vector>

#include "base/numbers.h"
#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/joining.h"
#include "cnc/drawing/polyline_shape.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/outline/cut_outs.h"
#include "cnc/outline/narrow_places.h"
#include "cnc/outline/reach.h"
#include "cnc/part/operation_layer.h"
#include "cnc/part/part_measures.h"
#include "cnc/part/told.h"
#include "cnc/plan/plan_sides.h"
#include "cnc/targets/target_table.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

constexpr int FootprintDecimals = 4;
/// Joining stops when the running total of curves left equals this number exactly (`!=` on purpose).
constexpr int CurvesInAll = 50;
constexpr int Many = 1'000'000;
/// Of square units: the rounding of areas, far below any real widening.
constexpr double SameArea = 1e-6;
/// Beyond this the box alone shows that a part reaches further.
constexpr double SameReach = 1e-3;
/// A tip that reaches out further than this always shows in a trial cut.
constexpr double SureReach = 0.05;
/// Of the width that the question about bits names.
constexpr int WidthDecimals = 2;

/// Moves polylines from one layer to another.
void MovePolylines(AcadDocument& drawing, std::string_view from, std::string_view to) {
    for (AcadLWPolyline* polyline : AllOn<AcadLWPolyline>(drawing, from)) polyline->SetLayer(to);
}

bool SameFootprint(const Footprint& a, const Footprint& b) {
    const auto same = [](double one, double other) {
        return std::abs(one - other) < std::pow(10.0, -FootprintDecimals);
    };
    return same(a.minX, b.minX) && same(a.minY, b.minY) && same(a.maxX, b.maxX) && same(a.maxY, b.maxY);
}

/// Whether a path with a depth runs round the same place.
bool IsFollowed(AcadDocument& drawing, const AcadLWPolyline& contour) {
    const Footprint wanted = FootprintOf(contour);
    for (const AcadEntity* entity : All<AcadEntity>(drawing)) {
        const auto* polyline = dynamic_cast<const AcadLWPolyline*>(entity);
        const auto* circle = dynamic_cast<const AcadCircle*>(entity);
        const bool path = (polyline != nullptr && polyline != &contour && polyline->Thickness() != 0) ||
                          (circle != nullptr && std::abs(circle->Normal().z) > 0.5);
        if (path && SameFootprint(FootprintOf(*entity), wanted)) return true;
    }
    return false;
}

/// Contours of the sections outside all others, or in an opening of the part: a solid may have lumps that
/// don't touch, each with an outside of its own.
std::vector<AcadLWPolyline*> LumpsAmong(const std::vector<AcadLWPolyline*>& contours,
                                        const AcadLWPolyline* profile) {
    std::vector<const AcadLWPolyline*> all(contours.begin(), contours.end());
    if (profile != nullptr && std::ranges::find(all, profile) == all.end()) all.push_back(profile);
    std::vector<AcadLWPolyline*> lumps;
    for (AcadLWPolyline* contour : contours) {
        if (contour == profile) continue;
        const PathVertex corner = VerticesOf(*contour).front();
        const auto around = std::ranges::count_if(all, [&](const AcadLWPolyline* other) {
            return other != contour && Encloses(VerticesOf(*other), corner.x, corner.y);
        });
        if (around % 2 == 0) lumps.push_back(contour);
    }
    return lumps;
}

}  // namespace

TrueOutline::TrueOutline(RunState& run) : mRun(run), mPart(BoxOfPart(run)), mSections(run, mPart) {}

void TrueOutline::NameProfile(AcadLWPolyline& profile) const {
    profile.SetColor(layers::OutlineColor);
    profile.SetThickness(-ThroughDepth(mRun));
    profile.SetElevation(TopPlane(mRun));
    profile.SetLayer(mRun.part.OutlineLayer);
}

void TrueOutline::NameLayer(RouteRole role) const {
    mRun.part.OutlineLayer =
        RouteLayerName(mRun, role, PathKind::RT, LenientNumber(mRun.part.DimT) + mRun.SpoilAmount);
    EnsureOperationLayer(mRun, mRun.part.OutlineLayer);
}

void TrueOutline::Begin(AcadLWPolyline* keptFace) {
    AcadDocument& drawing = *mRun.part.drawing;
    // Both sides have one outline, and the bit that was chosen for it.
    if (mRun.FirstPass() || mRun.part.OutlineLayer.empty())
        NameLayer(RouteRole::Outline);
    else
        EnsureOperationLayer(mRun, mRun.part.OutlineLayer);
    AddLayer(drawing, layers::RegionPv);
    AddLayer(drawing, layers::RegionPv2);
    mProfile = keptFace;
    if (keptFace == nullptr) return;
    keptFace->SetLayer(layers::Border2);
    // Its region has to look up as the sections do, or they wouldn't become one.
    BringToDirection(*keptFace, CounterClockwise);
    NameProfile(*keptFace);
}

bool TrueOutline::FillsTheBox() const {
    if (mProfile == nullptr || mProfile->Coordinates().size() != 8) return false;
    const Box3 path = mProfile->GetBoundingBox();
    const Point3 low{mPart.min.x, mPart.min.y, path.min.z}, high{mPart.max.x, mPart.max.y, path.max.z};
    const double area = (mPart.max.x - mPart.min.x) * (mPart.max.y - mPart.min.y);
    return NearlyEqual(path.min, low) && NearlyEqual(path.max, high) &&
           std::abs(mProfile->Area() - area) < SameArea;
}

AcadRegion* TrueOutline::RegionOfProfile() const {
    AcadRegion* region = nullptr;
    if (mProfile == nullptr) return region;
    const std::array<AcadEntity*, 1> curves{mProfile};
    Skip([&] { region = mRun.part.drawing->ModelSpace().AddRegion(curves).front(); });
    return region;
}

/// Whether the part's box alone shows that the part reaches beyond the profile.
bool TrueOutline::BoxReachesBeyond() const {
    if (mProfile == nullptr) return false;
    const Box3 path = mProfile->GetBoundingBox();
    return mPart.min.x < path.min.x - SureReach || mPart.min.y < path.min.y - SureReach ||
           mPart.max.x > path.max.x + SureReach || mPart.max.y > path.max.y + SureReach;
}

/// Whether any of the part is outside the profile. Its box or its sections usually decide that without a
/// cut.
bool TrueOutline::ReachesBeyond() {
    if (FillsTheBox()) return false;
    if (BoxReachesBeyond()) return true;
    if (mProfile != nullptr && mSections.Held() != nullptr) {
        PartReach reach = PartReach::Unclear;
        Skip([&] { reach = ReachBeyond(*mSections.Held(), SidesOf(*mProfile)); });
        if (reach != PartReach::Unclear) return reach == PartReach::Beyond;
    }
    AcadRegion* covered = RegionOfProfile();
    return covered == nullptr || mSections.StandsOutside(*covered);
}

void TrueOutline::JoinRegion() {
    AcadDocument& drawing = *mRun.part.drawing;
    {
        const OnlyUnlocked only(drawing, {layers::RegionPv});
        drawing.SendCommand("regen ");
        for (int round = 0; round < 2; ++round) drawing.SendCommand(ExplodeCommand);
    }
    for (AcadEntity* entity : AllOn<AcadEntity>(drawing, layers::RegionPv))
        if (entity->ObjectName() == "AcDbCircle" || entity->ObjectName() == "AcDbBody") entity->Delete();
    int left = CurvesOn(drawing, layers::RegionPv, Many), counted = 0;
    while (left > 0 && counted != CurvesInAll) {
        {
            const OnlyUnlocked only(drawing, {layers::RegionPv});
            drawing.SendCommand(JoinCommand);
        }
        MovePolylines(drawing, layers::RegionPv, layers::RegionPv2);
        const int before = left;
        left = CurvesOn(drawing, layers::RegionPv, Many);
        counted += left;
        if (left == before) break;
    }
}

/// What has an outline but encloses nothing, and edges that no chain took: without them the profile may be
/// narrower than the part.
bool TrueOutline::IsLeftOpen() const {
    AcadDocument& drawing = *mRun.part.drawing;
    return CurvesOn(drawing, layers::RegionPv, 1) > 0 ||
           std::ranges::any_of(AllOn<AcadLWPolyline>(drawing, layers::RegionPv2),
                               [](const AcadLWPolyline* chain) { return !chain->Closed(); });
}

/// Whether the part is as wide as the profiles that were made for it.
bool TrueOutline::HoldsThePart() const {
    if (mProfile == nullptr) return true;
    Box3 path = mProfile->GetBoundingBox();
    for (const AcadLWPolyline* lump : mLumps) {
        const Box3 box = lump->GetBoundingBox();
        path.min = {std::min(path.min.x, box.min.x), std::min(path.min.y, box.min.y), path.min.z};
        path.max = {std::max(path.max.x, box.max.x), std::max(path.max.y, box.max.y), path.max.z};
    }
    return path.min.x < mPart.min.x + SameReach && path.min.y < mPart.min.y + SameReach &&
           path.max.x > mPart.max.x - SameReach && path.max.y > mPart.max.y - SameReach;
}

/// Sections that nearly touch leave loose lines inside the profile. They don't matter if no openings are
/// wanted (`withOpenings`), or if the profile encloses the part.
PassOutcome TrueOutline::TakeContours(bool withOpenings) {
    AcadDocument& drawing = *mRun.part.drawing;
    const bool leftOpen = IsLeftOpen();
    std::vector<AcadLWPolyline*> contours;
    AcadLWPolyline* widest = nullptr;
    for (AcadLWPolyline* contour : AllOn<AcadLWPolyline>(drawing, layers::RegionPv2)) {
        if (!IsContour(*contour)) continue;
        contours.push_back(contour);
        if (widest == nullptr || contour->Area() > widest->Area()) widest = contour;
    }
    // The sections only ever widen it: a smaller one is an opening whose surroundings were not joined.
    if (widest != nullptr && (mProfile == nullptr || widest->Area() > mProfile->Area() - SameArea)) {
        if (mProfile != nullptr) mProfile->Delete();
        NameProfile(*widest);
        mProfile = widest;
    }
    const std::vector<AcadLWPolyline*> lumps = LumpsAmong(contours, mProfile);
    for (AcadLWPolyline* lump : lumps) {
        NameProfile(*lump);
        BringToDirection(*lump, CounterClockwise);
    }
    mLumps.insert(mLumps.end(), lumps.begin(), lumps.end());
    if (!HoldsThePart() || (leftOpen && (withOpenings || ReachesBeyond())))
        NoteWholePart(mRun,
                      "edges of the part were not joined to its outline: the outline may be too narrow");
    for (AcadLWPolyline* contour : contours) {
        const bool outline = contour == mProfile || std::ranges::find(lumps, contour) != lumps.end();
        if (outline || IsFollowed(drawing, *contour)) continue;
        if (CutOut(mRun, *contour) == PassOutcome::SkipPart) return PassOutcome::SkipPart;
    }
    for (const std::string_view layer : std::array{layers::RegionPv, layers::RegionPv2})
        for (AcadEntity* entity : AllOn<AcadEntity>(drawing, layer)) entity->Delete();
    return PassOutcome::GoOn;
}

/// The outline is the first bit's, unless it has a place that is narrower: then the bit is chosen as for a
/// cut-out, by that place. A receiver that makes the outside path itself needs none.
PassOutcome TrueOutline::ChooseTool() {
    if (!mRun.FirstPass() || SwitchIsOn(setting::BiesseWorksNest)) return PassOutcome::GoOn;
    const std::optional<double> narrowest =
        NarrowestPlace(VerticesOf(*mProfile), mRun.part.Material.tools.front().diameter);
    if (!narrowest) return PassOutcome::GoOn;
    if (!ChooseThroughContourBit(mRun.part.bits, mRun.part.Material, mRun.part.MaterialKeyText,
                                 RoundHalfEven(*narrowest, WidthDecimals)))
        return PassOutcome::SkipPart;
    if (mRun.part.bits.ToolNumber.empty()) return PassOutcome::GoOn;
    NameLayer(RouteRole::ChosenOutline);
    mProfile->SetLayer(mRun.part.OutlineLayer);
    return PassOutcome::GoOn;
}

PassOutcome TrueOutline::Finish(const std::vector<LeftContour>& left) {
    if (!left.empty()) mSections.TakeEdges();
    // Without an outline of the kept face only the sections show the openings.
    const bool withOpenings =
        mProfile == nullptr || std::ranges::any_of(left, [this](const LeftContour& contour) {
            return mSections.MayBeNarrower(contour);
        });
    if (withOpenings || ReachesBeyond()) {
        mSections.TakeEdges();
        // The outline has no openings, and would close those of the sections. Where openings are wanted, the
        // lowest face is used in its place.
        mSections.Unite(withOpenings ? nullptr : RegionOfProfile());
        JoinRegion();
        if (TakeContours(withOpenings) == PassOutcome::SkipPart) return PassOutcome::SkipPart;
    }
    if (mProfile == nullptr) {
        NoteUnexplained(mRun, "the part has no outside profile of lines and arcs: no operation");
        return PassOutcome::GoOn;
    }
    mRun.part.RouteDirection = DirectionOf(*mProfile);
    BringToDirection(*mProfile, CounterClockwise);
    mRun.part.RouteDirection = DirectionOf(*mProfile);
    return ChooseTool();
}

}  // namespace brenvik

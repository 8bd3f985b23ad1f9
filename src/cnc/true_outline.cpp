// Sections of the part at many heights, laid over each other and joined to the outside profile.
#include "cnc/true_outline.h"

#include <array>
#include <cmath>
#include <vector>

#include "base/numbers.h"
#include "base/skip.h"
#include "cnc/cut_outs.h"
#include "cnc/drawing_walk.h"
#include "cnc/joining.h"
#include "cnc/polyline_shape.h"
#include "cnc/target_table.h"
#include "cnc/work_layers.h"

namespace brenvik {

namespace {

constexpr int ProfileColor = 2;
constexpr int HeightDecimals = 6, FootprintDecimals = 4;
constexpr double MetricStep = 1, ImperialStep = 0.0625;
/// The first section lies just above the lowest face.
constexpr double Above = 0.01;
/// Half the width of the plane's triangle: no part reaches so far.
constexpr double Far = 100000;
/// The join is over when the curves that it has left, added up round by round, come to this.
constexpr int CurvesInAll = 50;
constexpr int Many = 1'000'000;
/// Of square units: the rounding of areas, far below any real widening.
constexpr double SameArea = 1e-6;

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

}  // namespace

void TrueOutline::NameProfile(AcadLWPolyline& profile) const {
    profile.SetColor(ProfileColor);
    profile.SetThickness(-ThroughDepth(mRun));
    profile.SetElevation(TopPlane(mRun));
    profile.SetLayer(mRun.OutlineLayer);
}

void TrueOutline::Begin(AcadLWPolyline* keptFace) {
    AcadDocument& drawing = *mRun.part;
    mRun.OutlineLayer =
        RouteLayerName(mRun, RouteRole::Outline, PathKind::RT, LenientNumber(mRun.DimT) + mRun.SpoilAmount);
    EnsureOperationLayer(mRun, mRun.OutlineLayer);
    AddLayer(drawing, layers::regionPV);
    AddLayer(drawing, layers::regionPV2);
    mProfile = keptFace;
    if (keptFace == nullptr) return;
    keptFace->SetLayer(layers::Border2);
    NameProfile(*keptFace);
}

bool TrueOutline::FillsTheBox() const {
    if (mProfile == nullptr || mProfile->Coordinates().size() != 8) return false;
    const Box3 part = LastSolid(*mRun.part).GetBoundingBox(), path = mProfile->GetBoundingBox();
    const Point3 low{part.min.x, part.min.y, path.min.z}, high{part.max.x, part.max.y, path.max.z};
    const double area = (part.max.x - part.min.x) * (part.max.y - part.min.y);
    return NearlyEqual(path.min, low) && NearlyEqual(path.max, high) &&
           std::abs(mProfile->Area() - area) < SameArea;
}

void TrueOutline::Unite(AcadRegion* section) {
    section->SetLayer(layers::regionPV);
    if (mRegion == nullptr)
        mRegion = section;
    else
        mRegion->Boolean(BooleanKind::Union, *section);
}

void TrueOutline::UniteSections() {
    AcadDocument& drawing = *mRun.part;
    const double top = TopPlane(mRun);
    if (mProfile != nullptr) {
        const std::array<AcadEntity*, 1> curves{mProfile};
        Skip([&] { Unite(drawing.ModelSpace().AddRegion(curves).front()); });
    }
    Acad3DSolid& part = LastSolid(drawing);
    const auto sliceAt = [&](double height) {
        AcadRegion* section = nullptr;
        // A plane between two pieces of a part misses it.
        Skip([&] {
            section = part.SectionSolid({-Far, -Far, height}, {Far, -Far, height}, {Far, Far, height});
        });
        if (section == nullptr) return;
        section->Move({0, 0, height}, {0, 0, top});
        Unite(section);
    };
    const double step = mRun.Metric() ? MetricStep : ImperialStep;
    const double lowest = RoundHalfEven(part.GetBoundingBox().min.z, HeightDecimals) + Above + Above;
    for (double height = lowest; height <= mRun.PartThickness; height += step) sliceAt(height);
    // The steps end below the top face, and a part that widens upwards is widest there.
    sliceAt(part.GetBoundingBox().max.z);
}

void TrueOutline::JoinRegion() {
    AcadDocument& drawing = *mRun.part;
    LockAllLayers(drawing);
    UnlockLayer(drawing, layers::regionPV);
    drawing.SendCommand("regen ");
    for (int round = 0; round < 2; ++round) drawing.SendCommand("explode\rall\r\r");
    for (AcadEntity* entity : AllOn<AcadEntity>(drawing, layers::regionPV))
        if (entity->ObjectName() == "AcDbCircle" || entity->ObjectName() == "AcDbBody") entity->Delete();
    int left = CurvesOn(drawing, layers::regionPV, Many), counted = 0;
    while (left > 0 && counted != CurvesInAll) {
        LockLayer(drawing, layers::regionPV2);
        drawing.SendCommand(JoinCommand);
        UnlockLayer(drawing, layers::regionPV2);
        MovePolylines(drawing, layers::regionPV, layers::regionPV2);
        const int before = left;
        left = CurvesOn(drawing, layers::regionPV, Many);
        counted += left;
        if (left == before) break;
    }
    UnlockAllLayers(drawing);
}

PartStep TrueOutline::TakeContours() {
    AcadDocument& drawing = *mRun.part;
    std::vector<AcadLWPolyline*> contours;
    AcadLWPolyline* widest = nullptr;
    for (AcadLWPolyline* contour : AllOn<AcadLWPolyline>(drawing, layers::regionPV2)) {
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
    for (AcadLWPolyline* contour : contours) {
        if (contour == mProfile || IsFollowed(drawing, *contour)) continue;
        if (CutOut(mRun, *contour) == PartStep::SkipPart) return PartStep::SkipPart;
    }
    for (const std::string_view layer : std::array{layers::regionPV, layers::regionPV2})
        for (AcadEntity* entity : AllOn<AcadEntity>(drawing, layer)) entity->Delete();
    return PartStep::GoOn;
}

PartStep TrueOutline::Finish(bool contoursLeft) {
    if (contoursLeft || !FillsTheBox()) {
        UniteSections();
        JoinRegion();
        if (TakeContours() == PartStep::SkipPart) return PartStep::SkipPart;
    }
    if (mProfile == nullptr) {
        NotePassedOver(mRun, "the part has no outside profile of lines and arcs: no operation");
        return PartStep::GoOn;
    }
    mRun.RouteDirection = DirectionOf(*mProfile);
    BringToDirection(*mProfile, CounterClockwise);
    mRun.RouteDirection = DirectionOf(*mProfile);
    return PartStep::GoOn;
}

}  // namespace brenvik

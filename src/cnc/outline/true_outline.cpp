// Sections of the part at many heights, laid over each other and joined to the outside profile.
#include "cnc/outline/true_outline.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
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
#include "cnc/part/trial_objects.h"
#include "cnc/plan/plan_sides.h"
#include "cnc/targets/target_table.h"
#include "session/session.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

constexpr int HeightDecimals = 6, FootprintDecimals = 4;
constexpr double MetricStep = 1, ImperialStep = 0.0625;
/// The first section lies just above the lowest face.
constexpr double Above = 0.01;
/// Half the width of the plane's triangle: no part reaches so far.
constexpr double Far = 100000;
/// Joining stops when the running total of curves left equals this number exactly (`!=` on purpose).
constexpr int CurvesInAll = 50;
/// How far the frame around the outline stands clear of the part.
constexpr double Clear = 1;
constexpr double NoTaper = 0;
constexpr int VolumeDecimals = 6;
constexpr std::string_view ExplodeCommand = "explode\rall\r\r";
constexpr int Many = 1'000'000;
/// Of square units: the rounding of areas, far below any real widening.
constexpr double SameArea = 1e-6;
/// Beyond this the box alone shows that a part reaches further.
constexpr double SameReach = 1e-3;
/// A tip that reaches out further than this always shows in a trial cut.
constexpr double SureReach = 0.05;
/// Of heights at which the part is sliced, and at which its section changes.
constexpr double SameLevel = 1e-6;
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
    AddLayer(drawing, layers::RegionPV2);
    mProfile = keptFace;
    if (keptFace == nullptr) return;
    keptFace->SetLayer(layers::Border2);
    // Its region has to look up as the sections do, or they wouldn't become one.
    BringToDirection(*keptFace, CounterClockwise);
    NameProfile(*keptFace);
}

bool TrueOutline::FillsTheBox() const {
    if (mProfile == nullptr || mProfile->Coordinates().size() != 8) return false;
    const Box3 part = BoxOfPart(mRun), path = mProfile->GetBoundingBox();
    const Point3 low{part.min.x, part.min.y, path.min.z}, high{part.max.x, part.max.y, path.max.z};
    const double area = (part.max.x - part.min.x) * (part.max.y - part.min.y);
    return NearlyEqual(path.min, low) && NearlyEqual(path.max, high) &&
           std::abs(mProfile->Area() - area) < SameArea;
}

void TrueOutline::Unite(AcadRegion* section) {
    section->SetLayer(layers::RegionPv);
    if (mRegion == nullptr)
        mRegion = section;
    else
        mRegion->Boolean(BooleanKind::Union, *section);
}

/// Whether anything of the part stands outside a region that lies on the top plane: on a frame around it, or
/// on its openings. The region is used up.
bool TrueOutline::StandsOutside(AcadRegion& covered) const {
    AcadDocument& drawing = *mRun.part.drawing;
    Acad3DSolid& part = LastSolid(drawing);
    const Box3 box = part.GetBoundingBox();
    const double left = box.min.x - Clear, right = box.max.x + Clear, front = box.min.y - Clear,
                 back = box.max.y + Clear;
    AcadLWPolyline* rim = drawing.ModelSpace().AddLightWeightPolyline(
        std::array{left, front, right, front, right, back, left, back});
    rim->SetClosed(true);
    rim->SetElevation(TopPlane(mRun));
    TrialObjects trials;
    trials.Keep(rim);
    trials.Keep(&covered);
    // If the trial fails, the sections decide.
    bool outside = true;
    Skip([&] {
        AcadRegion& frame = RegionOf(drawing, *rim, trials);
        frame.Boolean(BooleanKind::Subtraction, covered);
        frame.Move({0, 0, 0}, {0, 0, Clear});
        const double height = mRun.part.PartThickness + 2 * Clear;
        Acad3DSolid& around = trials.Keep(
            drawing.ModelSpace().AddExtrudedSolid(frame, frame.Normal().z < 0 ? height : -height, NoTaper));
        Acad3DSolid& rest = trials.Keep(dynamic_cast<Acad3DSolid*>(part.Copy()));
        rest.Boolean(BooleanKind::Subtraction, around);
        outside = RoundHalfEven(rest.Volume(), VolumeDecimals) <
                  RoundHalfEven(mRun.part.PartVolume, VolumeDecimals);
    });
    return outside;
}

AcadRegion* TrueOutline::RegionOfProfile() const {
    AcadRegion* region = nullptr;
    if (mProfile == nullptr) return region;
    const std::array<AcadEntity*, 1> curves{mProfile};
    Skip([&] { region = mRun.part.drawing->ModelSpace().AddRegion(curves).front(); });
    return region;
}

/// Null where the part's sections can't be had.
const SolidSections* TrueOutline::Sections() {
    if (!mSections && !mWithoutSections) {
        SectionPort* const port = ThePlatform().sections;
        if (port != nullptr)
            Skip([&] { mSections = port->HoldSolid(LastSolid(*mRun.part.drawing).ObjectID()); });
        mWithoutSections = !mSections;
    }
    return mSections.get();
}

/// Whether the part's box alone shows that the part reaches beyond the profile.
bool TrueOutline::BoxReachesBeyond() const {
    if (mProfile == nullptr) return false;
    const Box3 part = BoxOfPart(mRun), path = mProfile->GetBoundingBox();
    return part.min.x < path.min.x - SureReach || part.min.y < path.min.y - SureReach ||
           part.max.x > path.max.x + SureReach || part.max.y > path.max.y + SureReach;
}

/// Whether any of the part is outside the profile. Its box or its sections usually decide that without a
/// cut.
bool TrueOutline::ReachesBeyond() {
    if (FillsTheBox()) return false;
    if (BoxReachesBeyond()) return true;
    if (mProfile != nullptr && Sections() != nullptr) {
        PartReach reach = PartReach::Unclear;
        Skip([&] { reach = ReachBeyond(*Sections(), SidesOf(*mProfile)); });
        if (reach != PartReach::Unclear) return reach == PartReach::Beyond;
    }
    AcadRegion* covered = RegionOfProfile();
    return covered == nullptr || StandsOutside(*covered);
}

/// Whether the united sections are the rectangle around the part, without openings: no section widens them.
bool TrueOutline::RegionFillsTheBox() const {
    if (mRegion == nullptr) return false;
    const Box3 part = BoxOfPart(mRun), region = mRegion->GetBoundingBox();
    const double area = (part.max.x - part.min.x) * (part.max.y - part.min.y);
    return NearlyEqual(region.min.x, part.min.x) && NearlyEqual(region.min.y, part.min.y) &&
           NearlyEqual(region.max.x, part.max.x) && NearlyEqual(region.max.y, part.max.y) &&
           std::abs(mRegion->Area() - area) < SameArea;
}

/// Whether nothing of the part ends on the sides of the rectangle around it, other than at the corners. Then
/// a section that lies within a region of that rectangle leaves its sides whole, and the order in which they
/// are walked: a path begins where it would have begun.
bool TrueOutline::BoxSidesAreWhole() const {
    const Box3 box = BoxOfPart(mRun);
    const auto endsThere = [&box](const Point3& end) {
        const bool onX = NearlyEqual(end.x, box.min.x) || NearlyEqual(end.x, box.max.x);
        const bool onY = NearlyEqual(end.y, box.min.y) || NearlyEqual(end.y, box.max.y);
        return onX != onY;
    };
    return std::ranges::none_of(mEdges,
                                [&](const Edge& edge) { return endsThere(edge.from) || endsThere(edge.to); });
}

/// Whether the sections at those heights cover all sections between them.
bool TrueOutline::LevelsTellAll(const std::vector<double>& heights) {
    if (Sections() == nullptr || !IsWidestAtLevels(*Sections())) return false;
    return std::ranges::all_of(Sections()->Levels(), [&](double level) {
        return std::ranges::any_of(heights,
                                   [&](double height) { return std::abs(height - level) < SameLevel; });
    });
}

/// Takes a copy of the part apart to its edges.
void TrueOutline::TakeEdges() {
    if (!mEdges.empty()) return;
    AcadDocument& drawing = *mRun.part.drawing;
    AcadEntity* copy = LastSolid(drawing).Copy();
    copy->SetLayer(layers::RegionPV2);
    {
        const OnlyUnlocked only(drawing, {layers::RegionPV2});
        for (int round = 0; round < 2; ++round) drawing.SendCommand(ExplodeCommand);
    }
    for (AcadEntity* edge : AllOn<AcadEntity>(drawing, layers::RegionPV2)) {
        if (const auto* line = dynamic_cast<const AcadLine*>(edge)) {
            const Point3 from = line->StartPoint();
            mEdges.push_back({from, line->EndPoint(), from.z, false});
        } else if (const auto* arc = dynamic_cast<const AcadArc*>(edge)) {
            mEdges.push_back({arc->StartPoint(), arc->EndPoint(), arc->Center().z, false});
        } else if (const auto* circle = dynamic_cast<const AcadCircle*>(edge)) {
            const Point3 center = circle->Center();
            mEdges.push_back({center, center, center.z, true});
        }
        edge->Delete();
    }
}

/// Whether a level edge of the part runs within the contour and isn't one of its sides; one that leads across
/// it from corner to corner is none. Full circles don't count: they are holes and circular routes, which have
/// recognisers of their own.
bool TrueOutline::MayBeNarrower(const LeftContour& contour) const {
    const std::size_t corners = contour.coordinates.size() / 2;
    const auto stands = [&contour](const Point3& point, std::size_t corner) {
        return NearlyEqual(contour.coordinates[2 * corner], point.x) &&
               NearlyEqual(contour.coordinates[2 * corner + 1], point.y);
    };
    const auto isSide = [&](const Edge& edge) {
        for (std::size_t i = 0; i < corners; ++i) {
            const std::size_t next = (i + 1) % corners;
            if ((stands(edge.from, i) && stands(edge.to, next)) ||
                (stands(edge.to, i) && stands(edge.from, next)))
                return true;
        }
        return false;
    };
    const Footprint& box = contour.footprint;
    return std::ranges::any_of(mEdges, [&](const Edge& edge) {
        if (edge.full || !NearlyEqual(edge.from.z, edge.to.z)) return false;
        const double x = (edge.from.x + edge.to.x) / 2, y = (edge.from.y + edge.to.y) / 2;
        const bool within = x > box.minX && x < box.maxX && y > box.minY && y < box.maxY &&
                            !NearlyEqual(x, box.minX) && !NearlyEqual(x, box.maxX) &&
                            !NearlyEqual(y, box.minY) && !NearlyEqual(y, box.maxY);
        return within && !isSide(edge);
    });
}

/// The heights at which an edge of the part begins, ends or turns: between two of these a part of flat faces
/// is hardly wider than at both. The lowest face and the top face are among them.
std::vector<double> TrueOutline::Levels() const {
    const Box3 box = BoxOfPart(mRun);
    // Compared by their rounded values and kept exact: a rounded plane may miss the top face.
    std::map<double, double> levels;
    const auto add = [&](double height) {
        const double within = std::clamp(height, box.min.z, box.max.z);
        levels.emplace(RoundHalfEven(within, HeightDecimals), within);
    };
    add(box.min.z);
    add(box.max.z);
    for (const Edge& edge : mEdges)
        for (const double height : {edge.from.z, edge.to.z, edge.centerZ}) add(height);
    std::vector<double> heights;
    for (const auto& [rounded, height] : levels) heights.push_back(height);
    return heights;
}

/// From just above the lowest face up to the top face, in even steps.
std::vector<double> TrueOutline::Steps() const {
    std::vector<double> heights;
    const double step = mRun.Metric() ? MetricStep : ImperialStep;
    const double bottom = BoxOfPart(mRun).min.z;
    const double first = RoundHalfEven(bottom, HeightDecimals) + Above + Above;
    for (double height = first; height <= mRun.part.PartThickness; height += step) heights.push_back(height);
    return heights;
}

/// Returns whether each of the sections has been united.
bool TrueOutline::SliceAt(const std::vector<double>& heights) {
    Acad3DSolid& part = LastSolid(*mRun.part.drawing);
    const bool mayStop = BoxSidesAreWhole();
    bool all = true;
    for (const double height : heights) {
        if (mayStop && RegionFillsTheBox()) return true;
        AcadRegion* section = nullptr;
        // A plane between two pieces of a part misses it.
        Skip([&] {
            section = part.SectionSolid({-Far, -Far, height}, {Far, -Far, height}, {Far, Far, height});
        });
        if (section == nullptr) {
            all = false;
            continue;
        }
        section->Move({0, 0, height}, {0, 0, TopPlane(mRun)});
        if (Skip([&] { Unite(section); })) continue;
        all = false;
        section->Delete();
        NoteWholePart(mRun,
                      "a section of the part can't be laid over the others: the outline may be too narrow");
    }
    return all;
}

/// The outline has no openings, and would close those of the sections. Where openings are wanted
/// (`withOpenings`), the lowest face is used in its place.
void TrueOutline::UniteSections(bool withOpenings) {
    if (!withOpenings)
        if (AcadRegion* region = RegionOfProfile()) Unite(region);
    const std::vector<double> levels = Levels();
    const bool all = SliceAt(levels);
    // Mostly nothing is left for the steps to find.
    if (mRegion != nullptr && (RegionFillsTheBox() || (all && LevelsTellAll(levels)))) return;
    if (mRegion != nullptr && !StandsOutside(dynamic_cast<AcadRegion&>(*mRegion->Copy()))) return;
    SliceAt(Steps());
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
        MovePolylines(drawing, layers::RegionPv, layers::RegionPV2);
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
           std::ranges::any_of(AllOn<AcadLWPolyline>(drawing, layers::RegionPV2),
                               [](const AcadLWPolyline* chain) { return !chain->Closed(); });
}

/// Whether the part is as wide as the profiles that were made for it.
bool TrueOutline::HoldsThePart() const {
    if (mProfile == nullptr) return true;
    const Box3 part = BoxOfPart(mRun);
    Box3 path = mProfile->GetBoundingBox();
    for (const AcadLWPolyline* lump : mLumps) {
        const Box3 box = lump->GetBoundingBox();
        path.min = {std::min(path.min.x, box.min.x), std::min(path.min.y, box.min.y), path.min.z};
        path.max = {std::max(path.max.x, box.max.x), std::max(path.max.y, box.max.y), path.max.z};
    }
    return path.min.x < part.min.x + SameReach && path.min.y < part.min.y + SameReach &&
           path.max.x > part.max.x - SameReach && path.max.y > part.max.y - SameReach;
}

/// Sections that nearly touch leave loose lines inside the profile. They don't matter if no openings are
/// wanted (`withOpenings`), or if the profile encloses the part.
PassOutcome TrueOutline::TakeContours(bool withOpenings) {
    AcadDocument& drawing = *mRun.part.drawing;
    const bool leftOpen = IsLeftOpen();
    std::vector<AcadLWPolyline*> contours;
    AcadLWPolyline* widest = nullptr;
    for (AcadLWPolyline* contour : AllOn<AcadLWPolyline>(drawing, layers::RegionPV2)) {
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
    for (const std::string_view layer : std::array{layers::RegionPv, layers::RegionPV2})
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
    if (!left.empty()) TakeEdges();
    // Without an outline of the kept face only the sections show the openings.
    const bool withOpenings =
        mProfile == nullptr ||
        std::ranges::any_of(left, [this](const LeftContour& contour) { return MayBeNarrower(contour); });
    if (withOpenings || ReachesBeyond()) {
        TakeEdges();
        UniteSections(withOpenings);
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

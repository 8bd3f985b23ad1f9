// The sections of the part at its levels, united on the top plane.
#include "cnc/outline/part_sections.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

#include "base/numbers.h"
#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/joining.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/outline/reach.h"
#include "cnc/part/operation_layer.h"
#include "cnc/part/part_measures.h"
#include "cnc/part/told.h"
#include "cnc/part/trial_objects.h"
#include "session/session.h"

namespace brenvik {

namespace {

constexpr int HeightDecimals = 6;
constexpr double MetricStep = 1, ImperialStep = 0.0625;
/// The first section lies just above the lowest face.
constexpr double Above = 0.01;
/// Half the width of the plane's triangle: no part reaches so far.
constexpr double Far = 100000;
/// How far the frame around the region stands clear of the part.
constexpr double Clear = 1;
constexpr double NoTaper = 0;
constexpr int VolumeDecimals = 6;
/// Of square units: the rounding of areas, far below any real widening.
constexpr double SameArea = 1e-6;
/// Of heights at which the part is sliced, and at which its section changes.
constexpr double SameLevel = 1e-6;

}  // namespace

PartSections::PartSections(RunState& run, const Box3& part) : mRun(run), mPart(part) {}

const SolidSections* PartSections::Held() {
    if (!mHeld && !mWithout) {
        SectionPort* const port = ThePlatform().sections;
        if (port != nullptr) Skip([&] { mHeld = port->HoldSolid(LastSolid(*mRun.part.drawing).ObjectID()); });
        mWithout = !mHeld;
    }
    return mHeld.get();
}

void PartSections::TakeEdges() {
    if (!mEdges.empty()) return;
    AcadDocument& drawing = *mRun.part.drawing;
    AcadEntity* copy = LastSolid(drawing).Copy();
    copy->SetLayer(layers::RegionPv2);
    {
        const OnlyUnlocked only(drawing, {layers::RegionPv2});
        for (int round = 0; round < 2; ++round) drawing.SendCommand(ExplodeCommand);
    }
    for (AcadEntity* edge : AllOn<AcadEntity>(drawing, layers::RegionPv2)) {
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

bool PartSections::MayBeNarrower(const LeftContour& contour) const {
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

bool PartSections::StandsOutside(AcadRegion& covered) const {
    AcadDocument& drawing = *mRun.part.drawing;
    Acad3DSolid& part = LastSolid(drawing);
    const double left = mPart.min.x - Clear, right = mPart.max.x + Clear, front = mPart.min.y - Clear,
                 back = mPart.max.y + Clear;
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

void PartSections::Add(AcadRegion* section) {
    section->SetLayer(layers::RegionPv);
    if (mRegion == nullptr)
        mRegion = section;
    else
        mRegion->Boolean(BooleanKind::Union, *section);
}

/// Whether the united sections are the rectangle around the part, without openings: no section widens them.
bool PartSections::RegionFillsTheBox() const {
    if (mRegion == nullptr) return false;
    const Box3 region = mRegion->GetBoundingBox();
    const double area = (mPart.max.x - mPart.min.x) * (mPart.max.y - mPart.min.y);
    return NearlyEqual(region.min.x, mPart.min.x) && NearlyEqual(region.min.y, mPart.min.y) &&
           NearlyEqual(region.max.x, mPart.max.x) && NearlyEqual(region.max.y, mPart.max.y) &&
           std::abs(mRegion->Area() - area) < SameArea;
}

/// Whether nothing of the part ends on the sides of the rectangle around it, other than at the corners. Then
/// a section that lies within a region of that rectangle leaves its sides whole, and the order in which they
/// are walked: a path begins where it would have begun.
bool PartSections::BoxSidesAreWhole() const {
    const auto endsThere = [this](const Point3& end) {
        const bool onX = NearlyEqual(end.x, mPart.min.x) || NearlyEqual(end.x, mPart.max.x);
        const bool onY = NearlyEqual(end.y, mPart.min.y) || NearlyEqual(end.y, mPart.max.y);
        return onX != onY;
    };
    return std::ranges::none_of(mEdges,
                                [&](const Edge& edge) { return endsThere(edge.from) || endsThere(edge.to); });
}

/// Whether the sections at those heights cover all sections between them.
bool PartSections::LevelsTellAll(const std::vector<double>& heights) {
    if (Held() == nullptr || !IsWidestAtLevels(*Held())) return false;
    return std::ranges::all_of(Held()->Levels(), [&](double level) {
        return std::ranges::any_of(heights,
                                   [&](double height) { return std::abs(height - level) < SameLevel; });
    });
}

/// The heights at which an edge of the part begins, ends or turns: between two of these a part of flat faces
/// is hardly wider than at both. The lowest face and the top face are among them.
std::vector<double> PartSections::Levels() const {
    // Compared by their rounded values and kept exact: a rounded plane may miss the top face.
    std::map<double, double> levels;
    const auto add = [&](double height) {
        const double within = std::clamp(height, mPart.min.z, mPart.max.z);
        levels.emplace(RoundHalfEven(within, HeightDecimals), within);
    };
    add(mPart.min.z);
    add(mPart.max.z);
    for (const Edge& edge : mEdges)
        for (const double height : {edge.from.z, edge.to.z, edge.centerZ}) add(height);
    std::vector<double> heights;
    for (const auto& [rounded, height] : levels) heights.push_back(height);
    return heights;
}

/// From just above the lowest face up to the top face, in even steps.
std::vector<double> PartSections::Steps() const {
    std::vector<double> heights;
    const double step = mRun.Metric() ? MetricStep : ImperialStep;
    const double first = RoundHalfEven(mPart.min.z, HeightDecimals) + Above + Above;
    for (double height = first; height <= mRun.part.PartThickness; height += step) heights.push_back(height);
    return heights;
}

/// Returns whether each of the sections has been united.
bool PartSections::SliceAt(const std::vector<double>& heights) {
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
        if (Skip([&] { Add(section); })) continue;
        all = false;
        section->Delete();
        NoteWholePart(mRun,
                      "a section of the part can't be laid over the others: the outline may be too narrow");
    }
    return all;
}

void PartSections::Unite(AcadRegion* outline) {
    if (outline != nullptr) Add(outline);
    const std::vector<double> levels = Levels();
    const bool all = SliceAt(levels);
    // Mostly nothing is left for the steps to find.
    if (mRegion != nullptr && (RegionFillsTheBox() || (all && LevelsTellAll(levels)))) return;
    if (mRegion != nullptr && !StandsOutside(dynamic_cast<AcadRegion&>(*mRegion->Copy()))) return;
    SliceAt(Steps());
}

}  // namespace brenvik

// The three questions that decide which side is up, in order; the last one overrides the
// others.
#include "cnc/laying/alignment_top.h"

#include <algorithm>
#include <optional>

#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/laying/orientation.h"

namespace brenvik {

namespace {

constexpr int PlaceDecimals = 6;

struct Levels {
    double TopZ = 0, BottomZ = 0;
};

Levels LevelsOf(const std::vector<AcadLine*>& lines) {
    Levels levels;
    if (lines.empty()) return levels;
    levels.TopZ = levels.BottomZ = lines.front()->StartPoint().z;
    for (const AcadLine* line : lines) {
        const double start = line->StartPoint().z, end = line->EndPoint().z;
        levels.TopZ = std::max({levels.TopZ, start, end});
        levels.BottomZ = std::min({levels.BottomZ, start, end});
    }
    return levels;
}

/// The lines on one side of the part that lie furthest to either side.
struct SideLines {
    double z = 0, SmallestY = 0, LargestY = 0;
};

/// Takes a line into one side. A line further out begins it anew.
void Extend(std::optional<SideLines>& side, double z, double y, bool further) {
    if (!side || further) {
        side = SideLines{z, y, y};
    } else if (z == side->z) {
        side->SmallestY = std::min(side->SmallestY, y);
        side->LargestY = std::max(side->LargestY, y);
    }
}

}  // namespace

LevelCounts CountOnLevels(AcadDocument& drawing) {
    const std::vector<AcadLine*> lines = All<AcadLine>(drawing);
    const Levels levels = LevelsOf(lines);
    LevelCounts counts;
    const auto countEdge = [&](double startZ, double endZ) {
        if (!NearlyEqual(startZ, endZ)) return;
        if (NearlyEqual(startZ, levels.TopZ)) ++counts.TopEdges;
        if (NearlyEqual(startZ, levels.BottomZ)) ++counts.BottomEdges;
    };
    for (const AcadLine* line : lines) countEdge(line->StartPoint().z, line->EndPoint().z);
    for (const AcadArc* arc : All<AcadArc>(drawing)) countEdge(arc->StartPoint().z, arc->EndPoint().z);
    for (const AcadCircle* circle : All<AcadCircle>(drawing)) {
        const double z = circle->Center().z;
        if (NearlyEqual(z, levels.TopZ)) ++counts.TopCircles;
        if (NearlyEqual(z, levels.BottomZ)) ++counts.BottomCircles;
    }
    return counts;
}

bool LowerSideIsNarrower(AcadDocument& drawing) {
    std::optional<SideLines> low, high;
    for (const AcadLine* line : All<AcadLine>(drawing)) {
        const Point3 start = line->StartPoint();
        const double y = Settled(start.y, PlaceDecimals);
        if (y != Settled(line->EndPoint().y, PlaceDecimals)) continue;
        const double z = Settled(start.z, PlaceDecimals);
        Extend(low, z, y, low && z < low->z);
        Extend(high, z, y, high && z > high->z);
    }
    return low && high && (low->SmallestY > high->SmallestY || low->LargestY < high->LargestY);
}

bool LargestFaceLiesAbove(AcadDocument& drawing, const AcadEntity& solid, double LargestArea) {
    const auto lowest = [](const AcadEntity& entity) {
        return Settled(entity.GetBoundingBox().min.z, PlaceDecimals);
    };
    for (const AcadRegion* region : AllOn<AcadRegion>(drawing, layers::RegionCopy))
        if (NearlyEqual(region->Area(), LargestArea) && lowest(*region) != lowest(solid)) return true;
    return false;
}

void BringTopUp(AcadDocument& drawing, const AcadEntity& solid, double LargestArea) {
    const LevelCounts counts = CountOnLevels(drawing);
    const int top = counts.TopEdges + counts.TopCircles;
    const int bottom = counts.BottomEdges + counts.BottomCircles;
    if (bottom > top || (bottom == top && LowerSideIsNarrower(drawing))) TurnOver(drawing);
    if (LargestFaceLiesAbove(drawing, solid, LargestArea)) TurnOver(drawing);
}

}  // namespace brenvik

// Corners and middles of sides against the walls of the part, and sides against those that run back beside
// them.
#include "cnc/proof/way_checks.h"

#include <algorithm>
#include <array>
#include <limits>

#include "cnc/part/told.h"
#include "cnc/plan/doubled_back.h"
#include "cnc/plan/negligible_sizes.h"
#include "cnc/plan/plan_curve_cuts.h"
#include "cnc/plan/plan_vectors.h"
#include "cnc/plan/side_places.h"
#include "cnc/proof/single_operations.h"

namespace brenvik {

namespace {

/// In millimetres: how far around a stretch that runs back wood is looked for.
constexpr double BesideDoubled = 0.03;
/// In millimetres: by how much a path may miss the wall that it follows. Free curves come in chords.
constexpr double OffWall = 0.03;
/// In millimetres. Places nearer than this to a reported one are not reported again.
constexpr double NearReported = 0.1;

double DistanceTo(std::span<const PlanSide> line, const PlanPoint& at) {
    double nearest = std::numeric_limits<double>::max();
    for (const PlanSide& side : line) nearest = std::min(nearest, Length(at - NearestOn(side, at)));
    return nearest;
}

/// Ways off a place, square to each other and askew to most walls.
std::array<PlanPoint, 4> Around(double off) {
    const double far = 0.87 * off, near = 0.49 * off;
    return {PlanPoint{far, near}, PlanPoint{-near, far}, PlanPoint{-far, -near}, PlanPoint{near, -far}};
}

bool HasWay(const WrittenOperation& operation) {
    return !operation.bore && operation.kind != OperationKind::Hole;
}

bool IsAt(const PartSection& section, const WrittenOperation& operation) {
    const double height = section.slab.Middle();
    return operation.low < height && height < operation.high;
}

/// On a wall it cuts nothing that the rest of the path doesn't. In wood the bit would follow it, or come to a
/// stop; in the air it keeps away from it, and leaves wood in the two corners.
bool LeadsAstray(const WaysOfPart& part, const WrittenOperation& operation, const DoubledStretch& stretch) {
    const std::array around = Around(BesideDoubled * part.unit);
    return std::ranges::any_of(stretch.between, [&](const PlanPoint& at) {
        const auto wood = std::ranges::count_if(
            around, [&](const PlanPoint& away) { return IsWood(part, operation, at + away); });
        return wood == 0 || wood == static_cast<std::ptrdiff_t>(around.size());
    });
}

/// Corners of paths lie in line with corners of the part, where a field can't tell inside from outside: wood
/// has to be all around.
bool IsAmidWood(const PartSection& section, const PlanPoint& at, double unit) {
    const std::array around = Around(0.5 * OffWall * unit);
    return std::ranges::all_of(around, [&](const PlanPoint& away) { return section.field.Holds(at + away); });
}

/// How far a place lies in the wood, at the height where that is most.
double DepthInWood(const WaysOfPart& part, const WrittenOperation& operation, const PlanPoint& at) {
    double deepest = 0;
    for (const PartSection& section : part.sections)
        if (IsAt(section, operation) && IsAmidWood(section, at, part.unit))
            deepest = std::max(deepest, DistanceTo(section.sides, at));
    return deepest;
}

std::string FaultOfStray(const WaysOfPart& part, const WrittenOperation& operation,
                         std::span<const PlanBox> told) {
    const double slack = NearReported * part.unit;
    for (const PlanSide& side : operation.sides) {
        for (const double share : {0.0, 0.5}) {
            const PlanPoint at = AtShare(side, share);
            const bool isTold = std::ranges::any_of(told, [&](const PlanBox& box) {
                return at.x > box.minX - slack && at.x < box.maxX + slack && at.y > box.minY - slack &&
                       at.y < box.maxY + slack;
            });
            if (isTold) continue;
            const double depth = DepthInWood(part, operation, at);
            if (depth > OffWall * part.unit)
                return NameWithSide(operation) + " leads " + ReportedLength(depth) +
                       " into wood that the part has, at " + ReportedPlace(at);
        }
    }
    return {};
}

}  // namespace

bool IsWood(const WaysOfPart& part, const WrittenOperation& operation, const PlanPoint& at) {
    return std::ranges::any_of(part.sections, [&](const PartSection& section) {
        return IsAt(section, operation) && section.field.Holds(at);
    });
}

std::vector<std::string> FaultsOfDoubledWays(const WaysOfPart& part) {
    std::vector<std::string> faults;
    for (const WrittenOperation& operation : part.operations) {
        if (!HasWay(operation)) continue;
        for (const DoubledStretch& stretch :
             DoubledBack(operation.sides, DoubledApart * part.unit, ShortestDoubled * part.unit)) {
            if (!LeadsAstray(part, operation, stretch)) continue;
            faults.push_back(NameWithSide(operation) + " runs out and back the same way, from " +
                             ReportedPlace(stretch.from) + " to " + ReportedPlace(stretch.to));
            break;
        }
    }
    return faults;
}

std::vector<StrayWay> FaultsOfStrayWays(const WaysOfPart& part, std::span<const PlanBox> told) {
    std::vector<StrayWay> strays;
    for (const WrittenOperation& operation : part.operations) {
        if (!HasWay(operation)) continue;
        std::string fault = FaultOfStray(part, operation, told);
        if (!fault.empty()) strays.push_back({NameWithSide(operation), std::move(fault)});
    }
    return strays;
}

bool CornersStray(std::span<const PlanSide> line, std::span<const PlanSide> other, double unit) {
    return std::ranges::any_of(
        line, [&](const PlanSide& side) { return DistanceTo(other, side.from) > OffWall * unit; });
}

}  // namespace brenvik

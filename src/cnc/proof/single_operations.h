// Faults of operations by themselves and beside each other,
// even if what they leave together is the part.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "cnc/plan/plan_difference.h"
#include "cnc/proof/written_side.h"

namespace brenvik {

/// What a lying cylinder shows at a height.
std::vector<PlanSide> BoreAt(const WrittenOperation& operation, double height);

/// As far as the sides go, round ones as well.
PlanBox BoxAround(const std::vector<PlanSide>& sides);
bool Overlap(const PlanBox& a, const PlanBox& b, double slack);

/// "RT_… of the second side".
std::string NameWithSide(const WrittenOperation& operation);
/// "600,400", as places are reported.
std::string ReportedPlace(const PlanPoint& point);
/// "from 600,400 to 650,420".
std::string PlaceOf(const WrittenOperation& operation);

/// A part's operations, and what is known of it where they are held against each other.
struct OperationsOfPart {
    std::span<const WrittenOperation> operations;
    /// Of each operation what it does to the plan, without the corners that its bit leaves; of a bore nothing
    /// is asked.
    std::span<const PlanShape> shapes;
    Box3 box;
    double unit = 1;  ///< One millimetre.
    /// Whether the part has wood at a place, at any height that the operation goes through.
    std::function<bool(const WrittenOperation&, const PlanPoint&)> isWood;
};

struct OperationFaults {
    std::vector<std::string> texts;
    /// Of each operation whether a text says that it is one too many.
    std::vector<bool> needless;
};

/// Operations that stand twice or pass the part by, outlines that go around the same wood, and ways that
/// stop or run twice.
OperationFaults FaultsOfSingleOperations(const OperationsOfPart& part);

}  // namespace brenvik

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

/// In words: operations that stand twice, that cut nothing, or nothing that another one of the side doesn't
/// cut, and outlines that go around the same wood.
std::vector<std::string> FaultsOfSingleOperations(const OperationsOfPart& part);

}  // namespace brenvik

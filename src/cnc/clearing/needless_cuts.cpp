// The question that the proof of a run asks of its files, asked before they are written.
#include "cnc/clearing/needless_cuts.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "base/skip.h"
#include "cnc/clearing/made_removals.h"
#include "cnc/plan/bit_access.h"
#include "cnc/plan/bit_reach.h"
#include "cnc/proof/needless_operations.h"
#include "cnc/proof/run_proof.h"

namespace brenvik {

namespace {

void Append(std::vector<PlanSide> more, std::vector<PlanSide>& sides) {
    sides.insert(sides.end(), more.begin(), more.end());
}

/// The operations of this pass, as it lies, with what their bits don't get to.
struct MadeOperations {
    std::vector<WrittenOperation> operations;
    std::vector<PlanShape> shapes;
    /// Of which it isn't known what their bits leave: they neither go nor make others go.
    std::vector<bool> unknown;
};

MadeOperations OperationsOf(const RunState& run, const Removals& removals) {
    MadeOperations made{removals.operations, {}, std::vector<bool>(removals.operations.size())};
    for (std::size_t i = 0; i < made.operations.size(); ++i) {
        WrittenOperation& operation = made.operations[i];
        operation.sides = removals.all[i].sides;
        operation.low = removals.all[i].low;
        operation.high = removals.all[i].high;
        made.shapes.push_back({PlanShape::Role::Removal, operation.sides, static_cast<int>(i)});
        if (operation.kind == OperationKind::Hole) continue;
        const double bit = BitOf(run, NameOf(run, operation), operation);
        const std::optional<Failure> unclosed = Attempt([&] {
            if (operation.followed) made.shapes[i].core = CoreOf(operation.sides, bit);
            BitRest rest = RestOfBit(operation.sides, BitPath::Within, bit, UnitOf(run));
            for (const RoundedCorner& corner : rest.corners) Append(BorderOf(corner), rest.border);
            made.shapes[i].notReached = std::move(rest.border);
        });
        made.unknown[i] = bit <= 0 || unclosed.has_value();
    }
    return made;
}

/// The area of the part at all heights between which anything begins or ends.
std::vector<BoardAtHeight> BoardOf(const MadeOperations& made, const PartSlabs& slabs, double unit) {
    std::vector<double> levels;
    for (const PartSlab& slab : slabs.Slabs()) levels.insert(levels.end(), {slab.low, slab.high});
    if (levels.empty()) return {};
    const auto [low, high] = std::ranges::minmax(levels);
    for (const WrittenOperation& operation : made.operations)
        levels.insert(levels.end(),
                      {std::clamp(operation.low, low, high), std::clamp(operation.high, low, high)});
    std::ranges::sort(levels);
    std::vector<BoardAtHeight> board;
    for (std::size_t i = 0; i + 1 < levels.size(); ++i)
        if (levels[i + 1] - levels[i] > SameFloor * unit)
            board.push_back(
                {{levels[i], levels[i + 1]}, {PlanShape{PlanShape::Role::Stock, slabs.Stock().sides, -1}}});
    return board;
}

}  // namespace

void DropNeedlessCuts(RunState& run, const PartSlabs& slabs) {
    const Removals removals = RemovalsOf(run);
    MadeOperations made = OperationsOf(run, removals);
    const double unit = UnitOf(run);
    const std::vector<BoardAtHeight> board = BoardOf(made, slabs, unit);
    const OperationsOfPart part{made.operations, made.shapes, {}, unit, {}};
    for (const std::size_t number : NeedlessAmong(part, board, std::move(made.unknown)))
        removals.entities[number]->Delete();
}

}  // namespace brenvik

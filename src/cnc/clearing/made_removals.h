// What the operations that a pass has made take away, as this pass lies.
#pragma once

#include <optional>
#include <vector>

#include "cnc/part/run_state.h"
#include "cnc/proof/operation_names.h"
#include "cnc/proof/written_side.h"

namespace brenvik {

/// All that removes wood, in this pass's frame: the operations of this pass, then those of the first side.
struct Removals {
    std::vector<Removal> all;
    /// Those of this pass, with the paths among them; null for circles.
    std::vector<AcadEntity*> entities;
    std::vector<AcadLWPolyline*> paths;
    std::vector<WrittenOperation> operations;  ///< As the first side has them.
};

/// Without outlines and edge bores.
Removals RemovalsOf(const RunState& run);

/// The diameter of the widest bit of a material.
double WidestBit(const MaterialRecord& material);

/// What an operation's name says.
std::optional<OperationName> NameOf(const RunState& run, const WrittenOperation& operation);
/// The diameter of an operation's bit; where names have neither tool nor diameter, the widest of the
/// material.
double BitOf(const RunState& run, const std::optional<OperationName>& name,
             const WrittenOperation& operation);

/// Gives a path other corners, in the material's direction of cut.
void Redraw(RunState& run, AcadLWPolyline& path, const std::vector<PlanSide>& loop);

}  // namespace brenvik

// Points and directions of a plane where a shape stands in space.
#pragma once

#include <vector>

#include "drafting_host/step/models/model_faults.h"

namespace brenvik::step {

/// The statements in space that hold a point, a direction or a placement of other than three coordinates: the
/// modeller can't build those and fails. Two coordinates are right in curves that stand in a surface's
/// parameters, which are left out. `references` is the graph of the same model.
std::vector<ModelFault> FlatPiecesInSpace(const Handle(StepData_StepModel) & model,
                                          const Interface_Graph& references);

}  // namespace brenvik::step

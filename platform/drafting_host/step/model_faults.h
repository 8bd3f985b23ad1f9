// Statements of a STEP file that hold what their kind can't have. The modeller reads on with pieces
// missing and would fall over them, or never end, when it builds shapes, so they are found first.
#pragma once

#include <Interface_Graph.hxx>
#include <StepData_StepModel.hxx>
#include <optional>
#include <string>

namespace brenvik::step {

/// A faulty statement: its number in the file (#number) and what is wrong with it.
struct ModelFault {
    int number;
    std::string reason;
};

/// The first statement that geometry, topology or product structure can't be built from; nothing when
/// there is none. Faults of names, units that no length depends on, and colours don't count.
/// `references` is the graph of the same model.
std::optional<ModelFault> FirstFault(const Handle(StepData_StepModel) & model,
                                     const Interface_Graph& references);

/// True when statements about colours and styles are faulty, so that they can't be followed.
bool StylesAreFaulty(const Handle(StepData_StepModel) & model);

}  // namespace brenvik::step

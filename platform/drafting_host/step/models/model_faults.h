// Statements of a STEP file that hold what their kind can't have. The modeller reads on with pieces
// missing and would fall over them, or never end, when it builds shapes, so they are found first.
#pragma once

#include <Interface_Graph.hxx>
#include <StepData_StepModel.hxx>
#include <string>
#include <unordered_set>
#include <vector>

namespace brenvik::step {

/// A faulty statement: its number in the file (#number) and its fault.
struct ModelFault {
    int number;
    std::string reason;
};

/// The statements that geometry, topology, product structure or styles can't be built from, in the order of
/// the file. Faults of names, of units that no length depends on, and of values that only say how a surface
/// is shaded don't count. `references` is the graph of the same model.
std::vector<ModelFault> Faults(const Handle(StepData_StepModel) & model, const Interface_Graph& references);

/// The numbers of all statements that the modeller reports something of.
std::vector<int> ReportedStatements(const Handle(StepData_StepModel) & model);

/// The numbers of all statements that can be items of a representation.
std::unordered_set<int> RepresentationItems(const Handle(StepData_StepModel) & model);

}  // namespace brenvik::step

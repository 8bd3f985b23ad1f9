// Solids whose statements contradict each other: a vertex beside its edge, an edge beside its face, a shell
// that isn't closed. The modeller stretches its tolerances over such gaps and hands out a part of other
// sizes without a word, so they are looked for in the statements themselves.
#pragma once

#include <Standard_Transient.hxx>
#include <StepData_StepModel.hxx>
#include <optional>
#include <string>
#include <vector>

#include "drafting_host/step/models/model_faults.h"

namespace brenvik::step {

/// A solid and the first contradiction found in it.
struct BodyFault {
    Handle(Standard_Transient) solid;
    ModelFault fault;
};

/// A solid with faces on balls, and how large these are together by the word of their edges, in square
/// millimetres to about a percent.
struct BallSizes {
    Handle(Standard_Transient) solid;
    double area = 0;
};

/// What looking through the solids of a file has found.
struct BodyChecks {
    std::vector<BodyFault> faults;
    std::vector<BallSizes> balls;  ///< Of the solids without a fault.
};

/// The statement of a point that lies farther out than any drawing reaches; null if there is none.
std::optional<ModelFault> FarPoint(const Handle(StepData_StepModel) & model);

/// Looks for the solids that contradict themselves, each once, in the order of the file, and those whose
/// lengths have no unit or whose unit contradicts its name. Changes the modeller's conversion factors, so it
/// has no place in the middle of a transfer.
BodyChecks CheckBodies(const Handle(StepData_StepModel) & model);

/// The units of length of the model's representations, in millimetres, each once. Asked before the modeller
/// is set to another unit than millimetres.
std::vector<double> MillimetresPerUnit(const Handle(StepData_StepModel) & model);

}  // namespace brenvik::step

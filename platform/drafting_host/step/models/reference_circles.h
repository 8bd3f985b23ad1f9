// Statements that lead back to themselves: the modeller follows them without end.
#pragma once

#include <Interface_Graph.hxx>
#include <StepData_StepModel.hxx>
#include <string_view>

namespace brenvik::step {

/// True for kinds that the shapes and their assembly can hang on. Annotations and units are read past, as
/// many programs write them carelessly.
bool CarriesShapes(std::string_view kind);

/// An entity (number in the model) that leads back to itself; 0 when there is none. Followed are the
/// references of geometry, topology and representations, and those from assemblies to what stands in them:
/// the component that a usage names, and the products of the shapes that it is placed with.
int OnACircle(const Handle(StepData_StepModel) & model, const Interface_Graph& references);

}  // namespace brenvik::step

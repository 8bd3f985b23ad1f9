// Contexts of shapes that name no unit of length. The modeller would take millimetres, or none of the shapes.
#pragma once

#include <string>

#include "drafting_host/solids/length_unit.h"
#include "drafting_host/step/texts/step_document.h"
#include "drafting_host/step/texts/step_statements.h"

namespace brenvik::step {

/// Whether any context of shapes names one.
bool NamesUnits(const Statements& statements);

bool HasUnitlessContexts(const Statements& statements);

/// The content with shapes of such contexts in the file's first context that names a unit, and in `unit`
/// where there is none.
std::string WithUnitsOfLength(std::string content, LengthUnit unit);

/// Reports these contexts with the unit that is assumed for their lengths.
void NoteUnitlessContexts(const Statements& statements, LengthUnit unit, StepDocument& document);

}  // namespace brenvik::step

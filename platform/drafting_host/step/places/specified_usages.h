// Places that a STEP file gives to one use of a component alone, among those of an assembly used several
// times.
#pragma once

#include "drafting_host/step/texts/step_document.h"
#include "drafting_host/step/texts/step_statements.h"

namespace brenvik::step {

/// Reports those that aren't the place which the usages on the way there give: the modeller reads these
/// alone.
void NoteSpecifiedPlaces(const Statements& statements, StepDocument& document);

}  // namespace brenvik::step

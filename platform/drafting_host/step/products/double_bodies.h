// Solids that a file holds twice without a place of their own: a cut list would count them twice.
#pragma once

#include "drafting_host/step/texts/step_document.h"
#include "drafting_host/step/texts/step_statements.h"

namespace brenvik::step {

/// Reports a solid that occurs twice among the items of one shape, and two solids of one shell in one shape.
/// Both become parts, the second in the place of the first.
void NoteDoubleBodies(const Statements& statements, StepDocument& document);

}  // namespace brenvik::step

// What a STEP file says about its products and assemblies that can't be read as it is meant.
#pragma once

#include "drafting_host/step/texts/step_document.h"
#include "drafting_host/step/texts/step_statements.h"

namespace brenvik::step {

/// Reports usages that have two places, places that belong to no usage, and usages of an unsupported kind.
void NoteDoubtfulUsages(const Statements& statements, StepDocument& document);

}  // namespace brenvik::step

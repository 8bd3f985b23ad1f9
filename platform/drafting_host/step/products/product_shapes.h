// Shapes of products that a STEP file names only where it places them.
#pragma once

#include <string>

#include "drafting_host/step/texts/step_document.h"
#include "drafting_host/step/texts/step_statements.h"
#include "drafting_host/step/texts/step_text.h"

namespace brenvik::step {

/// Whether a product of an assembly has no shape of its own, and the relationship that places it names its
/// shape. The modeller names such a part after its usage and reads one of several.
bool HasUntiedShapes(const Statements& statements);

/// The text in which each of these products has its shape.
std::string WithTiedShapes(std::string content);

/// Remarks on them, and reports products that have no shape at all.
void NoteUntiedShapes(const Statements& statements, CodePage codePage, StepDocument& document);

}  // namespace brenvik::step

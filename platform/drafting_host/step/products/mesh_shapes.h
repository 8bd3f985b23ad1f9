// Shapes made of triangles. The modeller knows no such representation, and counts what ties it to a product
// for a fault of the structure.
#pragma once

#include <vector>

#include "drafting_host/step/texts/step_document.h"
#include "drafting_host/step/texts/step_statements.h"
#include "drafting_host/step/texts/step_text.h"

namespace brenvik::step {

/// The statements that give such a shape to a product, equate it with another one or place it. No other
/// statement refers to these but one another.
std::vector<const Statement*> MeshRelations(const Statements& statements);

/// Reports products that have no other shape, by name; remarks on those whose solid has its triangles beside
/// it, as a second picture of the same part.
void NoteMeshShapes(const Statements& statements, CodePage codePage, StepDocument& document);

}  // namespace brenvik::step

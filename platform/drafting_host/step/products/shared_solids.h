// Solids that several products have as theirs. The modeller makes one shape of each, which bears one name.
#pragma once

#include <string>

#include "drafting_host/step/texts/step_document.h"
#include "drafting_host/step/texts/step_statements.h"
#include "drafting_host/step/texts/step_strings.h"

namespace brenvik::step {

bool HasSharedSolids(const Statements& statements);

/// The content with a solid of its own for each product but the first, in a shape of its own where products
/// share the shape.
std::string WithOwnSolids(std::string content);

/// Reports these solids, and solids of different products that are bounded by one shell.
void NoteSharedSolids(const Statements& statements, CodePage codePage, StepDocument& document);

}  // namespace brenvik::step

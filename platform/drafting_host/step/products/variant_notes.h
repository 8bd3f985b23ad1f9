// Products that a STEP file has as variants of others: both stand in the list, one of which may be cut alone.
#pragma once

#include "drafting_host/step/texts/step_document.h"
#include "drafting_host/step/texts/step_statements.h"
#include "drafting_host/step/texts/step_text.h"

namespace brenvik::step {

/// Reports substitutes, alternates, raw parts that others are made from, and second versions and definitions
/// of a product, where parts come of both.
void NoteVariants(const Statements& statements, CodePage codePage, StepDocument& document);

}  // namespace brenvik::step

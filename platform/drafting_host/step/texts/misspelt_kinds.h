// Statements whose kind is one that the format has but for a letter. The modeller passes them over without a
// word, and with them whatever they say of parts, places and looks.
#pragma once

#include "drafting_host/step/texts/step_document.h"
#include "drafting_host/step/texts/step_statements.h"

namespace brenvik::step {

/// Reports such statements, once for each kind: a look as a remark, a piece of a product or a shape as a
/// loss. What only geometry refers to is reported by what is made of it.
void NoteMisspeltKinds(const Statements& statements, StepDocument& document);

}  // namespace brenvik::step

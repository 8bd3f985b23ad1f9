// Relations that a STEP file states twice: the modeller would read their parts twice.
#pragma once

#include <vector>

#include "drafting_host/step/texts/step_document.h"
#include "drafting_host/step/texts/step_statements.h"

namespace brenvik::step {

/// A relation that says nothing new, and the one that says it already.
struct DoubleRelation {
    const Statement* statement = nullptr;
    int first = 0;
};

/// A product's shape that is its shape already, by itself or by a shape that it is said to be the same as,
/// and two shapes that are said to be the same twice. Nothing refers to these statements.
std::vector<DoubleRelation> DoubleRelations(const Statements& statements);

/// Remarks on them.
void NoteDoubleRelations(const Statements& statements, StepDocument& document);

}  // namespace brenvik::step

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

/// Relations that repeat another one: a shape given to a product that has it already, itself or as the equal
/// of another shape, or two shapes equated twice. No statement refers to these.
std::vector<DoubleRelation> DoubleRelations(const Statements& statements);

/// Remarks on them. Reports shapes that are the same and stand in each other at a place as well.
void NoteDoubleRelations(const Statements& statements, StepDocument& document);

}  // namespace brenvik::step

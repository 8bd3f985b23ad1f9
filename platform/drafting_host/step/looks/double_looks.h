// Looks that a STEP file gives an item twice, or for a context alone. A part has one colour and one layer, so
// one of them is lost.
#pragma once

#include <vector>

#include "drafting_host/step/texts/step_document.h"
#include "drafting_host/step/texts/step_quarantine.h"
#include "drafting_host/step/texts/step_strings.h"

namespace brenvik::step {

/// Reports items with two styles of different colours and items on two layers, once for each kind with their
/// number and the line of the first one's second look. These are remarks, since no part suffers.
void NoteDoubleLooks(const Statements& statements, const Quarantine& quarantine, CodePage codePage,
                     StepDocument& document);

/// Overriding styles and hidings that hold for one use, representation or view alone, but for those that were
/// taken out already. The modeller would give such a style to all uses or to none, by its place in the file.
std::vector<StatementFault> ContextLooks(const Statements& statements, const Quarantine& quarantine);

/// A remark on the styles that were left out since they hold for one use or view alone: their number and the
/// first one. Parts have the style that holds for all.
void NoteContextLooks(const Statements& statements, const Quarantine& quarantine, StepDocument& document);

}  // namespace brenvik::step

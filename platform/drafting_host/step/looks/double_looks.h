// Looks that a STEP file gives an item twice. A part has one colour and one layer, so one of them is lost.
#pragma once

#include "drafting_host/step/texts/step_document.h"
#include "drafting_host/step/texts/step_quarantine.h"
#include "drafting_host/step/texts/step_strings.h"

namespace brenvik::step {

/// Reports items with two styles of different colours and items on two layers, once for each kind with their
/// number and the line of the first one's second look. These are remarks, since no part suffers.
void NoteDoubleLooks(const Statements& statements, const Quarantine& quarantine, CodePage codePage,
                     StepDocument& document);

}  // namespace brenvik::step

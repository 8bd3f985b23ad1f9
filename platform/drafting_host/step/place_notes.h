// Places of parts in their assemblies that the modeller doesn't take as the file means them.
#pragma once

#include "drafting_host/step/step_notes.h"

namespace brenvik::step {

/// A part is placed by two placements: the first, in the part, comes to lie on the second, in the assembly.
/// The modeller combines them in the other order, which is the same where one of them is the origin or
/// neither turns; any other pair is told with its line.
void NoteDoubtfulPlaces(const Statements& statements, StepDocument& document);

}  // namespace brenvik::step

// Places of parts in their assemblies that the modeller doesn't take as the file means them.
#pragma once

#include <string>

#include "drafting_host/step/products/step_notes.h"

namespace brenvik::step {

/// A part is placed by two placements: the first, in the part, comes to lie on the second, in the assembly.
/// The modeller combines them in the other order, which is the same where one of them is the origin or
/// neither turns, and it has an X axis of its own where a placement leaves it open. True where a file holds a
/// pair that it would misread.
bool HasMisreadPlaces(const Statements& statements);

/// The text with these pairs written anew, the first placement at the origin, so that the order makes no
/// difference.
std::string WithPlacesFromTheOrigin(std::string content);

/// Reports pairs that can't be rewritten, and places that aren't given by two placements: such parts come to
/// lie where they are drawn.
void NoteDoubtfulPlaces(const Statements& statements, StepDocument& document);

}  // namespace brenvik::step

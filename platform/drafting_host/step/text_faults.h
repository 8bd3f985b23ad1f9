// What the text of a STEP file shows to be faulty before the modeller reads it, which would fall over some of
// it, follow some without end, and take some for something else.
#pragma once

#include <vector>

#include "drafting_host/step/texts/step_quarantine.h"

namespace brenvik::step {

/// The faults that a file's text shows: statements of no form, references to nothing, numbers beyond the
/// highest, lists without an entry where the modeller goes for the first one, oriented edges made of oriented
/// edges, units of length that can't be one, colours that don't exist, solids that aren't given by their
/// faces, and shapes that are set into others by a scale or mirrored.
std::vector<StatementFault> TextFaults(const Statements& statements);

}  // namespace brenvik::step

// Whether a part lies in its files as lists give it. A part is laid along the longest edge of its largest
// face, and lists take one that is square to the drawing's axes along these. Where that edge runs aslant, as
// the wall of a slanted dado that divides the face, the two differ.
#pragma once

#include <optional>

#include "parts/orie_update.h"
#include "session/ports/host_interface.h"

namespace brenvik {

struct RunState;

/// The sizes of a solid as the measuring component gives them, in drawing units; null where it can't.
std::optional<mAutoCAD::SortedExtents> MeasuredSizesOf(const AcadEntity& solid);

/// Notes for the part's report where the solid, laid flat, takes a larger sheet than `measured` by more than
/// a tenth of a millimetre: its blank and its grain aren't those of the list.
void NoteWhereLarger(RunState& run, const mAutoCAD::SortedExtents& measured, const AcadEntity& laid);

}  // namespace brenvik

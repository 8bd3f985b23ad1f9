// Contours as both passes of a part know them: which ones have been cut, and the reports on those that can be
// cut from neither side.
#pragma once

#include <string_view>

#include "cnc/part/run_state.h"

namespace brenvik {

/// Where a level contour lies, in the first pass's coordinates.
CutContour PlaceOf(const RunState& run, const Box3& part, const AcadEntity& contour, double area);

/// On a first pass: notes a contour that a path has been made of.
void NoteCut(RunState& run, const CutContour& contour);
/// On a second pass: whether the first one has made a path of it.
bool CutOnFirstSide(const RunState& run, const CutContour& contour);

/// Notes for the operator a contour that no path was made of. `kind` is his word for it.
void NoteUncut(RunState& run, const Box3& part, std::string_view kind, const CutContour& contour);

/// A drawing with a path that can't be followed stays for the operator: the message, and then the part
/// alone, laid as the pass has it, in the pass's folder under the name of the part with "_by_hand" behind.
void KeepForHandWork(RunState& run);

}  // namespace brenvik

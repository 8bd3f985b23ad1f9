// Faces that no recogniser takes: a vertical cutter makes level floors and upright walls, and any other
// face is reported to the operator.
#pragma once

#include "session/ports/host_interface.h"

namespace brenvik {

struct RunState;

/// Notes every flat face that is neither level nor upright (mitres along an edge, bevels, chamfers), with its
/// length, its width and its middle; and round faces that aren't round about an upright axis or that of a
/// bore, each once, by the curves of the part's faces: arcs that stand up and belong to no bore (grooves with
/// a round floor, rounded-over edges), arcs at an angle, and ellipses and splines that aren't level. A curve
/// in which a bore meets an upright round wall is none of these.
///
/// To be called when the faces have fallen apart to curves and before circles are sorted. The second pass,
/// which sees the same faces turned over, notes none.
void NoteUntakenFaces(RunState& run);

}  // namespace brenvik

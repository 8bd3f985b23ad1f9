// The drawing of the part that a run works on, which is the session's drawing as well: part data and
// measures are read by way of the session.
#pragma once

#include "session/ports/host_interface.h"

namespace brenvik {

struct RunState;

/// Makes this the drawing of the run's part and of the session.
void TakePartDrawing(RunState& run, AcadDocument& drawing);

/// Closes the part's drawing, if there is one, without saving. The session is back at the run's own drawing.
/// A drawing that can't be closed is left open.
void ClosePartDrawing(RunState& run);

}  // namespace brenvik

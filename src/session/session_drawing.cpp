// The one place that sets the session's document.
#include "session/session_drawing.h"

#include "session/session.h"

namespace brenvik {

void GoToDrawing(AcadDocument* drawing) { TheSession().AcadDoc = drawing; }

BackToDrawing::BackToDrawing() : mDrawing(TheSession().AcadDoc) {}

BackToDrawing::~BackToDrawing() { GoToDrawing(mDrawing); }

}  // namespace brenvik

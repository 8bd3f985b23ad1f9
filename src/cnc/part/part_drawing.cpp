// Opening and closing a part's drawing sets the session's document as well.
#include "cnc/part/part_drawing.h"

#include <utility>

#include "base/skip.h"
#include "cnc/part/run_state.h"
#include "session/session_drawing.h"

namespace brenvik {

void TakePartDrawing(RunState& run, AcadDocument& drawing) {
    run.part.drawing = &drawing;
    GoToDrawing(&drawing);
}

void ClosePartDrawing(RunState& run) {
    AcadDocument* drawing = std::exchange(run.part.drawing, nullptr);
    GoToDrawing(run.sessionDrawing);
    if (drawing != nullptr) Skip([&] { drawing->Close(false); });
}

}  // namespace brenvik

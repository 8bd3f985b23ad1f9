// Opening and closing a part's drawing sets the session's document as well.
#include "cnc/part/part_drawing.h"

#include <utility>

#include "base/skip.h"
#include "cnc/part/run_state.h"
#include "session/session.h"

namespace brenvik {

void TakePartDrawing(RunState& run, AcadDocument& drawing) {
    run.part.drawing = &drawing;
    TheSession().AcadDoc = &drawing;
}

void ClosePartDrawing(RunState& run) {
    AcadDocument* drawing = std::exchange(run.part.drawing, nullptr);
    TheSession().AcadDoc = run.sessionDrawing;
    if (drawing != nullptr) Skip([&] { drawing->Close(false); });
}

}  // namespace brenvik

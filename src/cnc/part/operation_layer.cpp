// Layers of operations in the part drawing.
#include "cnc/part/operation_layer.h"

#include "cnc/drawing/drawing_walk.h"
#include "cnc/part/run_state.h"

namespace brenvik {

void EnsureOperationLayer(RunState& run, std::string_view name) {
    if (LayerExists(*run.part.drawing, name)) return;
    AddLayer(*run.part.drawing, name);
    run.part.LastAddedLayer = name;
}

}  // namespace brenvik

// A drawing outside of any document whose bodies are still shapes: what passes from one open drawing to
// another where no text is needed.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <TopoDS_Shape.hxx>
#include <string>
#include <vector>

#include "drafting_host/dxf/data/drawing_data.h"

namespace brenvik {

struct DrawingSnapshot {
    /// Bodies stand here without their text.
    DrawingData data;
    /// One for each body, in the order in which the blocks hold them.
    std::vector<TopoDS_Shape> shapes;
};

/// The drawing with its bodies as text. Bodies without a text form are left out and reported in `problems`.
DrawingData WithBodyTexts(const DrawingSnapshot& snapshot, std::vector<std::string>& problems);

}  // namespace brenvik

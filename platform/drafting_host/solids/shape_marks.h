// Marks that distinguish a solid from others, and from its mirror image, in any place and turn.
#pragma once

#include <TopoDS_Shape.hxx>

#include "session/ports/shape_marks.h"

namespace brenvik::solids {

/// Works on integrals over the volume and over the plane, round and other faces, so that it is all one into
/// how many pieces a face was cut. Throws Failure where the modeller refuses.
ShapeMarks MarksOf(const TopoDS_Shape& solid);

}  // namespace brenvik::solids

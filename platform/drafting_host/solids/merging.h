// Faces that continue each other after a boolean, made one again.
#pragma once

#include <TopoDS_Shape.hxx>

namespace brenvik::solids {

/// True when two neighbouring faces lie on one plane or cylinder, or two edges of one line or circle meet
/// in a vertex that nothing else ends at. Cheap against merging itself.
bool HasNeedlessBorders(const TopoDS_Shape& shape);

/// The shape with such faces and edges merged; the shape itself when there are none, or where the modeller
/// fails. Faces of one cylinder that count their angles from different directions stay apart. The result is
/// as the modeller gives it, often a compound.
TopoDS_Shape BordersMerged(const TopoDS_Shape& shape);

}  // namespace brenvik::solids

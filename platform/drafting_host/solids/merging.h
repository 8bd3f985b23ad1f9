// Faces that continue each other after a boolean, made one again.
#pragma once

#include <TopoDS_Shape.hxx>

namespace brenvik::solids {

/// The shape without needless borders: neighbouring faces on one plane or cylinder are merged, and edges on
/// one line or circle that meet in a vertex of their own. The shape itself when there are none, or where the
/// modeller fails. Faces of one cylinder that count their angles from different directions stay apart. The
/// result is as the modeller gives it, often a compound.
TopoDS_Shape BordersMerged(const TopoDS_Shape& shape);

}  // namespace brenvik::solids

// What a shape of the modeller holds besides solids, in words.
#pragma once

#include <TopoDS_Shape.hxx>
#include <string>

namespace brenvik::step {

/// What a shape without a solid is made of: "a surface model, 1 open shell of 5 faces", "3 curves".
std::string ContentsOf(const TopoDS_Shape& shape);

/// The sheets, curves and points of a shape that belong to no solid of it; null where there are none.
TopoDS_Shape BesideSolids(const TopoDS_Shape& shape);

/// Whether a shape holds a face.
bool HoldsFaces(const TopoDS_Shape& shape);

}  // namespace brenvik::step

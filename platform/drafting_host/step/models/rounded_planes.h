// Files in inches often round their points to six digits, and a plane's to others: a wall then stands beside
// its own corners, by less than the file could say, but by more than numbers differ that mean the same.
#pragma once

#include <TopoDS_Shape.hxx>

namespace brenvik::step {

/// Moves planes that all corners of their face lie off by the same rounding, along their normal, onto these
/// corners. `unit` is the millimetres of the shape's unit. What lies on its corners but for the noise of
/// numbers stays as it is.
void PutPlanesOnCorners(const TopoDS_Shape& shape, double unit);

}  // namespace brenvik::step

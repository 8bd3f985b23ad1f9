// Shapes under a transformation, such that typed-in numbers stay typed-in numbers: the coordinates of points,
// curves and surfaces are rebuilt.
#pragma once

#include <TopoDS_Shape.hxx>
#include <gp_Trsf.hxx>
#include <gp_Vec.hxx>

namespace brenvik::solids {

/// The same transformation with the rounding left by trigonometry taken out of its rotation: entries
/// within 1e-14 of 0, 1 and -1 become these.
gp_Trsf Cleaned(const gp_Trsf& transformation);

/// The shape under a transformation, with new geometry and no location left anywhere in it. Shared
/// edges and vertices stay shared; faces and edges keep their order. A null shape stays null. Throws
/// Failure when the transformation can't be carried out. Solids that are mirrored keep a positive volume.
TopoDS_Shape Transformed(const TopoDS_Shape& shape, const gp_Trsf& transformation);

/// The shape with its locations worked into its geometry.
TopoDS_Shape Placed(const TopoDS_Shape& shape);

/// The shape moved by a vector, drawing units.
TopoDS_Shape Moved(const TopoDS_Shape& shape, const gp_Vec& vector);

}  // namespace brenvik::solids

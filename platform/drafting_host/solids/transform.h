// Moving, turning, scaling and mirroring shapes so that typed-in numbers stay typed-in numbers: the
// coordinates of points, curves and surfaces are rebuilt, and a quarter turn uses exact sines.
#pragma once

#include <TopoDS_Shape.hxx>
#include <gp_Ax1.hxx>
#include <gp_Ax2.hxx>
#include <gp_Pnt.hxx>
#include <gp_Trsf.hxx>
#include <gp_Vec.hxx>

namespace brenvik::solids {

/// The turn about `axis` by `angle` radians, right-handed. Angles within 1e-12 of a multiple of a
/// quarter turn give a matrix of zeros and ones where the axis lies along a world axis.
gp_Trsf Turn(const gp_Ax1& axis, double angle);

/// The same transformation with the rounding left by trigonometry taken out of its rotation: entries
/// within 1e-14 of 0, 1 and -1 become these.
gp_Trsf Cleaned(const gp_Trsf& transformation);

/// The shape under a transformation, with new geometry and no location left anywhere in it. Shared
/// edges and vertices stay shared; faces and edges keep their order. A null shape stays null. Throws
/// Failure when the transformation can't be carried out.
TopoDS_Shape Transformed(const TopoDS_Shape& shape, const gp_Trsf& transformation);

/// The shape with its locations worked into its geometry.
TopoDS_Shape Placed(const TopoDS_Shape& shape);

/// The shape moved by a vector, drawing units.
TopoDS_Shape Moved(const TopoDS_Shape& shape, const gp_Vec& vector);

/// The shape turned about `axis` by `angle` radians, right-handed.
TopoDS_Shape Rotated(const TopoDS_Shape& shape, const gp_Ax1& axis, double angle);

/// The shape scaled about a point. `factor` must be above 0, otherwise Failure.
TopoDS_Shape Scaled(const TopoDS_Shape& shape, const gp_Pnt& center, double factor);

/// The shape mirrored at a plane: through the origin of `plane`, square to its main direction. Solids
/// stay solids with positive volume.
TopoDS_Shape Mirrored(const TopoDS_Shape& shape, const gp_Ax2& plane);

}  // namespace brenvik::solids

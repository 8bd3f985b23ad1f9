// Volume, area and centre of shapes. Parts bounded by planes, cylinders and cones come from their edges
// by formula, so that equal parts have equal volumes to the last digits that matter.
#pragma once

#include <TopoDS_Face.hxx>
#include <TopoDS_Shape.hxx>
#include <cstddef>
#include <gp_Pnt.hxx>

namespace brenvik::solids {

/// Volume of all solids of the shape, cubic drawing units; a solid turned inside out counts negative. Exact
/// to about 1e-13 of the part's box for planes, cylinders and cones, to 1e-12 for spheres and tori; free-form
/// faces are summed up span by span, to about 1e-6. 0 for a shape without faces. Throws Failure if it can't
/// be computed.
double Volume(const TopoDS_Shape& shape);

/// Area of one face, square drawing units, exact for planes, cylinders and cones as above.
double Area(const TopoDS_Face& face);

/// Area of all faces of the shape.
double Area(const TopoDS_Shape& shape);

/// Centre of gravity: of the volume where there are solids, otherwise of the faces, otherwise of the
/// edges. Throws Failure for a shape that has none of them.
gp_Pnt Centroid(const TopoDS_Shape& shape);

/// True when the shape is a solid or holds nothing but solids.
bool IsSolid(const TopoDS_Shape& shape);

/// How many lumps a body has, which is what the modeller calls solids; 0 for a sheet.
std::size_t LumpsOf(const TopoDS_Shape& shape);

/// True when the modeller's own check finds nothing wrong with topology and geometry of the shape.
bool Valid(const TopoDS_Shape& shape);

}  // namespace brenvik::solids

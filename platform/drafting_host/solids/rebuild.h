// Rebuilds a shape from the ground up under a rigid move, with every location worked into points, curves
// and surfaces. The modeller's own way leaves locations in place, and with them the rounding of their
// matrices.
#pragma once

#include <TopoDS_Shape.hxx>
#include <gp_Trsf.hxx>

namespace brenvik::solids {

/// The shape under `move`, without locations and without triangulations. Sub-shapes that are shared
/// within the shape are shared within the result, orientations and order are kept. `move` has to be a
/// rigid move without mirroring.
TopoDS_Shape RebuiltUnder(const TopoDS_Shape& shape, const gp_Trsf& move);

/// True when the shape or anything in it carries a location.
bool HasLocations(const TopoDS_Shape& shape);

}  // namespace brenvik::solids

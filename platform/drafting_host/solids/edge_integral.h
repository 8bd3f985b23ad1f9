// Integrals along the edges of a face, from which areas and volumes follow by the theorems of Green and
// Gauss without a parametrisation of the face.
#pragma once

#include <TopoDS_Edge.hxx>
#include <gp_Cylinder.hxx>
#include <gp_XYZ.hxx>

namespace brenvik::solids {

/// Half the integral of p × dp along the edge in its own direction, p taken from `origin`. Summed over
/// the boundary of a surface it is the surface's vector area. Formulas for lines, circles and ellipses,
/// Gauss points otherwise.
gp_XYZ SweptArea(const TopoDS_Edge& edge, const gp_XYZ& origin);

/// The integral of -v r du along the edge in its own direction, where u and v are angle and height on
/// the cylinder and r its radius. Summed over the boundary of a face on the cylinder it is the face's
/// area, positive where the boundary runs counterclockwise about the outward radius.
double CylinderArea(const TopoDS_Edge& edge, const gp_Cylinder& cylinder);

}  // namespace brenvik::solids

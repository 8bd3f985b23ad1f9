// Building solids: extrusion of regions and the boolean operations of a drafting host.
#pragma once

#include <TopoDS_Face.hxx>
#include <TopoDS_Shape.hxx>
#include <gp_Dir.hxx>

namespace brenvik::solids {

/// The three boolean operations.
enum class BooleanKind { Union, Subtract, Intersect };

/// The unit normal of a flat face, outward from the material where the face bounds a solid. Throws
/// Failure for a face that isn't flat.
gp_Dir NormalOf(const TopoDS_Face& face);

/// The solid that a flat face sweeps over `height` drawing units along its normal; a negative height
/// sweeps the other way. Arcs become cylinders. Throws Failure for height 0 or a face that isn't flat.
TopoDS_Shape ExtrudeRegion(const TopoDS_Face& face, double height);

/// Joins, cuts or intersects two solids, or two regions of one plane. The result is one solid (face), a
/// compound of several, or a null shape where nothing is left.
///
/// What shares no volume (area) stays untouched: a subtraction that removes nothing hands back `shape`
/// itself, so its volume is the same to the last bit. Boxes are compared first, then the common volume;
/// a film thinner than 1e-7 is the rounding of faces that touch and counts as nothing. Flat and round
/// faces that continue each other are merged. Throws Failure when the modeller can't do it.
TopoDS_Shape Boolean(const TopoDS_Shape& shape, const TopoDS_Shape& tool, BooleanKind kind);

}  // namespace brenvik::solids

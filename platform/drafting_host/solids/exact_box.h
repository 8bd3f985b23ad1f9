// Boxes of shapes without any tolerance gap: a part drawn with typed-in numbers gives those numbers
// back.
#pragma once

#include <TopoDS_Shape.hxx>
#include <gp_Ax3.hxx>
#include <gp_Pnt.hxx>

namespace brenvik::solids {

/// A box by its two corners, drawing units.
struct Box {
    gp_Pnt min;
    gp_Pnt max;

    /// Extent along the first (X), second (Y) and third (Z) axis.
    double SizeX() const { return max.X() - min.X(); }
    double SizeY() const { return max.Y() - min.Y(); }
    double SizeZ() const { return max.Z() - min.Z(); }
};

/// The smallest box with sides along the world axes that holds the shape, in world coordinates. Throws
/// Failure when the shape is null, holds no point or has coordinates that are no numbers.
Box ExactBox(const TopoDS_Shape& shape);

/// The same along the axes of `frame`, in coordinates of that frame: its origin is (0, 0, 0). The shape
/// is not touched.
Box ExactBoxIn(const TopoDS_Shape& shape, const gp_Ax3& frame);

/// True when the two boxes share more than a film of thickness `film`: boxes that only touch don't.
bool Overlap(const Box& one, const Box& other, double film = 1e-7);

}  // namespace brenvik::solids

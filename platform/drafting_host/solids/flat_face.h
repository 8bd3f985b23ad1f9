// The flat faces of a part and the straight edges of the part: what a board's own frame is found from.
#pragma once

#include <TopoDS_Face.hxx>
#include <TopoDS_Shape.hxx>
#include <gp_XYZ.hxx>
#include <optional>
#include <vector>

namespace brenvik::solids {

/// A flat face: its unit normal (either way) and area in square drawing units.
struct FlatFace {
    TopoDS_Face face;
    gp_XYZ normal;
    double area;
};

/// A straight run of a boundary: unit direction (either way) and total length of the pieces on the line.
struct StraightRun {
    gp_XYZ direction;
    gp_XYZ point;
    double length;
};

/// All flat faces of the shape. A free-form surface that is flat in fact counts as a plane.
std::vector<FlatFace> FlatFaces(const TopoDS_Shape& shape);

/// The straight runs on the outer boundary of a flat face, pieces of one line put together.
std::vector<StraightRun> OuterRuns(const FlatFace& face);

/// Directions of all straight edges of the shape.
std::vector<gp_XYZ> StraightDirections(const TopoDS_Shape& shape);

/// True when two unit directions lie along each other, either way, to about 1e-9 rad.
bool Parallel(const gp_XYZ& one, const gp_XYZ& other);

}  // namespace brenvik::solids

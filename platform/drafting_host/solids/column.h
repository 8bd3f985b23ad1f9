// How much of a solid stands over or under a contour, found from its faces and edges without cutting it.
#pragma once

#include <TopoDS_Face.hxx>
#include <TopoDS_Shape.hxx>
#include <optional>

namespace brenvik::solids {

/// The volume that the solid has in common with the upright column that a level face sweeps over `height`
/// (upwards, or downwards where it is negative). Exact: nothing of it is cut or integrated.
///
/// Null if it can't be computed this way: if a wall of the solid stands in the column, a surface over the
/// face is neither level nor upright, a boundary is neither straight nor round, or the face isn't level. The
/// boolean of the modeller answers then.
std::optional<double> VolumeInColumn(const TopoDS_Shape& solid, const TopoDS_Face& base, double height);

}  // namespace brenvik::solids

// Flat faces as a drafting host knows them: regions from closed curves and sections of solids.
#pragma once

#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Shape.hxx>
#include <gp_Dir.hxx>
#include <gp_Pnt.hxx>
#include <optional>
#include <span>
#include <vector>

namespace brenvik::solids {

/// One region per closed loop that the edges make end to end (ends within 1e-6 drawing units), in the
/// order of each loop's first edge. The regions' normals look to the side of `normal` where it is given,
/// otherwise to the side that the loop turns about counterclockwise. Throws Failure when edges are left
/// over that close no loop, or a loop is not flat or crosses itself.
std::vector<TopoDS_Face> RegionsFromCurves(std::span<const TopoDS_Edge> edges,
                                           const std::optional<gp_Dir>& normal = std::nullopt);

/// The faces that the plane through three points cuts out of a solid, with their holes; normals are
/// (p2 - p1) × (p3 - p1). A plane that lies in an outer face of the solid gives that face. Empty where
/// the plane misses the solid. Throws Failure when the points lie on a line.
std::vector<TopoDS_Face> SectionByPlane(const TopoDS_Shape& shape, const gp_Pnt& p1, const gp_Pnt& p2,
                                        const gp_Pnt& p3);

}  // namespace brenvik::solids

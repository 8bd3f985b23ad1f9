// Moving and offsetting single faces of a solid.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <TopoDS_Face.hxx>
#include <TopoDS_Shape.hxx>
#include <gp_Dir.hxx>
#include <span>

#include "session/ports/host_interface.h"

namespace brenvik {

/// Whether its surface is a plane by its kind; a free surface that only lies flat isn't.
bool IsFlat(const TopoDS_Face& face);

/// Whether a face runs along a direction, so that it goes on unchanged when it is made longer that way.
bool RunsAlong(const TopoDS_Face& face, const gp_Dir& direction);

/// The solid with its faces shifted by a vector, neighbours stretched or cut back. A flat face moves along
/// its normal only: a shift within its plane leaves it where it is. Round faces move as the feature that they
/// make (a hole, a boss) together with the flat faces chosen with them. The faces are the solid's own. Throws
/// Failure where the modeller can't do it, or nothing would be left.
TopoDS_Shape MovedFaces(const TopoDS_Shape& solid, std::span<const TopoDS_Face> faces, const Point3& shift);

/// The solid with its faces offset by a distance: a positive one makes the solid larger, so it makes a hole
/// smaller. Throws Failure as above.
TopoDS_Shape OffsetFaces(const TopoDS_Shape& solid, std::span<const TopoDS_Face> faces, double distance);

/// The solid with flat faces extruded along their normals; a negative height cuts into the solid. Throws
/// Failure for a face that is not flat, and as above.
TopoDS_Shape ExtrudedFaces(const TopoDS_Shape& solid, std::span<const TopoDS_Face> faces, double height);

}  // namespace brenvik

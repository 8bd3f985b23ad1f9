// A solid of which some corners are moved: what lies between them and the others gets longer or shorter.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <TopoDS_Shape.hxx>
#include <functional>
#include <gp_Pnt.hxx>

#include "session/ports/host_interface.h"

namespace brenvik {

/// Whether a place of the solid is among those that move.
using IsMoved = std::function<bool(const gp_Pnt&)>;

/// The solid with the corners that are among the moved ones shifted by a vector, and with them every edge and
/// face between such corners: ends of boards, holes, notches. All other numbers of it stay as they are. The
/// sides that join moved corners to others have to run along the shift. All corners moved give the solid
/// shifted, none the solid itself.
///
/// Throws Failure, whose detail completes the sentence "it stays as it was: ...", where a side would be
/// skewed, a hole lies only partly among the moved places, a length would vanish, or features would run into
/// each other.
TopoDS_Shape StretchedSolid(const TopoDS_Shape& solid, const IsMoved& isMoved, const Point3& shift);

}  // namespace brenvik

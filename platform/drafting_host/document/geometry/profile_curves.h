// The profile of solids: the edges and outlines that a view shows of them, and those it hides.
#pragma once

#include <TopoDS_Shape.hxx>
#include <span>
#include <vector>

#include "drafting_host/document/geometry/flat_curves.h"

namespace brenvik {

struct ProfileOptions {
    /// Hidden edges apart from visible ones; otherwise everything counts as visible.
    bool partHidden = true;
    /// Laid onto the plane; otherwise the edges stay where they are in space.
    bool flat = true;
    /// Without the edges in which a face runs smoothly into the next.
    bool withoutTangent = true;
};

struct ProfileCurves {
    std::vector<HostGeometry> visible, hidden;
};

/// The edges of the solids and the outlines of their bulging faces as true curves, straight from the
/// modeller's own curves. Images that coincide come once among the visible and once among the hidden ones.
/// Outlines of round faces are drawn over the whole stretch that the face spans; free-form faces show their
/// edges alone.
///
/// Throws Failure where the modeller can't read a shape.
ProfileCurves ProfileOf(std::span<const TopoDS_Shape> shapes, const SightPlane& plane,
                        const ProfileOptions& options);

}  // namespace brenvik

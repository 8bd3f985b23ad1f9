// Where round faces turn away from the eye.
#pragma once

#include <TopoDS_Face.hxx>
#include <vector>

#include "drafting_host/document/geometry/host_geometry.h"

namespace brenvik {

/// The curves in space along which a cylinder, cone, sphere or torus runs along the line of sight, over the
/// stretch that the face spans. None for flat and free-form faces, and none where the face runs along the
/// line of sight all over.
std::vector<HostGeometry> OutlinesOf(const TopoDS_Face& face, const Point3& towardsEye);

}  // namespace brenvik

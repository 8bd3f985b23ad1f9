// Volumes of closed shells from their boundary loops, which distinguish inside from outside without
// integrating over every face.
#pragma once

#include "drafting_host/acis/face_plan.h"

namespace brenvik::acis {

/// Three times the volume between a face and `origin`, positive where the face looks away from it. The
/// sum over a closed shell is three times its volume, exact but for interpolated edges and free surfaces.
/// `chart` is null for a face without loops.
double Flux(const FacePlan& face, const FaceChart* chart, const Nodes& nodes, const gp_XYZ& origin);

}  // namespace brenvik::acis

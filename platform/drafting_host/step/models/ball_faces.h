// Faces on spheres. An edge can run either way about a sphere, and its face can be on either side of it; only
// the size of the face shows which is meant, and the modeller sometimes chooses the other.
#pragma once

#include <TopoDS_Shape.hxx>
#include <optional>
#include <vector>

#include "drafting_host/step/models/edge_samples.h"
#include "drafting_host/step/models/face_winding.h"

namespace brenvik::step {

/// A face on a ball by the word of its edges.
struct BallFace {
    double area = 0;  ///< Square file units, to about a percent.
    /// A hollow of more than half the ball that edges with corners bound: no tool makes it, an arc that takes
    /// the long way does.
    bool bulges = false;
};

/// Null for a face on another surface, or with edges that aren't known. `loops` and `sameSense` as for
/// WindingFault.
std::optional<BallFace> TakeBallFace(const FaceSurface& surface,
                                     const std::vector<std::vector<FaceEdge>>& loops, bool sameSense);

/// What became of the faces on balls in the modeller.
struct BallsMade {
    double area = 0;  ///< Square units of the shape.
    double gap = 0;   ///< The widest between an edge and its trace on the ball.
};
BallsMade BallsIn(const TopoDS_Shape& shape);

}  // namespace brenvik::step

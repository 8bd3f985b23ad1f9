// How the edges of a face run around a surface that closes on itself. An arc between two points can go either
// way about, both lie on the surface, and the wrong one turns a rounded corner into a whole drum: the text
// shows it by what the edges sum up to.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "drafting_host/step/models/edge_samples.h"

namespace brenvik::step {

/// An edge as a face walks it.
struct FaceEdge {
    const EdgeSamples* samples = nullptr;
    const void* edge = nullptr;  ///< The same for both uses of a seam.
    bool forward = true;         ///< From the edge's start to its end.
};

/// Whether the curves of all edges are known.
bool AllKnown(const std::vector<std::vector<FaceEdge>>& loops);

/// How the edges of a face on a cylinder, a cone, a torus, a ball or a turned surface contradict each other:
/// they run around it and don't come back, or a seam takes the long way about. Null for a sound face, and for
/// faces on other surfaces. `loops`: the edges of each in its order, as the face's normal has them;
/// `sameSense`: whether that is the surface's own. Raises the modeller's failures for numbers that make no
/// surface.
std::optional<std::string> WindingFault(const FaceSurface& surface,
                                        const std::vector<std::vector<FaceEdge>>& loops, bool sameSense);

}  // namespace brenvik::step

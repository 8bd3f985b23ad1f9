// From the edges of a part's inner levels to the contours that paths are made of.
#pragma once

#include <vector>

#include "session/ports/host_interface.h"

namespace brenvik {

/// The polylines that the edges between the faces join to, all of them on `RoutingLayer2`.
struct GatheredContours {
    std::vector<AcadLWPolyline*> closed;
    /// Chains whose ends don't meet.
    std::vector<AcadLWPolyline*> open;
    /// False when an edge is a curve that no polyline follows, such as an ellipse.
    bool followable = true;
};

/// Takes the level lines and arcs of `BrenvikExplode` that lie strictly between the part's lowest and
/// highest Z (5 decimals) to `RoutingLayer1`, and has the host join what lies there, chain by chain.
/// All layers but that one are frozen meanwhile.
GatheredContours GatherContours(AcadDocument& drawing, const Box3& part);

}  // namespace brenvik

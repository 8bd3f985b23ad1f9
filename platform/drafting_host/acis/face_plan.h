// What has to be settled about all faces of a body before the first edge is made: which way round each
// face lies on its surface, and where the seams of full rounds run. ACIS knows no seams; the modeller
// needs one wherever loops go all the way round.
#pragma once

#include "drafting_host/acis/loop_chart.h"

#include <optional>
#include <vector>

namespace brenvik::acis {

/// A seam across the band between two loops that go all the way round. `low` and `high` are in the
/// direction across; an end without a vertex is an apex or a pole.
struct Seam {
    bool alongU = true;  ///< The loops wind in u, the seam runs along v.
    int lowVertex = -1, highVertex = -1;
};

/// One face of a body under construction.
struct FacePlan {
    long record = -1;
    SurfaceFrame frame;
    std::vector<LoopUse> loops;  ///< None for a whole sphere or torus.
    bool naturalSide = true;     ///< The face looks to the natural side of its surface.
    bool doubleSided = false;
    std::optional<Seam> seam;
};

/// Two loops between which a seam is needed, as indices of charts; -1 for an apex or a pole.
struct WoundPair {
    bool alongU = true;
    int low = -1, high = -1;
};

/// The loops of a face laid out. Wound pairs on a torus are brought next to each other.
struct FaceChart {
    std::vector<LoopChart> loops;
    std::optional<WoundPair> pair;
};

/// Lays out a face. Empty where the loops do not enclose an area to their left, so that the face has
/// to lie the other way round. Throws BadRecord for what cannot be laid out at all.
std::optional<FaceChart> ChartFace(const FacePlan& face, const Nodes& nodes);

/// Settles the surface axes, side and seams of all faces. Seams may move the vertex of a full circle
/// that nothing else uses, and as a last resort split an edge. Throws BadRecord.
void PlanFaces(std::vector<FacePlan>& faces, Nodes& nodes);

/// Where a laid out loop passes a value of u (or of v): the piece, the parameter on its edge, and the
/// other coordinate there. Empty where it never does.
struct Passing {
    std::size_t piece = 0;
    double parameter = 0;
    double across = 0;
};
std::optional<Passing> FindPassing(const LoopChart& chart, const Nodes& nodes, bool alongU, double value);

}  // namespace brenvik::acis

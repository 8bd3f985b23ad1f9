// Loops laid out in the parameters of their surface: a curve for each edge, strung together over the
// turns of a round surface, with the points that a pole or an apex spreads to a line.
#pragma once

#include "drafting_host/acis/geometry.h"

#include <Geom2d_Curve.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Vertex.hxx>
#include <gp_Vec2d.hxx>

#include <vector>

namespace brenvik::acis {

/// A vertex of the body under construction.
struct VertexNode {
    gp_Pnt place;
    double tolerance = Coincidence;
    int edgeCount = 0;     ///< Edges that end here, a closed edge counted once.
    bool settled = false;  ///< A seam ends here, so it has to stay where it is.
    TopoDS_Vertex shape;
};

/// An edge of the body under construction; `shape` is made when its place is final.
struct EdgeNode {
    Handle(Geom_Curve) curve;
    double first = 0, last = 0;
    int start = -1, end = -1;
    double tolerance = Coincidence;
    long record = -1;
    TopoDS_Edge shape;
};

/// Vertices and edges of one body.
struct Nodes {
    std::vector<VertexNode> vertices;
    std::vector<EdgeNode> edges;
};

/// One use of an edge by a loop.
struct CoedgeUse {
    int edge = -1;
    bool forward = true;
    Handle(Geom2d_Curve) given;  ///< The curve on the surface that the text gives, if any.
};
using LoopUse = std::vector<CoedgeUse>;

/// One stretch of a laid out loop: an edge, or where `edge` is -1 a point spread to a line.
struct ChartPiece {
    int edge = -1;
    bool forward = true;
    int startVertex = -1;
    Handle(Geom2d_Curve) curve;     ///< Same parameter as the edge's own curve; null for a spread point.
    gp_Vec2d shift;                 ///< To be added to `curve`: whole turns.
    std::vector<gp_Pnt2d> samples;  ///< In walking direction, both ends included, shift included.

    const gp_Pnt2d& Start() const { return samples.front(); }
    const gp_Pnt2d& End() const { return samples.back(); }
    void Move(const gp_Vec2d& by);
};

/// How far a point lies along one of the two parameters.
inline double Along(const gp_Pnt2d& p, bool alongU) { return alongU ? p.X() : p.Y(); }

/// A laid out loop. Wound loops end whole turns away from where they start.
struct LoopChart {
    std::vector<ChartPiece> pieces;
    int windU = 0, windV = 0;

    void Move(const gp_Vec2d& by);
    /// The area to the left of the walk, as the integral of -v du or, when `againstU`, of u dv. For a
    /// loop that winds in u only the first means something, in v only the second, and then only
    /// together with its counterpart.
    double Area(bool againstU) const;
};

/// Lays out one loop. Throws BadRecord (with the edge's record) when an edge leaves the surface, the
/// loop is torn, or an edge runs through a pole where the surface has no parameters. When `straightOnly`,
/// edges that are no straight lines in the parameters are refused as well.
LoopChart ChartLoop(const SurfaceFrame& frame, const LoopUse& loop, const Nodes& nodes,
                    bool straightOnly = false);

}  // namespace brenvik::acis

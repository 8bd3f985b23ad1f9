// Faces with exact parameter curves: each edge of a round face gets the curve it was laid out with, and
// bands that go all the way round are closed over a seam.
#include "drafting_host/acis/face_maker.h"

#include "base/angles.h"
#include "drafting_host/acis/flux.h"

#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Geom2d_Line.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_TrimmedCurve.hxx>
#include <TopExp.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Wire.hxx>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numbers>

namespace brenvik::acis {
namespace {

// Share of a turn by which rounding may carry an opening over the end of the outer loop.
constexpr double ParameterSlack = 1e-9;

gp_Vec2d AlongBy(double length, bool alongU) { return alongU ? gp_Vec2d(length, 0) : gp_Vec2d(0, length); }

// Lets a wound or closed loop begin at the given piece; the pieces ahead of it follow at the end, moved by
// the turns that the loop winds.
void StartAt(LoopChart& loop, std::size_t piece) {
    const gp_Vec2d turn(FullTurn * loop.windU, FullTurn * loop.windV);
    for (std::size_t i = 0; i < piece; ++i) loop.pieces[i].Move(turn);
    std::rotate(loop.pieces.begin(), loop.pieces.begin() + static_cast<long>(piece), loop.pieces.end());
}

double PolygonArea(const LoopChart& loop) { return loop.Area(false); }

bool Encloses(const LoopChart& outer, const gp_Pnt2d& point) {
    bool inside = false;
    // The last sample of a loop is the first but for rounding, and that gap must not let a ray through.
    gp_Pnt2d a = outer.pieces.back().End();
    for (const ChartPiece& piece : outer.pieces) {
        for (const gp_Pnt2d& b : piece.samples) {
            if ((a.Y() > point.Y()) != (b.Y() > point.Y()) &&
                point.X() < a.X() + (point.Y() - a.Y()) / (b.Y() - a.Y()) * (b.X() - a.X())) {
                inside = !inside;
            }
            a = b;
        }
    }
    return inside;
}

class FaceMaker {
  public:
    FaceMaker(const FacePlan& p, Nodes& n) : mPlan(p), mNodes(n), mSurface(p.frame.Build()) {}

    MadeFaces Run() {
        std::optional<FaceChart> laid = ChartFace(mPlan, mNodes);
        if (!laid) throw BadRecord(mPlan.record, "the loops of a face enclose nothing");
        mChart = std::move(*laid);
        const double flux = Flux(mPlan, &mChart, mNodes, mNodes.vertices.front().place.XYZ());
        if (mPlan.frame.kind == SurfaceFrame::Kind::Plane) return {FlatFaces(), flux};
        mBuilder.MakeFace(mFace, mSurface, Coincidence);
        if (mChart.pair)
            AddSeamedWire();
        else
            AddPlainWires();
        AssignCurves();
        return {{Sided(mFace)}, flux};
    }

  private:
    TopoDS_Face Sided(const TopoDS_Face& made) const {
        return TopoDS::Face(made.Oriented(mPlan.naturalSide ? TopAbs_FORWARD : TopAbs_REVERSED));
    }

    EdgeNode& Edge(const ChartPiece& piece) { return mNodes.edges[static_cast<std::size_t>(piece.edge)]; }

    std::vector<TopoDS_Face> FlatFaces();
    TopoDS_Wire FlatWire(const LoopChart& loop);
    void AddPlainWires();
    void AddSeamedWire();
    std::size_t PieceAt(const LoopChart& loop, int vertex, double along) const;
    void PlaceInside(LoopChart& loop, double lowU, double lowV) const;
    void AddLoop(TopoDS_Wire& wire, const LoopChart& loop);
    void AddPiece(TopoDS_Wire& wire, const ChartPiece& piece);
    void AddSpreadPoint(TopoDS_Wire& wire, const gp_Pnt2d& from, const gp_Pnt2d& to,
                        const TopoDS_Vertex& vertex);
    void AddSeam(TopoDS_Wire& wire, LoopChart* low, LoopChart* high);
    TopoDS_Edge SeamEdge(double along, double from, double to, const TopoDS_Vertex& low,
                         const TopoDS_Vertex& high);
    TopoDS_Vertex SpreadVertex(double v);
    void AssignCurves();
    void Widen(EdgeNode& edge, const Handle(Geom2d_Curve) & curve);

    struct Uses {
        Handle(Geom2d_Curve) forward, reversed;
    };

    const FacePlan& mPlan;
    Nodes& mNodes;
    Handle(Geom_Surface) mSurface;
    FaceChart mChart;
    TopoDS_Face mFace;
    BRep_Builder mBuilder;
    std::map<int, Uses> mUses;
};

TopoDS_Wire FaceMaker::FlatWire(const LoopChart& loop) {
    TopoDS_Wire wire;
    mBuilder.MakeWire(wire);
    for (const ChartPiece& piece : loop.pieces) {
        EdgeNode& edge = Edge(piece);
        mBuilder.Add(wire, edge.shape.Oriented(piece.forward ? TopAbs_FORWARD : TopAbs_REVERSED));
        for (const gp_Pnt2d& sample : piece.samples) {
            const double position = edge.first + (edge.last - edge.first) *
                                                     static_cast<double>(&sample - piece.samples.data()) /
                                                     static_cast<double>(piece.samples.size() - 1);
            const gp_Pnt onCurve =
                edge.curve->Value(piece.forward ? position : edge.first + edge.last - position);
            edge.tolerance = std::max(edge.tolerance, 1.1 * onCurve.Distance(mPlan.frame.Value(sample)));
        }
    }
    wire.Closed(true);
    return wire;
}

// Outer loops run with the area on their left, openings the other way. A flat face may have several
// outer loops; each then becomes a face of its own with the openings it encloses.
std::vector<TopoDS_Face> FaceMaker::FlatFaces() {
    std::vector<std::size_t> outers;
    for (std::size_t i = 0; i < mChart.loops.size(); ++i)
        if (PolygonArea(mChart.loops[i]) > 0) outers.push_back(i);
    std::sort(outers.begin(), outers.end(), [&](std::size_t a, std::size_t b) {
        return PolygonArea(mChart.loops[a]) < PolygonArea(mChart.loops[b]);
    });
    if (outers.empty()) throw BadRecord(mPlan.record, "a flat face without an outer loop");
    std::vector<TopoDS_Face> faces(outers.size());
    for (std::size_t i = 0; i < outers.size(); ++i) {
        mBuilder.MakeFace(faces[i], mSurface, Coincidence);
        mBuilder.Add(faces[i], FlatWire(mChart.loops[outers[i]]));
    }
    for (const LoopChart& loop : mChart.loops) {
        if (PolygonArea(loop) > 0) continue;
        std::size_t home = 0;
        while (home + 1 < outers.size() && !Encloses(mChart.loops[outers[home]], loop.pieces.front().Start()))
            ++home;
        mBuilder.Add(faces[home], FlatWire(loop));
    }
    for (TopoDS_Face& made : faces) made = Sided(made);
    return faces;
}

// Openings have to lie within the turn of the outer loop.
void FaceMaker::PlaceInside(LoopChart& loop, double lowU, double lowV) const {
    double u = std::numeric_limits<double>::max();
    double v = u;
    for (const ChartPiece& piece : loop.pieces) {
        for (const gp_Pnt2d& sample : piece.samples) {
            u = std::min(u, sample.X());
            v = std::min(v, sample.Y());
        }
    }
    gp_Vec2d move(0, 0);
    if (mPlan.frame.UPeriodic()) move.SetX(FullTurn * std::ceil((lowU - u) / FullTurn - ParameterSlack));
    if (mPlan.frame.VPeriodic()) move.SetY(FullTurn * std::ceil((lowV - v) / FullTurn - ParameterSlack));
    loop.Move(move);
}

void FaceMaker::AddPlainWires() {
    std::stable_sort(mChart.loops.begin(), mChart.loops.end(),
                     [](const LoopChart& a, const LoopChart& b) { return PolygonArea(a) > PolygonArea(b); });
    double lowU = std::numeric_limits<double>::max();
    double lowV = lowU;
    for (const ChartPiece& piece : mChart.loops.front().pieces) {
        for (const gp_Pnt2d& sample : piece.samples) {
            lowU = std::min(lowU, sample.X());
            lowV = std::min(lowV, sample.Y());
        }
    }
    for (std::size_t i = 0; i < mChart.loops.size(); ++i) {
        if (i > 0 && PolygonArea(mChart.loops[i]) > 0)
            throw BadRecord(mPlan.record, "a round face of several separate areas is not read");
        if (i > 0) PlaceInside(mChart.loops[i], lowU, lowV);
        TopoDS_Wire wire;
        mBuilder.MakeWire(wire);
        AddLoop(wire, mChart.loops[i]);
        wire.Closed(true);
        mBuilder.Add(mFace, wire);
    }
}

std::size_t FaceMaker::PieceAt(const LoopChart& loop, int vertex, double along) const {
    std::size_t best = loop.pieces.size();
    double nearest = std::numeric_limits<double>::max();
    for (std::size_t i = 0; i < loop.pieces.size(); ++i) {
        if (loop.pieces[i].startVertex != vertex) continue;
        const double off = Along(loop.pieces[i].Start(), mPlan.seam->alongU) - along;
        const double distance = std::abs(off - FullTurn * std::round(off / FullTurn));
        if (distance < nearest) {
            nearest = distance;
            best = i;
        }
    }
    if (best == loop.pieces.size()) throw BadRecord(mPlan.record, "the seam of a round face lost its end");
    return best;
}

void FaceMaker::AddSeamedWire() {
    const bool alongU = mChart.pair->alongU;
    LoopChart* low =
        mChart.pair->low < 0 ? nullptr : &mChart.loops[static_cast<std::size_t>(mChart.pair->low)];
    LoopChart* high =
        mChart.pair->high < 0 ? nullptr : &mChart.loops[static_cast<std::size_t>(mChart.pair->high)];
    // The surface was turned to the seam, so along u it lies at 0; along v it stays where the vertex is.
    double along = 0;
    if (!alongU || mPlan.frame.kind == SurfaceFrame::Kind::EllipticCylinder) {
        const gp_Pnt2d at =
            mPlan.frame.Parameters(mNodes.vertices[static_cast<std::size_t>(mPlan.seam->lowVertex)].place);
        along = Along(at, alongU);
    }
    // The lower loop of u winds up and the upper one down; with v it is the other way round. What winds
    // up starts at the seam, what winds down a turn later.
    for (LoopChart* loop : {low, high}) {
        if (loop == nullptr) continue;
        StartAt(*loop, PieceAt(*loop, loop == low ? mPlan.seam->lowVertex : mPlan.seam->highVertex, along));
        const bool up = (loop == low) == alongU;
        const double target = up ? along : along + FullTurn;
        const double start = Along(loop->pieces.front().Start(), alongU);
        loop->Move(AlongBy(FullTurn * std::round((target - start) / FullTurn), alongU));
    }
    TopoDS_Wire wire;
    mBuilder.MakeWire(wire);
    AddSeam(wire, low, high);
    wire.Closed(true);
    mBuilder.Add(mFace, wire);
    for (LoopChart& loop : mChart.loops) {
        if (&loop == low || &loop == high) continue;
        PlaceInside(loop, alongU ? along : -std::numbers::pi, alongU ? 0 : along);
        TopoDS_Wire opening;
        mBuilder.MakeWire(opening);
        AddLoop(opening, loop);
        opening.Closed(true);
        mBuilder.Add(mFace, opening);
    }
}

TopoDS_Vertex FaceMaker::SpreadVertex(double v) {
    TopoDS_Vertex vertex;
    mBuilder.MakeVertex(vertex, mPlan.frame.Value({0, v}), Coincidence);
    return vertex;
}

void FaceMaker::AddSeam(TopoDS_Wire& wire, LoopChart* low, LoopChart* high) {
    const bool alongU = mChart.pair->alongU;
    const auto vertexOf = [&](int index) { return mNodes.vertices[static_cast<std::size_t>(index)].shape; };
    const auto across = [&](const LoopChart& loop) {
        const gp_Pnt2d& p = loop.pieces.front().Start();
        return alongU ? p.Y() : p.X();
    };
    const double from = low != nullptr ? across(*low) : *mPlan.frame.LowSingularity();
    const double to = high != nullptr ? across(*high) : *mPlan.frame.HighSingularity();
    const TopoDS_Vertex lowVertex = low != nullptr ? vertexOf(mPlan.seam->lowVertex) : SpreadVertex(from);
    const TopoDS_Vertex highVertex = high != nullptr ? vertexOf(mPlan.seam->highVertex) : SpreadVertex(to);
    double along = 0;
    if (low != nullptr) along = Along(low->pieces.front().Start(), alongU) - (alongU ? 0 : FullTurn);
    if (low == nullptr && high != nullptr) along = Along(high->pieces.front().Start(), alongU) - FullTurn;
    if (std::abs(along) < 1e-12) along = 0;
    const TopoDS_Edge seam = SeamEdge(along, from, to, lowVertex, highVertex);
    // The walk has the face on its left: with u the seam goes up a turn later and comes back at the
    // start, with v it goes up at the start.
    if (alongU) {
        if (low != nullptr)
            AddLoop(wire, *low);
        else
            AddSpreadPoint(wire, {along, from}, {along + FullTurn, from}, lowVertex);
        mBuilder.Add(wire, seam);
        if (high != nullptr)
            AddLoop(wire, *high);
        else
            AddSpreadPoint(wire, {along + FullTurn, to}, {along, to}, highVertex);
        mBuilder.Add(wire, seam.Reversed());
    } else {
        AddLoop(wire, *high);
        mBuilder.Add(wire, seam.Reversed());
        AddLoop(wire, *low);
        mBuilder.Add(wire, seam);
    }
}

TopoDS_Edge FaceMaker::SeamEdge(double along, double from, double to, const TopoDS_Vertex& low,
                                const TopoDS_Vertex& high) {
    const bool alongU = mChart.pair->alongU;
    Handle(Geom_Curve) curve = alongU ? mSurface->UIso(along) : mSurface->VIso(along);
    if (const auto trimmed = Handle(Geom_TrimmedCurve)::DownCast(curve); !trimmed.IsNull())
        curve = trimmed->BasisCurve();
    const auto line = [&](double at) -> Handle(Geom2d_Curve) {
        return alongU ? new Geom2d_Line(gp_Pnt2d(at, 0), gp_Dir2d(0, 1))
                      : new Geom2d_Line(gp_Pnt2d(0, at), gp_Dir2d(1, 0));
    };
    TopoDS_Edge edge;
    mBuilder.MakeEdge(edge, curve, Coincidence);
    mBuilder.Add(edge, low.Oriented(TopAbs_FORWARD));
    mBuilder.Add(edge, high.Oriented(TopAbs_REVERSED));
    mBuilder.Range(edge, from, to);
    if (alongU)
        mBuilder.UpdateEdge(edge, line(along + FullTurn), line(along), mFace, Coincidence);
    else
        mBuilder.UpdateEdge(edge, line(along), line(along + FullTurn), mFace, Coincidence);
    mBuilder.Continuity(edge, mFace, mFace, GeomAbs_CN);
    double widest = 0;
    for (const auto& [vertex, parameter] : {std::pair{low, from}, std::pair{high, to}})
        widest = std::max(widest, curve->Value(parameter).Distance(BRep_Tool::Pnt(vertex)));
    if (widest > Coincidence) {
        mBuilder.UpdateVertex(low, 1.1 * widest);
        mBuilder.UpdateVertex(high, 1.1 * widest);
    }
    return edge;
}

void FaceMaker::AddSpreadPoint(TopoDS_Wire& wire, const gp_Pnt2d& from, const gp_Pnt2d& to,
                               const TopoDS_Vertex& vertex) {
    // Laid down with u (on a free surface perhaps v) rising; walked backwards where the walk goes down.
    const bool alongU = std::abs(to.X() - from.X()) >= std::abs(to.Y() - from.Y());
    const double begin = Along(from, alongU);
    const double end = Along(to, alongU);
    const bool rising = end > begin;
    TopoDS_Edge edge;
    mBuilder.MakeEdge(edge);
    const Handle(Geom2d_Line) line = alongU ? new Geom2d_Line(gp_Pnt2d(0, from.Y()), gp_Dir2d(1, 0))
                                            : new Geom2d_Line(gp_Pnt2d(from.X(), 0), gp_Dir2d(0, 1));
    mBuilder.UpdateEdge(edge, line, mFace, Coincidence);
    mBuilder.Add(edge, vertex.Oriented(TopAbs_FORWARD));
    mBuilder.Add(edge, vertex.Oriented(TopAbs_REVERSED));
    mBuilder.Range(edge, mFace, std::min(begin, end), std::max(begin, end));
    mBuilder.Degenerated(edge, true);
    mBuilder.Add(wire, edge.Oriented(rising ? TopAbs_FORWARD : TopAbs_REVERSED));
}

void FaceMaker::AddPiece(TopoDS_Wire& wire, const ChartPiece& piece) {
    const TopoDS_Vertex vertex = mNodes.vertices[static_cast<std::size_t>(piece.startVertex)].shape;
    if (piece.edge < 0) {
        AddSpreadPoint(wire, piece.Start(), piece.End(), vertex);
        return;
    }
    mBuilder.Add(wire, Edge(piece).shape.Oriented(piece.forward ? TopAbs_FORWARD : TopAbs_REVERSED));
    Handle(Geom2d_Curve) curve = piece.curve;
    if (piece.shift.Magnitude() > 0) curve = Handle(Geom2d_Curve)::DownCast(curve->Translated(piece.shift));
    Handle(Geom2d_Curve)& slot = piece.forward ? mUses[piece.edge].forward : mUses[piece.edge].reversed;
    if (!slot.IsNull()) throw BadRecord(mPlan.record, "an edge is used twice in the same sense by one face");
    slot = curve;
}

void FaceMaker::AddLoop(TopoDS_Wire& wire, const LoopChart& loop) {
    for (const ChartPiece& piece : loop.pieces) AddPiece(wire, piece);
}

void FaceMaker::Widen(EdgeNode& edge, const Handle(Geom2d_Curve) & curve) {
    // Free curves lie on their surfaces within what the modeller that made them allowed itself, and that
    // comes and goes along the curve.
    const int places = edge.curve->IsKind(STANDARD_TYPE(Geom_BSplineCurve)) ? 132 : 6;
    for (int i = 0; i <= places; ++i) {
        const double t = edge.first + (edge.last - edge.first) * i / places;
        const double misfit = mPlan.frame.Value(curve->Value(t)).Distance(edge.curve->Value(t));
        edge.tolerance = std::max(edge.tolerance, 1.1 * misfit);
    }
}

void FaceMaker::AssignCurves() {
    for (auto& [index, use] : mUses) {
        EdgeNode& edge = mNodes.edges[static_cast<std::size_t>(index)];
        for (const auto& curve : {use.forward, use.reversed})
            if (!curve.IsNull()) Widen(edge, curve);
        if (!use.forward.IsNull() && !use.reversed.IsNull()) {
            mBuilder.UpdateEdge(edge.shape, use.forward, use.reversed, mFace, edge.tolerance);
            mBuilder.Continuity(edge.shape, mFace, mFace, GeomAbs_CN);
        } else {
            mBuilder.UpdateEdge(edge.shape, use.forward.IsNull() ? use.reversed : use.forward, mFace,
                                edge.tolerance);
        }
    }
}

MadeFaces WholeSurface(const FacePlan& plan, const Nodes& nodes) {
    BRepBuilderAPI_MakeFace maker(plan.frame.Build(), Coincidence);
    if (!maker.IsDone()) throw BadRecord(plan.record, "a face without loops cannot be built");
    const TopoDS_Shape sided = maker.Face().Oriented(plan.naturalSide ? TopAbs_FORWARD : TopAbs_REVERSED);
    return {{TopoDS::Face(sided)}, Flux(plan, nullptr, nodes, plan.frame.axes.Location().XYZ())};
}

}  // namespace

void MakeEdges(Nodes& nodes) {
    BRep_Builder builder;
    for (VertexNode& vertex : nodes.vertices)
        builder.MakeVertex(vertex.shape, vertex.place, vertex.tolerance);
    for (EdgeNode& edge : nodes.edges) {
        builder.MakeEdge(edge.shape, edge.curve, edge.tolerance);
        builder.Add(edge.shape,
                    nodes.vertices[static_cast<std::size_t>(edge.start)].shape.Oriented(TopAbs_FORWARD));
        builder.Add(edge.shape,
                    nodes.vertices[static_cast<std::size_t>(edge.end)].shape.Oriented(TopAbs_REVERSED));
        builder.Range(edge.shape, edge.first, edge.last);
    }
}

MadeFaces MakeFaces(const FacePlan& face, Nodes& nodes) {
    if (face.loops.empty()) return WholeSurface(face, nodes);
    return FaceMaker(face, nodes).Run();
}

void SettleTolerances(const Nodes& nodes) {
    BRep_Builder builder;
    for (const EdgeNode& edge : nodes.edges) {
        builder.UpdateEdge(edge.shape, edge.tolerance);
        for (const int end : {edge.start, edge.end})
            builder.UpdateVertex(nodes.vertices[static_cast<std::size_t>(end)].shape, edge.tolerance);
    }
}

}  // namespace brenvik::acis

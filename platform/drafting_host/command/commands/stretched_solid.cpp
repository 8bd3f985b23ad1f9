// The topology stays; points, curves and surfaces that move are shifted, and the straight edges between moved
// and unmoved corners get other ends. So nothing is cut or joined, and no number changes that needn't.
#include "drafting_host/command/commands/stretched_solid.h"

#include <BOPAlgo_ArgumentAnalyzer.hxx>
#include <BRepAdaptor_Curve.hxx>
#include <BRepTools.hxx>
#include <BRepTools_Modification.hxx>
#include <BRepTools_Modifier.hxx>
#include <BRep_Tool.hxx>
#include <Geom2d_Curve.hxx>
#include <GeomAdaptor_Surface.hxx>
#include <Geom_Curve.hxx>
#include <Geom_Surface.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopTools_MapOfShape.hxx>
#include <TopoDS.hxx>
#include <gp_Lin.hxx>
#include <gp_Pln.hxx>
#include <gp_Vec.hxx>

#include "drafting_host/command/commands/face_edits.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/solids/guard.h"
#include "drafting_host/solids/mass.h"
#include "drafting_host/solids/transform.h"

namespace brenvik {
namespace {

constexpr double AngularTolerance = 1e-9;
/// Looks taken along a round edge without a corner: a window that cuts a hole is seen at the least.
constexpr int LooksAround = 32;

/// What becomes of an edge or a face.
enum class Fate { Stays, Moves, Stretches };

/// The corners, edges and faces that move, and the edges that get longer or shorter.
struct Plan {
    gp_Vec shift;
    TopTools_MapOfShape movedVertices, movedEdges, movedFaces, stretchedEdges;
    bool anyStays = false;

    bool Moves(const TopoDS_Vertex& vertex) const { return movedVertices.Contains(vertex); }
    bool Moves(const TopoDS_Edge& edge) const { return movedEdges.Contains(edge); }
    bool Moves(const TopoDS_Face& face) const { return movedFaces.Contains(face); }
    bool Stretches(const TopoDS_Edge& edge) const { return stretchedEdges.Contains(edge); }
};

[[noreturn]] void Refuse(const char* why) { throw host_failure::NotPossible(why); }

/// A full round edge moves as a whole.
bool FullRoundMoves(const TopoDS_Edge& edge, const IsMoved& isMoved) {
    const BRepAdaptor_Curve curve(edge);
    const double first = curve.FirstParameter(), last = curve.LastParameter();
    int moved = 0;
    for (int i = 0; i < LooksAround; ++i)
        if (isMoved(curve.Value(first + (last - first) * i / LooksAround))) ++moved;
    if (moved != 0 && moved != LooksAround) Refuse("a round edge of it lies only partly in the window");
    return moved != 0;
}

Fate FateOfEdge(const Plan& plan, const TopoDS_Edge& edge) {
    TopoDS_Vertex from, to;
    TopExp::Vertices(edge, from, to);
    const bool first = plan.Moves(from), second = plan.Moves(to);
    if (first == second) return first ? Fate::Moves : Fate::Stays;
    const BRepAdaptor_Curve curve(edge);
    if (curve.GetType() != GeomAbs_Line) Refuse("a round edge of it would have to be stretched");
    if (!curve.Line().Direction().IsParallel(gp_Dir(plan.shift), AngularTolerance))
        Refuse(
            "a side of it would be skewed; the shift has to run along the sides that reach into the window");
    return Fate::Stretches;
}

/// The new ends have to come in the order of the old ones.
void RequireLength(const Plan& plan, const TopoDS_Edge& edge) {
    TopoDS_Vertex from, to;
    TopExp::Vertices(edge, from, to);
    const gp_Vec before(BRep_Tool::Pnt(from), BRep_Tool::Pnt(to));
    const gp_Vec after = plan.Moves(to) ? before + plan.shift : before - plan.shift;
    if (after.Magnitude() <= vectors::PointTolerance || after.Dot(before) <= 0)
        Refuse("the shift is longer than a side that it would shorten");
}

Fate FateOfFace(const Plan& plan, const TopoDS_Face& face) {
    bool all = true, any = false;
    for (TopExp_Explorer each(face, TopAbs_EDGE); each.More(); each.Next()) {
        const TopoDS_Edge& edge = TopoDS::Edge(each.Current());
        any = any || plan.Moves(edge) || plan.Stretches(edge);
        all = all && plan.Moves(edge);
    }
    if (!any) return Fate::Stays;
    return all ? Fate::Moves : Fate::Stretches;
}

/// A full round edge has one corner, somewhere on its seam, which goes where the whole of it goes.
void PlanVertices(Plan& plan, const TopoDS_Shape& solid, const IsMoved& isMoved) {
    TopTools_MapOfShape held;
    for (TopExp_Explorer each(solid, TopAbs_EDGE); each.More(); each.Next()) {
        const TopoDS_Edge& edge = TopoDS::Edge(each.Current());
        TopoDS_Vertex from, to;
        TopExp::Vertices(edge, from, to);
        if (!from.IsSame(to) || BRep_Tool::Degenerated(edge)) continue;
        held.Add(from);
        if (FullRoundMoves(edge, isMoved)) plan.movedVertices.Add(from);
    }
    for (TopExp_Explorer each(solid, TopAbs_VERTEX); each.More(); each.Next()) {
        const TopoDS_Vertex& vertex = TopoDS::Vertex(each.Current());
        if (!held.Contains(vertex) && isMoved(BRep_Tool::Pnt(vertex))) plan.movedVertices.Add(vertex);
        if (!plan.Moves(vertex)) plan.anyStays = true;
    }
}

void PlanEdgesAndFaces(Plan& plan, const TopoDS_Shape& solid) {
    TopTools_IndexedMapOfShape edges, faces;
    TopExp::MapShapes(solid, TopAbs_EDGE, edges);
    TopExp::MapShapes(solid, TopAbs_FACE, faces);
    for (int i = 1; i <= edges.Extent(); ++i) {
        const TopoDS_Edge& edge = TopoDS::Edge(edges(i));
        const Fate fate = FateOfEdge(plan, edge);
        if (fate == Fate::Moves) plan.movedEdges.Add(edge);
        if (fate != Fate::Stretches) continue;
        RequireLength(plan, edge);
        plan.stretchedEdges.Add(edge);
    }
    for (int i = 1; i <= faces.Extent(); ++i) {
        const TopoDS_Face& face = TopoDS::Face(faces(i));
        const Fate fate = FateOfFace(plan, face);
        if (fate == Fate::Moves) plan.movedFaces.Add(face);
        if (fate == Fate::Stretches && !RunsAlong(face, gp_Dir(plan.shift)))
            Refuse("a face of it lies only partly in the window and doesn't run along the shift");
    }
}

/// A shift along a surface in the surface's own two parameters.
gp_Vec2d OnSurface(const Handle(Geom_Surface) & geometry, const gp_Vec& shift) {
    const GeomAdaptor_Surface surface(geometry);
    if (surface.GetType() == GeomAbs_Plane) {
        const gp_Ax3 axes = surface.Plane().Position();
        return {shift.Dot(gp_Vec(axes.XDirection())), shift.Dot(gp_Vec(axes.YDirection()))};
    }
    if (surface.GetType() == GeomAbs_Cylinder)
        return {0, shift.Dot(gp_Vec(surface.Cylinder().Axis().Direction()))};
    return {0, shift.Dot(gp_Vec(surface.Direction()))};
}

class Stretching : public BRepTools_Modification {
    DEFINE_STANDARD_RTTI_INLINE(Stretching, BRepTools_Modification)
  public:
    explicit Stretching(const Plan& plan) : mPlan(plan) {}

    bool NewSurface(const TopoDS_Face& face, Handle(Geom_Surface) & surface, TopLoc_Location& location,
                    double& tolerance, bool& turnsWires, bool& turnsFace) override {
        if (!mPlan.Moves(face)) return false;
        surface = Handle(Geom_Surface)::DownCast(BRep_Tool::Surface(face, location)->Translated(mPlan.shift));
        tolerance = BRep_Tool::Tolerance(face);
        turnsWires = turnsFace = false;
        return true;
    }
    bool NewCurve(const TopoDS_Edge& edge, Handle(Geom_Curve) & curve, TopLoc_Location& location,
                  double& tolerance) override {
        const bool moves = mPlan.Moves(edge);
        if (!moves && !mPlan.Stretches(edge)) return false;
        double first = 0, last = 0;
        curve = BRep_Tool::Curve(edge, location, first, last);
        if (!curve.IsNull() && moves) curve = Handle(Geom_Curve)::DownCast(curve->Translated(mPlan.shift));
        tolerance = BRep_Tool::Tolerance(edge);
        return true;
    }
    bool NewPoint(const TopoDS_Vertex& vertex, gp_Pnt& point, double& tolerance) override {
        if (!mPlan.Moves(vertex)) return false;
        point = BRep_Tool::Pnt(vertex).Translated(mPlan.shift);
        tolerance = BRep_Tool::Tolerance(vertex);
        return true;
    }
    bool NewCurve2d(const TopoDS_Edge& edge, const TopoDS_Face& face, const TopoDS_Edge&, const TopoDS_Face&,
                    Handle(Geom2d_Curve) & curve, double& tolerance) override {
        double first = 0, last = 0;
        bool isStored = false;
        curve = BRep_Tool::CurveOnSurface(edge, face, first, last, &isStored);
        if (!isStored || curve.IsNull()) return false;
        tolerance = BRep_Tool::Tolerance(edge);
        curve = Handle(Geom2d_Curve)::DownCast(curve->Copy());
        // In a face that moves with it, it lies where it lay.
        if (mPlan.Moves(edge) && !mPlan.Moves(face))
            curve->Translate(OnSurface(BRep_Tool::Surface(face), mPlan.shift));
        return true;
    }
    bool NewParameter(const TopoDS_Vertex& vertex, const TopoDS_Edge& edge, double& parameter,
                      double& tolerance) override {
        if (!mPlan.Moves(edge) && !mPlan.Stretches(edge)) return false;
        parameter = BRep_Tool::Parameter(vertex, edge);
        if (mPlan.Stretches(edge) && mPlan.Moves(vertex))
            parameter += mPlan.shift.Dot(gp_Vec(BRepAdaptor_Curve(edge).Line().Direction()));
        tolerance = BRep_Tool::Tolerance(vertex);
        return true;
    }
    GeomAbs_Shape Continuity(const TopoDS_Edge& edge, const TopoDS_Face& one, const TopoDS_Face& other,
                             const TopoDS_Edge&, const TopoDS_Face&, const TopoDS_Face&) override {
        return BRep_Tool::Continuity(edge, one, other);
    }

  private:
    const Plan& mPlan;
};

/// The modeller's own check looks at each face by itself; faces that run into each other are looked for.
bool RunsIntoItself(const TopoDS_Shape& solid) {
    BOPAlgo_ArgumentAnalyzer analyzer;
    analyzer.SetShape1(solid);
    analyzer.ArgumentTypeMode() = false;
    analyzer.SelfInterMode() = true;
    analyzer.SmallEdgeMode() = false;
    analyzer.Perform();
    return analyzer.HasFaulty();
}

TopoDS_Shape CarriedOut(const TopoDS_Shape& solid, const Plan& plan) {
    const Handle(Stretching) stretching = new Stretching(plan);
    BRepTools_Modifier modifier(solid, stretching);
    if (!modifier.IsDone()) Refuse("the modeller can't stretch it");
    TopoDS_Shape result = solids::Placed(modifier.ModifiedShape(solid));
    BRepTools::Clean(result);
    if (!solids::Valid(result) || solids::Volume(result) <= 0 || RunsIntoItself(result))
        Refuse("what moves would run into what stays");
    return result;
}

}  // namespace

TopoDS_Shape StretchedSolid(const TopoDS_Shape& solid, const IsMoved& isMoved, const Point3& shift) {
    return solids::Guarded("stretching a solid", [&]() -> TopoDS_Shape {
        Plan plan;
        plan.shift = gp_Vec(shift.x, shift.y, shift.z);
        const TopoDS_Shape placed = solids::Placed(solid);
        PlanVertices(plan, placed, isMoved);
        if (plan.movedVertices.IsEmpty() || plan.shift.Magnitude() <= vectors::PointTolerance) return solid;
        if (!plan.anyStays) return solids::Moved(placed, plan.shift);
        PlanEdgesAndFaces(plan, placed);
        return CarriedOut(placed, plan);
    });
}

}  // namespace brenvik

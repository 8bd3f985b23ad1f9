// One walk over the shape: each sub-shape with its full placement is built once. Parameter curves stay
// as they are, since a rigid move changes no surface's parametrisation.
#include "drafting_host/solids/rebuild.h"

#include <BRep_Builder.hxx>
#include <BRep_CurveRepresentation.hxx>
#include <BRep_GCurve.hxx>
#include <BRep_ListIteratorOfListOfCurveRepresentation.hxx>
#include <BRep_TEdge.hxx>
#include <BRep_TFace.hxx>
#include <BRep_TVertex.hxx>
#include <BRep_Tool.hxx>
#include <Geom_Curve.hxx>
#include <Geom_Surface.hxx>
#include <TopExp.hxx>
#include <TopTools_DataMapOfShapeShape.hxx>
#include <TopTools_ShapeMapHasher.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_Vertex.hxx>
#include <map>
#include <vector>

#include "drafting_host/solids/transform.h"

namespace brenvik::solids {
namespace {

class Rebuilder {
  public:
    explicit Rebuilder(const gp_Trsf& move) : mMove(move) {}

    /// The rebuilt shape with the orientation of `shape`.
    TopoDS_Shape Build(const TopoDS_Shape& shape) {
        const TopoDS_Shape forward = shape.Oriented(TopAbs_FORWARD);
        TopoDS_Shape built;
        if (mBuilt.IsBound(forward)) {
            built = mBuilt.Find(forward);
        } else {
            built = BuildNew(forward);
            mBuilt.Bind(forward, built);
        }
        return built.Oriented(shape.Orientation());
    }

  private:
    struct PlacedSurface {
        TopLoc_Location location;
        Handle(Geom_Surface) surface;
    };

    gp_Trsf Under(const TopLoc_Location& location) const {
        if (location.IsIdentity()) return mMove;
        return Cleaned(mMove.Multiplied(Cleaned(location.Transformation())));
    }

    /// The moved surface; edges and faces that share one get the same new one, since the modeller finds
    /// an edge's parameter curve by its surface.
    Handle(Geom_Surface) SurfaceUnder(const Handle(Geom_Surface) & surface, const TopLoc_Location& location) {
        std::vector<PlacedSurface>& known = mSurfaces[surface.get()];
        for (const PlacedSurface& placed : known)
            if (placed.location.IsEqual(location)) return placed.surface;
        known.push_back({location, Handle(Geom_Surface)::DownCast(surface->Transformed(Under(location)))});
        return known.back().surface;
    }

    TopoDS_Shape BuildNew(const TopoDS_Shape& shape) {
        switch (shape.ShapeType()) {
            case TopAbs_VERTEX:
                return BuildVertex(TopoDS::Vertex(shape));
            case TopAbs_EDGE:
                return BuildEdge(TopoDS::Edge(shape));
            case TopAbs_FACE:
                return BuildFace(TopoDS::Face(shape));
            case TopAbs_WIRE:
            case TopAbs_SHELL:
            case TopAbs_SOLID:
            case TopAbs_COMPSOLID:
            case TopAbs_COMPOUND:
            case TopAbs_SHAPE:
                break;
        }
        TopoDS_Shape result = shape.EmptyCopied();
        result.Location(TopLoc_Location());
        AddParts(shape, result);
        result.Closed(shape.Closed());
        return result;
    }

    void AddParts(const TopoDS_Shape& from, TopoDS_Shape& to) {
        for (TopoDS_Iterator part(from); part.More(); part.Next()) mBuilder.Add(to, Build(part.Value()));
    }

    TopoDS_Shape BuildVertex(const TopoDS_Vertex& vertex) {
        const Handle(BRep_TVertex) own = Handle(BRep_TVertex)::DownCast(vertex.TShape());
        TopoDS_Vertex result;
        mBuilder.MakeVertex(result, own->Pnt().Transformed(Under(vertex.Location())), own->Tolerance());
        return result;
    }

    TopoDS_Shape BuildEdge(const TopoDS_Edge& edge) {
        const Handle(BRep_TEdge) own = Handle(BRep_TEdge)::DownCast(edge.TShape());
        TopoDS_Edge result;
        mBuilder.MakeEdge(result);
        mBuilder.UpdateEdge(result, own->Tolerance());
        AddParts(edge, result);
        for (BRep_ListIteratorOfListOfCurveRepresentation each(own->ChangeCurves()); each.More();
             each.Next()) {
            AddCurve(result, each.Value(), edge.Location() * each.Value()->Location(), edge.Location());
        }
        mBuilder.SameRange(result, own->SameRange());
        mBuilder.SameParameter(result, own->SameParameter());
        mBuilder.Degenerated(result, own->Degenerated());
        for (TopoDS_Iterator part(edge.Oriented(TopAbs_FORWARD)); part.More(); part.Next()) {
            if (part.Value().Orientation() != TopAbs_INTERNAL) continue;
            const TopoDS_Vertex inside = TopoDS::Vertex(part.Value());
            mBuilder.UpdateVertex(TopoDS::Vertex(Build(inside)), BRep_Tool::Parameter(inside, edge), result,
                                  BRep_Tool::Tolerance(inside));
        }
        result.Closed(edge.Closed());
        return result;
    }

    void AddCurve(TopoDS_Edge& edge, const Handle(BRep_CurveRepresentation) & curve,
                  const TopLoc_Location& location, const TopLoc_Location& edgeLocation) {
        const TopLoc_Location none;
        if (curve->IsCurve3D()) {
            if (curve->Curve3D().IsNull()) return;
            const Handle(BRep_GCurve) ranged = Handle(BRep_GCurve)::DownCast(curve);
            mBuilder.UpdateEdge(edge,
                                Handle(Geom_Curve)::DownCast(curve->Curve3D()->Transformed(Under(location))),
                                none, BRep_Tool::Tolerance(edge));
            mBuilder.Range(edge, ranged->First(), ranged->Last(), Standard_True);
        } else if (curve->IsCurveOnSurface()) {
            const Handle(BRep_GCurve) ranged = Handle(BRep_GCurve)::DownCast(curve);
            const Handle(Geom_Surface) surface = SurfaceUnder(curve->Surface(), location);
            if (curve->IsCurveOnClosedSurface()) {
                mBuilder.UpdateEdge(edge, curve->PCurve(), curve->PCurve2(), surface, none,
                                    BRep_Tool::Tolerance(edge));
            } else {
                mBuilder.UpdateEdge(edge, curve->PCurve(), surface, none, BRep_Tool::Tolerance(edge));
            }
            mBuilder.Range(edge, surface, none, ranged->First(), ranged->Last());
        }
        if (curve->IsRegularity()) {
            const TopLoc_Location second =
                curve->IsCurveOnSurface() ? location : edgeLocation * curve->Location2();
            const Handle(Geom_Surface) other =
                curve->IsCurveOnSurface() ? curve->Surface() : curve->Surface2();
            mBuilder.Continuity(edge, SurfaceUnder(curve->Surface(), location), SurfaceUnder(other, second),
                                none, none, curve->Continuity());
        }
    }

    TopoDS_Shape BuildFace(const TopoDS_Face& face) {
        const Handle(BRep_TFace) own = Handle(BRep_TFace)::DownCast(face.TShape());
        TopoDS_Face result;
        if (own->Surface().IsNull()) {
            mBuilder.MakeFace(result);
        } else {
            mBuilder.MakeFace(result, SurfaceUnder(own->Surface(), face.Location() * own->Location()),
                              own->Tolerance());
        }
        mBuilder.NaturalRestriction(result, own->NaturalRestriction());
        AddParts(face, result);
        return result;
    }

    gp_Trsf mMove;
    BRep_Builder mBuilder;
    // Keyed by geometry and location: the same sub-shape at two places becomes two.
    TopTools_DataMapOfShapeShape mBuilt;
    std::map<const Geom_Surface*, std::vector<PlacedSurface>> mSurfaces;
};

}  // namespace

TopoDS_Shape RebuiltUnder(const TopoDS_Shape& shape, const gp_Trsf& move) {
    if (shape.IsNull()) return shape;
    return Rebuilder(move).Build(shape);
}

bool HasLocations(const TopoDS_Shape& shape) {
    if (!shape.Location().IsIdentity()) return true;
    switch (shape.ShapeType()) {
        case TopAbs_FACE: {
            const Handle(BRep_TFace) own = Handle(BRep_TFace)::DownCast(shape.TShape());
            if (!own->Location().IsIdentity()) return true;
            break;
        }
        case TopAbs_EDGE: {
            const Handle(BRep_TEdge) own = Handle(BRep_TEdge)::DownCast(shape.TShape());
            for (BRep_ListIteratorOfListOfCurveRepresentation each(own->ChangeCurves()); each.More();
                 each.Next()) {
                if (!each.Value()->Location().IsIdentity()) return true;
            }
            break;
        }
        case TopAbs_VERTEX:
            return false;
        case TopAbs_WIRE:
        case TopAbs_SHELL:
        case TopAbs_SOLID:
        case TopAbs_COMPSOLID:
        case TopAbs_COMPOUND:
        case TopAbs_SHAPE:
            break;
    }
    for (TopoDS_Iterator part(shape, Standard_False, Standard_False); part.More(); part.Next())
        if (HasLocations(part.Value())) return true;
    return false;
}

}  // namespace brenvik::solids

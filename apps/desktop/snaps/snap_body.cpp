// Edges of a solid as the picture draws them.
#include "snaps/snap_body.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRep_Tool.hxx>
#include <GCPnts_AbscissaPoint.hxx>
#include <Precision.hxx>
#include <Standard_Failure.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopTools_ListOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Vertex.hxx>
#include <gp_Circ.hxx>
#include <gp_Elips.hxx>
#include <gp_Lin.hxx>
#include <limits>

#include "drafting_host/document/geometry/modeller_points.h"

namespace brenvik::desktop {

using namespace vectors;

namespace {

/// Pieces of a curve's course: no full circle on a screen strays a pixel from 64 chords by much.
constexpr int CourseSteps = 64;

/// Where a round face closes upon itself, an edge stands that nobody sees.
bool IsSeam(const TopoDS_Edge& edge, const TopTools_ListOfShape& faces) {
    for (const TopoDS_Shape& face : faces)
        if (BRep_Tool::IsClosed(edge, TopoDS::Face(face))) return true;
    return false;
}

std::optional<Point3> CentreOf(const BRepAdaptor_Curve& curve) {
    if (curve.GetType() == GeomAbs_Circle) return FromModeller(curve.Circle().Location());
    if (curve.GetType() == GeomAbs_Ellipse) return FromModeller(curve.Ellipse().Location());
    return std::nullopt;
}

}  // namespace

SnapBody::SnapBody(const TopoDS_Shape& shape) : mShape(shape) {
    TopTools_IndexedDataMapOfShapeListOfShape edges;
    TopExp::MapShapesAndAncestors(shape, TopAbs_EDGE, TopAbs_FACE, edges);
    TopTools_IndexedMapOfShape ends;
    for (int i = 1; i <= edges.Extent(); ++i) {
        const TopoDS_Edge& edge = TopoDS::Edge(edges.FindKey(i));
        if (BRep_Tool::Degenerated(edge) || IsSeam(edge, edges(i))) continue;
        try {
            TakeEdge(edge);
        } catch (const Standard_Failure&) {
            // An edge without a curve of its own has nothing to be snapped to.
            continue;
        }
        TopoDS_Vertex first, last;
        TopExp::Vertices(edge, first, last);
        // A full circle begins somewhere, which isn't an end of anything.
        if (first.IsNull() || last.IsNull() || first.IsSame(last)) continue;
        ends.Add(first);
        ends.Add(last);
    }
    for (int i = 1; i <= ends.Extent(); ++i)
        mPoints.push_back({SnapKind::End, FromModeller(BRep_Tool::Pnt(TopoDS::Vertex(ends(i))))});
    for (const Snap& point : mPoints) mBox.Add(point.point);
    for (const SnapEdge& edge : mEdges)
        for (const Point3& point : edge.course) mBox.Add(point);
}

void SnapBody::TakeEdge(const TopoDS_Edge& edge) {
    const BRepAdaptor_Curve curve(edge);
    SnapEdge taken;
    taken.edge = edge;
    taken.straight = curve.GetType() == GeomAbs_Line;
    taken.centre = CentreOf(curve);
    const int steps = taken.straight ? 1 : CourseSteps;
    const double from = curve.FirstParameter(), to = curve.LastParameter();
    for (int i = 0; i <= steps; ++i)
        taken.course.push_back(FromModeller(curve.Value(i == steps ? to : from + (to - from) * i / steps)));
    if (taken.centre) mPoints.push_back({SnapKind::Centre, *taken.centre});
    mEdges.push_back(std::move(taken));
    TakeMiddle(edge);
}

void SnapBody::TakeMiddle(const TopoDS_Edge& edge) {
    const BRepAdaptor_Curve curve(edge);
    if (curve.IsClosed()) return;
    const double from = curve.FirstParameter(), to = curve.LastParameter();
    double middle = (from + to) / 2;
    if (curve.GetType() != GeomAbs_Line && curve.GetType() != GeomAbs_Circle) {
        const GCPnts_AbscissaPoint half(curve, GCPnts_AbscissaPoint::Length(curve) / 2, from,
                                        Precision::Confusion());
        if (half.IsDone()) middle = half.Parameter();
    }
    mPoints.push_back({SnapKind::Middle, FromModeller(curve.Value(middle))});
}

bool SnapBody::MayShowAt(const Sight& sight, const ScreenPlace& place, double reach) const {
    if (mBox.Empty()) return true;
    BoxBuilder seen;
    const Box3& box = mBox.Box();
    for (const double x : {box.min.x, box.max.x})
        for (const double y : {box.min.y, box.max.y})
            for (const double z : {box.min.z, box.max.z}) {
                const ScreenPlace corner = sight.PlaceOf({x, y, z});
                seen.Add(Point3{corner.x, corner.y, 0});
            }
    const Box3& flat = seen.Box();
    return place.x >= flat.min.x - reach && place.x <= flat.max.x + reach && place.y >= flat.min.y - reach &&
           place.y <= flat.max.y + reach;
}

std::optional<double> SnapBody::NearestFace(const Point3& point, const Point3& towardsEye) const {
    try {
        if (!mFaces) {
            mFaces = std::make_unique<IntCurvesFace_ShapeIntersector>();
            mFaces->Load(mShape, Precision::Confusion());
        }
        const gp_Lin line({point.x, point.y, point.z}, {towardsEye.x, towardsEye.y, towardsEye.z});
        mFaces->Perform(line, -Precision::Infinite(), Precision::Infinite());
        std::optional<double> nearest;
        for (int i = 1; i <= mFaces->NbPnt(); ++i)
            nearest = std::max(nearest.value_or(-Precision::Infinite()), mFaces->WParameter(i));
        return nearest;
    } catch (const Standard_Failure&) {
        // A body that the modeller can't cut hides nothing; its ends and middles are there all the same.
        return std::nullopt;
    }
}

}  // namespace brenvik::desktop

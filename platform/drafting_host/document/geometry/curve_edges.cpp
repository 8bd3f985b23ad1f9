// Edges from curves and curves from edges. Values are carried over as they are: no fitting but for
// edges whose curve a drawing has no kind for.
#include "drafting_host/document/geometry/curve_edges.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRep_Tool.hxx>
#include <GeomConvert.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_TrimmedCurve.hxx>
#include <TopExp.hxx>
#include <TopoDS.hxx>
#include <gp_Circ.hxx>
#include <gp_Elips.hxx>

#include "drafting_host/document/geometry/modeller_points.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/solids/guard.h"

namespace brenvik {

using namespace vectors;

namespace {

gp_Dir Dir(const Point3& p) { return {p.x, p.y, p.z}; }
/// A point that goes into the drawing: no text of it shows "-0".
Point3 ToPoint(const gp_Pnt& p) { return {p.X() + 0.0, p.Y() + 0.0, p.Z() + 0.0}; }

template <class Make>
std::optional<TopoDS_Edge> Built(Make&& make) {
    try {
        BRepBuilderAPI_MakeEdge maker = make();
        if (!maker.IsDone()) return std::nullopt;
        return maker.Edge();
    } catch (const Standard_Failure&) {
        return std::nullopt;
    }
}

gp_Circ CircleOf(const Point3& center, double radius, const Point3& normal) {
    const Axes axes = ObjectAxes(normal);
    return gp_Circ(gp_Ax2(ToModeller(center), Dir(axes.z), Dir(axes.x)), radius);
}

/// Knots of a spline with their multiplicities.
struct Knots {
    std::vector<double> values;
    std::vector<int> counts;
};

Knots Grouped(const std::vector<double>& knots) {
    Knots result;
    for (const double knot : knots) {
        if (!result.values.empty() && knot - result.values.back() < 1e-12) {
            ++result.counts.back();
        } else {
            result.values.push_back(knot);
            result.counts.push_back(1);
        }
    }
    return result;
}

Handle(Geom_BSplineCurve) BSplineOf(const SplineData& data) {
    const auto poles = static_cast<int>(data.controlPoints.size());
    if (poles < 2 ||
        data.knots.size() != data.controlPoints.size() + static_cast<std::size_t>(data.degree) + 1) {
        return {};
    }
    const Knots knots = Grouped(data.knots);
    TColgp_Array1OfPnt points(1, poles);
    TColStd_Array1OfReal weights(1, poles);
    const bool rational = data.weights.size() == data.controlPoints.size();
    for (int i = 1; i <= poles; ++i) {
        const auto at = static_cast<std::size_t>(i - 1);
        points(i) = ToModeller(data.controlPoints[at]);
        weights(i) = rational ? data.weights[at] : 1.0;
    }
    TColStd_Array1OfReal values(1, static_cast<int>(knots.values.size()));
    TColStd_Array1OfInteger counts(1, static_cast<int>(knots.values.size()));
    for (int i = 1; i <= values.Length(); ++i) {
        values(i) = knots.values[static_cast<std::size_t>(i - 1)];
        counts(i) = knots.counts[static_cast<std::size_t>(i - 1)];
    }
    return new Geom_BSplineCurve(points, weights, values, counts, data.degree, false);
}

/// The place of a parameter as the edge runs, and the ends in that order.
struct Ends {
    double first = 0, last = 0;
};

HostGeometry LineOf(const BRepAdaptor_Curve& curve, const Ends& ends, const TopoDS_Edge& edge,
                    const Point3& normal) {
    LineData line;
    // Vertices hold the coordinates as drawn; the curve at a parameter may round.
    const TopoDS_Vertex from = TopExp::FirstVertex(edge, true), to = TopExp::LastVertex(edge, true);
    line.start = ToPoint(from.IsNull() ? curve.Value(ends.first) : BRep_Tool::Pnt(from));
    line.end = ToPoint(to.IsNull() ? curve.Value(ends.last) : BRep_Tool::Pnt(to));
    line.normal = normal;
    return line;
}

bool FullRound(const Ends& ends) { return std::abs(ends.last - ends.first) >= FullTurn - 1e-9; }

HostGeometry RoundOf(const gp_Circ& circle, const Ends& ends, const Point3& normal) {
    const Point3 axis = Squared(FromModeller(circle.Axis().Direction()));
    const bool flipped = Dot(axis, normal) < 0;
    const Point3 side = flipped ? Point3{} - axis : axis;
    if (FullRound(ends)) return CircleData{ToPoint(circle.Location()), circle.Radius(), 0, Unit(side)};
    const Axes axes = ObjectAxes(side);
    const Point3 x = FromModeller(circle.XAxis().Direction());
    const double turn = std::atan2(Dot(axes.y, x) + 0.0, Dot(axes.x, x) + 0.0);
    ArcData arc;
    arc.center = ToPoint(circle.Location());
    arc.radius = circle.Radius();
    arc.normal = axes.z;
    arc.startAngle = NormalAngle(flipped ? turn - ends.last : turn + ends.first);
    arc.endAngle = NormalAngle(flipped ? turn - ends.first : turn + ends.last);
    return arc;
}

HostGeometry OvalOf(const gp_Elips& ellipse, const Ends& ends, const Point3& normal) {
    EllipseData data;
    const Point3 axis = Squared(FromModeller(ellipse.Axis().Direction()));
    const bool flipped = Dot(axis, normal) < 0;
    data.center = ToPoint(ellipse.Location());
    data.majorAxis = FromModeller(ellipse.XAxis().Direction()) * ellipse.MajorRadius();
    data.normal = Unit(flipped ? Point3{} - axis : axis);
    data.ratio = ellipse.MinorRadius() / ellipse.MajorRadius();
    if (FullRound(ends)) return data;
    data.startParameter = NormalAngle(flipped ? -ends.last : ends.first);
    data.endParameter = data.startParameter + (ends.last - ends.first);
    return data;
}

HostGeometry SplineOf(const TopoDS_Edge& edge, const Point3& normal) {
    double first = 0, last = 0;
    const Handle(Geom_Curve) curve = BRep_Tool::Curve(edge, first, last);
    const Handle(Geom_BSplineCurve) spline =
        GeomConvert::CurveToBSplineCurve(new Geom_TrimmedCurve(curve, first, last));
    SplineData data;
    data.degree = spline->Degree();
    data.normal = normal;
    constexpr int rational = 4;
    for (int i = 1; i <= spline->NbPoles(); ++i) {
        data.controlPoints.push_back(ToPoint(spline->Pole(i)));
        if (spline->IsRational()) data.weights.push_back(spline->Weight(i));
    }
    if (spline->IsRational()) data.flags |= rational;
    for (int i = 1; i <= spline->NbKnots(); ++i)
        for (int n = 0; n < spline->Multiplicity(i); ++n) data.knots.push_back(spline->Knot(i));
    return data;
}

}  // namespace

Point3 Squared(const Point3& direction) {
    constexpr double leftOver = 1e-10;
    const auto entry = [](double value) {
        if (std::abs(value) < leftOver) return 0.0;
        return std::abs(std::abs(value) - 1) < leftOver ? std::copysign(1.0, value) : value;
    };
    return {entry(direction.x), entry(direction.y), entry(direction.z)};
}

std::optional<TopoDS_Edge> EdgeOf(const LineData& data) {
    if (Distance(data.start, data.end) < 1e-9) return std::nullopt;
    return Built([&] { return BRepBuilderAPI_MakeEdge(ToModeller(data.start), ToModeller(data.end)); });
}

std::optional<TopoDS_Edge> EdgeOf(const ArcData& data) {
    if (!(data.radius > 0)) return std::nullopt;
    double span = NormalAngle(data.endAngle - data.startAngle);
    if (span == 0) span = FullTurn;
    return Built([&] {
        return BRepBuilderAPI_MakeEdge(CircleOf(data.center, data.radius, data.normal), data.startAngle,
                                       data.startAngle + span);
    });
}

std::optional<TopoDS_Edge> EdgeOf(const CircleData& data) {
    if (!(data.radius > 0)) return std::nullopt;
    return Built([&] { return BRepBuilderAPI_MakeEdge(CircleOf(data.center, data.radius, data.normal)); });
}

std::optional<TopoDS_Edge> EdgeOf(const EllipseData& data) {
    const double major = Length(data.majorAxis);
    if (!(major > 0) || !(data.ratio > 0) || data.ratio > 1) return std::nullopt;
    return Built([&] {
        const gp_Elips ellipse(gp_Ax2(ToModeller(data.center), Dir(data.normal), Dir(data.majorAxis)), major,
                               major * data.ratio);
        if (std::abs(data.endParameter - data.startParameter) >= FullTurn - 1e-12)
            return BRepBuilderAPI_MakeEdge(ellipse);
        const double span = NormalAngle(data.endParameter - data.startParameter);
        return BRepBuilderAPI_MakeEdge(ellipse, data.startParameter, data.startParameter + span);
    });
}

std::optional<TopoDS_Edge> EdgeOf(const SplineData& data) {
    return Built([&] {
        const Handle(Geom_BSplineCurve) curve = BSplineOf(data);
        if (curve.IsNull()) return BRepBuilderAPI_MakeEdge();
        return BRepBuilderAPI_MakeEdge(curve);
    });
}

std::vector<TopoDS_Edge> EdgesOf(const HostGeometry& geometry) {
    std::vector<TopoDS_Edge> edges;
    const auto take = [&](const std::optional<TopoDS_Edge>& edge) {
        if (edge) edges.push_back(*edge);
    };
    std::visit(
        [&](const auto& data) {
            using Data = std::decay_t<decltype(data)>;
            if constexpr (std::is_same_v<Data, LWPolylineData> || std::is_same_v<Data, PolylineData>) {
                for (const PolylinePiece& piece : PiecesOf(data))
                    std::visit([&](const auto& curve) { take(EdgeOf(curve)); }, piece);
            } else if constexpr (requires { EdgeOf(data); }) {
                take(EdgeOf(data));
            }
        },
        geometry);
    return edges;
}

std::optional<HostGeometry> CurveOf(const TopoDS_Edge& edge, const Point3& normal) {
    if (BRep_Tool::Degenerated(edge)) return std::nullopt;
    return solids::Guarded("reading an edge", [&]() -> std::optional<HostGeometry> {
        const BRepAdaptor_Curve curve(edge);
        const Ends ends{curve.FirstParameter(), curve.LastParameter()};
        switch (curve.GetType()) {
            case GeomAbs_Line:
                return LineOf(curve, ends, edge, normal);
            case GeomAbs_Circle:
                return RoundOf(curve.Circle(), ends, normal);
            case GeomAbs_Ellipse:
                return OvalOf(curve.Ellipse(), ends, normal);
            case GeomAbs_Hyperbola:
            case GeomAbs_Parabola:
            case GeomAbs_BezierCurve:
            case GeomAbs_BSplineCurve:
            case GeomAbs_OffsetCurve:
            case GeomAbs_OtherCurve:
                return SplineOf(edge, normal);
        }
        return std::nullopt;
    });
}

}  // namespace brenvik

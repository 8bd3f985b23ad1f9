// Gathers the points, round edges, free edges and bulging faces of a shape, and finds the farthest of
// them along a direction.
#include "drafting_host/solids/support.h"

#include <BRep_Tool.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_BezierCurve.hxx>
#include <Precision.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cmath>
#include <limits>

#include "base/angles.h"
#include "drafting_host/solids/bulging_face.h"
#include "drafting_host/solids/line_search.h"

namespace brenvik::solids {
namespace {

// An arc that ends this close to its peak (radians) is taken to hold it: the end lies lower by less
// than a double of the radius can show, and the peak's formula gives the clean number.
constexpr double AngleSlack = 1e-9;

bool ArcHolds(double angle, double first, double last) {
    const double turned = angle + std::ceil((first - AngleSlack - angle) / FullTurn) * FullTurn;
    return turned <= last + AngleSlack;
}

std::vector<gp_XYZ> ControlPoints(const BRepAdaptor_Curve& curve) {
    std::vector<gp_XYZ> points;
    const auto take = [&](const auto& spline) {
        for (int pole = 1; pole <= spline->NbPoles(); ++pole) points.push_back(spline->Pole(pole).XYZ());
    };
    if (curve.GetType() == GeomAbs_BSplineCurve) take(curve.BSpline());
    if (curve.GetType() == GeomAbs_BezierCurve) take(curve.Bezier());
    return points;
}

std::vector<double> SampleParameters(const BRepAdaptor_Curve& curve) {
    const int spans = std::max(1, curve.NbIntervals(GeomAbs_C2));
    TColStd_Array1OfReal knots(1, spans + 1);
    curve.Intervals(knots, GeomAbs_C2);
    // A polynomial piece of degree n turns at most n - 1 times along one direction.
    int degree = 12;
    if (curve.GetType() == GeomAbs_BSplineCurve || curve.GetType() == GeomAbs_BezierCurve)
        degree = std::clamp(curve.Degree(), 1, 12);
    const int pieces = degree == 1 ? 1 : std::max(2 * degree, spans == 1 ? 24 : 6);
    std::vector<double> parameters;
    parameters.reserve(static_cast<std::size_t>(spans * pieces + 1));
    for (int span = 1; span <= spans; ++span) {
        for (int piece = 0; piece < pieces; ++piece)
            parameters.push_back(knots(span) + (knots(span + 1) - knots(span)) * piece / pieces);
    }
    parameters.push_back(knots(spans + 1));
    return parameters;
}

}  // namespace

Support::~Support() = default;
Support::Support(Support&&) noexcept = default;
Support& Support::operator=(Support&&) noexcept = default;

Support::Support(const TopoDS_Shape& shape) {
    if (shape.IsNull()) return;
    TopTools_IndexedMapOfShape vertices;
    TopExp::MapShapes(shape, TopAbs_VERTEX, vertices);
    mPoints.reserve(static_cast<std::size_t>(vertices.Extent()));
    for (int index = 1; index <= vertices.Extent(); ++index) {
        const gp_XYZ point = BRep_Tool::Pnt(TopoDS::Vertex(vertices(index))).XYZ();
        for (int axis = 1; axis <= 3; ++axis)
            if (!(std::abs(point.Coord(axis)) < Precision::Infinite() / 2)) mFinite = false;
        mPoints.push_back(point);
    }
    TopTools_IndexedMapOfShape edges;
    TopExp::MapShapes(shape, TopAbs_EDGE, edges);
    for (int index = 1; index <= edges.Extent(); ++index) AddEdge(TopoDS::Edge(edges(index)));
    TopTools_IndexedMapOfShape faces;
    TopExp::MapShapes(shape, TopAbs_FACE, faces);
    for (int index = 1; index <= faces.Extent(); ++index) {
        const TopoDS_Face& face = TopoDS::Face(faces(index));
        if (BulgingFace::CanBulge(BRepAdaptor_Surface(face, Standard_False))) mBulges.emplace_back(face);
    }
}

void Support::AddEdge(const TopoDS_Edge& edge) {
    if (BRep_Tool::Degenerated(edge)) return;
    Handle(BRepAdaptor_Curve) curve = new BRepAdaptor_Curve(edge);
    const double first = curve->FirstParameter();
    const double last = curve->LastParameter();
    if (curve->GetType() == GeomAbs_Line) return;
    if (curve->GetType() == GeomAbs_Circle) {
        const gp_Circ circle = curve->Circle();
        mRounds.push_back({circle.Location().XYZ(), circle.XAxis().Direction().XYZ() * circle.Radius(),
                           circle.YAxis().Direction().XYZ() * circle.Radius(),
                           circle.Axis().Direction().XYZ(), first, last, true});
        return;
    }
    if (curve->GetType() == GeomAbs_Ellipse) {
        const gp_Elips ellipse = curve->Ellipse();
        mRounds.push_back({ellipse.Location().XYZ(),
                           ellipse.XAxis().Direction().XYZ() * ellipse.MajorRadius(),
                           ellipse.YAxis().Direction().XYZ() * ellipse.MinorRadius(),
                           ellipse.Axis().Direction().XYZ(), first, last, false});
        return;
    }
    FreeEdge free{curve, SampleParameters(*curve), {}, ControlPoints(*curve)};
    for (const double parameter : free.parameters) free.points.push_back(curve->Value(parameter).XYZ());
    mPoints.push_back(free.points.front());
    mPoints.push_back(free.points.back());
    mFrees.push_back(std::move(free));
}

bool Support::Empty() const { return mPoints.empty() && mBulges.empty() && mRounds.empty(); }

double Support::RoundPeak(const RoundEdge& edge, const gp_XYZ& direction, const gp_XYZ& origin,
                          double best) const {
    const double alongMajor = edge.major.Dot(direction);
    const double alongMinor = edge.minor.Dot(direction);
    double swing = std::hypot(alongMajor, alongMinor);
    if (edge.circle) {
        // A circle seen edge-on reaches its radius exactly; the slant's formula keeps that number clean,
        // the sum of squares would not.
        const double slant = edge.normal.Dot(direction);
        if (std::abs(slant) < 0.5) swing = edge.major.Modulus() * std::sqrt((1 - slant) * (1 + slant));
    }
    const double peak = (edge.center - origin).Dot(direction) + swing;
    if (!(peak > best)) return best;
    return ArcHolds(std::atan2(alongMinor, alongMajor), edge.first, edge.last) ? peak : best;
}

double Support::FreePeak(const FreeEdge& edge, const gp_XYZ& direction, const gp_XYZ& origin,
                         double best) const {
    if (!edge.hull.empty()) {
        const bool reaches = std::ranges::any_of(
            edge.hull, [&](const gp_XYZ& pole) { return (pole - origin).Dot(direction) > best; });
        if (!reaches) return best;
    }
    const auto height = [&](double parameter) {
        return (edge.curve->Value(parameter).XYZ() - origin).Dot(direction);
    };
    std::vector<double> heights;
    heights.reserve(edge.points.size());
    for (const gp_XYZ& point : edge.points) heights.push_back((point - origin).Dot(direction));
    const std::size_t last = heights.size() - 1;
    for (std::size_t index = 0; index <= last; ++index) {
        const std::size_t before = index == 0 ? 0 : index - 1;
        const std::size_t after = std::min(index + 1, last);
        best = std::max(best, heights[index]);
        if (heights[index] < heights[before] || heights[index] < heights[after]) continue;
        const PeakPoint peak = GoldenPeak(height, edge.parameters[before], edge.parameters[after]);
        best = std::max(best, peak.value);
    }
    return best;
}

Reach Support::Along(const gp_XYZ& direction, const gp_XYZ& origin) const {
    if (!mFinite) return {std::nan(""), std::nan("")};
    constexpr double nothing = -std::numeric_limits<double>::infinity();
    const auto farthest = [&](const gp_XYZ& way) {
        double best = nothing;
        for (const gp_XYZ& point : mPoints) best = std::max(best, (point - origin).Dot(way));
        for (const RoundEdge& edge : mRounds) best = RoundPeak(edge, way, origin, best);
        for (const FreeEdge& edge : mFrees) best = FreePeak(edge, way, origin, best);
        for (const BulgingFace& face : mBulges) best = face.Peak(way, origin, best);
        return best;
    };
    const double high = farthest(direction);
    return {-farthest(direction.Reversed()), high};
}

}  // namespace brenvik::solids

// Curves and surfaces are built by the modeller's own translation, one statement at a time.
#include "drafting_host/step/models/edge_samples.h"

#include <ElSLib.hxx>
#include <GeomAdaptor_Surface.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_Conic.hxx>
#include <Geom_Line.hxx>
#include <Geom_RectangularTrimmedSurface.hxx>
#include <Geom_SurfaceOfLinearExtrusion.hxx>
#include <Geom_TrimmedCurve.hxx>
#include <ShapeAnalysis_Curve.hxx>
#include <StepGeom_CartesianPoint.hxx>
#include <StepShape_VertexPoint.hxx>
#include <StepToGeom.hxx>
#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

namespace brenvik::step {
namespace {

constexpr double Projection = 1e-9;

std::optional<gp_Pnt> PlaceOf(const Handle(StepShape_Vertex) & vertex) {
    const Handle(StepShape_VertexPoint) known = Handle(StepShape_VertexPoint)::DownCast(vertex);
    if (known.IsNull()) return std::nullopt;
    const Handle(StepGeom_CartesianPoint) point =
        Handle(StepGeom_CartesianPoint)::DownCast(known->VertexGeometry());
    if (point.IsNull() || point->NbCoordinates() != 3) return std::nullopt;
    return gp_Pnt(point->CoordinatesValue(1), point->CoordinatesValue(2), point->CoordinatesValue(3));
}

/// The parameters of an edge on its curve, in the direction of the curve.
std::pair<double, double> RangeOf(const Geom_Curve& curve, double start, double end, bool sameVertex,
                                  bool sameSense) {
    if (sameVertex) {
        if (curve.IsPeriodic()) return {start, start + curve.Period()};
        if (curve.IsClosed()) return {curve.FirstParameter(), curve.LastParameter()};
    }
    if (!sameSense) std::swap(start, end);
    if (curve.IsPeriodic() && end <= start) end += curve.Period();
    return {start, end};
}

/// Where an edge is looked at besides its middle. A pole of a spline moves the curve in a few spans only, and
/// an arc in a plane that tilts or bends another way can still cross a surface half way.
std::vector<double> InnerPlaces(const Handle(Geom_Curve) & curve, double first, double last) {
    constexpr int mostSpans = 200, fewSpans = 8, parts = 8;
    std::vector<double> places;
    const auto spread = [&](double from, double to) {
        for (int i = 1; i < parts; ++i)
            if (2 * i != parts) places.push_back(from + (to - from) * i / parts);
    };
    const auto spline = Handle(Geom_BSplineCurve)::DownCast(curve);
    if (spline.IsNull() && !curve->IsKind(STANDARD_TYPE(Geom_Line))) spread(first, last);
    if (spline.IsNull()) return places;
    const auto [low, high] = std::minmax(first, last);
    const int step = 1 + spline->NbKnots() / mostSpans;
    for (int knot = spline->FirstUKnotIndex(); knot < spline->LastUKnotIndex(); knot += step) {
        const double from = std::max(low, spline->Knot(knot)), to = std::min(high, spline->Knot(knot + 1));
        if (to <= from) continue;
        places.push_back((from + to) / 2);
        if (spline->NbKnots() <= fewSpans) spread(from, to);
    }
    return places;
}

double FromElementary(const GeomAdaptor_Surface& surface, const gp_Pnt& point) {
    double u = 0, v = 0;
    switch (surface.GetType()) {
        case GeomAbs_Plane:
            return surface.Plane().Distance(point);
        case GeomAbs_Cylinder:
            ElSLib::Parameters(surface.Cylinder(), point, u, v);
            return ElSLib::Value(u, v, surface.Cylinder()).Distance(point);
        case GeomAbs_Cone:
            ElSLib::Parameters(surface.Cone(), point, u, v);
            return ElSLib::Value(u, v, surface.Cone()).Distance(point);
        case GeomAbs_Sphere:
            ElSLib::Parameters(surface.Sphere(), point, u, v);
            return ElSLib::Value(u, v, surface.Sphere()).Distance(point);
        case GeomAbs_Torus:
            ElSLib::Parameters(surface.Torus(), point, u, v);
            return ElSLib::Value(u, v, surface.Torus()).Distance(point);
        default:
            return 0;
    }
}

bool IsElementary(const Handle(Geom_Surface) & surface) {
    switch (GeomAdaptor_Surface(surface).GetType()) {
        case GeomAbs_Plane:
        case GeomAbs_Cylinder:
        case GeomAbs_Cone:
        case GeomAbs_Sphere:
        case GeomAbs_Torus:
            return true;
        default:
            return false;
    }
}

/// A point on an extruded conic, slid along the extrusion into the conic's plane, lies on the conic: the
/// search on such a surface, which has no end, misses it. Null for other surfaces, and where the slide has no
/// foot.
std::optional<double> FromExtrudedConic(const Handle(Geom_Surface) & surface, const gp_Pnt& point) {
    const auto extrusion = Handle(Geom_SurfaceOfLinearExtrusion)::DownCast(surface);
    if (extrusion.IsNull()) return std::nullopt;
    Handle(Geom_Curve) curve = extrusion->BasisCurve();
    if (const auto trimmed = Handle(Geom_TrimmedCurve)::DownCast(curve); !trimmed.IsNull())
        curve = trimmed->BasisCurve();
    const auto conic = Handle(Geom_Conic)::DownCast(curve);
    if (conic.IsNull()) return std::nullopt;
    constexpr double flattest = 0.05;  // The foot lies further off than the surface by the inverse of this.
    const gp_Dir normal = conic->Axis().Direction(), along = extrusion->Direction();
    const double climb = normal.Dot(along);
    if (std::abs(climb) < flattest) return std::nullopt;
    const double height = gp_Vec(point, conic->Location()).Dot(gp_Vec(normal));
    const gp_Pnt foot = point.Translated(gp_Vec(along) * (height / climb));
    gp_Pnt onCurve;
    double parameter = 0;
    return ShapeAnalysis_Curve().Project(conic, foot, Projection, onCurve, parameter, Standard_False);
}

}  // namespace

std::optional<EdgeSamples> SampleEdge(const Handle(StepShape_EdgeCurve) & edge) {
    const std::optional<gp_Pnt> start = PlaceOf(edge->EdgeStart()), end = PlaceOf(edge->EdgeEnd());
    if (!start || !end) return std::nullopt;
    EdgeSamples samples;
    samples.start = *start;
    samples.end = *end;
    Handle(Geom_Curve) curve = StepToGeom::MakeCurve(edge->EdgeGeometry());
    if (const auto trimmed = Handle(Geom_TrimmedCurve)::DownCast(curve); !trimmed.IsNull())
        curve = trimmed->BasisCurve();
    if (curve.IsNull()) return samples;
    const ShapeAnalysis_Curve search;
    gp_Pnt onCurve;
    double first = 0, last = 0;
    const double atStart = search.Project(curve, *start, Projection, onCurve, first);
    const double atEnd = search.Project(curve, *end, Projection, onCurve, last);
    // Written so that a value that isn't a number counts as far away.
    samples.endMisfit = atStart >= atEnd ? atStart : atEnd;
    std::tie(first, last) = RangeOf(*curve, first, last, edge->EdgeStart() == edge->EdgeEnd(),
                                    edge->SameSense() != Standard_False);
    samples.curve = curve;
    std::tie(samples.first, samples.last) =
        edge->SameSense() != Standard_False ? std::pair(first, last) : std::pair(last, first);
    samples.middle = curve->Value((first + last) / 2);
    samples.free = !curve->IsKind(STANDARD_TYPE(Geom_Line)) && !curve->IsKind(STANDARD_TYPE(Geom_Conic));
    samples.inner.push_back(samples.middle);
    for (const double place : InnerPlaces(curve, first, last)) samples.inner.push_back(curve->Value(place));
    return samples;
}

std::vector<gp_Pnt> EdgeSamples::Walk() const {
    std::vector<gp_Pnt> points;
    if (curve.IsNull()) return points;
    constexpr int onConic = 16, onFree = 48, inSpan = 6;
    const auto spline = Handle(Geom_BSplineCurve)::DownCast(curve);
    const int steps = !spline.IsNull()                          ? std::max(onFree, inSpan * spline->NbKnots())
                      : free                                    ? onFree
                      : curve->IsKind(STANDARD_TYPE(Geom_Line)) ? 2
                                                                : onConic;
    for (int i = 0; i <= steps; ++i) points.push_back(curve->Value(first + (last - first) * i / steps));
    return points;
}

FaceSurface::FaceSurface(const Handle(StepShape_FaceSurface) & face)
    : mSurface(StepToGeom::MakeSurface(face->FaceGeometry())) {
    if (const auto trimmed = Handle(Geom_RectangularTrimmedSurface)::DownCast(mSurface); !trimmed.IsNull())
        mSurface = trimmed->BasisSurface();
    if (!mSurface.IsNull() && !IsElementary(mSurface)) mSearch = new ShapeAnalysis_Surface(mSurface);
}

double FaceSurface::Distance(const gp_Pnt& point) {
    if (mSearch.IsNull()) return FromElementary(GeomAdaptor_Surface(mSurface), point);
    if (const auto distance = FromExtrudedConic(mSurface, point)) return *distance;
    // The points of one edge after another lie near each other.
    mLast = mLast ? mSearch->NextValueOfUV(*mLast, point, Projection) : mSearch->ValueOfUV(point, Projection);
    return mSearch->Value(*mLast).Distance(point);
}

}  // namespace brenvik::step

// Curves and surfaces are built by the modeller's own translation, one statement at a time.
#include "drafting_host/step/edge_samples.h"

#include <ElSLib.hxx>
#include <GeomAdaptor_Surface.hxx>
#include <Geom_RectangularTrimmedSurface.hxx>
#include <Geom_TrimmedCurve.hxx>
#include <ShapeAnalysis_Curve.hxx>
#include <StepGeom_CartesianPoint.hxx>
#include <StepShape_VertexPoint.hxx>
#include <StepToGeom.hxx>
#include <algorithm>
#include <cmath>
#include <utility>

namespace brenvik::step {
namespace {

constexpr double projection = 1e-9;

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
    const double atStart = search.Project(curve, *start, projection, onCurve, first);
    const double atEnd = search.Project(curve, *end, projection, onCurve, last);
    // Written so that what is no number counts as far away.
    samples.endMisfit = atStart >= atEnd ? atStart : atEnd;
    const bool sameSense = edge->SameSense();
    std::tie(first, last) = RangeOf(*curve, first, last, edge->EdgeStart() == edge->EdgeEnd(), sameSense);
    for (std::size_t i = 0; i < samples.inner.size(); ++i) {
        const double share = static_cast<double>(i + 1) / static_cast<double>(samples.inner.size() + 1);
        samples.inner[i] = curve->Value(first + (last - first) * share);
    }
    if (!sameSense) std::reverse(samples.inner.begin(), samples.inner.end());
    samples.curved = true;
    return samples;
}

FaceSurface::FaceSurface(const Handle(StepShape_FaceSurface) & face)
    : mSurface(StepToGeom::MakeSurface(face->FaceGeometry())) {
    if (const auto trimmed = Handle(Geom_RectangularTrimmedSurface)::DownCast(mSurface); !trimmed.IsNull())
        mSurface = trimmed->BasisSurface();
    if (!mSurface.IsNull() && !IsElementary(mSurface)) mSearch = new ShapeAnalysis_Surface(mSurface);
}

double FaceSurface::Distance(const gp_Pnt& point) {
    if (mSearch.IsNull()) return FromElementary(GeomAdaptor_Surface(mSurface), point);
    const gp_Pnt2d at = mSearch->ValueOfUV(point, projection);
    return mSearch->Value(at).Distance(point);
}

}  // namespace brenvik::step

// Conversion of splines. Ends of the modeller's knots carry one repetition more than those of the records.
#include "drafting_host/acis/spline_shapes.h"

#include <Geom2dConvert.hxx>
#include <Geom2d_TrimmedCurve.hxx>
#include <GeomAPI_ProjectPointOnCurve.hxx>
#include <GeomConvert.hxx>
#include <GeomConvert_CompCurveToBSplineCurve.hxx>
#include <Geom_BezierSurface.hxx>
#include <Geom_RectangularTrimmedSurface.hxx>
#include <Geom_SurfaceOfLinearExtrusion.hxx>
#include <Geom_TrimmedCurve.hxx>
#include <ShapeConstruct.hxx>
#include <Standard_Failure.hxx>
#include <TColStd_Array1OfInteger.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TColStd_Array2OfReal.hxx>
#include <TColgp_Array1OfPnt.hxx>
#include <TColgp_Array1OfPnt2d.hxx>
#include <TColgp_Array2OfPnt.hxx>

#include <algorithm>
#include <cmath>

namespace brenvik::acis {
namespace {

constexpr double SurfaceFit = 1e-8;
constexpr int ApproximationDegree = 14;
constexpr int ApproximationPieces = 200;

struct ModellerKnots {
    explicit ModellerKnots(const SplineKnots& knots)
        : values(1, static_cast<int>(knots.values.size())),
          multiplicities(1, static_cast<int>(knots.values.size())) {
        for (int i = 1; i <= values.Length(); ++i) {
            const auto at = static_cast<std::size_t>(i) - 1;
            const bool end = i == 1 || i == values.Length();
            values.SetValue(i, knots.values[at]);
            multiplicities.SetValue(i, knots.repetitions[at] + (end ? 1 : 0));
        }
    }
    TColStd_Array1OfReal values;
    TColStd_Array1OfInteger multiplicities;
};

SplineKnots KnotsOf(const TColStd_Array1OfReal& values, const TColStd_Array1OfInteger& multiplicities,
                    int degree) {
    SplineKnots knots;
    knots.degree = degree;
    for (int i = values.Lower(); i <= values.Upper(); ++i) {
        const bool end = i == values.Lower() || i == values.Upper();
        knots.values.push_back(values(i));
        knots.repetitions.push_back(multiplicities(i) - (end ? 1 : 0));
    }
    return knots;
}

template <class Spline>
bool SpansExactly(const Handle(Spline) & spline, double first, double last) {
    return !spline.IsNull() && !spline->IsPeriodic() && spline->FirstParameter() == first &&
           spline->LastParameter() == last && spline->Multiplicity(1) == spline->Degree() + 1 &&
           spline->Multiplicity(spline->NbKnots()) == spline->Degree() + 1;
}

// The parameter of the place on a curve that is nearest to a point, its ends included.
double Nearest(const Handle(Geom_BSplineCurve) & curve, const gp_Pnt& point) {
    double best = curve->FirstParameter();
    double distance = curve->StartPoint().Distance(point);
    if (curve->EndPoint().Distance(point) < distance) {
        best = curve->LastParameter();
        distance = curve->EndPoint().Distance(point);
    }
    const GeomAPI_ProjectPointOnCurve projection(point, curve);
    if (projection.NbPoints() > 0 && projection.LowerDistance() < distance)
        best = projection.LowerDistanceParameter();
    return best;
}

// A closed curve begun at another place.
Handle(Geom_BSplineCurve) BegunAt(const Handle(Geom_BSplineCurve) & curve, double parameter, long record) {
    const double least = 1e-9 * (curve->LastParameter() - curve->FirstParameter());
    if (parameter - curve->FirstParameter() < least || curve->LastParameter() - parameter < least)
        return curve;
    GeomConvert_CompCurveToBSplineCurve joined(
        new Geom_TrimmedCurve(curve, parameter, curve->LastParameter()));
    if (!joined.Add(new Geom_TrimmedCurve(curve, curve->FirstParameter(), parameter), LooseFit, true))
        throw BadRecord(record, "a closed spline cannot be begun at the vertex of its edge");
    return joined.BSplineCurve();
}

bool KeepsParameters(const Handle(Geom_Surface) & surface) {
    if (surface->IsKind(STANDARD_TYPE(Geom_BSplineSurface))) return true;
    if (surface->IsKind(STANDARD_TYPE(Geom_BezierSurface))) return true;
    const auto extrusion = Handle(Geom_SurfaceOfLinearExtrusion)::DownCast(surface);
    return !extrusion.IsNull() && extrusion->BasisCurve()->IsKind(STANDARD_TYPE(Geom_BoundedCurve));
}

// The part of a periodic spline that a face lies on, in the parameters that it has there.
Handle(Geom_BSplineSurface)
    Unrolled(const Handle(Geom_BSplineSurface) & periodic, double u1, double u2, double v1, double v2) {
    const auto part = Handle(Geom_BSplineSurface)::DownCast(periodic->Copy());
    double lowU = 0;
    double highU = 0;
    double lowV = 0;
    double highV = 0;
    part->Bounds(lowU, highU, lowV, highV);
    if (part->IsUPeriodic()) {
        lowU = u1;
        highU = std::min(u2, u1 + part->UPeriod());
    }
    if (part->IsVPeriodic()) {
        lowV = v1;
        highV = std::min(v2, v1 + part->VPeriod());
    }
    part->Segment(lowU, highU, lowV, highV);
    // The modeller may have gone a period on; the curves of the face count from where they did.
    double firstU = 0;
    double firstV = 0;
    part->Bounds(firstU, highU, firstV, highV);
    TColStd_Array1OfReal uKnots(part->UKnots());
    TColStd_Array1OfReal vKnots(part->VKnots());
    for (double& knot : uKnots) knot += lowU - firstU;
    for (double& knot : vKnots) knot += lowV - firstV;
    part->SetUKnots(uKnots);
    part->SetVKnots(vKnots);
    return part;
}

Handle(Geom_BSplineSurface)
    Converted(Handle(Geom_Surface) surface, double u1, double u2, double v1, double v2) {
    if (const auto trimmed = Handle(Geom_RectangularTrimmedSurface)::DownCast(surface); !trimmed.IsNull())
        surface = trimmed->BasisSurface();
    const auto own = Handle(Geom_BSplineSurface)::DownCast(surface);
    if (!own.IsNull()) return own->IsUPeriodic() || own->IsVPeriodic() ? Unrolled(own, u1, u2, v1, v2) : own;
    if (KeepsParameters(surface)) {
        return GeomConvert::SurfaceToBSplineSurface(
            new Geom_RectangularTrimmedSurface(surface, u1, u2, v1, v2));
    }
    const Handle(Geom_BSplineSurface) met = ShapeConstruct::ConvertSurfaceToBSpline(
        surface, u1, u2, v1, v2, SurfaceFit, GeomAbs_C2, ApproximationPieces, ApproximationDegree);
    if (met.IsNull() || !(met->IsUPeriodic() || met->IsVPeriodic())) return met;
    return Unrolled(met, u1, u2, v1, v2);
}

Handle(Geom_BSplineCurve) MakeSpline(const SplineCurveRecord& curve, const Placement& placement) {
    const ModellerKnots knots(curve.knots);
    const int count = static_cast<int>(curve.poles.size());
    TColgp_Array1OfPnt poles(1, count);
    for (int i = 1; i <= count; ++i)
        poles.SetValue(i, placement.Point(curve.poles[static_cast<std::size_t>(i) - 1]));
    if (curve.weights.empty())
        return new Geom_BSplineCurve(poles, knots.values, knots.multiplicities, curve.knots.degree);
    TColStd_Array1OfReal weights(1, count);
    for (int i = 1; i <= count; ++i) weights.SetValue(i, curve.weights[static_cast<std::size_t>(i) - 1]);
    return new Geom_BSplineCurve(poles, weights, knots.values, knots.multiplicities, curve.knots.degree);
}

}  // namespace

Handle(Geom2d_BSplineCurve) MakePlaneSpline(const PlaneSplineRecord& curve) {
    const ModellerKnots knots(curve.knots);
    const int count = static_cast<int>(curve.poles.size());
    TColgp_Array1OfPnt2d poles(1, count);
    for (int i = 1; i <= count; ++i)
        poles.SetValue(i, gp_Pnt2d(curve.poles[static_cast<std::size_t>(i) - 1]));
    if (curve.weights.empty())
        return new Geom2d_BSplineCurve(poles, knots.values, knots.multiplicities, curve.knots.degree);
    TColStd_Array1OfReal weights(1, count);
    for (int i = 1; i <= count; ++i) weights.SetValue(i, curve.weights[static_cast<std::size_t>(i) - 1]);
    return new Geom2d_BSplineCurve(poles, weights, knots.values, knots.multiplicities, curve.knots.degree);
}

Handle(Geom_BSplineSurface)
    MakeSplineSurface(const SplineSurfaceRecord& surface, const Placement& placement) {
    const ModellerKnots u(surface.u);
    const ModellerKnots v(surface.v);
    const int rows = static_cast<int>(surface.u.PoleCount());
    const int columns = static_cast<int>(surface.v.PoleCount());
    TColgp_Array2OfPnt poles(1, rows, 1, columns);
    TColStd_Array2OfReal weights(1, rows, 1, columns);
    weights.Init(1);
    std::size_t at = 0;
    for (int j = 1; j <= columns; ++j) {
        for (int i = 1; i <= rows; ++i, ++at) {
            poles.SetValue(i, j, placement.Point(surface.poles[at]));
            if (!surface.weights.empty()) weights.SetValue(i, j, surface.weights[at]);
        }
    }
    return new Geom_BSplineSurface(poles, weights, u.values, v.values, u.multiplicities, v.multiplicities,
                                   surface.u.degree, surface.v.degree);
}

EdgeCurve SplineEdge(const SplineCurveRecord& spline, bool reversed, const gp_Pnt& start, const gp_Pnt& end,
                     bool closed, const Placement& placement, long record) {
    Handle(Geom_BSplineCurve) curve = MakeSpline(spline, placement);
    if (spline.reversed != reversed) curve->Reverse();
    EdgeCurve edge;
    edge.first = curve->FirstParameter();
    edge.last = curve->LastParameter();
    const bool whole =
        curve->StartPoint().Distance(start) <= LooseFit && curve->EndPoint().Distance(end) <= LooseFit;
    if (!whole) {
        const bool ring = curve->StartPoint().Distance(curve->EndPoint()) <= LooseFit;
        edge.first = Nearest(curve, start);
        edge.last = Nearest(curve, end);
        if (ring && (closed || edge.last <= edge.first)) {
            curve = BegunAt(curve, edge.first, record);
            edge.first = curve->FirstParameter();
            edge.last = closed ? curve->LastParameter() : Nearest(curve, end);
        }
        const double ends = std::max(curve->StartPoint().Distance(start), curve->EndPoint().Distance(end));
        if (!(edge.last > edge.first) && ends <= HealedFit) {
            edge.first = curve->FirstParameter();
            edge.last = curve->LastParameter();
        }
        if (!(edge.last > edge.first))
            throw BadRecord(record, "the vertices of a free edge lie on its curve in the wrong order");
    }
    edge.curve = curve;
    edge.misfit = std::max(curve->Value(edge.first).Distance(start), curve->Value(edge.last).Distance(end));
    if (edge.misfit > HealedFit)
        throw BadRecord(record, "the vertices of a free edge do not lie on its curve");
    return edge;
}

std::optional<SplineCurveRecord> SplineOf(const Handle(Geom_Curve) & curve, double first, double last) {
    Handle(Geom_BSplineCurve) spline = Handle(Geom_BSplineCurve)::DownCast(curve);
    try {
        if (!SpansExactly(spline, first, last))
            spline = GeomConvert::CurveToBSplineCurve(new Geom_TrimmedCurve(curve, first, last));
    } catch (const Standard_Failure&) {
        return std::nullopt;
    }
    if (spline.IsNull()) return std::nullopt;
    SplineCurveRecord record;
    record.knots = KnotsOf(spline->Knots(), spline->Multiplicities(), spline->Degree());
    for (int i = 1; i <= spline->NbPoles(); ++i) {
        record.poles.push_back(spline->Pole(i).XYZ());
        if (spline->IsRational()) record.weights.push_back(spline->Weight(i));
    }
    return record;
}

std::optional<SplineSurfaceRecord> SplineOf(const Handle(Geom_Surface) & surface, double u1, double u2,
                                            double v1, double v2) {
    Handle(Geom_BSplineSurface) spline;
    try {
        spline = Converted(surface, u1, u2, v1, v2);
    } catch (const Standard_Failure&) {
        return std::nullopt;
    }
    if (spline.IsNull() || spline->IsUPeriodic() || spline->IsVPeriodic()) return std::nullopt;
    SplineSurfaceRecord record;
    record.u = KnotsOf(spline->UKnots(), spline->UMultiplicities(), spline->UDegree());
    record.v = KnotsOf(spline->VKnots(), spline->VMultiplicities(), spline->VDegree());
    const bool rational = spline->IsURational() || spline->IsVRational();
    for (int j = 1; j <= spline->NbVPoles(); ++j) {
        for (int i = 1; i <= spline->NbUPoles(); ++i) {
            record.poles.push_back(spline->Pole(i, j).XYZ());
            if (rational) record.weights.push_back(spline->Weight(i, j));
        }
    }
    return record;
}

std::optional<PlaneSplineRecord> SplineOf(const Handle(Geom2d_Curve) & curve, double first, double last,
                                          bool reversed) {
    Handle(Geom2d_BSplineCurve) spline = Handle(Geom2d_BSplineCurve)::DownCast(curve);
    try {
        if (!SpansExactly(spline, first, last))
            spline = Geom2dConvert::CurveToBSplineCurve(new Geom2d_TrimmedCurve(curve, first, last));
    } catch (const Standard_Failure&) {
        return std::nullopt;
    }
    if (spline.IsNull() || spline->IsPeriodic()) return std::nullopt;
    PlaneSplineRecord record;
    record.knots = KnotsOf(spline->Knots(), spline->Multiplicities(), spline->Degree());
    for (int i = 1; i <= spline->NbPoles(); ++i) {
        record.poles.push_back(spline->Pole(i).XY());
        if (spline->IsRational()) record.weights.push_back(spline->Weight(i));
    }
    if (!reversed) return record;
    std::reverse(record.poles.begin(), record.poles.end());
    std::reverse(record.weights.begin(), record.weights.end());
    std::reverse(record.knots.values.begin(), record.knots.values.end());
    std::reverse(record.knots.repetitions.begin(), record.knots.repetitions.end());
    for (double& value : record.knots.values) value = -value;
    return record;
}

}  // namespace brenvik::acis

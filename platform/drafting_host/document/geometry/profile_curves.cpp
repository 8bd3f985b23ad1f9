// Collecting a profile: which edges count, whether each is seen, and what coincides.
#include "drafting_host/document/geometry/profile_curves.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRep_Tool.hxx>
#include <ElSLib.hxx>
#include <Geom2d_Curve.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <set>

#include "drafting_host/document/geometry/curve_edges.h"
#include "drafting_host/document/geometry/modeller_points.h"
#include "drafting_host/document/geometry/outlines.h"
#include "drafting_host/document/geometry/sight_lines.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/solids/guard.h"

namespace brenvik {

using namespace vectors;

namespace {

/// Sine of the angle up to which two faces run smoothly into each other.
constexpr double Smooth = 1e-5;
/// Sine of the angle up to which a face stands along the line of sight.
constexpr double Upright = 1e-7;

/// Where an edge is looked at: neither its middle nor another place that drawings like to have something at.
constexpr double LookedAt = 0.4637;

struct EdgePoint {
    double parameter = 0;
    Point3 point, along;
};

EdgePoint PointOn(const TopoDS_Edge& edge) {
    const BRepAdaptor_Curve curve(edge);
    EdgePoint result;
    const double first = curve.FirstParameter();
    result.parameter = first + (curve.LastParameter() - first) * LookedAt;
    gp_Pnt point;
    gp_Vec along;
    curve.D1(result.parameter, point, along);
    result.point = FromModeller(point.XYZ());
    result.along = Unit(FromModeller(along.XYZ()));
    return result;
}

/// The place of an edge's point on a face, in the surface's parameters.
gp_Pnt2d PlaceOn(const BRepAdaptor_Surface& surface, const TopoDS_Edge& edge, const EdgePoint& at) {
    const gp_Pnt point(at.point.x, at.point.y, at.point.z);
    double u = 0, v = 0;
    switch (surface.GetType()) {
        case GeomAbs_Plane:
            return {0, 0};
        case GeomAbs_Cylinder:
            ElSLib::Parameters(surface.Cylinder(), point, u, v);
            return {u, v};
        case GeomAbs_Cone:
            ElSLib::Parameters(surface.Cone(), point, u, v);
            return {u, v};
        case GeomAbs_Sphere:
            ElSLib::Parameters(surface.Sphere(), point, u, v);
            return {u, v};
        case GeomAbs_Torus:
            ElSLib::Parameters(surface.Torus(), point, u, v);
            return {u, v};
        case GeomAbs_BezierSurface:
        case GeomAbs_BSplineSurface:
        case GeomAbs_SurfaceOfRevolution:
        case GeomAbs_SurfaceOfExtrusion:
        case GeomAbs_OffsetSurface:
        case GeomAbs_OtherSurface:
            break;
    }
    double first = 0, last = 0;
    const Handle(Geom2d_Curve) curve = BRep_Tool::CurveOnSurface(edge, surface.Face(), first, last);
    return curve.IsNull() ? gp_Pnt2d() : curve->Value(at.parameter);
}

/// The face's normal at an edge's point, on either side; a zero vector where the face has none there.
Point3 NormalAt(const TopoDS_Face& face, const TopoDS_Edge& edge, const EdgePoint& at, bool& flat) {
    const BRepAdaptor_Surface surface(face, false);
    flat = surface.GetType() == GeomAbs_Plane;
    if (flat) return FromModeller(surface.Plane().Axis().Direction().XYZ());
    const gp_Pnt2d place = PlaceOn(surface, edge, at);
    gp_Pnt point;
    gp_Vec alongU, alongV;
    surface.D1(place.X(), place.Y(), point, alongU, alongV);
    const Point3 normal = Cross(FromModeller(alongU.XYZ()), FromModeller(alongV.XYZ()));
    return Length(normal) < 1e-12 ? Point3{} : Unit(normal);
}

/// A curve that counts as one with another when all its numbers are within a hair of the other's.
using CurveKey = std::array<std::int64_t, 10>;

std::int64_t Step(double value) {
    // Off the round numbers that parts are drawn with, so that rounding never parts two equal ones.
    constexpr double hair = 1e-6, aside = 0.137;
    return static_cast<std::int64_t>(std::floor(value / hair + aside));
}

CurveKey KeyOf(const HostGeometry& curve) {
    CurveKey key{};
    key[0] = static_cast<std::int64_t>(curve.index());
    const auto put = [&](std::size_t place, const Point3& p) {
        key[place] = Step(p.x);
        key[place + 1] = Step(p.y);
        key[place + 2] = Step(p.z);
    };
    if (const auto* line = std::get_if<LineData>(&curve)) {
        put(1, line->start);
        put(4, line->end);
        // Either way along is the same line.
        const auto half = key.begin() + 1, rest = key.begin() + 4, end = key.begin() + 7;
        if (std::lexicographical_compare(rest, end, half, rest)) std::swap_ranges(half, rest, rest);
    } else if (const auto* arc = std::get_if<ArcData>(&curve)) {
        const Axes axes = ObjectAxes(arc->normal);
        put(1, OnCircle(arc->center, arc->radius, axes, arc->startAngle));
        put(4, OnCircle(arc->center, arc->radius, axes, arc->endAngle));
        put(7, arc->center);
    } else if (const auto* circle = std::get_if<CircleData>(&curve)) {
        put(1, circle->center);
        put(4, circle->normal);
        key[7] = Step(circle->radius);
    } else if (const auto* ellipse = std::get_if<EllipseData>(&curve)) {
        put(1, ellipse->center);
        put(4, ellipse->majorAxis);
        key[7] = Step(ellipse->ratio);
        key[8] = Step(ellipse->startParameter);
        key[9] = Step(ellipse->endParameter);
    } else if (const auto* spline = std::get_if<SplineData>(&curve)) {
        Point3 sum, second;
        for (std::size_t i = 0; i < spline->controlPoints.size(); ++i) {
            sum = sum + spline->controlPoints[i];
            second = second + spline->controlPoints[i] * static_cast<double>(i % 3);
        }
        put(1, sum);
        put(4, second);
        key[7] = static_cast<std::int64_t>(spline->controlPoints.size());
    }
    return key;
}

/// Arcs that together make a full round: a hole whose wall the maker of the part has cut into pieces.
void JoinRounds(std::vector<HostGeometry>& curves) {
    const auto sameRound = [](const ArcData& a, const ArcData& b) {
        return Distance(a.center, b.center) < PointTolerance &&
               std::abs(a.radius - b.radius) < PointTolerance && Length(Cross(a.normal, b.normal)) < Smooth;
    };
    const auto span = [](const ArcData& arc) { return NormalAngle(arc.endAngle - arc.startAngle); };
    std::vector<bool> gone(curves.size(), false);
    for (std::size_t i = 0; i < curves.size(); ++i) {
        const auto* first = std::get_if<ArcData>(&curves[i]);
        if (first == nullptr || gone[i]) continue;
        std::vector<std::size_t> pieces{i};
        double sweep = span(*first), end = first->endAngle;
        for (bool found = true; found && sweep < FullTurn - 1e-9;) {
            found = false;
            for (std::size_t k = i + 1; k < curves.size() && !found; ++k) {
                const auto* next = std::get_if<ArcData>(&curves[k]);
                if (next == nullptr || gone[k] || !sameRound(*first, *next)) continue;
                const double gap = NormalAngle(next->startAngle - end);
                if (std::min(gap, FullTurn - gap) * first->radius > PointTolerance) continue;
                found = sweep + span(*next) <= FullTurn + 1e-9;
                if (!found) continue;
                sweep += span(*next);
                end = next->endAngle;
                pieces.push_back(k);
            }
        }
        if (pieces.size() < 2 || sweep < FullTurn - 1e-6) continue;
        for (const std::size_t piece : pieces) gone[piece] = true;
        gone[i] = false;
        curves[i] = CircleData{first->center, first->radius, 0, first->normal};
    }
    std::size_t kept = 0;
    for (std::size_t i = 0; i < curves.size(); ++i) {
        if (gone[i]) continue;
        if (kept != i) curves[kept] = std::move(curves[i]);
        ++kept;
    }
    curves.resize(kept);
}

class Profile {
  public:
    Profile(const SightPlane& plane, const ProfileOptions& options)
        : mPlane(plane), mOptions(options), mSight(plane.towardsEye) {}

    void AddSight(const TopoDS_Shape& solid) {
        if (!mOptions.partHidden) return;
        TopTools_IndexedMapOfShape faces;
        TopExp::MapShapes(solid, TopAbs_FACE, faces);
        for (int i = 1; i <= faces.Extent(); ++i) mSight.Add(TopoDS::Face(faces(i)));
    }

    void AddCurves(const TopoDS_Shape& solid) {
        TopTools_IndexedDataMapOfShapeListOfShape facesOfEdge;
        TopExp::MapShapesAndAncestors(solid, TopAbs_EDGE, TopAbs_FACE, facesOfEdge);
        for (int i = 1; i <= facesOfEdge.Extent(); ++i)
            AddEdge(TopoDS::Edge(facesOfEdge.FindKey(i)), facesOfEdge(i));
        TopTools_IndexedMapOfShape faces;
        TopExp::MapShapes(solid, TopAbs_FACE, faces);
        for (int i = 1; i <= faces.Extent(); ++i) {
            for (const HostGeometry& outline : OutlinesOf(TopoDS::Face(faces(i)), mPlane.towardsEye))
                AddOutline(outline);
        }
    }

    ProfileCurves Take() {
        WithWholeRounds(mCurves.visible);
        WithWholeRounds(mCurves.hidden);
        return std::move(mCurves);
    }

  private:
    void AddEdge(const TopoDS_Edge& edge, const TopTools_ListOfShape& faces) {
        if (BRep_Tool::Degenerated(edge)) return;
        const std::optional<HostGeometry> curve = CurveOf(edge, mPlane.towardsEye);
        if (!curve) return;
        const std::optional<HostGeometry> image = Flattened(*curve, mPlane);
        if (!image) return;
        const EdgePoint at = PointOn(edge);
        if (!Counts(edge, faces, at)) return;
        Put(mOptions.flat ? *image : *curve, at.point, at.along);
    }

    /// Neither a seam nor, where they aren't wanted, a smooth passage from face to face; but where such a
    /// passage is also the outline of the part, the view shows it.
    bool Counts(const TopoDS_Edge& edge, const TopTools_ListOfShape& faces, const EdgePoint& at) const {
        if (faces.Extent() < 2) return true;
        const TopoDS_Face first = TopoDS::Face(faces.First()), last = TopoDS::Face(faces.Last());
        if (first.IsSame(last)) return !BRep_Tool::IsClosed(edge, first);
        if (!mOptions.withoutTangent) return true;
        bool firstFlat = false, lastFlat = false;
        const Point3 one = NormalAt(first, edge, at, firstFlat), other = NormalAt(last, edge, at, lastFlat);
        if (one == Point3{} || other == Point3{} || Length(Cross(one, other)) > Smooth) return true;
        return !(firstFlat && lastFlat) && std::abs(Dot(one, mPlane.towardsEye)) < Upright;
    }

    void AddOutline(const HostGeometry& outline) {
        const std::optional<HostGeometry> image = Flattened(outline, mPlane);
        if (!image) return;
        Point3 point, along;
        if (const auto* line = std::get_if<LineData>(&outline)) {
            point = line->start + (line->end - line->start) * LookedAt;
            along = Unit(line->end - line->start);
        } else {
            const auto* circle = std::get_if<CircleData>(&outline);
            const auto* arc = std::get_if<ArcData>(&outline);
            const ArcData round =
                arc != nullptr ? *arc : ArcData{circle->center, circle->radius, 0, 0, 0, circle->normal};
            const Axes axes = ObjectAxes(round.normal);
            double span = NormalAngle(round.endAngle - round.startAngle);
            if (span == 0) span = FullTurn;
            const double angle = round.startAngle + span * LookedAt;
            point = OnCircle(round.center, round.radius, axes, angle);
            along = Unit(Cross(axes.z, point - round.center));
        }
        Put(mOptions.flat ? *image : outline, point, along);
    }

    void Put(const HostGeometry& curve, const Point3& point, const Point3& along) {
        const bool seen = !mOptions.partHidden || mSight.Sees(point, along);
        if (!(seen ? mSeen : mHidden).insert(KeyOf(curve)).second) return;
        (seen ? mCurves.visible : mCurves.hidden).push_back(curve);
    }

    /// A full round made of pieces may have come whole as well.
    static void WithWholeRounds(std::vector<HostGeometry>& curves) {
        const std::size_t before = curves.size();
        JoinRounds(curves);
        if (curves.size() == before) return;
        std::set<CurveKey> met;
        std::erase_if(curves, [&](const HostGeometry& curve) { return !met.insert(KeyOf(curve)).second; });
    }

    SightPlane mPlane;
    ProfileOptions mOptions;
    SightLines mSight;
    ProfileCurves mCurves;
    std::set<CurveKey> mSeen, mHidden;
};

}  // namespace

ProfileCurves ProfileOf(std::span<const TopoDS_Shape> shapes, const SightPlane& plane,
                        const ProfileOptions& options) {
    return solids::Guarded("drawing a profile", [&] {
        Profile profile({plane.origin, Unit(plane.towardsEye)}, options);
        // All solids first: one may stand before the other.
        for (const TopoDS_Shape& solid : shapes) profile.AddSight(solid);
        for (const TopoDS_Shape& solid : shapes) profile.AddCurves(solid);
        return profile.Take();
    });
}

}  // namespace brenvik

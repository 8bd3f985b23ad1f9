// The test of visibility. Flat faces and upright cones, which most parts consist of, are seen by the outline
// that they show; the modeller is asked for lines through everything else.
#include "drafting_host/document/geometry/sight_lines.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRepBndLib.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <algorithm>
#include <gp_Cone.hxx>
#include <gp_Lin.hxx>

#include "drafting_host/document/geometry/modeller_points.h"
#include "drafting_host/solids/operations.h"

namespace brenvik {

using namespace vectors;

namespace {

/// How far beside an edge the line of sight passes, drawing units: less than the smallest hole that counts.
constexpr double Beside = 1e-5;
/// What stands less than this above an edge is the face that the edge bounds.
constexpr double Clearance = 1e-4;
/// Sine of the slope below which a face counts as standing along the line of sight.
constexpr double Upright = 1e-9;
/// Beyond every drawing.
constexpr double FarAway = 1e10;

void Widen(double value, double& low, double& high) {
    low = std::min(low, value);
    high = std::max(high, value);
}

}  // namespace

SightLines::Flat SightLines::OnView(const Point3& point) const {
    return {Dot(point, mFrame.x), Dot(point, mFrame.y)};
}

void SightLines::AddArc(Cover& cover, const Flat& center, double radius, double start, double end) const {
    // Cut where the arc turns from rising to falling, so that each piece has one point at each height.
    std::vector<double> cuts{start};
    const double first = std::ceil((start - QuarterTurn) / (2 * QuarterTurn));
    for (double turn = QuarterTurn + first * 2 * QuarterTurn; turn < end; turn += 2 * QuarterTurn)
        if (turn > start) cuts.push_back(turn);
    cuts.push_back(end);
    for (std::size_t i = 0; i + 1 < cuts.size(); ++i) {
        const double from = center.y + radius * OfAngle(cuts[i]).sine;
        const double to = center.y + radius * OfAngle(cuts[i + 1]).sine;
        const double side = OfAngle((cuts[i] + cuts[i + 1]) / 2).cosine < 0 ? -1 : 1;
        cover.bows.push_back({center, radius, side, {std::min(from, to), std::max(from, to)}});
    }
}

void SightLines::AddOutline(Cover& cover, const TopoDS_Face& face) const {
    cover.x = cover.y = {HUGE_VAL, -HUGE_VAL};
    cover.top = -HUGE_VAL;
    const auto see = [&](const Point3& point) {
        const Flat flat = OnView(point);
        Widen(flat.x, cover.x.low, cover.x.high);
        Widen(flat.y, cover.y.low, cover.y.high);
        cover.top = std::max(cover.top, Dot(point, mFrame.z));
        return flat;
    };
    for (TopExp_Explorer edges(face, TopAbs_EDGE); edges.More(); edges.Next()) {
        const TopoDS_Edge edge = TopoDS::Edge(edges.Current());
        if (BRep_Tool::Degenerated(edge) || BRep_Tool::IsClosed(edge, face)) continue;
        const BRepAdaptor_Curve curve(edge);
        const double first = curve.FirstParameter(), last = curve.LastParameter();
        const auto at = [&](double t) { return FromModeller(curve.Value(t).XYZ()); };
        if (curve.GetType() == GeomAbs_Line) {
            const Flat from = see(at(first)), to = see(at(last));
            cover.segments.push_back({from, to});
            continue;
        }
        if (curve.GetType() == GeomAbs_Circle) {
            const gp_Circ circle = curve.Circle();
            const Point3 axis = FromModeller(circle.Axis().Direction().XYZ());
            if (Length(Cross(axis, mFrame.z)) < Upright) {
                const Point3 middle = FromModeller(circle.Location().XYZ());
                const double r = circle.Radius();
                see(middle + mFrame.x * r + mFrame.y * r);
                const Flat corner = see(middle - mFrame.x * r - mFrame.y * r);
                const Flat center{corner.x + r, corner.y + r};
                if (last - first >= FullTurn - 1e-9) {
                    cover.discs.push_back({center, r});
                    continue;
                }
                const Point3 x = FromModeller(circle.XAxis().Direction().XYZ());
                const double turn = std::atan2(Dot(x, mFrame.y), Dot(x, mFrame.x));
                const bool behind = Dot(axis, mFrame.z) < 0;
                AddArc(cover, center, r, behind ? turn - last : turn + first,
                       behind ? turn - first : turn + last);
                continue;
            }
        }
        constexpr int pieces = 48;
        Flat before = see(at(first));
        for (int i = 1; i <= pieces; ++i) {
            const Flat next = see(at(first + (last - first) * i / pieces));
            cover.segments.push_back({before, next});
            before = next;
        }
    }
}

std::optional<SightLines::Cover> SightLines::CoverOf(const TopoDS_Face& face, bool& bulges) const {
    const BRepAdaptor_Surface surface(face, false);
    bulges = false;
    Cover cover;
    switch (surface.GetType()) {
        case GeomAbs_Plane: {
            const Point3 normal = FromModeller(solids::NormalOf(face).XYZ());
            const double rise = Dot(normal, mFrame.z);
            if (rise < Upright) return std::nullopt;
            const Point3 on = FromModeller(surface.Plane().Location().XYZ());
            cover.base = Dot(normal, on) / rise;
            cover.slope = {-Dot(normal, mFrame.x) / rise, -Dot(normal, mFrame.y) / rise};
            AddOutline(cover, face);
            return cover;
        }
        case GeomAbs_Cylinder: {
            const Point3 axis = FromModeller(surface.Cylinder().Axis().Direction().XYZ());
            bulges = Length(Cross(axis, mFrame.z)) >= Upright;
            return std::nullopt;
        }
        case GeomAbs_Cone: {
            const gp_Cone cone = surface.Cone();
            const Point3 axis = FromModeller(cone.Axis().Direction().XYZ());
            bulges = Length(Cross(axis, mFrame.z)) >= Upright;
            if (bulges) return std::nullopt;
            const double slant = std::tan(cone.SemiAngle()) * (Dot(axis, mFrame.z) < 0 ? -1 : 1);
            const Point3 apex = FromModeller(cone.Apex().XYZ());
            cover.axis = OnView(apex);
            cover.steepness = 1 / slant;
            cover.base = Dot(apex, mFrame.z);
            AddOutline(cover, face);
            return cover;
        }
        case GeomAbs_Sphere:
        case GeomAbs_Torus:
        case GeomAbs_BezierSurface:
        case GeomAbs_BSplineSurface:
        case GeomAbs_SurfaceOfRevolution:
        case GeomAbs_SurfaceOfExtrusion:
        case GeomAbs_OffsetSurface:
        case GeomAbs_OtherSurface:
            bulges = true;
            return std::nullopt;
    }
    return std::nullopt;
}

void SightLines::AddBulge(const TopoDS_Face& face) {
    Bnd_Box box;
    BRepBndLib::Add(face, box, false);
    if (box.IsVoid()) return;
    Bulge bulge;
    bulge.face = face;
    bulge.x = bulge.y = {HUGE_VAL, -HUGE_VAL};
    bulge.top = -HUGE_VAL;
    const gp_Pnt low = box.CornerMin(), high = box.CornerMax();
    for (int corner = 0; corner < 8; ++corner) {
        const Point3 point{corner & 1 ? high.X() : low.X(), corner & 2 ? high.Y() : low.Y(),
                           corner & 4 ? high.Z() : low.Z()};
        const Flat flat = OnView(point);
        Widen(flat.x, bulge.x.low, bulge.x.high);
        Widen(flat.y, bulge.y.low, bulge.y.high);
        bulge.top = std::max(bulge.top, Dot(point, mFrame.z));
    }
    mBulges.push_back(std::move(bulge));
}

void SightLines::Add(const TopoDS_Face& face) {
    bool bulges = false;
    std::optional<Cover> cover = CoverOf(face, bulges);
    if (cover) mCovers.push_back(std::move(*cover));
    if (bulges) AddBulge(face);
}

bool SightLines::Inside(const Cover& cover, const Flat& p) {
    if (p.x < cover.x.low || p.x > cover.x.high || p.y < cover.y.low || p.y > cover.y.high) return false;
    bool inside = false;
    for (const Disc& disc : cover.discs) {
        const double x = p.x - disc.center.x, y = p.y - disc.center.y;
        if (x * x + y * y < disc.radius * disc.radius) inside = !inside;
    }
    for (const Segment& segment : cover.segments) {
        const Flat &a = segment.from, &b = segment.to;
        if ((a.y <= p.y) == (b.y <= p.y)) continue;
        if (a.x + (b.x - a.x) * ((p.y - a.y) / (b.y - a.y)) > p.x) inside = !inside;
    }
    for (const Bow& bow : cover.bows) {
        if (p.y < bow.y.low || p.y >= bow.y.high) continue;
        const double rise = p.y - bow.center.y;
        const double reach = std::sqrt(std::max(0.0, bow.radius * bow.radius - rise * rise));
        if (bow.center.x + bow.side * reach > p.x) inside = !inside;
    }
    return inside;
}

double SightLines::HeightOf(const Cover& cover, const Flat& p) {
    if (cover.steepness != 0)
        return cover.base + cover.steepness * std::hypot(p.x - cover.axis.x, p.y - cover.axis.y);
    return cover.base + cover.slope.x * p.x + cover.slope.y * p.y;
}

bool SightLines::Covered(const Point3& point, double height) const {
    const Flat p = OnView(point);
    for (const Cover& cover : mCovers) {
        if (cover.top <= height + Clearance || !Inside(cover, p)) continue;
        if (HeightOf(cover, p) > height + Clearance) return true;
    }
    for (const Bulge& bulge : mBulges) {
        if (bulge.top <= height + Clearance) continue;
        if (p.x < bulge.x.low || p.x > bulge.x.high || p.y < bulge.y.low || p.y > bulge.y.high) continue;
        if (!bulge.hits) bulge.hits = std::make_unique<IntCurvesFace_Intersector>(bulge.face, 1e-7);
        const gp_Lin sight(ToModeller(point), gp_Dir(mFrame.z.x, mFrame.z.y, mFrame.z.z));
        bulge.hits->Perform(sight, Clearance, FarAway);
        if (bulge.hits->IsDone() && bulge.hits->NbPnt() > 0) return true;
    }
    return false;
}

bool SightLines::Sees(const Point3& point, const Point3& along) const {
    const double height = Dot(point, mFrame.z);
    const Point3 aside = Unit(Cross(mFrame.z, along)) * Beside;
    return !Covered(point + aside, height) || !Covered(point - aside, height);
}

}  // namespace brenvik

// The size of a face on a ball is the solid angle that its edges go around, summed up from triangles seen
// from the centre with one corner in common; the sum is known but for whole balls.
#include "drafting_host/step/models/ball_faces.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepGProp.hxx>
#include <BRep_Tool.hxx>
#include <GProp_GProps.hxx>
#include <Geom2d_Curve.hxx>
#include <Geom_Curve.hxx>
#include <Geom_SphericalSurface.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>

namespace brenvik::step {
namespace {

constexpr double WholeBall = 4 * std::numbers::pi;
/// Radians: edges that meet at less run on.
constexpr double Corner = 0.3;

gp_XYZ Towards(const gp_XYZ& centre, const gp_Pnt& point) {
    const gp_XYZ away = point.XYZ() - centre;
    return away / std::max(away.Modulus(), 1e-12);
}

/// The angle of the triangle of three directions, positive where they go round to the left seen from outside.
double Triangle(const gp_XYZ& a, const gp_XYZ& b, const gp_XYZ& c) {
    return 2 * std::atan2(a.Dot(b.Crossed(c)), 1 + a.Dot(b) + b.Dot(c) + c.Dot(a));
}

std::vector<gp_Pnt> Walked(const FaceEdge& use) {
    std::vector<gp_Pnt> points = use.samples->Walk();
    if (!use.forward) std::ranges::reverse(points);
    return points;
}

bool MeetInACorner(const std::vector<gp_Pnt>& before, const std::vector<gp_Pnt>& behind) {
    const gp_Vec in(before[before.size() - 2], before.back()), out(behind[0], behind[1]);
    return in.Magnitude() > 1e-9 && out.Magnitude() > 1e-9 && in.Angle(out) > Corner;
}

/// What the edges of a face go around, its seams left out.
class Outline {
  public:
    Outline(const gp_XYZ& centre, const std::vector<std::vector<FaceEdge>>& loops) : mCentre(centre) {
        std::map<const void*, int> balance;
        for (const auto& loop : loops)
            for (const FaceEdge& use : loop) balance[use.edge] += use.forward ? 1 : -1;
        for (const auto& loop : loops) {
            std::vector<std::vector<gp_Pnt>> edges;
            for (const FaceEdge& use : loop)
                if (balance[use.edge] != 0) edges.push_back(Walked(use));
            for (std::size_t i = 0; i < edges.size(); ++i) {
                Take(edges[i]);
                corners =
                    corners || (edges.size() > 1 && MeetInACorner(edges[i], edges[(i + 1) % edges.size()]));
            }
        }
    }

    double angle = 0;
    bool corners = false;
    bool any = false;

  private:
    void Take(const std::vector<gp_Pnt>& points) {
        // A direction that no drawing is likely to use.
        const gp_XYZ common = gp_XYZ(0.3141, -0.5927, 0.7418).Normalized();
        for (std::size_t i = 1; i < points.size(); ++i)
            angle += Triangle(common, Towards(mCentre, points[i - 1]), Towards(mCentre, points[i]));
        any = true;
    }

    gp_XYZ mCentre;
};

/// Half way along an edge, between it and its trace on the face.
double GapAt(const BRepAdaptor_Surface& surface, const TopoDS_Face& face, const TopoDS_Edge& edge) {
    double first = 0, last = 0;
    const Handle(Geom_Curve) curve = BRep_Tool::Curve(edge, first, last);
    if (curve.IsNull()) return 0;
    const gp_Pnt middle = curve->Value((first + last) / 2);
    const Handle(Geom2d_Curve) trace = BRep_Tool::CurveOnSurface(edge, face, first, last);
    if (trace.IsNull()) return 0;
    const gp_Pnt2d angles = trace->Value((first + last) / 2);
    return surface.Value(angles.X(), angles.Y()).Distance(middle);
}

}  // namespace

std::optional<BallFace> TakeBallFace(const FaceSurface& surface,
                                     const std::vector<std::vector<FaceEdge>>& loops, bool sameSense) {
    const auto ball = Handle(Geom_SphericalSurface)::DownCast(surface.Surface());
    if (ball.IsNull() || !AllKnown(loops)) return std::nullopt;
    const Outline outline(ball->Location().XYZ(), loops);
    double angle = outline.any ? std::fmod(sameSense ? outline.angle : -outline.angle, WholeBall) : WholeBall;
    constexpr double nothing = 1e-6;  // radians squared
    if (angle < nothing) angle += WholeBall;
    BallFace face;
    face.area = angle * ball->Radius() * ball->Radius();
    face.bulges = !sameSense && outline.corners && angle > WholeBall / 2 * 1.01;
    return face;
}

BallsMade BallsIn(const TopoDS_Shape& shape) {
    BallsMade made;
    for (TopExp_Explorer explorer(shape, TopAbs_FACE); explorer.More(); explorer.Next()) {
        const TopoDS_Face& face = TopoDS::Face(explorer.Current());
        const BRepAdaptor_Surface surface(face, Standard_False);
        if (surface.GetType() != GeomAbs_Sphere) continue;
        GProp_GProps properties;
        BRepGProp::SurfaceProperties(face, properties);
        made.area += std::abs(properties.Mass());
        for (TopExp_Explorer edge(face, TopAbs_EDGE); edge.More(); edge.Next())
            made.gap = std::max(made.gap, GapAt(surface, face, TopoDS::Edge(edge.Current())));
    }
    return made;
}

}  // namespace brenvik::step

// Picking by exact distances and lines of sight; there is no screen whose pixels would blur them.
#include "drafting_host/command/session/picking.h"

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeVertex.hxx>
#include <BRepExtrema_DistShapeShape.hxx>
#include <BRep_Builder.hxx>
#include <IntCurvesFace_ShapeIntersector.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <gp_Lin.hxx>
#include <limits>
#include <optional>

#include "drafting_host/command/session/command_session.h"
#include "drafting_host/command/session/selection_question.h"
#include "drafting_host/document/geometry/curve_edges.h"
#include "drafting_host/document/geometry/modeller_points.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/solids/guard.h"

namespace brenvik {

using namespace vectors;

namespace {

/// Of a point that lies on an object: nearer to the eye than any line of sight could find.
constexpr double Touching = std::numeric_limits<double>::infinity();

struct FlatBox {
    double left = 0, bottom = 0, right = 0, top = 0;
};

Axes ViewAxes(const Point3& towardsEye, const Point3& up) {
    const Point3 x = Unit(Cross(up, towardsEye));
    return {x, Cross(towardsEye, x), towardsEye};
}

Axes ViewAxes(const CommandSession& session) { return ViewAxes(session.ViewDirection(), session.ViewUp()); }

FlatBox WindowOf(const Axes& view, const Point3& corner, const Point3& opposite) {
    const Point3 a = FromWorld(view, corner), b = FromWorld(view, opposite);
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

/// An entity's box as the view shows it, or null where it has no extent.
std::optional<FlatBox> Shown(const HostEntity& entity, const Axes& view) {
    std::optional<Box3> box;
    try {
        box = entity.GetBoundingBox();
    } catch (const Failure&) {
        return std::nullopt;
    }
    BoxBuilder seen;
    for (const double x : {box->min.x, box->max.x}) {
        for (const double y : {box->min.y, box->max.y})
            for (const double z : {box->min.z, box->max.z}) seen.Add(FromWorld(view, {x, y, z}));
    }
    return FlatBox{seen.Box().min.x, seen.Box().min.y, seen.Box().max.x, seen.Box().max.y};
}

bool Pickable(const HostEntity& entity) {
    const LayerData& layer = entity.LayerObject().Values();
    return entity.Look().visible && layer.on && !layer.frozen;
}

std::optional<TopoDS_Shape> ShapeOf(const HostEntity& entity) {
    if (const auto* shaped = dynamic_cast<const HostShapeEntity*>(&entity)) return shaped->Shape();
    const std::vector<TopoDS_Edge> edges = EdgesOf(entity.Geometry());
    if (edges.empty()) return std::nullopt;
    TopoDS_Compound all;
    const BRep_Builder builder;
    builder.MakeCompound(all);
    for (const TopoDS_Edge& edge : edges) builder.Add(all, edge);
    return all;
}

/// A point within a solid doesn't touch it: its faces are what a pick can see.
bool Touches(const TopoDS_Shape& shape, const TopoDS_Shape& other) {
    const BRepExtrema_DistShapeShape distance(shape, other);
    return distance.IsDone() && distance.Value() <= PointTolerance && !distance.InnerSolution();
}

TopoDS_Shape VertexAt(const Point3& point) { return BRepBuilderAPI_MakeVertex(ToModeller(point)).Vertex(); }

gp_Lin LineOfSight(const Point3& point, const Point3& towardsEye) {
    return {ToModeller(point), gp_Dir(towardsEye.x, towardsEye.y, towardsEye.z)};
}

/// The meeting of a line of sight with faces that is nearest to the eye.
struct Hit {
    double depth = 0;
    TopoDS_Face face;
};

std::optional<Hit> NearestHit(const TopoDS_Shape& shape, const gp_Lin& sight) {
    IntCurvesFace_ShapeIntersector meeting;
    meeting.Load(shape, PointTolerance);
    meeting.Perform(sight, -RealLast(), RealLast());
    std::optional<Hit> nearest;
    for (int i = 1; meeting.IsDone() && i <= meeting.NbPnt(); ++i) {
        if (nearest && meeting.WParameter(i) <= nearest->depth) continue;
        nearest = Hit{meeting.WParameter(i), meeting.Face(i)};
    }
    return nearest;
}

/// How far towards the eye the pick meets the entity, or null where it misses.
std::optional<double> DepthOf(const HostEntity& entity, const Point3& point, const Point3& towardsEye) {
    const std::optional<TopoDS_Shape> shape = ShapeOf(entity);
    // What has no curves to meet (texts, block references) is taken by its box.
    if (!shape) return 0;
    return solids::Guarded("picking", [&]() -> std::optional<double> {
        if (Touches(VertexAt(point), *shape)) return Touching;
        const gp_Lin sight = LineOfSight(point, towardsEye);
        if (TopExp_Explorer(*shape, TopAbs_FACE).More()) {
            const std::optional<Hit> hit = NearestHit(*shape, sight);
            return hit ? std::optional(hit->depth) : std::nullopt;
        }
        constexpr double reach = 1e7;
        const TopoDS_Shape line = BRepBuilderAPI_MakeEdge(sight, -reach, reach).Edge();
        return Touches(line, *shape) ? std::optional(0.0) : std::nullopt;
    });
}

}  // namespace

HostEntity* EntityAt(const CommandSession& session, const Point3& point) {
    const Axes view = ViewAxes(session);
    const Point3 seen = FromWorld(view, point);
    HostEntity* best = nullptr;
    double bestDepth = 0;
    for (HostEntity* entity : session.Document().CurrentSpace().Entities()) {
        const std::optional<FlatBox> box = Pickable(*entity) ? Shown(*entity, view) : std::nullopt;
        if (!box || seen.x < box->left - PointTolerance || seen.x > box->right + PointTolerance ||
            seen.y < box->bottom - PointTolerance || seen.y > box->top + PointTolerance) {
            continue;
        }
        const std::optional<double> depth = DepthOf(*entity, point, view.z);
        if (!depth || (best != nullptr && *depth < bestDepth)) continue;
        best = entity;
        bestDepth = *depth;
    }
    return best;
}

std::vector<HostEntity*> EntitiesInWindow(const CommandSession& session, const Point3& corner,
                                          const Point3& opposite, bool crossing) {
    const Axes view = ViewAxes(session);
    const FlatBox window = WindowOf(view, corner, opposite);
    std::vector<HostEntity*> result;
    for (HostEntity* entity : session.Document().CurrentSpace().Entities()) {
        const std::optional<FlatBox> box = Pickable(*entity) ? Shown(*entity, view) : std::nullopt;
        if (!box) continue;
        const bool within = box->left >= window.left && box->right <= window.right &&
                            box->bottom >= window.bottom && box->top <= window.top;
        const bool meets = box->left <= window.right && box->right >= window.left &&
                           box->bottom <= window.top && box->top >= window.bottom;
        if (crossing ? meets : within) result.push_back(entity);
    }
    return result;
}

bool ShownWithin(const SelectionWindow& window, const Point3& point) {
    const Axes view = ViewAxes(window.towardsEye, window.up);
    const Point3 seen = FromWorld(view, point);
    const FlatBox frame = WindowOf(view, window.corner, window.opposite);
    return seen.x >= frame.left - PointTolerance && seen.x <= frame.right + PointTolerance &&
           seen.y >= frame.bottom - PointTolerance && seen.y <= frame.top + PointTolerance;
}

std::vector<TopoDS_Face> FacesAt(const CommandSession& session, const TopoDS_Shape& solid,
                                 const Point3& point) {
    return solids::Guarded("picking a face", [&] {
        const TopoDS_Shape vertex = VertexAt(point);
        std::vector<TopoDS_Face> faces;
        for (TopExp_Explorer each(solid, TopAbs_FACE); each.More(); each.Next())
            if (Touches(vertex, each.Current())) faces.push_back(TopoDS::Face(each.Current()));
        if (!faces.empty()) return faces;
        if (const auto hit = NearestHit(solid, LineOfSight(point, session.ViewDirection())))
            faces.push_back(hit->face);
        return faces;
    });
}

}  // namespace brenvik

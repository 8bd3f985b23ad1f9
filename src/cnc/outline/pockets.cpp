// Pockets and through routes, distinguished by the first letters of their layers.
#include "cnc/outline/pockets.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include "base/numbers.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/polyline_shape.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/part/operation_layer.h"
#include "cnc/part/run_state.h"
#include "cnc/targets/target_table.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

constexpr int PlaceDecimals = 6;

bool On(const AcadEntity& entity, std::string_view prefix) { return entity.Layer().starts_with(prefix); }

/// What lies over what: the plane place and width of a circle.
struct Round {
    double x = 0, y = 0, diameter = 0;
    friend bool operator==(const Round&, const Round&) = default;
};

Round RoundOf(const AcadCircle& circle) {
    const Point3 center = Rounded(circle.Center(), PlaceDecimals);
    return {center.x, center.y, RoundHalfEven(circle.Diameter(), PlaceDecimals)};
}

/// The same for a contour: its footprint, and the corners, since two shapes that share a footprint may lie
/// side by side in it.
struct Contour {
    Footprint footprint;
    std::vector<PathVertex> corners;

    friend bool operator==(const Contour& a, const Contour& b) {
        return a.footprint == b.footprint &&
               std::ranges::is_permutation(
                   a.corners, b.corners, [](const PathVertex& one, const PathVertex& other) {
                       return NearlyEqual(one.x, other.x) && NearlyEqual(one.y, other.y);
                   });
    }
};

Contour ContourOf(const AcadLWPolyline& polyline) { return {FootprintOf(polyline), VerticesOf(polyline)}; }

/// Distinguishes the paths of a pass: by their names if the target has a word for pockets, else by their
/// depths.
class PathKinds {
  public:
    explicit PathKinds(const RunState& run)
        : mByName(TraitsOf(run.target).firstFamily && run.target != Target::THERM),
          mThickness(run.part.PartThickness) {}

    template <class Kind>
    bool IsRoute(const Kind& path) const {
        if (mByName) return On(path, RoutePrefix);
        return path.Color() != layers::OutlineColor && -path.Thickness() >= mThickness;
    }
    template <class Kind>
    bool IsPocket(const Kind& path, std::string_view prefix) const {
        if (mByName) return On(path, prefix);
        return path.Color() != layers::OutlineColor && path.Thickness() < 0 && -path.Thickness() < mThickness;
    }

  private:
    bool mByName;
    double mThickness;
};

/// Deletes the pockets that look like a through route.
template <class Kind, class Look>
void DropAlike(RunState& run, std::string_view pocketPrefix, const Look& look) {
    const PathKinds kinds(run);
    std::vector<decltype(look(std::declval<const Kind&>()))> routes;
    std::vector<Kind*> pockets;
    for (Kind* path : All<Kind>(*run.part.drawing)) {
        if (kinds.IsRoute(*path)) routes.push_back(look(*path));
        if (kinds.IsPocket(*path, pocketPrefix)) pockets.push_back(path);
    }
    for (Kind* pocket : pockets)
        if (std::ranges::find(routes, look(*pocket)) != routes.end()) pocket->Delete();
}

/// Of the paths that stop inside, deletes those that a deeper one of the same shape cuts along with its own.
template <class Kind, class Look>
void DropShallowTwins(RunState& run, const Look& look) {
    constexpr double sameDepth = 1e-6;
    struct Path {
        Kind* path;
        decltype(look(std::declval<const Kind&>())) shape;
        double depth;
    };
    std::vector<Path> paths;
    for (Kind* path : All<Kind>(*run.part.drawing)) {
        const double depth = -path->Thickness();
        if (path->Color() == layers::OutlineColor || path->Color() == layers::HoleColor) continue;
        if (std::abs(path->Normal().z) > 0.5 && depth > 0 && depth < run.part.PartThickness)
            paths.push_back({path, look(*path), depth});
    }
    for (const Path& path : paths)
        if (std::ranges::any_of(paths, [&](const Path& deeper) {
                return deeper.depth > path.depth + sameDepth && deeper.shape == path.shape;
            }))
            path.path->Delete();
}

/// Of a path: minus its depth.
double ThicknessOf(const AcadEntity& path) {
    if (const auto* circle = dynamic_cast<const AcadCircle*>(&path)) return circle->Thickness();
    return dynamic_cast<const AcadLWPolyline&>(path).Thickness();
}

bool IsPath(const AcadEntity& entity) {
    return dynamic_cast<const AcadLWPolyline*>(&entity) != nullptr ||
           dynamic_cast<const AcadCircle*>(&entity) != nullptr;
}

}  // namespace

void DropPocketsCutThrough(RunState& run) {
    DropAlike<AcadCircle>(run, PathKindText(PathKind::PKS), RoundOf);
    DropAlike<AcadLWPolyline>(run, PathKindText(PathKind::PKC), ContourOf);
}

void DropPocketsCutDeeper(RunState& run) {
    DropShallowTwins<AcadCircle>(run, RoundOf);
    DropShallowTwins<AcadLWPolyline>(run, ContourOf);
}

void ConvertPockets(RunState& run) {
    if (NumberSetting(setting::PocketConversion) != 1) return;
    std::vector<Footprint> routes;
    std::vector<AcadEntity*> pockets;
    for (AcadEntity* entity : All<AcadEntity>(*run.part.drawing)) {
        if (!IsPath(*entity)) continue;
        if (On(*entity, RoutePrefix) && ThicknessOf(*entity) <= -run.part.PartThickness)
            routes.push_back(FootprintOf(*entity));
        if (On(*entity, PathKindText(PathKind::PKC)) || On(*entity, PathKindText(PathKind::PKS)))
            pockets.push_back(entity);
    }
    // A converted pocket is a route too, but whatever encloses it encloses the route inside it as well: one
    // walk finds them all.
    for (AcadEntity* pocket : pockets) {
        const Footprint footprint = FootprintOf(*pocket);
        if (std::ranges::none_of(routes, [&](const Footprint& route) { return footprint.Encloses(route); }))
            continue;
        const std::string layer = std::string(PathKindText(PathKind::RT)) +
                                  pocket->Layer().substr(PathKindText(PathKind::PKC).size());
        EnsureOperationLayer(run, layer);
        pocket->SetLayer(layer);
    }
}

}  // namespace brenvik

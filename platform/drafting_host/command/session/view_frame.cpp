// Up, twist and extents of views.
#include "drafting_host/command/session/view_frame.h"

#include <algorithm>

#include "base/failure.h"
#include "drafting_host/document/geometry/vectors.h"

namespace brenvik {

using namespace vectors;

Point3 UpOf(const ViewportData& view) {
    // An untwisted view has the plane axes that its direction alone gives.
    const Axes axes = ObjectAxes(view.viewDirection);
    const auto [sine, cosine] = OfAngle(view.twist);
    return Unit(axes.y * cosine + axes.x * sine);
}

double TwistOf(const Point3& direction, const Point3& up) {
    const Axes axes = ObjectAxes(direction);
    const double across = Dot(up, axes.x), along = Dot(up, axes.y);
    if (across == 0 && along == 0) return 0;
    return NormalAngle(std::atan2(across, along));
}

void ShowModel(ViewportData& view, HostDocument& document) {
    constexpr double air = 1.05;
    const Point3 z = Unit(view.viewDirection), y = UpOf(view);
    const Point3 x = Cross(y, z);
    BoxBuilder shown;
    for (const HostEntity* entity : document.Model().Entities()) {
        if (!entity->Look().visible || entity->LayerObject().Values().frozen) continue;
        Box3 box;
        try {
            box = entity->GetBoundingBox();
        } catch (const Failure&) {
            continue;  // An entity without an extent takes no room.
        }
        for (int corner = 0; corner < 8; ++corner) {
            const Point3 p{corner & 1 ? box.max.x : box.min.x, corner & 2 ? box.max.y : box.min.y,
                           corner & 4 ? box.max.z : box.min.z};
            const Point3 from = p - view.viewTarget;
            shown.Add(Point3{Dot(from, x), Dot(from, y), 0});
        }
    }
    if (shown.Empty()) return;
    const Box3& box = shown.Box();
    view.viewCenter = {(box.min.x + box.max.x) / 2, (box.min.y + box.max.y) / 2};
    const double wide = box.max.x - box.min.x, high = box.max.y - box.min.y;
    const double shape = view.width > 0 ? view.height / view.width : 1;
    const double height = std::max(high, wide * shape) * air;
    if (height > 0) view.viewHeight = height;
}

void FreezeIn(HostViewport& viewport, HostLayer& layer, bool freeze) {
    ViewportData values = viewport.Values();
    const HandleValue handle = layer.OwnHandle();
    const bool frozen = std::ranges::find(values.frozenLayers, handle) != values.frozenLayers.end();
    if (frozen == freeze) return;
    if (freeze)
        values.frozenLayers.push_back(handle);
    else
        std::erase(values.frozenLayers, handle);
    viewport.SetValues(std::move(values));
}

bool ViewLocked(const HostViewport& viewport) {
    return (viewport.Values().statusFlags & view_status::Locked) != 0;
}

std::vector<HostViewport*> ViewportsOf(HostDocument& document) {
    std::vector<HostViewport*> found;
    for (HostEntity* entity : document.Paper().Entities()) {
        auto* viewport = dynamic_cast<HostViewport*>(entity);
        if (viewport != nullptr && !viewport->IsSheet()) found.push_back(viewport);
    }
    return found;
}

}  // namespace brenvik

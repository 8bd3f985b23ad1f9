// Boxes of edges that touch at one height are brought together, so that a pocket is one box, its inside
// included, and two dados are two.
#include "cnc/holes/level_shapes.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "cnc/drawing/work_layers.h"
#include "cnc/part/lengths.h"

namespace brenvik {

namespace {

constexpr double Touch = 0.0001;

/// Edges of faces, and circles too wide for holes.
bool MayBoundAFloor(const AcadEntity& entity) {
    const std::string layer = entity.Layer();
    return (layer == layers::BrenvikExplode || layer == layers::NextBiggestRegion ||
            layer == layers::RouteCircleHold || layer == layers::RouteCirclePv) &&
           dynamic_cast<const Acad3DSolid*>(&entity) == nullptr;
}

bool MeetInPlan(const Box3& a, const Box3& b) {
    return a.min.x <= b.max.x + Touch && b.min.x <= a.max.x + Touch && a.min.y <= b.max.y + Touch &&
           b.min.y <= a.max.y + Touch;
}

Box3 Both(const Box3& a, const Box3& b) {
    return {{std::min(a.min.x, b.min.x), std::min(a.min.y, b.min.y), a.min.z},
            {std::max(a.max.x, b.max.x), std::max(a.max.y, b.max.y), a.max.z}};
}

}  // namespace

void LevelShapes::Add(Box3 box) {
    // What has grown may touch one that it didn't touch before.
    for (std::size_t i = 0; i < mBoxes.size();) {
        if (std::abs(mBoxes[i].min.z - box.min.z) > Touch || !MeetInPlan(mBoxes[i], box)) {
            ++i;
            continue;
        }
        box = Both(mBoxes[i], box);
        mBoxes.erase(mBoxes.begin() + static_cast<std::ptrdiff_t>(i));
        i = 0;
    }
    mBoxes.push_back(box);
}

LevelShapes LevelShapes::Of(AcadDocument& drawing, const Box3& part) {
    LevelShapes shapes;
    drawing.ModelSpace().ForEach([&](AcadEntity& entity) {
        if (!MayBoundAFloor(entity)) return;
        const Box3 box = entity.GetBoundingBox();
        if (box.max.z - box.min.z < Touch && Less(part.min.z, box.min.z) && Less(box.max.z, part.max.z))
            shapes.Add(box);
    });
    return shapes;
}

bool LevelShapes::Meet(const Point3& center, double diameter) const {
    const double radius = diameter / 2;
    const Box3 circle{{center.x - radius, center.y - radius, center.z},
                      {center.x + radius, center.y + radius, center.z}};
    return std::ranges::any_of(mBoxes, [&](const Box3& shape) {
        return shape.max.z >= center.z - Touch && MeetInPlan(shape, circle);
    });
}

}  // namespace brenvik

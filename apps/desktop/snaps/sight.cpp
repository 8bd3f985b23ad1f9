// Projection along the line of sight.
#include "snaps/sight.h"

namespace brenvik::desktop {

using namespace vectors;

double Apart(const ScreenPlace& a, const ScreenPlace& b) { return std::hypot(a.x - b.x, a.y - b.y); }

double DistanceToLine(const ScreenPlace& place, const ScreenPlace& from, const ScreenPlace& to) {
    const double x = to.x - from.x, y = to.y - from.y;
    const double square = x * x + y * y;
    const double along = square == 0 ? 0 : ((place.x - from.x) * x + (place.y - from.y) * y) / square;
    const double within = std::clamp(along, 0.0, 1.0);
    return Apart(place, {from.x + within * x, from.y + within * y});
}

ScreenPlace Sight::PlaceOf(const Point3& point) const {
    const Point3 seen = point - middle;
    return {width / 2 + Dot(seen, axes.x) / unit, height / 2 - Dot(seen, axes.y) / unit};
}

double Sight::NearnessOf(const Point3& point) const { return Dot(point - middle, axes.z); }

Point3 Sight::PointAt(const ScreenPlace& place) const {
    return middle + axes.x * ((place.x - width / 2) * unit) + axes.y * ((height / 2 - place.y) * unit);
}

}  // namespace brenvik::desktop

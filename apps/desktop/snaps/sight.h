// How a picture without perspective shows the world: from points to pixels and back.
#pragma once

#include "drafting_host/document/geometry/vectors.h"

namespace brenvik::desktop {

/// In pixels of the device, from the upper left corner.
struct ScreenPlace {
    double x = 0, y = 0;
};

double Apart(const ScreenPlace& a, const ScreenPlace& b);
/// From a place to the line between two others, ends included.
double DistanceToLine(const ScreenPlace& place, const ScreenPlace& from, const ScreenPlace& to);

struct Sight {
    /// What the middle of the picture shows.
    Point3 middle;
    /// To the right, upward, and towards the eye.
    vectors::Axes axes;
    /// Drawing units that a pixel shows.
    double unit = 1;
    /// Of the picture, in pixels.
    double width = 0, height = 0;

    ScreenPlace PlaceOf(const Point3& point) const;
    /// The greater, the nearer to the eye; drawing units.
    double NearnessOf(const Point3& point) const;
    /// Of the line of sight at a place, the point in the plane through the middle of the picture.
    Point3 PointAt(const ScreenPlace& place) const;
};

}  // namespace brenvik::desktop

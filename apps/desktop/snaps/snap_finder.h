// Which point of the drawing is meant by a place on the screen.
#pragma once

#include <optional>
#include <vector>

#include "snaps/snap_body.h"

namespace brenvik::desktop {

struct SnapWishes {
    /// Whether ends, middles and so on are wanted, or only what lies under the place itself.
    bool snapping = true;
    /// Whether what lies behind faces counts as well, as where only edges are drawn.
    bool seeThrough = false;
    /// The point given before, from which perpendiculars fall.
    std::optional<Point3> base;
    /// How far from the place a point may lie, in pixels.
    double reach = 10;
};

class SnapFinder {
  public:
    /// What hasn't changed since the last call costs nothing.
    void SetBodies(const std::vector<TopoDS_Shape>& shapes);

    /// The nearest end, middle, centre, intersection or foot of a perpendicular within reach; else the centre
    /// of a round edge at the place; else the face there. Where nothing lies, the point at the place in that
    /// plane through the base, or through the origin, which is square to the world axis nearest to the line
    /// of sight.
    Snap Find(const Sight& sight, const ScreenPlace& place, const SnapWishes& wishes) const;

  private:
    struct Candidate;
    struct NearEdge;

    std::vector<const SnapBody*> BodiesAt(const Sight& sight, const ScreenPlace& place, double reach) const;
    static NearEdge NearestOf(const SnapEdge& edge, const Sight& sight, const ScreenPlace& place);
    bool Hidden(const Sight& sight, const Point3& point) const;
    std::optional<Snap> FindPoint(const Sight& sight, const ScreenPlace& place,
                                  const SnapWishes& wishes) const;
    std::optional<Snap> FindFace(const Sight& sight, const ScreenPlace& place) const;

    std::vector<SnapBody> mBodies;
};

}  // namespace brenvik::desktop

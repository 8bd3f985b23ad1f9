// The shape of a closed lightweight polyline: the way it runs, its sides, its footprint.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "session/ports/host_interface.h"

namespace brenvik {

inline constexpr std::string_view Clockwise = "Clockwise";
inline constexpr std::string_view CounterClockwise = "CounterClockwise";

/// A corner of a polyline, in the polyline's own plane.
struct PathVertex {
    double x = 0, y = 0;
    double bulge = 0;  ///< Of the side that begins here.
};
/// Its corners in order, each with the bulge of the side behind it; the first isn't repeated at the end.
std::vector<PathVertex> VerticesOf(const AcadLWPolyline& polyline);
/// Gives the polyline these corners; there may be more or fewer of them than before.
void SetVertices(AcadLWPolyline& polyline, std::span<const PathVertex> vertices);

/// "Clockwise" or "CounterClockwise" in the polyline's own plane, by the sign of its area, arcs included.
std::string_view DirectionOf(const AcadLWPolyline& polyline);

/// Reverses its direction: the same curve from the same first vertex, with the signs of bulges changed.
void Reverse(AcadLWPolyline& polyline);

/// Reverses it if it runs the other way.
void BringToDirection(AcadLWPolyline& polyline, std::string_view direction);

/// Whether a point is inside the closed path, arcs included. On the path itself the answer may be either.
bool Encloses(std::span<const PathVertex> path, double x, double y);

/// The straight distances between consecutive vertices, the closing side included; an arc counts by its
/// chord.
std::vector<double> SideLengths(const AcadLWPolyline& polyline);

/// The shortest of these, rounded; 0 for a polyline without vertices.
double ShortestSide(const AcadLWPolyline& polyline, int decimals);

/// The bounding box in plan, each value rounded to 6 decimals.
struct Footprint {
    double minX = 0, minY = 0, maxX = 0, maxY = 0;

    /// True when `inner` lies strictly inside on all four sides.
    bool Encloses(const Footprint& inner) const;
    friend bool operator==(const Footprint&, const Footprint&) = default;
};
/// The footprint of an entity of any kind, by its bounding box.
Footprint FootprintOf(const AcadEntity& entity);

}  // namespace brenvik

// Area, direction and footprint of polylines from their vertices and bulges.
#include "cnc/drawing/polyline_shape.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "base/numbers.h"

namespace brenvik {

namespace {

constexpr int FootprintDecimals = 6;

/// Between a chord and its arc; positive where the arc runs counter-clockwise.
double ArcSegmentArea(double chord, double bulge) {
    if (bulge == 0 || chord == 0) return 0;
    const double steepness = std::abs(bulge);
    const double radius = chord * (1 + bulge * bulge) / (4 * steepness);
    const double angle = 4 * std::atan(steepness);
    return std::copysign(radius * radius / 2 * (angle - std::sin(angle)), bulge);
}

/// Positive for a curve that runs counter-clockwise.
double SignedArea(std::span<const PathVertex> vertices) {
    if (vertices.empty()) return 0;
    // Taken about the first vertex, so that a small path far from the origin keeps its digits.
    const PathVertex& origin = vertices.front();
    double doubled = 0, arcs = 0;
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        const PathVertex& from = vertices[i];
        const PathVertex& to = vertices[(i + 1) % vertices.size()];
        doubled += (from.x - origin.x) * (to.y - origin.y) - (to.x - origin.x) * (from.y - origin.y);
        arcs += ArcSegmentArea(std::hypot(to.x - from.x, to.y - from.y), from.bulge);
    }
    return doubled / 2 + arcs;
}

}  // namespace

std::vector<PathVertex> VerticesOf(const AcadLWPolyline& polyline) {
    const std::vector<double> coordinates = polyline.Coordinates();
    std::vector<PathVertex> vertices(coordinates.size() / 2);
    for (std::size_t i = 0; i < vertices.size(); ++i)
        vertices[i] = {coordinates[2 * i], coordinates[2 * i + 1], polyline.GetBulge(static_cast<int>(i))};
    return vertices;
}

void SetVertices(AcadLWPolyline& polyline, std::span<const PathVertex> vertices) {
    std::vector<double> coordinates;
    coordinates.reserve(2 * vertices.size());
    for (const PathVertex& vertex : vertices) {
        coordinates.push_back(vertex.x);
        coordinates.push_back(vertex.y);
    }
    polyline.SetCoordinates(coordinates);
    for (std::size_t i = 0; i < vertices.size(); ++i)
        polyline.SetBulge(static_cast<int>(i), vertices[i].bulge);
}

std::string_view DirectionOf(const AcadLWPolyline& polyline) {
    return SignedArea(VerticesOf(polyline)) < 0 ? Clockwise : CounterClockwise;
}

void Reverse(AcadLWPolyline& polyline) {
    const std::vector<PathVertex> vertices = VerticesOf(polyline);
    const std::size_t count = vertices.size();
    std::vector<PathVertex> reversed(count);
    for (std::size_t i = 0; i < count; ++i) {
        const PathVertex& vertex = vertices[(count - i) % count];
        // The side that leaves this vertex now is the one that came to it before.
        reversed[i] = {vertex.x, vertex.y, -vertices[(2 * count - i - 1) % count].bulge};
    }
    SetVertices(polyline, reversed);
}

void BringToDirection(AcadLWPolyline& polyline, std::string_view direction) {
    if (DirectionOf(polyline) != direction) Reverse(polyline);
}

bool Encloses(std::span<const PathVertex> path, double x, double y) {
    bool within = false;
    for (std::size_t i = 0; i < path.size(); ++i) {
        const PathVertex &from = path[i], &to = path[(i + 1) % path.size()];
        const double dx = to.x - from.x, dy = to.y - from.y;
        // By the straight sides: how often one lies to the right of the point.
        if ((from.y > y) != (to.y > y) && x < from.x + (y - from.y) / dy * dx) within = !within;
        if (from.bulge == 0) continue;
        // Between a chord and its arc it is the other way round.
        const double right = (x - from.x) * dy - (y - from.y) * dx;
        if (right * from.bulge <= 0) continue;
        const double offset = (1 - from.bulge * from.bulge) / (4 * from.bulge);
        const double centerX = (from.x + to.x) / 2 - dy * offset, centerY = (from.y + to.y) / 2 + dx * offset;
        const double radius = std::hypot(from.x - centerX, from.y - centerY);
        if (std::hypot(x - centerX, y - centerY) < radius) within = !within;
    }
    return within;
}

std::vector<double> SideLengths(const AcadLWPolyline& polyline) {
    const std::vector<double> coordinates = polyline.Coordinates();
    const std::size_t count = coordinates.size() / 2;
    std::vector<double> lengths(count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t next = (i + 1) % count;
        lengths[i] = std::hypot(coordinates[2 * next] - coordinates[2 * i],
                                coordinates[2 * next + 1] - coordinates[2 * i + 1]);
    }
    return lengths;
}

bool Footprint::Encloses(const Footprint& inner) const {
    return minX < inner.minX && minY < inner.minY && maxX > inner.maxX && maxY > inner.maxY;
}

double ShortestSide(const AcadLWPolyline& polyline, int decimals) {
    const std::vector<double> sides = SideLengths(polyline);
    return sides.empty() ? 0 : RoundHalfEven(std::ranges::min(sides), decimals);
}

Footprint FootprintOf(const AcadEntity& entity) {
    const Box3 box = entity.GetBoundingBox();
    const auto rounded = [](double value) { return RoundHalfEven(value, FootprintDecimals); };
    return {rounded(box.min.x), rounded(box.min.y), rounded(box.max.x), rounded(box.max.y)};
}

}  // namespace brenvik

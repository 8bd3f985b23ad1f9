// The cubic through points: slopes at the points from a system of three diagonals, control points from the
// slopes.
#include "drafting_host/dwg/fitted_spline.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "session/ports/point_arithmetic.h"

namespace brenvik::dwg {

using namespace vectors;

namespace {

/// The steps of the parameter between the points; empty where one would be none.
std::vector<double> StepsOf(const std::vector<Point3>& points, KnotKind kind) {
    std::vector<double> steps;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const double chord = Length(points[i] - points[i - 1]);
        if (!(chord > 0)) return {};
        steps.push_back(kind == KnotKind::Uniform      ? 1
                        : kind == KnotKind::SquareRoot ? std::sqrt(chord)
                                                       : chord);
    }
    return steps;
}

/// The derivatives at the points.
std::vector<Point3> SlopesOf(const std::vector<Point3>& points, const std::vector<double>& steps,
                             const FitEnds& ends) {
    const std::size_t last = points.size() - 1;
    std::vector<double> below(points.size(), 0), middle(points.size(), 1), above(points.size(), 0);
    std::vector<Point3> right(points.size());
    right.front() = ends.start;
    right.back() = ends.end;
    if (IsZero(ends.start)) {
        middle.front() = 2;
        above.front() = 1;
        right.front() = (points[1] - points[0]) * (3 / steps.front());
    }
    if (IsZero(ends.end)) {
        middle.back() = 2;
        below.back() = 1;
        right.back() = (points[last] - points[last - 1]) * (3 / steps.back());
    }
    for (std::size_t i = 1; i < last; ++i) {
        const double before = steps[i - 1], behind = steps[i];
        below[i] = behind;
        middle[i] = 2 * (before + behind);
        above[i] = before;
        right[i] = (points[i] - points[i - 1]) * (3 * behind / before) +
                   (points[i + 1] - points[i]) * (3 * before / behind);
    }
    for (std::size_t i = 1; i <= last; ++i) {
        const double share = below[i] / middle[i - 1];
        middle[i] -= share * above[i - 1];
        right[i] = right[i] - right[i - 1] * share;
    }
    std::vector<Point3> slopes(points.size());
    slopes[last] = right[last] * (1 / middle[last]);
    for (std::size_t i = last; i-- > 0;) slopes[i] = (right[i] - slopes[i + 1] * above[i]) * (1 / middle[i]);
    return slopes;
}

}  // namespace

bool FitThroughPoints(SplineData& spline, const FitEnds& ends) {
    const std::vector<Point3>& points = spline.fitPoints;
    if (points.size() < 2 || ends.isClosed || ends.kind == KnotKind::Own) return false;
    const std::vector<double> steps = StepsOf(points, ends.kind);
    if (steps.empty()) return false;
    const std::vector<Point3> slopes = SlopesOf(points, steps, ends);
    constexpr int cubic = 3;
    std::vector<double> knots(cubic, 0.0);
    double parameter = 0;
    knots.push_back(parameter);
    for (const double step : steps) knots.push_back(parameter += step);
    knots.insert(knots.end(), cubic, parameter);
    std::vector<Point3> controls{points.front(), points.front() + slopes.front() * (steps.front() / 3)};
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        // Two inner control points of the piece behind point i; the spline's own lies on their line, before
        // the first by as much as the piece before is long.
        const Point3 first = points[i] + slopes[i] * (steps[i] / 3);
        const Point3 second = points[i + 1] - slopes[i + 1] * (steps[i] / 3);
        controls.push_back(first - (second - first) * (steps[i - 1] / steps[i]));
    }
    controls.push_back(points.back() - slopes.back() * (steps.back() / 3));
    controls.push_back(points.back());
    spline.degree = cubic;
    spline.knots = std::move(knots);
    spline.controlPoints = std::move(controls);
    spline.fitPoints.clear();
    return true;
}

void MarkFlatness(SplineData& spline) {
    constexpr int flagPlanar = 8, flagLinear = 16;
    constexpr double flat = 1e-9;
    const std::vector<Point3>& points = spline.controlPoints;
    if (points.size() < 2) return;
    Point3 along, normal;
    for (const Point3& point : points) {
        const Point3 step = point - points.front();
        if (Length(step) > Length(along)) along = step;
    }
    for (const Point3& point : points) {
        const Point3 across = Cross(along, point - points.front());
        if (Length(across) > Length(normal)) normal = across;
    }
    const double size = Length(along);
    if (Length(normal) <= flat * size * size) {
        spline.flags |= flagPlanar | flagLinear;
        return;
    }
    normal = normal * (1 / Length(normal));
    const bool isPlanar = std::ranges::all_of(points, [&](const Point3& point) {
        return std::abs(Dot(point - points.front(), normal)) <= flat * size;
    });
    if (!isPlanar) return;
    spline.flags |= flagPlanar;
    // Upwards where there is an upwards.
    const bool isTurned = normal.z < -flat || (std::abs(normal.z) <= flat && normal.y < -flat);
    if (isTurned) normal = normal * -1;
    const auto settled = [](double value) { return std::abs(value) < flat ? 0.0 : value; };
    normal = {settled(normal.x), settled(normal.y), settled(normal.z)};
    if (normal.x == 0 && normal.y == 0) normal.z = 1;
    spline.normal = normal;
}

}  // namespace brenvik::dwg

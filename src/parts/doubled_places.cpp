#include "parts/doubled_places.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>

namespace brenvik {
namespace {

double Span(const Box3& box) {
    return std::max({box.max.x - box.min.x, box.max.y - box.min.y, box.max.z - box.min.z});
}

/// Along a direction that no row or grid of parts follows, so that few boxes share a sum.
double SlantedSum(const Box3& box) {
    return box.min.x + 0.618 * box.min.y + 0.414 * box.min.z + 0.733 * box.max.x + 0.271 * box.max.y +
           0.577 * box.max.z;
}

/// Of coordinates as programs write them, with six or more decimals.
constexpr double Tolerance = 1e-5;

bool IsNear(const Point3& one, const Point3& other) {
    return std::abs(one.x - other.x) <= Tolerance && std::abs(one.y - other.y) <= Tolerance &&
           std::abs(one.z - other.z) <= Tolerance;
}

/// Boxes may differ by the noise of either corner, and volumes by that of a face moved by as much.
bool AreInOnePlace(const PlacedSize& one, const PlacedSize& other) {
    if (!IsNear(one.box.min, other.box.min) || !IsNear(one.box.max, other.box.max)) return false;
    const double volume = one.volume();
    const double span = Span(one.box);
    const double noise = Tolerance * span * span;
    return std::abs(volume - other.volume()) <= noise && IsNear(one.centroid(), other.centroid());
}

}  // namespace

std::vector<DoubledPlace> DoubledPlaces(const std::vector<PlacedSize>& solids) {
    constexpr double window = 4 * Tolerance;  // the weights of the sum come to less than 4
    std::vector<double> sums;
    for (const PlacedSize& solid : solids) sums.push_back(SlantedSum(solid.box));
    std::vector<std::size_t> order(solids.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, {}, [&](std::size_t solid) { return sums[solid]; });
    std::vector<std::optional<std::size_t>> firsts(solids.size());
    for (std::size_t at = 0; at < order.size(); ++at) {
        if (firsts[order[at]]) continue;
        std::vector<std::size_t> group{order[at]};
        for (std::size_t next = at + 1; next < order.size(); ++next) {
            if (sums[order[next]] - sums[order[at]] > window) break;
            if (!firsts[order[next]] && AreInOnePlace(solids[order[at]], solids[order[next]]))
                group.push_back(order[next]);
        }
        const std::size_t first = *std::ranges::min_element(group);
        for (const std::size_t solid : group) firsts[solid] = first;
    }
    std::vector<DoubledPlace> doubled;
    for (std::size_t solid = 0; solid < firsts.size(); ++solid)
        if (*firsts[solid] != solid) doubled.push_back({solid, *firsts[solid]});
    return doubled;
}

}  // namespace brenvik

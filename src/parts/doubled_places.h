// Solids that stand in one another: a copy left in its place by a slip of the hand, which a list counts and a
// run cuts like any other part.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "session/ports/host_interface.h"

namespace brenvik {

/// A solid's place and size. Volume and centroid are asked for only where boxes agree, since they cost an
/// integration over all faces.
struct PlacedSize {
    Box3 box;
    std::function<double()> volume;
    std::function<Point3()> centroid;
};

/// A solid that fills the place of an earlier one: places in the list of sizes.
struct DoubledPlace {
    std::size_t solid = 0, first = 0;
};

/// The solids whose box, volume and centroid are those of an earlier one, in the order of the list. Two
/// halves of a board cut along its diagonal share box and volume, but not the centroid.
std::vector<DoubledPlace> DoubledPlaces(const std::vector<PlacedSize>& solids);

}  // namespace brenvik

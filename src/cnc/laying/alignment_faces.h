// The flat faces of a part, from a copy that is exploded into a region for each: the largest, on which the
// part is to lie, and the largest one opposite it.
#pragma once

#include <optional>
#include <vector>

#include "session/ports/host_interface.h"

namespace brenvik {

/// A region as the search sees it.
struct FlatFace {
    AcadRegion* region = nullptr;
    double area = 0;       ///< Rounded to 6 decimals.
    Point3 normal;         ///< As the host gives it.
    Point3 roundedNormal;  ///< Its components rounded to 4 decimals.
};

struct FlatFaces {
    FlatFace LargestRegion, SmallestRegion, NextRegion;
};

/// Puts a copy of the solid on `BrenvikExplode`, made out of reach of the rest by locks, and explodes it.
/// Adds `Region`; every layer is unlocked afterwards.
void ExplodeCopyToFaces(AcadDocument& drawing, Acad3DSolid& solid);

/// The largest and the smallest flat face, the first of equal ones. `NextRegion` is the first region of all
/// then. Regions that the host won't measure are passed over; null if there is none.
std::optional<FlatFaces> FindLargestFace(AcadDocument& drawing);

/// The same with the face that lies against the largest. Where no face does, `NextRegion` is the first
/// region of all, which may be the largest itself.
std::optional<FlatFaces> FindFaces(AcadDocument& drawing);

}  // namespace brenvik

// Level sections of a solid, exact and cheap: what stands at a height, as sides in plan. A solid that is held
// outlives its drawing.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "session/ports/host_interface.h"

namespace brenvik {

struct PlanPoint {
    double x = 0, y = 0;
};

/// A straight side from one point to another, or a round one: the bulge is the tangent of a quarter of its
/// angle, positive when it runs counter-clockwise.
struct PlanSide {
    PlanPoint from, to;
    double bulge = 0;
};

/// A span of heights.
struct HeightSpan {
    double low = 0, high = 0;
};

/// A round wall that lies level: the wall of an edge bore, or the floor of a round groove.
struct LevelRound {
    Point3 on;  ///< On its axis.
    Point3 along;
    double radius = 0;
    bool hollow = false;  ///< Wood lies outside of it.
};

class SolidSections {
  public:
    virtual ~SolidSections() = default;
    virtual Box3 Box() const = 0;
    /// The heights at which the section may change its shape, ascending.
    virtual const std::vector<double>& Levels() const = 0;
    /// Where faces that aren't upright stand: there the section changes between levels too.
    virtual const std::vector<HeightSpan>& Slopes() const = 0;
    virtual const std::vector<LevelRound>& Rounds() const = 0;
    /// The boundary of the section at a height between levels: sides in no order, inside and outside by even
    /// and odd. Free curves come in short chords. Throws Failure where the section can't be taken.
    virtual std::vector<PlanSide> At(double height) const = 0;
};

class SectionPort {
  public:
    virtual ~SectionPort() = default;
    /// Null for an object that is no solid. Throws Failure for a solid that can't be looked at.
    virtual std::unique_ptr<SolidSections> HoldSolid(std::int32_t objectId) = 0;
};

}  // namespace brenvik

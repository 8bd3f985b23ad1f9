// A closed shape in plan, asked point by point. Rounds are taken in chords that stray by a few thousandths.
#pragma once

#include <vector>

#include "cnc/made_part.h"

namespace brenvik::corpus {

struct Spot {
    double x = 0, y = 0;
};

class Figure {
  public:
    explicit Figure(const Shape& shape);

    bool Contains(const Spot& spot) const;
    double DistanceToRim(const Spot& spot) const;
    /// Whether the rim may be nearer than `distance`; cheap.
    bool MayBeNear(const Spot& spot, double distance) const;

    const std::vector<Spot>& Corners() const { return mCorners; }
    /// Spots as far off the rim as that on both of its sides, some along each side of the shape.
    std::vector<Spot> Beside(double distance) const;
    Spot Low() const { return mLow; }
    Spot High() const { return mHigh; }

  private:
    std::vector<Spot> mCorners;
    std::vector<std::size_t> mSides;  ///< Where in the corners each side of the shape begins.
    Spot mLow, mHigh;
};

Shape Circle(double x, double y, double diameter);

}  // namespace brenvik::corpus

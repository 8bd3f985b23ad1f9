// A part as slabs between neighbouring heights at which its section changes, and the areas of the plan that
// the part covers above each of them.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "cnc/clearing/plan_region.h"

namespace brenvik {

/// In millimetres: by how much heights of operations are off, since names have two decimals.
inline constexpr double SameFloor = 0.011;

/// Wood in the plan.
struct PlanWood {
    std::vector<PlanSide> sides;
    std::shared_ptr<const PlanField> field;
    bool Holds(const PlanPoint& point) const { return field->Holds(point); }
};

/// Whether what a path removes takes more of the wood than a path that is being made may.
bool TouchesWood(const PlanWood& wood, const PlanLoop& path, double unit);

struct PartSlab {
    double low = 0, high = 0;
    bool sloped = false;
    /// The part's section just below the slab; empty for the lowest.
    std::optional<PlanWood> floor;
    /// All wood of this slab and of those above it.
    PlanWood shadow;
};

class PartSlabs {
  public:
    /// Heights closer than a hundredth of a millimetre (`unit`) are one. With `fromBelow` the part is looked
    /// at from below: slabs come from the highest down, the "floor" is what hangs above a slab.
    PartSlabs(const SolidSections& part, double unit, bool fromBelow = false);

    /// From the side that is looked at last to the first.
    const std::vector<PartSlab>& Slabs() const { return mSlabs; }
    /// The one whose lower end is a floor at this height, or null.
    const PartSlab* SlabFrom(double floor) const;
    /// The area inside the part's outermost border.
    const PlanWood& Stock() const { return mStock; }
    double Same() const { return mSame; }

  private:
    std::vector<double> LevelsOf(const SolidSections& part) const;
    PlanWood WoodOf(std::vector<PlanSide> sides) const;
    PlanWood Both(const PlanWood& one, const PlanWood& other) const;

    double mUnit, mSame;
    std::vector<PartSlab> mSlabs;
    PlanWood mStock;
};

}  // namespace brenvik

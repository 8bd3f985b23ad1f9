// Decides from the circles on one vertical axis what kind of bore it is.
#pragma once

#include "session/ports/host_interface.h"

namespace brenvik {

/// A circle of a wide bore, with its values as they stood when the sorting began.
struct RouteRim {
    AcadCircle* circle = nullptr;
    Point3 center;
    double diameter = 0;
    std::size_t axis = 0;
    bool held = true;  ///< Still on `RouteCircleHold`.
};

/// What a row of the table does with the circles of an axis.
struct BorePlan {
    enum class Through { None, Bottom, Top };
    Through through = Through::None;
    bool pocket = false;  ///< M2 becomes the floor of a pocket.
    bool dropB = false, dropM1 = false, dropM2 = false, dropT = false;
    bool otherSide = true;    ///< The rest is cut from the underside.
    bool impossible = false;  ///< No circle lies opposite this one.
};

/// The slots of one round. What a slot holds outlives the round, and `has…` says whether this round filled
/// it.
class BoreLevels {
  public:
    /// Empties the slots for a circle B on the underside.
    void Begin(const RouteRim& bottom);
    /// A further circle on B's axis, in drawing order.
    void TakeTop(RouteRim& rim);
    void TakeBetween(RouteRim& rim);

    /// The row of the table for what was found.
    BorePlan Plan() const;

    RouteRim *M1 = nullptr, *M2 = nullptr, *T = nullptr;

  private:
    BorePlan PlanThroughStep() const;
    void TakeBesideM1(RouteRim& rim, bool same);
    void TakeBesideM2(RouteRim& rim, bool same);
    void PutM1(RouteRim& rim);
    void PutM2(RouteRim& rim);

    const RouteRim* mBottom = nullptr;
    bool mHasM1 = false, mHasM2 = false, mHasT = false;
};

}  // namespace brenvik

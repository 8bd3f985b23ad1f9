// Decides from the circles on one vertical axis what kind of bore it is.
//
// B is the circle on the underside, T the one in the top face. M1 and M2 are two of those between them: M1
// mostly the lowest of B's diameter, M2 mostly one of another diameter, or the highest of B's (the rules are
// in `TakeBetween`). A row of the table follows from which of them there are:
//
//     M2   M1   T    and                           becomes
//     yes  yes  yes  B narrower than T, M2 above   M2 the floor of a pocket; B, M1, T go
//     yes  yes  yes  B narrower than T, otherwise  B a through route, M2 a pocket's floor; M1, T go
//     yes  yes  yes  B wider than T, M2 level      T, moved to the underside, a through route; B, M1, M2 go
//     yes  yes  yes  B wider than T, otherwise     M2 a pocket's floor; B, M1, T go
//     yes  yes  yes  B as wide as T                M2 a pocket's floor; B, M1, T go
//     yes  any  no                                 B, M1, M2 go
//     yes  no   yes                                M2 a pocket's floor; T goes
//     no   yes  any                                B, M1, T go
//     no   no   yes                                B a through route; T goes
//     no   no   no                                 nothing: no circle lies opposite B
//
// "Above" and "level" are M2 against M1. All rows but the last two ask for the part's other side, from which
// the rest is cut.
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
    enum class Through { None, B, T };
    Through through = Through::None;  ///< The circle that becomes a through route.
    bool pocket = false;              ///< M2 becomes the floor of a pocket.
    bool dropB = false, dropM1 = false, dropM2 = false, dropT = false;
    bool otherSide = true;    ///< The rest is cut from the underside.
    bool impossible = false;  ///< No circle lies opposite B.
};

/// The circles of one axis after the other, by the table's names. A slot keeps its circle when the next axis
/// begins; `mHas…` says whether that axis has filled it.
class BoreLevels {
  public:
    /// Begins the axis of a circle on the underside.
    void Begin(const RouteRim& rimB);
    /// A further circle on B's axis, in drawing order.
    void TakeTop(RouteRim& rim);
    void TakeBetween(RouteRim& rim);

    /// The row for what was found.
    BorePlan Plan() const;

    RouteRim *M1 = nullptr, *M2 = nullptr, *T = nullptr;

  private:
    BorePlan PlanOfAllFour() const;
    void TakeBesideM1(RouteRim& rim, bool same);
    void TakeBesideM2(RouteRim& rim, bool same);
    void PutM1(RouteRim& rim);
    void PutM2(RouteRim& rim);

    const RouteRim* mB = nullptr;
    bool mHasM1 = false, mHasM2 = false, mHasT = false;
};

}  // namespace brenvik

// The slot that each circle takes, and the row of the table that then applies.
#include "cnc/sorting/bore_levels.h"

#include "cnc/part/lengths.h"

namespace brenvik {

void BoreLevels::Begin(const RouteRim& rimB) {
    mB = &rimB;
    mHasM1 = mHasM2 = mHasT = false;
}

void BoreLevels::PutM1(RouteRim& rim) {
    M1 = &rim;
    mHasM1 = true;
}

void BoreLevels::PutM2(RouteRim& rim) {
    M2 = &rim;
    mHasM2 = true;
}

void BoreLevels::TakeTop(RouteRim& rim) {
    T = &rim;
    mHasT = true;
}

void BoreLevels::TakeBetween(RouteRim& rim) {
    const bool same = SameLength(rim.diameter, mB->diameter);
    if (!mHasM1 && !mHasM2) {
        if (same)
            PutM1(rim);
        else
            PutM2(rim);
    } else if (!mHasM2) {
        TakeBesideM1(rim, same);
    } else if (!mHasM1) {
        TakeBesideM2(rim, same);
    } else if (!same) {
        PutM2(rim);
    } else if (Less(rim.center.z, M1->center.z)) {
        PutM1(rim);
    } else if (Less(M2->center.z, rim.center.z)) {
        PutM2(rim);
    }
}

void BoreLevels::TakeBesideM1(RouteRim& rim, bool same) {
    if (!same) {
        PutM2(rim);
    } else if (Less(rim.center.z, M1->center.z)) {
        PutM2(*M1);
        PutM1(rim);
    } else if (Less(M1->center.z, rim.center.z)) {
        PutM2(rim);
    }
}

void BoreLevels::TakeBesideM2(RouteRim& rim, bool same) {
    if (same && Less(M2->center.z, rim.center.z)) {
        PutM1(*M2);
        PutM2(rim);
    } else {
        PutM1(rim);
    }
}

BorePlan BoreLevels::PlanOfAllFour() const {
    const bool narrower = Less(mB->diameter, T->diameter);
    const bool wider = Less(T->diameter, mB->diameter);
    BorePlan plan{.dropM1 = true};
    if (narrower && !Less(M1->center.z, M2->center.z)) {
        plan.through = BorePlan::Through::B;
        plan.dropT = plan.pocket = true;
    } else if (wider && SameLength(M2->center.z, M1->center.z)) {
        plan.through = BorePlan::Through::T;
        plan.dropB = plan.dropM2 = true;
    } else {
        plan.dropB = plan.dropT = plan.pocket = true;
    }
    return plan;
}

BorePlan BoreLevels::Plan() const {
    if (mHasM2 && mHasM1 && mHasT) return PlanOfAllFour();
    // If this round found no M1, the slot still names an earlier round's circle. That circle is gone;
    // deleting it fails, harmlessly.
    if (mHasM2 && !mHasT) return {.dropB = true, .dropM1 = true, .dropM2 = true};
    if (mHasM2) return {.pocket = true, .dropT = true};
    if (mHasM1) return {.dropB = true, .dropM1 = true, .dropT = mHasT};
    if (mHasT) return {.through = BorePlan::Through::B, .dropT = true, .otherSide = false};
    return {.otherSide = false, .impossible = true};
}

}  // namespace brenvik

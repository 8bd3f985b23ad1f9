// The account of the circles of vertical holes, over both passes of a part.
#include "cnc/holes/hole_account.h"

#include <algorithm>

#include "cnc/drawing/drawing_walk.h"
#include "cnc/part/lengths.h"
#include "cnc/part/second_side.h"
#include "cnc/part/told.h"

namespace brenvik {

namespace {

/// The highest represents its axis; of several at one height, the widest.
bool TellsLess(const HoleCircle& a, const HoleCircle& b) {
    if (!SameLength(a.center.z, b.center.z)) return a.center.z < b.center.z;
    return a.diameter < b.diameter;
}

}  // namespace

bool OnOneAxis(const HoleCircle& a, const HoleCircle& b) {
    return SameLength(a.center.x, b.center.x) && SameLength(a.center.y, b.center.y);
}

HoleAccount::HoleAccount(RunState& run, const Box3& part) : mRun(run), mPart(part) {
    if (!run.FirstPass()) return;
    run.firstSide.holes.clear();
    run.firstSide.reported.clear();
}

void HoleAccount::Remember(std::vector<DrilledHole>& list, const DrilledHole& hole) {
    if (mRun.FirstPass()) list.push_back(hole);
}

void HoleAccount::AddDrilled(const HoleCircle& rim, double floorZ) {
    mDrilled.push_back({rim.center.x, rim.center.y, rim.diameter, rim.center.z, floorZ});
    Remember(mRun.firstSide.holes, mDrilled.back());
}

void HoleAccount::AddGivenAway(const HoleCircle& circle) {
    mGivenAway.push_back(circle);
    NeedOtherSide(mRun);
}

void HoleAccount::AddPin(const HoleCircle& end, double baseZ) {
    mPins.push_back({end.center.x, end.center.y, end.diameter, end.center.z, baseZ});
}

bool HoleAccount::DrilledOnFirstSide(const HoleCircle& rim, double floorZ) const {
    if (mRun.FirstPass()) return false;
    const Point3& here = rim.center;
    const Point3 start = OnFirstSide(mRun, mPart, {here.x, here.y, floorZ});
    const Point3 end = OnFirstSide(mRun, mPart, here);
    return std::ranges::any_of(mRun.firstSide.holes, [&](const DrilledHole& hole) {
        return NearlyEqual(hole.x, start.x) && NearlyEqual(hole.y, start.y) &&
               NearlyEqual(hole.diameter, rim.diameter) && NearlyEqual(hole.rimZ, start.z) &&
               NearlyEqual(hole.floorZ, end.z);
    });
}

/// The bit comes down from the top plane, so it takes whatever is no wider above the floor.
bool HoleAccount::DrilledHere(const HoleCircle& circle) const {
    return std::ranges::any_of(mDrilled, [&](const DrilledHole& hole) {
        return SameLength(hole.x, circle.center.x) && SameLength(hole.y, circle.center.y) &&
               !Less(hole.diameter, circle.diameter) && !Less(circle.center.z, hole.floorZ);
    });
}

bool HoleAccount::KnownFromFirstSide(const HoleCircle& circle) const {
    if (mRun.FirstPass()) return false;
    const Point3 seen = OnFirstSide(mRun, mPart, circle.center);
    const auto holds = [&](const DrilledHole& hole) {
        const auto atMost = [](double a, double b) { return a < b || NearlyEqual(a, b); };
        return NearlyEqual(hole.x, seen.x) && NearlyEqual(hole.y, seen.y) &&
               atMost(circle.diameter, hole.diameter) && atMost(hole.floorZ, seen.z);
    };
    return std::ranges::any_of(mRun.firstSide.holes, holds) ||
           std::ranges::any_of(mRun.firstSide.reported, [&](const DrilledHole& told) {
               return holds(told) && (seen.z < told.rimZ || NearlyEqual(seen.z, told.rimZ));
           });
}

void HoleAccount::TellAxis(std::span<const HoleCircle> circles) {
    const HoleCircle& first = *std::ranges::max_element(circles, TellsLess);
    NoteUnexplained(mRun, mPart, "hole", first.diameter, first.center);
    DrilledHole told{first.center.x, first.center.y, first.diameter, first.center.z, first.center.z};
    const auto take = [&told](const HoleCircle& circle) {
        told.diameter = std::max(told.diameter, circle.diameter);
        told.floorZ = std::min(told.floorZ, circle.center.z);
    };
    std::ranges::for_each(circles, take);
    // A cone that widens downwards has left its wide end to the other side: it is one shape all the same,
    // unless a bore parts the two ends.
    const bool bored = std::ranges::any_of(mDrilled, [&first](const DrilledHole& hole) {
        return SameLength(hole.x, first.center.x) && SameLength(hole.y, first.center.y);
    });
    // The foot of a bored pin belongs to it all the same.
    for (const HoleCircle& away : mGivenAway) {
        const bool foot = SameLength(away.diameter, first.diameter) && Less(mPart.min.z, away.center.z);
        if (OnOneAxis(away, first) && (!bored || foot)) take(away);
    }
    Remember(mRun.firstSide.reported, told);
}

void HoleAccount::Tell(std::span<const HoleCircle> left) {
    for (const DrilledHole& pin : mPins) {
        if (KnownFromFirstSide({{pin.x, pin.y, pin.rimZ}, pin.diameter})) continue;
        NoteUnexplained(mRun, mPart, "pin", pin.diameter, {pin.x, pin.y, pin.rimZ});
        Remember(mRun.firstSide.reported, pin);
    }
    std::vector<HoleCircle> untold(left.begin(), left.end());
    if (!mRun.FirstPass()) untold.insert(untold.end(), mGivenAway.begin(), mGivenAway.end());
    std::erase_if(untold, [this](const HoleCircle& circle) {
        return DrilledHere(circle) || KnownFromFirstSide(circle);
    });
    while (!untold.empty()) {
        const HoleCircle seed = untold.front();
        const auto others =
            std::stable_partition(untold.begin(), untold.end(),
                                  [&seed](const HoleCircle& circle) { return OnOneAxis(circle, seed); });
        TellAxis({untold.begin(), others});
        untold.erase(untold.begin(), others);
    }
}

}  // namespace brenvik

// The fate of every circle of a vertical hole: drilled, left to the other side, a pin, or reported to the
// operator, each place once, from whichever side it is seen.
#pragma once

#include <span>
#include <vector>

#include "cnc/part/run_state.h"
#include "session/ports/host_interface.h"

namespace brenvik {

/// A circle about the vertical, as it lies on this pass.
struct HoleCircle {
    Point3 center;
    double diameter = 0;
};

/// Whether both stand about one vertical line.
bool OnOneAxis(const HoleCircle& a, const HoleCircle& b);

class HoleAccount {
  public:
    /// `part` is the box of the solid. On a first pass the account of the part begins anew.
    HoleAccount(RunState& run, const Box3& part);

    /// A hole drilled on this pass, its heights as they lie now.
    void AddDrilled(const HoleCircle& rim, double floorZ);
    /// A circle that belongs to the other side. On a second pass there is no other side any more.
    void AddGivenAway(const HoleCircle& circle);
    /// A cylinder of material, from its end down to its base.
    void AddPin(const HoleCircle& end, double baseZ);

    /// Whether the first pass has drilled this hole, seen from the second side: through the part, or out of a
    /// recess that lies below now.
    bool DrilledOnFirstSide(const HoleCircle& rim, double floorZ) const;

    /// Reports circles that became no hole: every pin, and one circle for each axis. `left` are the circles
    /// that the search has left over.
    void Tell(std::span<const HoleCircle> left);

  private:
    bool DrilledHere(const HoleCircle& circle) const;
    bool KnownFromFirstSide(const HoleCircle& circle) const;
    void TellAxis(std::span<const HoleCircle> circles);
    void Remember(std::vector<DrilledHole>& list, const DrilledHole& hole);

    RunState& mRun;
    Box3 mPart;
    std::vector<DrilledHole> mDrilled, mPins;
    std::vector<HoleCircle> mGivenAway;
};

}  // namespace brenvik

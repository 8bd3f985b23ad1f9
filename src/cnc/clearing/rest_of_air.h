// What the operations of a part leave standing although a bit that comes down from above can take it: floor
// by floor, from the deepest to the highest, as closed paths that never touch wood that the part keeps.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "cnc/clearing/part_slabs.h"
#include "cnc/plan/removal.h"

namespace brenvik {

/// One path that is missing, from the top face down to a floor.
struct RestCut {
    PlanLoop path;  ///< Counter-clockwise.
    double floor = 0;
    bool through = false;
    /// It is a whole circle.
    std::optional<PlanRound> round = {};
    /// Its wall reaches the top face somewhere.
    bool fromTopFace = false;
    /// Paths that this one makes needless, by their places in the order.
    std::vector<std::size_t> replaces = {};
};

struct RestOrder {
    const SolidSections& part;  ///< As this side has it: the top face up.
    const PartSlabs& slabs;     ///< The same, seen from above.
    std::span<const Removal> removed;
    double unit = 1;   ///< One millimetre.
    double reach = 0;  ///< How far paths that share a ring have to overlap: the widest bit's diameter.
};

struct Rest {
    std::vector<RestCut> cuts;
    /// Something is left that only a bit from below can take.
    bool fromBelow = false;
};

/// What is missing from above. A path that runs within a circle of its own walls, as of a hole that something
/// else has bitten, is replaced by the circle; one within a missing path of its depth by that. On a first
/// side (`first`) also what has to be cut right through, and whether a second side is needed. Throws Failure
/// where a section can't be taken or doesn't close.
Rest RestOf(const RestOrder& order, bool first);

}  // namespace brenvik

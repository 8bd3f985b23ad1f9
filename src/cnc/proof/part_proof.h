// What the written operations of a part leave of its sheet, against the part itself.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "cnc/plan/plan_difference.h"
#include "cnc/proof/written_side.h"

namespace brenvik {

/// A place where the part that comes off the machine isn't the part of the drawing.
struct ProofSpot {
    Difference difference = Difference::Standing;
    Box3 box;
    double volume = 0, width = 0;
    /// What it consists of as seen from above.
    std::vector<PlanBox> stripes;
    /// What has taken the wood, or goes around what stays; blank for the outline, and where nothing does.
    std::string layer;
    bool secondSide = false;
    double bit = 0;        ///< Of that path.
    bool hasCore = false;  ///< That path goes around something that its bit doesn't reach.
    int operation = -1;    ///< Its place among the operations.
    /// That bit doesn't get in, and the widest that does; 0 where none does.
    bool notReached = false;
    double wouldReach = 0;
    /// It is the round that a bit leaves in a corner of its path, where the part has no corner.
    bool inCorner = false;
};

struct PartProof {
    std::vector<ProofSpot> spots;
    /// Faults of single operations, such as one that occurs twice.
    std::vector<std::string> faults;
};

/// Both sides of a part together; `stock` are outlines that a setting has left out of the files. `unit` is
/// one millimetre in units of the run. Throws Failure where the solid can't be cut.
PartProof ProvePart(const SolidSections& part, std::span<const WrittenOperation> operations,
                    std::span<const std::vector<PlanSide>> stock, double unit);

/// Whether the outlines of the two sides, where both have one, aren't the same. What the one leaves too much
/// the other cuts off, so the part comes out right all the same.
bool OutlinesDiffer(std::span<const WrittenOperation> operations, double unit);

}  // namespace brenvik

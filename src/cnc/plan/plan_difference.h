// Where the section of a part and what operations leave of its sheet differ, exactly, by a sweep across the
// plan.
#pragma once

#include <span>
#include <vector>

#include "cnc/plan/plan_piece.h"

namespace brenvik {

/// A closed shape, and what it does to the plan. What lies within is what its way round encloses.
struct PlanShape {
    enum class Role {
        Stock,    ///< All is removed outside of it.
        Removal,  ///< All is removed inside of it.
    };
    Role role = Role::Removal;
    std::vector<PlanSide> sides;
    int operation = -1;  ///< Which operation it is of, for the caller.
    /// What a removal leaves standing within, as the path of `CoreOf`; empty where it leaves nothing.
    std::vector<PlanSide> core = {};
    /// The border of what the bit doesn't get to, within a removal or around stock.
    std::vector<PlanSide> notReached = {};
};

enum class Difference {
    Standing,  ///< Wood stays that the part has not.
    Gone,      ///< Wood is taken that the part has.
    Sought,    ///< Wood that the part has lies within an operation, which its bit doesn't get to.
};

struct PlanBox {
    double minX = 0, minY = 0, maxX = 0, maxY = 0;
};

/// A connected spot of one kind.
struct PlanSpot {
    Difference difference = Difference::Standing;
    PlanBox box;
    double area = 0;
    double width = 0;  ///< Of its widest place; up to twice that where walls run together.
    /// Index of the operation that removed it or left it standing; -1 at the edge of the stock, or where no
    /// operation runs.
    int operation = -1;
    bool notReached = false;       ///< That operation's bit doesn't fit.
    std::vector<PlanBox> stripes;  ///< What it consists of, each as a box.
};

/// All spots wider than `width`. The part's section is given as sides in no order, inside by even and odd.
std::vector<PlanSpot> CompareInPlan(std::span<const PlanSide> part, std::span<const PlanShape> shapes,
                                    double width);

/// Of all spots together.
double AreaOf(std::span<const PlanSpot> spots);

}  // namespace brenvik

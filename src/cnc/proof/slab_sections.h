// A part cut level, one section for each slab of heights between which nothing changes.
#pragma once

#include <vector>

#include "cnc/plan/plan_field.h"
#include "session/ports/section_port.h"

namespace brenvik {

struct Slab {
    double low = 0, high = 0;
    double Middle() const { return (low + high) / 2; }
};

/// A slab with the part's section in it.
struct PartSection {
    Slab slab;
    std::vector<PlanSide> sides;
    PlanField field;
};

}  // namespace brenvik

// Whether a part reaches beyond an outline, found from its level sections without cutting anything.
#pragma once

#include <span>

#include "session/ports/section_port.h"

namespace brenvik {

/// Whether no section between two levels reaches beyond both of them: true if every face is level or upright,
/// except the walls of edge bores at one height.
bool IsWidestAtLevels(const SolidSections& part);

enum class PartReach {
    Within,
    Beyond,
    Unclear,  ///< By so little, or with such faces, that only a cut can decide.
};

/// Where the part lies against a closed outline without openings. Throws Failure where a section can't be
/// taken.
PartReach ReachBeyond(const SolidSections& part, std::span<const PlanSide> outline);

}  // namespace brenvik

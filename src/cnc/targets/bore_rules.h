// The four sides of a part, and what each target calls a bore in its edge.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "cnc/part/part_side.h"

namespace brenvik {

struct RunState;

enum class Axis { X, Y };

struct SideTraits {
    PartSide side;
    Axis axis;   ///< The axis of this side's bores.
    bool atMax;  ///< The face is at the box's maximum and looks along the axis, else the other way.
    std::string_view layer;      ///< For circles that stay, such as "HF_T".
    std::string_view workLayer;  ///< For circles that a rectangle replaces.
};

/// Front, back, left, right.
std::span<const SideTraits> Sides();

/// The group that the rectangles of a side belong to, for a target that has such groups; else blank.
std::string_view SideGroupName(const RunState& run, const SideTraits& side);

/// One bore, in the units of the run. `height` is the axis over the underside of the part.
struct BoreCut {
    double diameter = 0, depth = 0, height = 0;
};

/// The layer of the bore: of the circle for the targets that keep it, of the rectangle for the others.
std::string BoreLayerName(const RunState& run, const SideTraits& side, const BoreCut& cut);

}  // namespace brenvik
